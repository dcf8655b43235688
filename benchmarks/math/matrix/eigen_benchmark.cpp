// Eigenvalues, alone and with vectors, of NQEigenValues beside LAPACK's dspev on the same packed
// triangle, and of the generalised problem beside dspgv, one thread. Linked with OpenBLAS and, as
// another program, with the reference LAPACK.
#include <nqcommon/math/matrix/NQEigenValues.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <benchmark/benchmark.h>

#include <limits>
#include <vector>

#include "support/blas.h"
#include "support/ratio_reporter.h"

namespace {

constexpr double kEps = std::numeric_limits<double>::epsilon();

template <bool kVectors>
void Ours(benchmark::State& state, int order) {
  NQMath_940::NQSymMatrix h(order, true);
  h.SetData(nqbench::RandomPacked(order, 0));
  NQMath_940::NQEigenValues eigen(h, kEps, 30);
  std::vector<double> values;
  NQMath_940::NQRectMatrix vectors;
  nqbench::TimeInPlace(state, [&] {
    return (kVectors ? eigen.Compute(values, vectors) : eigen.Compute(values)) == order;
  });
}

template <bool kVectors>
void Peer(benchmark::State& state, int order) {
  const auto n = static_cast<std::size_t>(order);
  std::vector<double> w(n), z(n * n), work(3 * n);
  nqbench::TimeOnCopies(state, nqbench::RandomPacked(order, 0), [&](std::vector<double>& s) {
    int info = 0;
    dspev_(kVectors ? "V" : "N", "U", &order, s.data(), w.data(), z.data(), &order, work.data(),
           &info);
    return info == 0;
  });
}

void OursWithE(benchmark::State& state, int order) {
  NQMath_940::NQSymMatrix h(order, true), e(order, true);
  h.SetData(nqbench::RandomPacked(order, 0));
  e.SetData(nqbench::RandomPacked(order, order));
  std::vector<double> values;
  nqbench::TimeInPlace(state, [&] {
    NQMath_940::NQEigenValues eigen(h, e, kEps, 30);
    return eigen.IsValidEMatrix() && eigen.Compute(values) == order;
  });
}

void PeerWithE(benchmark::State& state, int order) {
  const auto n = static_cast<std::size_t>(order);
  const auto e = nqbench::RandomPacked(order, order);
  std::vector<double> w(n), z(n * n), work(3 * n), b;
  nqbench::TimeOnCopies(state, nqbench::RandomPacked(order, 0), [&](std::vector<double>& s) {
    const int type = 1;
    int info = 0;
    b = e;
    dspgv_(&type, "N", "U", &order, s.data(), b.data(), w.data(), z.data(), &order, work.data(),
           &info);
    return info == 0;
  });
}

}  // namespace

int main(int argc, char** argv) {
  for (const int n : {50, 200, 500}) {
    const auto of = [n](void (*run)(benchmark::State&, int)) {
      return [n, run](benchmark::State& state) { run(state, n); };
    };
    nqbench::Register("values/ours", n, of(Ours<false>));
    nqbench::RegisterManual("values/dspev", n, of(Peer<false>));
    nqbench::Register("vectors/ours", n, of(Ours<true>));
    nqbench::RegisterManual("vectors/dspev", n, of(Peer<true>));
    nqbench::Register("values, H x = l E x/ours", n, of(OursWithE));
    nqbench::RegisterManual("values, H x = l E x/dspgv", n, of(PeerWithE));
  }
  return nqbench::RunWithRatios(argc, argv);
}
