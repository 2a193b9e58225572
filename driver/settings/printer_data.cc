// The queue's printer data: the saved record, the country, the printing-side driver; and the user's key of a queue.
//
// A value is written whole by one call, and a reader takes what it finds. Who changes the saved record looks once more,
// inside the transaction that writes it, whether it is still the one that was read.
#include "settings/printer_data.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "catalog/strings.h"
#include "platform/api/handles.h"
#include "platform/api/text.h"
#include "settings/defaults.h"
#include "settings/secret_fields.h"

namespace heron {
namespace {

/// A record as printer data keep it: all users may read those, so the secrets, which are never read from there, are
/// left out.
SavedRecord StoredForm(const DriverEnv& env) {
  DriverEnv saved = env;
  ClearSecrets(saved.bytes);
  return {saved.bytes.begin(), saved.bytes.end()};
}

using namespace platform;

constexpr char16_t kSavedRecord[] = u"HERON NT";
constexpr char16_t kCountryCode[] = u"CountryCode";
constexpr char16_t kRenderDriverValue[] = u"SPLUserModePrinterDriver";
constexpr std::u16string_view kRenderDriver = u"TVOR6F1.DLL";
constexpr std::u16string_view kUserKeyBase = u"Software\\Varnell\\PCL\\Varnell 70/36MX-2CHSUS\\";

constexpr DWORD kLargestSavedRecord = 64 * 1024;  ///< anything larger isn't a record

constexpr size_t kNameBytes = 31;  ///< of a queue's name in the system code page, as a key keeps it
constexpr size_t kUserKeyLength = 260;

/// The printing-side driver's name as printer data keep it: 128 bytes, filled up with zeros.
using RenderDriverName = std::array<char16_t, 64>;
static_assert(sizeof(RenderDriverName) == 128);

/// `name` as `code_page` knows it, cut to whole characters within 31 bytes; empty for an unknown code page.
std::u16string ThroughCodePage(DWORD code_page, std::u16string_view name) {
  std::array<char, kNameBytes + 1> bytes{};
  std::array<char16_t, kNameBytes> text;
  // A name that doesn't fit fails, but leaves its whole characters.
  const int written =
      WideCharToMultiByte(code_page, name.data(), static_cast<int>(name.size()), bytes.data(), kNameBytes);
  // Half a name would be another queue's key.
  if (written == 0 && GetLastError() == kErrorNotEnoughMemory) throw std::bad_alloc();
  const auto length = static_cast<int>(std::strlen(bytes.data()));
  const int characters = length > 0 ? MultiByteToWideChar(code_page, bytes.data(), length, text.data(), kNameBytes) : 0;
  return {text.data(), static_cast<size_t>(characters)};
}

/// The part of the user's key that is the queue's: never shared by all queues, whatever the system's code page is.
std::u16string KeyName(std::u16string_view printer_name) {
  std::u16string name = ThroughCodePage(CP_ACP, printer_name);
  if (name.empty()) name = ThroughCodePage(CP_UTF8, printer_name);
  if (name.starts_with(u"\\\\")) name.erase(0, 2);
  return name;
}

bool ReadCountry(HANDLE printer, uint32_t* country) {
  uint32_t stored = 0;
  DWORD type = 0;
  DWORD size = 0;
  const DWORD status =
      GetPrinterDataW(printer, kCountryCode, &type, reinterpret_cast<uint8_t*>(&stored), sizeof stored, &size);
  if (status != kErrorSuccess || type != REG_DWORD || size != sizeof stored) return false;
  *country = stored;
  return true;
}

void WriteCountry(HANDLE printer, uint32_t country) {
  SetPrinterDataW(printer, kCountryCode, REG_DWORD, reinterpret_cast<const uint8_t*>(&country), sizeof country);
}

bool NamesRenderDriver(HANDLE printer) {
  RenderDriverName stored{};
  DWORD size = 0;
  const DWORD status = GetPrinterDataW(printer, kRenderDriverValue, nullptr, reinterpret_cast<uint8_t*>(stored.data()),
                                       sizeof stored, &size);
  const std::u16string_view name(stored.data(), stored.size());
  return status == kErrorSuccess && name.substr(0, name.find(u'\0')) == kRenderDriver;
}

void WriteRenderDriver(HANDLE printer) {
  RenderDriverName name{};
  kRenderDriver.copy(name.data(), kRenderDriver.size());
  SetPrinterDataW(printer, kRenderDriverValue, REG_SZ, reinterpret_cast<const uint8_t*>(name.data()), sizeof name);
}

DWORD ReadSaved(HANDLE printer, SavedRecord* saved) {
  saved->resize(kEnvSize);
  DWORD size = 0;
  DWORD status = GetPrinterDataW(printer, kSavedRecord, nullptr, saved->data(), kEnvSize, &size);
  if (status == kErrorMoreData && size <= kLargestSavedRecord) {
    saved->resize(size);
    status = GetPrinterDataW(printer, kSavedRecord, nullptr, saved->data(), size, &size);
  }
  saved->resize(status == kErrorSuccess ? size : 0);
  return status;
}

bool IsValid(const SavedRecord& saved) {
  return saved.size() == kEnvSize && IsOwnEnv(saved.data());
}

/// Makes the default record of the locale's destination the saved one. False if the resources can't be opened.
bool SaveDefaultRecord(HANDLE printer, const char16_t* printer_name) {
  RefreshDriverDirectory(printer);
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) return false;
  DriverEnv env;
  BuildDefaultEnv(resources.get(), &env, printer_name, printer);
  SavePrinterEnv(printer, env);
  return true;
}

}  // namespace

std::u16string PrinterName(HANDLE printer, size_t length) {
  const PrinterInfo info(printer, 1);
  if (!info) return {};
  const char16_t* name_or_null = info.As<PRINTER_INFO_1W>().pName;
  const std::u16string_view name = name_or_null != nullptr ? name_or_null : u"";
  return std::u16string(name.substr(0, length));
}

std::u16string BuildUserKey(std::u16string_view printer_name, std::u16string_view sub1, std::u16string_view sub2) {
  std::u16string path(kUserKeyBase);
  path.append(KeyName(printer_name));
  if (!sub1.empty()) {
    path.append(u"\\").append(sub1);
    if (!sub2.empty()) path.append(u"\\").append(sub2);
  }
  if (path.size() > kUserKeyLength) path.resize(kUserKeyLength);
  return path;
}

SavedRecord ReadSavedRecord(HANDLE printer) {
  SavedRecord saved;
  ReadSaved(printer, &saved);
  return saved;
}

bool LoadPrinterEnv(HANDLE printer, DriverEnv* env, const char16_t* printer_name, const ResourceContext* resources,
                    SavedRecord* saved) {
  if (env == nullptr) return false;
  std::u16string queue_name;
  if (printer_name == nullptr) {
    queue_name = PrinterName(printer);
    printer_name = queue_name.c_str();
  }
  SavedRecord found;
  const DWORD status = ReadSaved(printer, &found);
  if (!IsValid(found)) {
    BuildDefaultEnv(resources, env, printer_name, printer);
    // A store that is only busy or short of memory for the moment still holds the device options: they aren't
    // overwritten.
    const bool lost = status == kErrorSuccess || status == kErrorMoreData || status == kErrorFileNotFound;
    const Replaced replaced = lost ? ReplacePrinterEnv(printer, found, *env) : Replaced::kUnwritten;
    if (replaced == Replaced::kDone) found = StoredForm(*env);
    // Another program has been here meanwhile; what it saved is what counts.
    if (replaced == Replaced::kOvertaken) found = ReadSavedRecord(printer);
  }
  if (IsValid(found)) {
    std::copy(found.begin(), found.end(), env->bytes.begin());
    SetText<"dmDeviceName">(*env, printer_name);
  }
  if (saved != nullptr) *saved = std::move(found);
  return true;
}

bool SavePrinterEnv(HANDLE printer, const DriverEnv& env) {
  const SavedRecord saved = StoredForm(env);
  return SetPrinterDataW(printer, kSavedRecord, REG_BINARY, saved.data(), kEnvSize) == kErrorSuccess;
}

bool IsSaved(HANDLE printer, const DriverEnv& env) {
  return ReadSavedRecord(printer) == StoredForm(env);
}

Replaced ReplacePrinterEnv(HANDLE printer, const SavedRecord& seen, const DriverEnv& env) {
  const auto failed = [](DWORD status) {
    SetLastError(status);
    return Replaced::kUnwritten;
  };
  if (const DWORD status = BeginPrinterDataBatch(printer); status != kErrorSuccess) return failed(status);
  SavedRecord stored;
  DWORD status = ReadSaved(printer, &stored);
  if (status == kErrorFileNotFound || status == kErrorMoreData) status = kErrorSuccess;
  const bool overtaken = status == kErrorSuccess && stored != seen;
  if (status == kErrorSuccess && !overtaken) {
    const SavedRecord saved = StoredForm(env);
    status = SetPrinterDataW(printer, kSavedRecord, REG_BINARY, saved.data(), kEnvSize);
  }
  // An overtaken one has written nothing, and mustn't withdraw a batch around it.
  const DWORD ended = EndPrinterDataBatch(printer, status == kErrorSuccess);
  if (status != kErrorSuccess) return failed(status);
  if (overtaken) return Replaced::kOvertaken;
  return ended == kErrorSuccess ? Replaced::kDone : failed(ended);
}

uint32_t ReadStoredCountry(const char16_t* printer_name) {
  uint32_t country = 0;
  if (ReadCountry(OpenPrinterFor(printer_name, PRINTER_ACCESS_USE).get(), &country)) return country;
  country = ReadLocaleCountry();
  if (const UniquePrinter printer = OpenPrinterFor(printer_name, PRINTER_ALL_ACCESS)) {
    WriteCountry(printer.get(), country);
  }
  return country;
}

void UpdateStoredCountry(HANDLE printer) {
  const uint32_t country = ReadLocaleCountry();
  uint32_t stored = 0;
  if (!ReadCountry(printer, &stored) || stored != country) WriteCountry(printer, country);
}

void EnsureRenderDriverValue(HANDLE printer) {
  if (NamesRenderDriver(printer)) return;
  const PrinterInfo info(printer, 2);
  const char16_t* name = info ? info.As<PRINTER_INFO_2W>().pPrinterName : nullptr;
  if (name == nullptr) return;
  // The queue's key keeps a backslash of its name as a comma, so the path of such a name opens nothing: left as it is.
  const std::u16string path =
      std::u16string(u"SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\") + name + u"\\PrinterDriverData";
  const UniqueKey key = OpenKey(HKEY_LOCAL_MACHINE, path.c_str(), KEY_ALL_ACCESS);
  if (key == nullptr) return;
  RegSetValueExW(key.get(), kRenderDriverValue, REG_SZ, reinterpret_cast<const uint8_t*>(kRenderDriver.data()),
                 static_cast<DWORD>(kRenderDriver.size() * 2 + 2));
  RegFlushKey(key.get());
}

int32_t HandlePrinterEvent(const char16_t* printer_name, int event) {
  if (event != PRINTER_EVENT_ADD_CONNECTION && event != PRINTER_EVENT_INITIALIZE) return 1;
  const UniquePrinter printer = OpenPrinterFor(printer_name, PRINTER_ALL_ACCESS);
  if (printer == nullptr) return 1;
  if (event == PRINTER_EVENT_INITIALIZE && !SaveDefaultRecord(printer.get(), printer_name)) return 0;
  WriteRenderDriver(printer.get());
  return 1;
}

}  // namespace heron
