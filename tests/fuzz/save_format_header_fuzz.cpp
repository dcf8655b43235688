// The reader of a saved file's header on any bytes.
#include "save_format_seeds.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::CheckHeaderReader(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
