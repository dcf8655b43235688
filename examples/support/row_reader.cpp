#include "row_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

#include <nqcommon/common/NQMV.h>

#include "text.h"

using NQCommon_940::NQMV;
using NQCommon_940::Value;

namespace support {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Powers of ten that doubles hold exactly.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMostDigits = 19;  // that 64 bits hold

// Whether the text is 0 but for its exponent.
bool IsZero(std::string_view text) {
  return text.substr(0, text.find_first_of("eE")).find_first_of("123456789") == text.npos;
}

}  // namespace

Reading ReadNumber(std::string_view text, double& number) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc::invalid_argument || stop != end) return Reading::kText;
  if (error == std::errc()) return std::isfinite(number) ? Reading::kNumber : Reading::kNotFinite;
  // Out of range: too large, or too small, which the sign of the decimal exponent tells.
  const std::size_t e = text.find_first_of("eE");
  const bool small =
      e == text.npos ? !text.empty() && text.find('.') != text.npos &&
                           text.substr(0, text.find('.')).find_first_of("123456789") == text.npos
                     : text.substr(e + 1).starts_with('-');
  number = 0;
  if (IsZero(text)) return Reading::kNumber;
  return small ? Reading::kTooSmall : Reading::kNotFinite;
}

RowReader::RowReader(const Dialect& dialect, std::vector<Column> wanted)
    : fDialect(dialect), fWanted(std::move(wanted)) {
  int places = 0;
  for (const Column& column : fWanted) places = std::max(places, column.place + 1);
  fCells.resize(static_cast<std::size_t>(places));
  fNumbers.resize(fCells.size());
  double number = 0;
  for (const std::string& mark : dialect.missing)
    fNumberMayBeMissing |= ReadNumber(mark, number) == Reading::kNumber;
}

void RowReader::Start(Chunk& chunk) {
  fAt = chunk.begin;
  fEnd = chunk.end;
  fIsCut = chunk.isCut;
  fLine = 1;
  fLinesOfRow = 0;
  fRows = 0;
  fIsText = chunk.isText;
  fValue = chunk.values.data();
  fRowCount = static_cast<std::int64_t>(chunk.rows);
}

bool RowReader::NextOfValues() {
  if (fRows == fRowCount) return false;
  fLine = ++fRows;
  for (const Column& wanted : fWanted) {
    if (wanted.use != Use::kNone)
      TakeValue(*fValue, static_cast<std::size_t>(wanted.place), wanted.use == Use::kAsNumber);
    ++fValue;
  }
  return true;
}

void RowReader::TakeValue(const Value& value, std::size_t place, bool asNumber) {
  Cell& cell = fCells[place];
  if (!value.IsNumericValue()) {
    Place(cell, value.GetStringRef(), false, asNumber);
    return;
  }
  const double number = value.GetReal();
  if (!asNumber || fNumberMayBeMissing || !std::isfinite(number)) {
    Place(cell, fNumbers[place].Of(value), false, asNumber);
    return;
  }
  cell.kind = NQMV::IsMissing(number) ? Cell::kMissing : Cell::kNumber;
  cell.number = number;
}

bool RowReader::NextOfText() {
  char* at = fAt;
  while (true) {  // past lines of blanks
    fLine += fLinesOfRow;
    if (at >= fEnd) return false;
    fAt = at;
    while (IsBlank(*at)) ++at;
    if (*at == '\r' && at[1] == '\n') ++at;
    if (*at != '\n') break;
    fLinesOfRow = 1;
    ++at;
  }
  fLinesOfRow = 1;
  const char* const begin = fAt;
  at = fAt;
  std::size_t column = 0;
  if (fAll) fCells.clear();
  while (true) {
    const Column wanted = column < fWanted.size() ? fWanted[column] : Column{};
    if (wanted.use != Use::kNone) {
      Cell& cell = fCells[static_cast<std::size_t>(wanted.place)];
      const bool asNumber = wanted.use == Use::kAsNumber;
      if (!asNumber || !TakeNumber(at, cell)) TakeText(at, &cell, asNumber);
    } else if (fAll) {
      TakeText(at, &fCells.emplace_back(), false);
    } else {
      TakeText(at, nullptr, false);
    }
    ++column;
    if (*at != fDialect.separator) break;
    ++at;
  }
  fRowText = {begin, static_cast<std::size_t>(at - begin)};
  if (*at == '\r') ++at;
  fAt = at + 1;
  if (fIsCut && fAt > fEnd) FailQuote();
  if (!fAll && column != fWanted.size()) FailCells(column);
  ++fRows;
  return true;
}

// A plain decimal number that ends where the cell does, with up to 19 digits: the integer of its
// digits and the power of ten are exact doubles, so that their product or quotient is correctly
// rounded (W. D. Clinger, How to read floating point numbers accurately, 1990). Else
// std::from_chars reads it. False, nothing taken, for all other cells.
bool RowReader::TakeNumber(char*& at, Cell& cell) const {
  constexpr std::uint64_t kMostExact = std::uint64_t{1} << 53;
  const char* p = at;
  const bool negative = *p == '-';
  if (negative) ++p;
  const char* const digits = p;
  std::uint64_t mantissa = 0;
  for (; IsDigit(*p); ++p) mantissa = 10 * mantissa + static_cast<std::uint64_t>(*p - '0');
  std::ptrdiff_t nDigits = p - digits;
  int exponent = 0;
  if (*p == '.') {
    const char* const fraction = ++p;
    for (; IsDigit(*p); ++p) mantissa = 10 * mantissa + static_cast<std::uint64_t>(*p - '0');
    exponent = static_cast<int>(-std::min<std::ptrdiff_t>(p - fraction, 1000));
    nDigits += p - fraction;
  }
  if (nDigits == 0) return false;
  if (*p == 'e' || *p == 'E') {
    ++p;
    const bool down = *p == '-';
    if (down || *p == '+') ++p;
    if (!IsDigit(*p)) return false;
    int power = 0;
    for (; IsDigit(*p); ++p) power = std::min(10 * power + (*p - '0'), 10000);
    exponent += down ? -power : power;
  }
  if (!IsEnd(p)) return false;
  double value = 0;
  if (nDigits <= kMostDigits && mantissa <= kMostExact && exponent >= -22 && exponent <= 22) {
    value = static_cast<double>(mantissa);
    value = exponent < 0 ? value / kPowers[-exponent] : value * kPowers[exponent];
    if (negative) value = -value;
  } else if (ReadNumber({at, static_cast<std::size_t>(p - at)}, value) != Reading::kNumber) {
    return false;
  }
  if (fNumberMayBeMissing && fDialect.IsMissing({at, static_cast<std::size_t>(p - at)}, false)) {
    return false;
  }
  cell.kind = NQMV::IsMissing(value) ? Cell::kMissing : Cell::kNumber;
  cell.number = value;
  at += p - at;
  return true;
}

void RowReader::Place(Cell& cell, std::string_view text, bool quoted, bool asNumber) const {
  cell.text = text;
  cell.kind = Cell::kText;
  if (fAll) return;
  if (fDialect.IsMissing(text, quoted)) {
    cell.kind = Cell::kMissing;
  } else if (asNumber && ReadNumber(text, cell.number) == Reading::kNumber) {
    cell.kind = NQMV::IsMissing(cell.number) ? Cell::kMissing : Cell::kNumber;
  }
}

// Takes a cell of any form, up to the separator or the line end; null passes it over.
void RowReader::TakeText(char*& at, Cell* cell, bool asNumber) {
  char* begin = at;
  while (IsBlank(*begin)) ++begin;
  if (*begin == '"') {
    std::string_view text;
    at = TakeQuoted(begin + 1, text);
    if (cell) Place(*cell, text, true, asNumber);
    return;
  }
  char* end = begin;
  const char separator = fDialect.separator;
  while (*end != separator && *end != '\n' && *end != '"') ++end;
  if (*end == '"') FailQuote();
  if (*end == '\n' && end > begin && end[-1] == '\r') --end;
  at = end;
  if (!cell) return;
  while (end > begin && IsBlank(end[-1])) --end;
  Place(*cell, {begin, static_cast<std::size_t>(end - begin)}, false, asNumber);
}

// From behind the opening quote to behind the closing one and the blanks there.
char* RowReader::TakeQuoted(char* at, std::string_view& text) {
  char* const begin = at;
  char* to = at;
  while (true) {
    if (at >= fEnd) FailQuote();
    if (*at == '"' && *++at != '"') break;
    fLinesOfRow += *at == '\n';
    *to++ = *at++;
  }
  text = {begin, static_cast<std::size_t>(to - begin)};
  while (IsBlank(*at)) ++at;
  if (!IsEnd(at)) FailQuote();
  return at;
}

void RowReader::FailQuote() const {
  throw DataError{
      fIsCut ? "the row is longer than 16 MiB; is a quote not closed?" : "a quote is out of place",
      fLine,
      {}};
}

void RowReader::FailCells(std::size_t found) const {
  std::string message =
      "expected " + std::to_string(fWanted.size()) + " cells, found " + std::to_string(found);
  if (fRowText.starts_with('#')) message += "; comment lines are not passed over";
  throw DataError{message, fLine, {}};
}

}  // namespace support
