// The fax cover sheet: its dialog (1237), and behind it sender (1235), position of the picture (1236), recipient
// (1238).
//
// All work on a copy of the settings, which the page takes over after OK. Each of the three keeps what it may change
// and puts it back on Cancel.
#pragma once

#include "forms/cover_store.h"
#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

class CoverDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kCover;
  explicit CoverDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnChanged(ControlId) override {}
  void OnStored(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnRowSelected(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnPositionChanged(ControlId id) override;
  void OnPointer(ControlId id, const platform::PointerEvent& event) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;

 private:
  FaxCoverStore& store() const { return *ui().stores.faxCover; }
  void ShowFields();
  void ShowPositions();
  void EnableFields();
  void Repaint();
  void ShowRest();

  /// Whether the dialog may go on with a number, the template text or the picture's file.
  bool CheckNumber(ControlId field);
  void CheckTemplateText();
  bool CheckFile();

  void TakeNumber(ControlId field, uint32_t number);
  void TakePosition(ControlId field);
  void Browse();
  void RunSender();
  void RunRecipient();
  void RunPosition();
  void RestoreDefaults();
  void Confirm();

  bool checking_ = false;
};

}  // namespace heron::pages
