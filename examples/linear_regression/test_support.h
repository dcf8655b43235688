// Fits of data that stand in the test, through a file.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
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

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};

// A connection to the file, which ran the statements.
inline std::unique_ptr<sqlite3, Closer> Connect(const std::string& path,
                                                const std::string& statements) {
  std::filesystem::create_directories(kDirectory);
  sqlite3* database = nullptr;
  EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(database);
  return std::unique_ptr<sqlite3, Closer>(database);
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
  std::uint64_t chunkBytes = support::kChunkBytes;
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

// ---- The program --------------------------------------------------------------------------------

struct Outcome {
  int status;
  std::string text;  // both streams
};

inline Outcome RunProgram(const std::string& arguments, const std::string& environment = "") {
  const std::string command = environment + " '" NQ_REGRESSION_PROGRAM "' " + arguments + " 2>&1";
  std::FILE* pipe = popen(command.c_str(), "r");
  Outcome outcome{-1, {}};
  if (!pipe) return outcome;
  for (int c; (c = std::fgetc(pipe)) != EOF;) outcome.text += static_cast<char>(c);
  const int status = pclose(pipe);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

inline std::size_t FilesIn(const std::filesystem::path& directory) {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator(directory), {}));
}

inline void ExpectRefused(const Outcome& outcome, const std::string& message) {
  EXPECT_EQ(outcome.status, 2) << message;
  EXPECT_NE(outcome.text.find(message), std::string::npos) << outcome.text;
  EXPECT_EQ(std::count(outcome.text.begin(), outcome.text.end(), '\n'), 1) << outcome.text;
}

}  // namespace regression
