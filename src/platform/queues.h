// Printer queues as the store keeps them: keys of the machine's tree, read by the spooler's calls and written by the
// host.
//
// A queue is the key "SYSTEM\CurrentControlSet\Control\Print\Printers\<name>", a backslash of the name written as a
// comma; its printer data are the values of the key "PrinterDriverData" below it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace heron::platform {

struct Queue {
  std::u16string name;
  std::u16string server;  ///< empty for a local queue
  std::u16string port;
  std::u16string driver;         ///< the driver's display name
  std::u16string dataFile;       ///< full path; its folder is the driver directory
  std::vector<uint8_t> devMode;  ///< the queue's saved record; empty for none
};

/// Adds the queue or replaces one of this name (its printer data stay), as one. kErrorInvalidPrinterName for an empty
/// name, one of 220 characters or more, or one with a comma or a control character.
HERON_PLATFORM_API DWORD AddQueue(const Queue& queue);
/// kErrorInvalidPrinterName if there is none. `queue` may be null to ask only.
HERON_PLATFORM_API DWORD FindQueue(std::u16string_view name, Queue* queue);
/// Removes the queue with its printer data; users' own keys stay.
HERON_PLATFORM_API DWORD RemoveQueue(std::u16string_view name);
/// Names of all queues, in the order of their making.
HERON_PLATFORM_API DWORD ListQueues(std::vector<std::u16string>* names);

}  // namespace heron::platform
