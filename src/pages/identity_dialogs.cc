#include "pages/identity_dialogs.h"

#include <algorithm>

#include "catalog/strings.h"
#include "platform/text.h"

namespace heron::pages {

using engine::IsOn;
using engine::Setting;
using platform::kCancelButton;
using platform::kOkButton;

namespace {

// Texts that several of the checks show.
constexpr uint32_t kBadCharacter = 21013;
constexpr uint32_t kUsePrintable = 25203;

constexpr uint16_t kFax = 1;  ///< of lpOutput

std::u16string BadPrintable() {
  return TextOf(kBadCharacter) + TextOf(kUsePrintable);
}

constexpr ControlId kSecureId = 2931;
constexpr ControlId kSecureLabel = 1801;
constexpr IdentityField kSecureFields[] = {
    {kSecureId, FieldClass::kPrintable, 16}, {1802, FieldClass::kPrintable, 8}, {1808, FieldClass::kPrintable, 8}};

constexpr ControlId kBoxNumber = 2003;
constexpr ControlId kBoxFile = 2941;
constexpr size_t kBoxFileLimit = 30;
constexpr uint32_t kBoxNumberTitle = 25301;
constexpr IdentityField kBoxFields[] = {{kBoxNumber, FieldClass::kDigit, 9},
                                        {kBoxFile, FieldClass::kName, kBoxFileLimit}};

constexpr ControlId kUserName = 2956;
constexpr ControlId kDepartmentName = 2964;
constexpr size_t kUserNameLimit = 64;
constexpr IdentityField kAuthenticationFields[] = {{kUserName, FieldClass::kName, kUserNameLimit},
                                                   {2958, FieldClass::kPrintable, 64},
                                                   {2959, FieldClass::kPrintable, 64},
                                                   {kDepartmentName, FieldClass::kPrintable, 8},
                                                   {2966, FieldClass::kPrintable, 8},
                                                   {2967, FieldClass::kPrintable, 8}};
constexpr ControlId kUserPicture = 2969;
constexpr ControlId kDepartmentPicture = 2970;
/// The symbols of the status panel.
struct Symbol {
  uint32_t image, mask;
};
constexpr Symbol kUserInUse = {15642, 15641};
constexpr Symbol kDepartmentInUse = {15644, 15643};
enum Group : uint8_t { kUserGroup, kDepartmentGroup };
constexpr ShownControl kAuthenticationControls[] = {
    {2952, kUserGroup}, {2953, kUserGroup}, {2954, kUserGroup}, {2962, kDepartmentGroup}};
constexpr uint16_t kLoginUser = 2;

/// Settings without a key: whether the field of the user's, and of the department's password hides what is typed.
const uint16_t* HidesUserPassword(const UiState& ui) {
  return FieldsOf(ui, ParamIndexOf(304)).value;
}
const uint16_t* HidesDepartmentPassword(const UiState& ui) {
  return FieldsOf(ui, ParamIndexOf(305)).value;
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
  if (Setting<u"lpOutput">(ui()) != kFax && !IsOn<u"Secur_Check">(ui())) return;
  for (const ControlId id : {kSecureLabel, password_.Hiding(), password_.Plain()}) dialog().Enable(id, false);
}

void SecurePrintDialog::Store() {
  StoreText(kSecureId, TextSetting::kSecureId);
  password_.Store(dialog(), ui());
}

bool SecurePrintDialog::Check() {
  const std::u16string name = dialog().Text(kSecureId);
  if (name.empty()) return RefuseCleared(kSecureId, TextOf(21701), TextOf(20025));
  if (!AllAllowed(FieldClass::kPrintable, name)) return RefuseCleared(kSecureId, BadPrintable(), TextOf(21700));
  if (AllAllowed(FieldClass::kPrintable, password_.Text(dialog()))) return true;
  password_.Clear(dialog());
  return RefuseCleared(password_.Visible(), BadPrintable(), TextOf(25204));
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
  const std::u16string number = dialog().Text(kBoxNumber);
  const std::u16string file = dialog().Text(kBoxFile);
  if (!AllAllowed(FieldClass::kDigit, number))
    return RefuseCleared(kBoxNumber, TextOf(kBadCharacter) + TextOf(21011), TextOf(kBoxNumberTitle));
  if (!number.empty() && number.find_first_not_of(u'0') == std::u16string::npos) {
    return RefuseCleared(kBoxNumber,
                         platform::ExpandText(GetUiString(21000), {GetUiString(kBoxNumberTitle), u"1", u"999999999"}),
                         TextOf(kBoxNumberTitle));
  }
  if (ByteLength(file) > kBoxFileLimit) return RefuseCleared(kBoxFile, TextOf(21725), TextOf(21726));
  if (!AllAllowed(FieldClass::kName, file)) return RefuseCleared(kBoxFile, TextOf(kBadCharacter), TextOf(21726));
  return true;
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
  RedisplayControl(id, 0);
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
  const std::u16string name = dialog().Text(kUserName);
  if (name.empty()) return RefuseCleared(kUserName, TextOf(21715), TextOf(21719));
  if (ByteLength(name) > kUserNameLimit) return RefuseCleared(kUserName, TextOf(21722), TextOf(21723));
  return AllAllowed(FieldClass::kName, name) || RefuseCleared(kUserName, TextOf(kBadCharacter), TextOf(21723));
}

bool AuthenticationDialog::CheckPassword(const PasswordFields& password, uint32_t title) {
  if (AllAllowed(FieldClass::kPrintable, password.Text(dialog()))) return true;
  password.Clear(dialog());
  return RefuseCleared(password.Visible(), BadPrintable(), TextOf(title));
}

bool AuthenticationDialog::Check() {
  if (!CheckPassword(user_, 21711)) return false;
  const bool logs_in = Setting<u"lpAuthUserMode">(ui()) == kLoginUser && IsOn<u"UserAuth_Check">(ui());
  if (logs_in && !CheckUserName()) return false;
  if (!CheckPassword(department_, 21712)) return false;
  return AllAllowed(FieldClass::kPrintable, dialog().Text(kDepartmentName)) ||
         RefuseCleared(kDepartmentName, BadPrintable(), TextOf(21710));
}

}  // namespace heron::pages
