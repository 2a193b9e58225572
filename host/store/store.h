// The real backend: SQLite files, loaded modules, iconv and the process's surroundings. For the host and for tests.
//
// Files: <home>/printers.db (the machine's tree), <home>/users/<user>.db (the user's tree), <home>/driver/ (the driver
// directory). In libheron_platform.so the backend joins by itself at the first platform call, made from the
// environment:
//   HERON_HOME       the home; else $XDG_DATA_HOME/heron, else ~/.local/share/heron
//   HERON_USER       the user's name; else the logon name
//   HERON_COUNTRY    the locale's country code in digits; else unknown, and the driver takes 1
//   HERON_CODE_PAGE  the system's code page; else 65001
//   HERON_PROCESS    full path of the process's program; else the running one
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/backend.h"

namespace heron::store {

struct StoreOptions {
  std::filesystem::path home;
  std::string user;
  std::u16string country;
  std::u16string process;
  platform::DWORD code_page = 65001;
  std::chrono::milliseconds busy_limit{10000};  ///< how long a locked file is waited for
};

/// The home that the environment names. An absolute path; it need not exist.
HERON_PLATFORM_API std::filesystem::path StoreHome();
/// The driver directory in it, with a separator at its end.
HERON_PLATFORM_API std::filesystem::path DriverDirectoryPath();
/// Where the user's own working record of the queue `printer` lies, beside the user's tree; the folder need not exist.
HERON_PLATFORM_API std::filesystem::path WorkingRecordPath(const std::string& printer);
/// Where the user's documents lie: $XDG_DOCUMENTS_DIR; ~/Documents if that is there and no other home is named; else a
/// folder beside the user's tree. It need not exist.
HERON_PLATFORM_API std::filesystem::path DocumentsPath();
/// What the environment says. Never fails; what can't be used is replaced and told by TakeNotices.
HERON_PLATFORM_API StoreOptions OptionsFromEnvironment();

/// What the user ought to know: a damaged store that was set aside, a setting that was ignored. One sentence each; they
/// are handed out once.
HERON_PLATFORM_API std::vector<std::string> TakeNotices();

/// A backend over the files at `options.home`. Nothing is opened or made before it is needed.
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
/// or the errno of the failure; the old file then stands untouched, unless it was only the folder that couldn't be
/// flushed. EINVAL for what isn't a regular file.
HERON_PLATFORM_API int ReplaceFileBytes(const std::filesystem::path& path, std::span<const uint8_t> bytes);

}  // namespace heron::store
