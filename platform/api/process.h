// Who runs the driver and where: process, user and locale. Conventions: platform/api/types.h.
#pragma once

#include "platform/api/types.h"

namespace heron::platform {

inline constexpr DWORD LOCALE_USER_DEFAULT = 0x400;
inline constexpr DWORD LOCALE_ICOUNTRY = 5;

extern "C" {

/// Full path of the process's program (`module` null), cut to `room` characters with terminator. Returns the characters
/// copied without the terminator; 0 on failure. GetLastError() is kErrorInsufficientBuffer if it was cut.
HERON_PLATFORM_API DWORD GetModuleFileNameW(HMODULE module, char16_t* buffer, DWORD room);

/// The locale item `item` as text. Returns characters written with the terminator; 0 if it is unknown or doesn't fit.
HERON_PLATFORM_API int GetLocaleInfoW(DWORD locale, DWORD item, char16_t* buffer, int room);

/// The user's logon name. `*length`: in, room with terminator; out, characters with terminator.
HERON_PLATFORM_API BOOL GetUserNameW(char16_t* buffer, DWORD* length);

/// Date and time of the user's time zone. Unlike the Win32 call it reports failure.
HERON_PLATFORM_API BOOL GetLocalTime(SYSTEMTIME* time);

/// The six bytes of the `index`-th network adapter's address; kErrorNoMoreItems at the end. A call of our own;
/// the Win32 API needs three commands for it.
HERON_PLATFORM_API DWORD GetAdapterAddress(DWORD index, uint8_t* address);
}

}  // namespace heron::platform
