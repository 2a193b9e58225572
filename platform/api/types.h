// The platform's basic types, error codes and last-error channel.
//
// The calls in this folder are those of the Win32 API that a printer driver uses (spooler, registry, profiles, GDI):
// names, widths and conventions, so that a program in any language can call the exports. The conventions, numbered
// once:
//   1. Text is zero-terminated UTF-16 (char16_t). A null text is allowed only where the declaration says so.
//   2. BOOL calls return 1 on success; on failure 0, with the reason in GetLastError(). On failure no output is written
//      unless the declaration says so.
//   3. Registry calls and GetPrinterData-like calls return the error code itself (kErrorSuccess on success).
//   4. Sizes are in bytes, lengths in characters. A caller's size is trusted; a size read from a store is checked.
//   5. A handle belongs to the code that opened it and is closed exactly once. A stale or foreign handle gives
//      kErrorInvalidHandle, never a crash.
#pragma once

#include <cstdint>

#define HERON_PLATFORM_API __attribute__((visibility("default")))

namespace heron::platform {

using BOOL = int32_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using LONG = int32_t;
using LRESULT = intptr_t;
using LPARAM = intptr_t;
using ULONG_PTR = uintptr_t;
using HANDLE = void*;
using HMODULE = void*;
using HWND = void*;
using HDC = void*;
using HKEY = void*;

inline constexpr DWORD kErrorSuccess = 0;
inline constexpr DWORD kErrorFileNotFound = 2;
inline constexpr DWORD kErrorPathNotFound = 3;
inline constexpr DWORD kErrorTooManyOpenFiles = 4;
inline constexpr DWORD kErrorAccessDenied = 5;
inline constexpr DWORD kErrorInvalidHandle = 6;
inline constexpr DWORD kErrorNotEnoughMemory = 8;
inline constexpr DWORD kErrorWriteFault = 29;
inline constexpr DWORD kErrorReadFault = 30;
inline constexpr DWORD kErrorGenFailure = 31;
inline constexpr DWORD kErrorNotSupported = 50;  ///< a store written by a newer release
inline constexpr DWORD kErrorFileExists = 80;
inline constexpr DWORD kErrorInvalidParameter = 87;
inline constexpr DWORD kErrorDiskFull = 112;
inline constexpr DWORD kErrorInsufficientBuffer = 122;
inline constexpr DWORD kErrorInvalidLevel = 124;
inline constexpr DWORD kErrorModNotFound = 126;
inline constexpr DWORD kErrorProcNotFound = 127;
inline constexpr DWORD kErrorBusy = 170;
inline constexpr DWORD kErrorMoreData = 234;
inline constexpr DWORD kErrorNoMoreItems = 259;
inline constexpr DWORD kErrorOperationAborted = 995;  ///< a batch that was to be kept had been withdrawn inside
inline constexpr DWORD kErrorRegistryCorrupt = 1015;
inline constexpr DWORD kErrorKeyDeleted = 1018;
inline constexpr DWORD kErrorInvalidPrinterName = 1801;
inline constexpr DWORD kErrorPrinterAlreadyExists = 1802;
inline constexpr DWORD kErrorPrinterDeleted = 1905;  ///< the queue was removed while its handle was open

/// Types of a stored value.
inline constexpr DWORD REG_SZ = 1;      ///< UTF-16 text with its terminator
inline constexpr DWORD REG_BINARY = 3;  ///< bytes
inline constexpr DWORD REG_DWORD = 4;   ///< u32, little-endian

struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;  ///< 1 to 12
  WORD wDayOfWeek;
  WORD wDay;  ///< 1 to 31
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};

/// Separator of paths of files and modules on this host; the registry keeps its backslash.
inline constexpr char16_t kPathSeparator = u'/';
inline constexpr int kMaxPath = 260;  ///< characters of a path, terminator included

extern "C" {
/// Reason of the calling thread's last failed call. Per thread.
HERON_PLATFORM_API DWORD GetLastError();
HERON_PLATFORM_API void SetLastError(DWORD code);
}

}  // namespace heron::platform
