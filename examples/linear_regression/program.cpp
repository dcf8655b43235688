#include "program.h"

#include "command_line.h"
#include "json_document.h"
#include "pmml_document.h"
#include "prediction.h"
#include "report.h"
#include "report_xsl.h"
#include "statxml_document.h"
#include "support/program.h"
#include "version.h"

namespace regression {

int Main(int argc, char** argv, support::Ranks* ranks) {
  const support::Builder<Regression> builder = {
      kProgramName,    kProgramVersion,   kPasses,     PmmlDocument,      JsonDocument,
      StatXmlDocument, kReportStylesheet, PrintReport, kPredictionTitles, PredictionOf,
      nullptr};
  Request request;
  return support::RunBuilder(
      builder, request, ranks,
      [&](bool isSpeaker) { return ReadCommandLine(argc, argv, request, isSpeaker); },
      [&](const support::ModelData& data, bool needsSummaries, support::Team& team) {
        return Fit(data, {request.intercept, needsSummaries}, team);
      });
}

}  // namespace regression
