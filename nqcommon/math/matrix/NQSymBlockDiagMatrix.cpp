#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <cassert>
#include <exception>
#include <numeric>
#include <utility>

#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>

namespace NQMath_940 {

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

NQSymBlockDiagMatrix::NQSymBlockDiagMatrix(const NQSymBlockDiagMatrix& other) : INQSymMatrix() {
  *this = other;
}

// The blocks' copies report a failure by their order, the other members' throw.
NQSymBlockDiagMatrix& NQSymBlockDiagMatrix::operator=(const NQSymBlockDiagMatrix& other) {
  if (this == &other) return *this;
  try {
    fvDense = other.fvDense;
    fvDiagonal = other.fvDiagonal;
    fvBlockSizes = other.fvBlockSizes;
    fIsDiagonal = other.fIsDiagonal;
    fvStart = other.fvStart;
    fvBlockIndices = other.fvBlockIndices;
    fvBlockOfRow = other.fvBlockOfRow;
    fNRows = other.fNRows;
    fNBlocks = other.fNBlocks;
  } catch (const std::exception&) {
    Fail();
  }
  const auto failed = [](const INQSymMatrix& block) { return !block.IsValidMatrix(); };
  if (std::any_of(fvDense.begin(), fvDense.end(), failed) ||
      std::any_of(fvDiagonal.begin(), fvDiagonal.end(), failed))
    Fail();
  return *this;
}

NQSymBlockDiagMatrix::NQSymBlockDiagMatrix(NQSymBlockDiagMatrix&& other) noexcept : INQSymMatrix() {
  Swap(other);
}

NQSymBlockDiagMatrix& NQSymBlockDiagMatrix::operator=(NQSymBlockDiagMatrix&& other) noexcept {
  if (this == &other) return *this;
  Swap(other);
  other.ClearAll();
  return *this;
}

NQSymBlockDiagMatrix::~NQSymBlockDiagMatrix() = default;

void NQSymBlockDiagMatrix::Swap(NQSymBlockDiagMatrix& other) noexcept {
  std::swap(fNRows, other.fNRows);
  std::swap(fNBlocks, other.fNBlocks);
  std::swap(fvDense, other.fvDense);
  std::swap(fvDiagonal, other.fvDiagonal);
  std::swap(fvBlockSizes, other.fvBlockSizes);
  std::swap(fIsDiagonal, other.fIsDiagonal);
  std::swap(fvStart, other.fvStart);
  std::swap(fvBlockIndices, other.fvBlockIndices);
  std::swap(fvBlockOfRow, other.fvBlockOfRow);
}

void NQSymBlockDiagMatrix::ClearAll() {
  fNRows = fNBlocks = 0;
  fvDense.clear();
  fvDiagonal.clear();
  fvBlockSizes.clear();
  fIsDiagonal.Resize(0, false);
  fvStart.assign(1, 0);
  fvBlockIndices.clear();
  fvBlockOfRow.clear();
}

// What a failed allocation leaves.
bool NQSymBlockDiagMatrix::Fail() {
  ClearAll();
  fNRows = -1;
  return false;
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

void NQSymBlockDiagMatrix::SetBlockIndicesForRow(int from) {
  for (int b = from; b < static_cast<int>(fvBlockSizes.size()); ++b)
    fvBlockOfRow.resize(At(fvStart[At(b + 1)]), b);
}

template <class Matrix>
int NQSymBlockDiagMatrix::AppendTo(std::vector<Matrix>& kind, Matrix block) {
  const int size = block.GetNRows();
  const bool isDiagonal = block.GetType() == 1;
  if (fNRows >= 0 && block.IsValidMatrix()) {
    if (!internal::FitsInt(static_cast<long long>(fNRows) + size)) return -1;
    try {
      fvBlockIndices.push_back(static_cast<int>(kind.size()));
      kind.push_back(std::move(block));
      fvBlockSizes.push_back(size);
      fvStart.push_back(fNRows + size);
      SetBlockIndicesForRow(fNBlocks);
      fNRows += size;
      if (fIsDiagonal.Append(isDiagonal) > fNBlocks) return ++fNBlocks;
    } catch (const std::exception&) {
    }
  }
  Fail();
  return -1;
}

int NQSymBlockDiagMatrix::Append(NQSymMatrix&& block) {
  return AppendTo(fvDense, std::move(block));
}
int NQSymBlockDiagMatrix::Append(NQDiagMatrix&& block) {
  return AppendTo(fvDiagonal, std::move(block));
}

int NQSymBlockDiagMatrix::AddBlock(const std::vector<double>& diagonal) {
  return diagonal.empty() || fNRows < 0 ? -1 : Append(NQDiagMatrix(diagonal));
}

int NQSymBlockDiagMatrix::AddBlock(const INQSymMatrix& m) {
  if (m.GetNRows() < 1 || fNRows < 0) return -1;
  if (const NQSymMatrix* dense = internal::AsDenseSym(m)) return Append(NQSymMatrix(*dense));
  if (const NQDiagMatrix* diagonal = internal::AsDiagonal(m))
    return Append(NQDiagMatrix(*diagonal));
  NQSymBlockDiagMatrix copy(*internal::AsBlockDiag(m));
  if (!internal::FitsInt(static_cast<long long>(fNRows) + m.GetNRows())) return -1;
  if (!copy.IsValidMatrix()) Fail();
  for (int b = 0; b < copy.fNBlocks && fNRows >= 0; ++b) {
    const std::size_t at = At(copy.fvBlockIndices[At(b)]);
    if (copy.GetIsBlockDiagonal(b)) {
      Append(std::move(copy.fvDiagonal[at]));
    } else {
      Append(std::move(copy.fvDense[at]));
    }
  }
  return fNRows >= 0 ? fNBlocks : -1;
}

// Makes room for block b among those of the kind, and takes it out of the other.
void NQSymBlockDiagMatrix::SetKind(int b, bool isDiagonal) {
  if (GetIsBlockDiagonal(b) == isDiagonal) return;
  int before = 0;  // blocks of the new kind before b
  for (int a = 0; a < b; ++a) before += GetIsBlockDiagonal(a) == isDiagonal;
  const std::ptrdiff_t from = fvBlockIndices[At(b)];
  if (isDiagonal) {
    fvDiagonal.emplace(fvDiagonal.begin() + before);
    fvDense.erase(fvDense.begin() + from);
  } else {
    fvDense.emplace(fvDense.begin() + before);
    fvDiagonal.erase(fvDiagonal.begin() + from);
  }
  fIsDiagonal.Set(b, isDiagonal);
  fvBlockIndices[At(b)] = before;
  for (int a = b + 1; a < fNBlocks; ++a)
    fvBlockIndices[At(a)] += GetIsBlockDiagonal(a) == isDiagonal ? 1 : -1;
}

bool NQSymBlockDiagMatrix::ReplaceBlock(int b, const std::vector<double>& diagonal) {
  return ReplaceBlock(b, NQDiagMatrix(diagonal));
}

bool NQSymBlockDiagMatrix::ReplaceBlock(int b, const INQSymMatrix& m) {
  if (!HasBlock(b) || m.GetNRows() != GetBlockSize(b)) return false;
  const bool isDiagonal = m.GetType() == 1;
  NQSymMatrix dense;
  NQDiagMatrix diagonal;
  if (isDiagonal) {
    diagonal = *internal::AsDiagonal(m);
  } else if (const NQSymMatrix* source = internal::AsDenseSym(m)) {
    dense = *source;
  } else if (!internal::AsBlockDiag(m)->FillDenseMatrix(dense)) {
    return Fail();
  }
  try {
    SetKind(b, isDiagonal);
  } catch (const std::exception&) {
    return Fail();
  }
  const std::size_t at = At(fvBlockIndices[At(b)]);
  if (isDiagonal) {
    fvDiagonal[at] = std::move(diagonal);
  } else {
    fvDense[at] = std::move(dense);
  }
  return Block(b).IsValidMatrix() || Fail();
}

INQSymMatrix& NQSymBlockDiagMatrix::Block(int b) {
  const std::size_t at = At(fvBlockIndices[At(b)]);
  if (fIsDiagonal.IsIn(b)) return fvDiagonal[at];
  return fvDense[at];
}

const INQSymMatrix& NQSymBlockDiagMatrix::Block(int b) const {
  const std::size_t at = At(fvBlockIndices[At(b)]);
  if (fIsDiagonal.IsIn(b)) return fvDiagonal[at];
  return fvDense[at];
}

bool NQSymBlockDiagMatrix::GetDenseBlock(int b, const NQSymMatrix*& out) const {
  if (!HasBlock(b) || GetIsBlockDiagonal(b)) return false;
  out = &fvDense[At(fvBlockIndices[At(b)])];
  return true;
}

bool NQSymBlockDiagMatrix::GetDenseBlock(int b, NQSymMatrix*& out) {
  if (!HasBlock(b) || GetIsBlockDiagonal(b)) return false;
  out = &fvDense[At(fvBlockIndices[At(b)])];
  return true;
}

bool NQSymBlockDiagMatrix::GetDiagonalBlock(int b, const std::vector<double>*& out) const {
  if (!HasBlock(b) || !GetIsBlockDiagonal(b)) return false;
  out = &fvDiagonal[At(fvBlockIndices[At(b)])].AsVectorConst();
  return true;
}

bool NQSymBlockDiagMatrix::GetDiagonalBlock(int b, std::vector<double>*& out) {
  if (!HasBlock(b) || !GetIsBlockDiagonal(b)) return false;
  out = &fvDiagonal[At(fvBlockIndices[At(b)])].AsVector();
  return true;
}

bool NQSymBlockDiagMatrix::IsSameStructure(const NQSymBlockDiagMatrix& other) const {
  return fNRows == other.fNRows && fvBlockSizes == other.fvBlockSizes &&
         fIsDiagonal == other.fIsDiagonal;
}

bool NQSymBlockDiagMatrix::CopyStructure(NQSymBlockDiagMatrix& out) const {
  out = *this;
  out.Clear();
  return out.IsValidMatrix();
}

bool NQSymBlockDiagMatrix::Resize(int n) {
  n = std::max(n, 0);
  if (!IsValidMatrix()) ClearAll();
  if (n < fNRows) *this = LeadingBlocks(n);
  if (n > fNRows && IsValidMatrix()) Append(NQSymMatrix(n - fNRows, true));
  return fNRows >= 0;
}

bool NQSymBlockDiagMatrix::SetNRows(int n, bool clear) {
  const bool resized = Resize(n);
  if (resized && clear) Clear();
  return resized;
}

// ---- Elements ----------------------------------------------------------------------------------

const double* NQSymBlockDiagMatrix::FindBlock(int i, int j) const {
  assert(HasRow(i) && HasRow(j));
  const int high = std::max(i, j), low = std::min(i, j);
  const int b = fvBlockOfRow[At(high)], start = fvStart[At(b)];
  if (low < start || (GetIsBlockDiagonal(b) && low != high)) return nullptr;
  const std::size_t at = At(fvBlockIndices[At(b)]), row = At(high - start);
  if (GetIsBlockDiagonal(b)) return fvDiagonal[at].AsVectorConst().data() + row;
  return fvDense[at].AsVectorConst().data() + internal::LowerIndex(row, At(low - start));
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
  start = fvStart[At(block)];
  relative = i - start;
  isDiagonal = GetIsBlockDiagonal(block);
  return true;
}

// ---- Mechanical operations ---------------------------------------------------------------------

void NQSymBlockDiagMatrix::Clear() {
  ForEachBlock([](INQSymMatrix& block, int) { block.Clear(); });
}

void NQSymBlockDiagMatrix::AddToDiagonal(double x) {
  ForEachBlock([x](INQSymMatrix& block, int) { block.AddToDiagonal(x); });
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
    for (int b = 0; b < fNBlocks; ++b) Block(b).ComputeAXpY(a, blocks->Block(b));
    return true;
  }
  if (x.GetType() != 1) return false;
  for (int i = 0; i < fNRows; ++i) *FindBlock(i, i) += a * x.GetElem(i, i);
  return true;
}

void NQSymBlockDiagMatrix::GetNCheckDiagonal(std::vector<double>& out, double /*a*/,
                                             double /*b*/) const {
  GetDiagonal(out);
  out.assign(out.size(), internal::LargestFromZero(out));
}

void NQSymBlockDiagMatrix::MaxMinDiag(double& max, double& min) const {
  internal::Extremes extremes;
  for (int i = 0; i < fNRows; ++i) extremes.Add(*FindBlock(i, i));
  max = extremes.Max();
  min = extremes.Min();
}

// A block of one row has no entries off its diagonal, and answers 0 for them.
void NQSymBlockDiagMatrix::MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                                             double& minOff) const {
  MaxMinDiag(maxDiag, minDiag);
  internal::Extremes off;
  ForEachBlock([&](const INQSymMatrix& block, int) {
    double unused = 0, max = 0, min = 0;
    block.MaxMinDiagOffDiag(unused, unused, max, min);
    if (block.GetNRows() > 1) {
      off.Add(max);
      off.Add(min);
    }
    if (block.GetNRows() > 0 && block.GetNRows() < fNRows) off.Add(0);
  });
  maxOff = off.Max();
  minOff = off.Min();
}

double NQSymBlockDiagMatrix::Trace() const {
  double sum = 0;
  for (int i = 0; i < fNRows; ++i) sum += *FindBlock(i, i);
  return sum;
}

void NQSymBlockDiagMatrix::ZeroOutNonDiag(double eps) {
  ForEachBlock([eps](INQSymMatrix& block, int) { block.ZeroOutNonDiag(eps); });
}

}  // namespace NQMath_940
