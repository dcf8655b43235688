#include <nqcommon/math/numeric/NQMathFun.h>

#include <cassert>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/kernels/triangular.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

constexpr Walk kGrowing = Walk::kGrowing;

// Whether n entries from `start` on lie inside v. Growing steps that start negative are not judged.
template <Walk walk>
bool Holds(const std::vector<double>& v, Index n, Index start, Index inc) {
  if (n < 1 || (walk == kGrowing && inc < 0)) return true;
  const Index extra = walk == kGrowing ? (n - 2) * (n - 1) / 2 : 0;
  const Index last = start + (n - 1) * (inc < 0 ? -inc : inc) + extra;
  return start >= 0 && last < static_cast<Index>(v.size());
}

// The entry at `start`; null for an empty run, whose start may be anywhere.
template <Walk walk = Walk::kFixed, class Vector>
auto* Run(Vector& v, Index n, Index start, [[maybe_unused]] Index inc) {
  assert(Holds<walk>(v, n, start, inc));
  return n < 1 ? nullptr : v.data() + start;
}

bool HoldsTriangle(const std::vector<double>& packed, std::size_t n) {
  return packed.size() >= RowStart(n);
}

}  // namespace

void NQMathFun::Daxpy(Index n, double a, const std::vector<double>& x, Index startx, Index incx,
                      std::vector<double>& y, Index starty, Index incy) {
  Axpy(n, a, Run(x, n, startx, incx), incx, Run(y, n, starty, incy), incy);
}

double NQMathFun::DDot(Index n, const std::vector<double>& x, Index startx, Index incx,
                       const std::vector<double>& y, Index starty, Index incy) {
  return Dot(n, Run(x, n, startx, incx), incx, Run(y, n, starty, incy), incy);
}

void NQMathFun::DScal(Index n, double a, std::vector<double>& x, Index start, Index inc) {
  Scal(n, a, Run(x, n, start, inc), inc);
}

void NQMathFun::DLoad(Index n, double a, std::vector<double>& x, Index start, Index inc) {
  Fill(n, a, Run(x, n, start, inc), inc);
}

double NQMathFun::DSum(Index n, const std::vector<double>& x, Index inc) {
  const double* first = Run(x, n, 0, inc);
  if (n > 0 && inc == 0) return static_cast<double>(n) * *first;
  return Sum(n, first, inc);
}

double NQMathFun::DASum(Index n, const std::vector<double>& x, Index start, Index inc) {
  return ASum(n, Run(x, n, start, inc), inc);
}

double NQMathFun::DNrm2(Index n, const std::vector<double>& x, Index start, Index inc) {
  return Nrm2(n, Run(x, n, start, inc), inc);
}

void NQMathFun::LRZero(std::vector<double>& x, Index start, Index n) {
  Fill(n, 0.0, Run(x, n, start, 1), 1);
}

void NQMathFun::IIAxpy(Index n, double a, const std::vector<double>& x, Index sx, Index ix,
                       std::vector<double>& y, Index sy, Index iy) {
  Axpy<kGrowing>(n, a, Run<kGrowing>(x, n, sx, ix), ix, Run<kGrowing>(y, n, sy, iy), iy);
}

double NQMathFun::IIDot(Index n, const std::vector<double>& x, Index sx, Index ix,
                        const std::vector<double>& y, Index sy, Index iy) {
  return Dot<kGrowing>(n, Run<kGrowing>(x, n, sx, ix), ix, Run<kGrowing>(y, n, sy, iy), iy);
}

void NQMathFun::IIInit(Index n, double a, std::vector<double>& x, Index s, Index i) {
  Fill<kGrowing>(n, a, Run<kGrowing>(x, n, s, i), i);
}

void NQMathFun::IIScal(Index n, double a, std::vector<double>& x, Index s, Index i) {
  Scal<kGrowing>(n, a, Run<kGrowing>(x, n, s, i), i);
}

void NQMathFun::LTGltl(int n, std::vector<double>& L) {
  if (n < 1) return;
  const auto order = static_cast<std::size_t>(n);
  if (!HoldsTriangle(L, order)) return;
  TransTimesTriangle(L.data(), order);
}

double NQMathFun::RVD(const std::vector<double>& S, int n, int r, const std::vector<double>& x,
                      Index inc) {
  if (r < 0 || r >= n) return NQMV::Missing();
  const auto order = static_cast<std::size_t>(n);
  if (!HoldsTriangle(S, order) || !Holds<Walk::kFixed>(x, n, 0, inc)) return NQMV::Missing();
  double sum = 0;
  Cursor<Walk::kFixed> at(n, inc);
  ForEachInRow(S.data(), order, static_cast<std::size_t>(r), [&](std::size_t, double element) {
    sum += element * x[static_cast<std::size_t>(*at)];
    ++at;
  });
  return sum;
}

double NQMathFun::VSV(const std::vector<double>& S, int n, const std::vector<double>& v) {
  if (n < 0) return NQMV::Missing();
  const auto order = static_cast<std::size_t>(n);
  if (v.size() < order || !HoldsTriangle(S, order)) return NQMV::Missing();
  double sum = 0;
  for (std::size_t i = 0; i < order; ++i) {
    const double* row = S.data() + RowStart(i);
    sum += v[i] * (2 * Dot(static_cast<Index>(i), row, 1, v.data(), 1) + row[i] * v[i]);
  }
  return sum;
}

}  // namespace NQMath_940
