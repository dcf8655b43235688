// The peers' routines, Fortran's BLAS and LAPACK, and inputs that both sides take.
#pragma once

#include <nqcommon/math/kernels/packed_triangle.h>

#include <cstddef>
#include <random>
#include <vector>

extern "C" {
void dgemm_(const char* transA, const char* transB, const int* m, const int* n, const int* k,
            const double* alpha, const double* a, const int* lda, const double* b, const int* ldb,
            const double* beta, double* c, const int* ldc);
void dsymm_(const char* side, const char* uplo, const int* m, const int* n, const double* alpha,
            const double* a, const int* lda, const double* b, const int* ldb, const double* beta,
            double* c, const int* ldc);
void dsyrk_(const char* uplo, const char* trans, const int* n, const int* k, const double* alpha,
            const double* a, const int* lda, const double* beta, double* c, const int* ldc);
void dgeqrf_(const int* m, const int* n, double* a, const int* lda, double* tau, double* work,
             const int* lwork, int* info);
void dorgqr_(const int* m, const int* n, const int* k, double* a, const int* lda, const double* tau,
             double* work, const int* lwork, int* info);
void dgesv_(const int* n, const int* nrhs, double* a, const int* lda, int* ipiv, double* b,
            const int* ldb, int* info);
void dpotrf_(const char* uplo, const int* n, double* a, const int* lda, int* info);
void dpotri_(const char* uplo, const int* n, double* a, const int* lda, int* info);
void dtrtri_(const char* uplo, const char* diag, const int* n, double* a, const int* lda,
             int* info);
void dlauum_(const char* uplo, const int* n, double* a, const int* lda, int* info);
void dpptrf_(const char* uplo, const int* n, double* ap, int* info);
void dpptri_(const char* uplo, const int* n, double* ap, int* info);
void dspev_(const char* jobz, const char* uplo, const int* n, double* ap, double* w, double* z,
            const int* ldz, double* work, int* info);
void dspgv_(const int* itype, const char* jobz, const char* uplo, const int* n, double* ap,
            double* bp, double* w, double* z, const int* ldz, double* work, int* info);
}

namespace nqbench {

inline double NextCentred(std::mt19937& random) {
  return static_cast<double>(random()) / 4294967296.0 - 0.5;
}

// A packed matrix with elements in -1/2 .. 1/2; by rows of the lower triangle, which is also
// LAPACK's upper triangle by columns. `ridge` is added to the diagonal; n makes it positive
// definite.
inline std::vector<double> RandomPacked(int order, double ridge) {
  using namespace NQMath_940::internal;
  const auto n = static_cast<std::size_t>(order);
  std::mt19937 random(1);
  std::vector<double> s(RowStart(n));
  for (double& x : s) x = NextCentred(random);
  for (std::size_t i = 0; i < n; ++i) s[DiagIndex(i)] += ridge;
  return s;
}

// The full square of a packed matrix.
inline std::vector<double> SquareOf(const std::vector<double>& packed, int order) {
  const auto n = static_cast<std::size_t>(order);
  std::vector<double> full(n * n);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j)
      full[i * n + j] = packed[NQMath_940::internal::SymIndex(i, j)];
  }
  return full;
}

}  // namespace nqbench
