// The dialogs that carry the identity of a job: secure print (1800), box (2001), authentication and department (2950).
//
// Nothing is stored before the last check has passed. The third works on a copy of the settings.
#pragma once

#include "generated/texts.h"
#include "pages/identity_fields.h"
#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

/// A dialog of typed fields alone: OK checks them all, then stores them and ends.
class IdentityDialog : public LogicBase {
 protected:
  /// `fields` outlives the dialog.
  IdentityDialog(SheetContext& sheet, std::span<const IdentityField> fields) : sheet_(sheet), fields_(fields) {}

  void OnInitialise() override { LimitFields(dialog(), fields_); }
  void OnClicked(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override { return AcceptsIdentityKey(fields_, id, key); }

  virtual bool Check() = 0;
  virtual void Store() = 0;

  const UiState& ui() const { return sheet_.ui(); }
  void ShowText(ControlId field, TextSetting setting) { dialog().SetText(field, GetText(ui(), setting)); }
  void StoreText(ControlId field, TextSetting setting) { SetText(ui(), setting, FieldText(dialog(), fields_, field)); }

 private:
  SheetContext& sheet_;
  std::span<const IdentityField> fields_;
};

class SecurePrintDialog : public IdentityDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kSecurePrint;
  explicit SecurePrintDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  bool Check() override;
  void Store() override;

 private:
  PasswordFields password_{1802, 1808, TextSetting::kSecurePassword};
};

class BoxDialog : public IdentityDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kBox;
  explicit BoxDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  bool Check() override;
  void Store() override;
};

class AuthenticationDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kAuthentication;
  explicit AuthenticationDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  void OnGroupShown(uint8_t group) override;

 private:
  bool Check();
  bool CheckUserName();
  bool CheckPassword(const PasswordFields& password, TextNumber title);

  PasswordFields user_{2958, 2959, TextSetting::kAuthPassword};
  PasswordFields department_{2966, 2967, TextSetting::kDepartmentPassword};
};

}  // namespace heron::pages
