// Files that are written whole or not at all.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace support {

// What a file is for, as the user knows it, and its path; empty: there is none.
struct NamedFile {
  std::string use;
  std::string path;
};

// Refuses an output that is the same file as an input or another output: by name, through links of
// either kind or by another way. Throws std::runtime_error.
void RefuseSharedFiles(const std::vector<NamedFile>& inputs, const std::vector<NamedFile>& outputs);

// Writes files under temporary names beside their own; Commit gives them their names. Without it
// nothing is left. What is no regular file, such as a terminal or a link, is written by Commit.
// Throws std::runtime_error when a file cannot be written.
class OutputFiles {
 public:
  OutputFiles() = default;
  ~OutputFiles();
  OutputFiles(const OutputFiles&) = delete;
  OutputFiles& operator=(const OutputFiles&) = delete;

  void Add(const std::string& path, const std::string& content);
  // For a long file: the name under which the caller writes it.
  std::string Reserve(const std::string& path);
  void Commit();

 private:
  void RemoveTemporaries() noexcept;

  std::vector<std::string> fPaths;
  std::map<std::string, std::string> fSpecial;  // path and content
};

}  // namespace support
