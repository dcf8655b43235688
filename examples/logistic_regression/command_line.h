// What the user asks for.
#pragma once

#include <optional>
#include <string>

#include "support/command_line.h"

namespace logistic {

struct Request : support::Request {
  double cutoff = 0.5;
  int maxIterations = 25;
  bool showIterations = false;
  std::string event;
};

// As support::CommandLine::Read.
std::optional<int> ReadCommandLine(int argc, char** argv, Request& request, bool isSpeaker);

}  // namespace logistic
