// The spooler's protocol structures that a caller hands to the driver, and the bits of dmFields.
//
// A DEVMODEW is handled as bytes (settings/driver_env.h knows its layout), so it stays incomplete here.
#pragma once

#include "platform/api/types.h"

namespace heron::platform {

struct DEVMODEW;  ///< first bytes of a settings record; at least dmSize + dmDriverExtra bytes long

/// Bits of dmFields.
inline constexpr DWORD DM_ORIENTATION = 0x1;
inline constexpr DWORD DM_PAPERSIZE = 0x2;
inline constexpr DWORD DM_PAPERLENGTH = 0x4;
inline constexpr DWORD DM_PAPERWIDTH = 0x8;
inline constexpr DWORD DM_COPIES = 0x100;
inline constexpr DWORD DM_DEFAULTSOURCE = 0x200;
inline constexpr DWORD DM_PRINTQUALITY = 0x400;
inline constexpr DWORD DM_DUPLEX = 0x1000;
inline constexpr DWORD DM_YRESOLUTION = 0x2000;

/// Bits of fMode.
inline constexpr DWORD DM_UPDATE = 1;
inline constexpr DWORD DM_COPY = 2;
inline constexpr DWORD DM_PROMPT = 4;
inline constexpr DWORD DM_MODIFY = 8;
inline constexpr DWORD DM_NOPERMISSION = 32;

/// Modes of DrvConvertDevMode.
inline constexpr DWORD CDM_CONVERT = 1;
inline constexpr DWORD CDM_CONVERT351 = 2;
inline constexpr DWORD CDM_DRIVER_DEFAULT = 4;

/// Events of DrvPrinterEvent that the driver acts on.
inline constexpr int PRINTER_EVENT_ADD_CONNECTION = 1;
inline constexpr int PRINTER_EVENT_INITIALIZE = 3;

struct DOCUMENTPROPERTYHEADER {
  WORD cbSize;
  WORD Reserved;
  HANDLE hPrinter;
  char16_t* pszPrinterName;
  DEVMODEW* pdmIn;
  DEVMODEW* pdmOut;
  DWORD cbOut;
  DWORD fMode;
};

struct DEVICEPROPERTYHEADER {
  WORD cbSize;
  WORD Flags;
  HANDLE hPrinter;
  char16_t* pszPrinterName;
};

inline constexpr WORD DPS_NOPERMISSION = 1;  ///< bit of DEVICEPROPERTYHEADER.Flags

/// Reasons of a property sheet call.
inline constexpr WORD PROPSHEETUI_REASON_INIT = 0;
inline constexpr WORD PROPSHEETUI_REASON_GET_INFO_HEADER = 1;
inline constexpr WORD PROPSHEETUI_REASON_DESTROY = 2;
inline constexpr WORD PROPSHEETUI_REASON_SET_RESULT = 3;

using PFNCOMPROPSHEET = intptr_t (*)(HANDLE sheet, uint32_t function, LPARAM lParam1, LPARAM lParam2);

struct PROPSHEETUI_INFO {
  WORD cbSize;
  WORD Version;
  WORD Flags;
  WORD Reason;
  HANDLE hComPropSheet;
  PFNCOMPROPSHEET pfnComPropSheet;
  LPARAM lParamInit;
  ULONG_PTR UserData;
  ULONG_PTR Result;
};

struct SETRESULT_INFO {
  WORD cbSize;
  WORD wReserved;
  HANDLE hSetResult;
  LRESULT Result;
};

struct PROPSHEETUI_INFO_HEADER {
  WORD cbSize;
  WORD Flags;
  char16_t* pTitle;
  HWND hWndParent;
  HMODULE hInst;
  ULONG_PTR IconID;
};

}  // namespace heron::platform
