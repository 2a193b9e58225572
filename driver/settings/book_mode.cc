// BookMode: what a user last confirmed for a queue in the spreadsheet program, which hands records back unchanged; and
// the version that the user's stores of a queue were seeded by.
//
// The state lies in the user's tree, "BookMode" below the queue's key. A key without this driver's version, be it new,
// older or half written, is set back to nothing known before it is used.
#include <array>

#include "generated/values.h"
#include "platform/api/handles.h"
#include "platform/api/process.h"
#include "settings/printer_data.h"
#include "settings/user_tree.h"

namespace heron {
namespace {

using namespace platform;

constexpr char16_t kStatus[] = u"Status";
constexpr char16_t kResolution[] = u"Resolution";
constexpr char16_t kVersion[] = u"Version";
constexpr uint32_t kDefaultResolution = value::lpQuality::kDpi600;
constexpr int kSeededByThis = 1;
constexpr int kSeededByOther = 2;
constexpr int kNeverSeeded = 3;
constexpr char16_t kGfxMode[] = u"bGFXMode";
constexpr char16_t kPdlType[] = u"bPDLType";
constexpr char16_t kEnableBppChange[] = u"bEnableBPPChange";
constexpr size_t kProgramPathRoom = 4096;

/// Reads a number; one of the wrong type or size counts as missing.
DWORD ReadNumber(HKEY key, const char16_t* name, uint32_t* value) {
  uint32_t stored = 0;
  DWORD type = 0;
  DWORD size = sizeof stored;
  const DWORD status = RegQueryValueExW(key, name, &type, reinterpret_cast<uint8_t*>(&stored), &size);
  if (status == kErrorMoreData) return kErrorFileNotFound;
  if (status != kErrorSuccess) return status;
  if (type != REG_DWORD || size != sizeof stored) return kErrorFileNotFound;
  *value = stored;
  return kErrorSuccess;
}

bool WriteNumber(HKEY key, const char16_t* name, uint32_t value) {
  return RegSetValueExW(key, name, REG_DWORD, reinterpret_cast<const uint8_t*>(&value), sizeof value) == kErrorSuccess;
}

bool SameVersion(uint32_t a, uint32_t b) {
  return ((a ^ b) & kVersionMask) == 0;
}

/// Nothing known, as one; unless another program has begun the key meanwhile.
void ResetBookMode(HKEY key) {
  RegistryBatch batch(HKEY_CURRENT_USER);
  uint32_t version = 0;
  if (ReadNumber(key, kVersion, &version) == kErrorSuccess && SameVersion(version, kDriverVersion)) {
    batch.Keep();
    return;
  }
  if (WriteNumber(key, kStatus, 0) && WriteNumber(key, kResolution, kDefaultResolution) &&
      WriteNumber(key, kVersion, kDriverVersion)) {
    batch.Keep();
  }
}

struct BookMode {
  UniqueKey key;       ///< empty if it can't be opened
  bool fresh = false;  ///< nothing was known
};

BookMode OpenBookMode(std::u16string_view printer_name) {
  BookMode mode;
  bool created = false;
  AdoptUserTree(printer_name);
  mode.key = CreateKey(HKEY_CURRENT_USER, BuildUserKey(printer_name, u"BookMode").c_str(), &created);
  if (mode.key == nullptr) return mode;
  uint32_t version = 0;
  const DWORD status = ReadNumber(mode.key.get(), kVersion, &version);
  mode.fresh = created || status != kErrorSuccess || !SameVersion(version, kDriverVersion);
  // What a busy store can't answer now is unknown, but isn't discarded.
  if (mode.fresh && (status == kErrorSuccess || status == kErrorFileNotFound)) ResetBookMode(mode.key.get());
  return mode;
}

/// The number `name`, or `if_unknown` where nothing is known or can be read.
uint32_t BookModeNumber(std::u16string_view printer_name, const char16_t* name, uint32_t if_unknown) {
  const BookMode mode = OpenBookMode(printer_name);
  uint32_t value = if_unknown;
  if (mode.key != nullptr && !mode.fresh) ReadNumber(mode.key.get(), name, &value);
  return value;
}

/// A write that fails is ignored, as with printer data: only a key that doesn't open is a failure.
bool SetBookModeNumber(std::u16string_view printer_name, const char16_t* name, uint32_t value) {
  const BookMode mode = OpenBookMode(printer_name);
  if (mode.key == nullptr) return false;
  WriteNumber(mode.key.get(), name, value);
  return true;
}

constexpr char16_t Upper(char16_t c) {
  return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

}  // namespace

bool ProcessIs(std::u16string_view program) {
  std::array<char16_t, kProgramPathRoom> path;
  const size_t length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  if (length < program.size() || length > path.size()) return false;
  const char16_t* end = path.data() + length - program.size();
  for (const char16_t c : program) {
    if (Upper(*end++) != c) return false;
  }
  return true;
}

bool InExcel() {
  return ProcessIs(u"EXCEL.EXE");
}

BookModeJob ReadBookModeJob(std::u16string_view printer_name) {
  const BookMode mode = OpenBookMode(printer_name);
  BookModeJob job;
  if (mode.key == nullptr || mode.fresh) return job;
  ReadNumber(mode.key.get(), kGfxMode, &job.gfxMode);
  ReadNumber(mode.key.get(), kPdlType, &job.pdlType);
  ReadNumber(mode.key.get(), kEnableBppChange, &job.enableBppChange);
  return job;
}

bool WriteBookModeJob(std::u16string_view printer_name, const BookModeJob& job) {
  const BookMode mode = OpenBookMode(printer_name);
  if (mode.key == nullptr) return false;
  RegistryBatch batch(HKEY_CURRENT_USER);
  if (WriteNumber(mode.key.get(), kGfxMode, job.gfxMode) && WriteNumber(mode.key.get(), kPdlType, job.pdlType) &&
      WriteNumber(mode.key.get(), kEnableBppChange, job.enableBppChange)) {
    batch.Keep();
  }
  return true;
}

uint32_t BookModeStatus(std::u16string_view printer_name) {
  return BookModeNumber(printer_name, kStatus, kBookModeUnknown);
}

uint32_t BookModeResolution(std::u16string_view printer_name) {
  const uint32_t stored = BookModeNumber(printer_name, kResolution, kDefaultResolution);
  return stored == value::lpQuality::kDpi200 || stored == value::lpQuality::kDpi400 ? stored : kDefaultResolution;
}

bool SetBookModeStatus(const DriverEnv& env, uint32_t status) {
  return SetBookModeNumber(GetText<"dmDeviceName">(env), kStatus, status);
}

bool SetBookModeResolution(std::u16string_view printer_name, uint32_t value) {
  return SetBookModeNumber(printer_name, kResolution, value);
}

int CompareDriverVersion(std::u16string_view printer_name, uint16_t version) {
  DWORD status = kErrorSuccess;
  const UniqueKey key = OpenKey(HKEY_CURRENT_USER, BuildUserKey(printer_name).c_str(), KEY_READ, &status);
  uint32_t stored = 0;
  if (key != nullptr) status = ReadNumber(key.get(), u"DriverVersion", &stored);
  if (status == kErrorFileNotFound) return kNeverSeeded;
  // Anything else would have the user's lists seeded anew, for a store that is only busy.
  if (status != kErrorSuccess) return kSeededByThis;
  return SameVersion(stored, version) ? kSeededByThis : kSeededByOther;
}

}  // namespace heron
