// Products, parts and updates against schoolbook arithmetic on the full square. Entries are small
// integers, so that every sum is exact and the comparison needs no tolerance.
#include <gtest/gtest.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <functional>
#include <string>

#include "support/compare.h"
#include "support/dense.h"

namespace NQMath_940 {
namespace {

using nqtest::Column;
using nqtest::Dense;
using nqtest::Lower;
using nqtest::ToDense;
using nqtest::Trans;

struct Inputs {
  explicit Inputs(int order)
      : n(order),
        random(static_cast<unsigned>(order) + 1),
        s(nqtest::RandomSym(n, random)),
        m(nqtest::RandomSym(n, random)),
        v(nqtest::RandomVector(static_cast<std::size_t>(n), random)),
        w(nqtest::RandomVector(static_cast<std::size_t>(n), random)),
        S(ToDense(s)),
        M(ToDense(m)),
        L(Lower(S)) {}

  int n;
  std::mt19937 random;
  NQSymMatrix s, m;
  std::vector<double> v, w;
  Dense S, M, L;
};

constexpr int kOrders[] = {1, 2, 3, 7, 20};

TEST(NQSymMatrixProduct, MatrixResultsWhereverTheyGo) {
  struct Row {
    const char* name;
    std::function<bool(const NQSymMatrix&, const NQSymMatrix&, NQSymMatrix&)> compute;
    std::function<Dense(const Inputs&)> expected;
  };
  const Row rows[] = {
      {"GMG", [](auto& s, auto& m, auto& out) { return s.ComputeGMG(m, out); },
       [](const Inputs& in) { return in.S * in.M * in.S; }},
      {"GSG", [](auto& s, auto& m, auto& out) { return s.ComputeGSG(m, out); },
       [](const Inputs& in) { return in.M * in.S * in.M; }},
      {"LSL'", [](auto& s, auto& m, auto& out) { return m.ComputeLSLTrans(s, out); },
       [](const Inputs& in) { return in.L * in.M * Trans(in.L); }},
      {"L'SL", [](auto& s, auto& m, auto& out) { return m.ComputeLTransSL(s, out); },
       [](const Inputs& in) { return Trans(in.L) * in.M * in.L; }},
      {"S'S", [](auto& s, auto&, auto& out) { return s.ComputeSTransS(out); },
       [](const Inputs& in) { return in.S * in.S; }},
      {"submatrix",
       [](auto& s, auto&, auto& out) {
         return s.ExtractSubmatrix({s.GetNRows() - 1, 0, s.GetNRows() - 1}, out);
       },
       [](const Inputs& in) {
         const std::size_t at[] = {in.S.size() - 1, 0, in.S.size() - 1};
         Dense d(3, std::vector<double>(3));
         for (std::size_t a = 0; a < 3; ++a) {
           for (std::size_t b = 0; b < 3; ++b) d[a][b] = in.S[at[a]][at[b]];
         }
         return d;
       }},
      {"expand to places n and the rest",
       [](auto& s, auto&, auto& out) {
         NQBitSet set(s.GetNRows() + 2);
         set.SetRange(1, s.GetNRows(), true);
         return s.Expand(set, out);
       },
       [](const Inputs& in) {
         Dense d(in.S.size() + 2, std::vector<double>(in.S.size() + 2));
         for (std::size_t i = 0; i < in.S.size(); ++i) {
           for (std::size_t j = 0; j < in.S.size(); ++j) d[i + 1][j + 1] = in.S[i][j];
         }
         return d;
       }},
  };
  for (const Row& row : rows) {
    for (int n : kOrders) {
      const Inputs in(n);
      const Dense expected = row.expected(in);
      NQSymMatrix s = in.s, m = in.m, out;
      EXPECT_TRUE(row.compute(s, m, out)) << row.name;
      EXPECT_EQ(ToDense(out), expected) << row.name << " n=" << n;
      EXPECT_TRUE(row.compute(s, m, s)) << row.name;
      EXPECT_EQ(ToDense(s), expected) << row.name << " into itself, n=" << n;
      s = in.s;
      EXPECT_TRUE(row.compute(s, m, m)) << row.name;
      EXPECT_EQ(ToDense(m), expected) << row.name << " into its argument, n=" << n;
    }
  }
}

TEST(NQSymMatrixProduct, InPlace) {
  for (int n : kOrders) {
    const Inputs in(n);
    NQSymMatrix s = in.s;
    s.LTLLTrans();
    EXPECT_EQ(ToDense(s), in.L * Trans(in.L)) << n;
    s = in.s;
    s.LTLTransL();
    EXPECT_EQ(ToDense(s), Trans(in.L) * in.L) << n;
    s = in.s;
    EXPECT_TRUE(s.ComputeAXpY(3, s));
    s.ChangeSign();
    s.MultiplyByNumber(-0.25);
    EXPECT_EQ(ToDense(s), in.S) << n;
  }
}

TEST(NQSymMatrixProduct, VectorsAndForms) {
  for (int n : kOrders) {
    SCOPED_TRACE(n);
    Inputs in(n);
    const NQSymMatrix& s = in.s;
    const Dense v = Column(in.v), w = Column(in.w);
    const auto N = static_cast<std::size_t>(n);
    std::vector<double> out = in.v;
    ASSERT_TRUE(s.ComputeSV(out, out));
    EXPECT_EQ(Column(out), in.S * v);
    ASSERT_TRUE(s.ComputeSV(in.v, n - 1, out));
    Dense head = in.S * v;
    head.pop_back();
    EXPECT_EQ(out, n > 1 ? Trans(head)[0] : std::vector<double>{});
    std::vector<int> indices;
    for (int i = n; i-- > 0;) indices.push_back(i);
    const std::vector<double> reversed(in.v.rbegin(), in.v.rend());
    ASSERT_TRUE(s.ComputeLV(in.v, out));
    EXPECT_EQ(Column(out), in.L * v);
    ASSERT_TRUE(s.ComputeLV(indices, reversed, out));
    EXPECT_EQ(Column(out), in.L * v) << "index form";
    ASSERT_TRUE(s.ComputeLTransV(in.v, out));
    EXPECT_EQ(Column(out), Trans(in.L) * v);
    ASSERT_TRUE(s.ComputeLTransV(indices, reversed, out));
    EXPECT_EQ(Column(out), Trans(in.L) * v) << "index form";
    out = in.w;
    ASSERT_TRUE(s.IncrVecByRow(n - 1, out, 2));
    for (std::size_t j = 0; j < N; ++j) EXPECT_EQ(out[j], in.w[j] + 2 * in.S[N - 1][j]);

    EXPECT_EQ(s.ComputeVSV(in.v), (Trans(v) * in.S * v)[0][0]);
    const double vSw = (Trans(v) * in.S * w)[0][0];
    EXPECT_EQ(s.ComputeVSW(in.v, in.w), vSw);
    EXPECT_EQ(s.ComputeVSW(in.v.data(), n, in.w.data(), n), vSw);
    std::vector<double> both = in.w;
    both.insert(both.end(), in.v.begin(), in.v.end());
    EXPECT_EQ(s.ComputeVSW(both, n, 0), vSw);
    double part = 0;  // rows 1 .. n-1, column 0
    for (std::size_t i = 1; i < N; ++i) part += in.v[i - 1] * in.S[i][0] * in.w[0];
    EXPECT_EQ(s.ComputeVSWParts({in.v.begin(), in.v.end() - 1}, 1, {in.w[0]}, 0), n > 1 ? part : 0);

    EXPECT_EQ(s.ComputeDotProduct2Rows(0, n - 1), (in.S * in.S)[0][N - 1]);
    EXPECT_EQ(s.ComputeRowDotProductS(n - 1, in.m, 0), (in.S * in.M)[N - 1][0]);
    double before = 0, after = 0, head0 = 0;
    for (std::size_t j = 0; j < N / 2; ++j) head0 += in.S[N - 1][j] * in.v[j];
    ASSERT_TRUE(s.ComputeRowDotProductS(n - 1, in.v, 0, n / 2, before, after));
    EXPECT_EQ(before, head0);
    EXPECT_EQ(before + after, (in.S * v)[N - 1][0]);
    EXPECT_EQ(s.ComputeRVD(n - 1, reversed, -1), (in.S * v)[N - 1][0]);
    double trace = 0, traceOfThree = 0;
    for (std::size_t i = 0; i < N; ++i) {
      trace += (in.S * in.M)[i][i];
      traceOfThree += (in.S * in.M * in.S)[i][i];
    }
    EXPECT_EQ(s.TraceOfProduct(in.m), trace);
    EXPECT_EQ(s.TraceOfProductOfThree(in.m, s), traceOfThree);
  }
}

}  // namespace
}  // namespace NQMath_940
