#include "output_files.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "interrupt.h"

namespace fs = std::filesystem;

namespace support {
namespace {

std::string TemporaryName(const std::string& path) {
  return path + "." + std::to_string(getpid()) + ".tmp";
}

// A link stays a link: a rename over /dev/stdout would take it away from everybody.
bool IsSpecial(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(path, error);
  return fs::exists(status) && !fs::is_regular_file(status);
}

void WriteFile(const std::string& path, const std::string& content, const std::string& name) {
  errno = 0;
  std::ofstream out(path, std::ios::binary);
  out << content;
  out.close();
  if (out) return;
  const std::string reason = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
  throw std::runtime_error("cannot write " + name + reason);
}

// The path without links, also where the last one leads to nothing yet.
fs::path Resolved(fs::path path) {
  constexpr int kMostLinks = 40;  // as the system allows
  std::error_code error;
  path = fs::absolute(path);
  for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i) {
    const fs::path next = fs::read_symlink(path, error);
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  const fs::path resolved = fs::weakly_canonical(path, error);
  return error ? path.lexically_normal() : resolved;
}

bool IsSameFile(const std::string& one, const std::string& other) {
  std::error_code error;
  return fs::equivalent(one, other, error) || Resolved(one) == Resolved(other);
}

}  // namespace

void RefuseSharedFiles(const std::vector<NamedFile>& inputs,
                       const std::vector<NamedFile>& outputs) {
  std::vector<NamedFile> known = inputs;
  for (const NamedFile& output : outputs) {
    if (output.path.empty()) continue;
    for (const NamedFile& other : known) {
      if (!other.path.empty() && IsSameFile(output.path, other.path)) {
        throw std::runtime_error(output.use + " " + output.path + " is the same file as " +
                                 other.use);
      }
    }
    known.push_back(output);
  }
}

OutputFiles::~OutputFiles() { RemoveTemporaries(); }

void OutputFiles::Add(const std::string& path, const std::string& content) {
  Interrupt::Check();
  if (IsSpecial(path)) {
    fSpecial[path] = content;
    return;
  }
  WriteFile(Reserve(path), content, path);
}

std::string OutputFiles::Reserve(const std::string& path) {
  if (IsSpecial(path)) return path;
  fPaths.push_back(path);
  return TemporaryName(path);
}

void OutputFiles::Commit() {
  Interrupt::Check();
  for (const auto& [path, content] : fSpecial) WriteFile(path, content, path);
  for (const std::string& path : fPaths) fs::rename(TemporaryName(path), path);
  fPaths.clear();
}

void OutputFiles::RemoveTemporaries() noexcept {
  std::error_code error;
  for (const std::string& path : fPaths) fs::remove(TemporaryName(path), error);
}

}  // namespace support
