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
#include <memory>
#include <new>
#include <utility>
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

// AlignedDoubles start on a cache line boundary, where a vector never straddles two lines.
class AlignedDoubles {
 public:
  // The constructor makes zeros.
  explicit AlignedDoubles(std::size_t size)
      : AlignedDoubles(std::make_unique<double[]>(size + kLine)) {}

  // Try leaves the values as they come; null when there is no memory for them.
  static std::unique_ptr<AlignedDoubles> Try(std::size_t size) {
    std::unique_ptr<double[]> storage(new (std::nothrow) double[size + kLine]);
    if (!storage) return nullptr;
    return std::unique_ptr<AlignedDoubles>(new (std::nothrow) AlignedDoubles(std::move(storage)));
  }

  double* data() { return fpData; }

 private:
  static constexpr std::size_t kLine = 64 / sizeof(double);

  // Where there is no memory for the object itself, `storage` keeps what it has.
  explicit AlignedDoubles(std::unique_ptr<double[]>&& storage) : fpStorage(std::move(storage)) {
    const auto past = reinterpret_cast<std::uintptr_t>(fpStorage.get()) / sizeof(double) % kLine;
    fpData = fpStorage.get() + (kLine - past) % kLine;
  }

  std::unique_ptr<double[]> fpStorage;
  double* fpData;
};

// PanelView shows vectors side by side: element i of vector p is at
//   data[i / tile * tileStep + i % tile + p * step]
struct PanelView {
  const double* data;
  std::size_t tile;
  std::size_t tileStep;
  std::size_t step;

  const double* At(std::size_t i) const { return data + i / tile * tileStep + i % tile; }
};

// PanelAt shows a panel in tiles of `tile` elements, as PanelIndex counts them where the tiles are
// kPanelTile.
inline PanelView PanelAt(const double* data, std::size_t depth, std::size_t tile = kPanelTile) {
  return {data, tile, tile * depth, tile};
}

// VectorRange stands for vectors first .. first + count - 1 of a panel.
struct VectorRange {
  std::size_t first;
  std::size_t count;
};

// PanelUpdate does c(i,j) <- c(i,j) + a_0[i] b_0[j] + a_1[i] b_1[j] + ..., added one by one in this
// order, for firstRow <= i < endRow and firstColumn <= j < endColumn; in a triangle only for
// j <= i. Element 0 of a's vectors goes with firstRow, element 0 of b's with firstColumn.
struct PanelUpdate {
  double* c;         // element (0, 0)
  double* end;       // behind the last element of the memory that c is in
  std::size_t step;  // from row to row; 0 for the lower triangle packed by rows
  std::size_t firstRow = 0, endRow;
  std::size_t firstColumn = 0, endColumn;
  PanelView a = {};       // endRow - firstRow elements each
  PanelView b = {};       // tiles of kPanelTile, the last one padded
  std::size_t count = 0;  // vectors
  bool fresh = false;     // c is taken for 0, whatever it holds

  // Where the operands are triangles only some vectors differ from 0, and these alone are added up:
  // a_p[i] for p + k <= i (kLower) or p + k >= i (kUpper), b_p[j] for p + k >= j (kLower) or
  // p + k <= j (kUpper).
  enum class Part { kAll, kLower, kUpper };
  Part partOfA = Part::kAll, partOfB = Part::kAll;
  std::size_t k = 0;

  double* Row(std::size_t i) const { return c + (step == 0 ? RowStart(i) : i * step); }
  std::size_t RowEnd(std::size_t i) const { return step == 0 && i < endColumn ? i + 1 : endColumn; }
  // NonZeros gives the vectors that count in the tile of `rows` x `columns` at (i, j).
  VectorRange NonZeros(std::size_t i, std::size_t rows, std::size_t j, std::size_t columns) const {
    std::size_t begin = k, behind = k + count;
    if (partOfA == Part::kUpper && begin < i) begin = i;
    if (partOfB == Part::kLower && begin < j) begin = j;
    if (partOfA == Part::kLower && behind > i + rows) behind = i + rows;
    if (partOfB == Part::kUpper && behind > j + columns) behind = j + columns;
    return behind <= begin ? VectorRange{0, 0} : VectorRange{begin - k, behind - begin};
  }
};

// UpdateOfTriangle is the update of a whole triangle of order n.
inline PanelUpdate UpdateOfTriangle(double* s, std::size_t n, const PanelView& a,
                                    const PanelView& b, std::size_t count) {
  return {.c = s,
          .end = s + RowStart(n),
          .step = 0,
          .endRow = n,
          .endColumn = n,
          .a = a,
          .b = b,
          .count = count};
}

// SweepPanel is what the sweep keeps current while the rest of the matrix waits for a panel of
// pivots: the diagonal at every pivot, and the column of a row of the panel when the row's turn
// comes.
struct SweepPanel {
  static constexpr std::size_t kMostPivots = 32;

  // Row is a row of the panel, whose column holds the first `pivots` pivots of the panel.
  struct Row {
    std::size_t row;
    std::size_t pivots;
  };

  SweepPanel(std::size_t order, std::size_t pivotsToHold)
      : n(order),
        depth(pivotsToHold),
        exempt(WholeTiles(n), -1),
        storage((2 + 2 * depth) * WholeTiles(n) + depth * ColumnStep()),
        diagonal(storage.data()),
        reference(diagonal + WholeTiles(n)),
        u(reference + WholeTiles(n)),
        v(u + depth * WholeTiles(n)),
        columns(v + depth * WholeTiles(n)) {
    rows.reserve(depth);
  }

  // A line more than the length keeps the columns of an order such as 512 out of each other's sets
  // of the cache.
  std::size_t ColumnStep() const { return WholeTiles(n) + 8; }
  double* Column(std::size_t q) const { return columns + q * ColumnStep(); }

  std::size_t n;
  std::size_t depth;                   // pivots that can be held
  std::size_t pivots = 0;              // pivots held so far
  std::size_t pivotRows[kMostPivots];  // and their rows
  std::vector<Row> rows;               // distinct
  std::vector<std::int64_t> exempt;    // 0 for a row that is swept in, otherwise all ones
  std::size_t sweptEnd = 0;            // the rows from here on are exempt
  AlignedDoubles storage;              // of the arrays below, each padded to whole tiles
  double* diagonal;                    // current diagonal
  double* reference;                   // tolerance vector t
  double* u;                           // panels: pivot p adds u_p[j] v_p[i] to (i, j), j <= i
  double* v;
  double* columns;  // of the panel's rows
};

// CholeskyJob is a triangle being factored. MakePivot makes a pivot from its diagonal element and
// the sum of squares to its left: what remains must exceed t[j] * eps, or else the pivot is 0 and
// the row aliased. A NaN exceeds nothing.
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

// CaseRows has one case a row: n values and whatever follows them, the next row `step` further on.
// Memory is read up to `end`, which may cut a tile of the last rows.
struct CaseRows {
  const double* first;
  const double* end;
  std::size_t step;
  std::size_t count;
  std::size_t n;
};

struct PackedKernels {
  void (*update)(const PanelUpdate& job);
  // The rows of a tile of update; a panel `a` that is made for one update has tiles of as many.
  std::size_t tileRows;

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

  // Brings the column of row q of the panel up to date with the pivots held.
  void (*catchUp)(SweepPanel& panel, std::size_t q);

  // Whether each swept row j stays above (s(j,j) - s(j,k) / p * s(j,k)) * eps * t[j] > -1, where k
  // is row q of the panel, its column up to date, and p its pivot. A NaN does not.
  bool (*keepsSweptRows)(const SweepPanel& panel, std::size_t q, double eps);

  // Sweeps row q of the panel, its column up to date, without any test: the column and the diagonal
  // follow at once, and the pivot is appended to u and v for the rest of the matrix.
  void (*sweepInPanel)(SweepPanel& panel, std::size_t q);

  // a_q[i] <- a_q[i] + factors[q step] a_0[i] + factors[q step + 1] a_1[i] + ..., with all a_p of
  // p < q, for q = 0 .. depth-1 one after the other, in a panel of that depth with padded tiles.
  void (*solveInPanel)(double* a, std::size_t n, std::size_t depth, const double* factors,
                       std::size_t step);

  // Factors the triangle, S = L L', in groups of groupRows rows of which `groups` are made at a
  // time. work holds groups * groupRows * (n + groupRows) doubles.
  void (*cholesky)(CholeskyJob& job, double* work, std::size_t groups);
  std::size_t groupRows;
};

// KernelsFor gives the table of `isa`, lowered to what the machine has.
const PackedKernels& KernelsFor(Isa isa);

}  // namespace NQMath_940::internal
