// Names that differ in the case of their letters only.
#pragma once

#include <string_view>

namespace heron {

/// Whether two texts are the same by simple case folding, one character to one; scripts of Europe and their wide forms.
bool SameFolded(std::u16string_view a, std::u16string_view b);

/// Whether `text` contains `part` by the same folding; every text contains the empty one.
bool ContainsFolded(std::u16string_view text, std::u16string_view part);

}  // namespace heron
