// The menu of the library button: what it offers, and what each of its commands does.
//
// A full library can't be saved to and says so. Every entry can be recalled whose folder can be reached.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/dialog/dialog.h"
#include "presets/preset_library.h"

namespace heron::pages {

/// Commands of the menu; entries follow by their place.
enum LibraryCommand : uint16_t {
  kEntriesHeading = 2581,
  kLibraryHeading = 2580,
  kSaveCommand = 2582,
  kRecallCommand = 2583,
  kOrganizeCommand = 2584,
  kRecallOptionsCommand = 2585,
  kSaveToFullCommand = 2586,
  kStandardEntries = 2600,  ///< + place
  kOwnEntries = 2625,       ///< + place
};

std::vector<platform::MenuItem> LibraryMenu(const SettingsLibrary& library);

/// Number of the small picture of an entry.
uint32_t PictureOfEntry(const LibraryEntry& entry);

/// Place of the entry that a command means, or -1.
int EntryOfCommand(uint16_t command);

}  // namespace heron::pages
