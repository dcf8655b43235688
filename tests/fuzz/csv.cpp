// Any file gives the same rows and the same error whole and in chunks of 64 bytes. What is refused
// as no text, for a look at the first chunk, may be accepted by the shorter look.
#include <optional>

#include "../../examples/support/csv_file.h"
#include "../../examples/support/row_reader.h"
#include "../../examples/support/team.h"
#include "any_bytes.h"
#include "support/memory_file.h"

using namespace support;

namespace {

std::string Rows(const std::string& path, const Dialect& dialect, std::uint64_t chunkBytes) {
  std::string rows;
  std::optional<CsvFile> file;
  try {
    file.emplace(path, dialect, chunkBytes);
  } catch (const std::exception&) {
    return "refused";
  } catch (const DataError& error) {
    return error.message;
  }
  Team team(1);
  file->Prepare(team);
  RowReader reader(dialect, std::vector<RowReader::Column>(file->ColumnNames().size(),
                                                           {RowReader::Use::kAsNumber, 0}));
  Chunk chunk;
  for (std::uint64_t i = 0; file->Load(i, chunk); ++i) {
    try {
      for (reader.Start(chunk); reader.Next();) rows += std::string(reader.RowText()) + '\n';
    } catch (const DataError& error) {
      return rows + error.message + file->PlaceOf(i, error.line);
    }
  }
  return rows;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::Bytes bytes(data, size);
  Dialect dialect;
  dialect.separator = ",;\t"[bytes.Next() % 3];
  dialect.missing = {bytes.NextText()};
  const nqtest::MemoryFile file(bytes.Rest());
  const std::string path = file.Path();
  const std::string whole = Rows(path, dialect, kChunkBytes);
  nqtest::Require(whole == "refused" || Rows(path, dialect, 64) == whole);
  return 0;
}
