// Which printer font stands for which TrueType font, without a window: the font page and the command share it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "uistate/list_stores.h"

namespace heron::pages {

inline constexpr size_t kFontNameLength = 31;  ///< characters of either name

struct FontRow {
  std::u16string trueType;
  std::u16string printerFont;  ///< empty: the font isn't replaced
};

/// Names as the list shows them: without those that begin with "@", cut to 31 characters but never inside one, sorted
/// whatever their case, each once.
std::vector<std::u16string> ListedFonts(std::vector<std::u16string> names);

/// A row for each name. A pair whose TrueType font has exactly this name gives its printer font.
std::vector<FontRow> RowsOfFonts(const std::vector<std::u16string>& names, std::span<const FontPair> pairs);

/// The printer's fonts, in the order in which they are offered.
std::vector<std::u16string> PrinterFonts();

/// The pairs in use.
std::span<const FontPair> PairsOf(const FontSubstStore& store);
std::u16string_view TextOfName(const char16_t (&name)[32]);

/// Makes the store hold the rows that replace a font, in their order; rows beyond its room are left out.
void StorePairs(FontSubstStore& store, std::span<const FontRow> rows);

}  // namespace heron::pages
