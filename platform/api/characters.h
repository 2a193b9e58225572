// Where one character of a text ends: no text may be cut inside a character, neither between the two units of a
// surrogate pair nor between the bytes of a code page.
#pragma once

#include <string>
#include <string_view>

#include "platform/api/types.h"

namespace heron::platform {

/// Units of the character that `text`, which isn't empty, begins with: 2 for a surrogate pair, else 1.
constexpr size_t CharacterUnits(std::u16string_view text) {
  return text.size() > 1 && (text[0] & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00 ? 2 : 1;
}

/// The longest beginning of at most `room` units that ends with a whole character.
constexpr std::u16string_view WholeCharacters(std::u16string_view text, size_t room) {
  if (text.size() <= room) return text;
  const bool splits = room > 0 && CharacterUnits(text.substr(room - 1)) == 2;
  return text.substr(0, splits ? room - 1 : room);
}

/// As many whole characters of `text` as fit in `room` bytes of the system's code page.
HERON_PLATFORM_API std::string AnsiWithin(std::u16string_view text, size_t room);

}  // namespace heron::platform
