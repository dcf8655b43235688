#include <nqcommon/math/stats/NQCategoryXProducts.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/stats/NQMeansXProdData.h>
#include <nqcommon/math/stats/internal/case_products.h>

namespace NQMath_940 {

using internal::Cases;
using internal::DiagIndex;
using internal::RowStart;
using NQCommon_940::GuardMemory;

// ---- Life cycle ---------------------------------------------------------------------------------

NQCategoryXProducts::NQCategoryXProducts(int nVars, const std::vector<int>& nLevels, bool intercept,
                                         bool freqWeight, bool regWeight) {
  fState.intercept = intercept;
  fState.nWeights = std::size_t{freqWeight} + std::size_t{regWeight};
  const auto isFactor = [](int levels) { return levels >= 1; };
  const long long nColumns = std::accumulate(nLevels.begin(), nLevels.end(), 0LL) + nVars;
  if (nVars < 0 || !std::all_of(nLevels.begin(), nLevels.end(), isFactor)) return;
  GuardMemory([&] {
    State state = fState;
    const auto v = static_cast<std::size_t>(nVars);
    state.levels = nLevels;
    state.centre.resize(v);
    state.deviations.resize(v);
    state.shift.resize(v);
    if (nColumns == static_cast<int>(nColumns) &&
        state.table.SetNRows(static_cast<int>(nColumns), true))
      fState = std::move(state);
  });
}

NQCategoryXProducts::NQCategoryXProducts(const NQCategoryXProducts& other) { *this = other; }

NQCategoryXProducts::NQCategoryXProducts(NQCategoryXProducts&& other) noexcept {
  *this = std::move(other);
}

NQCategoryXProducts& NQCategoryXProducts::operator=(const NQCategoryXProducts& other) {
  if (this == &other) return *this;
  const bool isCopied = GuardMemory(false, [&] {
    State state = other.fState;
    if (!state.table.IsValidMatrix()) return false;
    fState = std::move(state);
    return true;
  });
  if (!isCopied) fState = State();
  return *this;
}

NQCategoryXProducts& NQCategoryXProducts::operator=(NQCategoryXProducts&& other) noexcept {
  std::swap(fState, other.fState);
  return *this;
}

void NQCategoryXProducts::State::Clear() {
  nCases = centredAt = 0;
  std::fill(centre.begin(), centre.end(), 0.0);
  std::fill(deviations.begin(), deviations.end(), 0.0);
  table.Clear();
}

void NQCategoryXProducts::Clear() { fState.Clear(); }

// ---- The centre ---------------------------------------------------------------------------------

// Makes the sums those about the centre less `shift`: with e = shift, x - (c - e) is (x - c) + e.
void NQCategoryXProducts::State::MoveCentre() {
  const std::size_t v = centre.size();
  const auto p = static_cast<std::size_t>(table.GetNRows());
  const std::vector<double>& e = shift;
  double* row = table.AsVector().data();
  for (std::size_t i = 0; i < v; ++i) {
    for (std::size_t j = 0; j <= i; ++j)
      *row++ += e[i] * (deviations[j] + nCases * e[j]) + deviations[i] * e[j];
  }
  for (std::size_t k = v; k < p; row += ++k) {
    for (std::size_t j = 0; j < v; ++j) row[j] += row[k] * e[j];
  }
  for (std::size_t i = 0; i < v; ++i) {
    deviations[i] += nCases * e[i];
    centre[i] -= e[i];
  }
}

// FollowMean comes before cases of total weight w are added, of which `first` is one. It moves the
// centre to the mean, theirs included, when the weight will have doubled since it was last moved.
// addDeviations(s) adds to s[i] the sum of w (x_i - centre_i) of the cases.
//
// Let m be the mean of all cases, and m1 that of the first W1 >= W / 2 of their weight, the centre.
// Then W (m - m1)^2 is at most the sum of squares about m: the sum about m1 is at most twice that.
template <class AddDeviations>
void NQCategoryXProducts::FollowMean(double w, const double* first, AddDeviations addDeviations) {
  State& s = fState;
  const double nCases = s.nCases + w;
  if (!s.intercept || !(nCases > 2 * s.centredAt)) return;
  if (s.centredAt == 0) {
    for (std::size_t i = 0; i < s.shift.size(); ++i) s.shift[i] = s.centre[i] - first[i];
    s.MoveCentre();
  }
  s.shift = s.deviations;
  addDeviations(s.shift.data());
  // The sums are moved by the difference of the two centres as they are rounded.
  for (std::size_t i = 0; i < s.shift.size(); ++i)
    s.shift[i] = s.centre[i] - (s.centre[i] + s.shift[i] / nCases);
  s.MoveCentre();
  s.centredAt = nCases;
}

// ---- Cases --------------------------------------------------------------------------------------

bool NQCategoryXProducts::AddRows(const NQRectMatrix& cases, int nRows, bool isAnew) {
  const std::size_t v = fState.centre.size();
  const std::size_t c = fState.levels.size();
  Cases rows;  // the codes count as variables
  if (!internal::TakeCases(cases, nRows, v + c, fState.nWeights, rows)) return false;
  double total = 0;
  for (std::size_t k = 0; k < rows.rows; ++k) {
    const double* row = rows.Row(k);
    total += rows.Weight(k);
    for (std::size_t a = 0; a < c; ++a) {
      if (!(row[v + a] >= 0 && row[v + a] < fState.levels[a])) return false;
    }
  }
  if (!(total >= 0)) return false;

  // A chunk of cases fits a cache, because its values are read two or three times.
  const std::size_t depth = std::clamp<std::size_t>(32768 / (v + 1), 64, 4096);
  return GuardMemory(false, [&] {
    std::vector<double> gathered(c == 0 ? 0 : depth * (v + 1));
    std::vector<int> codes(depth * c);
    if (isAnew) Clear();
    for (std::size_t first = 0; first < rows.rows && total > 0; first += depth) {
      Cases chunk{rows.Row(first), std::min(depth, rows.rows - first), v, rows.nWeights};
      if (c > 0) {
        double* to = gathered.data();
        int* code = codes.data();
        for (std::size_t k = first; k < first + chunk.rows; ++k) {
          const double* row = rows.Row(k);
          to = std::copy(row, row + v, to);
          *to++ = rows.Weight(k);
          for (std::size_t a = 0; a < c; ++a) *code++ = static_cast<int>(row[v + a]);
        }
        chunk = {gathered.data(), chunk.rows, v, 1};
      }
      double w = 0;
      for (std::size_t k = 0; k < chunk.rows; ++k) w += chunk.Weight(k);
      FollowMean(w, chunk.data, [&](double* sums) {
        for (std::size_t k = 0; k < chunk.rows; ++k) {
          const double wk = chunk.Weight(k);
          for (std::size_t i = 0; i < v; ++i) sums[i] += wk * (chunk.Row(k)[i] - fState.centre[i]);
        }
      });
      internal::AddProducts(chunk, fState.centre, {fState.nCases, fState.deviations},
                            fState.table.AsVector().data());
      for (std::size_t k = 0; k < chunk.rows && c > 0; ++k)
        AddCategories(chunk.Row(k), codes.data() + k * c, chunk.Weight(k));
    }
    return true;
  });
}

bool NQCategoryXProducts::Compute(const NQRectMatrix& cases, int nRows) {
  return AddRows(cases, nRows, true);
}

bool NQCategoryXProducts::Update(const NQRectMatrix& cases, int nRows) {
  return AddRows(cases, nRows, false);
}

bool NQCategoryXProducts::AddCase(const std::vector<double>& x, const std::vector<int>& codes,
                                  double w) {
  State& s = fState;
  const std::size_t v = s.centre.size();
  if (x.size() < v || codes.size() < s.levels.size() || !(w >= 0)) return false;
  for (std::size_t a = 0; a < s.levels.size(); ++a) {
    if (codes[a] < 0 || codes[a] >= s.levels[a]) return false;
  }
  const auto addDeviations = [&](double* sums) {
    for (std::size_t i = 0; i < v; ++i) sums[i] += w * (x[i] - s.centre[i]);
  };
  FollowMean(w, x.data(), addDeviations);
  s.nCases += w;
  addDeviations(s.deviations.data());
  internal::AddProducts(x.data(), w, s.centre, s.table.AsVector().data());
  AddCategories(x.data(), codes.data(), w);
  return true;
}

// Adds a case to the rows of the table that belong to its indicators.
void NQCategoryXProducts::AddCategories(const double* x, const int* codes, double w) {
  const std::size_t v = fState.centre.size();
  const int* levels = fState.levels.data();
  const double* centre = fState.centre.data();
  double* table = fState.table.AsVector().data();
  std::size_t begin = v;  // the first indicator of factor a
  for (std::size_t a = 0; a < fState.levels.size(); ++a) {
    double* row = table + RowStart(begin + static_cast<std::size_t>(codes[a]));
    for (std::size_t j = 0; j < v; ++j) row[j] += w * (x[j] - centre[j]);
    double* counts = row + v;
    for (std::size_t b = 0; b <= a; counts += levels[b++]) counts[codes[b]] += w;
    begin += static_cast<std::size_t>(levels[a]);
  }
}

// ---- Merging and results ------------------------------------------------------------------------

bool NQCategoryXProducts::Merge(const NQCategoryXProducts& other) {
  const bool adopts = GetNColumns() == 0;
  if (!adopts && (fState.levels != other.fState.levels || GetNVars() != other.GetNVars() ||
                  fState.intercept != other.fState.intercept))
    return false;
  NQCategoryXProducts copy(other);
  if (copy.GetNColumns() != other.GetNColumns()) return false;
  State& ours = fState;
  State& theirs = copy.fState;
  if (adopts || ours.nCases == 0) {
    if (!adopts) theirs.nWeights = ours.nWeights;
    std::swap(ours, theirs);
    return true;
  }
  if (theirs.nCases == 0) return true;
  const double nCases = ours.nCases + theirs.nCases;
  if (ours.intercept) {
    for (std::size_t i = 0; i < ours.centre.size(); ++i) {
      const double apart = theirs.centre[i] - ours.centre[i];
      const double sum = ours.deviations[i] + theirs.deviations[i] + theirs.nCases * apart;
      const double centre = ours.centre[i] + sum / nCases;
      ours.shift[i] = ours.centre[i] - centre;
      theirs.shift[i] = theirs.centre[i] - centre;
    }
    ours.MoveCentre();
    theirs.MoveCentre();
    ours.centredAt = nCases;
  }
  ours.nCases = nCases;
  const auto add = [](std::vector<double>& to, const std::vector<double>& from) {
    std::transform(to.begin(), to.end(), from.begin(), to.begin(), std::plus<>());
  };
  add(ours.deviations, theirs.deviations);
  add(ours.table.AsVector(), theirs.table.AsVectorConst());
  return true;
}

bool NQCategoryXProducts::GetRecord(NQMeansXProdData& record) const {
  return GuardMemory(false, [&] {
    const State& s = fState;
    const std::size_t v = s.centre.size();
    const auto p = static_cast<std::size_t>(GetNColumns());
    const double w = s.nCases;
    std::vector<double> products = s.table.AsVectorConst();
    std::vector<double> means(p), counts(p);
    for (std::size_t k = v; k < p; ++k) counts[k] = products[DiagIndex(k)];
    for (std::size_t i = 0; i < p && w > 0; ++i)
      means[i] = i < v ? s.centre[i] + s.deviations[i] / w : counts[i] / w;
    for (std::size_t i = 0; i < p && w > 0 && s.intercept; ++i) {
      double* row = products.data() + RowStart(i);
      const double sum = i < v ? s.deviations[i] : counts[i];
      for (std::size_t j = 0; j < v && j <= i; ++j) row[j] -= sum * (s.deviations[j] / w);
      // Counts that are whole numbers are multiplied without rounding.
      for (std::size_t j = v; j < i; ++j) row[j] = (row[j] * w - sum * counts[j]) / w;
      if (i >= v) row[i] = sum * (w - sum) / w;
    }
    return record.SetData(s.intercept, w, means, products);
  });
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQCategoryXProducts::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQCategoryXProducts", [&] {
    DisplayI("Number of variables", GetNVars());
    DisplayIV("Numbers of levels", fState.levels);
    DisplayB("Intercept indicator", fState.intercept);
    DisplayD("Weighted number of cases", fState.nCases);
    DisplayDV("Centre", fState.centre, true);
    DisplayDV("Weighted sums of deviations", fState.deviations, true);
    DisplayText(1, "Weighted sums of products and counts:");
    fState.table.Display();
  });
}

}  // namespace NQMath_940
