#include "text_table.h"

#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

#include "text.h"

namespace support {
namespace {

// Below this a significance is 0 as a double.
constexpr double kLeastSignificance = 1e-307;

}  // namespace

std::string Figure(double x, int digits) {
  if (!std::isfinite(x)) return {};
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << std::showpoint << std::setprecision(digits) << x;
  return out.str();
}

std::string Significance(double sig) {
  return sig < kLeastSignificance ? "< 1e-307" : Figure(sig, 5);
}

std::size_t Width(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width) {
  return text + std::string(width - std::min(width, Width(text)), ' ');
}

std::string RightAligned(const std::string& text, int width) {
  return std::string(static_cast<std::size_t>(std::max(0, width - static_cast<int>(Width(text)))),
                     ' ') +
         text;
}

std::string CasesLine(const CaseCounts& rows, double n) {
  std::string line = "Cases used: " + std::to_string(rows.used);
  if (n != static_cast<double>(rows.used)) line += ", sum of frequencies " + Shortest(n);
  line += "; dropped: " + std::to_string(rows.Dropped());
  if (rows.missing > 0) line += ", " + std::to_string(rows.missing) + " with a missing cell";
  if (rows.badWeight > 0)
    line += ", " + std::to_string(rows.badWeight) + " without a weight above 0";
  return line;
}

}  // namespace support
