#include "pages/per_page_page.h"

#include <algorithm>
#include <array>

#include "catalog/strings.h"
#include "changes/reports.h"
#include "engine/page_list.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "pages/chapter_pages.h"
#include "pages/page_row_dialogs.h"
#include "platform/api/text.h"

namespace heron::pages {

using engine::PageTextError;
using engine::PageTextField;
using engine::Setting;
using platform::kCancelButton;
using platform::kNoRow;
using platform::kOkButton;
using platform::ListKey;

namespace {

constexpr ControlId kList = engine::kPerPageListControl, kListChoice = engine::ControlId(u"lpInterSheetList");
constexpr ControlId kRename = 248, kAdd = 250, kEdit = 251, kRemove = 252, kUp = 253, kDown = 254;
constexpr ControlId kUpPlace = 257, kDownPlace = 258;  // where other toolkits put the two
constexpr ControlId kChapterCheck = engine::ControlId(u"Chapter_Check"), kChapters = 315;
constexpr ControlId kLibrary = 256, kDefaults = engine::ControlId(u"restoreDefaults.perPage");

/// In the order in which they are shown.
enum Group : uint8_t {
  kFront,
  kFrontTray,
  kBack,
  kBackTray,
  kListUse,
  kListName,
  kRows,
  kChapter,
  kChapterText,
  kView
};

// clang-format off
constexpr ShownControl kControls[] = {
    {engine::ControlId(u"Front_Check"), kFront},
    {engine::ControlId(u"lpFrontCover.Blank"), kFront}, {engine::ControlId(u"lpFrontCover.Printed"), kFront},
    {engine::ControlId(u"lpFrontCoverTray"), kFrontTray},
    {engine::ControlId(u"Back_Check"), kBack},
    {engine::ControlId(u"lpBackCover.Blank"), kBack}, {engine::ControlId(u"lpBackCover.Printed"), kBack},
    {engine::ControlId(u"lpBackCoverTray"), kBackTray},
    {engine::ControlId(u"InterSheet_Check"), kListUse},
    {kListChoice, kListName},
    {kChapterCheck, kChapter},
    {engine::ControlId(u"previewMode.Paper"), kView}, {engine::ControlId(u"previewMode.Machine"), kView},
};
// clang-format on

constexpr platform::DWORD kNotice = platform::MB_OK | platform::MB_ICONINFORMATION;

// Small pictures: rows of the list, and the two buttons, enabled and disabled.
constexpr uint32_t kInsertedSheet = 14000, kOneSidedPage = 14009, kTwoSidedPage = 14010;
constexpr uint32_t kUpPicture = 10500, kDownPicture = 10501, kGreyPictures = 2;

uint32_t PictureOf(const PageEntry& row) {
  if (row.type == value::lpInterSheetListPRNType::kTwoSided) return kTwoSidedPage;
  return row.type == value::lpInterSheetListPRNType::kBlankSheet ? kInsertedSheet : kOneSidedPage;
}

/// Empty for a value that no option has: a row's tray may be the document's.
std::u16string LabelOf(uint16_t control, uint16_t value) {
  const char16_t* label = engine::GetValueLabel(control, value);
  return label == nullptr ? std::u16string() : std::u16string(label);
}

/// What all pages get that no row names.
platform::ListRow OtherPages(const UiState& ui) {
  const uint16_t type = Setting<u"lpPRNType">(ui);
  const bool two_sided = type == value::lpPRNType::kTwoSided || type == value::lpPRNType::kBooklet;
  return {.text = TextOf(text::kOtherPages),
          .cells = {LabelOf(engine::ControlId(u"lpPRNType"), type),
                    LabelOf(engine::ControlId(u"lpMediaSource"), Setting<u"lpMediaSource">(ui))},
          .picture = two_sided ? kTwoSidedPage : kOneSidedPage};
}

platform::ListRow ViewRow(const PageEntry& row) {
  return {.text = std::u16string(PagesOfRow(row)),
          .cells = {LabelOf(engine::ControlId(u"lpInterSheetListPRNType"), static_cast<uint16_t>(row.type)),
                    LabelOf(engine::ControlId(u"lpInterSheetListTray"), static_cast<uint16_t>(row.tray))},
          .picture = PictureOf(row),
          .grey = row.stat == engine::kRowInConflict};
}

}  // namespace

PerPagePage::PerPagePage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

// -- life

void PerPagePage::OnInitialise() {
  for (const ControlId place : {kUpPlace, kDownPlace}) dialog().Show(place, false);
  dialog().SetTextLimit(kChapters, kChapterTextLength);
  Page::OnInitialise();
  UpdateRowButtons();
}

/// Other pages may have brought rows into conflict.
void PerPagePage::OnActivate() {
  Page::OnActivate();
  if (!Editable()) return;
  engine::ValidatePerPageList(engine(), engine::Conflicts::kAll);
  ShowRows();
}

/// The working list goes back to its store whenever the page is left.
bool PerPagePage::OnDeactivate() {
  if (!Editable()) return true;
  if (!ValidateChapters()) return false;
  if (engine::IsOn<u"Chapter_Check">(ui()) && dialog().Text(kChapters).empty()) {
    Tell(TextOf(text::kNoChapterPages), TextOf(text::kChapters), platform::MB_OK | platform::MB_ICONEXCLAMATION);
    Setting<u"Chapter_Check">(ui()) = 0;
    Rebuild();
    dialog().Focus(kChapterCheck);
    MarkChanged();
    return false;
  }
  engine::StoreWorkingList(ui());
  return true;
}

bool PerPagePage::OnApply() {
  if (!Page::OnApply()) return false;
  undo_.reset();
  return true;
}

// -- showing

void PerPagePage::OnGroupShown(uint8_t group) {
  if (group == kRows) ShowRows();
  if (group == kChapterText) dialog().SetText(kChapters, ChapterText(ui()));
}

void PerPagePage::RefreshPerPageList() {
  ShowRows();
}

/// Keeps the selection, as far as there are rows for it.
void PerPagePage::ShowRows() {
  std::vector<platform::ListRow> rows = {OtherPages(ui())};
  for (const PageEntry& row : WorkingRows(ui())) rows.push_back(ViewRow(row));
  std::vector<int> selected = dialog().SelectedRows(kList);
  std::erase_if(selected, [&](int row) { return row < 1 || row >= static_cast<int>(rows.size()); });
  dialog().SetRows(kList, rows);
  if (!selected.empty()) dialog().SelectRows(kList, selected);
}

void PerPagePage::EnableControl(uint16_t id, bool available) {
  Page::EnableControl(id, available);
  const uint32_t grey = dialog().IsEnabled(id) ? 0 : kGreyPictures;
  if (id == kUp) dialog().SetPicture(kUp, kUpPicture + grey, 0);
  if (id == kDown) dialog().SetPicture(kDown, kDownPicture + grey, 0);
}

void PerPagePage::UpdateRowButtons() {
  for (const ControlId id : {kUp, kDown}) EnableControl(id, engine::IsControlAvailable(engine(), id));
}

// -- chapters

void PerPagePage::OnTextChanged(ControlId id) {
  if (id != kChapters) return Page::OnTextChanged(id);
  SetActiveDialog(number());
  if (dialog().Text(kChapters) != ChapterText(ui())) MarkChanged();
}

bool PerPagePage::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  return id != kChapters || AcceptsPageKey(key, kChapterTextLength);
}

/// To another window the focus may go unchecked: whoever leaves the page is asked again.
bool PerPagePage::MayLeave(ControlId id, ControlId to) {
  constexpr ControlId kUnchecked[] = {0, kCancelButton, kOkButton, kDefaults};
  return id != kChapters || std::ranges::count(kUnchecked, to) != 0 || ValidateChapters();
}

bool PerPagePage::RefuseChapters(const std::u16string& text) {
  return Refuse(kChapters, text, TextOf(text::kChapters));
}

/// Stores the chapter starts if the field is right; otherwise it keeps the focus and its text.
bool PerPagePage::ValidateChapters() {
  if (!Editable() || !dialog().IsEnabled(kChapters)) return true;
  const ChapterCheck checked = CheckChapters(dialog().Text(kChapters));
  if (checked.error != PageTextError::kNone) {
    dialog().Beep();
    return RefuseChapters(engine::PageTextErrorText(checked.error, PageTextField::kChapters));
  }
  if (!checked.repeated.empty()) return RefuseChapters(engine::DuplicatePagesText(checked.repeated));
  StoreChapters(ui(), checked.pages);
  return true;
}

void PerPagePage::OnDefaultsRestored(const engine::ResolveOutcome& outcome) {
  if (!outcome.applied) return;
  StoreChapters(ui(), {});
  dialog().SetText(kChapters, {});
}

// -- changes

void PerPagePage::OnChanged(ControlId id) {
  Page::OnChanged(id);
  if (id == kListChoice) lastRow_ = kNoRow;
}

void PerPagePage::OnButton(ControlId id) {
  switch (id) {
    case kRename:
      return Rename();
    case kAdd:
      return AddRow();
    case kEdit:
      return EditRow();
    case kRemove:
      return RemoveSelected();
    case kUp:
      return MoveSelected(-1);
    case kDown:
      return MoveSelected(1);
    case kLibrary:
      if (!ValidateChapters()) return;
      engine::StoreWorkingList(ui());
      return Page::OnButton(id);
    default:
      return Page::OnButton(id);
  }
}

void PerPagePage::Rename() {
  ListNameDialog name(sheet());
  if (RunOwned(ListNameDialog::kNumber, name) != platform::IDOK) return;
  Rebuild();
  engine::StoreWorkingList(ui());
  MarkChanged();
}

// -- selection

bool PerPagePage::PerPageRowSelected() const {
  return dialog().Focused() == kList && dialog().SelectedRow(kList) > 0;
}

/// View row 0 gives the selection back to the row that had it; a user who goes up from row 1 stays there.
void PerPagePage::RestSelection() {
  std::vector<int> rows = dialog().SelectedRows(kList);
  const bool other_pages = std::ranges::count(rows, 0) != 0;
  std::erase(rows, 0);
  if (!rows.empty()) {
    const int current = dialog().SelectedRow(kList);
    lastRow_ = current > 0 ? current : rows.front();
    if (other_pages) dialog().SelectRows(kList, rows);
  } else if (other_pages) {
    const int count = static_cast<int>(WorkingRows(ui()).size());
    const int target = leavesUpwards_ ? 1 : lastRow_;
    dialog().SelectRow(kList, target >= 1 && target <= count ? target : kNoRow);
  }
  leavesUpwards_ = false;
}

void PerPagePage::OnRowSelected(ControlId id) {
  if (id != kList) return Page::OnRowSelected(id);
  SetActiveDialog(number());
  RestSelection();
  if (Editable()) EvaluateAndApply();
}

void PerPagePage::OnRowClicked(ControlId id, int) {
  if (id == kList) OnRowSelected(id);
}

void PerPagePage::SelectAgain(int view_row) {
  const int count = static_cast<int>(WorkingRows(ui()).size());
  const int row = std::min(view_row, count);
  dialog().SelectRow(kList, row >= 1 ? row : kNoRow);
  lastRow_ = row >= 1 ? row : kNoRow;
}

/// After an edit of the rows: marks them, shows them, and selects one.
void PerPagePage::FinishEdit(int view_row) {
  engine::ValidatePerPageList(engine(), engine::Conflicts::kNew);
  ShowRows();
  SelectAgain(view_row);
  dialog().Focus(kList);
  EvaluateAndApply();
  MarkChanged();
}

// -- edits

void PerPagePage::AddRow() {
  if (WorkingRows(ui()).size() < kMostRows) return RunRowDialog({});
  Tell(TextOf(text::kPageListFull), TextOf(text::kPerPageSettings), kNotice);
}

void PerPagePage::EditRow() {
  const int row = dialog().SelectedRow(kList);
  if (row > 0) RunRowDialog(static_cast<size_t>(row - 1));
}

void PerPagePage::RunRowDialog(RowNumber row) {
  engine::ValidatePerPageList(engine(), engine::Conflicts::kAll);
  PageRowDialog edited(sheet(), row, OpenRow(engine(), row));
  if (RunOwned(PageRowDialog::kNumber, edited) != platform::IDOK) return;
  undo_ = KeepRows(ui());
  const size_t stored = StoreRow(engine(), row, edited.pages());
  const std::u16string notice = engine::RepairedRowText(engine(), {edited.repaired()});
  FinishEdit(static_cast<int>(stored) + 1);
  if (!notice.empty()) Tell(notice, TextOf(text::kPerPageSettings), kNotice);
}

void PerPagePage::RemoveSelected() {
  std::vector<size_t> rows;
  for (const int row : dialog().SelectedRows(kList)) {
    if (row > 0) rows.push_back(static_cast<size_t>(row - 1));
  }
  if (rows.empty()) return;
  undo_ = KeepRows(ui());
  RemoveRows(ui(), rows);
  FinishEdit(static_cast<int>(std::ranges::min(rows)) + 1);
}

void PerPagePage::MoveSelected(int step) {
  const int row = dialog().SelectedRow(kList);
  if (row > 0) MoveTo(row, row + step);
}

void PerPagePage::MoveTo(int view_row, int target) {
  const int count = static_cast<int>(WorkingRows(ui()).size());
  if (view_row < 1 || view_row > count || target < 1 || target > count) return dialog().Beep();
  undo_ = KeepRows(ui());
  MoveRow(ui(), static_cast<size_t>(view_row - 1), static_cast<size_t>(target - 1));
  FinishEdit(target);
}

void PerPagePage::OnRowMoved(ControlId id, int from, int to) {
  if (id == kList && Editable()) MoveTo(from, to);
}

void PerPagePage::OnHeadingClicked(ControlId id, int column) {
  if (id != kList || !Editable() || !dialog().IsEnabled(kList)) return;
  SetActiveDialog(number());
  if (column >= 0 && static_cast<size_t>(column) < kRowColumns && WorkingRows(ui()).size() >= 2)
    SortBy(static_cast<size_t>(column));
}

void PerPagePage::SortBy(size_t column) {
  const auto selected = static_cast<size_t>(dialog().SelectedRow(kList) - 1);
  const KeptRows before = KeepRows(ui());
  const std::vector<size_t> order = SortRows(engine(), static_cast<RowColumn>(column), descending_[column]);
  descending_[column] = !descending_[column];
  const auto place = std::ranges::find(order, selected);
  const int row = place == order.end() ? kNoRow : static_cast<int>(place - order.begin()) + 1;
  if (std::ranges::is_sorted(order)) return;  // nothing has moved
  undo_ = before;
  FinishEdit(row);
}

void PerPagePage::Undo() {
  if (!undo_ || !PutRowsBack(ui(), *undo_)) return dialog().Beep();
  undo_.reset();
  FinishEdit(dialog().SelectedRow(kList));
}

void PerPagePage::OnRowActivated(ControlId id) {
  if (id != kList || !Editable()) return;
  SetActiveDialog(number());
  EditRow();
}

bool PerPagePage::OnListKey(ControlId id, ListKey key) {
  if (id != kList || !Editable()) return false;
  SetActiveDialog(number());
  switch (key) {
    case ListKey::kDelete:
      return RemoveSelected(), true;
    case ListKey::kUndo:
      return Undo(), true;
    case ListKey::kUp:
      leavesUpwards_ = dialog().SelectedRow(kList) == 1;
      return false;
    case ListKey::kPageUp:
    case ListKey::kHome:
      leavesUpwards_ = true;
      return false;
    default:
      return false;
  }
}

}  // namespace heron::pages
