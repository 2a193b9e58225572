// The table of open handles (handle_table.h).

#include "platform/api/handle_table.h"

#include <mutex>
#include <unordered_map>

namespace heron::platform {
namespace {

struct Table {
  std::mutex mutex;
  std::unordered_map<uintptr_t, std::shared_ptr<const HandleEntry>> entries;
  uintptr_t next = 0x10004;  ///< steps of 4 from here meet neither null, -1 nor the odd and low constants of the roots
};

constexpr uintptr_t kStep = 4;
constexpr uintptr_t kRootConstants = 0x80000000;  ///< handles skip the sixteen numbers from here on

/// Never destroyed: destructors of other modules may still close handles at the end of the process.
Table& Handles() {
  static Table& table = *new Table;
  return table;
}

uintptr_t Number(const void* handle) {
  return reinterpret_cast<uintptr_t>(handle);
}

}  // namespace

void* InsertHandle(HandleEntry entry) {
  // Shared: a thread may use an entry while another closes its handle.
  auto shared = std::make_shared<const HandleEntry>(std::move(entry));
  Table& table = Handles();
  const std::lock_guard guard(table.mutex);
  if (table.next == kRootConstants) table.next += 16;
  const uintptr_t number = table.next;
  table.entries.emplace(number, std::move(shared));
  table.next += kStep;  // numbers aren't reused, so that a stale handle never reaches another object
  return reinterpret_cast<void*>(number);
}

std::shared_ptr<const HandleEntry> FindHandle(const void* handle) {
  Table& table = Handles();
  const std::lock_guard guard(table.mutex);
  const auto found = table.entries.find(Number(handle));
  return found == table.entries.end() ? nullptr : found->second;
}

bool EraseHandle(const void* handle, bool (*is_kind)(const HandleEntry&)) {
  Table& table = Handles();
  const std::lock_guard guard(table.mutex);
  const auto found = table.entries.find(Number(handle));
  if (found == table.entries.end() || !is_kind(*found->second)) return false;
  table.entries.erase(found);
  return true;
}

void DropAllHandles() {
  Table& table = Handles();
  const std::lock_guard guard(table.mutex);
  table.entries.clear();
}

}  // namespace heron::platform
