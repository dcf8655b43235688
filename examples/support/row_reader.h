// The rows of a chunk, cell by cell.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "csv_row.h"
#include "source.h"

namespace support {

struct Cell {
  enum Kind { kText, kNumber, kMissing };
  Kind kind = kText;
  double number = 0;
  std::string_view text;  // without the quotes, or without blanks at its ends; none of a number
};

// How a text is no number.
enum class Reading { kNumber, kNotFinite, kTooSmall, kText };

// Reads a decimal number, with blanks around it or a plus sign before it, whatever the locale.
Reading ReadNumber(std::string_view text, double& number);

// Cells of text are separated by one character. A quoted one may hold separators, line ends and,
// doubled, quotes; its text is taken as it stands. Lines of blanks alone are passed over.
//
// Cells     Those of the columns in `wanted`, at the places told there: kAsText, or kAsNumber for
//           numbers where the cell is one. Other columns are passed over. Without `wanted` every
//           cell of text is taken as text.
// Values    A number is what its text is, a string what it is in a chunk of text, null is missing.
// Failure   DataError, with the line from that of the chunk's first row, which is 1
class RowReader {
 public:
  enum class Use : unsigned char { kNone, kAsText, kAsNumber };
  struct Column {
    Use use = Use::kNone;
    int place = -1;
  };

  explicit RowReader(const Dialect& dialect) : fDialect(dialect), fAll(true) {}
  RowReader(const Dialect& dialect, std::vector<Column> wanted);

  // The rows of the chunk, whose bytes the reader may change: doubled quotes become single ones.
  void Start(Chunk& chunk);
  // Takes the next row; false at the end.
  bool Next() { return fIsText ? NextOfText() : NextOfValues(); }

  // Valid until the next row is taken.
  const std::vector<Cell>& Cells() const { return fCells; }
  // The row of text as it stood in the file when no quote was doubled; without its line end.
  std::string_view RowText() const { return fRowText; }
  std::int64_t Line() const { return fLine; }
  std::int64_t RowsTaken() const { return fRows; }

 private:
  bool NextOfText();
  bool NextOfValues();
  void TakeValue(const NQCommon_940::Value& value, std::size_t place, bool asNumber);
  bool IsBlank(char c) const { return (c == ' ' || c == '\t') && c != fDialect.separator; }
  bool IsEnd(const char* at) const {
    return *at == fDialect.separator || *at == '\n' || (*at == '\r' && at[1] == '\n');
  }
  bool TakeNumber(char*& at, Cell& cell) const;
  void TakeText(char*& at, Cell* cell, bool asNumber);
  char* TakeQuoted(char* at, std::string_view& text);
  void Place(Cell& cell, std::string_view text, bool quoted, bool asNumber) const;
  [[noreturn]] void FailQuote() const;
  [[noreturn]] void FailCells(std::size_t found) const;

  const Dialect& fDialect;
  std::vector<Column> fWanted;
  bool fAll = false;
  bool fNumberMayBeMissing = false;  // a mark for missing cells is a number
  bool fIsText = true;
  char* fAt = nullptr;
  char* fEnd = nullptr;
  bool fIsCut = false;
  const NQCommon_940::Value* fValue = nullptr;  // the next
  std::int64_t fRowCount = 0;                   // of values
  std::vector<NumberText> fNumbers;
  std::int64_t fLine = 1;
  std::int64_t fLinesOfRow = 0;
  std::int64_t fRows = 0;
  std::string_view fRowText;
  std::vector<Cell> fCells;
};

}  // namespace support
