// What is the sparse matrix's own: capacity, slots, rows of sparse vectors, sparse parts. The
// operations of the interface are in substitution_test.cpp.
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>

#include <array>
#include <climits>
#include <tuple>
#include <utility>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

std::size_t At(int i) { return static_cast<std::size_t>(i); }

TEST(NQSparseRectMatrix, CapacityGrows) {
  for (const auto& [capacity, rows, wanted] : {std::array{0, 1, 10},
                                               {4, 4, 4},
                                               {4, 5, 10},
                                               {6, 7, 10},
                                               {7, 8, 10},
                                               {8, 9, 12},
                                               {10, 11, 15},
                                               {4, 16, 22},
                                               {-3, 11, 15},
                                               {1, 2, 10}}) {
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
    EXPECT_FALSE(r.IsValidMatrix() || r.Resize(1, 5) || r.CopyRows(empty, 0, 0) ||
                 r.ComputeRV(v, v) || r.CreateFullMatrix(out) || r.ExtractLastCol(v) ||
                 out.ComputeMatrixProduct(r, out) || out.CopyRows(r, 0, 0))
        << n;
  }
  NQSparseRectMatrix r(0, 3, 3);
  EXPECT_FALSE(r.IsValidMatrix());
  EXPECT_EQ(r.AddRow(), 1);
  NQSparseRectMatrix to = std::move(r);
  EXPECT_EQ(r.AddRow(), 1);  // NOLINT: a moved-from matrix takes rows again
  EXPECT_TRUE(r.IsValidMatrix() && ToDense(to) == ToDense(r));
}

TEST(NQSparseRectMatrix, RowsOfPartsOfVectors) {
  const Indices indices{2, 5, 6, 9};
  const Values values{20, 50, 60, 90};
  const NQSparseVector v(indices, values);
  for (const auto& [start, first, rows, wanted] : std::vector<std::tuple<int, int, int, Values>>{
#include "golden/matrix_sparse_row_parts.inc"
       }) {
    NQSparseRectMatrix r(1, 4, 2);
    EXPECT_EQ(r.AddRow(v, start, first), rows) << start << ", " << first;
    EXPECT_EQ(ToDense(r), wanted.empty() ? Dense() : Dense({wanted})) << start << ", " << first;
  }
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
    r.AddRow();
    EXPECT_EQ(r.AddRow(NQSparseVector(pair, two)), k == 2 ? 2 : -1);
    EXPECT_TRUE(r.SetRow(0, NQSparseVector(pair, two)));
    EXPECT_EQ((Indices{r.FindIndex(0, 1), r.FindIndex(0, 4), r.FindIndex(0, 3), r.FindIndex(0, -1),
                       r.FindIndex(0, 5), r.FindIndex(9, 1)}),
              (Indices{k - 2, k - 1, -1, -1, -1, -1}));
    EXPECT_TRUE(r.SetElem(0, 0, 0) && r.SetElem(0, 4, -1));
    Indices indices;
    Values elements;
    EXPECT_TRUE(r.GetRow(0, indices, elements) && !r.GetRow(9, indices, elements));
    EXPECT_EQ(indices, k == 2 ? Indices({1, 4}) : Indices({-1, 1, 4}));
    EXPECT_EQ(elements, k == 2 ? Values({7, -1}) : Values({0, 7, -1}));
    EXPECT_FALSE(r.SetElem(0, 0, 2) || r.SetElem(0, 2, kNaN));
    EXPECT_EQ(ToDense(r)[0], (Values{0, 7, 0, 0, -1}));
    EXPECT_EQ(r.SetRow(0, NQSparseVector(triple, three)), k == 3);
    EXPECT_TRUE(r.SetRow(0, NQSparseVector(single, one)));
    EXPECT_EQ(ToDense(r)[0], (Values{0, 0, 0, 9, 0}));
    EXPECT_TRUE(!r.Resize(1, k - 1) && r.Resize(1, 3) && r.FindIndex(0, 3) == -1);
    EXPECT_EQ(ToDense(r), Dense({{0, 0, 0}}));
  }
  const NQRectMatrix full = ToRect({{1, 2, 3, 0}, {0, 5, 0, 6}});
  NQSparseRectMatrix r(1, 9, 2);
  EXPECT_TRUE(!r.CopyRows(full, 0, 2) && r.CopyRows(full, 1, 1) && !full.CopyRowToRow(0, 0, r));
  EXPECT_EQ(ToDense(r), Dense({{0, 5, 0, 6}}));
}

TEST(NQSparseRectMatrix, PartsAsOfTheDenseExpansion) {
  std::mt19937 random(11);
  for (const int k : {1, 3, 6}) {
    const NQSparseRectMatrix r = RandomSparse(6, 6, k, random);
    const Dense dense = ToDense(r), columns = Trans(dense);
    NQRectMatrix full, out(2, 6, true), expanded, wanted;
    NQSparseRectMatrix part(1, 1, 1);
    Values v;
    EXPECT_TRUE(r.CreateFullMatrix(full) && r.ExtractLastCol(v) && r.CopyColToRow(2, 1, out));
    EXPECT_EQ((Dense{ToDense(full)[3], v, ToDense(out)[1]}),
              (Dense{dense[3], columns[5], columns[2]}));

    const NQBitSet gap(Bits{true, true, false, true, true, true, true});
    EXPECT_TRUE(r.ExpandSquare(gap, expanded) && full.ExpandSquare(gap, wanted));
    EXPECT_EQ(ToDense(expanded), ToDense(wanted));
    EXPECT_TRUE(r.ExtractSubSparseRectMat(1, 3, 2, 4, part) &&
                part.GetNNZRowElements() == std::min(k, 4));
    EXPECT_TRUE(full.ExtractRows({1, 2, 3}, wanted) && wanted.CopyColumns(wanted, 2, 4));
    EXPECT_EQ(ToDense(part), ToDense(wanted));

    std::vector<Indices> rows;
    Dense elements, scattered(6, Values(6));
    EXPECT_TRUE(r.GetSparseMatrixColumns(rows, elements));
    for (std::size_t j = 0; j < 6; ++j) {
      for (std::size_t a = 0; a < rows[j].size(); ++a)
        scattered[j][At(rows[j][a])] = elements[j][a];
    }
    EXPECT_EQ(scattered, columns);
    EXPECT_FALSE(r.CopyColToRow(6, 1, out) || r.CopyColToRow(0, 2, out) ||
                 r.ExpandSquare(NQBitSet(6), expanded) ||
                 r.ExtractSubSparseRectMat(1, 6, 0, 6, part) ||
                 r.ExtractSubSparseRectMat(0, 6, -1, 6, part) ||
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
  EXPECT_TRUE(r.ComputeRV(w, v) && b.ComputeProductMatrixTrans(r, out));
  EXPECT_EQ(v, Values{10});
  EXPECT_EQ(ToDense(out), Dense(3, {10}));
  EXPECT_TRUE(r.ComputeProductMatrixTrans(b, out));
  EXPECT_EQ(ToDense(out), Dense({{10, 10, 10}}));
}

}  // namespace
}  // namespace NQMath_940
