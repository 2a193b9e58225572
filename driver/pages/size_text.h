// Sizes of custom papers as a user sees and types them. The one place that converts between the units of sizes.
//
// A shown value is tenths of a millimetre in unit millimetre, thousandths of an inch in unit inch. Papers are stored in
// thousandths of an inch, whatever their unit; a size typed in millimetres comes back as it was typed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "generated/values.h"
#include "platform/dialog/dialog.h"

namespace heron::pages {

inline constexpr int kMillimetre = value::lpUDPaperUnit::kMillimetre;
inline constexpr int kInch = value::lpUDPaperUnit::kInch;

uint32_t ThouFromShown(int unit, uint32_t shown);
uint32_t ShownFromThou(int unit, uint32_t thou);

/// A text for each unit, with places for the whole and the fraction of a shown value, or of two.
struct SizeFormat {
  std::u16string_view mm, inch;
};
std::u16string ExpandSize(int unit, const SizeFormat& format, uint32_t shown);
std::u16string ExpandSizes(int unit, const SizeFormat& format, uint32_t first, uint32_t second);

/// "210.0mm" or "8.267inch".
std::u16string FormatSize(int unit, uint32_t shown);
/// The shown value of a typed text, rounded to nearest; 0 for a text without a number or of 32 characters and more.
uint32_t ParseSize(int unit, std::u16string_view text);

/// Characters of a size, unit included.
size_t SizeTextLimit(int unit);
/// Whether a size field takes a key.
bool AcceptsSizeKey(int unit, const platform::TypedKey& key);
/// Whether a field of plain numbers takes a key; `most` characters may be there already.
bool AcceptsNumberKey(const platform::TypedKey& key, size_t most);
/// The same of a field whose number may be 0, and whose length its own limit holds.
bool AcceptsShortNumberKey(const platform::TypedKey& key);

}  // namespace heron::pages
