// The loops below the eigenvalue solver: rotations against one after the other, and every
// instruction set against the others.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/internal/plane_rotations.h>
#include <nqcommon/math/matrix/internal/tridiagonal.h>

#include <cmath>
#include <random>

#include "support/compare.h"
#include "support/packed.h"

namespace NQMath_940::internal {
namespace {

using namespace nqtest;

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
  for (std::size_t n : PackedOrders()) {
    const Values s = RandomPositiveDefinite(n);
    const Values want = Solve(s, n, Isa::kBaseline);
    for (Isa isa : kIsas) EXPECT_TRUE(AreSame(Solve(s, n, isa), want)) << Label("solution", n, isa);
  }
}

// Sequences of all lengths, none included, that overlap, lie apart or cover everything, several
// batches of them; the numbers of rows put the strips' ends everywhere.
TEST(PlaneRotations, BatchesEqualOneRotationAfterTheOther) {
  std::mt19937 random(1);
  for (std::size_t n : {2u, 3u, 5u, 16u, 17u, 61u}) {
    Values start(n * n);
    for (double& x : start) x = static_cast<double>(random()) / 4294967296.0 - 0.5;
    for (Isa isa : kIsas) {
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
          for (std::size_t j = 0; j < n; ++j) {
            const double x = upper[j], y = upper[n + j];
            upper[n + j] = s * x + c * y;
            upper[j] = c * x - s * y;
          }
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
