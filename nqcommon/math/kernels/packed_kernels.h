// The vector loops below the dense symmetric matrix, one table of them per instruction set.
//
// Every form does the same additions and multiplications on an element in the same order, and never
// fuses them, so all forms give the same bits: the instruction set decides the speed alone.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>
#include <nqcommon/math/kernels/packed_triangle.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <vector>

namespace NQMath_940::internal {

// A panel holds up to `depth` vectors of length n side by side, in tiles of 16 elements:
//
//   element i of vector p is at (i / 16 * depth + p) * 16 + i % 16
//
// A tile of all vectors is one contiguous run, so a kernel streams through a panel whatever its
// depth. 16 doubles are two vectors of the widest instruction set. The last tile is padded.
inline constexpr std::size_t kPanelTile = 16;

constexpr std::size_t WholeTiles(std::size_t n) {
  return (n + kPanelTile - 1) / kPanelTile * kPanelTile;
}

constexpr std::size_t PanelIndex(std::size_t depth, std::size_t p, std::size_t i) {
  return (i / kPanelTile * depth + p) * kPanelTile + i % kPanelTile;
}

// Zeroed doubles on a cache line boundary, where a vector never straddles two lines.
class AlignedDoubles {
 public:
  explicit AlignedDoubles(std::size_t size) : fvStorage(size + kLine - 1) {
    const auto past = reinterpret_cast<std::uintptr_t>(fvStorage.data()) / sizeof(double) % kLine;
    fpData = fvStorage.data() + (kLine - past) % kLine;
  }
  AlignedDoubles(const AlignedDoubles&) = delete;
  AlignedDoubles& operator=(const AlignedDoubles&) = delete;

  // Null when there is no memory for them.
  static std::unique_ptr<AlignedDoubles> Try(std::size_t size) {
    try {
      return std::make_unique<AlignedDoubles>(size);
    } catch (const std::exception&) {
      return nullptr;
    }
  }

  double* data() { return fpData; }

 private:
  static constexpr std::size_t kLine = 64 / sizeof(double);
  std::vector<double> fvStorage;
  double* fpData;
};

// What the sweep keeps current at every pivot while the rest of the matrix waits for a panel of
// pivots: the columns of the panel's rows, and the diagonal.
struct SweepPanel {
  SweepPanel(std::size_t order, std::size_t pivotsToHold)
      : n(order),
        depth(pivotsToHold),
        exempt(WholeTiles(n), -1),
        storage((3 + 2 * depth) * WholeTiles(n) + depth * ColumnStep()),
        diagonal(storage.data()),
        reference(diagonal + WholeTiles(n)),
        factor(reference + WholeTiles(n)),
        u(factor + WholeTiles(n)),
        v(u + depth * WholeTiles(n)),
        columns(v + depth * WholeTiles(n)) {
    rows.reserve(depth);
  }

  // A line more than the length keeps the columns of an order such as 512 out of each other's sets
  // of the cache.
  std::size_t ColumnStep() const { return WholeTiles(n) + 8; }
  double* Column(std::size_t q) const { return columns + q * ColumnStep(); }

  std::size_t n;
  std::size_t depth;
  std::size_t pivots = 0;            // pivots held so far
  std::vector<std::size_t> rows;     // the panel's rows, distinct
  std::vector<std::int64_t> exempt;  // 0 for a row that is swept in, otherwise all ones
  AlignedDoubles storage;            // of the arrays below, each padded to whole tiles
  double* diagonal;                  // current diagonal
  double* reference;                 // tolerance vector t
  double* factor;                    // v of the last pivot
  double* u;                         // panels: pivot p adds u_p[j] v_p[i] to (i, j), j <= i
  double* v;
  double* columns;  // current columns of the panel's rows
};

// A triangle being factored, and how a pivot is made from its diagonal element and the sum of
// squares to its left: what remains must exceed t[j] * eps, or else the pivot is 0 and the row
// aliased. A NaN exceeds nothing.
struct CholeskyJob {
  double* s;
  std::size_t n;
  const double* t;
  double eps;
  std::vector<bool>* aliased;  // when given, n flags
  std::size_t aliasedRows = 0;

  double MakePivot(std::size_t j, double sum) {
    double& element = s[DiagIndex(j)];
    const double remainder = element - sum;
    const bool isAliased = !(remainder > t[j] * eps);
    aliasedRows += isAliased;
    if (aliased != nullptr) (*aliased)[j] = isAliased;
    return element = isAliased ? 0.0 : std::sqrt(remainder);
  }
};

// Cases one a row: n values and whatever follows them, the next row `step` further on. Memory is
// read up to `end`, which may cut a tile of the last rows.
struct CaseRows {
  const double* first;
  const double* end;
  std::size_t step;
  std::size_t count;
  std::size_t n;
};

struct PackedKernels {
  // s(i,j) <- s(i,j) + u_0[j] v_0[i] + u_1[j] v_1[i] + ..., j <= i, added one by one in this order;
  // u and v are panels of the same depth of which the first `count` vectors are used.
  void (*rankUpdate)(double* s, std::size_t n, const double* u, const double* v, std::size_t depth,
                     std::size_t count);

  // c(i,j) <- c(i,j) + a_0[i] b_0[j] + a_1[i] b_1[j] + ..., the same for a whole m x n matrix whose
  // rows are `step` apart.
  void (*addProduct)(double* c, std::size_t step, std::size_t m, std::size_t n, const double* a,
                     const double* b, std::size_t depth, std::size_t count);

  // sums[j] += w[p] x_p[j], case after case; same[j] <- 0 when an x_p[j] differs from value[j]. All
  // arrays of n are padded to whole tiles here and in packCases.
  void (*sumCases)(const CaseRows& cases, const double* w, const double* value, std::int64_t* same,
                   double* sums);

  // The cases as vectors of two panels: u_p[j] <- x_p[j] - center[j], v_p[j] <- w[p] u_p[j], and
  // sums[j] += v_p[j]. u and v may be one panel when all w are 1.
  void (*packCases)(const CaseRows& cases, const double* w, const double* center, double* u,
                    double* v, std::size_t depth, double* sums);

  // s(i,j) += (w (x[i] - center[i])) (x[j] - center[j]), j <= i: one case, without panels.
  void (*addCase)(double* s, std::size_t n, const double* x, const double* center, double w);

  // Sweeps row k of the packed triangle, in or out, without any test and without allocating.
  void (*sweepRow)(double* s, std::size_t n, std::size_t k);

  // Whether each swept row j stays above (s(j,j) - s(j,k) / p * s(j,k)) * eps * t[j] > -1, where k
  // is row q of the panel and p its pivot. A NaN does not.
  bool (*keepsSweptRows)(const SweepPanel& panel, std::size_t q, double eps);

  // Sweeps row q of the panel without any test: the panel's columns and the diagonal follow at
  // once, and the pivot is appended to u and v for the rest of the matrix.
  void (*sweepInPanel)(SweepPanel& panel, std::size_t q);

  // Factors the triangle, S = L L'. work holds (n + kPanelTile) * kPanelTile doubles.
  void (*cholesky)(CholeskyJob& job, double* work);
};

// The table of `isa`, lowered to what the machine has.
const PackedKernels& KernelsFor(Isa isa);

}  // namespace NQMath_940::internal
