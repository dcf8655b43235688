#include <nqcommon/math/matrix/NQEigenValues.h>

#include <algorithm>
#include <cmath>
#include <exception>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/plane_rotations.h>
#include <nqcommon/math/kernels/tridiagonal.h>

namespace NQMath_940 {

namespace {

constexpr double kDefaultPDEps = 1e-6;

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
  if (fIsValidE && !TransformH()) DropE();
  return fNRows;
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
  const int dropped = fmCholE.LTChol(fvEDiag, fTolerance, false);
  fRankE = fNRows - dropped;
  if (!fmCholE.IsValidMatrix() || dropped < 0 || fRankE <= 0) return false;
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
  const auto n = static_cast<std::size_t>(std::max(fNRows, 0));
  if (n < 1 || fvDiag3.size() != n || fvSubdiag3.size() != n) return -1;
  if (fComputeVectors) {
    if (!fmEigenVectors.SetNRowsCols(fNRows, fNRows, true)) return -1;
    fmEigenVectors.AddToDiagonal(1);
    internal::RotationBatch rotations(fmEigenVectors.GetRowPtr(0), n);
    fNEigenVal = static_cast<int>(internal::QlEigenvalues(fvDiag3.data(), fvSubdiag3.data(), n,
                                                          fTolerance, fMaxIter, &rotations));
    rotations.Apply();
  } else {
    fNEigenVal = static_cast<int>(internal::QlEigenvalues(fvDiag3.data(), fvSubdiag3.data(), n,
                                                          fTolerance, fMaxIter, nullptr));
  }
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
  try {
    TriDiag();
    result = EigenValuesTQLI();
    if (withVectors && result >= 0) BackTransVectors();
    if (fNEigenVal >= 1) {
      fvEigenVal.assign(fvDiag3.begin(), fvDiag3.begin() + fNEigenVal);
      fvEigenVal.resize(fvDiag3.size());
    }
  } catch (const std::exception&) {  // no storage
    DropResults();
    result = kSizesDoNotFit;
  }
  return result == 0 ? fNRows : result - 1;
}

int NQEigenValues::Compute(std::vector<double>& values) {
  const int count = Run(false);
  if (count >= 1) values = fvEigenVal;
  return count;
}

int NQEigenValues::Compute(std::vector<double>& values, NQRectMatrix& vectors) {
  const int count = Run(true);
  if (count >= 1) {
    values = fvEigenVal;
    vectors = fmEigenVectors;
  }
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

void NQEigenValues::CopySorted(std::vector<double>& values) const {
  values.clear();
  for (const auto& pair : fvEigPairs) values.push_back(pair.first);
}

// Sort uses the stored results, or computes where what is wanted is not stored. It returns the
// count, and puts fvEigPairs in order when that is at least 1.
int NQEigenValues::Sort(bool withVectors, bool descending) {
  const bool isStored = fNEigenVal >= 1 && (fComputeVectors || !withVectors);
  const int count = isStored ? fNEigenVal : Run(withVectors);
  if (count >= 1) MakeEigPairs(descending);
  return count;
}

int NQEigenValues::GetSorted(std::vector<double>& values, bool descending) {
  const int count = Sort(false, descending);
  if (count >= 1) CopySorted(values);
  return count;
}

int NQEigenValues::GetSorted(std::vector<double>& values, NQRectMatrix& vectors, bool descending) {
  const int count = Sort(true, descending);
  if (count < 1) return count;
  CopySorted(values);
  std::vector<int> rows;
  for (const auto& pair : fvEigPairs) rows.push_back(pair.second);
  fmEigenVectors.ExtractRows(rows, vectors);
  return count;
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
    fmEigenVectors.GetRow(i, vector);
    if (!fmScratch.SetToVV(vector)) return false;
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
}

}  // namespace NQMath_940
