// Level-1 loops over strided runs of doubles: the one place where each is written.
//
//   kFixed    x[0], x[inc], x[2 inc], ...  A negative stride visits the same entries as its
//             absolute value, from the far end (the reference BLAS convention); stride 0 stays on
//             one entry.
//   kGrowing  the k-th step (k = 0, 1, ...) advances by inc + k. From (i, j) of a lower triangle
//             packed by rows, inc = i + 1 walks down column j.
//
// Sums add in order of k into one accumulator, so their value is reproducible to the bit. A count
// below 1 visits nothing and touches no pointer. Runs may overlap.
#pragma once

#include <cmath>
#include <cstddef>

namespace NQMath_940::internal {

using Index = std::ptrdiff_t;

enum class Walk { kFixed, kGrowing };

template <Walk walk>
class Cursor {
 public:
  Cursor(Index n, Index inc)
      : fAt(walk == Walk::kFixed && inc < 0 ? (1 - n) * inc : 0), fStep(inc) {}

  Index operator*() const { return fAt; }

  void operator++() {
    fAt += fStep;
    if constexpr (walk == Walk::kGrowing) ++fStep;
  }

 private:
  Index fAt;
  Index fStep;
};

// Calls f(x_k) for k = 0 .. n-1.
template <Walk walk = Walk::kFixed, class T, class F>
void Visit(Index n, T* x, Index inc, F f) {
  Cursor<walk> at(n, inc);
  for (Index k = 0; k < n; ++k, ++at) f(x[*at]);
}

// Calls f(x_k, y_k) for k = 0 .. n-1.
template <Walk walk = Walk::kFixed, class X, class Y, class F>
void VisitPairs(Index n, X* x, Index incx, Y* y, Index incy, F f) {
  if (walk == Walk::kFixed && incx == 1 && incy == 1) {  // a loop that the compiler can vectorise
    for (Index k = 0; k < n; ++k) f(x[k], y[k]);
    return;
  }
  Cursor<walk> atX(n, incx);
  Cursor<walk> atY(n, incy);
  for (Index k = 0; k < n; ++k, ++atX, ++atY) f(x[*atX], y[*atY]);
}

template <Walk walk = Walk::kFixed>
double Dot(Index n, const double* x, Index incx, const double* y, Index incy) {
  double sum = 0;
  VisitPairs<walk>(n, x, incx, y, incy, [&sum](double xk, double yk) { sum += xk * yk; });
  return sum;
}

// y += a x. Nothing is read when a is 0, so NaN and infinities in x do not spread.
template <Walk walk = Walk::kFixed>
void Axpy(Index n, double a, const double* x, Index incx, double* y, Index incy) {
  if (a == 0) return;
  if (a == 1)
    VisitPairs<walk>(n, x, incx, y, incy, [](const double& xk, double& yk) { yk += xk; });
  else if (a == -1)
    VisitPairs<walk>(n, x, incx, y, incy, [](const double& xk, double& yk) { yk -= xk; });
  else
    VisitPairs<walk>(n, x, incx, y, incy, [a](const double& xk, double& yk) { yk += a * xk; });
}

// y += a x with unit strides, a = 0 included: NaN and infinities in x spread.
inline void AddScaled(std::size_t n, double a, const double* x, double* y) {
  for (std::size_t k = 0; k < n; ++k) y[k] += a * x[k];
}

template <Walk walk = Walk::kFixed>
void Fill(Index n, double a, double* x, Index inc) {
  Visit<walk>(n, x, inc, [a](double& xk) { xk = a; });
}

// x *= a. a = 0 stores zeros, which clears NaN and infinities too.
template <Walk walk = Walk::kFixed>
void Scal(Index n, double a, double* x, Index inc) {
  if (a == 1) return;
  if (a == 0)
    Fill<walk>(n, 0.0, x, inc);
  else if (a == -1)
    Visit<walk>(n, x, inc, [](double& xk) { xk = -xk; });
  else
    Visit<walk>(n, x, inc, [a](double& xk) { xk *= a; });
}

inline double Sum(Index n, const double* x, Index inc) {
  double sum = 0;
  Visit(n, x, inc, [&sum](double xk) { sum += xk; });
  return sum;
}

inline double ASum(Index n, const double* x, Index inc) {
  double sum = 0;
  Visit(n, x, inc, [&sum](double xk) { sum += std::fabs(xk); });
  return sum;
}

// Euclidean norm as scale * sqrt(ssq), scale the largest magnitude met so far, so that no square
// overflows or underflows (Lawson, Hanson, Kincaid and Krogh 1979, ACM Algorithm 539, in the
// one-pass form of Hammarling). Any NaN gives NaN, otherwise any infinity gives infinity.
inline double Nrm2(Index n, const double* x, Index inc) {
  double scale = 0;
  double ssq = 1;
  Visit(n, x, inc, [&scale, &ssq](double xk) {
    const double size = std::fabs(xk);
    if (size > scale) {
      const double ratio = scale / size;
      ssq = 1 + ssq * (ratio * ratio);
      scale = size;
    } else {
      // Equal sizes are not divided: two zeros or two infinities would make a NaN.
      const double ratio = size == scale ? 1 : size / scale;
      ssq += ratio * ratio;
    }
  });
  return scale * std::sqrt(ssq);
}

}  // namespace NQMath_940::internal
