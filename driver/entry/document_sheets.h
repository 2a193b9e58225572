// DrvDocumentPropertySheets: the outer layer around the sheet's or the sheetless work.
#pragma once

#include "platform/api/devmode.h"

namespace heron {

/// Without a sheet (`info` null) 3328, 1 or -1. With one the answer of sheet_reasons.h; `lParam` belongs to the reason.
/// An exhausted memory throws.
int32_t DocumentPropertySheets(platform::PROPSHEETUI_INFO* info, platform::DOCUMENTPROPERTYHEADER* header,
                               platform::LPARAM lParam);

}  // namespace heron
