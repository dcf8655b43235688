#include "csv_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "interrupt.h"
#include "row_reader.h"
#include "team.h"
#include "text.h"

namespace support {
namespace {

constexpr std::size_t kLongestRow = std::size_t{1} << 24;
constexpr std::size_t kStep = std::size_t{1} << 12;
constexpr std::size_t kSentinels = 2;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void Fail(const std::string& message) { throw std::runtime_error(message); }

std::string Reason() { return std::strerror(errno); }

// Behind the first line feed outside quotes in text[from ..]; npos when there is none. `inQuotes`
// tells of text[from] and is left for what follows.
std::size_t BehindRow(std::string_view text, std::size_t from, bool& inQuotes) {
  for (std::size_t at = from; at < text.size();) {
    const std::size_t lineEnd = std::min(text.find('\n', at), text.size());
    const auto quotes = std::count(text.begin() + static_cast<std::ptrdiff_t>(at),
                                   text.begin() + static_cast<std::ptrdiff_t>(lineEnd), '"');
    inQuotes ^= quotes % 2 != 0;
    if (lineEnd < text.size() && !inQuotes) return lineEnd + 1;
    at = lineEnd + 1;
  }
  return text.npos;
}

}  // namespace

// ---- Opening ------------------------------------------------------------------------------------

CsvFile::CsvFile(const std::string& path, const Dialect& dialect, std::uint64_t chunkBytes)
    : Source(path == "-" ? "standard input" : path, dialect), fChunkBytes(chunkBytes) {
  fDescriptor = path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fDescriptor < 0) Fail("cannot open " + Path() + ": " + Reason());
  try {
    Open();
  } catch (...) {
    close(fDescriptor);
    throw;
  }
}

CsvFile::~CsvFile() { close(fDescriptor); }

void CsvFile::Open() {
  struct stat status = {};
  if (fstat(fDescriptor, &status) != 0) Fail("cannot read " + Path() + ": " + Reason());
  if (S_ISDIR(status.st_mode)) Fail(Path() + " is a directory");
  if (!S_ISREG(status.st_mode)) Spool();
  fStamp = StampNow();
  fSize = fStamp.size;
  ReadHeader();
}

// A pipe can be read once only; its copy has no name and so needs no removing.
void CsvFile::Spool() {
  std::string name = (std::filesystem::temp_directory_path() / "spooled_XXXXXX").string();
  const int copy = mkostemp(name.data(), O_CLOEXEC);
  if (copy < 0) Fail("cannot make a temporary file: " + Reason());
  unlink(name.c_str());
  const int source = std::exchange(fDescriptor, copy);
  std::vector<char> buffer(kChunkBytes);
  ssize_t count = 0;
  while ((count = read(source, buffer.data(), buffer.size())) != 0) {
    Interrupt::Check();
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || write(copy, buffer.data(), static_cast<std::size_t>(count)) != count) {
      const std::string reason = Reason();
      close(source);
      Fail("cannot copy " + Path() + " to a temporary file: " + reason);
    }
  }
  close(source);
}

CsvFile::Stamp CsvFile::StampNow() const {
  struct stat status = {};
  if (fstat(fDescriptor, &status) != 0) Fail("cannot read " + Path() + ": " + Reason());
  return {static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

void CsvFile::CheckUnchanged() const {
  if (!(StampNow() == fStamp)) Fail(Path() + " has changed while it was read");
}

// The count is short at the end of the file alone.
std::size_t CsvFile::ReadAt(std::uint64_t offset, char* to, std::size_t size) const {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count =
        pread(fDescriptor, to + done, size - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail("cannot read " + Path() + ": " + Reason());
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

// ---- The first row ------------------------------------------------------------------------------

void CsvFile::RefuseOtherFormats(std::string_view head) const {
  const auto starts = [&](std::string_view magic) { return head.starts_with(magic); };
  if (starts("\x1F\x8B"))
    Fail(Path() + " is compressed by gzip; unpack it, or pipe it: zcat ... |");
  if (starts("PK\x03\x04")) Fail(Path() + " is a zip archive or a spreadsheet; save it as CSV");
  if (starts("\xFF\xFE") || starts("\xFE\xFF")) Fail(Path() + " is UTF-16 text; UTF-8 is needed");
  if (starts("SQLite format 3"))
    Fail(Path() + " is an SQLite database: which table? (--table, --query)");
  if (head.find('\0') != head.npos) Fail(Path() + " is no text: it has zero bytes");
  if (head.find('\n') == head.npos && std::count(head.begin(), head.end(), '\r') > 1)
    Fail("the lines of " + Path() + " end in CR alone; LF or CRLF is needed");
}

void CsvFile::ReadHeader() {
  Chunk header;
  std::size_t size = 0, behind = std::string_view::npos;
  std::uint64_t wanted = fChunkBytes;
  while (behind == std::string_view::npos) {
    header.buffer.resize(wanted + kSentinels);
    size = ReadAt(0, header.buffer.data(), wanted);
    const std::string_view text(header.buffer.data(), size);
    RefuseOtherFormats(text.substr(0, kStep));
    fDataBegin = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    do {  // past blank lines
      bool inQuotes = false;
      const std::size_t begin = fDataBegin;
      behind = BehindRow(text, begin, inQuotes);
      if (behind == text.npos) {
        if (size == fSize) behind = size;
        break;
      }
      fDataBegin = behind;
      if (text.substr(begin, behind - begin).find_first_not_of(" \t\r\n") != text.npos) {
        fDataBegin = begin;
        break;
      }
    } while (true);
    if (wanted > kLongestRow) Fail("line 1: the row is too long, or a quote is not closed");
    wanted *= 2;
  }
  header.begin = header.buffer.data() + fDataBegin;
  header.end = header.buffer.data() + behind;
  header.end[0] = '\n';
  header.end[1] = '\0';
  fDataBegin = behind;
  TakeNames(header);
}

void CsvFile::TakeNames(Chunk& header) {
  const auto fail = [](const std::string& message) { Fail("line 1: " + message); };
  const auto cells = [](const Chunk& source, char separator) {
    Dialect dialect{separator, {}, false};
    std::string copy(source.begin, source.end + kSentinels);
    Chunk chunk;
    chunk.begin = copy.data();
    chunk.end = copy.data() + copy.size() - kSentinels;
    RowReader row(dialect);
    row.Start(chunk);
    std::vector<std::string> texts;
    if (row.Next()) {
      for (const Cell& cell : row.Cells()) texts.emplace_back(cell.text);
    }
    return texts;
  };
  std::vector<std::string> names;
  try {
    names = cells(header, GetDialect().separator);
    if (names.empty()) Fail(Path() + " has no header row");
    if (names.size() == 1 && names[0].find_first_of(",;\t|") != std::string::npos) {
      for (const char separator : {',', ';', '\t', '|'}) {
        if (separator == GetDialect().separator || cells(header, separator).size() < 2) continue;
        const std::string name = separator == '\t' ? "tab" : std::string{'\'', separator, '\''};
        fail("one column named " + Quoted(names[0]) + "; --separator " + name +
             " makes more of it");
      }
    }
  } catch (const DataError& error) {
    fail(error.message);
  }
  std::string text(header.begin, header.end);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  SetNames(std::move(names), std::move(text), "line 1: ");
}

// ---- Chunks -------------------------------------------------------------------------------------

bool CsvFile::CountQuotes(std::uint64_t chunk, std::vector<char>& buffer) const {
  buffer.resize(fChunkBytes);
  const std::size_t size = ReadAt(chunk * fChunkBytes, buffer.data(), fChunkBytes);
  return std::count(buffer.data(), buffer.data() + size, '"') % 2 != 0;
}

void CsvFile::Prepare(Team& team) { team.FindQuotes(*this); }

void CsvFile::SetQuotes(const std::vector<bool>& odd) {
  fInQuotes.clear();
  bool inQuotes = false;
  for (const bool more : odd) {
    fInQuotes.push_back(inQuotes);
    inQuotes ^= more;
  }
}

// Where the first row begins whose first byte is at k 2^18 or behind it; the buffer has the file
// from `base` on, and gets more of it while that is not enough.
std::uint64_t CsvFile::RowStart(std::uint64_t chunk, std::uint64_t base, Chunk& result) const {
  std::vector<char>& buffer = result.buffer;
  const std::uint64_t start = chunk * fChunkBytes;
  if (start <= fDataBegin) return fDataBegin;
  if (start >= fSize) return fSize;
  // The byte before the chunk may end a row; a line feed leaves the number of quotes as it is.
  std::size_t from = static_cast<std::size_t>(start - base);
  bool inQuotes = fInQuotes[chunk];
  if (!inQuotes && buffer[from - 1] == '\n') return start;
  while (true) {
    const std::string_view text(buffer.data(), buffer.size());
    const std::size_t behind = BehindRow(text, from, inQuotes);
    if (behind != text.npos) return base + behind;
    const std::size_t have = buffer.size();
    if (base + have >= fSize) return fSize;
    result.isCut = have > kLongestRow + fChunkBytes;
    if (result.isCut) return base + have;
    from = have;
    buffer.resize(std::min(have + std::max(kStep, have), kLongestRow + fChunkBytes + 1));
    buffer.resize(have + ReadAt(base + have, buffer.data() + have, buffer.size() - have));
    if (buffer.size() == have) Fail(Path() + " has changed while it was read");
  }
}

bool CsvFile::Load(std::uint64_t chunk, Chunk& result) {
  if (chunk >= *ChunkCount()) return false;
  const std::uint64_t start = chunk * fChunkBytes;
  const std::uint64_t base = start > 0 ? start - 1 : 0;
  std::vector<char>& buffer = result.buffer;
  result.number = chunk;
  result.isText = true;
  result.isCut = false;
  buffer.resize(fChunkBytes + kStep);
  buffer.resize(ReadAt(base, buffer.data(), buffer.size()));
  const std::uint64_t begin = RowStart(chunk, base, result);
  std::uint64_t end = begin;
  if (begin < start + fChunkBytes) end = std::max(begin, RowStart(chunk + 1, base, result));
  const auto size = static_cast<std::size_t>(end - base);
  buffer.resize(std::max(size, static_cast<std::size_t>(begin - base)) + kSentinels);
  result.begin = buffer.data() + (begin - base);
  result.end = result.begin + (end - begin);
  result.end[0] = '\n';
  result.end[1] = '\0';
  return true;
}

std::string CsvFile::PlaceOf(std::uint64_t chunk, std::int64_t line) {
  std::vector<char> buffer(fChunkBytes);
  Chunk loaded;
  Load(chunk, loaded);
  const std::uint64_t base = chunk > 0 ? chunk * fChunkBytes - 1 : 0;
  std::uint64_t left = base + static_cast<std::uint64_t>(loaded.begin - loaded.buffer.data());
  for (std::uint64_t at = 0; left > 0;) {
    const std::size_t size = ReadAt(at, buffer.data(), std::min(left, fChunkBytes));
    if (size == 0) break;
    line += std::count(buffer.data(), buffer.data() + size, '\n');
    at += size;
    left -= size;
  }
  return "line " + std::to_string(line);
}

}  // namespace support
