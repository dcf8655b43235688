// What the user asks for.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nqcommon/model/settings/NQSettings.h>

namespace regression {

// The command line. The settings are those of support::ModelData.
struct Request {
  NQXML_940::NQSettings settings;
  std::string data;
  std::string pmml, statXml, json, save, html;  // files to write; empty: not asked for
  std::string predict, out;
  std::string copyright;
  bool timestamp = false;
  bool intercept = true;
  int threads = 1;
};

// Fills the request, or gives the exit status when there is nothing to do: that of --help and
// --version, or of bad usage, which only a speaker tells. Files that would be overwritten by one
// another are refused.
std::optional<int> ReadCommandLine(int argc, char** argv, Request& request, bool isSpeaker);

inline constexpr int kBadInput = 2;

}  // namespace regression
