// A file of separated values, cut into chunks of whole rows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// What is wrong with the data of a chunk, and where.
struct DataError {
  std::string message;
  std::int64_t line = 0;  // within the chunk, from 1
  std::string column;     // its name, if it is one cell
};

struct Dialect {
  char separator = ',';
  // Cells that are missing besides empty ones, as they stand.
  std::vector<std::string> missing;
  // NA and NaN in any case are missing unless they are quoted.
  bool usualMissing = true;

  bool IsMissing(std::string_view text, bool quoted) const;
};

// A run of whole rows. Behind the last stand a line feed and a zero byte, so that a reader need not
// look for the end.
struct Chunk {
  std::uint64_t number = 0;
  std::vector<char> buffer;
  char* begin = nullptr;
  char* end = nullptr;
  bool isCut = false;  // within its last row, which is longer than rows may be
};

// Rows end in LF or CRLF outside quotes: behind an even number of quotes from the start of the
// file. The first row has the names of the columns. A UTF-8 byte order mark is passed over.
//
// Chunks    Chunk k has the rows that begin in the bytes k 2^18 .. (k+1) 2^18 - 1 of the file; the
//           file alone decides. The quotes before a chunk are counted first, chunk by chunk
//           (CountQuotes, then SetQuotes), after that chunks can be loaded in any order.
// Memory    a chunk and its last row, which may have 16 MiB; a bit for each chunk
// Threads   const operations may be called from several at once.
// Failure   std::runtime_error, and DataError where a line is to be named
class CsvFile {
 public:
  static constexpr std::uint64_t kChunkBytes = std::uint64_t{1} << 18;

  // Opens the file and reads its first row. "-", pipes and the like are copied to a temporary file
  // without a name. Refuses what is no text in UTF-8.
  CsvFile(const std::string& path, const Dialect& dialect, std::uint64_t chunkBytes = kChunkBytes);
  ~CsvFile();
  CsvFile(const CsvFile&) = delete;
  CsvFile& operator=(const CsvFile&) = delete;

  const std::string& Path() const { return fPath; }
  const Dialect& GetDialect() const { return fDialect; }
  // The first row: distinct, UTF-8, none empty.
  const std::vector<std::string>& ColumnNames() const { return fNames; }
  // The first row as it stands, without its line end.
  const std::string& HeaderText() const { return fHeaderText; }
  std::uint64_t Size() const { return fSize; }
  std::uint64_t ChunkCount() const { return (fSize + fChunkBytes - 1) / fChunkBytes; }

  // Whether the chunk's bytes hold an odd number of quotes.
  bool CountQuotes(std::uint64_t chunk, std::vector<char>& buffer) const;
  // The answers of CountQuotes for all chunks.
  void SetQuotes(const std::vector<bool>& odd);

  void Load(std::uint64_t chunk, Chunk& result) const;

  // The line of the file on which the line of a chunk is, both from 1.
  std::int64_t LineInFile(std::uint64_t chunk, std::int64_t line) const;

  // Throws when the file is not as it was when it was opened.
  void CheckUnchanged() const;

 private:
  struct Stamp {
    std::uint64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Stamp&) const = default;
  };

  void Open();
  void Spool();
  Stamp StampNow() const;
  std::size_t ReadAt(std::uint64_t offset, char* to, std::size_t size) const;
  void ReadHeader();
  void RefuseOtherFormats(std::string_view head) const;
  void TakeNames(Chunk& header);
  std::uint64_t RowStart(std::uint64_t chunk, std::uint64_t base, Chunk& result) const;

  std::string fPath;
  Dialect fDialect;
  std::uint64_t fChunkBytes;
  int fDescriptor = -1;
  std::uint64_t fSize = 0;
  Stamp fStamp;
  std::string fHeaderText;
  std::vector<std::string> fNames;
  std::uint64_t fDataBegin = 0;  // of the rows below the header
  std::vector<bool> fInQuotes;   // at the first byte of each chunk
};

}  // namespace support
