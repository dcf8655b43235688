// What the user asks for.
#pragma once

#include <optional>

#include "support/command_line.h"

namespace regression {

struct Request : support::Request {
  bool intercept = true;
};

// As support::CommandLine::Read.
std::optional<int> ReadCommandLine(int argc, char** argv, Request& request, bool isSpeaker);

}  // namespace regression
