// The real backend: SQLite files, loaded modules, iconv and the process's environment. For applications and tests.
//
// Files of the machine's home: printers.db (the queues and their data, written by an administrator, read by everyone)
// and driver/ (the driver directory). Files of the user's home: users/<user>.db (the user's tree), working records,
// temporary files. libheron_platform.so installs this backend at the first platform call, configured by the
// environment:
//   HERON_HOME          both homes in one folder; else the user's is $XDG_DATA_HOME/heron or ~/.local/share/heron
//   HERON_MACHINE_HOME  the machine's home without HERON_HOME; else /var/lib/heron if it is there and can be read, else
//                       the user's home
//   HERON_USER          the user's name; else the logon name
//   HERON_COUNTRY       the locale's country code in digits; else that of the first territory in LC_ALL, LC_PAPER,
//   LANG;
//                       else unknown, and the driver takes 1
//   HERON_CODE_PAGE     the system's code page; else 65001
//   HERON_PROCESS       full path of the process's program; else the running one
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/api/backend.h"

namespace heron::store {

struct StoreOptions {
  std::filesystem::path home;          ///< the user's
  std::filesystem::path machine_home;  ///< empty: the same
  std::filesystem::path documents;     ///< the user's documents; empty: none are known
  std::string user;
  std::u16string country;
  std::u16string process;
  platform::DWORD code_page = 65001;
  std::chrono::milliseconds busy_limit{10000};  ///< how long a locked file is waited for
};

/// The user's home that the environment names. An absolute path; it need not exist.
HERON_PLATFORM_API std::filesystem::path StoreHome();
/// The machine's home, likewise.
HERON_PLATFORM_API std::filesystem::path MachineHome();
/// Whether HERON_HOME puts both in one folder.
HERON_PLATFORM_API bool HasNamedHome();
/// The machine's home of a system that has one for all users.
inline constexpr const char* kSharedMachineHome = "/var/lib/heron";
/// The driver directory in the machine's home, with a separator at its end.
HERON_PLATFORM_API std::filesystem::path DriverDirectoryPath();
/// Path of the user's own working record of the queue `printer`, beside the user's tree; the folder need not exist.
/// It bears the queue's identity; records of queues of this name that were removed are removed too.
HERON_PLATFORM_API std::filesystem::path WorkingRecordPath(const std::string& printer);
/// Where the user's documents lie: $XDG_DOCUMENTS_DIR; ~/Documents if that is there and no other home is named; else a
/// folder beside the user's tree. It need not exist.
HERON_PLATFORM_API std::filesystem::path DocumentsPath();
/// What the environment says. Never fails; unusable values are replaced and reported by TakeNotices.
HERON_PLATFORM_API StoreOptions OptionsFromEnvironment();

/// Notices for the user: a damaged store that was set aside, a setting that was ignored. One sentence each; they
/// are handed out once.
HERON_PLATFORM_API std::vector<std::string> TakeNotices();

/// The last failure of one of the store's files, for messages that name it; an empty path if none failed. A key or
/// value that isn't there is no failure.
struct StoreFailure {
  std::filesystem::path file;
  platform::DWORD status = 0;
};
HERON_PLATFORM_API StoreFailure LastStoreFailure();

/// A backend over the files of both homes. Nothing is opened or made before it is needed.
class HERON_PLATFORM_API StoreBackend {
 public:
  explicit StoreBackend(StoreOptions options);
  ~StoreBackend();  ///< takes itself away if it is installed, and closes the files
  StoreBackend(const StoreBackend&) = delete;
  StoreBackend& operator=(const StoreBackend&) = delete;

  const platform::Backend& Interface() const;
  /// Closes the files unless a transaction is running; they open again with the next call.
  void CloseFiles();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// Makes the backend at `home`, everything else as the environment says, and installs it for as long as the result
/// lives.
HERON_PLATFORM_API std::unique_ptr<StoreBackend> InstallStoreBackend(const std::filesystem::path& home);
/// The same with every option given.
HERON_PLATFORM_API std::unique_ptr<StoreBackend> InstallStoreBackend(StoreOptions options);

/// Reads the whole regular file at `path`. 0, or the errno of the failure; EFBIG for more than `limit` bytes, EISDIR or
/// EINVAL for what isn't a regular file. `bytes` changes on success only.
HERON_PLATFORM_API int ReadFileBytes(const std::filesystem::path& path, size_t limit, std::vector<uint8_t>* bytes);

/// Replaces or makes the file at `path`: written beside it with mode 0600, flushed, renamed, and the folder flushed. 0,
/// or the errno of the failure; the old file is then unchanged, unless it was only the folder that couldn't be
/// flushed. EINVAL for what isn't a regular file.
HERON_PLATFORM_API int ReplaceFileBytes(const std::filesystem::path& path, std::span<const uint8_t> bytes);

}  // namespace heron::store
