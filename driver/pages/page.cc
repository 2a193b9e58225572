#include "pages/page.h"

#include "catalog/strings.h"
#include "changes/commit.h"
#include "changes/reports.h"
#include "engine/page_list.h"
#include "pages/device_page.h"
#include "pages/fax_page.h"
#include "pages/font_page.h"
#include "pages/organize_dialog.h"
#include "pages/overlay_page.h"
#include "pages/paper_page.h"
#include "pages/per_page_page.h"
#include "pages/preset_menu.h"
#include "pages/quality_page.h"
#include "pages/recall_dialogs.h"
#include "pages/save_dialog.h"
#include "pages/special_page.h"
#include "pages/version_page.h"
#include "pages/watermark_page.h"
#include "platform/api/text.h"
#include "presets/recall.h"
#include "preview/machine_view.h"
#include "preview/words.h"
#include "rules/control_tables.h"
#include "rules/dialogs.h"
#include "settings/printer_data.h"

namespace heron::pages {
namespace {

constexpr ControlId kPaperView = 163;
constexpr ControlId kMachineView = 164;
constexpr ControlId kUpperPicture = 166;
constexpr ControlId kLowerPicture = 167;
constexpr ControlId kDevicePicture = 816;

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

ListsKept KeepLists(SheetContext& sheet, Overtaken overtaken) {
  const bool locked = sheet.ui().head().printerDataLocked != 0;
  return KeepListStores(sheet.ui().stores, sheet.lists, PrinterName(sheet.hPrinter), sheet.hPrinter, locked, overtaken);
}

bool AgreesToLists(const AgreesTo& agrees, uint32_t question, const std::vector<ListStoreId>& stores) {
  std::u16string names;
  for (const ListStoreId store : stores) names.append(u"\n").append(NameOf(store));
  return agrees(platform::ExpandText(GetUiString(question), {std::u16string_view(names)}));
}

/// A list that another program has changed since it was read is replaced only if the user says so; nothing is locked
/// while he thinks.
bool StoreLists(SheetContext& sheet, const AgreesTo& agrees) {
  constexpr uint32_t kNotStored = 32031;
  constexpr uint32_t kChangedElsewhere = 32040;
  ListsKept kept = KeepLists(sheet, Overtaken::kLeave);
  if (sheet.ui().head().uiEditable == 0 || kept.All()) return true;
  if (!kept.overtaken.empty()) {
    if (!AgreesToLists(agrees, kChangedElsewhere, kept.overtaken)) return false;
    kept = KeepLists(sheet, Overtaken::kOverwrite);
  }
  if (kept.All() || sheet.doesWithoutLists) return true;
  return sheet.doesWithoutLists = AgreesToLists(agrees, kNotStored, kept.unwritten);
}

/// Runs a dialog of the settings library over the page.
template <typename Logic>
bool Confirmed(platform::Dialog& page, SheetContext& sheet) {
  Logic logic(sheet);
  return page.RunDialog(Logic::kNumber, &logic) == platform::IDOK;
}

}  // namespace

bool StoreSheet(SheetContext& sheet, const AgreesTo& agrees) {
  engine::StoreWorkingList(sheet.ui());
  if (!StoreLists(sheet, agrees)) return false;
  if (sheet.applied != nullptr)
    CopyUiState(*sheet.applied, sheet.ui());
  else
    sheet.applied = CloneUiState(sheet.ui());
  return sheet.applied != nullptr;
}

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
  const auto agrees = [this](const std::u16string& question) {
    return Tell(question, engine::ModelCaption(), kListsQuestion) == platform::IDYES;
  };
  if (!StoreSheet(sheet(), agrees)) return false;
  if (sheet().callback != nullptr)
    sheet().callback(sheet().sheet, platform::CPSFUNC_SET_RESULT, reinterpret_cast<platform::LPARAM>(sheet().lastPage),
                     1);
  return true;
}

void Page::TellChange() {
  sheet().touched = true;
  sheet().doesWithoutLists = false;
  dialog().MarkChanged();
}

void Page::MarkChanged() {
  TellChange();
  RepaintPictures();
}

void Page::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id == kUpperPicture) {
    upper_ = preview::PaintedUpperOf(ui());
    upper_place_ = place;
    preview::DrawUpperPicture(canvas, place, ui());
  }
  if (id == kLowerPicture) {
    preview::DrawStatusPanel(canvas, place, ui());
    lower_ = preview::DescribeStatus(ui(), {});
  }
  if (id == kDevicePicture) {
    preview::DrawMachineBase(canvas, place, ui());
    device_ = preview::StackMachine(preview::DescribeMachine(ui()));
  }
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
  if (dialog().Has(kUpperPicture)) RepaintUpper();
  if (dialog().Has(kLowerPicture)) RepaintLower();
  if (!dialog().Has(kDevicePicture)) return;
  const preview::MachinePicture machine = preview::DescribeMachine(ui());
  dialog().SetDescription(kDevicePicture, preview::SayMachine(machine, false));
  if (device_ != preview::StackMachine(machine)) dialog().Repaint(kDevicePicture);
}

void Page::RepaintUpper() {
  dialog().SetDescription(kUpperPicture, preview::SayUpperPicture(ui()));
  if (!upper_) return dialog().Repaint(kUpperPicture);
  const std::vector<platform::RECT> areas = preview::ChangedAreas(*upper_, preview::PaintedUpperOf(ui()), upper_place_);
  for (const platform::RECT& area : areas) dialog().RepaintArea(kUpperPicture, area);
}

/// Compared with what a drawing would show now: the order of the symbols is brought up to date by drawing alone.
void Page::RepaintLower() {
  const preview::StatusPicture next = preview::DescribeNextPaint(ui());
  dialog().SetDescription(kLowerPicture, preview::SayStatus(next));
  if (!lower_ || !preview::ShowsTheSame(*lower_, next)) dialog().Repaint(kLowerPicture);
}

bool Page::Change(ControlId id) {
  const bool applied = Resolve(id).applied;
  TellChange();
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
  const engine::ResolveOutcome outcome = Resolve(row_.defaults);
  TellChange();
  dialog().Focus(row_.defaults);
  OnDefaultsRestored(outcome);
}

/// Does nothing where the library can't be opened.
void Page::OpenLibraryMenu() {
  const SettingsLibraryPtr library = SettingsLibraryOpen(*this, ui(), sheet().resources.get(), LibraryLoad::kHeads);
  if (library == nullptr) return;
  const uint16_t command = dialog().PopupMenu(row_.library, LibraryMenu(*library));
  if (command == kSaveToFullCommand) TellIfFull(*library);
  if (const LibraryEntry* chosen = library->At(EntryOfCommand(command)); chosen != nullptr)
    Recall(chosen->location);
  else
    RunLibraryDialog(command);
}

void Page::RunLibraryDialog(uint16_t command) {
  if (command == kSaveCommand && Confirmed<SaveDialog>(dialog(), sheet())) MarkChanged();
  if (command == kOrganizeCommand && Confirmed<OrganizeDialog>(dialog(), sheet())) MarkChanged();
  if (command == kRecallOptionsCommand && Confirmed<RecallOptionsDialog>(dialog(), sheet())) MarkChanged();
  if (command == kRecallCommand && Confirmed<RecallDialog>(dialog(), sheet())) ShowRecalled();
}

void Page::ShowRecalled() {
  engine::LoadPaperTable(ui());
  Rebuild();
  MarkChanged();
}

/// The list may have become another one while the menu was open: the entry is looked for, not counted.
void Page::Recall(const FileLocation& chosen) {
  const SettingsLibraryPtr library = SettingsLibraryOpen(*this, ui(), sheet().resources.get(), LibraryLoad::kSettings);
  if (library == nullptr) return;
  int place = 0;
  while (place < library->count && library->At(place)->location != chosen) ++place;
  engine::ResolveOutcome outcome;
  if (!RecallSettings(sheet().resolver(), this, *library, place, RecallPartsOf(ui()), &outcome)) return;
  ShowRecalled();
}

/// What the pictures show isn't a change of the job, but is kept with it.
void Page::SelectView(ControlId id) {
  const auto view = static_cast<uint16_t>(engine::RadioValue(id));
  if (engine::GetControlValue(engine(), id) == view) return;
  engine::SetControlValue(engine(), id, view);
  RedisplayControl(id);
  RepaintPictures();
}

std::unique_ptr<platform::DialogLogic> MakePage(SheetContext& sheet, const PageRow& row) {
  switch (row.number) {
    case dialog::kDevicePage:
      return std::make_unique<DevicePage>(sheet, row);
    case dialog::kPaperPage:
      return std::make_unique<PaperPage>(sheet, row);
    case dialog::kPerPagePage:
      return std::make_unique<PerPagePage>(sheet, row);
    case dialog::kOverlayPage:
      return std::make_unique<OverlayPage>(sheet, row);
    case dialog::kWatermarkPage:
      return std::make_unique<WatermarkPage>(sheet, row);
    case dialog::kQualityPage:
      return std::make_unique<QualityPage>(sheet, row);
    case dialog::kFaxPage:
      return std::make_unique<FaxPage>(sheet, row);
    case dialog::kFontPage:
      return std::make_unique<FontPage>(sheet, row);
    case dialog::kSpecialPage:
      return std::make_unique<SpecialPage>(sheet, row);
    default:
      return std::make_unique<VersionPage>(sheet, row);
  }
}

}  // namespace heron::pages
