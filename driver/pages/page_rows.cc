#include "pages/page_rows.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#include "engine/page_list.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "pages/page_text.h"

namespace heron::pages {

using engine::Control;
using engine::Engine;
using engine::PageTextError;
using engine::Setting;

namespace {

constexpr uint16_t kTypeControl = engine::ControlId(u"lpInterSheetListPRNType");
constexpr uint16_t kTrayControl = engine::ControlId(u"lpInterSheetListTray");

uint16_t& RowCount(const UiState& ui) {
  return SlotAs<u"InterSheetListData_PageListNum", uint16_t>(ui);
}

/// Rows of inserted sheets and rows of printed pages may name the same page.
bool InsertsSheets(int type) {
  return type == value::lpInterSheetListPRNType::kBlankSheet;
}

/// Appends the pages of the other rows of the class; false if they are more than fit.
bool AddPagesOfClass(const UiState& ui, RowNumber row, uint16_t type, std::vector<uint16_t>& numbers) {
  const std::span<const PageEntry> rows = WorkingRows(ui);
  for (size_t i = 0; i < rows.size(); ++i) {
    if (RowNumber(i) == row || InsertsSheets(rows[i].type) != InsertsSheets(type)) continue;
    const size_t known = numbers.size();
    numbers.resize(kMostPages);
    const int count = engine::ParsePageText(PagesOfRow(rows[i]), std::span(numbers).subspan(known));
    if (count < 0) return false;
    numbers.resize(known + static_cast<size_t>(count));
  }
  return true;
}

void SetPages(PageEntry& row, std::u16string_view text) {
  std::ranges::fill(row.page, u'\0');
  std::ranges::copy(text.substr(0, std::size(row.page) - 1), row.page);
}

/// What no control of a row edits has what the row settings have.
PageEntry RowOfSettings(const UiState& ui) {
  const auto number = [](uint16_t value) { return static_cast<int16_t>(value); };
  PageEntry row = {};
  row.type = number(Setting<u"lpInterSheetListPRNType">(ui));
  row.tray = number(Setting<u"lpInterSheetListTray">(ui));
  row.stat = engine::kRowValid;
  row.binding = number(Setting<u"lpInterSheetListBinding">(ui));
  row.bindPosit = number(Setting<u"lpInterSheetListBindPosit">(ui));
  row.staple = number(Setting<u"lpInterSheetListStaple">(ui));
  row.stapleStop = number(Setting<u"InterSheetListStapleStop">(ui));
  row.punch = number(Setting<u"lpInterSheetListPunch">(ui));
  row.mediaType = number(Setting<u"lpInterSheetListMediaType">(ui));
  row.paperWeight = number(Setting<u"lpInterSheetListPaperWeight">(ui));
  row.paperColor = number(Setting<u"lpInterSheetListPaperColor">(ui));
  row.punchHoles = number(Setting<u"lpInterSheetListPaperHoles">(ui));
  row.prnTabIndex = number(Setting<u"PrnTabIndex">(ui));
  row.prnTabIndexNo = number(Setting<u"lpPrnTabIndexNo">(ui));
  row.tabTextOrient = number(Setting<u"lpTabTextOrient">(ui));
  row.tabTextAlign = number(Setting<u"lpTabTextAlign">(ui));
  row.tabTextFontStyle = number(Setting<u"lpTabTextFontStyle">(ui));
  row.tabTextFontSize = number(Setting<u"TabTextFontSize">(ui));
  static_assert(sizeof row.tabTextFontName == 32 * sizeof(char16_t));
  std::memcpy(row.tabTextFontName, SlotAs<u"TabTextFontName", char16_t[32]>(ui), sizeof row.tabTextFontName);
  return row;
}

/// The number at the start of a text, as it is written there.
uint32_t FirstPage(const PageEntry& row) {
  uint32_t number = 0;
  for (const char16_t c : PagesOfRow(row)) {
    if (c < u'0' || c > u'9' || number > kMostPages) break;
    number = number * 10 + static_cast<uint32_t>(c - u'0');
  }
  return number;
}

constexpr uint32_t kNotOffered = engine::kItemHidden;

/// Place of a value in the list of a control that the page shows.
uint32_t ShownPlace(const Engine& engine, uint16_t control, int16_t value) {
  const auto items = engine::GetControlBlock(engine, control)->Items();
  const auto item = std::ranges::find(items, static_cast<uint16_t>(value), &ListItem::value);
  return item == items.end() ? kNotOffered : item->displayIndex;
}

/// Rows ascend by this number in a column.
uint32_t SortKey(const Engine& engine, RowColumn column, const PageEntry& row) {
  switch (column) {
    case RowColumn::kPages:
      return 2 * FirstPage(row) + (InsertsSheets(row.type) ? 1 : 0);
    case RowColumn::kType:
      return ShownPlace(engine, kTypeControl, row.type);
    case RowColumn::kTray:
      return ShownPlace(engine, kTrayControl, row.tray);
  }
  return 0;
}

}  // namespace

std::span<PageEntry> WorkingRows(const UiState& ui) {
  return CurrentPages(ui).first(std::min<size_t>(RowCount(ui), kMostRows));
}

std::u16string_view PagesOfRow(const PageEntry& row) {
  const std::u16string_view text(row.page, std::size(row.page));
  return text.substr(0, text.find(u'\0'));
}

// -- one row

uint8_t OpenRow(Engine& engine, RowNumber row) {
  for (const uint16_t control : {kTypeControl, kTrayControl})
    engine::SetControlValue(engine, control, engine::GetControlDefault(engine, control));
  if (row) {
    const PageEntry& opened = WorkingRows(*engine.ui)[*row];
    engine::SetControlValue(engine, kTypeControl, static_cast<uint16_t>(opened.type));
    engine::SetControlValue(engine, kTrayControl, static_cast<uint16_t>(opened.tray));
  }
  return RepairRow(engine);
}

uint8_t RepairRow(Engine& engine) {
  return engine::CheckPerPageRow(engine, true).failed;
}

RowPages CheckRowPages(const UiState& ui, std::u16string_view text, RowNumber row, uint16_t type) {
  PageNumbers read = ReadPageText(text, kMostPages);
  if (read.error != PageTextError::kNone) return {read.error, {}, {}};
  std::vector<uint16_t> all = read.numbers;
  if (!AddPagesOfClass(ui, row, type, all)) return {PageTextError::kTooMany, {}, {}};
  // Pages that only other rows repeat came with a list from elsewhere; this row can't mend them.
  std::vector<uint16_t> repeated = RepeatedPages(all);
  std::erase_if(repeated, [&](uint16_t page) { return std::ranges::find(read.numbers, page) == read.numbers.end(); });
  return {PageTextError::kNone, std::move(repeated), NormalPageText(std::move(read.numbers))};
}

size_t StoreRow(const Engine& engine, RowNumber row, std::u16string_view pages) {
  const UiState& ui = *engine.ui;
  const size_t number = row.value_or(WorkingRows(ui).size());
  if (number >= kMostRows) return kMostRows;
  PageEntry& place = CurrentPages(ui)[number];
  place = RowOfSettings(ui);
  SetPages(place, pages);
  if (!row) RowCount(ui) = static_cast<uint16_t>(number + 1);
  return number;
}

// -- the list

void RemoveRows(const UiState& ui, std::span<const size_t> rows) {
  const std::span<PageEntry> all = WorkingRows(ui);
  size_t kept = 0;
  for (size_t i = 0; i < all.size(); ++i) {
    if (std::ranges::find(rows, i) == rows.end()) all[kept++] = all[i];
  }
  std::ranges::fill(all.subspan(kept), PageEntry{});
  RowCount(ui) = static_cast<uint16_t>(kept);
}

bool MoveRow(const UiState& ui, size_t row, size_t to) {
  const std::span<PageEntry> all = WorkingRows(ui);
  if (row >= all.size() || to >= all.size()) return false;
  const auto at = [&](size_t place) { return all.begin() + static_cast<std::ptrdiff_t>(place); };
  if (row < to) std::rotate(at(row), at(row + 1), at(to + 1));
  if (to < row) std::rotate(at(to), at(row), at(row + 1));
  return true;
}

std::vector<size_t> SortRows(Engine& engine, RowColumn column, bool descending) {
  for (const uint16_t control : {kTypeControl, kTrayControl}) engine::ComputeItemStatus(engine, control);
  const std::span<PageEntry> rows = WorkingRows(*engine.ui);
  const std::vector<PageEntry> before(rows.begin(), rows.end());
  std::vector<size_t> order(rows.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::ranges::stable_sort(order, [&](size_t a, size_t b) {
    const uint32_t first = SortKey(engine, column, before[a]);
    const uint32_t second = SortKey(engine, column, before[b]);
    return descending ? second < first : first < second;
  });
  for (size_t i = 0; i < order.size(); ++i) rows[i] = before[order[i]];
  return order;
}

KeptRows KeepRows(const UiState& ui) {
  const std::span<const PageEntry> rows = WorkingRows(ui);
  return {engine::WorkingList(ui), {rows.begin(), rows.end()}};
}

bool PutRowsBack(const UiState& ui, const KeptRows& kept) {
  if (kept.list != engine::WorkingList(ui)) return false;
  const std::span<PageEntry> places = CurrentPages(ui);
  std::ranges::fill(std::ranges::copy(kept.rows, places.begin()).out, places.end(), PageEntry{});
  RowCount(ui) = static_cast<uint16_t>(kept.rows.size());
  return true;
}

// -- names

PageList* ListNumbered(const UiState& ui, size_t number) {
  const bool known = ui.stores.pageLists != nullptr && number >= 1 && number <= kPageListCount;
  return known ? &ui.stores.pageLists->lists[number - 1] : nullptr;
}

std::u16string NameOfList(const PageList& list) {
  const std::u16string_view name(list.name, std::size(list.name));
  return std::u16string(name.substr(0, name.find(u'\0')));
}

NameFault FindNameFault(const UiState& ui, size_t number, std::u16string_view name) {
  if (name.empty()) return NameFault::kEmpty;
  if (name.size() > kListNameLength) return NameFault::kTooLong;
  if (name.front() == u' ') return NameFault::kLeadingBlank;
  for (size_t other = 1; other <= kPageListCount; ++other) {
    const PageList* list = ListNumbered(ui, other);
    if (other != number && list != nullptr && NameOfList(*list) == name) return NameFault::kTaken;
  }
  return NameFault::kNone;
}

void RenameList(const UiState& ui, size_t number, std::u16string_view name) {
  PageList* list = ListNumbered(ui, number);
  if (list == nullptr) return;
  std::ranges::fill(list->name, u'\0');
  std::ranges::copy(name.substr(0, kListNameLength), list->name);
  engine::ShowPageListNames(ui);
}

}  // namespace heron::pages
