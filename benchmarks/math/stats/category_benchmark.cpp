// Weighted cases of v variables and c factors through NQCategoryXProducts, beside NQMeansXProducts
// on the expanded cases, which are at hand: expanding them is not timed. Named n/v/c/levels.
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/stats/NQCategoryXProducts.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "support/ratio_reporter.h"

namespace {

using namespace NQMath_940;

struct Setting {
  int n, v, c, levels;
  NQRectMatrix cases{n, v + c + 1, true};
  NQRectMatrix expanded;

  // Without `isExpanded` for columns that would take gigabytes.
  Setting(int rows, int nVars, int nFactors, int nLevels, bool isExpanded)
      : n(rows), v(nVars), c(nFactors), levels(nLevels) {
    std::mt19937 random(1);
    const int p = v + c * levels;
    if (isExpanded) expanded = NQRectMatrix(n, p + 1, true);
    for (int i = 0; i < n; ++i) {
      double* x = cases.GetRowPtr(i);
      double* wide = isExpanded ? expanded.GetRowPtr(i) : nullptr;
      for (int j = 0; j < v; ++j) {
        *x = j + static_cast<double>(random()) / 4294967296.0;
        if (isExpanded) wide[j] = *x;
        ++x;
      }
      for (int a = 0; a < c; ++a) {
        const int code = static_cast<int>(random() % static_cast<unsigned>(levels));
        *x++ = code;
        if (isExpanded) wide[v + a * levels + code] = 1;
      }
      *x = 1 + static_cast<double>(random() % 4);
      if (isExpanded) wide[p] = *x;
    }
  }
};

template <class Record>
void Register(const char* name, const std::shared_ptr<Setting>& setting, const NQRectMatrix& cases,
              const Record& empty) {
  std::string label = name;
  for (const int size : {setting->n, setting->v, setting->c, setting->levels})
    label += "/" + std::to_string(size);
  benchmark::RegisterBenchmark(label.c_str(),
                               [setting, &cases, record = empty](benchmark::State& state) mutable {
                                 for (auto _ : state) {
                                   if (!record.Compute(cases, 0)) state.SkipWithError("refused");
                                 }
                               })
      ->Unit(benchmark::kMillisecond)
      ->Repetitions(3);
}

}  // namespace

int main(int argc, char** argv) {
  for (const auto& [n, v, c, levels] : {std::tuple{60000, 5, 2, 900},
                                        {1000000, 0, 5, 20},
                                        {500000, 5, 5, 20},
                                        {1000000, 10, 0, 0},
                                        {100000, 100, 0, 0}}) {
    const bool isExpanded = levels < 900;
    const auto setting = std::make_shared<Setting>(n, v, c, levels, isExpanded);
    const std::vector<int> factors(static_cast<std::size_t>(c), levels);
    Register("Categories/ours", setting, setting->cases,
             NQCategoryXProducts(v, factors, true, true, false));
    if (isExpanded)
      Register("Categories/expanded", setting, setting->expanded,
               NQMeansXProducts(v + c * levels, true, true, false));
  }
  return nqbench::RunWithRatios(argc, argv);
}
