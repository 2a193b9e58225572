// The user's list of watermarks: what an entry may hold, and how entries are added, removed and restored.
//
// Entry 0 stands for no watermark. It has no text of its own and is never changed or removed. A store may have been
// written by another program: every count is taken as at least 1 and at most kWatermarkCount.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "uistate/list_stores.h"

namespace heron {

/// Bounds of a number, both included.
struct MarkRange {
  int32_t lowest;
  int32_t highest;

  constexpr bool Has(int64_t number) const { return number >= lowest && number <= highest; }
};
inline constexpr MarkRange kMarkStyle = {1, 4};
inline constexpr MarkRange kMarkSize = {8, 400};           ///< points
inline constexpr MarkRange kMarkAngle = {-900, 900};       ///< tenths of a degree
inline constexpr MarkRange kMarkColor = {0, 6};            ///< as StampColor's kinds
inline constexpr MarkRange kMarkShade = {0, 255};          ///< 255 is white
inline constexpr MarkRange kMarkCenter = {-32768, 32767};  ///< tenths of a millimetre, y downwards

inline constexpr size_t kMarkTextLength = 32;
inline constexpr size_t kMarkFontLength = 31;

/// Entries in the store, entry 0 included.
int WatermarksIn(const WatermarkStore& store);

std::u16string_view MarkText(const WatermarkEntry& entry);
std::u16string_view MarkFont(const WatermarkEntry& entry);
int32_t MarkCenterX(const WatermarkEntry& entry);
int32_t MarkCenterY(const WatermarkEntry& entry);
/// Each keeps what fits of the text, in whole characters.
void SetMarkText(WatermarkEntry& entry, std::u16string_view text);
void SetMarkFont(WatermarkEntry& entry, std::u16string_view font);
void SetMarkCenter(WatermarkEntry& entry, int32_t x, int32_t y);

/// What lists show of an entry: its text; of entry 0 the text "no watermark" of the resources, which are in use.
std::u16string WatermarkLabel(const WatermarkStore& store, int index);

/// Adds an entry that equals the store's template, with an empty text, at the end. Its index; 0 if the list is full.
int AddWatermark(WatermarkStore& store);
/// Removes entry `index`; those behind it move up. False for entry 0 and for one that there isn't.
bool RemoveWatermark(WatermarkStore& store, int index);
/// All but the text as in the store's template.
void RestoreWatermark(const WatermarkStore& store, WatermarkEntry& entry);
/// Brings size and angle back to their bounds. True if something changed.
bool ClampWatermark(WatermarkEntry& entry);

}  // namespace heron
