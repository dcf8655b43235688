// Products of rectangular with rectangular, symmetric and diagonal matrices against schoolbook
// arithmetic. Entries are small integers, so that every sum is exact.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQDiagMatrix.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>

#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Column;
using nqtest::Dense;
using nqtest::RandomRect;
using nqtest::RandomSym;
using nqtest::RandomVector;
using nqtest::ToDense;
using nqtest::Trans;

// R and C m x n, B n x 3; S, M, N of order n, T of order m; v of m values, w of n. out is what an
// operation answers through, or one of the operands.
struct Inputs {
  int m, n;
  std::mt19937 random{static_cast<unsigned>(100 * m + n)};
  NQRectMatrix r = RandomRect(m, n, random), b = RandomRect(n, 3, random),
               c = RandomRect(m, n, random);
  NQSymMatrix s = RandomSym(n, random), M = RandomSym(n, random), N = RandomSym(n, random),
              t = RandomSym(m, random);
  std::vector<double> v = RandomVector(static_cast<std::size_t>(m), random);
  std::vector<double> w = RandomVector(static_cast<std::size_t>(n), random);
};

Dense ToDense(const std::vector<double>& v) { return Column(v); }

Dense Plus(Dense a, double x, const Dense& b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j < a[i].size(); ++j) a[i][j] += x * b[i][j];
  }
  return a;
}

double TraceOf(const Dense& a) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i][i];
  return sum;
}

// `target` is what the call answers through: a copy of it, and in place.
#define NQ_CHECK(target, call, ...)                                              \
  for (bool inPlace : {false, true}) {                                           \
    Inputs in{m, n};                                                             \
    auto copy = in.target;                                                       \
    auto& out = inPlace ? in.target : copy;                                      \
    EXPECT_TRUE(in.call) << #call;                                               \
    EXPECT_EQ(ToDense(out), __VA_ARGS__) << #call << m << " x " << n << inPlace; \
  }

TEST(NQRectMatrixProduct, AgainstTheSchoolbookWhereverResultsGo) {
  for (const auto& [m, n] : {std::pair{1, 1}, {1, 4}, {5, 2}, {7, 7}, {20, 33}, {40, 18}}) {
    const Inputs given{m, n};
    const Dense R = ToDense(given.r), B = ToDense(given.b), C = ToDense(given.c);
    const Dense S = ToDense(given.s), M = ToDense(given.M), N = ToDense(given.N),
                T = ToDense(given.t);
    const NQDiagMatrix ofV(given.v), ofW(given.w);
    NQ_CHECK(r, r.ComputeMatrixProduct(in.b, out), (R * B));
    NQ_CHECK(b, r.ComputeMatrixProduct(in.b, out), (R * B));
    NQ_CHECK(c, r.ComputeProductMatrixTrans(in.c, out), (R * Trans(C)));
    NQ_CHECK(r, r.ComputeProductMatrixTrans(in.r, out), (R * Trans(R)));
    NQ_CHECK(r, r.ComputeMatrixProduct(in.s, out), (R * S));
    NQ_CHECK(r, t.ComputeRTransS(in.r, out), (Trans(R) * T));
    NQ_CHECK(s, s.ComputeRSRTrans(in.r, out), (R * S * Trans(R)));
    NQ_CHECK(t, t.ComputeRTransSR(in.r, out), (Trans(R) * T * R));
    NQ_CHECK(r, s.ComputeSS(in.M, out), (S * M));
    NQ_CHECK(r, s.ComputeMGN(in.M, in.N, out), (M * S * N));
    NQ_CHECK(r, s.ComputeGMGNG(in.M, in.N, out), (S * M * S * N * S));
    NQ_CHECK(r, s.ExpandSymToRect(out), S);
    NQ_CHECK(r, r.ComputeDiagR(ofV, out), (ToDense(ofV) * R));
    NQ_CHECK(r, r.ComputeRDiagV(in.w, out), (R * ToDense(ofW)));
    NQ_CHECK(c, r.ComputeR1TransSR2(in.t, in.c, out), (Trans(R) * T * C));
    NQ_CHECK(c, r.ComputeAXpY(-3, out), Plus(C, -3, R));
    NQ_CHECK(w, r.ComputeRV(in.w, out), (R * Column(given.w)));
    NQ_CHECK(v, r.ComputeVR(in.v, out), (Trans(R) * Column(given.v)));
    NQ_CHECK(v, t.ComputeRTransSV(in.r, in.v, out), (Trans(R) * T * Column(given.v)));
    NQSymMatrix crossProducts;
    EXPECT_TRUE(crossProducts.ComputeRTransByR(given.r));
    EXPECT_EQ(ToDense(crossProducts), Trans(R) * R) << m << " x " << n;
    EXPECT_TRUE(crossProducts.ComputeRByRTrans(given.r));
    EXPECT_EQ(ToDense(crossProducts), R * Trans(R)) << m << " x " << n;
  }
}

TEST(NQRectMatrixProduct, Numbers) {
  Inputs in{5, 5};
  const Dense R = ToDense(in.r), C = ToDense(in.c), S = ToDense(in.s);
  EXPECT_EQ(in.r.ComputeVRW(in.v, in.w), (Trans(Column(in.v)) * R * Column(in.w))[0][0]);
  EXPECT_EQ(in.r.DotProductCol(1, 4), (Trans(R) * R)[1][4]);
  EXPECT_EQ(in.r.DotProductRows(0, 3), (R * Trans(R))[0][3]);
  EXPECT_EQ(in.r.DotProductColCol(1, in.c, 4), (Trans(R) * C)[1][4]);
  EXPECT_EQ(in.r.DotProductRowCol(1, in.c, 4), (R * C)[1][4]);
  EXPECT_EQ(in.r.DotProductRowRow(1, in.c, 4), (R * Trans(C))[1][4]);
  EXPECT_EQ(in.s.ComputeVSV(in.r, 2), (R * S * Trans(R))[2][2]);
  double trace = 0;
  ASSERT_TRUE(in.r.TraceOfProductSqS(in.s, trace));
  EXPECT_EQ(trace, TraceOf(R * S));
  NQRectMatrix wide;  // R at (0, 2)
  ASSERT_TRUE(in.r.ExpandRectangular(
      NQBitSet(std::vector<bool>(5, true)),
      NQBitSet(std::vector<bool>{false, false, true, true, true, true, true}), wide));
  ASSERT_TRUE(wide.TraceOfProductSubMatSym(0, 2, in.s, trace));
  EXPECT_EQ(trace, TraceOf(R * S));
  ASSERT_TRUE(in.r.SubtractSymMatrix(in.s, 2) && in.c.ComputeAXpY(4, in.s));
  EXPECT_EQ(ToDense(in.r), Plus(R, -2, S));
  EXPECT_EQ(nqtest::Lower(ToDense(in.s)), nqtest::Lower(Plus(S, 4, C)));
}

// Two blocks of rows of 3: the sum of the products of the blocks. Sums of nothing are 0.
TEST(NQRectMatrixProduct, BlocksAndNothing) {
  Inputs in{6, 3};
  Dense sum(3, std::vector<double>(3));
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

TEST(NQRectMatrixProduct, WhatDoesNotFitIsRefused) {
  Inputs in{4, 2};
  NQRectMatrix out;
  NQSymMatrix s(3, true), sOut;
  NQDiagMatrix diagonal(4, true);
  std::vector<double> v{1, 2, 3};
  double trace = 7;
  const Dense before = ToDense(in.r);
  EXPECT_FALSE(in.r.ComputeMatrixProduct(in.c, out) || in.r.ComputeProductMatrixTrans(in.b, out) ||
               in.r.ComputeMatrixProduct(s, out) || s.ComputeRTransS(in.r, out) ||
               s.ComputeRSRTrans(in.r, sOut) || s.ComputeRTransSR(in.r, sOut) ||
               in.s.ComputeRSRTrans(in.r, diagonal) || s.ComputeRTransSV(in.r, v, v) ||
               s.ComputeSS(in.s, out) || s.ComputeMGN(s, in.s, out) ||
               s.ComputeGMGNG(in.s, s, out) || in.r.ComputeRV(v, v) || in.r.ComputeVR(v, v) ||
               in.r.ComputeDiagR(NQDiagMatrix(2, true), out) || in.r.ComputeRDiagV(v, out) ||
               in.r.ComputeR1TransSR2(s, in.c, out) || in.r.ComputeAXpY(1, in.b) ||
               in.r.ComputeAXpY(1, in.s) || in.r.SubtractSymMatrix(in.s, 1) ||
               in.r.TraceOfProductSqS(in.s, trace) ||
               in.r.TraceOfProductSubMatSym(0, 1, in.s, trace));
  EXPECT_EQ(out.GetNRows() + sOut.GetNRows() + trace, 7);
  EXPECT_EQ(v, (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(ToDense(in.r), before);
  for (double missing :
       {in.r.ComputeVRW(v, v), in.r.DotProductCol(0, 2), in.r.DotProductRows(4, 0),
        in.r.DotProductRowCol(0, in.c, 0), in.r.DotProductRowRow(-1, in.c, 0),
        in.r.DotProductColCol(0, in.b, 0), in.s.ComputeVSV(in.r, 4), s.ComputeVSV(in.r, 0)})
    EXPECT_EQ(missing, nqtest::kMissing);
}

}  // namespace
}  // namespace NQMath_940
