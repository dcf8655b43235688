// Pivoted and updated Cholesky factors, QR decomposition, least squares and singular values.

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <array>
#include <numeric>
#include <tuple>

#include "math/matrix/linpack/linpack_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// ---- Cholesky

TEST(LinpackCholesky, Pivots) {
  const Dense regular{{3, 1, 2, 4}, {0, 2, 5, 1}, {0, 0, 7, 1}, {0, 0, 0, 1}};
  for (const auto& [name, factor, asked, made, rank] :
       std::vector<std::tuple<const char*, Dense, Indices, Indices, int>>{
#include "math/matrix/linpack/pivots_cases.inc"
       }) {
    const int* order = made.data();
    const Mat a = Trans(Mat(factor)) * Mat(factor);
    const Mat want(a.n, a.n, [&](int i, int j) { return a(order[i] - 1, order[j] - 1); });
    Mat r(a.n, a.n, [&](int i, int j) { return i <= j ? a(i, j) : kNaN; }), work(a.n, 1);
    Indices jpvt = asked;
    EXPECT_EQ(Linpack::Dchdc(r, r.ld, r.n, work, jpvt.data(), !jpvt.empty()), rank) << name;
    EXPECT_TRUE(jpvt.empty() || jpvt == made) << name;
    EXPECT_TRUE(IsNear(Trans(Upper(r, rank)) * Upper(r, rank), want)) << name;
  }
}

// A triangle with two right-hand sides, the second of which is 0 and solved exactly.
struct Problem {
  Problem(int order, std::mt19937& random)
      : p(order), r(Random(p, p, random)), z(Random(p, 2, random)), c(p, 1), s(p, 1) {
    for (int i = 0; i < p; ++i) r(i, i) = i % 2 ? -9 : 8, z(i, 1) = 0;
  }
  // The cross-products of the columns and right-hand sides that the factor stands for.
  Mat Normal() const {
    const Mat all(p + 2, p + 2, [&](int i, int j) {
      if (i >= p) return i == j ? rho[i - p] : 0;
      return j >= p ? z(i, j - p) : i <= j ? r(i, j) : 0;
    });
    return Trans(all) * all;
  }
  void Add(double* x) { Linpack::Dchud(r, r.ld, p, x, z, z.ld, 2, x + p, rho, c, s); }
  int Remove(double* x) { return Linpack::Dchdd(r, r.ld, p, x, z, z.ld, 2, x + p, rho, c, s); }

  int p;
  Mat r, z, c, s;
  double rho[2] = {0.5, 0};
};

TEST(LinpackCholesky, AddsAndRemovesARow) {
  std::mt19937 random(2);
  for (int p : {1, 2, 3, 6, 15}) {
    SCOPED_TRACE(p);
    Problem f(p, random);
    Mat row = Random(p + 2, 1, random);
    row(p + 1, 0) = 0;
    const Mat before = f.Normal(), after = before + row * Trans(row);
    f.Add(row);
    EXPECT_TRUE(IsNear(f.Normal(), after));
    EXPECT_EQ(f.Remove(row), 0);
    EXPECT_TRUE(IsNear(f.Normal(), before, 10 * Norm(after)));

    const Mat start = f.Normal();
    Mat tooLong(p + 2, 1, [](int, int) { return 100; }),
        notANumber = row, tooFar(p + 2, 1, [&](int i, int) { return i == p ? 5 : 0; });
    notANumber(0, 0) = kNaN;
    EXPECT_EQ(f.Remove(tooLong), -1);
    EXPECT_EQ(f.Remove(notANumber), -1);
    EXPECT_TRUE(IsNear(f.Normal(), start));
    EXPECT_EQ(f.Remove(tooFar), 1);
    f.Add(tooFar);
    EXPECT_EACH(true, f.rho[0] == -1, f.rho[1] == 0) << "a norm that is lost stays so";
    f.rho[0] = 0;
    const Mat exact = f.Normal();
    f.Add(row);
    EXPECT_TRUE(IsNear(f.Normal(), exact + row * Trans(row)));
  }
  double r = 2, x = 2, c = 0, s = 0;
  EXPECT_EQ(Linpack::Dchdd(&r, 1, 1, &x, nullptr, 1, 0, nullptr, nullptr, &c, &s), -1) << "all";
}

// The published comparisons: what follows a NaN passes for larger, and a NaN is no positive pivot.
TEST(LinpackCholesky, NaNPivot) {
  for (int at : {0, 1, 2}) {
    Mat a({{4, 0, 0}, {0, 9, 0}, {0, 0, 1}}), plain = a, work(3, 1);
    a(at, at) = plain(at, at) = kNaN;
    int jpvt[] = {0, 0, 0};
    EXPECT_EQ(Linpack::Dchdc(a, a.ld, 3, work, jpvt, 1), at < 2 ? 2 : 0) << at;
    EXPECT_EQ(Linpack::Dchdc(plain, a.ld, 3, work, nullptr, 0), at);
  }
}

TEST(LinpackCholesky, MovesColumns) {
  std::mt19937 random(4);
  for (int trial = 0; trial < 6 * 6 * 6 * 2; ++trial) {
    const int p = trial / 72 + 1, l = trial / 12 % 6 + 1, k = trial / 2 % 6 + 1,
              job = trial % 2 + 1;
    if (k > l || l > p) continue;
    Problem f(p, random);
    int order[] = {0, 1, 2, 3, 4, 5, 6, 7};
    std::rotate(order + k - 1, order + (job == 1 ? l - 1 : k), order + l);
    const auto below = [&] {
      return f.r + Mat(p, p, [&](int i, int j) { return i > j ? 0 : -f.r(i, j); });
    };
    const Mat before = f.Normal(), untouched = below();
    const Mat want(p + 2, p + 2, [&](int i, int j) { return before(order[i], order[j]); });
    Linpack::Dchex(f.r, f.r.ld, p, k, l, f.z, f.z.ld, 2, f.c, f.s, job);
    EXPECT_TRUE(IsNear(f.Normal(), want)) << p << " " << k << " " << l << " job " << job;
    EXPECT_TRUE(AreSame(below().data, untouched.data));
  }
}

// ---- QR

constexpr std::pair<int, int> kShapes[] = {{1, 1}, {1, 4}, {4, 1}, {2, 3},  {5, 5},
                                           {7, 4}, {4, 7}, {6, 5}, {20, 11}};

// Job 2 wants the first column last and the last one first.
TEST(LinpackQR, DecomposesAndSolves) {
  std::mt19937 random(6);
  for (auto [rows, columns] : kShapes) {
    const int n = rows, p = columns;
    for (int trial = 0; trial < 3 * std::min(n, p); ++trial) {
      const int job = trial % 3, k = 1 + trial / 3;
      SCOPED_TRACE(::testing::PrintToString(std::array{n, p, job, k}));
      Mat original = Random(n, p, random);
      const Mat y = Random(n, 1, random);
      // Columns that are nearly parallel lose their downdated norms.
      for (int j = 0; trial % 2 && j < p; ++j) original(0, j) *= 1e9;
      Mat qr = original, qraux(p, 1), work(p, 1), q = Identity(n);
      Indices jpvt(static_cast<std::size_t>(p));
      if (job == 0) std::iota(jpvt.begin(), jpvt.end(), 1);
      if (job == 2) jpvt.back() = 1, jpvt.front() = -1;
      Linpack::Dqrdc(qr, qr.ld, n, p, qraux, job ? jpvt.data() : nullptr,
                     job ? &work(0, 0) : nullptr, job);
      EXPECT_TRUE(job != 2 || (jpvt.back() == 1 && jpvt.front() == p));
      const Mat r = Upper(qr, n),
                x(n, p, [&](int i, int j) { return original(i, jpvt.data()[j] - 1); });
      for (int j = 0; job == 1 && j < std::min(n, p); ++j) {
        for (int i = j; i < p; ++i) {
          const Mat rest(n - j, 1, [&](int m, int) { return r(j + m, i); });
          EXPECT_LE((Trans(rest) * rest)(0, 0), r(j, j) * r(j, j) * (1 + 1e-12)) << "column " << j;
        }
      }
      const auto solve = [&](int count, const double* from, double* qy, double* qty = nullptr,
                             double* b = nullptr, double* rsd = nullptr, double* xb = nullptr,
                             int what = 10000) {
        return Linpack::Dqrsl(qr, qr.ld, n, count, qraux, from, qy, qty, b, rsd, xb, what);
      };
      for (int j = 0; j < n; ++j) solve(std::min(n, p), &q(0, j), &q(0, j));
      EXPECT_TRUE(IsNear(Trans(q) * q, Identity(n)));
      EXPECT_TRUE(IsNear(q * r, x, Norm(x)));

      Mat qy = y, qty = y, b(k, 1), rsd = y, xb = y;
      const Mat before = qr, part(n, k, [&](int i, int j) { return x(i, j); });
      EXPECT_EQ(solve(k, y.data.data(), qy, qty, b, rsd, xb, 11111), 0);
      EXPECT_TRUE(AreSame(qr.data, before.data));
      const double scale = Norm(x) * Norm(b) + Norm(y);
      EXPECT_TRUE(IsNear(part * b, xb, scale));
      EXPECT_TRUE(IsNear(xb + rsd, y, scale));
      EXPECT_TRUE(IsNear(Trans(part) * rsd, Mat(k, 1), Norm(x) * scale));
      Mat back = qty;
      solve(k, back, back);
      EXPECT_TRUE(IsNear(back, y));
      for (const auto& [what, want] : {std::pair{1000, &qty}, {10, &rsd}, {1, &xb}}) {
        Mat z = y;  // each alone, in place of y
        solve(k, z, nullptr, z, nullptr, z, z, what);
        EXPECT_TRUE(AreSame(z.data, want->data)) << what;
      }
    }
  }
  // What rounding leaves of downdated norms has no order; the first of equal columns is taken.
  const double unit = 0x1p-40, big = 1e9 * unit;
  Mat parallel({{4 * big, 0, big, big, big, big},
                {0, 2 * big, big, big, big, big},
                {0, 0, 3 * unit, 0, 0, 0},
                {0, 0, 0, 7 * unit, 0, 0},
                {0, 0, 0, 0, 7 * unit, 0},
                {0, 0, 0, 0, 0, 9 * unit}});
  Mat aux(6, 1), norms(6, 1);
  Indices made(6);
  Linpack::Dqrdc(parallel, parallel.ld, 6, 6, aux, made.data(), norms, 1);
  EXPECT_EQ(made, (Indices{1, 2, 6, 4, 5, 3}));
  Mat notANumber({{1, 2}, {3, kNaN}});
  double qraux[4], y[] = {1, 2, 3, 4}, b[4];
  int jpvt[] = {0, 0};
  Linpack::Dqrdc(notANumber, notANumber.ld, 2, 2, qraux, jpvt, b, 1);
  EXPECT_EQ(jpvt[0], 2);
  Mat zero({{1, 0, 0, 3}, {2, 0, 0, 4}, {2, 0, 0, 1}, {1, 0, 0, 1}});
  Linpack::Dqrdc(zero, zero.ld, 4, 4, qraux, nullptr, nullptr, 0);
  EXPECT_EQ(Linpack::Dqrsl(zero, zero.ld, 4, 4, qraux, y, nullptr, y, b, nullptr, nullptr, 100), 3);
  EXPECT_CLOSE(Blas1::DNrm2(4, y, 1), std::sqrt(30), 4 * kEps);
}

// ---- Singular values

// Nothing is expected of what is there before.
Mat Undefined(int m, int n) {
  return Mat(m, n, [](int, int) { return kNaN; });
}

struct SVD {
  const Mat& a;
  int job;
  bool inPlace = false;
  Mat x = a, u = Undefined(a.m, job / 10 == 1 ? a.m : std::min(a.m, a.n)), v = Undefined(a.n, a.n),
      s = Undefined(std::min(a.m + 1, a.n), 1), e = Undefined(a.n, 1), work = Undefined(a.m, 1);
  double* toU = job < 10 ? nullptr : inPlace ? &x(0, 0) : &u(0, 0);
  double* toV = job % 10 == 0 ? nullptr : inPlace ? &x(0, 0) : &v(0, 0);
  int info = Linpack::Dsvdc(x, x.ld, a.m, a.n, s, e, toU, u.ld, toV, v.ld, work, job);
};

TEST(LinpackSVD, Decomposes) {
  std::mt19937 random(12);
  std::vector<Mat> all{
#include "math/matrix/linpack/singular_values_cases.inc"
  };
  for (auto [n, p] : kShapes) {
    all.push_back(Random(n, p, random));
    for (int at = 0; at < 2 * std::min(n, p); ++at) {
      all.push_back(Random(n, p, random));
      all.back()(at / 2, at / 2) = at % 2 ? kNaN : kInf;
    }
  }
  for (const Mat& a : all) {
    const SVD plain{a, 0};
    for (int job : {1, 10, 11, 20, 21}) {
      SCOPED_TRACE(::testing::PrintToString(a.data) + ", job " + std::to_string(job));
      const SVD f{a, job};
      EXPECT_TRUE(AreSame(f.s.data, plain.s.data)) << "depend on the vectors";
      EXPECT_EQ(std::isfinite(Norm(a)), f.info == 0 && std::isfinite(Norm(f.s))) << f.info;
      if (!std::isfinite(Norm(a))) continue;  // it ended
      for (int i = 0; i < f.s.m; ++i)
        EXPECT_EACH(true, f.s(i, 0) >= (i + 1 < f.s.m ? f.s(i + 1, 0) : 0), f.e(i, 0) == 0) << i;
      EXPECT_TRUE(job < 10 || IsNear(Trans(f.u) * f.u, Identity(f.u.n), a.m));
      EXPECT_TRUE(job % 10 == 0 || IsNear(Trans(f.v) * f.v, Identity(a.n), a.n));
      const Mat s(f.u.n, a.n, [&](int i, int j) { return i == j ? f.s(i, 0) : 0; });
      EXPECT_TRUE(job % 10 == 0 || job < 10 || IsNear(f.u * s * Trans(f.v), a, 3 * Norm(a)));
      if (a.m != a.n || (job != 1 && job != 20)) continue;
      EXPECT_TRUE(AreSame((SVD{a, job, true}).x.data, (job == 1 ? f.v : f.u).data));
    }
  }
  double* none = nullptr;
  for (int n : {0, 1})
    EXPECT_EQ(Linpack::Dsvdc(none, 1, n, 1 - n, none, none, none, 1, none, 1, none, 11), 0);
}

}  // namespace
}  // namespace NQMath_940
