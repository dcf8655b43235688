#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/matrix/internal/block_results.h>
#include <nqcommon/math/matrix/internal/display_rows.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>

namespace NQMath_940 {

// ---- Rows --------------------------------------------------------------------------------------

void NQSymBlockDiagMatrix::GetDiagonal(std::vector<double>& out) const {
  out.resize(Order());
  for (int i = 0; i < fNRows; ++i) out[At(i)] = *FindBlock(i, i);
}

bool NQSymBlockDiagMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i)) return false;
  const int b = fvBlockOfRow[At(i)], start = fvStart[At(b)];
  std::vector<double> part;
  Block(b).GetRow(i - start, part);
  out.assign(Order(), 0.0);
  std::copy(part.begin(), part.end(), out.begin() + start);
  return true;
}

bool NQSymBlockDiagMatrix::PutRow(int i, const std::vector<double>& v) {
  if (!HasRow(i) || v.size() != Order()) return false;
  const int b = fvBlockOfRow[At(i)], start = fvStart[At(b)];
  return Block(b).PutRow(i - start, {v.begin() + start, v.begin() + fvStart[At(b + 1)]});
}

bool NQSymBlockDiagMatrix::SetRowColToConst(int i, double x) {
  if (!HasRow(i)) return false;
  const int b = fvBlockOfRow[At(i)];
  return Block(b).SetRowColToConst(i - fvStart[At(b)], x);
}

bool NQSymBlockDiagMatrix::ZeroOut(int i) { return SetRowColToConst(i, 0.0); }

bool NQSymBlockDiagMatrix::IncrVecByRow(int i, std::vector<double>& v, double factor) const {
  if (!HasRow(i) || v.size() != Order()) return false;
  ForEachInColumn(i, 0, [&](int j, double s) { v[At(j)] += factor * s; });
  return true;
}

bool NQSymBlockDiagMatrix::IsZeroRow(int i, const NQBitSet& set) const {
  if (!HasRow(i)) return false;
  bool zero = true;
  ForEachInColumn(i, 0, [&](int j, double s) { zero = zero && (s == 0 || !set.IsIn(j)); });
  return zero;
}

// ---- Parts -------------------------------------------------------------------------------------

// Order -1 where memory fails.
NQSymBlockDiagMatrix NQSymBlockDiagMatrix::LeadingBlocks(int n) const {
  NQSymBlockDiagMatrix result;
  for (int b = 0; b < fNBlocks && fvStart[At(b)] < n && result.IsValidMatrix(); ++b) {
    const int size = std::min(fvBlockSizes[At(b)], n - fvStart[At(b)]);
    const auto cut = [&](auto block) {
      Block(b).ExtractFirstNRows(block);
      result.Append(std::move(block));
    };
    if (GetIsBlockDiagonal(b)) {
      cut(NQDiagMatrix(size, true));
    } else {
      cut(NQSymMatrix(size, true));
    }
  }
  return result;
}

bool NQSymBlockDiagMatrix::ExtractFirstNRows(INQSymMatrix& out) const {
  const int k = out.GetNRows();
  return k >= 0 && k <= fNRows && internal::PutBlocks(LeadingBlocks(k), out);
}

bool NQSymBlockDiagMatrix::ExtractSubmatrix(const std::vector<int>& indices,
                                            INQSymMatrix& out) const {
  if (!IsValidMatrix() || !internal::AllBelow(fNRows, indices) ||
      !internal::FitsInt(static_cast<long long>(indices.size())))
    return false;
  if (out.GetType() != 2) {
    return internal::PutRows(static_cast<int>(indices.size()), internal::AsDenseSym(out),
                             [&](int a, std::vector<double>& row) {
                               row.resize(indices.size());
                               for (std::size_t b = 0; b < row.size(); ++b)
                                 row[b] = GetElem(indices[At(a)], indices[b]);
                             });
  }
  NQSymBlockDiagMatrix result;
  for (auto from = indices.begin(); from != indices.end();) {
    const int b = fvBlockOfRow[At(*from)];
    std::vector<int> local;
    for (; from != indices.end() && fvBlockOfRow[At(*from)] == b; ++from)
      local.push_back(*from - fvStart[At(b)]);
    if (from != indices.end() && fvBlockOfRow[At(*from)] < b) return false;
    NQDiagMatrix diagonal;
    NQSymMatrix dense;
    if (GetIsBlockDiagonal(b) && Block(b).ExtractSubmatrix(local, diagonal)) {
      result.Append(std::move(diagonal));
    } else if (Block(b).ExtractSubmatrix(local, dense)) {
      result.Append(std::move(dense));
    } else {
      return false;
    }
  }
  return internal::PutBlocks(std::move(result), out);
}

bool NQSymBlockDiagMatrix::FillDenseMatrix(NQSymMatrix& out) const {
  NQSymMatrix result(std::max(fNRows, 0), true);
  if (!IsValidMatrix() || !result.IsValidMatrix()) return false;
  for (int i = 0; i < fNRows; ++i) {
    const int first = GetIndexFirstInRow(i);
    double* row = result.AsVector().data() + internal::RowStart(At(i));
    std::copy_n(FindBlock(i, first), i - first + 1, row + first);
  }
  out = std::move(result);
  return true;
}

// ---- Diagnostic display ------------------------------------------------------------------------

void NQSymBlockDiagMatrix::Display() const {
  using NQDisplay_940::DisplayI;
  using NQDisplay_940::DisplayIV;
  using NQDisplay_940::DisplayText;
  DisplayText(1, "NQSymBlockDiagMatrix display start");
  DisplayI("The number of rows", fNRows);
  DisplayI("The number of blocks", fNBlocks);
  DisplayIV("Block sizes", fvBlockSizes);
  fIsDiagonal.Display();
  DisplayIV("Start Indices", fvStart);
  DisplayIV("Block indices", fvBlockIndices);
  DisplayIV("Block indices for each row", fvBlockOfRow);
  ForEachBlock([](const INQSymMatrix& block, int) { block.Display(); });
  DisplayText(1, "NQSymBlockDiagMatrix display end");
}

void NQSymBlockDiagMatrix::DisplayF() const {
  internal::DisplayAllRows("NQSymBlockDiagMatrix", *this);
}

}  // namespace NQMath_940
