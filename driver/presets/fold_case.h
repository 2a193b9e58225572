// Texts compared without regard to the case of their letters.
#pragma once

#include <string_view>

namespace heron {

/// Whether two texts are the same by simple case folding, one character to one; scripts of Europe and their wide forms.
bool SameFolded(std::u16string_view a, std::u16string_view b);

/// Negative, 0 or positive: the order of two texts by folded characters; texts that differ in the case of letters alone
/// are ordered small before capital.
int CompareFolded(std::u16string_view a, std::u16string_view b);

}  // namespace heron
