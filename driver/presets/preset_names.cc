// Names and comments: what they may hold, and what a file of a name is (preset_library.h).
#include <algorithm>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/characters.h"
#include "platform/api/profile.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "presets/preset_library.h"

namespace heron {
namespace {

/// The characters that would come back from the code page as others, each once.
std::u16string LackingCharacters(std::u16string_view text) {
  constexpr size_t kNamed = 10;
  std::u16string lacking;
  size_t count = 0;
  while (!text.empty() && count < kNamed) {
    const std::u16string_view character = text.substr(0, platform::CharacterUnits(text));
    text.remove_prefix(character.size());
    std::string bytes;
    platform::AppendAnsi(character, &bytes);
    if (platform::FromAnsi(bytes) == character || lacking.find(character) != std::u16string::npos) continue;
    lacking.append(lacking.empty() ? u"" : u" ").append(character);
    ++count;
  }
  return lacking;
}

/// The texts that say what is wrong with a name.
struct NameTexts {
  TextNumber caption;
  TextNumber illegal;
  TextNumber missing;
};

/// The checks that every name goes through.
bool CheckCharacters(const SettingsLibrary& library, std::u16string_view name, const NameTexts& texts) {
  constexpr std::u16string_view kIllegal = u"\\/:*?\"<>|.";
  const auto is_control = [](char16_t c) { return c < u' ' || c == 0x7F; };
  const auto complain = [&](TextNumber text) {
    TellUser(library, texts.caption, {text});
    return false;
  };
  if (name.find_first_of(kIllegal) != std::u16string_view::npos) return complain(texts.illegal);
  if (std::ranges::any_of(name, is_control)) return complain(text::kNameHasControlCharacter);
  if (!CheckCodePage(library, name, texts.caption, text::kNameNotInCodePage)) return false;
  if (name.size() > kLibraryNameLength) return complain(text::kSaveNameTooLong);
  return !name.empty() || complain(texts.missing);
}

}  // namespace

bool IsOtherDisplayName(const SettingsLibrary& library, const LibraryEntry* own, std::u16string_view name) {
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry* entry = library.At(place);
    if (entry != own && SameFolded(entry->displayName, name)) return true;
  }
  return false;
}

std::optional<std::u16string> OtherListsText(const SettingsLibrary& library, const FileLocation& location,
                                             TextNumber text) {
  std::vector<std::u16string> queues;
  if (!OtherListsOf(library.printerName, location, &queues)) return std::nullopt;
  std::u16string names;
  for (const std::u16string& name : queues) {
    names.append(names.empty() ? u"" : u", ").append(1, u'"').append(name).append(1, u'"');
  }
  return names.empty() ? names : platform::ExpandText(GetUiString(text), {std::u16string_view(names)});
}

int PlaceOfFile(const SettingsLibrary& library, const FileLocation& location) {
  for (int place = 0; place < library.count; ++place) {
    if (SameLocation(library.At(place)->location, location)) return place;
  }
  return -1;
}

bool CheckCodePage(const SettingsLibrary& library, std::u16string_view checked, TextNumber caption, TextNumber text) {
  const std::u16string lacking = LackingCharacters(checked);
  if (lacking.empty()) return true;
  const std::u16string message =
      platform::ExpandText(GetUiString(text), {int64_t{platform::GetACP()}, std::u16string_view(lacking)});
  library.view.Show({GetUiString(caption), message, false});
  return false;
}

bool CheckSaveName(const SettingsLibrary& library, const std::u16string& folder, std::u16string_view name) {
  const auto complain = [&](TextNumber text) {
    TellUser(library, text::kSaveSettings, {text});
    return false;
  };
  if (!CheckFileName(library, name)) return false;
  const FileLocation location{folder, std::u16string(name)};
  // The settings that are replaced may have the name.
  const LibraryEntry* entry = library.At(PlaceOfFile(library, location));
  if (IsOtherDisplayName(library, entry, name)) return complain(text::kSaveNameTaken);
  if (!IsFolderWritable(folder)) return complain(text::kFolderNotWritable);
  const std::u16string path = location.Path();
  if (entry == nullptr && !FileExists(path)) return true;
  if (IsProtectedFile(path) || (entry != nullptr && entry->identity.attributes == kProtectedEntry))
    return complain(text::kSaveFileProtected);
  const std::optional<std::u16string> shared = OtherListsText(library, location, text::kAlsoReplacedFor);
  if (!shared) return complain(text::kNotSavedInFolder);
  return AskUser(library, text::kSaveSettings, TextsOf({text::kAskToReplaceFile}) + *shared) == UserAnswer::kYes;
}

bool CheckEntryName(const SettingsLibrary& library, int place, std::u16string_view name) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr) return name.empty() && library.count == 0;
  if (!CheckCharacters(library, name,
                       {text::kOrganizeSettings, text::kOrganizeNameIllegal, text::kOrganizeNameMissing}))
    return false;
  if (!IsOtherDisplayName(library, entry, name)) return true;
  TellUser(library, text::kOrganizeSettings, {text::kOrganizeNameTaken});
  return false;
}

bool CheckFileName(const SettingsLibrary& library, std::u16string_view name) {
  return CheckCharacters(library, name, {text::kSaveSettings, text::kSaveNameIllegal, text::kSaveNameMissing});
}

bool CheckCopyName(const SettingsLibrary& library, std::u16string_view name) {
  return CheckCharacters(library, name,
                         {text::kOrganizeSettings, text::kOrganizeNameIllegal, text::kOrganizeNameMissing});
}

}  // namespace heron
