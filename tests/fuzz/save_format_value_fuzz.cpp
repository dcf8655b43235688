// The readers of saved values on any bytes.
#include "save_format_seeds.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::CheckValueReaders(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
