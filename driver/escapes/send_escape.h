// Sending escapes with exactly the bytes that the table gives, and reading and writing their blocks within bounds.
//
// SendEscape<"EscSetJobId">(hdc, bytes), AskEscape<"EscGetFaxTime">(hdc, &time), CallEscape<"EscGetPageNumber">(hdc): a
// name that doesn't exist, or a value of another size, doesn't compile. A closed context fails like an escape.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "escapes/escape_table.h"
#include "platform/api/characters.h"
#include "platform/api/device_context.h"
#include "settings/driver_env.h"

namespace heron {

/// The escape's result, whatever it means; `in` and `out` may be empty. A failure leaves `out` zeroed.
inline int RunEscape(platform::HDC hdc, const EscapeRow& row, std::span<const uint8_t> in, std::span<uint8_t> out) {
  std::ranges::fill(out, uint8_t{0});
  const int result = platform::ExtEscape(hdc, static_cast<int>(row.code), static_cast<int>(in.size()), in.data(),
                                         static_cast<int>(out.size()), out.data());
  if (result == 0) std::ranges::fill(out, uint8_t{0});
  return result;
}

/// An escape without data; its value.
template <FieldName kName>
int CallEscape(platform::HDC hdc) {
  constexpr EscapeRow kRow = Escape(kName.View());
  static_assert(kRow.in == 0 && kRow.out == 0);
  return RunEscape(hdc, kRow, {}, {});
}

/// The bytes of a number, a structure without padding, or an array of them.
template <class T>
std::span<const uint8_t> BytesOf(const T& value) {
  static_assert(std::is_trivially_copyable_v<T>);
  return {reinterpret_cast<const uint8_t*>(&value), sizeof value};
}

template <FieldName kName>
bool SendEscape(platform::HDC hdc) {
  return CallEscape<kName>(hdc) != 0;
}

template <FieldName kName, class T>
bool SendEscape(platform::HDC hdc, const T& value) {
  constexpr EscapeRow kRow = Escape(kName.View());
  static_assert(kRow.in == sizeof(T) && kRow.out == 0);
  return RunEscape(hdc, kRow, BytesOf(value), {}) != 0;
}

/// An escape whose size only the table's rules give.
template <FieldName kName>
bool SendEscapeBytes(platform::HDC hdc, std::span<const uint8_t> bytes) {
  static_assert(Escape(kName.View()).in < 0);
  return RunEscape(hdc, Escape(kName.View()), bytes, {}) != 0;
}

/// False with a zeroed `reply` if the escape fails.
template <FieldName kName, class T>
bool AskEscape(platform::HDC hdc, T* reply) {
  constexpr EscapeRow kRow = Escape(kName.View());
  static_assert(kRow.out == sizeof(T) && kRow.in == 0 && std::is_trivially_copyable_v<T>);
  return RunEscape(hdc, kRow, {}, {reinterpret_cast<uint8_t*>(reply), sizeof *reply}) != 0;
}

/// A text of `kLength` characters as an escape takes it: cut behind a whole character to leave a terminator, filled up
/// with zeros.
template <size_t kLength>
std::array<char16_t, kLength> WideText(std::u16string_view text) {
  std::array<char16_t, kLength> wide{};
  std::ranges::copy(platform::WholeCharacters(text, kLength - 1), wide.begin());
  return wide;
}

/// The number at `offset`; 0 if it doesn't lie wholly inside the block.
template <std::integral T>
T ReadAt(std::span<const uint8_t> block, size_t offset) {
  T value = 0;
  if (offset <= block.size() && block.size() - offset >= sizeof value) {
    std::memcpy(&value, block.data() + offset, sizeof value);
  }
  return value;
}

/// The text of at most `length` characters at `offset`, up to its terminator or the end of the block.
inline std::u16string ReadTextAt(std::span<const uint8_t> block, size_t offset, size_t length) {
  if (offset >= block.size()) return {};
  std::u16string text(std::min(length, (block.size() - offset) / sizeof(char16_t)), u'\0');
  std::memcpy(text.data(), block.data() + offset, text.size() * sizeof(char16_t));
  text.resize(std::min(text.find(u'\0'), text.size()));
  return text;
}

/// Writes a number; nothing if it doesn't fit the block.
template <std::integral T>
void WriteAt(std::span<uint8_t> block, size_t offset, T value) {
  if (offset <= block.size() && block.size() - offset >= sizeof value) {
    std::memcpy(block.data() + offset, &value, sizeof value);
  }
}

/// Writes `text` into a field of `length` characters: cut behind a whole character to leave a terminator, filled up
/// with zeros.
inline void WriteTextAt(std::span<uint8_t> block, size_t offset, size_t length, std::u16string_view text) {
  if (length != 0) text = platform::WholeCharacters(text, length - 1);
  for (size_t i = 0; i < length; ++i) {
    WriteAt<char16_t>(block, offset + 2 * i, i < text.size() ? text[i] : u'\0');
  }
}

}  // namespace heron
