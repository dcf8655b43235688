// Products, parts and updates of rectangular, symmetric and diagonal matrices against schoolbook
// arithmetic. Entries are small integers, so that every sum is exact.

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

TEST(MatrixProducts, AgainstTheSchoolbookWhereverResultsGo) {
  for (const auto& [m, n] : {std::pair{1, 1}, {1, 4}, {5, 2}, {9, 3}, {7, 7}, {20, 33}, {40, 18}}) {
    const Operands given{m, n};
    const Dense R = ToDense(given.r), B = ToDense(given.b), C = ToDense(given.c);
    const Dense S = ToDense(given.s), G = ToDense(given.g), H = ToDense(given.h),
                T = ToDense(given.t), V = ToDense(given.v), W = ToDense(given.w), L = Lower(S);
    const NQDiagMatrix ofV(given.v), ofW(given.w);
    // Rows n-1, 0 and n-1, and those below an empty one.
    const auto size = static_cast<std::size_t>(n);
    Dense pick(3, Values(size)), place(size + 2, Values(size)), head = S * W;
    pick[0].back() = pick[1].front() = pick[2].back() = 1;
    for (std::size_t i = 0; i < size; ++i) place[i + 1][i] = 1;
    head.pop_back();
    NQBitSet inner(n + 2);
    inner.SetRange(1, n, true);
    Indices indices;
    for (int i = n; i-- > 0;) indices.push_back(i);
    const Values reversed(given.w.rbegin(), given.w.rend());
    NQ_EXPECT_RESULT(r, in.r.ComputeMatrixProduct(in.b, out), (R * B));
    NQ_EXPECT_RESULT(b, in.r.ComputeMatrixProduct(in.b, out), (R * B));
    NQ_EXPECT_RESULT(c, in.r.ComputeProductMatrixTrans(in.c, out), (R * Trans(C)));
    NQ_EXPECT_RESULT(r, in.r.ComputeProductMatrixTrans(in.r, out), (R * Trans(R)));
    NQ_EXPECT_RESULT(r, in.r.ComputeMatrixProduct(in.s, out), (R * S));
    NQ_EXPECT_RESULT(r, in.t.ComputeRTransS(in.r, out), (Trans(R) * T));
    NQ_EXPECT_RESULT(s, in.s.ComputeRSRTrans(in.r, out), (R * S * Trans(R)));
    NQ_EXPECT_RESULT(t, in.t.ComputeRTransSR(in.r, out), (Trans(R) * T * R));
    NQ_EXPECT_RESULT(r, in.s.ComputeSS(in.g, out), (S * G));
    NQ_EXPECT_RESULT(r, in.s.ComputeMGN(in.g, in.h, out), (G * S * H));
    NQ_EXPECT_RESULT(r, in.s.ComputeGMGNG(in.g, in.h, out), (S * G * S * H * S));
    NQ_EXPECT_RESULT(r, in.s.ExpandSymToRect(out), S);
    NQ_EXPECT_RESULT(r, in.r.ComputeDiagR(ofV, out), (ToDense(ofV) * R));
    NQ_EXPECT_RESULT(r, in.r.ComputeRDiagV(in.w, out), (R * ToDense(ofW)));
    NQ_EXPECT_RESULT(c, in.r.ComputeR1TransSR2(in.t, in.c, out), (Trans(R) * T * C));
    NQ_EXPECT_RESULT(c, in.r.ComputeAXpY(-3, out), Plus(C, -3, R));
    NQ_EXPECT_RESULT(w, in.r.ComputeRV(in.w, out), (R * W));
    NQ_EXPECT_RESULT(v, in.r.ComputeVR(in.v, out), (Trans(R) * V));
    NQ_EXPECT_RESULT(v, in.t.ComputeRTransSV(in.r, in.v, out), (Trans(R) * T * V));
    NQ_EXPECT_RESULT(s, out.ComputeRTransByR(in.r), (Trans(R) * R));
    NQ_EXPECT_RESULT(s, out.ComputeRByRTrans(in.r), (R * Trans(R)));
    NQ_EXPECT_RESULT(s, in.s.ComputeGMG(in.g, out), S * G * S);
    NQ_EXPECT_RESULT(g, in.s.ComputeGMG(in.g, out), S * G * S);
    NQ_EXPECT_RESULT(s, in.s.ComputeGSG(in.g, out), G * S * G);
    NQ_EXPECT_RESULT(g, in.s.ComputeGSG(in.g, out), G * S * G);
    NQ_EXPECT_RESULT(s, in.s.ComputeLSLTrans(in.g, out), Lower(G) * S * Trans(Lower(G)));
    NQ_EXPECT_RESULT(g, in.g.ComputeLSLTrans(in.s, out), L * G * Trans(L));
    NQ_EXPECT_RESULT(s, in.g.ComputeLTransSL(in.s, out), Trans(L) * G * L);
    NQ_EXPECT_RESULT(g, in.g.ComputeLTransSL(in.s, out), Trans(L) * G * L);
    NQ_EXPECT_RESULT(s, in.s.ComputeSTransS(out), S * S);
    NQ_EXPECT_RESULT(s, in.s.ExtractSubmatrix({n - 1, 0, n - 1}, out), pick * S * Trans(pick));
    NQ_EXPECT_RESULT(s, in.s.Expand(inner, out), place * S * Trans(place));
    NQ_EXPECT_RESULT(s, (out.LTLLTrans(), true), L * Trans(L));
    NQ_EXPECT_RESULT(s, (out.LTLTransL(), true), Trans(L) * L);
    NQ_EXPECT_RESULT(s, out.ComputeAXpY(3, out), Plus(S, 3, S));
    NQ_EXPECT_RESULT(s, (out.ChangeSign(), out.MultiplyByNumber(-0.25), true), Plus(S, -0.75, S));
    NQ_EXPECT_RESULT(w, in.s.ComputeSV(in.w, out), S * W);
    NQ_EXPECT_RESULT(v, in.s.ComputeSV(in.w, n - 1, out), head);
    NQ_EXPECT_RESULT(v, in.s.ComputeLV(in.w, out), L * W);
    NQ_EXPECT_RESULT(v, in.s.ComputeLV(indices, reversed, out), L * W);
    NQ_EXPECT_RESULT(v, in.s.ComputeLTransV(in.w, out), Trans(L) * W);
    NQ_EXPECT_RESULT(v, in.s.ComputeLTransV(indices, reversed, out), Trans(L) * W);
    NQ_EXPECT_RESULT(w, in.s.IncrVecByRow(n - 1, out, 2), Plus(W, 2, Trans({S.back()})));
  }
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
  double trace = 7;
  EXPECT_TRUE(NQRectMatrix(0, 3, true).ComputeBlockDiagSR(NQSymMatrix(), out) &&
              out.GetNCols() == 3 && NQRectMatrix().TraceOfProductSqS(NQSymMatrix(), trace) &&
              NQSymMatrix().ComputeLV({}, {}, in.v));
  EXPECT_EQ(trace, 0);
  EXPECT_EQ(in.v, Values());
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
  NQ_EXPECT_REFUSED(in.r.ComputeMatrixProduct(s, out), in.s.ComputeRSRTrans(in.r, diagonal),
                    in.r.ComputeDiagR(NQDiagMatrix(2, true), out), in.r.ComputeRDiagV(v, out),
                    in.r.ComputeR1TransSR2(s, in.c, out), in.r.ComputeAXpY(1, in.b),
                    in.r.ComputeAXpY(1, in.s), in.r.SubtractSymMatrix(in.s, 1),
                    in.r.TraceOfProductSqS(in.s, trace),
                    in.r.TraceOfProductSubMatSym(0, 1, in.s, trace),
                    in.r.TraceOfProductSubMatSym(3, 0, in.s, trace), in.r.ComputeVRW(v, v),
                    in.r.DotProductColCol(0, in.b, 0));
  EXPECT_EQ(ToDense(in.r), before);
  EXPECT_EQ(out.GetNRows(), 0);
  EXPECT_EQ(trace, 7);
}

TEST(MatrixProducts, Numbers) {
  for (int n : {1, 2, 3, 7, 20}) {
    SCOPED_TRACE(n);
    const int last = n - 1;
    Operands in{n, n};
    const Operands given = in;
    const NQSymMatrix& s = given.s;
    const Dense S = ToDense(s), G = ToDense(given.g), V = ToDense(given.v), W = ToDense(given.w);
    const Dense R = ToDense(given.r), C = ToDense(given.c);
    const Values reversed(given.v.rbegin(), given.v.rend()),
        shifted(given.v.begin(), given.v.end() - 1);
    Values both{7};
    for (const Values& values : {given.w, given.v})
      both.insert(both.end(), values.begin(), values.end());
    NQ_EXPECT_NUMBER(s.ComputeVSV(given.v), Trans(V) * S * V);
    NQ_EXPECT_NUMBER(s.ComputeVSW(given.v, given.w), Trans(V) * S * W);
    NQ_EXPECT_NUMBER(s.ComputeVSW(given.v.data(), n, given.w.data(), n), Trans(V) * S * W);
    NQ_EXPECT_NUMBER(s.ComputeVSW(both, n + 1, 1), Trans(V) * S * W);
    NQ_EXPECT_NUMBER(s.ComputeVSWParts(given.v, 0, given.w, 0), Trans(V) * S * W);
    double part = 0, before = 0, after = 0, first = 0;  // rows 1 .. n-1, column 0
    for (std::size_t i = 0; i < shifted.size(); ++i) part += shifted[i] * S[i + 1][0] * given.w[0];
    EXPECT_EQ(s.ComputeVSWParts(shifted, 1, {given.w[0]}, 0), part);
    EXPECT_EQ(s.ComputeDotProduct2Rows(0, last), (S * S)[0].back());
    EXPECT_EQ(s.ComputeRowDotProductS(last, given.g, 0), (S * G).back()[0]);
    double whole = 0;  // columns 1 .. n-1, the first of them before n / 2
    for (std::size_t j = 1; j < S.size(); ++j) {
      whole += S.back()[j] * shifted[j - 1];
      if (j < S.size() / 2) first = whole;
    }
    ASSERT_TRUE(s.ComputeRowDotProductS(last, shifted, 1, n / 2, before, after));
    EXPECT_EQ((Values{before, before + after}), (Values{first, whole}));
    EXPECT_EQ(s.ComputeRVD(last, reversed, -1), (S * V).back()[0]);
    NQ_EXPECT_NUMBER(s.ComputeVSW(both, 1, n + 1), Trans(V) * S * W);
    EXPECT_EQ(s.ComputeRowDotProductS(last, given.v), (S * V).back()[0]);
    NQ_EXPECT_NUMBER(s.Trace(), TraceOf(S));
    NQ_EXPECT_NUMBER(s.TraceOfProduct(given.g), TraceOf(S * G));
    NQ_EXPECT_NUMBER(s.TraceOfProductOfThree(given.g, s), TraceOf(S * G * S));
    NQ_EXPECT_NUMBER(in.r.ComputeVRW(in.v, in.w), Trans(V) * R * W);
    EXPECT_EQ(in.r.DotProductCol(0, last), (Trans(R) * R)[0].back());
    EXPECT_EQ(in.r.DotProductRows(0, last), (R * Trans(R))[0].back());
    EXPECT_EQ(in.r.DotProductColCol(0, in.c, last), (Trans(R) * C)[0].back());
    EXPECT_EQ(in.r.DotProductRowCol(0, in.c, last), (R * C)[0].back());
    EXPECT_EQ(in.r.DotProductRowRow(0, in.c, last), (R * Trans(C))[0].back());
    EXPECT_EQ(in.s.ComputeVSV(in.r, last), (R * S * Trans(R)).back().back());
    double trace = 0, traceOfPart = 0;
    NQRectMatrix wide;  // R at (0, 2)
    NQBitSet columns(n + 2);
    columns.SetRange(2, n + 1, true);
    ASSERT_TRUE(in.r.TraceOfProductSqS(in.s, trace) &&
                in.r.ExpandRectangular(NQBitSet(Bits(S.size(), true)), columns, wide) &&
                wide.TraceOfProductSubMatSym(0, 2, in.s, traceOfPart));
    EXPECT_EQ((Dense{{trace}, {traceOfPart}}), (Dense{TraceOf(R * S)[0], TraceOf(R * S)[0]}));
    ASSERT_TRUE(in.r.SubtractSymMatrix(in.s, 2) && in.c.ComputeAXpY(4, in.s));
    EXPECT_EQ(ToDense(in.r), Plus(R, -2, S));
    EXPECT_EQ(Lower(ToDense(in.s)), Lower(Plus(S, 4, C)));
  }
}

}  // namespace
}  // namespace NQMath_940
