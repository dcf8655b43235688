// The reader of variable lists on any bytes.
#include "support/variable_list_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::CheckVariableListReader(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
