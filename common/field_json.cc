// A record's fields as JSON (field_json.h).

#include "field_json.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "platform/api/text.h"
#include "settings/secret_fields.h"

namespace heron::record {
bool IsSecret(const EnvField& field) {
  return std::ranges::find(kSecretFields, field.name) != std::end(kSecretFields);
}

int64_t FieldNumber(RecordBytes record, FieldType type, uint32_t offset) {
  const auto take = [&](auto value) {
    std::memcpy(&value, record.data() + offset, sizeof value);
    return static_cast<int64_t>(value);
  };
  switch (type) {
    case FieldType::kU16:
      return take(uint16_t{});
    case FieldType::kI16:
      return take(int16_t{});
    case FieldType::kU32:
      return take(uint32_t{});
    default:
      return take(uint8_t{});
  }
}

std::u16string FieldText(RecordBytes record, const EnvField& field) {
  std::u16string text(field.length, u'\0');
  std::memcpy(text.data(), record.data() + field.offset, field.Size());
  return text.substr(0, text.find(u'\0'));
}

bool IsFieldZero(RecordBytes record, const EnvField& field) {
  return std::ranges::all_of(record.subspan(field.offset, field.Size()), [](uint8_t byte) { return byte == 0; });
}

std::string FieldHex(RecordBytes record, const EnvField& field) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : record.subspan(field.offset, field.Size())) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

Json FieldJson(RecordBytes record, const EnvField& field) {
  if (IsSecret(field)) return IsFieldZero(record, field) ? "" : "***";
  if (field.type == FieldType::kText) return platform::ToUtf8(FieldText(record, field));
  if (field.type == FieldType::kBytes) return FieldHex(record, field);
  const auto number = [&](uint32_t offset) { return FieldNumber(record, field.type, offset); };
  if (field.count == 1 && field.length == 1) return number(field.offset);
  Json array = Json::array();
  for (uint16_t i = 0; i < std::max(field.count, field.length); ++i) {
    array.push_back(number(field.count > 1 ? field.At(i) : field.offset + i * field.ElementSize()));
  }
  return array;
}

}  // namespace heron::record
