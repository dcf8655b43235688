// Storage, shape, mechanical operations, accumulation and parts; the arguments that are refused.
// Matrices are written as their packed lower triangle: 1 2 3 4 5 6 is 1 2 4 / 2 3 5 / 4 5 6.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <limits>

#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/NQEigenValues.h>
#include <nqcommon/math/matrix/NQSymBlockMatrix.h>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

const Values kCounting{1, 2, 3, 4, 5, 6};

TEST(NQSymMatrix, PackedByRows) {
  NQSymMatrix s = FromPacked(kCounting);
  EXPECT_EQ(ToDense(s), (Dense{{1, 2, 4}, {2, 3, 5}, {4, 5, 6}}));
  EXPECT_TRUE(s.SetElem(0, 2, 7) && s.SetElem(5, 8.0));
  EXPECT_EQ((Values{s.GetElem(2, 0), s.GetElem(3), s.GetElem(2, 2)}), (Values{7, 7, 8}));
  NQ_EXPECT_REFUSED(s.SetElem(6, 1.0), s.SetElem(-1, 1.0));
}

TEST(NQSymMatrix, ShapeAndBlocks) {
  Values packed(21);
  for (std::size_t k = 0; k < packed.size(); ++k) packed[k] = static_cast<double>(k);
  NQSymMatrix s = FromPacked(packed), part;
  EXPECT_TRUE(s.SetNBlocks(3) && s.GetBlockSize() == 2 && s.GetElem(2, 1, 1, 0) == 17);
  EXPECT_TRUE(s.ExtractDiagBlock(1, part) && part.AsVector() == Values({5, 8, 9}));
  EXPECT_TRUE(s.ExtractBlockInLowTriangular(2, 0, part) && part.AsVector() == Values({10, 15, 16}));
  EXPECT_TRUE(s.ExtractBlockAndLastRow(1, part) &&
              part.AsVector() == Values({5, 8, 9, 17, 18, 20}));
  Values v;
  EXPECT_TRUE(s.ExtractPartOfLastRow(4, 2, v) && v == Values({19, 20}));
  NQ_EXPECT_REFUSED(s.SetNBlocks(4), s.SetNBlocks(0), NQSymMatrix(4, true).SetNBlocks(3),
                    s.ExtractDiagBlock(3, part), s.ExtractBlockInLowTriangular(-1, 0, part),
                    s.ExtractBlockInLowTriangular(3, 0, part),
                    s.ExtractBlockInLowTriangular(0, 3, part), s.ExtractBlockAndLastRow(3, part));
  NQSymMatrix one = FromPacked({5});
  EXPECT_TRUE(one.SetNBlocks(1) && one.ExtractDiagBlock(0, part) && part.GetElem(0) == 5 &&
              one.ExtractPartOfLastRow(1, 0, v) && v.empty() &&
              one.ExtractBlockAndLastRow(0, part) && part.AsVector() == Values({5, 5, 5}));

  const NQSymMatrix moved = std::move(s);
  EXPECT_EQ(moved.GetNBlocks(), 3);  // NOLINTNEXTLINE(bugprone-use-after-move): left empty
  EXPECT_TRUE(s.GetNRows() == 0 && s.AsVectorConst().empty());
  for (const auto& [nb, bs, wanted] :
       {std::tuple{3, 2, Indices{3, 2, 6}}, {1, 1, {1, 1, 1}}, {3, -2, {0, 0, 0}}}) {
    const NQSymMatrix grid(nb, bs, true);
    EXPECT_EQ((Indices{grid.GetNBlocks(), grid.GetBlockSize(), grid.GetNRows()}), wanted);
  }
  EXPECT_TRUE(part.SetNRows(-5, false) && part.GetNRows() == 0 && part.GetNBlocks() == 0);
  EXPECT_TRUE(part.SetNRows(0, false) && part.GetNBlocks() == 1);
}

// Orders whose triangle no vector holds: nothing is really allocated.
TEST(NQSymMatrix, AllocationFailureLeavesOrderMinusOne) {
  const int largest = std::numeric_limits<int>::max();
  NQSymMatrix s = FromPacked(kCounting);
  NQ_EXPECT_REFUSED(NQSymMatrix(largest, true).IsValidMatrix(), s.SetNRows(largest, true),
                    NQSymMatrix(1 << 16, 1 << 16, true).GetNRows(), s.GetNRows());
  EXPECT_TRUE(s.AsVectorConst().empty());
  // An invalid matrix is safe to use.
  NQBitSet set;
  Values v;
  NQSymMatrix copy = s, out;
  NQDeterminant det;
  NQ_EXPECT_REFUSED(copy.IsValidMatrix(), s.ComputeDeterminant(1e-12, det), s.ComputeSV(v, v),
                    s.UpdateXX(v, 1), s.ComputeGMG(copy, out), s.ExtractFirstNRows(out),
                    s.GetRegCoeffs(v, set), s.SweepOnMany(0, 1, true, set, det.first, true),
                    s.LTSolve(v, 1e-12, v));
  s.SweepOnAll(1e-12, set, true, true, true);
  s.MultiplyByNumber(2);
  EXPECT_TRUE(s.Resize(2));
}

// i (i + 1) leaves 32 bits; a matrix of this order takes 8.6 GB.
static_assert(internal::SymIndex(2, 46341) == 1'073'767'313);

#define NQ_OP(...) NQ_OPERATION(NQSymMatrix, __VA_ARGS__)

TEST(NQSymMatrix, MechanicalOperations) {
  static const Values v{2, 3}, w{5, 1}, row{7, 8, 9}, holed{1, kNaN, 3}, nan{0, kNaN};
  static const Indices twice{1, 1}, swapped{2, 0}, past{0, 3};
  static const NQBitSet middle(Bits{false, true, false}), ends(Bits{true, false, true, true});
  static const NQSymMatrix counting = FromPacked(kCounting), small(1, true);
  const Values I{1, 0, 1}, zero(6);
  const struct {
    Values before;
    const char* name;
    bool (*operation)(NQSymMatrix&);
    Values after;
  } rows[] = {
      {kCounting, NQ_OP(r.AddToDiagonalPart(1, 1, 5)), {1, 2, 8, 4, 5, 6}},
      {I, NQ_OP(!r.AddToDiagonalPart(1, 2, 5) && !r.UpdateXX(v, 0)), I},
      {I, NQ_OP(!r.UpdateXXNonRedun(v, ends, 0) && r.UpdateZZ({}, 2, 1)), I},
      {zero, NQ_OP(r.SetData(kCounting)), kCounting},
      {kCounting, NQ_OP(r.PutRow(1, row)), {1, 7, 8, 4, 9, 6}},
      {kCounting, NQ_OP(r.ZeroOut(1)), {1, 0, 0, 4, 0, 6}},
      {kCounting, NQ_OP(r.SetCovarZeros(ends)), {1, 0, 3, 0, 0, 6}},
      {kCounting, NQ_OP(r.ZeroOutRedundant(middle)), {0, 0, 3, 0, 0, 0}},
      {kCounting, NQ_OP(r.DeleteOneRow(1)), {1, 4, 6}},
      {{0.03125, 0.0625, -0.5}, NQ_OP((r.ZeroOutAllSmall(0.125), true)), {0, 0.0625, -0.5}},
      {{4, 1, -4, 3, 2, 9}, NQ_OP((r.ZeroOutNonDiag(0.5), true)), {4, 0, -4, 0, 0, 9}},
      {{1e200, 1e199, 1e200}, NQ_OP((r.ZeroOutNonDiag(0.01), true)), {1e200, 1e199, 1e200}},
      {{0.125, 2, 100, 3, 4, 1},
       NQ_OP((r.ZeroOutRowsForSmallDiag(0.5), true)),
       {0.125, 2, 100, 0, 0, 0}},
      {{0, 1, 4, 1, 1, 2}, NQ_OP((r.ZeroOutRowsForSmallDiag(0.5), true)), {0, 0, 4, 0, 1, 2}},
      {{0, 1, 1}, NQ_OP((r.ZeroOutRowsForSmallDiag(0), true)), {0, 1, 1}},
      {{-1, 1, 8, 1, 1, 0.5}, NQ_OP(r.ReplaceDiagZeroes(0.0625)), {8, 1, 8, 1, 1, 8}},
      {{8, 1, 0.75}, NQ_OP(r.ReplaceDiagZeroes(0.0625)), {8, 1, 0.75}},
      {{0, 1, 0.5}, NQ_OP(r.ReplaceDiagZeroes(0)), {0.5, 1, 0.5}},
      {{-1, 1, 0}, NQ_OP(!r.ReplaceDiagZeroes(0.1)), {-1, 1, 0}},
      {{1, 1, 1, -1, 0.5, 1}, NQ_OP(r.AdjustOffDiagCorr(0.25)), {1, 0.75, 1, -0.75, 0.5, 1}},
      {{1, -2, 1}, NQ_OP(r.AdjustOffDiagCorr(0)), {1, -1, 1}},
      {{1, 1, 1}, NQ_OP(!r.AdjustOffDiagCorr(kNaN) && !r.AdjustOffDiagCorr(1)), {1, 1, 1}},
      {I, NQ_OP(r.UpdateXX(v, 0.5)), {3, 3, 5.5}},
      {{0, 0, 0}, NQ_OP(r.UpdateXX(nan, 1)), {0, kNaN, kNaN}},
      {{5, 6, 10}, NQ_OP(r.UpdateXXPosNegW(v, -1)), I},
      {zero, NQ_OP(r.UpdateXXNonRedun(holed, ends, 0.5)), {0.5, 0, 0, 1.5, 0, 4.5}},
      {zero, NQ_OP(r.UpdateZZ(v, 1, 2)), {0, 0, 8, 0, 12, 18}},
      {zero, NQ_OP(!r.UpdateZZ(v, 2, 2)), zero},
      {I, NQ_OP(r.IncrementByVV(v, -2)), {-7, -12, -17}},
      {{}, NQ_OP(r.SetToVW(v, w)), {20, 17, 6}},
      {{}, NQ_OP(r.SetToVV(v)), {4, 6, 9}},
      {I, NQ_OP(!r.ExpandSym(twice, 3, r) && !small.ExtractFirstNRows(r)), I},
      {I, NQ_OP(!r.ExpandSym(past, 3, r)), I},
      {{1, 2, 3}, NQ_OP(r.ExpandSym(swapped, 3, r)), {3, 0, 0, 2, 0, 1}},
      {{}, NQ_OP(r.ExpandSym({}, 0, r)), {}},
      {{0, 0, 0, 0, 0, 9}, NQ_OP(r.ReplaceFirstRows(counting, 2)), {1, 2, 3, 0, 0, 9}},
      {I, NQ_OP(counting.ExtractFirstNRows(r)), {1, 2, 3}},

  };
  for (const auto& [before, name, operation, after] : rows) {
    NQSymMatrix s = FromPacked(before);
    EXPECT_TRUE(operation(s) && AreSame(s.AsVector(), after)) << name;
  }
  NQSymMatrix a(2, true), b(2, true), shorter(1, true);
  EXPECT_TRUE(a.UpdateXXMat2({1, 2}, 3, b, -1));
  EXPECT_FALSE(a.UpdateXXMat2({1, 2}, 3, shorter, 1));
  EXPECT_EQ((Dense{a.AsVector(), b.AsVector()}), (Dense{{3, 6, 12}, {-1, -2, -4}}));
  a.SetElem(0, 1, kNaN);
  a.SetElem(0, 0, 0);
  EXPECT_FALSE(a.IsZeroRow(0, NQBitSet(Bits{true, true}))) << "NaN is not 0";
  EXPECT_TRUE(a.IsZeroRow(0, NQBitSet(Bits{true, false})));
}

TEST(NQSymMatrix, ExtremesAndReferenceValues) {
  const NQSymMatrix s = FromPacked({2, -7, kNaN, 9, 1, -4});
  double maxDiag = 0, minDiag = 0, maxOff = 0, minOff = 0;
  s.MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  EXPECT_EQ(Values({maxDiag, minDiag, maxOff, minOff}), Values({2, -4, 9, -7}));
  Values t;
  s.GetNCheckDiagonal(t, 5, 7);
  EXPECT_EQ(t, Values({2, 2, 2}));
  FromPacked({2, 0, 8, 0, 0, kNaN}).GetNCheckDiagonalOld(t, 0.25, 7);
  EXPECT_EQ(t, Values({7, 8, 7}));
  NQSymMatrix(1, true).MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  EXPECT_EQ(maxOff, 0);
}

// Beside what substitution_test.cpp has.
TEST(NQSymMatrix, WhatDoesNotFitIsRefused) {
  NQSymMatrix s = FromPacked(kCounting);
  const NQSymMatrix other(2, true);
  Values v{1, 2};
  double before = 0, after = 0;
  NQ_EXPECT_REFUSED(s.ComputeAXpY(1, other), s.LTSubstitute(v), s.TSolveSubst(v), s.UpdateXX(v, 1),
                    s.SetToVW(v, {1}), s.SetData(v), s.ExtractPartOfLastRow(1, 3, v),
                    s.ReplaceFirstRows(other, 3), s.DeleteOneRow(3),
                    s.ZeroOutRedundant(NQBitSet(2)),
                    s.ComputeRowDotProductS(0, v, 2, 0, before, after), s.ComputeVSW(v, 0, 0),
                    s.ComputeRVD(0, {1, 2, 3, 4}, 2));
  EXPECT_EQ((Dense{s.AsVector(), v}), (Dense{kCounting, {1, 2}}));
}

template <class Matrix>
struct Full {
  const Matrix* matrix;
  void Display() const { matrix->DisplayF(); }
};

// All matrix classes.
TEST(MatrixDisplays, AsPinned) {
  const NQSymMatrix s = FromPacked({1, kMissing, 3}), five = FromPacked({5});
  const NQRectMatrix r = ToRect({{1, kMissing}, {3, 4}});
  const NQDiagMatrix d(Values{5, 6});
  const NQSymBlockDiagMatrix blocks = MakeBlocks({2});
  const Indices column{1};
  const Values two{2};
  NQSparseRectMatrix sparse(1, 3, 1);
  sparse.AddRow(NQSparseVector(column, two));
  NQEigenValues eigen(five, FromPacked({4}), 1e-12, 30);
  NQRectMatrix vectors;
  Values values;
  eigen.GetSorted(values, vectors, false);
  const struct {
    const char* name;
    std::string shown, want;
  } rows[] = {
#include "golden/matrix_displays.inc"
  };
  for (const auto& row : rows) EXPECT_EQ(row.shown, row.want) << row.name;
}

}  // namespace
}  // namespace NQMath_940
