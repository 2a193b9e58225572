// The spooler's calls over the machine's tree.

#include "platform/api/spooler.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <span>

#include "platform/api/batch.h"
#include "platform/api/guarded.h"
#include "platform/api/handle_table.h"
#include "platform/api/queue_store.h"

namespace heron::platform {
namespace {

constexpr DWORD kLocalQueue = 0x40;    ///< PRINTER_ATTRIBUTE_LOCAL
constexpr DWORD kNetworkQueue = 0x10;  ///< PRINTER_ATTRIBUTE_NETWORK
constexpr DWORD kDriverVersion = 3;    ///< of drivers that run in the caller's process
constexpr DWORD kChangingAccess = PRINTER_ALL_ACCESS & ~PRINTER_ACCESS_USE;

/// A structure followed by its texts and record, as one block: first collected, then placed.
class InfoBlock {
 public:
  explicit InfoBlock(size_t structure) : end_(structure) {}

  /// Reserves the place of `text` at `*field` of the structure.
  void Add(char16_t** field, const std::u16string& text) {
    Place(field, text.c_str(), (text.size() + 1) * sizeof(char16_t), alignof(char16_t));
  }
  void Add(DEVMODEW** field, const std::vector<uint8_t>& record) {
    Place(field, record.data(), record.size(), alignof(std::max_align_t));
  }
  size_t Size() const { return end_; }

  /// Copies everything behind the structure of `buffer` and lets the fields point there.
  void Write(uint8_t* buffer) const {
    for (const Part& part : std::span(parts_).first(count_)) {
      uint8_t* target = buffer + part.at;
      std::memcpy(target, part.data, part.size);
      std::memcpy(part.field, &target, sizeof target);  // a field has one of two pointer types
    }
  }

 private:
  struct Part {
    void* field;
    const void* data;
    size_t size;
    size_t at;
  };

  void Place(void* field, const void* data, size_t size, size_t alignment) {
    end_ = (end_ + alignment - 1) / alignment * alignment;
    parts_.at(count_++) = {field, data, size, end_};
    end_ += size;
  }

  std::array<Part, 12> parts_{};
  size_t count_ = 0;
  size_t end_;
};

/// Ends a call that answers with `info` and its block, by the rule of the two-step query.
template <class Info>
DWORD Answer(Info& info, const InfoBlock& block, uint8_t* buffer, DWORD size, DWORD* needed) {
  *needed = static_cast<DWORD>(block.Size());
  // All or nothing: a partly filled structure would hold pointers beyond the caller's buffer.
  if (buffer == nullptr || size < block.Size()) return kErrorInsufficientBuffer;
  block.Write(buffer);
  std::memcpy(buffer, &info, sizeof info);
  return kErrorSuccess;
}

DWORD AnswerInfo1(const Queue& queue, uint8_t* buffer, DWORD size, DWORD* needed) {
  const std::u16string description = queue.name + u',' + queue.driver + u',';
  const std::u16string none;
  PRINTER_INFO_1W info{};
  InfoBlock block(sizeof info);
  block.Add(&info.pDescription, description);
  block.Add(&info.pName, queue.name);
  block.Add(&info.pComment, none);
  return Answer(info, block, buffer, size, needed);
}

DWORD AnswerInfo2(const Queue& queue, uint8_t* buffer, DWORD size, DWORD* needed) {
  const std::u16string data_type = u"RAW";
  const std::u16string none;
  PRINTER_INFO_2W info{};
  InfoBlock block(sizeof info);
  // A stored record shorter than it declares would be read past its end by applications.
  if (IsWholeRecord(queue.devMode)) block.Add(&info.pDevMode, queue.devMode);
  if (!queue.server.empty()) block.Add(&info.pServerName, queue.server);
  block.Add(&info.pPrinterName, queue.name);
  block.Add(&info.pPortName, queue.port);
  block.Add(&info.pDriverName, queue.driver);
  block.Add(&info.pDatatype, data_type);
  for (char16_t** field :
       {&info.pShareName, &info.pComment, &info.pLocation, &info.pSepFile, &info.pPrintProcessor, &info.pParameters}) {
    block.Add(field, none);
  }
  info.Attributes = queue.server.empty() ? kLocalQueue : kNetworkQueue;
  info.Priority = 1;
  info.DefaultPriority = 1;
  return Answer(info, block, buffer, size, needed);
}

DWORD AnswerDriver2(const Queue& queue, uint8_t* buffer, DWORD size, DWORD* needed) {
  const std::u16string environment = u"Linux";
  const std::u16string none;
  DRIVER_INFO_2W info{};
  InfoBlock block(sizeof info);
  info.cVersion = kDriverVersion;
  block.Add(&info.pName, queue.driver);
  block.Add(&info.pEnvironment, environment);
  block.Add(&info.pDriverPath, none);
  block.Add(&info.pDataFile, queue.dataFile);
  block.Add(&info.pConfigFile, none);
  return Answer(info, block, buffer, size, needed);
}

using Answerer = DWORD (*)(const Queue&, uint8_t*, DWORD, DWORD*);

DWORD AskQueue(HANDLE printer, Answerer answer, uint8_t* buffer, DWORD size, DWORD* needed) {
  if (needed == nullptr) return kErrorInvalidParameter;
  if (answer == nullptr) return kErrorInvalidLevel;
  return WithBackend([&](const Backend& backend) {
    const auto opened = FindHandleOf<OpenedPrinter>(printer);
    if (opened == nullptr) return kErrorInvalidHandle;
    Queue queue;
    const DWORD status = ReadQueue(backend, opened->queue, &queue);
    // Handles refer to keys, not names: a queue that was removed and added again isn't this one.
    if (status != kErrorSuccess) return status == kErrorKeyDeleted ? kErrorPrinterDeleted : status;
    return answer(queue, buffer, size, needed);
  });
}

struct NamedValue {
  std::u16string name;
  DWORD type;
  std::vector<uint8_t> data;
};

/// Lays the structures out, then names and data behind them.
DWORD AnswerValues(const std::vector<NamedValue>& values, uint8_t* buffer, DWORD size, DWORD* needed, DWORD* count) {
  size_t bytes = values.size() * sizeof(PRINTER_ENUM_VALUESW);
  for (const NamedValue& value : values) {
    bytes += (value.name.size() + 1) * sizeof(char16_t) + (value.data.size() + 1) / 2 * 2;  // names stay aligned
  }
  *needed = static_cast<DWORD>(bytes);
  if (size < bytes) return kErrorMoreData;
  uint8_t* place = buffer + values.size() * sizeof(PRINTER_ENUM_VALUESW);
  for (size_t i = 0; i < values.size(); ++i) {
    const NamedValue& value = values[i];
    PRINTER_ENUM_VALUESW row{};
    row.cbValueName = static_cast<DWORD>((value.name.size() + 1) * sizeof(char16_t));
    row.pValueName = reinterpret_cast<char16_t*>(place);
    std::memcpy(place, value.name.c_str(), row.cbValueName);
    place += row.cbValueName;
    row.dwType = value.type;
    row.cbData = static_cast<DWORD>(value.data.size());
    row.pData = place;
    if (!value.data.empty()) std::memcpy(place, value.data.data(), value.data.size());
    place += (value.data.size() + 1) / 2 * 2;
    std::memcpy(buffer + i * sizeof row, &row, sizeof row);
  }
  *count = static_cast<DWORD>(values.size());
  return kErrorSuccess;
}

/// Runs `call` with the trees and the key of the queue's printer data.
template <class Call>
DWORD WithPrinterData(HANDLE printer, Call&& call) {
  return WithBackend([&](const Backend& backend) {
    const auto opened = FindHandleOf<OpenedPrinter>(printer);
    if (opened == nullptr) return kErrorInvalidHandle;
    const DWORD status = call(*backend.trees, opened->data);
    return status == kErrorKeyDeleted ? kErrorPrinterDeleted : status;
  });
}

/// The key of what the queue publishes. It has no place in the handle: few queues have one, and it's asked for rarely.
DWORD FindDirectoryKey(const Backend& backend, const OpenedPrinter& opened, bool create, KeyId* key) {
  Queue queue;
  DWORD status = ReadQueue(backend, opened.queue, &queue);
  if (status != kErrorSuccess) return status;
  KeyId now = 0;
  status = backend.trees->Find(Hive::kMachine, QueuePath(queue.name), &now);
  if (status != kErrorSuccess || now != opened.queue) return kErrorKeyDeleted;  // another queue of this name
  const std::u16string path = QueueDirectoryPath(queue.name);
  bool created = false;
  return create ? backend.trees->Create(Hive::kMachine, path, key, &created)
                : backend.trees->Find(Hive::kMachine, path, key);
}

/// Runs `call` with the trees and the key of the queue's data that is named `key`.
template <class Call>
DWORD WithDataKey(HANDLE printer, std::u16string_view key, bool create, DWORD unknown_key, Call&& call) {
  if (key == kDataKey) return WithPrinterData(printer, call);
  if (key != kDirectoryKey) return unknown_key;
  return WithBackend([&](const Backend& backend) {
    const auto opened = FindHandleOf<OpenedPrinter>(printer);
    if (opened == nullptr) return kErrorInvalidHandle;
    std::optional<Batch> batch;  // reading needs none, and no right to write
    if (create && batch.emplace(*backend.trees, Hive::kMachine).Status() != kErrorSuccess) return batch->Status();
    KeyId data = 0;
    DWORD status = FindDirectoryKey(backend, *opened, create, &data);
    if (status == kErrorSuccess) status = call(*backend.trees, data);
    if (status == kErrorSuccess && create) status = batch->Keep();
    return status == kErrorKeyDeleted ? kErrorPrinterDeleted : status;
  });
}

DWORD OpenQueue(const Backend& backend, std::u16string_view name, DWORD access, HANDLE* printer) {
  if (!IsQueueName(name)) return kErrorInvalidPrinterName;
  OpenedPrinter opened{};
  DWORD status = backend.trees->Find(Hive::kMachine, QueuePath(name), &opened.queue);
  if (status == kErrorSuccess) status = backend.trees->Find(Hive::kMachine, QueueDataPath(name), &opened.data);
  if (status != kErrorSuccess) return status == kErrorFileNotFound ? kErrorInvalidPrinterName : status;
  // Refused at the opening, so that a caller learns early that it can't store anything.
  if ((access & kChangingAccess) != 0 && !backend.trees->Writable(Hive::kMachine)) return kErrorAccessDenied;
  *printer = InsertHandle(opened);
  return kErrorSuccess;
}

}  // namespace

BOOL OpenPrinterW(const char16_t* name, HANDLE* printer, const PRINTER_DEFAULTSW* defaults) {
  if (printer == nullptr) return BoolResult(kErrorInvalidParameter);
  if (name == nullptr) return BoolResult(kErrorInvalidPrinterName);
  const DWORD access = defaults == nullptr ? PRINTER_ACCESS_USE : defaults->DesiredAccess;
  return BoolResult(WithBackend([&](const Backend& backend) { return OpenQueue(backend, name, access, printer); }));
}

BOOL ClosePrinter(HANDLE printer) {
  return BoolResult(EraseHandleOf<OpenedPrinter>(printer) ? kErrorSuccess : kErrorInvalidHandle);
}

BOOL GetPrinterW(HANDLE printer, DWORD level, uint8_t* buffer, DWORD size, DWORD* needed) {
  const Answerer answer = level == 1 ? AnswerInfo1 : level == 2 ? AnswerInfo2 : nullptr;
  return BoolResult(AskQueue(printer, answer, buffer, size, needed));
}

BOOL GetPrinterDriverW(HANDLE printer, const char16_t*, DWORD level, uint8_t* buffer, DWORD size, DWORD* needed) {
  return BoolResult(AskQueue(printer, level == 2 ? AnswerDriver2 : nullptr, buffer, size, needed));
}

DWORD GetPrinterDataW(HANDLE printer, const char16_t* name, DWORD* type, uint8_t* buffer, DWORD size, DWORD* needed) {
  if (name == nullptr || needed == nullptr || (buffer == nullptr && size != 0)) return kErrorInvalidParameter;
  return WithPrinterData(printer, [&](TreeStore& trees, KeyId data) {
    DWORD found_type = 0;
    DWORD found_size = 0;
    const DWORD status = trees.Read(Hive::kMachine, data, name, &found_type, std::span(buffer, size), &found_size);
    if (status != kErrorSuccess && status != kErrorMoreData) return status;
    if (type != nullptr) *type = found_type;
    *needed = found_size;
    return status;
  });
}

DWORD EnumPrinterDataExW(HANDLE printer, const char16_t* key, uint8_t* buffer, DWORD size, DWORD* needed,
                         DWORD* count) {
  if (key == nullptr || needed == nullptr || count == nullptr || (buffer == nullptr && size != 0))
    return kErrorInvalidParameter;
  return WithDataKey(printer, key, false, kErrorFileNotFound, [&](TreeStore& trees, KeyId data) {
    std::vector<NamedValue> values;
    const DWORD status =
        trees.ReadAll(Hive::kMachine, data, [&](std::u16string_view name, DWORD type, std::span<const uint8_t> bytes) {
          values.push_back({std::u16string(name), type, {bytes.begin(), bytes.end()}});
        });
    return status != kErrorSuccess ? status : AnswerValues(values, buffer, size, needed, count);
  });
}

DWORD SetPrinterDataW(HANDLE printer, const char16_t* name, DWORD type, const uint8_t* data, DWORD size) {
  if (name == nullptr || (data == nullptr && size != 0)) return kErrorInvalidParameter;
  return WithPrinterData(printer, [&](TreeStore& trees, KeyId key) {
    return trees.Write(Hive::kMachine, key, name, type, std::span(data, size));
  });
}

DWORD SetPrinterDataExW(HANDLE printer, const char16_t* key, const char16_t* name, DWORD type, const uint8_t* data,
                        DWORD size) {
  if (key == nullptr || name == nullptr || (data == nullptr && size != 0)) return kErrorInvalidParameter;
  return WithDataKey(printer, key, true, kErrorInvalidParameter, [&](TreeStore& trees, KeyId id) {
    return trees.Write(Hive::kMachine, id, name, type, std::span(data, size));
  });
}

DWORD DeletePrinterDataW(HANDLE printer, const char16_t* name) {
  if (name == nullptr) return kErrorInvalidParameter;
  return WithPrinterData(printer, [&](TreeStore& trees, KeyId key) { return trees.Delete(Hive::kMachine, key, name); });
}

DWORD BeginPrinterDataBatch(HANDLE printer) {
  return WithPrinterData(printer, [](TreeStore& trees, KeyId) { return BeginBatch(trees, Hive::kMachine); });
}

DWORD EndPrinterDataBatch(HANDLE printer, BOOL keep) {
  return WithBackend([&](const Backend& backend) {
    // A handle that was closed inside its batch must not leave the tree locked: such a batch is withdrawn.
    const bool valid = FindHandleOf<OpenedPrinter>(printer) != nullptr;
    const DWORD status = EndBatch(*backend.trees, Hive::kMachine, valid && keep != 0);
    return valid ? status : kErrorInvalidHandle;
  });
}

}  // namespace heron::platform
