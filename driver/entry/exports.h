// The twelve exported operations. Conventions of texts, handles and results: platform/api/types.h.
//
// No exception leaves them: an exhausted memory is the operation's failure. A caller's buffer is written only when the
// operation has succeeded.
#pragma once

#include "platform/api/devmode.h"
#include "platform/api/types.h"

#define HERON_EXPORT __attribute__((visibility("default")))

namespace heron {

using platform::BOOL;
using platform::DEVMODEW;
using platform::DWORD;
using platform::HANDLE;
using platform::LONG;
using platform::WORD;

/// What DllInitialize was given, or null.
platform::HMODULE LibraryInstance();

extern "C" {

/// Reason 1 keeps `instance` for dialogs and resources. Always 1.
HERON_EXPORT BOOL DllInitialize(platform::HMODULE instance, DWORD reason, void* reserved);

/// With `mode` 0 the size of a record, 3328. Otherwise 1 with the resolved record in `output` if that is given, or -1.
/// DM_COPY wants an `output` of 3328 bytes. Never shows a window.
HERON_EXPORT LONG DrvDocumentProperties(platform::HWND window, HANDLE printer, char16_t* device_name, DEVMODEW* output,
                                        DEVMODEW* input, DWORD mode);
/// 1 with the resolved record in `output`, which is required, or -1.
HERON_EXPORT LONG DrvAdvancedDocumentProperties(platform::HWND window, HANDLE printer, char16_t* device_name,
                                                DEVMODEW* output, DEVMODEW* input);

/// Without a sheet (`info` null) `lParam` is a DOCUMENTPROPERTYHEADER: 3328 or 1, or -1. With a sheet the header is the
/// `lParamInit` of `info` and `lParam` belongs to the reason: 1, 0 if a page was refused, or -1.
HERON_EXPORT LONG DrvDocumentPropertySheets(platform::PROPSHEETUI_INFO* info, platform::LPARAM lParam);
/// The printer's own settings; `lParamInit` is a DEVICEPROPERTYHEADER. Results as above.
HERON_EXPORT LONG DrvDevicePropertySheets(platform::PROPSHEETUI_INFO* info, platform::LPARAM lParam);

/// Always 1: the device page is reached through DrvDevicePropertySheets.
HERON_EXPORT BOOL PrinterProperties(platform::HWND window, HANDLE printer);

/// Count or value of a capability, or -1. The caller gives an `output` that its answer fits, or null.
HERON_EXPORT DWORD DrvDeviceCapabilities(HANDLE printer, char16_t* device_name, WORD capability, void* output,
                                         DEVMODEW* input);

/// 1, or 0 with a last error. `needed` is the room at `output` and receives the size needed.
HERON_EXPORT BOOL DrvConvertDevMode(char16_t* printer_name, DEVMODEW* input, DEVMODEW* output, DWORD* needed,
                                    DWORD mode);

/// 1; 0 only if the resources for the event of a new printer can't be opened.
HERON_EXPORT BOOL DrvPrinterEvent(char16_t* printer_name, int event, DWORD flags, platform::LPARAM lParam);

/// One step of a document, in the documented order (platform/api/document_events.h). 1; 0 or -1 if the printing side
/// can't be reached. A user who gives a job up has it cancelled, and the result is 1.
HERON_EXPORT int DrvDocumentEvent(HANDLE printer, platform::HDC hdc, int event, DWORD in_size, void* in, DWORD out_size,
                                  void* out);

/// Always 1: every job is printable.
HERON_EXPORT BOOL DevQueryPrintEx(void* query);

/// Size of the record's last block, so that the printing side can size a record: 1901.
HERON_EXPORT DWORD QX_GetEnvExtraSize();
}

}  // namespace heron
