// The operations of the two matrix interfaces with their operands, as rows that are run on a
// structured matrix and on its dense expansion (substitution_test.cpp), and with memory that ends
// (memory/matrix_test.cpp). Entries are chosen so that all ways of computing are exact, but for the
// rounding of determinants and norms.
#pragma once

#include <array>
#include <string>

#include "math/matrix/matrix_support.h"

namespace nqtest {

using namespace NQMath_940;

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
  bool isSparse = false;
  int last = n - 1;
  std::mt19937 random{static_cast<unsigned>(n)};
  Rect wide{isSparse, 3, n, n, random}, columns{isSparse, n, 2, 1, random};
  std::size_t size = static_cast<std::size_t>(n);
  const INQRectMatrix &r = *wide.r, &tall = *columns.r;
  NQRectMatrix wrong = RandomRect(n + 1, n + 1, random), twice = RandomRect(2 * n, 4, random);
  NQSymMatrix m = RandomSym(n, random), g = RandomSym(n, random), larger{n + 1, true};
  Values v = RandomVector(size, random), w = RandomVector(size, random), t = Values(size, 1.0);
  Values zero = Values(size), minus = Values(size, -1.0), none{}, three{2, 3, 4};
  Indices once{last}, again{last, 0, last}, places{last, 0, 0};
  NQBitSet first{Bits{true}};
};

struct RectInputs {
  int m, n, k;
  bool isSparse = false;
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

// Whatever an operation may answer through; what some operations change is there before.
struct Outputs {
  explicit Outputs(const Inputs& in)
      : sym(in.m),
        part(in.last, true),
        rect(ToRect(ToDense(in.g))),
        v(in.v),
        set2(Bits(in.size + 1, true)) {}
  explicit Outputs(const RectInputs& in) : v(in.w) {}

  NQSymMatrix sym, part;
  NQRectMatrix rect;
  Values v, u{5};
  NQDiagMatrix diagonal{1, true};
  NQSymBlockDiagMatrix blocks;
  Indices list{7};
  NQBitSet set, set2;
  bool flag = false;
  double x = 7, y = 7, z = 7, least = 7;
  NQDeterminant det{7, 7};
};

// The elements behind the number of rows; {-1} of a matrix that has been lost. Nothing of what is
// no matrix, which shows in its answers alone.
template <class Matrix>
Values Flat(const Matrix& m) {
  if constexpr (!requires { ToDense(m); }) {
    return {};
  } else {
    Values flat{static_cast<double>(m.GetNRows())};
    for (const Values& row : m.IsValidMatrix() ? ToDense(m) : Dense())
      flat.insert(flat.end(), row.begin(), row.end());
    return flat;
  }
}

// The matrix, then what may have been written.
template <class Matrix>
std::vector<Values> Pieces(const Matrix& s, const Outputs& out) {
  return {Flat(s),
          Flat(out.sym),
          Flat(out.part),
          Flat(out.rect),
          Flat(out.diagonal),
          Flat(out.blocks),
          out.v,
          out.u,
          Values(out.list.begin(), out.list.end())};
}

// And what says more of an operation that was done.
inline Values Details(const Outputs& out) {
  Values details{out.x,         out.y, out.z, out.least, out.det.first, 1.0 * out.det.second,
                 1.0 * out.flag};
  for (const NQBitSet* set : {&out.set, &out.set2}) {
    for (int i = 0; i < set->Size(); ++i) details.push_back(set->IsIn(i));
  }
  return details;
}

// The answers of the calls of a row, and zeros. No memory is needed for them.
using Answers = std::array<Answer, 48>;

// Where memory ends, an operation that resizes the matrix loses it.
enum Meaning { kDone, kResizes, kRefused };

template <class Matrix, class In>
struct Operation {
  Meaning meaning;
  const char* name;
  Answers (*run)(Matrix& s, In& in, Outputs& out);
};

// The calls of a row answer through different outputs: their order is not defined. Refused ones
// change nothing. A + stands before a question, to which no is an answer.
#define NQ_ROW_THAT(meaning, ...)                                                             \
  {                                                                                           \
    meaning, #__VA_ARGS__,                                                                    \
        []([[maybe_unused]] auto& s, [[maybe_unused]] auto& in, [[maybe_unused]] auto& out) { \
          return Answers{__VA_ARGS__};                                                        \
        }                                                                                     \
  }
#define NQ_ROW(...) NQ_ROW_THAT(kDone, __VA_ARGS__)
#define NQ_RESIZES(...) NQ_ROW_THAT(kResizes, __VA_ARGS__)
#define NQ_REFUSED(...) NQ_ROW_THAT(kRefused, __VA_ARGS__)

inline const Operation<INQSymMatrix, Inputs> kSymOperations[] = {
    NQ_ROW((s.GetDiagonal(out.v), !out.v.empty())),
    NQ_ROW((s.GetNCheckDiagonal(out.v, 1, 2), !out.v.empty())),
    NQ_ROW((s.AddToDiagonal(3), s.ChangeSign(), s.MultiplyByNumber(-2), s.Trace())),
    NQ_ROW((s.ZeroOut(in.last), s.SetElem(0, 0, 7), s.ZeroOutNonDiag(0.5), 0)),
    NQ_RESIZES(s.Resize(in.n > 1 ? -1 : 0)),
    NQ_RESIZES(s.Resize(in.n + 2)),
    NQ_RESIZES(s.SetNRows(in.n, true)),
    NQ_ROW(s.PutRow(0, in.zero)),
    NQ_ROW(s.SetRowColToConst(0, 0)),
    NQ_ROW(+s.IsZeroRow(0, in.first), +s.IsZeroRow(in.last, in.first)),
    NQ_ROW((s.MaxMinDiagOffDiag(out.x, out.y, out.z, out.least), 0)),
    // Cholesky
    NQ_ROW(s.CholInverse(in.t, 0.5, out.sym), s.ComputeSV(in.v, out.v)),
    NQ_ROW(s.CholInverse(in.t, 0.5, out.sym, out.set), s.ComputeSV(in.v, in.last, out.v)),
    NQ_ROW(s.CholInverse(in.t, 0.5, out.sym, out.x), s.ComputeLV(in.v, out.v)),
    NQ_ROW(s.LTChol(in.t, 0.5, true)),
    NQ_ROW(s.LTChol(in.t, 4, true)),
    NQ_ROW(s.LTChol(in.t, 0, true)),
    NQ_ROW(s.LTChol(in.t, -1, false)),
    NQ_ROW(s.LTChol(in.t, 0.5, out.set2, true)),
    NQ_ROW(s.LTChol(1e-12, out.x, true)),
    NQ_ROW(s.LTChol(-1, out.x, true) == -1),
    NQ_ROW(s.LTDetInverse(out.det, 11)),
    NQ_ROW((s.LTDetInverse(out.det, 10), s.LTInverse())),
    NQ_ROW((s.LTLLTrans(), s.MaxMinDiag(out.x, out.y), s.LTLTransL(), 0)),
    NQ_ROW(s.LTSolve(in.v, 1e-12, out.v)),
    // Vectors and numbers
    NQ_ROW(s.ComputeDotProduct2Rows(0, in.last), s.ComputeRowDotProductS(in.last, in.m, 0),
           s.ComputeRowDotProductS(in.last, in.v), s.ComputeRVD(0, in.v, -1),
           s.ComputeRVD(in.last, in.v, 0), s.ComputeRVD(in.last, in.v.data(), 0),
           s.ComputeRVD(in.last, in.twice.GetRowPtr(0), -2)),
    NQ_ROW(s.ComputeVSV(in.v), s.ComputeVSV(in.r, 2), s.ComputeVSW(in.v, in.w),
           s.ComputeVSW(in.v.data(), in.n, in.w.data(), in.last), s.ComputeVSW(in.v, 0, 0),
           s.ComputeVSWParts(in.v.data(), in.last, 1, in.w.data(), in.n, 0),
           s.ComputeVSWParts(in.v.data(), in.n, 0, in.w.data(), in.last, 1)),
    NQ_ROW(s.Trace(), s.TraceOfProduct(in.m), s.TraceOfProductOfThree(in.m, in.g)),
    // Products, and parts
    NQ_ROW(s.ComputeGMG(in.m, out.sym), s.ComputeMGN(in.m, in.g, out.rect)),
    NQ_ROW(s.ComputeGSG(in.g, out.sym), s.ComputeGMGNG(in.m, in.g, out.rect)),
    NQ_ROW(s.ComputeLSLTrans(in.m, out.sym), s.ComputeSS(in.m, out.rect)),
    NQ_ROW(s.ComputeLTransSL(in.m, out.sym), s.ComputeRS(in.r, out.rect)),
    NQ_ROW(s.ComputeRSRTrans(in.r, out.sym), s.ComputeRTransS(in.tall, out.rect)),
    NQ_ROW(s.ComputeRTransSR(in.tall, out.sym), s.ComputeRTransSV(in.tall, in.v, out.v)),
    NQ_ROW(s.ComputeSTransS(out.sym), s.ComputeLTransV(in.v, out.v)),
    NQ_ROW(s.ExtractFirstNRows(out.part), s.GetRow(in.last, out.v)),
    NQ_ROW(s.ExtractFirstNRows(out.sym)),
    NQ_ROW(s.ExtractSubmatrix(in.once, out.sym), s.ComputeLV(in.places, in.three, out.v)),
    NQ_ROW(s.ExtractSubmatrix(in.again, out.sym), s.ComputeLTransV(in.places, in.three, out.v)),
    // As an operand
    NQ_ROW(out.sym.ComputeAXpY(2, s), s.IncrVecByRow(in.last, out.v, 3)),
    NQ_ROW(in.g.ComputeGMG(s, out.sym), in.m.ComputeSS(s, out.rect)),
    NQ_ROW(in.m.ComputeGSG(s, out.sym), in.g.ComputeMGN(in.m, s, out.rect)),
    NQ_ROW(in.m.ComputeLSLTrans(s, out.sym), in.wide.dense.ComputeMatrixProduct(s, out.rect)),
    NQ_ROW(in.m.ComputeLTransSL(s, out.sym), in.g.ComputeGMGNG(s, in.m, out.rect)),
    NQ_ROW(NQDiagMatrix(in.v).ComputeMGN(s, in.m, out.rect), s.ComputeDeterminant(1e-12, out.det)),
    NQ_ROW(in.columns.dense.ComputeR1TransSR2(s, in.columns.dense, out.rect),
           in.m.TraceOfProductOfThree(s, in.g)),
    NQ_ROW(in.twice.ComputeBlockDiagSR(s, out.rect), +in.wrong.ComputeBlockDiagSR(s, in.wrong)),
    NQ_ROW(out.rect.SubtractSymMatrix(s, 3)),
    NQ_ROW(out.rect.TraceOfProductSqS(s, out.x)),
    NQ_REFUSED(s.ComputeSV(in.none, out.v), s.ZeroOut(-1), s.ComputeLTransV({in.n}, {2}, out.v),
               s.ComputeLV({0}, {1, 1}, out.v), s.ComputeMGN(in.larger, in.g, out.rect),
               s.ComputeGMGNG(in.larger, in.m, out.rect), s.ComputeRVD(in.n, in.v.data(), 1),
               s.ComputeRVD(0, in.none, 1), in.larger.ComputeVSV(in.r, 0),
               s.LTSolve(in.v, kNaN, out.v)),
    NQ_REFUSED(
        s.GetRow(in.n, out.v), s.PutRow(0, in.none), s.PutRow(in.n, in.zero),
        s.SetRowColToConst(-1, 0), s.IncrVecByRow(0, in.none, 3), s.IsZeroRow(-1, in.first),
        s.ZeroOut(in.n), s.ComputeDotProduct2Rows(0, in.n), s.ComputeRowDotProductS(0, in.m, in.n),
        s.ComputeRowDotProductS(0, in.none), s.ComputeRVD(-1, in.v.data(), 1),
        s.ComputeSV(in.v, in.n + 1, out.v), s.ComputeLV(in.none, out.v),
        s.ComputeLV({in.n}, {2}, out.v), s.ComputeLTransV({0}, {}, out.v), s.ComputeVSV(in.r, 3),
        s.ComputeVSW(in.v, 0, 1), s.ComputeVSWParts(in.v, 1, in.w, 0), s.TraceOfProduct(in.larger),
        s.TraceOfProductOfThree(in.m, in.larger), s.LTChol(in.t, -1, true),
        s.LTChol(in.none, 0.5, true), s.LTChol(in.t, -1, out.set, true),
        s.LTChol(in.minus, 0.5, true), s.LTChol(in.minus, 0.5, out.set2, true),
        s.LTSolve(in.v, -1, out.v), s.LTSolve(in.none, 1, out.v), s.ComputeGMG(in.larger, out.sym),
        s.ComputeGSG(in.larger, out.sym), s.ComputeMGN(in.m, in.larger, out.rect),
        s.ComputeLSLTrans(in.larger, out.sym), s.ComputeSS(in.larger, out.rect),
        s.ComputeRS(in.wrong, out.rect), s.ComputeRTransSR(in.wrong, out.sym),
        s.ExtractFirstNRows(in.larger), s.ExtractSubmatrix({0, in.n}, out.sym),
        s.ComputeGMGNG(in.m, in.larger, out.rect), s.ComputeRTransS(in.wrong, out.rect),
        s.ComputeRSRTrans(in.wrong, out.sym), s.ComputeRTransSV(in.wrong, in.v, out.v),
        s.ComputeVSV(in.none), s.ComputeVSW(in.v, in.none)),
};

// ---- Rectangular matrices

inline const Operation<INQRectMatrix, RectInputs> kRectOperations[] = {
    NQ_RESIZES(s.AddRow(), s.AddRow(NQSparseVector(in.places, in.full))),
    NQ_ROW(s.SetRow(0, NQSparseVector(in.lastPlace, in.one))),
    NQ_RESIZES((s.Resize(in.last, in.n), s.Resize(in.m + 20, in.n))),
    NQ_RESIZES(s.Resize(-1, in.n)),
    NQ_RESIZES(s.SetNRowsCols(in.m + 1, in.n + 1, true)),
    NQ_ROW((s.Clear(), +s.IsRowZero(0))),
    NQ_ROW(s.ZeroOutRowPart(in.last - 1, 1, in.n - 2)),
    NQ_ROW(s.CopyRows(*in.same.r, 1, in.last)),
    NQ_ROW(s.CopyRows(s, 1, in.last)),
    NQ_ROW(s.CopyRowToRow(in.last, 1, in.d) && in.d.GetRow(1, out.v)),
    NQ_ROW(+s.CopyRowToRow(in.last, 0, in.same.sparse), in.same.sparse.GetRow(0, out.v)),
    NQ_ROW((s.CopyRowToRow(0, in.last, s), s.CopyRowToRow(0, 0, s))),
    NQ_ROW(s.ExtractColumns(in.two, out.rect), s.GetRow(in.last, out.v), s.ColNorm(0)),
    NQ_ROW(s.ExtractRows(in.rows, out.rect), s.GetCol(0, out.v), s.RowNorm(in.last)),
    NQ_ROW(s.CreateBlockDiagonal(2, out.rect), s.CopyColToVec(in.n - 1, out.v), +s.IsRowZero(0)),
    NQ_ROW(s.CreateBlockDiagonal(0, out.rect)),
    NQ_ROW(s.ShiftColumns(1, out.rect), out.sym.ComputeRTransByR(s)),
    NQ_ROW(s.ShiftColumns(-2, out.rect), out.sym.ComputeRByRTrans(s)),
    NQ_ROW(s.ShiftRows(1, out.rect), s.ComputeRV(in.v, out.v)),
    NQ_ROW(s.ShiftRows(-2, out.rect), s.ComputeVR(in.w, out.v), +s.IsRowZero(in.last)),
    NQ_ROW(s.ComputeMatrixProduct(in.b, out.rect), s.DotProductCol(0, in.n - 1)),
    NQ_ROW(s.ComputeProductMatrixTrans(in.c, out.rect), s.DotProductRows(0, in.last)),
    NQ_ROW(s.ComputeProductMatrixTrans(s, out.rect)),
    NQ_ROW(s.DotProductRowCol(in.last, in.b, 2), s.DotProductRowCol(0, in.b, 0),
           s.DotProductRowRow(0, in.c, 3)),
    NQ_ROW(s.IncrVecByColumn(0, out.v, 1, in.last, 3, true)),
    NQ_ROW(s.IncrVecByColumn(0, in.none, 0, 0, 3, false),
           s.IncrVecByColumn(in.n - 1, out.u, in.last, 1, 2, false)),
    // As an operand
    NQ_ROW(in.a.ComputeMatrixProduct(s, out.rect)),
    NQ_ROW(in.d.ComputeProductMatrixTrans(s, out.rect)),
    NQ_ROW(out.rect.CopyColumns(s, in.n - 1, 1), in.same.dense.DotProductColCol(0, s, in.n - 1)),
    NQ_REFUSED(s.GetRow(in.m, out.v), s.GetRow(-1, out.v), s.GetCol(in.n, out.v),
               s.CopyColToVec(-1, out.v), s.AddRow(NQSparseVector(in.places, in.none)),
               s.AddRow(NQSparseVector(in.tooFar, in.one)),
               s.SetRow(in.m, NQSparseVector(in.lastPlace, in.one)),
               s.SetRow(0, NQSparseVector(in.tooFar, in.one)), s.IsRowZero(in.m),
               s.ZeroOutRowPart(0, 1, in.n), s.ZeroOutRowPart(in.m, 0, 1), s.ColNorm(in.n),
               s.RowNorm(-1), s.IsRowZero(-1), s.CopyRows(in.a, 0, 3), s.CopyRows(s, 1, in.m),
               s.CopyRowToRow(0, 2, in.d), s.CopyRowToRow(0, 0, in.times.dense),
               s.CopyRowToRow(in.m, 0, in.same.sparse), s.CopyRowToRow(0, 0, in.times.sparse),
               s.ExtractColumns(in.bad, out.rect), s.ExtractRows(in.badRow, out.rect),
               s.CreateBlockDiagonal(-1, out.rect),
               s.ComputeMatrixProduct(NQRectMatrix(in.n + 1, 1, true), out.rect),
               s.ComputeProductMatrixTrans(in.b, out.rect), s.ComputeRV(in.none, out.v),
               s.ComputeVR(in.none, out.v), s.DotProductCol(0, in.n), s.DotProductRows(in.m, 0),
               s.DotProductRowCol(0, in.b, 3), s.DotProductRowRow(0, in.c, -1),
               s.DotProductRowRow(0, in.c, 4), s.DotProductRowRow(0, in.b, 0),
               s.IncrVecByColumn(in.n, out.v, 0, 1, 3, true),
               s.IncrVecByColumn(0, in.w, 1, in.last, 2, false)),
};

}  // namespace nqtest
