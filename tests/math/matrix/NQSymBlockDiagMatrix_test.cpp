// What is the block-diagonal matrix's own: structure, stored cells, block-diagonal results, the
// products beside a dense matrix. The operations of the interface are in substitution_test.cpp.
// The symmetric matrix of blocks of one order.
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>
#include <nqcommon/math/matrix/NQSymBlockMatrix.h>

#include <array>
#include <climits>
#include <utility>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

using Blocks = NQSymBlockDiagMatrix;

std::size_t At(int i) { return static_cast<std::size_t>(i); }

// ---- Structure ---------------------------------------------------------------------------------

// A negative size stands for a diagonal block.
void ExpectStructure(const char* name, const Blocks& s, const Indices& wanted) {
  Indices sizes, blockOfRow;
  int row = 0, unset = 7, nDiagonal = 0;
  bool kind = true;
  for (int b = 0; b < s.GetNBlocks(); ++b) {
    const bool isDiagonal = s.GetIsBlockDiagonal(b);
    const NQSymMatrix* dense = nullptr;
    const Values* diagonal = nullptr;
    nDiagonal += isDiagonal;
    EXPECT_EQ(s.GetDenseBlock(b, dense), !isDiagonal) << name;
    EXPECT_EQ(s.GetDiagonalBlock(b, diagonal), isDiagonal) << name;
    EXPECT_EQ(s.GetBlockStartIndex(b), row) << name << ", block " << b;
    sizes.push_back(isDiagonal ? -s.GetBlockSize(b) : s.GetBlockSize(b));
    for (int k = 0; k < s.GetBlockSize(b); ++k, ++row) {
      const int first = isDiagonal ? row : row - k;
      int found[] = {-1, -1, -1};
      EXPECT_TRUE(s.FindAbsBlockRelColIndex(row, found[0], found[1], found[2], kind = !isDiagonal));
      EXPECT_EQ((Indices{found[0], found[1], found[2], kind, s.GetIndexFirstInRow(row)}),
                (Indices{b, row - k, k, isDiagonal, first}));
      EXPECT_EQ(s.FindBlock(first, row),
                isDiagonal ? diagonal->data() + k : &dense->AsVectorConst()[At(k * (k + 1) / 2)]);
      blockOfRow.push_back(b);
    }
  }
  EXPECT_TRUE(sizes == wanted && s.GetBlockIndexForRow() == blockOfRow) << name;
  EXPECT_FALSE(s.FindAbsBlockRelColIndex(row, unset, unset, unset, kind));
  EXPECT_EQ((Indices{s.GetNRows(), s.GetStartingIndices().back(), unset, s.GetNDenseBlocks(),
                     s.GetNDiagBlocks(), s.GetBlockStartIndex(s.GetNBlocks()),
                     s.GetBlockStartIndex(-1), s.GetIndexFirstInRow(row)}),
            (Indices{row, row, 7, s.GetNBlocks() - nDiagonal, nDiagonal, -1, -1, -1}))
      << name;
}

Blocks BlocksOf(const Values& diagonal, const Values& packed) {
  const NQDiagMatrix first(diagonal);
  const NQSymMatrix second = FromPacked(packed);
  return Blocks({&first, &second});
}

TEST(NQSymBlockDiagMatrix, Structures) {
  for (const Indices& sizes : {Indices{}, {3}, {-2, 3}, {1, -1, 1, -1}, {0, 4, 0}, {-5, -2}})
    ExpectStructure("made", MakeBlocks(sizes), sizes);

  Blocks s = MakeBlocks({-2, 3});
  for (int i = 0; i < 5; ++i) {
    for (int j = 0; j < 5; ++j)
      EXPECT_EQ(s.SetElem(i, j, 10.0 * std::max(i, j) + std::min(i, j)),
                i == j || (i > 1 && j > 1));
  }
  EXPECT_EQ(ToDense(s), ToDense(BlocksOf({0, 11}, {22, 32, 33, 42, 43, 44})));
  EXPECT_TRUE(s.PutRow(1, {1, 2, 3, 4, 5}) && s.PutRow(2, {1, 2, 3, 4, 5}) &&
              s.SetRowColToConst(0, 9));
  NQSymMatrix filled;
  EXPECT_TRUE(s.FillDenseMatrix(filled));
  for (const Dense& got : {ToDense(s), ToDense(filled)})
    EXPECT_EQ(got, ToDense(BlocksOf({9, 2}, {3, 4, 33, 5, 43, 44})));

  // Moved and copied from, cleared, cut and grown.
  Blocks copy(s), moved(std::move(s));
  ExpectStructure("moved from", s, {});  // NOLINT: a moved-from matrix has no blocks
  EXPECT_TRUE(copy.IsSameStructure(moved) && ToDense(copy) == ToDense(moved));
  EXPECT_TRUE(moved.CopyStructure(moved) && moved.IsSameStructure(copy) && moved.Trace() == 0);
  EXPECT_TRUE(moved.Resize(3) && moved.Resize(4));
  ExpectStructure("cut", moved, {-2, 1, 1});
  EXPECT_TRUE(moved.Resize(2));
  ExpectStructure("cut between blocks", moved, {-2});
  EXPECT_FALSE(moved.IsSameStructure(copy) || MakeBlocks({2, 3}).IsSameStructure(copy));
  moved.ClearAll();
  ExpectStructure("cleared", moved, {});

  for (const Indices& sizes : {Indices{2}, {2, -1}, {INT_MAX, 1}}) {
    Blocks refused(sizes, NQBitSet(2));
    EXPECT_FALSE(copy.SetStructure(sizes, NQBitSet(2)) || refused.IsValidMatrix() ||
                 refused.AddBlock(Values{1}) >= 0);
  }
  ExpectStructure("refused", copy, {-2, 3});
  EXPECT_TRUE(copy.SetStructure({1, 2, -7}, NQBitSet(2)));
  ExpectStructure("more sizes than places", copy, {1, 2});
  EXPECT_FALSE(copy.SetStructure({INT_MAX}, NQBitSet(1)) || copy.IsValidMatrix());
  EXPECT_EQ(copy.GetNRows(), -1);
}

TEST(NQSymBlockDiagMatrix, BlocksAddedAndReplaced) {
  const NQSymMatrix dense = FromPacked({1, 2, 3}), empty, zero(2, true);
  const NQDiagMatrix diagonal(Values{4, 5}), sevenEight(Values{7, 8}), six(Values{6});
  Blocks s({&dense, nullptr, &diagonal, &empty});
  EXPECT_EQ((Indices{s.AddBlock(Values{}), s.AddBlock(empty), s.AddBlock(Blocks())}),
            (Indices{-1, -1, -1}));
  ExpectStructure("refused", s, {2, -2});
  EXPECT_EQ((Indices{s.AddBlock(Values{6}), s.AddBlock(s)}), (Indices{3, 6}));
  EXPECT_EQ((Indices{Blocks().AddBlock(Values{6}), Blocks().AddBlock(s)}), (Indices{1, 6}));
  ExpectStructure("added to itself", s, {2, -2, -1, 2, -2, -1});
  EXPECT_EQ(ToDense(s), ToDense(Blocks({&dense, &diagonal, &six, &dense, &diagonal, &six})));

  const Blocks two = MakeBlocks({1, 1});
  NQ_EXPECT_REFUSED(s.ReplaceBlock(6, diagonal), s.ReplaceBlock(-1, diagonal),
                    s.ReplaceBlock(2, diagonal), s.ReplaceBlock(0, Values{1}));
  EXPECT_TRUE(s.ReplaceBlock(0, Values{7, 8}) && s.ReplaceBlock(4, dense) &&
              s.ReplaceBlock(1, dense) && s.ReplaceBlock(3, diagonal) && s.ReplaceBlock(4, two));
  ExpectStructure("replaced", s, {-2, 2, -1, -2, 2, -1});
  EXPECT_EQ(ToDense(s), ToDense(Blocks({&sevenEight, &dense, &six, &diagonal, &zero, &six})));
  // The zeros outside the blocks are extremes too, where there are any.
  double x = 0, most = 0, least = 0, least1 = 0;
  Blocks({&dense, &dense}).MaxMinDiagOffDiag(x, x, most, least);
  BlocksOf({}, {1, 2, 3}).MaxMinDiagOffDiag(x, x, most, least1);
  EXPECT_EQ((Values{most, least, least1}), (Values{2, 0, 2}));
  Blocks behindNone = MakeBlocks({0, 2});
  behindNone.SetElem(0, 1, 3);
  behindNone.MaxMinDiagOffDiag(x, x, most, least);
  EXPECT_EQ((Values{most, least}), (Values{3, 3}));
  // From its own storage.
  Values* own = nullptr;
  NQSymMatrix* block = nullptr;
  EXPECT_TRUE(s.GetDiagonalBlock(0, own) && s.AddBlock(*own) == 7 && s.GetDenseBlock(1, block) &&
              s.AddBlock(*block) == 8 && s.GetDiagonalBlock(3, own) && s.ReplaceBlock(7, *own));
  ExpectStructure("from its own", s, {-2, 2, -1, -2, 2, -1, -2, -2});
  EXPECT_EQ((Values{s.GetElem(11, 11), s.GetElem(12, 12)}), (Values{8, 4}));
}

// ---- Block-diagonal results --------------------------------------------------------------------

// Of arguments with the same blocks, diagonal or not, results are block-diagonal where `out` is.
TEST(NQSymBlockDiagMatrix, BlockDiagonalResults) {
  using Compute = bool (*)(const INQSymMatrix& s, const INQSymMatrix& m, INQSymMatrix& out);
#define NQ_COMPUTE(...) [](auto& s, [[maybe_unused]] auto& m, auto& out) { return __VA_ARGS__; }
  const Compute products[] = {NQ_COMPUTE(s.ComputeGMG(m, out)), NQ_COMPUTE(s.ComputeGSG(m, out)),
                              NQ_COMPUTE(s.ComputeLSLTrans(m, out)),
                              NQ_COMPUTE(s.ComputeLTransSL(m, out))};
  const Compute parts[] = {NQ_COMPUTE(s.ComputeSTransS(out)),
                           NQ_COMPUTE(s.CholInverse(Values(9, 1.0), 0.5, out) >= 0),
                           NQ_COMPUTE(out.Resize(6) && s.ExtractFirstNRows(out)),
                           NQ_COMPUTE(s.ExtractSubmatrix({1, 0, 4, 8, 6}, out)),
                           NQ_COMPUTE(s.ExtractSubmatrix({4, 4}, out))};
  std::mt19937 random(2);
  const Blocks s = RandomBlocks({3, -2, 0, 4}, random),
               otherKinds = RandomBlocks({-3, -2, 0, 4}, random);
  const Blocks otherSizes = RandomBlocks({2, -3, 0, 4}, random);
  const NQDiagMatrix diagonal(Values{1, 2, 3, 4, 5, 6, 7, 8, 9}), six(6, true);
  const NQSymMatrix dense(9, true), expansion = ToSym(ToDense(s));
  const auto expect = [&](Compute compute, const INQSymMatrix& m) {
    NQSymMatrix wanted;
    Blocks out, in = s;
    EXPECT_TRUE(compute(expansion, m, wanted) && compute(s, m, out) && compute(in, m, in));
    EXPECT_EQ(ToDense(out), ToDense(wanted));
    EXPECT_EQ(ToDense(in), ToDense(wanted));
  };
  for (const Compute compute : products) {
    expect(compute, otherKinds);
    expect(compute, diagonal);
    Blocks out = s;
    NQDiagMatrix noPlace;
    NQSymMatrix wanted, got;
    EXPECT_TRUE(compute(s, otherSizes, got) && compute(expansion, otherSizes, wanted));
    EXPECT_EQ(ToDense(got), ToDense(wanted));
    NQ_EXPECT_REFUSED(compute(s, otherSizes, out), compute(s, dense, out),
                      compute(s, diagonal, noPlace));
    EXPECT_EQ(ToDense(out), ToDense(s));
  }
  for (const Compute compute : parts) expect(compute, s);
  Blocks out;
  EXPECT_TRUE(otherKinds.ComputeLSLTrans(diagonal, out));
  ExpectStructure("kinds", out, {-3, -2, 0, 4});
  EXPECT_TRUE(s.ExtractSubmatrix({4, 3, 8}, out));
  ExpectStructure("part", out, {-2, 1});
  EXPECT_FALSE(s.ExtractSubmatrix({8, 0}, out));

  Blocks sum = otherKinds;
  NQ_EXPECT_REFUSED(sum.ComputeAXpY(2, s), sum.ComputeAXpY(2, dense), sum.ComputeAXpY(2, six));
  EXPECT_TRUE(sum.ComputeAXpY(2, otherKinds) && sum.ComputeAXpY(-1, diagonal));
  const Dense D = ToDense(otherKinds);
  EXPECT_EQ(ToDense(sum), Plus(Plus(D, 2, D), -1, ToDense(diagonal)));
}

TEST(NQSymBlockDiagMatrix, WithoutRows) {
  Blocks s;
  Values v{7}, w = v;
  EXPECT_TRUE(s.ComputeAXpY(2, s) && s.ComputeLV(Values{}, v) &&
              s.ComputeVecIIncrPartByL({}, 0, 0, w));
  EXPECT_EQ((Dense{v, w}), Dense(2));
}

// Mantissas and powers of the blocks multiplied: beyond the range of doubles.
TEST(NQSymBlockDiagMatrix, DeterminantBeyondDoubles) {
  const NQSymMatrix dense = ToSym({{1e300, 0}, {0, 4e300}}), indefinite = ToSym({{0, 1}, {1, 0}});
  const NQDiagMatrix diagonal(Values{-5e200, 1e200});
  Blocks s({&dense, &diagonal, &dense});
  NQDeterminant det;
  EXPECT_TRUE(Blocks({&diagonal}).ComputeDeterminant(-1, det));
  EXPECT_TRUE(s.ComputeDeterminant(0, det));
  EXPECT_CLOSE(det.first, -8, 1e-14);
  EXPECT_FALSE(s.ComputeDeterminant(-1, det) || Blocks().ComputeDeterminant(1, det) ||
               BlocksOf({0}, {1}).ComputeDeterminant(-1, det));
  EXPECT_TRUE(det.second == 1601 && s.LTDetInverse(det, 1) == 0 && det.second == 1601);
  s.AddBlock(indefinite);
  EXPECT_TRUE(s.ComputeDeterminant(1e-12, det));
  EXPECT_EQ(det, NQDeterminant(0, 0));
}

// ---- Beside a dense matrix ---------------------------------------------------------------------

Dense Part(const Dense& d, int row, int nRows, int col, int nCols) {
  Dense part;
  for (int i = row; i < row + nRows; ++i)
    part.emplace_back(d[At(i)].begin() + col, d[At(i)].begin() + col + nCols);
  return part;
}

TEST(NQSymBlockDiagMatrix, CompanionsAsSchoolbookProducts) {
  std::mt19937 random(4);
  for (const Indices& sizes : {Indices{6}, {-6}, {1, -2, 3}, {2, 0, 4}, {-1, 4, -1}}) {
    const Blocks b = RandomBlocks(sizes, random);
    const NQSymMatrix s = RandomSym(11, random);
    const NQRectMatrix r = RandomRect(6, 8, random), square = RandomRect(6, 6, random);
    const Dense S = ToDense(s), B = ToDense(b), L = Lower(B), R = ToDense(r), Q = ToDense(square);
    const Values v = RandomVector(6, random), w = RandomVector(6, random);
    const Dense V{v}, below = Part(S, 5, 6, 2, 1);  // below (5, 2) in column 2

    Dense D(11, Values(11)), wanted;
    for (int i = 0; i < 11; ++i) {
      D[At(i)][At(i)] = 1;
      if (i < 6) std::copy(L[At(i)].begin(), L[At(i)].end(), D[At(i)].begin());
    }
    wanted = Trans(D) * S * D;
    for (std::size_t i = 0; i < 6; ++i) wanted[i][i] += 1;
    const Dense P = Part(S, 2, 3, 5, 6);
    NQSymMatrix out = s;
    NQRectMatrix rect;
    Values x;
#define NQ_EXPECT(call, got, ...) \
  EXPECT_TRUE(call);              \
  EXPECT_EQ(got, Dense(__VA_ARGS__)) << #call
    NQ_EXPECT(out.AugmentUsingBlockDiagL(b), ToDense(out), wanted);
    out = ToSym(Part(S, 0, 6, 0, 6));
    NQ_EXPECT(out.AugmentUsingBlockDiagL(b), ToDense(out), Part(wanted, 0, 6, 0, 6));
    NQ_EXPECT(s.SubSymVectBlockL(9, 4, b, x), Dense{x}, Part(S, 9, 1, 4, 6) * L);
    NQ_EXPECT(s.SubSymSBlockL(5, b, rect), ToDense(rect), Part(S, 5, 6, 5, 6) * L);
    NQ_EXPECT(s.SubSymBlockLTSBlockL(3, b, out), ToDense(out), Trans(L) * Part(S, 3, 6, 3, 6) * L);
    NQ_EXPECT(s.SubSymRectTBlockL(4, 7, 4, b, rect), ToDense(rect), Trans(Part(S, 4, 6, 7, 4)) * L);
    NQ_EXPECT(s.ComputeSSubBSSub(2, 3, 5, b, out), ToDense(out), P * B * Trans(P));
    NQ_EXPECT(out.ComputeRTransBlockDiagR(r, b), ToDense(out), Trans(R) * B * R);
    NQ_EXPECT(out.ComputeRTransSymR(square, out = ToSym(B)), ToDense(out), Trans(Q) * B * Q);
    NQ_EXPECT(b.ComputeProductLAndSquare(square, rect), ToDense(rect), L * Q);
    NQ_EXPECT(b.ComputeSymRowByL(b, 4, x), Dense{x}, Part(B, 4, 1, 0, 6) * L);
    NQ_EXPECT(b.ComputeVecPartByL(S[3], 5, x), Dense{x}, Part(S, 3, 1, 5, 6) * L);
    NQ_EXPECT(b.ComputeVecIIncrPartByL(s.AsVectorConst(), 17, 6, x), Dense{x}, Trans(below) * L);
    EXPECT_EQ(Dense({{NQSymMatrix::ComputeVBW(v, b, w)}}), V * B * Column(w));
    const Values& packed = s.AsVectorConst();
    const Dense start{{packed[0], packed[0], packed[1], packed[3], packed[6], packed[10]}};
    for (int j = 0; j < 6; ++j) {
      const Dense lower = Part(L, 0, 6, j, 1), column = Part(B, 0, 6, j, 1);
      NQRectMatrix target = ToRect(S);
      Dense updated = S;
      for (std::size_t i = 0; i < 6; ++i) updated[5 + i][0] += 3 * column[i][0];
      EXPECT_TRUE(b.UpdateDenseColumnPart(j, 3, target, 5, 0));
      EXPECT_EQ(ToDense(target), updated) << "column " << j;
      const std::pair<double, Dense> products[] = {
          {s.DotProductLBlockDiagColRow(b, j, 10, 2), Part(S, 10, 1, 2, 6) * lower},
          {b.DotProductLColVecIIncrPart(j, packed, 17, 6), Trans(below) * lower},
          {b.DotProductColVecIIncrPart(j, packed, 17, 6), Trans(below) * column},
          {b.DotProductColVecIIncrPart(j, packed, 0, 0), start * column},
          {b.DotProductLColDenseRowPart(j, r, 3, 2), Part(R, 3, 1, 2, 6) * lower},
          {b.ComputeRVDParts(j, 1, 4, v, 1),
           Trans(Part(B, 1, 4, j, 1)) * Part(Trans(V), 0, 4, 0, 1)},
          {b.ComputeRVDParts(j, 0, 3, v, -2),
           Trans(Part(B, 0, 3, j, 1)) * Trans({{v[4], v[2], v[0]}})}};
      for (const auto& [got, product] : products) EXPECT_EQ(got, product[0][0]) << "column " << j;
    }
  }
}

TEST(NQSymBlockDiagMatrix, CompanionsRefuseWhatDoesNotFit) {
  const Blocks b = MakeBlocks({2, -1}), invalid({-1}, NQBitSet(1));
  NQSymMatrix s(4, true), small(2, true), out;
  NQRectMatrix r(4, 4, true);
  const Values v(6, 1.0), three(3, 1.0);
  Values x{7};
  NQ_EXPECT_REFUSED(
      small.AugmentUsingBlockDiagL(b), s.AugmentUsingBlockDiagL(invalid),
      s.SubSymVectBlockL(0, 2, b, x), s.SubSymVectBlockL(4, 0, b, x), s.SubSymSBlockL(-1, b, r),
      s.SubSymBlockLTSBlockL(2, b, out), s.SubSymRectTBlockL(0, 3, 2, b, r),
      s.ComputeSSubBSSub(0, 5, 0, b, out), b.ComputeProductLAndSquare(r, r),
      b.ComputeSymRowByL(s, 0, x), b.ComputeVecPartByL(v, 4, x),
      b.ComputeVecIIncrPartByL(v, 1, 2, x), b.ComputeVecIIncrPartByL(v, 0, -1, x),
      invalid.ComputeVecPartByL(v, 0, x), b.UpdateDenseColumnPart(0, 1, r, 2, 0),
      b.UpdateDenseColumnPart(0, 1, r, 0, 4), NQSymMatrix::ComputeVBW(v, b, three),
      s.DotProductLBlockDiagColRow(b, 0, 0, 2), s.DotProductLBlockDiagColRow(b, 3, 0, 0),
      b.DotProductLColVecIIncrPart(0, v, 1, 3), b.DotProductColVecIIncrPart(-1, v, 0, 0),
      b.DotProductLColDenseRowPart(0, r, 0, 2), b.ComputeRVDParts(0, 1, 3, v, 1),
      b.ComputeRVDParts(0, 0, 3, three, INT_MIN));
  EXPECT_EQ(x, Values{7});
  EXPECT_EQ(ToDense(s), Dense(4, Values(4)));
}

// ---- Blocks of one order

TEST(NQSymBlockMatrix, SymmetricBlocksMakeASymmetricMatrix) {
  NQSymBlockMatrix blocks(2, 2);
  double x = 0;
  for (NQSymMatrix& block : blocks.AsVectorSS()) block.SetData({x + 1, x + 2, x + 3}), x += 10;
  EXPECT_EQ(&blocks.GetElemSSRef(0, 1), &blocks.GetElemSSRef(1, 0));
  EXPECT_EQ(blocks.GetElemSSRef(1, 0).GetElem(1, 0), 12);
  NQSymMatrix out;
  NQDiagMatrix diagonal;
  EXPECT_EQ(blocks.CopyToSymMatrix(out), 4);
  EXPECT_EQ(ToDense(out),
            Dense({{1, 2, 11, 12}, {2, 3, 12, 13}, {11, 12, 21, 22}, {12, 13, 22, 23}}));
  EXPECT_EQ(blocks.CopyToSymMatrix(blocks.GetElemSSRef(1, 1)), 4);  // into a block, which is read
  EXPECT_EQ(ToDense(blocks.GetElemSSRef(1, 1)), ToDense(out));
  EXPECT_EQ(blocks.CopyToSymMatrix(out), -1);  // now that a block has left its order
  EXPECT_EQ(blocks.CopyToSymMatrix(diagonal), -1);
  EXPECT_TRUE(blocks.SetNRows(2, 2, true));
  EXPECT_EQ(blocks.CopyToSymMatrix(out), 4);
  EXPECT_EQ(ToDense(out), Dense(4, {0, 0, 0, 0}));
}

TEST(NQSymBlockMatrix, Shapes) {
  for (const auto& [nb, bs, wantedBlocks, wantedSize, order, stored] :
       std::vector<std::array<int, 6>>{
#include "math/matrix/block_shapes_cases.inc"
       }) {
    NQSymBlockMatrix blocks;
    NQSymMatrix out;
    EXPECT_EQ(blocks.GetNBlocks() + blocks.GetBlockSize(), 0);
    EXPECT_EQ(blocks.SetNRows(nb, bs, true), order >= 0) << nb << ", " << bs;
    EXPECT_EQ((std::array{blocks.GetNBlocks(), blocks.GetBlockSize(), blocks.CopyToSymMatrix(out),
                          static_cast<int>(blocks.AsVectorSSConst().size())}),
              (std::array{wantedBlocks, wantedSize, order, stored}))
        << nb << ", " << bs;
    EXPECT_EQ(blocks.IsValid(), order >= 0) << nb << ", " << bs;
  }
}

}  // namespace
}  // namespace NQMath_940
