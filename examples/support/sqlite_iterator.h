// The rows of an SQLite database as records.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <nqcommon/common/ValueRecordIterator.h>

struct sqlite3;
struct sqlite3_stmt;

namespace support {

// The rows that one query gives, in its order: NULL is null, and INTEGER, REAL and TEXT, by the
// storage class of the cell, are integers, reals and strings.
//
// Passes    All are within one read transaction, which begins in the constructor.
// Files     The database is opened for reading alone and nothing is written beside it. Where its
//           write-ahead log would have to be created, the database is read as a file that does not
//           change, and a change is told at the end of the pass.
// Failure   std::runtime_error from the constructor: a file that cannot be opened or is no
//           database, a lock that is not released within a second, a text that is no query, or
//           several. Later ones, a BLOB among them, give the fail reason kFailed, and Message()
//           tells more.
// Threads   one object, one thread at a time
class SqliteIterator final : public NQCommon_940::ValueRecordIterator {
 public:
  static constexpr int kEnd = 1;
  static constexpr int kFailed = 2;

  SqliteIterator(const std::string& path, const std::string& query);
  // Every column of a table or view.
  static std::string QueryOfTable(const std::string& table);

  // The columns as the query names them; those of records, unless two are the same.
  const std::vector<std::string>& ColumnNames() const { return fNames; }

  bool HasMore() override { return fFailReason == 0; }
  NQCommon_940::ValueRecord* Next() override;
  int GetFailReason() override { return fFailReason; }
  int NewPass() override;
  const std::string& Message() const { return fMessage; }

 private:
  struct Closer {
    void operator()(sqlite3* database) const;
    void operator()(sqlite3_stmt* statement) const;
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

  void Open();
  Statement Prepare(const std::string& query);
  bool SetCell(int column);
  void Fail(const std::string& message);
  std::string Complaint() const;

  std::string fPath;
  bool fIsImmutable = false;
  std::filesystem::file_time_type fTimeWritten;
  std::unique_ptr<sqlite3, Closer> fDatabase;
  Statement fStatement;
  std::vector<std::string> fNames;
  NQCommon_940::ValueRecord fRecord;
  std::string fText;
  std::int64_t fRow = 0;
  int fFailReason = 0;
  std::string fMessage;
};

}  // namespace support
