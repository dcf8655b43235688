// Files that are written whole or not at all, and the HTML page.
#pragma once

#include <string>
#include <vector>

namespace regression {

struct OutputFile {
  std::string path;
  std::string content;
};

// Writes files under temporary names beside their own; Commit gives them their names. Without it
// nothing is left. What is no regular file, such as a terminal or a link, is written by Commit.
class OutputFiles {
 public:
  // Throws std::runtime_error when a file cannot be written, and for two of the same name.
  explicit OutputFiles(std::vector<OutputFile> files);
  ~OutputFiles();
  OutputFiles(const OutputFiles&) = delete;
  OutputFiles& operator=(const OutputFiles&) = delete;

  void Commit();

 private:
  void RemoveTemporaries() noexcept;

  std::vector<OutputFile> fFiles;
};

// The page that the stylesheet makes of a StatXML document, by the program xsltproc. Throws
// std::runtime_error when that is missing or fails.
std::string HtmlPage(const std::string& statXml);

}  // namespace regression
