// The version change of a user's lists, and the deletion walk with its fences.
#include "uistate/user_stores.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "platform/handles.h"
#include "settings/printer_data.h"
#include "uistate/list_stores_seed.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

using platform::DWORD;
using platform::HKEY_CURRENT_USER;
using platform::kErrorSuccess;

constexpr char16_t kVersionValue[] = u"DriverVersion";
constexpr int kSeededByThisVersion = 1;
constexpr int kSeededByAnother = 2;
constexpr uint8_t kNoOverlay = 1;

/// Longest path that the driver makes; a deeper one isn't ours, and the walk's depth is bounded by it.
constexpr size_t kMaxPath = 260;

/// Keys that a version change leaves alone, at every depth.
constexpr std::u16string_view kSparedKeys[] = {u"IP_UIPROFILE", u"BookMode", u"TempPlistID", u"Tempfile Count",
                                               u"Tempfile Name"};

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

/// The queue's key, or an empty text for a name that would give the key of all queues.
std::u16string PrinterKey(std::u16string_view printer_name) {
  const std::u16string key(WithoutClosingSeparators(BuildUserKey(printer_name)));
  const std::u16string all = BuildUserKey({});
  return SameName(key, WithoutClosingSeparators(all)) ? std::u16string() : key;
}

/// Whether `path` lies below `fence`. Up to a separator: a queue P1 has no say in the keys of P10.
bool LiesBelow(std::u16string_view path, std::u16string_view fence) {
  if (path.empty() || fence.empty() || path.size() <= fence.size() + 1) return false;
  return path[fence.size()] == u'\\' && SameName(path.substr(0, fence.size()), fence);
}

/// Name of a subkey; false at the end, or if it can't be told.
bool SubkeyName(platform::HKEY key, DWORD index, std::u16string* name) {
  std::array<char16_t, kMaxPath> buffer;
  DWORD length = buffer.size();
  if (platform::RegEnumKeyExW(key, index, buffer.data(), &length) != kErrorSuccess) return false;
  name->assign(buffer.data(), length);
  return true;
}

bool IsPrinterKey(const std::u16string& path) {
  const platform::UniqueKey key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ);
  DWORD size = 0;
  return key != nullptr &&
         platform::RegQueryValueExW(key.get(), kVersionValue, nullptr, nullptr, &size) == kErrorSuccess;
}

bool IsSpared(const std::u16string& path, std::u16string_view name) {
  const bool named = std::any_of(std::begin(kSparedKeys), std::end(kSparedKeys),
                                 [name](std::u16string_view spared) { return SameName(spared, name); });
  return named || IsPrinterKey(path);
}

void DeleteSubkeys(const std::u16string& path, const std::u16string& fence);

/// Deletes the key with all below it. False if it stands afterwards, at least in part.
bool DeleteKeyTree(const std::u16string& path, const std::u16string& fence) {
  if (!LiesBelow(path, fence) || path.size() > kMaxPath) return false;
  DeleteSubkeys(path, fence);
  return platform::RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str()) == kErrorSuccess;
}

/// The platform deletes empty keys only, so depth comes first. A deletion moves the indexes, so the count starts over;
/// each start has a key less, so it ends.
void DeleteSubkeys(const std::u16string& path, const std::u16string& fence) {
  const platform::UniqueKey key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_ALL_ACCESS);
  if (key == nullptr) return;
  std::u16string name;
  for (DWORD index = 0; SubkeyName(key.get(), index, &name);) {
    const std::u16string subkey = path + u'\\' + name;
    if (!IsSpared(subkey, name) && DeleteKeyTree(subkey, fence)) {
      index = 0;
    } else {
      ++index;
    }
  }
}

bool WriteVersion(const std::u16string& path, uint16_t version) {
  const platform::UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, path.c_str());
  const uint32_t value = version;
  std::array<uint8_t, sizeof value> bytes;
  std::memcpy(bytes.data(), &value, sizeof value);
  return key != nullptr && platform::RegSetValueExW(key.get(), kVersionValue, platform::REG_DWORD, bytes.data(),
                                                    bytes.size()) == kErrorSuccess;
}

/// Deletion and seeding take effect together, so that a crash leaves the old lists or the new ones. What was found
/// outside the batch is looked at again inside: another process may have renewed the lists by now, and a look that
/// failed once must not cost the user the lists.
bool RenewStores(std::u16string_view printer_name, uint16_t version) {
  platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
  if (!batch.open()) return false;
  const int comparison = CompareDriverVersion(printer_name, version);
  if (comparison == kSeededByThisVersion) return batch.Keep();
  if (comparison == kSeededByAnother && !DeleteOldStores(printer_name)) return false;
  return SeedStores(printer_name, version) && batch.Keep();
}

/// Whether the keys of watermarks 0 to `index` are all there.
bool HasWatermark(std::u16string_view printer_name, uint8_t index) {
  const std::u16string stem = BuildUserKey(printer_name, u"WaterMark", u"WMarkListData");
  for (unsigned n = 0; n <= index; ++n) {
    const std::string digits = std::to_string(n);
    const std::u16string path = stem + std::u16string(digits.begin(), digits.end());
    if (platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ) == nullptr) return false;
  }
  return true;
}

/// Printer name and version as the mirror of the public part has them.
struct MirrorHead {
  std::u16string printerName;
  uint16_t version;
};
MirrorHead ReadMirror(const DriverEnv& env) {
  constexpr EnvField kName = FieldOf<"dmDeviceName">();
  const uint8_t* mirror = FieldBytes<"publicMirror">(env);
  std::array<char16_t, kName.length> name;
  std::memcpy(name.data(), mirror + kName.offset, sizeof name);
  uint16_t version;
  std::memcpy(&version, mirror + FieldOf<"dmDriverVersion">().offset, sizeof version);
  return {{name.begin(), std::find(name.begin(), name.end() - 1, u'\0')}, version};
}

}  // namespace

bool RefreshUserStores(DriverEnv& env) {
  const MirrorHead head = ReadMirror(env);
  bool current = true;
  if (CompareDriverVersion(head.printerName, head.version) != kSeededByThisVersion) {
    current = RenewStores(head.printerName, head.version);
    Set<"lpOverlay">(env, kNoOverlay);
    Set<"bOverlayIndex">(env, 0);
    Set<"watermarkIndex">(env, 0);
  }
  const auto watermark = Get<"watermarkIndex">(env);
  if (watermark != 0 && !HasWatermark(head.printerName, watermark)) Set<"watermarkIndex">(env, 0);
  return current;
}

bool DeleteOldStores(std::u16string_view printer_name) {
  const std::u16string key = PrinterKey(printer_name);
  if (key.empty()) return false;
  DeleteSubkeys(key, key);
  return true;
}

bool SeedStores(std::u16string_view printer_name, uint16_t version) {
  const std::u16string key = PrinterKey(printer_name);
  if (key.empty()) return false;
  platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
  return batch.open() && WriteVersion(key, version) && SeedListStores(printer_name) && batch.Keep();
}

}  // namespace heron
