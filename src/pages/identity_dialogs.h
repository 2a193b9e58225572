// The dialogs that carry the identity of a job: secure print (1800), box (2001), authentication and department (2950).
//
// Nothing is stored before the last check has passed. The third works on a copy of the settings.
#pragma once

#include "pages/identity_fields.h"
#include "pages/settings_view.h"

namespace heron::pages {

class SecurePrintDialog : public LogicBase {
 public:
  static constexpr uint16_t kNumber = 1800;
  explicit SecurePrintDialog(SheetContext& sheet) : sheet_(sheet) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;

 private:
  bool Check();

  SheetContext& sheet_;
  PasswordFields password_{1802, 1808, TextSetting::kSecurePassword, SecretKind::kSecurePrint};
};

class BoxDialog : public LogicBase {
 public:
  static constexpr uint16_t kNumber = 2001;
  explicit BoxDialog(SheetContext& sheet) : sheet_(sheet) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;

 private:
  bool Check();

  SheetContext& sheet_;
};

class AuthenticationDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = 2950;
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
  bool CheckPassword(const PasswordFields& password, uint32_t title);

  PasswordFields user_{2958, 2959, TextSetting::kAuthPassword, SecretKind::kUser};
  PasswordFields department_{2966, 2967, TextSetting::kDepartmentPassword, SecretKind::kDepartment};
};

}  // namespace heron::pages
