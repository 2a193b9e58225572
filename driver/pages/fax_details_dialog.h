// Dialog 1820: printing along, send time, sub-address and sender ID of a fax.
//
// Its values are the settings' working ones while it is open; OK commits them, Cancel leaves the committed ones, from
// which the dialog begins.
#pragma once

#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

class FaxDetailsDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kFaxDetails;
  explicit FaxDetailsDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnDestroy() override;
  void OnChanged(ControlId) override {}
  void OnStored(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnPositionChanged(ControlId id) override;
  void OnTimer() override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;

 private:
  enum class Asked : uint8_t { kOnClick, kOnOk };
  /// Whether the dialog may go on with what field and check hold.
  bool Validate(ControlId check, Asked asked);
  void EnableFields();
  void ShowClock();
  void Confirm();
  void ShowNumber(ControlId field, int number);
};

}  // namespace heron::pages
