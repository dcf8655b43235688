#include "program.h"

#include <ostream>
#include <string>

#include "command_line.h"
#include "json_document.h"
#include "pmml_document.h"
#include "prediction.h"
#include "report.h"
#include "report_xsl.h"
#include "statxml_document.h"
#include "support/interrupt.h"
#include "support/output_files.h"
#include "support/page.h"
#include "support/program.h"
#include "support/saved_variables.h"
#include "version.h"

namespace regression {
namespace {

using support::ModelData;

void AddDocuments(const Request& request, ModelData& data, const Regression& fit,
                  support::OutputFiles& outputs) {
  if (!request.pmml.empty()) {
    outputs.Add(request.pmml, PmmlDocument(data, fit,
                                           {kProgramName, kProgramVersion, request.copyright,
                                            request.timestamp}));
  }
  if (!request.json.empty()) outputs.Add(request.json, JsonDocument(data, fit));
  if (!request.save.empty())
    outputs.Add(request.save, support::SavedVariables(data, fit.summaries));
  if (request.statXml.empty() && request.html.empty()) return;
  const std::string document = StatXmlDocument(data, fit);
  if (!request.statXml.empty()) outputs.Add(request.statXml, document);
  if (!request.html.empty()) {
    const std::string program = std::string(kProgramName) + " " + kProgramVersion;
    outputs.Add(request.html,
                support::HtmlPage(kReportStylesheet, document,
                                  {{"date", support::Today()}, {"program", program}}));
  }
}

void Run(const Request& request, support::Interrupt& interrupt, support::Ranks* ranks) {
  support::AgreeOnData(request.data, ranks);
  support::Team team(request.threads, &interrupt, kPasses, ranks);
  ModelData data(request.settings, team);
  const bool hasCharts = !(request.statXml + request.html).empty();
  if (hasCharts) RefuseForStatXml(data);
  const bool needsSummaries = hasCharts || !(request.pmml + request.save).empty();
  const Regression fit = Fit(data, {request.intercept, needsSummaries}, team);
  if (ranks && ranks->Rank() != 0) return;

  support::Team alone(request.threads, &interrupt);
  support::OutputFiles outputs;
  AddDocuments(request, data, fit, outputs);
  support::Deliver(kProgramName, request, data, alone, outputs, kPredictionTitles,
                   PredictionOf(fit), [&](std::ostream& out) { PrintReport(out, data, fit); });
}

}  // namespace

int Main(int argc, char** argv, support::Ranks* ranks) {
  return support::ExitStatusOf(kProgramName, ranks, [&] {
    Request request;
    const bool isSpeaker = !ranks || ranks->Rank() == 0;
    if (const auto status = ReadCommandLine(argc, argv, request, isSpeaker)) return *status;
    support::Interrupt interrupt;
    Run(request, interrupt, ranks);
    return 0;
  });
}

}  // namespace regression
