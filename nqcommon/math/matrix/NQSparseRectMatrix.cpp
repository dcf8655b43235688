#include <nqcommon/math/matrix/NQSparseRectMatrix.h>

#include <algorithm>
#include <cassert>
#include <limits>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::GuardMemory;

// ---- Life cycle and shape ----------------------------------------------------------------------

NQSparseRectMatrix::NQSparseRectMatrix(int capacity, int columns, int k) {
  fNCols = columns;
  fNEntries = k;
  if (k < 1 || k > columns) {
    Fail();
  } else {
    Reserve(std::max(capacity, 0));
  }
}

NQSparseRectMatrix& NQSparseRectMatrix::operator=(const NQSparseRectMatrix& other) noexcept {
  if (this != &other && !GuardMemory([&] { SparseFields::operator=(other); })) Fail();
  return *this;
}

NQSparseRectMatrix& NQSparseRectMatrix::operator=(NQSparseRectMatrix&& other) noexcept {
  if (this == &other) return *this;
  SparseFields without;
  without.fNCols = other.fNCols;
  without.fNEntries = other.fNEntries;
  SparseFields::operator=(std::exchange<SparseFields>(other, std::move(without)));
  return *this;
}

// Fail makes the matrix what a failed allocation leaves, and returns false.
bool NQSparseRectMatrix::Fail() {
  SparseFields::operator=({});
  fNRows = fNCols = -1;
  return false;
}

// Reserve makes new places empty slots, and room for the scratch row.
bool NQSparseRectMatrix::Reserve(int capacity) {
  if (!GuardMemory([&] {
        fvElems.resize(At(capacity) * Entries());
        fvIndices.resize(At(capacity) * Entries(), -1);
        fvRowElems.resize(Entries());
        fvRowIndices.resize(Entries());
      }))
    return Fail();
  fCapacity = capacity;
  return true;
}

// The entries of columns that go away are the last of their rows; the rows that had them are stored
// anew without them.
bool NQSparseRectMatrix::Resize(int m, int n) {
  if (fNRows < 0 || n < fNEntries) return false;
  m = std::max(m, 0);
  if (m > fCapacity && !Reserve(m)) return false;
  for (; fNRows < m; ++fNRows) Store(fNRows, {nullptr, nullptr, 0}, 0);
  fNRows = m;
  for (int i = 0; i < fNRows && n < fNCols; ++i) {
    SparseRun run = StoredIn(*this, i);
    run.count = static_cast<std::size_t>(std::lower_bound(run.indices, run.indices + run.count, n) -
                                         run.indices);
    Store(i, run, 0);
  }
  fNCols = n;
  return true;
}

// ---- Rows in -----------------------------------------------------------------------------------

// The entries may be places of this matrix, so they are assembled before anything is written.
void NQSparseRectMatrix::Assemble(const SparseRun& run, int start) {
  const std::size_t empty = Entries() - run.count;
  std::fill_n(fvRowIndices.begin(), empty, -1);
  std::fill_n(fvRowElems.begin(), empty, 0.0);
  for (std::size_t k = 0; k < run.count; ++k) {
    fvRowIndices[empty + k] = run.indices[k] - start;
    fvRowElems[empty + k] = run.values[k];
  }
}

void NQSparseRectMatrix::Store(int i, const SparseRun& run, int start) {
  Assemble(run, start);
  PutAssembled(i);
}

void NQSparseRectMatrix::PutAssembled(int i) {
  const auto at = static_cast<std::ptrdiff_t>(At(i) * Entries());
  std::copy(fvRowIndices.begin(), fvRowIndices.end(), fvIndices.begin() + at);
  std::copy(fvRowElems.begin(), fvRowElems.end(), fvElems.begin() + at);
}

int NQSparseRectMatrix::AppendRow(const SparseRun& run, int start) {
  constexpr int kMost = std::numeric_limits<int>::max(), kFirst = 10, kSmall = 7;
  if (fNRows < 0 || fNRows == kMost) return -1;
  if (fvRowElems.empty() && !Reserve(fCapacity)) return -1;  // the source of a move has no scratch
  Assemble(run, start);
  if (fNRows == fCapacity) {
    const int half = std::min(fCapacity / 2, kMost - fCapacity);
    if (!Reserve(fCapacity < kSmall ? kFirst : fCapacity + half)) return -1;
  }
  PutAssembled(fNRows);
  return ++fNRows;
}

int NQSparseRectMatrix::AddRow() { return AppendRow({nullptr, nullptr, 0}, 0); }

int NQSparseRectMatrix::AddRow(const NQSparseVector& v) {
  if (fNRows < 0 || v.GetNElements() != fNEntries || !FitsIn(v, At(fNCols))) return -1;
  return AppendRow(RunOf(v), 0);
}

int NQSparseRectMatrix::AddRow(const NQSparseVector& v, int start, int first) {
  if (fNRows < 0 || !v.IsValid() || start < 0 || start > v.GetIndices().back()) return -1;
  const std::vector<int>& indices = v.GetIndices();
  if (first < 0)
    first =
        static_cast<int>(std::lower_bound(indices.begin(), indices.end(), start) - indices.begin());
  if (!IsRun(v.GetNElements(), first, fNEntries) || indices[At(first)] < start ||
      indices[At(first) + Entries() - 1] - start >= fNCols)
    return -1;
  return AppendRow({indices.data() + first, v.GetValues().data() + first, Entries()}, start);
}

bool NQSparseRectMatrix::SetRow(int i, const NQSparseVector& v) {
  if (!HasRow(i) || v.GetNElements() > fNEntries || !FitsIn(v, At(fNCols))) return false;
  Store(i, RunOf(v), 0);
  return true;
}

// ---- Elements ----------------------------------------------------------------------------------

int NQSparseRectMatrix::FindIndex(int i, int j) const {
  if (!HasRow(i) || j < 0) return -1;
  const int* first = fvIndices.data() + At(i) * Entries();
  const int* end = first + fNEntries;
  const int* found = std::lower_bound(first, end, j);
  return found != end && *found == j ? static_cast<int>(found - first) : -1;
}

double NQSparseRectMatrix::GetElem(int i, int j) const {
  assert(HasRow(i) && HasCol(j));
  const int k = FindIndex(i, j);
  return k >= 0 ? fvElems[At(i) * Entries() + At(k)] : 0;
}

bool NQSparseRectMatrix::SetElem(int i, int j, double x) {
  assert(HasRow(i) && HasCol(j));
  const int k = FindIndex(i, j);
  if (k >= 0) fvElems[At(i) * Entries() + At(k)] = x;
  return k >= 0 || x == 0;
}

bool NQSparseRectMatrix::GetRow(int i, const int*& indices, const double*& values) const {
  if (!HasRow(i)) return false;
  indices = fvIndices.data() + At(i) * Entries();
  values = fvElems.data() + At(i) * Entries();
  return true;
}

bool NQSparseRectMatrix::GetRow(int i, std::vector<int>& indices,
                                std::vector<double>& values) const {
  const int* firstIndex = nullptr;
  const double* firstValue = nullptr;
  return GetRow(i, firstIndex, firstValue) && GuardMemory([&] {
           std::vector<int> copy(firstIndex, firstIndex + fNEntries);
           values.assign(firstValue, firstValue + fNEntries);
           indices = std::move(copy);
         });
}

bool NQSparseRectMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i) || !GuardMemory([&] { out.assign(At(fNCols), 0.0); })) return false;
  StoredIn(*this, i).ForEach([&](std::size_t j, double x) { out[j] = x; });
  return true;
}

void NQSparseRectMatrix::Clear() { std::fill(fvElems.begin(), fvElems.end(), 0.0); }

bool NQSparseRectMatrix::ZeroOutRowPart(int i, int first, int count) {
  if (!HasRow(i) || !IsRun(fNCols, first, count)) return false;
  for (std::size_t at = At(i) * Entries(), end = at + Entries(); at < end; ++at) {
    if (fvIndices[at] >= first && fvIndices[at] - first < count) fvElems[at] = 0;
  }
  return true;
}

bool NQSparseRectMatrix::IsRowZero(int i) const {
  if (!HasRow(i)) return false;
  const double* first = fvElems.data() + At(i) * Entries();
  return std::all_of(first, first + fNEntries, [](double x) { return x == 0; });
}

// ---- Diagnostic display ------------------------------------------------------------------------

void NQSparseRectMatrix::Display() const {
  using NQDisplay_940::DisplayI;
  using NQDisplay_940::DisplayText;
  GuardMemory([&] {
    DisplayText(1, "NQSparseRectMatrix display start");
    DisplayI("The number of rows", fNRows);
    DisplayI("The number of columns", fNCols);
    DisplayI("The number of entries per row", fNEntries);
    const int* indices = nullptr;
    const double* values = nullptr;
    for (int i = 0; GetRow(i, indices, values); ++i) {
      NQDisplay_940::DisplayIV("Column indices", {indices, indices + fNEntries});
      NQDisplay_940::DisplayDAS(values, fNEntries);
    }
    DisplayText(1, "NQSparseRectMatrix display end");
  });
}

}  // namespace NQMath_940
