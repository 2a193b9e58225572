// A copy of an entry for other users and queues (preset_library.h).
#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/files.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "presets/preset_library.h"

namespace heron {
namespace {

bool Complain(const SettingsLibrary& library, TextNumber text) {
  TellUser(library, text::kOrganizeSettings, {text});
  return false;
}

bool CheckTarget(const SettingsLibrary& library, const FileLocation& target) {
  if (!SameFolded(target.extension, u"vxs")) return Complain(library, text::kRegisterExtension);
  if (!CheckCopyName(library, target.name)) return false;
  if (PlaceOfFile(library, target) >= 0) return Complain(library, text::kOrganizeNameTaken);
  if (target.folder.size() > kFolderLength || !IsFolderWritable(target.folder))
    return Complain(library, text::kFolderNotWritable);
  return !IsProtectedFile(target.Path()) || Complain(library, text::kSaveFileProtected);
}

/// Asks if there is a file already; other queues may list it.
bool AgreesToReplace(const SettingsLibrary& library, const FileLocation& target) {
  if (!FileExists(target.Path())) return true;
  const std::optional<std::u16string> shared = OtherListsText(library, target, text::kAlsoReplacedFor);
  if (!shared) return Complain(library, text::kNotSavedInFolder);
  return AskUser(library, text::kOrganizeSettings, TextsOf({text::kAskToReplaceFile}) + *shared) == UserAnswer::kYes;
}

/// Whoever registers a standard file would be refused, so a copy never says that it is one.
platform::Profile CopyOf(const LibraryEntry& entry, std::u16string_view name) {
  platform::Profile file(entry.bytes);
  WriteLibraryName(file, name);
  WriteFileAttributes(file, kOwnEntry);
  return file;
}

}  // namespace

bool ExportSettings(const SettingsLibrary& library, int place, std::u16string_view path) {
  const LibraryEntry* entry = library.At(place);
  const FileLocation target = LocationOf(path);
  if (entry == nullptr || entry->isAway || !CheckTarget(library, target)) return false;
  // What is replaced is what the user was asked about: another program may write the file meanwhile.
  for (int i = 0; i < kLibraryAttempts; ++i) {
    const std::optional<std::string> asked_about = BytesOfFile(target);
    if (!AgreesToReplace(library, target)) return false;
    if (BytesOfFile(target) != asked_about) continue;
    return !library.writes ||
           platform::SaveProfile(target.Path().c_str(), CopyOf(*entry, target.name)) == platform::kErrorSuccess ||
           Complain(library, text::kSettingsFileNotCreated);
  }
  return Complain(library, text::kLibraryKeepsChanging);
}

}  // namespace heron
