// Storage, shape, mechanical operations, accumulation and parts; the arguments that are refused.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <gtest/gtest.h>

#include <nqcommon/common/NQMV.h>

#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>

#include <nqcommon/common/display.h>

#include "support/compare.h"
#include "support/dense.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::ToDense;
using nqtest::ToSym;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// 1 2 4 / 2 3 5 / 4 5 6: packed 1 .. 6.
NQSymMatrix Counting() { return ToSym({{1, 0, 0}, {2, 3, 0}, {4, 5, 6}}); }

TEST(NQSymMatrix, PackedByRows) {
  NQSymMatrix s = Counting();
  EXPECT_EQ(ToDense(s), (Dense{{1, 2, 4}, {2, 3, 5}, {4, 5, 6}}));
  s.SetElem(0, 2, 7);
  EXPECT_EQ(s.GetElem(2, 0), 7);
  EXPECT_EQ(s.GetElem(3), 7);
  EXPECT_TRUE(s.SetElem(5, 8.0));
  EXPECT_EQ(s.GetElem(2, 2), 8);
  EXPECT_FALSE(s.SetElem(6, 1.0));
  EXPECT_FALSE(s.SetElem(-1, 1.0));
}

TEST(NQSymMatrix, ShapeAndBlocks) {
  NQSymMatrix s(6, true);
  EXPECT_TRUE(s.SetNBlocks(3));
  EXPECT_EQ(s.GetBlockSize(), 2);
  for (std::size_t k = 0; k < 21; ++k) s.AsVector()[k] = static_cast<double>(k);
  EXPECT_EQ(s.GetElem(2, 1, 1, 0), s.GetElem(5, 2));
  NQSymMatrix part;
  ASSERT_TRUE(s.ExtractDiagBlock(1, part));
  EXPECT_EQ(ToDense(part), (Dense{{5, 8}, {8, 9}}));
  ASSERT_TRUE(s.ExtractBlockInLowTriangular(2, 0, part));
  EXPECT_EQ(ToDense(part), (Dense{{10, 15}, {15, 16}}));
  ASSERT_TRUE(s.ExtractBlockAndLastRow(0, part));
  EXPECT_EQ(ToDense(part), (Dense{{0, 1, 15}, {1, 2, 16}, {15, 16, 20}}));
  EXPECT_FALSE(s.SetNBlocks(4) || s.SetNBlocks(0) || NQSymMatrix(4, true).SetNBlocks(3));
  EXPECT_EQ(s.GetNBlocks(), 3);
  EXPECT_FALSE(s.ExtractDiagBlock(3, part) || s.ExtractBlockInLowTriangular(-1, 0, part));

  const NQSymMatrix moved = std::move(s);
  EXPECT_EQ(moved.GetNBlocks(), 3);
  EXPECT_EQ(s.GetNRows(), 0);  // NOLINT(bugprone-use-after-move): the source is left empty
  EXPECT_TRUE(s.AsVectorConst().empty());
  EXPECT_EQ(NQSymMatrix(3, 2, true).GetNRows(), 6);
  EXPECT_EQ(NQSymMatrix(3, -2, true).GetNRows(), 0);
  NQSymMatrix t = Counting();
  EXPECT_TRUE(t.SetNRows(-5, false));
  EXPECT_EQ(t.GetNRows(), 0);
  EXPECT_EQ(t.GetNBlocks(), 0);
}

// Orders whose triangle no address space holds: the allocator refuses the one, the vector's limit
// the others; nothing is really allocated.
TEST(NQSymMatrix, AllocationFailureLeavesOrderMinusOne) {
#ifndef __SANITIZE_ADDRESS__  // whose allocator ends the process instead
  EXPECT_FALSE(NQSymMatrix(500'000'000, false).IsValidMatrix());
#endif
  const int largest = std::numeric_limits<int>::max();
  EXPECT_FALSE(NQSymMatrix(largest, true).IsValidMatrix());
  EXPECT_FALSE(NQSymMatrix(1 << 16, 1 << 16, true).IsValidMatrix());
  NQSymMatrix s = Counting();
  EXPECT_FALSE(s.SetNRows(largest, true));
  EXPECT_EQ(s.GetNRows(), -1);
  EXPECT_TRUE(s.AsVectorConst().empty());
  // An invalid matrix is safe to use.
  NQBitSet set;
  std::vector<double> v;
  NQSymMatrix copy = s, out;
  NQDeterminant det;
  EXPECT_FALSE(copy.IsValidMatrix());
  EXPECT_FALSE(s.ComputeDeterminant(1e-12, det) || s.ComputeSV(v, v) || s.UpdateXX(v, 1) ||
               s.ComputeGMG(copy, out) || s.ExtractFirstNRows(out) || s.GetRegCoeffs(v, set));
  EXPECT_EQ(s.LTSolve(v, 1e-12, v), -1);
  s.SweepOnAll(1e-12, set, true, true, true);
  s.MultiplyByNumber(2);
  s.Display();
  EXPECT_TRUE(s.Resize(2));
}

TEST(NQSymMatrix, OrderOverTheSquareRootOf32BitsOnDemand) {
  if (!std::getenv("NQ_BIG_TESTS")) GTEST_SKIP() << "takes 8.6 GB; set NQ_BIG_TESTS to run it";
  const int n = 46342;  // i (i + 1) leaves 32 bits in the last row
  NQSymMatrix s(n, true);
  ASSERT_TRUE(s.IsValidMatrix());
  s.AddToDiagonal(2);
  s.SetElem(n - 1, n - 2, 1);
  EXPECT_EQ(s.GetElem(n - 2, n - 1), 1);
  EXPECT_EQ(s.Trace(), 2.0 * n);
  NQBitSet swept(n);
  const std::vector<double> t(static_cast<std::size_t>(n), 2.0);
  EXPECT_TRUE(s.Sweep(n - 1, 1e-12, t, swept, true));
  EXPECT_EQ(s.GetElem(n - 1, n - 1), -0.5);
  EXPECT_EQ(s.GetElem(n - 2, n - 2), 1.5);
  EXPECT_EQ(s.GetElem(0, 0), 2);
}

TEST(NQSymMatrix, MechanicalOperations) {
  struct Row {
    const char* name;
    Dense before;
    std::function<bool(NQSymMatrix&)> operation;
    bool result;
    Dense after;
  };
  const Row rows[] = {
      {"diagonal part",
       {{1, 2}, {2, 3}},
       [](auto& s) { return s.AddToDiagonalPart(1, 1, 5); },
       true,
       {{1, 2}, {2, 8}}},
      {"diagonal part past the end",
       {{1, 2}, {2, 3}},
       [](auto& s) { return s.AddToDiagonalPart(1, 2, 5); },
       false,
       {{1, 2}, {2, 3}}},
      {"put row",
       {{1, 2, 4}, {2, 3, 5}, {4, 5, 6}},
       [](auto& s) {
         return s.PutRow(1, {7, 8, 9});
       },
       true,
       {{1, 7, 4}, {7, 8, 9}, {4, 9, 6}}},
      {"zero out",
       {{1, 2, 4}, {2, 3, 5}, {4, 5, 6}},
       [](auto& s) { return s.ZeroOut(1); },
       true,
       {{1, 0, 4}, {0, 0, 0}, {4, 0, 6}}},
      {"covariances",
       {{1, 2, 4}, {2, 3, 5}, {4, 5, 6}},
       [](auto& s) {
         return s.SetCovarZeros(NQBitSet(std::vector<bool>{false, true, false}));
       },
       true,
       {{1, 0, 4}, {0, 3, 0}, {4, 0, 6}}},
      {"delete row",
       {{1, 2, 4}, {2, 3, 5}, {4, 5, 6}},
       [](auto& s) { return s.DeleteOneRow(1); },
       true,
       {{1, 4}, {4, 6}}},
      {"small entries, by the largest diagonal",
       {{-8, 1}, {1, 0.5}},
       [](auto& s) { return s.ZeroOutAllSmall(0.125), true; },
       true,
       {{-8, 1}, {1, 0}}},
      {"small off-diagonal, at the bound",
       {{4, 1, 3}, {1, -4, 2}, {3, 2, 9}},
       [](auto& s) { return s.ZeroOutNonDiag(0.5), true; },
       true,
       {{4, 0, 0}, {0, -4, 0}, {0, 0, 9}}},
      {"off-diagonal of huge entries",
       {{1e200, 1e199}, {1e199, 1e200}},
       [](auto& s) { return s.ZeroOutNonDiag(0.01), true; },
       true,
       {{1e200, 1e199}, {1e199, 1e200}}},
      {"small diagonal, running maximum",
       {{1, 2, 3}, {2, 100, 4}, {3, 4, 1}},
       [](auto& s) { return s.ZeroOutRowsForSmallDiag(0.5), true; },
       true,
       {{1, 2, 0}, {2, 100, 0}, {0, 0, 0}}},
      {"diagonal zeroes",
       {{-1, 1, 1}, {1, 8, 1}, {1, 1, 0.5}},
       [](auto& s) { return s.ReplaceDiagZeroes(0.0625); },
       true,
       {{8, 1, 1}, {1, 8, 1}, {1, 1, 8}}},
      {"no positive diagonal",
       {{-1, 1}, {1, 0}},
       [](auto& s) { return s.ReplaceDiagZeroes(0.1); },
       false,
       {{-1, 1}, {1, 0}}},
      {"correlations",
       {{1, 1, -2}, {1, 1, 0.5}, {-2, 0.5, 1}},
       [](auto& s) { return s.AdjustOffDiagCorr(0.25); },
       true,
       {{1, 0.75, -0.75}, {0.75, 1, 0.5}, {-0.75, 0.5, 1}}},
      {"correlations, NaN margin",
       {{1, 1}, {1, 1}},
       [](auto& s) { return s.AdjustOffDiagCorr(kNaN); },
       false,
       {{1, 1}, {1, 1}}},
      {"case",
       {{1, 0}, {0, 1}},
       [](auto& s) {
         return s.UpdateXX({2, 3}, 0.5);
       },
       true,
       {{3, 3}, {3, 5.5}}},
      {"case of weight 0",
       {{1, 0}, {0, 1}},
       [](auto& s) {
         return s.UpdateXX({2, 3}, 0);
       },
       false,
       {{1, 0}, {0, 1}}},
      {"case of weight -1",
       {{5, 6}, {6, 10}},
       [](auto& s) {
         return s.UpdateXXPosNegW({2, 3}, -1);
       },
       true,
       {{1, 0}, {0, 1}}},
      {"case over a set",
       {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
       [](auto& s) {
         return s.UpdateXXNonRedun({1, kNaN, 3}, NQBitSet(std::vector<bool>{true, false, true}), 2);
       },
       true,
       {{2, 0, 6}, {0, 0, 0}, {6, 0, 18}}},
      {"case in a block",
       {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
       [](auto& s) {
         return s.UpdateZZ({2, 3}, 1, 2);
       },
       true,
       {{0, 0, 0}, {0, 8, 12}, {0, 12, 18}}},
      {"case past the end",
       {{0, 0}, {0, 0}},
       [](auto& s) {
         return s.UpdateZZ({2, 3}, 1, 2);
       },
       false,
       {{0, 0}, {0, 0}}},
      {"vv' added",
       {{1, 0}, {0, 1}},
       [](auto& s) {
         return s.IncrementByVV({0, 3}, -1);
       },
       true,
       {{1, 0}, {0, -8}}},
      {"vw' + wv'",
       {},
       [](auto& s) {
         return s.SetToVW({1, 2}, {3, 5});
       },
       true,
       {{6, 11}, {11, 20}}},
      {"vv'",
       {},
       [](auto& s) {
         return s.SetToVV({1, 2});
       },
       true,
       {{1, 2}, {2, 4}}},
      {"expand to a taken place",
       {{1, 2}, {2, 3}},
       [](auto& s) {
         return s.ExpandSym({1, 1}, 3, s);
       },
       false,
       {{1, 2}, {2, 3}}},
      {"expand by places",
       {{1, 2}, {2, 3}},
       [](auto& s) {
         return s.ExpandSym({2, 0}, 3, s);
       },
       true,
       {{3, 0, 2}, {0, 0, 0}, {2, 0, 1}}},
      {"first rows",
       {{0, 0, 0}, {0, 0, 0}, {0, 0, 9}},
       [](auto& s) { return s.ReplaceFirstRows(Counting(), 2); },
       true,
       {{1, 2, 0}, {2, 3, 0}, {0, 0, 9}}},
      {"leading block",
       {{0, 0}, {0, 0}},
       [](auto& s) { return Counting().ExtractFirstNRows(s); },
       true,
       {{1, 2}, {2, 3}}},
      {"leading block too large",
       {{1, 2}, {2, 3}},
       [](auto& s) { return NQSymMatrix(1, true).ExtractFirstNRows(s); },
       false,
       {{1, 2}, {2, 3}}},
  };
  for (const Row& row : rows) {
    NQSymMatrix s = ToSym(row.before);
    EXPECT_EQ(row.operation(s), row.result) << row.name;
    EXPECT_EQ(ToDense(s), row.after) << row.name;
  }
}

TEST(NQSymMatrix, TwoMatricesInOnePass) {
  NQSymMatrix a(2, true), b(2, true);
  EXPECT_TRUE(a.UpdateXXMat2({1, 2}, 3, b, -1));
  EXPECT_EQ(ToDense(a), (Dense{{3, 6}, {6, 12}}));
  EXPECT_EQ(ToDense(b), (Dense{{-1, -2}, {-2, -4}}));
  NQSymMatrix shorter(1, true);
  EXPECT_FALSE(a.UpdateXXMat2({1, 2}, 3, shorter, 1));
  EXPECT_EQ(a.GetElem(0, 0), 3);
}

TEST(NQSymMatrix, NaNCountsAsNonZero) {
  NQSymMatrix s(2, true);
  s.UpdateXX({0, kNaN}, 1);
  EXPECT_TRUE(std::isnan(s.GetElem(1, 0)) && std::isnan(s.GetElem(1, 1)));
  EXPECT_EQ(s.GetElem(0, 0), 0);
  EXPECT_FALSE(s.IsZeroRow(0, NQBitSet(std::vector<bool>{true, true})));
  EXPECT_TRUE(s.IsZeroRow(0, NQBitSet(std::vector<bool>{true, false})));
}

TEST(NQSymMatrix, ExtremesAndReferenceValues) {
  const NQSymMatrix s = ToSym({{2, 0, 0}, {-7, kNaN, 0}, {9, 1, -4}});
  double maxDiag = 0, minDiag = 0, maxOff = 0, minOff = 0;
  s.MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  EXPECT_EQ((std::vector<double>{maxDiag, minDiag, maxOff, minOff}),
            (std::vector<double>{2, -4, 9, -7}));
  std::vector<double> t;
  s.GetNCheckDiagonal(t, 5, 7);
  EXPECT_EQ(t, (std::vector<double>{2, 2, 2}));
  s.GetNCheckDiagonalOld(t, 0.5, 7);
  EXPECT_EQ(t, (std::vector<double>{2, 7, 7}));
  NQSymMatrix(1, true).MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  EXPECT_EQ(maxOff, 0);
}

TEST(NQSymMatrix, WhatDoesNotFitIsRefused) {
  NQSymMatrix s = Counting(), out;
  const NQSymMatrix other(2, true);
  std::vector<double> v{1, 2};
  double before = 0, after = 0;
  EXPECT_FALSE(s.GetRow(3, v) || s.PutRow(0, v) || s.ZeroOut(-1) || s.IncrVecByRow(0, v, 1) ||
               s.ComputeAXpY(1, other) || s.ComputeSV(v, v) || s.ComputeSV({1, 2, 3}, 4, v) ||
               s.ComputeLV(v, v) || s.ComputeLTransV({0, 3}, {1, 1}, v) ||
               s.ComputeLV({0}, {1, 1}, v) || s.UpdateXX(v, 1) || s.SetToVW(v, {1}) ||
               s.ComputeGMG(other, out) || s.ComputeLSLTrans(other, out) || s.SetData(v) ||
               s.ExtractSubmatrix({0, 3}, out) || s.ExtractPartOfLastRow(1, 3, v) ||
               s.ReplaceFirstRows(other, 3) || s.DeleteOneRow(3) ||
               s.ZeroOutRedundant(NQBitSet(2)) ||
               s.ComputeRowDotProductS(0, v, 2, 0, before, after) || s.LTSubstitute(v));
  EXPECT_EQ(ToDense(s), ToDense(Counting()));
  EXPECT_EQ(v, (std::vector<double>{1, 2}));
  for (double missing :
       {s.ComputeVSV(v), s.ComputeVSW(v, v), s.ComputeVSW(v, 0, 0), s.ComputeVSWParts(v, 2, v, 0),
        s.ComputeRVD(3, {1, 2, 3}, 1), s.ComputeRVD(0, {1, 2, 3, 4}, 2),
        s.ComputeDotProduct2Rows(0, 3), s.TraceOfProduct(other), s.TraceOfProductOfThree(s, other)})
    EXPECT_TRUE(NQCommon_940::NQMV::IsMissing(missing));
}

TEST(NQSymMatrix, DisplaysItsParts) {
  std::ostringstream text;
  std::ostream& before = NQDisplay_940::GetOutStream();
  NQDisplay_940::SetOutStream(text);
  NQSymMatrix s = ToSym({{1, 0}, {NQCommon_940::NQMV::Missing(), 3}});
  s.Display();
  s.DisplayF();
  NQDisplay_940::SetOutStream(before);
  EXPECT_EQ(text.str(),
            "\nNQSymMatrix display start\nThe number of rows = 2\nThe number of blocks = 1"
            "\nThe block size = 2\nLower triangular\n  1\n  miss 3\nNQSymMatrix display end"
            "\nNQSymMatrix full matrix display start\n  1 miss\n  miss 3"
            "\nNQSymMatrix full matrix display end");
}

}  // namespace
}  // namespace NQMath_940
