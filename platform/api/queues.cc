// Printer queues in the machine's tree (queues.h, queue_store.h).

#include "platform/api/queues.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <utility>

#include "platform/api/batch.h"
#include "platform/api/files.h"
#include "platform/api/guarded.h"
#include "platform/api/key_path.h"
#include "platform/api/queue_store.h"

namespace heron::platform {
namespace {

constexpr size_t kNameLimit = 220;
constexpr std::u16string_view kRecordValue = u"Default DevMode";
constexpr std::u16string_view kIdentityValue = u"Identity";

/// The texts of a queue by the names of their values.
struct TextValue {
  std::u16string_view name;
  std::u16string Queue::*field;
};
constexpr TextValue kTextValues[] = {
    {u"Name", &Queue::name},          {u"Server", &Queue::server},
    {u"Port", &Queue::port},          {u"Printer Driver", &Queue::driver},
    {u"Data File", &Queue::dataFile}, {kIdentityValue, &Queue::identity},
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

/// 64 random bits in hexadecimal digits.
std::u16string NewIdentity() {
  constexpr char16_t kDigits[] = u"0123456789abcdef";
  std::random_device random;
  std::u16string identity;
  while (identity.size() < 16) identity += kDigits[random() % 16];
  return identity;
}

/// Name of the value that remembers a removed queue.
std::u16string RemovedName(std::u16string_view name, std::u16string_view identity) {
  return identity.empty() ? u"name:" + FoldCase(name) : std::u16string(identity);
}

DWORD Remember(TreeStore& trees, std::u16string_view name, std::u16string_view identity) {
  KeyId key = 0;
  bool created = false;
  const DWORD status = trees.Create(Hive::kMachine, kRemovedPath, &key, &created);
  if (status != kErrorSuccess) return status;
  return trees.Write(Hive::kMachine, key, RemovedName(name, identity), REG_SZ, {});
}

/// A queue that comes back with its identity isn't a removed one any more.
DWORD Forget(TreeStore& trees, const Queue& queue) {
  KeyId key = 0;
  DWORD status = trees.Find(Hive::kMachine, kRemovedPath, &key);
  if (status == kErrorSuccess) status = trees.Delete(Hive::kMachine, key, RemovedName(queue.name, queue.identity));
  return status == kErrorFileNotFound ? kErrorSuccess : status;
}

DWORD WriteQueue(TreeStore& trees, Queue queue, AddMode mode) {
  KeyId key = 0;
  bool created = false;
  DWORD status = trees.Create(Hive::kMachine, QueuePath(queue.name), &key, &created);
  if (status == kErrorSuccess && !created && mode == AddMode::kNew) return kErrorPrinterAlreadyExists;
  // A replaced queue keeps its identity, and with it the settings of its users.
  if (created && queue.identity.empty()) queue.identity = NewIdentity();
  if (created && status == kErrorSuccess) status = Forget(trees, queue);
  for (const TextValue& value : kTextValues) {
    if (status != kErrorSuccess) return status;
    if (value.name == kIdentityValue && !created) continue;
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
  // A server queue's name begins with backslashes, which would make it several keys. Names can't contain commas.
  for (const char16_t c : name) path += c == u'\\' ? u',' : c;
  return path;
}

std::u16string QueueDataPath(std::u16string_view name) {
  return JoinKeyPath(QueuePath(name), kDataKey);
}

std::u16string QueueDirectoryPath(std::u16string_view name) {
  return JoinKeyPath(QueuePath(name), kDirectoryKey);
}

bool IsWholeRecord(std::span<const uint8_t> bytes) {
  constexpr size_t kSizeAt = 68;   // dmSize
  constexpr size_t kExtraAt = 70;  // dmDriverExtra
  if (bytes.size() < kExtraAt + 2) return false;
  const auto word = [&](size_t at) { return static_cast<size_t>(bytes[at]) | static_cast<size_t>(bytes[at + 1]) << 8; };
  return word(kSizeAt) + word(kExtraAt) <= bytes.size();
}

namespace {

void SetField(std::u16string_view name, DWORD type, std::span<const uint8_t> data, Queue* queue) {
  if (name == kRecordValue && type == REG_BINARY) queue->devMode.assign(data.begin(), data.end());
  for (const TextValue& value : kTextValues) {
    if (name == value.name && type == REG_SZ) queue->*value.field = TextOf(data);
  }
}

/// Full path of a queue's data file. One that has gone with its store is looked for in the store's own driver folder.
std::u16string FindDataFile(FileStore& files, const std::u16string& stored) {
  const std::u16string folder = files.DriverFolder();
  const size_t name = stored.rfind(kPathSeparator) + 1;
  if (stored.empty() || folder.empty()) return stored;
  if (name == 0) return folder + stored;
  DWORD attributes = 0;
  if (files.Attributes(stored, &attributes) == kErrorSuccess) return stored;
  std::u16string moved = folder + stored.substr(name);
  return files.Attributes(moved, &attributes) == kErrorSuccess ? moved : stored;
}

}  // namespace

DWORD ReadQueue(const Backend& backend, KeyId key, Queue* queue) {
  const DWORD status = backend.trees->ReadAll(
      Hive::kMachine, key, [queue](std::u16string_view name, DWORD type, std::span<const uint8_t> data) {
        SetField(name, type, data, queue);
      });
  if (status == kErrorSuccess) queue->dataFile = FindDataFile(*backend.files, queue->dataFile);
  return status;
}

DWORD AddQueue(const Queue& queue, AddMode mode) {
  if (!IsQueueName(queue.name)) return kErrorInvalidPrinterName;
  // Checked here too: whatever is stored is handed to every application.
  if (!queue.devMode.empty() && !IsWholeRecord(queue.devMode)) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Batch batch(*backend.trees, Hive::kMachine);
    if (batch.Status() != kErrorSuccess) return batch.Status();
    const DWORD status = WriteQueue(*backend.trees, queue, mode);
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
    status = ReadQueue(backend, key, &found);
    if (status == kErrorSuccess) *queue = std::move(found);
    return status == kErrorKeyDeleted ? kErrorInvalidPrinterName : status;
  });
}

DWORD RemoveQueue(std::u16string_view name) {
  if (!IsQueueName(name)) return kErrorInvalidPrinterName;
  return WithBackend([&](const Backend& backend) {
    Batch batch(*backend.trees, Hive::kMachine);
    if (batch.Status() != kErrorSuccess) return batch.Status();
    TreeStore& trees = *backend.trees;
    KeyId key = 0;
    Queue queue;
    DWORD status = trees.Find(Hive::kMachine, QueuePath(name), &key);
    if (status == kErrorSuccess) status = ReadQueue(backend, key, &queue);
    if (status == kErrorSuccess) status = RemoveBranch(trees, QueuePath(name));
    // In the same transaction: a user's settings must not outlive a removal that nothing remembers.
    if (status == kErrorSuccess) status = Remember(trees, name, queue.identity);
    return status == kErrorSuccess ? batch.Keep() : QueueStatus(status);
  });
}

bool WasQueueRemoved(std::u16string_view name, std::u16string_view identity) {
  const auto look = [&](const Backend& backend) {
    KeyId key = 0;
    DWORD type = 0;
    DWORD size = 0;
    const DWORD status = backend.trees->Find(Hive::kMachine, kRemovedPath, &key);
    if (status != kErrorSuccess) return status;
    return backend.trees->Read(Hive::kMachine, key, RemovedName(name, identity), &type, {}, &size);
  };
  return WithBackend(look) == kErrorSuccess;
}

DWORD ReadQueues(std::vector<Queue>* queues) {
  return WithBackend([&](const Backend& backend) {
    std::vector<Queue> found;
    std::u16string last;
    KeyId all = 0;
    DWORD status = backend.trees->Find(Hive::kMachine, kQueuesPath, &all);
    if (status == kErrorSuccess) {
      status = backend.trees->ReadBelow(
          Hive::kMachine, all,
          [&](std::u16string_view part, std::u16string_view name, DWORD type, std::span<const uint8_t> data) {
            if (found.empty() || part != last) found.emplace_back();
            last = part;
            SetField(name, type, data, &found.back());
          });
    }
    if (status != kErrorSuccess && status != kErrorFileNotFound) return status;  // no queue was ever made: none
    std::erase_if(found, [](const Queue& queue) { return !IsQueueName(queue.name); });
    for (Queue& queue : found) queue.dataFile = FindDataFile(*backend.files, queue.dataFile);
    std::ranges::sort(found, {}, [](const Queue& queue) { return std::pair(FoldCase(queue.name), queue.name); });
    *queues = std::move(found);
    return kErrorSuccess;
  });
}

DWORD ListQueues(std::vector<std::u16string>* names) {
  std::vector<Queue> queues;
  const DWORD status = ReadQueues(&queues);
  if (status != kErrorSuccess) return status;
  names->clear();
  for (Queue& queue : queues) names->push_back(std::move(queue.name));
  return kErrorSuccess;
}

}  // namespace heron::platform
