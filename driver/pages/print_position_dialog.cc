#include "pages/print_position_dialog.h"

namespace heron::pages {

using engine::Setting;

namespace {

constexpr ControlId kPicture = 2356;
constexpr ControlId kCentre = engine::ControlId(u"lpWidePaperPos.Center");
constexpr ShownControl kControls[] = {
    {engine::ControlId(u"lpWidePaperPos.LeadingEdge")}, {kCentre}, {engine::ControlId(u"lpWidePaperPos.TrailingEdge")}};

}  // namespace

PrintPositionDialog::PrintPositionDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

void PrintPositionDialog::OnInitialise() {
  SettingsView::OnInitialise();
  before_ = Setting<u"lpWidePaperPos">(ui());
  const bool shifts = engine::IsOn<u"ImageShift_Check">(ui()) && engine::IsOn<u"POD_Check">(ui());
  if (shifts) dialog().Enable(kCentre, false);
  if (Editable()) return;
  for (const ShownControl& radio : kControls) dialog().Enable(radio.id, false);
}

void PrintPositionDialog::OnChanged(ControlId id) {
  Store(id);
  RedisplayControl(id);
}

void PrintPositionDialog::OnButton(ControlId id) {
  if (id == platform::kCancelButton) Setting<u"lpWidePaperPos">(ui()) = before_;
  if (id == platform::kOkButton || id == platform::kCancelButton) dialog().End(id);
}

void PrintPositionDialog::OnGroupShown(uint8_t group) {
  constexpr uint32_t kPictures[] = {10230, 10232, 10231};
  constexpr uint32_t kMask = 10233;
  const uint16_t position = Setting<u"lpWidePaperPos">(ui());
  if (group == 0 && position < std::size(kPictures)) dialog().SetPicture(kPicture, kPictures[position], kMask);
}

}  // namespace heron::pages
