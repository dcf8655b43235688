#include <nqcommon/math/kernels/plane_rotations.h>

#include <algorithm>

#include <nqcommon/math/kernels/packed_kernels.h>

namespace NQMath_940::internal {
namespace {

// Enough that copying a strip in and out does not count, few enough that the rotations of a matrix
// of order 500 stay in a second-level cache.
constexpr std::size_t kSequencesHeld = 32;

// Rows above and below those rotated, which the waves that lag behind read and write back.
constexpr std::size_t kMargin = kMostWaves - 1;

}  // namespace

RotationBatch::RotationBatch(double* z, std::size_t n, Isa isa)
    : fpZ(z), fN(n), fKernels(TridiagonalKernelsFor(isa)) {}

double* RotationBatch::Begin(std::size_t top, std::size_t count) {
  if (fvSequences.size() == kSequencesHeld) Apply();
  const std::size_t at = fvPairs.size();
  fvPairs.resize(at + 2 * count);
  fvSequences.push_back({top + 1, top + 1, at});
  return fvPairs.data() + at;
}

void RotationBatch::End(std::size_t count) {
  Sequence& last = fvSequences.back();
  last.begin = last.end - count;
}

// Takes sequences into one pass as long as their rows overlap well: every wave of a pass runs over
// the rows of all, with rotations by nothing (c = 1, s = 0) where it has none of its own. Returns
// how many it took.
std::size_t RotationBatch::MakePass(const Sequence* sequences, std::size_t count,
                                    std::size_t firstRow) {
  std::size_t begin = sequences[0].begin;
  std::size_t end = sequences[0].end;
  std::size_t shortest = end - begin;
  std::size_t waves = 1;
  for (; waves < std::min(count, kMostWaves); ++waves) {
    const Sequence& next = sequences[waves];
    const std::size_t withNext = std::max(end, next.end) - std::min(begin, next.begin);
    shortest = std::min(shortest, next.end - next.begin);
    if (withNext > 2 * shortest) break;
    begin = std::min(begin, next.begin);
    end = std::max(end, next.end);
  }
  // Wave k is at row k - t of the pass at step t; the first is at its top row at step 0.
  const std::size_t steps = end - begin + waves - 1;
  fvPasses.push_back({end - 1 - firstRow, steps, waves, fvWaves.size()});
  for (std::size_t t = 0; t < steps; ++t) {
    for (std::size_t k = 0; k < waves; ++k) {
      const Sequence& own = sequences[k];
      const std::size_t i = end - 1 + k - t;  // wraps below 0, where no sequence is
      const bool has = i >= own.begin && i < own.end;
      const double* pair = fvPairs.data() + own.pairs + (has ? 2 * (own.end - 1 - i) : 0);
      fvWaves.push_back(has ? pair[0] : 1);
      fvWaves.push_back(has ? pair[1] : 0);
    }
  }
  return waves;
}

void RotationBatch::ApplyToStrip(double* strip, std::size_t column, std::size_t firstRow,
                                 std::size_t rows) {
  const std::size_t step = fKernels.stripColumns;
  const std::size_t columns = std::min(step, fN - column);
  double* inner = strip + kMargin * step;
  double* z = fpZ + firstRow * fN + column;
  for (std::size_t r = 0; r < rows; ++r) std::copy_n(z + r * fN, columns, inner + r * step);
  for (const Pass& pass : fvPasses)
    fKernels.rotateStrip(inner + pass.top * step, fvWaves.data() + pass.pairs, pass.steps,
                         pass.waves);
  for (std::size_t r = 0; r < rows; ++r) std::copy_n(inner + r * step, columns, z + r * fN);
}

void RotationBatch::Apply() {
  if (!fvSequences.empty()) {
    std::size_t begin = fN, end = 0;
    for (const Sequence& s : fvSequences) {
      begin = std::min(begin, s.begin);
      end = std::max(end, s.end);
    }
    for (std::size_t at = 0; at < fvSequences.size();)
      at += MakePass(fvSequences.data() + at, fvSequences.size() - at, begin);
    const std::size_t rows = end - begin + 1;
    AlignedDoubles strip((rows + 2 * kMargin) * fKernels.stripColumns);
    for (std::size_t column = 0; column < fN; column += fKernels.stripColumns)
      ApplyToStrip(strip.data(), column, begin, rows);
  }
  fvPairs.clear();
  fvSequences.clear();
  fvWaves.clear();
  fvPasses.clear();
}

}  // namespace NQMath_940::internal
