// What an application may ask of the printer: papers, bins, resolutions, sizes.
#pragma once

#include <cstdint>

#include "platform/api/types.h"

namespace heron {

/// Answers capability `capability`; `output` may be null to ask for the count. `devmode`, if given, is merged into the
/// saved record first. Null `device_name`: the queue's name. -1 for what isn't answered or when memory runs out.
int32_t DeviceCapability(platform::HANDLE printer, const char16_t* device_name, uint16_t capability, void* output,
                         const void* devmode);

}  // namespace heron
