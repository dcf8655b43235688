#include <gtest/gtest.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseVector.h>
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>
#include <nqcommon/math/matrix/NQSymBlockMatrix.h>

#include <cmath>
#include <numeric>

#include "support/failing_new.h"

namespace {

using namespace NQMath_940;
using NQCommon_940::NQMV;
using Values = std::vector<double>;

constexpr int kOrder = 20;

Values Falling(int n, double scale) {
  Values v;
  for (int i = 0; i < n; ++i) v.push_back(scale / (1 + i % 7));
  return v;
}

NQBitSet Multiples(int n, int of) {
  NQBitSet set(n);
  for (int i = 0; i < n; i += of) set.Set(i, true);
  return set;
}

// Positive definite, and in the last row the sum of the two before it.
NQSymMatrix Dense() {
  NQSymMatrix s(kOrder, true);
  for (int i = 0; i < kOrder; ++i) {
    for (int j = 0; j <= i; ++j) s.SetElem(i, j, i == j ? 30.0 + i : 1.0 / (1 + i + j));
  }
  Values last(kOrder);
  s.IncrVecByRow(kOrder - 2, last, 1);
  s.IncrVecByRow(kOrder - 3, last, 1);
  last[kOrder - 1] = last[kOrder - 2] + last[kOrder - 3];
  s.PutRow(kOrder - 1, last);
  return s;
}

NQSymBlockDiagMatrix Blocks() {
  NQSymBlockDiagMatrix blocks({8, 4, 8}, NQBitSet(std::vector<bool>{false, true, false}));
  for (int i = 0; i < kOrder; ++i) {
    for (int j = 0; j <= i; ++j) blocks.SetElem(i, j, i == j ? 20.0 + i : 1.0 / (2 + i + j));
  }
  return blocks;
}

NQRectMatrix Rect(int m, int n) {
  NQRectMatrix r(m, n, true);
  for (int i = 0; i < m; ++i) {
    for (int j = 0; j < n; ++j) r.SetElem(i, j, (i * 7 + j * 3) % 11 - 5.0);
  }
  return r;
}

NQSparseRectMatrix Sparse() {
  NQSparseRectMatrix r(kOrder, kOrder, 2);
  for (int i = 0; i < kOrder; ++i) {
    const std::vector<int> indices{i / 2, kOrder - 1};
    const Values values{1.0 + i, -2};
    r.AddRow(NQSparseVector(indices, values));
  }
  return r;
}

void Add(const INQSymMatrix& s, Values& piece) {
  piece.push_back(s.GetNRows());
  for (int i = 0; i < s.GetNRows(); ++i) {
    for (int j = 0; j <= i; ++j) piece.push_back(s.GetElem(i, j));
  }
}

// What a call may read, and write. s is one of the first three.
struct Objects {
  NQSymMatrix dense = Dense();
  NQDiagMatrix diagonal{Falling(kOrder, 8)};
  NQSymBlockDiagMatrix blocks = Blocks();
  INQSymMatrix* s = nullptr;

  const NQSymMatrix other = Dense();
  const NQDiagMatrix otherDiagonal{Falling(kOrder, 5)};
  const NQSymBlockDiagMatrix otherBlocks = Blocks();
  const NQRectMatrix wide = Rect(5, kOrder), tall = Rect(kOrder, 5), square = Rect(kOrder, kOrder);
  const NQSparseRectMatrix sparse = Sparse();
  const Values v = Falling(kOrder, 3), w = Falling(kOrder, -2), run = Falling(kOrder * kOrder, 1);
  const std::vector<int> some{0, 2, 3, 9};
  const Values four{1, 2, 3, 4};
  const NQDiagMatrix fourDiagonal{4, true};
  const NQSymMatrix fourDense{4, true};
  const std::vector<const INQSymMatrix*> matrices{&other, &otherDiagonal, &otherBlocks};
  const NQBitSet kinds = Multiples(4, 2), members = Multiples(kOrder, 2),
                 half = Multiples(2 * kOrder, 2);

  NQSymMatrix out{3, true};
  NQDiagMatrix outDiagonal{3, true};
  NQSymBlockDiagMatrix outBlocks;
  NQRectMatrix outRect;
  NQSymBlockMatrix grid{2, 3};
  Values x{1, 2}, y = Falling(kOrder, 30);
  NQBitSet set = Multiples(kOrder, 1);
  std::vector<int> list{7};
  double number = 1;
  int count = 0;
  bool flag = false;
  NQDeterminant det{1, 1};

  // The three that s may be, then what is written: each a list of numbers, empty or starting with
  // -1 where it has been lost.
  std::vector<Values> Pieces() const {
    std::vector<Values> pieces(11);
    const INQSymMatrix* written[] = {&dense, &diagonal, &blocks, &out, &outDiagonal, &outBlocks};
    for (std::size_t k = 0; k < std::size(written); ++k) Add(*written[k], pieces[k]);
    for (int i = 0; i < outRect.GetNRows(); ++i) {
      Values row;
      outRect.GetRow(i, row);
      pieces[6].insert(pieces[6].end(), row.begin(), row.end());
    }
    if (grid.IsValid()) pieces[7] = {double(grid.GetNBlocks()), double(grid.GetBlockSize())};
    pieces[8] = x;
    pieces[9] = y;
    pieces[10].assign(list.begin(), list.end());
    return pieces;
  }
};

struct Row {
  const char* call;
  std::function<bool(Objects&)> run;
  bool resizes = false;  // s itself may be lost
};

bool Said(bool done) { return done; }
bool Said(int count) { return count >= 0; }
bool Said(double x) { return !NQMV::IsMissing(x); }

// A call that says that it is done has the result of one with memory for all. One that fails, for
// memory alone, leaves every object as it was; what it writes may also be lost.
nqtest::Verdict Judge(const Row& row, int type, nqtest::Injection& inject) {
  Objects wanted, got;
  for (Objects* o : {&wanted, &got}) {
    INQSymMatrix* const kinds[] = {&o->dense, &o->diagonal, &o->blocks};
    o->s = kinds[type];
  }
  const std::vector<Values> before = got.Pieces();
  const bool works = row.run(wanted);
  bool done = false;
  inject([&] { done = row.run(got); });
  const std::vector<Values> after = got.Pieces();
  if (done)
    return {works && after == wanted.Pieces() && got.set == wanted.set && got.det == wanted.det &&
            got.number == wanted.number && got.count == wanted.count && got.flag == wanted.flag};
  bool kept = true;
  for (std::size_t k = 0; k < after.size(); ++k) {
    const bool lost = (k > 2 || row.resizes) && (after[k].empty() || after[k][0] < 0);
    const bool holdsS = k == 3 && after[k] == before[0];  // the output of a Cholesky inverse
    kept = kept && (lost || holdsS || after[k] == before[k]);
  }
  return {kept && (inject.HasFailed() || !works)};
}

void RunRows(const char* title, const std::vector<Row>& rows, int firstType, int lastType) {
  std::vector<nqtest::MemoryCase> cases;
  for (int type = firstType; type <= lastType; ++type) {
    for (const Row& row : rows)
      cases.push_back(
          {row.call, [&row, type](nqtest::Injection& inject) { return Judge(row, type, inject); }});
  }
  nqtest::RunMemoryCases(title, cases);
}

// clang-format off
#define ROW(...) {#__VA_ARGS__, []([[maybe_unused]] Objects& o) { return Said(__VA_ARGS__); }}
#define RESIZING_ROW(...) {#__VA_ARGS__, [](Objects& o) { return Said(__VA_ARGS__); }, true}

const std::vector<Row> kInterface = {
    ROW((o.s->GetDiagonal(o.x), o.x.size() == kOrder)),
    ROW((o.s->GetNCheckDiagonal(o.x, 0, 1), o.x.size() == kOrder)),
    ROW(o.s->GetRow(3, o.x)),
    RESIZING_ROW(o.s->Resize(100)),
    RESIZING_ROW(o.s->Resize(10)),
    RESIZING_ROW(o.s->SetNRows(100, true)),
    ROW(o.count = o.s->LTChol(o.v, 1e-9, true)),
    ROW(o.count = o.s->LTChol(o.v, 1e-9, o.set, true)),
    ROW(o.count = o.s->LTChol(1e-9, o.number, true)),
    ROW(o.count = o.s->LTSolve(o.v, 1e-9, o.x)),
    ROW(o.s->ComputeDeterminant(1e-9, o.det)),
    ROW(o.count = o.s->CholInverse(o.v, 1e-9, o.out)),
    ROW(o.count = o.s->CholInverse(o.v, 1e-9, o.out, o.set)),
    ROW(o.count = o.s->CholInverse(o.v, 1e-9, o.out, o.number)),
    ROW(o.count = o.s->CholInverse(o.v, 1e-9, o.outDiagonal, o.set)),
    ROW(o.count = o.s->CholInverse(o.v, 1e-9, o.outBlocks)),
    ROW(o.number = o.s->ComputeRowDotProductS(1, o.other, 2)),
    ROW(o.number = o.s->ComputeRowDotProductS(1, o.otherBlocks, 2)),
    ROW(o.s->ComputeGMG(o.other, o.out)),
    ROW(o.s->ComputeGMG(o.otherDiagonal, o.outDiagonal)),
    ROW(o.s->ComputeGMG(o.otherBlocks, o.outBlocks)),
    ROW(o.s->ComputeGSG(o.other, o.out)),
    ROW(o.s->ComputeGSG(o.otherDiagonal, o.outDiagonal)),
    ROW(o.s->ComputeGSG(o.otherBlocks, o.outBlocks)),
    ROW(o.s->ComputeGMGNG(o.other, o.otherBlocks, o.outRect)),
    ROW(o.s->ComputeMGN(o.otherDiagonal, o.other, o.outRect)),
    ROW(o.s->ComputeLSLTrans(o.other, o.out)),
    ROW(o.s->ComputeLSLTrans(o.otherBlocks, o.outBlocks)),
    ROW(o.s->ComputeLTransSL(o.other, o.out)),
    ROW(o.s->ComputeLTransSL(o.otherDiagonal, o.outBlocks)),
    ROW(o.s->ComputeLTransV(o.v, o.x)),
    ROW(o.s->ComputeLTransV(o.some, o.four, o.x)),
    ROW(o.s->ComputeLV(o.v, o.x)),
    ROW(o.s->ComputeLV(o.some, o.four, o.x)),
    ROW(o.s->ComputeRS(o.wide, o.outRect)),
    ROW(o.s->ComputeRS(o.sparse, o.outRect)),
    ROW(o.s->ComputeRTransS(o.tall, o.outRect)),
    ROW(o.s->ComputeRTransS(o.sparse, o.outRect)),
    ROW(o.s->ComputeRSRTrans(o.wide, o.out)),
    ROW(o.s->ComputeRSRTrans(o.sparse, o.out)),
    ROW(o.s->ComputeRTransSR(o.tall, o.out)),
    ROW(o.s->ComputeRTransSR(o.sparse, o.out)),
    ROW(o.s->ComputeRTransSV(o.tall, o.v, o.x)),
    ROW(o.s->ComputeSS(o.other, o.outRect)),
    ROW(o.s->ComputeSS(o.otherBlocks, o.outRect)),
    ROW(o.s->ComputeSTransS(o.out)),
    ROW(o.s->ComputeSTransS(o.outBlocks)),
    ROW(o.s->ComputeSV(o.v, o.x)),
    ROW(o.s->ComputeSV(o.v, 3, o.x)),
    ROW(o.number = o.s->ComputeVSV(o.v)),
    ROW(o.number = o.s->ComputeVSV(o.wide, 2)),
    ROW(o.number = o.s->ComputeVSW(o.v, o.w)),
    ROW(o.number = o.s->TraceOfProduct(o.otherBlocks)),
    ROW(o.number = o.s->TraceOfProductOfThree(o.other, o.otherBlocks)),
    ROW(o.s->ExtractFirstNRows(o.out)),
    ROW(o.s->ExtractFirstNRows(o.outDiagonal)),
    ROW(o.s->ExtractFirstNRows(o.outBlocks)),
    ROW(o.s->ExtractSubmatrix(o.some, o.out)),
    ROW(o.s->ExtractSubmatrix(o.some, o.outDiagonal)),
    ROW(o.s->ExtractSubmatrix(o.some, o.outBlocks)),
};

const std::vector<Row> kDense = {
    ROW(NQSymMatrix(100, true).IsValidMatrix()),
    ROW(NQSymMatrix(4, 5, true).IsValidMatrix()),
    ROW(NQSymMatrix(o.other).IsValidMatrix()),
    ROW((o.out = o.other, o.out.IsValidMatrix())),
    ROW((o.dense.GetNCheckDiagonalOld(o.x, 0.5, 1), o.x.size() == kOrder)),
    ROW(o.dense.Sweep(2, 1e-9, o.v, o.set, true)),
    ROW(o.dense.SweepOrig(2, 1e-9, o.v.data(), o.set, true)),
    ROW(o.dense.SweepOnAll(1e-9, o.set, false, true, true)),
    ROW((o.set.Resize(1, false), o.dense.SweepOnAll(1e-9, o.set, true, true, true, &o.y))),
    ROW(o.dense.SweepOnMany(9, 1e-9, true, o.set, o.number, false)),
    ROW((o.set.Resize(0, false), o.dense.SweepOnSelected(o.some, 1e-9, o.set, true))),
    ROW(o.dense.TransformToPositiveDefinite(1e-3, o.flag, o.number)),
    ROW(o.dense.SolveIndefinite(o.v, 1e-12, o.members, o.x)),
    ROW(o.dense.SolveIndefinite(o.v, 0, o.x)),
    ROW(o.count = o.dense.SolveIndefiniteGI(o.v, 1e-12, o.x)),
    ROW(o.dense.LTCholUpdateR1(o.v)),
    ROW(o.dense.LTCholDowndate(o.v)),
    ROW(o.count = o.dense.CholIndNonRed(1e-20, 1e-9, o.list)),
    ROW(o.flag = !o.dense.CheckMDependent(1, 1e-9, o.v, o.members, o.set)),
    ROW(o.count = o.dense.CheckGMG(o.otherDiagonal, 1e-9, o.set)),
    ROW(o.dense.ComputeRTransByR(o.tall)),
    ROW(o.dense.ComputeRTransByR(o.sparse)),
    ROW(o.dense.ComputeRByRTrans(o.wide)),
    ROW(o.dense.ComputeRByRTrans(o.sparse)),
    ROW(o.dense.ExpandSymToRect(o.outRect)),
    ROW(o.dense.AugmentUsingBlockDiagL(o.otherBlocks)),
    ROW(o.dense.SubSymVectBlockL(1, 0, o.otherBlocks, o.x)),
    ROW(o.dense.SubSymSBlockL(0, o.otherBlocks, o.outRect)),
    ROW(o.dense.SubSymBlockLTSBlockL(0, o.otherBlocks, o.out)),
    ROW(o.dense.SubSymRectTBlockL(0, 3, 5, o.otherBlocks, o.outRect)),
    ROW(o.dense.ComputeSSubBSSub(2, 4, 0, o.otherBlocks, o.out)),
    ROW(o.number = NQSymMatrix::ComputeVBW(o.v, o.otherBlocks, o.w)),
    ROW(o.dense.ComputeRTransBlockDiagR(o.tall, o.otherBlocks)),
    ROW(o.dense.ComputeRTransSymR(o.tall, o.other)),
    ROW(o.dense.UpdateXXNonRedun(o.v, o.members, 2)),
    RESIZING_ROW(o.dense.SetToVV(o.run)),
    RESIZING_ROW(o.dense.SetToVW(o.run, o.run)),
    ROW((o.dense.SetNBlocks(4), o.dense.ExtractDiagBlock(2, o.out))),
    ROW((o.dense.SetNBlocks(4), o.dense.ExtractBlockAndLastRow(2, o.out))),
    ROW((o.dense.SetNBlocks(4), o.dense.ExtractBlockInLowTriangular(2, 1, o.out))),
    ROW(o.dense.ExtractPartOfLastRow(2, 9, o.x)),
    ROW(o.dense.GetRegCoeffs(o.x, o.members)),
    ROW(o.dense.Expand(o.half, o.out)),
    ROW(o.fourDense.ExpandSym(o.some, 12, o.out)),
    RESIZING_ROW(o.dense.DeleteOneRow(4)),
};

const std::vector<Row> kStructured = {
    ROW(NQDiagMatrix(100, true).IsValidMatrix()),
    ROW(NQDiagMatrix(o.v).IsValidMatrix()),
    ROW(NQDiagMatrix(o.otherDiagonal).IsValidMatrix()),
    ROW(o.number = o.diagonal.ComputeRVD(2, o.wide, 3, 9)),
    ROW(o.number = o.diagonal.ComputeRTransVD(2, o.tall, 3, 9)),
    ROW(NQSymBlockDiagMatrix(o.some, o.kinds).IsValidMatrix()),
    ROW(NQSymBlockDiagMatrix(o.matrices).GetNRows() > 0),
    ROW(NQSymBlockDiagMatrix(o.otherBlocks).IsValidMatrix()),
    ROW(o.outBlocks.SetStructure(o.some, o.kinds)),
    RESIZING_ROW(o.blocks.AddBlock(o.v)),
    RESIZING_ROW(o.blocks.AddBlock(o.other)),
    RESIZING_ROW(o.blocks.AddBlock(o.otherBlocks)),
    ROW(o.blocks.ReplaceBlock(1, o.four)),
    ROW(o.blocks.ReplaceBlock(1, o.fourDiagonal)),
    ROW(o.blocks.ReplaceBlock(1, o.fourDense)),
    ROW(o.blocks.CopyStructure(o.outBlocks)),
    ROW((o.list = o.blocks.GetBlockSizes(), !o.list.empty())),
    ROW((o.list = o.blocks.GetStartingIndices(), !o.list.empty())),
    ROW(o.blocks.FillDenseMatrix(o.out)),
    ROW(o.blocks.ComputeProductLAndSquare(o.square, o.outRect)),
    ROW(o.blocks.ComputeSymRowByL(o.other, 2, o.x)),
    ROW(o.blocks.ComputeVecPartByL(o.run, 9, o.x)),
    ROW(o.blocks.ComputeVecIIncrPartByL(o.run, 1, 1, o.x)),
    ROW(NQSymBlockMatrix(3, 9).IsValid()),
    ROW((NQSymBlockMatrix(o.grid).IsValid())),
    ROW(o.grid.SetNRows(4, 30, true)),
    ROW(o.grid.CopyToSymMatrix(o.out)),
    ROW(o.members.GetMembers(o.list)),
    ROW((NQBitSet(o.members).Size() == kOrder)),
    ROW((o.set = o.half, o.set.Size() == 2 * kOrder)),
    ROW(o.set.Append(true) > kOrder),
    ROW(o.set.Duplicate(9)),
    ROW((o.set.Resize(1000, true), o.set.Size() == 1000)),
    ROW(o.half.GetSubset(3, 30).Size() == 28),
    ROW((o.set = NQBitSet(), o.set.DoOR(o.members, o.half), o.set.Size() == kOrder)),
};
// clang-format on

TEST(Memory, SymmetricInterface) { RunRows("INQSymMatrix, three storages", kInterface, 0, 2); }
TEST(Memory, NQSymMatrix) { RunRows("NQSymMatrix", kDense, 0, 0); }
TEST(Memory, SymmetricStructures) { RunRows("diagonal, blocks, sets", kStructured, 0, 0); }

}  // namespace
