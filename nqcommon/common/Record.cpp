#include <nqcommon/common/Record.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include <nqcommon/common/memory_guard.h>

namespace NQCommon_940 {

namespace {

std::size_t Count(int n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }

}  // namespace

template <class Cell>
RowOf<Cell>::RowOf(int n)
    : fpCells(new (std::nothrow) Cell[n < 0 ? 1 : Count(n)]()),
      fSize(!fpCells ? 0 : (n < 0 ? 1 : n)) {}

template <class Cell>
RowOf<Cell>::RowOf(const RowOf& other) : fpCells(new (std::nothrow) Cell[Count(other.fSize)]) {
  const auto copy = [&] { std::copy_n(other.fpCells.get(), other.fSize, fpCells.get()); };
  if (fpCells && GuardMemory(copy)) {
    fSize = other.fSize;
  } else {
    fpCells.reset();
  }
}

template <class Cell>
RowOf<Cell>& RowOf<Cell>::operator=(const RowOf& other) {
  if (this != &other) *this = RowOf(other);
  return *this;
}

template <class Cell>
RowOf<Cell>::RowOf(RowOf&& other) noexcept
    : fpCells(std::move(other.fpCells)), fSize(std::exchange(other.fSize, 0)) {}

template <class Cell>
RowOf<Cell>& RowOf<Cell>::operator=(RowOf&& other) noexcept {
  if (this == &other) return *this;
  fpCells = std::move(other.fpCells);
  fSize = std::exchange(other.fSize, 0);
  return *this;
}

template <class Cell>
RowOf<Cell>::~RowOf() = default;

template <class Cell>
bool RowOf<Cell>::Resize(int n) {
  const int size = std::max(n, 0);
  if (size == fSize) return true;
  std::unique_ptr<Cell[]> cells(new (std::nothrow) Cell[Count(size)]);
  if (!cells) return false;
  fpCells = std::move(cells);
  fSize = size;
  return true;
}

template class RowOf<double>;
template class RowOf<RawCell>;

}  // namespace NQCommon_940
