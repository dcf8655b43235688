// A file of separated values, cut into chunks of whole rows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "source.h"

namespace support {

// Rows end in LF or CRLF outside quotes: behind an even number of quotes from the start of the
// file. The first row has the names of the columns. A UTF-8 byte order mark is passed over.
//
// Chunks    Chunk k has the rows that begin in the bytes k 2^18 .. (k+1) 2^18 - 1 of the file; the
//           file alone decides. The quotes before a chunk are counted first, chunk by chunk
//           (CountQuotes, then SetQuotes), after that chunks can be loaded in any order.
// Memory    a chunk and its last row, which may have 16 MiB; a bit for each chunk
// Threads   CountQuotes and Load may be called from several at once.
class CsvFile final : public Source {
 public:
  // Opens the file and reads its first row. "-", pipes and the like are copied to a temporary file
  // without a name. Refuses what is no text in UTF-8.
  CsvFile(const std::string& path, const Dialect& dialect, std::uint64_t chunkBytes = kChunkBytes);
  ~CsvFile() override;
  CsvFile(const CsvFile&) = delete;
  CsvFile& operator=(const CsvFile&) = delete;

  void Prepare(Team& team) override;
  std::optional<std::uint64_t> ChunkCount() const override {
    return (fSize + fChunkBytes - 1) / fChunkBytes;
  }
  bool IsReadInOrder() const override { return false; }
  bool Load(std::uint64_t chunk, Chunk& result) override;
  std::string PlaceOf(std::uint64_t chunk, std::int64_t line) override;
  void CheckUnchanged() const override;

  // Whether the chunk's bytes hold an odd number of quotes.
  bool CountQuotes(std::uint64_t chunk, std::vector<char>& buffer) const;
  // The answers of CountQuotes for all chunks.
  void SetQuotes(const std::vector<bool>& odd);

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

  std::uint64_t fChunkBytes;
  int fDescriptor = -1;
  std::uint64_t fSize = 0;
  Stamp fStamp;
  std::uint64_t fDataBegin = 0;  // of the rows below the header
  std::vector<bool> fInQuotes;   // at the first byte of each chunk
};

}  // namespace support
