// One entry of the settings library: a settings file, what its head says, and the settings in it.
//
// A file is read once, when its entry is opened, and its bytes are worked on in memory; it is replaced whole when the
// entry is saved. Nothing else of an entry is ever on the disk.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "presets/preset_header.h"
#include "uistate/ui_state.h"

namespace heron {

inline constexpr size_t kFolderLength = 259;  ///< characters
inline constexpr size_t kExtensionLength = 10;

/// Where a settings file lies.
struct FileLocation {
  std::u16string folder;  ///< without a separator at its end, but for the root's
  std::u16string name;    ///< base name, up to kLibraryNameLength
  std::u16string extension = u"vxs";

  std::u16string Path() const;
  bool operator==(const FileLocation&) const = default;
};
/// Takes a full path apart.
FileLocation LocationOf(std::u16string_view path);
/// Whether the two name one file where the case of letters doesn't count.
bool SameLocation(const FileLocation& a, const FileLocation& b);
/// The standard settings beside the driver.
FileLocation StandardFile(int number);

/// DriverIdentity::attributes.
enum FileAttributes : int32_t {
  kStandardEntry = 0,     ///< the driver's: stays in the list, another version brings its own
  kOwnEntry = 1,          ///< the user's
  kProtectedEntry = 2,    ///< the user's, but file or folder can't be written; never in a file
  kReplaceableEntry = 3,  ///< like the standard one, but can be removed from the list
};

enum class EntryState : uint8_t { kClean = 0, kChanged = 1, kNew = 2 };

struct LibraryEntry {
  EntryState dirty = EntryState::kClean;
  FileLocation location;
  std::optional<FileLocation> onDisk;   ///< where it was saved last; nothing for a new one
  std::optional<FileLocation> leaving;  ///< after a save: the file that goes once the index names the new one
  std::string leftBytes;                ///< what that file holds
  std::u16string displayName;
  std::u16string comment;  ///< lines end in CR LF
  DriverIdentity identity;
  UiStatePtr state;     ///< its settings; null if they weren't loaded
  std::string bytes;    ///< of the file, as it was read or saved
  bool isAway = false;  ///< its folder can't be reached now: known by its place in the list alone, never written

  /// What lay at `location` when a new entry was made for it, or one moved there; nothing: no file.
  std::optional<std::string> replaces;
};
using LibraryEntryPtr = std::unique_ptr<LibraryEntry>;

/// Whether a listed file is there for good or for now.
enum class FilePresence : uint8_t {
  kThere,
  kGone,  ///< no such file in its folder, or none that this user may read
  kAway,  ///< the folder isn't there, can't be looked into or doesn't answer: a disk that was taken out, a network
};
FilePresence LookForFile(const std::u16string& path);

/// The file's bytes; nothing where there is none that can be read, or an empty one.
std::optional<std::string> BytesOfFile(const FileLocation& location);
/// Whether saving the entry would write over nothing but what was read: no other program has changed its file or the
/// one that it replaces.
bool IsAsRead(const LibraryEntry& entry);

/// Whether files can be made in the folder. A file that is there is never touched.
bool IsFolderWritable(const std::u16string& folder);
/// Whether there is something that mustn't be replaced by a settings file: write-protected, hidden, no regular file.
bool IsProtectedFile(const std::u16string& path);
bool FileExists(const std::u16string& path);

/// Reads file and head of an entry without judging who wrote it. False if it is no settings file.
bool ReadEntryHead(const FileLocation& location, LibraryEntry* entry);
/// Gives the entry a private copy of `ui` with the settings of its file.
bool LoadEntrySettings(LibraryEntry& entry, const UiState& ui, const ResourceContext* resources);

/// Whether SaveEntry would write anything: a user's entry, new or changed, whose settings are at hand.
bool NeedsSaving(const LibraryEntry& entry);
/// Writes a new or changed entry to its location, whole. True also where nothing is to be done: for a clean or
/// write-protected entry, and a changed one whose settings weren't loaded. After a move the old file stays until the
/// index that names the new one is written (LibraryEntry::leaving). False: the file is as it was.
bool SaveEntry(LibraryEntry& entry);

}  // namespace heron
