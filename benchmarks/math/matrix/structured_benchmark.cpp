// The block-diagonal matrix beside its dense expansion, blocks of 10 rows, and the sparse matrix of
// 10 entries a row beside the dense one: what the structure is worth at orders 10, 100 and 1000.
// Copying the input of an operation in place is left out of both times.
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseVector.h>
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/ratio_reporter.h"

namespace {

using namespace NQMath_940;
using Values = std::vector<double>;

constexpr int kBlock = 10;

NQSymBlockDiagMatrix Blocks(int n) {
  std::mt19937 random(1);
  NQSymBlockDiagMatrix s(std::vector<int>(static_cast<std::size_t>(n / kBlock), kBlock),
                         NQBitSet(n / kBlock));
  for (int i = 0; i < n; ++i) {
    for (int j = i / kBlock * kBlock; j < i; ++j)
      s.SetElem(i, j, static_cast<double>(random()) / 4294967296.0);
    s.SetElem(i, i, kBlock);
  }
  return s;
}

NQSymMatrix Dense(int n) {
  NQSymMatrix s;
  Blocks(n).FillDenseMatrix(s);
  return s;
}

// One entry in each of ten runs of columns, as indicators of ten categorical predictors have.
NQSparseRectMatrix Sparse(int n) {
  std::mt19937 random(1);
  NQSparseRectMatrix r(n, n, kBlock);
  const int run = n / kBlock;
  std::vector<int> columns(kBlock);
  const Values ones(kBlock, 1.0);
  for (int i = 0; i < n; ++i) {
    for (int k = 0; k < kBlock; ++k)
      columns[static_cast<std::size_t>(k)] =
          k * run + static_cast<int>(random() % static_cast<unsigned>(run));
    r.AddRow(NQSparseVector(columns, ones));
  }
  return r;
}

NQRectMatrix Full(int n) {
  NQRectMatrix r;
  Sparse(n).CreateFullMatrix(r);
  return r;
}

// What the work is done with and where its result goes, made before the clock starts.
struct Operands {
  explicit Operands(int order)
      : n(order), v(static_cast<std::size_t>(order), 1.0), columns(order, 10, true) {}

  int n;
  Values v, out;
  NQRectMatrix columns, product;
  NQSymMatrix sym;
};

// Times work(matrix, operands), which tells whether it succeeded, on a fresh copy every time.
template <class Matrix, class Work>
void Time(benchmark::State& state, const Matrix& input, Work work) {
  Operands with(input.GetNRows());
  for (auto _ : state) {
    Matrix matrix = input;
    const auto begin = std::chrono::steady_clock::now();
    const bool succeeded = work(matrix, with);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    benchmark::ClobberMemory();
    state.SetIterationTime(time.count());
    if (!succeeded) {
      state.SkipWithError("failed");
      return;
    }
  }
}

template <class Matrix, class Work>
void Register(const std::string& name, Matrix (*make)(int n), Work work) {
  for (const int n : {10, 100, 1000}) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(),
                                 [=](benchmark::State& state) { Time(state, make(n), work); })
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.02)
        ->Repetitions(3);
  }
}

template <class Work>
void Blocked(const std::string& name, Work work) {
  Register(name + "/ours", Blocks, work);
  Register(name + "/dense", Dense, work);
}

template <class Work>
void Sparsely(const std::string& name, Work work) {
  Register(name + "/ours", Sparse, work);
  Register(name + "/dense", Full, work);
}

}  // namespace

int main(int argc, char** argv) {
  Blocked("S v", [](const auto& s, Operands& with) { return s.ComputeSV(with.v, with.out); });
  Blocked("v'S v", [](const auto& s, Operands& with) { return s.ComputeVSV(with.v) > 0; });
  Blocked("a S", [](auto& s, Operands&) { return s.MultiplyByNumber(3), true; });
  Blocked("factor", [](auto& s, Operands& with) { return s.LTChol(with.v, 1e-12, false) == 0; });
  Blocked("solve", [](auto& s, Operands& with) { return s.LTSolve(with.v, 1e-12, with.out) == 0; });
  Blocked("inverse",
          [](auto& s, Operands& with) { return s.CholInverse(with.v, 1e-12, s) == with.n; });
  Blocked("determinant", [](const auto& s, Operands&) {
    NQDeterminant det;
    return s.ComputeDeterminant(1e-12, det);
  });
  Blocked("S'S", [](auto& s, Operands&) { return s.ComputeSTransS(s); });
  Blocked("R'S", [](const auto& s, Operands& with) {
    return s.ComputeRTransS(with.columns, with.product);
  });
  Sparsely("R v", [](const auto& r, Operands& with) { return r.ComputeRV(with.v, with.out); });
  Sparsely("v'R", [](const auto& r, Operands& with) { return r.ComputeVR(with.v, with.out); });
  Sparsely("R B", [](const auto& r, Operands& with) {
    return r.ComputeMatrixProduct(with.columns, with.product);
  });
  Sparsely("R'R", [](const auto& r, Operands& with) { return with.sym.ComputeRTransByR(r); });
  return nqbench::RunWithRatios(argc, argv);
}
