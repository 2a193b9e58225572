// Owners of SQLite's objects, and its result codes as the platform's.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "platform/api/types.h"

namespace heron::store {

struct CloseConnection {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using UniqueConnection = std::unique_ptr<sqlite3, CloseConnection>;

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using UniqueStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The platform's code for what SQLite just answered; the system's error behind it decides where SQLite is vague.
platform::DWORD StatusOf(sqlite3* db, int code);
/// The platform's code for an errno of a file call that was to write.
platform::DWORD StatusOfErrno(int error);

/// Runs `sql`, which gives no rows that matter.
platform::DWORD Execute(sqlite3* db, const char* sql);
/// The number that `sql` gives in its first row; 0 without one.
platform::DWORD QueryNumber(sqlite3* db, const char* sql, int64_t* number);

/// One run of a prepared statement: arguments in order, then rows. Texts and bytes must outlive it.
class Query {
 public:
  explicit Query(const UniqueStatement& statement) : statement_(statement.get()) {}
  ~Query() { sqlite3_reset(statement_); }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  Query& Bind(int64_t number);
  Query& Bind(std::string_view text);
  Query& Bind(std::span<const uint8_t> bytes);
  /// Whether there is a row; otherwise `*status` is how the statement ended.
  bool Row(platform::DWORD* status);
  /// Runs a statement without rows to its end.
  platform::DWORD Finish();

  int64_t Number(int column) const { return sqlite3_column_int64(statement_, column); }
  /// Valid up to the next row.
  std::string_view Text(int column) const;
  std::span<const uint8_t> Bytes(int column) const;

 private:
  sqlite3_stmt* statement_;
  int next_ = 1;
  int bound_ = SQLITE_OK;  ///< the first failure of a Bind
};

}  // namespace heron::store
