#include "forms/watermark_list.h"

#include <algorithm>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/characters.h"

namespace heron {
namespace {

template <size_t kRoom>
std::u16string_view TextIn(const char16_t (&field)[kRoom]) {
  return {field, std::find(field, field + kRoom - 1, u'\0')};
}

/// Fills the field with zeros behind the text: entries are compared byte by byte.
template <size_t kRoom>
void PutText(char16_t (&field)[kRoom], std::u16string_view text) {
  const std::u16string_view kept = platform::WholeCharacters(text, kRoom - 1);
  std::fill(std::copy(kept.begin(), kept.end(), field), field + kRoom, u'\0');
}

}  // namespace

int WatermarksIn(const WatermarkStore& store) {
  return std::clamp<int>(store.wMarkListNum, 1, kWatermarkCount);
}

std::u16string_view MarkText(const WatermarkEntry& entry) {
  return TextIn(entry.text);
}
std::u16string_view MarkFont(const WatermarkEntry& entry) {
  return TextIn(entry.font);
}
int32_t MarkCenterX(const WatermarkEntry& entry) {
  return static_cast<int16_t>(entry.centerX);
}
int32_t MarkCenterY(const WatermarkEntry& entry) {
  return static_cast<int16_t>(entry.centerY);
}

void SetMarkText(WatermarkEntry& entry, std::u16string_view text) {
  PutText(entry.text, text);
}
void SetMarkFont(WatermarkEntry& entry, std::u16string_view font) {
  PutText(entry.font, font);
}
void SetMarkCenter(WatermarkEntry& entry, int32_t x, int32_t y) {
  entry.centerX = static_cast<uint32_t>(std::clamp(x, kMarkCenter.lowest, kMarkCenter.highest));
  entry.centerY = static_cast<uint32_t>(std::clamp(y, kMarkCenter.lowest, kMarkCenter.highest));
}

std::u16string WatermarkLabel(const WatermarkStore& store, int index) {
  if (index <= 0 || index >= WatermarksIn(store)) return GetUiString(text::kNoWatermark);
  return std::u16string(MarkText(store.entries[index]));
}

int AddWatermark(WatermarkStore& store) {
  const int index = WatermarksIn(store);
  if (index >= kWatermarkCount) return 0;
  store.entries[index] = store.current;
  SetMarkText(store.entries[index], {});
  store.wMarkListNum = static_cast<uint16_t>(index + 1);
  return index;
}

bool RemoveWatermark(WatermarkStore& store, int index) {
  const int count = WatermarksIn(store);
  if (index <= 0 || index >= count) return false;
  std::copy(store.entries + index + 1, store.entries + count, store.entries + index);
  store.entries[count - 1] = {};
  store.wMarkListNum = static_cast<uint16_t>(count - 1);
  return true;
}

void RestoreWatermark(const WatermarkStore& store, WatermarkEntry& entry) {
  const std::u16string text(MarkText(entry));
  entry = store.current;
  SetMarkText(entry, text);
}

bool ClampWatermark(WatermarkEntry& entry) {
  const auto size = static_cast<uint32_t>(std::clamp<int64_t>(entry.size, kMarkSize.lowest, kMarkSize.highest));
  const int32_t angle = std::clamp(entry.angle, kMarkAngle.lowest, kMarkAngle.highest);
  const bool changed = size != entry.size || angle != entry.angle;
  entry.size = size;
  entry.angle = angle;
  return changed;
}

}  // namespace heron
