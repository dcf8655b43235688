// A structured symmetric matrix stands in for its dense expansion: every operation of the interface
// gives the same values on both. Entries are powers of 4 and 0, operands small integers, so that
// both ways of computing are exact. Where a class has a rule of its own, it is tested apart.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <memory>

#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::RandomRect;
using nqtest::RandomSym;
using nqtest::RandomVector;
using nqtest::ToDense;

using Values = std::vector<double>;

struct Inputs {
  explicit Inputs(int order) : n(order) {}

  int n, last = n - 1;
  std::mt19937 random{static_cast<unsigned>(n)};
  std::size_t size = static_cast<std::size_t>(n);
  NQRectMatrix r = RandomRect(3, n, random), tall = RandomRect(n, 2, random);
  NQRectMatrix wrong = RandomRect(n + 1, n + 1, random);
  NQSymMatrix m = RandomSym(n, random), g = RandomSym(n, random), larger{n + 1, true};
  Values v = RandomVector(size, random), w = RandomVector(size, random), t = Values(size, 1.0);
  Values zero = Values(size), none;
  NQBitSet first{std::vector<bool>{true}};
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
Values Flatten(Values values, const INQSymMatrix& s, const Outputs& out) {
  values.insert(values.end(), {out.x, out.y, out.z, out.u, out.det.first, 1.0 * out.det.second});
  for (const Dense& d : {ToDense(s), ToDense(out.sym), ToDense(out.rect), Dense{out.v}}) {
    values.push_back(static_cast<double>(d.size()));
    for (const auto& row : d) values.insert(values.end(), row.begin(), row.end());
  }
  for (int i = 0; i < out.set.Size(); ++i) values.push_back(out.set.IsIn(i));
  return values;
}

struct Row {
  const char* name;
  Values (*run)(INQSymMatrix& s, Inputs& in, Outputs& out);
};

template <class... T>
Values List(T... results) {
  return {static_cast<double>(results)...};
}

// The operations of a row answer through different outputs: their order is not defined.
#define NQ_ROW(name, ...)                                                   \
  {                                                                         \
    name, []([[maybe_unused]] INQSymMatrix& s, [[maybe_unused]] Inputs& in, \
             [[maybe_unused]] Outputs& out) { return List(__VA_ARGS__); }   \
  }

const Row kRows[] = {
    NQ_ROW("diagonals", (s.GetDiagonal(out.v), s.GetNCheckDiagonal(in.t, 1, 2), in.t[0])),
    NQ_ROW("row", s.GetRow(in.last, out.v), s.GetRow(in.n, out.v)),
    NQ_ROW("arithmetic", (s.AddToDiagonal(3), s.ChangeSign(), s.MultiplyByNumber(-2), s.Trace())),
    NQ_ROW("rows",
           (s.ZeroOut(in.last), s.SetElem(0, 0, 7), s.ZeroOutNonDiag(0.5), s.ZeroOut(in.n))),
    NQ_ROW("resize", s.Resize(in.n > 1 ? -1 : 0)),
    NQ_ROW("resize and clear", s.SetNRows(in.n, true)),
    NQ_ROW("row put", s.PutRow(0, in.zero), s.PutRow(0, in.none), s.PutRow(in.n, in.zero)),
    NQ_ROW("row to 0", s.SetRowColToConst(0, 0), s.SetRowColToConst(-1, 0)),
    NQ_ROW("vector by row", s.IncrVecByRow(in.last, out.v = in.v, 3),
           s.IncrVecByRow(0, in.none, 3)),
    NQ_ROW("zero rows", s.IsZeroRow(0, in.first), s.IsZeroRow(in.last, in.first),
           s.IsZeroRow(-1, in.first)),
    NQ_ROW("extremes", in.n > 1 && (s.MaxMinDiagOffDiag(out.x, out.y, out.z, out.u), true)),
    // Cholesky
    NQ_ROW("inverse", s.CholInverse(in.t, 0.5, out.sym)),
    NQ_ROW("inverse and set", s.CholInverse(in.t, 0.5, out.sym, out.set)),
    NQ_ROW("inverse and pivot", s.CholInverse(in.t, 0.5, out.sym, out.x)),
    NQ_ROW("factor", s.LTChol(in.t, 0.5, true)),
    NQ_ROW("factor, high threshold", s.LTChol(in.t, 4, true)),
    NQ_ROW("factor, refused", s.LTChol(in.t, -1, true), s.LTChol(in.none, 0.5, true),
           s.LTChol(in.t, -1, out.set, true), s.LTChol(-1, out.x, true)),
    NQ_ROW("factor, negative reference", (in.t[0] = -1, s.LTChol(in.t, 0.5, true))),
    NQ_ROW("factor and set", (out.set.Resize(in.n + 1, true), s.LTChol(in.t, 0.5, out.set, true))),
    NQ_ROW("factor and pivot", s.LTChol(1e-12, out.x, true)),
    NQ_ROW("determinant and inverse of a factor", s.LTDetInverse(out.det, 11)),
    NQ_ROW("inverse of a factor", (s.LTDetInverse(out.det, 10), s.LTInverse())),
    NQ_ROW("determinant", s.ComputeDeterminant(1e-12, out.det)),
    NQ_ROW("LL', L'L", (s.LTLLTrans(), s.MaxMinDiag(out.x, out.y), s.LTLTransL(), 0)),
    NQ_ROW("solve", s.LTSolve(in.v, 1e-12, out.v)),
    NQ_ROW("solve refused", s.LTSolve(in.v, -1, out.v), s.LTSolve(in.none, 1, out.v)),
    // Vectors
    NQ_ROW("rows", s.ComputeDotProduct2Rows(0, in.last), s.ComputeDotProduct2Rows(0, in.n),
           s.ComputeRowDotProductS(in.last, in.m, 0), s.ComputeRowDotProductS(0, in.m, in.n),
           s.ComputeRowDotProductS(in.last, in.v), s.ComputeRowDotProductS(0, in.none)),
    NQ_ROW("strided", s.ComputeRVD(0, in.v, -1), s.ComputeRVD(in.last, in.v, in.n > 1 ? 2 : 0),
           s.ComputeRVD(in.last, in.v.data(), 0), s.ComputeRVD(-1, in.v.data(), 1)),
    NQ_ROW("Sv", s.ComputeSV(in.v, out.v)),
    NQ_ROW("first rows of Sv", s.ComputeSV(in.v, in.last, out.v),
           s.ComputeSV(in.v, in.n + 1, out.v)),
    NQ_ROW("Lv", s.ComputeLV(in.v, out.v), s.ComputeLV(in.none, out.v),
           s.ComputeLV({in.n}, {2}, out.v)),
    NQ_ROW("Lv by index", s.ComputeLV({in.last, 0, 0}, {2, 3, 4}, out.v)),
    NQ_ROW("L'v", s.ComputeLTransV(in.v, out.v), s.ComputeLTransV({0}, {}, out.v)),
    NQ_ROW("L'v by index", s.ComputeLTransV({in.last, 0, 0}, {2, 3, 4}, out.v)),
    NQ_ROW("v'Sv", s.ComputeVSV(in.v), s.ComputeVSV(in.r, 2), s.ComputeVSV(in.r, 3)),
    NQ_ROW("v'Sw", s.ComputeVSW(in.v, in.w), s.ComputeVSW(in.v.data(), in.n, in.w.data(), in.last),
           s.ComputeVSW(in.v, 0, 0), s.ComputeVSW(in.v, 0, 1)),
    NQ_ROW("v'Pw", s.ComputeVSWParts(in.v.data(), in.last, 1, in.w.data(), in.n, 0),
           s.ComputeVSWParts(in.v, 1, in.w, 0)),
    NQ_ROW("traces", s.Trace(), s.TraceOfProduct(in.m), s.TraceOfProduct(in.larger),
           s.TraceOfProductOfThree(in.m, in.g), s.TraceOfProductOfThree(in.m, in.larger)),
    // Products of matrices, and parts
    NQ_ROW("GMG, MGN", s.ComputeGMG(in.m, out.sym), s.ComputeMGN(in.m, in.g, out.rect)),
    NQ_ROW("GSG, GMGNG", s.ComputeGSG(in.g, out.sym), s.ComputeGMGNG(in.m, in.g, out.rect)),
    NQ_ROW("LSL', SB", s.ComputeLSLTrans(in.m, out.sym), s.ComputeSS(in.m, out.rect)),
    NQ_ROW("L'SL, RS", s.ComputeLTransSL(in.m, out.sym), s.ComputeRS(in.r, out.rect)),
    NQ_ROW("RSR', R'S", s.ComputeRSRTrans(in.r, out.sym), s.ComputeRTransS(in.tall, out.rect)),
    NQ_ROW("R'SR, R'Sv", s.ComputeRTransSR(in.tall, out.sym),
           s.ComputeRTransSV(in.tall, in.v, out.v)),
    NQ_ROW("S'S", s.ComputeSTransS(out.sym)),
    NQ_ROW("orders differ", s.ComputeGMG(in.larger, out.sym), s.ComputeGSG(in.larger, out.sym),
           s.ComputeMGN(in.m, in.larger, out.rect), s.ComputeLSLTrans(in.larger, out.sym),
           s.ComputeSS(in.larger, out.rect), s.ComputeRS(in.wrong, out.rect),
           s.ComputeRTransSR(in.wrong, out.sym), s.ExtractFirstNRows(in.larger),
           s.ExtractSubmatrix({0, in.n}, out.sym)),
    NQ_ROW("leading block", (out.sym.Resize(in.last), s.ExtractFirstNRows(out.sym))),
    NQ_ROW("submatrix", s.ExtractSubmatrix({in.last}, out.sym)),
    NQ_ROW("submatrix, repeated index", s.ExtractSubmatrix({in.last, 0, in.last}, out.sym)),
    // As an operand
    NQ_ROW("aX + dense", (out.sym = in.m).ComputeAXpY(2, s)),
    NQ_ROW("dense GMG, SB", in.g.ComputeGMG(s, out.sym), in.m.ComputeSS(s, out.rect)),
    NQ_ROW("dense GSG, MGN", in.m.ComputeGSG(s, out.sym), in.g.ComputeMGN(in.m, s, out.rect)),
    NQ_ROW("dense LSL', RB", in.m.ComputeLSLTrans(s, out.sym),
           in.r.ComputeMatrixProduct(s, out.rect)),
    NQ_ROW("dense L'SL, GMGNG", in.m.ComputeLTransSL(s, out.sym),
           in.g.ComputeGMGNG(s, in.m, out.rect)),
    NQ_ROW("diagonal MGN", NQDiagMatrix(in.v).ComputeMGN(s, in.m, out.rect)),
    NQ_ROW("R1'SR2, trace", in.tall.ComputeR1TransSR2(s, in.tall, out.rect),
           in.m.TraceOfProductOfThree(s, in.g)),
    NQ_ROW("R - aS", in.g.ExpandSymToRect(out.rect) && out.rect.SubtractSymMatrix(s, 3)),
    NQ_ROW("tr(RS)", in.m.ExpandSymToRect(out.rect) && out.rect.TraceOfProductSqS(s, out.x)),
};

struct Kind {
  const char* name;
  std::unique_ptr<INQSymMatrix> (*make)(std::size_t n);
};

std::unique_ptr<INQSymMatrix> MakeDiagonal(std::size_t n) {
  Values d{4, 16, 0, 1, 64, 0.25, 4};
  d.resize(n);
  return std::make_unique<NQDiagMatrix>(d);
}

TEST(Substitution, EveryOperationAsOnTheDenseExpansion) {
  for (const Kind& kind : {Kind{"diagonal", MakeDiagonal}}) {
    for (int n : {1, 2, 7}) {
      for (const Row& row : kRows) {
        const auto s = kind.make(static_cast<std::size_t>(n));
        NQSymMatrix dense = nqtest::ToSym(ToDense(*s));
        Inputs in(n), same(n);
        Outputs got, wanted;
        const Values result = row.run(dense, same, wanted), resultGot = row.run(*s, in, got);
        EXPECT_EQ(Flatten(resultGot, *s, got), Flatten(result, dense, wanted))
            << kind.name << " of order " << n << ": " << row.name;
      }
    }
  }
}

// ---- The diagonal matrix's own rules ------------------------------------------------------------

TEST(NQDiagMatrix, DeterminantIsTheProduct) {
  const std::pair<Values, NQDeterminant> rows[] = {{{25, 4}, {1, 2}},
                                                   {{4, 0, 5}, {0, 0}},
                                                   {{-2, 3}, {-6, 0}},
                                                   {{-0.5, 0.25, -1}, {1.25, -1}},
                                                   {{1e300, 2e300, 1e300}, {2, 900}},
                                                   {{0, nqtest::kNaN}, {0, 0}}};
  NQDeterminant det{7, 7};
  EXPECT_FALSE(NQDiagMatrix().ComputeDeterminant(0, det));
  EXPECT_EQ(det, NQDeterminant(7, 7));
  for (const auto& [diagonal, wanted] : rows) {
    EXPECT_TRUE(NQDiagMatrix(diagonal).ComputeDeterminant(-1, det));
    EXPECT_NEAR(det.first, wanted.first, 1e-14) << diagonal[0];
    EXPECT_EQ(det.second, wanted.second) << diagonal[0];
  }
}

TEST(NQDiagMatrix, WritesOffTheDiagonal) {
  NQDiagMatrix d(Values{1, 2, 3});
  EXPECT_FALSE(d.SetElem(0, 1, 9));
  EXPECT_TRUE(d.PutRow(1, {7, 8, 9}) && d.SetRowColToConst(2, 5) && d.SetElem(0, 4.0));
  EXPECT_EQ(ToDense(d), (Dense{{4, 0, 0}, {0, 8, 0}, {0, 0, 5}}));
  EXPECT_FALSE(d.SetElem(3, 1.0) || d.SetElem(-1, 1.0) || d.ReplaceDiagonal({1, 2}) ||
               d.ComputeAXpY(1, NQSymMatrix(3, true)) || d.ComputeAXpY(1, NQDiagMatrix(2, true)));
  EXPECT_TRUE(d.ComputeAXpY(2, d) && d.ReplaceDiagonal({d.GetElem(0), d.GetElem(1), 1}));
  EXPECT_EQ(ToDense(d), (Dense{{12, 0, 0}, {0, 24, 0}, {0, 0, 1}}));
}

// A diagonal result goes into a diagonal matrix too, an operand included; no other result does.
TEST(NQDiagMatrix, DiagonalResults) {
  const NQDiagMatrix d(Values{2, 4}), five(Values{3, 5});
  const NQSymMatrix dense(2, true);
  const auto expect = [&](bool (*run)(const NQDiagMatrix&, NQDiagMatrix&), const Dense& wanted) {
    NQDiagMatrix m = five;
    EXPECT_TRUE(run(d, m));
    EXPECT_EQ(ToDense(m), wanted);
  };
  using D = NQDiagMatrix;
  expect([](const D& s, D& m) { return s.ComputeGMG(m, m); }, {{12, 0}, {0, 80}});
  expect([](const D& s, D& m) { return s.ComputeGSG(m, m); }, {{18, 0}, {0, 100}});
  expect([](const D& s, D& m) { return s.ComputeLSLTrans(m, m); }, {{18, 0}, {0, 100}});
  expect([](const D& s, D& m) { return s.ComputeLTransSL(m, m); }, {{18, 0}, {0, 100}});
  expect([](const D& s, D& m) { return s.ComputeSTransS(m); }, {{4, 0}, {0, 16}});
  expect([](const D& s, D& m) { return m.Resize(1) && s.ExtractFirstNRows(m); }, {{2}});
  NQDiagMatrix m = five;
  EXPECT_FALSE(d.ComputeGMG(dense, m) || d.ComputeGSG(dense, m) || d.ComputeLTransSL(dense, m) ||
               d.ExtractSubmatrix({1, 1}, m) || d.CholInverse({}, 0, m) >= 0);
  EXPECT_EQ(ToDense(m), (Dense{{3, 0}, {0, 5}}));
  EXPECT_TRUE(d.ExtractSubmatrix({1, 0}, m));
  EXPECT_EQ(m.CholInverse({0, 0}, 0, m), 2);
  EXPECT_NEAR(m.GetElem(0), 0.25, 1e-16);
  EXPECT_NEAR(m.GetElem(1), 0.5, 1e-15);
}

TEST(NQDiagMatrix, PartsOfRectangularRows) {
  const NQDiagMatrix d(Values{2, 3, 5});
  const NQRectMatrix r = nqtest::ToRect({{1, 10, 100}, {2, 20, 200}});
  const double missing = nqtest::kMissing;
  EXPECT_EQ((Values{d.ComputeRVD(1, r, 0, 3), d.ComputeRVD(1, r, 1, 2), d.ComputeRVD(1, r, 3, 0),
                    d.ComputeRVD(2, r, 0, 1), d.ComputeRVD(0, r, 1, 3), d.ComputeRVD(0, r, -1, 1)}),
            (Values{1064, 640, 0, missing, missing, missing}));
  EXPECT_EQ((Values{d.ComputeRTransVD(2, r, 0, 2), d.ComputeRTransVD(2, r, 1, 1),
                    d.ComputeRTransVD(0, r, 0, 3), d.ComputeRTransVD(3, r, 0, 1)}),
            (Values{800, 400, missing, missing}));
}

}  // namespace
}  // namespace NQMath_940
