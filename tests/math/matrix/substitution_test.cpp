// A structured matrix stands in for its dense expansion: every operation of the interface gives the
// same values on both, and with sparse operands as with dense ones. Where a class has a rule of its
// own, it is tested apart.

#include <tuple>

#include "math/matrix/operations.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

template <class Matrix, class In>
void ExpectSame(const std::string& label, const Operation<Matrix, In>& row, Matrix& structured,
                In& in, Matrix& dense, In& denseIn) {
  SCOPED_TRACE(label + ": " + row.name);
  Outputs got(in), wanted(denseIn);
  const std::pair before(Pieces(dense, wanted), Details(wanted));
  const Answers answers = row.run(structured, in, got);
  const Answers answersWanted = row.run(dense, denseIn, wanted);
  for (std::size_t k = 0; !CallAt(row.name, k).empty(); ++k) {
    EXPECT_EQ(answersWanted[k].refuses, row.meaning == kRefused) << CallAt(row.name, k);
    EXPECT_CLOSE(answers[k].value, answersWanted[k].value, 1e-14) << CallAt(row.name, k);
  }
  EXPECT_TRUE(row.meaning != kRefused ||
              std::pair(Pieces(dense, wanted), Details(wanted)) == before);
  std::vector<Values> pieces = Pieces(structured, got), piecesWanted = Pieces(dense, wanted);
  pieces.push_back(Details(got));
  piecesWanted.push_back(Details(wanted));
  for (std::size_t p = 0; p < pieces.size(); ++p) {
    ASSERT_EQ(pieces[p].size(), piecesWanted[p].size()) << "piece " << p;
    for (std::size_t k = 0; k < pieces[p].size(); ++k)
      EXPECT_CLOSE(pieces[p][k], piecesWanted[p][k], 1e-14) << "piece " << p << ", value " << k;
  }
}

template <class Matrix>
void ExpectAsDense(const std::string& name, const Matrix& matrix) {
  for (const bool isSparse : {false, true}) {
    for (const auto& row : kSymOperations) {
      Matrix s = matrix;
      NQSymMatrix dense = ToSym(ToDense(s));
      Inputs in{s.GetNRows(), isSparse}, denseIn{s.GetNRows()};
      ExpectSame<INQSymMatrix>(name + (isSparse ? ", R sparse" : ""), row, s, in, dense, denseIn);
    }
  }
}

TEST(Substitution, SymmetricMatrices) {
  for (std::size_t n : {1u, 2u, 7u}) {
    Values d{4, 16, 0, 1, 64, 0.25, 4};
    d.resize(n);
    ExpectAsDense("diagonal of order " + std::to_string(n), NQDiagMatrix(d));
  }
  std::mt19937 random(5);
  ExpectAsDense("dense", ToSym(ToDense(RandomBlocks({6}, random))));
  ExpectAsDense("zero diagonal", NQDiagMatrix(2, true));
  ExpectAsDense("zero blocks", MakeBlocks({-2, 2}));
  // Negative sizes are diagonal blocks.
  std::vector<Indices> structures{
      {1}, {-1}, {1, 1, 1, 1}, {12}, {-3, -4}, {-2, 3, -1, 0, 4}, {0, 5, 2, 3}};
  for (int k = 0; k < 12; ++k) {
    structures.push_back({1});
    for (auto b = random() % 5; b > 0; --b)
      structures.back().push_back(static_cast<int>(random() % 13) - 6);
  }
  for (const auto& sizes : structures)
    ExpectAsDense("blocks " + ::testing::PrintToString(sizes), RandomBlocks(sizes, random));
}

TEST(Substitution, RectangularMatrices) {
  for (const auto& [m, n, k] : {std::array{3, 2, 1}, {2, 2, 2}, {9, 4, 1}, {5, 8, 3}, {6, 6, 6}}) {
    for (unsigned seed = 0; seed < 4; ++seed) {
      for (const auto& row : kRectOperations) {
        std::mt19937 random(seed);
        NQSparseRectMatrix sparse = RandomSparse(m, n, k, random);
        NQRectMatrix dense = ToRect(ToDense(sparse));
        RectInputs in{m, n, k, seed % 2 == 1}, denseIn{m, n, k};
        ExpectSame<INQRectMatrix>(::testing::PrintToString(std::tuple{m, n, k, seed}), row, sparse,
                                  in, dense, denseIn);
      }
    }
  }
}

// ---- The diagonal matrix's own rules ------------------------------------------------------------

TEST(NQDiagMatrix, DeterminantIsTheProduct) {
  NQDeterminant det{7, 7};
  EXPECT_FALSE(NQDiagMatrix().ComputeDeterminant(0, det));
  EXPECT_EQ(det, NQDeterminant(7, 7));
  for (const auto& [diagonal, wanted] : std::vector<std::pair<Values, NQDeterminant>>{
#include "math/matrix/diagonal_determinants_cases.inc"
       }) {
    SCOPED_TRACE(::testing::PrintToString(diagonal));
    NQDiagMatrix d(diagonal);
    NQSymMatrix dense = ToSym(ToDense(d));
    NQSymBlockDiagMatrix blocks({&d, &dense});
    NQDeterminant ofDense, ofBlocks;
    EXPECT_TRUE(d.ComputeDeterminant(-1, det));
    dense.LTDetInverse(ofDense, 1);
    for (const NQDeterminant& got : {det, ofDense}) {
      EXPECT_CLOSE(got.first, wanted.first, 1e-13);
      EXPECT_EQ(got.second, wanted.second);
    }
    blocks.LTDetInverse(ofBlocks, 1);
    const double logDet = wanted.first != 0 ? 2 * LogDeterminant(wanted) : -kInf;
    EXPECT_CLOSE(LogDeterminant(ofBlocks), logDet, 1e-13);
  }
  EXPECT_EQ(LogDeterminant({0, 0}), -kInf);
}

TEST(NQDiagMatrix, WritesOffTheDiagonal) {
  NQDiagMatrix d(Values{1, 2, 3});
  EXPECT_FALSE(d.SetElem(0, 1, 9));
  EXPECT_TRUE(d.PutRow(1, {7, 8, 9}) && d.SetRowColToConst(2, 5) && d.SetElem(0, 4.0));
  EXPECT_EQ(ToDense(d), (Dense{{4, 0, 0}, {0, 8, 0}, {0, 0, 5}}));
  NQ_EXPECT_REFUSED(d.SetElem(3, 1.0), d.SetElem(-1, 1.0), d.ReplaceDiagonal({1, 2}),
                    d.ComputeAXpY(1, NQSymMatrix(3, true)),
                    d.ComputeAXpY(1, NQDiagMatrix(2, true)));
  EXPECT_TRUE(d.ComputeAXpY(2, d) && d.ReplaceDiagonal({d.GetElem(0), d.GetElem(1), 1}));
  EXPECT_EQ(ToDense(d), (Dense{{12, 0, 0}, {0, 24, 0}, {0, 0, 1}}));
  EXPECT_TRUE(d.Resize(0) && d.AsVectorConst().empty() && d.ReplaceDiagonal({}));
}

// A diagonal result goes into a diagonal matrix too, an operand included; no other result does.
TEST(NQDiagMatrix, DiagonalResults) {
  const NQDiagMatrix d(Values{2, 4}), five(Values{3, 5});
  const NQSymMatrix dense(2, true);
#define NQ_EXPECT_DIAGONAL(call, ...)                   \
  {                                                     \
    NQDiagMatrix m = five;                              \
    EXPECT_TRUE(call);                                  \
    EXPECT_EQ(ToDense(m), Dense(__VA_ARGS__)) << #call; \
  }
  NQ_EXPECT_DIAGONAL(d.ComputeGMG(m, m), {{12, 0}, {0, 80}});
  NQ_EXPECT_DIAGONAL(d.ComputeGSG(m, m), {{18, 0}, {0, 100}});
  NQ_EXPECT_DIAGONAL(d.ComputeLSLTrans(m, m), {{18, 0}, {0, 100}});
  NQ_EXPECT_DIAGONAL(d.ComputeLTransSL(m, m), {{18, 0}, {0, 100}});
  NQ_EXPECT_DIAGONAL(d.ComputeSTransS(m), {{4, 0}, {0, 16}});
  NQ_EXPECT_DIAGONAL(m.Resize(1) && d.ExtractFirstNRows(m), {{2}});
  NQDiagMatrix m = five;
  NQ_EXPECT_REFUSED(d.ComputeGMG(dense, m), d.ComputeGSG(dense, m), d.ComputeLTransSL(dense, m),
                    d.ExtractSubmatrix({1, 1}, m), d.CholInverse({}, 0, m));
  EXPECT_EQ(ToDense(m), (Dense{{3, 0}, {0, 5}}));
  EXPECT_TRUE(d.ExtractSubmatrix({1, 0}, m));
  EXPECT_EQ(m.CholInverse({0, 0}, 0, m), 2);
  EXPECT_NEAR(m.GetElem(0), 0.25, 1e-16);
  EXPECT_NEAR(m.GetElem(1), 0.5, 1e-15);
}

TEST(NQDiagMatrix, PartsOfRectangularRows) {
  const NQDiagMatrix d(Values{2, 3, 5});
  const NQRectMatrix r = ToRect({{1, 10, 100}, {2, 20, 200}});
  const double missing = kMissing;
  EXPECT_EQ((Values{d.ComputeRVD(1, r, 0, 3), d.ComputeRVD(1, r, 1, 2), d.ComputeRVD(1, r, 3, 0),
                    d.ComputeRVD(2, r, 0, 1), d.ComputeRVD(0, r, 1, 3), d.ComputeRVD(0, r, -1, 1)}),
            (Values{1064, 640, 0, missing, missing, missing}));
  EXPECT_EQ((Values{d.ComputeRTransVD(2, r, 0, 2), d.ComputeRTransVD(2, r, 1, 1),
                    d.ComputeRTransVD(0, r, 0, 3), d.ComputeRTransVD(3, r, 0, 1)}),
            (Values{800, 400, missing, missing}));
}

}  // namespace
}  // namespace NQMath_940
