// How a queue lies in the machine's tree: where its keys are and how its values become a Queue. Shared by queues.cc,
// which writes them, and spooler.cc, which reads them. Private to this folder.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/backend.h"
#include "platform/queues.h"

namespace heron::platform {

inline constexpr std::u16string_view kQueuesPath = u"SYSTEM\\CurrentControlSet\\Control\\Print\\Printers";
inline constexpr std::u16string_view kDataKey = u"PrinterDriverData";

/// Whether a queue may have this name (queues.h).
bool IsQueueName(std::u16string_view name);
/// Path of the key of the queue `name`, which is a legal one.
std::u16string QueuePath(std::u16string_view name);
std::u16string QueueDataPath(std::u16string_view name);

/// Reads the whole queue at one look. kErrorKeyDeleted if the key has gone.
DWORD ReadQueue(TreeStore& trees, KeyId key, Queue* queue);
/// Whether `bytes` hold the settings record that its own sizes declare.
bool IsWholeRecord(std::span<const uint8_t> bytes);

}  // namespace heron::platform
