// Linear regression from a CSV file: see README.md.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <nqcommon/model/NQVarList.h>
#include <nqcommon/model/settings/NQSettings.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/xml/ExportFormat.h>
#include <nqcommon/xml/SaveXMLTags.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/save_format.h>

#include "input_summaries.h"
#include "model_data.h"
#include "output_files.h"
#include "pmml_document.h"
#include "regression.h"
#include "report.h"
#include "statxml_document.h"
#include "version.h"

namespace {

using NQXML_940::NQSettings;
using NQXML_940::SaveXMLTags::SAVEXML_DTD_LOC;
using NQXML_940::SaveXMLTags::XML_ELE_ROOT;
using regression::OutputFile;

constexpr int kBadInput = 2;
constexpr std::size_t kLongestSavedLine = 255;
constexpr const char* kIntercept = "intercept";
constexpr const char* kOutputs[][2] = {{"pmml", "write the model as PMML 4.3"},
                                       {"statxml", "write tables and charts as StatXML"},
                                       {"json", "write the figures as JSON"},
                                       {"save", "write the variables in the save format"},
                                       {"html", "write tables and charts as one HTML page"}};

// The command line as settings. Fills them only when there is something to do: the other status is
// that of --help (0) or of bad usage.
std::optional<int> ReadSettings(int argc, char** argv, NQSettings& settings) {
  CLI::App app("Least-squares regression of one column of a CSV file on others.");
  std::map<std::string, std::string> texts;
  std::map<std::string, std::vector<std::string>> lists;
  const auto text = [&](const std::string& name, const char* help) {
    return app.add_option("--" + name, texts[name], help);
  };
  const auto list = [&](const std::string& name, const char* help) {
    app.add_option("--" + name, lists[name], help)
        ->delimiter(',')
        ->allow_extra_args(false);  // or it would swallow DATA.csv behind it
  };
  app.add_option("DATA.csv", texts[regression::kSettingData],
                 "header row, then a row for each case")
      ->required();
  text(regression::kSettingTarget, "column to be explained")->required();
  list(regression::kSettingInputs, "columns that explain it (default: all the others)");
  list(regression::kSettingCategorical, "inputs that are categorical; columns of text always are");
  text(regression::kSettingFreqWeight, "column that tells how many cases a row stands for");
  text(regression::kSettingRegWeight, "column of weights of the residual variance");
  bool noIntercept = false;
  app.add_flag("--no-intercept", noIntercept, "fit through zero");
  for (const auto& [name, help] : kOutputs) text(name, help)->type_name("FILE");
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("linear_regression: ") + error.what() + "\n";
  });
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kBadInput;
  }
  for (const auto& [name, value] : texts) settings.AddSetting(name, value, true);
  for (const auto& [name, values] : lists) settings.AddNewSetting(name, values, "");
  settings.AddSetting(kIntercept, noIntercept ? 0.0 : 1.0, true);
  return std::nullopt;
}

std::string SavedVariables(const NQXML_940::NQVarList& variables) {
  std::ostringstream out;
  NQXML_940::ExportFormat format;
  const std::unique_ptr<NQXML_940::XMLDocType> head(
      NQXML_940::XMLDocType::Create(XML_ELE_ROOT, SAVEXML_DTD_LOC, 0));
  head->ToStream(out, format, false);
  NQXML_940::StartRoot(out, NQPMMLTags::XML_VAL_HEADRIGHT);
  variables.WriteObjectXML(out, 1);
  NQXML_940::EndRoot(out);
  std::string text = out.str() + "\n";
  for (std::size_t at = 0, end = 0; (end = text.find('\n', at)) != text.npos; at = end + 1) {
    if (end - at > kLongestSavedLine)
      throw std::runtime_error("a name or category is too long to be read back from --save");
  }
  return text;
}

void Run(const NQSettings& settings) {
  const auto fileOf = [&](const char* output) {
    std::string path;
    settings.GetSettingValByName(output, path);
    return path;
  };
  const std::string pmml = fileOf("pmml"), statXml = fileOf("statxml"), json = fileOf("json"),
                    save = fileOf("save"), html = fileOf("html");
  regression::FitOptions options;
  settings.GetSettingValByName(kIntercept, options.intercept);

  regression::ModelData data(settings);
  regression::InputSummaries summaries(data);
  const bool wantsSummaries = !(pmml + statXml + save + html).empty();
  const regression::Regression fit =
      regression::Fit(data, options, wantsSummaries ? &summaries : nullptr);

  std::vector<OutputFile> files;
  if (!pmml.empty()) files.push_back({pmml, regression::PmmlDocument(data, fit, summaries)});
  if (!json.empty()) files.push_back({json, regression::ToJson(fit)});
  if (!save.empty()) {
    summaries.StoreIn(data.Variables());
    files.push_back({save, SavedVariables(data.Variables())});
  }
  if (!(statXml + html).empty()) {
    const std::string document = regression::StatXmlDocument(data, fit, summaries);
    if (!statXml.empty()) files.push_back({statXml, document});
    if (!html.empty()) files.push_back({html, regression::HtmlPage(document)});
  }
  regression::OutputFiles outputs(std::move(files));
  regression::PrintReport(std::cout, fit);
  if (!std::cout.flush()) throw std::runtime_error("cannot write the report");
  outputs.Commit();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    NQSettings settings;
    if (const std::optional<int> status = ReadSettings(argc, argv, settings)) return *status;
    Run(settings);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "linear_regression: " << error.what() << '\n';
    return kBadInput;
  }
}
