#include <nqcommon/math/matrix/internal/symmetric_times.h>

#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940::internal {
namespace {

Operand RowsFrom(const Operand& x, std::size_t first) {
  const bool byRows = x.layout == Operand::Layout::kRows;
  return {x.layout, x.data + (byRows ? first * x.step : first), x.step};
}

void DiagonalTimes(const std::vector<double>& d, const Operand& x, std::size_t p, double* out) {
  const bool byRows = x.layout == Operand::Layout::kRows;
  const std::size_t rowStep = byRows ? x.step : 1, columnStep = byRows ? 1 : x.step;
  for (std::size_t i = 0; i < d.size(); ++i) {
    for (std::size_t j = 0; j < p; ++j) *out++ = d[i] * x.data[i * rowStep + j * columnStep];
  }
}

}  // namespace

void SymmetricTimes(const INQSymMatrix& s, const Operand& x, std::size_t p, double* out) {
  if (const NQSymMatrix* dense = AsDenseSym(s)) {
    const std::size_t n = OrderOf(s);
    Multiply(TriangleAt(dense->AsVectorConst().data()), x, n, n, p, out);
  } else if (const NQDiagMatrix* diagonal = AsDiagonal(s)) {
    DiagonalTimes(diagonal->AsVectorConst(), x, p, out);
  } else if (const NQSymBlockDiagMatrix* blocks = AsBlockDiag(s)) {
    const NQSymMatrix* block = nullptr;
    const std::vector<double>* entries = nullptr;
    for (int b = 0; b < blocks->GetNBlocks(); ++b) {
      const auto first = static_cast<std::size_t>(blocks->GetBlockStartIndex(b));
      if (blocks->GetDenseBlock(b, block)) {
        SymmetricTimes(*block, RowsFrom(x, first), p, out + first * p);
      } else if (blocks->GetDiagonalBlock(b, entries)) {
        DiagonalTimes(*entries, RowsFrom(x, first), p, out + first * p);
      }
    }
  }
}

}  // namespace NQMath_940::internal
