// Dense matrices through the classes, beside OpenBLAS on the same work, one thread:
// ComputeMatrixProduct and ComputeProductMatrixTrans beside dgemm, R'R beside dsyrk, R'S R and R S
// R' beside dsymm and dgemm, products of symmetric matrices beside dsymm, QRDecompositionH beside
// dgeqrf and dorgqr, EstimateLinearGI beside dgesv; copies of rows beside the assignment of a
// matrix. All matrices are square of the order given.
#include <nqcommon/math/matrix/NQDiagMatrix.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "support/blas.h"
#include "support/ratio_reporter.h"

namespace {

using NQMath_940::NQDiagMatrix;
using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;

// The operands of both sides; the peer's symmetric ones are full squares.
struct Operands {
  explicit Operands(int order)
      : n(order), a(Square()), b(Square()), c(a.size()), work(a.size()), r(n, n, true), d(n, true) {
    for (int i = 0; i < n; ++i) backwards.push_back(n - 1 - i);
    std::copy(a.begin(), a.end(), r.GetRowPtr(0));
    s = NQSymMatrix(n, true);
    g = NQSymMatrix(n, true);
    for (NQSymMatrix* m : {&s, &g}) m->SetData(nqbench::RandomPacked(n, 1));
    for (int i = 0; i < n; ++i) d.SetElem(i, nqbench::NextCentred(random));
  }

  std::vector<double> Square() {
    std::vector<double> square(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    for (double& element : square) element = nqbench::NextCentred(random);
    return square;
  }

  int n;
  std::mt19937 random{1};
  std::vector<double> a, b, c, work, x = std::vector<double>(static_cast<std::size_t>(n), 1.0);
  std::vector<int> backwards;
  NQRectMatrix r, rectOut;
  NQSymMatrix s, g, symOut;
  NQDiagMatrix d;
};

constexpr double kOne = 1, kZero = 0;

void Gemm(Operands& o, const char* transA, const char* transB, const double* a, const double* b) {
  dgemm_(transA, transB, &o.n, &o.n, &o.n, &kOne, a, &o.n, b, &o.n, &kZero, o.c.data(), &o.n);
}

// work = B A or A B, B symmetric, and c the same with work for A.
void Symm(Operands& o, const char* side) {
  dsymm_(side, "L", &o.n, &o.n, &kOne, o.b.data(), &o.n, o.a.data(), &o.n, &kZero, o.work.data(),
         &o.n);
}
void SymmTwice(Operands& o) {
  Symm(o, "L");
  dsymm_("R", "L", &o.n, &o.n, &kOne, o.b.data(), &o.n, o.work.data(), &o.n, &kZero, o.c.data(),
         &o.n);
}

void QR(Operands& o) {
  const int lwork = o.n * o.n;
  int info = 0;
  o.c = o.a;
  dgeqrf_(&o.n, &o.n, o.c.data(), &o.n, o.x.data(), o.work.data(), &lwork, &info);
  dorgqr_(&o.n, &o.n, &o.n, o.c.data(), &o.n, o.x.data(), o.work.data(), &lwork, &info);
}

void Solve(Operands& o) {
  const int one = 1;
  int info = 0;
  o.c = o.a;
  std::vector<int> pivots(o.x.size());
  dgesv_(&o.n, &one, o.c.data(), &o.n, pivots.data(), o.x.data(), &o.n, &info);
}

void Assign(Operands& o) { o.rectOut = o.r; }

struct Work {
  const char* name;
  bool (*ours)(Operands&);
  const char* peer;
  void (*theirs)(Operands&);
};

const Work kWorks[] = {
    {"RB", [](Operands& o) { return o.r.ComputeMatrixProduct(o.r, o.rectOut); }, "dgemm",
     [](Operands& o) { Gemm(o, "N", "N", o.a.data(), o.a.data()); }},
    {"RB'", [](Operands& o) { return o.r.ComputeProductMatrixTrans(o.r, o.rectOut); }, "dgemm",
     [](Operands& o) { Gemm(o, "N", "T", o.a.data(), o.b.data()); }},
    {"R'R", [](Operands& o) { return o.symOut.ComputeRTransByR(o.r); }, "dsyrk",
     [](Operands& o) {
       dsyrk_("L", "T", &o.n, &o.n, &kOne, o.a.data(), &o.n, &kZero, o.c.data(), &o.n);
     }},
    {"R'SR", [](Operands& o) { return o.s.ComputeRTransSR(o.r, o.symOut); }, "dsymm+dgemm",
     [](Operands& o) {
       Symm(o, "L");
       Gemm(o, "T", "N", o.a.data(), o.work.data());
     }},
    {"RSR'", [](Operands& o) { return o.s.ComputeRSRTrans(o.r, o.symOut); }, "dsymm+dgemm",
     [](Operands& o) {
       Symm(o, "R");
       Gemm(o, "N", "T", o.work.data(), o.a.data());
     }},
    {"GMG", [](Operands& o) { return o.g.ComputeGMG(o.s, o.symOut); }, "dsymm twice", SymmTwice},
    {"GSG", [](Operands& o) { return o.s.ComputeGSG(o.g, o.symOut); }, "dsymm twice", SymmTwice},
    {"DSD", [](Operands& o) { return o.s.ComputeGSG(o.d, o.symOut); }, "dsymm twice", SymmTwice},
    {"LSL'", [](Operands& o) { return o.s.ComputeLSLTrans(o.g, o.symOut); }, "dsymm twice",
     SymmTwice},
    {"L'SL", [](Operands& o) { return o.s.ComputeLTransSL(o.g, o.symOut); }, "dsymm twice",
     SymmTwice},
    {"QR", [](Operands& o) { return o.r.QRDecompositionH(o.symOut, o.rectOut); }, "dgeqrf+dorgqr",
     QR},
    {"R x = b", [](Operands& o) { return o.r.EstimateLinearGI(std::vector(o.x), o.x, 1e-12) == 0; },
     "dgesv", Solve},
    {"CopyRows", [](Operands& o) { return o.rectOut.CopyRows(o.r, 0, o.n); }, "assignment", Assign},
    {"ExtractRows", [](Operands& o) { return o.r.ExtractRows(o.backwards, o.rectOut); },
     "assignment", Assign},
    {"tr(SAB)", [](Operands& o) { return o.s.TraceOfProductOfThree(o.g, o.s) != 0; }, "dsymm",
     [](Operands& o) { Symm(o, "L"); }},
};

}  // namespace

int main(int argc, char** argv) {
  for (const Work& work : kWorks) {
    for (const int n : {50, 100, 200, 500, 1000}) {
      const auto time = [n](auto run) {
        return [n, run](benchmark::State& state) {
          Operands operands(n);
          nqbench::TimeInPlace(state, [&] { return run(operands); });
        };
      };
      nqbench::Register(std::string(work.name) + "/ours", n, time(work.ours));
      nqbench::Register(std::string(work.name) + "/" + work.peer, n,
                        time([theirs = work.theirs](Operands& o) { return theirs(o), true; }));
    }
  }
  return nqbench::RunWithRatios(argc, argv);
}
