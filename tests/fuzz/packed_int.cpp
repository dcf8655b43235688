// Codes in range are packed, and unpacked they are themselves; others are refused when checked, and
// any key can be unpacked.
#include <nqcommon/math/stats/NQPackedInt.h>

#include <vector>

#include "any_bytes.h"

using NQMath_940::NQPackedInt;
using nqtest::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::Bytes bytes(data, size);
  const int n = static_cast<int>(bytes.Next() % 9) - 1;
  const int lower = bytes.NextInt();
  std::vector<int> numbers, values, packed, unpacked;
  for (int i = 0; i < n; ++i) {
    const int number = bytes.NextInt();
    numbers.push_back(bytes.Next() % 2 == 0 ? number : number & 1023);
    values.push_back(bytes.NextInt());
  }
  const NQPackedInt packer(n, lower, numbers);
  bool inRange = packer.GetNDiffVal(0) > 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const long long code = static_cast<long long>(values[i]) - lower;
    inRange = inRange && code >= 0 && code < numbers[i];
  }
  Require(packer.Pack(values, packed, true) == inRange);
  if (inRange) Require(packer.Unpack(unpacked, packed) && unpacked == values);
  packer.Pack(values, packed, false);
  packer.Unpack(unpacked, values);
  return 0;
}
