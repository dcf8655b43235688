#include <nqcommon/math/kernels/triangular.h>

#include <algorithm>

#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>

namespace NQMath_940::internal {
namespace {

// Below this order the plain loops are as fast.
constexpr std::size_t kSmallOrder = 16;

// Rows whose share in the rows below them is added in one pass.
constexpr std::size_t kBlock = 32;
static_assert(kBlock % kPanelTile == 0);

// The inverse, a block of rows at a time from the last one up. With p the pivot rows as InvertLower
// scales them, p(k,j) = -l(k,j) / l(k,k), and y the rows before their last scaling,
//
//   y(i,j) = p(i,j) + sum over k = i-1, i-2 .. j+1 of y(i,k) p(k,j)
//
// A row with a zero on its diagonal is no pivot: it and its column become 0. Vectors of the panels
// stand for the pivots of the block, fRowOf[q] from the last row up.
class Inverter {
 public:
  Inverter(double* l, std::size_t n, const PackedKernels& kernels, double* work)
      : fL(l), fN(n), fKernels(kernels), fRows(work), fPivots(work + kBlock * WholeTiles(n)) {}

  void Run() {
    for (fEnd = fN; fEnd > 0; fEnd = fBegin) {
      fBegin = (fEnd - 1) / kBlock * kBlock;
      FindPivots();
      ScalePivotRows();
      UpdateRowsBelow();
      FinishBlock();
    }
  }

 private:
  double* Row(std::size_t i) { return fL + RowStart(i); }

  void FindPivots() {
    fCount = 0;
    for (std::size_t k = fEnd; k-- > fBegin;) {
      if (Row(k)[k] != 0)
        fRowOf[fCount++] = k;
      else
        ForEachInRow(fL, fN, k, [](std::size_t, double& x) { x = 0; });
    }
  }

  // Pivot rows become p, and the part left of the block a panel. fFactors[r][q], q < r, is the
  // element of pivot q in the column of pivot r.
  void ScalePivotRows() {
    for (std::size_t q = 0; q < fCount; ++q) {
      double* row = Row(fRowOf[q]);
      fInverse[q] = 1 / row[fRowOf[q]];
      for (std::size_t j = 0; j < fRowOf[q]; ++j) row[j] = 0 - row[j] * fInverse[q];
      for (std::size_t j = 0; j < fBegin; ++j) fPivots[PanelIndex(fCount, q, j)] = row[j];
      for (std::size_t r = q + 1; r < fCount; ++r) fFactors[r * kBlock + q] = row[fRowOf[r]];
    }
  }

  // Update adds the pivots from `firstPivot` on to rows first .. end-1 left of the block; the
  // vectors of `rows` are the factors.
  void Update(std::size_t first, std::size_t end, const PanelView& rows, std::size_t firstPivot) {
    PanelView pivots = PanelAt(fPivots, fCount);
    pivots.data += firstPivot * kPanelTile;
    PanelUpdate job = UpdateOfTriangle(fL, fN, rows, pivots, fCount - firstPivot);
    job.firstRow = first;
    job.endRow = end;
    job.endColumn = fBegin;
    fKernels.update(job);
  }

  void UpdateRowsBelow() {
    const std::size_t below = fN - fEnd;
    for (std::size_t i = 0; i < WholeTiles(below); ++i) {
      for (std::size_t q = 0; q < fCount; ++q)
        fRows[PanelIndex(fCount, q, i)] = i < below ? Row(fEnd + i)[fRowOf[q]] : 0;
    }
    fKernels.solveInPanel(fRows, below, fCount, fFactors, kBlock);
    Update(fEnd, fN, PanelAt(fRows, fCount), 0);
    for (std::size_t i = 0; i < below; ++i) {
      for (std::size_t q = 0; q < fCount; ++q)
        Row(fEnd + i)[fRowOf[q]] = fRows[PanelIndex(fCount, q, i)] * fInverse[q];
    }
  }

  // The rows of the block from the last one up: a row reads those above it as p. The rows of a few
  // at a time take theirs one by one, and what is above these in one pass.
  void FinishBlock() {
    constexpr std::size_t kFew = 8;
    for (std::size_t end = fEnd, first; end > fBegin; end = first) {
      first = std::max(fBegin, end - std::min(end, kFew));
      std::size_t above = 0;  // the first pivot above the few rows
      while (above < fCount && fRowOf[above] >= first) ++above;
      double y[kFew * kBlock];
      for (std::size_t i = end; i-- > first;) {
        double* row = Row(i);
        for (std::size_t r = 0; r < fCount; ++r) {
          const std::size_t k = fRowOf[r];
          if (k >= i) continue;
          const double factor = y[(i - first) * kBlock + r] = row[k];
          AddScaled(k - fBegin, factor, Row(k) + fBegin, row + fBegin);
          if (r < above) AddScaled(fBegin, factor, Row(k), row);
        }
      }
      if (above < fCount) Update(first, end, {y + above, 1, kBlock, 1}, above);
    }
    for (std::size_t i = fBegin; i < fEnd; ++i) {
      std::size_t next = fCount;  // the pivots below row i and its own, from the block's first row
      for (std::size_t k = fBegin; k <= i; ++k) {
        const bool isPivot = next > 0 && fRowOf[next - 1] == k;
        double& element = Row(i)[k];
        if (isPivot) --next;
        element = !isPivot ? 0 : k == i ? fInverse[next] : element * fInverse[next];
      }
    }
  }

  double* fL;
  std::size_t fN;
  const PackedKernels& fKernels;
  double* fRows;    // panel: the pivots' columns of the rows below the block
  double* fPivots;  // panel: the pivot rows left of the block
  double fFactors[kBlock * kBlock];
  double fInverse[kBlock];
  std::size_t fRowOf[kBlock];
  std::size_t fCount = 0;            // pivots of the block
  std::size_t fBegin = 0, fEnd = 0;  // its rows
};

// l <- the lower triangle of A B through work memory; false without any.
bool MultiplyInPlace(const Operand& a, const Operand& b, double* l, std::size_t n, Isa isa) {
  if (n < kSmallOrder) return false;
  const auto work = AlignedDoubles::Try(RowStart(n));
  if (!work) return false;
  MultiplyLower(a, b, n, n, work->data(), isa);
  std::copy_n(work->data(), RowStart(n), l);
  return true;
}

}  // namespace

void InvertTriangle(double* l, std::size_t n, Isa isa) {
  if (n < kSmallOrder) return InvertLower(l, n);
  const auto work = AlignedDoubles::Try(2 * kBlock * WholeTiles(n));
  if (!work) return InvertLower(l, n);
  Inverter(l, n, KernelsFor(isa), work->data()).Run();
}

void TransTimesTriangle(double* l, std::size_t n, Isa isa) {
  if (!MultiplyInPlace(UpperAt(l), LowerAt(l), l, n, isa)) TransTimesTrianglePlain(l, n);
}

// Row k adds its share to the rows above it, which hold their sums so far, and then starts its own:
// each element takes the same terms in the same order as down its two columns, along memory.
void TransTimesTrianglePlain(double* l, std::size_t n) {
  for (std::size_t k = 0; k < n; ++k) {
    double* row = l + RowStart(k);
    for (std::size_t i = 0; i < k; ++i) AddScaled(i + 1, row[i], row, l + RowStart(i));
    const double diagonal = row[k];
    for (std::size_t j = 0; j <= k; ++j) row[j] = 0 + row[j] * diagonal;
  }
}

void TriangleTimesTrans(double* l, std::size_t n, Isa isa) {
  if (!MultiplyInPlace(LowerAt(l), UpperAt(l), l, n, isa)) LowerTimesTrans(l, n);
}

}  // namespace NQMath_940::internal
