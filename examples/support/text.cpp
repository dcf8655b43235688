#include "text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace support {
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

std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  std::string quoted = "'" + std::string(text.substr(0, kLongest));
  std::replace_if(
      quoted.begin(), quoted.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
  return quoted + (text.size() > kLongest ? "...'" : "'");
}

std::string Shortest(double x) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, x).ptr};
}

std::string JsonString(std::string_view text) {
  constexpr char kHex[] = "0123456789abcdef";
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json.append({'\\', c});
    } else if (c >= 0 && c < ' ') {
      json.append("\\u00").append({kHex[c >> 4], kHex[c & 15]});
    } else {
      json += c;
    }
  }
  return json + '"';
}

std::string JsonNumber(double x) { return std::isfinite(x) ? Shortest(x) : "null"; }

}  // namespace support
