// The registry's calls over the two trees of the backend.

#include "platform/api/registry.h"

#include <algorithm>
#include <memory>

#include "platform/api/batch.h"
#include "platform/api/guarded.h"
#include "platform/api/handle_table.h"
#include "platform/api/key_path.h"

namespace heron::platform {
namespace {

constexpr DWORD kChangingRights =
    0x2 | 0x4 | 0x10000 | 0x40000 | 0x80000;  ///< set value, create key, delete, change rights

/// The root that `key` names, if it is one of the two constants.
bool RootHive(HKEY key, Hive* hive) {
  if (key == HKEY_CURRENT_USER) *hive = Hive::kUser;
  if (key == HKEY_LOCAL_MACHINE) *hive = Hive::kMachine;
  return key == HKEY_CURRENT_USER || key == HKEY_LOCAL_MACHINE;
}

/// A tree and a normalised path in it.
struct Place {
  Hive hive = Hive::kUser;
  std::u16string path;
};

/// Where `path` (may be null) below `parent` lies.
DWORD Locate(HKEY parent, const char16_t* path, Place* place) {
  std::u16string above;
  if (!RootHive(parent, &place->hive)) {
    const auto opened = FindHandleOf<OpenedKey>(parent);
    if (opened == nullptr) return kErrorInvalidHandle;
    place->hive = opened->hive;
    above = opened->path;
  }
  // Paths come from callers and are stored; the limit also bounds the recursion that makes missing parents.
  place->path = JoinKeyPath(above, path == nullptr ? std::u16string_view() : path);
  return place->path.size() > kLongestKeyPath ? kErrorInvalidParameter : kErrorSuccess;
}

/// A key ready for its values to be read or, with `write`, changed.
struct Target {
  Hive hive = Hive::kUser;
  KeyId key = 0;
};

DWORD Resolve(TreeStore& trees, HKEY key, bool write, Target* target) {
  if (RootHive(key, &target->hive)) return trees.Find(target->hive, {}, &target->key);
  const auto opened = FindHandleOf<OpenedKey>(key);
  if (opened == nullptr) return kErrorInvalidHandle;
  if (write && !opened->writable) return kErrorAccessDenied;
  target->hive = opened->hive;
  target->key = opened->key;
  return kErrorSuccess;
}

std::u16string_view NameOf(const char16_t* name) {
  return name == nullptr ? std::u16string_view() : name;
}

DWORD OpenAt(Place place, KeyId id, DWORD access, HKEY* key) {
  const bool writable = (access & kChangingRights) != 0;
  *key = InsertHandle(OpenedKey{.hive = place.hive, .key = id, .path = std::move(place.path), .writable = writable});
  return kErrorSuccess;
}

}  // namespace

DWORD RegOpenKeyExW(HKEY parent, const char16_t* path, DWORD, DWORD access, HKEY* key) {
  if (key == nullptr) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Place place;
    if (const DWORD status = Locate(parent, path, &place); status != kErrorSuccess) return status;
    KeyId id = 0;
    const DWORD status = backend.trees->Find(place.hive, place.path, &id);
    if (status != kErrorSuccess) return status;
    if ((access & kChangingRights) != 0 && !backend.trees->Writable(place.hive)) return kErrorAccessDenied;
    return OpenAt(std::move(place), id, access, key);
  });
}

DWORD RegCreateKeyExW(HKEY parent, const char16_t* path, DWORD access, HKEY* key, DWORD* disposition) {
  if (key == nullptr) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Place place;
    if (const DWORD status = Locate(parent, path, &place); status != kErrorSuccess) return status;
    KeyId id = 0;
    bool created = false;
    DWORD status = backend.trees->Find(place.hive, place.path, &id);
    if (status == kErrorSuccess && (access & kChangingRights) != 0 && !backend.trees->Writable(place.hive)) {
      return kErrorAccessDenied;
    }
    // Create again looks for the key inside its transaction: another program may have made it by now.
    if (status == kErrorFileNotFound) status = backend.trees->Create(place.hive, place.path, &id, &created);
    if (status != kErrorSuccess) return status;
    status = OpenAt(std::move(place), id, access, key);
    if (disposition != nullptr) *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return status;
  });
}

DWORD RegCloseKey(HKEY key) {
  Hive root;
  return RootHive(key, &root) || EraseHandleOf<OpenedKey>(key) ? kErrorSuccess : kErrorInvalidHandle;
}

DWORD RegFlushKey(HKEY key) {
  // Every change is durable when its call returns.
  Hive root;
  return RootHive(key, &root) || FindHandleOf<OpenedKey>(key) != nullptr ? kErrorSuccess : kErrorInvalidHandle;
}

DWORD RegDeleteKeyW(HKEY parent, const char16_t* path) {
  if (path == nullptr) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Place place;
    const DWORD status = Locate(parent, path, &place);
    return status == kErrorSuccess ? backend.trees->Remove(place.hive, place.path) : status;
  });
}

DWORD RegEnumKeyExW(HKEY key, DWORD index, char16_t* name, DWORD* length) {
  if (name == nullptr || length == nullptr) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Target target;
    DWORD status = Resolve(*backend.trees, key, false, &target);
    std::u16string found;
    if (status == kErrorSuccess) status = backend.trees->Subkey(target.hive, target.key, index, &found);
    if (status != kErrorSuccess) return status;
    if (found.size() >= *length) return kErrorMoreData;  // room for the terminator, too
    std::copy_n(found.c_str(), found.size() + 1, name);
    *length = static_cast<DWORD>(found.size());
    return kErrorSuccess;
  });
}

DWORD RegQueryValueExW(HKEY key, const char16_t* name, DWORD* type, uint8_t* data, DWORD* size) {
  if (data != nullptr && size == nullptr) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Target target;
    DWORD status = Resolve(*backend.trees, key, false, &target);
    if (status != kErrorSuccess) return status;
    const std::span<uint8_t> room = data == nullptr ? std::span<uint8_t>() : std::span(data, *size);
    DWORD found_type = 0;
    DWORD found_size = 0;
    status = backend.trees->Read(target.hive, target.key, NameOf(name), &found_type, room, &found_size);
    if (status != kErrorSuccess && status != kErrorMoreData) return status;
    if (type != nullptr) *type = found_type;
    if (size != nullptr) *size = found_size;  // also when the room is too small: the caller asks again with it
    return data == nullptr ? kErrorSuccess : status;
  });
}

DWORD RegSetValueExW(HKEY key, const char16_t* name, DWORD type, const uint8_t* data, DWORD size) {
  if (data == nullptr && size != 0) return kErrorInvalidParameter;
  return WithBackend([&](const Backend& backend) {
    Target target;
    const DWORD status = Resolve(*backend.trees, key, true, &target);
    if (status != kErrorSuccess) return status;
    return backend.trees->Write(target.hive, target.key, NameOf(name), type, std::span(data, size));
  });
}

DWORD RegDeleteValueW(HKEY key, const char16_t* name) {
  return WithBackend([&](const Backend& backend) {
    Target target;
    const DWORD status = Resolve(*backend.trees, key, true, &target);
    return status == kErrorSuccess ? backend.trees->Delete(target.hive, target.key, NameOf(name)) : status;
  });
}

DWORD RegBeginBatch(HKEY root) {
  return WithBackend([&](const Backend& backend) {
    Hive hive;
    return RootHive(root, &hive) ? BeginBatch(*backend.trees, hive) : kErrorInvalidHandle;
  });
}

DWORD RegEndBatch(HKEY root, BOOL keep) {
  return WithBackend([&](const Backend& backend) {
    Hive hive;
    return RootHive(root, &hive) ? EndBatch(*backend.trees, hive, keep != 0) : kErrorInvalidHandle;
  });
}

}  // namespace heron::platform
