// A structured matrix stands in for its dense expansion: every operation of the interface gives the
// same values on both, and with sparse operands as with dense ones. Entries are chosen so that both
// ways of computing are exact, but for the rounding of determinants and norms. Where a class has a
// rule of its own, it is tested apart.

#include <array>
#include <string>
#include <tuple>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// A sparse matrix and its dense expansion; `r` is the one wanted.
struct Rect {
  Rect(bool isSparse, int m, int n, int k, std::mt19937& random)
      : sparse(RandomSparse(m, n, k, random)), dense(ToRect(ToDense(sparse))) {
    r = isSparse ? static_cast<INQRectMatrix*>(&sparse) : &dense;
  }

  NQSparseRectMatrix sparse;
  NQRectMatrix dense;
  INQRectMatrix* r;
};

struct Inputs {
  int n;
  bool isSparse;
  int last = n - 1;
  std::mt19937 random{static_cast<unsigned>(n)};
  Rect wide{isSparse, 3, n, n, random}, columns{isSparse, n, 2, 1, random};
  std::size_t size = static_cast<std::size_t>(n);
  const INQRectMatrix &r = *wide.r, &tall = *columns.r;
  NQRectMatrix wrong = RandomRect(n + 1, n + 1, random);
  NQSymMatrix m = RandomSym(n, random), g = RandomSym(n, random), larger{n + 1, true};
  Values v = RandomVector(size, random), w = RandomVector(size, random), t = Values(size, 1.0);
  Values zero = Values(size), none{};
  NQBitSet first{Bits{true}};
};

// Whatever an operation may answer through.
struct Outputs {
  NQSymMatrix sym;
  NQRectMatrix rect;
  Values v;
  NQBitSet set;
  double x = 7, y = 7, z = 7, u = 7;
  NQDeterminant det{7, 7};
};

// All answers and the matrix as it is afterwards, as one list.
template <class Matrix>
Values Flatten(Values values, const Matrix& s, const Outputs& out) {
  values.insert(values.end(), {out.x, out.y, out.z, out.u, out.det.first, 1.0 * out.det.second});
  for (const Dense& d : {ToDense(s), ToDense(out.sym), ToDense(out.rect), Dense{out.v}}) {
    values.push_back(static_cast<double>(d.size()));
    for (const auto& row : d) values.insert(values.end(), row.begin(), row.end());
  }
  for (int i = 0; i < out.set.Size(); ++i) values.push_back(out.set.IsIn(i));
  return values;
}

template <class Matrix, class In>
struct RowOf {
  bool refused;
  const char* name;
  Values (*run)(Matrix& s, In& in, Outputs& out);

  void ExpectSame(const std::string& label, Matrix& structured, In& in, Matrix& dense,
                  In& denseIn) const {
    Outputs got, wanted;
    const Values before = Flatten({}, dense, wanted);
    Values result = run(structured, in, got), resultWanted = run(dense, denseIn, wanted);
    SCOPED_TRACE(label + ": " + name);
    for (std::size_t k = 0; refused && k < result.size(); ++k)
      EXPECT_TRUE(Answer(resultWanted[k]).Refuses()) << CallAt(name, k);
    EXPECT_TRUE(!refused || Flatten({}, dense, wanted) == before);
    result = Flatten(result, structured, got);
    resultWanted = Flatten(resultWanted, dense, wanted);
    ASSERT_EQ(result.size(), resultWanted.size());
    for (std::size_t k = 0; k < result.size(); ++k)
      EXPECT_CLOSE(result[k], resultWanted[k], 1e-14) << "value " << k << ' ' << CallAt(name, k);
  }
};

template <class... T>
Values List(T... results) {
  return {static_cast<double>(results)...};
}

// The operations of a row answer through different outputs: their order is not defined. Refused
// ones return false, -1 or the missing value, and change nothing.
#define NQ_ROW_OF(Matrix, In, refused, ...)                                                      \
  {                                                                                              \
    refused, #__VA_ARGS__,                                                                       \
        []([[maybe_unused]] Matrix& s, [[maybe_unused]] In& in, [[maybe_unused]] Outputs& out) { \
          return List(__VA_ARGS__);                                                              \
        }                                                                                        \
  }
#define NQ_ROW(...) NQ_ROW_OF(INQSymMatrix, Inputs, false, __VA_ARGS__)
#define NQ_REFUSED(...) NQ_ROW_OF(INQSymMatrix, Inputs, true, __VA_ARGS__)

const RowOf<INQSymMatrix, Inputs> kRows[] = {
    NQ_ROW((s.GetDiagonal(out.v), s.GetNCheckDiagonal(in.t, 1, 2), in.t[0])),
    NQ_ROW((s.AddToDiagonal(3), s.ChangeSign(), s.MultiplyByNumber(-2), s.Trace())),
    NQ_ROW((s.ZeroOut(in.last), s.SetElem(0, 0, 7), s.ZeroOutNonDiag(0.5), 0)),
    NQ_ROW(s.Resize(in.n > 1 ? -1 : 0)),
    NQ_ROW(s.Resize(in.n + 2)),
    NQ_ROW(s.SetNRows(in.n, true)),
    NQ_ROW(s.PutRow(0, in.zero)),
    NQ_ROW(s.SetRowColToConst(0, 0)),
    NQ_ROW(s.IsZeroRow(0, in.first), s.IsZeroRow(in.last, in.first)),
    NQ_ROW(in.n > 1 && (s.MaxMinDiagOffDiag(out.x, out.y, out.z, out.u), true)),
    // Cholesky
    NQ_ROW(s.CholInverse(in.t, 0.5, out.sym), s.ComputeSV(in.v, out.v)),
    NQ_ROW(s.CholInverse(in.t, 0.5, out.sym, out.set), s.ComputeSV(in.v, in.last, out.v)),
    NQ_ROW(s.CholInverse(in.t, 0.5, out.sym, out.x), s.ComputeLV(in.v, out.v)),
    NQ_ROW(s.LTChol(in.t, 0.5, true)),
    NQ_ROW(s.LTChol(in.t, 4, true)),
    NQ_ROW((in.t[0] = -1, s.LTChol(in.t, 0.5, true))),
    NQ_ROW((out.set.Resize(in.n + 1, true), s.LTChol(in.t, 0.5, out.set, true))),
    NQ_ROW(s.LTChol(1e-12, out.x, true)),
    NQ_ROW(s.LTChol(-1, out.x, true)),
    NQ_ROW(s.LTDetInverse(out.det, 11)),
    NQ_ROW((s.LTDetInverse(out.det, 10), s.LTInverse())),
    NQ_ROW((s.LTLLTrans(), s.MaxMinDiag(out.x, out.y), s.LTLTransL(), 0)),
    NQ_ROW(s.LTSolve(in.v, 1e-12, out.v)),
    // Vectors and numbers
    NQ_ROW(s.ComputeDotProduct2Rows(0, in.last), s.ComputeRowDotProductS(in.last, in.m, 0),
           s.ComputeRowDotProductS(in.last, in.v), s.ComputeRVD(0, in.v, -1),
           s.ComputeRVD(in.last, in.v, in.n > 1 ? 2 : 0), s.ComputeRVD(in.last, in.v.data(), 0)),
    NQ_ROW(s.ComputeVSV(in.v), s.ComputeVSV(in.r, 2), s.ComputeVSW(in.v, in.w),
           s.ComputeVSW(in.v.data(), in.n, in.w.data(), in.last), s.ComputeVSW(in.v, 0, 0),
           s.ComputeVSWParts(in.v.data(), in.last, 1, in.w.data(), in.n, 0)),
    NQ_ROW(s.Trace(), s.TraceOfProduct(in.m), s.TraceOfProductOfThree(in.m, in.g)),
    // Products, and parts
    NQ_ROW(s.ComputeGMG(in.m, out.sym), s.ComputeMGN(in.m, in.g, out.rect)),
    NQ_ROW(s.ComputeGSG(in.g, out.sym), s.ComputeGMGNG(in.m, in.g, out.rect)),
    NQ_ROW(s.ComputeLSLTrans(in.m, out.sym), s.ComputeSS(in.m, out.rect)),
    NQ_ROW(s.ComputeLTransSL(in.m, out.sym), s.ComputeRS(in.r, out.rect)),
    NQ_ROW(s.ComputeRSRTrans(in.r, out.sym), s.ComputeRTransS(in.tall, out.rect)),
    NQ_ROW(s.ComputeRTransSR(in.tall, out.sym), s.ComputeRTransSV(in.tall, in.v, out.v)),
    NQ_ROW(s.ComputeSTransS(out.sym), s.ComputeLTransV(in.v, out.v)),
    NQ_ROW((out.sym.Resize(in.last), s.ExtractFirstNRows(out.sym)), s.GetRow(in.last, out.v)),
    NQ_ROW(s.ExtractSubmatrix({in.last}, out.sym), s.ComputeLV({in.last, 0, 0}, {2, 3, 4}, out.v)),
    NQ_ROW(s.ExtractSubmatrix({in.last, 0, in.last}, out.sym),
           s.ComputeLTransV({in.last, 0, 0}, {2, 3, 4}, out.v)),
    // As an operand
    NQ_ROW((out.sym = in.m).ComputeAXpY(2, s), s.IncrVecByRow(in.last, out.v = in.v, 3)),
    NQ_ROW(in.g.ComputeGMG(s, out.sym), in.m.ComputeSS(s, out.rect)),
    NQ_ROW(in.m.ComputeGSG(s, out.sym), in.g.ComputeMGN(in.m, s, out.rect)),
    NQ_ROW(in.m.ComputeLSLTrans(s, out.sym), in.wide.dense.ComputeMatrixProduct(s, out.rect)),
    NQ_ROW(in.m.ComputeLTransSL(s, out.sym), in.g.ComputeGMGNG(s, in.m, out.rect)),
    NQ_ROW(NQDiagMatrix(in.v).ComputeMGN(s, in.m, out.rect), s.ComputeDeterminant(1e-12, out.det)),
    NQ_ROW(in.columns.dense.ComputeR1TransSR2(s, in.columns.dense, out.rect),
           in.m.TraceOfProductOfThree(s, in.g)),
    NQ_ROW(in.columns.dense.CreateBlockDiagonal(2, out.rect) &&
               out.rect.ComputeBlockDiagSR(s, out.rect),
           in.wrong.ComputeBlockDiagSR(s, in.wrong)),
    NQ_ROW(in.g.ExpandSymToRect(out.rect) && out.rect.SubtractSymMatrix(s, 3)),
    NQ_ROW(in.m.ExpandSymToRect(out.rect) && out.rect.TraceOfProductSqS(s, out.x)),
    NQ_REFUSED(s.ComputeSV(in.none, out.v), s.ZeroOut(-1), s.ComputeLTransV({in.n}, {2}, out.v),
               s.ComputeLV({0}, {1, 1}, out.v), s.ComputeMGN(in.larger, in.g, out.rect),
               s.ComputeGMGNG(in.larger, in.m, out.rect), s.ComputeRVD(in.n, in.v.data(), 1)),
    NQ_REFUSED(
        s.GetRow(in.n, out.v), s.PutRow(0, in.none), s.PutRow(in.n, in.zero),
        s.SetRowColToConst(-1, 0), s.IncrVecByRow(0, in.none, 3), s.IsZeroRow(-1, in.first),
        s.ZeroOut(in.n), s.ComputeDotProduct2Rows(0, in.n), s.ComputeRowDotProductS(0, in.m, in.n),
        s.ComputeRowDotProductS(0, in.none), s.ComputeRVD(-1, in.v.data(), 1),
        s.ComputeSV(in.v, in.n + 1, out.v), s.ComputeLV(in.none, out.v),
        s.ComputeLV({in.n}, {2}, out.v), s.ComputeLTransV({0}, {}, out.v), s.ComputeVSV(in.r, 3),
        s.ComputeVSW(in.v, 0, 1), s.ComputeVSWParts(in.v, 1, in.w, 0), s.TraceOfProduct(in.larger),
        s.TraceOfProductOfThree(in.m, in.larger), s.LTChol(in.t, -1, true),
        s.LTChol(in.none, 0.5, true), s.LTChol(in.t, -1, out.set, true), s.LTSolve(in.v, -1, out.v),
        s.LTSolve(in.none, 1, out.v), s.ComputeGMG(in.larger, out.sym),
        s.ComputeGSG(in.larger, out.sym), s.ComputeMGN(in.m, in.larger, out.rect),
        s.ComputeLSLTrans(in.larger, out.sym), s.ComputeSS(in.larger, out.rect),
        s.ComputeRS(in.wrong, out.rect), s.ComputeRTransSR(in.wrong, out.sym),
        s.ExtractFirstNRows(in.larger), s.ExtractSubmatrix({0, in.n}, out.sym),
        s.ComputeGMGNG(in.m, in.larger, out.rect), s.ComputeRTransS(in.wrong, out.rect),
        s.ComputeRSRTrans(in.wrong, out.sym), s.ComputeRTransSV(in.wrong, in.v, out.v),
        s.ComputeVSV(in.none), s.ComputeVSW(in.v, in.none)),
};

template <class Matrix>
void ExpectAsDense(const std::string& name, const Matrix& matrix) {
  for (const bool isSparse : {false, true}) {
    for (const auto& row : kRows) {
      Matrix s = matrix;
      NQSymMatrix dense = ToSym(ToDense(s));
      Inputs in{s.GetNRows(), isSparse}, denseIn{s.GetNRows(), false};
      row.ExpectSame(name + (isSparse ? ", R sparse" : ""), s, in, dense, denseIn);
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

// ---- Rectangular matrices -----------------------------------------------------------------------

struct RectInputs {
  int m, n, k;
  bool isSparse;
  int last = m - 1;
  std::mt19937 random{static_cast<unsigned>(m * n)};
  Rect times{isSparse, n, 3, 2, random}, timesTrans{isSparse, 4, n, k, random},
      same{isSparse, m, n, k, random};
  const INQRectMatrix &b = *times.r, &c = *timesTrans.r;
  NQRectMatrix a = RandomRect(2, m, random), d = RandomRect(2, n, random);
  Values v = RandomVector(static_cast<std::size_t>(n), random);
  Values w = RandomVector(static_cast<std::size_t>(m), random), none{}, one{3};
  Values full = RandomVector(static_cast<std::size_t>(k), random);
  Indices places = [this] {
    Indices tail;
    for (int j = n - k; j < n; ++j) tail.push_back(j);
    return tail;
  }();
  Indices lastPlace{n - 1}, tooFar{n}, bad{0, n}, badRow{m}, two{n - 1, 0, n - 1},
      rows{m - 1, 0, m - 1};
};

#define NQ_RECT(...) NQ_ROW_OF(INQRectMatrix, RectInputs, false, __VA_ARGS__)
#define NQ_RECT_REFUSED(...) NQ_ROW_OF(INQRectMatrix, RectInputs, true, __VA_ARGS__)

const RowOf<INQRectMatrix, RectInputs> kRectRows[] = {
    NQ_RECT(s.AddRow(), s.AddRow(NQSparseVector(in.places, in.full))),
    NQ_RECT(s.SetRow(0, NQSparseVector(in.lastPlace, in.one))),
    NQ_RECT((s.Resize(in.last, in.n), s.Resize(in.m + 20, in.n))),
    NQ_RECT(s.Resize(-1, in.n)),
    NQ_RECT(s.SetNRowsCols(in.m + 1, in.n + 1, true)),
    NQ_RECT((s.Clear(), s.IsRowZero(0))),
    NQ_RECT(s.ZeroOutRowPart(in.last, 1, in.n - 1)),
    NQ_RECT(s.CopyRows(*in.same.r, 1, in.last)),
    NQ_RECT(s.CopyRows(s, 1, in.last)),
    NQ_RECT(s.CopyRowToRow(in.last, 1, in.d) && in.d.GetRow(1, out.v)),
    NQ_RECT(s.CopyRowToRow(in.last, 0, in.same.sparse) && in.same.sparse.GetRow(0, out.v)),
    NQ_RECT((s.CopyRowToRow(0, in.last, s), s.CopyRowToRow(0, 0, s))),
    NQ_RECT(s.ExtractColumns(in.two, out.rect), s.GetRow(in.last, out.v), s.ColNorm(0)),
    NQ_RECT(s.ExtractRows(in.rows, out.rect), s.GetCol(0, out.v), s.RowNorm(in.last)),
    NQ_RECT(s.CreateBlockDiagonal(2, out.rect), s.CopyColToVec(in.n - 1, out.v), s.IsRowZero(0)),
    NQ_RECT(s.ShiftColumns(1, out.rect), out.sym.ComputeRTransByR(s)),
    NQ_RECT(s.ShiftColumns(-2, out.rect), out.sym.ComputeRByRTrans(s)),
    NQ_RECT(s.ShiftRows(1, out.rect), s.ComputeRV(in.v, out.v)),
    NQ_RECT(s.ShiftRows(-2, out.rect), s.ComputeVR(in.w, out.v), s.IsRowZero(in.last)),
    NQ_RECT(s.ComputeMatrixProduct(in.b, out.rect), s.DotProductCol(0, in.n - 1)),
    NQ_RECT(s.ComputeProductMatrixTrans(in.c, out.rect), s.DotProductRows(0, in.last)),
    NQ_RECT(s.ComputeProductMatrixTrans(s, out.rect)),
    NQ_RECT(s.DotProductRowCol(in.last, in.b, 2), s.DotProductRowRow(0, in.c, 3)),
    NQ_RECT(s.IncrVecByColumn(0, out.v = in.w, 1, in.last, 3, true)),
    NQ_RECT(s.IncrVecByColumn(0, in.none, 0, 0, 3, false),
            s.IncrVecByColumn(in.n - 1, out.v = in.one, in.last, 1, 2, false)),
    // As an operand
    NQ_RECT(in.a.ComputeMatrixProduct(s, out.rect), in.d.ComputeMatrixProduct(s, out.rect)),
    NQ_RECT(in.d.ComputeProductMatrixTrans(s, out.rect)),
    NQ_RECT(out.rect.CopyColumns(s, in.n - 1, 1),
            ToRect(ToDense(s)).DotProductColCol(0, s, in.n - 1)),
    NQ_RECT_REFUSED(
        s.GetRow(in.m, out.v), s.GetRow(-1, out.v), s.GetCol(in.n, out.v),
        s.CopyColToVec(-1, out.v), s.AddRow(NQSparseVector(in.places, in.none)),
        s.AddRow(NQSparseVector(in.tooFar, in.one)),
        s.SetRow(in.m, NQSparseVector(in.lastPlace, in.one)),
        s.SetRow(0, NQSparseVector(in.tooFar, in.one)), s.IsRowZero(in.m),
        s.ZeroOutRowPart(0, 1, in.n), s.ZeroOutRowPart(in.m, 0, 1), s.ColNorm(in.n), s.RowNorm(-1),
        s.IsRowZero(-1), s.CopyRows(in.a, 0, 3), s.CopyRows(s, 1, in.m), s.CopyRowToRow(0, 2, in.d),
        s.CopyRowToRow(0, 0, in.times.dense), s.CopyRowToRow(in.m, 0, in.same.sparse),
        s.CopyRowToRow(0, 0, in.times.sparse), s.ExtractColumns(in.bad, out.rect),
        s.ExtractRows(in.badRow, out.rect), s.CreateBlockDiagonal(-1, out.rect),
        s.ComputeMatrixProduct(NQRectMatrix(in.n + 1, 1, true), out.rect),
        s.ComputeProductMatrixTrans(in.b, out.rect), s.ComputeRV(in.none, out.v),
        s.ComputeVR(in.none, out.v), s.DotProductCol(0, in.n), s.DotProductRows(in.m, 0),
        s.DotProductRowCol(0, in.b, 3), s.DotProductRowRow(0, in.c, -1),
        s.DotProductRowRow(0, in.b, 0), s.IncrVecByColumn(in.n, out.v, 0, 1, 3, true),
        s.IncrVecByColumn(0, in.w, 1, in.last, 2, false)),
};

TEST(Substitution, RectangularMatrices) {
  for (const auto& [m, n, k] : {std::array{3, 2, 1}, {2, 2, 2}, {9, 4, 1}, {5, 8, 3}, {6, 6, 6}}) {
    for (unsigned seed = 0; seed < 4; ++seed) {
      for (const auto& row : kRectRows) {
        std::mt19937 random(seed);
        NQSparseRectMatrix sparse = RandomSparse(m, n, k, random);
        NQRectMatrix dense = ToRect(ToDense(sparse));
        RectInputs in{m, n, k, seed % 2 == 1}, denseIn{m, n, k, false};
        row.ExpectSame("m, n, k, seed " + ::testing::PrintToString(std::tuple{m, n, k, seed}),
                       sparse, in, dense, denseIn);
      }
    }
  }
}

// ---- The diagonal matrix's own rules ------------------------------------------------------------

TEST(NQDiagMatrix, DeterminantIsTheProduct) {
  NQDeterminant det{7, 7};
  EXPECT_FALSE(NQDiagMatrix().ComputeDeterminant(0, det));
  EXPECT_EQ(det, NQDeterminant(7, 7));
  // A diagonal, mantissa and power of ten of its product: also the determinant of a factor.
  for (const auto& [diagonal, wanted] : std::vector<std::pair<Values, NQDeterminant>>{
           {{25, 4}, {1, 2}},
           {{4, 0, 5}, {0, 0}},
           {{-2, 3}, {-6, 0}},
           {{-0.5, 0.25, -1}, {1.25, -1}},
           {{1e300, 2e300, 1e300}, {2, 900}},
           {{5, 1e308}, {5, 308}},
           {{1e308, 5}, {5, 308}},
           {{9.5, 3e307}, {2.85, 308}},
           {{1.5, 5e-324}, {7.4109846876186981, -324}},  // the smallest double is 4.94e-324
           {{0, kNaN}, {0, 0}}}) {
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
