// Copies of a record between formats, and the conversions that the spooler asks for.
#pragma once

#include <cstdint>

#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

/// Copies what both records have room for and puts the target's version in its header; its sizes and driver version
/// stay, as do its bytes that aren't copied. Returns the bytes copied, or -1, with the target untouched, if a version
/// is unknown.
int32_t ConvertEnv(const ForeignEnv& source, uint8_t* target);

/// Hands a resolved record out: whole if the caller gave no `input`, else in the smaller of both formats. `output` may
/// be `input`. False, with `output` untouched, if a version is unknown.
bool ConvertEnvOut(const DriverEnv& env, const ForeignEnv& input, uint8_t* output);

/// The work of DrvConvertDevMode: 1, or 0 with a last error where one is set. `output` is untouched on failure.
int32_t ConvertDevMode(const char16_t* printer_name, const uint8_t* input, uint8_t* output, uint32_t* needed,
                       uint32_t mode);

}  // namespace heron
