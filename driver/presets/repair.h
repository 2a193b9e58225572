// After settings came from elsewhere: values that this model's catalogue doesn't have become its defaults.
#pragma once

#include "catalog/catalog.h"
#include "uistate/ui_state.h"

namespace heron {

/// Checks the values of one recall group of keys (kAllGroups: all). Fields of list stores are left alone.
void RepairSettings(const UiState& ui, int group, const ResourceContext* resources);

/// Whether the catalogue has `value` for a list or range feature. A feature that doesn't exist has every value.
bool IsLegalValue(const ResourceContext* resources, uint16_t feature, uint16_t value);

}  // namespace heron
