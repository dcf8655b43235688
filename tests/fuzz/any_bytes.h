// What the fuzz targets share. A check that fails aborts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace nqtest {

inline void Require(bool condition) {
  if (!condition) std::abort();
}

// Takes bytes apart; behind their end come zeros.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size)
      : fRest(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return fRest.empty(); }
  std::string_view Rest() const { return fRest; }

  unsigned Next() {
    if (fRest.empty()) return 0;
    const auto byte = static_cast<unsigned char>(fRest.front());
    fRest.remove_prefix(1);
    return byte;
  }

  int NextInt() {
    unsigned bits = 0;
    for (int i = 0; i < 4; ++i) bits = bits << 8 | Next();
    return static_cast<int>(bits);
  }

  // Up to the next byte 0xff, or to the end.
  std::string NextText() {
    const std::string text(fRest.substr(0, fRest.find('\xff')));
    fRest.remove_prefix(text.size() < fRest.size() ? text.size() + 1 : text.size());
    return text;
  }

 private:
  std::string_view fRest;
};

}  // namespace nqtest
