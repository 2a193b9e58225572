// Valid records from the driver, as applications get them.
#pragma once

#include "common/command.h"
#include "common/record_file.h"
#include "platform/api/devmode.h"

namespace heron::cli {

platform::DEVMODEW* AsDevMode(Bytes& bytes);

/// The record that an application gets for `input` (empty: none), 3328 bytes.
Bytes ResolvedRecord(Printer& printer, Bytes input);

}  // namespace heron::cli
