// Texts compared without regard to the case of their letters.
#pragma once

#include <string>
#include <string_view>

namespace heron {

/// Whether two texts are the same by simple case folding, one character to one; scripts of Europe and their wide forms.
bool SameFolded(std::u16string_view a, std::u16string_view b);
/// The text in the form that this compares, for sorting.
std::u16string Folded(std::u16string_view text);

/// Whether `text` contains `part` by the same folding; every text contains the empty one.
bool ContainsFolded(std::u16string_view text, std::u16string_view part);

/// Negative, 0 or positive: the order of two texts by folded characters; texts that differ in the case of letters alone
/// are ordered small before capital.
int CompareFolded(std::u16string_view a, std::u16string_view b);

}  // namespace heron
