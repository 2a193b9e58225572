// The summary of settings for people and programs (summary_text.h).
#include "summary_text.h"

#include <algorithm>
#include <iostream>

#include "platform/api/text.h"
#include "presets/fold_case.h"

namespace heron::cli {
namespace {

using pages::SummaryRow;
using pages::SummaryTab;

/// In the order of the tabs.
constexpr std::array<std::string_view, pages::kSummaryTabCount> kTabNames = {
    "paper", "per-page", "special", "overlay", "watermark", "quality", "font", "fax"};

std::vector<SummaryTab> TabsOf(std::optional<SummaryTab> tab) {
  if (tab) return {*tab};
  std::vector<SummaryTab> tabs;
  for (size_t i = 0; i < pages::kSummaryTabCount; ++i) tabs.push_back(static_cast<SummaryTab>(i));
  return tabs;
}

const char16_t* TitleOf(SummaryTab tab) {
  return GetUiString(pages::kSummaryTitles[static_cast<size_t>(tab)]);
}

bool IsLine(const SummaryRow& row) {
  return !row[0].empty() && row[0].find_first_not_of(u'-') == std::u16string::npos && row[0] == row[1];
}

void PrintRows(const pages::SummaryRows& rows) {
  constexpr size_t kIndent = 2, kMostLabel = 40;
  size_t width = 0;
  for (const SummaryRow& row : rows) {
    if (!IsLine(row) && !row[1].empty()) width = std::max(width, row[0].size());
  }
  width = std::min(width, kMostLabel);
  for (const SummaryRow& row : rows) {
    std::string line = std::string(kIndent, ' ') + Padded(Printable(row[0]), width) + "  " + Printable(row[1]);
    if (!row[2].empty()) line += "  " + Printable(row[2]);
    if (IsLine(row)) line.clear();
    line.resize(line.find_last_not_of(' ') + 1);
    std::cout << line << '\n';
  }
}

}  // namespace

SummaryTab TabNamed(const std::string& word) {
  const std::u16string text = platform::FromUtf8(word);
  std::string known;
  for (size_t i = 0; i < kTabNames.size(); ++i) {
    if (SameFolded(text, platform::FromUtf8(kTabNames[i])) || SameFolded(text, TitleOf(static_cast<SummaryTab>(i))) ||
        word == std::to_string(i))
      return static_cast<SummaryTab>(i);
    known += (i == 0 ? "" : ", ") + std::string(kTabNames[i]);
  }
  throw Failure(kUsage, "there is no tab \"" + Printable(word) + "\"; the tabs are " + known);
}

Json RowJson(const SummaryRow& row) {
  Json cells = Json::array();
  for (const std::u16string& cell : row) cells.push_back(platform::ToUtf8(cell));
  return cells;
}

Json SummaryJson(UiState& ui, std::optional<SummaryTab> tab) {
  Json tabs = Json::array();
  for (const SummaryTab shown : TabsOf(tab)) {
    Json rows = Json::array();
    for (const SummaryRow& row : pages::BuildSummary(ui, shown)) rows.push_back(RowJson(row));
    tabs.push_back({{"tab", static_cast<int>(shown)}, {"title", platform::ToUtf8(TitleOf(shown))}, {"rows", rows}});
  }
  return tabs;
}

void PrintSummary(UiState& ui, std::optional<SummaryTab> tab) {
  bool first = true;
  for (const SummaryTab shown : TabsOf(tab)) {
    if (!std::exchange(first, false)) std::cout << '\n';
    std::cout << Heading(Printable(TitleOf(shown))) << '\n';
    PrintRows(pages::BuildSummary(ui, shown));
  }
}

}  // namespace heron::cli
