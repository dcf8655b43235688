// Products of dense operands, the loops below every product of two matrices.
//
//   c(i,j) = sum over k = 0 .. inner-1 of a(i,k) b(k,j), added in the order of k from 0, without
//            the k at which a triangular operand is 0 by its form
//
// Outputs and inputs are different arrays. A dimension may be 0.
#pragma once

#include <cstddef>

#include <nqcommon/math/kernels/cpu_dispatch.h>

namespace NQMath_940::internal {

// A matrix as it lies in memory.
//
//   kRows      element (i, j) at data[i step + j]
//   kColumns   element (i, j) at data[j step + i]: the transpose of kRows
//   kTriangle  symmetric, the lower triangle packed by rows (packed_triangle.h)
//   kLower     the same memory as a triangular matrix, 0 above the diagonal
//   kUpper     its transpose, 0 below the diagonal
struct Operand {
  enum class Layout { kRows, kColumns, kTriangle, kLower, kUpper };

  Layout layout;
  const double* data;
  std::size_t step;
};

inline Operand RowsAt(const double* data, std::size_t step) {
  return {Operand::Layout::kRows, data, step};
}
inline Operand TransposeOf(const double* data, std::size_t step) {
  return {Operand::Layout::kColumns, data, step};
}
inline Operand TriangleAt(const double* data) { return {Operand::Layout::kTriangle, data, 0}; }
inline Operand LowerAt(const double* data) { return {Operand::Layout::kLower, data, 0}; }
inline Operand UpperAt(const double* data) { return {Operand::Layout::kUpper, data, 0}; }

inline Operand TransposeOf(const Operand& a) {
  switch (a.layout) {
    case Operand::Layout::kRows:
      return TransposeOf(a.data, a.step);
    case Operand::Layout::kColumns:
      return RowsAt(a.data, a.step);
    case Operand::Layout::kLower:
      return UpperAt(a.data);
    case Operand::Layout::kUpper:
      return LowerAt(a.data);
    default:
      return a;
  }
}

// C = A B, C m x n row after row, and the lower triangle, packed, of C = A B of order n. In tiles
// of vectors, with work memory for a block of each operand; without that, and for the smallest
// products, in plain loops.
void Multiply(const Operand& a, const Operand& b, std::size_t m, std::size_t inner, std::size_t n,
              double* c, Isa isa = BestIsa());
void MultiplyLower(const Operand& a, const Operand& b, std::size_t n, std::size_t inner, double* c,
                   Isa isa = BestIsa());

// The same in plain loops: the order of operations that the fast form keeps to the bit.
void MultiplyPlain(const Operand& a, const Operand& b, std::size_t m, std::size_t inner,
                   std::size_t n, double* c);
void MultiplyLowerPlain(const Operand& a, const Operand& b, std::size_t n, std::size_t inner,
                        double* c);

}  // namespace NQMath_940::internal
