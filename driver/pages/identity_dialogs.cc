#include "pages/identity_dialogs.h"

#include <algorithm>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "uistate/unnamed_params.h"

namespace heron::pages {

using engine::IsOn;
using engine::Setting;
using platform::kCancelButton;
using platform::kOkButton;

namespace {

std::u16string BadPrintable() {
  return TextOf(text::kBadCharacter) + TextOf(text::kUsePrintableOnly);
}

constexpr ControlId kSecureId = 2931;
constexpr ControlId kSecureLabel = 1801;
constexpr IdentityField kSecureFields[] = {
    {kSecureId, TextSetting::kSecureId}, {1802, TextSetting::kSecurePassword}, {1808, TextSetting::kSecurePassword}};

constexpr ControlId kBoxNumber = 2003;
constexpr ControlId kBoxFile = 2941;
constexpr IdentityField kBoxFields[] = {{kBoxNumber, TextSetting::kBoxNumber}, {kBoxFile, TextSetting::kBoxFileName}};

constexpr ControlId kUserName = 2956;
constexpr ControlId kDepartmentName = 2964;
constexpr IdentityField kAuthenticationFields[] = {
    {kUserName, TextSetting::kAuthUserName},  {2958, TextSetting::kAuthPassword},
    {2959, TextSetting::kAuthPassword},       {kDepartmentName, TextSetting::kDepartmentName},
    {2966, TextSetting::kDepartmentPassword}, {2967, TextSetting::kDepartmentPassword}};
constexpr ControlId kUserPicture = 2969;
constexpr ControlId kDepartmentPicture = 2970;
/// The symbols of the status panel.
struct Symbol {
  uint32_t image, mask;
};
constexpr Symbol kUserInUse = {15642, 15641};
constexpr Symbol kDepartmentInUse = {15644, 15643};
enum Group : uint8_t { kUserGroup, kDepartmentGroup };
constexpr ShownControl kAuthenticationControls[] = {{engine::ControlId(u"UserAuth_Check"), kUserGroup},
                                                    {engine::ControlId(u"lpAuthUserMode.Shared"), kUserGroup},
                                                    {engine::ControlId(u"lpAuthUserMode.LoggedIn"), kUserGroup},
                                                    {engine::ControlId(u"SecMana_Check"), kDepartmentGroup}};

/// Settings without a key: whether the field of the user's, and of the department's password hides what is typed.
const uint16_t* HidesUserPassword(const UiState& ui) {
  return FieldsOf(ui, ParamIndexOf(param::kHidesUserPassword)).value;
}
const uint16_t* HidesDepartmentPassword(const UiState& ui) {
  return FieldsOf(ui, ParamIndexOf(param::kHidesDepartmentPassword)).value;
}

}  // namespace

void IdentityDialog::OnClicked(ControlId id) {
  if (id == kCancelButton) return dialog().End(id);
  if (id != kOkButton || !Check()) return;
  Store();
  dialog().End(id);
}

// -- secure print

SecurePrintDialog::SecurePrintDialog(SheetContext& sheet) : IdentityDialog(sheet, kSecureFields) {}

void SecurePrintDialog::OnInitialise() {
  IdentityDialog::OnInitialise();
  password_.Open(dialog(), ui(), IsOn<u"UnDisplayPW">(ui()));
  ShowText(kSecureId, TextSetting::kSecureId);
  if (Setting<u"lpOutput">(ui()) != value::lpOutput::kFax && !IsOn<u"Secur_Check">(ui())) return;
  for (const ControlId id : {kSecureLabel, password_.Hiding(), password_.Plain()}) dialog().Enable(id, false);
}

void SecurePrintDialog::Store() {
  StoreText(kSecureId, TextSetting::kSecureId);
  password_.Store(dialog(), ui());
}

bool SecurePrintDialog::Check() {
  const TextFault fault = FindFault(ui(), TextSetting::kSecureId, dialog().Text(kSecureId));
  if (fault == TextFault::kEmpty)
    return RefuseCleared(kSecureId, TextOf(text::kEnterSecurePrintId), TextOf(text::kSecurePrint));
  if (fault == TextFault::kBadCharacter) return RefuseCleared(kSecureId, BadPrintable(), TextOf(text::kSecurePrintId));
  if (password_.IsAllowed(dialog(), ui())) return true;
  password_.Clear(dialog());
  return RefuseCleared(password_.Visible(), BadPrintable(), TextOf(text::kPassword));
}

// -- box

BoxDialog::BoxDialog(SheetContext& sheet) : IdentityDialog(sheet, kBoxFields) {}

void BoxDialog::OnInitialise() {
  IdentityDialog::OnInitialise();
  ShowText(kBoxNumber, TextSetting::kBoxNumber);
  ShowText(kBoxFile, TextSetting::kBoxFileName);
}

void BoxDialog::Store() {
  StoreText(kBoxNumber, TextSetting::kBoxNumber);
  StoreText(kBoxFile, TextSetting::kBoxFileName);
}

/// Both fields may stay empty.
bool BoxDialog::Check() {
  const TextFault number = FindFault(ui(), TextSetting::kBoxNumber, dialog().Text(kBoxNumber));
  const TextFault file = FindFault(ui(), TextSetting::kBoxFileName, dialog().Text(kBoxFile));
  if (number == TextFault::kBadCharacter)
    return RefuseCleared(kBoxNumber, TextOf(text::kBadCharacter) + TextOf(text::kUseDigitsOnly),
                         TextOf(text::kBoxNumber));
  if (number == TextFault::kOnlyZeros) {
    return RefuseCleared(kBoxNumber,
                         platform::ExpandText(GetUiString(text::kEnterNumberFromTo),
                                              {GetUiString(text::kBoxNumber), u"1", u"999999999"}),
                         TextOf(text::kBoxNumber));
  }
  if (file == TextFault::kTooLong)
    return RefuseCleared(kBoxFile, TextOf(text::kFileNameTooLong), TextOf(text::kFileName));
  return file == TextFault::kNone || RefuseCleared(kBoxFile, TextOf(text::kBadCharacter), TextOf(text::kFileName));
}

// -- authentication and department

AuthenticationDialog::AuthenticationDialog(SheetContext& sheet)
    : SettingsView(sheet, kNumber, kAuthenticationControls) {}

void AuthenticationDialog::OnInitialise() {
  SettingsView::OnInitialise();
  LimitFields(dialog(), kAuthenticationFields);
  dialog().SetText(kUserName, GetText(ui(), TextSetting::kAuthUserName));
  dialog().SetText(kDepartmentName, GetText(ui(), TextSetting::kDepartmentName));
  user_.Open(dialog(), ui(), *HidesUserPassword(ui()) == 1);
  department_.Open(dialog(), ui(), *HidesDepartmentPassword(ui()) == 1);
  EvaluateAndApply();
}

/// No other rule applies here.
void AuthenticationDialog::OnChanged(ControlId id) {
  Store(id);
  RedisplayControl(id);
  EvaluateAndApply();
}

void AuthenticationDialog::OnGroupShown(uint8_t) {
  dialog().SetPicture(kUserPicture, IsOn<u"UserAuth_Check">(ui()) ? kUserInUse.image : 0, kUserInUse.mask);
  dialog().SetPicture(kDepartmentPicture, IsOn<u"SecMana_Check">(ui()) ? kDepartmentInUse.image : 0,
                      kDepartmentInUse.mask);
}

void AuthenticationDialog::OnButton(ControlId id) {
  if (id == kCancelButton) return dialog().End(id);
  if (id != kOkButton || !Check()) return;
  SetText(ui(), TextSetting::kAuthUserName, FieldText(dialog(), kAuthenticationFields, kUserName));
  SetText(ui(), TextSetting::kDepartmentName, FieldText(dialog(), kAuthenticationFields, kDepartmentName));
  user_.Store(dialog(), ui());
  department_.Store(dialog(), ui());
  dialog().End(id);
}

bool AuthenticationDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  return AcceptsIdentityKey(kAuthenticationFields, id, key);
}

bool AuthenticationDialog::CheckUserName() {
  const TextFault fault = FindFault(ui(), TextSetting::kAuthUserName, dialog().Text(kUserName));
  if (fault == TextFault::kEmpty)
    return RefuseCleared(kUserName, TextOf(text::kEnterUserName), TextOf(text::kUserAuthentication));
  if (fault == TextFault::kTooLong)
    return RefuseCleared(kUserName, TextOf(text::kUserNameTooLong), TextOf(text::kUserName));
  return fault == TextFault::kNone || RefuseCleared(kUserName, TextOf(text::kBadCharacter), TextOf(text::kUserName));
}

bool AuthenticationDialog::CheckPassword(const PasswordFields& password, TextNumber title) {
  if (password.IsAllowed(dialog(), ui())) return true;
  password.Clear(dialog());
  return RefuseCleared(password.Visible(), BadPrintable(), TextOf(title));
}

bool AuthenticationDialog::Check() {
  if (!CheckPassword(user_, text::kUserPassword)) return false;
  const bool logs_in =
      Setting<u"lpAuthUserMode">(ui()) == value::lpAuthUserMode::kLoggedIn && IsOn<u"UserAuth_Check">(ui());
  if (logs_in && !CheckUserName()) return false;
  if (!CheckPassword(department_, text::kDepartmentPassword)) return false;
  const TextFault name = FindFault(ui(), TextSetting::kDepartmentName, dialog().Text(kDepartmentName));
  return name != TextFault::kBadCharacter ||
         RefuseCleared(kDepartmentName, BadPrintable(), TextOf(text::kDepartmentName));
}

}  // namespace heron::pages
