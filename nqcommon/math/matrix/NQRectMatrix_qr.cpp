#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

namespace NQMath_940 {
namespace {

using namespace internal;

// The Householder reflections I - tau v v' of an m x n matrix, m >= n, in panels of neighbouring
// columns. With the vectors v of a panel as the columns of V, the product of its reflections is
// I - V T V' with an upper triangular T, so that all but the panel itself is left to the matrix
// products (Schreiber and Van Loan 1989, SIAM J. Sci. Stat. Comput. 10).
class Reflections {
 public:
  Reflections(std::size_t m, std::size_t n)
      : fM(m), fN(n), fvV(m * n), fvT(n * kPanel), fvProducts(2 * kPanel * n), fvChange(m * n) {}

  // Makes a, row after row, the triangle of its QR decomposition; what it leaves below the diagonal
  // has no meaning.
  void Factor(double* a) {
    for (std::size_t first = 0; first < fN; first += kPanel) {
      FactorPanel(a, first);
      Apply(first, TransposeOf(T(first), kPanel), a, first + Width(first));
    }
  }

  // Makes q, the first n columns of the unit matrix, the first n columns of Q.
  void FormQ(double* q) {
    for (std::size_t first = (fN + kPanel - 1) / kPanel * kPanel; first > 0;) {
      first -= kPanel;
      Apply(first, RowsAt(T(first), kPanel), q, first);
    }
  }

 private:
  static constexpr std::size_t kPanel = 32;

  std::size_t Width(std::size_t first) const { return std::min(kPanel, fN - first); }
  double* V(std::size_t i, std::size_t j) { return fvV.data() + i * fN + j; }
  double* T(std::size_t first) { return fvT.data() + first * kPanel; }

  // LINPACK factors the panel, which goes by columns there. Its v have their first elements, the
  // reciprocals of tau, in v0; 0 where there is no reflection.
  void FactorPanel(double* a, std::size_t first) {
    const std::size_t width = Width(first), rows = fM - first;
    double* panel = fvChange.data();
    double* v0 = fvProducts.data();
    for (std::size_t i = 0; i < rows; ++i) {
      for (std::size_t j = 0; j < width; ++j) panel[j * rows + i] = a[(first + i) * fN + first + j];
    }
    Linpack::Dqrdc(panel, static_cast<int>(rows), static_cast<int>(rows), static_cast<int>(width),
                   v0, nullptr, nullptr, 0);
    for (std::size_t j = 0; j < width; ++j) {
      const double* column = panel + j * rows;
      for (std::size_t i = 0; i <= j; ++i) a[(first + i) * fN + first + j] = column[i];
      for (std::size_t i = j; i < rows; ++i) *V(first + i, first + j) = column[i];
      *V(first + j, first + j) = v0[j];
      T(first)[j * (kPanel + 1)] = v0[j] != 0 ? 1 / v0[j] : 0;
    }
    FormT(first);
  }

  // Column j of T, whose diagonal holds the tau: -tau(j) T V'v(j) above the diagonal.
  void FormT(std::size_t first) {
    const std::size_t width = Width(first);
    double* products = fvProducts.data();  // V'V
    Multiply(TransposeOf(V(first, first), fN), RowsAt(V(first, first), fN), width, fM - first,
             width, products);
    double* t = T(first);
    for (std::size_t j = 1; j < width; ++j) {
      for (std::size_t i = 0; i < j; ++i) {
        double sum = 0;
        for (std::size_t k = i; k < j; ++k) sum += t[i * kPanel + k] * products[k * width + j];
        t[i * kPanel + j] = -t[j * (kPanel + 1)] * sum;
      }
    }
  }

  // C <- C - V T V'C for the columns from `column` on of c, rows from `first` on.
  void Apply(std::size_t first, const Operand& t, double* c, std::size_t column) {
    const std::size_t width = Width(first), rows = fM - first, columns = fN - column;
    double *vc = fvProducts.data(), *tvc = vc + width * columns;
    Multiply(TransposeOf(V(first, first), fN), RowsAt(c + first * fN + column, fN), width, rows,
             columns, vc);
    Multiply(t, RowsAt(vc, columns), width, width, columns, tvc);
    Multiply(RowsAt(V(first, first), fN), RowsAt(tvc, columns), rows, width, columns,
             fvChange.data());
    for (std::size_t i = 0; i < rows; ++i)
      AddScaled(columns, -1, fvChange.data() + i * columns, c + (first + i) * fN + column);
  }

  std::size_t fM;
  std::size_t fN;
  std::vector<double> fvV;         // m x n, a lower trapezoid
  std::vector<double> fvT;         // the T of each panel, kPanel values a row
  std::vector<double> fvProducts;  // scratch: V'C and T V'C
  std::vector<double> fvChange;    // scratch: a panel, V T V'C
};

}  // namespace

bool NQRectMatrix::QRDecompositionH(NQSymMatrix& s, NQRectMatrix& q) const {
  NQRectMatrix factor(*this), result(fNRows, fNCols, true);
  NQSymMatrix triangle(fNCols, true);
  if (!IsValidMatrix() || fNRows < fNCols || !factor.IsValidMatrix() || !result.IsValidMatrix() ||
      !triangle.IsValidMatrix())
    return false;
  return NQCommon_940::GuardMemory(false, [&] {
    Reflections reflections(Rows(), Cols());
    reflections.Factor(factor.fvData.data());
    result.AddToDiagonal(1);
    reflections.FormQ(result.fvData.data());
    for (int j = 0; j < fNCols; ++j) {
      const double sign = factor.GetElem(j, j) < 0 ? -1 : 1;
      for (int i = j; i < fNCols; ++i) triangle.SetElem(i, j, sign * factor.GetElem(j, i));
      result.ColScale(j, sign);
    }
    s = std::move(triangle);
    q = std::move(result);
    return true;
  });
}

}  // namespace NQMath_940
