// Valid records out of the driver, as an application gets them.
#pragma once

#include "command.h"
#include "platform/devmode.h"
#include "record_file.h"

namespace heron::cli {

platform::DEVMODEW* AsDevMode(Bytes& bytes);

/// The record that an application gets for `input` (empty: none), 3328 bytes.
Bytes ResolvedRecord(Printer& printer, Bytes input);

}  // namespace heron::cli
