#include "pages/save_dialog.h"

#include <algorithm>

#include "catalog/strings.h"
#include "platform/api/files.h"
#include "presets/fold_case.h"
#include "presets/recall.h"

namespace heron::pages {
namespace {

enum Control : ControlId { kName = 2502, kFolder = 2504, kBrowse = 2505, kComment = 2507 };

constexpr LibraryControls kControls = {.tabs = 2700, .rows = 2703, .upper = 2508, .lower = 2509};

}  // namespace

std::u16string ProposedFolder(const SettingsLibrary& library, LastFolder which) {
  std::u16string folder = ReadLastFolder(library.printerName, which);
  if (!folder.empty()) return folder;
  char16_t buffer[platform::kMaxPath];
  if (platform::DWORD length = platform::GetDocumentsFolderW(buffer, platform::kMaxPath);
      length > 0 && length < platform::kMaxPath)
    return {buffer, length};
  const platform::DWORD length = platform::GetSystemDirectoryW(buffer, platform::kMaxPath);
  return length < platform::kMaxPath ? std::u16string(buffer, length) : std::u16string();
}

SaveDialog::SaveDialog(SheetContext& sheet) : LibraryDialog(sheet, kControls) {}

void SaveDialog::OnInitialise() {
  if (!OpenLibrary(LibraryLoad::kHeads) || TellIfFull(library())) return dialog().End(platform::IDCANCEL);
  prepared_ = PrepareForSaving(sheet().ui(), sheet().resources.get(), *this);
  if (prepared_ == nullptr) return dialog().End(platform::IDCANCEL);
  dialog().SetTextLimit(kName, kLibraryNameLength);
  dialog().SetTextLimit(kComment, kLibraryCommentLength);
  dialog().SetText(kFolder, ProposedFolder(library(), LastFolder::kSaved));
  SetUpTabs();
  ShowSettings(prepared_.get());
  dialog().Focus(kName);
}

void SaveDialog::OnDestroy() {
  LibraryDialog::OnDestroy();
  FreeUiStateClone(prepared_);
}

void SaveDialog::OnButton(ControlId id) {
  if (id == kBrowse) Browse();
  if (id == platform::kOkButton) Save();
  if (id == platform::kCancelButton) dialog().End(id);
}

bool SaveDialog::MayBeNamed(const FileLocation& file) {
  const auto complain = [this](TextNumber text) {
    TellUser(library(), text::kSaveSettings, {text});
    return false;
  };
  if (!SameFolded(file.extension, u"vxs")) return complain(text::kSaveExtension);
  return CheckFileName(library(), file.name) &&
         (file.folder.size() <= kFolderLength || complain(text::kNotSavedInFolder));
}

void SaveDialog::Browse() {
  const std::u16string title = TextOf(text::kSaveAs);
  const std::u16string filter = TextOf(text::kSettingsFileFilter);
  const std::u16string folder = dialog().Text(kFolder);
  const std::u16string typed = dialog().Text(kName);
  const std::u16string name = typed.empty() ? typed : typed + u".vxs";
  const auto path =
      dialog().AskFileName({.saves = true, .title = title, .folder = folder, .name = name, .filter = filter});
  if (!path) return;
  const FileLocation file = LocationOf(*path);
  if (!MayBeNamed(file)) return;
  dialog().SetText(kFolder, file.folder);
  dialog().SetText(kName, file.name);
}

/// After any refusal the user is back in the name field; another name is the way out of most.
void SaveDialog::Save() {
  if (SaveSettingsAs(library(), *prepared_, dialog().Text(kFolder), dialog().Text(kName), dialog().Text(kComment)))
    return dialog().End(platform::kOkButton);
  dialog().Focus(kName);
  dialog().SelectText(kName, 0, std::u16string::npos);
}

}  // namespace heron::pages
