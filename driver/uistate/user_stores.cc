// The version change of a user's lists.
#include "uistate/user_stores.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "generated/values.h"
#include "platform/api/handles.h"
#include "settings/printer_data.h"
#include "settings/user_tree.h"
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

/// Keys that a version change leaves alone, at every depth.
constexpr std::u16string_view kSparedKeys[] = {u"IP_UIPROFILE", u"BookMode", u"TempPlistID", u"Tempfile Count",
                                               u"Tempfile Name"};

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
  bool current = AdoptUserTree(head.printerName);
  if (!current) return false;
  if (CompareDriverVersion(head.printerName, head.version) != kSeededByThisVersion) {
    current = RenewStores(head.printerName, head.version);
    Set<"lpOverlay">(env, value::lpOverlay::kNoOverlay);
    Set<"bOverlayIndex">(env, 0);
    Set<"watermarkIndex">(env, 0);
  }
  const auto watermark = Get<"watermarkIndex">(env);
  if (watermark != 0 && !HasWatermark(head.printerName, watermark)) Set<"watermarkIndex">(env, 0);
  return current;
}

bool DeleteOldStores(std::u16string_view printer_name) {
  return DeleteUserSubkeys(printer_name, kSparedKeys);
}

bool SeedStores(std::u16string_view printer_name, uint16_t version) {
  const std::u16string key = UserTreeKey(printer_name);
  if (key.empty()) return false;
  platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
  return batch.open() && WriteVersion(key, version) && SeedListStores(printer_name) && batch.Keep();
}

}  // namespace heron
