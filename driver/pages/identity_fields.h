// Texts that carry the identity of a job: what each may hold (kIdentityRules), and the fields of the dialogs that edit
// them. The command line sets them by the same rules.
//
// Control keys pass every filter. Pasted text may hold anything: it is caught by the checks.
#pragma once

#include <algorithm>
#include <optional>
#include <span>

#include "pages/logic_base.h"
#include "pages/text_settings.h"
#include "settings/text_scramble.h"

namespace heron::pages {

enum class FieldClass : uint8_t {
  kPrintable,  ///< 0x20 to 0x7E without the double quote and the plus sign
  kDigit,
  kName,  ///< anything without the two; its limit counts bytes of the system's code page too
};

struct IdentityRule {
  TextSetting setting;
  FieldClass fieldClass;
  size_t limit;                         ///< characters
  std::optional<SecretKind> kind = {};  ///< of a password, which is stored scrambled
};

/// The two codes have no field; they hold what fits.
inline constexpr IdentityRule kIdentityRules[] = {
    {TextSetting::kSecureId, FieldClass::kPrintable, 16},
    {TextSetting::kSecurePassword, FieldClass::kPrintable, 8, SecretKind::kSecurePrint},
    {TextSetting::kSecureCodeA, FieldClass::kPrintable, 10},
    {TextSetting::kSecureCodeB, FieldClass::kPrintable, 10},
    {TextSetting::kBoxNumber, FieldClass::kDigit, 9},
    {TextSetting::kBoxFileName, FieldClass::kName, 30},
    {TextSetting::kAuthUserName, FieldClass::kName, 64},
    {TextSetting::kAuthPassword, FieldClass::kPrintable, 64, SecretKind::kUser},
    {TextSetting::kDepartmentName, FieldClass::kPrintable, 8},
    {TextSetting::kDepartmentPassword, FieldClass::kPrintable, 8, SecretKind::kDepartment},
};
constexpr const IdentityRule& RuleOf(TextSetting setting) {
  return *std::ranges::find(kIdentityRules, setting, &IdentityRule::setting);
}

/// What is wrong with a text, in the order in which it is looked for.
enum class TextFault : uint8_t { kNone, kEmpty, kTooLong, kBadCharacter, kOnlyZeros };

/// Whether `text` may be stored as `setting` in the settings `ui`. Only an identifier that the settings need may not be
/// empty: that of a secure print, the name of a user who logs in.
TextFault FindFault(const UiState& ui, TextSetting setting, std::u16string_view text);

/// The text as a person knows it: a password unscrambled.
std::u16string IdentityText(const UiState& ui, TextSetting setting);
void SetIdentityText(const UiState& ui, TextSetting setting, std::u16string_view text);

struct IdentityField {
  constexpr IdentityField(ControlId control, TextSetting setting)
      : id(control), fieldClass(RuleOf(setting).fieldClass), limit(RuleOf(setting).limit) {}

  ControlId id;
  FieldClass fieldClass;
  size_t limit;  ///< characters
};

bool IsAllowed(FieldClass field_class, char16_t character);
bool AllAllowed(FieldClass field_class, std::u16string_view text);
/// Bytes of a text in the system's code page.
size_t ByteLength(std::u16string_view text);
/// Whether a field takes a key. A key of a control that isn't among the fields is taken.
bool AcceptsIdentityKey(std::span<const IdentityField> fields, ControlId id, const platform::TypedKey& key);

/// Sets the limits of the fields on their controls.
void LimitFields(platform::Dialog& dialog, std::span<const IdentityField> fields);
/// The text of one of the fields, cut to its limit.
std::u16string FieldText(const platform::Dialog& dialog, std::span<const IdentityField> fields, ControlId id);

/// A password in two fields at one place: one hides what is typed, one shows it.
class PasswordFields {
 public:
  PasswordFields(ControlId hiding, ControlId plain, TextSetting setting)
      : hiding_(hiding), plain_(plain), setting_(setting) {}

  /// Shows the stored password in both and makes one of them visible: the hiding one if `hides`, or if the user can't
  /// be named as the owner of the settings.
  void Open(platform::Dialog& dialog, const UiState& ui, bool hides);
  std::u16string Text(const platform::Dialog& dialog) const { return dialog.Text(visible_); }
  /// Whether the password may be stored.
  bool IsAllowed(const platform::Dialog& dialog, const UiState& ui) const {
    return FindFault(ui, setting_, Text(dialog)) != TextFault::kBadCharacter;
  }
  ControlId Visible() const { return visible_; }
  ControlId Hiding() const { return hiding_; }
  ControlId Plain() const { return plain_; }
  void Clear(platform::Dialog& dialog) const;
  void Store(const platform::Dialog& dialog, const UiState& ui) const;

 private:
  ControlId hiding_, plain_;
  TextSetting setting_;
  ControlId visible_ = 0;
};

}  // namespace heron::pages
