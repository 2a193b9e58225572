#include "pages/cover_preview.h"

#include <algorithm>
#include <memory>

#include "engine/setting.h"
#include "forms/cover_tables.h"
#include "generated/values.h"
#include "platform/api/device_context.h"
#include "uistate/recipients.h"

namespace heron::pages {
namespace {

using engine::Setting;
using platform::LONG;
using platform::POINT;
using platform::RECT;

constexpr int64_t kSquareHmm = 30000;
constexpr int32_t kWidthHmm = 21000, kLengthHmm = 29700, kMarginHmm = 400;
constexpr platform::COLORREF kPaper = 0xFFFFFF, kEdge = 0x808080;

/// The document lies across, and the sheet has no paper of its own.
bool LiesAcross(const UiState& ui) {
  return Setting<u"FaxCover_A4PFix">(ui) != 1 && Setting<u"lpOrientation">(ui) == value::lpOrientation::kLandscape;
}

uint8_t Flag(uint16_t value) {
  return static_cast<uint8_t>(value);
}

CoverFlags FlagsOf(const UiState& ui) {
  return {.subject = Flag(Setting<u"FaxCover_Subject">(ui)),
          .receiveName = Flag(Setting<u"FaxCover_ReceiveName">(ui)),
          .receiveFaxnum = Flag(Setting<u"FaxCover_ReceiveFaxnum">(ui)),
          .receiveCompany1 = Flag(Setting<u"FaxCover_ReceiveCompany1">(ui)),
          .receiveCompany2 = Flag(Setting<u"FaxCover_ReceiveCompany2">(ui)),
          .receiveSetup = Flag(Setting<u"lpFaxCover_ReceiveSetup">(ui)),
          .receivePersonal = Flag(Setting<u"lpFaxCover_ReceivePersonal">(ui)),
          .senderName = Flag(Setting<u"FaxCover_SenderName">(ui)),
          .senderCompany1 = Flag(Setting<u"FaxCover_SenderCompany1">(ui)),
          .senderCompany2 = Flag(Setting<u"FaxCover_SenderCompany2">(ui)),
          .senderTelnum = Flag(Setting<u"FaxCover_SenderTelnum">(ui)),
          .senderFaxnum = Flag(Setting<u"FaxCover_SenderFaxnum">(ui)),
          .senderEmail = Flag(Setting<u"FaxCover_SenderEmail">(ui)),
          .date = Flag(Setting<u"FaxCover_Date">(ui)),
          .pagenum = Flag(Setting<u"FaxCover_Pagenum">(ui)),
          .image = Flag(Setting<u"FaxCover_Image">(ui)),
          .zoom = Flag(Setting<u"FaxCover_Zoom">(ui)),
          .a4pFix = Flag(Setting<u"FaxCover_A4PFix">(ui))};
}

/// How many recipients the preview names.
uint32_t RowsShown(const CoverFlags& flags, uint32_t count) {
  namespace personal = value::lpFaxCover_ReceivePersonal;
  if (flags.receiveSetup == 0 || flags.receivePersonal == personal::kTyped) return 0;
  return flags.receivePersonal == personal::kSheetEach ? std::min(count, 1u) : count;
}

int64_t BoxPixels(int64_t hmm, int64_t dpi) {
  return (((hmm * 1000 + 127) / 254) * dpi + 5000) / 10000;
}

void FillLayout(const UiState& ui, const FaxCoverStore& store, const RECT& sheet, int dpi, CoverLayout& layout) {
  const bool across = LiesAcross(ui);
  layout.flags = FlagsOf(ui);
  layout.resolution = dpi;
  layout.boxWidthHmm = across ? kLengthHmm : kWidthHmm;
  layout.boxLengthHmm = across ? kWidthHmm : kLengthHmm;
  const int64_t whole = std::max<int64_t>(BoxPixels(layout.boxWidthHmm, dpi), 1);
  layout.percent = static_cast<int32_t>((int64_t{sheet.right - sheet.left} * 100 + whole / 2) / whole);
  layout.originX = sheet.left;
  layout.originY = sheet.top;
  layout.marginXHmm = layout.marginYHmm = kMarginHmm;
  layout.zoom = static_cast<int32_t>(store.zoom);
  const auto place = [](int64_t box, uint32_t position) {
    return static_cast<int32_t>((box * position + 5000) / 10000);
  };
  layout.imageXHmm = place(layout.boxWidthHmm, store.xPosition);
  layout.imageYHmm = place(layout.boxLengthHmm, store.yPosition);
  layout.imagePath = CoverText(store.filename);
  layout.style = static_cast<int32_t>(store.style) - 1;
  const auto pixels = [&](int64_t at) { return ((int64_t{layout.boxWidthHmm} * 100 + 127) / 254 * at + 500) / 1000; };
  constexpr int64_t kUsual = 200;
  layout.imageScale = static_cast<int32_t>((pixels(dpi) * 100 + pixels(kUsual) / 2) / pixels(kUsual));
}

}  // namespace

RECT CoverSheetIn(const UiState& ui, const RECT& place) {
  const int64_t side = std::min(place.right - place.left, place.bottom - place.top);
  const bool across = LiesAcross(ui);
  const auto width = static_cast<LONG>(side * (across ? kLengthHmm : kWidthHmm) / kSquareHmm);
  const auto length = static_cast<LONG>(side * (across ? kWidthHmm : kLengthHmm) / kSquareHmm);
  const LONG left = place.left + (place.right - place.left - width) / 2;
  const LONG top = place.top + (place.bottom - place.top - length) / 2;
  return {left, top, left + width, top + length};
}

void DrawCoverPreview(const UiState& ui, platform::Canvas& canvas, const RECT& place) {
  if (ui.stores.faxCover == nullptr) return;
  const auto store = std::make_unique<FaxCoverStore>(*ui.stores.faxCover);
  ClampCover(*store);
  const auto table = std::make_unique<RecipientTable>();
  LoadRecipients(ui, table.get());
  const RECT sheet = CoverSheetIn(ui, place);
  canvas.FillRect({sheet.left - 1, sheet.top - 1, sheet.right + 1, sheet.bottom + 1}, kEdge, {});
  canvas.FillRect(sheet, kPaper, {});
  CoverLayout layout;
  FillLayout(ui, *store, sheet, canvas.DeviceCap(platform::DeviceCap::kLogPixelsX), layout);
  layout.rows = std::span(table->rows, RowsShown(layout.flags, table->count));
  layout.endRow = static_cast<uint32_t>(layout.rows.size());
  layout.store = store.get();
  layout.dc = platform::OpenCanvas(&canvas);
  platform::IntersectClipRect(layout.dc, sheet.left, sheet.top, sheet.right, sheet.bottom);
  LayoutCover(layout);
  platform::CloseCanvas(layout.dc);
}

void DragCoverPicture(const UiState& ui, const RECT& sheet, POINT at) {
  if (ui.stores.faxCover == nullptr) return;
  const auto position = [](int64_t from, int64_t size) {
    if (size <= 0) return uint32_t{0};
    return static_cast<uint32_t>(std::clamp<int64_t>((from * 10000 + size / 2) / size, 0, kCoverPositions));
  };
  ui.stores.faxCover->xPosition = position(at.x - sheet.left, sheet.right - sheet.left);
  ui.stores.faxCover->yPosition = position(at.y - sheet.top, sheet.bottom - sheet.top);
}

int CoverPercent(uint32_t position) {
  return static_cast<int>((std::min(position, kCoverPositions) + 50) / 100);
}

}  // namespace heron::pages
