// Memory that ends in rectangular and sparse matrices, sparse vectors, eigenvalues and quadrature.
#include <nqcommon/common/display.h>
#include <nqcommon/math/matrix/NQEigenValues.h>
#include <nqcommon/math/numeric/BoundsList.h>
#include <nqcommon/math/numeric/LobattoQuad.h>

#include <ostream>
#include <set>

#include "math/matrix/matrix_support.h"
#include "support/failing_new.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

struct Peak : IIntegrand {
  double Evaluate(double x) override { return 1 / (1e-4 + (x - 1) * (x - 1)); }
};

// Operands and whatever an operation may answer through. Orders are large enough for the fast forms
// of the kernels, which have work memory of their own.
struct Objects {
  static constexpr int m = 26, n = 24;
  std::mt19937 random{3};
  NQRectMatrix r = RandomRect(m, n, random), b = RandomRect(n, n, random), rect{1, 1, true};
  NQSparseRectMatrix sparse = RandomSparse(n, n, 5, random), slots{1, n, 5}, into{1, n, n};
  NQSymMatrix s = RandomSym(n, random), e{n, true}, sym{1, true};
  NQDiagMatrix diagonal{RandomVector(n, random)};
  Values v = RandomVector(m, random), w = RandomVector(n, random), values{7};
  Indices indices{1, 4, 7, 9, 20}, list{9};
  Values elements{1, 2, 3, 4, 5};
  NQSparseVector view{indices, elements};
  NQBitSet spread = NQBitSet(m + n), set = NQBitSet(3), set2 = NQBitSet(4);
  std::vector<Indices> lists{{1}};
  std::vector<Values> columns{{1}};
  NQEigenValues eigen;
  bool flag = false;
  Peak peak;
  LobattoQuad quad{&peak};
  BoundsList intervals{&quad};

  Objects() {
    e.AddToDiagonal(4);
    spread.SetRange(0, n - 1, true);
    into.AddRow();
    eigen.SetHMatrix(s);
    intervals.Initialize(0, 1);
    quad.GetWarnings().AddWarning(NQCommon_940::NQStatus(901, true),
                                  NQCommon_940::NQWarnings::ToBoth);
  }

  Values State() const {
    Values all{1.0 * sparse.GetCapacity(), 1.0 * slots.GetCapacity(), 1.0 * flag};
    const auto add = [&all](const auto& run) {
      all.push_back(static_cast<double>(run.size()));
      all.insert(all.end(), run.begin(), run.end());
    };
    for (const Dense& d :
         {ToDense(r), ToDense(b), ToDense(rect), ToDense(sparse), ToDense(slots), ToDense(into),
          ToDense(s), ToDense(sym.IsValidMatrix() ? sym : NQSymMatrix())})
      for (const Values& row : d) add(row);
    add(values);
    add(list);
    for (const Indices& l : lists) add(l);
    for (const Values& c : columns) add(c);
    for (const NQBitSet* bits : {&set, &set2}) {
      for (int i = 0; i < bits->Size(); ++i) all.push_back(bits->IsIn(i));
    }
    return all;
  }
};

// What a failure leaves behind.
enum Leaves { kNothingChanged, kInvalid, kAnything };

// A call that answers like `call` without a failure must leave what that leaves; any other answer is
// one that means failure, and leaves the objects alone, or the one that is built invalid.
MemoryCase Case(const char* name, Leaves leaves, double (*call)(Objects&)) {
  return {name, [=](Injection& inject) {
            Objects wanted, got;
            const Values before = got.State();
            const double want = call(wanted);
            double answer = 0;
            inject([&] { answer = call(got); });
            const Values after = got.State();
            if (answer == want && after == wanted.State()) return Verdict{true};
            const bool isFailure = inject.HasFailed() && answer != want &&
                                   std::set<double>{0, -1, -2, kMissing}.contains(answer);
            const bool isLeft =
                leaves == kAnything || (leaves == kNothingChanged && after == before) ||
                (leaves == kInvalid && !(got.r.IsValidMatrix() && got.rect.IsValidMatrix() &&
                                         got.sparse.IsValidMatrix() && got.slots.IsValidMatrix()));
            return Verdict{isFailure && isLeft, std::to_string(answer)};
          }};
}

#define NQ_CASE(leaves, ...) \
  Case(#__VA_ARGS__, leaves, \
       []([[maybe_unused]] Objects& o) { return static_cast<double>(__VA_ARGS__); })
#define NQ_KEEPS(...) NQ_CASE(kNothingChanged, __VA_ARGS__)
#define NQ_BREAKS(...) NQ_CASE(kInvalid, __VA_ARGS__)

template <class Displayed>
double Display(const Displayed& object) {
  static std::ostream nowhere(nullptr);
  NQDisplay_940::SetOutStream(nowhere);
  object.Display();
  if constexpr (requires { object.DisplayF(); }) object.DisplayF();
  return 1;
}

double ComputeNew(Objects& o) {
  NQEigenValues eigen(o.s, o.e, 1e-12, 30);
  return eigen.IsValidEMatrix() ? eigen.Compute(o.values) : -1;
}

TEST(Memory, RectangularMatrices) {
  RunMemoryCases("NQRectMatrix", {
                                     NQ_KEEPS(NQRectMatrix(9, 9, true).IsValidMatrix()),
                                     NQ_BREAKS((o.rect = o.r).IsValidMatrix()),
                                     NQ_BREAKS(o.r.SetNRowsCols(60, 60, true)),
                                     NQ_BREAKS(o.r.AddRow()),
                                     NQ_BREAKS(o.r.AddRow(o.view)),
                                     NQ_BREAKS(o.r.AddColumn()),
                                     NQ_KEEPS(o.r.Transpose()),
                                     NQ_KEEPS(o.r.GetRow(1, o.values)),
                                     NQ_KEEPS(o.r.GetCol(1, o.values)),
                                     NQ_KEEPS(o.rect.CopyRows(o.r, 1, 20)),
                                     NQ_KEEPS(o.rect.CopyRows(o.sparse, 1, 20)),
                                     NQ_KEEPS(o.rect.CopyColumns(o.r, 1, 20)),
                                     NQ_KEEPS(o.r.CopyRowToRow(2, 0, o.into)),
                                     NQ_KEEPS(o.r.ExtractColumns(o.indices, o.rect)),
                                     NQ_KEEPS(o.r.ExtractRows(o.indices, o.rect)),
                                     NQ_KEEPS(o.r.ShiftColumns(3, o.rect)),
                                     NQ_KEEPS(o.r.CreateBlockDiagonal(2, o.rect)),
                                     NQ_KEEPS(o.b.Expand(o.spread, true, o.rect)),
                                     NQ_KEEPS(o.b.ExpandSquare(o.spread, o.rect)),
                                     NQ_KEEPS(o.r.ComputeMatrixProduct(o.b, o.rect)),
                                     NQ_KEEPS(o.r.ComputeMatrixProduct(o.sparse, o.rect)),
                                     NQ_KEEPS(o.r.ComputeMatrixProduct(o.s, o.rect)),
                                     NQ_KEEPS(o.r.ComputeProductMatrixTrans(o.b, o.rect)),
                                     NQ_KEEPS(o.r.ComputeProductMatrixTrans(o.sparse, o.rect)),
                                     NQ_KEEPS(o.r.ComputeRV(o.w, o.values)),
                                     NQ_KEEPS(o.r.ComputeVR(o.v, o.values)),
                                     NQ_KEEPS(o.r.ComputeVRW(o.v, o.w)),
                                     NQ_KEEPS(o.r.ComputeRDiagV(o.w, o.rect)),
                                     NQ_KEEPS(o.b.ComputeDiagR(o.diagonal, o.rect)),
                                     NQ_KEEPS(o.b.ComputeBlockDiagSR(o.s, o.rect)),
                                     NQ_KEEPS(o.b.ComputeR1TransSR2(o.s, o.b, o.rect)),
                                     NQ_KEEPS(o.b.SubtractSymMatrix(o.s, 2)),
                                     NQ_KEEPS(o.b.SubtractSymMatrix(o.diagonal, 2)),
                                     NQ_KEEPS(o.b.TraceOfProductSqS(o.s, o.values[0])),
                                     NQ_KEEPS(o.r.DotProductColCol(1, o.r, 2)),
                                     NQ_KEEPS(o.b.DotProductRowCol(1, o.b, 2)),
                                     NQ_KEEPS(o.r.DotProductRows(1, 2)),
                                     NQ_KEEPS(o.b.SolveLinearSquare(o.w, o.values, 1e-12)),
                                     NQ_KEEPS(o.b.EstimateLinearGI(o.w, o.values, 1e-12) + 1),
                                     NQ_KEEPS(o.r.EstimateLinearGI(o.v, o.values, 1e-12) + 1),
                                     NQ_KEEPS(o.r.QRDecompositionH(o.sym, o.rect)),
                                     NQ_KEEPS(o.r.ResidOfOrthProjection(o.r, 1e-9, o.set, o.set2)),
                                     NQ_KEEPS(o.r.FindRedundancies(1e-9, o.set, true)),
                                     NQ_KEEPS(o.r.FindNonRedunIndices(1e-9, o.list, true)),
                                     NQ_KEEPS(o.r.ExtractFullRank(1e-9, o.rect, o.list, true)),
                                     NQ_KEEPS(o.r.CheckAddColRedundancies(o.set, o.set2) + 1),
                                     NQ_KEEPS(o.r.IsEstimable(o.r, o.spread, 1e-6)),
                                     NQ_KEEPS(Display(o.r)),
                                 });
}

TEST(Memory, SparseMatrices) {
  RunMemoryCases("NQSparseRectMatrix",
                 {
                     NQ_KEEPS(NQSparseRectMatrix(9, 9, 3).IsValidMatrix()),
                     NQ_BREAKS((o.slots = o.sparse).IsValidMatrix()),
                     NQ_BREAKS(o.sparse.SetNRowsCols(90, 60, true)),
                     NQ_BREAKS(o.sparse.AddRow()),
                     NQ_BREAKS(o.sparse.AddRow(o.view)),
                     NQ_BREAKS(o.sparse.AddRow(o.view, 1, 0)),
                     NQ_KEEPS(o.sparse.GetRow(1, o.values)),
                     NQ_KEEPS(o.sparse.GetRow(1, o.list, o.values)),
                     NQ_KEEPS(o.sparse.GetCol(1, o.values)),
                     NQ_KEEPS(o.sparse.ColNorm(1)),
                     NQ_KEEPS(o.into.CopyRows(o.r, 1, 20)),
                     NQ_KEEPS(o.slots.CopyRows(o.sparse, 1, 20)),
                     NQ_KEEPS(o.sparse.CreateBlockDiagonal(2, o.rect)),
                     NQ_KEEPS(o.sparse.ExtractColumns(o.indices, o.rect)),
                     NQ_KEEPS(o.sparse.ExtractRows(o.indices, o.rect)),
                     NQ_KEEPS(o.sparse.ExtractSubSparseRectMat(1, 9, 2, 9, o.slots)),
                     NQ_KEEPS(o.sparse.ShiftColumns(3, o.rect)),
                     NQ_KEEPS(o.sparse.ExpandSquare(o.spread, o.rect)),
                     NQ_KEEPS(o.sparse.GetSparseMatrixColumns(o.lists, o.columns)),
                     NQ_KEEPS(o.sparse.CreateFullMatrix(o.rect)),
                     NQ_KEEPS(o.sparse.ComputeMatrixProduct(o.b, o.rect)),
                     NQ_KEEPS(o.sparse.ComputeProductMatrixTrans(o.b, o.rect)),
                     NQ_KEEPS(o.sparse.ComputeRV(o.w, o.values)),
                     NQ_KEEPS(o.sparse.ComputeVR(o.w, o.values)),
                     NQ_KEEPS(Display(o.sparse)),
                     NQ_KEEPS(o.view.ConvertToRegularVector(o.values)),
                     NQ_KEEPS(o.view.ComputeProbabilities(30, o.values)),
                 });
}

TEST(Memory, EigenvaluesAndQuadrature) {
  RunMemoryCases("NQEigenValues, LobattoQuad",
                 {
                     NQ_KEEPS(ComputeNew(o)),
                     NQ_KEEPS(NQEigenValues(o.eigen).Compute(o.values)),
                     NQ_KEEPS(o.eigen.SetHMatrix(o.e) == o.n ? o.eigen.Compute(o.values) : -1),
                     NQ_KEEPS(o.eigen.SetEMatrix(o.e) ? o.eigen.Compute(o.values) : -1),
                     NQ_KEEPS(o.eigen.SetEMatrix(o.e) && o.eigen.SetHMatrix(o.e) == o.n
                                  ? o.eigen.Compute(o.values)
                                  : -1),
                     NQ_KEEPS(o.eigen.Compute(o.values, o.rect)),
                     NQ_KEEPS(o.eigen.GetSorted(o.values, true)),
                     NQ_KEEPS(o.eigen.GetSorted(o.values, o.rect, true)),
                     NQ_CASE(kAnything, o.eigen.IsPDHMatrix(0, o.flag)),
                     NQ_CASE(kAnything, o.eigen.GetPDHMatrix(0, o.sym, o.flag)),
                     NQ_KEEPS(Display(o.eigen)),
                     NQ_CASE(kAnything, LobattoQuad(o.quad).GetWarnings().GetWarnings(true).size()),
                     NQ_CASE(kAnything, BoundsList(o.intervals).GetFirstLeft()),
                     NQ_KEEPS(o.quad.Integrate(0, 3)),
                 });
}

// Moves and swaps take no memory.
TEST(Memory, Moves) {
  Objects o;
  Injection inject(1, Failing::kFromThenOn);
  inject([&] {
    std::swap(o.r, o.b);
    std::swap(o.sparse, o.slots);
    NQEigenValues eigen(std::move(o.eigen));
    o.eigen = std::move(eigen);
  });
  EXPECT_FALSE(inject.HasFailed());
  EXPECT_EQ(o.b.GetNRows(), o.m);
  EXPECT_EQ(o.slots.GetNRows(), o.n);
}

}  // namespace
}  // namespace NQMath_940
