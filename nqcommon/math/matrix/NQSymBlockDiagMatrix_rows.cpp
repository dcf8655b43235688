#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/block_columns.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

// ---- Rows --------------------------------------------------------------------------------------

bool NQSymBlockDiagMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i) || !GuardMemory([&] { out.assign(Order(), 0.0); })) return false;
  internal::ForEachInColumn(*this, i, 0, [&](int j, double s) { out[At(j)] = s; });
  return true;
}

bool NQSymBlockDiagMatrix::PutRow(int i, const std::vector<double>& v) {
  if (!HasRow(i) || v.size() != Order()) return false;
  const int b = fvBlockOfRow[At(i)], start = GetBlockStartIndex(b);
  for (int j = start; j < start + GetBlockSize(b); ++j) SetElem(i, j, v[At(j)]);
  return true;
}

bool NQSymBlockDiagMatrix::SetRowColToConst(int i, double x) {
  if (!HasRow(i)) return false;
  const int b = fvBlockOfRow[At(i)];
  return Block(b).SetRowColToConst(i - GetBlockStartIndex(b), x);
}

bool NQSymBlockDiagMatrix::IncrVecByRow(int i, std::vector<double>& v, double factor) const {
  if (!HasRow(i) || v.size() != Order()) return false;
  internal::ForEachInColumn(*this, i, 0, [&](int j, double s) { v[At(j)] += factor * s; });
  return true;
}

bool NQSymBlockDiagMatrix::IsZeroRow(int i, const NQBitSet& set) const {
  if (!HasRow(i)) return false;
  bool zero = true;
  internal::ForEachInColumn(*this, i, 0,
                            [&](int j, double s) { zero = zero && (s == 0 || !set.IsIn(j)); });
  return zero;
}

// ---- Parts -------------------------------------------------------------------------------------

// Appends the leading blocks of order n, the last cut. False, with order -1, where memory ends.
bool NQSymBlockDiagMatrix::TakeLeadingBlocks(const NQSymBlockDiagMatrix& from, int n) {
  for (const PlacedBlock& block : from.fvBlocks) {
    if (block.start >= n || !IsValidMatrix()) break;
    std::visit(
        [&](const auto& whole) {
          auto part = whole;
          if (part.IsValidMatrix()) part.Resize(std::min(part.GetNRows(), n - block.start));
          Append(std::move(part));
        },
        block.matrix);
  }
  return IsValidMatrix();
}

bool NQSymBlockDiagMatrix::ExtractFirstNRows(INQSymMatrix& out) const {
  const int k = out.GetNRows();
  NQSymBlockDiagMatrix leading;
  return k >= 0 && k <= fNRows && leading.TakeLeadingBlocks(*this, k) &&
         internal::PutBlocks(std::move(leading), out);
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
                               return true;
                             });
  }
  return GuardMemory(false, [&] {
    NQSymBlockDiagMatrix result;
    for (auto from = indices.begin(); from != indices.end();) {
      const int b = fvBlockOfRow[At(*from)];
      std::vector<int> local;
      for (; from != indices.end() && fvBlockOfRow[At(*from)] == b; ++from)
        local.push_back(*from - GetBlockStartIndex(b));
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
  });
}

bool NQSymBlockDiagMatrix::FillDenseMatrix(NQSymMatrix& out) const {
  return IsValidMatrix() &&
         internal::PutRows(fNRows, &out,
                           [this](int i, std::vector<double>& row) { return GetRow(i, row); });
}

// ---- Diagnostic display ------------------------------------------------------------------------

void NQSymBlockDiagMatrix::Display() const {
  using NQDisplay_940::DisplayI;
  using NQDisplay_940::DisplayIV;
  using NQDisplay_940::DisplayText;
  GuardMemory([this] {
    NQBitSet isDiagonal(GetNBlocks());
    std::vector<int> places;  // of each block among those of its kind
    int nOfKind[] = {0, 0};
    for (int b = 0; b < GetNBlocks(); ++b) {
      isDiagonal.Set(b, GetIsBlockDiagonal(b));
      places.push_back(nOfKind[GetIsBlockDiagonal(b)]++);
    }
    DisplayText(1, "NQSymBlockDiagMatrix display start");
    DisplayI("The number of rows", fNRows);
    DisplayI("The number of blocks", GetNBlocks());
    DisplayIV("Block sizes", GetBlockSizes());
    isDiagonal.Display();
    DisplayIV("Start Indices", GetStartingIndices());
    DisplayIV("Block indices", places);
    DisplayIV("Block indices for each row", fvBlockOfRow);
    ForEachBlock([](const INQSymMatrix& block, int) { block.Display(); });
    DisplayText(1, "NQSymBlockDiagMatrix display end");
  });
}

}  // namespace NQMath_940
