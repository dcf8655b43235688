// Rows of comma-separated text, one at a time, from a file of any length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace regression {

struct Cell {
  std::string_view text;  // without the quotes, or without blanks at its ends
  bool quoted = false;
};

// Cells are separated by commas. A quoted one may hold commas, line ends and, doubled, quotes. Lines
// end in LF or CRLF; those of blanks alone are passed over, as is a UTF-8 byte order mark. The text
// in a quoted cell is taken as it stands.
//
// Memory    the longest row, 256 KiB at least and 16 MiB at most
// Failure   std::runtime_error, which names the line
class CsvReader {
 public:
  // Throws for what is no regular file, which could not be read twice.
  explicit CsvReader(const std::string& path);

  // Takes the next row; false at the end.
  bool Next();

  // Valid until the next row is taken.
  const std::vector<Cell>& Cells() const { return fCells; }

  // The line on which the row begins, from 1.
  std::int64_t Line() const { return fLine; }

  std::uint64_t FileSize() const { return fFileSize; }
  std::uint64_t BytesTaken() const { return fBytesRead - (fEnd - fNext); }

 private:
  bool FindRow(std::size_t& rowEnd);
  bool ReadMore();
  void SplitPlain(char* at, char* end);
  void SplitQuoted(char* at, char* end);
  char* TakeQuoted(char* at, char* end);
  [[noreturn]] void FailQuote() const;

  std::ifstream fFile;
  std::uint64_t fFileSize = 0;
  std::uint64_t fBytesRead = 0;
  std::vector<char> fBuffer;
  std::size_t fNext = 0;  // what is not yet taken: fNext .. fEnd-1 of the buffer
  std::size_t fEnd = 0;
  std::int64_t fLine = 0;
  std::int64_t fLinesOfRow = 1;
  bool fHasQuotes = false;
  std::vector<Cell> fCells;
};

}  // namespace regression
