// Names that differ in the case of their letters only.
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

}  // namespace heron
