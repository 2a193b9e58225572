// The image shift of a sheet's two sides: while the back follows the front, it shifts the same way on the sheet.
#pragma once

#include "uistate/ui_state.h"

namespace heron::pages {

/// Whether the back follows the front (`ImgShiftBackAuto_Check`).
bool BackFollowsFront(const UiState& ui);

/// Where the back follows: its directions take those of the front, left and right exchanged, up and down the same; its
/// distances and its page interval take the front's. Otherwise nothing changes.
void FollowFrontDirections(const UiState& ui);
void FollowFront(const UiState& ui);

}  // namespace heron::pages
