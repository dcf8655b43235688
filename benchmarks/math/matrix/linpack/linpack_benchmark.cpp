// LINPACK's factorisations beside LAPACK's unblocked ones, which do the same work in the same
// storage: Dgeco and Dgesl beside dgetf2, dgecon and dgetrs; Dqrdc beside dgeqr2; Dpofa beside
// dpotf2. Link the reference LAPACK and BLAS. Copying the input is left out of all times.
#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "support/ratio_reporter.h"

extern "C" {
void dgetf2_(const int* m, const int* n, double* a, const int* lda, int* ipiv, int* info);
void dgecon_(const char* norm, const int* n, const double* a, const int* lda, const double* anorm,
             double* rcond, double* work, int* iwork, int* info);
void dgetrs_(const char* trans, const int* n, const int* nrhs, const double* a, const int* lda,
             const int* ipiv, double* b, const int* ldb, int* info);
void dgeqr2_(const int* m, const int* n, double* a, const int* lda, double* tau, double* work,
             int* info);
void dpotf2_(const char* uplo, const int* n, double* a, const int* lda, int* info);
}

namespace {

using NQMath_940::Linpack;

// Symmetric and positive definite, with all that the routines write to.
struct Problem {
  explicit Problem(int order)
      : n(order), original(Size(n * n)), ipvt(Size(n)), iwork(Size(n)), b(Size(n)), z(Size(4 * n)) {
    std::mt19937 random(1);
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i <= j; ++i) {
        const double x = static_cast<double>(random()) / 4294967296.0 - 0.5;
        original[Size(i + j * n)] = original[Size(j + i * n)] = i == j ? x + n : x;
      }
    }
  }

  static std::size_t Size(int k) { return static_cast<std::size_t>(k); }

  int n;
  std::vector<double> original, a;
  std::vector<int> ipvt, iwork;
  std::vector<double> b, z;
  double rcond = 0;
  int info = 0;
};

void SolveOurs(Problem& p) {
  Linpack::Dgeco(p.a.data(), p.n, p.n, p.ipvt.data(), p.rcond, p.z.data());
  Linpack::Dgesl(p.a.data(), p.n, p.n, p.ipvt.data(), p.b.data(), 0);
}

void SolveLapack(Problem& p) {
  const int one = 1;
  const double norm = 2.0 * p.n;
  dgetf2_(&p.n, &p.n, p.a.data(), &p.n, p.ipvt.data(), &p.info);
  dgecon_("1", &p.n, p.a.data(), &p.n, &norm, &p.rcond, p.z.data(), p.iwork.data(), &p.info);
  dgetrs_("N", &p.n, &one, p.a.data(), &p.n, p.ipvt.data(), p.b.data(), &p.n, &p.info);
}

void QROurs(Problem& p) {
  Linpack::Dqrdc(p.a.data(), p.n, p.n, p.n, p.b.data(), nullptr, nullptr, 0);
}

void QRLapack(Problem& p) {
  dgeqr2_(&p.n, &p.n, p.a.data(), &p.n, p.b.data(), p.z.data(), &p.info);
}

void CholeskyOurs(Problem& p) { p.info = Linpack::Dpofa(p.a.data(), p.n, p.n); }

void CholeskyLapack(Problem& p) { dpotf2_("U", &p.n, p.a.data(), &p.n, &p.info); }

void Time(benchmark::State& state, void (*work)(Problem&), int order) {
  using Clock = std::chrono::steady_clock;
  Problem problem(order);
  for (auto _ : state) {
    problem.a = problem.original;
    problem.b.assign(problem.b.size(), 1.0);
    const auto start = Clock::now();
    work(problem);
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    benchmark::DoNotOptimize(problem.a.data());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const struct {
    const char* name;
    void (*work)(Problem&);
  } works[] = {{"solve/ours/", SolveOurs},
               {"solve/LAPACK/", SolveLapack},
               {"QR/ours/", QROurs},
               {"QR/LAPACK/", QRLapack},
               {"Cholesky/ours/", CholeskyOurs},
               {"Cholesky/LAPACK/", CholeskyLapack}};
  for (const auto& [name, work] : works) {
    for (int order : {20, 50, 100, 200, 400})
      benchmark::RegisterBenchmark((name + std::to_string(order)).c_str(), Time, work, order)
          ->UseManualTime();
  }
  return nqbench::RunWithRatios(argc, argv);
}
