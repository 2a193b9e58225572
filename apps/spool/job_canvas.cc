// The device context of a job: drawing to pages, escapes to the printing half (job_canvas.h).

#include "job_canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "apps/desk/painting.h"
#include "platform/api/text.h"
#include "renderdriver/blocks.h"
#include "renderdriver/escapes.h"

namespace heron::spool {
namespace {

using platform::COLORREF;
using platform::LONG;
using platform::RECT;
using platform::TextDrawing;

COLORREF Grey(uint8_t shade) {
  return COLORREF{shade} * 0x010101;
}

PageSpace SpaceOf(const DriverEnv& record) {
  const renderdriver::Sheet sheet = *renderdriver::SheetOf(record);
  const QRectF printable(QPointF(sheet.left, sheet.top), QPointF(sheet.right, sheet.bottom));
  return {static_cast<double>(sheet.dpi), QRectF(0, 0, sheet.width, sheet.height), printable};
}

/// A drawing with its own copy of the text.
struct KeptLine {
  TextDrawing drawing;
  std::u16string text;
  std::optional<RECT> clip;

  void operator()(QPainter& painter) const {
    TextDrawing whole = drawing;
    whole.text = text;
    desk::PaintLine(painter, whole, clip);
  }
};

}  // namespace

JobCanvas::JobCanvas(renderdriver::Job& job, const std::string& pdf_path)
    : job_(job), space_(SpaceOf(job.setup.record)), sheets_(pdf_path, space_) {}

int JobCanvas::Escape(uint32_t code, std::span<const uint8_t> in, std::span<uint8_t> out) {
  return renderdriver::AnswerEscape(job_, code, in, out);
}

int JobCanvas::DeviceCap(platform::DeviceCap number) {
  switch (number) {
    case platform::DeviceCap::kHorzRes:
      return static_cast<int>(space_.sheet.width());
    case platform::DeviceCap::kVertRes:
      return static_cast<int>(space_.sheet.height());
    default:
      return static_cast<int>(space_.dpi);
  }
}

platform::SIZE JobCanvas::MeasureText(const platform::LOGFONTW& font, std::u16string_view text) {
  return desk::MeasureLine(font, text);
}

std::vector<platform::FontFamily> JobCanvas::FontFamilies() {
  if (families_.empty()) families_ = desk::InstalledFamilies();
  return families_;
}

void JobCanvas::Keep(Drawing drawing) {
  // The driver marks a watermark that lies under the page; when it draws, the page's content isn't known yet.
  (Has(job_, renderdriver::kStampOpen) ? under_ : over_).push_back(std::move(drawing));
}

void JobCanvas::DrawLine(const TextDrawing& drawing, const std::optional<RECT>& clip) {
  renderdriver::NoteDrawing(job_, drawing.text);
  if (Has(job_, renderdriver::kTabDrawing)) return;  // belongs on a tab sheet, which is no page of the PDF
  KeptLine line{drawing, std::u16string(drawing.text), clip};
  // A mask defines the shape of the mark, not its colour.
  if (job_.masking) line.drawing.color = line.drawing.pen_color = Grey(job_.stampShade.value_or(0));
  Keep(std::move(line));
}

void JobCanvas::FillRect(const RECT& area, COLORREF color, const std::optional<RECT>& clip) {
  Keep([=](QPainter& painter) { desk::PaintRect(painter, area, color, clip); });
}

void JobCanvas::DrawPicture(const RECT& target, const platform::Picture& picture, const std::optional<RECT>& clip) {
  // A copy: the caller's pixels are gone when the page is drawn at its end.
  std::vector<uint32_t> pixels(picture.pixels.begin(), picture.pixels.end());
  Keep([=, pixels = std::move(pixels)](QPainter& painter) {
    desk::PaintPicture(painter, target, {picture.width, picture.height, pixels}, clip);
  });
}

void JobCanvas::DrawBitmap(const RECT& target, std::span<const uint8_t> file, const std::optional<RECT>& clip) {
  const QImage image = desk::ReadBitmap(file);
  if (image.isNull()) return;
  Keep([=](QPainter& painter) { desk::PaintImage(painter, target, image, clip); });
}

bool JobCanvas::StartPage() {
  if (!renderdriver::StartJobPage(job_)) return false;
  cover_ = renderdriver::CoverSheetOf(job_);
  content_.clear();
  under_.clear();
  over_.clear();
  return true;
}

/// A stamp that the driver left to the printing side, its middle where the stamp's centre is.
Drawing JobCanvas::DeferredStamp(const renderdriver::DeferredStamp& stamp) const {
  KeptLine line{};
  line.text = stamp.text;
  line.drawing.align = platform::TA_CENTER | platform::TA_BOTTOM;
  line.drawing.color = Grey(stamp.shade);
  platform::LOGFONTW& font = line.drawing.font;
  font.lfHeight = static_cast<LONG>(-stamp.size * space_.dpi / 72);
  font.lfEscapement = stamp.angle * 10;
  font.lfWeight = stamp.style == 2 || stamp.style == 4 ? 700 : 400;
  font.lfItalic = stamp.style >= 3;
  stamp.font.copy(font.lfFaceName, platform::kFaceSize - 1);
  const double half = desk::MeasureLine(font, line.text).cy / 2.0;
  const double turn = stamp.angle * std::numbers::pi / 180;
  const QPointF middle = space_.sheet.center() + QPointF(stamp.centerX, stamp.centerY) * space_.dpi / 254;
  line.drawing.at = {static_cast<LONG>(std::lround(middle.x() + std::sin(turn) * half)),
                     static_cast<LONG>(std::lround(middle.y() + std::cos(turn) * half))};
  return line;
}

/// A cover sheet is drawn at the size of the document's page; the device brings it onto its own paper.
bool JobCanvas::AddCover(std::span<const Drawing> drawings) {
  const double tenths = space_.dpi / 254;
  const QSizeF size(cover_->width * tenths, cover_->length * tenths);
  const Drawing scaled = [drawings, scale = cover_->scale](QPainter& painter) {
    painter.scale(scale, scale);
    for (const Drawing& drawing : drawings) drawing(painter);
  };
  return sheets_.AddSheet({}, {}, {&scaled, 1}, size);
}

bool JobCanvas::EndPage() {
  if (!job_.pageOpen) return false;
  if (const auto stamp = renderdriver::StampLeftTo(job_)) under_.push_back(DeferredStamp(*stamp));
  // Once more, half: on white it changes nothing, on a picture that covers everything the stamp is seen all the same.
  const auto again = [this](QPainter& painter) {
    painter.setOpacity(0.5);
    for (const Drawing& drawing : under_) drawing(painter);
  };
  std::vector<Drawing> over;
  if (!under_.empty()) over.emplace_back(again);
  for (Drawing& drawing : over_) over.push_back(std::move(drawing));
  const bool written = cover_ ? AddCover(over) : sheets_.AddSheet(content_, under_, over);
  return renderdriver::EndJobPage(job_) && written;
}

}  // namespace heron::spool
