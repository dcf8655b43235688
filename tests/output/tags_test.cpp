// The tables of names, read from their headers: that none is missing, and which are not the name of
// their value.
#include <cctype>
#include <fstream>

#include "support/testing.h"

namespace {

// The letters and digits, in upper case.
std::string Bare(const std::string& text) {
  std::string bare;
  for (const char c : text) {
    const int code = static_cast<unsigned char>(c);
    if (std::isalnum(code)) bare += static_cast<char>(std::toupper(code));
  }
  return bare;
}

TEST(Tags, NoneIsMissingAndOddOnesAreMeant) {
  const struct {
    const char* table;
    int count;
    nqtest::Texts odd;
  } rows[] = {
#include "golden/odd_tags.inc"
  };
  const std::string start = "inline const std::string ";
  for (const auto& row : rows) {
    std::ifstream in(std::string("nqcommon/output/") + row.table);
    int count = 0;
    nqtest::Texts odd;
    for (std::string line; std::getline(in, line);) {
      if (!line.starts_with(start)) continue;
      ++count;
      line = line.substr(start.size(), line.find(';') - start.size());
      const std::size_t equals = line.find(" = "), kind = std::string("XML_ELE_").size();
      if (Bare(line.substr(kind, equals - kind)) != Bare(line.substr(equals))) odd.push_back(line);
    }
    EXPECT_EQ(count, row.count) << row.table;
    EXPECT_EQ(odd, row.odd) << row.table;
  }
}

}  // namespace
