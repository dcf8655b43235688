// Views of sparse vectors: what is valid, what is refused, and sums against those of the dense
// vectors. Entries are small integers, so that every sum is exact.
#include <nqcommon/math/matrix/NQSparseVector.h>

#include <climits>
#include <cmath>
#include <functional>
#include <tuple>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// What operations write to.
struct Targets {
  Values v{1, 2, 3}, one{5};
  Indices first{0};
  NQSymMatrix s = ToSym({{1, 2, 3}, {2, 4, 5}, {3, 5, 6}});
  NQRectMatrix r = ToRect({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  NQSparseRectMatrix sparse{1, 3, 2};
};

// Every operation that takes a view: the bool ones, those that count rows, those that sum.
void ExpectRefused(const char* name, const NQSparseVector& v) {
  Targets to;
  to.sparse.AddRow();
  const NQSparseVector good(to.first, to.one);
  EXPECT_FALSE(v.IncrementPart(to.v, 0, 2) || v.QuadraticOuterProduct(to.s) ||
               v.QuadraticOuterProductIncr(to.s, 2) || v.ComputeProbabilities(3, to.v) ||
               v.QuadraticOuterProductPartIncr(to.s, 0, 2) || v.IncrementRowPart(to.s, 1, 0, 2) ||
               to.s.UpdateXXSparse(v, 1) || to.s.UpdateXXCornerSparse(to.one, 2, v, 0, 1) ||
               to.r.SetRow(0, v) || to.sparse.SetRow(0, v))
      << name;
  for (int rows : {to.r.AddRow(v), to.sparse.AddRow(v), to.sparse.AddRow(v, 0, 0)})
    EXPECT_EQ(rows, -1) << name;
  for (double sum : {v.InnerProductWithPart(to.v, 0), to.r.ComputeSpVRSpW(v, good),
                     to.r.ComputeSpVRSpW(good, v)})
    EXPECT_EQ(sum, kMissing) << name;
  EXPECT_EQ(
      (std::vector{Dense{to.v}, ToDense(to.s), ToDense(to.r), ToDense(to.sparse)}),
      (std::vector{Dense{{1, 2, 3}}, ToDense(Targets().s), ToDense(Targets().r), Dense{{0, 0, 0}}}))
      << name;
}

TEST(NQSparseVector, RefusedViewsTouchNothing) {
  for (const auto& [name, indices, values] :
       {std::tuple<const char*, Indices, Values>{"no elements", {}, {}},
        {"same index twice", {2, 2}, {1, 1}},
        {"descending", {1, 0}, {1, 1}},
        {"negative index", {-1, 2}, {1, 1}},
        {"more values", {0, 1}, {1, 1, 1}},
        {"fewer values", {0, 1}, {1}}}) {
    const NQSparseVector view(indices, values);
    Values out{7};
    EXPECT_FALSE(view.IsValid() || view.ConvertToRegularVector(out) || view.GetMinVecSize())
        << name;
    EXPECT_EQ(out, Values{7}) << name;
    ExpectRefused(name, view);
  }
  const Indices far{0, 3}, farthest{0, INT_MAX};
  Values two{1, 1};
  ExpectRefused("index past the end", NQSparseVector(far, two));
  const NQSparseVector view(farthest, two);
  ExpectRefused("largest index", view);
  EXPECT_EQ(view.GetMinVecSize(), INT_MAX);
  two.pop_back();
  EXPECT_FALSE(view.IsValid());
  ExpectRefused("list that lost a value", view);
  EXPECT_EQ((Values{view.GetValue(0), view.GetValue(1), view.GetValue(-1)}),
            (Values{1, kMissing, kMissing}));
  EXPECT_EQ((Indices{view.GetIndex(1), view.GetIndex(2), view.GetIndex(-1)}),
            (Indices{INT_MAX, -1, -1}));
}

TEST(NQSparseVector, AsTheDenseVector) {
  std::mt19937 random(3);
  const Indices indices{1, 2, 5}, others{0, 2, 3};
  const Values values{3, 0, -2}, weights{4, 5, 7}, tail{6, -1};
  const NQSparseVector v(indices, values), w(others, weights);
  Values x, y, sum(8, 1);
  EXPECT_TRUE(v.ConvertToRegularVector(x) && w.ConvertToRegularVector(y));
  EXPECT_EQ(x, (Values{0, 3, 0, 0, 0, -2}));
  EXPECT_TRUE(v.IncrementPart(sum, 2, 10));
  EXPECT_FALSE(v.IncrementPart(sum, 3, 1) || v.IncrementPart(sum, -1, 1));
  EXPECT_EQ(sum, (Values{1, 1, 1, 31, 1, 1, 1, -19}));
  EXPECT_EQ(v.InnerProductWithPart(sum, 2), 3 * 31 + 2 * 19);
  const NQRectMatrix r = RandomRect(6, 4, random);
  EXPECT_EQ(r.ComputeSpVRSpW(v, w), r.ComputeVRW(x, y));

  // Each adds weight (a b' + b a') to a matrix of order 8.
  const Values here{0, 3, 0, 0, 0, -2, 0, 0}, moved{0, 0, 0, 3, 0, 0, 0, -2};
  const Values below{0, 0, 0, 0, 0, 0, 6, -1}, dense{0, 0, 0, 3, 0, -2, 0, 0},
      unit{0, 0, 0, 0, 1, 0, 0, 0};
  const struct {
    const char* name;
    std::function<bool(NQSymMatrix&)> run;
    double weight;
    Values a, b;
  } rows[] = {
#define NQ_UPDATE(...) #__VA_ARGS__, [&](NQSymMatrix & s) { return __VA_ARGS__; }
      {NQ_UPDATE(v.QuadraticOuterProductIncr(s, -3)), -1.5, here, here},
      {NQ_UPDATE(v.QuadraticOuterProductPartIncr(s, 2, 3)), 1.5, moved, moved},
      {NQ_UPDATE(s.UpdateXXSparse(v, 3)), 1.5, here, here},
      {NQ_UPDATE(s.UpdateXXCornerSparse(tail, 6, v, 0, 3)), 3, here, below},
      {NQ_UPDATE(s.UpdateXXCornerBlock(tail, 6, values, 3, 2)), 2, dense, below},
      {NQ_UPDATE(v.IncrementRowPart(s, 4, 2, 2)), 2, unit, moved},
      // Refused: past an end, without a weight, on the diagonal, to its right, before row 0.
      {NQ_UPDATE(!(v.QuadraticOuterProductPartIncr(s, 3, 1) || v.IncrementRowPart(s, 8, 0, 1) ||
                   v.IncrementRowPart(s, 0, INT_MAX, 1) || s.UpdateXXSparse(v, 0) ||
                   s.UpdateXXSparse(v, kNaN) || s.UpdateXXCornerSparse(tail, 7, v, 0, 1) ||
                   s.UpdateXXCornerSparse(tail, 5, v, 0, 1) ||
                   s.UpdateXXCornerBlock(tail, 3, values, 1, 1) ||
                   s.UpdateXXCornerBlock({}, 1, {}, 2, 1) ||
                   s.UpdateXXCornerBlock({}, -1, {}, -1, 1))),
       0, here, here}};
  NQSymMatrix product;
  for (const auto& [name, run, weight, a, b] : rows) {
    NQSymMatrix got = RandomSym(8, random), wanted = got;
    EXPECT_TRUE(run(got) && product.SetToVW(a, b) && wanted.ComputeAXpY(weight, product)) << name;
    EXPECT_EQ(ToDense(got), ToDense(wanted)) << name;
  }
  NQSymMatrix set(8, true);
  EXPECT_TRUE(v.QuadraticOuterProductIncr(set, 7) && v.QuadraticOuterProduct(set) &&
              product.SetToVV(here));
  EXPECT_EQ(ToDense(set), ToDense(product));
}

TEST(NQSparseVector, InnerProductOfLists) {
  const int a[] = {1, 4}, b[] = {4, 7};
  const double x[] = {2, 1}, y[] = {3, 1};
  using V = NQSparseVector;
  EXPECT_EQ((Values{V::InnerProduct(a, x, 2, b, y, 2), V::InnerProduct(a, x, 2, a, x, 2),
                    V::InnerProduct(a, x, 1, b, y, 2), V::InnerProduct(a, x, 0, b, y, 2),
                    V::InnerProduct(a, x, -1, b, y, 2), V::InnerProduct(a, x, 2, b, nullptr, 0),
                    V::InnerProduct(nullptr, x, 2, b, y, 2)}),
            (Values{3, 5, 0, 0, kMissing, kMissing, kMissing}));
}

// Shares worked by hand: exp(ln 3) is 3, and a common shift cancels.
TEST(NQSparseVector, Probabilities) {
  for (const auto& [classes, predictors, nClasses, wanted] :
       std::vector<std::tuple<Indices, Values, int, Values>>{
#include "golden/matrix_probabilities.inc"
       }) {
    Values out;
    EXPECT_TRUE(NQSparseVector(classes, predictors).ComputeProbabilities(nClasses, out));
    ASSERT_EQ(out.size(), wanted.size());
    for (std::size_t c = 0; c < out.size(); ++c)
      EXPECT_CLOSE(out[c], wanted[c], 1e-13) << predictors[0] << ", class " << c;
  }
  const Indices first{0};
  const Values missing{kMissing};
  Values out{7};
  EXPECT_FALSE(NQSparseVector(first, missing).ComputeProbabilities(1, out));
  EXPECT_EQ(out, Values{7});
}

}  // namespace
}  // namespace NQMath_940
