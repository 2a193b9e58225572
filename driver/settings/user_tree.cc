// Whose the user's settings of a queue are, and the deletion walk with its fences (user_tree.h).
#include "settings/user_tree.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using platform::DWORD;
using platform::HKEY_CURRENT_USER;
using platform::kErrorSuccess;

constexpr char16_t kVersionValue[] = u"DriverVersion";
constexpr char16_t kIdentityValue[] = u"QueueIdentities";
constexpr size_t kIdentitiesRoom = 170;  ///< characters: ten identities

/// Longest path that the driver makes; a deeper one isn't ours, and the walk's depth is bounded by it.
constexpr size_t kMaxPath = 260;

char16_t Lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

/// Key names compare without regard to the case of ASCII letters.
bool SameName(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return Lower(x) == Lower(y); });
}

std::u16string_view WithoutClosingSeparators(std::u16string_view path) {
  while (path.ends_with(u'\\')) path.remove_suffix(1);
  return path;
}

/// Whether `path` lies below `fence`. Up to a separator: a queue P1 has no say in the keys of P10.
bool LiesBelow(std::u16string_view path, std::u16string_view fence) {
  if (path.empty() || fence.empty() || path.size() <= fence.size() + 1) return false;
  return path[fence.size()] == u'\\' && SameName(path.substr(0, fence.size()), fence);
}

/// Name of a subkey; false at the end, or if it can't be read.
bool SubkeyName(platform::HKEY key, DWORD index, std::u16string* name) {
  std::array<char16_t, kMaxPath> buffer;
  DWORD length = buffer.size();
  if (platform::RegEnumKeyExW(key, index, buffer.data(), &length) != kErrorSuccess) return false;
  name->assign(buffer.data(), length);
  return true;
}

bool IsThere(const std::u16string& path) {
  return platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ) != nullptr;
}

bool IsPrinterKey(const std::u16string& path) {
  const platform::UniqueKey key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ);
  DWORD size = 0;
  return key != nullptr &&
         platform::RegQueryValueExW(key.get(), kVersionValue, nullptr, nullptr, &size) == kErrorSuccess;
}

using Names = std::span<const std::u16string_view>;

bool IsSpared(const std::u16string& path, std::u16string_view name, Names spared) {
  const bool named = std::ranges::any_of(spared, [name](std::u16string_view one) { return SameName(one, name); });
  return named || IsPrinterKey(path);
}

void DeleteSubkeys(const std::u16string& path, const std::u16string& fence, Names spared);

/// Deletes the key with all below it. False if it exists afterwards, at least in part.
bool DeleteKeyTree(const std::u16string& path, const std::u16string& fence, Names spared) {
  if (!LiesBelow(path, fence) || path.size() > kMaxPath) return false;
  DeleteSubkeys(path, fence, spared);
  return platform::RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str()) == kErrorSuccess;
}

/// The platform deletes empty keys only, so depth comes first. A deletion moves the indexes, so the count starts over;
/// each start has a key less, so it ends.
void DeleteSubkeys(const std::u16string& path, const std::u16string& fence, Names spared) {
  const platform::UniqueKey key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_ALL_ACCESS);
  if (key == nullptr) return;
  std::u16string name;
  for (DWORD index = 0; SubkeyName(key.get(), index, &name);) {
    const std::u16string subkey = path + u'\\' + name;
    if (!IsSpared(subkey, name, spared) && DeleteKeyTree(subkey, fence, spared)) {
      index = 0;
    } else {
      ++index;
    }
  }
}

/// The identity of the one queue that the user's key of this name belongs to. False if there is none or more than one,
/// or if that can't be read now.
bool FindIdentity(std::u16string_view printer_name, std::u16string* identity) {
  const std::u16string key = BuildUserKey(printer_name);
  const bool whole = printer_name.size() < kPrinterNameLength && printer_name.find(u'\\') == printer_name.npos &&
                     key.ends_with(printer_name);
  platform::Queue queue;
  if (whole) {
    if (platform::FindQueue(printer_name, &queue) != kErrorSuccess) return false;
    *identity = queue.identity;
    return true;
  }
  // The name may have been cut, by a record or by the key: all queues are looked at.
  std::vector<platform::Queue> queues;
  if (platform::ReadQueues(&queues) != kErrorSuccess) return false;
  const auto shares = [&key](const platform::Queue& other) { return SameName(BuildUserKey(other.name), key); };
  const auto found = std::ranges::find_if(queues, shares);
  if (found == queues.end() || std::any_of(found + 1, queues.end(), shares)) return false;
  *identity = found->identity;
  return true;
}

/// The identities that the key holds, one behind the other, each with a blank behind it. False if that can't be read
/// now.
bool ReadIdentities(const std::u16string& path, std::u16string* identities) {
  DWORD status = kErrorSuccess;
  const platform::UniqueKey key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ, &status);
  std::array<char16_t, kIdentitiesRoom + 1> text{};
  DWORD size = kIdentitiesRoom * sizeof(char16_t);
  if (key != nullptr) {
    auto* const bytes = reinterpret_cast<uint8_t*>(text.data());
    status = platform::RegQueryValueExW(key.get(), kIdentityValue, nullptr, bytes, &size);
  }
  *identities = status == kErrorSuccess ? text.data() : u"";
  return status == kErrorSuccess || status == platform::kErrorFileNotFound || status == platform::kErrorMoreData;
}

bool WriteIdentities(const std::u16string& path, const std::u16string& identities) {
  const platform::UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, path.c_str());
  const auto size = static_cast<DWORD>((identities.size() + 1) * sizeof(char16_t));
  return key != nullptr &&
         platform::RegSetValueExW(key.get(), kIdentityValue, platform::REG_SZ,
                                  reinterpret_cast<const uint8_t*>(identities.c_str()), size) == kErrorSuccess;
}

/// Whose settings the key at `path` holds, seen from the queue as it is now.
enum class Owner { kThisQueue, kOthersToo, kRemovedQueue };

Owner OwnerOf(const std::u16string& path, std::u16string_view name, const std::u16string& identity,
              std::u16string_view stored) {
  if (stored.empty()) {
    // Settings from before queues had identities.
    const bool removed = !identity.empty() && IsThere(path) && platform::WasQueueRemoved(name, {});
    return removed ? Owner::kRemovedQueue : identity.empty() ? Owner::kThisQueue : Owner::kOthersToo;
  }
  bool known = identity.empty();
  for (size_t end = stored.find(u' '); end != stored.npos; end = stored.find(u' ')) {
    const std::u16string_view one = stored.substr(0, end);
    if (platform::WasQueueRemoved(name, one)) return Owner::kRemovedQueue;
    known = known || one == identity;
    stored.remove_prefix(end + 1);
  }
  return known ? Owner::kThisQueue : Owner::kOthersToo;
}

/// Deletes all that the key holds; false if anything but keys of other queues is left.
bool Empty(const std::u16string& path) {
  platform::UniqueKey key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_ALL_ACCESS);
  if (key == nullptr) return !IsThere(path);
  DeleteSubkeys(path, path, {});
  std::u16string name;
  for (DWORD index = 0; SubkeyName(key.get(), index, &name); ++index) {
    if (!IsPrinterKey(path + u'\\' + name)) return false;
  }
  // The key itself stays where other queues' keys lie below it, and then without a mark of its own.
  if (platform::RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str()) == kErrorSuccess) return true;
  platform::RegDeleteValueW(key.get(), kIdentityValue);
  const DWORD status = platform::RegDeleteValueW(key.get(), kVersionValue);
  return status == kErrorSuccess || status == platform::kErrorFileNotFound;
}

}  // namespace

std::u16string UserTreeKey(std::u16string_view printer_name) {
  const std::u16string key(WithoutClosingSeparators(BuildUserKey(printer_name)));
  const std::u16string all = BuildUserKey({});
  return SameName(key, WithoutClosingSeparators(all)) ? std::u16string() : key;
}

bool AdoptUserTree(std::u16string_view printer_name) {
  const std::u16string path = UserTreeKey(printer_name);
  std::u16string identity;
  std::u16string stored;
  if (path.empty() || !FindIdentity(printer_name, &identity) || !ReadIdentities(path, &stored)) return true;
  const Owner owner = OwnerOf(path, printer_name, identity, stored);
  if (owner == Owner::kThisQueue) return true;
  const bool may_stay = owner == Owner::kOthersToo;
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  if (!batch.open() || !ReadIdentities(path, &stored)) return may_stay;
  // Another process may have been first.
  const Owner now = OwnerOf(path, printer_name, identity, stored);
  if (now == Owner::kRemovedQueue && !Empty(path)) return false;
  if (now == Owner::kRemovedQueue) stored.clear();
  if (now != Owner::kThisQueue && !identity.empty()) stored += identity + u' ';
  while (stored.size() > kIdentitiesRoom) stored.erase(0, stored.find(u' ') + 1);
  return (WriteIdentities(path, stored) && batch.Keep()) || may_stay;
}

bool DeleteUserTree(std::u16string_view printer_name) {
  const std::u16string path = UserTreeKey(printer_name);
  std::vector<platform::Queue> queues;
  if (path.empty() || !IsThere(path) || platform::ReadQueues(&queues) != kErrorSuccess) return path.empty();
  const auto shares = [&](const platform::Queue& queue) { return SameName(UserTreeKey(queue.name), path); };
  if (std::ranges::any_of(queues, shares)) return true;
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  return batch.open() && Empty(path) && batch.Keep();
}

bool DeleteUserSubkeys(std::u16string_view printer_name, std::span<const std::u16string_view> spared) {
  const std::u16string key = UserTreeKey(printer_name);
  if (key.empty()) return false;
  DeleteSubkeys(key, key, spared);
  return true;
}

}  // namespace heron
