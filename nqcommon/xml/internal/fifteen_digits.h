#pragma once

namespace NQXML_940::internal {

// Room for the longest text, such as -1.23456789012345e-300, and more.
inline constexpr int kNumberRoom = 32;

// Writes the text of printf's "%.15g" in the classic locale, without an end mark, to kNumberRoom
// characters. Returns the end of the text.
//
// std::to_chars gives the same text for the same precision, and is called for what is left here:
// 0, infinities, NaN, and numbers so near to the middle of two texts that 128 bits cannot tell.
char* WriteFifteenDigits(double value, char* to);

}  // namespace NQXML_940::internal
