#include <nqcommon/math/kernels/tridiagonal.h>

#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/plane_rotations.h>
#include <nqcommon/math/kernels/tridiagonal_kernels.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace NQMath_940::internal {
namespace {

// ---- Range --------------------------------------------------------------------------------------

// Enlarge keeps the largest magnitude met; NaN is passed over.
void Enlarge(double& largest, const double* x, std::size_t count) {
  for (std::size_t k = 0; k < count; ++k) largest = std::max(largest, std::fabs(x[k]));
}

// ScaleFor gives the exponent of the power of two that brings `largest` to about 1; 0 where nothing
// needs scaling, far from the ends of the range, or where scaling is no help, for 0 and infinity.
int ScaleFor(double largest) {
  constexpr int kFar = 400;  // products of two stay inside, with room for the sums
  if (largest == 0 || !std::isfinite(largest)) return 0;
  const int exponent = std::ilogb(largest);
  return std::abs(exponent) < kFar ? 0 : -exponent;
}

void Scale(double* x, std::size_t count, int power) {
  if (power == 0) return;
  for (std::size_t k = 0; k < count; ++k) x[k] = std::ldexp(x[k], power);
}

}  // namespace

// ---- Reduction ----------------------------------------------------------------------------------

// The update of the triangle by one reflection waits for the product with the next one and is done
// in the same pass; only the row that the next reflection is made from is updated before.
void ReduceToTridiagonal(double* s, std::size_t n, double* d, double* e, Isa isa) {
  const TridiagonalKernels& kernels = TridiagonalKernelsFor(isa);
  double largest = 0;
  Enlarge(largest, s, RowStart(n));
  const int power = ScaleFor(largest);
  Scale(s, RowStart(n), power);
  const std::size_t step = WholeLines(n);
  AlignedDoubles storage(4 * step);
  double* u = storage.data();  // S - u q' - q u' waits
  double* q = u + step;
  double* v = q + step;  // the next reflection
  double* y = v + step;
  bool waits = false;
  for (std::size_t i = n; i-- > 0;) {
    double* row = s + RowStart(i);
    std::fill(std::copy_n(row, i + 1, v), v + WholeLines(i + 1), 0.0);
    if (waits) kernels.updateRow(v, i + 1, u, q);
    d[i] = std::exchange(v[i], 0.0);
    e[i] = 0;
    if (i == 0) break;
    const double h = kernels.makeReflection(v, i, e[i]);
    std::copy_n(v, i, row);
    row[i] = h;
    if (!waits && h == 0) continue;
    if (!waits) {
      std::fill_n(u, step, 0.0);
      std::fill_n(q, step, 0.0);
    }
    kernels.rankTwoAndProduct(s, i, u, q, v, y);
    std::fill(y + i, y + WholeLines(i), 0.0);
    waits = h != 0;
    if (waits) kernels.makeUpdate(y, v, h, i);
    std::swap(u, v);
    std::swap(q, y);
  }
  Scale(d, n, -power);
  Scale(e, n, -power);
}

// ---- Eigenvalues --------------------------------------------------------------------------------

namespace {

// Elements beside the diagonal that are smaller, hundreds of digits below the norm, are taken for
// zero: the reduction of a matrix of low rank leaves rounding errors of rounding errors, down to
// where there are too few digits left for the iteration to converge.
constexpr double kNothing = 0x1p-960;

// The plane rotation with s r = f and c r = g; r = 0 when both are 0.
struct PlaneRotation {
  double r, s, c;
};

// The larger of f and g divides the smaller, so that nothing overflows or underflows on the way.
[[gnu::noinline]] PlaneRotation DividingRotation(double f, double g) {
  const bool fIsLarger = std::fabs(f) >= std::fabs(g);
  const double larger = fIsLarger ? f : g;
  if (larger == 0) return {0, 0, 1};
  const double ratio = (fIsLarger ? g : f) / larger;
  const double root = std::sqrt(ratio * ratio + 1);
  const double ofLarger = 1 / root;
  const double ofSmaller = ratio * ofLarger;
  return {larger * root, fIsLarger ? ofLarger : ofSmaller, fIsLarger ? ofSmaller : ofLarger};
}

// QlStep does one QL step on rows l .. m of T, e[i] coupling rows i and i + 1. The pairs c, s of
// its rotations go to `pairs`, which holds 2 (m - l) values, when there is one. It returns the
// number of rotations.
//
// A rotation is made from the squares of its two components where these stay in range, as they do
// unless both components are next to nothing: the next rotation waits for this one, and this way is
// half as long as dividing.
template <bool kKeepRotations>
std::size_t QlStep(double* d, double* e, std::size_t l, std::size_t m, double* pairs) {
  constexpr double kLeastSum = 0x1p-900;
  double g = (d[l + 1] - d[l]) / (2 * e[l]);
  const double slope = std::sqrt(g * g + 1);
  g = d[m] - d[l] + (g >= 0 ? e[l] / (g + slope) : e[l] / (g - slope));
  double s = 1, c = 1, p = 0;
  for (std::size_t i = m; i-- > l;) {
    const double f = s * e[i];
    const double b = c * e[i];
    const double sum = f * f + g * g;
    if (sum >= kLeastSum) [[likely]] {
      const double root = std::sqrt(sum);
      const double reciprocal = 1 / sum;
      e[i + 1] = root;
      s = f * reciprocal * root;
      c = g * reciprocal * root;
    } else {
      const PlaneRotation rotation = DividingRotation(f, g);
      e[i + 1] = rotation.r;
      if (rotation.r == 0) {  // f and g underflowed: T falls apart below row i
        d[i + 1] -= p;
        e[m] = 0;
        return m - 1 - i;
      }
      s = rotation.s;
      c = rotation.c;
    }
    g = d[i + 1] - p;
    const double r = (d[i] - g) * s + 2 * c * b;
    p = s * r;
    d[i + 1] = g + p;
    g = c * r - b;
    if constexpr (kKeepRotations) {
      *pairs++ = c;
      *pairs++ = s;
    }
  }
  d[l] -= p;
  e[l] = g;
  e[m] = 0;
  return m - l;
}

}  // namespace

std::size_t QlEigenvalues(double* d, const double* e, std::size_t n, double tolerance, int maxIter,
                          RotationBatch* rotations) {
  if (n == 0) return 0;
  std::vector<double> next(e + 1, e + n);  // next[i] couples rows i and i + 1
  next.push_back(0);
  double largest = 0;
  Enlarge(largest, d, n);
  Enlarge(largest, next.data(), n);
  const int power = ScaleFor(largest);
  Scale(d, n, power);
  Scale(next.data(), n, power);
  const auto couples = [&](std::size_t m) {
    const double size = std::fabs(next[m]) < kNothing ? 0 : std::fabs(next[m]);
    return !(size <= tolerance * (std::fabs(d[m]) + std::fabs(d[m + 1])));
  };
  std::size_t found = 0;
  for (int round = 0; found < n && round < maxIter;) {
    std::size_t m = found;
    while (m + 1 < n && couples(m)) ++m;
    if (m == found) {
      ++found;
      round = 0;
      continue;
    }
    ++round;
    if (rotations == nullptr) {
      QlStep<false>(d, next.data(), found, m, nullptr);
    } else {
      double* pairs = rotations->Begin(m - 1, m - found);
      rotations->End(QlStep<true>(d, next.data(), found, m, pairs));
    }
  }
  Scale(d, n, -power);
  return found;
}

// ---- Eigenvectors -------------------------------------------------------------------------------

void BackTransform(const double* s, std::size_t n, double* z, Isa isa) {
  bool some = false;
  for (std::size_t i = 1; i < n && !some; ++i) some = s[DiagIndex(i)] != 0;
  if (!some) return;
  const TridiagonalKernels& kernels = TridiagonalKernelsFor(isa);
  const std::size_t step = WholeLines(n);
  AlignedDoubles rows(kernels.rowsAtOnce * step);
  for (std::size_t i = 0; i < n; i += kernels.rowsAtOnce) {
    const std::size_t count = std::min(kernels.rowsAtOnce, n - i);
    for (std::size_t r = 0; r < count; ++r) std::copy_n(z + (i + r) * n, n, rows.data() + r * step);
    kernels.reflectRows({s, n}, rows.data());
    for (std::size_t r = 0; r < count; ++r) std::copy_n(rows.data() + r * step, n, z + (i + r) * n);
  }
}

}  // namespace NQMath_940::internal
