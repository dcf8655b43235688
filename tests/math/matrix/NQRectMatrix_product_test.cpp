// Products of rectangular with rectangular, symmetric and diagonal matrices against schoolbook
// arithmetic. Entries are small integers, so that every sum is exact.

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

TEST(NQRectMatrixProduct, AgainstTheSchoolbookWhereverResultsGo) {
  for (const auto& [m, n] : {std::pair{1, 1}, {1, 4}, {5, 2}, {7, 7}, {20, 33}, {40, 18}}) {
    const Operands given{m, n};
    const Dense R = ToDense(given.r), B = ToDense(given.b), C = ToDense(given.c);
    const Dense S = ToDense(given.s), M = ToDense(given.M), N = ToDense(given.N),
                T = ToDense(given.t);
    const NQDiagMatrix ofV(given.v), ofW(given.w);
    NQ_EXPECT_RESULT(r, in.r.ComputeMatrixProduct(in.b, out), (R * B));
    NQ_EXPECT_RESULT(b, in.r.ComputeMatrixProduct(in.b, out), (R * B));
    NQ_EXPECT_RESULT(c, in.r.ComputeProductMatrixTrans(in.c, out), (R * Trans(C)));
    NQ_EXPECT_RESULT(r, in.r.ComputeProductMatrixTrans(in.r, out), (R * Trans(R)));
    NQ_EXPECT_RESULT(r, in.r.ComputeMatrixProduct(in.s, out), (R * S));
    NQ_EXPECT_RESULT(r, in.t.ComputeRTransS(in.r, out), (Trans(R) * T));
    NQ_EXPECT_RESULT(s, in.s.ComputeRSRTrans(in.r, out), (R * S * Trans(R)));
    NQ_EXPECT_RESULT(t, in.t.ComputeRTransSR(in.r, out), (Trans(R) * T * R));
    NQ_EXPECT_RESULT(r, in.s.ComputeSS(in.M, out), (S * M));
    NQ_EXPECT_RESULT(r, in.s.ComputeMGN(in.M, in.N, out), (M * S * N));
    NQ_EXPECT_RESULT(r, in.s.ComputeGMGNG(in.M, in.N, out), (S * M * S * N * S));
    NQ_EXPECT_RESULT(r, in.s.ExpandSymToRect(out), S);
    NQ_EXPECT_RESULT(r, in.r.ComputeDiagR(ofV, out), (ToDense(ofV) * R));
    NQ_EXPECT_RESULT(r, in.r.ComputeRDiagV(in.w, out), (R * ToDense(ofW)));
    NQ_EXPECT_RESULT(c, in.r.ComputeR1TransSR2(in.t, in.c, out), (Trans(R) * T * C));
    NQ_EXPECT_RESULT(c, in.r.ComputeAXpY(-3, out), Plus(C, -3, R));
    NQ_EXPECT_RESULT(w, in.r.ComputeRV(in.w, out), (R * Column(given.w)));
    NQ_EXPECT_RESULT(v, in.r.ComputeVR(in.v, out), (Trans(R) * Column(given.v)));
    NQ_EXPECT_RESULT(v, in.t.ComputeRTransSV(in.r, in.v, out), (Trans(R) * T * Column(given.v)));
    NQ_EXPECT_RESULT(s, out.ComputeRTransByR(in.r), (Trans(R) * R));
    NQ_EXPECT_RESULT(s, out.ComputeRByRTrans(in.r), (R * Trans(R)));
  }
}

TEST(NQRectMatrixProduct, Numbers) {
  Operands in{5, 5};
  const Dense R = ToDense(in.r), C = ToDense(in.c), S = ToDense(in.s), V = Column(in.v);
  NQ_EXPECT_NUMBER(in.r.ComputeVRW(in.v, in.w), Trans(V) * R * Column(in.w));
  EXPECT_EQ(in.r.DotProductCol(1, 4), (Trans(R) * R)[1][4]);
  EXPECT_EQ(in.r.DotProductRows(0, 3), (R * Trans(R))[0][3]);
  EXPECT_EQ(in.r.DotProductColCol(1, in.c, 4), (Trans(R) * C)[1][4]);
  EXPECT_EQ(in.r.DotProductRowCol(1, in.c, 4), (R * C)[1][4]);
  EXPECT_EQ(in.r.DotProductRowRow(1, in.c, 4), (R * Trans(C))[1][4]);
  EXPECT_EQ(in.s.ComputeVSV(in.r, 2), (R * S * Trans(R))[2][2]);
  double trace = 0;
  ASSERT_TRUE(in.r.TraceOfProductSqS(in.s, trace));
  NQ_EXPECT_NUMBER(trace, TraceOf(R * S));
  NQRectMatrix wide;  // R at (0, 2)
  ASSERT_TRUE(in.r.ExpandRectangular(
      NQBitSet(Bits(5, true)), NQBitSet(Bits{false, false, true, true, true, true, true}), wide));
  ASSERT_TRUE(wide.TraceOfProductSubMatSym(0, 2, in.s, trace));
  NQ_EXPECT_NUMBER(trace, TraceOf(R * S));
  ASSERT_TRUE(in.r.SubtractSymMatrix(in.s, 2) && in.c.ComputeAXpY(4, in.s));
  EXPECT_EQ(ToDense(in.r), Plus(R, -2, S));
  EXPECT_EQ(Lower(ToDense(in.s)), Lower(Plus(S, 4, C)));
}

// Two blocks of rows of 3: the sum of the products of the blocks. Sums of nothing are 0.
TEST(NQRectMatrixProduct, BlocksAndNothing) {
  Operands in{6, 3};
  Dense sum(3, Values(3));
  NQRectMatrix r, c, out;
  for (int first : {0, 3}) {
    ASSERT_TRUE(r.CopyRows(in.r, first, 3) && c.CopyRows(in.c, first, 3));
    sum = Plus(sum, 1, Trans(ToDense(r)) * ToDense(in.s) * ToDense(c));
  }
  ASSERT_TRUE(in.r.ComputeR1TransSR2(in.s, in.c, out));
  EXPECT_EQ(ToDense(out), sum);
  EXPECT_TRUE(NQRectMatrix(2, 0, true).ComputeMatrixProduct(NQRectMatrix(0, 3, true), out));
  EXPECT_EQ(ToDense(out), (Dense{{0, 0, 0}, {0, 0, 0}}));
  EXPECT_TRUE(in.s.ComputeRTransByR(NQRectMatrix(0, 2, true)));
  EXPECT_EQ(ToDense(in.s), (Dense{{0, 0}, {0, 0}}));
  EXPECT_TRUE(NQSymMatrix(0, true).ComputeRSRTrans(NQRectMatrix(1, 0, true), in.s));
  EXPECT_EQ(ToDense(in.s), (Dense{{0}}));
}

// Beside what substitution_test.cpp has.
TEST(NQRectMatrixProduct, WhatDoesNotFitIsRefused) {
  Operands in{4, 2};
  NQRectMatrix out;
  NQSymMatrix s(3, true);
  NQDiagMatrix diagonal(4, true);
  const Values v{1, 2, 3};
  double trace = 7;
  const Dense before = ToDense(in.r);
  EXPECT_FALSE(in.r.ComputeMatrixProduct(s, out) || in.s.ComputeRSRTrans(in.r, diagonal) ||
               in.r.ComputeDiagR(NQDiagMatrix(2, true), out) || in.r.ComputeRDiagV(v, out) ||
               in.r.ComputeR1TransSR2(s, in.c, out) || in.r.ComputeAXpY(1, in.b) ||
               in.r.ComputeAXpY(1, in.s) || in.r.SubtractSymMatrix(in.s, 1) ||
               in.r.TraceOfProductSqS(in.s, trace) ||
               in.r.TraceOfProductSubMatSym(0, 1, in.s, trace) || out.GetNRows() || trace != 7);
  EXPECT_EQ(ToDense(in.r), before);
  EXPECT_EQ(in.r.ComputeVRW(v, v), kMissing);
  EXPECT_EQ(in.r.DotProductColCol(0, in.b, 0), kMissing);
}

}  // namespace
}  // namespace NQMath_940
