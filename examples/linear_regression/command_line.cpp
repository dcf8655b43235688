#include "command_line.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "support/model_data.h"
#include "support/output_files.h"
#include "version.h"

namespace regression {
namespace {

using support::NamedFile;

void AddOptions(CLI::App& app, Request& request, std::map<std::string, std::string>& texts,
                std::map<std::string, std::vector<std::string>>& lists) {
  const auto text = [&](const std::string& name, const char* help) {
    return app.add_option("--" + name, texts[name], help);
  };
  const auto list = [&](const std::string& name, const char* help) {
    // One argument at a time, or it would swallow DATA.csv behind it.
    return app.add_option("--" + name, lists[name], help)->allow_extra_args(false);
  };
  const auto file = [&](const std::string& name, std::string& path, const char* help) {
    const CLI::Validator named(
        [name](const std::string& value) {
          return value.empty() ? "--" + name + " needs the name of a file" : std::string();
        },
        "");
    app.add_option("--" + name, path, help)->type_name("FILE")->check(named);
  };
  app.add_option("DATA.csv", request.data,
                 "header row, then a row for each case; -: standard input")
      ->required();
  text(support::kSettingTarget, "column to be explained")->required();
  list(support::kSettingInputs, "columns that explain it (default: all the others)");
  list(support::kSettingCategorical, "inputs that are categorical; columns of text always are");
  list(support::kSettingReference, "COLUMN=CATEGORY that the others are compared with");
  text(support::kSettingFreqWeight, "column that tells how many cases a row stands for");
  text(support::kSettingRegWeight, "column of weights of the residual variance");
  list(support::kSettingMissing, "cells that are missing besides empty ones (default: NA, NaN)");
  text(support::kSettingSeparator, "character between cells, or tab (default: a comma)");
  app.add_flag("!--no-intercept", request.intercept, "fit through zero");
  file("pmml", request.pmml, "write the model as PMML 4.3");
  file("statxml", request.statXml, "write tables and charts as StatXML");
  file("json", request.json, "write the figures as JSON");
  file("save", request.save, "write the variables in the save format");
  file("html", request.html, "write tables and charts as one HTML page");
  file("predict", request.predict, "add predictions to the rows of this table");
  file("out", request.out, "write them here (default: standard output, without the report)");
  app.add_option("--copyright", request.copyright, "copyright line of the PMML document");
  app.add_flag("--timestamp", request.timestamp, "note the time in the PMML document");
  app.add_option("--threads", request.threads, "threads that read (default: one for each core)")
      ->check(CLI::Range(1, 1024));
  app.set_version_flag("--version", std::string(kProgramName) + " " + kProgramVersion);
}

}  // namespace

std::optional<int> ReadCommandLine(int argc, char** argv, Request& request, bool isSpeaker) {
  CLI::App app("Least-squares regression of one column of a CSV file on others.", kProgramName);
  std::map<std::string, std::string> texts;
  std::map<std::string, std::vector<std::string>> lists;
  request.threads = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  AddOptions(app, request, texts, lists);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string(kProgramName) + ": " + error.what() + "\n";
  });
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    std::ostringstream unheard;
    const int status = isSpeaker ? app.exit(error) : app.exit(error, unheard, unheard);
    return status == 0 ? 0 : kBadInput;
  }
  if (request.data.empty()) throw std::runtime_error("the name of the data file is empty");
  if (!request.out.empty() && request.predict.empty())
    throw std::runtime_error("--out needs --predict");
  if (request.data == "-" && request.predict == "-")
    throw std::runtime_error("only one table can come from standard input");
  support::RefuseSharedFiles({{"the data", request.data}, {"--predict", request.predict}},
                             {{"--pmml", request.pmml},
                              {"--statxml", request.statXml},
                              {"--json", request.json},
                              {"--save", request.save},
                              {"--html", request.html},
                              {"--out", request.out}});
  NQXML_940::NQSettings& settings = request.settings;
  settings.AddSetting(support::kSettingData, request.data, true);
  for (const auto& [name, value] : texts) settings.AddSetting(name, value, true);
  for (const auto& [name, values] : lists) settings.AddNewSetting(name, values, "");
  return std::nullopt;
}

}  // namespace regression
