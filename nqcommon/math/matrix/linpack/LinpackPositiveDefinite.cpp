#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/internal/linpack_positive_definite.h>

namespace NQMath_940 {

using internal::FullView;
using internal::PackedView;

// ---- Full storage

int Linpack::Dpoco(double* a, int lda, int n, double& rcond, double* z) {
  return internal::ConditionPositive(FullView{a, lda, n}, rcond, z);
}

int Linpack::Dpofa(double* a, int lda, int n) {
  return internal::FactorPositive(FullView{a, lda, n});
}

void Linpack::Dposl(const double* a, int lda, int n, double* b) {
  internal::SolvePositive(FullView{a, lda, n}, b);
}

void Linpack::Dpodi(double* a, int lda, int n, double* det, int job) {
  internal::DeterminantInversePositive(FullView{a, lda, n}, det, job);
}

// ---- Packed storage

int Linpack::Dppco(double* ap, int n, double& rcond, double* z) {
  return internal::ConditionPositive(PackedView{ap, n}, rcond, z);
}

int Linpack::Dppfa(double* ap, int n) { return internal::FactorPositive(PackedView{ap, n}); }

void Linpack::Dppsl(const double* ap, int n, double* b) {
  internal::SolvePositive(PackedView{ap, n}, b);
}

void Linpack::Dppdi(double* ap, int n, double* det, int job) {
  internal::DeterminantInversePositive(PackedView{ap, n}, det, job);
}

}  // namespace NQMath_940
