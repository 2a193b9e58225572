// What the spooler's client side passes to DrvDocumentEvent: names and layouts of the Win32 API.
#pragma once

#include "platform/api/devmode.h"
#include "platform/api/types.h"

namespace heron::platform {

/// Events of a document, in the order of their numbers; those that aren't named are passed over.
inline constexpr int DOCUMENTEVENT_CREATEDCPRE = 1;
inline constexpr int DOCUMENTEVENT_RESETDCPRE = 3;
inline constexpr int DOCUMENTEVENT_STARTDOC = 5;
inline constexpr int DOCUMENTEVENT_STARTPAGE = 6;
inline constexpr int DOCUMENTEVENT_ENDPAGE = 7;
inline constexpr int DOCUMENTEVENT_ENDDOC = 8;
inline constexpr int DOCUMENTEVENT_ABORTDOC = 9;
inline constexpr int DOCUMENTEVENT_ENDDOCPOST = 12;
inline constexpr int DOCUMENTEVENT_STARTDOCPOST = 13;

inline constexpr int DOCUMENTEVENT_SUCCESS = 1;
inline constexpr int DOCUMENTEVENT_FAILURE = -1;

/// In: CREATEDCPRE takes a DOCEVENT_CREATEDCPRE, RESETDCPRE a pointer to a record, STARTDOC a pointer to a DOCINFOW.
/// Out: the first two take a place for the pointer to a record that replaces the caller's, null if none does.
struct DOCEVENT_CREATEDCPRE {
  char16_t* pszDriver;
  char16_t* pszDevice;
  DEVMODEW* pdm;
  BOOL bIC;
};

struct DOCINFOW {
  int cbSize;
  const char16_t* lpszDocName;
  const char16_t* lpszOutput;
  const char16_t* lpszDatatype;
  DWORD fwType;
};

}  // namespace heron::platform
