// Documents against the schemas of docs/schema, with xmllint.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace nqtest {

// Empty when the document is valid, else what xmllint says, or the shell where there is no xmllint.
// The option is --schema or --dtdvalid, the schema a file of docs/schema.
inline std::string Complaints(const std::string& document, const std::string& option,
                              const std::string& schema) {
  namespace fs = std::filesystem;
  const fs::path directory = fs::temp_directory_path() / ("nq_xmllint_" + std::to_string(getpid()));
  const fs::path schemas = fs::path("docs/schema");
  const std::string file = directory / "document.xml", said = directory / "said";
  fs::create_directories(directory);
  std::ofstream(file, std::ios::binary) << document;
  const int status = std::system(("xmllint --nonet --noout " + option + " '" +
                                  (schemas / schema).string() + "' " + file + " >" + said + " 2>&1")
                                     .c_str());
  std::ifstream in(said);
  const std::string text(std::istreambuf_iterator<char>(in), {});
  fs::remove_all(directory);
  return status == 0 ? "" : "status " + std::to_string(status) + ": " + text;
}

}  // namespace nqtest
