// Printer queues and their data, as the spooler offers them. Conventions: platform/api/types.h.
#pragma once

#include "platform/api/devmode.h"
#include "platform/api/types.h"

namespace heron::platform {

struct PRINTER_DEFAULTSW {
  char16_t* pDatatype;
  DEVMODEW* pDevMode;
  DWORD DesiredAccess;
};

inline constexpr DWORD PRINTER_ALL_ACCESS = 0xF000C;
inline constexpr DWORD PRINTER_ACCESS_USE = 0x8;

struct PRINTER_INFO_1W {
  DWORD Flags;
  char16_t* pDescription;
  char16_t* pName;
  char16_t* pComment;
};

struct PRINTER_INFO_2W {
  char16_t* pServerName;
  char16_t* pPrinterName;
  char16_t* pShareName;
  char16_t* pPortName;
  char16_t* pDriverName;
  char16_t* pComment;
  char16_t* pLocation;
  DEVMODEW* pDevMode;  ///< the queue's saved record, or null
  char16_t* pSepFile;
  char16_t* pPrintProcessor;
  char16_t* pDatatype;
  char16_t* pParameters;
  void* pSecurityDescriptor;
  DWORD Attributes;
  DWORD Priority;
  DWORD DefaultPriority;
  DWORD StartTime;
  DWORD UntilTime;
  DWORD Status;
  DWORD cJobs;
  DWORD AveragePPM;
};

struct DRIVER_INFO_2W {
  DWORD cVersion;
  char16_t* pName;
  char16_t* pEnvironment;
  char16_t* pDriverPath;
  char16_t* pDataFile;  ///< full path of the data file; its folder is the driver directory
  char16_t* pConfigFile;
};

/// One value of printer data; sizes in bytes, the name's with its terminator.
struct PRINTER_ENUM_VALUESW {
  char16_t* pValueName;
  DWORD cbValueName;
  DWORD dwType;
  uint8_t* pData;
  DWORD cbData;
};

extern "C" {

/// Opens the queue `name`. `defaults` may be null (use access). Fails with kErrorInvalidPrinterName for an unknown
/// queue, kErrorAccessDenied if full access is asked and printer data can't be written.
HERON_PLATFORM_API BOOL OpenPrinterW(const char16_t* name, HANDLE* printer, const PRINTER_DEFAULTSW* defaults);
HERON_PLATFORM_API BOOL ClosePrinter(HANDLE printer);

/// Levels 1 and 2. Writes the structure at `buffer` with its texts behind it. `*needed` always receives the size in
/// bytes; a smaller `size` fails with kErrorInsufficientBuffer. `buffer` may be null with `size` 0.
HERON_PLATFORM_API BOOL GetPrinterW(HANDLE printer, DWORD level, uint8_t* buffer, DWORD size, DWORD* needed);

/// Level 2; `environment` is ignored. As GetPrinterW.
HERON_PLATFORM_API BOOL GetPrinterDriverW(HANDLE printer, const char16_t* environment, DWORD level, uint8_t* buffer,
                                          DWORD size, DWORD* needed);

/// Every call through the handle of a queue that was removed meanwhile fails with kErrorPrinterDeleted.

/// Reads one value of printer data. `type` may be null. `*needed` receives the value's size. kErrorFileNotFound if
/// there is no such value, kErrorMoreData if `size` is too small (nothing is copied).
HERON_PLATFORM_API DWORD GetPrinterDataW(HANDLE printer, const char16_t* name, DWORD* type, uint8_t* buffer, DWORD size,
                                         DWORD* needed);
/// All values of printer data in one consistent look: `*count` structures at `buffer` with names and data behind them,
/// in no order. `*needed` receives the size in bytes; with a smaller `size` kErrorMoreData, and nothing is written.
/// `key` is "PrinterDriverData", where a queue's values are, or "DsDriver", what it publishes in the directory;
/// kErrorFileNotFound for another one, and for "DsDriver" before anything was published.
HERON_PLATFORM_API DWORD EnumPrinterDataExW(HANDLE printer, const char16_t* key, uint8_t* buffer, DWORD size,
                                            DWORD* needed, DWORD* count);
/// Writes one value whole, durably. kErrorAccessDenied if the user may not write the store; what access the handle was
/// opened with doesn't matter, since a program's default handle is enough to drive the driver.
HERON_PLATFORM_API DWORD SetPrinterDataW(HANDLE printer, const char16_t* name, DWORD type, const uint8_t* data,
                                         DWORD size);
/// The same for a value of `key`, as EnumPrinterDataExW knows them; kErrorInvalidParameter for another key.
HERON_PLATFORM_API DWORD SetPrinterDataExW(HANDLE printer, const char16_t* key, const char16_t* name, DWORD type,
                                           const uint8_t* data, DWORD size);
HERON_PLATFORM_API DWORD DeletePrinterDataW(HANDLE printer, const char16_t* name);

/// All values written to the queue's printer data between the two calls become visible and durable together. A layer of
/// our own: several values that belong together are written as one. End with `keep` 0 withdraws them.
HERON_PLATFORM_API DWORD BeginPrinterDataBatch(HANDLE printer);
HERON_PLATFORM_API DWORD EndPrinterDataBatch(HANDLE printer, BOOL keep);
}

}  // namespace heron::platform
