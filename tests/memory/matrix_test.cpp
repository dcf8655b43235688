// Memory that ends in matrices, sparse vectors, bit sets, eigenvalues and quadrature.
#include <nqcommon/common/display.h>
#include <nqcommon/math/matrix/NQEigenValues.h>
#include <nqcommon/math/matrix/NQSymBlockMatrix.h>
#include <nqcommon/math/numeric/BoundsList.h>
#include <nqcommon/math/numeric/LobattoQuad.h>

#include "math/matrix/operations.h"
#include "support/failing_new.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// Calls that answer as they do with memory for all have done all. Any other answer is one of
// failure, for memory alone, and leaves everything as it was; what is written may be lost instead,
// and an inverse may hold S. Of several calls some may have been done.
template <class Matrix, class Start, class In>
Verdict Judge(const Operation<Matrix, In>& row, const Start& start, In& wantedIn, In& in,
              Injection& inject) {
  Start wanted = start, got = start;
  Outputs wantedOut(wantedIn), out(in);
  const std::vector<Values> before = Pieces(got, out);
  const Answers want = row.run(wanted, wantedIn, wantedOut);
  Answers answers{};
  inject([&] { answers = row.run(got, in, out); });
  const std::vector<Values> done = Pieces(wanted, wantedOut), after = Pieces(got, out);
  if (answers == want) return {after == done && Details(out) == Details(wantedOut)};
  bool isRight = inject.HasFailed();
  for (std::size_t k = 0; k < want.size(); ++k)
    isRight = isRight && (answers[k] == want[k] || answers[k].refuses);
  const bool areSeveral = !CallAt(row.name, 1).empty();
  for (std::size_t p = 0; p < after.size(); ++p) {
    const bool isLost = after[p].empty() || after[p][0] == -1, mayHoldS = p == 1;
    isRight = isRight && (after[p] == before[p] || (areSeveral && after[p] == done[p]) ||
                          (isLost && (p > 0 || row.meaning == kResizes)) ||
                          (mayHoldS && after[p] == before[0]));
  }
  return {isRight, std::to_string(answers[0].value)};
}

template <class Matrix, class In, std::size_t n, class Start, class MakeIn>
void RunTable(const std::string& title, const Operation<Matrix, In> (&rows)[n], const Start& start,
              MakeIn makeIn) {
  std::vector<MemoryCase> cases;
  for (const auto& row : rows) {
    if (row.meaning == kRefused) continue;
    cases.push_back({row.name, [&](Injection& inject) {
                       In wanted = makeIn(), in = makeIn();
                       return Judge(row, start, wanted, in, inject);
                     }});
  }
  RunMemoryCases(title, cases);
}

template <class Displayed>
bool Display(const Displayed& object) {
  static std::ostream nowhere(nullptr);
  NQDisplay_940::SetOutStream(nowhere);
  object.Display();
  if constexpr (requires { object.DisplayF(); }) object.DisplayF();
  return true;
}

NQBitSet Multiples(int n, int of) {
  NQBitSet set(n);
  for (int i = 0; i < n; i += of) set.Set(i, true);
  return set;
}

// ---- Symmetric matrices

// Of kOrder rows on, the kernels run in their fast forms, which have work memory.

constexpr int kOrder = 20;
const Indices kSizes{8, -4, 8};

struct SymInputs : Inputs {
  NQDiagMatrix diagonal{Values(kOrder, 4)}, fourDiagonal{4, true};
  NQSymBlockDiagMatrix blocks = RandomBlocks(kSizes, random);
  NQSymMatrix fourDense{4, true};
  NQSymBlockMatrix grid{2, 3};
  std::vector<const INQSymMatrix*> matrices{&m, &diagonal, &blocks};
  Indices some{0, 2, 3, 9};
  Values run = RandomVector(400, random);
  NQBitSet kinds = Multiples(4, 2), members = Multiples(kOrder, 2), half = Multiples(2 * kOrder, 2);
};

const Operation<NQSymMatrix, SymInputs> kDense[] = {
    NQ_ROW(NQSymMatrix(100, true).IsValidMatrix()),
    NQ_ROW(NQSymMatrix(4, 5, true).IsValidMatrix()),
    NQ_ROW(NQSymMatrix(s).IsValidMatrix()),
    NQ_ROW((out.part = s).IsValidMatrix()),
    NQ_ROW((s.GetNCheckDiagonalOld(out.v, 0.5, 1), !out.v.empty())),
    NQ_ROW((out.set.Resize(in.n, false), s.Sweep(0, 1e-9, in.t, out.set, true))),
    NQ_ROW((out.set.Resize(in.n, false), s.SweepOrig(0, 1e-9, in.t.data(), out.set, true))),
    NQ_ROW(s.SweepOnAll(1e-9, out.set, false, true, true)),
    NQ_ROW(s.SweepOnAll(1e-9, out.set, true, true, true, &in.t)),
    NQ_ROW(s.SweepOnMany(9, 1e-9, true, out.set, out.x, false)),
    NQ_ROW(s.SweepOnSelected(in.some, 1e-9, out.set, true)),
    NQ_ROW(s.TransformToPositiveDefinite(1e-3, out.flag, out.x) > 0),
    NQ_ROW(in.m.SolveIndefinite(in.v, 1e-12, in.members, out.v)),
    NQ_ROW(in.m.SolveIndefinite(in.v, 0, out.v)),
    NQ_ROW(s.SolveIndefiniteGI(in.v, 1e-12, out.v)),
    NQ_ROW(s.LTCholUpdateR1(in.v)),
    NQ_ROW(s.LTCholDowndate(in.zero)),
    NQ_ROW(s.CholIndNonRed(1e-20, 1e-9, out.list)),
    NQ_ROW((out.set.Resize(in.n, true), s.CheckMDependent(1, 1e9, in.t, in.members, out.set))),
    NQ_ROW(s.CheckGMG(in.diagonal, 1e-9, out.set)),
    NQ_ROW(s.ExpandSymToRect(out.rect)),
    NQ_ROW(s.AugmentUsingBlockDiagL(in.blocks)),
    NQ_ROW(s.SubSymVectBlockL(1, 0, in.blocks, out.v)),
    NQ_ROW(s.SubSymBlockLTSBlockL(0, in.blocks, out.sym)),
    NQ_ROW(s.SubSymRectTBlockL(0, 3, 5, in.blocks, out.rect)),
    NQ_ROW(s.ComputeSSubBSSub(2, 4, 0, in.blocks, out.sym)),
    NQ_ROW(s.UpdateXXNonRedun(in.v, in.members, 2)),
    NQ_RESIZES(s.SetToVV(in.run)),
    NQ_RESIZES(s.SetToVW(in.run, in.run)),
    NQ_ROW((s.SetNBlocks(4), s.ExtractDiagBlock(2, out.sym))),
    NQ_ROW((s.SetNBlocks(4), s.ExtractBlockAndLastRow(2, out.sym))),
    NQ_ROW(s.ExtractPartOfLastRow(2, 9, out.v)),
    NQ_ROW(s.GetRegCoeffs(out.v, in.members)),
    NQ_ROW(s.GetRegression(in.members, in.v, 3, out.v, out.sym)),
    NQ_ROW(s.Expand(in.half, out.sym)),
    NQ_ROW(Display(s)),
};

const Operation<NQSymBlockDiagMatrix, SymInputs> kStructured[] = {
    NQ_ROW(NQDiagMatrix(100, true).IsValidMatrix()),
    NQ_ROW(NQDiagMatrix(in.v).IsValidMatrix()),
    NQ_ROW((out.diagonal = in.diagonal).IsValidMatrix()),
    NQ_ROW(in.diagonal.ComputeRVD(2, in.r, 3, 9)),
    NQ_ROW(in.diagonal.ComputeRTransVD(1, in.tall, 3, 9)),
    NQ_ROW(in.diagonal.ComputeGMG(in.diagonal, out.diagonal)),
    NQ_ROW(in.diagonal.ComputeSTransS(out.diagonal)),
    NQ_ROW(in.diagonal.CholInverse(in.t, 1e-9, out.diagonal, out.set)),
    NQ_ROW(in.diagonal.ExtractSubmatrix(in.some, out.diagonal)),
    NQ_ROW(NQSymBlockDiagMatrix(in.some, in.kinds).IsValidMatrix()),
    NQ_ROW(NQSymBlockDiagMatrix(in.matrices).GetNRows() > 0),
    NQ_ROW((out.blocks = s).IsValidMatrix()),
    NQ_ROW(out.blocks.SetStructure(in.some, in.kinds)),
    NQ_RESIZES(s.AddBlock(in.v)),
    NQ_RESIZES(s.AddBlock(in.m)),
    NQ_RESIZES(s.AddBlock(in.blocks)),
    NQ_ROW(s.ReplaceBlock(1, in.fourDiagonal)),
    NQ_ROW(s.ReplaceBlock(1, in.fourDense)),
    NQ_ROW(s.CopyStructure(out.blocks)),
    NQ_ROW((out.list = s.GetBlockSizes(), !out.list.empty())),
    NQ_ROW((out.list = s.GetStartingIndices(), !out.list.empty())),
    NQ_ROW(s.FillDenseMatrix(out.sym)),
    NQ_ROW(s.ComputeGMG(in.blocks, out.blocks)),
    NQ_ROW(s.ComputeGSG(in.diagonal, out.blocks)),
    NQ_ROW(s.ComputeLTransSL(in.diagonal, out.blocks)),
    NQ_ROW(s.CholInverse(in.t, 1e-9, out.blocks)),
    NQ_ROW(s.ExtractSubmatrix(in.some, out.blocks)),
    NQ_ROW(s.ComputeProductLAndSquare(out.rect, out.rect)),
    NQ_ROW(s.ComputeSymRowByL(in.m, 2, out.v)),
    NQ_ROW(s.ComputeVecPartByL(in.run, 9, out.v)),
    NQ_ROW(s.ComputeVecIIncrPartByL(in.run, 1, 1, out.v)),
    NQ_ROW(Display(s)),
    NQ_ROW(NQSymBlockMatrix(3, 9).IsValid()),
    NQ_ROW(NQSymBlockMatrix(in.grid).IsValid()),
    NQ_ROW(in.grid.SetNRows(4, 30, true) && in.grid.IsValid()),
    NQ_ROW(in.grid.CopyToSymMatrix(out.sym)),
    NQ_ROW(in.members.GetMembers(out.list)),
    NQ_ROW((out.set = in.half).Size() > 0),
    NQ_ROW(out.set.Append(true) > 0),
    NQ_ROW(in.half.Duplicate(9)),
    NQ_ROW((out.set.Resize(1000, true), out.set.Size() > 0)),
    NQ_ROW(in.half.GetSubset(3, 30).Size() > 0),
    NQ_ROW((out.set.DoOR(in.members, in.half), out.set.Size() > 0)),
};

TEST(Memory, SymmetricMatrices) {
  std::mt19937 random(3);
  const NQSymMatrix dense = ToSym(ToDense(RandomBlocks({kOrder}, random)));
  const NQSymBlockDiagMatrix blocks = RandomBlocks(kSizes, random);
  const auto operands = [] { return Inputs{kOrder}; };
  const auto more = [] { return SymInputs{{kOrder}}; };
  RunTable("INQSymMatrix, dense", kSymOperations, dense, operands);
  RunTable("INQSymMatrix, diagonal", kSymOperations, NQDiagMatrix(Values(kOrder, 4)), operands);
  RunTable("INQSymMatrix, blocks", kSymOperations, blocks, operands);
  RunTable("NQSymMatrix", kDense, dense, more);
  RunTable("diagonal, blocks, sets", kStructured, blocks, more);
}

// ---- Rectangular matrices, eigenvalues and quadrature

constexpr int kSide = 24;

struct Peak : IIntegrand {
  double Evaluate(double x) override { return 1 / (1e-4 + (x - 1) * (x - 1)); }
};

struct MoreInputs : RectInputs {
  NQSymMatrix s = RandomSym(n, random), e{n, true};
  NQDiagMatrix diagonal{v};
  NQSparseRectMatrix slots{1, n, k};
  Indices indices{1, 4, 7, 9, 20};
  Values elements{1, 2, 3, 4, 5}, four{1, 2, 3, 4};
  NQSparseVector view{indices, elements};
  NQBitSet spread = Multiples(2 * n, 2);
  std::vector<Indices> lists;
  std::vector<Values> columns;
  Peak peak;
  LobattoQuad quad{&peak};
  BoundsList intervals{&quad};

  explicit MoreInputs(int side) : RectInputs{side, side, 5} {
    e.AddToDiagonal(4);
    intervals.Initialize(0, 1);
    quad.GetWarnings().AddWarning(NQCommon_940::NQStatus(901, true),
                                  NQCommon_940::NQWarnings::ToBoth);
  }
};

const Operation<NQRectMatrix, MoreInputs> kRectangular[] = {
    NQ_ROW(NQRectMatrix(9, 9, true).IsValidMatrix()),
    NQ_ROW((out.rect = s).IsValidMatrix()),
    NQ_RESIZES(s.AddColumn()),
    NQ_ROW(s.Transpose()),
    NQ_ROW(out.rect.CopyColumns(s, 1, 20)),
    NQ_ROW(s.Expand(in.spread, true, out.rect)),
    NQ_ROW(s.ComputeMatrixProduct(s, out.rect)),
    NQ_ROW(s.ComputeVRW(in.v, in.w)),
    NQ_ROW(s.ComputeRDiagV(in.v, out.rect)),
    NQ_ROW(s.ComputeDiagR(in.diagonal, out.rect)),
    NQ_ROW(s.SolveLinearSquare(in.v, out.v, 1e-12)),
    NQ_ROW(s.EstimateLinearGI(in.v, out.v, 1e-12)),
    NQ_ROW(in.timesTrans.dense.EstimateLinearGI(in.four, out.v, 1e-12)),
    NQ_ROW(s.QRDecompositionH(out.sym, out.rect)),
    NQ_ROW(s.ResidOfOrthProjection(s, 1e-9, out.set, out.set2)),
    NQ_ROW(s.FindRedundancies(1e-9, out.set, true)),
    NQ_ROW(s.FindNonRedunIndices(1e-9, out.list, true)),
    NQ_ROW(s.ExtractFullRank(1e-9, out.rect, out.list, true)),
    NQ_ROW(s.CheckAddColRedundancies(out.set, out.set2)),
    NQ_ROW(+s.IsEstimable(s, in.spread, 1e-6)),
    NQ_ROW(Display(s)),
};

const Operation<NQSparseRectMatrix, MoreInputs> kSparse[] = {
    NQ_ROW(NQSparseRectMatrix(9, 9, 3).IsValidMatrix()),
    NQ_ROW(NQSparseRectMatrix(s).IsValidMatrix()),
    NQ_RESIZES(s.AddRow(in.view, 1, 0)),
    NQ_ROW(s.GetRow(1, out.list, out.v)),
    NQ_ROW(s.ExtractSubSparseRectMat(1, 9, 2, 9, in.slots) && in.slots.GetNRows() == 9),
    NQ_ROW(s.ExpandSquare(in.spread, out.rect)),
    NQ_ROW(s.GetSparseMatrixColumns(in.lists, in.columns)),
    NQ_ROW(s.CreateFullMatrix(out.rect)),
    NQ_ROW(in.view.ConvertToRegularVector(out.v)),
    NQ_ROW(in.view.ComputeProbabilities(30, out.v)),
    NQ_ROW(Display(s)),
};

bool ComputeNew(const MoreInputs& in, Values& values) {
  NQEigenValues eigen(in.s, in.e, 1e-12, 30);
  return eigen.IsValidEMatrix() && eigen.Compute(values) != -2;
}

const Operation<NQEigenValues, MoreInputs> kEigen[] = {
    NQ_ROW(ComputeNew(in, out.v)),
    NQ_ROW(NQEigenValues(s).Compute(out.v) != -2),
    NQ_ROW(s.SetHMatrix(in.e) == in.n && s.Compute(out.v) != -2),
    NQ_ROW(s.SetEMatrix(in.e) && s.Compute(out.v) != -2),
    NQ_ROW(s.SetEMatrix(in.e) && s.SetHMatrix(in.e) == in.n && s.Compute(out.v) != -2),
    NQ_ROW(s.Compute(out.v, out.rect) != -2),
    NQ_ROW(s.GetSorted(out.v, true) != -2),
    NQ_ROW(s.GetSorted(out.v, out.rect, true) != -2),
    NQ_ROW(s.IsPDHMatrix(0, out.flag)),
    NQ_ROW(s.GetPDHMatrix(0, in.s, out.flag) && in.s.ExtractSubmatrix(in.indices, out.sym)),
    NQ_ROW(Display(s)),
    NQ_ROW(!LobattoQuad(in.quad).GetWarnings().GetWarnings(true).empty()),
    NQ_ROW(BoundsList(in.intervals).GetFirstLeft()),
    NQ_ROW(in.quad.Integrate(0, 3)),
};

TEST(Memory, RectangularMatrices) {
  std::mt19937 random(3);
  const NQRectMatrix dense = RandomRect(kSide, kSide, random);
  const NQSparseRectMatrix sparse = RandomSparse(kSide, kSide, 5, random);
  const auto operands = [] { return RectInputs{kSide, kSide, 5}; };
  const auto withSparse = [] { return RectInputs{kSide, kSide, 5, true}; };
  const auto more = [] { return MoreInputs(kSide); };
  RunTable("INQRectMatrix, dense", kRectOperations, dense, operands);
  RunTable("INQRectMatrix, sparse", kRectOperations, sparse, withSparse);
  RunTable("NQRectMatrix", kRectangular, dense, more);
  RunTable("NQSparseRectMatrix", kSparse, sparse, more);
  RunTable("NQEigenValues, LobattoQuad", kEigen, NQEigenValues(RandomSym(kSide, random), 1e-12, 30),
           more);
}

// Moves and swaps take no memory.
TEST(Memory, Moves) {
  MoreInputs in(kSide);
  NQEigenValues eigen(in.s, 1e-12, 30);
  Injection inject(1, Failing::kFromThenOn);
  inject([&] {
    std::swap(in.a, in.d);
    std::swap(in.same.sparse, in.slots);
    NQEigenValues moved(std::move(eigen));
    eigen = std::move(moved);
  });
  EXPECT_FALSE(inject.HasFailed());
  EXPECT_EQ(in.slots.GetNRows(), kSide);
}

}  // namespace
}  // namespace NQMath_940
