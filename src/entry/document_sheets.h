// DrvDocumentPropertySheets: the outer layer around the sheet's or the sheetless work.
#pragma once

#include "platform/devmode.h"

namespace heron {

/// 3328, 1 or -1; an exhausted memory throws. `info` is null: with a sheet the answer is -1 until there are pages.
int32_t DocumentPropertySheets(platform::PROPSHEETUI_INFO* info, platform::DOCUMENTPROPERTYHEADER* header);

}  // namespace heron
