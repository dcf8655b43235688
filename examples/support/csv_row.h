// Rows of values as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nqcommon/common/Value.h>

namespace support {

// The text of a number: the digits of an integer, the shortest text that reads back as a real;
// "inf" and "-inf".
class NumberText {
 public:
  std::string_view Of(const NQCommon_940::Value& number);

 private:
  char fBuffer[32];
};

// Appends the cells of a row with separators between them and without a line end. A text stands in
// quotes where it could not be read back otherwise; null is an empty cell.
void AppendRow(std::string& text, const NQCommon_940::Value* cells, std::size_t count,
               char separator);

}  // namespace support
