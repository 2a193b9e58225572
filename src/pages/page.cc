#include "pages/page.h"

#include "catalog/strings.h"
#include "engine/commit.h"
#include "engine/control_tables.h"
#include "engine/page_list.h"
#include "engine/reports.h"
#include "library/library_recall.h"
#include "pages/library_menu.h"
#include "pages/paper_page.h"
#include "pages/plain_pages.h"
#include "platform/text.h"
#include "settings/printer_data.h"
#include "uistate/walk_store.h"

namespace heron::pages {
namespace {

constexpr ControlId kPaperView = 163;
constexpr ControlId kMachineView = 164;
constexpr ControlId kUpperPicture = 166;
constexpr ControlId kLowerPicture = 167;

std::u16string NameOf(ListStoreId store) {
  switch (store) {
    case ListStoreId::kPageLists:
      return TextOf(26425);
    case ListStoreId::kOverlays:
      return TextOf(26412);
    case ListStoreId::kWatermarks:
      return TextOf(26423);
    case ListStoreId::kFontSubst:
      return TextOf(32032);
    case ListStoreId::kFaxCover:
      return TextOf(26200);
    case ListStoreId::kUserPapers:
      return TextOf(26404);
  }
  return {};
}

/// What the sheet's result will be made of. False, with that of before, if memory runs out.
bool KeepApplied(SheetContext& sheet) {
  if (sheet.applied != nullptr)
    CopyUiState(*sheet.applied, sheet.ui());
  else
    sheet.applied = CloneUiState(sheet.ui());
  return sheet.applied != nullptr;
}

}  // namespace

void Page::OnInitialise() {
  SettingsView::OnInitialise();
  if (!Editable()) DisableAll();
  RepaintPictures();
}

void Page::OnActivate() {
  SetActiveDialog(number());
  engine::BindControls(engine(), ui());
  if (!Editable()) return;
  Rebuild();
  RepaintPictures();
}

/// Every page runs the same tail, which commits all settings, so that the order of the pages makes no difference.
bool Page::OnApply() {
  const uint16_t front = ui().head().activeDialogId;
  SetActiveDialog(number());
  engine::CommitSettings(engine(), this);
  if (front == number() && Editable()) Rebuild();  // its checks may have moved settings
  SetActiveDialog(front);
  engine::StoreWorkingList(ui());
  if (!StoreLists() || !KeepApplied(sheet())) return false;
  if (sheet().callback != nullptr)
    sheet().callback(sheet().sheet, platform::CPSFUNC_SET_RESULT, reinterpret_cast<platform::LPARAM>(sheet().lastPage),
                     1);
  return true;
}

/// True if the lists are stored, or the user agrees to do without: what he changed isn't dropped silently. The next
/// pages of the same Apply don't ask again.
bool Page::StoreLists() {
  constexpr uint32_t kQuestion = 32031;
  const bool locked = ui().head().printerDataLocked != 0;
  std::vector<ListStoreId> unwritten;
  if (WriteListStores(ui().stores, PrinterName(sheet().hPrinter), sheet().hPrinter, locked, &unwritten)) return true;
  if (!Editable() || sheet().doesWithoutLists) return true;
  std::u16string names;
  for (const ListStoreId store : unwritten) names.append(u"\n").append(NameOf(store));
  const std::u16string text = platform::ExpandText(GetUiString(kQuestion), {std::u16string_view(names)});
  constexpr platform::DWORD kFlags = platform::MB_YESNO | platform::MB_ICONEXCLAMATION | platform::MB_DEFBUTTON2;
  return sheet().doesWithoutLists = Tell(text, engine::ModelCaption(), kFlags) == platform::IDYES;
}

void Page::MarkChanged() {
  sheet().doesWithoutLists = false;
  dialog().MarkChanged();
}

void Page::OnDraw(ControlId id, platform::Canvas&, const platform::RECT&) {
  if (id == row_.firstPaint) engine::ShowDeferredReport(sheet().resolver(), this);
}

void Page::OnChanged(ControlId id) {
  if (id == kPaperView || id == kMachineView)
    SelectView(id);
  else
    Change(id);
}

void Page::OnButton(ControlId id) {
  if (id != 0 && id == row_.defaults) RestoreDefaults();
  if (id != 0 && id == row_.library) OpenLibraryMenu();
}

void Page::RepaintPictures() {
  dialog().Repaint(kUpperPicture);
  dialog().Repaint(kLowerPicture);
}

bool Page::Change(ControlId id) {
  const bool applied = engine::ResolveChange(sheet().resolver(), this, id).applied;
  MarkChanged();
  return applied;
}

void Page::TellNewConflicts() {
  if (engine::ValidatePerPageList(engine(), engine::Conflicts::kNew) <= 0) return;
  Tell(TextOf(22227), TextOf(20157), platform::MB_OK | platform::MB_ICONINFORMATION);
}

/// By now the focus has left any half-typed field for the button.
void Page::RestoreDefaults() {
  const Action action(sheet().resolver());
  ResetUnshown();
  Change(row_.defaults);
  dialog().Focus(row_.defaults);
}

/// Does nothing where the library can't be opened.
void Page::OpenLibraryMenu() {
  const SettingsLibraryPtr library = SettingsLibraryOpen(*this, ui(), sheet().resources.get(), LibraryLoad::kHeads);
  if (library == nullptr) return;
  const uint16_t command = dialog().PopupMenu(row_.library, LibraryMenu(*library));
  if (command == kSaveToFullCommand) TellIfFull(*library);
  if (const LibraryEntry* chosen = library->At(EntryOfCommand(command)); chosen != nullptr) Recall(chosen->location);
}

/// The list may have become another one while the menu was open: the entry is looked for, not counted.
void Page::Recall(const FileLocation& chosen) {
  const SettingsLibraryPtr library = SettingsLibraryOpen(*this, ui(), sheet().resources.get(), LibraryLoad::kSettings);
  if (library == nullptr) return;
  int place = 0;
  while (place < library->count && library->At(place)->location != chosen) ++place;
  engine::ResolveOutcome outcome;
  if (!RecallSettings(sheet().resolver(), this, *library, place, kDefaultRecallParts, &outcome)) return;
  engine::LoadPaperTable(ui());
  Rebuild();
  MarkChanged();
}

/// What the pictures show isn't a change of the job, but is kept with it.
void Page::SelectView(ControlId id) {
  const auto view = static_cast<uint16_t>(engine::RadioValue(id));
  if (engine::GetControlValue(engine(), id) == view) return;
  RepaintPictures();
  engine::SetControlValue(engine(), id, view);
  RedisplayControl(id, view);
}

std::unique_ptr<platform::DialogLogic> MakePage(SheetContext& sheet, const PageRow& row) {
  if (!row.isBuilt) return std::make_unique<UnbuiltPage>(sheet, row);
  if (row.number == kDocumentPages[0].number) return std::make_unique<PaperPage>(sheet, row);
  return std::make_unique<VersionPage>(sheet, row);
}

}  // namespace heron::pages
