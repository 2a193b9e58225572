// The layout of a queue in the machine's tree: its keys, and how its values become a Queue. Shared by queues.cc,
// which writes them, and spooler.cc, which reads them. Private to this folder.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/api/backend.h"
#include "platform/api/queues.h"

namespace heron::platform {

inline constexpr std::u16string_view kQueuesPath = u"SYSTEM\\CurrentControlSet\\Control\\Print\\Printers";
/// Below it a value for each removed queue.
inline constexpr std::u16string_view kRemovedPath = u"SYSTEM\\CurrentControlSet\\Control\\Print\\Removed Printers";
inline constexpr std::u16string_view kDataKey = u"PrinterDriverData";
inline constexpr std::u16string_view kDirectoryKey =
    u"DsDriver";  ///< what the queue publishes; made when first written

/// Whether a queue may have this name (queues.h).
bool IsQueueName(std::u16string_view name);
/// Path of the key of the queue `name`, which is a legal one.
std::u16string QueuePath(std::u16string_view name);
std::u16string QueueDataPath(std::u16string_view name);
std::u16string QueueDirectoryPath(std::u16string_view name);

/// Reads the whole queue from one snapshot. kErrorKeyDeleted if the key was removed.
DWORD ReadQueue(const Backend& backend, KeyId key, Queue* queue);
/// Whether `bytes` hold the settings record that its own sizes declare.
bool IsWholeRecord(std::span<const uint8_t> bytes);

}  // namespace heron::platform
