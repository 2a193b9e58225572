// The paper-type list: which media lie in which tray (uistate/tray_media.h). It has a section of its own in a settings
// file.
#pragma once

#include "platform/api/profile.h"
#include "uistate/tray_media.h"

namespace heron {

/// Replaces the list's section by one at the end of the file.
void WriteMediaSection(const UiState& ui, platform::Profile& file);
/// Takes the list from its section; rows keep their sources. What is missing, or what the catalogue hasn't got, is the
/// catalogue's default.
void ReadMediaSection(const UiState& ui, const platform::Profile& file, const ResourceContext* resources);

/// Brings the media of the trays of lpMediaSource, lpFrontCoverTray and lpBackCoverTray in line with the list.
void RefreshTrayMedia(const UiState& ui);

}  // namespace heron
