#include "command_line.h"

#include "support/model_data.h"
#include "version.h"

namespace regression {

std::optional<int> ReadCommandLine(int argc, char** argv, Request& request, bool isSpeaker) {
  support::CommandLine line("Least-squares regression of one column of a table on others.",
                            kProgramName, kProgramVersion, request);
  line.Text(support::kSettingRegWeight, "column of weights of the residual variance");
  line.App().add_flag("!--no-intercept", request.intercept, "fit through zero");
  return line.Read(argc, argv, isSpeaker);
}

}  // namespace regression
