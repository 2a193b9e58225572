#include "uistate/tray_media.h"

#include <algorithm>

namespace heron {
namespace {

TrayMedia DefaultMedia(const UiState& ui) {
  const auto fallback = [&](size_t i) {
    return static_cast<uint8_t>(*FieldsOf(ui, kMirroredTrays[0].mirrors[i]).defaultValue);
  };
  return {fallback(0), fallback(1), fallback(2), fallback(3)};
}

}  // namespace

TrayTable& TraysOf(const UiState& ui) {
  return *reinterpret_cast<TrayTable*>(ui.head().trayTable);
}

TrayMedia* FindTrayMedia(const UiState& ui, uint16_t source) {
  auto& rows = TraysOf(ui).rows;
  const auto row = std::ranges::find(rows, static_cast<int16_t>(source), &TrayRow::source);
  return row == std::end(rows) ? nullptr : &row->media;
}

TrayMedia MediaOfTray(const UiState& ui, uint16_t source) {
  const TrayMedia* media = FindTrayMedia(ui, source);
  return media != nullptr ? *media : DefaultMedia(ui);
}

void LoadTrayMirrors(const UiState& ui, const MirroredTray& tray) {
  const TrayMedia media = MediaOfTray(ui, *FieldsOf(ui, tray.source).value);
  const uint8_t values[] = {media.mediaType, media.weight, media.paperColor, media.punched};
  for (size_t i = 0; i < tray.mirrors.size(); ++i) *FieldsOf(ui, tray.mirrors[i]).value = values[i];
}

void LoadAllTrayMirrors(const UiState& ui) {
  for (const MirroredTray& tray : kMirroredTrays) LoadTrayMirrors(ui, tray);
}

void ResetTrayMedia(const UiState& ui) {
  for (TrayRow& row : TraysOf(ui).rows) row.media = DefaultMedia(ui);
}

}  // namespace heron
