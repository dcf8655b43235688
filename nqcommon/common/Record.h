#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <nqcommon/export.h>

namespace NQCommon_940 {

// A row of cells that owns its array.
//
// Failure   an allocation that fails is absorbed: a new row or a copy then has length 0, and Resize
//           returns false with the old array kept.
// Threads   one object, one thread at a time.
template <class Cell>
class RowOf {
 public:
  // n cells as Cell() makes them; one cell for a negative n.
  explicit RowOf(int n);
  RowOf(const RowOf& other);
  RowOf& operator=(const RowOf& other);
  // The source is left with length 0.
  RowOf(RowOf&& other) noexcept;
  RowOf& operator=(RowOf&& other) noexcept;
  ~RowOf();

  int Size() const { return fSize; }
  Cell* GetAll() { return fpCells.get(); }
  const Cell* GetAll() const { return fpCells.get(); }
  // Not range-checked.
  Cell& operator[](int i) { return fpCells.get()[i]; }
  const Cell& operator[](int i) const { return fpCells.get()[i]; }

  // Length max(n, 0). At another length the contents are lost, and numbers are left unset, for the
  // caller to fill.
  bool Resize(int n);

 private:
  std::unique_ptr<Cell[]> fpCells;
  int fSize = 0;
};

// What a source has in one field before it is interpreted: a code, whether the cell is in use, and
// its text.
struct RawCell {
  std::int32_t fValue = 0;
  bool fFlag = true;
  std::string fText;
};

extern template class NQ_API RowOf<double>;
extern template class NQ_API RowOf<RawCell>;

// A case: numbers, 0.0 at first.
class NQ_API Record : public RowOf<double> {
 public:
  using RowOf::RowOf;
};

// A case as it was read.
class NQ_API RawRecord : public RowOf<RawCell> {
 public:
  using RowOf::RowOf;
};

}  // namespace NQCommon_940
