// The fax cover sheet on a place of a window: where it lies, how it is drawn, and the picture dragged on it.
#pragma once

#include "forms/cover_layout.h"
#include "platform/api/canvas.h"
#include "uistate/ui_state.h"

namespace heron::pages {

/// The size of a picture of the sheet alone, in pixels at scale 1.
inline constexpr platform::SIZE kCoverPictureSize = {420, 420};

/// The sheet, centred in the largest square of `place`, which is 30 cm wide.
platform::RECT CoverSheetIn(const UiState& ui, const platform::RECT& place);

/// Draws sheet and contents on a canvas; the recipients are those of `ui`. The strings are in use.
void DrawCoverPreview(const UiState& ui, platform::Canvas& canvas, const platform::RECT& place);

/// Puts the corner of the picture where the pointer is, as far as that is on the sheet.
void DragCoverPicture(const UiState& ui, const platform::RECT& sheet, platform::POINT at);

/// A position in whole percents, as the fields show it.
int CoverPercent(uint32_t position);

}  // namespace heron::pages
