// Rows of the per-page lists (summary_builders.h).
#include <algorithm>

#include "engine/page_list.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "pages/summary_builders.h"

namespace heron::pages {
namespace {

using engine::IsOn;

constexpr std::u16string_view kPart = u"  ";
constexpr std::u16string_view kDeepPart = u"      ";
constexpr std::u16string_view kUnknown = u"--";
constexpr int kMostRows = 20;  ///< that are shown of a list

/// The working list has its rows in the state, the others in the store.
int RowCount(const UiState& ui, int number) {
  if (number == engine::WorkingList(ui)) return SlotAs<u"InterSheetListData_PageListNum", uint16_t>(ui);
  return ui.stores.pageLists->lists[number - 1].pageCount;
}

std::u16string_view TypeText(int16_t type) {
  namespace types = value::lpInterSheetListPRNType;
  switch (type) {
    case types::kBlankSheet:
      return GetUiString(text::kInsertBlankSheet);
    case types::kOneSided:
      return GetUiString(text::kOneSided);
    case types::kTwoSided:
      return GetUiString(text::kTwoSided);
    default:
      return kUnknown;
  }
}

void AddListNames(const UiState& ui, SummaryWriter& rows) {
  rows.Separator();
  rows.Row({}, text::kPerPageLists);
  for (int number = 1; number <= kPageListCount; ++number) {
    rows.Row(std::u16string(kPart).append(FieldText(ui.stores.pageLists->lists[number - 1].name)),
             GetUiString(RowCount(ui, number) == 0 ? text::kListEmpty : text::kListInUse));
  }
}

void AddCurrentRows(const UiState& ui, SummaryWriter& rows) {
  const int count = RowCount(ui, engine::WorkingList(ui));
  if (count > kPagesPerList) return;
  rows.Separator();
  rows.Row({}, text::kRowsOfCurrentList);
  for (const PageEntry& entry : CurrentPages(ui).first(static_cast<size_t>(std::min(count, kMostRows)))) {
    // "As document" and whatever else the list lacks has no text.
    const char16_t* tray =
        engine::GetValueLabel(engine::ControlId(u"lpInterSheetListTray"), static_cast<uint16_t>(entry.tray));
    rows.Row(kPart, text::kPages, FieldText(entry.page));
    rows.Row(kPart, text::kPrintType, TypeText(entry.type));
    rows.Row(kPart, text::kPaperTrayRow, tray == nullptr ? u"" : tray);
  }
  if (count <= kMostRows) return;
  rows.Row(kDeepPart, text::kMoreRows);
  rows.Row(std::u16string_view());
}

}  // namespace

void AddPageLists(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  const UiState& ui = input.ui;
  const bool on = IsOn<u"InterSheet_Check">(ui);
  rows.Row({}, text::kPerPageListRow, SwitchText(on));
  if (ui.stores.pageLists == nullptr) return;
  if (on) rows.Row({}, text::kCurrentList, FieldText(ui.stores.pageLists->lists[engine::WorkingList(ui) - 1].name));
  AddListNames(ui, rows);
  if (on) AddCurrentRows(ui, rows);
}

}  // namespace heron::pages
