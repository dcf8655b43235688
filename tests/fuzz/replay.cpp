// Gives each file of a folder to a fuzz target: whole, and cut at every byte while it is small.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int, char** argv) {
  int nFiles = 0;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    for (std::size_t size = bytes.size() < 2000 ? 0 : bytes.size(); size <= bytes.size(); ++size) {
      const std::string cut = bytes.substr(0, size);
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(cut.data()), size);
    }
    ++nFiles;
  }
  std::printf("%d files\n", nFiles);
  return nFiles > 0 ? 0 : 1;
}
