// Shared by the files that make states; internal to them.
#pragma once

#include "uistate/ui_state.h"

namespace heron {

/// Gives `ui` two zeroed blocks and their sizes; false if memory runs out.
bool AllocateBlocks(UiState& ui, uint32_t fixed_size, uint32_t variable_size);

}  // namespace heron
