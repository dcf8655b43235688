#include <nqcommon/math/kernels/dense_kernels.h>

#include <algorithm>
#include <memory>

#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/strided.h>

namespace NQMath_940::internal {
namespace {

using Layout = Operand::Layout;

bool IsTriangular(const Operand& a) {
  return a.layout == Layout::kLower || a.layout == Layout::kUpper;
}

// RowTimes makes c[0 .. n-1] = a row times B, along the rows or columns of B as they lie. Element k
// of the row, for begin <= k < end, is at(k); the others are 0 by the form of A.
template <class At>
void RowTimes(At at, std::size_t begin, std::size_t end, const Operand& b, std::size_t n,
              double* c) {
  if (b.layout == Layout::kColumns || b.layout == Layout::kUpper) {
    for (std::size_t j = 0; j < n; ++j) {
      const bool whole = b.layout == Layout::kColumns;
      const double* column = b.data + (whole ? j * b.step : RowStart(j));
      double sum = 0;
      for (std::size_t k = begin; k < (whole ? end : std::min(end, j + 1)); ++k)
        sum += at(k) * column[k];
      c[j] = sum;
    }
    return;
  }
  std::fill(c, c + n, 0.0);
  for (std::size_t k = begin; k < end; ++k) {
    const double x = at(k);
    if (b.layout == Layout::kRows) {
      AddScaled(n, x, b.data + k * b.step, c);
      continue;
    }
    AddScaled(std::min(k + 1, n), x, b.data + RowStart(k), c);
    if (b.layout == Layout::kLower) continue;
    for (std::size_t j = k + 1, from = LowerIndex(j, k); j < n; ++j, from += j)
      c[j] += x * b.data[from];
  }
}

void RowTimes(const Operand& a, std::size_t i, std::size_t inner, const Operand& b, std::size_t n,
              double* c) {
  const double* data = a.data;
  switch (a.layout) {
    case Layout::kRows:
      return RowTimes([=](std::size_t k) { return data[i * a.step + k]; }, 0, inner, b, n, c);
    case Layout::kColumns:
      return RowTimes([=](std::size_t k) { return data[k * a.step + i]; }, 0, inner, b, n, c);
    default:
      break;
  }
  const std::size_t begin = a.layout == Layout::kUpper ? i : 0;
  const std::size_t end = a.layout == Layout::kLower ? std::min(i + 1, inner) : inner;
  RowTimes([=](std::size_t k) { return data[SymIndex(i, k)]; }, begin, end, b, n, c);
}

}  // namespace

void MultiplyPlain(const Operand& a, const Operand& b, std::size_t m, std::size_t inner,
                   std::size_t n, double* c) {
  for (std::size_t i = 0; i < m; ++i) RowTimes(a, i, inner, b, n, c + i * n);
}

void MultiplyLowerPlain(const Operand& a, const Operand& b, std::size_t n, std::size_t inner,
                        double* c) {
  for (std::size_t i = 0; i < n; ++i) RowTimes(a, i, inner, b, i + 1, c + RowStart(i));
}

namespace {

// Below this many multiply-adds the packing costs more than it saves.
constexpr std::size_t kSmallProduct = 1000;

bool IsSmall(std::size_t m, std::size_t inner, std::size_t n) {
  return m < 4 || n < 4 || inner < 4 || m * inner * n < kSmallProduct;
}

// Elements (first .. first+count-1, k .. k+depth-1) of an operand as a panel of `depth` vectors in
// tiles of `tile` elements, the last one padded with zeros.
class Packer {
 public:
  Packer(const Operand& a, std::size_t tile) : fA(a), fTile(tile) {}

  void operator()(std::size_t first, std::size_t count, std::size_t k, std::size_t depth,
                  double* panel) const {
    for (std::size_t i = 0; i < count; i += fTile, panel += fTile * depth) {
      const std::size_t rows = std::min(fTile, count - i);
      if (rows < fTile) std::fill_n(panel, fTile * depth, 0.0);
      PackTile(first + i, rows, k, depth, panel);
    }
  }

 private:
  // Left of the diagonal a triangle lies along its rows, right of it along its columns. Where an
  // operand is 0 there, nothing is packed: PanelUpdate leaves those vectors out.
  void PackTile(std::size_t row, std::size_t rows, std::size_t k, std::size_t depth,
                double* to) const {
    std::size_t left = fA.layout == Layout::kRows ? depth : 0, right = left;
    const bool packed = fA.layout != Layout::kRows && fA.layout != Layout::kColumns;
    if (packed) {
      left = std::clamp(row, k, k + depth) - k;
      right = std::clamp(row + rows, k, k + depth) - k;
    }
    for (std::size_t r = 0; r < rows && fA.layout != Layout::kUpper; ++r) {
      const double* from = fA.data + (packed ? RowStart(row + r) : (row + r) * fA.step) + k;
      for (std::size_t p = 0; p < left; ++p) to[p * fTile + r] = from[p];
    }
    for (std::size_t p = left; p < right; ++p) {
      for (std::size_t r = 0; r < rows; ++r) {
        const bool isZero = fA.layout == Layout::kLower   ? k + p > row + r
                            : fA.layout == Layout::kUpper ? k + p < row + r
                                                          : false;
        to[p * fTile + r] = isZero ? 0 : fA.data[SymIndex(row + r, k + p)];
      }
    }
    if (fA.layout == Layout::kLower) return;
    for (std::size_t p = right; p < depth; ++p) {
      const double* from = fA.data + (packed ? RowStart(k + p) : (k + p) * fA.step) + row;
      if (rows == kPanelTile) {
        std::copy_n(from, kPanelTile, to + p * fTile);  // of known length
      } else {
        for (std::size_t r = 0; r < rows; ++r) to[p * fTile + r] = from[r];
      }
    }
  }

  Operand fA;
  std::size_t fTile;
};

// Sizes of the blocks that are packed at a time: depth x columns of B stay in the second-level
// cache while the rows of C pass by, a tile of A and of B in the first.
struct Blocks {
  std::size_t depth, columns, rows;
};

Blocks BlocksFor(std::size_t m, std::size_t inner, std::size_t n) {
  const CacheSizes& caches = Caches();
  const std::size_t depth = std::min<std::size_t>(inner, 256);
  const std::size_t columns = WholeTiles(std::clamp<std::size_t>(caches.l2 / 16 / depth, 64, 512));
  return {depth, std::min(WholeTiles(n), columns), std::min<std::size_t>(m, 96)};
}

PanelUpdate::Part PartOf(const Operand& a) {
  return a.layout == Layout::kLower   ? PanelUpdate::Part::kLower
         : a.layout == Layout::kUpper ? PanelUpdate::Part::kUpper
                                      : PanelUpdate::Part::kAll;
}

// Fills in the panels of `job`, which is a product but for them, block by block. False when there
// is no memory for them.
bool MultiplyInBlocks(const Operand& a, const Operand& b, std::size_t inner, PanelUpdate job,
                      const PackedKernels& kernels) {
  const std::size_t m = job.endRow, n = job.endColumn;
  const Blocks blocks = BlocksFor(m, inner, n);
  // Rows that lie along memory are read where they are, but for steps at which they would fall into
  // the same sets of the cache.
  const bool inPlace = a.layout == Layout::kRows && a.step % 64 != 0;
  const std::size_t rowTile = kernels.tileRows;
  const std::size_t rowPanel = inPlace ? 0 : (blocks.rows + rowTile) * blocks.depth;
  const auto work = AlignedDoubles::Try(blocks.depth * blocks.columns + rowPanel);
  if (!work) return false;
  double* const columnData = work->data();
  double* const rowData = columnData + blocks.depth * blocks.columns;
  const Packer packRows(a, rowTile), packColumns(TransposeOf(b), kPanelTile);
  job.partOfA = PartOf(a);
  job.partOfB = PartOf(b);
  const std::size_t rowBlock = inPlace ? m : blocks.rows;
  for (std::size_t k = 0; k < inner; k += blocks.depth) {
    job.k = k;
    job.count = std::min(blocks.depth, inner - k);
    job.fresh = k == 0;
    for (std::size_t j = 0; j < n; j += blocks.columns) {
      job.firstColumn = j;
      job.endColumn = std::min(n, j + blocks.columns);
      packColumns(j, job.endColumn - j, k, job.count, columnData);
      job.b = PanelAt(columnData, job.count);
      for (std::size_t i = job.step == 0 ? j : 0; i < m; i += rowBlock) {
        job.firstRow = i;
        job.endRow = std::min(m, i + rowBlock);
        job.a = {a.data + i * a.step + k, 1, a.step, 1};
        if (!inPlace) {
          packRows(i, job.endRow - i, k, job.count, rowData);
          job.a = PanelAt(rowData, job.count, rowTile);
        }
        kernels.update(job);
      }
    }
  }
  return true;
}

// In the tiles on the diagonal of a triangular operand the fast form adds products with 0, which
// change nothing unless the other factor is not finite; then the result is not finite either.
bool IsFinite(const double* c, std::size_t size) {
  double zero = 0;
  for (std::size_t i = 0; i < size; ++i) zero += c[i] * 0;
  return zero == 0;
}

}  // namespace

void Multiply(const Operand& a, const Operand& b, std::size_t m, std::size_t inner, std::size_t n,
              double* c, Isa isa) {
  const PanelUpdate job{.c = c, .end = c + m * n, .step = n, .endRow = m, .endColumn = n};
  if (!IsSmall(m, inner, n) && MultiplyInBlocks(a, b, inner, job, KernelsFor(isa)) &&
      ((!IsTriangular(a) && !IsTriangular(b)) || IsFinite(c, m * n)))
    return;
  MultiplyPlain(a, b, m, inner, n, c);
}

void MultiplyLower(const Operand& a, const Operand& b, std::size_t n, std::size_t inner, double* c,
                   Isa isa) {
  if (!IsSmall(n, inner, n) &&
      MultiplyInBlocks(a, b, inner, UpdateOfTriangle(c, n, {}, {}, 0), KernelsFor(isa)) &&
      ((!IsTriangular(a) && !IsTriangular(b)) || IsFinite(c, RowStart(n))))
    return;
  MultiplyLowerPlain(a, b, n, inner, c);
}

}  // namespace NQMath_940::internal
