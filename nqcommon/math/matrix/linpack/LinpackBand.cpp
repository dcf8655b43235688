#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/internal/linpack_general.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_positive_definite.h>

#include <algorithm>

namespace NQMath_940 {

using internal::BandView;
using internal::GeneralBandView;

// ---- General band

void Linpack::Dgbco(double* abd, int lda, int n, int ml, int mu, int* ipvt, double& rcond,
                    double* z) {
  const GeneralBandView view(abd, lda, n, ml, mu, ipvt);
  double norm = 0;
  for (int j = 0; j < n; ++j) {
    const int first = std::max(0, j - mu);
    norm = Blas1::D_Max(norm, Blas1::DASum(j + view.Below(j) + 1 - first, view.At(first, j), 1));
  }
  Dgbfa(abd, lda, n, ml, mu, ipvt);
  rcond = internal::EstimateGeneral(view, ipvt, norm, z);
}

int Linpack::Dgbfa(double* abd, int lda, int n, int ml, int mu, int* ipvt) {
  const GeneralBandView view(abd, lda, n, ml, mu, ipvt);
  // Row exchanges will fill the ml diagonals over the upper ones, which are cleared first.
  for (int j = mu + 1; j < n; ++j) std::fill(view.At(view.Top(j), j), view.At(j - mu, j), 0.0);
  return internal::FactorGeneral(view, ipvt);
}

void Linpack::Dgbsl(const double* abd, int lda, int n, int ml, int mu, const int* ipvt, double* b,
                    int job) {
  internal::SolveGeneral(GeneralBandView(abd, lda, n, ml, mu, ipvt), ipvt, b, job);
}

void Linpack::Dgbdi(const double* abd, int lda, int n, int ml, int mu, const int* ipvt,
                    double* det) {
  internal::DeterminantGeneral(GeneralBandView(abd, lda, n, ml, mu, ipvt), ipvt, det);
}

// ---- Positive definite band

int Linpack::Dpbco(double* abd, int lda, int n, int m, double& rcond, double* z) {
  return internal::ConditionPositive(BandView{abd, lda, n, m}, rcond, z);
}

int Linpack::Dpbfa(double* abd, int lda, int n, int m) {
  return internal::FactorPositive(BandView{abd, lda, n, m});
}

void Linpack::Dpbsl(const double* abd, int lda, int n, int m, double* b) {
  internal::SolvePositive(BandView{abd, lda, n, m}, b);
}

void Linpack::Dpbdi(const double* abd, int lda, int n, int m, double* det) {
  internal::DeterminantPositive(BandView{abd, lda, n, m}, det);
}

}  // namespace NQMath_940
