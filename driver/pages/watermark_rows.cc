#include "pages/watermark_rows.h"

#include <optional>

#include "forms/watermark_list.h"
#include "printpath/watermark_stamp.h"

namespace heron::pages {
namespace {

/// The stamp's colour, unless it couldn't be read on a light or on a dark ground. Grey would look like a row that can't
/// be chosen.
std::optional<platform::COLORREF> Readable(const WatermarkEntry& entry) {
  if (entry.selectColor == 0) return std::nullopt;
  const platform::COLORREF color = StampColor(entry.selectColor, static_cast<uint8_t>(entry.color));
  constexpr unsigned kDarkest = 70, kLightest = 180;
  const unsigned level = ((color & 0xFF) * 30 + (color >> 8 & 0xFF) * 59 + (color >> 16 & 0xFF) * 11) / 100;
  if (level < kDarkest || level > kLightest) return std::nullopt;
  return color;
}

}  // namespace

std::vector<platform::ListRow> WatermarkRows(const WatermarkStore& store) {
  std::vector<platform::ListRow> rows;
  for (int i = 0; i < WatermarksIn(store); ++i) {
    platform::ListRow row{.text = WatermarkLabel(store, i), .cells = {}};
    if (i > 0) {
      row.font = MarkFont(store.entries[i]);
      row.color = Readable(store.entries[i]);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace heron::pages
