// What an application's spooler hands to DrvDocumentEvent, by the documented names and layouts.
#pragma once

#include "platform/devmode.h"
#include "platform/types.h"

namespace heron::spool {

enum DocumentEvent : int {
  DOCUMENTEVENT_CREATEDCPRE = 1,
  DOCUMENTEVENT_STARTDOC = 5,
  DOCUMENTEVENT_STARTPAGE = 6,
  DOCUMENTEVENT_ENDPAGE = 7,
  DOCUMENTEVENT_ENDDOC = 8,
  DOCUMENTEVENT_ABORTDOC = 9,
  DOCUMENTEVENT_ENDDOCPOST = 12,
  DOCUMENTEVENT_STARTDOCPOST = 13,
};

/// In-argument of DOCUMENTEVENT_CREATEDCPRE; its out-argument is the address of a record that replaces `pdm`.
struct DOCEVENT_CREATEDCPRE {
  const char16_t* pszDriver;
  const char16_t* pszDevice;
  platform::DEVMODEW* pdm;
  platform::BOOL bIC;
};

/// The in-argument of DOCUMENTEVENT_STARTDOC is the address of one.
struct DOCINFOW {
  int cbSize;
  const char16_t* lpszDocName;
  const char16_t* lpszOutput;
  const char16_t* lpszDatatype;
  platform::DWORD fwType;
};

}  // namespace heron::spool
