// The dialogs behind the fax cover sheet's: sender (1235), position of the picture (1236), recipient (1238). Who runs
// them keeps what they change, and puts it back on Cancel.
#pragma once

#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

/// What the pointer does on a preview: its cursor, and the picture put where the left button is held. True if the
/// picture has moved. The sheet lies in the place of `id`.
bool TakeCoverPointer(const UiState& ui, platform::Dialog& dialog, ControlId id, const platform::PointerEvent& event);

class SenderDialog : public LogicBase {
 public:
  explicit SenderDialog(const UiState& ui) : ui_(ui) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;

 private:
  const UiState& ui_;
};

class PositionDialog : public LogicBase {
 public:
  explicit PositionDialog(const UiState& ui) : ui_(ui) {}

 protected:
  void OnInitialise() override { ShowPosition(); }
  void OnClicked(ControlId id) override;
  void OnPointer(ControlId id, const platform::PointerEvent& event) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;

 private:
  void ShowPosition();

  const UiState& ui_;
};

class CoverRecipientDialog : public SettingsView {
 public:
  explicit CoverRecipientDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnChanged(ControlId) override {}
  void OnStored(ControlId) override { EnableFields(); }
  void OnButton(ControlId id) override;

 private:
  void EnableFields();
  void TakeFirst();
};

}  // namespace heron::pages
