// Text forms of values, as they are read (key_reader.h).
#include "presets/key_reader.h"

#include <algorithm>
#include <cstring>

#include "platform/api/characters.h"

namespace heron {
namespace {

constexpr std::u16string_view kAbsentText = u"error";
constexpr std::u16string_view kLineEnd = u"\r\n";

size_t RoomOf(const StoreField& field) {
  return field.size / sizeof(char16_t);
}

size_t WrapperOf(LineStyle style) {
  return style == LineStyle::kPlain ? 0 : style == LineStyle::kStars ? 2 : 1;
}

/// Takes the stars off where they are.
std::u16string_view Unwrap(std::u16string_view text, LineStyle style) {
  if (text.size() < WrapperOf(style)) return {};
  if (style == LineStyle::kPlain) return text;
  if (text.starts_with(u'*')) text.remove_prefix(1);
  if (style == LineStyle::kStars && text.ends_with(u'*')) text.remove_suffix(1);
  return text;
}

}  // namespace

bool ParseNumber(std::string_view text, uint16_t type, uint32_t* number) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty()) return false;
  uint32_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + static_cast<uint32_t>(c - '0');
  }
  *number = negative && type != kTypeI32Alone ? 0 - value : value;
  return true;
}

void PutText(const StoreField& field, std::u16string_view text) {
  text = platform::WholeCharacters(text.substr(0, text.find(u'\0')), RoomOf(field) - 1);
  if (!text.empty()) std::memcpy(field.data, text.data(), text.size() * sizeof(char16_t));
  std::memset(field.data + text.size() * sizeof(char16_t), 0, field.size - text.size() * sizeof(char16_t));
}

bool KeyReader::ReadNumber(size_t place, std::string_view name, const StoreField* value, bool* absent) {
  std::string_view text;
  *absent = !index_.FindValue(place, name, &text) || text == kAbsent || text.size() >= kValueRoom;
  if (*absent) return false;
  if (value == nullptr) return true;
  uint32_t number;
  if (!ParseNumber(text, value->type, &number)) return false;
  std::memcpy(value->data, &number, std::min<size_t>(value->size, sizeof number));  // the low bytes come first
  return true;
}

/// A list's item beyond its room is read and dropped.
bool KeyReader::ReadText(const KeyEntry& key, size_t place, std::string_view name, const StoreField* value) {
  const size_t room =
      value == nullptr || key.style == LineStyle::kPlain ? kValueRoom : RoomOf(*value) + WrapperOf(key.style);
  const std::u16string text = ReadProfileKey(index_, place, name, kAbsentText, room);
  if (text == kAbsentText) return false;
  if (value != nullptr) PutText(*value, Unwrap(text, key.style));
  return true;
}

/// Lines 0, 1, ... up to the first that isn't there. One that no longer fits is dropped, and a shorter one may still.
bool KeyReader::ReadLines(size_t place, const StoreField& value) {
  const NamePattern line_name{{}, {}, true};
  const size_t most = RoomOf(value) - 1;
  NameBuffer buffer;
  std::u16string all;
  int line = 0;
  for (; line == 0 || all.size() + kLineEnd.size() <= most; ++line) {
    const std::string_view name = ExpandName(line_name, line, buffer);
    const std::u16string text = ReadProfileKey(index_, place, name, kAbsentText, RoomOf(value) + 1);
    if (text == kAbsentText) break;
    const std::u16string_view inner = Unwrap(text, LineStyle::kStarsLines);
    const std::u16string_view join = line == 0 ? std::u16string_view() : kLineEnd;
    if (all.size() + join.size() + inner.size() <= most) all.append(join).append(inner);
  }
  if (line != 0) PutText(value, all);
  return line != 0;
}

bool KeyReader::Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) {
  const size_t place = Plan().sections[key.section].PlaceOf(section_number);
  const uint16_t type = key.field != nullptr ? key.field->type : key.param->slotType;
  NameBuffer buffer;
  bool absent = true;
  if (key.style == LineStyle::kStarsLines) {
    if (value == nullptr || ReadLines(place, *value)) return value != nullptr;
  } else {
    const std::string_view name = ExpandName(key.key, key_number, buffer);
    if (type == kTypeText ? ReadText(key, place, name, value) : ReadNumber(place, name, value, &absent)) return true;
  }
  if (!absent || value == nullptr) return false;
  if (const uint8_t* fallback = StoredDefault(key, ui_)) std::memcpy(value->data, fallback, value->size);
  return false;
}

}  // namespace heron
