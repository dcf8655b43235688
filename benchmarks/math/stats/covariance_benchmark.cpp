// Means and cross-products of n weighted cases of p variables through NQMeansXProducts, beside
// OpenBLAS, Eigen, Armadillo and the plain loop on the same cases, one thread. The order in the
// table is p; n p is about the same for all.
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>
#include <nqcommon/math/stats/internal/case_products.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "math/stats/covariance_peers.h"
#include "support/ratio_reporter.h"

namespace {

using NQMath_940::NQMeansXProducts;
using NQMath_940::NQRectMatrix;
using NQMath_940::internal::Cases;
using NQMath_940::internal::CaseSums;

struct Setting {
  int n;
  int p;
  NQRectMatrix cases{n, p + 1, true};
  std::vector<double> want;  // lower triangle, packed

  Setting(int rows, int columns) : n(rows), p(columns) {
    std::mt19937 random(1);
    double* x = cases.GetRowPtr(0);
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < p; ++j) *x++ = j + static_cast<double>(random()) / 4294967296.0;
      *x++ = 1 + static_cast<double>(random() % 4);
    }
    NQMeansXProducts record(p, true, true, false);
    record.Compute(cases, 0);
    want = record.GetXProds().AsVectorConst();
  }

  nqbench::WeightedCases Peer() const {
    return {cases.GetRowPtr(0), static_cast<std::size_t>(n), static_cast<std::size_t>(p)};
  }

  // The largest difference, relative to the diagonal, is far below what any mistake makes.
  bool Agrees(const std::vector<double>& packed) const {
    for (std::size_t k = 0; k < want.size(); ++k) {
      if (!(std::fabs(packed[k] - want[k]) <= 1e-6 * std::fabs(want[0]))) return false;
    }
    return packed.size() == want.size();
  }
};

std::vector<double> LowerOf(const nqbench::Square& square, std::size_t p) {
  std::vector<double> packed;
  for (std::size_t i = 0; i < p; ++i) {
    for (std::size_t j = 0; j <= i; ++j) packed.push_back(square[j * p + i]);
  }
  return packed;
}

// The packed products.
using Run = std::function<std::vector<double>(const Setting&)>;

template <nqbench::Square (*peer)(const nqbench::WeightedCases&)>
std::vector<double> RunPeer(const Setting& s) {
  return LowerOf(peer(s.Peer()), static_cast<std::size_t>(s.p));
}

std::vector<double> RunCompute(const Setting& s) {
  NQMeansXProducts record(s.p, true, true, false);
  record.Compute(s.cases, 0);
  return record.GetXProds().AsVectorConst();
}

std::vector<double> RunOnePass(const Setting& s) {
  NQMeansXProducts record(s.p, true, true, false);
  record.StartUpdateOnePass();
  record.UpdateOnePass(s.cases, 0);
  record.FinishUpdateOnePass();
  return record.GetXProds().AsVectorConst();
}

// What Compute does, in loops of one form.
template <class AddSums, class AddProducts>
std::vector<double> RunLoops(const Setting& s, AddSums addSums, AddProducts addProducts) {
  const auto p = static_cast<std::size_t>(s.p);
  const Cases cases{s.cases.GetRowPtr(0), static_cast<std::size_t>(s.n), p, 1};
  double weight = 0;
  std::vector<double> sums(p), deviations(p), products(p * (p + 1) / 2);
  addSums(cases, CaseSums{weight, sums});
  for (double& sum : sums) sum /= weight;
  addProducts(cases, sums, CaseSums{weight, deviations}, products.data());
  return products;
}

std::vector<double> RunPlain(const Setting& s) {
  return RunLoops(
      s, [](auto&&... a) { NQMath_940::internal::AddSumsPlain(a...); },
      [](auto&&... a) { NQMath_940::internal::AddProductsPlain(a...); });
}

void Register(const char* name, const std::shared_ptr<Setting>& setting, const Run& run) {
  nqbench::Register(name, setting->p, [setting, run](benchmark::State& state) {
    std::vector<double> packed;
    nqbench::TimeInPlace(state, [&] { return packed = run(*setting), true; });
    if (!setting->Agrees(packed)) state.SkipWithError("differs");
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::pair<int, int> sizes[] = {{1000000, 10}, {200000, 50}, {100000, 100}, {20000, 500}};
  for (const auto& [n, p] : sizes) {
    const auto setting = std::make_shared<Setting>(n, p);
    Register("Compute/ours", setting, RunCompute);
    Register("Compute/dsyrk", setting, RunPeer<nqbench::WithBlas>);
    Register("Compute/Eigen", setting, RunPeer<nqbench::WithEigen>);
    Register("Compute/Armadillo", setting, RunPeer<nqbench::WithArmadillo>);
    Register("Compute/plain loop", setting, RunPlain);
    Register("OnePass/ours", setting, RunOnePass);
    Register("OnePass/Compute", setting, RunCompute);
  }
  return nqbench::RunWithRatios(argc, argv);
}
