#include "settings/text_scramble.h"

namespace heron {

std::u16string TextScramble(std::u16string_view text, SecretKind kind) {
  constexpr char16_t kMask = 0x5A5A;
  std::u16string scrambled(text.substr(0, text.find(u'\0')).substr(0, static_cast<size_t>(kind)));
  for (char16_t& c : scrambled) c ^= kMask;
  return scrambled;
}

}  // namespace heron
