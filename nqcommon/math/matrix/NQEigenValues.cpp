#include <nqcommon/math/matrix/NQEigenValues.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/plane_rotations.h>
#include <nqcommon/math/kernels/tridiagonal.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

namespace {

constexpr double kDefaultPDEps = 1e-6;

// The count when there is no storage.
constexpr int kNoStorage = -2;

bool IsNaN(double x) { return std::isnan(x); }

}  // namespace

// ---- Problem ------------------------------------------------------------------------------------

NQEigenValues::NQEigenValues(double tolerance, int maxIter) {
  SetTolerance(tolerance);
  SetMaxIter(maxIter);
}

NQEigenValues::NQEigenValues(const NQSymMatrix& h, double tolerance, int maxIter)
    : NQEigenValues(tolerance, maxIter) {
  SetHMatrix(h);
}

NQEigenValues::NQEigenValues(const NQSymMatrix& h, const NQSymMatrix& e, double tolerance,
                             int maxIter)
    : NQEigenValues(h, tolerance, maxIter) {
  SetEMatrix(e);
}

NQEigenValues& NQEigenValues::operator=(const NQEigenValues& other) noexcept {
  if (!GuardMemory([&] { EigenFields::operator=(EigenFields(other)); })) {
    EigenFields::operator=({});
    fNRows = -1;
  }
  return *this;
}

void NQEigenValues::DropResults() {
  fmOrthInfo = {};
  fvDiag3.clear();
  fvSubdiag3.clear();
  fvEigenVal.clear();
  fNEigenVal = 0;
  fmEigenVectors = {};
  fvEigPairs.clear();
}

void NQEigenValues::DropE() {
  fmE = {};
  fvEDiag.clear();
  fmCholE = {};
  fmInvCholE = {};
  fmVHV = {};
  fRankE = 0;
  fIsValidE = false;
}

int NQEigenValues::SetHMatrix(const NQSymMatrix& h) {
  DropResults();
  fmH = h;
  fNRows = fmH.GetNRows();
  if (!fIsValidE) return fNRows;
  const bool ofSameOrder = fmE.GetNRows() == fNRows;
  if (ofSameOrder && TransformH()) return fNRows;
  DropE();
  return fNRows = ofSameOrder ? -1 : fNRows;
}

bool NQEigenValues::SetEMatrix(const NQSymMatrix& e) {
  DropResults();
  fIsValidE = e.GetNRows() == fNRows && FactorE(e) && TransformH();
  if (!fIsValidE) DropE();
  return fIsValidE;
}

bool NQEigenValues::FactorE(const NQSymMatrix& e) {
  fmE = e;
  fmE.GetDiagonal(fvEDiag);
  fmCholE = fmE;
  if (!fmCholE.IsValidMatrix() || fvEDiag.size() != static_cast<std::size_t>(fNRows)) return false;
  const int dropped = fmCholE.LTChol(fvEDiag, fTolerance, false);
  fRankE = fNRows - dropped;
  if (dropped < 0 || fRankE <= 0) return false;
  fmInvCholE = fmCholE;
  NQDeterminant det;
  fmInvCholE.LTDetInverse(det, 10);
  return fmInvCholE.IsValidMatrix();
}

bool NQEigenValues::TransformH() {
  return fmH.ComputeLSLTrans(fmInvCholE, fmVHV) && fmVHV.IsValidMatrix();
}

bool NQEigenValues::SetTolerance(double x) {
  if (!(x > 0)) return false;
  fTolerance = x;
  return true;
}

bool NQEigenValues::SetMaxIter(int k) {
  if (k < 1) return false;
  fMaxIter = k;
  return true;
}

// ---- Computation --------------------------------------------------------------------------------

void NQEigenValues::TriDiag() {
  fmOrthInfo = fRankE > 0 ? fmVHV : fmH;
  if (fNRows < 1 || fmOrthInfo.GetNRows() != fNRows) return;
  const auto n = static_cast<std::size_t>(fNRows);
  fvDiag3.resize(n);
  fvSubdiag3.resize(n);
  internal::ReduceToTridiagonal(fmOrthInfo.AsVector().data(), n, fvDiag3.data(), fvSubdiag3.data());
  if (!fComputeVectors) fmOrthInfo = {};
}

// EigenValuesTQLI returns 0, l + 1 when eigenvalue l did not converge, or -1 when sizes do not fit.
int NQEigenValues::EigenValuesTQLI() {
  const auto n = static_cast<std::size_t>(fNRows);
  if (n < 1 || fvDiag3.size() != n || fvSubdiag3.size() != n) return -1;
  // Without vectors there is no matrix for rotations, and none are made.
  if (fComputeVectors && !fmEigenVectors.Resize(fNRows, fNRows)) return -1;
  fmEigenVectors.AddToDiagonal(1);
  internal::RotationBatch rotations(fmEigenVectors.GetRowPtr(0), n);
  fNEigenVal =
      static_cast<int>(internal::QlEigenvalues(fvDiag3.data(), fvSubdiag3.data(), n, fTolerance,
                                               fMaxIter, fComputeVectors ? &rotations : nullptr));
  rotations.Apply();
  return fNEigenVal == fNRows ? 0 : fNEigenVal + 1;
}

void NQEigenValues::BackTransVectors() {
  internal::BackTransform(fmOrthInfo.AsVectorConst().data(), static_cast<std::size_t>(fNRows),
                          fmEigenVectors.GetRowPtr(0));
}

// Run computes anew, stores the results and returns the count.
int NQEigenValues::Run(bool withVectors) {
  constexpr int kSizesDoNotFit = -1;
  DropResults();
  fComputeVectors = withVectors;
  int result = kSizesDoNotFit;
  const bool hasStorage = GuardMemory([&] {
    TriDiag();
    result = EigenValuesTQLI();
    if (withVectors && result >= 0) BackTransVectors();
    if (fNEigenVal >= 1) {
      fvEigenVal.assign(fvDiag3.begin(), fvDiag3.begin() + fNEigenVal);
      fvEigenVal.resize(fvDiag3.size());
    }
  });
  if (!hasStorage) {
    DropResults();
    result = kSizesDoNotFit;
  }
  return result == 0 ? fNRows : result - 1;
}

int NQEigenValues::Compute(std::vector<double>& values) {
  const int count = Run(false);
  return count < 1 || GuardMemory([&] { values = fvEigenVal; }) ? count : kNoStorage;
}

int NQEigenValues::Compute(std::vector<double>& values, NQRectMatrix& vectors) {
  const int count = Run(true);
  if (count < 1) return count;
  NQRectMatrix copy(fmEigenVectors);
  if (!copy.IsValidMatrix() || !GuardMemory([&] { values = fvEigenVal; })) return kNoStorage;
  vectors = std::move(copy);
  return count;
}

// ---- Sorting ------------------------------------------------------------------------------------

// MakeEigPairs fills fvEigPairs with the computed eigenvalues in order, then the places left over.
void NQEigenValues::MakeEigPairs(bool descending) {
  fvEigPairs.clear();
  for (int i = 0; i < fNRows; ++i)
    fvEigPairs.emplace_back(fvEigenVal[static_cast<std::size_t>(i)], i);
  std::stable_sort(fvEigPairs.begin(), fvEigPairs.begin() + fNEigenVal,
                   [descending](const auto& a, const auto& b) {
                     if (IsNaN(a.first) || IsNaN(b.first)) return IsNaN(b.first) && !IsNaN(a.first);
                     return descending ? a.first > b.first : a.first < b.first;
                   });
}

// Sort uses the stored results, or computes where what is wanted is not stored. It returns the
// count, and `values` and `vectors`, where given, in order when that is at least 1.
int NQEigenValues::Sort(std::vector<double>& values, NQRectMatrix* vectors, bool descending) {
  const bool isStored = fNEigenVal >= 1 && (fComputeVectors || !vectors);
  const int count = isStored ? fNEigenVal : Run(vectors != nullptr);
  if (count < 1) return count;
  return GuardMemory(kNoStorage, [&] {
    MakeEigPairs(descending);
    std::vector<double> sorted;
    std::vector<int> rows;
    for (const auto& [value, row] : fvEigPairs) {
      sorted.push_back(value);
      rows.push_back(row);
    }
    if (vectors && !fmEigenVectors.ExtractRows(rows, *vectors)) return kNoStorage;
    values = std::move(sorted);
    return count;
  });
}

int NQEigenValues::GetSorted(std::vector<double>& values, bool descending) {
  return Sort(values, nullptr, descending);
}

int NQEigenValues::GetSorted(std::vector<double>& values, NQRectMatrix& vectors, bool descending) {
  return Sort(values, &vectors, descending);
}

// ---- Positive definiteness ----------------------------------------------------------------------

bool NQEigenValues::IsPDHMatrix(double eps, bool& isPD) {
  const double least = eps > 0 ? eps : kDefaultPDEps;
  const int count = Run(false);
  const auto begin = fvEigenVal.begin();
  const auto end = begin + fNEigenVal;
  isPD = std::all_of(begin, end, [least](double x) { return x >= least; });
  return count == fNRows && std::none_of(begin, end, IsNaN);
}

bool NQEigenValues::GetPDHMatrix(double eps, NQSymMatrix& out, bool& changed) {
  changed = false;
  if (!out.SetNRows(fNRows, true) || out.GetNRows() != fNRows) return false;
  const double least = eps > 0 ? eps : kDefaultPDEps;
  if (Run(true) != fNRows || std::any_of(fvEigenVal.begin(), fvEigenVal.end(), IsNaN)) return false;
  if (*std::min_element(fvEigenVal.begin(), fvEigenVal.end()) >= least) {
    out = fmH;
    return out.IsValidMatrix();
  }
  std::vector<double> vector;
  for (int i = 0; i < fNRows; ++i) {
    if (!fmEigenVectors.GetRow(i, vector) || !fmScratch.SetToVV(vector)) {
      out.Clear();
      return false;
    }
    out.ComputeAXpY(std::max(fvEigenVal[static_cast<std::size_t>(i)], least), fmScratch);
  }
  fmScratch = {};
  changed = true;
  return true;
}

bool NQEigenValues::GetPDHMatrix(double eps, NQSymMatrix& out) {
  bool changed = false;
  return GetPDHMatrix(eps, out, changed);
}

// ---- Diagnostic display -------------------------------------------------------------------------

namespace {

template <class Matrix>
void DisplayMatrix(const char* label, const Matrix& matrix) {
  NQDisplay_940::DisplayText(1, label);
  matrix.Display();
}

}  // namespace

void NQEigenValues::Display() const {
  using namespace NQDisplay_940;
  GuardMemory([&] {
    DisplayText(1, "NQEigenValues display start");
    DisplayI("Maximum number of iterations", fMaxIter);
    DisplayB("Compute eigenvectors indicator", fComputeVectors);
    DisplayMatrix("Matrix H:", fmH);
    if (fIsValidE) {
      DisplayMatrix("Matrix E:", fmE);
      DisplayDV("fvEDiag", fvEDiag, true);
      DisplayMatrix("Chol(E):", fmCholE);
      DisplayMatrix("Gen.Inverse of Chol(E):", fmInvCholE);
      DisplayMatrix("fmVHV", fmVHV);
    } else {
      DisplayText(1, "Matrix E is identity");
    }
    DisplayMatrix("fmOrthInfo", fmOrthInfo);
    DisplayI("Rank of the E matrix", fRankE);
    DisplayDV("fvDiag3", fvDiag3, true);
    DisplayDV("fvSubdiag3", fvSubdiag3, true);
    DisplayDV("fvEigenVal", fvEigenVal, true);
    DisplayI("Number of computed eigenvalues", fNEigenVal);
    DisplayMatrix("fmEigenVectors:", fmEigenVectors);
    DisplayVPDI("fvEigPairs", fvEigPairs);
    DisplayText(1, "NQEigenValues display end");
  });
}

}  // namespace NQMath_940
