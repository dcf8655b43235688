// Uniforms and normal deviates beside the standard library's: std::mt19937 giving the same kind of
// double, and std::normal_distribution over the same engines. A block of 1024 is timed.
#include <nqcommon/math/random/NQRNGNormal.h>
#include <nqcommon/math/random/NQRNGUTwister.h>
#include <nqcommon/math/random/NQRandomTwister.h>
#include <nqcommon/math/random/NQRandomValues.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "support/ratio_reporter.h"

namespace {

constexpr int kBlock = 1024;
constexpr unsigned kSeed = 34567;

// Our twister as the standard library's distributions take an engine.
struct OurEngine {
  using result_type = std::uint32_t;
  static constexpr result_type min() { return 0; }
  static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }
  result_type operator()() { return NQMath_940::genrand_int32(fState); }
  NQMath_940::NQRNGUTwister::Data fState;
};

// Times blocks of next().
template <class Next>
void Register(const std::string& name, Next next) {
  const auto run = [next](benchmark::State& state) mutable {
    for (auto _ : state) {
      double sum = 0;
      for (int i = 0; i < kBlock; ++i) sum += next();
      benchmark::DoNotOptimize(sum);
    }
  };
  benchmark::RegisterBenchmark((name + "/" + std::to_string(kBlock)).c_str(), run)
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.1)
      ->Repetitions(7);
}

template <class Engine>
auto StandardNormals(Engine engine) {
  return [engine, normal = std::normal_distribution<double>()]() mutable { return normal(engine); };
}

double Res53(std::mt19937& engine) {
  const double upper = static_cast<double>(engine() >> 5);
  const double lower = static_cast<double>(engine() >> 6);
  return (upper * 0x1p26 + lower) * 0x1p-53;
}

}  // namespace

int main(int argc, char** argv) {
  std::mt19937 engine(kSeed);
  NQMath_940::NQRandomTwister twister;
  NQMath_940::NQRNGUTwister generator;

  Register("open/ours", [twister]() mutable { return twister.GetRealOpen(); });
  Register("open/std::mt19937",
           [engine]() mutable { return (static_cast<double>(engine()) + 0.5) * 0x1p-32; });
  Register("53 bits/ours", [generator]() mutable { return generator.GetNext(); });
  Register("53 bits/std::mt19937", [engine]() mutable { return Res53(engine); });
  Register("53 bits/generate_canonical",
           [engine]() mutable { return std::generate_canonical<double, 53>(engine); });

  Register("RVSNor/ours",
           [values = NQMath_940::NQRandomValues()]() mutable { return values.RVSNor(); });
  NQMath_940::NQRNGNormal normal(0, 1);
  normal.SetURNGenerator(generator);
  Register("NQRNGNormal/ours", [normal]() mutable { return normal.GetNext(); });
  for (const char* ours : {"RVSNor", "NQRNGNormal"}) {
    Register(std::string(ours) + "/std, mt19937", StandardNormals(engine));
    Register(std::string(ours) + "/std, our engine", StandardNormals(OurEngine()));
  }
  return nqbench::RunWithRatios(argc, argv);
}
