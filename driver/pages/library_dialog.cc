#include "pages/library_dialog.h"

#include <algorithm>
#include <new>

#include "catalog/strings.h"
#include "forms/form_check.h"
#include "pages/preset_menu.h"
#include "pages/summary_compare.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "preview/painter.h"
#include "preview/words.h"

namespace heron::pages {
namespace {

using platform::ListRow;

/// Small pictures before the rows, so that all labels begin at one place.
constexpr uint32_t kDiffersPicture = 12230;
constexpr uint32_t kSamePicture = 12232;

ListRow RowFrom(const SummaryRow& row) {
  return {.text = row[0], .cells = {row[1], row[2], {}}};
}

/// "On", "On, Front side"
std::u16string ValueOf(const SummaryRow& row) {
  return row[2].empty() ? row[1] : row[1] + u", " + row[2];
}

/// The shown settings' rows, those that differ from the current ones marked.
std::vector<ListRow> MarkedRows(const std::vector<ComparedRow>& compared) {
  std::vector<ListRow> rows;
  // Without a mark in the tab, the labels need no room for one.
  const bool marks = std::ranges::any_of(compared, &ComparedRow::Differs);
  for (const ComparedRow& row : compared) {
    if (row.in == RowOf::kNow) continue;
    rows.push_back(RowFrom(row.shown));
    if (marks) rows.back().picture = row.Differs() ? kDiffersPicture : kSamePicture;
  }
  return rows;
}

/// What differs alone, with the current value in the last column.
std::vector<ListRow> DifferingRows(const std::vector<ComparedRow>& compared) {
  std::vector<ListRow> rows;
  for (const ComparedRow& row : compared) {
    if (!row.Differs()) continue;
    rows.push_back(RowFrom(row.shown));
    if (row.in != RowOf::kShown)
      rows.back().cells.back() =
          platform::ExpandText(GetUiString(text::kNowValue), {std::u16string_view(ValueOf(row.now))});
  }
  if (rows.empty()) rows.push_back({.text = TextOf(text::kNothingDiffers), .cells = {}});
  return rows;
}

/// The sheet's choice between paper and machine.
void TakeView(UiState& settings, const UiState& sheet) {
  constexpr uint16_t kView = ParamNamed<u"PreviewMode Sel">();
  *FieldsOf(settings, kView).value = *FieldsOf(sheet, kView).value;
}

}  // namespace

bool LibraryDialog::Show(const engine::Report& report) {
  const platform::DWORD flags =
      report.asks ? platform::MB_YESNO | platform::MB_ICONQUESTION : platform::MB_OK | platform::MB_ICONINFORMATION;
  const int answer = Tell(std::u16string(report.text), std::u16string(report.caption), flags);
  return !report.asks || answer == platform::IDYES;
}

bool LibraryDialog::OpenLibrary(LibraryLoad load) {
  library_ = SettingsLibraryOpen(*this, sheet_.ui(), sheet_.resources.get(), load);
  return library_ != nullptr;
}

void LibraryDialog::OnDestroy() {
  shown_ = nullptr;
  SettingsLibraryClose(library_);
}

void LibraryDialog::SetUpTabs() {
  try {
    std::vector<ListRow> tabs;
    for (const TextNumber title : kSummaryTitles) tabs.push_back({.text = TextOf(title), .cells = {}});
    dialog().SetRows(controls_.tabs, tabs);
    dialog().SelectRow(controls_.tabs, 0);
  } catch (const std::bad_alloc&) {
    dialog().Show(controls_.tabs, false);  // the rest of the dialog is usable without a summary
  }
}

void LibraryDialog::ShowSettings(UiState* settings) {
  shown_ = settings;
  if (settings != nullptr) TakeView(*settings, sheet_.ui());
  ShowTab();
  std::u16string upper, lower;
  if (settings != nullptr) {
    const ShownPapers papers(*settings, sheet_.ui());
    upper = preview::SayUpperPicture(*settings);
    lower = preview::SayStatus(preview::DescribeNextPaint(*settings));
  }
  dialog().SetDescription(controls_.upper, upper);
  dialog().SetDescription(controls_.lower, lower);
  dialog().Repaint(controls_.upper);
  dialog().Repaint(controls_.lower);
}

void LibraryDialog::ShowTab() {
  const int tab = dialog().SelectedRow(controls_.tabs);
  std::vector<ListRow> rows;
  if (shown_ != nullptr && tab >= 0 && tab < static_cast<int>(kSummaryTabCount)) {
    const auto number = static_cast<SummaryTab>(tab);
    const ShownPapers papers(*shown_, sheet_.ui());
    const SummaryRows shown = BuildSummary(*shown_, number);
    if (controls_.differences == 0) {
      for (const SummaryRow& row : shown) rows.push_back(RowFrom(row));
    } else {
      const auto compared = CompareSummaries(shown, BuildSummary(sheet_.ui(), number));
      rows = dialog().IsChecked(controls_.differences) ? DifferingRows(compared) : MarkedRows(compared);
    }
  }
  dialog().SetRows(controls_.rows, rows);
}

void LibraryDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (shown_ == nullptr) return;
  const ShownPapers papers(*shown_, sheet_.ui());
  if (id == controls_.upper) preview::DrawUpperPicture(canvas, place, *shown_);
  if (id == controls_.lower) preview::DrawStatusPanel(canvas, place, *shown_);
}

bool LibraryDialog::IsFiltered() const {
  return controls_.find != 0 && !dialog().Text(controls_.find).empty();
}

/// The names and comments first: they need no rules.
bool LibraryDialog::Mentions(const LibraryEntry& entry, std::u16string_view wanted) const {
  if (ContainsFolded(entry.displayName, wanted) || ContainsFolded(entry.comment, wanted)) return true;
  if (entry.state == nullptr) return false;
  const ShownPapers papers(*entry.state, sheet_.ui());
  return SummaryMentions(*entry.state, wanted);
}

void LibraryDialog::FillEntries(const FileLocation* selected) {
  const std::u16string wanted = controls_.find == 0 ? std::u16string() : dialog().Text(controls_.find);
  std::vector<ListRow> rows;
  places_.clear();
  row_ = platform::kNoRow;
  for (int place = 0; place < library_->count; ++place) {
    const LibraryEntry& entry = *library_->At(place);
    if (!Mentions(entry, wanted)) continue;
    if (selected != nullptr && entry.location == *selected) row_ = static_cast<int>(places_.size());
    places_.push_back(place);
    rows.push_back({.text = entry.displayName, .cells = {}, .picture = PictureOfEntry(entry)});
  }
  if (row_ == platform::kNoRow && !places_.empty()) row_ = 0;
  dialog().SetRows(controls_.list, rows);
  dialog().SelectRow(controls_.list, row_);
  ShowEntry();
}

int LibraryDialog::PlaceOfRow(int row) const {
  return row >= 0 && row < static_cast<int>(places_.size()) ? places_[static_cast<size_t>(row)] : -1;
}

LibraryEntry* LibraryDialog::EntryOfRow(int row) const {
  return library_ == nullptr ? nullptr : library_->At(PlaceOfRow(row));
}

std::u16string LibraryDialog::KindText(const LibraryEntry& entry) const {
  const std::u16string path = ShortPath(entry.location.Path());  // it has one line
  if (entry.identity.attributes == kStandardEntry) return TextOf(text::kStandardSettings);
  if (!entry.isAway && entry.identity.attributes != kProtectedEntry) return path;
  return platform::ExpandText(GetUiString(entry.isAway ? text::kEntryAway : text::kEntryProtected),
                              {std::u16string_view(path)});
}

void LibraryDialog::ShowEntry() {
  const LibraryEntry* entry = SelectedEntry();
  ShowSettings(entry == nullptr ? nullptr : entry->state.get());
  dialog().SetText(controls_.kind, entry == nullptr ? std::u16string() : KindText(*entry));
  OnEntryShown(entry);
}

void LibraryDialog::OnRowSelected(ControlId id) {
  if (id == controls_.tabs) return ShowTab();
  if (id != controls_.list || dialog().SelectedRow(id) == row_) return;
  const int wanted = dialog().SelectedRow(id);
  const LibraryEntry* entry = EntryOfRow(wanted);
  const FileLocation file = entry == nullptr ? FileLocation() : entry->location;
  if (!MayLeaveEntry()) return dialog().SelectRow(id, row_);
  // What leaving has stored may have changed the list.
  const LibraryEntry* now = EntryOfRow(wanted);
  if (now == nullptr || now->location != file) return FillEntries(&file);
  row_ = wanted;
  dialog().SelectRow(id, row_);
  ShowEntry();
}

void LibraryDialog::OnClicked(ControlId id) {
  if (id != 0 && id == controls_.differences)
    ShowTab();
  else
    OnButton(id);
}

void LibraryDialog::OnTextChanged(ControlId id) {
  if (id == 0 || id != controls_.find) return OnText(id);
  if (!MayLeaveEntry()) return;
  const LibraryEntry* entry = SelectedEntry();
  const FileLocation selected = entry == nullptr ? FileLocation() : entry->location;
  FillEntries(&selected);
}

}  // namespace heron::pages
