// Views of sparse vectors: what is valid, what is refused, and sums against those of the dense
// vectors. Entries are small integers, so that every sum is exact.
#include <nqcommon/math/matrix/NQSparseVector.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>

#include "support/compare.h"
#include "support/special_values.h"
#include "support/structured.h"

namespace NQMath_940 {
namespace {

using nqtest::kInf;
using nqtest::kMissing;
using nqtest::kNaN;
using nqtest::ToDense;
using nqtest::ToSym;
using Indices = std::vector<int>;
using Values = std::vector<double>;

struct Lists {
  const char* name;
  Indices indices;
  Values values;
};

// What operations write to.
struct Targets {
  Values v{1, 2, 3}, one{5};
  Indices first{0};
  NQSymMatrix s = ToSym({{1, 2, 3}, {2, 4, 5}, {3, 5, 6}});
  NQRectMatrix r = nqtest::ToRect({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
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
  EXPECT_EQ(to.v, Targets().v) << name;
  EXPECT_EQ(ToDense(to.s), ToDense(Targets().s)) << name;
  EXPECT_EQ(ToDense(to.r), ToDense(Targets().r)) << name;
  EXPECT_EQ(ToDense(to.sparse), nqtest::Dense(1, {0, 0, 0})) << name;
}

TEST(NQSparseVector, RefusedViewsTouchNothing) {
  for (const auto& [name, indices, values] :
       {Lists{"no elements", {}, {}}, Lists{"same index twice", {2, 2}, {1, 1}},
        Lists{"descending", {1, 0}, {1, 1}}, Lists{"negative index", {-1, 2}, {1, 1}},
        Lists{"more values", {0, 1}, {1, 1, 1}}, Lists{"fewer values", {0, 1}, {1}}}) {
    const NQSparseVector view(indices, values);
    Values out{7};
    EXPECT_FALSE(view.IsValid() || view.ConvertToRegularVector(out)) << name;
    EXPECT_EQ(view.GetMinVecSize(), 0) << name;
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
  EXPECT_EQ(view.GetIndex(1), INT_MAX);
  EXPECT_EQ((Values{view.GetValue(0), view.GetValue(1), view.GetValue(-1)}),
            (Values{1, kMissing, kMissing}));
  EXPECT_EQ((Indices{view.GetIndex(2), view.GetIndex(-1)}), (Indices{-1, -1}));
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
  const NQRectMatrix r = nqtest::RandomRect(6, 4, random);
  EXPECT_EQ(r.ComputeSpVRSpW(v, w), r.ComputeVRW(x, y));

  // Each adds weight (a b' + b a') to a matrix of order 8.
  const Values here{0, 3, 0, 0, 0, -2, 0, 0}, moved{0, 0, 0, 3, 0, 0, 0, -2};
  const Values below{0, 0, 0, 0, 0, 0, 6, -1}, dense{0, 0, 0, 3, 0, -2, 0, 0},
      unit{0, 0, 0, 0, 1, 0, 0, 0};
  struct Row {
    const char* name;
    std::function<bool(NQSymMatrix&)> run;
    double weight;
    Values a, b;
  };
#define NQ_UPDATE(...) [&](NQSymMatrix& s) { return __VA_ARGS__; }
  const Row rows[] = {
      {"outer product", NQ_UPDATE(v.QuadraticOuterProductIncr(s, -3)), -1.5, here, here},
      {"displaced", NQ_UPDATE(v.QuadraticOuterProductPartIncr(s, 2, 3)), 1.5, moved, moved},
      {"of a case", NQ_UPDATE(s.UpdateXXSparse(v, 3)), 1.5, here, here},
      {"corner", NQ_UPDATE(s.UpdateXXCornerSparse(tail, 6, v, 0, 3)), 3, here, below},
      {"dense corner", NQ_UPDATE(s.UpdateXXCornerBlock(tail, 6, values, 3, 2)), 2, dense, below},
      {"row", NQ_UPDATE(v.IncrementRowPart(s, 4, 2, 2)), 2, unit, moved},
      {"too far", NQ_UPDATE(!v.QuadraticOuterProductPartIncr(s, 3, 1)), 0, here, here},
      {"no such row", NQ_UPDATE(!v.IncrementRowPart(s, 8, 0, 1)), 0, here, here},
      {"row too short", NQ_UPDATE(!v.IncrementRowPart(s, 0, INT_MAX, 1)), 0, here, here},
      {"no weight", NQ_UPDATE(!s.UpdateXXSparse(v, 0) && !s.UpdateXXSparse(v, kNaN)), 0, here,
       here},
      {"corner past the end", NQ_UPDATE(!s.UpdateXXCornerSparse(tail, 7, v, 0, 1)), 0, here, here},
      {"on the diagonal", NQ_UPDATE(!s.UpdateXXCornerSparse(tail, 5, v, 0, 1)), 0, here, here},
      {"dense one", NQ_UPDATE(!s.UpdateXXCornerBlock(tail, 3, values, 1, 1)), 0, here, here},
      {"to the right", NQ_UPDATE(!s.UpdateXXCornerBlock({}, 1, {}, 2, 1)), 0, here, here},
      {"before row 0", NQ_UPDATE(!s.UpdateXXCornerBlock({}, -1, {}, -1, 1)), 0, here, here},
  };
  NQSymMatrix product;
  for (const Row& row : rows) {
    NQSymMatrix got = nqtest::RandomSym(8, random), wanted = got;
    EXPECT_TRUE(row.run(got) && product.SetToVW(row.a, row.b)) << row.name;
    EXPECT_TRUE(wanted.ComputeAXpY(row.weight, product));
    EXPECT_EQ(ToDense(got), ToDense(wanted)) << row.name;
  }
  NQSymMatrix set(8, true);
  EXPECT_TRUE(v.QuadraticOuterProductIncr(set, 7) && v.QuadraticOuterProduct(set));
  EXPECT_TRUE(product.SetToVV(here));
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
  const struct {
    Indices classes;
    Values predictors;
    int nClasses;
    Values wanted;
  } rows[] = {{{1}, {std::log(3.0)}, 2, {0.25, 0.75}},
              {{0, 2}, {1000, 1000}, 3, {0.5, 0, 0.5}},
              {{0, 1}, {-1000, -1000 + std::log(4.0)}, 2, {0.2, 0.8}},
              {{2}, {-1e300}, 3, {0.5, 0.5, 0}},
              {{0, 1}, {kInf, kInf}, 4, {0.5, 0.5, 0, 0}},
              {{0}, {-kInf}, 1, {1}},
              {{0}, {kNaN}, 2, {kNaN, kNaN}},
              {{1}, {kNaN}, 2, {kNaN, kNaN}}};
  for (const auto& [classes, predictors, nClasses, wanted] : rows) {
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
