// Any text read as a number, written and read again: no crash, and the second reading is the first.
#include <nqcommon/common/text_conversion.h>

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace NQCommon_940;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  double real = 0;
  bool flag = false;
  long long integer = 0, again = 0;
  Str2T(text, real);
  Str2T(text, flag);
  Str2T(text, integer);
  Str2T(T2Str(integer), again);
  if (again != integer) std::abort();
  return 0;
}
