#include "preview/watermark_picture.h"

#include <algorithm>

#include "catalog/other_values.h"
#include "engine/setting.h"
#include "forms/watermark_list.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "preview/sentence.h"
#include "printpath/stamp_geometry.h"
#include "printpath/watermark_stamp.h"
#include "settings/papers.h"

namespace heron::preview {

using engine::IsOn;
using engine::Setting;
using platform::Canvas;
using platform::COLORREF;
using platform::LONG;
using platform::POINT;
using platform::RECT;

namespace {

constexpr COLORREF kBlack = 0;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kCross = 0xFF0000;
constexpr LONG kBold = 700;
constexpr LONG kRegular = 400;

/// Character set and pitch of a font that isn't installed.
constexpr uint8_t kOtherCharSet = 134;
constexpr uint8_t kOtherPitch = 17;

struct Size {
  uint32_t width = 0;
  uint32_t height = 0;
};

Size PaperOf(const UiState& ui) {
  Size size;
  PaperSizeMm(Setting<u"lpMediaSize">(ui), &size.width, &size.height);
  return size;
}

bool IsLongPaper(const UiState& ui, int32_t paper) {
  const int number = CustomPaperNumber(paper);
  return number != 0 && ui.stores.userPapers != nullptr &&
         (*ui.stores.userPapers)[static_cast<size_t>(number - 1)].longFlag != 0;
}

/// The size that fills the square: that of a long paper itself, else the largest of all.
int32_t LargestSide(const UiState& ui) {
  Size size = PaperOf(ui);
  if (!IsLongPaper(ui, Setting<u"lpMediaSize">(ui)) && ui.stores.userPapers != nullptr)
    MaxPaperSize(*ui.stores.userPapers, &size.width, &size.height);
  return static_cast<int32_t>(std::max({size.width, size.height, 1U}));
}

int32_t SideOf(uint32_t side) {
  constexpr uint32_t kUnknown = 10000;
  return static_cast<int32_t>(std::min<uint32_t>(side == 0 ? kUnknown : side, INT32_MAX));
}

LONG Inset(int32_t side, int32_t largest, LONG half) {
  return static_cast<LONG>(half - ((int64_t{side} * 1000 + largest / 2) / largest * half + 500) / 1000);
}

/// Height of letters of `size` points on a paper `width` wide that is drawn `pixels` wide. The steps round like this.
LONG FontHeight(uint32_t size, LONG pixels, int32_t width) {
  const int64_t dots = std::max<int64_t>(int64_t{width} / 254 * 600 / 10, 1);
  const int64_t height = (int64_t{size} * 1000 * pixels / dots * 600 / 72 + 999) / 1000;
  return static_cast<LONG>(-std::clamp<int64_t>(height, 0, INT16_MAX));
}

using Families = std::span<const platform::FontFamily>;

platform::LOGFONTW FontOf(const WatermarkEntry& entry, const PaperFrame& frame, Families families) {
  platform::LOGFONTW font{};
  const auto style = static_cast<int>(std::min<uint32_t>(entry.style, INT16_MAX));
  const std::u16string_view face = MarkFont(entry);
  const auto family = std::ranges::find(families, face, &platform::FontFamily::name);
  font.lfHeight = FontHeight(entry.size, frame.PaperWidth(), frame.width);
  font.lfEscapement = entry.angle;
  font.lfWeight = value::fontStyle::IsBold(style) ? kBold : kRegular;
  font.lfItalic = value::fontStyle::IsItalic(style) ? 1 : 0;
  font.lfCharSet = family == families.end() ? kOtherCharSet : family->char_set;
  font.lfPitchAndFamily = family == families.end() ? kOtherPitch : family->pitch_and_family;
  face.copy(font.lfFaceName, platform::kFaceSize - 1);
  return font;
}

LONG Offset(int32_t tenths, LONG pixels, int32_t side) {
  return static_cast<LONG>(int64_t{tenths} * pixels * 10 / side);
}

void DrawFrame(Canvas& canvas, const RECT& r) {
  canvas.FillRect({r.left, r.top, r.right, r.top + 1}, kBlack, {});
  canvas.FillRect({r.left, r.bottom - 1, r.right, r.bottom}, kBlack, {});
  canvas.FillRect({r.left, r.top, r.left + 1, r.bottom}, kBlack, {});
  canvas.FillRect({r.right - 1, r.top, r.right, r.bottom}, kBlack, {});
}

}  // namespace

PaperFrame FramePaper(const UiState& ui, const RECT& control) {
  PaperFrame frame{};
  frame.control = frame.square = control;
  const LONG half_width = (control.right - control.left) / 2;
  const LONG half_height = (control.bottom - control.top) / 2;
  if (half_height <= half_width) {
    frame.square.left += half_width - half_height;
    frame.square.right -= half_width - half_height;
  } else {
    frame.square.top += half_height - half_width;
    frame.square.bottom -= half_height - half_width;
  }
  const RECT& square = frame.square;
  frame.halfW = (square.right - square.left) / 2;
  frame.halfH = (square.bottom - square.top) / 2;
  const Size paper = PaperOf(ui);
  frame.width = SideOf(paper.width);
  frame.height = SideOf(paper.height);
  frame.largest = LargestSide(ui);
  if (Setting<u"lpOrientation">(ui) == value::lpOrientation::kLandscape) std::swap(frame.width, frame.height);
  frame.insetX = Inset(frame.width, frame.largest, frame.halfW);
  frame.insetY = Inset(frame.height, frame.largest, frame.halfH);
  frame.paper = {square.left + frame.insetX, square.top + frame.insetY, square.right - frame.insetX,
                 square.bottom - frame.insetY};
  frame.clip = {frame.paper.left + 1, frame.paper.top + 1, frame.paper.right - 1, frame.paper.bottom - 1};
  return frame;
}

WatermarkPicture DescribeWatermark(const UiState& ui, const WatermarkEntry& entry, WatermarkView view,
                                   const RECT& control, Families families, Canvas& canvas) {
  WatermarkPicture picture{};
  const bool shows = view == WatermarkView::kEditor || IsOn<u"Watermark_Use">(ui);
  const PaperFrame& frame = picture.frame = FramePaper(ui, control);
  picture.string = MarkText(entry);
  picture.font = FontOf(entry, frame, families);
  picture.color = StampColor(entry.selectColor, static_cast<uint8_t>(entry.color));
  picture.textColor = shows ? picture.color : kWhite;
  picture.offX = Offset(MarkCenterX(entry), frame.PaperWidth(), frame.width);
  picture.offY = Offset(MarkCenterY(entry), frame.PaperHeight(), frame.height);
  picture.textHeight = canvas.MeasureText(picture.font, picture.string).cy;
  const POINT below = BelowMiddle(entry.angle, picture.textHeight);
  picture.dx = below.x;
  picture.dy = below.y;
  if (!shows || picture.string.empty()) return picture;
  const auto [x, y] = frame.Middle();
  picture.cross = POINT{x + picture.offX, y + picture.offY};
  picture.text = POINT{picture.cross->x + picture.dx, picture.cross->y + picture.dy};
  return picture;
}

WatermarkEntry CurrentWatermark(const UiState& ui) {
  const WatermarkStore* const store = ui.stores.watermarks.get();
  if (store == nullptr) return {};
  const int index = SlotAs<u"bWatermarkCurrent", uint8_t>(ui);
  const bool named = index > 0 && index < WatermarksIn(*store);
  if (named) return store->entries[index];
  WatermarkEntry none = store->current;
  SetMarkText(none, {});
  return none;
}

void DrawWatermarkPicture(const WatermarkPicture& picture, Canvas& canvas) {
  const RECT& clip = picture.frame.clip;
  DrawFrame(canvas, picture.frame.paper);
  canvas.FillRect(clip, kWhite, {});
  if (picture.text) {
    canvas.DrawLine({.at = *picture.text,
                     .text = picture.string,
                     .font = picture.font,
                     .align = platform::TA_CENTER | platform::TA_BOTTOM,
                     .color = picture.textColor,
                     .outline = false,
                     .pen_width = 0,
                     .pen_color = picture.textColor,
                     .backdrop = {}},
                    clip);
  }
  if (!picture.cross) return;
  const auto [x, y] = *picture.cross;
  canvas.FillRect({x - 1, y, x + 2, y + 1}, kCross, clip);
  canvas.FillRect({x, y - 1, x + 1, y + 2}, kCross, clip);
}

POINT CenterLimits(const PaperFrame& frame) {
  return {std::min(frame.width / 20, kMarkCenter.highest), std::min(frame.height / 20, kMarkCenter.highest)};
}

POINT CenterAt(const PaperFrame& frame, POINT point) {
  const auto [x, y] = frame.Middle();
  const auto tenths = [](LONG offset, int32_t side, LONG pixels) {
    return static_cast<LONG>(int64_t{offset} * side / std::max<LONG>(pixels, 1) / 10);
  };
  return {tenths(point.x - x, frame.width, frame.PaperWidth()), tenths(point.y - y, frame.height, frame.PaperHeight())};
}

std::u16string SayWatermark(const UiState& ui) {
  const WatermarkEntry entry = CurrentWatermark(ui);
  Sentence sentence;
  if (!IsOn<u"Watermark_Use">(ui) || MarkText(entry).empty()) {
    sentence.AddText(text::kNoWatermark);
    return sentence.Take();
  }
  sentence.Add(MarkText(entry));
  sentence.AddText(text::kPointSize, int64_t{entry.size});
  if (entry.angle != 0) sentence.AddText(text::kTurnedByDegrees, int64_t{entry.angle / 10});
  return sentence.Take();
}

}  // namespace heron::preview
