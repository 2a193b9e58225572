// Asking a device for its installed options, and storing them as a printer's: shared by `heron device query` and
// `heron printer add --query`.
#pragma once

#include <string>

#include "common/command.h"
#include "devicelink/device_query.h"
#include "labels.h"
#include "settings_session.h"

namespace heron::cli {

struct AskedDevice {
  std::u16string address;
  DeviceReport report;
  ReportedOptions options{};
};

/// UTF-8 as an address of a device. Exit code 2 if it is longer than 63 characters or bytes, or holds a control
/// character.
std::u16string DeviceAddressOf(const std::string& text);

/// Asks it through the module in `folder`. The failures are those of the device page, with its messages: exit code 2
/// without an address, 7 if the module or a network is missing or nothing answers, 4 for a model that isn't accepted.
AskedDevice AskDevice(const DeviceTarget& target, const Catalogue& catalogue);

/// Stores address and options as the printer's, whose settings `opened` are, opened and not committed yet. False if
/// another program has changed them since; exit code 4 if the driver wouldn't keep an option.
[[nodiscard]] bool StoreAsked(SettingsSession& opened, const AskedDevice& asked);

}  // namespace heron::cli
