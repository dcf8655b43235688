#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/internal/block_columns.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::GuardMemory;
using NQCommon_940::NQMV;

namespace {

// The growing run from v[first] on; GetAt(k) is its k-th value.
class GrowingRun {
 public:
  GrowingRun(const std::vector<double>& v, int first, int inc, std::size_t n)
      : fvValues(v), fFirst(static_cast<std::size_t>(first)), fInc(static_cast<std::size_t>(inc)) {
    fFits = first >= 0 && inc >= 0 && (n == 0 || Position(n - 1) < v.size());
  }
  bool Fits() const { return fFits; }
  double GetAt(int k) const { return fvValues[Position(static_cast<std::size_t>(k))]; }

 private:
  std::size_t Position(std::size_t k) const { return fFirst + k * fInc + k * (k - 1) / 2; }

  const std::vector<double>& fvValues;
  std::size_t fFirst, fInc;
  bool fFits;
};

}  // namespace

int NQSymBlockDiagMatrix::GetIndexFirstInRow(int i) const {
  if (!HasRow(i)) return -1;
  const int b = fvBlockOfRow[At(i)];
  return GetIsBlockDiagonal(b) ? i : GetBlockStartIndex(b);
}

// ---- Vectors times L ---------------------------------------------------------------------------

bool NQSymBlockDiagMatrix::ComputeProductLAndSquare(const NQRectMatrix& square,
                                                    NQRectMatrix& out) const {
  return IsValidMatrix() && square.GetNRows() == fNRows && square.GetNCols() == fNRows &&
         Make(fNRows, fNRows, &out, [&](NQRectMatrix& result) {
           for (int i = 0; i < fNRows; ++i) {
             for (int k = GetIndexFirstInRow(i); k <= i; ++k)
               AddScaled(Order(), *FindBlock(i, k), square.GetRowPtr(k), result.GetRowPtr(i));
           }
         });
}

bool NQSymBlockDiagMatrix::ComputeSymRowByL(const INQSymMatrix& s, int i,
                                            std::vector<double>& out) const {
  std::vector<double> row;
  return s.GetRow(i, row) && ComputeLTransV(row, out);
}

bool NQSymBlockDiagMatrix::ComputeVecPartByL(const std::vector<double>& v, int first,
                                             std::vector<double>& out) const {
  if (!IsValidMatrix() || !HoldsRun(v.size(), first, Order())) return false;
  std::vector<double> part;
  return GuardMemory([&] { part.assign(v.begin() + first, v.begin() + first + fNRows); }) &&
         ComputeLTransV(part, out);
}

bool NQSymBlockDiagMatrix::ComputeVecIIncrPartByL(const std::vector<double>& v, int first, int inc,
                                                  std::vector<double>& out) const {
  const GrowingRun run(v, first, inc, Order());
  if (!IsValidMatrix() || !run.Fits()) return false;
  std::vector<double> x;
  return MakeVector(Order(), x,
                    [&](std::vector<double>& values) {
                      for (int k = 0; k < fNRows; ++k) values[At(k)] = run.GetAt(k);
                    }) &&
         ComputeLTransV(x, out);
}

// ---- Dot products with columns and rows --------------------------------------------------------

double NQSymBlockDiagMatrix::DotProductLColVecIIncrPart(int j, const std::vector<double>& v,
                                                        int first, int inc) const {
  const GrowingRun run(v, first, inc, Order());
  if (!HasRow(j) || !run.Fits()) return NQMV::Missing();
  double sum = 0;
  ForEachInColumn(*this, j, j, [&](int i, double l) { sum += l * run.GetAt(i); });
  return sum;
}

double NQSymBlockDiagMatrix::DotProductColVecIIncrPart(int j, const std::vector<double>& v,
                                                       int first, int inc) const {
  const GrowingRun run(v, first, inc, Order());
  if (!HasRow(j) || !run.Fits()) return NQMV::Missing();
  double sum = 0;
  ForEachInColumn(*this, j, 0, [&](int i, double s) { sum += s * run.GetAt(i); });
  return sum;
}

double NQSymBlockDiagMatrix::DotProductLColDenseRowPart(int j, const NQRectMatrix& r, int row,
                                                        int first) const {
  const double* values = r.GetRowPtr(row);
  if (!HasRow(j) || !values || !IsRun(r.GetNCols(), first, fNRows)) return NQMV::Missing();
  double sum = 0;
  ForEachInColumn(*this, j, j, [&](int i, double l) { sum += l * values[first + i]; });
  return sum;
}

double NQSymBlockDiagMatrix::ComputeRVDParts(int r, int first, int count,
                                             const std::vector<double>& x, int inc) const {
  if (!HasRow(r) || !IsRun(fNRows, first, count) || !HoldsStrided(x.size(), At(count), inc))
    return NQMV::Missing();
  const double* at = x.data() + (inc >= 0 ? 0 : (1 - std::ptrdiff_t{count}) * inc);
  double sum = 0;
  ForEachInColumn(*this, r, 0, [&](int k, double s) {
    if (k >= first && k - first < count) sum += s * at[std::ptrdiff_t{k - first} * inc];
  });
  return sum;
}

bool NQSymBlockDiagMatrix::UpdateDenseColumnPart(int j, double factor, NQRectMatrix& r, int first,
                                                 int col) const {
  if (!HasRow(j) || col < 0 || col >= r.GetNCols() || !IsRun(r.GetNRows(), first, fNRows))
    return false;
  ForEachInColumn(*this, j, 0, [&](int i, double s) { r.GetRowPtr(first + i)[col] += factor * s; });
  return true;
}

}  // namespace NQMath_940
