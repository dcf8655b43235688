// Columns of numbers from comma-separated text.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace regression {

struct Column {
  std::string name;
  std::vector<double> values;  // in row order
  std::string fault;           // the first cell that is not a number; empty when all are
};

// Reads a header row of distinct names and rows of as many cells, quoted or not, with LF or CRLF
// line ends and perhaps a UTF-8 byte order mark; blank lines are passed over. Numbers have a
// decimal point whatever the locale. A cell that is empty or no finite number is a fault of its
// column, so that a column of text does no harm unless it is chosen. Throws std::runtime_error,
// naming the line, for anything else that does not fit, and for text without rows.
std::vector<Column> ReadCsv(std::istream& in);

// The inputs in the order asked for (all columns but the target when none is), then the target.
// Throws std::runtime_error for a name that is unknown or asked for twice and for a faulty column.
std::vector<Column> ChooseColumns(std::vector<Column> table, std::vector<std::string> inputs,
                                  const std::string& target);

}  // namespace regression
