#include "program.h"

#include <iostream>

#include "command_line.h"
#include "json_document.h"
#include "pmml_document.h"
#include "prediction.h"
#include "report.h"
#include "report_xsl.h"
#include "statxml_document.h"
#include "support/program.h"
#include "support/text.h"
#include "version.h"

namespace logistic {
namespace {

constexpr int kUsualPasses = 8;

void Tell(const NQMath_940::NQIterationReporter& report) {
  std::cerr << "iteration " << report.DiscreteMeasure("iterNum") << ": deviance "
            << support::Shortest(report.ScaleMeasure("loglik")) << ", halvings "
            << report.DiscreteMeasure("stepHalving") << '\n';
}

}  // namespace

int Main(int argc, char** argv, support::Ranks* ranks) {
  const support::Builder<LogisticFit> builder = {
      kProgramName,      kProgramVersion, kUsualPasses,      PmmlDocument,
      JsonDocument,      StatXmlDocument, kReportStylesheet, PrintReport,
      kPredictionTitles, PredictionOf,    Warnings};
  Request request;
  return support::RunBuilder(
      builder, request, ranks,
      [&](bool isSpeaker) { return ReadCommandLine(argc, argv, request, isSpeaker); },
      [&](const support::ModelData& data, bool needsSummaries, support::Team& team) {
        FitOptions options;
        options.cutoff = request.cutoff;
        options.maxIterations = request.maxIterations;
        options.summaries = needsSummaries;
        if (request.showIterations && (!ranks || ranks->Rank() == 0)) options.report = Tell;
        return Fit(data, EventCode(data, request.event), options, team);
      });
}

}  // namespace logistic
