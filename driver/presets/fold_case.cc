#include "presets/fold_case.h"

#include <algorithm>
#include <cstdint>

namespace heron {
namespace {

/// Capital letters `first`, `first` + `step`, ... `last`, each `distance` before its small one.
struct Capitals {
  char16_t first;
  char16_t last;
  uint8_t step;
  int16_t distance;
};
// clang-format off
constexpr Capitals kCapitals[] = {
    {0x0041, 0x005A, 1, 32}, {0x00C0, 0x00D6, 1, 32}, {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},  {0x0132, 0x0136, 2, 1},  {0x0139, 0x0147, 2, 1},  {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},
    {0x0386, 0x0386, 1, 38}, {0x0388, 0x038A, 1, 37}, {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32}, {0x03A3, 0x03AB, 1, 32}, {0x03C2, 0x03C2, 1, 1},
    {0x0400, 0x040F, 1, 80}, {0x0410, 0x042F, 1, 32}, {0x0460, 0x0480, 2, 1},  {0x048A, 0x04BE, 2, 1},
    {0x04C1, 0x04CD, 2, 1},  {0x04D0, 0x052E, 2, 1},  {0x0531, 0x0556, 1, 48},
    {0x1E00, 0x1E94, 2, 1},  {0x1EA0, 0x1EFE, 2, 1},  {0xFF21, 0xFF3A, 1, 32},
};
// clang-format on

char16_t Fold(char16_t c) {
  for (const Capitals& capitals : kCapitals) {
    if (c >= capitals.first && c <= capitals.last && (c - capitals.first) % capitals.step == 0)
      return static_cast<char16_t>(c + capitals.distance);
  }
  return c;
}

}  // namespace

bool SameFolded(std::u16string_view a, std::u16string_view b) {
  return std::ranges::equal(a, b, {}, Fold, Fold);
}

std::u16string Folded(std::u16string_view text) {
  std::u16string folded(text);
  std::ranges::transform(folded, folded.begin(), Fold);
  return folded;
}

bool ContainsFolded(std::u16string_view text, std::u16string_view part) {
  return !std::ranges::search(text, part, {}, Fold, Fold).empty() || part.empty();
}

int CompareFolded(std::u16string_view a, std::u16string_view b) {
  const auto differs = [](char16_t x, char16_t y) { return Fold(x) != Fold(y); };
  for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
    if (differs(a[i], b[i])) return int{Fold(a[i])} - int{Fold(b[i])};
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return -a.compare(b);
}

}  // namespace heron
