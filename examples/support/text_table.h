// Aligned tables of figures for people.
#pragma once

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "scan.h"

namespace support {

// A column of a table: significant digits and a width that nearly any number has room in.
struct TableColumn {
  const char* title;
  int digits;
  int width;
};

// A number of so many significant digits; nothing where it is not finite.
std::string Figure(double x, int digits);
// A significance; "< 1e-307" where it is 0 as a double.
std::string Significance(double sig);

// Characters, not bytes, of UTF-8.
std::size_t Width(std::string_view text);
std::string Padded(const std::string& text, std::size_t width);
std::string RightAligned(const std::string& text, int width);

// How many cases were used, and why others were not: a line. n is the sum of their frequencies.
std::string CasesLine(const CaseCounts& rows, double n);

// A table with named rows. `cell` gives the text of a row's column.
template <class Row, std::size_t kColumns, class Name, class Text>
void PrintTable(std::ostream& out, const TableColumn (&columns)[kColumns],
                const std::vector<Row>& rows, const char* title, Name name, Text cell) {
  std::size_t width = Width(title);
  for (const Row& row : rows) width = std::max(width, Width(name(row)));
  const auto line = [&](const std::string& head, auto text) {
    out << Padded(head, width);
    for (std::size_t j = 0; j < kColumns; ++j)
      out << ' ' << RightAligned(text(j), columns[j].width);
    out << '\n';
  };
  line(title, [&](std::size_t j) -> std::string { return columns[j].title; });
  for (const Row& row : rows)
    line(name(row), [&](std::size_t j) { return cell(row, j, columns[j].digits); });
}

}  // namespace support
