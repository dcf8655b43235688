#include "program.h"

#include <iostream>
#include <string>

#include "command_line.h"
#include "json_document.h"
#include "pmml_document.h"
#include "prediction.h"
#include "report.h"
#include "support/interrupt.h"
#include "support/output_files.h"
#include "support/program.h"
#include "support/saved_variables.h"
#include "support/text.h"
#include "version.h"

namespace logistic {
namespace {

using support::ModelData;

constexpr int kUsualPasses = 8;  // for the progress bar

void Tell(const NQMath_940::NQIterationReporter& report) {
  std::cerr << "iteration " << report.DiscreteMeasure("iterNum") << ": deviance "
            << support::Shortest(report.ScaleMeasure("loglik")) << ", halvings "
            << report.DiscreteMeasure("stepHalving") << '\n';
}

void Run(const Request& request, support::Interrupt& interrupt, support::Ranks* ranks) {
  support::AgreeOnData(request.data, ranks);
  support::Team team(request.threads, &interrupt, kUsualPasses, ranks);
  ModelData data(request.settings, team);
  const bool isFirst = !ranks || ranks->Rank() == 0;
  FitOptions options;
  options.cutoff = request.cutoff;
  options.maxIterations = request.maxIterations;
  options.summaries = !(request.pmml + request.save).empty();
  if (request.showIterations && isFirst) options.report = Tell;
  const LogisticFit fit = Fit(data, EventCode(data, request.event), options, team);
  if (!isFirst) return;

  support::Team alone(request.threads, &interrupt);
  support::OutputFiles outputs;
  if (!request.pmml.empty()) {
    outputs.Add(request.pmml, PmmlDocument(data, fit,
                                           {kProgramName, kProgramVersion, request.copyright,
                                            request.timestamp}));
  }
  if (!request.json.empty()) outputs.Add(request.json, JsonDocument(data, fit));
  if (!request.save.empty())
    outputs.Add(request.save, support::SavedVariables(data, fit.summaries));
  support::Deliver(kProgramName, request, data, alone, outputs, kPredictionTitles,
                   PredictionOf(fit), [&](std::ostream& out) { PrintReport(out, data, fit); });
  for (const std::string& warning : Warnings(fit))
    std::cerr << kProgramName << ": warning: " << warning << '\n';
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

}  // namespace logistic
