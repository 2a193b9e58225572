// The backend in memory (memory_backend.h).

#include "platform/memory/memory_backend.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/api/key_path.h"
#include "platform/api/owner_lock.h"
#include "platform/api/text.h"

namespace heron::platform {
namespace {

struct Value {
  std::u16string name;
  DWORD type = 0;
  std::vector<uint8_t> data;
};

struct Key {
  KeyId parent = 0;
  std::u16string path;
  std::map<std::u16string, Value> values;  ///< by folded name
};

/// All keys of one tree. Ids grow, so that their order is the order of creation.
struct Content {
  std::map<KeyId, Key> keys;
  std::map<std::u16string, KeyId> ids;  ///< by folded path
};

struct Tree {
  Tree() {
    content.keys[0] = {.parent = -1, .path = {}, .values = {}};
    content.ids[{}] = 0;
  }

  OwnerLock lock;
  Content content;
  std::optional<Content> before;  ///< the content at Begin, inside a transaction
  KeyId next = 1;                 ///< never goes back, not even when a transaction is withdrawn
};

}  // namespace

struct MemoryBackend::State final : TreeStore, ModuleLoader, ProcessInfo, TextCodec {
  struct Loaded {
    std::u16string path;
    uint32_t count = 0;
  };

  explicit State(MemoryBackend* backend) : owner(backend), table{this, this, this, this, &backend->files} {}

  Tree& At(Hive hive) { return trees[static_cast<size_t>(hive)]; }
  /// Rights of the test's user, so that missing rights can be tested as root, too.
  bool MayWrite(Hive hive) const { return hive == Hive::kMachine ? owner->machineWritable : owner->userWritable; }

  /// Counts a call; what it must fail with, or kErrorSuccess.
  DWORD Tick() {
    const std::lock_guard guard(failure_mutex);
    ++calls;
    const bool fails = fail_at != 0 && (calls == fail_at || (sticky && calls > fail_at));
    return fails ? failure : kErrorSuccess;
  }
  /// The same for a call that changes `hive`.
  DWORD TickChange(Hive hive) {
    const DWORD status = Tick();
    return status == kErrorSuccess && !MayWrite(hive) ? kErrorAccessDenied : status;
  }

  DWORD Find(Hive hive, std::u16string_view path, KeyId* key) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = Tick(); status != kErrorSuccess) return status;
    const auto found = tree.content.ids.find(FoldCase(path));
    if (found == tree.content.ids.end()) return kErrorFileNotFound;
    *key = found->second;
    return kErrorSuccess;
  }

  DWORD Create(Hive hive, std::u16string_view path, KeyId* key, bool* created) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = TickChange(hive); status != kErrorSuccess) return status;
    *key = CreateIn(tree, path, created);
    return kErrorSuccess;
  }

  static KeyId CreateIn(Tree& tree, std::u16string_view path, bool* created) {
    const std::u16string folded = FoldCase(path);
    const auto found = tree.content.ids.find(folded);
    *created = found == tree.content.ids.end();
    if (!*created) return found->second;
    const KeyId parent = CreateIn(tree, ParentPath(path), created);
    const KeyId id = tree.next++;
    std::map<std::u16string, KeyId> entry{{folded, id}};  // made first, so that memory running out leaves no half key
    tree.content.keys.emplace(id, Key{.parent = parent, .path = std::u16string(path), .values = {}});
    tree.content.ids.insert(entry.extract(entry.begin()));
    *created = true;
    return id;
  }

  DWORD Remove(Hive hive, std::u16string_view path) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = TickChange(hive); status != kErrorSuccess) return status;
    const auto found = tree.content.ids.find(FoldCase(path));
    if (found == tree.content.ids.end()) return kErrorFileNotFound;
    const KeyId id = found->second;
    const bool has_subkeys =
        std::ranges::any_of(tree.content.keys, [id](const auto& entry) { return entry.second.parent == id; });
    if (id == 0 || has_subkeys) return kErrorAccessDenied;
    tree.content.keys.erase(id);
    tree.content.ids.erase(found);
    return kErrorSuccess;
  }

  DWORD Subkey(Hive hive, KeyId key, uint32_t index, std::u16string* name) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = Tick(); status != kErrorSuccess) return status;
    if (!tree.content.keys.contains(key)) return kErrorKeyDeleted;
    for (const auto& [id, entry] : tree.content.keys) {
      if (entry.parent != key || index-- != 0) continue;
      *name = LastPart(entry.path);
      return kErrorSuccess;
    }
    return kErrorNoMoreItems;
  }

  DWORD Read(Hive hive, KeyId key, std::u16string_view name, DWORD* type, std::span<uint8_t> room,
             DWORD* size) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = Tick(); status != kErrorSuccess) return status;
    const auto found = tree.content.keys.find(key);
    if (found == tree.content.keys.end()) return kErrorKeyDeleted;
    const auto value = found->second.values.find(FoldCase(name));
    if (value == found->second.values.end()) return kErrorFileNotFound;
    *type = value->second.type;
    *size = static_cast<DWORD>(value->second.data.size());
    if (*size > room.size()) return kErrorMoreData;
    std::ranges::copy(value->second.data, room.begin());
    return kErrorSuccess;
  }

  DWORD ReadAll(Hive hive, KeyId key, const Visitor& visit) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = Tick(); status != kErrorSuccess) return status;
    const auto found = tree.content.keys.find(key);
    if (found == tree.content.keys.end()) return kErrorKeyDeleted;
    for (const auto& [folded, value] : found->second.values) visit(value.name, value.type, value.data);
    return kErrorSuccess;
  }

  DWORD ReadBelow(Hive hive, KeyId key, const BelowVisitor& visit) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = Tick(); status != kErrorSuccess) return status;
    if (!tree.content.keys.contains(key)) return kErrorKeyDeleted;
    for (const auto& [id, entry] : tree.content.keys) {
      if (entry.parent != key) continue;
      for (const auto& [folded, value] : entry.values) visit(LastPart(entry.path), value.name, value.type, value.data);
    }
    return kErrorSuccess;
  }

  DWORD Write(Hive hive, KeyId key, std::u16string_view name, DWORD type, std::span<const uint8_t> data) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = TickChange(hive); status != kErrorSuccess) return status;
    const auto found = tree.content.keys.find(key);
    if (found == tree.content.keys.end()) return kErrorKeyDeleted;
    // Made completely before the map changes: tests let memory run out at every allocation.
    Value fresh{.name = std::u16string(name), .type = type, .data = {data.begin(), data.end()}};
    Value& value = found->second.values[FoldCase(name)];
    if (!value.name.empty()) fresh.name = std::move(value.name);  // the spelling of its making stays
    value = std::move(fresh);
    return kErrorSuccess;
  }

  DWORD Delete(Hive hive, KeyId key, std::u16string_view name) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = TickChange(hive); status != kErrorSuccess) return status;
    const auto found = tree.content.keys.find(key);
    if (found == tree.content.keys.end()) return kErrorKeyDeleted;
    return found->second.values.erase(FoldCase(name)) == 0 ? kErrorFileNotFound : kErrorSuccess;
  }

  DWORD Begin(Hive hive) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (const DWORD status = TickChange(hive); status != kErrorSuccess) return status;
    tree.before = tree.content;  // a whole copy: trees of tests are small
    tree.lock.lock();            // held until End
    return kErrorSuccess;
  }

  DWORD End(Hive hive, bool keep) override {
    Tree& tree = At(hive);
    const std::lock_guard guard(tree.lock);
    if (!tree.before.has_value()) return kErrorInvalidParameter;
    const DWORD status = Tick();
    if (!keep || status != kErrorSuccess) tree.content = std::move(*tree.before);
    tree.before.reset();
    tree.lock.unlock();
    return status;
  }

  bool Writable(Hive hive) override { return Tick() == kErrorSuccess && MayWrite(hive); }

  HMODULE Load(std::u16string_view path) override {
    const std::u16string name(path);
    const bool exists = owner->modules.contains(name) || owner->functions.contains(name);
    if (Tick() != kErrorSuccess || !exists) return nullptr;
    const std::lock_guard guard(modules_mutex);
    auto found = std::ranges::find(loaded, path, &Loaded::path);
    if (found == loaded.end()) found = loaded.insert(loaded.end(), {.path = name, .count = 0});
    ++found->count;
    return reinterpret_cast<HMODULE>(found - loaded.begin() + 1);
  }

  /// The loaded module that `module` numbers, or null. Under modules_mutex.
  Loaded* LoadedOf(HMODULE module) {
    const size_t number = reinterpret_cast<uintptr_t>(module);
    const bool valid = number >= 1 && number <= loaded.size() && loaded[number - 1].count > 0;
    return valid ? &loaded[number - 1] : nullptr;
  }

  bool Free(HMODULE module) override {
    if (Tick() != kErrorSuccess) return false;
    const std::lock_guard guard(modules_mutex);
    Loaded* const entry = LoadedOf(module);
    if (entry != nullptr) --entry->count;
    return entry != nullptr;
  }

  std::u16string_view Text(HMODULE module, uint32_t id) override {
    if (Tick() != kErrorSuccess) return {};
    const std::lock_guard guard(modules_mutex);
    const Loaded* const entry = LoadedOf(module);
    if (entry == nullptr) return {};
    const auto texts = owner->modules.find(entry->path);
    if (texts == owner->modules.end()) return {};
    const auto text = texts->second.find(id);
    return text == texts->second.end() ? std::u16string_view() : text->second;
  }

  void* Function(HMODULE module, const char* name) override {
    if (Tick() != kErrorSuccess) return nullptr;
    const std::lock_guard guard(modules_mutex);
    const Loaded* const entry = LoadedOf(module);
    if (entry == nullptr || !owner->functions.contains(entry->path)) return nullptr;
    const auto& exported = owner->functions.at(entry->path);
    const auto found = exported.find(name);
    return found == exported.end() ? nullptr : found->second;
  }

  HMODULE Find(std::u16string_view path) override {
    if (Tick() != kErrorSuccess) return nullptr;
    const std::lock_guard guard(modules_mutex);
    const auto found = std::ranges::find(loaded, path, &Loaded::path);
    const bool in_use = found != loaded.end() && found->count > 0;
    return in_use ? reinterpret_cast<HMODULE>(found - loaded.begin() + 1) : nullptr;
  }

  bool LocalTime(SYSTEMTIME* time) override {
    if (Tick() != kErrorSuccess || owner->clockFails) return false;
    *time = owner->localTime;
    return true;
  }
  std::vector<AdapterAddress> Adapters() override {
    return Tick() == kErrorSuccess ? owner->adapters : std::vector<AdapterAddress>();
  }

  std::u16string FileName() override { return Tick() == kErrorSuccess ? owner->processFileName : std::u16string(); }
  std::u16string LocaleCountry() override { return Tick() == kErrorSuccess ? owner->country : std::u16string(); }
  std::u16string UserName() override { return Tick() == kErrorSuccess ? owner->userName : std::u16string(); }

  DWORD ActiveCodePage() override { return owner->codePage; }

  /// Code pages known here, besides UTF-8: the number of characters that each takes from the start of Unicode.
  static char16_t FirstUnknown(DWORD code_page) { return code_page == 20127 ? 0x80 : code_page == 28591 ? 0x100 : 0; }

  bool Encode(DWORD code_page, std::u16string_view text, std::string* out) override {
    const char16_t limit = FirstUnknown(code_page);
    if (limit == 0) return false;
    out->clear();
    for (size_t i = 0; i < text.size(); ++i) {
      out->push_back(text[i] < limit ? static_cast<char>(text[i]) : '?');
      if ((text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00) ++i;
    }
    return true;
  }

  bool Decode(DWORD code_page, std::string_view bytes, std::u16string* out) override {
    const char16_t limit = FirstUnknown(code_page);
    out->clear();
    for (const char byte : bytes) {
      const char16_t c = static_cast<unsigned char>(byte);
      out->push_back(c < limit ? c : u'\xFFFD');
    }
    return limit != 0;
  }

  MemoryBackend* owner;
  Backend table;
  Tree trees[2];
  std::mutex modules_mutex;
  std::vector<Loaded> loaded;
  std::mutex failure_mutex;  ///< guards the rest
  uint64_t calls = 0;
  uint64_t fail_at = 0;
  DWORD failure = 0;
  bool sticky = false;
};

MemoryBackend::MemoryBackend() : state_(std::make_unique<State>(this)) {
  InstallBackend(&state_->table);
}

MemoryBackend::~MemoryBackend() {
  InstallBackend(nullptr);
}

void MemoryBackend::FailCall(uint64_t n, DWORD status, bool sticky) {
  const std::lock_guard guard(state_->failure_mutex);
  state_->calls = 0;
  state_->fail_at = n;
  state_->failure = status;
  state_->sticky = sticky;
}

uint64_t MemoryBackend::Calls() const {
  const std::lock_guard guard(state_->failure_mutex);
  return state_->calls;
}

std::string MemoryBackend::Dump(Hive hive) const {
  static constexpr char kDigits[] = "0123456789abcdef";
  Tree& tree = state_->At(hive);
  const std::lock_guard guard(tree.lock);
  std::string out;
  for (const auto& [folded, id] : tree.content.ids) {
    const Key& key = tree.content.keys.at(id);
    for (const auto& [folded_name, value] : key.values) {
      out += ToUtf8(key.path) + '|' + ToUtf8(value.name) + '=' + std::to_string(value.type) + ':';
      for (const uint8_t byte : value.data) {
        out += kDigits[byte >> 4];
        out += kDigits[byte & 15];
      }
      out += '\n';
    }
  }
  return out;
}

}  // namespace heron::platform
