// Where rows come from: a file of separated values or a database, cut into chunks of whole rows.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nqcommon/common/Value.h>

namespace support {

class Team;

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

// A run of whole rows: text or values.
//
// Text      Behind the last row stand a line feed and a zero byte, so that a reader need not look
//           for the end.
// Values    The cells of the rows one after the other, as many a row as there are columns.
struct Chunk {
  std::uint64_t number = 0;
  std::vector<char> buffer;
  char* begin = nullptr;
  char* end = nullptr;
  bool isCut = false;  // within its last row, which is longer than rows may be
  bool isText = true;
  std::vector<NQCommon_940::Value> values;
  std::size_t rows = 0;  // of values
};

inline constexpr std::uint64_t kChunkBytes = std::uint64_t{1} << 18;

// Rows with named columns. Operations throw std::runtime_error, and DataError where a line is to be
// named.
class Source {
 public:
  virtual ~Source() = default;

  const std::string& Path() const { return fPath; }
  const Dialect& GetDialect() const { return fDialect; }
  // Distinct, UTF-8, none empty.
  const std::vector<std::string>& ColumnNames() const { return fNames; }
  // The names as a row of text, without its line end.
  const std::string& HeaderText() const { return fHeaderText; }

  // Finds out what must be known before chunks can be loaded.
  virtual void Prepare(Team&) {}
  // Nothing before a source that is read in order has been read to its end.
  virtual std::optional<std::uint64_t> ChunkCount() const = 0;
  // Whether chunks can only be loaded one after the other, each time from the first on. Those of
  // other sources can be loaded by several threads at once.
  virtual bool IsReadInOrder() const = 0;
  // False for a chunk behind the last.
  virtual bool Load(std::uint64_t chunk, Chunk& result) = 0;
  // "line 7": where the line of a chunk is in the source, all from 1.
  virtual std::string PlaceOf(std::uint64_t chunk, std::int64_t line) = 0;
  // Throws when the rows are not as they were.
  virtual void CheckUnchanged() const = 0;

 protected:
  Source(std::string path, Dialect dialect)
      : fPath(std::move(path)), fDialect(std::move(dialect)) {}
  // Throws for names that columns cannot have; `where` begins the message.
  void SetNames(std::vector<std::string> names, std::string headerText, const std::string& where);

 private:
  std::string fPath;
  Dialect fDialect;
  std::vector<std::string> fNames;
  std::string fHeaderText;
};

// A file of separated values, or, where one of the others is given, a table or view of a database,
// or the rows of a query.
struct SourceName {
  std::string path;
  std::string table = {};
  std::string query = {};

  bool IsOfDatabase() const { return !(table + query).empty(); }
};

std::unique_ptr<Source> OpenSource(const SourceName& name, const Dialect& dialect,
                                   std::uint64_t chunkBytes = kChunkBytes);

}  // namespace support
