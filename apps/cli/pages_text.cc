// Shows per-page lists and chapter starts (pages_text.h).

#include "pages_text.h"

#include <algorithm>
#include <iostream>

#include "catalog/strings.h"
#include "engine/page_list.h"
#include "generated/texts.h"
#include "pages/chapter_pages.h"
#include "pages/page_rows.h"
#include "platform/api/text.h"

namespace heron::cli {
namespace {

constexpr uint16_t kTypeControl = engine::ControlId(u"lpInterSheetListPRNType");
constexpr uint16_t kTrayControl = engine::ControlId(u"lpInterSheetListTray");

/// Empty for a value that no option has: the tray of the document.
std::string LabelOf(uint16_t control, int16_t value) {
  const char16_t* label = engine::GetValueLabel(control, static_cast<uint16_t>(value));
  return label == nullptr ? std::string() : Printable(label);
}

Json ValueJson(uint16_t control, int16_t value) {
  return {{"value", static_cast<uint16_t>(value)}, {"label", LabelOf(control, value)}};
}

std::string NameOf(const UiState& ui, size_t number) {
  const PageList* list = pages::ListNumbered(ui, number);
  return list == nullptr ? std::string() : Printable(pages::NameOfList(*list));
}

/// Of the working list the rows at hand count, which its place in the store gets later.
size_t RowsOf(const UiState& ui, size_t number) {
  if (number == engine::WorkingList(ui)) return pages::WorkingRows(ui).size();
  const PageList* list = pages::ListNumbered(ui, number);
  return list == nullptr ? 0 : list->pageCount;
}

}  // namespace

std::string OneLine(std::u16string_view text) {
  std::string line = PrintableLines(text);
  for (size_t at; (at = line.find('\n')) != std::string::npos;) line.replace(at, 1, " ");
  const size_t first = std::min(line.find_first_not_of(' '), line.size());
  return line.substr(first, line.find_last_not_of(' ') + 1 - first);
}

std::string PageRowText(const PageEntry& row) {
  std::string text = Printable(pages::PagesOfRow(row)) + ": " + LabelOf(kTypeControl, row.type);
  const std::string tray = LabelOf(kTrayControl, row.tray);
  return tray.empty() ? text : text + ", " + tray;
}

Json PageListJson(const UiState& ui) {
  Json rows = Json::array();
  for (const PageEntry& row : pages::WorkingRows(ui)) {
    rows.push_back({{"row", rows.size() + 1},
                    {"pages", Printable(pages::PagesOfRow(row))},
                    {"type", ValueJson(kTypeControl, row.type)},
                    {"tray", ValueJson(kTrayControl, row.tray)},
                    {"conflict", row.stat == engine::kRowInConflict}});
  }
  const uint16_t number = engine::WorkingList(ui);
  return {{"list", number}, {"name", NameOf(ui, number)}, {"rows", rows}};
}

void PrintPageList(const UiState& ui) {
  constexpr size_t kNumberWidth = 4, kPagesWidth = 22, kTypeWidth = 22;
  const uint16_t number = engine::WorkingList(ui);
  std::cout << Heading("List " + std::to_string(number) + ", \"" + NameOf(ui, number) + '"') << '\n';
  if (pages::WorkingRows(ui).empty()) std::cout << "The list has no rows.\n";
  size_t row_number = 0;
  for (const PageEntry& row : pages::WorkingRows(ui)) {
    std::cout << Padded(std::to_string(++row_number), kNumberWidth)
              << Padded(Printable(pages::PagesOfRow(row)), kPagesWidth)
              << Padded(LabelOf(kTypeControl, row.type), kTypeWidth) << LabelOf(kTrayControl, row.tray)
              << (row.stat == engine::kRowInConflict ? "  (in conflict with the settings)" : "") << '\n';
  }
}

Json PageListsJson(const UiState& ui) {
  Json lists = Json::array();
  for (size_t number = 1; number <= kPageListCount; ++number)
    lists.push_back({{"number", number}, {"name", NameOf(ui, number)}, {"rows", RowsOf(ui, number)}});
  return {{"current", engine::WorkingList(ui)}, {"lists", lists}};
}

void PrintPageLists(const UiState& ui) {
  constexpr size_t kNumberWidth = 4, kNameWidth = 20;
  for (size_t number = 1; number <= kPageListCount; ++number) {
    const size_t rows = RowsOf(ui, number);
    std::cout << (number == engine::WorkingList(ui) ? "* " : "  ") << Padded(std::to_string(number), kNumberWidth)
              << Padded(NameOf(ui, number), kNameWidth) << rows << (rows == 1 ? " row" : " rows") << '\n';
  }
}

Json ChaptersJson(const UiState& ui) {
  return {{"pages", pages::ChapterPages(ui)}, {"text", platform::ToUtf8(pages::ChapterText(ui))}};
}

}  // namespace heron::cli
