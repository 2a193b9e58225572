// Settings records as files: read with every declared size checked, written whole or not at all.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace heron::cli {

using Bytes = std::vector<uint8_t>;

/// Reads the record in `path` ("-": standard input). The result holds exactly the dmSize + dmDriverExtra bytes that it
/// declares, at least 72. A file that is shorter, longer or over 64 KiB ends the command.
Bytes ReadRecord(const std::string& path);

/// Writes `bytes` to `path` ("-": standard output). A regular file is replaced whole, readable by its owner only: a
/// record may hold passwords. A device or pipe is written to directly.
void WriteRecord(const std::string& path, const Bytes& bytes);

/// Replaces or makes the file `path`, whole or not at all, readable by its owner only.
void ReplaceFile(const std::string& path, const Bytes& bytes);

/// The user's own working record of the queue `printer`; empty if there is none yet.
Bytes OwnRecord(const std::string& printer);
/// Stores `record` as the user's working record, readable by its owner only. False, with nothing written, if the stored
/// record differs from `seen`, as OwnRecord returned it; a null `seen` replaces any record.
[[nodiscard]] bool KeepOwnRecord(const std::string& printer, const Bytes* seen, const Bytes& record);

/// KeepOwnRecord for a window that was opened on `seen` and confirmed. If another program changed the record meanwhile,
/// its record stays if the user `touched` nothing; else `asks_to_replace` is called, with nothing locked, as often as
/// the record changes again. False if the answer was no: nothing was written.
[[nodiscard]] bool KeepConfirmedRecord(const std::string& printer, const Bytes* seen, const Bytes& record, bool touched,
                                       const std::function<bool()>& asks_to_replace);

/// Lock around changes of a user's working records and lists: a transaction on the user's tree, which the system ends
/// if the program dies. Nests. Don't ask the user anything while it is held.
class UserLock {
 public:
  UserLock();   ///< waits its turn; ends the command if the store stays in use, or can't be written
  ~UserLock();  ///< withdraws what was written to the tree, unless it was kept
  UserLock(const UserLock&) = delete;
  UserLock& operator=(const UserLock&) = delete;

  void Keep();  ///< makes what was written to the tree durable, or ends the command

 private:
  bool open_ = true;
};

}  // namespace heron::cli
