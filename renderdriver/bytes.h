// Numbers and texts at byte offsets of the blocks: little-endian, bounded by the block.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace heron::renderdriver {

/// The number of type T at `offset`; 0 if it doesn't lie wholly inside.
template <typename T>
T Read(std::span<const uint8_t> block, size_t offset = 0) {
  T value{};
  if (offset <= block.size() && block.size() - offset >= sizeof value)
    std::memcpy(&value, block.data() + offset, sizeof value);
  return value;
}

/// Writes `value` at `offset`, where it must fit.
template <typename T>
void Write(std::span<uint8_t> block, size_t offset, T value) {
  std::memcpy(block.subspan(offset, sizeof value).data(), &value, sizeof value);
}

/// Text at `offset` up to its terminator, `room` characters or the end of the block.
inline std::u16string ReadText(std::span<const uint8_t> block, size_t offset, size_t room) {
  std::u16string text;
  for (size_t i = 0; i < room && offset + 2 * i + 2 <= block.size(); ++i) {
    const auto c = Read<char16_t>(block, offset + 2 * i);
    if (c == 0) break;
    text += c;
  }
  return text;
}

/// Writes `text`, cut to `room` characters less the terminator; the block is zero there.
inline void WriteText(std::span<uint8_t> block, size_t offset, size_t room, std::u16string_view text) {
  const std::u16string_view cut = text.substr(0, room - 1);
  std::memcpy(block.subspan(offset, 2 * room).data(), cut.data(), 2 * cut.size());
}

}  // namespace heron::renderdriver
