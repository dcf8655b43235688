#include "output_files.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <utility>

#include "report_xsl.h"

namespace fs = std::filesystem;

namespace regression {
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
  std::ofstream out(path, std::ios::binary);
  out << content;
  out.close();
  if (!out) throw std::runtime_error("cannot write " + name);
}

// A directory of its own, removed with all that is in it.
class ScratchDirectory {
 public:
  ScratchDirectory() : fPath((fs::temp_directory_path() / "linear_regression_XXXXXX").string()) {
    if (!mkdtemp(fPath.data())) throw std::runtime_error("cannot make a temporary directory");
  }
  ~ScratchDirectory() {
    std::error_code error;
    fs::remove_all(fPath, error);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::string File(const char* name) const { return fPath + "/" + name; }

 private:
  std::string fPath;
};

// The exit status of a program that is looked for along PATH; 127 when there is none.
int RunProgram(std::vector<std::string> arguments) {
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawnp(&child, argv[0], nullptr, nullptr, argv.data(), environ) != 0) return 127;
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

OutputFiles::OutputFiles(std::vector<OutputFile> files) : fFiles(std::move(files)) {
  std::set<fs::path> paths;
  for (const OutputFile& file : fFiles) {
    if (!paths.insert(fs::absolute(file.path).lexically_normal()).second)
      throw std::runtime_error("two outputs are named " + file.path);
  }
  try {
    for (const OutputFile& file : fFiles) {
      if (!IsSpecial(file.path)) WriteFile(TemporaryName(file.path), file.content, file.path);
    }
  } catch (...) {
    RemoveTemporaries();
    throw;
  }
}

OutputFiles::~OutputFiles() { RemoveTemporaries(); }

void OutputFiles::Commit() {
  for (const OutputFile& file : fFiles) {
    if (IsSpecial(file.path)) WriteFile(file.path, file.content, file.path);
  }
  for (const OutputFile& file : fFiles) {
    if (!IsSpecial(file.path)) fs::rename(TemporaryName(file.path), file.path);
  }
}

void OutputFiles::RemoveTemporaries() noexcept {
  std::error_code error;
  for (const OutputFile& file : fFiles) fs::remove(TemporaryName(file.path), error);
}

std::string HtmlPage(const std::string& statXml) {
  const ScratchDirectory scratch;
  const std::string sheet = scratch.File("report.xsl");
  const std::string document = scratch.File("report.xml");
  const std::string page = scratch.File("report.html");
  WriteFile(sheet, kReportStylesheet, sheet);
  WriteFile(document, statXml, document);
  const int status = RunProgram({"xsltproc", "--nonet", "-o", page, sheet, document});
  if (status == 127) {
    throw std::runtime_error(
        "--html needs the program xsltproc, which is not installed (Debian package xsltproc)");
  }
  if (status != 0)
    throw std::runtime_error("xsltproc failed with status " + std::to_string(status));
  std::ifstream in(page, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace regression
