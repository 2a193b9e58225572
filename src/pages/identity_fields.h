// Fields of the dialogs that carry the identity of a job: what may be typed, what is checked on OK.
//
// Control keys pass every filter. Pasted text may hold anything: it is caught by the checks.
#pragma once

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

struct IdentityField {
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
/// What stands in one of the fields, cut to its limit.
std::u16string FieldText(const platform::Dialog& dialog, std::span<const IdentityField> fields, ControlId id);

/// A password in two fields at one place: one hides what is typed, one shows it.
class PasswordFields {
 public:
  PasswordFields(ControlId hiding, ControlId plain, TextSetting setting, SecretKind kind)
      : hiding_(hiding), plain_(plain), setting_(setting), kind_(kind) {}

  /// Shows the stored password in both and makes one of them visible: the hiding one if `hides`, or if nobody can be
  /// named as the owner of the settings.
  void Open(platform::Dialog& dialog, const UiState& ui, bool hides);
  std::u16string Text(const platform::Dialog& dialog) const { return dialog.Text(visible_); }
  ControlId Visible() const { return visible_; }
  ControlId Hiding() const { return hiding_; }
  ControlId Plain() const { return plain_; }
  void Clear(platform::Dialog& dialog) const;
  void Store(const platform::Dialog& dialog, const UiState& ui) const;

 private:
  ControlId hiding_, plain_;
  TextSetting setting_;
  SecretKind kind_;
  ControlId visible_ = 0;
};

}  // namespace heron::pages
