// LINPACK's storage schemes behind one face, so that each algorithm is written once. A view t of
// order n is 0-based and stands for a matrix stored by columns:
//
//   t(i, j)      the element
//   t.At(i, j)   its address; below it in memory stand (i + 1, j), (i + 2, j), ...
//   t.Top(j)     the first row of the upper triangle that is stored in column j
//   t.RowEnd(i)  one past the last column of the upper triangle that is stored in row i
//   t.Below(j)   general views: how many rows are stored below the diagonal in column j
#pragma once

#include <algorithm>
#include <cstddef>

namespace NQMath_940::internal {

// FullView is column-major with a leading dimension. T is double or const double in every view.
template <class T>
struct FullView {
  T* a;
  int lda;
  int n;

  T* At(int i, int j) const { return a + i + std::ptrdiff_t{j} * lda; }
  T& operator()(int i, int j) const { return *At(i, j); }
  int Top(int) const { return 0; }
  int RowEnd(int) const { return n; }
  int Below(int j) const { return n - 1 - j; }
};
template <class T>
FullView(T*, int, int) -> FullView<T>;

// PackedView is the upper triangle, column after column:  a00 | a01 a11 | a02 a12 a22
template <class T>
struct PackedView {
  T* ap;
  int n;

  T* At(int i, int j) const { return ap + i + std::ptrdiff_t{j} * (j + 1) / 2; }
  T& operator()(int i, int j) const { return *At(i, j); }
  int Top(int) const { return 0; }
  int RowEnd(int) const { return n; }
};
template <class T>
PackedView(T*, int) -> PackedView<T>;

// BandView has the diagonals of a symmetric band as rows of an array. `above` diagonals lie over
// the main one, which is row `above` of the array.
template <class T>
struct BandView {
  BandView(T* array, int leading, int order, int diagonals)
      : abd(array), lda(leading), n(order), above(diagonals) {}

  T* abd;
  int lda;
  int n;
  int above;

  T* At(int i, int j) const { return abd + (above + i - j) + std::ptrdiff_t{j} * lda; }
  T& operator()(int i, int j) const { return *At(i, j); }
  int Top(int j) const { return std::max(0, j - above); }
  int RowEnd(int i) const { return std::min(n - 1 - i, above) + i + 1; }
};

// GeneralBandView is a band matrix with ml diagonals below the main one and mu above. Row exchanges
// widen its upper triangle to ml + mu diagonals, but row i only as far as the exchanges at steps
// 0 .. i reached. RowEnd(i) gives that end: it must be called for i = 0, 1, .. in turn, each time
// after step i has set ipvt[i].
template <class T>
struct GeneralBandView : BandView<T> {
  GeneralBandView(T* array, int leading, int order, int lower, int upper, const int* pivots)
      : BandView<T>(array, leading, order, lower + upper), ml(lower), mu(upper), ipvt(pivots) {}

  int ml;
  int mu;
  const int* ipvt;
  int reached = 0;

  int Below(int j) const { return std::min(ml, this->n - 1 - j); }
  int RowEnd(int i) { return reached = std::min(std::max(reached, mu + ipvt[i]), this->n); }
};

// ExchangeSymmetric exchanges rows and columns p < q of a symmetric matrix within its leading block
// of order q + 1.
template <class View>
void ExchangeSymmetric(const View& t, int p, int q) {
  std::swap_ranges(t.At(0, p), t.At(p, p), t.At(0, q));
  for (int j = p + 1; j < q; ++j) std::swap(t(p, j), t(j, q));
  std::swap(t(p, p), t(q, q));
}

}  // namespace NQMath_940::internal
