// The watermark at the end of a page.
#pragma once

#include "platform/api/canvas.h"
#include "settings/driver_env.h"
#include "uistate/list_stores.h"

namespace heron {

/// Colour of kind 0 to 6 (grey, red, green, blue, yellow, magenta, cyan; any other is grey) and shade `value`, 0 the
/// deepest.
platform::COLORREF StampColor(uint32_t kind, uint8_t value);

/// Draws the record's watermark on the page, or leaves it to the printing side, as the page state says. Nothing if
/// there is none, if its text or size is empty, or if it is for the first page only and this isn't it.
void DrawWatermark(platform::HDC hdc, const DriverEnv& record, std::u16string_view printer_name);

}  // namespace heron
