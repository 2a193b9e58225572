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

#include "platform/api/types.h"

namespace heron::platform {

struct Queue {
  std::u16string name;
  std::u16string server;  ///< empty for a local queue
  std::u16string port;
  std::u16string driver;  ///< the driver's display name
  /// Its folder is the driver directory. A full path, or the name alone of a file in the store's own driver folder,
  /// which is found wherever the store is moved; read back as a full path.
  std::u16string dataFile;
  std::vector<uint8_t> devMode;  ///< the queue's saved record; empty for none
  std::u16string identity =
      {};  ///< distinguishes queues that had the same name at different times; empty in an old store
};

enum class AddMode : uint8_t {
  kReplace,  ///< a queue of this name is replaced; its printer data stay
  kNew,      ///< kErrorPrinterAlreadyExists if there is one; of several programs that add the same one succeeds
};

/// Adds the queue or replaces one of this name (its printer data and identity stay), as one. A new queue without an
/// identity is given one. kErrorInvalidPrinterName for an empty name, one of 220 characters or more, or one with a
/// comma or a control character.
HERON_PLATFORM_API DWORD AddQueue(const Queue& queue, AddMode mode = AddMode::kReplace);
/// kErrorInvalidPrinterName if there is none. `queue` may be null to ask only.
HERON_PLATFORM_API DWORD FindQueue(std::u16string_view name, Queue* queue);
/// Removes the queue with its printer data, and remembers its identity, by which users' own settings of it are known.
HERON_PLATFORM_API DWORD RemoveQueue(std::u16string_view name);
/// Whether a queue of this identity was removed from this store and isn't back; with an empty `identity`, one of this
/// name that had none. False for a queue that this store never had, which may be another machine's.
HERON_PLATFORM_API bool WasQueueRemoved(std::u16string_view name, std::u16string_view identity);
/// All queues, sorted by name without regard to the case of ASCII letters.
HERON_PLATFORM_API DWORD ReadQueues(std::vector<Queue>* queues);
/// The names of all queues, likewise.
HERON_PLATFORM_API DWORD ListQueues(std::vector<std::u16string>* names);

}  // namespace heron::platform
