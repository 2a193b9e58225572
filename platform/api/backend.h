// The interfaces behind the platform's calls. The calls forward to one Backend, installed once per process.
//
// Two exist: the real one (platform/sqlite) and MemoryBackend (platform/memory), which can fail its n-th call. The
// spooler, handles, batches and last errors are common code of this folder over these
// interfaces, so that both behave alike. Status results are the error codes of types.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/api/types.h"

namespace heron::platform {

/// The two trees: the user's own, and that of the machine, which holds the printer queues and their data.
enum class Hive : uint8_t { kUser, kMachine };

using KeyId = int64_t;  ///< a key of a tree; stays valid until the key is removed, and is never given to another key

/// Keys and typed values of both trees. Paths are normalised: parts joined by single backslashes, none at the ends.
/// The empty path is the tree's root, which always exists. A path or key that is missing gives kErrorFileNotFound, the
/// id of a removed key kErrorKeyDeleted. Every change is durable when the call returns, or at End inside a transaction.
/// Calls come from any thread; a transaction belongs to one thread at a time, others wait.
class TreeStore {
 public:
  virtual ~TreeStore() = default;
  virtual DWORD Find(Hive hive, std::u16string_view path, KeyId* key) = 0;
  /// Creates the missing keys of `path`; `*created` is set to whether the last one was missing.
  virtual DWORD Create(Hive hive, std::u16string_view path, KeyId* key, bool* created) = 0;
  /// Removes a key without subkeys, with its values; kErrorAccessDenied if it has subkeys or is the root.
  virtual DWORD Remove(Hive hive, std::u16string_view path) = 0;
  /// Name of the index-th subkey in creation order, or kErrorNoMoreItems.
  virtual DWORD Subkey(Hive hive, KeyId key, uint32_t index, std::u16string* name) = 0;
  /// `*size` receives the value's size always when it exists; data is copied only if it fits `room` (else
  /// kErrorMoreData).
  virtual DWORD Read(Hive hive, KeyId key, std::u16string_view name, DWORD* type, std::span<uint8_t> room,
                     DWORD* size) = 0;
  /// Calls `visit` with every value of the key, from one consistent snapshot.
  using Visitor = std::function<void(std::u16string_view name, DWORD type, std::span<const uint8_t> data)>;
  virtual DWORD ReadAll(Hive hive, KeyId key, const Visitor& visit) = 0;
  /// Calls `visit` with every value of the key's direct subkeys, in creation order of the subkeys, from one consistent
  /// snapshot; a subkey without values doesn't appear.
  using BelowVisitor = std::function<void(std::u16string_view subkey, std::u16string_view name, DWORD type,
                                          std::span<const uint8_t> data)>;
  virtual DWORD ReadBelow(Hive hive, KeyId key, const BelowVisitor& visit) = 0;
  virtual DWORD Write(Hive hive, KeyId key, std::u16string_view name, DWORD type, std::span<const uint8_t> data) = 0;
  virtual DWORD Delete(Hive hive, KeyId key, std::u16string_view name) = 0;
  virtual DWORD Begin(Hive hive) = 0;  ///< not nested; the caller counts
  /// Ends the thread's transaction in any case: unless this gives kErrorSuccess with `keep`, the tree is as it was at
  /// Begin.
  virtual DWORD End(Hive hive, bool keep) = 0;
  /// Whether the tree can be written at all by this user.
  virtual bool Writable(Hive hive) = 0;
};

class ModuleLoader {
 public:
  virtual ~ModuleLoader() = default;
  virtual HMODULE Load(std::u16string_view path) = 0;  ///< null if it can't be loaded
  virtual bool Free(HMODULE module) = 0;               ///< false if it isn't loaded
  /// Address of the text and its length, valid while the module is loaded; an empty view if there is none.
  virtual std::u16string_view Text(HMODULE module, uint32_t id) = 0;
  /// Address of an exported function, valid for the life of the process; null if there is none.
  virtual void* Function(HMODULE module, const char* name) = 0;
  /// The module if it is loaded, without counting a user; else null.
  virtual HMODULE Find(std::u16string_view path) = 0;
  /// Data of a kind by number, valid as Text; empty if there is none.
  virtual std::span<const uint8_t> Data(HMODULE, uint32_t /*kind*/, uint32_t /*id*/) { return {}; }
};

using AdapterAddress = std::array<uint8_t, 6>;  ///< the hardware address of a network adapter

class ProcessInfo {
 public:
  virtual ~ProcessInfo() = default;
  virtual std::u16string FileName() = 0;       ///< full path of the program
  virtual std::u16string LocaleCountry() = 0;  ///< country code in digits, empty if unknown
  virtual std::u16string UserName() = 0;
  virtual bool LocalTime(SYSTEMTIME* time) = 0;
  /// The machine's network adapters that have an address, in the system's order.
  virtual std::vector<AdapterAddress> Adapters() = 0;
};

class TextCodec {
 public:
  virtual ~TextCodec() = default;
  virtual DWORD ActiveCodePage() = 0;
  /// Whole text into bytes of `code_page` (never CP_ACP); '?' for what it lacks. False if the code page is unknown.
  virtual bool Encode(DWORD code_page, std::u16string_view text, std::string* out) = 0;
  virtual bool Decode(DWORD code_page, std::string_view bytes, std::u16string* out) = 0;
};

/// An open file; closed when the last owner lets go. Calls come from any thread.
class OpenFile {
 public:
  virtual ~OpenFile() = default;
  virtual DWORD Read(std::span<uint8_t> room, DWORD* read) = 0;
  virtual DWORD Write(std::span<const uint8_t> data, DWORD* written) = 0;
  virtual DWORD Size(uint64_t* size) = 0;
  /// When it was last written, in the user's time zone.
  virtual DWORD WriteTime(SYSTEMTIME* time) = 0;
};

/// Regular files by full path; new ones are readable by their owner alone.
class FileStore {
 public:
  virtual ~FileStore() = default;
  /// The user's private folder with its separator, made if it is missing; empty if it can't be had.
  virtual std::u16string TempFolder() = 0;
  /// The folder of the system's own working files, without a separator at its end, made with "spool/PRINTERS" below it
  /// if it is missing; empty if it can't be had.
  virtual std::u16string SystemFolder() = 0;
  /// The user's folder for documents, without a separator at its end, made if it is missing; empty if it can't be had.
  virtual std::u16string DocumentsFolder() { return {}; }
  /// The folder of the machine's driver files with its separator; empty if the store has none. It need not exist.
  virtual std::u16string DriverFolder() { return {}; }
  /// Where the search for an unused number of a temporary file begins.
  virtual uint32_t NumberHint() = 0;
  /// Makes an empty file; kErrorFileExists if something of this name is there.
  virtual DWORD CreateNew(std::u16string_view path) = 0;
  /// Whether a file can be made in the folder; nothing is made.
  virtual bool CanMakeFiles(std::u16string_view folder) = 0;
  /// `create`: makes the file or empties it; otherwise it must exist.
  virtual DWORD Open(std::u16string_view path, bool write, bool create, std::shared_ptr<OpenFile>* file) = 0;
  virtual DWORD Delete(std::u16string_view path) = 0;
  /// FILE_ATTRIBUTE_ bits (files.h) of what bears this name; links aren't followed.
  virtual DWORD Attributes(std::u16string_view path, DWORD* attributes) = 0;
  /// Gives the file the content `data`, as a whole: who looks at any moment, a crash included, finds the old or the new
  /// one. A file that isn't there is made; one that may not be written or isn't a regular file stays as it is.
  virtual DWORD Replace(std::u16string_view path, std::span<const uint8_t> data) = 0;
};

struct Backend {
  TreeStore* trees;
  ModuleLoader* modules;
  ProcessInfo* process;
  TextCodec* text;
  FileStore* files;
};

/// Installs `backend` for the process; the object and what it points to must outlive every call. Null takes it away.
/// Handles and batches of the backend before it become invalid.
HERON_PLATFORM_API void InstallBackend(const Backend* backend);

/// How the real backend joins in: called at the first platform call if none is installed. Returns null if it can't be
/// made.
using BackendFactory = const Backend* (*)();
HERON_PLATFORM_API void SetDefaultBackend(BackendFactory factory);

/// The backend in force, or null; calls without a backend fail with kErrorGenFailure.
const Backend* CurrentBackend();

}  // namespace heron::platform
