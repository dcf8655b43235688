// Linear regression from a CSV file: see README.md.
#include <CLI/CLI.hpp>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "csv_table.h"
#include "regression.h"
#include "report.h"

namespace {

constexpr int kBadInput = 2;

struct Options {
  std::string data;
  std::string target;
  std::vector<std::string> inputs;
  bool noIntercept = false;
  std::string json;
};

void Describe(CLI::App& app, Options& options) {
  app.add_option("DATA.csv", options.data, "header row, then rows of numbers")->required();
  app.add_option("--target", options.target, "column to be explained")->required();
  app.add_option("--inputs", options.inputs, "columns that explain it (default: all the others)")
      ->delimiter(',')
      ->allow_extra_args(false);  // or it would swallow DATA.csv behind it
  app.add_flag("--no-intercept", options.noIntercept, "fit through zero");
  app.add_option("--json", options.json, "write the figures to this file too");
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("linear_regression: ") + error.what() + "\n";
  });
}

void Run(const Options& options) {
  std::ifstream data(options.data, std::ios::binary);
  if (!data) throw std::runtime_error("cannot open " + options.data);
  const regression::Regression fit = regression::Fit(
      regression::ChooseColumns(regression::ReadCsv(data), options.inputs, options.target),
      !options.noIntercept);

  if (!options.json.empty()) {
    std::ofstream json(options.json, std::ios::binary);
    json << regression::ToJson(fit);
    if (!json.flush()) throw std::runtime_error("cannot write " + options.json);
  }
  regression::PrintReport(std::cout, fit);
  if (!std::cout.flush()) throw std::runtime_error("cannot write the report");
}

int RunCommand(int argc, char** argv) {
  CLI::App app("Least-squares regression of one column of a CSV file on others.");
  Options options;
  Describe(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {  // --help too
    return app.exit(error) == 0 ? 0 : kBadInput;
  }
  Run(options);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return RunCommand(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "linear_regression: " << error.what() << '\n';
    return kBadInput;
  }
}
