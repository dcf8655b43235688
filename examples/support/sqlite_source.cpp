#include "sqlite_source.h"

#include <bit>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "csv_row.h"

using NQCommon_940::Value;

namespace support {

SqliteSource::SqliteSource(const SourceName& name, const Dialect& dialect, std::uint64_t chunkBytes)
    : Source(name.path, dialect),
      fRows(name.path, name.query.empty() ? SqliteIterator::QueryOfTable(name.table) : name.query),
      fChunkBytes(chunkBytes) {
  const std::vector<std::string>& names = fRows.ColumnNames();
  const std::vector<Value> cells(names.begin(), names.end());
  std::string header;
  AppendRow(header, cells.data(), cells.size(), dialect.separator);
  SetNames(names, std::move(header), Path() + ": ");
  fBytes = HeaderText().size() + 1;
}

void SqliteSource::FailChanged() const {
  throw std::runtime_error(Path() + ": the rows are not the same when they are read again");
}

// A number that depends on all cells and their order.
void SqliteSource::Digest(const Value& cell) {
  std::uint64_t bits = cell.GetType();
  if (cell.GetType() == Value::IntegerType)
    bits = static_cast<std::uint64_t>(cell.GetInteger());
  else if (cell.GetType() == Value::RealType)
    bits = std::bit_cast<std::uint64_t>(cell.GetReal());
  else if (cell.GetType() == Value::StringType)
    bits = std::hash<std::string_view>()(cell.GetStringRef());
  fDigest = (fDigest ^ bits) * 0x9E3779B97F4A7C15;  // 2^64 by the golden ratio
  fDigest ^= fDigest >> 32;
}

// Appends the next row to the chunk; false when there is none.
bool SqliteSource::TakeRow(Chunk& result) {
  const NQCommon_940::ValueRecord* record = fRows.Next();
  if (!record) {
    if (fRows.GetFailReason() == SqliteIterator::kFailed) throw std::runtime_error(fRows.Message());
    return false;
  }
  const std::vector<Value>& cells = record->GetRecord();
  for (const Value& cell : cells) Digest(cell);
  result.values.insert(result.values.end(), cells.begin(), cells.end());
  ++result.rows;
  ++fRow;
  return true;
}

bool SqliteSource::Load(std::uint64_t chunk, Chunk& result) {
  if (chunk == 0) {
    fRows.NewPass();
    fRow = fDigest = 0;
  }
  result.number = chunk;
  result.isText = false;
  result.values.clear();
  result.rows = 0;
  return fChunkCount ? LoadKnown(chunk, result) : LoadFirst(chunk, result);
}

bool SqliteSource::LoadFirst(std::uint64_t chunk, Chunk& result) {
  const std::size_t nColumns = ColumnNames().size();
  fFirstRows.push_back(fRow);
  while (fBytes / fChunkBytes == chunk) {
    if (!TakeRow(result)) {
      fChunkCount = (fBytes + fChunkBytes - 1) / fChunkBytes;
      fFirstRows.push_back(fRow);
      fFirstDigest = fDigest;
      return chunk < *fChunkCount;
    }
    fText.clear();
    AppendRow(fText, result.values.data() + result.values.size() - nColumns, nColumns,
              GetDialect().separator);
    fBytes += fText.size() + 1;
  }
  return true;
}

bool SqliteSource::LoadKnown(std::uint64_t chunk, Chunk& result) {
  if (chunk >= *fChunkCount) return false;
  while (fRow < fFirstRows[chunk + 1]) {
    if (!TakeRow(result)) FailChanged();
  }
  if (chunk + 1 == *fChunkCount && TakeRow(result)) FailChanged();
  return true;
}

std::string SqliteSource::PlaceOf(std::uint64_t chunk, std::int64_t line) {
  return "row " + std::to_string(fFirstRows[chunk] + static_cast<std::uint64_t>(line));
}

void SqliteSource::CheckUnchanged() const {
  if (fDigest != fFirstDigest) FailChanged();
}

}  // namespace support
