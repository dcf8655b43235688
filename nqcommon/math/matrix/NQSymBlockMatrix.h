#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

// Container that cuts a symmetric matrix into nb x nb blocks of order bs, every one of them
// symmetric itself, those off the diagonal too.
//
// Layout    the lower triangle of blocks packed by rows: block (I, J), I >= J, is at
//           I(I+1)/2 + J; (J, I) is the same block.
// Failure   by return value; a failed allocation leaves both counts -1 and no blocks.
// Threads   one object, one thread at a time.
class NQ_API NQSymBlockMatrix {
 public:
  // No blocks.
  NQSymBlockMatrix() = default;
  // As SetNRows(nb, bs, true).
  NQSymBlockMatrix(int nb, int bs) { SetNRows(nb, bs, true); }
  // A copy that finds no storage is invalid; a moved-from container is good for assignment.
  NQSymBlockMatrix(const NQSymBlockMatrix& other) noexcept { *this = other; }
  NQSymBlockMatrix& operator=(const NQSymBlockMatrix& other) noexcept;
  NQSymBlockMatrix(NQSymBlockMatrix&&) noexcept = default;
  NQSymBlockMatrix& operator=(NQSymBlockMatrix&&) noexcept = default;
  ~NQSymBlockMatrix() = default;

  // nb(nb+1)/2 blocks of order bs, a negative count being 0; all zero with `clear`, otherwise the
  // blocks keep what their storage holds. False, both counts -1, when there is no storage.
  bool SetNRows(int nb, int bs, bool clear);
  // False after an allocation that failed; both counts are then -1.
  bool IsValid() const { return fNBlocks >= 0 && fBlockSize >= 0; }
  // nb and bs.
  int GetNBlocks() const { return fNBlocks; }
  int GetBlockSize() const { return fBlockSize; }

  // Block (max(I, J), min(I, J)), not range-checked. The blocks' orders must stay.
  NQSymMatrix& GetElemSSRef(int I, int J) { return fvBlocks[PositionOf(I, J)]; }
  const NQSymMatrix& GetElemSSRef(int I, int J) const { return fvBlocks[PositionOf(I, J)]; }
  // The array of blocks itself.
  std::vector<NQSymMatrix>& AsVectorSS() { return fvBlocks; }
  const std::vector<NQSymMatrix>& AsVectorSSConst() const { return fvBlocks; }

  // out(bs I + r, bs J + c) = block (I, J) (r, c), in a dense `out` of order nb bs. Returns the
  // order; -1, `out` unchanged, when it is not dense, an order has left its block, or there is no
  // storage.
  int CopyToSymMatrix(INQSymMatrix& out) const;
  // All blocks zero.
  void Clear();

  void Display() const;

 private:
  std::size_t PositionOf(int I, int J) const;
  bool FailUnless(bool allocated);

  int fNBlocks = 0;
  int fBlockSize = 0;
  std::vector<NQSymMatrix> fvBlocks;
};

}  // namespace NQMath_940
