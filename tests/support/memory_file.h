// A file that lives in memory, for readers that want a std::ifstream.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace nqtest {

class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes) : fDescriptor(memfd_create("nqtest", MFD_CLOEXEC)) {
    if (write(fDescriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
      std::abort();
  }
  MemoryFile(const MemoryFile&) = delete;
  ~MemoryFile() { close(fDescriptor); }

  std::string Path() const { return "/proc/self/fd/" + std::to_string(fDescriptor); }

  // A stream of its own, at the beginning.
  std::ifstream Open() const { return std::ifstream(Path(), std::ios::binary); }

 private:
  int fDescriptor;
};

}  // namespace nqtest
