// The lower triangle of a square matrix packed by rows, the storage of every symmetric matrix here.
//
//   order 3:  s00 | s10 s11 | s20 s21 s22
//
// Positions are std::size_t: i(i+1)/2 leaves 32 bits from order 46341 on.
#pragma once

#include <cstddef>

namespace NQMath_940::internal {

// Position of element (i, 0), and the number of elements in a triangle of order i.
constexpr std::size_t RowStart(std::size_t i) { return i * (i + 1) / 2; }

// Position of element (i, j) of the lower triangle, j <= i.
constexpr std::size_t LowerIndex(std::size_t i, std::size_t j) { return RowStart(i) + j; }

// Position of element (i, j) or (j, i): the same cell.
constexpr std::size_t SymIndex(std::size_t i, std::size_t j) {
  return i >= j ? LowerIndex(i, j) : LowerIndex(j, i);
}

constexpr std::size_t DiagIndex(std::size_t i) { return LowerIndex(i, i); }

// Calls f(j, element) for the elements j = first .. last-1 of row i of the full symmetric matrix:
// along the packed row up to the diagonal, then down the column, whose step grows by one a row.
template <class Packed, class F>
void ForEachInRowPart(Packed* s, std::size_t i, std::size_t first, std::size_t last, F f) {
  Packed* row = s + RowStart(i);
  std::size_t j = first;
  for (; j < last && j <= i; ++j) f(j, row[j]);
  for (std::size_t at = LowerIndex(j, i); j < last; ++j, at += j) f(j, s[at]);
}

// The same for the whole row of a matrix of order n.
template <class Packed, class F>
void ForEachInRow(Packed* s, std::size_t n, std::size_t i, F f) {
  ForEachInRowPart(s, i, 0, n, f);
}

}  // namespace NQMath_940::internal
