#include <nqcommon/math/kernels/dense_kernels.h>

#include <algorithm>
#include <memory>
#include <vector>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>

namespace NQMath_940::internal {
namespace {

// Row i of an operand, `count` elements: where they are, or gathered in `scratch`.
const double* RowOf(const Operand& a, std::size_t i, std::size_t count,
                    std::vector<double>& scratch) {
  if (a.layout == Operand::Layout::kRows) return a.data + i * a.step;
  scratch.resize(count);
  if (a.layout == Operand::Layout::kTriangle) {
    ForEachInRow(a.data, count, i, [&](std::size_t k, double x) { scratch[k] = x; });
  } else {
    for (std::size_t k = 0; k < count; ++k) scratch[k] = a.data[k * a.step + i];
  }
  return scratch.data();
}

// c[0 .. n-1] = the row a times B, along the rows or columns of B as they lie.
void RowTimes(const double* a, const Operand& b, std::size_t inner, std::size_t n, double* c) {
  switch (b.layout) {
    case Operand::Layout::kRows:
      std::fill(c, c + n, 0.0);
      for (std::size_t k = 0; k < inner; ++k) AddScaled(n, a[k], b.data + k * b.step, c);
      break;
    case Operand::Layout::kColumns:
      for (std::size_t j = 0; j < n; ++j) c[j] = DotProduct(inner, a, b.data + j * b.step);
      break;
    case Operand::Layout::kTriangle:
      SymTimesVector(b.data, inner, a, n, c);
      break;
  }
}

}  // namespace

void MultiplyPlain(const Operand& a, const Operand& b, std::size_t m, std::size_t inner,
                   std::size_t n, double* c) {
  std::vector<double> row;
  for (std::size_t i = 0; i < m; ++i) RowTimes(RowOf(a, i, inner, row), b, inner, n, c + i * n);
}

void MultiplyLowerPlain(const Operand& a, const Operand& b, std::size_t n, std::size_t inner,
                        double* c) {
  std::vector<double> row;
  for (std::size_t i = 0; i < n; ++i)
    RowTimes(RowOf(a, i, inner, row), b, inner, i + 1, c + RowStart(i));
}

namespace {

// Sizes of the blocks that are packed at a time. kInner x kColumns of B stay in the second-level
// cache while the rows of C pass by, kBlockRows of A in the first. Blocks of this size keep the
// work memory below what the C library gives back to the system at every release.
constexpr std::size_t kInner = 128;
constexpr std::size_t kInnerOfLower = 64;
constexpr std::size_t kColumns = 256;
constexpr std::size_t kBlockRows = 32;

// Below this many multiply-adds the packing costs more than it saves.
constexpr std::size_t kSmallProduct = 1000;

bool IsSmall(std::size_t m, std::size_t inner, std::size_t n) {
  return m < 4 || n < 4 || inner < 4 || m * inner * n < kSmallProduct;
}

// Elements (first .. first+count-1, k .. k+depth-1) of an operand as a panel of `depth` vectors.
void Pack(const Operand& a, std::size_t first, std::size_t count, std::size_t k, std::size_t depth,
          double* panel) {
  for (std::size_t i = 0; i < count; i += kPanelTile, panel += kPanelTile * depth) {
    const std::size_t rows = std::min(kPanelTile, count - i);
    if (a.layout == Operand::Layout::kColumns) {
      for (std::size_t p = 0; p < depth; ++p)
        std::copy_n(a.data + (k + p) * a.step + first + i, rows, panel + p * kPanelTile);
      continue;
    }
    for (std::size_t r = 0; r < rows; ++r) {
      const std::size_t row = first + i + r;
      double* to = panel + r;
      if (a.layout == Operand::Layout::kRows) {
        const double* from = a.data + row * a.step + k;
        for (std::size_t p = 0; p < depth; ++p) to[p * kPanelTile] = from[p];
        continue;
      }
      std::size_t at = SymIndex(row, k);
      for (std::size_t p = 0; p < depth; ++p) {
        to[p * kPanelTile] = a.data[at];
        at += k + p < row ? 1 : k + p + 1;
      }
    }
  }
}

}  // namespace

void Multiply(const Operand& a, const Operand& b, std::size_t m, std::size_t inner, std::size_t n,
              double* c, Isa isa) {
  std::unique_ptr<AlignedDoubles> work;
  if (!IsSmall(m, inner, n))
    work = AlignedDoubles::Try(std::min(inner, kInner) * WholeTiles(std::min(n, kColumns)));
  if (!work) return MultiplyPlain(a, b, m, inner, n, c);
  alignas(64) double rowPanel[kInner * kBlockRows] = {};
  double* columnPanel = work->data();
  std::fill(c, c + m * n, 0.0);
  for (std::size_t k = 0; k < inner; k += kInner) {
    const std::size_t depth = std::min(kInner, inner - k);
    for (std::size_t j = 0; j < n; j += kColumns) {
      const std::size_t width = std::min(kColumns, n - j);
      Pack(TransposeOf(b), j, width, k, depth, columnPanel);
      for (std::size_t i = 0; i < m; i += kBlockRows) {
        const std::size_t rows = std::min(kBlockRows, m - i);
        Pack(a, i, rows, k, depth, rowPanel);
        KernelsFor(isa).addProduct(c + i * n + j, n, rows, width, rowPanel, columnPanel, depth,
                                   depth);
      }
    }
  }
}

void MultiplyLower(const Operand& a, const Operand& b, std::size_t n, std::size_t inner, double* c,
                   Isa isa) {
  const Operand columns = TransposeOf(b);
  const bool same = a.layout == columns.layout && a.data == columns.data && a.step == columns.step;
  const std::size_t size = std::min(inner, kInnerOfLower) * WholeTiles(n);
  std::unique_ptr<AlignedDoubles> work;
  if (!IsSmall(n, inner, n)) work = AlignedDoubles::Try((same ? 1 : 2) * size);
  if (!work) return MultiplyLowerPlain(a, b, n, inner, c);
  double* columnPanel = work->data();
  double* rowPanel = same ? columnPanel : columnPanel + size;
  std::fill(c, c + RowStart(n), 0.0);
  for (std::size_t k = 0; k < inner; k += kInnerOfLower) {
    const std::size_t depth = std::min(kInnerOfLower, inner - k);
    Pack(columns, 0, n, k, depth, columnPanel);
    if (!same) Pack(a, 0, n, k, depth, rowPanel);
    KernelsFor(isa).rankUpdate(c, n, columnPanel, rowPanel, depth, depth);
  }
}

}  // namespace NQMath_940::internal
