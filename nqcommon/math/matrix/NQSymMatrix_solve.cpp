#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>

namespace NQMath_940 {

// ---- Solves -------------------------------------------------------------------------------------

int NQSymMatrix::LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) {
  return internal::SolveByFactor(*this, b, eps, x, [this](std::vector<double>& solution) {
    LTSubstitute(solution);
    TSolveSubst(solution);
  });
}

bool NQSymMatrix::LTSubstitute(std::vector<double>& x) const {
  if (!HasOrder(x.size())) return false;
  internal::LowerSolve(fvData.data(), Order(), x.data());
  return true;
}

bool NQSymMatrix::TSolveSubst(std::vector<double>& x) const {
  if (!HasOrder(x.size())) return false;
  internal::LowerTransSolve(fvData.data(), Order(), x.data());
  return true;
}

// ---- Positive-definite repair -------------------------------------------------------------------

namespace {

// RidgeSearch factors copies of a matrix with a shift on the diagonal, and counts them.
class RidgeSearch {
 public:
  RidgeSearch(const NQSymMatrix& s, double eps) : fmS(s), fEps(eps), fmFactor(s) {
    s.GetNCheckDiagonal(fvReference, 1e-6, 1.0);
  }

  // HasMemory answers for the whole search: the copies after the first lie where that one lay.
  bool HasMemory() const { return fmFactor.IsValidMatrix() && !fvReference.empty(); }

  bool Factors(double shift) {
    ++fCount;
    fmFactor = fmS;
    fmFactor.AddToDiagonal(shift);
    return fmFactor.LTChol(fvReference, fEps, false) == 0;
  }

  // Upward gives the first of h, 2h, 3h, ... that factors; 0 when there is none in the range of
  // doubles. A shift of (n + 1) h, h being at least the largest entry, makes the matrix diagonally
  // dominant, so only an eps above 1 needs more steps; they grow, for such an eps may be as large
  // as doubles are.
  double Upward(double h) {
    double shift = 0;
    for (int step = 0;; ++step) {
      if (step > fmS.GetNRows() + 1) h *= 2;
      shift += h;
      // Four shifts leave room for the matrix shifted and its largest entry on top of that.
      if (!std::isfinite(4 * shift)) return 0;
      if (Factors(shift)) return shift;
    }
  }

  // Bisect narrows (0, high] about the smallest shift that factors, to the relative width 2 eps,
  // absolute below 1, or to neighbouring doubles where eps asks for less than they are apart.
  double Bisect(double high) {
    double low = 0;
    for (;;) {
      const double middle = 0.5 * low + 0.5 * high;
      const double width = middle > 1 ? (high - low) / middle : high - low;
      if (!(width * 0.5 > fEps) || middle <= low || middle >= high) return high;
      (Factors(middle) ? high : low) = middle;
    }
  }

  int Count() const { return fCount; }

 private:
  const NQSymMatrix& fmS;
  double fEps;
  NQSymMatrix fmFactor;
  std::vector<double> fvReference;
  int fCount = 0;
};

}  // namespace

int NQSymMatrix::TransformToPositiveDefinite(double eps, bool& changed, double& shift) {
  changed = false;
  shift = 0;
  if (fNRows < 2) return -1;
  if (!(eps > 0)) return -2;
  const auto finite = [](double s) { return std::isfinite(s); };
  if (!std::all_of(fvData.begin(), fvData.end(), finite)) return -3;

  RidgeSearch search(*this, eps);
  if (!search.HasMemory()) return -3;
  if (search.Factors(0)) return search.Count();

  double maxDiag = 0, minDiag = 0, maxOff = 0, minOff = 0;
  MaxMinDiagOffDiag(maxDiag, minDiag, maxOff, minOff);
  const double atLeast = std::max(fNRows - 2, 1);
  const double h = std::max(
      {std::fabs(maxDiag), std::fabs(minDiag), std::fabs(maxOff), std::fabs(minOff), atLeast});
  double c = search.Upward(h);
  if (c == 0) return -3;
  c = search.Bisect(c);

  double max = 0, min = 0;
  AddToDiagonal(c);
  MaxMinDiag(max, min);
  AddToDiagonal(0.01 * max);
  c += 0.01 * max;
  MultiplyByNumber(1 / (c + maxDiag));
  shift = c;
  changed = true;
  return search.Count();
}

}  // namespace NQMath_940
