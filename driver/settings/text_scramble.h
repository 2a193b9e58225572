// Passwords in a record are kept out of plain sight, not kept secret: anyone with the record can undo this.
#pragma once

#include <string>
#include <string_view>

namespace heron {

/// What is scrambled; the number of characters that its field holds.
enum class SecretKind { kSecurePrint = 11, kUser = 64, kDepartment = 8 };

/// The text up to its first zero and at most the kind's characters, each combined with the mask. Its own inverse. The
/// mask is part of stored records and never changes; it makes no zero and no surrogate of characters 32 to 126.
std::u16string TextScramble(std::u16string_view text, SecretKind kind);

}  // namespace heron
