// Linear regression from a CSV file: see README.md.
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "command_line.h"
#include "json_document.h"
#include "pmml_document.h"
#include "prediction.h"
#include "report.h"
#include "report_xsl.h"
#include "saved_variables.h"
#include "statxml_document.h"
#include "support/interrupt.h"
#include "support/output_files.h"
#include "support/page.h"
#include "version.h"

namespace {

using regression::kProgramName;
using regression::kProgramVersion;
using regression::Request;
using support::ModelData;

std::string Today() {
  const std::time_t now = std::time(nullptr);
  char text[16];
  std::tm parts = {};
  localtime_r(&now, &parts);
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &parts)};
}

void AddDocuments(const Request& request, ModelData& data, const regression::Regression& fit,
                  support::OutputFiles& outputs) {
  if (!request.pmml.empty()) {
    outputs.Add(request.pmml,
                regression::PmmlDocument(data, fit, {request.copyright, request.timestamp}));
  }
  if (!request.json.empty()) outputs.Add(request.json, regression::JsonDocument(data, fit));
  if (!request.save.empty()) outputs.Add(request.save, regression::SavedVariables(data, fit));
  if (request.statXml.empty() && request.html.empty()) return;
  const std::string document = regression::StatXmlDocument(data, fit);
  if (!request.statXml.empty()) outputs.Add(request.statXml, document);
  if (!request.html.empty()) {
    const std::string program = std::string(kProgramName) + " " + kProgramVersion;
    outputs.Add(request.html, support::HtmlPage(regression::kReportStylesheet, document,
                                                {{"date", Today()}, {"program", program}}));
  }
}

void Run(const Request& request, support::Interrupt& interrupt) {
  support::Team team(request.threads, &interrupt, regression::kPasses);
  ModelData data(request.settings, team);
  const bool hasCharts = !(request.statXml + request.html).empty();
  if (hasCharts) regression::RefuseForStatXml(data);
  const bool needsSummaries = hasCharts || !(request.pmml + request.save).empty();
  const regression::Regression fit =
      regression::Fit(data, {request.intercept, needsSummaries}, team);

  support::OutputFiles outputs;
  AddDocuments(request, data, fit, outputs);
  regression::PredictionCounts scored;
  if (!request.predict.empty() && !request.out.empty()) {
    std::ofstream out(outputs.Reserve(request.out), std::ios::binary);
    if (!out) throw std::runtime_error("cannot write " + request.out);
    scored = regression::WritePredictions(data, fit, request.predict, team, out);
    out.close();
    if (!out) throw std::runtime_error("cannot write " + request.out);
  } else if (!request.predict.empty()) {
    scored = regression::WritePredictions(data, fit, request.predict, team, std::cout);
  }
  if (request.predict.empty() || !request.out.empty())
    regression::PrintReport(std::cout, data, fit);
  if (!request.out.empty()) regression::PrintCounts(std::cout, scored);
  if (!std::cout.flush()) throw std::runtime_error("cannot write to standard output");
  outputs.Commit();
  for (const std::string& note : data.Notes())
    std::cerr << kProgramName << ": note: " << note << '\n';
  if (request.out.empty() && scored.missing + scored.unseen > 0)
    regression::PrintCounts(std::cerr, scored);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Request request;
    if (const auto status = regression::ReadCommandLine(argc, argv, request)) return *status;
    support::Interrupt interrupt;
    Run(request, interrupt);
    return 0;
  } catch (const support::Interrupted& interrupted) {
    return interrupted.ExitStatus();
  } catch (const std::exception& error) {
    std::cerr << kProgramName << ": " << error.what() << '\n';
    return regression::kBadInput;
  }
}
