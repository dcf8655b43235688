#include <nqcommon/math/kernels/packed_sweep.h>

#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace NQMath_940::internal {
namespace {

// A deeper panel saves passes over the matrix, but each of its pivots passes over all its columns.
// The bounds are measured.
std::size_t PanelDepth(std::size_t n, std::size_t rows) {
  const std::size_t depth = n <= 96 ? 8 : n <= 400 ? 16 : n <= 1500 ? 24 : 32;
  return std::min(depth, rows);
}

void Include(SweepPanel& panel, std::size_t row) {
  panel.exempt[row] = 0;
  panel.sweptEnd = std::max(panel.sweptEnd, row + 1);
}

// TryMakePanel leaves `panel` empty when there is no memory for it.
void TryMakePanel(std::optional<SweepPanel>& panel, std::size_t depth, const double* s,
                  std::size_t n, const double* t, const std::vector<bool>& swept) {
  try {
    panel.emplace(n, depth);
  } catch (const std::bad_alloc&) {
    return;
  }
  for (std::size_t i = 0; i < n; ++i) {
    panel->diagonal[i] = s[DiagIndex(i)];
    panel->reference[i] = t[i];
    if (swept[i]) Include(*panel, i);
  }
}

// ForEachInColumns calls f(element, place) for all elements of the panel's rows and their places in
// its columns: row by row of the triangle, where neighbouring rows of the panel share cache lines.
template <class Packed, class F>
void ForEachInColumns(const SweepPanel& panel, Packed* s, F f) {
  Packed* start[SweepPanel::kMostPivots];
  for (std::size_t q = 0; q < panel.rows.size(); ++q) start[q] = s + RowStart(panel.rows[q].row);
  for (std::size_t i = 0; i < panel.n; ++i) {
    Packed* row = s + RowStart(i);
    double* place = panel.columns + i;
    for (std::size_t q = 0; q < panel.rows.size(); ++q, place += panel.ColumnStep()) {
      const std::size_t k = panel.rows[q].row;
      f(k <= i ? row[k] : start[q][i], *place);
    }
  }
}

// FillPanel takes the next rows of the list into the panel: as many as fit, up to the first repeat,
// which has to see the matrix as its predecessor left it.
void FillPanel(SweepPanel& panel, const double* s, std::span<const int> rows) {
  panel.rows.clear();
  panel.pivots = 0;
  for (const int row : rows.first(std::min(panel.depth, rows.size()))) {
    const auto k = static_cast<std::size_t>(row);
    const auto isK = [k](const SweepPanel::Row& r) { return r.row == k; };
    if (std::any_of(panel.rows.begin(), panel.rows.end(), isK)) break;
    panel.rows.push_back({k, 0});
  }
  ForEachInColumns(panel, s, [](double element, double& place) { place = element; });
}

// FlushPanel brings the rest of the matrix up to date with the panel.
void FlushPanel(SweepPanel& panel, double* s, const PackedKernels& kernels) {
  if (panel.pivots == 0) return;
  for (std::size_t q = 0; q < panel.rows.size(); ++q) kernels.catchUp(panel, q);
  kernels.update(UpdateOfTriangle(s, panel.n, PanelAt(panel.v, panel.depth),
                                  PanelAt(panel.u, panel.depth), panel.pivots));
  // The update ran over the panel's rows too, where a pivot scales its own row instead.
  ForEachInColumns(panel, s, [](double& element, double place) { element = place; });
}

}  // namespace

bool RefusesSweep(const double* s, std::size_t n, std::size_t k, double eps, const double* t,
                  const std::vector<bool>& swept) {
  if (swept[k]) return false;
  const double p = s[DiagIndex(k)];
  if (t[k] * eps >= p) return true;
  for (std::size_t j = 0; j < n; ++j) {
    if (!swept[j]) continue;
    const double x = s[SymIndex(j, k)];
    if (!((s[DiagIndex(j)] - x / p * x) * eps * t[j] > -1.0)) return true;
  }
  return false;
}

bool SweepRowPlain(double* s, std::size_t n, std::size_t k, double eps, const double* t,
                   std::vector<bool>& swept) {
  if (RefusesSweep(s, n, k, eps, t, swept)) return false;
  const double d = -1.0 / s[DiagIndex(k)];
  s[DiagIndex(k)] = d;
  for (std::size_t i = 0; i < n; ++i) {
    if (i == k) continue;
    double& element = s[SymIndex(i, k)];
    const double v = d < 0 ? -element : element;
    element *= std::fabs(d);
    for (std::size_t j = 0; j <= i; ++j) {
      if (j != k) s[LowerIndex(i, j)] += s[SymIndex(j, k)] * v;
    }
  }
  swept[k] = !swept[k];
  return true;
}

bool SweepRow(double* s, std::size_t n, std::size_t k, double eps, const double* t,
              std::vector<bool>& swept, Isa isa) {
  if (RefusesSweep(s, n, k, eps, t, swept)) return false;
  KernelsFor(isa).sweepRow(s, n, k);
  swept[k] = !swept[k];
  return true;
}

void SweepRows(double* s, std::size_t n, std::span<const int> rows, double eps, const double* t,
               std::vector<bool>& swept, std::vector<SweepStep>* steps, Isa isa) {
  if (steps != nullptr) steps->assign(rows.size(), {});
  const auto report = [steps](std::size_t entry, double pivot, bool done) {
    if (steps != nullptr) (*steps)[entry] = {pivot, done};
  };
  std::optional<SweepPanel> panel;
  TryMakePanel(panel, PanelDepth(n, rows.size()), s, n, t, swept);
  if (!panel) {
    for (std::size_t entry = 0; entry < rows.size(); ++entry) {
      const auto k = static_cast<std::size_t>(rows[entry]);
      const double pivot = s[DiagIndex(k)];
      report(entry, pivot, SweepRow(s, n, k, eps, t, swept, isa));
    }
    return;
  }
  const PackedKernels& kernels = KernelsFor(isa);
  for (std::size_t entry = 0; entry < rows.size();) {
    FillPanel(*panel, s, rows.subspan(entry));
    for (std::size_t q = 0; q < panel->rows.size(); ++q, ++entry) {
      const std::size_t k = panel->rows[q].row;
      kernels.catchUp(*panel, q);
      const double pivot = panel->diagonal[k];
      const bool done =
          swept[k] || (!(t[k] * eps >= pivot) && kernels.keepsSweptRows(*panel, q, eps));
      report(entry, pivot, done);
      if (!done) continue;
      kernels.sweepInPanel(*panel, q);
      swept[k] = !swept[k];
      panel->exempt[k] = -1;
      if (swept[k]) Include(*panel, k);
    }
    FlushPanel(*panel, s, kernels);
  }
}

}  // namespace NQMath_940::internal
