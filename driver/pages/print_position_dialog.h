// Dialog 2355: where the image of a short sheet is placed in the feed direction.
#pragma once

#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

class PrintPositionDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kPrintPosition;
  explicit PrintPositionDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnGroupShown(uint8_t group) override;

 private:
  uint16_t before_ = 0;
};

}  // namespace heron::pages
