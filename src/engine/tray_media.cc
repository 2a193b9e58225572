// The media in the trays: a table by paper source, and the controls that mirror the row of a chosen source.
#include <algorithm>
#include <cstring>
#include <optional>

#include "engine/engine.h"

namespace heron::engine {
namespace {

/// Behind four other bytes, the tray media table has ten rows: source (u16), then the bytes of TrayMedia.
constexpr size_t kFirstRow = 4;
constexpr size_t kRowSize = 6;
static_assert(sizeof(UiHead::trayTable) == kFirstRow + 10 * kRowSize && sizeof(TrayMedia) == 4);

struct MirroredSource {
  ControlIndex source;
  std::array<ControlIndex, 4> mirrors;
};
constexpr std::array<MirroredSource, 3> kSources = {{
    {Control(u"lpMediaSource"),
     {Control(u"trayMediaType.3310"), Control(u"trayWeight.3311"), Control(u"trayPaperColor.3312"),
      Control(u"trayPunched.3313")}},
    {Control(u"lpFrontCoverTray"),
     {Control(u"trayMediaType.3330"), Control(u"trayWeight.3331"), Control(u"trayPaperColor.3332"),
      Control(u"trayPunched.3333")}},
    {Control(u"lpBackCoverTray"),
     {Control(u"trayMediaType.3350"), Control(u"trayWeight.3351"), Control(u"trayPaperColor.3352"),
      Control(u"trayPunched.3353")}},
}};

/// The four bytes of the first row with this source, or null.
uint8_t* RowOf(const Engine& engine, uint16_t source) {
  uint8_t* const table = engine.ui->head().trayTable;
  for (size_t at = kFirstRow; at < sizeof(UiHead::trayTable); at += kRowSize) {
    uint16_t tray;
    std::memcpy(&tray, table + at, sizeof tray);
    if (tray == source) return table + at + sizeof tray;
  }
  return nullptr;
}

TrayMedia DefaultMedia(const Engine& engine) {
  const auto byte = [&](size_t i) { return static_cast<uint8_t>(engine.Default(kSources[0].mirrors[i])); };
  return {byte(0), byte(1), byte(2), byte(3)};
}

}  // namespace

TrayMedia MediaOfTray(const Engine& engine, uint16_t source) {
  if (const uint8_t* row = RowOf(engine, source)) return {row[0], row[1], row[2], row[3]};
  return DefaultMedia(engine);
}

std::array<ControlIndex, 4> TrayMirrors(ControlIndex source) {
  const auto row = std::ranges::find(kSources, source, &MirroredSource::source);
  return row == kSources.end() ? std::array{kNoControl, kNoControl, kNoControl, kNoControl} : row->mirrors;
}

ControlIndex SourceOfMirror(ControlIndex mirror) {
  const auto has = [&](const MirroredSource& row) { return std::ranges::count(row.mirrors, mirror) != 0; };
  const auto row = std::ranges::find_if(kSources, has);
  return row == kSources.end() ? kNoControl : row->source;
}

void LoadTrayMedia(Engine& engine, ControlIndex source) {
  const auto row = std::ranges::find(kSources, source, &MirroredSource::source);
  if (row == kSources.end()) return;
  const TrayMedia media = MediaOfTray(engine, engine.Value(source));
  engine.Set(row->mirrors[0], media.mediaType);
  engine.Set(row->mirrors[1], media.weight);
  engine.Set(row->mirrors[2], media.paperColor);
  engine.Set(row->mirrors[3], media.punched);
}

void LoadTrayMirrors(Engine& engine) {
  for (const MirroredSource& row : kSources) LoadTrayMedia(engine, row.source);
}

bool StoreTrayMedia(Engine& engine, ControlIndex mirror, uint16_t value) {
  const ControlIndex source = SourceOfMirror(mirror);
  uint8_t* const row = source == kNoControl ? nullptr : RowOf(engine, engine.Value(source));
  if (row == nullptr) return false;
  const auto mirrors = TrayMirrors(source);
  row[std::ranges::find(mirrors, mirror) - mirrors.begin()] = static_cast<uint8_t>(value);
  return true;
}

bool StoreMediaType(Engine& engine, uint16_t source, uint8_t media_type) {
  uint8_t* const row = RowOf(engine, source);
  if (row != nullptr) *row = media_type;
  return row != nullptr;
}

void ResetTrayMedia(Engine& engine) {
  const TrayMedia media = DefaultMedia(engine);
  for (size_t at = kFirstRow; at < sizeof(UiHead::trayTable); at += kRowSize)
    std::memcpy(engine.ui->head().trayTable + at + sizeof(uint16_t), &media, sizeof media);
}

}  // namespace heron::engine
