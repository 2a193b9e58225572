// Two layouts of the page state lead to the same drawing. On path 556 the state says whether the stamp is drawn here or
// left to the printing side; on path 488 some of its flags are set while the stamp is drawn.
#include "printpath/watermark_stamp.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "catalog/other_values.h"
#include "escapes/job_blocks.h"
#include "platform/api/characters.h"
#include "platform/api/device_context.h"
#include "printpath/page_state.h"
#include "printpath/selected_object.h"
#include "printpath/stamp_geometry.h"
#include "settings/binding.h"
#include "uistate/walk_store.h"

namespace heron {

using namespace platform;

namespace {

constexpr COLORREF kBlack = 0;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr int16_t kLandscape = value::lpOrientation::kLandscape;
constexpr int32_t kNoZoom = 100;
constexpr int32_t kLargestSize = 0x7FFF;

/// One page's stamp, out of an entry of the user's list.
struct WatermarkStamp {
  int style;      ///< as value::fontStyle
  int32_t size;   ///< points, above 0
  int32_t angle;  ///< tenths of a degree, counter-clockwise
  std::u16string fontName;
  std::u16string text;
  COLORREF color;
  int16_t centerX;  ///< tenths of a millimetre from the middle of the page
  int16_t centerY;
  uint8_t intensity;
};

template <size_t kRoom>
std::u16string TextOf(const char16_t (&text)[kRoom]) {
  return {text, std::find(text, text + kRoom - 1, u'\0')};
}

/// The stamp of the record; none if it uses none, or one that the list hasn't got or that has nothing to draw.
std::optional<WatermarkStamp> MakeStamp(const DriverEnv& record, std::u16string_view printer_name) {
  const int index = Get<"watermarkIndex">(record);
  if (Get<"Watermark_Use">(record) == 0 || index == 0 || index >= kWatermarkCount) return std::nullopt;
  ListStoreSet set;
  set.watermarks = std::make_unique<WatermarkStore>();
  if (!ReadStoreItem(set, ListStoreId::kWatermarks, printer_name, index)) return std::nullopt;
  const WatermarkEntry& entry = set.watermarks->entries[index];
  if (index >= set.watermarks->wMarkListNum || entry.size == 0 || entry.text[0] == u'\0') return std::nullopt;
  const auto intensity = static_cast<uint8_t>(entry.color);
  return WatermarkStamp{.style = static_cast<int16_t>(entry.style),
                        .size = static_cast<int32_t>(std::min<uint32_t>(entry.size, kLargestSize)),
                        .angle = entry.angle,
                        .fontName = TextOf(entry.font),
                        .text = TextOf(entry.text),
                        .color = StampColor(entry.selectColor, intensity),
                        .centerX = static_cast<int16_t>(entry.centerX),
                        .centerY = static_cast<int16_t>(entry.centerY),
                        .intensity = intensity};
}

LOGFONTW FontOf(const WatermarkStamp& stamp, int32_t dpi) {
  LOGFONTW font{};
  font.lfHeight = -(stamp.size * dpi / 72);
  font.lfEscapement = stamp.angle;
  font.lfWeight = value::fontStyle::IsBold(stamp.style) ? 700 : 400;
  font.lfItalic = value::fontStyle::IsItalic(stamp.style) ? 1 : 0;
  font.lfCharSet = 1;
  font.lfOutPrecision = 4;
  platform::WholeCharacters(stamp.fontName, kFaceSize - 1).copy(font.lfFaceName, kFaceSize);
  return font;
}

/// What both layouts of the page state say of the page.
struct PageFacts {
  PageSides sides;
  int16_t orientation;  ///< of the sides
  int16_t dpiX;
  int16_t dpiY;
  int32_t zoom;
  bool exchanged;   ///< the layout exchanges width and height
  bool wholeSheet;  ///< allowed
};

PageSides SidesAt(const PageState& state, size_t offset) {
  return {state.At<uint32_t>(offset), state.At<uint32_t>(offset + 4), state.At<uint32_t>(offset + 8),
          state.At<uint32_t>(offset + 12)};
}

PageFacts ReadDevMode(const PageState& state, size_t devmode) {
  return {.sides = {},
          .orientation = state.At<int16_t>(devmode + FieldOf<"dmOrientation">().offset),
          .dpiX = state.At<int16_t>(devmode + FieldOf<"dmPrintQuality">().offset),
          .dpiY = state.At<int16_t>(devmode + FieldOf<"dmYResolution">().offset),
          .zoom = kNoZoom,
          .exchanged = false,
          .wholeSheet = false};
}

PageFacts ReadFacts556(const PageState& state) {
  using At = PageState556;
  PageFacts facts = ReadDevMode(state, At::kDevMode);
  facts.sides = SidesAt(state, At::kPhysical);
  facts.zoom = state.At<int16_t>(At::kZoom);
  const auto kind = state.At<uint16_t>(At::kLayoutKind);
  facts.exchanged = kind == 2 || kind == 6;
  facts.wholeSheet = state.At<uint16_t>(At::kLayoutFlag) == 0 && state.At<uint32_t>(At::kWholeSheetFlag) == 0;
  return facts;
}

PageFacts ReadFacts488(const PageState& state) {
  using At = PageState488;
  constexpr uint8_t kWholeSheet = 3;
  constexpr uint8_t kPrintableOnly = 4;
  PageFacts facts = ReadDevMode(state, At::kDevMode);
  const auto flag = state.At<uint8_t>(At::kLayoutFlag);
  facts.sides = SidesAt(state, flag == kPrintableOnly ? At::kPrintable : At::kPhysical);
  facts.zoom = state.At<uint16_t>(At::kZoom);
  const auto kind = state.At<uint8_t>(At::kLayoutKind);
  const auto variant = state.At<uint8_t>(At::kLayoutKind + 1);
  facts.exchanged = (kind == 1 && variant == 2) || (kind == 2 && variant == 3);
  facts.wholeSheet = flag == kWholeSheet;
  return facts;
}

/// A record's layout that turns its pages against their sheet.
bool ExchangesSides(const DriverEnv& record) {
  const uint8_t layout = Get<"lpLayout">(record);
  return IsOn<"Layout_Check">(record) &&
         (LayoutTurnsPages(layout) || layout == value::lpLayout::kTurned3 || layout == value::lpLayout::kTurned9);
}

int32_t Dpi(int16_t given, int32_t otherwise) {
  return given > 0 ? given : otherwise;
}

/// The stamp's page. Record and state both know the layout, so that either exchanges the sides, and once; the state's
/// sides are those of its own orientation, and the page's may differ.
StampPage PageFor(HDC hdc, const PageFacts& facts, const DriverEnv& record) {
  const int orientation = CallEscape<"EscGetPageOrientation">(hdc);
  const bool turned =
      orientation != 0 && facts.orientation != 0 && (orientation == kLandscape) != (facts.orientation == kLandscape);
  const bool exchanged = turned != (facts.exchanged || ExchangesSides(record));
  const int32_t zoom = facts.zoom > 0 ? facts.zoom : kNoZoom;
  if (facts.wholeSheet && zoom < kNoZoom) {
    return {PageArea(facts.sides, exchanged, kNoZoom), facts.dpiX, facts.dpiY, kNoZoom};
  }
  return {PageArea(facts.sides, exchanged, zoom), Dpi(Get<"dmPrintQuality">(record), facts.dpiX),
          Dpi(Get<"dmYResolution">(record), facts.dpiY), zoom};
}

/// A stamp and where and how it is drawn.
struct Drawing {
  const WatermarkStamp& stamp;
  StampPage page;
  int32_t fontDpi;
  bool marked;  ///< plain text between two marks for the printing side; else a filled outline
};

void DrawOutline(HDC hdc, POINT at, const std::u16string& text, COLORREF color) {
  BeginPath(hdc);
  TextOutW(hdc, at.x, at.y, text.data(), static_cast<int>(text.size()));
  EndPath(hdc);
  const SelectedObject pen(hdc, CreatePen(0, 1, color));
  const SelectedObject brush(hdc, CreateSolidBrush(color));
  StrokeAndFillPath(hdc);
}

void DrawMarked(HDC hdc, POINT at, const std::u16string& text, const RECT& area) {
  SendEscape<"EscStampBegin">(hdc);
  ExtTextOutW(hdc, at.x, at.y, ETO_CLIPPED, &area, text.data(), static_cast<DWORD>(text.size()), nullptr);
  SendEscape<"EscStampEnd">(hdc);
}

void Draw(HDC hdc, const Drawing& drawing, COLORREF color) {
  const WatermarkStamp& stamp = drawing.stamp;
  const RECT& area = drawing.page.area;
  const KeptState kept(hdc);
  SetMapMode(hdc, MM_TEXT);
  SetWindowOrgEx(hdc, 0, 0, nullptr);
  SetViewportOrgEx(hdc, 0, 0, nullptr);
  SelectClipRgn(hdc, nullptr);
  IntersectClipRect(hdc, area.left, area.top, area.right, area.bottom);
  const LOGFONTW logfont = FontOf(stamp, drawing.fontDpi);
  const SelectedObject font(hdc, CreateFontIndirectW(&logfont));
  SetTextColor(hdc, color);
  SetBkColor(hdc, kWhite);
  SetBkMode(hdc, TRANSPARENT);
  SetTextAlign(hdc, TA_CENTER | TA_BOTTOM);
  SIZE extent{};
  GetTextExtentPointW(hdc, stamp.text.data(), static_cast<int>(stamp.text.size()), &extent);
  const POINT at = StampPosition(drawing.page, stamp.centerX, stamp.centerY, stamp.angle, extent.cy);
  if (drawing.marked) {
    DrawMarked(hdc, at, stamp.text, area);
  } else {
    DrawOutline(hdc, at, stamp.text, color);
  }
}

/// The stamp's fields, for the printing side. `angle` in the unit that it expects.
void StoreStamp(PageState& state, const WatermarkStamp& stamp, int32_t angle, const DriverEnv& record) {
  using At = PageState556;
  const uint32_t first_page_only = Get<"FirstPageOnly">(record);
  state.Put(At::kFirstPageOnly, first_page_only);
  state.Put(At::kFirstPageOnlyToo, first_page_only);
  state.PutText(At::kStampText, (At::kStampStyle - At::kStampText) / sizeof(char16_t), stamp.text);
  state.Put(At::kStampStyle, static_cast<int16_t>(stamp.style));
  state.PutText(At::kStampFont, kFaceSize, stamp.fontName);
  state.Put(At::kStampSize, static_cast<int16_t>(stamp.size));
  state.Put(At::kStampIntensity, stamp.intensity);
  state.Put(At::kStampAngle, static_cast<int16_t>(angle));
  state.Put(At::kStampCenterX, static_cast<uint32_t>(stamp.centerX));
  state.Put(At::kStampCenterY, static_cast<uint32_t>(stamp.centerY));
  state.PutBack();
}

void Stamp556(HDC hdc, const DriverEnv& record, const WatermarkStamp& stamp) {
  constexpr uint16_t kDrawHere = 1;
  constexpr uint16_t kPlainText = 2;
  enum : uint8_t { kFormColored = 1, kFormMasked = 2 };
  PageState state(hdc, DrawPath::k556);
  const auto order = state.At<uint16_t>(PageState556::kDrawingOrder);
  const auto form = state.At<uint8_t>(PageState556::kFormMaking);
  if (order != kDrawHere && form != kFormMasked) return StoreStamp(state, stamp, stamp.angle / 10, record);

  const PageFacts facts = ReadFacts556(state);
  const Drawing drawing = {stamp, PageFor(hdc, facts, record), facts.dpiY, order == kPlainText};
  if (order != kDrawHere) return Draw(hdc, drawing, stamp.color);
  StoreStamp(state, stamp, stamp.angle, record);
  if (form == kFormColored) return Draw(hdc, drawing, stamp.color);
  SendEscape<"EscStampNoColor">(hdc);
  Draw(hdc, drawing, kWhite);
  if (form == kFormMasked) Draw(hdc, drawing, kBlack);
}

/// Sets the state's flags for a drawing in `color_mode`, and puts them back at the end.
class StampFlags {
 public:
  StampFlags(PageState& state, uint8_t color_mode) : state_(state) {
    for (size_t i = 0; i < flags_.size(); ++i) flags_[i] = state_.At<uint8_t>(PageState488::kStampFlags + i);
    if (color_mode == value::lpColorMode::kTwoColor) state_.Put(PageState488::kStampFlags, uint8_t{1});
    state_.Put(PageState488::kStampFlags + 1, uint8_t{0});
    state_.Put(PageState488::kStampFlags + 2, uint8_t{0});
    state_.PutBack();
  }
  ~StampFlags() {
    for (size_t i = 0; i < flags_.size(); ++i) state_.Put(PageState488::kStampFlags + i, flags_[i]);
    state_.PutBack();
  }
  StampFlags(const StampFlags&) = delete;
  StampFlags& operator=(const StampFlags&) = delete;

 private:
  PageState& state_;
  std::array<uint8_t, 3> flags_;
};

void Stamp488(HDC hdc, const DriverEnv& record, const WatermarkStamp& stamp) {
  constexpr uint8_t kMarkedOrder = 2;
  PageState state(hdc, DrawPath::k488);
  const PageFacts facts = ReadFacts488(state);
  const bool marked = state.At<uint8_t>(PageState488::kDrawingOrder) == kMarkedOrder;
  const Drawing drawing = {stamp, PageFor(hdc, facts, record), facts.dpiY, marked};
  const auto color_mode = state.At<uint8_t>(PageState488::kColorMode);
  const StampFlags flags(state, color_mode);
  SendEscape<"EscStampColor">(hdc, stamp.intensity);
  if (color_mode == value::lpColorMode::kTwoColor) return Draw(hdc, drawing, stamp.color);
  const bool masked = color_mode == value::lpColorMode::kColor || color_mode == value::lpColorMode::kMonochrome;
  if (masked) SendEscape<"EscStampNoColor">(hdc);
  Draw(hdc, drawing, masked ? kBlack : kWhite);
}

}  // namespace

COLORREF StampColor(uint32_t kind, uint8_t value) {
  /// The channels that stay full, as bits: red, green, blue.
  static constexpr std::array<uint8_t, 7> kFull = {0, 1, 2, 4, 3, 5, 6};
  const uint8_t full = kind < kFull.size() ? kFull[kind] : 0;
  COLORREF color = 0;
  for (unsigned channel = 0; channel < 3; ++channel) {
    const COLORREF share = (full >> channel & 1) != 0 ? 0xFF : value;
    color |= share << (8 * channel);
  }
  return color;
}

void DrawWatermark(HDC hdc, const DriverEnv& record, std::u16string_view printer_name) {
  const std::optional<WatermarkStamp> stamp = MakeStamp(record, printer_name);
  if (!stamp.has_value()) return;
  constexpr int kEndOfFirstPage = 1;
  if (Get<"FirstPageOnly">(record) != 0 && CallEscape<"EscGetPageNumber">(hdc) != kEndOfFirstPage) return;
  if (AskDrawPath(hdc) == DrawPath::k556) {
    Stamp556(hdc, record, *stamp);
  } else {
    Stamp488(hdc, record, *stamp);
  }
}

}  // namespace heron
