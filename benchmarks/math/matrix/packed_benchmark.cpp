// NQSymMatrix::SweepOnAll (the inverse in place) and LTChol, beside LAPACK on a full square
// (dpotrf, dpotri) and on a packed triangle (dpptrf, dpptri), one thread. Copying the input is left
// out of all times. --isa=avx2 and --isa=baseline time the kernels' forms for older processors
// instead.
#include <nqcommon/math/kernels/cpu_dispatch.h>
#include <nqcommon/math/kernels/packed_cholesky.h>
#include <nqcommon/math/kernels/packed_sweep.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/ratio_reporter.h"

extern "C" {
void dpotrf_(const char* uplo, const int* n, double* a, const int* lda, int* info);
void dpotri_(const char* uplo, const int* n, double* a, const int* lda, int* info);
void dpptrf_(const char* uplo, const int* n, double* ap, int* info);
void dpptri_(const char* uplo, const int* n, double* ap, int* info);
void openblas_set_num_threads(int threads);
char* openblas_get_corename();
}

namespace {

using namespace NQMath_940::internal;

constexpr double kEps = 1e-12;
Isa isa = BestIsa();

// A packed positive-definite matrix; by rows of the lower triangle, which is also LAPACK's upper
// triangle by columns.
std::vector<double> Packed(int order) {
  const auto n = static_cast<std::size_t>(order);
  std::mt19937 random(1);
  std::vector<double> s(RowStart(n));
  for (double& x : s) x = static_cast<double>(random()) / 4294967296.0 - 0.5;
  for (std::size_t i = 0; i < n; ++i) s[DiagIndex(i)] += static_cast<double>(n);
  return s;
}

std::vector<double> FullSquare(int order) {
  const auto n = static_cast<std::size_t>(order);
  const std::vector<double> s = Packed(order);
  std::vector<double> full(n * n);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) full[i * n + j] = s[SymIndex(i, j)];
  }
  return full;
}

// Times work(matrix), which tells whether it succeeded, on a fresh copy of the input every time.
template <class Matrix, class Work>
void Time(benchmark::State& state, const Matrix& input, Work work) {
  Matrix matrix;
  for (auto _ : state) {
    matrix = input;
    const auto begin = std::chrono::steady_clock::now();
    const bool succeeded = work(matrix);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    benchmark::ClobberMemory();
    state.SetIterationTime(time.count());
    if (!succeeded) {
      state.SkipWithError("failed");
      return;
    }
  }
}

NQMath_940::NQSymMatrix Ours(int n) {
  NQMath_940::NQSymMatrix s(n, true);
  s.SetData(Packed(n));
  return s;
}

void SweepOurs(benchmark::State& state, int n) {
  std::vector<double> t(static_cast<std::size_t>(n), 1.0);
  NQMath_940::NQBitSet swept;
  Time(state, Ours(n), [&](NQMath_940::NQSymMatrix& s) {
    return s.SweepOnAll(kEps, swept, true, true, false, &t) && swept.InSet() == n;
  });
}

void CholeskyOurs(benchmark::State& state, int n) {
  const std::vector<double> t(static_cast<std::size_t>(n), 1.0);
  Time(state, Ours(n), [&](NQMath_940::NQSymMatrix& s) { return s.LTChol(t, kEps, true) == 0; });
}

void SweepKernel(benchmark::State& state, int n) {
  std::vector<int> rows(static_cast<std::size_t>(n));
  std::iota(rows.begin(), rows.end(), 0);
  const std::vector<double> t(rows.size(), 1.0);
  std::vector<bool> swept;
  Time(state, Packed(n), [&](std::vector<double>& s) {
    swept.assign(rows.size(), false);
    SweepRows(s.data(), rows.size(), rows, kEps, t.data(), swept, nullptr, isa);
    return std::find(swept.begin(), swept.end(), false) == swept.end();
  });
}

void CholeskyKernel(benchmark::State& state, int n) {
  const std::vector<double> t(static_cast<std::size_t>(n), 1.0);
  Time(state, Packed(n), [&](std::vector<double>& s) {
    return Cholesky(s.data(), t.size(), t.data(), kEps, nullptr, isa) == 0;
  });
}

template <bool kInverse>
void Full(benchmark::State& state, int n) {
  Time(state, FullSquare(n), [n](std::vector<double>& matrix) {
    double* a = matrix.data();
    int info = 0;
    dpotrf_("L", &n, a, &n, &info);
    if (kInverse && info == 0) dpotri_("L", &n, a, &n, &info);
    return info == 0;
  });
}

template <bool kInverse>
void PackedPeer(benchmark::State& state, int n) {
  Time(state, Packed(n), [n](std::vector<double>& matrix) {
    double* a = matrix.data();
    int info = 0;
    dpptrf_("U", &n, a, &info);
    if (kInverse && info == 0) dpptri_("U", &n, a, &info);
    return info == 0;
  });
}

void Register(const std::string& name, void (*run)(benchmark::State&, int)) {
  for (const int n : {50, 200, 500, 1000}) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(), run, n)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.1)
        ->Repetitions(5);
  }
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--isa=avx2") isa = UsableIsa(Isa::kAvx2);
    if (std::string_view(argv[i]) == "--isa=baseline") isa = Isa::kBaseline;
  }
  openblas_set_num_threads(1);
  std::printf("peer's kernels: %s\n", openblas_get_corename());
  for (const char* name : {"OPENBLAS_CORETYPE", "OPENBLAS_L2_SIZE"}) {
    if (std::getenv(name) != nullptr) std::printf("%s is set and may slow the peer\n", name);
  }
  const bool best = isa == BestIsa();
  Register("sweep/ours", best ? SweepOurs : SweepKernel);
  Register("sweep/dpotrf+dpotri", Full<true>);
  Register("sweep/dpptrf+dpptri", PackedPeer<true>);
  Register("cholesky/ours", best ? CholeskyOurs : CholeskyKernel);
  Register("cholesky/dpotrf", Full<false>);
  Register("cholesky/dpptrf", PackedPeer<false>);
  return nqbench::RunWithRatios(argc, argv);
}
