#include "printpath/job_identity.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <memory>
#include <random>

#include "catalog/strings.h"
#include "platform/api/characters.h"
#include "platform/api/document_events.h"
#include "platform/api/modules.h"
#include "platform/api/process.h"
#include "platform/api/text.h"
#include "printpath/handlers.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using namespace platform;

constexpr size_t kIdRoom = 32;  ///< characters of the identifier, terminator included
constexpr size_t kNotifiedName = 127;
constexpr size_t kAnsiIdBytes = 31;
constexpr size_t kAnsiNameBytes = 440;

struct FreeModule {
  using pointer = HMODULE;
  void operator()(HMODULE module) const { FreeLibrary(module); }
};
using UniqueModule = std::unique_ptr<void, FreeModule>;

/// A program that holds the network library itself isn't disturbed.
bool AskForAdapters() {
  return GetModuleHandleW(u"netapi32.dll") == nullptr;
}

std::string MachinePart() {
  std::array<uint8_t, 6> address;
  std::array<char, 16> text;
  if (AskForAdapters() && GetAdapterAddress(0, address.data()) == kErrorSuccess) {
    std::snprintf(text.data(), text.size(), "%02X%02X%02X%02X%02X%02X", address[0], address[1], address[2], address[3],
                  address[4], address[5]);
  } else {
    // A generator of our own: the program's random sequence is its own business.
    std::minstd_rand random(static_cast<unsigned>(std::time(nullptr)));
    std::snprintf(text.data(), text.size(), "ACDE48%06X", static_cast<unsigned>(random()) & 0xFFFFFF);
  }
  return text.data();
}

}  // namespace

std::u16string MakeJobId() {
  SYSTEMTIME now;
  if (GetLocalTime(&now) == 0) return {};
  std::array<char, 40> time;
  std::snprintf(time.data(), time.size(), "%02X%02X%02X%02X%02X%04X", now.wMonth, now.wDay, now.wHour, now.wMinute,
                now.wSecond, now.wMilliseconds);
  return FromUtf8(MachinePart() + time.data()).substr(0, kIdRoom - 1);
}

int NotifyJob(HANDLE printer, std::u16string_view job_id, std::u16string_view printer_name) {
  const std::string id = AnsiWithin(job_id, kAnsiIdBytes);
  const std::string name = AnsiWithin(printer_name, kAnsiNameBytes);
  if (id.empty() || name.empty() || !RefreshDriverDirectory(printer)) return 0;
  const UniqueModule module(LoadLibraryW(DriverDirectory().append(u"ETVORPN.DLL").c_str()));
  using Notify = int (*)(const char* job_id, const char* printer_name);
  const auto notify = reinterpret_cast<Notify>(GetProcAddress(module.get(), "BdcSetNotifyPrint"));
  return notify == nullptr ? 0 : notify(id.c_str(), name.c_str());
}

int OnJobIdentity(const DocumentEvent& event) {
  const std::u16string id = MakeJobId();
  NotifyJob(event.printer, id, WholeCharacters(PrinterName(event.printer, kNotifiedName + 1), kNotifiedName));
  return SendEscape<"EscSetJobId">(event.hdc, WideText<kIdRoom>(id)) ? kGoOn : kFailed;
}

}  // namespace heron
