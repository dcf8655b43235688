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

#include "model_data.h"
#include "regression.h"

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

// "inputs" and "categorical" are lists of one or two names, separated by a comma.
inline NQXML_940::NQSettings Settings(const std::string& path, const Arguments& arguments) {
  NQXML_940::NQSettings settings;
  settings.AddSetting("data", path, true);
  settings.AddSetting("target", std::string("y"), true);
  for (const auto& [name, value] : arguments) {
    const std::size_t comma = value.find(',');
    std::vector<std::string> list = {value.substr(0, comma)};
    if (comma != value.npos) list.push_back(value.substr(comma + 1));
    if (name == "inputs" || name == "categorical")
      settings.AddNewSetting(name, list, "");
    else
      settings.AddSetting(name, value, true);
  }
  return settings;
}

inline Regression FitText(const std::string& text, const Arguments& arguments = {},
                          const FitOptions& options = {}) {
  return Fit(ModelData(Settings(FileOf(text), arguments)), options, nullptr);
}

}  // namespace regression
