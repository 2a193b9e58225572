// Makes a merged record whole: every public choice legal, sizes, margins and zoom computed, mirrors equal.
#pragma once

#include "catalog/catalog.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

/// False only for null `resources`; `env` is then untouched. Reads the user papers of `printer`. A private choice that
/// is illegal stays until a page shows it; only what the steps name is repaired. Validating twice may still move a zoom
/// that was computed from an older margin; the third result equals the fourth.
bool ValidateEnv(const ResourceContext* resources, DriverEnv* env, platform::HANDLE printer);

}  // namespace heron
