// Dialog 2900: pages per sheet, their order and border. What Cancel brings back is kept by the caller.
#pragma once

#include "generated/values.h"
#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

/// The item of the list of layouts that opens the dialog and is never a layout.
inline constexpr uint16_t kLayoutDetails = value::lpLayout::kDetails;

/// Picture of the first layout; those of the others follow in the list's order.
inline constexpr uint32_t kLayoutPictures = 17000;

class LayoutDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kLayoutDetails;
  explicit LayoutDialog(SheetContext& sheet);

 protected:
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  bool Offers(ControlId list, size_t item) override;
  uint32_t RowPicture(ControlId list, size_t item) override;
  void OnGroupShown(uint8_t group) override;
};

}  // namespace heron::pages
