// Sweeps, factors and inverses of NQSymMatrix beside LAPACK on a full square and on a packed
// triangle, one thread. Copying the input is left out of all times.
#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "support/blas.h"
#include "support/ratio_reporter.h"

namespace {

using nqbench::RandomPacked;
using nqbench::RegisterManual;
using NQMath_940::NQBitSet;
using NQMath_940::NQSymMatrix;

constexpr double kEps = 1e-12;
constexpr int kOrders[] = {50, 200, 500, 1000, 2000};

// A peer's work on a matrix of order n, which tells whether it succeeded.
using Peer = bool (*)(double* a, int n);
using Ours = bool (*)(NQSymMatrix& s, const std::vector<double>& t);

bool Factor(double* a, int n) {
  int info = 0;
  dpotrf_("L", &n, a, &n, &info);
  return info == 0;
}

bool FactorPacked(double* a, int n) {
  int info = 0;
  dpptrf_("U", &n, a, &info);
  return info == 0;
}

bool Invert(double* a, int n) {
  int info = 0;
  if (Factor(a, n)) dpotri_("L", &n, a, &n, &info);
  return info == 0;
}

bool InvertPacked(double* a, int n) {
  int info = 0;
  if (FactorPacked(a, n)) dpptri_("U", &n, a, &info);
  return info == 0;
}

bool InvertFactor(double* a, int n) {
  int info = 0;
  dtrtri_("L", "N", &n, a, &n, &info);
  return info == 0;
}

bool LowerSquare(double* a, int n) {
  int info = 0;
  dlauum_("L", &n, a, &n, &info);
  return info == 0;
}

bool UpperSquare(double* a, int n) {
  int info = 0;
  dlauum_("U", &n, a, &n, &info);
  return info == 0;
}

struct Work {
  const char* name;
  Ours ours;
  struct {
    const char* name;
    Peer full;
    Peer packed;
  } peers[2];
};

const Work kWorks[] = {
    {"sweep",
     [](NQSymMatrix& s, const std::vector<double>& t) {
       NQBitSet swept;
       std::vector<double> references = t;
       return s.SweepOnAll(kEps, swept, true, true, false, &references) &&
              swept.InSet() == s.GetNRows();
     },
     {{"dpotrf+dpotri", Invert, nullptr}, {"dpptrf+dpptri", nullptr, InvertPacked}}},
    {"cholesky",
     [](NQSymMatrix& s, const std::vector<double>& t) { return s.LTChol(t, kEps, true) == 0; },
     {{"dpotrf", Factor, nullptr}, {"dpptrf", nullptr, FactorPacked}}},
    {"CholInverse",
     [](NQSymMatrix& s, const std::vector<double>& t) {
       return s.CholInverse(t, kEps, s) == s.GetNRows();
     },
     {{"dpotrf+dpotri", Invert, nullptr}}},
    {"LTInverse",
     [](NQSymMatrix& s, const std::vector<double>&) { return s.LTInverse(); },
     {{"dtrtri", InvertFactor, nullptr}}},
    {"L'L",
     [](NQSymMatrix& s, const std::vector<double>&) { return s.LTLTransL(), true; },
     {{"dlauum", LowerSquare, nullptr}}},
    {"LL'",
     [](NQSymMatrix& s, const std::vector<double>&) { return s.LTLLTrans(), true; },
     {{"dlauum", UpperSquare, nullptr}}},
};

void TimeOurs(benchmark::State& state, int n, Ours ours) {
  const std::vector<double> t(static_cast<std::size_t>(n), 1.0);
  NQSymMatrix input(n, true);
  input.SetData(RandomPacked(n, n));
  nqbench::TimeOnCopies(state, input, [&](NQSymMatrix& s) { return ours(s, t); });
}

void TimePeer(benchmark::State& state, int n, const std::vector<double>& input, Peer peer) {
  nqbench::TimeOnCopies(state, input, [&](std::vector<double>& a) { return peer(a.data(), n); });
}

}  // namespace

int main(int argc, char** argv) {
  for (const Work& work : kWorks) {
    for (const int n : kOrders) {
      const std::string name = work.name;
      RegisterManual(name + "/ours", n,
                     [n, &work](benchmark::State& state) { TimeOurs(state, n, work.ours); });
      for (const auto& peer : work.peers) {
        if (peer.name == nullptr) continue;
        RegisterManual(name + "/" + peer.name, n, [n, &peer](benchmark::State& state) {
          const std::vector<double> packed = RandomPacked(n, n);
          TimePeer(state, n, peer.full ? nqbench::SquareOf(packed, n) : packed,
                   peer.full ? peer.full : peer.packed);
        });
      }
    }
  }
  return nqbench::RunWithRatios(argc, argv);
}
