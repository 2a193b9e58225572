#include "pages/organize_dialog.h"

#include "catalog/strings.h"
#include "pages/save_dialog.h"

namespace heron::pages {
namespace {

enum Control : ControlId {
  kList = 2562,
  kName = 2564,
  kComment = 2566,
  kUp = 2569,
  kDown = 2570,
  kRemove = 2571,
  kRegister = 2572,
  kExport = 2577,
};

constexpr LibraryControls kControls = {.tabs = 2702,
                                       .rows = 2705,
                                       .upper = 2567,
                                       .lower = 2568,
                                       .list = kList,
                                       .find = 2575,
                                       .kind = 2573,
                                       .differences = 2576};

bool IsEditable(const LibraryEntry* entry) {
  return entry != nullptr && entry->identity.attributes == kOwnEntry && !entry->isAway;
}

}  // namespace

OrganizeDialog::OrganizeDialog(SheetContext& sheet) : LibraryDialog(sheet, kControls) {}

void OrganizeDialog::OnInitialise() {
  if (!OpenLibrary(LibraryLoad::kSettings)) return dialog().End(platform::IDCANCEL);
  dialog().SetTextLimit(kName, kLibraryNameLength);
  dialog().SetTextLimit(kComment, kLibraryCommentLength);
  SetUpTabs();
  FillEntries(nullptr);
  dialog().Focus(kList);
}

void OrganizeDialog::OnEntryShown(const LibraryEntry* entry) {
  const int place = SelectedPlace();
  dialog().SetText(kName, entry == nullptr ? std::u16string() : entry->displayName);
  dialog().SetText(kComment, entry == nullptr ? std::u16string() : entry->comment);
  dialog().Enable(kName, IsEditable(entry));
  dialog().Enable(kComment, IsEditable(entry));
  // In a list that doesn't show all, "above" and "below" aren't what they seem.
  dialog().Enable(kUp, place > 0 && !IsFiltered());
  dialog().Enable(kDown, place >= 0 && place + 1 < library().count && !IsFiltered());
  dialog().Enable(kRemove, entry != nullptr);
  dialog().Enable(kExport, entry != nullptr && !entry->isAway);
}

void OrganizeDialog::OnButton(ControlId id) {
  // The name is checked where the user leaves its field.
  if (id == platform::kOkButton || id == platform::kCancelButton) return Close();
  if (!MayLeaveEntry()) return;
  if (id == kUp) Move(LibraryDirection::kUp);
  if (id == kDown) Move(LibraryDirection::kDown);
  if (id == kRemove) Remove();
  if (id == kRegister) Register();
  if (id == kExport) Export();
}

bool OrganizeDialog::MayLeave(ControlId id, ControlId to) {
  return id != kName || to == 0 || StoreName();
}

bool OrganizeDialog::StoreName() {
  const LibraryEntry* entry = SelectedEntry();
  const std::u16string name = dialog().Text(kName);
  if (!IsEditable(entry) || name == entry->displayName) return true;
  FileLocation renamed = entry->location;
  const std::u16string comment = dialog().Text(kComment);
  const bool stored = RenameSettings(library(), SelectedPlace(), name);
  if (stored) {
    renamed.name = name;
    ShowLibrary(renamed);
    if (IsEditable(SelectedEntry())) dialog().SetText(kComment, comment);  // typed, and not stored yet
    return true;
  }
  if (PlaceOfFile(library(), renamed) < 0) {
    // Another program has removed it: there is nothing left to name.
    ShowLibrary(renamed);
    return true;
  }
  dialog().Focus(kName);
  dialog().SelectText(kName, 0, std::u16string::npos);
  return false;
}

/// A comment that can't be stored isn't held on to, so that the dialog can always be closed.
bool OrganizeDialog::StoreComment() {
  const LibraryEntry* entry = SelectedEntry();
  if (!IsEditable(entry)) return true;
  const FileLocation file = entry->location;
  const std::u16string comment = dialog().Text(kComment);
  if (comment == entry->comment) return true;
  const bool stored = CommentSettings(library(), SelectedPlace(), comment);
  ShowLibrary(file);
  return stored;
}

void OrganizeDialog::ShowLibrary(const FileLocation& selected) {
  FillEntries(&selected);
}

void OrganizeDialog::Move(LibraryDirection direction) {
  const FileLocation file = SelectedEntry()->location;
  MoveSettings(library(), SelectedPlace(), direction);
  ShowLibrary(file);
}

void OrganizeDialog::OnRowMoved(ControlId id, int from, int to) {
  if (id != kList || IsFiltered() || !MayLeaveEntry()) return;
  const LibraryEntry* entry = library().At(PlaceOfRow(from));
  if (entry == nullptr) return;
  const FileLocation file = entry->location;
  MoveSettingsTo(library(), PlaceOfRow(from), to);
  ShowLibrary(file);
}

/// The settings below take the place of the removed ones, or the last ones.
void OrganizeDialog::Remove() {
  const int place = SelectedPlace();
  const FileLocation file = SelectedEntry()->location;
  const LibraryEntry* next = library().At(place + 1) != nullptr ? library().At(place + 1) : library().At(place - 1);
  const FileLocation following = next == nullptr ? FileLocation() : next->location;
  RemoveSettings(library(), place);
  ShowLibrary(PlaceOfFile(library(), file) >= 0 ? file : following);
}

void OrganizeDialog::Register() {
  const std::u16string title = TextOf(text::kRegisterSettingsFile);
  const std::u16string filter = TextOf(text::kSettingsFileFilter);
  const std::u16string folder = ProposedFolder(library(), LastFolder::kRegistered);
  const auto path =
      dialog().AskFileName({.saves = false, .title = title, .folder = folder, .name = {}, .filter = filter});
  if (!path) return;
  const LibraryEntry* before = SelectedEntry();
  const FileLocation selected = before == nullptr ? FileLocation() : before->location;
  const bool registered = RegisterSettingsFile(library(), *path);
  ShowLibrary(registered ? LocationOf(*path) : selected);
}

void OrganizeDialog::Export() {
  const std::u16string title = TextOf(text::kExportSettings);
  const std::u16string filter = TextOf(text::kSettingsFileFilter);
  const std::u16string folder = ProposedFolder(library(), LastFolder::kRegistered);
  const std::u16string name = SelectedEntry()->displayName + u".vxs";
  const auto path =
      dialog().AskFileName({.saves = true, .title = title, .folder = folder, .name = name, .filter = filter});
  if (path) ExportSettings(library(), SelectedPlace(), *path);
}

void OrganizeDialog::Close() {
  if (MayLeaveEntry()) dialog().End(platform::kOkButton);
}

}  // namespace heron::pages
