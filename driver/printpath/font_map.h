// The map from the user's TrueType fonts to the fonts that the device holds.
#pragma once

#include <vector>

#include "settings/driver_env.h"

namespace heron {

/// One pair of the user's list in the printing side's terms: byte texts of 32 cells, the TrueType name and how the
/// device selects its font in regular, bold, italic and bold italic. All zero if the device hasn't got the font.
struct FontMapEntry {
  static constexpr size_t kTexts = 5;
  static constexpr size_t kTextSize = 32;
  char texts[kTexts][kTextSize];
  uint16_t code;
  uint8_t flag;
};

/// The map of the record, an entry for each pair of the list in its order; empty if the record names no printer or
/// doesn't use device fonts, or the list is empty or can't be read.
std::vector<FontMapEntry> BuildFontMap(const DriverEnv& record);

/// The map as EscSetFontMap takes it: an index of 24 bytes an entry (five offsets into the map, u16 code, u8 flag, a
/// zero) or, `brief`, of 20 (the offsets alone), then five areas of texts.
std::vector<uint8_t> PackFontMap(const std::vector<FontMapEntry>& map, bool brief);

}  // namespace heron
