// Views of sparse vectors: what is valid, what is refused, and sums against those of the dense
// vectors. What is the sparse matrix's own: capacity, slots, rows of sparse vectors, sparse parts;
// the operations of the interface are in substitution_test.cpp. Entries are small integers, so that
// every sum is exact.
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseVector.h>

#include <array>
#include <climits>
#include <cmath>
#include <functional>
#include <tuple>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// ---- Vectors

// What operations write to.
struct Targets {
  Values v{1, 2, 3}, one{5};
  Indices first{0};
  NQSymMatrix s = ToSym({{1, 2, 3}, {2, 4, 5}, {3, 5, 6}});
  NQRectMatrix r = ToRect({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  NQSparseRectMatrix sparse{1, 3, 2};
};

// A view of a list that ends with the statement does not compile.
static_assert(std::is_constructible_v<NQSparseVector, Indices&, const Values&>);
static_assert(!std::is_constructible_v<NQSparseVector, Indices, Values&>);
static_assert(!std::is_constructible_v<NQSparseVector, Indices&, Values>);
static_assert(!std::is_constructible_v<NQSparseVector, Indices, Values>);

// Every operation that takes a view: the bool ones, those that count rows, those that sum.
void ExpectRefused(const char* name, const NQSparseVector& v) {
  Targets to;
  to.sparse.AddRow();
  const NQSparseVector good(to.first, to.one);
  EXPECT_EACH(false, v.IncrementPart(to.v, 0, 2), v.QuadraticOuterProduct(to.s),
              v.QuadraticOuterProductIncr(to.s, 2), v.ComputeProbabilities(3, to.v),
              v.QuadraticOuterProductPartIncr(to.s, 0, 2), v.IncrementRowPart(to.s, 1, 0, 2),
              to.s.UpdateXXSparse(v, 1), to.s.UpdateXXCornerSparse(to.one, 2, v, 0, 1),
              to.r.SetRow(0, v), to.sparse.SetRow(0, v))
      << name;
  EXPECT_EQ((Values{1.0 * to.r.AddRow(v), 1.0 * to.sparse.AddRow(v),
                    1.0 * to.sparse.AddRow(v, 0, 0), v.InnerProductWithPart(to.v, 0),
                    to.r.ComputeSpVRSpW(v, good), to.r.ComputeSpVRSpW(good, v)}),
            (Values{-1, -1, -1, kMissing, kMissing, kMissing}))
      << name;
  EXPECT_EQ(
      (std::vector{Dense{to.v}, ToDense(to.s), ToDense(to.r), ToDense(to.sparse)}),
      (std::vector{Dense{{1, 2, 3}}, ToDense(Targets().s), ToDense(Targets().r), Dense{{0, 0, 0}}}))
      << name;
}

TEST(NQSparseVector, RefusedViewsTouchNothing) {
  for (const auto& [name, indices, values] : std::vector<std::tuple<const char*, Indices, Values>>{
#include "math/matrix/invalid_views_cases.inc"
       }) {
    const NQSparseVector view(indices, values);
    Values out{7};
    EXPECT_EACH(false, view.IsValid(), view.ConvertToRegularVector(out), view.GetMinVecSize() > 0)
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
  EXPECT_EQ((Indices{view.GetIndex(0), view.GetIndex(1), view.GetIndex(2), view.GetIndex(-1)}),
            (Indices{0, INT_MAX, -1, -1}));
}

TEST(NQSparseVector, AsTheDenseVector) {
  std::mt19937 random(3);
  const Indices indices{1, 2, 5}, others{0, 2, 3};
  const Values values{3, 0, -2}, weights{4, 5, 7}, tail{6, 1}, one{6};
  const NQSparseVector v(indices, values), w(others, weights);
  Values x, y, sum(8, 1);
  EXPECT_EACH(true, v.ConvertToRegularVector(x), w.ConvertToRegularVector(y),
              v.IncrementPart(sum, 2, 10));
  EXPECT_EQ(x, (Values{0, 3, 0, 0, 0, -2}));
  EXPECT_EACH(false, v.IncrementPart(sum, 3, 1), v.IncrementPart(sum, -1, 1));
  EXPECT_EQ(sum, (Values{1, 1, 1, 31, 1, 1, 1, -19}));
  EXPECT_EQ(v.InnerProductWithPart(sum, 2), 3 * 31 + 2 * 19);
  const NQRectMatrix r = RandomRect(6, 4, random);
  EXPECT_EQ(r.ComputeSpVRSpW(v, w), r.ComputeVRW(x, y));

  // Each adds weight (a b' + b a') to a matrix of order 8.
  const Values here{0, 3, 0, 0, 0, -2, 0, 0}, moved{0, 0, 0, 3, 0, 0, 0, -2};
  const Values below{0, 0, 0, 0, 0, 0, 6, 1}, dense{0, 0, 0, 3, 0, -2, 0, 0},
      first{3, 0, -2, 0, 0, 0, 0, 0}, byOne{0, 0, 3, 0, 0, 0, -2, 0}, last{0, 0, 0, 0, 0, 0, 0, 6},
      unit{0, 0, 0, 0, 1, 0, 0, 0}, unit0{1, 0, 0, 0, 0, 0, 0, 0};
  const struct {
    const char* name;
    std::function<bool(NQSymMatrix&)> run;
    double weight;
    Values a, b;
  } rows[] = {
#define NQ_UPDATE(...) #__VA_ARGS__, [&](NQSymMatrix & s) { return __VA_ARGS__; }
      {NQ_UPDATE(v.QuadraticOuterProductIncr(s, -3)), -1.5, here, here},
      {NQ_UPDATE(v.QuadraticOuterProductPartIncr(s, 2, 3)), 1.5, moved, moved},
      {NQ_UPDATE(s.UpdateXXSparse(v, 0.5)), 0.25, here, here},
      {NQ_UPDATE(s.UpdateXXCornerSparse(tail, 6, v, 0, 3)), 3, here, below},
      {NQ_UPDATE(s.UpdateXXCornerSparse(one, 7, v, 1, 0.5)), 0.5, byOne, last},
      {NQ_UPDATE(s.UpdateXXCornerBlock(tail, 6, values, 3, 2)), 2, dense, below},
      {NQ_UPDATE(s.UpdateXXCornerBlock(one, 7, values, 0, 0.5)), 0.5, first, last},
      {NQ_UPDATE(s.UpdateXXCornerBlock(one, 7, {}, 7, 1)), 0, first, last},
      {NQ_UPDATE(v.IncrementRowPart(s, 4, 2, 2)), 2, unit, moved},
      {NQ_UPDATE(v.IncrementRowPart(s, 0, 2, 2)), 2, unit0, moved}};
  NQSymMatrix product;
  for (const auto& [name, run, weight, a, b] : rows) {
    NQSymMatrix got = RandomSym(8, random), wanted = got;
    EXPECT_EACH(true, run(got), product.SetToVW(a, b), wanted.ComputeAXpY(weight, product)) << name;
    EXPECT_EQ(ToDense(got), ToDense(wanted)) << name;
  }
  NQSymMatrix s(8, true), whole(6, true);
  EXPECT_EACH(true, v.QuadraticOuterProductIncr(s, 7), v.QuadraticOuterProduct(s),
              v.QuadraticOuterProduct(whole), whole.GetElem(5, 5) == 4, product.SetToVV(here));
  // Refused: past an end, without a weight, on the diagonal, to its right, before row 0.
  EXPECT_EACH(false, v.QuadraticOuterProductPartIncr(s, 3, 1), v.IncrementRowPart(s, 8, 0, 1),
              v.IncrementRowPart(s, 0, INT_MAX, 1), s.UpdateXXSparse(v, 0),
              s.UpdateXXSparse(v, kNaN), s.UpdateXXCornerSparse(tail, 7, v, 0, 1),
              s.UpdateXXCornerSparse(tail, 5, v, 0, 1), s.UpdateXXCornerSparse(tail, 6, v, 0, 0),
              s.UpdateXXCornerBlock(tail, 6, values, 0, 0),
              s.UpdateXXCornerBlock(tail, 3, values, 1, 1), s.UpdateXXCornerBlock({}, 1, {}, 2, 1),
              s.UpdateXXCornerBlock({}, -1, {}, -1, 1));
  EXPECT_EQ(ToDense(s), ToDense(product));
}

TEST(NQSparseVector, InnerProductOfLists) {
  const int a[] = {1, 4}, b[] = {4, 7};
  const double x[] = {2, 1}, y[] = {3, 1};
  using V = NQSparseVector;
  EXPECT_EQ(
      (Values{V::InnerProduct(a, x, 2, b, y, 2), V::InnerProduct(a, x, 2, a, x, 2),
              V::InnerProduct(a, x, 1, b, y, 2), V::InnerProduct(a, x, 0, b, y, 2),
              V::InnerProduct(a, x, 2, b, y, 0), V::InnerProduct(a, x, -1, b, y, 2),
              V::InnerProduct(a, x, 2, b, nullptr, 0), V::InnerProduct(nullptr, x, 2, b, y, 2)}),
      (Values{3, 5, 0, 0, 0, kMissing, kMissing, kMissing}));
}

// Shares worked by hand: exp(ln 3) is 3, and a common shift cancels.
TEST(NQSparseVector, Probabilities) {
  for (const auto& [classes, predictors, nClasses, wanted] :
       std::vector<std::tuple<Indices, Values, int, Values>>{
#include "math/matrix/probabilities_cases.inc"
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

// ---- Matrices

std::size_t At(int i) { return static_cast<std::size_t>(i); }

TEST(NQSparseRectMatrix, CapacityGrows) {
  for (const auto& [capacity, rows, wanted] : std::vector<std::array<int, 3>>{
#include "math/matrix/capacities_cases.inc"
       }) {
    NQSparseRectMatrix r(capacity, 3, 2);
    for (int i = 1; i <= rows; ++i) EXPECT_EQ(r.AddRow(), i);
    EXPECT_EQ(r.GetCapacity(), wanted) << rows << " rows from a capacity of " << capacity;
    EXPECT_EQ(r.NZElemsAsVector(), Values(At(2 * wanted)));
    EXPECT_EQ(r.NZColIndicesAsVector(), Indices(At(2 * wanted), -1));
  }
}

TEST(NQSparseRectMatrix, ValidShapes) {
  for (const auto& [capacity, n, k] :
       {std::array{2, 3, 4}, {2, 3, 0}, {2, 0, 0}, {2, -1, 1}, {INT_MAX, INT_MAX, INT_MAX}}) {
    NQSparseRectMatrix r(capacity, n, k), empty(0, 3, 1);
    NQRectMatrix out;
    Values v;
    EXPECT_EQ((Indices{r.GetNRows(), r.GetNCols(), r.AddRow()}), (Indices{-1, -1, -1})) << n;
    EXPECT_EACH(false, r.IsValidMatrix(), r.Resize(1, 5), r.CopyRows(empty, 0, 0),
                r.ComputeRV(v, v), r.CreateFullMatrix(out), r.ExtractLastCol(v),
                out.ComputeMatrixProduct(r, out), out.CopyRows(r, 0, 0))
        << n;
  }
  NQSparseRectMatrix r(0, 3, 3);
  EXPECT_FALSE(r.IsValidMatrix());
  EXPECT_TRUE(r.Resize(0, 4) && r.Resize(0, 3));
  EXPECT_EQ(r.AddRow(), 1);
  NQSparseRectMatrix to = std::move(r);
  EXPECT_EQ(r.AddRow(), 1);  // NOLINT: a moved-from matrix takes rows again
  EXPECT_TRUE(r.IsValidMatrix());
  EXPECT_EQ(ToDense(to), ToDense(r));
}

TEST(NQSparseRectMatrix, RowsOfPartsOfVectors) {
  const Indices indices{2, 5, 6, 9};
  const Values values{20, 50, 60, 90};
  const NQSparseVector v(indices, values);
  for (const auto& [start, first, rows, wanted] : std::vector<std::tuple<int, int, int, Values>>{
#include "math/matrix/sparse_row_parts_cases.inc"
       }) {
    NQSparseRectMatrix r(1, 4, 2);
    EXPECT_EQ(r.AddRow(v, start, first), rows) << start << ", " << first;
    EXPECT_EQ(ToDense(r), wanted.empty() ? Dense() : Dense({wanted})) << start << ", " << first;
  }
  NQSparseRectMatrix one(1, 4, 1);
  EXPECT_EQ(one.AddRow(v, 9, -1), 1);
  EXPECT_EQ(ToDense(one), Dense({{90, 0, 0, 0}}));
}

TEST(NQSparseRectMatrix, RowFromItsOwnArrays) {
  const Indices columns{0, 2, 3};
  const Values values{1, 2, 3};
  NQSparseRectMatrix r(1, 6, 3), s(1, 6, 3);
  r.AddRow(NQSparseVector(columns, values));
  s = r;
  const NQSparseVector own(r.NZColIndicesAsVector(), r.NZElemsAsVector());
  EXPECT_EQ(r.AddRow(own), 2);  // the arrays move while the row is read
  EXPECT_FALSE(own.IsValid());
  EXPECT_EQ(ToDense(r), Dense(2, {1, 0, 2, 3, 0, 0}));
  const NQSparseVector part(s.NZColIndicesAsVector(), s.NZElemsAsVector());
  EXPECT_TRUE(s.SetRow(0, part));
  EXPECT_EQ(s.AddRow(part, 0, 0), 2);
  EXPECT_EQ(ToDense(s), ToDense(r));
}

TEST(NQSparseRectMatrix, SlotsAreFixed) {
  const Indices pair{1, 4}, single{3}, triple{0, 1, 2};
  const Values two{7, 8}, one{9}, three{1, 2, 3};
  for (const int k : {2, 3}) {
    NQSparseRectMatrix r(2, 5, k);
    r.AddRow(), r.AddRow();
    EXPECT_EQ(r.AddRow(NQSparseVector(pair, two)), k == 2 ? 3 : -1);
    EXPECT_TRUE(r.SetRow(1, NQSparseVector(pair, two)));
    EXPECT_EQ((Indices{r.FindIndex(1, 1), r.FindIndex(1, 4), r.FindIndex(1, 3), r.FindIndex(1, -1),
                       r.FindIndex(1, 5), r.FindIndex(9, 1)}),
              (Indices{k - 2, k - 1, -1, -1, -1, -1}));
    Indices indices;
    Values elements;
    EXPECT_EACH(true, r.SetElem(1, 0, 0), r.SetElem(1, 1, 6), r.SetElem(1, 4, 0),
                r.CopyRowToRow(1, 0, r), r.SetElem(0, 4, 5), r.GetRow(1, indices, elements));
    EXPECT_EACH(false, r.SetElem(1, 0, 2), r.SetElem(1, 2, kNaN), r.GetRow(9, indices, elements));
    EXPECT_EQ(indices, k == 2 ? Indices({1, 4}) : Indices({-1, 1, 4}));
    EXPECT_EQ(elements, k == 2 ? Values({6, 0}) : Values({0, 6, 0}));
    EXPECT_EQ(ToDense(r)[0], (Values{0, 6, 0, 0, 5})) << "the place of a zero is copied";
    NQSparseRectMatrix wider(1, 5, 4);
    EXPECT_TRUE(wider.CopyRows(r, 0, 2));
    EXPECT_EQ(ToDense(wider)[1], ToDense(r)[1]);
    EXPECT_EQ(r.SetRow(0, NQSparseVector(triple, three)), k == 3);
    EXPECT_TRUE(r.SetRow(0, NQSparseVector(single, one)));
    EXPECT_EQ(ToDense(r)[0], (Values{0, 0, 0, 9, 0}));
    EXPECT_FALSE(r.Resize(2, k - 1));
    EXPECT_EACH(true, r.Resize(2, 3), r.FindIndex(0, 3) == -1, r.FindIndex(1, 4) == -1);
    EXPECT_EQ(ToDense(r), Dense({{0, 0, 0}, {0, 6, 0}}));
  }
  const NQRectMatrix full = ToRect({{1, 2, 3, 0}, {0, 5, 0, 6}});
  NQSparseRectMatrix r(1, 9, 2);
  EXPECT_TRUE(r.CopyRows(full, 1, 1));
  EXPECT_EACH(false, r.CopyRows(full, 0, 2), full.CopyRowToRow(0, 0, r));
  EXPECT_EQ(ToDense(r), Dense({{0, 5, 0, 6}}));
}

TEST(NQSparseRectMatrix, PartsAsOfTheDenseExpansion) {
  std::mt19937 random(11);
  for (const int k : {1, 3, 6}) {
    const NQSparseRectMatrix r = RandomSparse(6, 6, k, random);
    const Dense dense = ToDense(r), columns = Trans(dense);
    NQRectMatrix full, out = RandomRect(2, 6, random), expanded, wanted;
    NQSparseRectMatrix part(1, 1, 1), column = part;
    Values v;
    EXPECT_EACH(true, r.CreateFullMatrix(full), r.ExtractLastCol(v), r.CopyColToRow(2, 1, out));
    EXPECT_EQ((Dense{ToDense(full)[3], v, ToDense(out)[1]}),
              (Dense{dense[3], columns[5], columns[2]}));

    const NQBitSet gap(Bits{true, true, false, true, true, true, true});
    EXPECT_EACH(true, r.ExpandSquare(gap, expanded), full.ExpandSquare(gap, wanted));
    EXPECT_EQ(ToDense(expanded), ToDense(wanted));
    EXPECT_EACH(true, r.ExtractSubSparseRectMat(1, 3, 2, 4, part),
                part.GetNNZRowElements() == std::min(k, 4), full.ExtractRows({1, 2, 3}, wanted),
                wanted.CopyColumns(wanted, 2, 4));
    EXPECT_EQ(ToDense(part), ToDense(wanted));
    EXPECT_TRUE(r.ExtractSubSparseRectMat(0, 6, 2, 1, column));
    EXPECT_EQ(Trans(ToDense(column))[0], columns[2]);

    std::vector<Indices> rows;
    Dense elements, scattered(6, Values(6));
    EXPECT_TRUE(r.GetSparseMatrixColumns(rows, elements));
    for (std::size_t j = 0; j < 6; ++j) {
      for (std::size_t a = 0; a < rows[j].size(); ++a)
        scattered[j][At(rows[j][a])] = elements[j][a];
    }
    EXPECT_EQ(scattered, columns);
    EXPECT_EACH(false, r.CopyColToRow(6, 1, out), r.CopyColToRow(0, 2, out),
                r.ExpandSquare(NQBitSet(6), expanded), r.ExtractSubSparseRectMat(1, 6, 0, 6, part),
                r.ExtractSubSparseRectMat(0, 6, -1, 6, part),
                r.ExtractSubSparseRectMat(0, 6, 6, 0, part));
  }
}

// A zero that is not stored does not meet the NaN of the other operand.
TEST(NQSparseRectMatrix, WhatIsNotStoredIsPassedOver) {
  const Indices column{1};
  const Values x{2}, w{kNaN, 5, kInf};
  NQSparseRectMatrix r(1, 3, 1);
  r.AddRow(NQSparseVector(column, x));
  const NQRectMatrix b = ToRect({w, w, w});
  NQRectMatrix out;
  Values v;
  EXPECT_EACH(true, r.ComputeRV(w, v), b.ComputeProductMatrixTrans(r, out));
  EXPECT_EQ(v, Values{10});
  EXPECT_EQ(ToDense(out), Dense(3, {10}));
  EXPECT_TRUE(r.ComputeProductMatrixTrans(b, out));
  EXPECT_EQ(ToDense(out), Dense({{10, 10, 10}}));
}

}  // namespace
}  // namespace NQMath_940
