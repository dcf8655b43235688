// The program of a builder of models, for one process or many.
#pragma once

#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "command_line.h"
#include "interrupt.h"
#include "model_data.h"
#include "output_files.h"
#include "page.h"
#include "pmml_parts.h"
#include "prediction.h"
#include "ranks.h"
#include "saved_variables.h"
#include "statxml_parts.h"

namespace support {

// How a builder names itself, and what it makes of a fit, which has `summaries` where they are
// needed.
template <class Fit>
struct Builder {
  const char* program;
  const char* version;
  int passes;  // usual readings of the data, for the progress bar
  std::string (*pmml)(const ModelData&, const Fit&, const PmmlOptions&);
  std::string (*json)(const ModelData&, const Fit&);
  std::string (*statXml)(const ModelData&, const Fit&);
  const char* stylesheet;  // of the page, which it makes of the StatXML document
  void (*report)(std::ostream&, const ModelData&, const Fit&);
  const std::vector<std::string>& titles;  // of the cells that the scorer gives
  Scorer (*scorer)(const Fit&);
  std::vector<std::string> (*warnings)(const Fit&);  // a line each; null: there are none
};

// The local date: 2026-11-22.
std::string Today();

// Writes the predictions that are asked for and the report, which gives way to predictions on
// standard output; then gives the documents their names and tells the notes.
void Deliver(const std::string& program, const Request& request, const ModelData& data, Team& team,
             OutputFiles& documents, const std::vector<std::string>& titles, const Scorer& score,
             const std::function<void(std::ostream&)>& report);

// A rank that cannot read the data would leave the others waiting for its part: all throw then.
// Nothing without ranks.
void AgreeOnData(const std::string& path, Ranks* ranks);

// Runs the program and turns what it throws into a line on standard error and an exit status. Of
// several ranks, which all fail alike, the first speaks. `ranks` is null for one process.
int ExitStatusOf(const std::string& program, Ranks* ranks, const std::function<int()>& run);

// The exit status of a builder. read(isSpeaker) reads the command line into the request, as
// CommandLine::Read; fit(data, needsSummaries, team) fits. Every rank calls it; the first writes.
template <class Fit, class Read, class MakeFit>
int RunBuilder(const Builder<Fit>& builder, const Request& request, Ranks* ranks, Read read,
               MakeFit makeFit) {
  return ExitStatusOf(builder.program, ranks, [&] {
    const bool isFirst = !ranks || ranks->Rank() == 0;
    if (const std::optional<int> status = read(isFirst)) return *status;
    Interrupt interrupt;
    AgreeOnData(request.data, ranks);
    Team team(request.threads, &interrupt, builder.passes, ranks);
    ModelData data(request.settings, team);
    const bool hasCharts = !(request.statXml + request.html).empty();
    if (hasCharts) RefuseForStatXml(data);
    const Fit fit = makeFit(data, hasCharts || !(request.pmml + request.save).empty(), team);
    if (!isFirst) return 0;

    Team alone(request.threads, &interrupt);
    OutputFiles outputs;
    const auto add = [&](const std::string& path, const auto& text) {
      if (!path.empty()) outputs.Add(path, text());
    };
    add(request.pmml, [&] {
      return builder.pmml(data, fit,
                          {builder.program, builder.version, request.copyright, request.timestamp});
    });
    add(request.json, [&] { return builder.json(data, fit); });
    add(request.save, [&] { return SavedVariables(data, fit.summaries); });
    const std::string document = hasCharts ? builder.statXml(data, fit) : "";
    add(request.statXml, [&]() -> const std::string& { return document; });
    add(request.html, [&] {
      const std::string program = std::string(builder.program) + " " + builder.version;
      return HtmlPage(builder.stylesheet, document, {{"date", Today()}, {"program", program}});
    });
    Deliver(builder.program, request, data, alone, outputs, builder.titles, builder.scorer(fit),
            [&](std::ostream& out) { builder.report(out, data, fit); });
    if (builder.warnings) {
      for (const std::string& warning : builder.warnings(fit))
        std::cerr << builder.program << ": warning: " << warning << '\n';
    }
    return 0;
  });
}

}  // namespace support
