// The entries of the list of watermarks as rows of a list, in their own letters.
#pragma once

#include <vector>

#include "platform/dialog/dialog.h"
#include "uistate/list_stores.h"

namespace heron::pages {

/// Every entry in its order, entry 0 as the text for no watermark.
std::vector<platform::ListRow> WatermarkRows(const WatermarkStore& store);

}  // namespace heron::pages
