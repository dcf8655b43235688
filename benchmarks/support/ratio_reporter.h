// Reports benchmarks named work/peer/order, one peer being "ours", and ends with a table of how
// many times longer each peer took: above 1 we are faster. Of several repetitions the best one
// counts, which is the one that the rest of the machine disturbed least.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace nqbench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      const auto iterations = static_cast<double>(run.iterations);  // 0 after an error
      if (iterations <= 0 || run.run_type != Run::RT_Iteration) continue;
      const std::string& name = run.run_name.function_name;
      const std::size_t first = name.find('/');
      const std::size_t last = name.rfind('/');
      const Key key{name.substr(0, first), name.substr(first + 1, last - first - 1),
                    std::stoi(name.substr(last + 1))};
      const double seconds = run.real_accumulated_time / iterations;
      double& best = fBest.try_emplace(key, seconds).first->second;
      best = std::min(best, seconds);
    }
  }

  void Finalize() override {
    std::printf("\n%-12s | %6s | %12s | %-20s %12s | %s\n", "work", "order", "ours, us", "peer",
                "us", "ratio");
    for (const auto& [key, seconds] : fBest) {
      const auto& [work, peer, order] = key;
      const auto ours = fBest.find({work, "ours", order});
      if (peer == "ours" || ours == fBest.end()) continue;
      std::printf("%-12s | %6d | %12.1f | %-20s %12.1f | %.2f\n", work.c_str(), order,
                  1e6 * ours->second, peer.c_str(), 1e6 * seconds, seconds / ours->second);
    }
  }

 private:
  using Key = std::tuple<std::string, std::string, int>;  // work, peer, order
  std::map<Key, double> fBest;                            // seconds
};

// Runs the registered benchmarks, their repetitions in random order: what slows the machine for a
// while then slows all peers alike. Returns the exit status of main.
inline int RunWithRatios(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  arguments.insert(arguments.begin() + 1, interleave.data());
  int count = argc + 1;
  benchmark::Initialize(&count, arguments.data());
  RatioReporter reporter;
  return benchmark::RunSpecifiedBenchmarks(&reporter) > 0 ? 0 : 1;
}

}  // namespace nqbench
