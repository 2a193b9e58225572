// The media in the trays as controls see them (uistate/tray_media.h).
#include "uistate/tray_media.h"

#include <algorithm>

#include "engine/engine.h"

namespace heron::engine {
namespace {

struct MirroredSource {
  ControlIndex source;
  std::array<ControlIndex, 4> mirrors;
};

/// The first control of a setting, which has one.
ControlIndex ControlOf(uint16_t param) {
  size_t i = 0;
  while (ParamIndexOfControl(static_cast<ControlIndex>(i)) != param) ++i;
  return static_cast<ControlIndex>(i);
}

const std::array<MirroredSource, kMirroredTrays.size()>& Sources() {
  static const auto kSources = [] {
    std::array<MirroredSource, kMirroredTrays.size()> sources{};
    for (size_t i = 0; i < sources.size(); ++i) {
      sources[i].source = ControlOf(kMirroredTrays[i].source);
      std::ranges::transform(kMirroredTrays[i].mirrors, sources[i].mirrors.begin(), ControlOf);
    }
    return sources;
  }();
  return kSources;
}

}  // namespace

TrayMedia MediaOfTray(const Engine& engine, uint16_t source) {
  return heron::MediaOfTray(*engine.ui, source);
}

std::array<ControlIndex, 4> TrayMirrors(ControlIndex source) {
  const auto row = std::ranges::find(Sources(), source, &MirroredSource::source);
  return row == Sources().end() ? std::array{kNoControl, kNoControl, kNoControl, kNoControl} : row->mirrors;
}

ControlIndex SourceOfMirror(ControlIndex mirror) {
  const auto has = [&](const MirroredSource& row) { return std::ranges::count(row.mirrors, mirror) != 0; };
  const auto row = std::ranges::find_if(Sources(), has);
  return row == Sources().end() ? kNoControl : row->source;
}

void LoadTrayMedia(Engine& engine, ControlIndex source) {
  const auto row = std::ranges::find(Sources(), source, &MirroredSource::source);
  if (row != Sources().end()) LoadTrayMirrors(*engine.ui, kMirroredTrays[static_cast<size_t>(row - Sources().begin())]);
}

bool StoreTrayMedia(Engine& engine, ControlIndex mirror, uint16_t value) {
  const ControlIndex source = SourceOfMirror(mirror);
  TrayMedia* const media = source == kNoControl ? nullptr : FindTrayMedia(*engine.ui, engine.Value(source));
  if (media == nullptr) return false;
  uint8_t* const bytes[] = {&media->mediaType, &media->weight, &media->paperColor, &media->punched};
  const auto mirrors = TrayMirrors(source);
  *bytes[std::ranges::find(mirrors, mirror) - mirrors.begin()] = static_cast<uint8_t>(value);
  return true;
}

}  // namespace heron::engine
