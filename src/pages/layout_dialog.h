// Dialog 2900: pages per sheet, their order and border. What Cancel brings back is kept by the caller.
#pragma once

#include "pages/settings_view.h"

namespace heron::pages {

inline constexpr uint16_t kLayoutDetails = 20;  ///< item of list 125 that opens the dialog and is never a layout

/// Picture of the first layout; those of the others follow in the list's order.
inline constexpr uint32_t kLayoutPictures = 17000;

class LayoutDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = 2900;
  explicit LayoutDialog(SheetContext& sheet);

 protected:
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  bool Offers(ControlId list, size_t item) override;
  uint32_t RowPicture(ControlId list, size_t item) override;
  void OnGroupShown(uint8_t group) override;
};

}  // namespace heron::pages
