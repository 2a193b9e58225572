#include "pages/dialog_pictures.h"

#include <algorithm>

#include "catalog/other_values.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "preview/paper_view.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using engine::Setting;
using platform::Canvas;
using platform::COLORREF;
using platform::LONG;
using platform::RECT;
using preview::kTwoSheets;

constexpr COLORREF kPaper = 0xFFFFFF, kLine = 0x70665B, kPage = 0xF7EDE3, kText = 0xBFA68E, kMargin = 0xE8C8A9;

constexpr LONG kSheetLong = 112, kSheetShort = 84;  // of the frame pictures
constexpr LONG kSheetBorder = 2;
constexpr LONG kBand = 14;  // the margin's, whatever its width
constexpr LONG kGap = 4;    // around a page

LONG Width(const RECT& area) {
  return area.right - area.left;
}
LONG Height(const RECT& area) {
  return area.bottom - area.top;
}

/// Edges of a rectangle.
enum Edge : uint8_t {
  kNone = 0,
  kLeft = value::lpBindMargin::kLeft,
  kRight = value::lpBindMargin::kRight,
  kTop = value::lpBindMargin::kTop,
  kBottom = value::lpBindMargin::kBottom,
};

Edge EdgeOf(int number) {
  return number >= kLeft && number <= kBottom ? static_cast<Edge>(number) : kNone;
}

Edge Opposite(Edge edge) {
  return edge == kLeft ? kRight : edge == kRight ? kLeft : edge == kTop ? kBottom : kTop;
}

/// The rectangle less a strip at one edge.
RECT Less(RECT area, Edge edge, LONG width) {
  if (edge == kLeft) area.left += width;
  if (edge == kRight) area.right -= width;
  if (edge == kTop) area.top += width;
  if (edge == kBottom) area.bottom -= width;
  return area;
}

/// That strip.
RECT Strip(RECT area, Edge edge, LONG width) {
  if (edge == kLeft) area.right = area.left + width;
  if (edge == kRight) area.left = area.right - width;
  if (edge == kTop) area.bottom = area.top + width;
  if (edge == kBottom) area.top = area.bottom - width;
  return area;
}

RECT Centred(const RECT& place, LONG width, LONG height) {
  const LONG left = place.left + (Width(place) - width) / 2;
  const LONG top = place.top + (Height(place) - height) / 2;
  return {left, top, left + width, top + height};
}

/// A page with a few lines of text.
void DrawPage(Canvas& canvas, const RECT& page, const RECT& clip) {
  canvas.FillRect(page, kPage, clip);
  const LONG inset = std::max<LONG>(2, Width(page) / 8);
  const LONG pitch = std::max<LONG>(3, Height(page) / 8);
  for (LONG y = page.top + pitch; y + 2 < page.bottom; y += pitch)
    canvas.FillRect({page.left + inset, y, page.right - inset, y + 1}, kText, clip);
}

/// How many pages are along the long and the short side of a sheet, by layout class.
struct Grid {
  LONG along, across;
};
constexpr Grid kGrids[] = {{1, 1}, {2, 1}, {2, 2}, {3, 2}, {3, 3}, {4, 4}};

/// `clip`: the sheet that the pages may be moved beyond.
void DrawPages(Canvas& canvas, const RECT& area, uint8_t layout, const RECT& clip) {
  const Grid grid = kGrids[std::min<size_t>(layout, std::size(kGrids) - 1)];
  const bool wide = Width(area) > Height(area);
  const LONG columns = wide ? grid.along : grid.across;
  const LONG rows = wide ? grid.across : grid.along;
  for (LONG row = 0; row < rows; ++row) {
    for (LONG column = 0; column < columns; ++column) {
      DrawPage(canvas,
               {area.left + Width(area) * column / columns + kGap / 2, area.top + Height(area) * row / rows + kGap / 2,
                area.left + Width(area) * (column + 1) / columns - kGap / 2,
                area.top + Height(area) * (row + 1) / rows - kGap / 2},
               clip);
    }
  }
}

/// Where the pages are placed: moved away from the margin, or reduced in their proportions beside it.
RECT PagesBeside(const RECT& sheet, const MarginPicture& picture) {
  const Edge edge = EdgeOf(picture.marginEdge);
  if (edge == kNone) return sheet;
  const RECT beside = Less(sheet, edge, kBand);
  if (picture.marginMode != value::lpMarginMode::kReduce) return Less(beside, Opposite(edge), -kBand);
  const LONG width = std::min(Width(beside), Height(beside) * Width(sheet) / Height(sheet));
  return Centred(beside, width, width * Height(sheet) / Width(sheet));
}

}  // namespace

MarginPicture DescribeMargin(const UiState& ui) {
  const bool landscape = SheetOrientation(engine::BindingOf(ui)) == value::lpOrientation::kLandscape;
  const bool on = IsOn<u"BindMargin_Check">(ui);
  const bool booklet = Setting<u"lpPRNType">(ui) == value::lpPRNType::kBooklet;
  return {.landscape = landscape,
          .layoutClass = preview::LayoutClassOf(ui),
          .marginOn = on,
          .marginMode = Setting<u"lpMarginMode">(ui),
          .marginEdge = on ? static_cast<uint8_t>(Setting<u"lpBindMargin">(ui)) : uint8_t{0},
          .booklet = booklet,
          .bookletEdge = booklet ? preview::FoldEdge(engine::ResolveBindingEdge(ui), landscape) : uint8_t{0}};
}

uint32_t MarginFrame(const MarginPicture& picture) {
  return picture.landscape ? 15281 : 15280;
}

void DrawMargin(const MarginPicture& picture, Canvas& canvas, const RECT& place) {
  const LONG width = picture.landscape ? kSheetLong : kSheetShort;
  const RECT frame = Centred(place, width, kSheetLong + kSheetShort - width);
  const RECT sheet = {frame.left + kSheetBorder, frame.top + kSheetBorder, frame.right - kSheetBorder,
                      frame.bottom - kSheetBorder};
  const RECT pages = PagesBeside(sheet, picture);
  const auto layout = static_cast<uint8_t>(picture.layoutClass % kTwoSheets);
  if (picture.layoutClass < kTwoSheets) {
    DrawPages(canvas, pages, layout, sheet);
  } else {
    const Edge half_at = picture.landscape ? kLeft : kTop;
    const LONG half = (picture.landscape ? Width(pages) : Height(pages)) / 2;
    DrawPages(canvas, Strip(pages, half_at, half), layout, sheet);
    DrawPages(canvas, Less(pages, half_at, half), layout, sheet);
  }
  if (const Edge margin = EdgeOf(picture.marginEdge); margin != kNone)
    canvas.FillRect(Strip(sheet, margin, kBand), kMargin, {});
  const Edge fold = EdgeOf(picture.bookletEdge - 1);  // a binding's edges count from 2
  if (picture.booklet && fold != kNone) canvas.FillRect(Strip(frame, fold, 2 * kSheetBorder), kLine, {});
}

void DrawPaper(uint32_t width, uint32_t length, Canvas& canvas, const RECT& place) {
  constexpr LONG kMeasure = 14;  // the room beside the sheet for a measure
  if (width == 0 || length == 0) return;
  const int64_t room_x = Width(place) - 4 * kMeasure;
  const int64_t room_y = Height(place) - 2 * kMeasure;
  const bool by_width = room_x * length < room_y * width;
  const LONG drawn_x = static_cast<LONG>(std::max<int64_t>(1, by_width ? room_x : room_y * width / length));
  const LONG drawn_y = static_cast<LONG>(std::max<int64_t>(1, by_width ? room_x * length / width : room_y));
  const RECT sheet =
      Centred({place.left + kMeasure, place.top + kMeasure, place.right, place.bottom}, drawn_x, drawn_y);
  canvas.FillRect(sheet, kPaper, {});
  for (const Edge edge : {kLeft, kRight, kTop, kBottom}) canvas.FillRect(Strip(sheet, edge, 1), kLine, {});
  const RECT above = {sheet.left, sheet.top - kMeasure, sheet.right, sheet.top - kMeasure / 2};
  const LONG y = (above.top + above.bottom) / 2;
  canvas.FillRect({above.left, y, above.right, y + 1}, kLine, {});
  for (const Edge edge : {kLeft, kRight}) canvas.FillRect(Strip(above, edge, 1), kLine, {});
  const RECT beside = {sheet.left - kMeasure, sheet.top, sheet.left - kMeasure / 2, sheet.bottom};
  const LONG x = (beside.left + beside.right) / 2;
  canvas.FillRect({x, beside.top, x + 1, beside.bottom}, kLine, {});
  for (const Edge edge : {kTop, kBottom}) canvas.FillRect(Strip(beside, edge, 1), kLine, {});
}

void DrawRowSide(uint16_t type, SheetSide side, Canvas& canvas, const RECT& place) {
  constexpr LONG kWidth = 64, kHeight = 84, kInset = 6;
  const bool by_height = Width(place) * kHeight > Height(place) * kWidth;
  const LONG height = by_height ? Height(place) : Width(place) * kHeight / kWidth;
  const RECT sheet = Centred(place, height * kWidth / kHeight, height);
  canvas.FillRect(sheet, kPaper, {});
  for (const Edge edge : {kLeft, kRight, kTop, kBottom}) canvas.FillRect(Strip(sheet, edge, 1), kLine, {});
  const bool printed = side == SheetSide::kFront ? type != value::lpInterSheetListPRNType::kBlankSheet
                                                 : type == value::lpInterSheetListPRNType::kTwoSided;
  const LONG inset = kInset * height / kHeight;
  if (printed)
    DrawPage(canvas, {sheet.left + inset, sheet.top + inset, sheet.right - inset, sheet.bottom - inset}, sheet);
}

}  // namespace heron::pages
