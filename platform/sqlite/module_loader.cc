// Modules through dlopen (module_loader.h).

#include "platform/sqlite/module_loader.h"

#include <dlfcn.h>

#include <algorithm>
#include <span>

#include "platform/api/module_data.h"
#include "platform/api/module_texts.h"
#include "platform/api/text.h"
#include "platform/sqlite/system_modules.h"

namespace heron::store {

using platform::HMODULE;

// A module stays mapped when its last user frees it, only the count drops: the driver frees its resource module at the
// end of each call and loads it again at the next, and an address of a text may still be in use elsewhere. A replaced
// file is met by the next process.
struct DlModules::Module {
  std::u16string path;
  void* library;
  std::span<const HeronModuleText> texts;
  std::span<const HeronModuleData> data;
  uint32_t count = 0;
};

namespace {

struct CloseLibrary {
  void operator()(void* library) const { dlclose(library); }
};
using UniqueLibrary = std::unique_ptr<void, CloseLibrary>;

uint64_t KeyOf(const HeronModuleText& row) {
  return row.id;
}
uint64_t KeyOf(const HeronModuleData& row) {
  return uint64_t{row.kind} << 32 | row.id;
}

/// A table of a module; none if it has no such table, or one that isn't sorted as the search needs it.
template <typename Row>
std::span<const Row> TableOf(void* library, const char* name) {
  using Function = const Row* (*)(uint32_t * count);
  const auto function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) return {};
  uint32_t count = 0;
  const Row* const rows = function(&count);
  if (rows == nullptr) return {};
  const std::span table(rows, count);
  // Binary search in an unsorted table would silently miss texts.
  const auto ascend = [](const Row& one, const Row& next) { return KeyOf(one) >= KeyOf(next); };
  return std::ranges::adjacent_find(table, ascend) == table.end() ? table : std::span<const Row>();
}

template <typename Row>
const Row* FindRow(std::span<const Row> table, uint64_t key) {
  const auto found = std::ranges::lower_bound(table, key, {}, [](const Row& row) { return KeyOf(row); });
  return found != table.end() && KeyOf(*found) == key ? &*found : nullptr;
}

}  // namespace

DlModules::DlModules() = default;
DlModules::~DlModules() = default;

HMODULE DlModules::Load(std::u16string_view path) {
  // Only a full path: a bare name would be searched for in places that others may write to.
  const bool of_system = !path.starts_with(platform::kPathSeparator);
  if (of_system && !HasSystemModule(path)) return nullptr;
  const auto find = [&] {
    return std::ranges::find(modules_, path, [](const auto& module) { return std::u16string_view(module->path); });
  };
  {
    const std::lock_guard guard(mutex_);
    if (const auto found = find(); found != modules_.end()) {
      ++(*found)->count;
      return found->get();
    }
  }
  // Without the lock, since a module's own start-up code may load another.
  // A module of the system is the program itself, which links what it needs of the system.
  UniqueLibrary library(dlopen(of_system ? nullptr : platform::ToUtf8(path).c_str(), RTLD_NOW | RTLD_LOCAL));
  if (library == nullptr) return nullptr;
  auto module = std::make_unique<Module>(Module{.path = std::u16string(path),
                                                .library = library.get(),
                                                .texts = TableOf<HeronModuleText>(library.get(), kHeronModuleTextsName),
                                                .data = TableOf<HeronModuleData>(library.get(), kHeronModuleDataName),
                                                .count = 0});
  const std::lock_guard guard(mutex_);
  auto found = find();
  // Another thread may have loaded it meanwhile; then the second reference is dropped with `library`.
  if (found == modules_.end()) {
    modules_.push_back(std::move(module));
    found = modules_.end() - 1;
    static_cast<void>(library.release());
  }
  ++(*found)->count;
  return found->get();
}

/// The entry that `module` is the address of, if it is loaded. Under the lock.
DlModules::Module* DlModules::FindLoaded(HMODULE module) {
  const auto found = std::ranges::find(modules_, module, [](const auto& entry) -> HMODULE { return entry.get(); });
  return found != modules_.end() && (*found)->count > 0 ? found->get() : nullptr;
}

bool DlModules::Free(HMODULE module) {
  const std::lock_guard guard(mutex_);
  Module* const entry = FindLoaded(module);
  // Stays mapped: texts that were handed out point into it, and threads may still run its code.
  if (entry != nullptr) --entry->count;
  return entry != nullptr;
}

void* DlModules::Function(HMODULE module, const char* name) {
  const std::lock_guard guard(mutex_);
  const Module* const entry = FindLoaded(module);
  return entry == nullptr ? nullptr : dlsym(entry->library, name);
}

HMODULE DlModules::Find(std::u16string_view path) {
  const std::lock_guard guard(mutex_);
  const auto found =
      std::ranges::find_if(modules_, [&](const auto& entry) { return entry->count > 0 && entry->path == path; });
  return found == modules_.end() ? nullptr : found->get();
}

std::u16string_view DlModules::Text(HMODULE module, uint32_t id) {
  const std::lock_guard guard(mutex_);
  const Module* const entry = FindLoaded(module);
  if (entry == nullptr) return {};
  const HeronModuleText* const row = FindRow(entry->texts, id);
  return row == nullptr || row->text == nullptr ? std::u16string_view() : std::u16string_view(row->text, row->length);
}

std::span<const uint8_t> DlModules::Data(HMODULE module, uint32_t kind, uint32_t id) {
  const std::lock_guard guard(mutex_);
  const Module* const entry = FindLoaded(module);
  if (entry == nullptr) return {};
  const HeronModuleData* const row = FindRow(entry->data, uint64_t{kind} << 32 | id);
  return row == nullptr || row->data == nullptr ? std::span<const uint8_t>() : std::span(row->data, row->size);
}

}  // namespace heron::store
