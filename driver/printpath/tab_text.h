// The texts of tab sheets, drawn for the printing side to put on the tabs.
#pragma once

#include <span>

#include "platform/api/types.h"
#include "uistate/list_stores.h"

namespace heron {

/// Entries that print a tab.
uint32_t CountTabs(std::span<const PageEntry> entries);

/// Sends and draws each of them: its number, both sides, its end. Failures don't stop the others.
void DrawTabs(platform::HDC hdc, std::span<const PageEntry> entries);

}  // namespace heron
