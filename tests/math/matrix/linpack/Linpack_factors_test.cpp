// Factorisations and triangles with their solves, estimates, determinants and inverses: five kinds
// of matrices in nine storages, one set of checks. Tridiagonal systems.

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <array>
#include <tuple>

#include "math/matrix/linpack/linpack_support.h"
#include "support/known_matrices.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

enum Kind { kGeneral, kPositive, kIndefinite, kUpper, kLower };
enum Layout { kFull, kPacked, kBand };

struct Stored;
using S = Stored&;

struct Family {
  const char* name;
  Kind kind;
  Layout layout;
  int (*factor)(S);
  int (*condition)(S, double& rcond);  // 0 where the routine has no result
  void (*solve)(S, double* b, int job);
  void (*invert)(S, double* det, int* inert, int job);
};

// A matrix as stored, NaN in all cells that are not to be read, and what its factorisation leaves.
struct Stored {
  Stored(const Family& family, const Mat& d, int below = 99, int above = 99)
      : n(d.n),
        symmetric(family.kind == kPositive || family.kind == kIndefinite),
        layout(family.layout),
        kpvt(d.data.size()) {
    const bool band = layout == kBand;
    if (!symmetric && family.kind != kUpper) ml = std::max(0, std::min(band ? below : 99, n - 1));
    if (family.kind != kLower) mu = std::max(0, std::min(band ? above : 99, n - 1));
    room = band ? ml : 0;
    ld = band ? room + mu + ml + 2 : n + 1;
    cells.assign(static_cast<std::size_t>(layout == kPacked ? n * (n + 1) / 2 : ld * n), kNaN);
    a = cells.data();
    ForEach([&](int i, int j, double& cell) { cell = j - i <= mu ? d(i, j) : kNaN; });
  }
  // Calls f(i, j, cell) for all that is stored, with the room above a general band.
  template <class F>
  void ForEach(F f) {
    for (int j = 0; j < n; ++j) {
      const int start = layout == kPacked ? j * (j + 1) / 2 : j * ld;
      const int shift = layout == kBand ? room + mu - j : 0;
      for (int i = std::max(0, j - mu - room); i <= std::min(n - 1, j + ml); ++i)
        f(i, j, a[start + shift + i]);
    }
  }
  // With zeros where nothing is stored; both triangles of a symmetric matrix.
  Mat Whole() {
    Mat d(n, n);
    ForEach([&](int i, int j, double cell) { d(i, j) = symmetric ? d(j, i) = cell : cell; });
    return d;
  }

  int n, ml = 0, mu = 0, room = 0, ld = 0;
  bool symmetric;
  Layout layout;
  Indices kpvt;
  Values work = Values(kpvt.size(), kNaN), cells;
  int* p = kpvt.data();
  double *z = work.data(), *a = nullptr;
};

const Family kFamilies[] = {
    {"general", kGeneral, kFull, [](S s) { return Linpack::Dgefa(s.a, s.ld, s.n, s.p); },
     [](S s, double& r) { return Linpack::Dgeco(s.a, s.ld, s.n, s.p, r, s.z), 0; },
     [](S s, double* b, int job) { Linpack::Dgesl(s.a, s.ld, s.n, s.p, b, job); },
     [](S s, double* d, int*, int job) { Linpack::Dgedi(s.a, s.ld, s.n, s.p, d, s.z, job); }},
    {"general band", kGeneral, kBand,
     [](S s) { return Linpack::Dgbfa(s.a, s.ld, s.n, s.ml, s.mu, s.p); },
     [](S s, double& r) { return Linpack::Dgbco(s.a, s.ld, s.n, s.ml, s.mu, s.p, r, s.z), 0; },
     [](S s, double* b, int job) { Linpack::Dgbsl(s.a, s.ld, s.n, s.ml, s.mu, s.p, b, job); },
     [](S s, double* d, int*, int) { Linpack::Dgbdi(s.a, s.ld, s.n, s.ml, s.mu, s.p, d); }},
    {"positive", kPositive, kFull, [](S s) { return Linpack::Dpofa(s.a, s.ld, s.n); },
     [](S s, double& r) { return Linpack::Dpoco(s.a, s.ld, s.n, r, s.z); },
     [](S s, double* b, int) { Linpack::Dposl(s.a, s.ld, s.n, b); },
     [](S s, double* d, int*, int job) { Linpack::Dpodi(s.a, s.ld, s.n, d, job); }},
    {"positive packed", kPositive, kPacked, [](S s) { return Linpack::Dppfa(s.a, s.n); },
     [](S s, double& r) { return Linpack::Dppco(s.a, s.n, r, s.z); },
     [](S s, double* b, int) { Linpack::Dppsl(s.a, s.n, b); },
     [](S s, double* d, int*, int job) { Linpack::Dppdi(s.a, s.n, d, job); }},
    {"positive band", kPositive, kBand, [](S s) { return Linpack::Dpbfa(s.a, s.ld, s.n, s.mu); },
     [](S s, double& r) { return Linpack::Dpbco(s.a, s.ld, s.n, s.mu, r, s.z); },
     [](S s, double* b, int) { Linpack::Dpbsl(s.a, s.ld, s.n, s.mu, b); },
     [](S s, double* d, int*, int) { Linpack::Dpbdi(s.a, s.ld, s.n, s.mu, d); }},
    {"indefinite", kIndefinite, kFull, [](S s) { return Linpack::Dsifa(s.a, s.ld, s.n, s.p); },
     [](S s, double& r) { return Linpack::Dsico(s.a, s.ld, s.n, s.p, r, s.z), 0; },
     [](S s, double* b, int) { Linpack::Dsisl(s.a, s.ld, s.n, s.p, b); },
     [](S s, double* d, int* i, int job) { Linpack::Dsidi(s.a, s.ld, s.n, s.p, d, i, s.z, job); }},
    {"indefinite packed", kIndefinite, kPacked, [](S s) { return Linpack::Dspfa(s.a, s.n, s.p); },
     [](S s, double& r) { return Linpack::Dspco(s.a, s.n, s.p, r, s.z), 0; },
     [](S s, double* b, int) { Linpack::Dspsl(s.a, s.n, s.p, b); },
     [](S s, double* d, int* i, int job) { Linpack::Dspdi(s.a, s.n, s.p, d, i, s.z, job); }},
    {"upper", kUpper, kFull, [](S) { return 0; },
     [](S s, double& r) { return Linpack::Dtrco(s.a, s.ld, s.n, r, s.z, 1), 0; },
     [](S s, double* b, int job) { Linpack::Dtrsl(s.a, s.ld, s.n, b, 10 * job + 1); },
     [](S s, double* d, int*, int job) {
       EXPECT_EQ(Linpack::Dtrdi(s.a, s.ld, s.n, d, 10 * job + 1), 0);
     }},
    {"lower", kLower, kFull, [](S) { return 0; },
     [](S s, double& r) { return Linpack::Dtrco(s.a, s.ld, s.n, r, s.z, 0), 0; },
     [](S s, double* b, int job) { Linpack::Dtrsl(s.a, s.ld, s.n, b, 10 * job); },
     [](S s, double* d, int*, int job) {
       EXPECT_EQ(Linpack::Dtrdi(s.a, s.ld, s.n, d, 10 * job), 0);
     }},
};

struct Case {
  std::string name;
  Mat matrix;
  int ml, mu;
};

// Matrices of the kind, of integers as far as doubles hold them, in narrow and wide bands.
std::vector<Case> Cases(Kind kind) {
  std::vector<Case> all{{"determinant underflows", Mat({{1e-200, 0}, {0, 4e-200}}), 0, 0},
                        {"determinant overflows", Mat({{1e200, 0}, {0, 3e200}}), 0, 0}};
  if (kind != kPositive) all.push_back({"pair", Mat({{1e160, 1e180}, {1e180, -1e160}}), 1, 1});
  for (const auto& known : KnownMatrices()) all.push_back({known.name, known.matrix, 99, 99});
  std::mt19937 random(7);
  for (int n : {1, 2, 3, 4, 5, 9, 14, 30}) {
    for (auto [ml, mu] : {std::pair{0, 0}, {1, 0}, {0, 2}, {1, 1}, {3, 2}, {2, 5}, {99, 99}}) {
      Mat a = Random(n, n, random);
      for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) a(i, j) *= j >= i - ml && j <= i + mu;
        if (ml == 0 || mu == 0 || kind == kPositive) a(i, i) = 3 + i % 5;
        if (kind == kUpper || kind == kLower) a(i, i) = i % 2 ? 12 : -15;
        if (ml == 2 && kind == kIndefinite) a(i, i) = 0;
      }
      if (kind == kPositive) a = Trans(Upper(a, n)) * Upper(a, n);
      if (kind == kIndefinite) a = a + Trans(a);
      all.push_back({::testing::PrintToString(std::array{n, ml, mu}), a, ml, mu});
    }
  }
  for (Case& c : all) {
    if (kind == kUpper) c.matrix = Upper(c.matrix, c.matrix.n);
    if (kind == kLower) c.matrix = Trans(Upper(Trans(c.matrix), c.matrix.n));
  }
  return all;
}

// The inverse, column by column; its transpose for job 1.
Mat SolveAll(const Family& family, S s, int job) {
  Mat x = Identity(s.n);
  for (int j = 0; j < s.n; ++j) family.solve(s, &x(0, j), job);
  return x;
}

bool IsRegular(const Family& family, const Case& known) {
  Stored s(family, known.matrix, known.ml, known.mu);
  return family.factor(s) == 0 && Norm(known.matrix) * Norm(SolveAll(family, s, 0)) < 1e12;
}

void CheckFactors(const Family& family, const Case& known) {
  const Mat &a = known.matrix, identity = Identity(a.n);
  Stored s(family, a, known.ml, known.mu), other(family, a, known.ml, known.mu);
  family.factor(s);
  double rcond = kNaN, det[] = {kNaN, kNaN};
  EXPECT_EQ(family.condition(other, rcond), 0);
  EXPECT_TRUE(AreSame(other.cells, s.cells));
  EXPECT_EQ(other.kpvt, s.kpvt);

  const Mat inverse = SolveAll(family, s, 0);
  const double condition = Norm(a) * Norm(inverse), allowed = 10 * kEps * condition;
  EXPECT_TRUE(IsNear(a * inverse, identity, condition));
  EXPECT_TRUE(
      IsNear(Trans(SolveAll(family, s, 1)) * a, identity, Norm(Trans(inverse)) * Norm(Trans(a))));
  EXPECT_GE(rcond * condition, 1 - allowed);
  EXPECT_LE(rcond * condition, 10);

  family.invert(s, det, nullptr, 10);
  EXPECT_EACH(true, std::fabs(det[0]) >= 1, std::fabs(det[0]) < 10) << det[0];
  const long double power = std::pow(10.0L, static_cast<long double>(det[1]));
  EXPECT_TRUE(a.n > 5 || std::fabs(det[0] * power / Determinant(a) - 1) <= allowed * a.n);
  EXPECT_TRUE(AreSame(other.cells, s.cells)) << "changed by the determinant";
  if (family.layout != kBand) {
    family.invert(s, nullptr, nullptr, 1);
    EXPECT_TRUE(IsNear(s.Whole(), inverse, condition * Norm(inverse)));
  }
  s.ForEach([](int, int, double& cell) { cell = kNaN; });
  for (double cell : s.cells) EXPECT_TRUE(std::isnan(cell)) << "wrote beside the matrix";
}

TEST(LinpackFactors, SolveWhatTheyWereMadeOf) {
  for (const Family& family : kFamilies) {
    int regular = 0;
    for (const Case& known : Cases(family.kind)) {
      SCOPED_TRACE(std::string(family.name) + " " + known.name);
      if (!IsRegular(family, known)) continue;
      ++regular;
      CheckFactors(family, known);
    }
    EXPECT_GE(regular, 50) << family.name;
  }
}

TEST(LinpackFactors, Failures) {
  for (const auto& [name, matrix, info, wantedInertia] :
       std::vector<std::tuple<const char*, Dense, std::array<int, 3>, std::array<int, 3>>>{
#include "math/matrix/linpack/failures_cases.inc"
       }) {
    for (const Family& family : kFamilies) {
      if (family.kind > kIndefinite) continue;
      SCOPED_TRACE(std::string(family.name) + ", " + name);
      const int want = info[family.kind];
      Stored s(family, matrix), other(family, matrix);
      double rcond = 7, det[] = {7, 7}, b[] = {1, 1, 1, 1};
      EXPECT_EQ(family.factor(s), want);
      EXPECT_EQ(family.condition(other, rcond), family.kind == kPositive ? want : 0);
      family.solve(s, b, 0);
      std::array inertia = family.kind == kIndefinite ? std::array{7, 7, 7} : wantedInertia;
      family.invert(s, det, inertia.data(), family.kind == kIndefinite ? 110 : 10);
      if (family.kind == kPositive && want != 0) {
        EXPECT_EQ(rcond, 7);
      } else if (!std::isfinite(Norm(Mat(matrix)))) {
        EXPECT_FALSE(std::isfinite(det[0]));
      } else {
        EXPECT_EQ(1 + rcond == 1, want != 0 || s.n == 0) << rcond;
        EXPECT_EQ(det[0] == 0, want != 0);
        EXPECT_EQ(inertia, wantedInertia);
      }
    }
  }
}

// Each element by one dot product from the first row down, whatever is computed side by side.
TEST(LinpackFactors, CholeskyInThePublishedOrder) {
  std::mt19937 random(8);
  for (int n : {3, 8, 23, 262}) {
    Mat a(n, n, [&](int i, int j) { return (i == j) * n + 1e-9 * static_cast<double>(random()); });
    Mat want = a;
    for (int j = 0; j < n; ++j) {
      for (int k = 0; k <= j; ++k) {
        const double rest = want(k, j) - Blas1::DDot(k, &want(0, k), 1, &want(0, j), 1);
        want(k, j) = k < j ? rest / want(k, k) : std::sqrt(rest);
      }
    }
    EXPECT_EQ(Linpack::Dpofa(a, a.ld, n), 0);
    EXPECT_TRUE(AreSame(a.data, want.data)) << n;
  }
}

// The published steps in exact rational arithmetic; the sign of e is turned twice on the way.
TEST(LinpackFactors, Estimates) {
  for (const auto& [kind, want, matrix] : std::vector<std::tuple<Kind, double, Dense>>{
#include "math/matrix/linpack/estimates_cases.inc"
       }) {
    for (const Family& family : kFamilies) {
      if (family.kind != kind) continue;
      double rcond = kNaN;
      Stored s(family, matrix);
      family.condition(s, rcond);
      EXPECT_CLOSE(rcond, want, 1e-14) << family.name;
    }
  }
}

// By the published comparisons, whose factor is (1 + sqrt(17)) / 8 = 0.6404.
TEST(LinpackFactors, IndefinitePivots) {
  for (const auto& [name, matrix, want] : std::vector<std::tuple<const char*, Dense, Indices>>{
#include "math/matrix/linpack/indefinite_pivots_cases.inc"
       }) {
    for (const Family& family : kFamilies) {
      if (family.kind != kIndefinite) continue;
      Stored s(family, matrix);
      EXPECT_EQ(family.factor(s), 0);
      EXPECT_EQ(Indices(s.p, s.p + s.n), want) << family.name << ", " << name;
    }
  }
}

TEST(LinpackTriangular, StopsAtAZero) {
  Mat t({{2, 1, 1}, {1, 0, 1}, {1, 1, 0}}), z(3, 1), first({{0, 1}, {1, 2}});
  for (int upper : {0, 1}) {
    double rcond = 7, b[] = {1, 2, 3};
    Linpack::Dtrco(t, t.ld, 3, rcond, z, upper);
    const std::array info{
        Linpack::Dtrsl(t, t.ld, 3, b, upper), Linpack::Dtrsl(t, t.ld, 3, b, 10 + upper),
        Linpack::Dtrdi(t, t.ld, 3, nullptr, 10 + upper), Linpack::Dtrsl(t, t.ld, 0, b, upper),
        Linpack::Dtrsl(first, first.ld, 2, b, upper)};
    EXPECT_EQ(info, (std::array{2, 2, upper ? 2 : 3, 0, 1}));
    EXPECT_EQ((Values{rcond, b[0], b[1], b[2]}), (Values{0, 1, 2, 3}));
  }
}

TEST(LinpackTridiagonal, Solves) {
  std::mt19937 random(9);
  int solved = 0;
  for (int trial = 0; trial < 120; ++trial) {
    const int n = trial / 2 % 12;
    const bool positive = trial % 2 != 0;
    Mat t(n, n), c(n, 1, [](int, int) { return kNaN; }), d(n, 1), e = c;
    for (int i = 0; i < n; ++i) {
      t(i, i) = d(i, 0) = positive ? 3 : static_cast<int>(random() % 5) - 2;
      if (i == 0) continue;
      t(i - 1, i) = e(i - 1, 0) = static_cast<int>(random() % 3) - 1;
      t(i, i - 1) = c(i, 0) = positive ? e(i - 1, 0) : static_cast<int>(random() % 9) - 4;
    }
    const Mat b = t * Random(n, 1, random);
    Mat x = b;
    const int info = positive ? (Linpack::Dptsl(n, d, e, x), 0) : Linpack::Dgtsl(n, c, d, e, x);
    EXPECT_TRUE(n > 0 || info == 0);
    if (info != 0) continue;
    ++solved;
    EXPECT_TRUE(IsNear(t * x, b, Norm(t) * Norm(x))) << "order " << n << ", trial " << trial;
  }
  EXPECT_GE(solved, 90);
  double c[] = {0, 1, 0}, d[] = {0, 1, 0}, e[] = {1, 0, 0}, b[] = {1, 1, 1, 1};
  EXPECT_EQ(Linpack::Dgtsl(3, c, d, e, b), 3);
  EXPECT_EQ(Linpack::Dgtsl(1, c, e + 1, e, b), 1);
  double below[] = {0, 0}, diagonal[] = {0, 1}, above[] = {1, 0};
  EXPECT_EQ(Linpack::Dgtsl(2, below, diagonal, above, b), 1);
}

}  // namespace
}  // namespace NQMath_940
