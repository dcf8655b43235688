#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace nqbench {

// Registers work/peer/n: a function at all of n points. A null function is a peer that has none.
template <class Evaluate, class Points>
void RegisterEvaluations(const std::string& work, const char* peer, Evaluate evaluate,
                         const Points& points) {
  if (evaluate == nullptr) return;
  const std::string name = work + "/" + peer + "/" + std::to_string(points.size());
  benchmark::RegisterBenchmark(name.c_str(),
                               [evaluate, points](benchmark::State& state) {
                                 for (auto _ : state) {
                                   for (const auto& q : points)
                                     benchmark::DoNotOptimize(evaluate(q));
                                 }
                               })
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.05)
      ->Repetitions(3);
}

}  // namespace nqbench
