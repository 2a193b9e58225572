// Dialog 2320: shift of the image on the front and the back of the sheet, tenths of a millimetre.
#pragma once

#include <vector>

#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

class ImageShiftDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kImageShift;
  explicit ImageShiftDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnNotStarted() noexcept override { PutBack(); }
  void OnChanged(ControlId id) override;
  void OnNumber(ControlId id, uint16_t number) override;
  void OnButton(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;

 private:
  void EnableSides();
  void StoreNumber(ControlId field, uint16_t number);
  bool Validate(ControlId field);
  bool ValidateAll();
  void PutBack() noexcept;

  std::vector<uint16_t> kept_;  ///< the settings when the dialog was opened, in the order of the controls
};

}  // namespace heron::pages
