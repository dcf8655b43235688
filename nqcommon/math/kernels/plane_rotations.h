// Sequences of plane rotations of neighbouring rows, collected and applied to a matrix many at a
// time: in strips of columns that stay in cache, several sequences in one pass (the wave order of
// Van Zee, van de Geijn and Quintana-Orti 2014, "Restructuring the tridiagonal and bidiagonal QR
// algorithms for performance"). The order in which the rotations meet any one row is kept, so the
// result is that of one rotation after the other, but for the sign of zeros.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>
#include <nqcommon/math/kernels/tridiagonal_kernels.h>

#include <cstddef>
#include <vector>

namespace NQMath_940::internal {

class RotationBatch {
 public:
  // The rotations are for the n x n matrix at z, rows one behind the other.
  RotationBatch(double* z, std::size_t n, Isa isa = BestIsa());

  // Begin starts a sequence, whose first rotation is of rows top and top + 1 and each next one of a
  // row further up:
  //   row[i+1] <- s row[i] + c row[i+1],  row[i] <- c row[i] - s row[i+1]
  // It returns the place for up to `count` pairs c, s; End tells how many were written there.
  double* Begin(std::size_t top, std::size_t count);
  void End(std::size_t count);

  // Apply applies what has been collected. The matrix is not current before.
  void Apply();

 private:
  // Sequence has the rotations of rows (i, i + 1), i from `end` - 1 down to `begin`.
  struct Sequence {
    std::size_t begin;
    std::size_t end;
    std::size_t pairs;  // position in fvPairs
  };
  // Pass has up to kMostWaves sequences for one pass of the kernel.
  struct Pass {
    std::size_t top;  // row of the first rotation, counted as in the strip
    std::size_t steps;
    std::size_t waves;
    std::size_t pairs;  // position in fvWaves
  };

  std::size_t MakePass(const Sequence* sequences, std::size_t count, std::size_t firstRow);
  void ApplyToStrip(double* strip, std::size_t column, std::size_t firstRow, std::size_t rows);

  double* fpZ;
  std::size_t fN;
  const TridiagonalKernels& fKernels;
  std::vector<double> fvPairs;  // c, s of all sequences
  std::vector<Sequence> fvSequences;
  std::vector<double> fvWaves;  // the same in the order of the kernel, and fillers
  std::vector<Pass> fvPasses;
};

}  // namespace NQMath_940::internal
