#include "csv_table.h"

#include <csv.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <istream>
#include <limits>
#include <new>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace regression {
namespace {

using Row = std::vector<std::string>;

// The C parser and the rows it has completed. Its callbacks do not throw: no exception may pass
// through C, so that running out of memory there ends the program.
class RowParser {
 public:
  RowParser() {
    if (csv_init(&fParser, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
  }
  ~RowParser() { csv_free(&fParser); }
  RowParser(const RowParser&) = delete;
  RowParser& operator=(const RowParser&) = delete;

  // Both return false where quotes are out of place.
  bool Feed(std::string_view text) {
    return csv_parse(&fParser, text.data(), text.size(), AddCell, EndRow, this) == text.size();
  }
  bool Finish() { return csv_fini(&fParser, AddCell, EndRow, this) == 0; }

  std::vector<Row> TakeRows() { return std::exchange(fRows, {}); }

 private:
  static void AddCell(void* text, std::size_t length, void* self) noexcept {
    static_cast<RowParser*>(self)->fRow.emplace_back(static_cast<const char*>(text), length);
  }
  static void EndRow(int, void* self) noexcept {
    auto* parser = static_cast<RowParser*>(self);
    parser->fRows.push_back(std::exchange(parser->fRow, {}));
  }

  csv_parser fParser{};
  Row fRow;
  std::vector<Row> fRows;
};

std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  quoted.append(text).append("'");
  return quoted;
}

[[noreturn]] void FailAt(std::int64_t line, const std::string& message) {
  throw std::runtime_error("line " + std::to_string(line) + ": " + message);
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<double> ParseNumber(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::vector<Column> ReadHeader(const Row& row, std::int64_t line) {
  std::vector<Column> columns;
  std::set<std::string> names;
  for (const std::string& cell : row) {
    std::string name(Trimmed(cell));
    if (name.empty()) FailAt(line, "column " + std::to_string(columns.size() + 1) + " has no name");
    if (!names.insert(name).second) FailAt(line, "two columns are named " + Quoted(name));
    columns.push_back({std::move(name), {}, {}});
  }
  return columns;
}

void AddRow(std::vector<Column>& columns, const Row& row, std::int64_t line) {
  if (row.size() != columns.size()) {
    FailAt(line, "expected " + std::to_string(columns.size()) + " cells, found " +
                     std::to_string(row.size()));
  }
  for (std::size_t j = 0; j < row.size(); ++j) {
    Column& column = columns[j];
    const std::string_view cell = Trimmed(row[j]);
    const std::optional<double> number = ParseNumber(cell);
    column.values.push_back(number.value_or(std::numeric_limits<double>::quiet_NaN()));
    if (number || !column.fault.empty()) continue;
    column.fault = "line " + std::to_string(line) + ", column " + Quoted(column.name) + ": " +
                   (cell.empty() ? "empty cell" : Quoted(cell) + " is not a number");
  }
}

}  // namespace

std::vector<Column> ReadCsv(std::istream& in) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  RowParser parser;
  std::vector<Column> columns;
  std::string text;
  std::int64_t line = 0;
  // Fed line by line: the parser itself does not tell where it is.
  while (std::getline(in, text)) {
    if (++line == 1 && text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
    text += '\n';
    if (!parser.Feed(text)) FailAt(line, "a quote is out of place");
    for (const Row& row : parser.TakeRows()) {
      if (columns.empty()) {
        columns = ReadHeader(row, line);
      } else {
        AddRow(columns, row, line);
      }
    }
  }
  if (in.bad()) throw std::runtime_error("the data cannot be read");
  if (!parser.Finish()) FailAt(line, "a quoted cell is not closed");
  if (columns.empty()) throw std::runtime_error("the data are empty: no header row");
  if (columns[0].values.empty()) throw std::runtime_error("no rows below the header");
  return columns;
}

std::vector<Column> ChooseColumns(std::vector<Column> table, std::vector<std::string> inputs,
                                  const std::string& target) {
  if (inputs.empty()) {
    for (const Column& column : table) {
      if (column.name != target) inputs.push_back(column.name);
    }
  }
  std::set<std::string> asked;
  for (const std::string& name : inputs) {
    if (name == target) throw std::runtime_error("target " + Quoted(name) + " is among the inputs");
    if (!asked.insert(name).second)
      throw std::runtime_error("input " + Quoted(name) + " is given twice");
  }
  inputs.push_back(target);

  std::vector<Column> chosen;
  for (const std::string& name : inputs) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const Column& column) { return column.name == name; });
    if (found == table.end()) throw std::runtime_error("no column " + Quoted(name));
    if (!found->fault.empty()) throw std::runtime_error(found->fault);
    chosen.push_back(std::move(*found));
  }
  return chosen;
}

}  // namespace regression
