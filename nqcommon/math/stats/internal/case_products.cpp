#include <nqcommon/math/stats/internal/case_products.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include <nqcommon/math/kernels/packed_kernels.h>

namespace NQMath_940::internal {

bool TakeCases(const NQRectMatrix& matrix, int nRows, std::size_t nVars, std::size_t nWeights,
               Cases& cases) {
  if (!matrix.IsValidMatrix() || static_cast<std::size_t>(matrix.GetNCols()) != nVars + nWeights)
    return false;
  const int used = nRows < 1 ? matrix.GetNRows() : std::min(nRows, matrix.GetNRows());
  cases = {matrix.GetRowPtr(0), static_cast<std::size_t>(used), nVars, nWeights};
  return true;
}

// ---- Plain forms --------------------------------------------------------------------------------

std::vector<bool> AddSumsPlain(const Cases& cases, CaseSums to) {
  std::vector<bool> constant(cases.nVars, true);
  for (std::size_t row = 0; row < cases.rows; ++row) {
    const double* x = cases.Row(row);
    const double w = cases.Weight(row);
    to.weight += w;
    for (std::size_t i = 0; i < cases.nVars; ++i) {
      to.sums[i] += w * x[i];
      if (!(x[i] == cases.data[i])) constant[i] = false;
    }
  }
  return constant;
}

void AddProductsPlain(const double* x, double w, const std::vector<double>& center, double* s) {
  for (std::size_t i = 0; i < center.size(); ++i) {
    const double weighted = w * (x[i] - center[i]);
    for (std::size_t j = 0; j <= i; ++j) *s++ += weighted * (x[j] - center[j]);
  }
}

namespace {

// addRow(x, w) adds the products of one case.
template <class AddRow>
void AddCaseByCase(const Cases& cases, const std::vector<double>& center, CaseSums to,
                   AddRow addRow) {
  for (std::size_t row = 0; row < cases.rows; ++row) {
    const double* x = cases.Row(row);
    const double w = cases.Weight(row);
    to.weight += w;
    for (std::size_t i = 0; i < cases.nVars; ++i) to.sums[i] += w * (x[i] - center[i]);
    addRow(x, w);
  }
}

}  // namespace

void AddProductsPlain(const Cases& cases, const std::vector<double>& center, CaseSums to,
                      double* s) {
  AddCaseByCase(cases, center, to,
                [&](const double* x, double w) { AddProductsPlain(x, w, center, s); });
}

// ---- Fast forms ---------------------------------------------------------------------------------

namespace {

// Cases that are centred into panels at a time. The more, the less often each element of the
// triangle is fetched; the fewer, the faster the cache that holds the panels.
constexpr std::size_t kBlockRows = 64;

// Below these, panels of cases and vectors along a row cost more than they save.
constexpr std::size_t kFewRows = 4;
constexpr std::size_t kFewVars = 16;

// Calls f(rows, weights) for one block of cases after the other.
template <class F>
void ForEachBlock(const Cases& cases, F f) {
  double w[kBlockRows];
  for (std::size_t first = 0; first < cases.rows; first += kBlockRows) {
    const std::size_t count = std::min(kBlockRows, cases.rows - first);
    for (std::size_t k = 0; k < count; ++k) w[k] = cases.Weight(first + k);
    f(CaseRows{cases.Row(first), cases.Row(cases.rows), cases.Step(), count, cases.nVars}, w);
  }
}

void AddWeights(const CaseRows& rows, const double* w, CaseSums to) {
  for (std::size_t k = 0; k < rows.count; ++k) to.weight += w[k];
}

// False when there is no memory for the panels.
bool AddThroughPanels(const Cases& cases, const std::vector<double>& center, CaseSums to, double* s,
                      const PackedKernels& kernels) {
  const std::size_t depth = std::min(cases.rows, kBlockRows);
  const std::size_t size = WholeTiles(cases.nVars);
  const std::size_t panels = cases.nWeights == 0 ? 1 : 2;
  const auto work = AlignedDoubles::Try((2 + panels * depth) * size);
  if (!work) return false;
  std::fill_n(work->data(), 2 * size, 0.0);  // the padding of the two
  double* middle = work->data();
  double* sums = middle + size;
  double* centred = sums + size;
  double* weighted = centred + (panels - 1) * depth * size;
  std::copy(center.begin(), center.end(), middle);
  std::copy(to.sums.begin(), to.sums.end(), sums);
  ForEachBlock(cases, [&](const CaseRows& rows, const double* w) {
    AddWeights(rows, w, to);
    kernels.packCases(rows, w, middle, centred, weighted, depth, sums);
    kernels.update(
        UpdateOfTriangle(s, rows.n, PanelAt(weighted, depth), PanelAt(centred, depth), rows.count));
  });
  std::copy_n(sums, cases.nVars, to.sums.begin());
  return true;
}

void AddOneCase(const double* x, double w, const std::vector<double>& center, double* s,
                const PackedKernels& kernels) {
  if (center.size() < kFewVars) return AddProductsPlain(x, w, center, s);
  kernels.addCase(s, center.size(), x, center.data(), w);
}

}  // namespace

std::vector<bool> AddSums(const Cases& cases, CaseSums to, Isa isa) {
  const std::size_t size = WholeTiles(cases.nVars);
  AlignedDoubles work(2 * size);
  double* value = work.data();
  double* sums = value + size;
  std::vector<std::int64_t> same(size, -1);
  if (cases.rows > 0) std::copy_n(cases.data, cases.nVars, value);
  std::copy(to.sums.begin(), to.sums.end(), sums);
  const PackedKernels& kernels = KernelsFor(isa);
  ForEachBlock(cases, [&](const CaseRows& rows, const double* w) {
    AddWeights(rows, w, to);
    kernels.sumCases(rows, w, value, same.data(), sums);
  });
  std::copy_n(sums, cases.nVars, to.sums.begin());
  return {same.begin(), same.begin() + static_cast<std::ptrdiff_t>(cases.nVars)};
}

void AddProducts(const Cases& cases, const std::vector<double>& center, CaseSums to, double* s,
                 Isa isa) {
  const PackedKernels& kernels = KernelsFor(isa);
  if (cases.rows >= kFewRows && AddThroughPanels(cases, center, to, s, kernels)) return;
  AddCaseByCase(cases, center, to,
                [&](const double* x, double w) { AddOneCase(x, w, center, s, kernels); });
}

void AddProducts(const double* x, double w, const std::vector<double>& center, double* s, Isa isa) {
  AddOneCase(x, w, center, s, KernelsFor(isa));
}

}  // namespace NQMath_940::internal
