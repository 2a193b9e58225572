// The paper-type list: which media lie in which tray. It has a section of its own in a settings file.
#pragma once

#include "platform/profile.h"
#include "uistate/ui_state.h"

namespace heron {

inline constexpr int kMediaItemCount = 10;

struct MediaItem {
  int16_t source;
  uint8_t mediaType;
  uint8_t weight;
  uint8_t paperColor;
  uint8_t punched;
};

/// The state's form of the list, its 64 bytes of the record.
struct MediaList {
  int16_t maxCount;
  int16_t index;  ///< of the selected item
  MediaItem items[kMediaItemCount];
};
static_assert(sizeof(MediaItem) == 6 && sizeof(MediaList) == sizeof(UiHead::trayTable));

MediaList ReadMediaList(const UiState& ui);

/// Replaces the list's section by one at the end of the file.
void WriteMediaSection(const UiState& ui, platform::Profile& file);
/// Takes the list from its section; items keep their sources. What is missing, or what the catalogue hasn't got, is the
/// catalogue's default.
void ReadMediaSection(UiState& ui, const platform::Profile& file, const ResourceContext* resources);

/// Brings the media of the trays of lpMediaSource, lpFrontCoverTray and lpBackCoverTray in line with the list.
void RefreshTrayMedia(const UiState& ui, const ResourceContext* resources);

}  // namespace heron
