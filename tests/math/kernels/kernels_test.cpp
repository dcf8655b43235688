// The loops below the matrix classes: the rules of the plain ones on cases small enough to know,
// and the fast forms against the plain ones, bit for bit, on every instruction set of the machine.
// What the plain sweep gives is tested through the symmetric matrix.
#include <gtest/gtest.h>

#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_cholesky.h>
#include <nqcommon/math/kernels/packed_sweep.h>
#include <nqcommon/math/kernels/plane_rotations.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/kernels/triangular.h>
#include <nqcommon/math/kernels/tridiagonal.h>
#include <nqcommon/math/matrix/linpack/Blas1.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "support/compare.h"
#include "support/packed.h"
#include "support/special_values.h"

namespace NQMath_940::internal {
namespace {

using namespace nqtest;

// `run` gives all that a form answers, in one line of numbers.
template <class Run>
void ExpectEveryFormSame(const char* name, std::size_t n, const Values& want, Run run) {
  for (const Isa isa : RunnableIsas()) EXPECT_TRUE(AreSame(run(isa), want)) << Label(name, n, isa);
}

// Every comparison below is made for the instruction sets that this machine runs; the others are
// skipped by name.
TEST(InstructionSets, MachineRunsAllThatHaveKernels) {
  for (const Isa isa : kIsas) {
    if (isa > BestIsa()) GTEST_SKIP() << "kernels not run on this machine: from " << NameOf(isa);
  }
}

TEST(PlainLoops, WhatTakesNoPartIsZero) {
  Values x = {3, 4};
  LowerSolve(Values{0, 5, 2}.data(), 2, x.data());
  EXPECT_EQ(x, (Values{0, 2}));
  EXPECT_EQ(Sum(0, nullptr, 1), 0);
  EXPECT_EQ(Extremes().Min(), 0);
}

// ---- Products

// Sizes around the borders of tiles and blocks: m, inner, n.
constexpr std::size_t kSizes[][3] = {{4, 64, 4},   {4, 8, 33},    {9, 8, 15},    {16, 16, 16},
                                     {17, 129, 8}, {33, 5, 260},  {257, 12, 31}, {64, 128, 48},
                                     {31, 300, 9}, {65, 257, 65}, {100, 3, 100}, {520, 20, 520}};

TEST(DenseKernels, EveryFormGivesTheBitsOfThePlainLoop) {
  // Long enough for any layout of any size, not finite in places.
  Values data = RandomPositiveDefinite(500);
  data[1234] = kInf;
  data[40000] = kNaN;
  for (const auto& size : kSizes) {
    const std::size_t m = size[0], inner = size[1], n = size[2];
    for (const Operand& a : {RowsAt(data.data(), inner + 3), TransposeOf(data.data(), m),
                             TriangleAt(data.data()), LowerAt(data.data()), UpperAt(&data[77])}) {
      for (const Operand& b : {RowsAt(&data[77], n), TransposeOf(&data[77], inner),
                               TriangleAt(data.data()), LowerAt(&data[77]), UpperAt(data.data())}) {
        // A triangle is square.
        const std::size_t rows = a.step == 0 ? inner : m, lower = RowStart(rows);
        const std::size_t columns = b.step == 0 ? inner : n;
        // The triangle of a a', and behind it a b: made first, so that no write past the end hides.
        Values want(lower + rows * columns, 7);
        MultiplyPlain(a, b, rows, inner, columns, &want[lower]);
        MultiplyLowerPlain(a, TransposeOf(a), rows, inner, want.data());
        SCOPED_TRACE(::testing::PrintToString(size));
        ExpectEveryFormSame("products", inner, want, [&](Isa isa) {
          Values got(want.size(), 7);
          Multiply(a, b, rows, inner, columns, &got[lower], isa);
          MultiplyLower(a, TransposeOf(a), rows, inner, got.data(), isa);
          return got;
        });
      }
    }
  }
}

// ---- Triangles

// The orders of PackedOrders() end blocks of pivots and tiles everywhere.
TEST(Triangular, EveryFormGivesTheBitsOfThePlainLoop) {
  using Form = void (*)(double*, std::size_t, Isa);
  using Plain = void (*)(double*, std::size_t);
  const struct {
    const char* name;
    Form fast;
    Plain plain;
  } rows[] = {{"inverse", InvertTriangle, InvertLower},
              {"L'L", TransTimesTriangle, TransTimesTrianglePlain},
              {"LL'", TriangleTimesTrans, LowerTimesTrans}};
  for (const auto& row : rows) {
    for (const std::size_t n : PackedOrders()) {
      Values l = RandomPositiveDefinite(n);
      for (const double special : {1.0, 0.0, kInf, kNaN}) {  // zero pivots; not finite in places
        const std::size_t zeros = special == 0 ? 1 + std::min<std::size_t>(n / 4, 40) : 0;
        for (std::size_t i = n / 2; i < n / 2 + zeros; ++i) l[DiagIndex(i)] = 0;
        if (!(special < kInf)) l[LowerIndex(n - 1, n / 3)] = special;
        Values want = l;
        row.plain(want.data(), n);
        ExpectEveryFormSame(row.name, n, want, [&](Isa isa) {
          Values got = l;
          row.fast(got.data(), n, isa);
          return got;
        });
      }
    }
  }
}

// ---- Cholesky

// The factor, for each row whether it is aliased, and the number of these.
template <class Form, class... Set>
Values Factored(Values s, const Values& t, double eps, Form form, Set... isa) {
  Bits aliased;
  const std::size_t count = form(s.data(), t.size(), t.data(), eps, &aliased, isa...);
  s.insert(s.end(), aliased.begin(), aliased.end());
  s.push_back(static_cast<double>(count));
  return s;
}

// The pivots of aliased rows, and no others, are 0.
TEST(PackedCholesky, PivotRules) {
  for (const auto& [name, s, t, eps, factor] :
       std::vector<std::tuple<const char*, Values, Values, double, Values>>{
#include "golden/matrix_pivot_rules.inc"
       }) {
    Values want = factor;
    for (std::size_t i = 0; i < t.size(); ++i) want.push_back(factor[DiagIndex(i)] == 0);
    want.push_back(std::reduce(want.data() + factor.size(), want.data() + want.size()));
    EXPECT_TRUE(AreSame(Factored(s, t, eps, CholeskyPlain), want)) << name;
  }
}

void ExpectEveryFactorSame(const Values& s, std::size_t n, const char* name, double eps = 1e-10) {
  const Values t(n, static_cast<double>(n));
  ExpectEveryFormSame(name, n, Factored(s, t, eps, CholeskyPlain),
                      [&](Isa isa) { return Factored(s, t, eps, Cholesky, isa); });
}

TEST(PackedCholesky, EveryFormGivesTheSameBits) {
  for (const std::size_t n : PackedOrders()) {
    const Values regular = RandomPositiveDefinite(n);
    ExpectEveryFactorSame(regular, n, "regular");

    // Rows of a tile: 4 or 8. The first, inner and last ones, and neighbours.
    Values aliased = regular;
    aliased[0] = 0;
    for (const std::size_t k : {3u, 4u, 7u, 10u, 15u, 16u, 63u, 100u}) {
      if (k < n) CopyRow(aliased, n, k - 2, k);
    }
    ExpectEveryFactorSame(aliased, n, "aliased");

    Values negative = regular;
    negative[DiagIndex(n / 3)] *= -1;
    ExpectEveryFactorSame(negative, n, "a NaN pivot", -2);

    for (const double x : {kNaN, kInf}) {
      Values special = regular;
      special[LowerIndex(n - 1, n / 2)] = x;
      special[DiagIndex(n / 3)] = x;
      ExpectEveryFactorSame(special, n, "NaN or infinity");
      special = aliased;  // in the column of an aliased pivot
      special[LowerIndex(n - 1, 0)] = x;
      ExpectEveryFactorSame(special, n, "NaN or infinity, aliased");
    }
  }
}

// ---- Sweep

constexpr double kEps = 1e-6;

// A matrix, its tolerance vector, the rows swept in so far, and what each row swept reported.
struct State {
  explicit State(std::size_t order) : n(order), s(RandomPositiveDefinite(n)), t(n, 1.0), swept(n) {}

  template <class Form, class... Set>
  State SweptOneByOne(const Indices& rows, Form form, Set... isa) const {
    State state = *this;
    for (const int row : rows) {
      const auto k = static_cast<std::size_t>(row);
      const double pivot = state.s[DiagIndex(k)];
      state.steps.push_back(
          {pivot, form(state.s.data(), n, k, kEps, t.data(), state.swept, isa...)});
    }
    return state;
  }
  // The matrix, the pivots, who was refused, who is in.
  Values Flat() const {
    Values flat = s;
    for (const auto& [pivot, done] : steps) flat.insert(flat.end(), {pivot, done ? 1.0 : 0.0});
    flat.insert(flat.end(), swept.begin(), swept.end());
    return flat;
  }

  std::size_t n;
  Values s, t;
  Bits swept;
  std::vector<SweepStep> steps;
};

State ExpectEverySweepSame(const State& state, const Indices& rows, const char* name) {
  const State plain = state.SweptOneByOne(rows, SweepRowPlain);
  const Values want = plain.Flat();
  ExpectEveryFormSame(name, state.n, want, [&](Isa isa) {
    State got = state;
    SweepRows(got.s.data(), got.n, rows, kEps, got.t.data(), got.swept, &got.steps, isa);
    return got.Flat();
  });
  SCOPED_TRACE("row by row");
  ExpectEveryFormSame(name, state.n, want,
                      [&](Isa isa) { return state.SweptOneByOne(rows, SweepRow, isa).Flat(); });
  return plain;
}

// 2n rows a step apart: from one to the next, all in and all out again; further apart, where the
// step shares a divisor with n a few rows over and over, within a panel too.
Indices Rows(std::size_t n, std::size_t step) {
  Indices rows;
  for (std::size_t i = 0; i < 2 * n; ++i) rows.push_back(static_cast<int>(i * step % n));
  return rows;
}

TEST(PackedSweep, EveryFormGivesTheSameBits) {
  for (const std::size_t n : PackedOrders()) {
    const State regular(n);
    ExpectEverySweepSame(regular, Rows(n, 1), "in and out");
    ExpectEverySweepSame(regular, Rows(n, 37), "scattered");

    // Panels are 8 or 16 deep: refusals at the first, a middle and the last row of one. Some rows
    // are refused for their own pivots, of which the reference values demand more; others for the
    // sake of the row copied, when that one is swept: their pivots, all but 0, pass their own test.
    State refusing = regular;
    for (const std::size_t k : {0u, 11u, 31u}) {
      if (k < n) refusing.t[k] = 1e12;
    }
    refusing.s[0] = 1e12 * kEps;  // the largest that is refused
    for (const std::size_t k : {7u, 15u, 16u, 20u, 64u}) {
      if (k >= n) continue;
      CopyRow(refusing.s, n, k - 5, k);
      refusing.s[DiagIndex(k)] *= 1 + 1e-10;
      refusing.t[k] = 0;
    }
    const State plain = ExpectEverySweepSame(refusing, Rows(n, 1), "refusing");
    EXPECT_FALSE(plain.steps[0].done || (n > 7 && plain.steps[7].done)) << "pivot, copy";
    ExpectEverySweepSame(refusing, Rows(n, 37), "refusing, scattered");

    State special = regular;
    special.s[LowerIndex(n - 1, n / 2)] = kInf;
    special.s[DiagIndex(n / 3)] = kNaN;
    ExpectEverySweepSame(special, Rows(n, 37), "NaN and infinity");
  }
  // Beyond the strip of columns that a single row works in, and with panels 32 deep.
  ExpectEverySweepSame(State(1501), {0, 511, 512, 513, 1500, 700, 511, 3}, "few rows");
}

// ---- Eigenvalues

// Eigenvalues, then eigenvectors.
Values Solve(Values s, std::size_t n, Isa isa) {
  Values d(n + n * n), e(n);
  double* z = d.data() + n;
  for (std::size_t i = 0; i < n; ++i) z[i * n + i] = 1;
  ReduceToTridiagonal(s.data(), n, d.data(), e.data(), isa);
  RotationBatch rotations(z, n, isa);
  EXPECT_EQ(QlEigenvalues(d.data(), e.data(), n, 1e-15, 30, &rotations), n);
  rotations.Apply();
  BackTransform(s.data(), n, z, isa);
  return d;
}

TEST(Tridiagonal, EveryInstructionSetSolvesToTheSameBits) {
  for (const std::size_t n : PackedOrders()) {
    const Values s = RandomPositiveDefinite(n);
    ExpectEveryFormSame("solution", n, Solve(s, n, Isa::kBaseline),
                        [&](Isa isa) { return Solve(s, n, isa); });
  }
  EXPECT_TRUE(Solve({}, 0, BestIsa()).empty());
  // A power of two, up to the ends of the range, changes the eigenvalues alone, which take it.
  const Values s = RandomPositiveDefinite(20), want = Solve(s, 20, BestIsa());
  for (const int power : {-1018, 1018}) {
    Values far = s;
    for (double& x : far) x = std::ldexp(x, power);
    far = Solve(far, 20, BestIsa());
    for (std::size_t i = 0; i < 20; ++i) far[i] = std::ldexp(far[i], -power);
    EXPECT_TRUE(AreSame(far, want)) << power;
  }
}

// The square of the second differences (-1, 2, -1), whose rows begin with zeros.
TEST(Tridiagonal, KnownEigenvalues) {
  Values s(RowStart(20));
  for (std::size_t i = 0; i < 20; ++i) {
    s[DiagIndex(i)] = i % 19 == 0 ? 5 : 6;
    if (i > 0) s[LowerIndex(i, i - 1)] = -4;
    if (i > 1) s[LowerIndex(i, i - 2)] = 1;
  }
  Values eigenvalues = Solve(s, 20, BestIsa());
  std::sort(eigenvalues.data(), eigenvalues.data() + 20);
  for (std::size_t i = 0; i < 20; ++i) {
    const double root = 2 * std::sin(static_cast<double>(i + 1) / 42 * std::acos(-1));
    EXPECT_NEAR(eigenvalues[i], root * root * root * root, 5e-14);
  }
}

// Sequences of all lengths, none included, that overlap, lie apart or cover everything, several
// batches of them; the numbers of rows put the strips' ends everywhere.
TEST(PlaneRotations, BatchesEqualOneRotationAfterTheOther) {
  std::mt19937 random(1);
  for (std::size_t n : {2u, 3u, 5u, 16u, 17u, 61u}) {
    Values start(n * n);
    for (double& x : start) x = static_cast<double>(random()) / 4294967296.0 - 0.5;
    for (Isa isa : RunnableIsas()) {
      Values want = start, got = start;
      RotationBatch batch(got.data(), n, isa);
      for (int sequence = 0; sequence < 100; ++sequence) {
        const std::size_t top = sequence % 3 ? n - 2 : random() % (n - 1);
        const std::size_t count = sequence % 4 ? top + 1 - top / 8 : random() % (top + 2);
        double* pairs = batch.Begin(top, top + 1);
        for (std::size_t k = 0; k < count; ++k) {
          const double c = pairs[2 * k] = std::cos(static_cast<double>(random()));
          const double s = pairs[2 * k + 1] = std::sqrt(1 - c * c);
          double* upper = want.data() + (top - k) * n;
          Blas1::DRot(static_cast<int>(n), upper + n, 1, upper, 1, c, s);
        }
        batch.End(count);
      }
      batch.Apply();
      EXPECT_TRUE(AreSame(got, want)) << Label("rotations", n, isa);
    }
  }
}

}  // namespace
}  // namespace NQMath_940::internal
