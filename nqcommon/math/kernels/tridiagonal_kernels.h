// The vector loops of the symmetric eigenvalue problem, one table of them per instruction set.
//
// Every form does the same additions and multiplications on an element in the same order, and never
// fuses them. Sums along a row are kept in kSumLanes parts whatever the width of a register, and
// added up at the end, so all forms give the same bits.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>

#include <cstddef>

namespace NQMath_940::internal {

// Element j of a row adds to part j % kSumLanes of its sum: one widest register, one cache line.
inline constexpr std::size_t kSumLanes = 8;

constexpr std::size_t WholeLines(std::size_t n) {
  return (n + kSumLanes - 1) / kSumLanes * kSumLanes;
}

// The most sequences of plane rotations that rotateStrip applies in one pass.
inline constexpr std::size_t kMostWaves = 4;

// Reflections P_i = I - v_i v_i' / h_i, i = 1 .. n-1, as they lie in a packed lower triangle: v_i,
// of length i, is row i without its diagonal element, which is h_i; h_i = 0 stands for no
// reflection and goes with v_i = 0.
struct PackedReflectors {
  const double* s;
  std::size_t n;
};

struct TridiagonalKernels {
  // The steps of the reduction. The vectors here, the triangle apart, have zeros behind their
  // length up to a whole line.

  // row[j] <- row[j] - (u[i] q[j] + q[i] u[j]), j <= i: the last row of a triangle, of length
  // i + 1.
  void (*updateRow)(double* row, std::size_t length, const double* u, const double* q);

  // x <- v such that I - v v' / h takes x to `reflected` times the last unit vector. Scaled by the
  // sum of magnitudes, so that no square overflows and h does not underflow. Returns h; 0 when x is
  // such a multiple already, and then v = 0.
  double (*makeReflection)(double* x, std::size_t length, double& reflected);

  // s(i,j) <- s(i,j) - (u[i] q[j] + q[i] u[j]), j <= i, and y = S v with the new S. One pass over
  // the packed triangle of order n, which is what the reduction spends its time on.
  void (*rankTwoAndProduct)(double* s, std::size_t n, const double* u, const double* q,
                            const double* v, double* y);

  // y <- q such that (I - v v' / h) S (I - v v' / h) = S - v q' - q v', from y = S v.
  void (*makeUpdate)(double* y, const double* v, double h, std::size_t length);

  // Plane rotations of the rows of a strip, a matrix of stripColumns columns without gaps. At step
  // t = 0 .. steps-1 and for k = 0 .. waves-1, in this order, with the next pair c, s of `pairs`
  // and i = k - t:
  //   row[i+1] <- s row[i] + c row[i+1],  row[i] <- c row[i] - s row[i+1]
  // The right-hand sides are the old values. row[0] is at `rows`; row[waves] down to row[1 - steps]
  // are read and written.
  void (*rotateStrip)(double* rows, const double* pairs, std::size_t steps, std::size_t waves);
  std::size_t stripColumns;

  // z <- P_(n-1) .. P_2 P_1 z for rowsAtOnce vectors z, each of n elements and padded to whole
  // lines, one behind the other.
  void (*reflectRows)(const PackedReflectors& reflectors, double* z);
  std::size_t rowsAtOnce;
};

// The table of `isa`, lowered to what the machine has.
const TridiagonalKernels& TridiagonalKernelsFor(Isa isa);

}  // namespace NQMath_940::internal
