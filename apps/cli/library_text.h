// Entries of the settings library as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "common/command.h"
#include "presets/preset_library.h"
#include "settings_text.h"

namespace heron::cli {

/// "standard", "own", "write-protected", "replaceable".
std::string KindOfEntry(const LibraryEntry& entry);

void PrintEntries(const SettingsLibrary& library, const std::vector<int>& places);
Json EntriesJson(const SettingsLibrary& library);
Json EntryJson(const LibraryEntry& entry, int place);

/// Place of the entry that the user names, by its name or else its number; throws exit code 5 if there is none.
int PlaceOfEntry(const SettingsLibrary& library, const std::string& wanted);

/// Name, file, comment and driver.
void PrintEntryHead(const LibraryEntry& entry);

/// The names in one of the lists that settings bring with them.
struct NamedList {
  std::string label;
  std::vector<std::string> names;
};
/// Watermarks, per-page lists that have pages, forms, user papers with their sizes.
std::vector<NamedList> ListsOf(const UiState& ui);
void PrintLists(const std::vector<NamedList>& lists);
/// Those that differ from what they are `now`. False if none does.
bool PrintListDifferences(const std::vector<NamedList>& lists, const std::vector<NamedList>& now);
Json ListsJson(const std::vector<NamedList>& lists);

}  // namespace heron::cli
