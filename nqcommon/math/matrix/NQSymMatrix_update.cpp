#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using internal::AddScaled;
using internal::RowStart;

bool NQSymMatrix::UpdateXX(const std::vector<double>& x, double w) {
  return w > 0 && UpdateXXPosNegW(x, w);
}

bool NQSymMatrix::UpdateXXPosNegW(const std::vector<double>& x, double w) {
  return HasOrder(x.size()) && UpdateZZ(x, 0, w);
}

bool NQSymMatrix::UpdateXXNonRedun(const std::vector<double>& x, const NQBitSet& set, double w) {
  if (!(w > 0) || !HasOrder(x.size())) return false;
  std::vector<int> members;
  if (!set.GetMembers(members)) return false;
  for (auto i = members.begin(); i != members.end() && *i < fNRows; ++i) {
    const double xi = x[static_cast<std::size_t>(*i)];
    if (xi == 0) continue;
    const double xiw = xi * w;
    double* row = fvData.data() + RowStart(static_cast<std::size_t>(*i));
    std::for_each(members.begin(), i + 1,
                  [&](int j) { row[j] += x[static_cast<std::size_t>(j)] * xiw; });
  }
  return true;
}

bool NQSymMatrix::UpdateXXMat2(const std::vector<double>& x, double w, NQSymMatrix& second,
                               double w2) {
  if (!HasOrder(x.size()) || !second.HasOrder(x.size())) return false;
  return UpdateXXPosNegW(x, w) && second.UpdateXXPosNegW(x, w2);
}

bool NQSymMatrix::UpdateZZ(const std::vector<double>& z, int first, double w) {
  if (first < 0 || first > fNRows || z.size() > Order() - static_cast<std::size_t>(first))
    return false;
  const auto at = static_cast<std::size_t>(first);
  for (std::size_t i = 0; i < z.size(); ++i) {
    if (z[i] != 0) AddScaled(i + 1, z[i] * w, z.data(), fvData.data() + RowStart(at + i) + at);
  }
  return true;
}

bool NQSymMatrix::UpdateXXSparse(const NQSparseVector& x, double w) {
  return w > 0 && x.QuadraticOuterProductIncr(*this, w);
}

bool NQSymMatrix::UpdateXXCornerBlock(const std::vector<double>& x, int row,
                                      const std::vector<double>& z, int col, double w) {
  if (!(w > 0) || !IsValidMatrix() || col < 0 || !internal::HoldsRun(Order(), row, x.size()) ||
      col > row || z.size() > static_cast<std::size_t>(row - col))
    return false;
  for (std::size_t i = 0; i < x.size(); ++i) {
    double* corner = fvData.data() + RowStart(static_cast<std::size_t>(row) + i) + col;
    if (x[i] != 0) AddScaled(z.size(), x[i] * w, z.data(), corner);
  }
  return true;
}

bool NQSymMatrix::UpdateXXCornerSparse(const std::vector<double>& x, int row,
                                       const NQSparseVector& z, int col, double w) {
  if (!(w > 0) || !IsValidMatrix() || !internal::HoldsRun(Order(), row, x.size()) ||
      !internal::FitsIn(z, static_cast<std::size_t>(row), col))
    return false;
  for (std::size_t i = 0; i < x.size(); ++i) {
    double* corner = fvData.data() + RowStart(static_cast<std::size_t>(row) + i) + col;
    if (x[i] != 0) AddScaled(internal::RunOf(z), x[i] * w, corner);
  }
  return true;
}

bool NQSymMatrix::IncrementByVV(const std::vector<double>& v, double a) {
  if (!HasOrder(v.size())) return false;
  for (std::size_t i = 0; i < v.size(); ++i)
    AddScaled(i + 1, v[i] * a, v.data(), fvData.data() + RowStart(i));
  return true;
}

bool NQSymMatrix::SetToVW(const std::vector<double>& v, const std::vector<double>& w) {
  if (v.size() != w.size() || !Resize(static_cast<int>(v.size()))) return false;
  double* s = fvData.data();
  for (std::size_t i = 0; i < v.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j) *s++ = v[i] * w[j] + w[i] * v[j];
  }
  return true;
}

bool NQSymMatrix::SetToVV(const std::vector<double>& v) {
  if (!Resize(static_cast<int>(v.size()))) return false;
  double* s = fvData.data();
  for (std::size_t i = 0; i < v.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j) *s++ = v[i] * v[j];
  }
  return true;
}

bool NQSymMatrix::SetCovarZeros(const NQBitSet& set) {
  if (!IsValidMatrix() || set.Size() < fNRows) return false;
  for (int i = 0; i < fNRows; ++i) {
    if (!set.IsIn(i)) continue;
    const double variance = GetElem(i, i);
    ZeroOut(i);
    SetElem(i, i, variance);
  }
  return true;
}

}  // namespace NQMath_940
