#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using internal::RowStart;

namespace {

// out <- the matrix of order n with elements f(i, j), i >= j. f may read from out.
template <class F>
bool Fill(int n, NQSymMatrix& out, F f) {
  return internal::PutFilled(NQSymMatrix(n, false), &out, [&](NQSymMatrix& result) {
    double* s = result.AsVector().data();
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j <= i; ++j) *s++ = f(i, j);
    }
  });
}

}  // namespace

// ---- Out ----------------------------------------------------------------------------------------

bool NQSymMatrix::ExtractFirstNRows(INQSymMatrix& out) const {
  NQSymMatrix* dense = internal::AsDenseSym(out);
  if (!dense || !dense->IsValidMatrix() || dense->fNRows > fNRows) return false;
  return dense == this || dense->ReplaceFirstRows(*this, dense->fNRows);
}

bool NQSymMatrix::ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const {
  NQSymMatrix* dense = internal::AsDenseSym(out);
  if (!dense || !internal::AllBelow(fNRows, indices)) return false;
  return Fill(static_cast<int>(indices.size()), *dense, [&](int a, int b) {
    return GetElem(indices[static_cast<std::size_t>(a)], indices[static_cast<std::size_t>(b)]);
  });
}

bool NQSymMatrix::ExtractDiagBlock(int b, NQSymMatrix& out) const {
  return ExtractBlockInLowTriangular(b, b, out);
}

bool NQSymMatrix::ExtractBlockAndLastRow(int b, NQSymMatrix& out) const {
  if (fNRows < 1 || b < 0 || b >= fNBlocks) return false;
  const auto rowOf = [&](int k) { return k < fBlockSize ? b * fBlockSize + k : fNRows - 1; };
  return Fill(fBlockSize + 1, out, [&](int i, int j) { return GetElem(rowOf(i), rowOf(j)); });
}

bool NQSymMatrix::ExtractBlockInLowTriangular(int bi, int bj, NQSymMatrix& out) const {
  if (fNRows < 1 || bi < 0 || bi >= fNBlocks || bj < 0 || bj >= fNBlocks) return false;
  return Fill(fBlockSize, out, [&](int k, int l) { return GetElem(bi, bj, k, l); });
}

bool NQSymMatrix::ExtractPartOfLastRow(int first, int count, std::vector<double>& out) const {
  if (fNRows < 1 || first < 0 || count < 0 || count > fNRows - first) return false;
  const double* from = fvData.data() + RowStart(Order() - 1) + first;
  return internal::MakeVector(static_cast<std::size_t>(count), out, [&](std::vector<double>& part) {
    std::copy_n(from, count, part.begin());
  });
}

bool NQSymMatrix::GetRegCoeffs(std::vector<double>& out, const NQBitSet& set) const {
  if (!ExtractPartOfLastRow(0, fNRows - 1, out)) return false;
  for (std::size_t j = 0; j < out.size(); ++j) {
    if (!set.IsIn(static_cast<int>(j))) out[j] = 0;
  }
  return true;
}

bool NQSymMatrix::GetRegression(const NQBitSet& set, const std::vector<double>& means,
                                double sumOfWeights, std::vector<double>& coefficients,
                                NQSymMatrix& inverse) const {
  const int target = fNRows - 1;
  std::vector<double> b;
  if ((!means.empty() && !HasOrder(means.size())) || !GetRegCoeffs(b, set)) return false;
  return NQCommon_940::GuardMemory(false, [&] {
    b.insert(b.begin(), 0.0);
    // Swept rows hold minus the inverse of the predictors' products.
    NQSymMatrix result(fNRows, true);
    if (!result.IsValidMatrix()) return false;
    for (int i = 0; i < target; ++i) {
      for (int j = 0; j <= i; ++j) {
        if (set.IsIn(i) && set.IsIn(j)) result.SetElem(i + 1, j + 1, -GetElem(i, j));
      }
    }
    if (!means.empty()) {
      std::vector<double> x = means, cx;
      std::rotate(x.begin(), x.end() - 1, x.end());  // (mean of the target, means of predictors)
      b[0] = x[0];
      for (std::size_t j = 1; j < x.size(); ++j) b[0] -= b[j] * x[j];
      x[0] = 0;
      if (!result.ComputeSV(x, cx)) return false;
      double variance = 1 / sumOfWeights;
      for (std::size_t j = 1; j < x.size(); ++j) {
        variance += x[j] * cx[j];
        result.SetElem(static_cast<int>(j), 0, 0 - cx[j]);
      }
      result.SetElem(0, 0, variance);
    }
    coefficients = std::move(b);
    inverse = std::move(result);
    return true;
  });
}

// ---- In -----------------------------------------------------------------------------------------

bool NQSymMatrix::ReplaceFirstRows(const NQSymMatrix& src, int k) {
  if (k < 0 || k > fNRows || k > src.fNRows) return false;
  if (&src != this)
    std::copy_n(src.fvData.begin(), RowStart(static_cast<std::size_t>(k)), fvData.begin());
  return true;
}

bool NQSymMatrix::SetData(const std::vector<double>& src) {
  if (!IsValidMatrix() || src.size() != fvData.size()) return false;
  std::copy(src.begin(), src.end(), fvData.begin());
  return true;
}

bool NQSymMatrix::Expand(const NQBitSet& set, NQSymMatrix& out) const {
  std::vector<int> places;
  return set.GetMembers(places) && ExpandSym(places, set.Size(), out);
}

bool NQSymMatrix::ExpandSym(const std::vector<int>& indices, int size, NQSymMatrix& out) const {
  if (size < 0 || !HasOrder(indices.size())) return false;
  return NQCommon_940::GuardMemory(false, [&] {
    // The row that goes to each place; -1 for none.
    std::vector<int> rowAt(static_cast<std::size_t>(size), -1);
    for (int row = 0; row < fNRows; ++row) {
      const int place = indices[static_cast<std::size_t>(row)];
      if (place < 0 || place >= size || rowAt[static_cast<std::size_t>(place)] >= 0) return false;
      rowAt[static_cast<std::size_t>(place)] = row;
    }
    return Fill(size, out, [&](int i, int j) {
      const int a = rowAt[static_cast<std::size_t>(i)];
      const int b = rowAt[static_cast<std::size_t>(j)];
      return a >= 0 && b >= 0 ? GetElem(a, b) : 0.0;
    });
  });
}

bool NQSymMatrix::DeleteOneRow(int i) {
  if (!HasRow(i)) return false;
  double* to = fvData.data() + RowStart(static_cast<std::size_t>(i));
  for (int k = i + 1; k < fNRows; ++k) {
    const double* row = fvData.data() + RowStart(static_cast<std::size_t>(k));
    to = std::copy(row, row + i, to);
    to = std::copy(row + i + 1, row + k + 1, to);
  }
  return Resize(fNRows - 1);
}

}  // namespace NQMath_940
