// A table or a query of an SQLite database as a source of rows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "source.h"
#include "sqlite_iterator.h"

namespace support {

// Chunks    A row takes as many bytes as the same row of a file of separated values (AppendRow, the
//           header and line feeds included), and belongs to the chunk that it would belong to
//           there: so the results are the same bit for bit.
// Memory    a chunk for each thread; a number for each chunk
class SqliteSource final : public Source {
 public:
  SqliteSource(const SourceName& name, const Dialect& dialect, std::uint64_t chunkBytes);

  std::optional<std::uint64_t> ChunkCount() const override { return fChunkCount; }
  bool IsReadInOrder() const override { return true; }
  bool Load(std::uint64_t chunk, Chunk& result) override;
  std::string PlaceOf(std::uint64_t chunk, std::int64_t line) override;
  void CheckUnchanged() const override;

 private:
  bool LoadFirst(std::uint64_t chunk, Chunk& result);
  bool LoadKnown(std::uint64_t chunk, Chunk& result);
  bool TakeRow(Chunk& result);
  void Digest(const NQCommon_940::Value& cell);
  [[noreturn]] void FailChanged() const;

  SqliteIterator fRows;
  std::uint64_t fChunkBytes;
  // Of this pass.
  std::uint64_t fRow = 0;     // rows taken
  std::uint64_t fDigest = 0;  // of all their cells
  // Of the first pass, which finds where the chunks begin.
  std::uint64_t fBytes = 0;  // where the next row begins
  std::string fText;
  std::vector<std::uint64_t> fFirstRows;  // by chunk: the rows before it; all rows
  std::optional<std::uint64_t> fChunkCount;
  std::uint64_t fFirstDigest = 0;
};

}  // namespace support
