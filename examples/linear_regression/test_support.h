// Fits of data that stand in the test, through a file.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "regression.h"
#include "support/model_data.h"
#include "support/team.h"

namespace regression {

using Arguments = std::vector<std::pair<std::string, std::string>>;

inline const std::filesystem::path kDirectory =
    std::filesystem::path(::testing::TempDir()) / ("linear_regression_" + std::to_string(getpid()));

inline const struct RemoveAtExit {
  ~RemoveAtExit() { std::filesystem::remove_all(kDirectory); }
} kRemoveAtExit;

inline std::string FileOf(const std::string& content) {
  std::filesystem::create_directories(kDirectory);
  std::string path = (kDirectory / "data.csv").string();
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

inline std::string ContentOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// "inputs", "categorical", "missing" and "reference" are lists of one argument.
inline NQXML_940::NQSettings Settings(const std::string& path, const Arguments& arguments) {
  NQXML_940::NQSettings settings;
  settings.AddSetting("data", path, true);
  settings.AddSetting("target", std::string("y"), true);
  for (const auto& [name, value] : arguments) {
    if (name == "inputs" || name == "categorical" || name == "missing" || name == "reference")
      settings.AddNewSetting(name, std::vector<std::string>{value}, "");
    else
      settings.AddSetting(name, value, true);
  }
  return settings;
}

// A file read in chunks of so many bytes, by so many threads.
struct Reading {
  std::uint64_t chunkBytes = support::CsvFile::kChunkBytes;
  int threads = 1;
};

struct Fitted {
  support::Team team;
  support::ModelData data;
  Regression fit;

  Fitted(const std::string& path, const Arguments& arguments, const FitOptions& options = {},
         const Reading& reading = {})
      : team(reading.threads, nullptr),
        data(Settings(path, arguments), team, reading.chunkBytes),
        fit(Fit(data, options, team)) {}
};

inline Regression FitText(const std::string& text, const Arguments& arguments = {},
                          const FitOptions& options = {}, const Reading& reading = {}) {
  return Fitted(FileOf(text), arguments, options, reading).fit;
}

}  // namespace regression
