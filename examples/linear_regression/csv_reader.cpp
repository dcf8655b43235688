#include "csv_reader.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace regression {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;
constexpr std::size_t kLongestRow = std::size_t{1} << 24;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

char* Find(char* at, char* end, char c) {
  void* found = std::memchr(at, c, static_cast<std::size_t>(end - at));
  return found ? static_cast<char*>(found) : end;
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trimmed(const char* at, const char* end) {
  while (at < end && IsBlank(*at)) ++at;
  while (at < end && IsBlank(end[-1])) --end;
  return {at, static_cast<std::size_t>(end - at)};
}

}  // namespace

CsvReader::CsvReader(const std::string& path) : fBuffer(kBlock) {
  std::error_code error;
  if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error))
    throw std::runtime_error(path + " is not a regular file");
  fFile.open(path, std::ios::binary);
  fFileSize = std::filesystem::file_size(path, error);
  if (!fFile || error) throw std::runtime_error("cannot open " + path);
  ReadMore();
  if (std::string_view(fBuffer.data(), fEnd).starts_with(kByteOrderMark))
    fNext = kByteOrderMark.size();
}

bool CsvReader::Next() {
  std::size_t rowEnd = 0;
  while (FindRow(rowEnd)) {
    char* at = fBuffer.data() + fNext;
    char* end = fBuffer.data() + rowEnd;
    fNext = std::min(rowEnd + 1, fEnd);
    if (end > at && end[-1] == '\r') --end;
    if (Trimmed(at, end).empty()) continue;
    fCells.clear();
    if (fHasQuotes) {
      SplitQuoted(at, end);
    } else {
      SplitPlain(at, end);
    }
    return true;
  }
  return false;
}

// Finds the line feed that ends the row: the first with an even number of quotes before it. False at
// the end of the file.
bool CsvReader::FindRow(std::size_t& rowEnd) {
  fLine += fLinesOfRow;
  fLinesOfRow = 1;
  fHasQuotes = false;
  std::size_t searched = 0;  // from fNext, which ReadMore moves
  bool inQuotes = false;
  while (true) {
    char* begin = fBuffer.data() + fNext;
    char* from = begin + searched;
    char* end = fBuffer.data() + fEnd;
    char* lineEnd = Find(from, end, '\n');
    for (char* at = from; (at = Find(at, lineEnd, '"')) != lineEnd; ++at) {
      fHasQuotes = true;
      inQuotes = !inQuotes;
    }
    searched = static_cast<std::size_t>(lineEnd - begin);
    if (lineEnd == end) {
      if (ReadMore()) continue;
      if (inQuotes) FailQuote();
      if (searched == 0) return false;
    } else if (inQuotes) {
      ++searched;
      ++fLinesOfRow;
      continue;
    }
    rowEnd = fNext + searched;
    return true;
  }
}

// Moves what is not yet taken to the front and fills the buffer behind it. False at the end of the
// file.
bool CsvReader::ReadMore() {
  std::copy(fBuffer.begin() + static_cast<std::ptrdiff_t>(fNext),
            fBuffer.begin() + static_cast<std::ptrdiff_t>(fEnd), fBuffer.begin());
  fEnd -= fNext;
  fNext = 0;
  if (fEnd >= kLongestRow) FailQuote();  // which is what makes a row so long
  if (fEnd + kBlock / 2 > fBuffer.size()) fBuffer.resize(2 * fBuffer.size());
  fFile.read(fBuffer.data() + fEnd, static_cast<std::streamsize>(fBuffer.size() - fEnd));
  if (fFile.bad()) throw std::runtime_error("the data cannot be read");
  const auto count = static_cast<std::size_t>(fFile.gcount());
  fEnd += count;
  fBytesRead += count;
  return count > 0;
}

void CsvReader::SplitPlain(char* at, char* end) {
  while (true) {
    char* comma = Find(at, end, ',');
    fCells.push_back({Trimmed(at, comma), false});
    if (comma == end) return;
    at = comma + 1;
  }
}

void CsvReader::SplitQuoted(char* at, char* end) {
  while (true) {
    while (at < end && IsBlank(*at)) ++at;
    if (at < end && *at == '"') {
      at = TakeQuoted(at + 1, end);
    } else {
      char* comma = Find(at, end, ',');
      if (Find(at, comma, '"') != comma) FailQuote();
      fCells.push_back({Trimmed(at, comma), false});
      at = comma;
    }
    if (at == end) return;
    ++at;
  }
}

// From behind the opening quote to the comma or the end behind the closing one. Doubled quotes
// become single ones in place.
char* CsvReader::TakeQuoted(char* at, char* end) {
  char* const text = at;
  char* to = at;
  while (true) {
    if (at == end) FailQuote();
    if (*at == '"' && (++at == end || *at != '"')) break;
    *to++ = *at++;
  }
  fCells.push_back({{text, static_cast<std::size_t>(to - text)}, true});
  while (at < end && IsBlank(*at)) ++at;
  if (at < end && *at != ',') FailQuote();
  return at;
}

void CsvReader::FailQuote() const {
  throw std::runtime_error("line " + std::to_string(fLine) + ": a quote is out of place");
}

}  // namespace regression
