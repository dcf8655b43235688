// A table of a database gives the bytes that the same rows of a CSV file give.
#include <sstream>

#include "json_document.h"
#include "pmml_document.h"
#include "prediction.h"
#include "report.h"
#include "statxml_document.h"
#include "support/saved_variables.h"
#include "support/sqlite_iterator.h"
#include "support/text.h"
#include "test_support.h"

using namespace regression;
using NQCommon_940::Value;

namespace {

class Database : public ::testing::Test {
 protected:
  ~Database() override { std::filesystem::remove_all(kDirectory); }
};

const std::string kDatabase = (kDirectory / "data.sqlite").string();

void MakeDatabase(const std::string& statements) {
  std::filesystem::remove_all(kDirectory);
  Connect(kDatabase, statements);
}

// ---- Equality -----------------------------------------------------------------------------------

// The bytes of all outputs, but for the name of the data.
std::string Outputs(const std::string& path, Arguments arguments, const Reading& reading,
                    const support::SourceName& table) {
  Fitted fitted(path, arguments, {.charts = true}, reading);
  std::string statXml = StatXmlDocument(fitted.data, fitted.fit);
  const std::size_t at = statXml.find(path);
  EXPECT_NE(at, statXml.npos);
  statXml.erase(at, path.size());
  std::ostringstream out;
  out << statXml << JsonDocument(fitted.data, fitted.fit)
      << PmmlDocument(fitted.data, fitted.fit, {"p", "1", "", false})
      << support::SavedVariables(fitted.data, fitted.fit.summaries);
  PrintReport(out, fitted.data, fitted.fit);
  for (const std::string& note : fitted.data.Notes()) out << note;
  support::WritePredictions(fitted.data, kPredictionTitles, PredictionOf(fitted.fit), table,
                            fitted.team, out);
  return out.str();
}

// Quotes, line ends and blanks in texts, marks of missing cells, numbers of all sizes, numbers that
// are categories, both weights; the same cells by their types, and all as texts.
TEST_F(Database, GivesTheBytesOfTheCsvFile) {
  std::string csv = "\"no,te\",a,g,year,f,r,y\n",
              sql =
                  "CREATE TABLE t (\"no,te\", a, g, year, f, r, y);"
                  "CREATE TABLE texts (\"no,te\" TEXT, a TEXT, g TEXT, year TEXT, f TEXT, r TEXT,"
                  " y TEXT); BEGIN;";
  for (int i = 0; i < 500; ++i) {
    const char* const notes[][2] = {{"n\n,", "n\n,"}, {" b\t", " b\t"}, {"q\"\"\r", "q\"\r"}};
    const std::string a = i % 17 == 0 ? "" : std::to_string(i * 7 % 11),
                      g = i % 23 == 0 ? "NA" : "g " + std::to_string(i * i % 5),
                      year = std::to_string(1990 + i % 4), f = std::to_string(i % 4),
                      r = support::Shortest(0.5 + i % 3),
                      y = support::Shortest((i * i % 13 + 0.1) * (i % 2 == 0 ? 1 : 1 / 3.));
    const std::string numbers = year + ',' + f + ',' + r + ',' + y, note = notes[i % 3][1];
    csv += std::string("\"") + notes[i % 3][0] + "\"," + a + ',' + g + ',' + numbers + '\n';
    sql += "INSERT INTO t VALUES ('" + note + "'," + (a.empty() ? "NULL" : a) + ",'" + g + "'," +
           numbers + "); INSERT INTO texts VALUES ('" + note + "','" + a + "','" + g + "','" +
           year + "','" + f + "','" + r + "','" + y + "');";
  }
  MakeDatabase(sql + "COMMIT");
  const std::string file = FileOf(csv);
  const Arguments arguments = {
      {"inputs", "a,g,year"}, {"categorical", "year"}, {"freq-weight", "f"}, {"reg-weight", "r"}};
  const auto with = [&](const char* name, const char* value) {
    Arguments more = arguments;
    more.emplace_back(name, value);
    return more;
  };
  const auto same = [&](const Arguments& of, const Reading& reading,
                        const support::SourceName& table, const std::string& wanted) {
    // Two long texts would not tell more.
    EXPECT_TRUE(Outputs(kDatabase, of, reading, table) == wanted)
        << of.back().second << ' ' << reading.chunkBytes << ' ' << reading.threads;
  };
  for (const std::uint64_t bytes : std::initializer_list<std::uint64_t>{5, 64, 1000, 1 << 18}) {
    const std::string wanted = Outputs(file, arguments, {bytes, 1}, {file});
    for (const int threads : {1, 4}) {
      same(with("table", "t"), {bytes, threads}, {kDatabase, "t"}, wanted);
      same(with("query", "SELECT * FROM texts;"), {bytes, threads},
           {kDatabase, "", "SELECT * FROM t -- all"}, wanted);
    }
  }
  // Numbers may be marks of missing cells.
  Arguments marks = with("missing", "3,NA");
  const std::string wanted = Outputs(file, marks, {}, {file});
  marks.emplace_back("table", "t");
  same(marks, {}, {kDatabase, "t"}, wanted);
}

// ---- Passes -------------------------------------------------------------------------------------

std::string RowsOf(support::SqliteIterator& rows) {
  std::ostringstream out;
  while (const NQCommon_940::ValueRecord* record = rows.Next()) {
    for (const Value& value : record->GetRecord()) out << value.GetType() << value << ' ';
  }
  EXPECT_EQ(rows.GetFailReason(), support::SqliteIterator::kEnd) << rows.Message();
  rows.NewPass();
  return out.str();
}

// A writer between the passes is not seen, and nothing is left beside the file where there is none.
TEST_F(Database, PassesAreOfOneTransaction) {
  for (const char* mode : {"delete", "wal"}) {
    MakeDatabase(std::string("PRAGMA journal_mode = ") + mode +
                 "; CREATE TABLE \"a \"\"t\" (x, y); INSERT INTO \"a \"\"t\" VALUES "
                 "(1, 1.0), (NULL, 'Küche'), (9007199254740993, '')");
    const std::string wanted = "21 31 0 4Küche 29007199254740993 4 ";
    {
      support::SqliteIterator rows(kDatabase, support::SqliteIterator::QueryOfTable("a \"t"));
      EXPECT_EQ(RowsOf(rows), wanted) << mode;
      EXPECT_EQ(RowsOf(rows), wanted) << mode;
    }
    EXPECT_EQ(FilesIn(kDirectory), 1u) << mode;
  }
  const auto writer = Connect(kDatabase, "INSERT INTO \"a \"\"t\" VALUES (4, 4)");
  support::SqliteIterator rows(kDatabase, "SELECT count(*) FROM \"a \"\"t\"");
  EXPECT_EQ(RowsOf(rows), "24 ");
  sqlite3_exec(writer.get(), "DELETE FROM \"a \"\"t\"", nullptr, nullptr, nullptr);
  EXPECT_EQ(RowsOf(rows), "24 ");
}

// ---- Refusals -----------------------------------------------------------------------------------

TEST_F(Database, RefusesWithOneLineAndNoFiles) {
  MakeDatabase(
      "CREATE TABLE t (a, y); INSERT INTO t VALUES (1, 2), (2, 3), (4, 4);"
      "CREATE TABLE empty (a, y); CREATE VIEW broken AS SELECT a, gone FROM t;"
      "CREATE TABLE b (a, y); INSERT INTO b VALUES (1, 2), (x'00', 3);"
      "CREATE TABLE mixed (a, y); INSERT INTO mixed VALUES (1, 2), (2, 3), ('x', 4);"
      "CREATE TABLE large (a, y); INSERT INTO large VALUES (1, 2), (9e999, 3);"
      "CREATE TABLE bytes (a, y); INSERT INTO bytes VALUES (CAST(x'FF' AS TEXT), 2)");
  const std::string before = ContentOf(kDatabase), csv = FileOf("a,y\n1,2\n2,3\n4,4\n");
  const std::string corrupt = (kDirectory / "corrupt").string();
  std::ofstream(corrupt, std::ios::binary)
      << before.substr(0, 4096) << std::string(before.size(), 'x');
  const struct {
    const char* arguments;
    const char* message;
  } rows[] = {
      {"--table nowhere", "no such table: nowhere"},
      {"--table ''", "is an SQLite database: which table? (--table, --query)"},
      {"--table broken", "no such column: gone"},
      {"--table empty", "data.sqlite has no rows"},
      {"--table b", "row 2, column 'a': a BLOB"},
      {"--table mixed", "row 3, column 'a': 'x' is not a number; --missing"},
      {"--table large", "row 2, column 'a': 'inf' is not finite"},
      {"--table bytes", "row 1, column 'a': '\xFF' is not UTF-8 text"},
      {"--table t --query 'SELECT 1'", "--table excludes --query"},
      {"--query 'SELECT a, a, y FROM t'", "two columns are named 'a'"},
      {"--query 'SELECT a, random() AS b, y FROM t'", "not the same when they are read again"},
      {"--query 'SELEC'", "near \"SELEC\": syntax error"},
      {"--query '-- nothing'", "the query is empty"},
      {"--query 'SELECT * FROM t; SELECT 1'", "more than one query"},
      {"--query 'INSERT INTO t VALUES (1, 2)'", "must be one that gives rows and changes nothing"},
      {"--query 'DELETE FROM t RETURNING a, y'", "must be one that gives rows"},
      {"--query 'CREATE TABLE u (a)'", "must be one that gives rows"},
      {"--query 'BEGIN'", "must be one that gives rows"},
      {"--table t --predict-table t", "need --predict"},
      {"--table t --predict \"$D/data.sqlite\"", "is an SQLite database"},
      {"--table t --predict \"$D/data.sqlite\" --predict-query 'SELECT y FROM t'", "no column 'a'"},
      {"--table t --json \"$D/data.sqlite\"", "is the same file as the data"},
  };
  const std::string environment = "D='" + kDirectory.string() + "'; ";
  const auto refused = [&](const std::string& arguments, const std::string& message) {
    ExpectRefused(RunProgram("--target y --save \"$D/saved\" " + arguments, environment), message);
    EXPECT_EQ(FilesIn(kDirectory), 3u) << message;
  };
  for (const auto& row : rows)
    refused("\"$D/data.sqlite\" " + std::string(row.arguments), row.message);
  refused("\"$D/data.csv\" --table t", "data.csv is no SQLite database");
  refused("\"$D/corrupt\" --table t", "corrupt: database disk image is malformed");
  refused("\"$D/nothing\" --table t", "nothing: No such file");
  refused("\"$D\" --table t", "is no SQLite database");
  refused("- --table t < \"$D/data.sqlite\"", "cannot come from standard input");
  EXPECT_EQ(ContentOf(kDatabase), before);
  std::ofstream(kDatabase + "-journal") << "of a writer that was killed";
  ExpectRefused(RunProgram("\"$D/data.sqlite\" --table t --target y", environment),
                "data.sqlite has a transaction that was never finished");
  std::filesystem::remove(kDatabase + "-journal");
  const auto writer = Connect(kDatabase, "BEGIN EXCLUSIVE");
  refused("\"$D/data.sqlite\" --table t", "data.sqlite is locked by another program");
}

}  // namespace
