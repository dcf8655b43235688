#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

// ---- Life cycle --------------------------------------------------------------------------------

NQSymBlockDiagMatrix::NQSymBlockDiagMatrix(const std::vector<int>& sizes,
                                           const NQBitSet& isDiagonal) {
  if (!SetStructure(sizes, isDiagonal)) Fail();
}

NQSymBlockDiagMatrix::NQSymBlockDiagMatrix(const std::vector<const INQSymMatrix*>& blocks) {
  for (const INQSymMatrix* m : blocks) {
    if (m && fNRows >= 0) AddBlock(*m);
  }
}

NQSymBlockDiagMatrix::NQSymBlockDiagMatrix(const NQSymBlockDiagMatrix& other) noexcept
    : INQSymMatrix() {
  *this = other;
}

// The blocks' copies report a failure by their order, the arrays' throw.
NQSymBlockDiagMatrix& NQSymBlockDiagMatrix::operator=(const NQSymBlockDiagMatrix& other) noexcept {
  if (this == &other) return *this;
  const bool copied = GuardMemory([&] {
    fvBlocks = other.fvBlocks;
    fvBlockOfRow = other.fvBlockOfRow;
    fNRows = other.fNRows;
  });
  bool valid = copied;
  ForEachBlock([&](const INQSymMatrix& block, int) { valid = valid && block.IsValidMatrix(); });
  if (!valid) Fail();
  return *this;
}

NQSymBlockDiagMatrix::NQSymBlockDiagMatrix(NQSymBlockDiagMatrix&& other) noexcept : INQSymMatrix() {
  *this = std::move(other);
}

NQSymBlockDiagMatrix& NQSymBlockDiagMatrix::operator=(NQSymBlockDiagMatrix&& other) noexcept {
  if (this == &other) return *this;
  fNRows = std::exchange(other.fNRows, 0);
  fvBlocks = std::exchange(other.fvBlocks, {});
  fvBlockOfRow = std::exchange(other.fvBlockOfRow, {});
  return *this;
}

NQSymBlockDiagMatrix::~NQSymBlockDiagMatrix() = default;

void NQSymBlockDiagMatrix::ClearAll() { *this = NQSymBlockDiagMatrix(); }

// Fail leaves what a failed allocation leaves.
void NQSymBlockDiagMatrix::Fail() {
  ClearAll();
  fNRows = -1;
}

// ---- Structure ---------------------------------------------------------------------------------

bool NQSymBlockDiagMatrix::SetStructure(const std::vector<int>& sizes, const NQBitSet& isDiagonal) {
  const auto nb = static_cast<std::size_t>(isDiagonal.Size());
  if (sizes.size() < nb) return false;
  const auto end = sizes.begin() + isDiagonal.Size();
  if (std::any_of(sizes.begin(), end, [](int size) { return size < 0; })) return false;
  if (!internal::FitsInt(std::accumulate(sizes.begin(), end, 0LL))) return false;
  NQSymBlockDiagMatrix blocks;
  for (std::size_t b = 0; b < nb && blocks.IsValidMatrix(); ++b) {
    if (isDiagonal.IsIn(static_cast<int>(b))) {
      blocks.Append(NQDiagMatrix(sizes[b], true));
    } else {
      blocks.Append(NQSymMatrix(sizes[b], true));
    }
  }
  *this = std::move(blocks);
  return fNRows >= 0;
}

void NQSymBlockDiagMatrix::SetBlockIndicesForRow() {
  fvBlockOfRow.resize(Order(), GetNBlocks() - 1);
}

// Append returns the new nb; -1, nothing changed, where the order would be more than an int counts;
// -1, with order -1 then, where there is no memory.
template <class Matrix>
int NQSymBlockDiagMatrix::Append(Matrix block) {
  const int size = block.GetNRows();
  if (fNRows >= 0 && size >= 0) {
    if (!internal::FitsInt(static_cast<long long>(fNRows) + size)) return -1;
    const bool appended = GuardMemory([&] {
      fvBlocks.push_back({std::move(block), fNRows});
      fNRows += size;
      SetBlockIndicesForRow();
    });
    if (appended) return GetNBlocks();
  }
  Fail();
  return -1;
}

template int NQSymBlockDiagMatrix::Append(NQSymMatrix block);
template int NQSymBlockDiagMatrix::Append(NQDiagMatrix block);

int NQSymBlockDiagMatrix::AddBlock(const std::vector<double>& diagonal) {
  return diagonal.empty() ? -1 : Append(NQDiagMatrix(diagonal));
}

int NQSymBlockDiagMatrix::AddBlock(const INQSymMatrix& m) {
  if (m.GetNRows() < 1) return -1;
  if (const NQSymMatrix* dense = internal::AsDenseSym(m)) return Append(NQSymMatrix(*dense));
  if (const NQDiagMatrix* diagonal = internal::AsDiagonal(m))
    return Append(NQDiagMatrix(*diagonal));
  NQSymBlockDiagMatrix copy(*internal::AsBlockDiag(m));
  if (!internal::FitsInt(static_cast<long long>(fNRows) + m.GetNRows())) return -1;
  if (!copy.IsValidMatrix()) Fail();
  for (PlacedBlock& block : copy.fvBlocks)
    std::visit([this](auto& matrix) { Append(std::move(matrix)); }, block.matrix);
  return fNRows >= 0 ? GetNBlocks() : -1;
}

bool NQSymBlockDiagMatrix::ReplaceBlock(int b, const std::vector<double>& diagonal) {
  return ReplaceBlock(b, NQDiagMatrix(diagonal));
}

bool NQSymBlockDiagMatrix::ReplaceBlock(int b, const INQSymMatrix& m) {
  if (!HasBlock(b) || m.GetNRows() != GetBlockSize(b)) return false;
  NQSymMatrix dense;
  if (const NQDiagMatrix* diagonal = internal::AsDiagonal(m)) {
    NQDiagMatrix copy(*diagonal);
    if (!copy.IsValidMatrix()) return false;
    fvBlocks[At(b)].matrix = std::move(copy);
    return true;
  }
  if (const NQSymMatrix* source = internal::AsDenseSym(m)) {
    dense = *source;
  } else if (!internal::AsBlockDiag(m)->FillDenseMatrix(dense)) {
    return false;
  }
  if (!dense.IsValidMatrix()) return false;
  fvBlocks[At(b)].matrix = std::move(dense);
  return true;
}

INQSymMatrix& NQSymBlockDiagMatrix::Block(int b) {
  return std::visit([](INQSymMatrix& m) -> INQSymMatrix& { return m; }, fvBlocks[At(b)].matrix);
}

const INQSymMatrix& NQSymBlockDiagMatrix::Block(int b) const {
  return std::visit([](const INQSymMatrix& m) -> const INQSymMatrix& { return m; },
                    fvBlocks[At(b)].matrix);
}

int NQSymBlockDiagMatrix::GetNDiagBlocks() const {
  int count = 0;
  for (int b = 0; b < GetNBlocks(); ++b) count += GetIsBlockDiagonal(b);
  return count;
}

std::vector<int> NQSymBlockDiagMatrix::GetBlockSizes() const {
  return GuardMemory(std::vector<int>(), [this] {
    std::vector<int> sizes;
    ForEachBlock([&](const INQSymMatrix& block, int) { sizes.push_back(block.GetNRows()); });
    return sizes;
  });
}

std::vector<int> NQSymBlockDiagMatrix::GetStartingIndices() const {
  return GuardMemory(std::vector<int>(), [this] {
    std::vector<int> starts;
    ForEachBlock([&](const INQSymMatrix&, int start) { starts.push_back(start); });
    starts.push_back(std::max(fNRows, 0));
    return starts;
  });
}

bool NQSymBlockDiagMatrix::GetDenseBlock(int b, const NQSymMatrix*& out) const {
  if (!HasBlock(b) || GetIsBlockDiagonal(b)) return false;
  out = std::get_if<NQSymMatrix>(&fvBlocks[At(b)].matrix);
  return true;
}

bool NQSymBlockDiagMatrix::GetDenseBlock(int b, NQSymMatrix*& out) {
  if (!HasBlock(b) || GetIsBlockDiagonal(b)) return false;
  out = std::get_if<NQSymMatrix>(&fvBlocks[At(b)].matrix);
  return true;
}

bool NQSymBlockDiagMatrix::GetDiagonalBlock(int b, const std::vector<double>*& out) const {
  if (!GetIsBlockDiagonal(b)) return false;
  out = &std::get_if<NQDiagMatrix>(&fvBlocks[At(b)].matrix)->AsVectorConst();
  return true;
}

bool NQSymBlockDiagMatrix::GetDiagonalBlock(int b, std::vector<double>*& out) {
  if (!GetIsBlockDiagonal(b)) return false;
  out = &std::get_if<NQDiagMatrix>(&fvBlocks[At(b)].matrix)->AsVector();
  return true;
}

bool NQSymBlockDiagMatrix::IsSameStructure(const NQSymBlockDiagMatrix& other) const {
  const auto alike = [](const PlacedBlock& a, const PlacedBlock& b) {
    return a.start == b.start && a.matrix.index() == b.matrix.index();
  };
  return fNRows == other.fNRows && std::equal(fvBlocks.begin(), fvBlocks.end(),
                                              other.fvBlocks.begin(), other.fvBlocks.end(), alike);
}

bool NQSymBlockDiagMatrix::CopyStructure(NQSymBlockDiagMatrix& out) const {
  out = *this;
  out.Clear();
  return out.IsValidMatrix();
}

bool NQSymBlockDiagMatrix::Resize(int n) {
  n = std::max(n, 0);
  if (!IsValidMatrix()) ClearAll();
  NQSymBlockDiagMatrix leading;
  if (n < fNRows) {
    leading.TakeLeadingBlocks(*this, n);
    *this = std::move(leading);
  }
  if (n > fNRows && IsValidMatrix()) Append(NQSymMatrix(n - fNRows, true));
  return fNRows >= 0;
}

// ---- Elements ----------------------------------------------------------------------------------

const double* NQSymBlockDiagMatrix::FindBlock(int i, int j) const {
  assert(HasRow(i) && HasRow(j));
  const int high = std::max(i, j), low = std::min(i, j);
  const PlacedBlock& block = fvBlocks[At(fvBlockOfRow[At(high)])];
  if (low < block.start) return nullptr;
  const std::size_t row = At(high - block.start);
  if (const auto* dense = std::get_if<NQSymMatrix>(&block.matrix))
    return dense->AsVectorConst().data() + internal::LowerIndex(row, At(low - block.start));
  const auto* diagonal = std::get_if<NQDiagMatrix>(&block.matrix);
  return low == high ? diagonal->AsVectorConst().data() + row : nullptr;
}

double* NQSymBlockDiagMatrix::FindBlock(int i, int j) {
  return const_cast<double*>(std::as_const(*this).FindBlock(i, j));
}

double NQSymBlockDiagMatrix::GetElem(int i, int j) const {
  const double* cell = FindBlock(i, j);
  return cell ? *cell : 0;
}

bool NQSymBlockDiagMatrix::SetElem(int i, int j, double x) {
  double* cell = FindBlock(i, j);
  if (!cell) return false;
  *cell = x;
  return true;
}

bool NQSymBlockDiagMatrix::FindAbsBlockRelColIndex(int i, int& block, int& start, int& relative,
                                                   bool& isDiagonal) const {
  if (!HasRow(i)) return false;
  block = fvBlockOfRow[At(i)];
  start = GetBlockStartIndex(block);
  relative = i - start;
  isDiagonal = GetIsBlockDiagonal(block);
  return true;
}

// ---- Mechanical operations ---------------------------------------------------------------------

void NQSymBlockDiagMatrix::Clear() {
  ForEachBlock([](INQSymMatrix& block, int) { block.Clear(); });
}

void NQSymBlockDiagMatrix::ChangeSign() {
  ForEachBlock([](INQSymMatrix& block, int) { block.ChangeSign(); });
}

void NQSymBlockDiagMatrix::MultiplyByNumber(double x) {
  ForEachBlock([x](INQSymMatrix& block, int) { block.MultiplyByNumber(x); });
}

bool NQSymBlockDiagMatrix::ComputeAXpY(double a, const INQSymMatrix& x) {
  if (x.GetNRows() != fNRows || fNRows < 0) return false;
  if (const NQSymBlockDiagMatrix* blocks = internal::AsBlockDiag(x)) {
    if (!IsSameStructure(*blocks)) return false;
    for (int b = 0; b < GetNBlocks(); ++b) Block(b).ComputeAXpY(a, blocks->Block(b));
    return true;
  }
  if (x.GetType() != 1) return false;
  for (int i = 0; i < fNRows; ++i) *FindBlock(i, i) += a * x.GetElem(i, i);
  return true;
}

// A block of one row answers 0 for its entries off the diagonal: there are such zeros beside it, or
// it is all there is.
void NQSymBlockDiagMatrix::MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                                             double& minOff) const {
  MaxMinDiag(maxDiag, minDiag);
  internal::Extremes off;
  ForEachBlock([&](const INQSymMatrix& block, int) {
    if (block.GetNRows() < 1) return;
    double unused = 0, max = 0, min = 0;
    block.MaxMinDiagOffDiag(unused, unused, max, min);
    off.Add(max);
    off.Add(min);
    if (block.GetNRows() < fNRows) off.Add(0);
  });
  maxOff = off.Max();
  minOff = off.Min();
}

void NQSymBlockDiagMatrix::ZeroOutNonDiag(double eps) {
  ForEachBlock([eps](INQSymMatrix& block, int) { block.ZeroOutNonDiag(eps); });
}

}  // namespace NQMath_940
