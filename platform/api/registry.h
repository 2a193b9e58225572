// The registry: two trees of keys and typed values. Conventions: platform/api/types.h; every call returns an error
// code.
//
// Key and value names compare without regard to the case of ASCII letters. A path's parts are joined by backslashes;
// doubled, leading and trailing backslashes are ignored.
#pragma once

#include "platform/api/types.h"

namespace heron::platform {

inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(uintptr_t{0x80000001});
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(uintptr_t{0x80000002});

inline constexpr DWORD KEY_READ = 0x20019;
inline constexpr DWORD KEY_ALL_ACCESS = 0xF003F;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

extern "C" {

/// Opens `path` below `parent` (null or empty: `parent` itself). kErrorFileNotFound if it doesn't exist,
/// kErrorAccessDenied if write access is asked of a tree that can't be written.
HERON_PLATFORM_API DWORD RegOpenKeyExW(HKEY parent, const char16_t* path, DWORD options, DWORD access, HKEY* key);
/// Opens `path`, creating every missing key of it. `disposition` may be null; the class, options and security
/// arguments of the Win32 call are left out.
HERON_PLATFORM_API DWORD RegCreateKeyExW(HKEY parent, const char16_t* path, DWORD access, HKEY* key,
                                         DWORD* disposition);
HERON_PLATFORM_API DWORD RegCloseKey(HKEY key);
HERON_PLATFORM_API DWORD RegFlushKey(HKEY key);

/// Deletes the empty key `path` below `parent` with its values; a key that has subkeys gives kErrorAccessDenied.
HERON_PLATFORM_API DWORD RegDeleteKeyW(HKEY parent, const char16_t* path);
/// Name of the `index`-th subkey in creation order. `*length`: in, room in characters with terminator; out, length
/// without it. kErrorNoMoreItems at the end, kErrorMoreData if the name doesn't fit.
HERON_PLATFORM_API DWORD RegEnumKeyExW(HKEY key, DWORD index, char16_t* name, DWORD* length);

/// Reads a value. `type`, `data` may be null. `*size`: in, room; out, the value's size, also with kErrorMoreData
/// (nothing is copied then). kErrorFileNotFound if there is none.
HERON_PLATFORM_API DWORD RegQueryValueExW(HKEY key, const char16_t* name, DWORD* type, uint8_t* data, DWORD* size);
/// kErrorAccessDenied through a key that was opened for reading only; the same for RegDeleteValueW.
HERON_PLATFORM_API DWORD RegSetValueExW(HKEY key, const char16_t* name, DWORD type, const uint8_t* data, DWORD size);
HERON_PLATFORM_API DWORD RegDeleteValueW(HKEY key, const char16_t* name);

/// Changes to the tree of `root` (one of the two constants) between the two calls become visible and durable together;
/// batches nest, and only the outermost counts. A layer of our own: a list is replaced as one. End with `keep` 0 in any
/// of them withdraws the whole. A batch belongs to the calling thread; other threads wait.
HERON_PLATFORM_API DWORD RegBeginBatch(HKEY root);
HERON_PLATFORM_API DWORD RegEndBatch(HKEY root, BOOL keep);
}

}  // namespace heron::platform
