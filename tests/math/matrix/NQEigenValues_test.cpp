// Eigenvalues: matrices whose spectra are known, the generalised problem, counts and refusals,
// sorting, positive definiteness.
#include <nqcommon/math/matrix/NQEigenValues.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

constexpr double kEps = 0x1p-52;

// The matrix of element(i, j), 0 <= i, j < n.
template <class Element>
Dense Square(std::size_t n, Element element) {
  Dense a(n, Values(n));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j)
      a[i][j] = element(static_cast<double>(i), static_cast<double>(j));
  }
  return a;
}

Dense Diagonal(const Values& d) { return ToDense(NQDiagMatrix(d)); }
NQSymMatrix Sym(const Values& diagonal) { return ToSym(Diagonal(diagonal)); }

double Band(double i, double j, double diagonal, double beside) {
  return i == j ? diagonal : std::fabs(i - j) == 1 ? beside : 0;
}

// The eigenvalues value(k, n), k = 1 .. n, of the matrix of element(i, j), or without one of
// Q diag(values) Q with the reflection Q = I - 2 v v' / v'v, v = (1, 2, .., n).
struct Family {
  const char* name;
  double (*element)(double i, double j);
  double (*value)(double k, double n);

  Dense Matrix(std::size_t n) const {
    if (element != nullptr) return Square(n, element);
    const double vv = static_cast<double>(n * (n + 1) * (2 * n + 1)) / 6;
    const Dense q =
        Square(n, [vv](double i, double j) { return (i == j) - 2 * (i + 1) * (j + 1) / vv; });
    return q * Diagonal(Spectrum(n)) * q;
  }
  Values Spectrum(std::size_t n) const {
    Values values(n);
    for (double k = 0; double& x : values) x = value(++k, static_cast<double>(n));
    std::sort(values.begin(), values.end());
    return values;
  }
};

const Family kFamilies[] = {
    {"second differences", [](double i, double j) { return Band(i, j, 2, -1); },
     [](double k, double n) { return 2 - 2 * std::cos(k * std::numbers::pi / (n + 1)); }},
    {"min(i, j)", [](double i, double j) { return std::min(i, j) + 1; },
     [](double k, double n) {
       return std::pow(2 * std::sin((k - 0.5) * std::numbers::pi / (2 * n + 1)), -2);
     }},
    {"ones", [](double, double) { return 1.0; }, [](double k, double n) { return k < n ? 0 : n; }},
    {"graded", nullptr, [](double k, double) { return std::exp2(-2 * k); }},
    {"clusters", nullptr, [](double k, double) { return std::fmod(k, 3) + k * 0x1p-48; }},
    {"rank 2", nullptr, [](double k, double) { return k == 2 ? -3.0 : k == 1; }},
    {"both signs", nullptr, [](double k, double) { return std::fmod(k, 2) == 0 ? k : -k; }}};

struct NQEigenValuesTest : ::testing::Test {
  Values values;
  NQRectMatrix vectors;
  NQSymMatrix out = NQSymMatrix(5, true);
  bool isPD = true, changed = true;
};

// H y = lambda y with orthonormal rows y: all errors as one sum of squares, which no NaN escapes,
// in units of n eps and norm.
double Error(const Dense& h, double norm, const Values& values, const NQRectMatrix& vectors) {
  const Dense y = ToDense(vectors);
  const Dense residual = Plus(y * h, -1, Diagonal(values) * y),
              skew = Plus(y * Trans(y), -1, Diagonal(Values(h.size(), 1)));
  const double sum =
      TraceOf(residual * Trans(residual))[0][0] / (norm * norm) + TraceOf(skew * Trans(skew))[0][0];
  return std::sqrt(sum) / (static_cast<double>(h.size()) * kEps);
}

// Those of low rank need more iterations than the default allows.
TEST_F(NQEigenValuesTest, KnownSpectra) {
  for (const Family& known : kFamilies) {
    for (std::size_t n : {1u, 2u, 3u, 8u, 9u, 33u, 100u}) {
      SCOPED_TRACE(known.name + (" of order " + std::to_string(n)));
      const Dense h = known.Matrix(n);
      const Values want = known.Spectrum(n);
      const double norm = std::max(-want.front(), want.back());
      const double unit = static_cast<double>(n) * kEps;
      for (double tolerance : {1e-12, 1e-15}) {
        NQEigenValues eigen(ToSym(h), tolerance, 300);
        Values alone;
        ASSERT_EQ(eigen.GetSorted(values, vectors, false), n);
        EXPECT_LE(Error(h, norm, values, vectors), 4 + std::sqrt(n) * tolerance / unit);
        for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(values[i], want[i], 4 * unit * norm) << i;
        for (int power : {0, -900, 1000}) {  // without vectors; near both ends of the range
          NQSymMatrix scaled = ToSym(h);
          scaled.MultiplyByNumber(std::ldexp(1.0, power));
          EXPECT_EQ(NQEigenValues(scaled, tolerance, 300).GetSorted(alone, false), n);
          for (std::size_t i = 0; i < n; ++i)
            EXPECT_NEAR(std::ldexp(alone[i], -power), values[i], power ? unit * norm : 0) << power;
        }
      }
    }
  }
}

// W21+ (Wilkinson 1965, The Algebraic Eigenvalue Problem): pairs that agree to 13 digits.
TEST_F(NQEigenValuesTest, WilkinsonsMatrix) {
  const Dense w = Square(21, [](double i, double j) { return Band(i, j, std::fabs(i - 10), 1); });
  ASSERT_EQ(NQEigenValues(ToSym(w), 1e-15, 30).GetSorted(values, true), 21);
  EXPECT_CLOSE(values[0], 10.746194182903393, 1e-15);
  EXPECT_CLOSE(values[1], 10.746194182903322, 1e-15);
}

// H = X D X' and E = X X' with a unit lower triangular X of integers, where V is the inverse of X
// and V H V' = D. Made of the first columns of X alone, E leaves the first of D, and zeros.
TEST_F(NQEigenValuesTest, GeneralisedProblem) {
  const Dense x = {{1, 0, 0, 0}, {2, 1, 0, 0}, {-1, 3, 1, 0}, {1, 1, -2, 1}};
  for (std::size_t rank : {1u, 3u, 4u}) {
    Values kept(4, 1), d = {5, -2, 7, 3};
    const NQSymMatrix h = ToSym(x * Diagonal(d) * Trans(x));
    for (std::size_t i = rank; i < 4; ++i) kept[i] = d[i] = 0;
    NQEigenValues eigen(h, ToSym(x * Diagonal(kept) * Trans(x)), 1e-15, 30);
    ASSERT_TRUE(eigen.IsValidEMatrix());
    ASSERT_EQ(eigen.GetSorted(values, vectors, true), 4);
    EXPECT_LE(Error(Diagonal(d), 7, values, vectors), 4) << "rank " << rank;
  }
}

TEST_F(NQEigenValuesTest, NothingIsStale) {
  NQEigenValues eigen(Sym({3, 1}), Sym({1, 4}), 0, 0);  // default tolerance and iterations
  const auto sorted = [&] {
    EXPECT_GE(eigen.GetSorted(values, false), 1);
    return values;
  };
  EXPECT_EQ(sorted(), Values({0.25, 3}));
  EXPECT_NE(Displayed(eigen).find("fmOrthInfo\nNQSymMatrix display start\nThe number of rows = 0"),
            std::string::npos)
      << "reflections that nobody asked for";
  EXPECT_EQ(eigen.SetHMatrix(Sym({1, 8})), 2);
  EXPECT_EQ(sorted(), Values({1, 2})) << "the new H with the old E";
  EXPECT_EQ(eigen.GetSorted(values, vectors, true), 2) << "vectors after values alone";
  EXPECT_EQ(ToDense(vectors), (Dense{{0, 1}, {1, 0}}));
  EXPECT_TRUE(eigen.SetEMatrix(Sym({1, 16})));
  EXPECT_EQ(sorted(), Values({0.5, 1})) << "the new E";
  EXPECT_TRUE(eigen.SetEMatrix(Sym({4, -1}))) << "without the negative pivot";
  EXPECT_EQ(sorted(), Values({0, 0.25}));
  for (const NQSymMatrix& bad : {Sym({1}), Sym({0, -1}), Sym({kNaN, kNaN})}) {
    EXPECT_TRUE(eigen.SetEMatrix(Sym({1, 4})));
    EXPECT_EACH(false, eigen.SetEMatrix(bad), eigen.IsValidEMatrix());
    EXPECT_EQ(sorted(), Values({1, 8})) << "E refused and emptied";
  }
  EXPECT_EACH(true, eigen.SetEMatrix(Sym({4, 4})), eigen.SetHMatrix(Sym({1, 2, 3})) == 3);
  EXPECT_FALSE(eigen.IsValidEMatrix()) << "of another order";
  EXPECT_EQ(sorted(), Values({1, 2, 3}));
  EXPECT_EACH(false, eigen.SetHMatrix(NQSymMatrix()) != 0, eigen.SetEMatrix(NQSymMatrix()),
              eigen.Compute(values) != -2, eigen.GetSorted(values, vectors, true) != -2,
              values.size() != 3, vectors.GetNRows() != 2);
}

TEST_F(NQEigenValuesTest, IterationLimit) {
  // Row 0 has converged before any step; rows 1 and 2 need one.
  NQEigenValues eigen(FromPacked({3, 0, 0, 0, 1, 0}), 1e-12, 1);
  EXPECT_EACH(false, eigen.SetTolerance(0), eigen.SetTolerance(kNaN), eigen.SetMaxIter(0));
  EXPECT_EACH(true, eigen.GetSorted(values, vectors, false) == 1, vectors.GetElem(0, 0) == 1);
  EXPECT_EQ(values, Values({3, 0, 0})) << "what was not computed stays behind";
  EXPECT_EACH(false, eigen.IsPDHMatrix(0, isPD), eigen.GetPDHMatrix(0, out, changed), changed);
  EXPECT_EQ(out.AsVector(), Values(6));
  EXPECT_EACH(true, eigen.SetTolerance(1e-9), eigen.SetMaxIter(30), eigen.Compute(values) == 3);
  EXPECT_EQ(NQEigenValues(ToSym(kFamilies[2].Matrix(200)), 1e-12, 30).Compute(values), 200);
  EXPECT_EQ(NQEigenValues(Sym({-7}), 1e-12, 1).Compute(values), 1);
  EXPECT_EQ(values, Values{-7});
  // Small beside its neighbours together; squares of ratios that overflow; a rotation of 0 and 0.
  for (const auto& [packed, tolerance, maxIter, count] :
       {std::tuple<Values, double, int, int>{{2, 1, 2}, 1e-12, 1, 0},
        {{0, 3e-12, 4}, 1e-12, 1, 2},
        {{1, 0, 1, 1e-200, 1, 1}, 1e-12, 30, 3},
        {{0, 1e-280, 0, 0, 1e-100, 1}, 1e-200, 30, 3}})
    EXPECT_EQ(NQEigenValues(FromPacked(packed), tolerance, maxIter).Compute(values), count);
  EXPECT_CLOSE(*std::min_element(values.begin(), values.end()), -1e-200, 1e-12);
}

TEST_F(NQEigenValuesTest, NaNAndInfinityEnd) {
  for (double bad : {kNaN, kInf, -kInf}) {
    for (std::ptrdiff_t at = 0; at < 10; ++at) {
      NQSymMatrix h = FromPacked({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
      h.SetElem(at, bad);
      EXPECT_LE(NQEigenValues(h, 1e-12, 30).GetSorted(values, vectors, true), bad == bad ? 4 : 3);
    }
  }
  NQEigenValues eigen(FromPacked({kNaN}), 0, 0);
  EXPECT_EACH(false, eigen.IsPDHMatrix(0, isPD), isPD, eigen.GetPDHMatrix(0, out));
}

TEST_F(NQEigenValuesTest, InputOrderAndStableSorting) {
  NQEigenValues eigen(Sym({2, 5, 2, -1, 5}), 1e-12, 30);
  EXPECT_EQ(eigen.Compute(values), 5);
  EXPECT_EQ(values, Values({2, 5, 2, -1, 5}));
  const int order[2][5] = {{3, 0, 2, 1, 4}, {1, 4, 0, 2, 3}};
  for (bool descending : {false, true}) {
    EXPECT_EQ(eigen.GetSorted(values, vectors, descending), 5);
    for (int i = 0; i < 5; ++i)
      EXPECT_EQ(vectors.GetElem(i, order[descending][i]), 1) << "row " << i << " " << descending;
  }
}

TEST_F(NQEigenValuesTest, PositiveDefiniteness) {
  for (const auto& [name, packed, eps, repaired] :
       std::vector<std::tuple<const char*, Values, double, Values>>{
#include "math/matrix/definiteness_cases.inc"
       }) {
    NQEigenValues eigen(FromPacked(packed), 1e-12, 30);
    const bool want = repaired.empty();
    isPD = !want, changed = want;
    EXPECT_EACH(true, eigen.IsPDHMatrix(eps, isPD), eigen.GetPDHMatrix(eps, out, changed)) << name;
    EXPECT_EACH(want, isPD, !changed) << name;
    ASSERT_EQ(out.GetNRows(), 2) << name;
    for (std::size_t k = 0; k < 3; ++k)
      EXPECT_CLOSE(out.AsVector()[k], (want ? packed : repaired)[k], want ? 0 : 4 * kEps) << name;
  }
}

}  // namespace
}  // namespace NQMath_940
