#include "source.h"

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <stdexcept>
#include <utility>

#include "csv_file.h"
#include "sqlite_source.h"
#include "text.h"

namespace support {
namespace {

bool EqualsIgnoringCase(std::string_view text, const char* word) {
  return text.size() == std::strlen(word) && strncasecmp(text.data(), word, text.size()) == 0;
}

}  // namespace

bool Dialect::IsMissing(std::string_view text, bool quoted) const {
  if (text.empty()) return true;
  if (usualMissing && !quoted &&
      (EqualsIgnoringCase(text, "NA") || EqualsIgnoringCase(text, "NaN")))
    return true;
  return std::find(missing.begin(), missing.end(), text) != missing.end();
}

void Source::SetNames(std::vector<std::string> names, std::string headerText,
                      const std::string& where) {
  const auto fail = [&](const std::string& message) { throw std::runtime_error(where + message); };
  std::set<std::string_view> seen;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].empty()) fail("column " + std::to_string(i + 1) + " has no name");
    if (!IsXmlText(names[i])) fail("the name " + Quoted(names[i]) + " is not UTF-8 text");
    if (!seen.insert(names[i]).second) fail("two columns are named " + Quoted(names[i]));
  }
  fNames = std::move(names);
  fHeaderText = std::move(headerText);
}

std::unique_ptr<Source> OpenSource(const SourceName& name, const Dialect& dialect,
                                   std::uint64_t chunkBytes) {
  if (!name.IsOfDatabase()) return std::make_unique<CsvFile>(name.path, dialect, chunkBytes);
  if (name.path == "-") throw std::runtime_error("a database cannot come from standard input");
  return std::make_unique<SqliteSource>(name, dialect, chunkBytes);
}

}  // namespace support
