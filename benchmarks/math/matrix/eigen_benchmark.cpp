// NQEigenValues::Compute, with and without eigenvectors, beside LAPACK's dspev on the same packed
// triangle, one thread. The peer starts from a fresh copy of the matrix, which is left out of its
// time; Compute makes its own. The tolerance is the machine precision, at which the peer stops too.
// --isa=avx2 and --isa=baseline time the kernels' forms for older processors instead. Linked with
// another LAPACK the program compares with that one.
#include <nqcommon/math/kernels/cpu_dispatch.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/plane_rotations.h>
#include <nqcommon/math/kernels/tridiagonal.h>
#include <nqcommon/math/matrix/NQEigenValues.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/ratio_reporter.h"

extern "C" {
void dspev_(const char* jobz, const char* uplo, const int* n, double* ap, double* w, double* z,
            const int* ldz, double* work, int* info);
[[gnu::weak]] void openblas_set_num_threads(int threads);
[[gnu::weak]] char* openblas_get_corename();
}

namespace {

using namespace NQMath_940::internal;

constexpr double kEps = std::numeric_limits<double>::epsilon();
Isa isa = BestIsa();

std::vector<double> RandomPacked(std::size_t n) {
  std::mt19937 random(1);
  std::vector<double> s(RowStart(n));
  for (double& x : s) x = static_cast<double>(random()) / 4294967296.0 - 0.5;
  return s;
}

// Times work(matrix), which tells whether it succeeded.
template <class Work>
void Time(benchmark::State& state, int n, Work work) {
  const std::vector<double> input = RandomPacked(static_cast<std::size_t>(n));
  std::vector<double> matrix;
  for (auto _ : state) {
    matrix = input;
    const auto begin = std::chrono::steady_clock::now();
    const bool succeeded = work(matrix.data());
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    benchmark::ClobberMemory();
    state.SetIterationTime(time.count());
    if (!succeeded) {
      state.SkipWithError("failed");
      return;
    }
  }
}

template <bool kVectors>
void Ours(benchmark::State& state, int order) {
  NQMath_940::NQSymMatrix h(order, true);
  h.SetData(RandomPacked(static_cast<std::size_t>(order)));
  NQMath_940::NQEigenValues eigen(h, kEps, 30);
  std::vector<double> values;
  NQMath_940::NQRectMatrix vectors;
  Time(state, order, [&](double*) {
    return (kVectors ? eigen.Compute(values, vectors) : eigen.Compute(values)) == order;
  });
}

template <bool kVectors>
void Kernels(benchmark::State& state, int order) {
  const auto n = static_cast<std::size_t>(order);
  std::vector<double> d(n), e(n), z(kVectors ? n * n : 0);
  Time(state, order, [&](double* s) {
    ReduceToTridiagonal(s, n, d.data(), e.data(), isa);
    if (!kVectors) return QlEigenvalues(d.data(), e.data(), n, kEps, 30, nullptr) == n;
    z.assign(n * n, 0);
    for (std::size_t i = 0; i < n; ++i) z[i * n + i] = 1;
    RotationBatch rotations(z.data(), n, isa);
    const std::size_t found = QlEigenvalues(d.data(), e.data(), n, kEps, 30, &rotations);
    rotations.Apply();
    BackTransform(s, n, z.data(), isa);
    return found == n;
  });
}

template <bool kVectors>
void Peer(benchmark::State& state, int order) {
  const auto n = static_cast<std::size_t>(order);
  std::vector<double> w(n), z(n * n), work(3 * n);
  Time(state, order, [&](double* s) {
    int info = 0;
    dspev_(kVectors ? "V" : "N", "U", &order, s, w.data(), z.data(), &order, work.data(), &info);
    return info == 0;
  });
}

void Register(const std::string& name, void (*run)(benchmark::State&, int)) {
  for (const int n : {50, 200, 500}) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(), run, n)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.1)
        ->Repetitions(5);
  }
}

}  // namespace

int main(int argc, char** argv) {
  bool timesKernels = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument(argv[i]);
    if (argument == "--isa=avx2") isa = UsableIsa(Isa::kAvx2);
    if (argument == "--isa=baseline") isa = Isa::kBaseline;
    timesKernels = timesKernels || argument.starts_with("--isa=");
  }
  if (openblas_set_num_threads != nullptr) {
    openblas_set_num_threads(1);
    std::printf("peer's kernels: %s\n", openblas_get_corename());
  }
  for (const char* name : {"OPENBLAS_CORETYPE", "OPENBLAS_L2_SIZE"}) {
    if (std::getenv(name) != nullptr) std::printf("%s is set and may slow the peer\n", name);
  }
  Register("values/ours", timesKernels ? Kernels<false> : Ours<false>);
  Register("values/dspev", Peer<false>);
  Register("vectors/ours", timesKernels ? Kernels<true> : Ours<true>);
  Register("vectors/dspev", Peer<true>);
  return nqbench::RunWithRatios(argc, argv);
}
