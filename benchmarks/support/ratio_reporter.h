// The frame of every benchmark: benchmarks are named work/peer/order, one peer being "ours", and
// the report ends with a table of how many times longer each peer took, above 1 we are faster. The
// best of the repetitions counts, which is the one that the rest of the machine disturbed least;
// beside it stands how far the median lies above. Times are processor times of the one thread.
//
// RunWithRatios understands --isa=avx2 and --isa=baseline, which run the kernels that older
// processors get, through the classes too and in OpenBLAS, and appends the table to the file that
// NQ_BENCH_SUMMARY names.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>

#include <benchmark/benchmark.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

// OpenBLAS, in the programs that are linked with it.
extern "C" {
[[gnu::weak]] void openblas_set_num_threads(int threads);
[[gnu::weak]] char* openblas_get_corename();
}

namespace nqbench {

// Processor time of this thread, in seconds.
inline double Now() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

// What two readings of the clock take by themselves.
inline double ClockCost() {
  static const double cost = [] {
    double least = 1;
    for (int i = 0; i < 1000; ++i) {
      const double begin = Now();
      least = std::min(least, Now() - begin);
    }
    return least;
  }();
  return cost;
}

// Times work(copy), which tells whether it succeeded, on a fresh copy of the input every time.
template <class Input, class Work>
void TimeOnCopies(benchmark::State& state, const Input& input, Work work) {
  Input copy;
  for (auto _ : state) {
    copy = input;
    const double begin = Now();
    const bool succeeded = work(copy);
    const double seconds = Now() - begin - ClockCost();
    benchmark::ClobberMemory();
    state.SetIterationTime(std::max(seconds, 1e-9));
    if (!succeeded) {
      state.SkipWithError("failed");
      return;
    }
  }
}

// Times work(), which tells whether it succeeded.
template <class Work>
void TimeInPlace(benchmark::State& state, Work work) {
  for (auto _ : state) {
    if (!work()) {
      state.SkipWithError("failed");
      return;
    }
    benchmark::ClobberMemory();
  }
}

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
      const bool manual = run.run_name.time_type == "manual_time";
      fTimes[{name.substr(0, first), name.substr(first + 1, last - first - 1),
              std::stoi(name.substr(last + 1))}]
          .push_back((manual ? run.real_accumulated_time : run.cpu_accumulated_time) / iterations);
    }
  }

  void Finalize() override {
    if (openblas_get_corename != nullptr)
      Print("\nOpenBLAS with its kernels for %s", openblas_get_corename());
    Print("\n%-12s | %7s | %12s %6s | %-20s %12s %6s | %s\n", "work", "order", "ours, us", "noise",
          "peer", "us", "noise", "ratio");
    for (auto& [key, times] : fTimes) std::sort(times.begin(), times.end());
    for (const auto& [key, times] : fTimes) {
      const auto& [work, peer, order] = key;
      const auto found = fTimes.find({work, "ours", order});
      if (peer == "ours" || found == fTimes.end()) continue;
      const std::vector<double>& ours = found->second;
      Print("%-12s | %7d | %12.1f %5.1f%% | %-20s %12.1f %5.1f%% | %.2f\n", work.c_str(), order,
            1e6 * ours[0], Noise(ours), peer.c_str(), 1e6 * times[0], Noise(times),
            times[0] / ours[0]);
    }
    AppendToSummary();
  }

 private:
  using Key = std::tuple<std::string, std::string, int>;  // work, peer, order

  // How far the median lies above the best, in percent.
  static double Noise(const std::vector<double>& sorted) {
    return 100 * (sorted[sorted.size() / 2] / sorted[0] - 1);
  }

  // The first program to write begins with the machine.
  void AppendToSummary() const;

  template <class... Values>
  void Print(const char* format, Values... values) {
    char line[200];
    std::snprintf(line, sizeof line, format, values...);
    std::fputs(line, stdout);
    fText += line;
  }

  std::map<Key, std::vector<double>> fTimes;  // seconds
  std::string fText;
};

// The processor, the kernels that run and its caches.
inline std::string MachineLine() {
  std::ifstream info("/proc/cpuinfo");
  std::map<std::string, std::string> fields;
  for (std::string line; std::getline(info, line) && !line.empty();) {
    const std::size_t colon = line.find(':');
    if (colon != std::string::npos && colon + 2 < line.size())
      fields[line.substr(0, line.find('\t'))] = line.substr(colon + 2);
  }
  using namespace NQMath_940::internal;
  const CacheSizes& caches = Caches();
  std::string text = fields["model name"] + " (family " + fields["cpu family"] + ", model " +
                     fields["model"] + "), kernels " + NameOf(BestIsa()) + ", caches";
  for (const std::size_t size : {caches.l1, caches.l2, caches.l3})
    text += " " + std::to_string(size >> 10) + " KiB";
  return text + "\n";
}

inline void RatioReporter::AppendToSummary() const {
  const char* name = std::getenv("NQ_BENCH_SUMMARY");
  if (name == nullptr || fTimes.empty()) return;
  std::ofstream file(name, std::ios::app);
  if (file.tellp() == 0) file << MachineLine();
  file << fText;
}

// OpenBLAS chooses its kernels when it is loaded. Where they are to match an older instruction set,
// or where it does not know the processor and falls back on its oldest, the program starts again
// with the kernels named.
inline void MatchPeerKernels(bool lowered, char** argv) {
  using namespace NQMath_940::internal;
  constexpr const char* kName = "OPENBLAS_CORETYPE";
  if (openblas_get_corename == nullptr) return;
  const bool unknown =
      BestIsa() > Isa::kBaseline && openblas_get_corename() == std::string("Prescott");
  if (!lowered && !unknown) return;
  const char* wanted = BestIsa() == Isa::kAvx512 ? "SkylakeX"
                       : BestIsa() == Isa::kAvx2 ? "Haswell"
                                                 : "Nehalem";
  const char* set = std::getenv(kName);
  if (set != nullptr && set == std::string(wanted)) return;
  setenv(kName, wanted, 1);
  execv("/proc/self/exe", argv);
}

// Runs the registered benchmarks, their repetitions in random order: what slows the machine for a
// while then slows all peers alike. Returns the exit status of main.
inline int RunWithRatios(int argc, char** argv) {
  using namespace NQMath_940::internal;
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  std::vector<char*> arguments{argv[0], interleave.data()};
  bool lowered = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument.starts_with("--isa=")) {
      lowered = true;
      LimitIsa(argument.ends_with("baseline") ? Isa::kBaseline
               : argument.ends_with("avx2")   ? Isa::kAvx2
                                              : Isa::kAvx512);
    } else {
      arguments.push_back(argv[i]);
    }
  }
  MatchPeerKernels(lowered, argv);
  if (openblas_set_num_threads != nullptr) openblas_set_num_threads(1);
  std::fputs(MachineLine().c_str(), stdout);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  RatioReporter reporter;
  return benchmark::RunSpecifiedBenchmarks(&reporter) > 0 ? 0 : 1;
}

// Registers work/peer/order with the settings that all benchmarks share.
template <class Run>
void Register(const std::string& name, int order, Run run) {
  benchmark::RegisterBenchmark((name + "/" + std::to_string(order)).c_str(), run)
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.05)
      ->Repetitions(9);
}

// The same where the benchmark tells its times itself, as TimeOnCopies does.
template <class Run>
void RegisterManual(const std::string& name, int order, Run run) {
  benchmark::RegisterBenchmark((name + "/" + std::to_string(order)).c_str(), run)
      ->UseManualTime()
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.05)
      ->Repetitions(9);
}

}  // namespace nqbench
