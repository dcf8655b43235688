// The fast forms of the sweep against the plain loops, bit for bit. What the plain loops give is
// tested through the symmetric matrix.
#include <nqcommon/math/matrix/internal/packed_sweep.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/compare.h"
#include "support/packed.h"

namespace NQMath_940::internal {
namespace {

using namespace nqtest;

constexpr double kEps = 1e-6;

// A matrix, its tolerance vector, the rows swept in so far, and what each row swept reported.
struct State {
  explicit State(std::size_t order) : n(order), s(RandomPositiveDefinite(n)), t(n, 1.0), swept(n) {}

  // Row k is refused for its own pivot: the reference value demands more of it.
  void RefusePivot(std::size_t k) { t[k] = 1e12; }

  // Row k is refused for the sake of row `copied`, when that one is swept: its pivot, all but 0,
  // passes its own test.
  void RefuseCopy(std::size_t k, std::size_t copied) {
    CopyRow(s, n, copied, k);
    s[DiagIndex(k)] *= 1 + 1e-10;
    t[k] = 0;
  }

  template <class SweepOne>
  void SweepEach(const Indices& rows, SweepOne sweepOne) {
    for (const int row : rows) {
      const auto k = static_cast<std::size_t>(row);
      const double pivot = s[DiagIndex(k)];
      steps.push_back({pivot, sweepOne(s.data(), n, k, kEps, t.data(), swept)});
    }
  }

  // Everything in one line of numbers: the matrix, the pivots, who was refused, who is in.
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

void ExpectEveryFormSame(const State& state, const Indices& rows, const char* name) {
  State want = state;
  want.SweepEach(rows, SweepRowPlain);
  for (const Isa isa : kIsas) {
    const std::string label = Label(name, state.n, isa);
    State got = state;
    SweepRows(got.s.data(), got.n, rows, kEps, got.t.data(), got.swept, &got.steps, isa);
    EXPECT_TRUE(AreSame(got.Flat(), want.Flat())) << label << ", list";
    got = state;
    got.SweepEach(rows, [isa](auto&&... arguments) { return SweepRow(arguments..., isa); });
    EXPECT_TRUE(AreSame(got.Flat(), want.Flat())) << label << ", row by row";
  }
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
    ExpectEveryFormSame(regular, Rows(n, 1), "in and out");
    ExpectEveryFormSame(regular, Rows(n, 37), "scattered");

    // Panels are 8 or 16 deep: refusals at the first, a middle and the last row of one.
    State refusing = regular;
    for (const std::size_t k : {0u, 11u, 31u}) {
      if (k < n) refusing.RefusePivot(k);
    }
    for (const std::size_t k : {7u, 15u, 16u, 20u, 64u}) {
      if (k < n) refusing.RefuseCopy(k, k - 5);
    }
    State plain = refusing;
    plain.SweepEach(Rows(n, 1), SweepRowPlain);
    EXPECT_FALSE(plain.steps[0].done || (n > 7 && plain.steps[7].done)) << "pivot, copy";
    ExpectEveryFormSame(refusing, Rows(n, 1), "refusing");
    ExpectEveryFormSame(refusing, Rows(n, 37), "refusing, scattered");

    State special = regular;
    special.s[LowerIndex(n - 1, n / 2)] = std::numeric_limits<double>::infinity();
    special.s[DiagIndex(n / 3)] = std::numeric_limits<double>::quiet_NaN();
    ExpectEveryFormSame(special, Rows(n, 37), "NaN and infinity");
  }
  // Beyond the strip of columns that a single row works in, and with panels 32 deep.
  ExpectEveryFormSame(State(1501), {0, 511, 512, 513, 1500, 700, 511, 3}, "few rows");
}

}  // namespace
}  // namespace NQMath_940::internal
