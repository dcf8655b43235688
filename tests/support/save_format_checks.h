// What must hold for the readers of saved objects on any bytes whatever, and bytes to begin with.
// The fuzz targets and the ordinary tests share both. A check that fails aborts.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <nqcommon/xml/internal/save_line.h>
#include <nqcommon/xml/save_format.h>

#include "support/memory_file.h"

namespace nqtest {

inline const std::vector<std::string> kSaveFormatSeeds = {
#include "support/save_format_seeds.inc"
};

inline void Require(bool condition) {
  if (!condition) std::abort();
}

inline void CheckHeaderReader(const std::string& bytes) {
  std::ifstream is = MemoryFile(bytes).Open();
  if (NQXML_940::ParseStartXML(is)) Require(bytes.find("?xml") < bytes.find("!DOCTYPE"));
}

// The first line is the name of the object, and the file is what follows.
inline void CheckObjectReaders(const std::string& bytes) {
  const std::string name = bytes.substr(0, bytes.find('\n'));
  const std::string rest = bytes.substr(std::min(name.size() + 1, bytes.size()));
  std::ifstream start = MemoryFile(rest).Open(), end = MemoryFile(rest).Open();
  if (NQXML_940::ParseStartObj(start, name)) Require(rest.find(name) != std::string::npos);
  if (NQXML_940::ParseEndObj(end)) Require(rest.find("/Obj") != std::string::npos);
}

// A value is read, or stays.
template <class T>
void CheckValueReader(const MemoryFile& file, T value) {
  for (std::ifstream is = file.Open(); !is.fail();) {
    const T before = value;
    Require(NQXML_940::ParseValue(is, value) || value == before);
  }
}

// The tokens are those of strtok, for which the rules were made.
inline void CheckTokens(const std::string& bytes) {
  std::istringstream is(bytes);
  NQXML_940::internal::SaveLine line;
  if (!line.Read(is)) return;
  std::string text = bytes.substr(0, bytes.find('\n'));
  char *first = text.data(), *state = nullptr;
  for (const char* set : {" \t\r\n<=\"", "=\"", "\"", "a", " \t\r\n<=\""}) {
    const char* const want = strtok_r(std::exchange(first, nullptr), set, &state);
    const auto got = line.Next(set);
    Require(want == nullptr ? !got : got == want);
  }
}

inline void CheckValueReaders(const std::string& bytes) {
  const MemoryFile file(bytes);
  CheckValueReader(file, -7);
  CheckValueReader(file, 7U);
  CheckValueReader(file, true);
  CheckValueReader(file, -7L);
  CheckValueReader(file, -7.5);
  CheckValueReader<std::string>(file, "seven");
  CheckTokens(bytes);
}

}  // namespace nqtest
