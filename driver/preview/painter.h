// Draws the previews on a canvas, scaled to their place.
//
// Pictures come from the resource module by their numbers (Canvas::DrawResource) and have transparency of their own, so
// masks aren't drawn. The texts are in use and the paper table's names loaded.
#pragma once

#include <string>
#include <string_view>

#include "platform/api/canvas.h"
#include "preview/labels.h"
#include "preview/layer.h"
#include "uistate/ui_state.h"

namespace heron::preview {

/// The upper place of a page: the paper or the machine, as the view selector says.
void DrawUpperPicture(platform::Canvas& canvas, const platform::RECT& place, const UiState& ui);

void DrawPaperView(platform::Canvas& canvas, const platform::RECT& place, const UiState& ui);
/// Clears the place and draws the machine as installed.
void DrawMachineBase(platform::Canvas& canvas, const platform::RECT& place, const UiState& ui);
/// Draws the lit source and tray over it.
void DrawMachineHighlights(platform::Canvas& canvas, const platform::RECT& place, const UiState& ui);

/// What the upper place shows: two that are equal are drawn alike.
struct PaintedUpper {
  bool isPaper = false;
  Stack stack;
  std::vector<Label> labels;
};
PaintedUpper PaintedUpperOf(const UiState& ui);
/// The parts of `place` that differ between two drawings in it: the whole, the sheet or the machine, single labels.
std::vector<platform::RECT> ChangedAreas(const PaintedUpper& before, const PaintedUpper& now,
                                         const platform::RECT& place);

/// The lower place. Brings the order of its symbols up to date in the settings.
void DrawStatusPanel(platform::Canvas& canvas, const platform::RECT& place, UiState& ui);

/// The text, or as much of its front as fits with ".." into `width` pixels less a small rest; at least three
/// characters, dots included.
std::u16string TruncateToFit(platform::Canvas& canvas, const platform::LOGFONTW& font, std::u16string_view text,
                             platform::LONG width, platform::LONG rest);

}  // namespace heron::preview
