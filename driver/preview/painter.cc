#include "preview/painter.h"

#include <algorithm>

#include "engine/setting.h"
#include "preview/geometry.h"
#include "preview/machine_view.h"
#include "preview/paper_view.h"
#include "preview/status_view.h"

namespace heron::preview {

using platform::Canvas;
using platform::COLORREF;
using platform::LONG;
using platform::RECT;

namespace {

/// The colours of a place: its ground, its letters, the outer edge above and below, the inner edge.
struct Ground {
  COLORREF fill, ink, upper, lower, inner;
};
constexpr Ground kLight = {0xFFFFFF, 0x000000, 0x808080, 0xE0E0E0, 0x000000};
constexpr Ground kDark = {0x292623, 0xF0F0F0, 0x181614, 0x5C5650, 0x000000};

const Ground& GroundOf(const Canvas& canvas) {
  return canvas.HasDarkGround() ? kDark : kLight;
}

constexpr LONG kLetters = 10;    // height of a label's letters at scale 1
constexpr double kTextRest = 5;  // what a label leaves free of its area

/// A place with a sunken edge, as thin at every scale. The inner line is black above and on the left.
void DrawFrame(Canvas& canvas, const RECT& place) {
  const auto [left, top, right, bottom] = place;
  const Ground& ground = GroundOf(canvas);
  canvas.FillRect(place, ground.fill, {});
  canvas.FillRect({left, top, right, top + 1}, ground.upper, place);
  canvas.FillRect({left, top, left + 1, bottom}, ground.upper, place);
  canvas.FillRect({left, bottom - 1, right, bottom}, ground.lower, place);
  canvas.FillRect({right - 1, top, right, bottom}, ground.lower, place);
  canvas.FillRect({left + 1, top + 1, right - 1, top + 2}, ground.inner, place);
  canvas.FillRect({left + 1, top + 1, left + 2, bottom - 1}, ground.inner, place);
}

void DrawStack(Canvas& canvas, const Viewport& view, const RECT& clip, const Stack& stack, platform::POINT origin) {
  for (const Layer& layer : stack) {
    if (layer.isMask) continue;
    const LONG x = origin.x + layer.x;
    const LONG y = origin.y + layer.y;
    canvas.DrawResource(layer.picture, view.Map({x, y, x + layer.width, y + layer.height}), clip);
  }
}

void DrawLabel(Canvas& canvas, const Viewport& view, const RECT& at, std::u16string_view text) {
  platform::LOGFONTW font{};
  font.lfHeight = -std::max<LONG>(1, view.MapLength(kLetters));
  const COLORREF ink = GroundOf(canvas).ink;
  const RECT area = view.Map(at);
  const std::u16string shown = TruncateToFit(canvas, font, text, area.right - area.left, view.MapLength(kTextRest));
  const LONG height = canvas.MeasureText(font, shown).cy;
  canvas.DrawLine({.at = {area.left, area.top + (area.bottom - area.top - height) / 2},
                   .text = shown,
                   .font = font,
                   .align = platform::TA_LEFT | platform::TA_TOP,
                   .color = ink,
                   .outline = false,
                   .pen_width = 0,
                   .pen_color = ink,
                   .backdrop = {}},
                  {});
}

void DrawLabels(Canvas& canvas, const Viewport& view, PaperGeometry geometry, const std::vector<Label>& labels) {
  RECT* const places = geometry.labels;
  const auto at = [&](LabelPlace place) -> RECT& { return places[static_cast<size_t>(place)]; };
  const bool arrow = std::ranges::any_of(
      labels, [](const Label& label) { return label.place == LabelPlace::kArrow && !label.text.empty(); });
  if (arrow) at(LabelPlace::kOriginalName).right = at(LabelPlace::kArrow).left;
  for (const Label& label : labels) {
    if (!label.text.empty()) DrawLabel(canvas, view, at(label.place), label.text);
  }
}

}  // namespace

std::u16string TruncateToFit(Canvas& canvas, const platform::LOGFONTW& font, std::u16string_view text, LONG width,
                             LONG rest) {
  constexpr std::u16string_view kDots = u"..";
  constexpr size_t kFewest = 3;
  std::u16string shown(text);
  for (size_t kept = text.size(); shown.size() > kFewest && canvas.MeasureText(font, shown).cx > width - rest;) {
    kept = std::max<size_t>(kept - 1, 1);
    shown = std::u16string(text.substr(0, kept)).append(kDots);
  }
  return shown;
}

void DrawPaperView(Canvas& canvas, const RECT& place, const UiState& ui) {
  const Viewport view(place, kUpperSize);
  const PaperGeometry geometry = PaperGeometryOf(view.area());
  DrawFrame(canvas, place);
  DrawStack(canvas, view, place, StackPaper(DescribePaper(ui)), geometry.sheet);
  DrawLabels(canvas, view, geometry, PaperLabels(ui));
}

void DrawMachineBase(Canvas& canvas, const RECT& place, const UiState& ui) {
  const Viewport view(place, kUpperSize);
  DrawFrame(canvas, place);
  DrawStack(canvas, view, place, StackMachine(DescribeMachine(ui)), MachineOrigin(view.area()));
}

void DrawMachineHighlights(Canvas& canvas, const RECT& place, const UiState& ui) {
  const Viewport view(place, kUpperSize);
  DrawStack(canvas, view, place, StackHighlights(DescribeMachine(ui)), MachineOrigin(view.area()));
}

void DrawUpperPicture(Canvas& canvas, const RECT& place, const UiState& ui) {
  if (engine::Setting<u"PreviewMode Sel">(ui) == kPaperView) return DrawPaperView(canvas, place, ui);
  DrawMachineBase(canvas, place, ui);
  DrawMachineHighlights(canvas, place, ui);
}

void DrawStatusPanel(Canvas& canvas, const RECT& place, UiState& ui) {
  const Viewport view(place, kStatusSize);
  DrawFrame(canvas, place);
  DrawStack(canvas, view, place, StackStatus(DescribeStatusPaint(ui, view.area())), {0, 0});
}

PaintedUpper PaintedUpperOf(const UiState& ui) {
  if (engine::Setting<u"PreviewMode Sel">(ui) == kPaperView)
    return {.isPaper = true, .stack = StackPaper(DescribePaper(ui)), .labels = PaperLabels(ui)};
  PaintedUpper painted{.isPaper = false, .stack = StackMachine(DescribeMachine(ui)), .labels = {}};
  const Stack lit = StackHighlights(DescribeMachine(ui));
  painted.stack.insert(painted.stack.end(), lit.begin(), lit.end());
  return painted;
}

std::vector<RECT> ChangedAreas(const PaintedUpper& before, const PaintedUpper& now, const RECT& place) {
  if (before.isPaper != now.isPaper) return {place};
  const Viewport view(place, kUpperSize);
  if (!now.isPaper) {
    if (before.stack == now.stack) return {};
    const auto [x, y] = MachineOrigin(view.area());
    return {view.Map({x, y, x + kMachineWidth, y + kMachineHeight})};
  }
  const PaperGeometry geometry = PaperGeometryOf(view.area());
  std::vector<RECT> areas;
  if (before.stack != now.stack) {
    const auto [x, y] = geometry.sheet;
    areas.push_back(view.Map({x, y, x + kSheetArea, y + kSheetArea}));
  }
  for (size_t n = 0; n < kLabelPlaces; ++n) {
    const auto text_of = [n](const PaintedUpper& painted) {
      const auto at = std::ranges::find(painted.labels, static_cast<LabelPlace>(n), &Label::place);
      return at == painted.labels.end() ? std::u16string_view() : std::u16string_view(at->text);
    };
    // The arrow takes its room from the name beside it.
    const bool is_arrow = static_cast<LabelPlace>(n) == LabelPlace::kArrow;
    if (text_of(before) != text_of(now))
      areas.push_back(
          view.Map(is_arrow ? geometry.labels[static_cast<size_t>(LabelPlace::kOriginalName)] : geometry.labels[n]));
  }
  return areas;
}

}  // namespace heron::preview
