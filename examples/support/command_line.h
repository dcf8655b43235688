// The options that builders of models from files share.
#pragma once

#include <CLI/CLI.hpp>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <nqcommon/model/settings/NQSettings.h>

namespace support {

// What the user asks for. The settings are those of ModelData.
struct Request {
  NQXML_940::NQSettings settings;
  std::string data;
  std::string pmml, statXml, json, save, html;  // files to write; empty: not asked for
  std::string predict, predictTable, predictQuery, out;
  std::string copyright;
  bool timestamp = false;
  int threads = 1;
};

inline constexpr int kBadInput = 2;  // exit status

// Reads a command line into the request. A program adds its own options to App(), or with Text and
// List those whose values become settings.
class CommandLine {
 public:
  CommandLine(const std::string& description, const std::string& program,
              const std::string& version, Request& request);

  CLI::App& App() { return fApp; }
  CLI::Option* Text(const std::string& name, const std::string& help);
  CLI::Option* List(const std::string& name, const std::string& help);

  // The exit status when there is nothing to do: that of --help and --version, or of bad usage,
  // which only a speaker tells. Files that would be overwritten by one another are refused by
  // std::runtime_error.
  std::optional<int> Read(int argc, char** argv, bool isSpeaker);

 private:
  void File(const std::string& name, std::string& path, const std::string& help);

  CLI::App fApp;
  Request& fRequest;
  std::map<std::string, std::string> fTexts;
  std::map<std::string, std::vector<std::string>> fLists;
};

}  // namespace support
