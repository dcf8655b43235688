#pragma once

#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <string>
#include <string_view>

namespace NQXML_940::internal {

// Writes the bytes with the outcome of one put for each: see NQXML_940::Write.
void WriteBytes(std::ostream& os, std::string_view bytes);

// Small pieces on their way to a string or a stream, which is called once for many of them. What
// is not flushed is lost, so that a stream that throws is not written to again.
class OutputBuffer {
 public:
  explicit OutputBuffer(std::string& out) : fString(&out) {}
  explicit OutputBuffer(std::ostream& os) : fStream(&os) {}

  void Put(char c) {
    if (fSize == kCapacity) Flush();
    fBytes[fSize++] = c;
  }

  void Put(std::string_view bytes) {
    if (bytes.size() > kCapacity - fSize) {
      Flush();
      if (bytes.size() > kCapacity) return Send(bytes);
    }
    std::memcpy(fBytes + fSize, bytes.data(), bytes.size());
    fSize += bytes.size();
  }

  void Flush();

 private:
  static constexpr std::size_t kCapacity = 8192;

  void Send(std::string_view bytes);

  std::string* fString = nullptr;
  std::ostream* fStream = nullptr;
  std::size_t fSize = 0;
  char fBytes[kCapacity];
};

}  // namespace NQXML_940::internal
