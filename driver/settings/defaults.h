// The record of a job before anything is chosen.
#pragma once

#include "catalog/catalog.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

/// Fills `env` with the defaults of the destination. The result isn't validated: geometry and mirror are zero. Null
/// `printer_name`: the name of the queue `printer`. Null `resources`: every catalogue value reads as 0. Reads no
/// printer data.
void BuildDefaultEnv(const ResourceContext* resources, DriverEnv* env, const char16_t* printer_name,
                     platform::HANDLE printer);

}  // namespace heron
