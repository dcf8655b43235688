// Encoding values into their categories, all known already: NQCatNumEncoder and NQStringEncoder
// beside std::map and std::unordered_map. The unordered maps have the standard's hash, of good
// quality for texts and, in libstdc++, for doubles; and for doubles "mixed", the mixer of our own
// index. The order is the number of categories. Values come from a random table of a million, as
// often as it takes: 10 million values into 1,000 categories, 4 million into 1,000,000.
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/internal/category_index.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "support/ratio_reporter.h"

namespace {

constexpr int kTable = 1000000;

template <class T>
T Category(int i);
template <>
double Category<double>(int i) {
  return i * 0.25;
}
template <>
std::string Category<std::string>(int i) {
  return "category " + std::to_string(i);
}

// Every category is there, in random order.
template <class T>
std::vector<T> Values(int categories) {
  std::mt19937 random(1);
  std::vector<T> values;
  for (int i = 0; i < kTable; ++i) {
    const int pick = static_cast<int>(random() % static_cast<unsigned>(categories));
    values.push_back(Category<T>(i < categories ? i : pick));
  }
  std::shuffle(values.begin(), values.end(), random);
  return values;
}

// Through the interface, as builders do.
template <class Encoder>
struct Ours {
  std::unique_ptr<NQXML_940::INQEncoder> fEncoder = std::make_unique<Encoder>();
  template <class T>
  double operator()(const T& value) {
    return fEncoder->Encode(value);
  }
};

// What stands in the place of an encoder otherwise.
template <class Map>
struct ByMap {
  Map fCodes;
  template <class T>
  double operator()(const T& value) {
    return fCodes.try_emplace(value, static_cast<int>(fCodes.size())).first->second;
  }
};

struct Mixed {
  std::size_t operator()(double value) const { return NQXML_940::internal::HashValue(value); }
};

template <class T, class Peer>
void Run(benchmark::State& state, int categories) {
  const std::vector<T> values = Values<T>(categories);
  const int rounds = categories <= 1000 ? 10 : 4;
  Peer peer;
  for (const T& value : values) peer(value);
  for (auto _ : state) {
    double sum = 0;
    for (int round = 0; round < rounds; ++round) {
      for (const T& value : values) sum += peer(value);
    }
    benchmark::DoNotOptimize(sum);
  }
}

template <class T, class Peer>
void Register(const std::string& name) {
  for (int categories : {1000, kTable}) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(categories)).c_str(), Run<T, Peer>,
                                 categories)
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace

int main(int argc, char** argv) {
  using std::string;
  Register<double, Ours<NQXML_940::NQCatNumEncoder>>("numeric/ours");
  Register<double, ByMap<std::map<double, int>>>("numeric/map");
  Register<double, ByMap<std::unordered_map<double, int>>>("numeric/unordered_map");
  Register<double, ByMap<std::unordered_map<double, int, Mixed>>>("numeric/mixed unordered_map");
  Register<string, Ours<NQXML_940::NQStringEncoder>>("string/ours");
  Register<string, ByMap<std::map<string, int>>>("string/map");
  Register<string, ByMap<std::unordered_map<string, int>>>("string/unordered_map");
  return nqbench::RunWithRatios(argc, argv);
}
