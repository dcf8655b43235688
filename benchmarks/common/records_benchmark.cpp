// Rows of ten numbers with names: ValueRecord beside a bare vector of Value, whose names are in one
// std::map of the program. Building fills a table of rows ("build"), the growing of the
// table included ("grow"); reading adds all numbers up, by position, by name, and through the
// vector that a record gives out. The order is the number of rows.
#include <nqcommon/common/ValueRecord.h>

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "support/ratio_reporter.h"

namespace {

using NQCommon_940::Value;
using NQCommon_940::ValueRecord;

constexpr int kColumns = 10;

std::vector<std::string> ColumnNames() {
  std::vector<std::string> names;
  for (int j = 0; j < kColumns; ++j) names.push_back("column" + std::to_string(j));
  return names;
}
const std::vector<std::string> kNames = ColumnNames();

struct Ours {
  static ValueRecord Row(double x) {
    static const ValueRecord empty(kNames);
    ValueRecord row = empty;
    for (int j = 0; j < kColumns; ++j) row.SetValue(j, x + j);
    return row;
  }
  static double At(const ValueRecord& row, int j) { return row.Get(j).GetReal(); }
  static double Named(const ValueRecord& row, const std::string& name) {
    return row.Get(name).GetReal();
  }
  static const std::vector<Value>& All(const ValueRecord& row) { return row.GetRecord(); }
};

struct Bare {
  static std::vector<Value> Row(double x) {
    std::vector<Value> row(kColumns);
    for (int j = 0; j < kColumns; ++j) row[static_cast<std::size_t>(j)].SetValue(x + j);
    return row;
  }
  static double At(const std::vector<Value>& row, int j) {
    return row[static_cast<std::size_t>(j)].GetReal();
  }
  static double Named(const std::vector<Value>& row, const std::string& name) {
    static const std::map<std::string, int> index = [] {
      std::map<std::string, int> positions;
      for (int j = 0; j < kColumns; ++j) positions[kNames[static_cast<std::size_t>(j)]] = j;
      return positions;
    }();
    return At(row, index.find(name)->second);
  }
  static const std::vector<Value>& All(const std::vector<Value>& row) { return row; }
};

template <class Peer>
auto Table(int n, bool reserve) {
  std::vector<decltype(Peer::Row(0))> rows;
  if (reserve) rows.reserve(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) rows.push_back(Peer::Row(i));
  return rows;
}

template <class Peer>
void Register(const std::string& peer, int n) {
  const auto add = [&](const std::string& work, auto run) {
    benchmark::RegisterBenchmark((work + "/" + peer + "/" + std::to_string(n)).c_str(), run)
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.1)
        ->Repetitions(5);
  };
  for (const bool reserve : {true, false}) {
    add(reserve ? "build" : "grow", [n, reserve](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(Table<Peer>(n, reserve).data());
    });
  }
  const auto addReading = [&](const std::string& work, auto sumOf) {
    add(work, [n, sumOf](benchmark::State& state) {
      const auto rows = Table<Peer>(n, true);
      for (auto _ : state) {
        double sum = 0;
        for (const auto& row : rows) sum += sumOf(row);
        benchmark::DoNotOptimize(sum);
      }
    });
  };
  addReading("by position", [](const auto& row) {
    double sum = 0;
    for (int j = 0; j < kColumns; ++j) sum += Peer::At(row, j);
    return sum;
  });
  addReading("by name", [](const auto& row) {
    double sum = 0;
    for (const std::string& name : kNames) sum += Peer::Named(row, name);
    return sum;
  });
  addReading("all values", [](const auto& row) {
    double sum = 0;
    for (const Value& value : Peer::All(row)) sum += value.GetReal();
    return sum;
  });
}

}  // namespace

int main(int argc, char** argv) {
  for (const int n : {1000, 100000}) {
    Register<Ours>("ours", n);
    Register<Bare>("vector<Value>", n);
  }
  return nqbench::RunWithRatios(argc, argv);
}
