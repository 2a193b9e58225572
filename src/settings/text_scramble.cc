#include "settings/text_scramble.h"

namespace heron {
namespace {

/// Stored records depend on it. No character from 32 to 126 becomes a zero or a surrogate by it.
constexpr char16_t kMask = 0x5A5A;

}  // namespace

std::u16string TextScramble(std::u16string_view text, Secret kind) {
  std::u16string scrambled(text.substr(0, static_cast<size_t>(kind)));
  for (char16_t& c : scrambled) c ^= kMask;
  return scrambled;
}

}  // namespace heron
