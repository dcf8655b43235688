#include "xml_text.h"

#include <cstddef>
#include <cstdint>

namespace regression {
namespace {

// The length of the sequence that the byte begins, 0 for a byte that begins none.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  if (lead >= 0xF0 && lead < 0xF5) return 4;
  return 0;
}

bool IsXmlCharacter(std::uint32_t c, std::size_t length) {
  constexpr std::uint32_t kFirstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
  if (c < kFirstOfLength[length]) return false;  // written longer than need be
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return !(c >= 0xD800 && c < 0xE000) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

}  // namespace

bool IsXmlText(std::string_view text) {
  constexpr std::uint32_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  while (!text.empty()) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || length > text.size()) return false;
    std::uint32_t c = lead & kLeadBits[length];
    for (std::size_t i = 1; i < length; ++i) {
      const auto next = static_cast<unsigned char>(text[i]);
      if ((next & 0xC0) != 0x80) return false;
      c = c << 6 | (next & 0x3FU);
    }
    if (!IsXmlCharacter(c, length)) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace regression
