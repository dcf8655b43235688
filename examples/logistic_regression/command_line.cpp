#include "command_line.h"

#include "support/model_data.h"
#include "version.h"

namespace logistic {

std::optional<int> ReadCommandLine(int argc, char** argv, Request& request, bool isSpeaker) {
  support::CommandLine line("Logistic regression of a column of two categories on others.",
                            kProgramName, kProgramVersion, request);
  line.App().add_option("--event", request.event,
                        "category to be predicted (default: the last in byte order, 1 of 0 and 1)");
  line.App()
      .add_option("--cutoff", request.cutoff, "probability above which a case is classified so")
      ->check(CLI::Range(0.0, 1.0));
  line.App()
      .add_option("--max-iterations", request.maxIterations, "iterations at most (25)")
      ->check(CLI::Range(1, 1000));
  line.App().add_flag("--iterations", request.showIterations, "tell of each iteration");
  const std::optional<int> status = line.Read(argc, argv, isSpeaker);
  request.settings.AddSetting(support::kSettingEvent, request.event, true);
  return status;
}

}  // namespace logistic
