// How passwords are kept in a record: scrambled, so that they can't be read over somebody's shoulder. No encryption.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace heron {

/// Which password; the number tells how many characters of it count.
enum class Secret : uint8_t { kSecurePrint = 11, kUser = 64, kDepartment = 8 };

/// Its own inverse. Stops at the end of the text or behind the characters that count.
std::u16string TextScramble(std::u16string_view text, Secret kind);

}  // namespace heron
