// The drawings of a Canvas on a QPainter whose unit is the device's pixel: on screen, into a picture, into a PDF.
//
// Sizes that no sheet can have are cut, so that what the driver asks for can't exhaust the memory.
#pragma once

#include <QImage>
#include <QPainter>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/api/canvas.h"

namespace heron::desk {

void PaintLine(QPainter& painter, const platform::TextDrawing& drawing, const std::optional<platform::RECT>& clip);
void PaintRect(QPainter& painter, const platform::RECT& area, platform::COLORREF color,
               const std::optional<platform::RECT>& clip);
void PaintPicture(QPainter& painter, const platform::RECT& target, const platform::Picture& picture,
                  const std::optional<platform::RECT>& clip);

/// The picture of a BMP file; null if it can't be read or is too large.
QImage ReadBitmap(std::span<const uint8_t> file);
void PaintImage(QPainter& painter, const platform::RECT& target, const QImage& image,
                const std::optional<platform::RECT>& clip);

QColor ColorOf(platform::COLORREF color);

/// Width and height of a line before it is turned, in pixels.
platform::SIZE MeasureLine(const platform::LOGFONTW& font, std::u16string_view text);

/// The fonts that a line can be drawn with.
std::vector<platform::FontFamily> InstalledFamilies();

}  // namespace heron::desk
