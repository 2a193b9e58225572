#include "pages/layout_dialog.h"

#include "engine/sizes.h"

namespace heron::pages {

using engine::Setting;

namespace {

constexpr ControlId kLayout = engine::ControlId(u"lpLayout.dialog");
constexpr ControlId kOrder = engine::ControlId(u"lpOrder.dialog");
constexpr ControlId kBorder = engine::ControlId(u"lpBorder2.dialog");

enum Group : uint8_t { kLayoutGroup, kOrderGroup, kBorderGroup };
constexpr ShownControl kControls[] = {{kLayout, kLayoutGroup}, {kOrder, kOrderGroup}, {kBorder, kBorderGroup}};

/// As kLayoutPictures, of the other lists.
constexpr uint32_t kOrderPictures = 17010;
constexpr uint32_t kBorderPictures = 17020;

}  // namespace

LayoutDialog::LayoutDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

bool LayoutDialog::Offers(ControlId list, size_t item) {
  if (list == kLayout) {
    return engine::GetControlBlock(engine(), list)->Items()[item].value != kLayoutDetails &&
           SettingsView::Offers(list, item);
  }
  if (list != kOrder) return SettingsView::Offers(list, item);
  const engine::OrderRows rows = engine::OrderRowsOf(ui());
  return item >= rows.first && item <= rows.last;
}

uint32_t LayoutDialog::RowPicture(ControlId list, size_t item) {
  const auto place = static_cast<uint32_t>(item);
  return place + (list == kLayout ? kLayoutPictures : list == kOrder ? kOrderPictures : kBorderPictures);
}

void LayoutDialog::OnChanged(ControlId id) {
  Store(id);
  if (id != kLayout) return ShowGroup(id == kOrder ? kOrderGroup : kBorderGroup);
  const uint16_t layout = Setting<u"lpLayout">(ui());
  uint16_t& order = Setting<u"lpOrder">(ui());
  const engine::OrderRows rows = engine::OrderRowsOf(ui());
  const auto items = engine::GetControlBlock(engine(), kOrder)->Items();
  bool offered = false;
  for (size_t i = rows.first; i <= rows.last && i < items.size(); ++i) offered |= items[i].value == order;
  if (!offered)
    order = engine::IsTwoPages(layout) ? engine::GetControlDefault(engine(), kOrder) : value::lpOrder::kRightThenDown;
  ShowGroup(kLayoutGroup);
  ShowGroup(kOrderGroup);
}

void LayoutDialog::OnButton(ControlId id) {
  if (id == platform::kOkButton || id == platform::kCancelButton) dialog().End(id);
}

void LayoutDialog::OnGroupShown(uint8_t group) {
  if (group == kBorderGroup) Setting<u"lpBorder">(ui()) = Setting<u"lpBorder2">(ui());
}

}  // namespace heron::pages
