#include "pages/layout_dialog.h"

namespace heron::pages {

using engine::Setting;

namespace {

constexpr ControlId kLayout = 2902;
constexpr ControlId kOrder = 2904;
constexpr ControlId kBorder = 2906;

enum Group : uint8_t { kLayoutGroup, kOrderGroup, kBorderGroup };
constexpr ShownControl kControls[] = {{kLayout, kLayoutGroup}, {kOrder, kOrderGroup}, {kBorder, kBorderGroup}};

constexpr uint16_t kLandscape = 2;

/// As kLayoutPictures, of the other lists.
constexpr uint32_t kOrderPictures = 17010;
constexpr uint32_t kBorderPictures = 17020;

bool IsTwoPages(uint16_t layout) {
  return layout == 1 || layout == 8;
}

/// The rows of the order that go with a layout; its list has a row for each direction of reading and orientation.
struct OrderRows {
  size_t first, last;
};
OrderRows OrderRowsOf(const UiState& ui) {
  if (!IsTwoPages(Setting<u"lpLayout">(ui))) return {4, 7};
  return Setting<u"lpOrientation">(ui) == kLandscape ? OrderRows{2, 3} : OrderRows{0, 1};
}

}  // namespace

LayoutDialog::LayoutDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

bool LayoutDialog::Offers(ControlId list, size_t item) {
  if (list == kLayout) {
    return engine::GetControlBlock(engine(), list)->Items()[item].value != kLayoutDetails &&
           SettingsView::Offers(list, item);
  }
  if (list != kOrder) return SettingsView::Offers(list, item);
  const OrderRows rows = OrderRowsOf(ui());
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
  const OrderRows rows = OrderRowsOf(ui());
  const auto items = engine::GetControlBlock(engine(), kOrder)->Items();
  bool stands = false;
  for (size_t i = rows.first; i <= rows.last && i < items.size(); ++i) stands |= items[i].value == order;
  if (!stands) order = IsTwoPages(layout) ? engine::GetControlDefault(engine(), kOrder) : uint16_t{3};
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
