// The settings record: 3328 bytes, packed, little-endian; a public part of 220 bytes, EnvBase of 1207, EnvExtra of
// 1901.
//
// It is a byte format that travels between processes and machines, so fields are reached by name through Get and Set
// and never by reference: Get<"Zoom">(env), Set<"trayTable.lpMediaType">(env, 1, row). A name that doesn't exist
// doesn't compile. Switches hold 0 or 1, lists the option's value.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/api/devmode.h"

namespace heron {

static_assert(std::endian::native == std::endian::little, "records are read in place");

inline constexpr uint32_t kPublicSize = 220;
inline constexpr uint32_t kEnvBaseSize = 1207;
inline constexpr uint32_t kEnvExtraSize = 1901;
inline constexpr uint32_t kPrivateSize = kEnvBaseSize + kEnvExtraSize;
inline constexpr uint32_t kEnvSize = kPublicSize + kPrivateSize;
static_assert(kEnvSize == 3328);

inline constexpr uint16_t kSpecVersion = 0x401;
inline constexpr uint16_t kDriverVersion = 0x4200;
inline constexpr uint16_t kVersionMask = 0x3FFF;  ///< versions that agree in these bits are the same

/// One complete record of our own size.
struct DriverEnv {
  std::array<uint8_t, kEnvSize> bytes;
};

enum class FieldType : uint8_t { kU8, kU16, kI16, kU32, kText, kBytes };

struct EnvField {
  std::string_view name;
  uint16_t offset = 0;
  FieldType type = FieldType::kU8;
  uint16_t length = 1;  ///< elements: 1, or the N of u32xN, wN, bN
  uint16_t count = 1;   ///< times the field is there
  uint16_t stride = 0;  ///< bytes from one to the next
  bool fromFeature = false;
  uint16_t value = 0;     ///< default: the feature, or the number itself
  bool countsOn = false;  ///< the feature counts on from one to the next
  bool deviceOption = false;

  constexpr uint32_t ElementSize() const {
    switch (type) {
      case FieldType::kU16:
      case FieldType::kI16:
      case FieldType::kText:
        return 2;
      case FieldType::kU32:
        return 4;
      default:
        return 1;
    }
  }
  constexpr uint32_t Size() const { return ElementSize() * length; }
  constexpr uint32_t At(size_t index) const { return offset + static_cast<uint32_t>(index) * stride; }
};

/// Every field, in the order of the record (settings/env_fields.table).
inline constexpr auto kEnvFields = std::to_array<EnvField>({
#include "generated/env_fields.inc"
});

/// Index of the field's row, or the number of rows.
constexpr size_t EnvFieldIndex(std::string_view name) {
  size_t i = 0;
  while (i < kEnvFields.size() && (kEnvFields[i].name != name || name == "reserved")) ++i;
  return i;
}

/// The field's row, or null.
inline const EnvField* FindEnvField(std::string_view name) {
  const size_t i = EnvFieldIndex(name);
  return i < kEnvFields.size() ? &kEnvFields[i] : nullptr;
}

/// A field's name as a template argument.
template <size_t N>
struct FieldName {
  char text[N];
  consteval FieldName(const char (&name)[N]) { std::copy_n(name, N, text); }
  consteval std::string_view View() const { return {text, N - 1}; }
};

template <FieldName kName>
consteval EnvField FieldOf() {
  constexpr size_t kIndex = EnvFieldIndex(kName.View());
  static_assert(kIndex < kEnvFields.size(), "the record has no field of this name");
  return kEnvFields[kIndex];
}

namespace env_internal {
template <FieldType kType>
struct ValueOf {
  using type = uint8_t;
};
template <>
struct ValueOf<FieldType::kU16> {
  using type = uint16_t;
};
template <>
struct ValueOf<FieldType::kI16> {
  using type = int16_t;
};
template <>
struct ValueOf<FieldType::kU32> {
  using type = uint32_t;
};
}  // namespace env_internal

template <FieldName kName>
using FieldValue = typename env_internal::ValueOf<FieldOf<kName>().type>::type;

/// Reads a numeric field. `index`: which of a repeated field, or which element of u32xN.
template <FieldName kName>
FieldValue<kName> Get(const DriverEnv& env, size_t index = 0) {
  constexpr EnvField kField = FieldOf<kName>();
  static_assert(kField.type != FieldType::kText && kField.type != FieldType::kBytes);
  const size_t step = kField.count > 1 ? kField.stride : kField.Size() / kField.length;
  FieldValue<kName> value;
  std::memcpy(&value, env.bytes.data() + kField.offset + index * step, sizeof value);
  return value;
}

/// Whether a switch is exactly 1.
template <FieldName kName>
bool IsOn(const DriverEnv& env) {
  return Get<kName>(env) == 1;
}

/// Writes a numeric field: the low bytes of `value`.
template <FieldName kName>
void Set(DriverEnv& env, std::integral auto value, size_t index = 0) {
  constexpr EnvField kField = FieldOf<kName>();
  static_assert(kField.type != FieldType::kText && kField.type != FieldType::kBytes);
  const size_t step = kField.count > 1 ? kField.stride : kField.Size() / kField.length;
  const auto narrow = static_cast<FieldValue<kName>>(value);
  std::memcpy(env.bytes.data() + kField.offset + index * step, &narrow, sizeof narrow);
}

/// Text of a field up to its terminator, or the whole field if it has none.
template <FieldName kName>
std::u16string GetText(const DriverEnv& env) {
  constexpr EnvField kField = FieldOf<kName>();
  static_assert(kField.type == FieldType::kText);
  std::array<char16_t, kField.length> text;
  std::memcpy(text.data(), env.bytes.data() + kField.offset, sizeof text);
  return {text.begin(), std::find(text.begin(), text.end(), u'\0')};
}

/// Whether the field holds exactly `text`; allocates nothing.
template <FieldName kName>
bool TextIs(const DriverEnv& env, std::u16string_view text) {
  constexpr EnvField kField = FieldOf<kName>();
  std::array<char16_t, kField.length> field;
  std::memcpy(field.data(), env.bytes.data() + kField.offset, sizeof field);
  const auto end = std::find(field.begin(), field.end(), u'\0');
  return std::u16string_view(field.data(), static_cast<size_t>(end - field.begin())) == text;
}

/// Writes `text`, cut to the field less its terminator, and fills the rest with zeros.
template <FieldName kName>
void SetText(DriverEnv& env, std::u16string_view text) {
  constexpr EnvField kField = FieldOf<kName>();
  static_assert(kField.type == FieldType::kText);
  std::array<char16_t, kField.length> field{};
  std::copy_n(text.begin(), std::min<size_t>(text.size(), kField.length - 1), field.begin());
  std::memcpy(env.bytes.data() + kField.offset, field.data(), sizeof field);
}

/// Address of the field's bytes.
template <FieldName kName>
uint8_t* FieldBytes(DriverEnv& env) {
  return env.bytes.data() + FieldOf<kName>().offset;
}
template <FieldName kName>
const uint8_t* FieldBytes(const DriverEnv& env) {
  return env.bytes.data() + FieldOf<kName>().offset;
}

/// A record that somebody handed in: its declared size is believed, nothing beyond it is read.
class ForeignEnv {
 public:
  /// `record` may be null; otherwise at least its first 72 bytes exist, and as many as they declare.
  explicit ForeignEnv(const void* record) : data_(static_cast<const uint8_t*>(record)) {}
  explicit operator bool() const { return data_ != nullptr; }
  const uint8_t* data() const { return data_; }

  /// A field of the public part; zero if it doesn't lie wholly inside the declared public size.
  template <FieldName kName>
  FieldValue<kName> Public() const {
    constexpr EnvField kField = FieldOf<kName>();
    static_assert(kField.offset + kField.Size() <= kPublicSize);
    FieldValue<kName> value = 0;
    if (kField.offset + kField.Size() <= 72 || Has<kName>()) std::memcpy(&value, data_ + kField.offset, sizeof value);
    return value;
  }
  /// Whether the field lies wholly inside the declared public size.
  template <FieldName kName>
  bool Has() const {
    return FieldOf<kName>().offset + FieldOf<kName>().Size() <= PublicSize();
  }
  uint32_t PublicSize() const { return Public<"dmSize">(); }
  uint32_t PrivateSize() const { return Public<"dmDriverExtra">(); }
  uint32_t Size() const { return PublicSize() + PrivateSize(); }

 private:
  const uint8_t* data_;
};

/// Whether the record is one of ours, of this version. Null gives false.
bool IsOwnEnv(const void* record);
/// Whether `a` has our signature and both agree in version, sizes and tag. Null gives false.
bool IsSameEnvFormat(const void* a, const void* b);
/// Zeroes the 28 bytes of the tag and writes it.
void StampEnvTag(DriverEnv& env);

}  // namespace heron
