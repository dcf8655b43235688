// The readers of saved headers, objects and values on any bytes.
#include <nqcommon/xml/save_format.h>

#include <algorithm>
#include <cstring>
#include <sstream>
#include <utility>

#include <nqcommon/xml/internal/save_line.h>

#include "any_bytes.h"
#include "support/memory_file.h"

using nqtest::MemoryFile;
using nqtest::Require;

namespace {

void CheckHeaderReader(const std::string& bytes) {
  std::ifstream is = MemoryFile(bytes).Open();
  if (NQXML_940::ParseStartXML(is)) Require(bytes.find("?xml") < bytes.find("!DOCTYPE"));
}

// The first line is the name of the object, and the file is what follows.
void CheckObjectReaders(const std::string& bytes) {
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
void CheckTokens(const std::string& bytes) {
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

void CheckValueReaders(const std::string& bytes) {
  const MemoryFile file(bytes);
  CheckValueReader(file, -7);
  CheckValueReader(file, 7U);
  CheckValueReader(file, true);
  CheckValueReader(file, -7L);
  CheckValueReader(file, -7.5);
  CheckValueReader<std::string>(file, "seven");
  CheckTokens(bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  CheckHeaderReader(bytes);
  CheckObjectReaders(bytes);
  CheckValueReaders(bytes);
  return 0;
}
