// The entries of any matrix as an operand of the dense kernels.
#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940::internal {

// The entries of a valid matrix: those of a dense one where they are, a copy of any other.
class Entries {
 public:
  explicit Entries(const INQRectMatrix& r) : fStep(ColsOf(r)) {
    if (const NQRectMatrix* dense = AsDenseRect(r)) {
      fpData = dense->GetRowPtr(0);
    } else {
      CopyRows(r, RowsOf(r) * fStep, [&](int) { return fStep; });
    }
  }

  explicit Entries(const INQSymMatrix& s) : fStep(0) {
    if (const NQSymMatrix* dense = AsDenseSym(s)) {
      fpData = dense->AsVectorConst().data();
    } else {
      CopyRows(s, RowStart(OrderOf(s)), [](int i) { return static_cast<std::size_t>(i) + 1; });
    }
  }

  // False when there was no memory for the copy.
  bool AreThere() const { return !fFailed; }

  Operand Rows() const { return RowsAt(fpData, fStep); }
  Operand Transpose() const { return TransposeOf(fpData, fStep); }
  Operand Triangle() const { return TriangleAt(fpData); }
  Operand Lower() const { return LowerAt(fpData); }
  Operand Upper() const { return UpperAt(fpData); }

 private:
  template <class Matrix, class Length>
  void CopyRows(const Matrix& m, std::size_t size, Length lengthOf) {
    fFailed = !NQCommon_940::GuardMemory(false, [&] {
      fvCopy.reserve(size);
      std::vector<double> row;
      for (int i = 0; i < m.GetNRows(); ++i) {
        if (!m.GetRow(i, row)) return false;
        const auto count = static_cast<std::ptrdiff_t>(lengthOf(i));
        fvCopy.insert(fvCopy.end(), row.begin(), row.begin() + count);
      }
      return true;
    });
    fpData = fvCopy.data();
  }

  std::size_t fStep;
  const double* fpData = nullptr;
  std::vector<double> fvCopy;
  bool fFailed = false;
};

}  // namespace NQMath_940::internal
