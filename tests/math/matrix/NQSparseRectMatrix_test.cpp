// What is the sparse matrix's own: capacity, slots, rows of sparse vectors, sparse parts. The
// operations of the interface are in substitution_test.cpp.
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <utility>

#include "support/displayed.h"
#include "support/special_values.h"
#include "support/structured.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::ToDense;
using Indices = std::vector<int>;
using Values = std::vector<double>;

std::size_t At(int i) { return static_cast<std::size_t>(i); }

TEST(NQSparseRectMatrix, CapacityGrows) {
  const struct {
    int capacity, rows, wanted;
  } table[] = {{0, 1, 10}, {4, 4, 4},    {4, 5, 10},  {6, 7, 10},   {7, 8, 10},
               {8, 9, 12}, {10, 11, 15}, {4, 16, 22}, {-3, 11, 15}, {1, 2, 10}};
  for (const auto& [capacity, rows, wanted] : table) {
    NQSparseRectMatrix r(capacity, 3, 2);
    for (int i = 1; i <= rows; ++i) EXPECT_EQ(r.AddRow(), i);
    EXPECT_EQ(r.GetCapacity(), wanted) << rows << " rows from a capacity of " << capacity;
    EXPECT_EQ(r.NZElemsAsVector(), Values(static_cast<std::size_t>(2 * wanted)));
    EXPECT_EQ(r.NZColIndicesAsVector(), Indices(static_cast<std::size_t>(2 * wanted), -1));
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
  const struct {
    int start, first, rows;
    Values wanted;
  } table[] = {{2, 0, 1, {20, 0, 0, 50}},
               {5, 1, 1, {50, 60, 0, 0}},
               {4, 1, 1, {0, 50, 60, 0}},
               {5, -1, 1, {50, 60, 0, 0}},
               {3, -7, 1, {0, 0, 50, 60}},
               {6, 2, 1, {60, 0, 0, 90}},
               // Too wide, before the start, one element left, and places that are not there.
               {2, 1, -1, {}},
               {5, 0, -1, {}},
               {9, -1, -1, {}},
               {0, 3, -1, {}},
               {0, INT_MAX, -1, {}},
               {-1, 0, -1, {}},
               {10, -1, -1, {}},
               {INT_MAX, 0, -1, {}}};
  for (const auto& [start, first, rows, wanted] : table) {
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
    EXPECT_TRUE(r.GetRow(0, indices, elements));
    EXPECT_FALSE(r.GetRow(9, indices, elements));
    EXPECT_EQ(indices, k == 2 ? Indices({1, 4}) : Indices({-1, 1, 4}));
    EXPECT_EQ(elements, k == 2 ? Values({7, -1}) : Values({0, 7, -1}));
    EXPECT_FALSE(r.SetElem(0, 0, 2) || r.SetElem(0, 2, nqtest::kNaN));
    EXPECT_EQ(ToDense(r)[0], (Values{0, 7, 0, 0, -1}));
    EXPECT_EQ(r.SetRow(0, NQSparseVector(triple, three)), k == 3);
    EXPECT_TRUE(r.SetRow(0, NQSparseVector(single, one)));
    EXPECT_EQ(ToDense(r)[0], (Values{0, 0, 0, 9, 0}));
    EXPECT_FALSE(r.Resize(1, k - 1));
    EXPECT_TRUE(r.Resize(1, 3));
    EXPECT_EQ(ToDense(r), Dense({{0, 0, 0}}));
    EXPECT_EQ(r.FindIndex(0, 3), -1);
  }
  const NQRectMatrix full = nqtest::ToRect({{1, 2, 3, 0}, {0, 5, 0, 6}});
  NQSparseRectMatrix r(1, 9, 2);
  EXPECT_FALSE(r.CopyRows(full, 0, 2));
  EXPECT_TRUE(r.CopyRows(full, 1, 1));
  EXPECT_FALSE(full.CopyRowToRow(0, 0, r));
  EXPECT_EQ(ToDense(r), Dense({{0, 5, 0, 6}}));
}

TEST(NQSparseRectMatrix, PartsAsOfTheDenseExpansion) {
  std::mt19937 random(11);
  for (const int k : {1, 3, 6}) {
    const NQSparseRectMatrix r = nqtest::RandomSparse(6, 6, k, random);
    const Dense dense = ToDense(r), columns = nqtest::Trans(dense);
    NQRectMatrix full, out(2, 6, true), expanded, wanted;
    NQSparseRectMatrix part(1, 1, 1);
    Values v;
    EXPECT_TRUE(r.CreateFullMatrix(full) && r.ExtractLastCol(v) && r.CopyColToRow(2, 1, out));
    EXPECT_EQ((Dense{ToDense(full)[3], v, ToDense(out)[1]}),
              (Dense{dense[3], columns[5], columns[2]}));

    const NQBitSet gap(std::vector<bool>{true, true, false, true, true, true, true});
    EXPECT_TRUE(r.ExpandSquare(gap, expanded) && full.ExpandSquare(gap, wanted));
    EXPECT_EQ(ToDense(expanded), ToDense(wanted));
    EXPECT_TRUE(r.ExtractSubSparseRectMat(1, 3, 2, 4, part));
    EXPECT_EQ(part.GetNNZRowElements(), std::min(k, 4));
    EXPECT_TRUE(full.ExtractRows({1, 2, 3}, wanted) && wanted.CopyColumns(wanted, 2, 4));
    EXPECT_EQ(ToDense(part), ToDense(wanted));

    std::vector<Indices> rows;
    std::vector<Values> elements;
    EXPECT_TRUE(r.GetSparseMatrixColumns(rows, elements));
    Dense scattered(6, Values(6));
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

// A zero that is not stored does not meet the NaN of the other operand, nor is it shown.
TEST(NQSparseRectMatrix, WhatIsNotStoredIsPassedOver) {
  const Indices column{1};
  const Values x{2}, w{nqtest::kNaN, 5, nqtest::kInf};
  NQSparseRectMatrix r(1, 3, 1);
  r.AddRow(NQSparseVector(column, x));
  const NQRectMatrix b = nqtest::ToRect({w, w, w});
  NQRectMatrix out;
  Values v;
  EXPECT_TRUE(r.ComputeRV(w, v) && b.ComputeProductMatrixTrans(r, out));
  EXPECT_EQ(v, Values{10});
  EXPECT_EQ(ToDense(out), Dense(3, {10}));
  EXPECT_TRUE(r.ComputeProductMatrixTrans(b, out));
  EXPECT_EQ(ToDense(out), Dense({{10, 10, 10}}));
  EXPECT_EQ(nqtest::Displayed(r),
            "\nNQSparseRectMatrix display start\nThe number of rows = 1\nThe number of columns = 3"
            "\nThe number of entries per row = 1\nColumn indices (size = 1)\n  1\n  2"
            "\nNQSparseRectMatrix display end");
}

}  // namespace
}  // namespace NQMath_940
