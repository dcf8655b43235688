// Products, parts and updates of symmetric matrices against schoolbook arithmetic.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

constexpr int kOrders[] = {1, 2, 3, 7, 20};

TEST(NQSymMatrixProduct, MatrixResultsWhereverTheyGo) {
  for (int n : kOrders) {
    const int m = n;
    const Operands given{m, n};
    const Dense S = ToDense(given.s), M = ToDense(given.M), L = Lower(S);
    // Rows n-1, 0 and n-1, and those below an empty one.
    const auto size = static_cast<std::size_t>(n);
    Dense pick(3, Values(size)), place(size + 2, Values(size));
    pick[0].back() = pick[1].front() = pick[2].back() = 1;
    for (std::size_t i = 0; i < size; ++i) place[i + 1][i] = 1;
    NQBitSet inner(n + 2);
    inner.SetRange(1, n, true);

    NQ_EXPECT_RESULT(s, in.s.ComputeGMG(in.M, out), S * M * S);
    NQ_EXPECT_RESULT(M, in.s.ComputeGMG(in.M, out), S * M * S);
    NQ_EXPECT_RESULT(s, in.s.ComputeGSG(in.M, out), M * S * M);
    NQ_EXPECT_RESULT(M, in.s.ComputeGSG(in.M, out), M * S * M);
    NQ_EXPECT_RESULT(s, in.s.ComputeLSLTrans(in.M, out), Lower(M) * S * Trans(Lower(M)));
    NQ_EXPECT_RESULT(M, in.M.ComputeLSLTrans(in.s, out), L * M * Trans(L));
    NQ_EXPECT_RESULT(s, in.M.ComputeLTransSL(in.s, out), Trans(L) * M * L);
    NQ_EXPECT_RESULT(M, in.M.ComputeLTransSL(in.s, out), Trans(L) * M * L);
    NQ_EXPECT_RESULT(s, in.s.ComputeSTransS(out), S * S);
    NQ_EXPECT_RESULT(s, in.s.ExtractSubmatrix({n - 1, 0, n - 1}, out), pick * S * Trans(pick));
    NQ_EXPECT_RESULT(s, in.s.Expand(inner, out), place * S * Trans(place));
    NQ_EXPECT_RESULT(s, (out.LTLLTrans(), true), L * Trans(L));
    NQ_EXPECT_RESULT(s, (out.LTLTransL(), true), Trans(L) * L);
    NQ_EXPECT_RESULT(s, out.ComputeAXpY(3, out), Plus(S, 3, S));
    NQ_EXPECT_RESULT(s, (out.ChangeSign(), out.MultiplyByNumber(-0.25), true), Plus(S, -0.75, S));
  }
}

TEST(NQSymMatrixProduct, VectorsAndForms) {
  for (int n : kOrders) {
    SCOPED_TRACE(n);
    const int m = n, last = n - 1;
    const Operands given{m, n};
    const Dense S = ToDense(given.s), M = ToDense(given.M), L = Lower(S), V = ToDense(given.v),
                W = ToDense(given.w);
    Dense head = S * V;
    head.pop_back();
    Indices indices;
    for (int i = n; i-- > 0;) indices.push_back(i);
    const Values reversed(given.v.rbegin(), given.v.rend()),
        shifted(given.v.begin(), given.v.end() - 1);
    NQ_EXPECT_RESULT(v, in.s.ComputeSV(in.v, out), S * V);
    NQ_EXPECT_RESULT(w, in.s.ComputeSV(in.v, last, out), head);
    NQ_EXPECT_RESULT(w, in.s.ComputeLV(in.v, out), L * V);
    NQ_EXPECT_RESULT(w, in.s.ComputeLV(indices, reversed, out), L * V);
    NQ_EXPECT_RESULT(w, in.s.ComputeLTransV(in.v, out), Trans(L) * V);
    NQ_EXPECT_RESULT(w, in.s.ComputeLTransV(indices, reversed, out), Trans(L) * V);
    NQ_EXPECT_RESULT(w, in.s.IncrVecByRow(last, out, 2), Plus(W, 2, Trans({S.back()})));

    const NQSymMatrix& s = given.s;
    Values both = given.w;
    both.insert(both.end(), given.v.begin(), given.v.end());
    NQ_EXPECT_NUMBER(s.ComputeVSV(given.v), Trans(V) * S * V);
    NQ_EXPECT_NUMBER(s.ComputeVSW(given.v, given.w), Trans(V) * S * W);
    NQ_EXPECT_NUMBER(s.ComputeVSW(given.v.data(), n, given.w.data(), n), Trans(V) * S * W);
    NQ_EXPECT_NUMBER(s.ComputeVSW(both, n, 0), Trans(V) * S * W);
    double part = 0, before = 0, after = 0, first = 0;  // rows 1 .. n-1, column 0
    for (std::size_t i = 0; i < shifted.size(); ++i) part += shifted[i] * S[i + 1][0] * given.w[0];
    EXPECT_EQ(s.ComputeVSWParts(shifted, 1, {given.w[0]}, 0), part);
    EXPECT_EQ(s.ComputeDotProduct2Rows(0, last), (S * S)[0].back());
    EXPECT_EQ(s.ComputeRowDotProductS(last, given.M, 0), (S * M).back()[0]);
    for (std::size_t j = 0; j < S.size() / 2; ++j) first += S.back()[j] * given.v[j];
    ASSERT_TRUE(s.ComputeRowDotProductS(last, given.v, 0, n / 2, before, after));
    EXPECT_EQ((Values{before, before + after}), (Values{first, (S * V).back()[0]}));
    EXPECT_EQ(s.ComputeRVD(last, reversed, -1), (S * V).back()[0]);
    NQ_EXPECT_NUMBER(s.TraceOfProduct(given.M), TraceOf(S * M));
    NQ_EXPECT_NUMBER(s.TraceOfProductOfThree(given.M, s), TraceOf(S * M * S));
  }
}

}  // namespace
}  // namespace NQMath_940
