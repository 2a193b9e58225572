#include "pages/identity_fields.h"

#include <algorithm>

#include "engine/setting.h"
#include "generated/values.h"
#include "platform/api/text.h"

namespace heron::pages {
namespace {

constexpr size_t kLongestOwner = 32;

bool SelectsNothing(const platform::TypedKey& key) {
  return key.selection_start == key.selection_end;
}

bool IsNeeded(const UiState& ui, TextSetting setting) {
  if (setting == TextSetting::kSecureId) return true;
  return setting == TextSetting::kAuthUserName &&
         engine::Setting<u"lpAuthUserMode">(ui) == value::lpAuthUserMode::kLoggedIn &&
         engine::IsOn<u"UserAuth_Check">(ui);
}

}  // namespace

bool IsAllowed(FieldClass field_class, char16_t character) {
  if (field_class == FieldClass::kDigit) return character >= u'0' && character <= u'9';
  if (character == u'"' || character == u'+') return false;
  return field_class == FieldClass::kName || (character >= 0x20 && character <= 0x7E);
}

bool AllAllowed(FieldClass field_class, std::u16string_view text) {
  return std::ranges::all_of(text, [field_class](char16_t c) { return IsAllowed(field_class, c); });
}

size_t ByteLength(std::u16string_view text) {
  if (text.empty()) return 0;
  return static_cast<size_t>(
      platform::WideCharToMultiByte(platform::GetACP(), text.data(), static_cast<int>(text.size()), nullptr, 0));
}

TextFault FindFault(const UiState& ui, TextSetting setting, std::u16string_view text) {
  const IdentityRule& rule = RuleOf(setting);
  if (text.empty()) return IsNeeded(ui, setting) ? TextFault::kEmpty : TextFault::kNone;
  if (rule.fieldClass == FieldClass::kName && ByteLength(text) > rule.limit) return TextFault::kTooLong;
  if (!AllAllowed(rule.fieldClass, text)) return TextFault::kBadCharacter;
  if (rule.fieldClass == FieldClass::kDigit && text.find_first_not_of(u'0') == std::u16string_view::npos)
    return TextFault::kOnlyZeros;
  return text.size() > rule.limit ? TextFault::kTooLong : TextFault::kNone;
}

std::u16string IdentityText(const UiState& ui, TextSetting setting) {
  const IdentityRule& rule = RuleOf(setting);
  return rule.kind ? TextScramble(GetText(ui, setting), *rule.kind) : GetText(ui, setting);
}

void SetIdentityText(const UiState& ui, TextSetting setting, std::u16string_view text) {
  const IdentityRule& rule = RuleOf(setting);
  SetText(ui, setting, rule.kind ? TextScramble(text, *rule.kind) : std::u16string(text));
}

bool AcceptsIdentityKey(std::span<const IdentityField> fields, ControlId id, const platform::TypedKey& key) {
  const auto field = std::ranges::find(fields, id, &IdentityField::id);
  if (field == fields.end() || key.character < u' ') return true;
  if (!IsAllowed(field->fieldClass, key.character)) return false;
  if (!SelectsNothing(key)) return true;
  if (key.text.size() >= field->limit) return false;
  if (field->fieldClass != FieldClass::kName) return true;
  // Of the whole text, as half of a surrogate pair has no length of its own.
  std::u16string text(key.text);
  text.insert(std::min(key.selection_end, text.size()), 1, key.character);
  return ByteLength(text) <= field->limit;
}

void LimitFields(platform::Dialog& dialog, std::span<const IdentityField> fields) {
  for (const IdentityField& field : fields) dialog.SetTextLimit(field.id, field.limit);
}

std::u16string FieldText(const platform::Dialog& dialog, std::span<const IdentityField> fields, ControlId id) {
  const auto field = std::ranges::find(fields, id, &IdentityField::id);
  return field == fields.end() ? std::u16string() : dialog.Text(id).substr(0, field->limit);
}

void PasswordFields::Open(platform::Dialog& dialog, const UiState& ui, bool hides) {
  const std::u16string owner = GetText(ui, TextSetting::kOwnerName);
  const bool hidden = hides || owner.empty() || owner.size() > kLongestOwner;
  visible_ = hidden ? hiding_ : plain_;
  const std::u16string password = IdentityText(ui, setting_);
  for (const ControlId field : {hiding_, plain_}) {
    dialog.SetText(field, password);
    dialog.Show(field, field == visible_);
  }
}

void PasswordFields::Clear(platform::Dialog& dialog) const {
  dialog.SetText(hiding_, {});
  dialog.SetText(plain_, {});
}

void PasswordFields::Store(const platform::Dialog& dialog, const UiState& ui) const {
  SetIdentityText(ui, setting_, Text(dialog));
}

}  // namespace heron::pages
