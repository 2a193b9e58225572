// Printer queues in the machine's tree (queues.h, queue_store.h).

#include "platform/queues.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/batch.h"
#include "platform/guarded.h"
#include "platform/key_path.h"
#include "platform/queue_store.h"

namespace heron::platform {
namespace {

constexpr size_t kNameLimit = 220;
constexpr std::u16string_view kRecordValue = u"Default DevMode";

/// The texts of a queue by the names of their values.
struct TextValue {
  std::u16string_view name;
  std::u16string Queue::*field;
};
constexpr TextValue kTextValues[] = {
    {u"Name", &Queue::name},          {u"Server", &Queue::server},
    {u"Port", &Queue::port},          {u"Printer Driver", &Queue::driver},
    {u"Data File", &Queue::dataFile},
};

std::span<const uint8_t> BytesOf(const std::u16string& text) {
  return {reinterpret_cast<const uint8_t*>(text.c_str()), (text.size() + 1) * sizeof(char16_t)};
}

/// A stored text up to its terminator; the store may hold anything.
std::u16string TextOf(std::span<const uint8_t> data) {
  std::u16string text(data.size() / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), data.data(), text.size() * sizeof(char16_t));
  text.resize(std::min(text.find(u'\0'), text.size()));
  return text;
}

DWORD WriteQueue(TreeStore& trees, const Queue& queue) {
  KeyId key = 0;
  bool created = false;
  DWORD status = trees.Create(Hive::kMachine, QueuePath(queue.name), &key, &created);
  for (const TextValue& value : kTextValues) {
    if (status != kErrorSuccess) return status;
    status = trees.Write(Hive::kMachine, key, value.name, REG_SZ, BytesOf(queue.*value.field));
  }
  if (status == kErrorSuccess) status = trees.Write(Hive::kMachine, key, kRecordValue, REG_BINARY, queue.devMode);
  if (status != kErrorSuccess) return status;
  return trees.Create(Hive::kMachine, QueueDataPath(queue.name), &key, &created);
}

/// Removes the key at `path` and all below it, the deepest first.
DWORD RemoveBranch(TreeStore& trees, const std::u16string& path) {
  KeyId key = 0;
  DWORD status = trees.Find(Hive::kMachine, path, &key);
  while (status == kErrorSuccess) {
    std::u16string name;
    status = trees.Subkey(Hive::kMachine, key, 0, &name);
    if (status == kErrorNoMoreItems) return trees.Remove(Hive::kMachine, path);
    if (status == kErrorSuccess) status = RemoveBranch(trees, JoinKeyPath(path, name));
  }
  return status;
}

/// kErrorInvalidPrinterName for what a missing queue's key gives.
DWORD QueueStatus(DWORD status) {
  return status == kErrorFileNotFound ? kErrorInvalidPrinterName : status;
}

}  // namespace

bool IsQueueName(std::u16string_view name) {
  return !name.empty() && name.size() < kNameLimit &&
         std::ranges::none_of(name, [](char16_t c) { return c < u' ' || c == 0x7F || c == u','; });
}

std::u16string QueuePath(std::u16string_view name) {
  std::u16string path(kQueuesPath);
  path += u'\\';
  for (const char16_t c : name) path += c == u'\\' ? u',' : c;
  return path;
}

std::u16string QueueDataPath(std::u16string_view name) {
  return JoinKeyPath(QueuePath(name), kDataKey);
}

bool IsWholeRecord(std::span<const uint8_t> bytes) {
  constexpr size_t kSizeAt = 68;   // dmSize
  constexpr size_t kExtraAt = 70;  // dmDriverExtra
  if (bytes.size() < kExtraAt + 2) return false;
  const auto word = [&](size_t at) { return static_cast<size_t>(bytes[at]) | static_cast<size_t>(bytes[at + 1]) << 8; };
  return word(kSizeAt) + word(kExtraAt) <= bytes.size();
}

DWORD ReadQueue(TreeStore& trees, KeyId key, Queue* queue) {
  return trees.ReadAll(Hive::kMachine, key,
                       [queue](std::u16string_view name, DWORD type, std::span<const uint8_t> data) {
                         if (name == kRecordValue && type == REG_BINARY)
                           queue->devMode.assign(data.begin(), data.end());
                         for (const TextValue& value : kTextValues) {
                           if (name == value.name && type == REG_SZ) queue->*value.field = TextOf(data);
                         }
                       });
}

DWORD AddQueue(const Queue& queue) {
  if (!IsQueueName(queue.name)) return kErrorInvalidPrinterName;
  if (!queue.devMode.empty() && !IsWholeRecord(queue.devMode)) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Batch batch(*backend.trees, Hive::kMachine);
    if (batch.Status() != kErrorSuccess) return batch.Status();
    const DWORD status = WriteQueue(*backend.trees, queue);
    return status == kErrorSuccess ? batch.Keep() : status;
  });
}

DWORD FindQueue(std::u16string_view name, Queue* queue) {
  if (!IsQueueName(name)) return kErrorInvalidPrinterName;
  return WithBackend([&](const Backend& backend) {
    KeyId key = 0;
    DWORD status = backend.trees->Find(Hive::kMachine, QueuePath(name), &key);
    if (status != kErrorSuccess || queue == nullptr) return QueueStatus(status);
    Queue found;
    status = ReadQueue(*backend.trees, key, &found);
    if (status == kErrorSuccess) *queue = std::move(found);
    return status == kErrorKeyDeleted ? kErrorInvalidPrinterName : status;
  });
}

DWORD RemoveQueue(std::u16string_view name) {
  if (!IsQueueName(name)) return kErrorInvalidPrinterName;
  return WithBackend([&](const Backend& backend) {
    Batch batch(*backend.trees, Hive::kMachine);
    if (batch.Status() != kErrorSuccess) return batch.Status();
    const DWORD status = RemoveBranch(*backend.trees, QueuePath(name));
    return status == kErrorSuccess ? batch.Keep() : QueueStatus(status);
  });
}

DWORD ListQueues(std::vector<std::u16string>* names) {
  return WithBackend([&](const Backend& backend) {
    std::vector<std::u16string> found;
    KeyId all = 0;
    DWORD status = backend.trees->Find(Hive::kMachine, kQueuesPath, &all);
    for (uint32_t index = 0; status == kErrorSuccess; ++index) {
      std::u16string part;
      status = backend.trees->Subkey(Hive::kMachine, all, index, &part);
      if (status != kErrorSuccess) break;
      KeyId key = 0;
      Queue queue;
      status = backend.trees->Find(Hive::kMachine, JoinKeyPath(kQueuesPath, part), &key);
      if (status == kErrorSuccess) status = ReadQueue(*backend.trees, key, &queue);
      if (status == kErrorSuccess && IsQueueName(queue.name)) found.push_back(std::move(queue.name));
      if (status == kErrorFileNotFound || status == kErrorKeyDeleted) status = kErrorSuccess;  // removed meanwhile
    }
    // No queue was ever made, or the last one has been listed.
    if (status != kErrorFileNotFound && status != kErrorNoMoreItems) return status;
    *names = std::move(found);
    return kErrorSuccess;
  });
}

}  // namespace heron::platform
