// What follows from paper sizes: the automatic zoom, the room for a binding margin, whether a custom paper fits its
// tray; and the settings that are derived from others.
//
// Floor of the engine that needs a UiState and nothing else: no rule, no page. Everything is computed afresh from the
// values; nothing is kept between calls. Sizes are hundredths of a millimetre unless stated otherwise.
#pragma once

#include <cstdint>

#include "settings/binding.h"
#include "settings/papers.h"
#include "uistate/ui_state.h"

namespace heron::engine {

struct Area {
  int64_t width = 0;
  int64_t height = 0;
};

/// A custom paper with the insets that leave its printable area.
struct CustomArea {
  uint32_t width = 0;
  uint32_t height = 0;
  Margins insets{};
};

/// Size of the custom paper `code` in the state's own list, with the insets of the current paper source.
CustomArea ComputeCustomInsets(const UiState& ui, int32_t code);

/// Limits of the current paper source in a unit, as FindSourceLimit has them.
const SourceLimit& LimitOfSource(const UiState& ui, int unit);

/// The paper that is printed on: `lpOutputPaper`, or `lpMediaSize` where that says "same as document".
uint16_t PrintedPaper(const UiState& ui);

/// Whether that paper is no custom paper, or lies within the limits of the current paper source. What is compared is
/// the size as it is shown and typed: the smallest that may be typed is stored a fraction below its limit.
bool CustomPaperFits(const UiState& ui);

/// How the job is bound: the settings that decide on it, and the side they come to (2 left, 3 right, 4 top).
BindingChoice BindingOf(const UiState& ui);
uint8_t ResolveBindingEdge(const UiState& ui);

/// The largest zoom that the renderer can do on a paper, percent: 400 down to 100 in steps of 50.
int MaxZoomForPaper(const UiState& ui, int32_t code);

/// Whether the binding margin is on and makes the page smaller, not only moves it.
bool MarginReducesPage(const UiState& ui);

/// Whether the user may set the zoom: neither the sizes nor a layout nor a reducing margin decide on it.
bool ZoomIsFree(const UiState& ui);

struct ReducedZoom {
  int margin = 0;     ///< the margin that counts, millimetres
  int64_t zoom = 0;   ///< percent, within what the paper and the setting allow
  int64_t ratio = 0;  ///< percent, before those limits; 100 for a paper without a size
  Area source;        ///< the document's printable area, turned with a landscape page
  Area target;        ///< the output's, less the margin
};

/// The zoom at which the page fits beside the binding margin.
ReducedZoom ComputeReducedZoom(const UiState& ui);

/// Sets `ZoomCheck` and `Zoom` to what the sizes ask for.
void ComputeAutoZoom(const UiState& ui);

/// The same after a change of control `id`, if that control has a say in it. A margin that reduces the page counts
/// whatever was changed.
void UpdateAutoZoom(const UiState& ui, uint16_t id);

/// What the binding margin may be, millimetres.
struct MarginRanges {
  enum Bits : uint32_t {
    kFrontLimited = 0x1,  ///< the paper leaves less than the range of the setting
    kBackLimited = 0x4,
    kFrontEmpty = 0x10,
    kBackEmpty = 0x20,
    kFrontChanged = 0x100,
    kBackChanged = 0x200,
    kBackFollows = 0x400,  ///< `back` was set to `front`, as MarginEqual_Check asks
    kZoomTooLarge = 0x1000,
    kZoomTooSmall = 0x2000,
    kImpossible = kFrontEmpty | kBackEmpty | kFrontChanged | kBackChanged,
  };
  uint32_t bits = 0;
  int minFront = 0, maxFront = 0, minBack = 0, maxBack = 0;
  int front = 0, back = 0;  ///< the current margins, brought into the ranges
};

/// Ranges of the settings while the margin only moves the page; else those that leave the reduced page at the lowest
/// zoom or above. Changes nothing.
MarginRanges BindingMarginRanges(const UiState& ui);

/// Brings `Layout_Check`, `lpLayout_Select`, `lpBorder` and `lpBooklet` in step with what they follow.
void DeriveLayout(const UiState& ui);

/// Brings `lpBindMargin` in step with the edge that the job is bound on.
void DeriveBindMargin(const UiState& ui);

/// Whether a layout puts two pages on a sheet.
bool IsTwoPages(uint16_t layout);

/// The rows of the list of page orders that go with the layout and the orientation; one value is in several rows.
struct OrderRows {
  size_t first, last;
};
OrderRows OrderRowsOf(const UiState& ui);

/// The order of pages that goes with a layout: `order` itself, or the layout's first one.
uint16_t OrderForLayout(uint16_t layout, uint16_t order);

}  // namespace heron::engine
