// Products of dense matrices through the classes, beside OpenBLAS on the same work, one thread:
// ComputeMatrixProduct and ComputeProductMatrixTrans beside dgemm, R'R beside dsyrk, R'S R and R S
// R' beside dsymm and dgemm. All matrices are square of the order given.
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "support/ratio_reporter.h"

extern "C" {
void dgemm_(const char* transA, const char* transB, const int* m, const int* n, const int* k,
            const double* alpha, const double* a, const int* lda, const double* b, const int* ldb,
            const double* beta, double* c, const int* ldc);
void dsymm_(const char* side, const char* uplo, const int* m, const int* n, const double* alpha,
            const double* a, const int* lda, const double* b, const int* ldb, const double* beta,
            double* c, const int* ldc);
void dsyrk_(const char* uplo, const char* trans, const int* n, const int* k, const double* alpha,
            const double* a, const int* lda, const double* beta, double* c, const int* ldc);
void openblas_set_num_threads(int threads);
}

namespace {

using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;

// The operands of both sides; the symmetric one is the triangle of a square.
struct Operands {
  explicit Operands(int order)
      : n(order), a(Square()), b(Square()), c(a.size()), work(a.size()), r(n, n, true) {
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) {
        r.SetElem(i, j,
                  a[static_cast<std::size_t>(i) * static_cast<std::size_t>(n) +
                    static_cast<std::size_t>(j)]);
      }
    }
    s = NQSymMatrix(n, true);
    for (double& x : s.AsVector()) x = Next();
  }

  double Next() { return static_cast<double>(random()) / 4294967296.0 - 0.5; }
  std::vector<double> Square() {
    std::vector<double> square(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    for (double& x : square) x = Next();
    return square;
  }

  int n;
  std::mt19937 random{1};
  std::vector<double> a, b, c, work;
  NQRectMatrix r, rectOut;
  NQSymMatrix s, symOut;
};

constexpr double kOne = 1, kZero = 0;

void Gemm(Operands& o, const char* transA, const char* transB, const double* a, const double* b) {
  dgemm_(transA, transB, &o.n, &o.n, &o.n, &kOne, a, &o.n, b, &o.n, &kZero, o.c.data(), &o.n);
}

void Symm(Operands& o, const char* side) {
  dsymm_(side, "L", &o.n, &o.n, &kOne, o.b.data(), &o.n, o.a.data(), &o.n, &kZero, o.work.data(),
         &o.n);
}

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
};

template <class Run>
void Register(const std::string& name, int n, Run run) {
  benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(),
                               [n, run](benchmark::State& state) {
                                 Operands operands(n);
                                 for (auto _ : state) {
                                   if (!run(operands)) state.SkipWithError("failed");
                                   benchmark::ClobberMemory();
                                 }
                               })
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.1)
      ->Repetitions(3);
}

}  // namespace

int main(int argc, char** argv) {
  openblas_set_num_threads(1);
  for (const Work& work : kWorks) {
    for (const int n : {100, 500, 1000}) {
      Register(std::string(work.name) + "/ours", n, work.ours);
      Register(std::string(work.name) + "/" + work.peer, n, [theirs = work.theirs](Operands& o) {
        theirs(o);
        return true;
      });
    }
  }
  return nqbench::RunWithRatios(argc, argv);
}
