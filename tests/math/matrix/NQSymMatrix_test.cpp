// Storage, shape, mechanical operations, accumulation and parts; the arguments that are refused.
// Matrices are written as their packed lower triangle: 1 2 3 4 5 6 is 1 2 4 / 2 3 5 / 4 5 6.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <sstream>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>

#include "support/compare.h"
#include "support/dense.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::FromPacked;
using nqtest::kNaN;
using nqtest::ToDense;
using Vec = std::vector<double>;
using Bits = std::vector<bool>;

const Vec kCounting{1, 2, 3, 4, 5, 6};

TEST(NQSymMatrix, PackedByRows) {
  NQSymMatrix s = FromPacked(kCounting);
  EXPECT_EQ(ToDense(s), (Dense{{1, 2, 4}, {2, 3, 5}, {4, 5, 6}}));
  s.SetElem(0, 2, 7);
  EXPECT_EQ(s.GetElem(2, 0), 7);
  EXPECT_EQ(s.GetElem(3), 7);
  EXPECT_TRUE(s.SetElem(5, 8.0));
  EXPECT_EQ(s.GetElem(2, 2), 8);
  EXPECT_FALSE(s.SetElem(6, 1.0) || s.SetElem(-1, 1.0));
}

TEST(NQSymMatrix, ShapeAndBlocks) {
  Vec packed(21);
  for (std::size_t k = 0; k < packed.size(); ++k) packed[k] = static_cast<double>(k);
  NQSymMatrix s = FromPacked(packed), part;
  EXPECT_TRUE(s.SetNBlocks(3));
  EXPECT_EQ(s.GetBlockSize(), 2);
  EXPECT_EQ(s.GetElem(2, 1, 1, 0), s.GetElem(5, 2));
  EXPECT_TRUE(s.ExtractDiagBlock(1, part) && part.AsVector() == Vec({5, 8, 9}));
  EXPECT_TRUE(s.ExtractBlockInLowTriangular(2, 0, part) && part.AsVector() == Vec({10, 15, 16}));
  EXPECT_TRUE(s.ExtractBlockAndLastRow(0, part) && part.AsVector() == Vec({0, 1, 2, 15, 16, 20}));
  EXPECT_FALSE(s.SetNBlocks(4) || s.SetNBlocks(0) || NQSymMatrix(4, true).SetNBlocks(3));
  EXPECT_EQ(s.GetNBlocks(), 3);
  EXPECT_FALSE(s.ExtractDiagBlock(3, part) || s.ExtractBlockInLowTriangular(-1, 0, part));

  const NQSymMatrix moved = std::move(s);
  EXPECT_EQ(moved.GetNBlocks(), 3);
  EXPECT_EQ(s.GetNRows(), 0);  // NOLINT(bugprone-use-after-move): the source is left empty
  EXPECT_TRUE(s.AsVectorConst().empty());
  EXPECT_EQ(NQSymMatrix(3, 2, true).GetNRows(), 6);
  EXPECT_EQ(NQSymMatrix(3, -2, true).GetNRows(), 0);
  EXPECT_TRUE(part.SetNRows(-5, false));
  EXPECT_TRUE(part.GetNRows() == 0 && part.GetNBlocks() == 0);
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
  NQSymMatrix s = FromPacked(kCounting);
  EXPECT_FALSE(s.SetNRows(largest, true));
  EXPECT_EQ(s.GetNRows(), -1);
  EXPECT_TRUE(s.AsVectorConst().empty());
  // An invalid matrix is safe to use.
  NQBitSet set;
  Vec v;
  NQSymMatrix copy = s, out;
  NQDeterminant det;
  EXPECT_FALSE(copy.IsValidMatrix() || s.ComputeDeterminant(1e-12, det) || s.ComputeSV(v, v) ||
               s.UpdateXX(v, 1) || s.ComputeGMG(copy, out) || s.ExtractFirstNRows(out) ||
               s.GetRegCoeffs(v, set) || s.SweepOnMany(0, 1, true, set, det.first, true));
  EXPECT_EQ(s.LTSolve(v, 1e-12, v), -1);
  s.SweepOnAll(1e-12, set, true, true, true);
  s.MultiplyByNumber(2);
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
  NQBitSet swept(n);
  EXPECT_TRUE(s.Sweep(n - 1, 1e-12, Vec(static_cast<std::size_t>(n), 2.0), swept, true));
  EXPECT_EQ(s.GetElem(n - 1, n - 1), -0.5);
  EXPECT_EQ(s.GetElem(n - 2, n - 2), 1.5);
  EXPECT_EQ(s.Trace(), 2.0 * n - 3);
}

void Check(const char* name, const Vec& before, bool (*operation)(NQSymMatrix&), bool result,
           const Vec& after) {
  NQSymMatrix s = FromPacked(before);
  EXPECT_EQ(operation(s), result) << name;
  EXPECT_EQ(s.AsVector(), after) << name;
}

TEST(NQSymMatrix, MechanicalOperations) {
  using S = NQSymMatrix;
  static const Vec v{2, 3}, w{5, 1}, row{7, 8, 9}, holed{1, kNaN, 3};
  static const NQBitSet middle(Bits{false, true, false}), ends(Bits{true, false, true});
  const Vec I{1, 0, 1}, zero(6);
  Check("diagonal", kCounting, [](S& s) { return s.AddToDiagonalPart(1, 1, 5); }, true,
        {1, 2, 8, 4, 5, 6});
  Check(
      "diagonal past the end", I, [](S& s) { return s.AddToDiagonalPart(1, 2, 5); }, false, I);
  Check("put row", kCounting, [](S& s) { return s.PutRow(1, row); }, true, {1, 7, 8, 4, 9, 6});
  Check("zero out", kCounting, [](S& s) { return s.ZeroOut(1); }, true, {1, 0, 0, 4, 0, 6});
  Check("covariances", kCounting, [](S& s) { return s.SetCovarZeros(middle); }, true,
        {1, 0, 3, 4, 0, 6});
  Check("delete row", kCounting, [](S& s) { return s.DeleteOneRow(1); }, true, {1, 4, 6});
  Check("small entries, by the largest diagonal", {-8, 1, 0.5},
        [](S& s) { return s.ZeroOutAllSmall(0.125), true; }, true, {-8, 1, 0});
  Check("small off-diagonal, at the bound", {4, 1, -4, 3, 2, 9},
        [](S& s) { return s.ZeroOutNonDiag(0.5), true; }, true, {4, 0, -4, 0, 0, 9});
  Check("off-diagonal of huge entries", {1e200, 1e199, 1e200},
        [](S& s) { return s.ZeroOutNonDiag(0.01), true; }, true, {1e200, 1e199, 1e200});
  Check("small diagonal, running maximum", {1, 2, 100, 3, 4, 1},
        [](S& s) { return s.ZeroOutRowsForSmallDiag(0.5), true; }, true, {1, 2, 100, 0, 0, 0});
  Check("diagonal zeroes", {-1, 1, 8, 1, 1, 0.5}, [](S& s) { return s.ReplaceDiagZeroes(0.0625); },
        true, {8, 1, 8, 1, 1, 8});
  Check("no positive diagonal", {-1, 1, 0}, [](S& s) { return s.ReplaceDiagZeroes(0.1); }, false,
        {-1, 1, 0});
  Check("correlations", {1, 1, 1, -2, 0.5, 1}, [](S& s) { return s.AdjustOffDiagCorr(0.25); }, true,
        {1, 0.75, 1, -0.75, 0.5, 1});
  Check("NaN margin", {1, 1, 1}, [](S& s) { return s.AdjustOffDiagCorr(kNaN); }, false, {1, 1, 1});
  Check("case", I, [](S& s) { return s.UpdateXX(v, 0.5); }, true, {3, 3, 5.5});
  Check(
      "case of weight 0", I, [](S& s) { return s.UpdateXX(v, 0); }, false, I);
  Check(
      "case out", {5, 6, 10}, [](S& s) { return s.UpdateXXPosNegW(v, -1); }, true, I);
  Check("case over a set", zero, [](S& s) { return s.UpdateXXNonRedun(holed, ends, 2); }, true,
        {2, 0, 0, 6, 0, 18});
  Check("case in a block", zero, [](S& s) { return s.UpdateZZ(v, 1, 2); }, true,
        {0, 0, 8, 0, 12, 18});
  Check(
      "case past the end", zero, [](S& s) { return s.UpdateZZ(v, 2, 2); }, false, zero);
  Check("vv' added", I, [](S& s) { return s.IncrementByVV(v, -1); }, true, {-3, -6, -8});
  Check("vw' + wv'", {}, [](S& s) { return s.SetToVW(v, w); }, true, {20, 17, 6});
  Check("vv'", {}, [](S& s) { return s.SetToVV(v); }, true, {4, 6, 9});
  Check(
      "expand to a taken place", I,
      [](S& s) {
        return s.ExpandSym({1, 1}, 3, s);
      },
      false, I);
  Check("expand by places", {1, 2, 3},
        [](S& s) {
          return s.ExpandSym({2, 0}, 3, s);
        },
        true, {3, 0, 0, 2, 0, 1});
  Check("first rows", {0, 0, 0, 0, 0, 9},
        [](S& s) { return s.ReplaceFirstRows(FromPacked(kCounting), 2); }, true,
        {1, 2, 3, 0, 0, 9});
  Check("leading block", I, [](S& s) { return FromPacked(kCounting).ExtractFirstNRows(s); }, true,
        {1, 2, 3});
  Check(
      "leading block too large", I, [](S& s) { return S(1, true).ExtractFirstNRows(s); }, false, I);
}

TEST(NQSymMatrix, TwoMatricesInOnePass) {
  NQSymMatrix a(2, true), b(2, true), shorter(1, true);
  EXPECT_TRUE(a.UpdateXXMat2({1, 2}, 3, b, -1));
  EXPECT_FALSE(a.UpdateXXMat2({1, 2}, 3, shorter, 1));
  EXPECT_EQ(a.AsVector(), Vec({3, 6, 12}));
  EXPECT_EQ(b.AsVector(), Vec({-1, -2, -4}));
}

TEST(NQSymMatrix, NaNCountsAsNonZero) {
  NQSymMatrix s(2, true);
  s.UpdateXX({0, kNaN}, 1);
  EXPECT_TRUE(nqtest::AreSame(s.AsVector(), {0, kNaN, kNaN}));
  EXPECT_FALSE(s.IsZeroRow(0, NQBitSet(Bits{true, true})));
  EXPECT_TRUE(s.IsZeroRow(0, NQBitSet(Bits{true, false})));
}

TEST(NQSymMatrix, ExtremesAndReferenceValues) {
  const NQSymMatrix s = FromPacked({2, -7, kNaN, 9, 1, -4});
  double maxDiag = 0, minDiag = 0, maxOff = 0, minOff = 0;
  s.MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  EXPECT_EQ(Vec({maxDiag, minDiag, maxOff, minOff}), Vec({2, -4, 9, -7}));
  Vec t;
  s.GetNCheckDiagonal(t, 5, 7);
  EXPECT_EQ(t, Vec({2, 2, 2}));
  s.GetNCheckDiagonalOld(t, 0.5, 7);
  EXPECT_EQ(t, Vec({2, 7, 7}));
  NQSymMatrix(1, true).MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  EXPECT_EQ(maxOff, 0);
}

TEST(NQSymMatrix, WhatDoesNotFitIsRefused) {
  NQSymMatrix s = FromPacked(kCounting), out;
  const NQSymMatrix other(2, true);
  Vec v{1, 2};
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
  EXPECT_EQ(s.AsVector(), kCounting);
  EXPECT_EQ(v, Vec({1, 2}));
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
  const NQSymMatrix s = FromPacked({1, nqtest::kMissing, 3});
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
