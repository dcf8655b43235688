#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/internal/linpack_general.h>

namespace NQMath_940 {

using internal::FullView;

void Linpack::Dgeco(double* a, int lda, int n, int* ipvt, double& rcond, double* z) {
  const FullView view{a, lda, n};
  double norm = 0;
  for (int j = 0; j < n; ++j) norm = Blas1::D_Max(norm, Blas1::DASum(n, view.At(0, j), 1));
  Dgefa(a, lda, n, ipvt);
  rcond = internal::EstimateGeneral(view, ipvt, norm, z);
}

int Linpack::Dgefa(double* a, int lda, int n, int* ipvt) {
  return internal::FactorGeneral(FullView{a, lda, n}, ipvt);
}

void Linpack::Dgesl(const double* a, int lda, int n, const int* ipvt, double* b, int job) {
  internal::SolveGeneral(FullView{a, lda, n}, ipvt, b, job);
}

void Linpack::Dgedi(double* a, int lda, int n, const int* ipvt, double* det, double* work,
                    int job) {
  const FullView view{a, lda, n};
  if (job / 10 != 0) internal::DeterminantGeneral(view, ipvt, det);
  if (job % 10 == 0) return;
  for (int k = 0; k < n; ++k) internal::InvertUpperStep(view, k);
  // A's inverse is inverse(U) inverse(L), formed column by column from the last but one.
  for (int k = n - 2; k >= 0; --k) {
    for (int i = k + 1; i < n; ++i) {
      work[i] = view(i, k);
      view(i, k) = 0;
    }
    for (int j = k + 1; j < n; ++j) Blas1::Daxpy(n, work[j], view.At(0, j), 1, view.At(0, k), 1);
    const int pivot = ipvt[k] - 1;
    if (pivot != k) Blas1::DSwap(n, view.At(0, k), 1, view.At(0, pivot), 1);
  }
}

}  // namespace NQMath_940
