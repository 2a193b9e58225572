#include "pages/identity_fields.h"

#include <algorithm>

#include "platform/text.h"

namespace heron::pages {
namespace {

constexpr size_t kLongestOwner = 32;

bool SelectsNothing(const platform::TypedKey& key) {
  return key.selection_start == key.selection_end;
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
  const std::u16string password = TextScramble(GetText(ui, setting_), kind_);
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
  SetText(ui, setting_, TextScramble(Text(dialog), kind_));
}

}  // namespace heron::pages
