#include "entry/exports.h"

#include <atomic>
#include <memory>
#include <new>

#include "catalog/strings.h"
#include "entry/document_event.h"
#include "entry/document_sheets.h"
#include "entry/sheet_reasons.h"
#include "platform/api/document_events.h"
#include "settings/capabilities.h"
#include "settings/convert.h"
#include "settings/printer_data.h"
#include "settings/resolve.h"

namespace heron {
namespace {

using namespace platform;

constexpr DWORD kAttach = 1;
constexpr DWORD kEveryMode = 0xFFFFFFFF;

std::atomic<HMODULE> instance_handle;  // the library's instance, for dialogs and resources

/// Runs the work of an export; an exhausted memory is its failure.
template <typename Result, typename Work>
Result Guard(Result failure, Work&& work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    SetLastError(kErrorNotEnoughMemory);
    return failure;
  }
}

LONG ResolveFor(HANDLE printer, const char16_t* device_name, DEVMODEW* output, const DEVMODEW* input, DWORD mode) {
  const auto result = std::make_unique<DriverEnv>();
  RefreshDriverDirectory(printer);
  JobRequest request{
      .hPrinter = printer, .printerName = device_name, .inputEnv = input, .mode = mode, .resultBuffer = result.get()};
  if (!ResolveJobEnv(&request)) return -1;
  if (output != nullptr) std::memcpy(output, result->bytes.data(), kEnvSize);
  CloseResourceContext(request.resources);
  return 1;
}

}  // namespace

HMODULE LibraryInstance() {
  return instance_handle;
}

extern "C" {

BOOL DllInitialize(HMODULE instance, DWORD reason, void*) {
  if (reason == kAttach) instance_handle = instance;
  return 1;
}

LONG DrvDocumentProperties(HWND, HANDLE printer, char16_t* device_name, DEVMODEW* output, DEVMODEW* input, DWORD mode) {
  if (mode == 0) return static_cast<LONG>(kEnvSize);
  if ((mode & DM_COPY) != 0 && output == nullptr) return -1;
  return Guard<LONG>(-1, [&] { return ResolveFor(printer, device_name, output, input, mode | DM_COPY); });
}

LONG DrvAdvancedDocumentProperties(HWND, HANDLE printer, char16_t* device_name, DEVMODEW* output, DEVMODEW* input) {
  if (output == nullptr) return -1;
  return Guard<LONG>(-1, [&] { return ResolveFor(printer, device_name, output, input, kEveryMode); });
}

LONG DrvDocumentPropertySheets(PROPSHEETUI_INFO* info, LPARAM lParam) {
  const LPARAM header = info != nullptr ? info->lParamInit : lParam;
  return Guard<LONG>(
      -1, [&] { return DocumentPropertySheets(info, reinterpret_cast<DOCUMENTPROPERTYHEADER*>(header), lParam); });
}

LONG DrvDevicePropertySheets(PROPSHEETUI_INFO* info, LPARAM lParam) {
  if (info == nullptr || info->lParamInit == 0) return -1;
  const auto& header = *reinterpret_cast<const DEVICEPROPERTYHEADER*>(info->lParamInit);
  return Guard<LONG>(-1, [&] { return DeviceSheetReason(*info, header, lParam); });
}

BOOL PrinterProperties(HWND, HANDLE) {
  return 1;
}

DWORD DrvDeviceCapabilities(HANDLE printer, char16_t* device_name, WORD capability, void* output, DEVMODEW* input) {
  return Guard<DWORD>(static_cast<DWORD>(-1), [&] {
    RefreshDriverDirectory(printer);
    return static_cast<DWORD>(DeviceCapability(printer, device_name, capability, output, input));
  });
}

BOOL DrvConvertDevMode(char16_t* printer_name, DEVMODEW* input, DEVMODEW* output, DWORD* needed, DWORD mode) {
  return Guard<BOOL>(0, [&] {
    return ConvertDevMode(printer_name, reinterpret_cast<uint8_t*>(input), reinterpret_cast<uint8_t*>(output), needed,
                          mode);
  });
}

BOOL DrvPrinterEvent(char16_t* printer_name, int event, DWORD, LPARAM) {
  return Guard<BOOL>(0, [&] { return HandlePrinterEvent(printer_name, event); });
}

int DrvDocumentEvent(HANDLE printer, HDC hdc, int event, DWORD in_size, void* in, DWORD out_size, void* out) {
  return Guard<int>(DOCUMENTEVENT_FAILURE, [&] {
    return HandleDocumentEvent({printer, hdc, event, in_size, in, out_size, out});
  });
}

BOOL DevQueryPrintEx(void*) {
  return 1;
}

DWORD QX_GetEnvExtraSize() {
  return kEnvExtraSize;
}
}

}  // namespace heron
