// SQLite's objects and result codes (sqlite.h).

#include "platform/sqlite/sqlite.h"

#include <cerrno>

namespace heron::store {

using namespace platform;

namespace {

/// SQLITE_IOERR says what was tried; errno says why it failed.
DWORD StatusOfFailedIo(int extended, int error) {
  if (extended == SQLITE_IOERR_NOMEM) return kErrorNotEnoughMemory;
  if (error == ENOSPC || error == EDQUOT || error == EACCES || error == EROFS || error == EPERM)
    return StatusOfErrno(error);
  const bool reading = extended == SQLITE_IOERR_READ || extended == SQLITE_IOERR_SHORT_READ ||
                       extended == SQLITE_IOERR_FSTAT || extended == SQLITE_IOERR_CORRUPTFS;
  return reading ? kErrorReadFault : kErrorWriteFault;
}

}  // namespace

DWORD StatusOfErrno(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
      return kErrorAccessDenied;
    case ENOSPC:
    case EDQUOT:
      return kErrorDiskFull;
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
      return kErrorPathNotFound;
    case EMFILE:
    case ENFILE:
      return kErrorTooManyOpenFiles;
    case ENOMEM:
      return kErrorNotEnoughMemory;
    default:
      return kErrorWriteFault;
  }
}

DWORD StatusOf(sqlite3* db, int code) {
  switch (code & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return kErrorSuccess;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:  // a race for the write-ahead log; the next try succeeds
      return kErrorBusy;
    case SQLITE_READONLY:
      // The file was set aside between our look at it and the write: the next try opens the new one.
      return code == SQLITE_READONLY_DBMOVED ? kErrorBusy : kErrorAccessDenied;
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return kErrorAccessDenied;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return kErrorRegistryCorrupt;
    case SQLITE_FULL:
      return kErrorDiskFull;
    case SQLITE_NOMEM:
      return kErrorNotEnoughMemory;
    case SQLITE_TOOBIG:
    case SQLITE_RANGE:
      return kErrorInvalidParameter;
    case SQLITE_IOERR:
      return StatusOfFailedIo(code, db == nullptr ? 0 : sqlite3_system_errno(db));
    case SQLITE_CANTOPEN:
      return StatusOfErrno(db == nullptr ? 0 : sqlite3_system_errno(db));
    default:
      return kErrorGenFailure;
  }
}

DWORD Execute(sqlite3* db, const char* sql) {
  return StatusOf(db, sqlite3_exec(db, sql, nullptr, nullptr, nullptr));
}

DWORD QueryNumber(sqlite3* db, const char* sql, int64_t* number) {
  sqlite3_stmt* raw = nullptr;
  const int code = sqlite3_prepare_v2(db, sql, -1, &raw, nullptr);
  const UniqueStatement statement(raw);
  if (code != SQLITE_OK) return StatusOf(db, code);
  Query query(statement);
  DWORD status = kErrorSuccess;
  *number = query.Row(&status) ? query.Number(0) : 0;
  return status;
}

Query& Query::Bind(int64_t number) {
  const int code = sqlite3_bind_int64(statement_, next_++, number);
  if (bound_ == SQLITE_OK) bound_ = code;  // the first failure counts; Row reports it
  return *this;
}

Query& Query::Bind(std::string_view text) {
  // SQLITE_STATIC: a Query lives shorter than the texts that it is given.
  const int code = sqlite3_bind_text64(statement_, next_++, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
  if (bound_ == SQLITE_OK) bound_ = code;
  return *this;
}

Query& Query::Bind(std::span<const uint8_t> bytes) {
  // A null address would bind NULL, which no column takes.
  const int code = bytes.empty() ? sqlite3_bind_zeroblob(statement_, next_++, 0)
                                 : sqlite3_bind_blob64(statement_, next_++, bytes.data(), bytes.size(), SQLITE_STATIC);
  if (bound_ == SQLITE_OK) bound_ = code;
  return *this;
}

bool Query::Row(DWORD* status) {
  const int code = bound_ == SQLITE_OK ? sqlite3_step(statement_) : bound_;
  *status = StatusOf(sqlite3_db_handle(statement_), code);
  return code == SQLITE_ROW;
}

DWORD Query::Finish() {
  DWORD status = kErrorSuccess;
  while (Row(&status)) {
  }
  return status;
}

std::string_view Query::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  const auto length = static_cast<size_t>(sqlite3_column_bytes(statement_, column));
  return text == nullptr ? std::string_view() : std::string_view(text, length);
}

std::span<const uint8_t> Query::Bytes(int column) const {
  const auto* bytes = static_cast<const uint8_t*>(sqlite3_column_blob(statement_, column));
  const auto length = static_cast<size_t>(sqlite3_column_bytes(statement_, column));
  return bytes == nullptr ? std::span<const uint8_t>() : std::span(bytes, length);
}

}  // namespace heron::store
