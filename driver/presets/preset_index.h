// The list of a user's settings files for one queue, in the user's registry tree: which files, in which order, and the
// driver that kept the list last. Two processes may keep one list: a change is written only where what is stored is
// still what the change was made of (preset_library.h).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/preset_entry.h"

namespace heron {

inline constexpr int kLibraryCapacity = 25;

struct IndexEntry {
  int slot = 0;  ///< number of its key, below kLibraryCapacity; doesn't change when entries are put in another order
  FileLocation location;
  int32_t type = kStandardEntry;  ///< FileAttributes

  bool operator==(const IndexEntry&) const = default;
};

struct LibraryIndex {
  std::optional<DriverIdentity> driver;  ///< nothing: there is no list yet. Reserved numbers aren't kept.
  uint32_t count = 0;                    ///< as it is stored, which may be anything
  std::vector<IndexEntry> entries;       ///< in their order; places whose slot is outside or doubled are left out

  bool operator==(const LibraryIndex&) const = default;
};

/// What is stored; missing or misshapen values are empty. False if the store can't be read now.
bool ReadLibraryIndex(std::u16string_view printer_name, LibraryIndex* index);
/// Replaces all of it, as one. False: it is as it was. `index` has a driver; its count is that of its entries.
bool WriteLibraryIndex(std::u16string_view printer_name, const LibraryIndex& index);

/// The user's other queues whose lists have the file too, by the names of their keys. False if the store can't be read
/// now.
bool OtherListsOf(std::u16string_view printer_name, const FileLocation& location, std::vector<std::u16string>* names);

/// Files that a running save is about to make, or to delete once the list names others, at most kLibraryCapacity: kept
/// in the registry meanwhile, so that what a killed program leaves behind is known. Replaces what was noted.
bool NoteUnfinishedFiles(std::u16string_view printer_name, const std::vector<FileLocation>& files);
std::vector<FileLocation> ReadUnfinishedFiles(std::u16string_view printer_name);

/// Folders that the user chose last.
enum class LastFolder : uint8_t { kSaved, kRegistered };
/// Empty if there is none.
std::u16string ReadLastFolder(std::u16string_view printer_name, LastFolder which);
bool WriteLastFolder(std::u16string_view printer_name, LastFolder which, std::u16string_view folder);

/// The settings file that queues added by the user start from; an empty path if there is none.
std::u16string ReadStartFile();
/// An empty path: queues start with their defaults again.
bool WriteStartFile(std::u16string_view path);

}  // namespace heron
