#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <functional>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/block_columns.h>
#include <nqcommon/math/matrix/internal/matrix_entries.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_products.h>
#include <nqcommon/math/matrix/internal/symmetric_times.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

// ---- Rows and vectors --------------------------------------------------------------------------

double NQSymBlockDiagMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const {
  if (other.GetNRows() != fNRows || !HasRow(i) || !HasRow(j)) return NQMV::Missing();
  double sum = 0;
  ForEachInColumn(*this, i, 0, [&](int k, double s) { sum += s * other.GetElem(j, k); });
  return sum;
}

double NQSymBlockDiagMatrix::ComputeRVD(int r, const double* x, int inc) const {
  if (!HasRow(r)) return NQMV::Missing();
  const std::ptrdiff_t start = inc >= 0 ? 0 : (1 - static_cast<std::ptrdiff_t>(fNRows)) * inc;
  double sum = 0;
  ForEachInColumn(*this, r, 0,
                  [&](int k, double s) { sum += s * x[start + std::ptrdiff_t{k} * inc]; });
  return sum;
}

// out = the blocks' answers f(block, their part of v, answer) one after the other.
template <class F>
bool NQSymBlockDiagMatrix::MapVector(const std::vector<double>& v, std::vector<double>& out,
                                     F f) const {
  return HasOrder(v.size()) && NQCommon_940::GuardMemory(false, [&] {
           std::vector<double> result, part;
           result.reserve(Order());
           for (int b = 0; b < GetNBlocks(); ++b) {
             const auto first = v.begin() + GetBlockStartIndex(b);
             part.assign(first, first + GetBlockSize(b));
             if (!f(Block(b), part)) return false;
             result.insert(result.end(), part.begin(), part.end());
           }
           out = std::move(result);
           return true;
         });
}

bool NQSymBlockDiagMatrix::ComputeSV(const std::vector<double>& v, int nRows,
                                     std::vector<double>& out) const {
  if (nRows < 0 || nRows > fNRows ||
      !MapVector(v, out, [](const INQSymMatrix& block, std::vector<double>& part) {
        return block.ComputeSV(part, part);
      }))
    return false;
  out.resize(At(nRows));
  return true;
}

bool NQSymBlockDiagMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const {
  return MapVector(v, out, [](const INQSymMatrix& block, std::vector<double>& part) {
    return block.ComputeLV(part, part);
  });
}

bool NQSymBlockDiagMatrix::ComputeLTransV(const std::vector<double>& v,
                                          std::vector<double>& out) const {
  return MapVector(v, out, [](const INQSymMatrix& block, std::vector<double>& part) {
    return block.ComputeLTransV(part, part);
  });
}

// ---- Quadratic and bilinear forms --------------------------------------------------------------

// Each block takes its share of the rows and of the columns.
double NQSymBlockDiagMatrix::ComputeVSWParts(const double* v, int nv, int row, const double* w,
                                             int nw, int col) const {
  if (!IsRun(fNRows, row, nv) || !IsRun(fNRows, col, nw)) return NQMV::Missing();
  double sum = 0;
  ForEachBlock([&](const INQSymMatrix& block, int first) {
    const int end = first + block.GetNRows();
    const int row0 = std::max(row, first), row1 = std::min(row + nv, end);
    const int col0 = std::max(col, first), col1 = std::min(col + nw, end);
    if (row0 >= row1 || col0 >= col1) return;
    sum += block.ComputeVSWParts(v + (row0 - row), row1 - row0, row0 - first, w + (col0 - col),
                                 col1 - col0, col0 - first);
  });
  return sum;
}

double NQSymBlockDiagMatrix::TraceOfProductOfThree(const INQSymMatrix& a,
                                                   const INQSymMatrix& b) const {
  if (a.GetNRows() != fNRows || b.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  bool failed = false;
  for (int i = 0; i < fNRows; ++i) {
    ForEachInColumn(*this, i, 0, [&](int k, double s) {
      const double product = a.ComputeRowDotProductS(k, b, i);
      failed = failed || NQMV::IsMissing(product);
      sum += s * product;
    });
  }
  return failed ? NQMV::Missing() : sum;
}

// ---- Products of symmetric matrices ------------------------------------------------------------

// CutAlike answers x as blocks of the sizes here: x itself where it has them, `cut` made of a
// diagonal x; null for any other x.
const NQSymBlockDiagMatrix* NQSymBlockDiagMatrix::CutAlike(const INQSymMatrix& x,
                                                           NQSymBlockDiagMatrix& cut) const {
  if (const NQSymBlockDiagMatrix* blocks = AsBlockDiag(x)) {
    const bool alike =
        std::equal(fvBlocks.begin(), fvBlocks.end(), blocks->fvBlocks.begin(),
                   blocks->fvBlocks.end(), [](const PlacedBlock& mine, const PlacedBlock& theirs) {
                     return mine.start == theirs.start;
                   });
    return alike ? blocks : nullptr;
  }
  const NQDiagMatrix* diagonal = AsDiagonal(x);
  if (!diagonal) return nullptr;
  for (int b = 0; b < GetNBlocks() && cut.IsValidMatrix(); ++b) {
    NQDiagMatrix part(GetBlockSize(b), false);
    for (int i = 0; i < part.GetNRows(); ++i)
      part.SetElem(i, diagonal->GetElem(GetBlockStartIndex(b) + i));
    cut.Append(std::move(part));
  }
  return &cut;
}

// out <- the blocks f(block, block of x, result), diagonal where both are; where x has not the
// blocks here, what otherwise() answers.
template <class F, class Otherwise>
bool NQSymBlockDiagMatrix::PutEachBlock(const INQSymMatrix& x, INQSymMatrix& out, F f,
                                        Otherwise otherwise) const {
  if (x.GetNRows() != fNRows || !IsValidMatrix()) return false;
  NQSymBlockDiagMatrix cut, result;
  const NQSymBlockDiagMatrix* blocks = CutAlike(x, cut);
  if (!blocks) return otherwise();
  for (int b = 0; b < GetNBlocks() && blocks->IsValidMatrix() && result.IsValidMatrix(); ++b) {
    const auto append = [&](auto block) {
      if (!f(Block(b), blocks->Block(b), block)) return false;
      result.Append(std::move(block));
      return true;
    };
    const bool isDiagonal = GetIsBlockDiagonal(b) && blocks->GetIsBlockDiagonal(b);
    if (!(isDiagonal ? append(NQDiagMatrix()) : append(NQSymMatrix()))) return false;
  }
  return blocks->IsValidMatrix() && PutBlocks(std::move(result), out);
}

bool NQSymBlockDiagMatrix::ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const {
  return PutEachBlock(m, out, std::mem_fn(&INQSymMatrix::ComputeGMG), [&] {
    NQRectMatrix gm, gmg;
    return AsDenseSym(out) && ComputeSS(m, gm) && ComputeRS(gm, gmg) && PutLower(gmg, out);
  });
}

bool NQSymBlockDiagMatrix::ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const {
  return PutEachBlock(
      g, out,
      [](const INQSymMatrix& s, const INQSymMatrix& ofG, auto& result) {
        return ofG.ComputeGMG(s, result);
      },
      [&] { return g.ComputeGMG(*this, out); });
}

bool NQSymBlockDiagMatrix::ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const {
  return PutEachBlock(l, out, std::mem_fn(&INQSymMatrix::ComputeLSLTrans),
                      [&] { return INQSymMatrix::ComputeLSLTrans(l, out); });
}

bool NQSymBlockDiagMatrix::ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const {
  return PutEachBlock(l, out, std::mem_fn(&INQSymMatrix::ComputeLTransSL),
                      [&] { return INQSymMatrix::ComputeLTransSL(l, out); });
}

bool NQSymBlockDiagMatrix::ComputeSTransS(INQSymMatrix& out) const {
  return PutEachBlock(
      *this, out,
      [](const INQSymMatrix& s, const INQSymMatrix&, auto& result) {
        return s.ComputeSTransS(result);
      },
      [] { return false; });
}

bool NQSymBlockDiagMatrix::ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const {
  NQRectMatrix square;
  return b.GetNRows() == fNRows && IsValidMatrix() &&
         PutRows(fNRows, fNRows, &square,
                 [&](int i, std::vector<double>& row) { return b.GetRow(i, row); }) &&
         Make(fNRows, fNRows, AsDenseRect(out), [&](NQRectMatrix& result) {
           SymmetricTimes(*this, RowsAt(square.GetRowPtr(0), Order()), Order(),
                          result.GetRowPtr(0));
         });
}

// M G N is the transpose of (G N)' M, which M computes in its own storage.
bool NQSymBlockDiagMatrix::ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n,
                                      INQRectMatrix& out) const {
  NQRectMatrix gn, result;
  NQRectMatrix* dense = AsDenseRect(out);
  if (!dense || m.GetNRows() != fNRows || !ComputeSS(n, gn) || !m.ComputeRTransS(gn, result) ||
      !result.Transpose())
    return false;
  *dense = std::move(result);
  return true;
}

bool NQSymBlockDiagMatrix::ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                                        INQRectMatrix& out) const {
  NQRectMatrix mgn, gmgn;
  return ComputeMGN(m, n, mgn) && ComputeRTransS(mgn, gmgn) && gmgn.Transpose() &&
         ComputeRS(gmgn, out);
}

// ---- Products with a rectangular matrix --------------------------------------------------------

namespace {

// out <- (S X)', p x n.
bool PutTransposedProduct(const INQSymMatrix& s, const Operand& x, std::size_t p,
                          NQRectMatrix* out) {
  return PutFilled(NQRectMatrix(s.GetNRows(), static_cast<int>(p), false), out,
                   [&](NQRectMatrix& result) {
                     SymmetricTimes(s, x, p, result.GetRowPtr(0));
                     return result.Transpose();
                   });
}

}  // namespace

bool NQSymBlockDiagMatrix::ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const {
  if (!IsValidMatrix() || r.GetNCols() != fNRows) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(r))
    return SparseTimes(*sparse, *this, AsDenseRect(out));
  const Entries R(r);
  return R.AreThere() && PutTransposedProduct(*this, R.Transpose(), RowsOf(r), AsDenseRect(out));
}

bool NQSymBlockDiagMatrix::ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const {
  if (!IsValidMatrix() || r.GetNRows() != fNRows) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(r))
    return SparseTransTimes(*sparse, *this, AsDenseRect(out));
  const Entries R(r);
  return R.AreThere() && PutTransposedProduct(*this, R.Rows(), ColsOf(r), AsDenseRect(out));
}

}  // namespace NQMath_940
