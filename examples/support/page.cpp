#include "page.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "interrupt.h"
#include "page_xsl.h"

namespace fs = std::filesystem;

namespace support {
namespace {

// A directory of its own, removed with all that is in it.
class ScratchDirectory {
 public:
  ScratchDirectory() : fPath((fs::temp_directory_path() / "page_XXXXXX").string()) {
    if (!mkdtemp(fPath.data())) throw std::runtime_error("cannot make a temporary directory");
  }
  ~ScratchDirectory() {
    std::error_code error;
    fs::remove_all(fPath, error);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::string File(const char* name, const std::string& content) const {
    std::string path = fPath + "/" + name;
    std::ofstream out(path, std::ios::binary);
    out << content;
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path);
    return path;
  }

 private:
  std::string fPath;
};

// The exit status of a program that is looked for along PATH; 127 when there is none, -1 when it
// was ended. A signal to this program ends that one too.
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
    try {
      Interrupt::Check();
    } catch (...) {
      kill(child, SIGTERM);
      waitpid(child, &status, 0);
      throw;
    }
  }
  Interrupt::Check();
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

std::string HtmlPage(const std::string& stylesheet, const std::string& document,
                     const std::vector<std::pair<std::string, std::string>>& parameters) {
  const ScratchDirectory scratch;
  scratch.File("page.xsl", kPageStylesheet);
  const std::string sheet = scratch.File("report.xsl", stylesheet);
  const std::string source = scratch.File("page.xml", document);
  const std::string page = scratch.File("page.html", "");
  std::vector<std::string> command = {"xsltproc", "--nonet", "-o", page};
  for (const auto& [name, text] : parameters)
    command.insert(command.end(), {"--stringparam", name, text});
  command.insert(command.end(), {sheet, source});
  const int status = RunProgram(std::move(command));
  if (status == 127) {
    throw std::runtime_error(
        "--html needs the program xsltproc, which is not installed (Debian package xsltproc)");
  }
  if (status != 0)
    throw std::runtime_error("xsltproc failed with status " + std::to_string(status));
  std::ifstream in(page, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace support
