#include "sqlite_iterator.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <stdexcept>
#include <string_view>

#include "interrupt.h"
#include "text.h"

namespace fs = std::filesystem;

using NQCommon_940::ValueRecord;

namespace support {
namespace {

constexpr int kPatience = 1000;               // milliseconds to wait for a lock
constexpr int kStepsBetweenAsking = 1 << 16;  // of SQLite's virtual machine

// The first bytes of a database, and the place of a byte that is 2 where it has a write-ahead log.
constexpr std::string_view kMagic("SQLite format 3\0", 16);
constexpr std::size_t kHeadBytes = 20;
constexpr std::size_t kWriteVersion = 18;

int IsInterrupted(void* /*unused*/) {
  try {
    Interrupt::Check();
    return 0;
  } catch (const Interrupted&) {
    return 1;
  }
}

// A path as SQLite takes it together with options.
std::string Uri(const std::string& path, const std::string& options) {
  constexpr char kHex[] = "0123456789ABCDEF";
  std::string uri = "file:";
  for (const char c : path) {
    if (c == '%' || c == '?' || c == '#') {
      uri.append({'%', kHex[c >> 4], kHex[c & 15]});
    } else {
      uri += c;
    }
  }
  return uri + '?' + options;
}

}  // namespace

void SqliteIterator::Closer::operator()(sqlite3* database) const { sqlite3_close(database); }
void SqliteIterator::Closer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

std::string SqliteIterator::QueryOfTable(const std::string& table) {
  std::string query = "SELECT * FROM \"";
  for (const char c : table) query.append(c == '"' ? 2 : 1, c);
  return query + '"';
}

SqliteIterator::SqliteIterator(const std::string& path, const std::string& query) : fPath(path) {
  Open();
  fStatement = Prepare(query);
  for (int i = 0; i < sqlite3_column_count(fStatement.get()); ++i) {
    const char* name = sqlite3_column_name(fStatement.get(), i);
    fNames.emplace_back(name ? name : "");
  }
  fRecord = ValueRecord(fNames);
}

void SqliteIterator::Open() {
  const auto fail = [this](const std::string& reason) {
    throw std::runtime_error("cannot open " + fPath + ": " + reason);
  };
  errno = 0;
  std::ifstream file(fPath, std::ios::binary);
  if (!file) fail(std::strerror(errno));
  char head[kHeadBytes] = {};
  file.read(head, sizeof head);
  if (std::string_view(head, kMagic.size()) != kMagic)
    throw std::runtime_error(fPath + " is no SQLite database");
  const std::string path = fs::canonical(fPath).string();
  // SQLite would create the log for a reader too, and leave it there.
  fIsImmutable = head[kWriteVersion] == 2 && !fs::exists(path + "-wal");
  fTimeWritten = fs::last_write_time(path);

  sqlite3* database = nullptr;
  const int status =
      sqlite3_open_v2(Uri(path, fIsImmutable ? "immutable=1" : "mode=ro").c_str(), &database,
                      SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI, nullptr);
  fDatabase.reset(database);
  if (!database) throw std::bad_alloc();
  if (status != SQLITE_OK) fail(sqlite3_errmsg(database));
  sqlite3_busy_timeout(database, kPatience);
  sqlite3_progress_handler(database, kStepsBetweenAsking, IsInterrupted, nullptr);
  // The transaction has begun when something is read.
  if (sqlite3_exec(database, "BEGIN; SELECT 1 FROM sqlite_master", nullptr, nullptr, nullptr) !=
      SQLITE_OK)
    throw std::runtime_error(Complaint());
}

SqliteIterator::Statement SqliteIterator::Prepare(const std::string& query) {
  const auto prepare = [&](const char*& text) {
    sqlite3_stmt* statement = nullptr;
    const int status = sqlite3_prepare_v2(fDatabase.get(), text, -1, &statement, &text);
    if (status != SQLITE_OK) throw std::runtime_error(Complaint());
    return Statement(statement);
  };
  const char* text = query.c_str();
  Statement statement = prepare(text);
  if (!statement) throw std::runtime_error("the query is empty");
  if (sqlite3_column_count(statement.get()) == 0 || !sqlite3_stmt_readonly(statement.get()))
    throw std::runtime_error("the query must be one that gives rows and changes nothing: " +
                             Quoted(query));
  while (*text != '\0') {
    if (prepare(text)) throw std::runtime_error("more than one query: " + Quoted(query));
  }
  return statement;
}

std::string SqliteIterator::Complaint() const {
  switch (sqlite3_errcode(fDatabase.get())) {
    case SQLITE_INTERRUPT:
      Interrupt::Check();
      return "interrupted";
    case SQLITE_BUSY:
      return fPath + " is locked by another program";
    case SQLITE_READONLY:
      return fPath + " has a transaction that was never finished; open it for writing once";
    default:
      return fPath + ": " + sqlite3_errmsg(fDatabase.get());
  }
}

void SqliteIterator::Fail(const std::string& message) {
  fFailReason = kFailed;
  fMessage = message;
}

// False for a BLOB.
bool SqliteIterator::SetCell(int column) {
  sqlite3_value* const cell = sqlite3_column_value(fStatement.get(), column);
  switch (sqlite3_value_type(cell)) {
    case SQLITE_INTEGER:
      fRecord.SetValue(column, static_cast<long long>(sqlite3_value_int64(cell)));
      return true;
    case SQLITE_FLOAT:
      fRecord.SetValue(column, sqlite3_value_double(cell));
      return true;
    case SQLITE_TEXT: {
      const unsigned char* text = sqlite3_value_text(cell);
      if (!text) throw std::bad_alloc();
      fText.assign(reinterpret_cast<const char*>(text),
                   static_cast<std::size_t>(sqlite3_value_bytes(cell)));
      fRecord.SetValue(column, fText);
      return true;
    }
    case SQLITE_NULL:
      fRecord.SetMissingValue(column);
      return true;
    default:
      return false;
  }
}

ValueRecord* SqliteIterator::Next() {
  if (fFailReason != 0) return nullptr;
  const int status = sqlite3_step(fStatement.get());
  if (status == SQLITE_DONE) {
    fFailReason = kEnd;
    std::error_code error;
    if (fIsImmutable && fs::last_write_time(fPath, error) != fTimeWritten)
      Fail(fPath + " has changed while it was read");
    return nullptr;
  }
  if (status != SQLITE_ROW) {
    Fail(Complaint());
    return nullptr;
  }
  ++fRow;
  for (int i = 0; i < static_cast<int>(fNames.size()); ++i) {
    if (SetCell(i)) continue;
    Fail("row " + std::to_string(fRow) + ", column " + Quoted(fNames[static_cast<std::size_t>(i)]) +
         ": a BLOB is neither a number nor a text; --query can leave the column out");
    return nullptr;
  }
  return &fRecord;
}

int SqliteIterator::NewPass() {
  sqlite3_reset(fStatement.get());
  fRow = 0;
  fMessage.clear();
  return fFailReason = 0;
}

}  // namespace support
