#include "csv_row.h"

#include <charconv>

using NQCommon_940::Value;

namespace support {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

void AppendText(std::string& row, std::string_view cell, char separator) {
  const char special[] = {'"', '\n', '\r', separator};
  const bool quotes = cell.find_first_of({special, sizeof special}) != cell.npos ||
                      (!cell.empty() && (IsBlank(cell.front()) || IsBlank(cell.back())));
  if (!quotes) {
    row += cell;
    return;
  }
  row += '"';
  for (const char c : cell) row.append(c == '"' ? 2 : 1, c);
  row += '"';
}

}  // namespace

std::string_view NumberText::Of(const Value& number) {
  char* const end = fBuffer + sizeof fBuffer;
  const char* const stop = number.GetType() == Value::IntegerType
                               ? std::to_chars(fBuffer, end, number.GetInteger()).ptr
                               : std::to_chars(fBuffer, end, number.GetReal()).ptr;
  return {fBuffer, static_cast<std::size_t>(stop - fBuffer)};
}

void AppendRow(std::string& text, const Value* cells, std::size_t count, char separator) {
  NumberText number;
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += separator;
    if (cells[i].IsNumericValue())
      text += number.Of(cells[i]);
    else
      AppendText(text, cells[i].GetStringRef(), separator);
  }
  // An empty line is no row.
  if (count == 1 && cells[0].Size() <= 0 && !cells[0].IsNumericValue()) text += "\"\"";
}

}  // namespace support
