#include "pages/preset_menu.h"

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/text.h"

namespace heron::pages {
namespace {

using platform::MenuItem;

/// Pictures 12200 to 12223, each with its mask behind it.
enum Picture : uint32_t {
  kSavePicture = 12200,
  kRecallPicture = 12202,
  kOrganizePicture = 12204,
  kOptionsPicture = 12206,
  kStandardPicture = 12208,
  kOwnPicture = 12218,
  kLibraryPicture = 12220,
  kEntriesPicture = 12222,
};

MenuItem Command(uint16_t command, TextNumber text, Picture picture) {
  return {.command = command, .text = GetUiString(text), .picture = picture};
}

MenuItem Entry(const SettingsLibrary& library, int place) {
  const LibraryEntry& entry = *library.At(place);
  const bool standard = entry.identity.attributes == kStandardEntry;
  const int first = standard ? kStandardEntries : kOwnEntries;
  return {.command = static_cast<uint16_t>(first + place),
          .text = entry.displayName,
          .enabled = !entry.isAway,
          .picture = PictureOfEntry(entry)};
}

}  // namespace

uint32_t PictureOfEntry(const LibraryEntry& entry) {
  return entry.identity.attributes == kStandardEntry ? kStandardPicture : kOwnPicture;
}

std::vector<MenuItem> LibraryMenu(const SettingsLibrary& library) {
  const bool full = library.count >= kLibraryCapacity;
  std::vector<MenuItem> items;
  items.push_back({.command = kLibraryHeading,
                   .text = GetUiString(text::kLibraryHeading),
                   .enabled = false,
                   .picture = kLibraryPicture});
  items.push_back(Command(full ? kSaveToFullCommand : kSaveCommand, text::kSaveCommand, kSavePicture));
  items.push_back(Command(kRecallCommand, text::kRecallCommand, kRecallPicture));
  items.push_back(Command(kOrganizeCommand, text::kOrganizeSettings, kOrganizePicture));
  items.push_back({});
  items.push_back({.command = kEntriesHeading,
                   .text = platform::ExpandText(u"%s  [%d/%d]", {GetUiString(text::kSavedSettings),
                                                                 int64_t{library.count}, int64_t{kLibraryCapacity}}),
                   .enabled = false,
                   .picture = kEntriesPicture});
  for (int place = 0; place < library.count; ++place) items.push_back(Entry(library, place));
  items.push_back({});
  items.push_back(Command(kRecallOptionsCommand, text::kRecallOptionsCommand, kOptionsPicture));
  return items;
}

int EntryOfCommand(uint16_t command) {
  if (command >= kStandardEntries && command < kStandardEntries + kLibraryCapacity) return command - kStandardEntries;
  if (command >= kOwnEntries && command < kOwnEntries + kLibraryCapacity) return command - kOwnEntries;
  return -1;
}

}  // namespace heron::pages
