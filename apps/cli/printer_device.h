// The device of a printer queue: asked and stored when a queue is added, and what the queue publishes of it.
#pragma once

#include <optional>
#include <string>

#include "common/command.h"
#include "device_asking.h"

namespace heron::cli {

/// As a command line names it.
struct NewDevice {
  std::string address;  ///< empty: none
  bool query = false;   ///< ask it for its options
};

struct AskedNewDevice {
  std::u16string address;
  std::optional<AskedDevice> asked;
};

/// Asks the device if that is wanted. To be called before its queue is added: nothing is locked meanwhile, and a device
/// that doesn't answer adds nothing. Failures as of AskDevice; exit code 2 for a query without an address.
AskedNewDevice AskNewDevice(const NewDevice& device);

/// Stores the address and what the device reported as the printer's. Nothing without an address.
void StoreNewDevice(const std::string& printer, const AskedNewDevice& device);

/// What the queue has published in the directory, by name; a value of one byte as its number.
Json DirectoryJson(const Printer& printer);

}  // namespace heron::cli
