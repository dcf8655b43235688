#include "program.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <new>
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

// A rank that cannot read the data would leave the others waiting for its part.
void AgreeOnData(const Request& request, support::Ranks& ranks) {
  if (request.data == "-") throw std::runtime_error("ranks cannot share standard input");
  errno = 0;
  const bool opens = std::ifstream(request.data).peek() != std::ifstream::traits_type::eof();
  const int rank = ranks.Rank();
  std::string message = "rank " + std::to_string(rank) + " cannot read " + request.data +
                        (errno != 0 ? std::string(": ") + std::strerror(errno) : "");
  const auto place = opens ? support::Ranks::kNowhere : static_cast<std::uint64_t>(rank);
  if (ranks.FirstFailure(place, message) != support::Ranks::kNowhere)
    throw std::runtime_error(message);
}

void Run(const Request& request, support::Interrupt& interrupt, support::Ranks* ranks) {
  if (ranks) AgreeOnData(request, *ranks);
  support::Team team(request.threads, &interrupt, regression::kPasses, ranks);
  ModelData data(request.settings, team);
  const bool hasCharts = !(request.statXml + request.html).empty();
  if (hasCharts) regression::RefuseForStatXml(data);
  const bool needsSummaries = hasCharts || !(request.pmml + request.save).empty();
  const regression::Regression fit =
      regression::Fit(data, {request.intercept, needsSummaries}, team);
  if (ranks && ranks->Rank() != 0) return;

  support::Team alone(request.threads, &interrupt);
  support::OutputFiles outputs;
  AddDocuments(request, data, fit, outputs);
  regression::PredictionCounts scored;
  if (!request.predict.empty() && !request.out.empty()) {
    std::ofstream out(outputs.Reserve(request.out), std::ios::binary);
    if (!out) throw std::runtime_error("cannot write " + request.out);
    scored = regression::WritePredictions(data, fit, request.predict, alone, out);
    out.close();
    if (!out) throw std::runtime_error("cannot write " + request.out);
  } else if (!request.predict.empty()) {
    scored = regression::WritePredictions(data, fit, request.predict, alone, std::cout);
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

namespace regression {

int Main(int argc, char** argv, support::Ranks* ranks) {
  const bool isFirst = !ranks || ranks->Rank() == 0;
  try {
    Request request;
    if (const auto status = ReadCommandLine(argc, argv, request, isFirst)) return *status;
    support::Interrupt interrupt;
    Run(request, interrupt, ranks);
    return 0;
  } catch (const support::Interrupted& interrupted) {
    return interrupted.ExitStatus();
  } catch (const std::bad_alloc&) {
    std::cerr << kProgramName << ": the memory does not suffice\n";
    if (ranks) ranks->Abort(kBadInput);  // the others may wait for this one
    return kBadInput;
  } catch (const std::exception& error) {
    if (isFirst) std::cerr << kProgramName << ": " << error.what() << '\n';
    return kBadInput;
  }
}

}  // namespace regression
