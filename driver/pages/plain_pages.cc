#include "pages/plain_pages.h"

#include <algorithm>
#include <array>

#include "changes/reports.h"
#include "rules/controls.h"

namespace heron::pages {
namespace {

/// The engine's controls of a dialog, which are together in its table.
std::span<const ShownControl> ControlsOf(uint16_t dialog) {
  static constexpr auto kAll = [] {
    std::array<ShownControl, engine::kControlCount> all;
    for (size_t i = 0; i < all.size(); ++i) all[i] = {.id = engine::kControls[i].id};
    return all;
  }();
  static_assert(std::ranges::is_sorted(engine::kControls, {}, &engine::ControlRow::dialog));
  const auto stands_there = [dialog](const engine::ControlRow& row) { return row.dialog == dialog; };
  const auto first = std::find_if(engine::kControls.begin(), engine::kControls.end(), stands_there);
  const auto last = std::find_if_not(first, engine::kControls.end(), stands_there);
  return std::span(kAll).subspan(static_cast<size_t>(first - engine::kControls.begin()),
                                 static_cast<size_t>(last - first));
}

}  // namespace

UnbuiltPage::UnbuiltPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, ControlsOf(row.number)) {}

void UnbuiltPage::OnInitialise() {
  Page::OnInitialise();
  DisableAll();
}

void UnbuiltPage::OnActivate() {
  SetActiveDialog(number());
  ShowAll();
}

void VersionPage::OnInitialise() {
  Page::OnInitialise();
  constexpr ControlId kProduct = 1001;
  constexpr ControlId kVersion = 1003;
  dialog().SetText(kProduct, engine::ModelCaption());
  dialog().SetText(kVersion, u"Version : 02.00.00.00");  // the notice lines 1004 and 1005 are empty and stay
}

}  // namespace heron::pages
