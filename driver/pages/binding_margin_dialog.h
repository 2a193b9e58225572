// Dialog 2300: width of the binding margin on both sides, and how the page makes room for it.
#pragma once

#include "engine/sizes.h"
#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

class BindingMarginDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kBindingMargin;
  explicit BindingMarginDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnNotStarted() noexcept override { PutBack(); }
  void OnChanged(ControlId id) override;
  void OnNumber(ControlId id, uint16_t number) override;
  void OnButton(ControlId id) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;
  void OnGroupShown(uint8_t group) override;

 private:
  /// What the settings were when the dialog was opened.
  struct Kept {
    uint16_t bindMargin, marginMode, marginEqual, front, back;
  };
  /// What a range update had to change.
  struct Corrections {
    bool gaveUp = false;
    bool front = false;
    bool back = false;
  };

  void CopyFrontToBack();
  Corrections UpdateRanges();
  void TellCorrections(const Corrections& corrections);
  bool Validate(ControlId field);
  void PutBack() noexcept;

  Kept kept_{};
  engine::MarginRanges ranges_;
  Corrections waiting_;  ///< of the opening, until the first paint
};

}  // namespace heron::pages
