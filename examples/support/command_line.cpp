#include "command_line.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "model_data.h"
#include "output_files.h"

namespace support {

CLI::Option* CommandLine::Text(const std::string& name, const std::string& help) {
  return fApp.add_option("--" + name, fTexts[name], help);
}

CLI::Option* CommandLine::List(const std::string& name, const std::string& help) {
  // One argument at a time, or it would swallow DATA behind it.
  return fApp.add_option("--" + name, fLists[name], help)->allow_extra_args(false);
}

void CommandLine::File(const std::string& name, std::string& path, const std::string& help) {
  const CLI::Validator named(
      [name](const std::string& value) {
        return value.empty() ? "--" + name + " needs the name of a file" : std::string();
      },
      "");
  fApp.add_option("--" + name, path, help)->type_name("FILE")->check(named);
}

CommandLine::CommandLine(const std::string& description, const std::string& program,
                         const std::string& version, Request& request)
    : fApp(description, program), fRequest(request) {
  request.threads = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  fApp.failure_message([program](const CLI::App*, const CLI::Error& error) {
    return program + ": " + error.what() + "\n";
  });
  fApp.add_option("DATA", request.data,
                  "CSV file: header row, then a row for each case; -: standard input; or, with "
                  "--table or --query, an SQLite database")
      ->required();
  CLI::Option* const table = Text(kSettingTable, "table or view of the database");
  Text(kSettingQuery, "query of the database whose rows are the cases")->excludes(table);
  Text(kSettingTarget, "column to be explained")->required();
  List(kSettingInputs, "columns that explain it (default: all the others)");
  List(kSettingCategorical, "inputs that are categorical; columns of text always are");
  List(kSettingReference, "COLUMN=CATEGORY that the others are compared with");
  Text(kSettingFreqWeight, "column that tells how many cases a row stands for");
  List(kSettingMissing, "cells that are missing besides empty ones (default: NA, NaN)");
  Text(kSettingSeparator, "character between cells, or tab (default: a comma)");
  File("pmml", request.pmml, "write the model as PMML 4.3");
  File("statxml", request.statXml, "write tables and charts as StatXML");
  File("json", request.json, "write the figures as JSON");
  File("save", request.save, "write the variables in the save format");
  File("html", request.html, "write tables and charts as one HTML page");
  File("predict", request.predict, "add predictions to the rows of this table");
  File("out", request.out, "write them here (default: standard output, without the report)");
  CLI::Option* const predictTable = fApp.add_option("--predict-table", request.predictTable,
                                                    "table or view, where --predict is a database");
  fApp.add_option("--predict-query", request.predictQuery, "or a query of it")
      ->excludes(predictTable);
  fApp.add_option("--copyright", request.copyright, "copyright line of the PMML document");
  fApp.add_flag("--timestamp", request.timestamp, "note the time in the PMML document");
  fApp.add_option("--threads", request.threads, "threads that read (default: one for each core)")
      ->check(CLI::Range(1, 1024));
  fApp.set_version_flag("--version", program + " " + version);
}

std::optional<int> CommandLine::Read(int argc, char** argv, bool isSpeaker) {
  try {
    fApp.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    std::ostringstream unheard;
    const int status = isSpeaker ? fApp.exit(error) : fApp.exit(error, unheard, unheard);
    return status == 0 ? 0 : kBadInput;
  }
  if (fRequest.data.empty()) throw std::runtime_error("the name of the data file is empty");
  if (!fRequest.out.empty() && fRequest.predict.empty())
    throw std::runtime_error("--out needs --predict");
  if (fRequest.predict.empty() && !(fRequest.predictTable + fRequest.predictQuery).empty())
    throw std::runtime_error("--predict-table and --predict-query need --predict");
  if (fRequest.data == "-" && fRequest.predict == "-")
    throw std::runtime_error("only one table can come from standard input");
  RefuseSharedFiles({{"the data", fRequest.data}, {"--predict", fRequest.predict}},
                    {{"--pmml", fRequest.pmml},
                     {"--statxml", fRequest.statXml},
                     {"--json", fRequest.json},
                     {"--save", fRequest.save},
                     {"--html", fRequest.html},
                     {"--out", fRequest.out}});
  NQXML_940::NQSettings& settings = fRequest.settings;
  settings.AddSetting(kSettingData, fRequest.data, true);
  for (const auto& [name, value] : fTexts) settings.AddSetting(name, value, true);
  for (const auto& [name, values] : fLists) settings.AddNewSetting(name, values, "");
  return std::nullopt;
}

}  // namespace support
