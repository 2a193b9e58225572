// Modules that the driver loads at run time, and the texts they carry. Conventions: platform/api/types.h.
#pragma once

#include <span>

#include "platform/api/types.h"

namespace heron::platform {

extern "C" {

/// Loads the module at the full path `path`; null with kErrorModNotFound if it can't be. A module that is loaded
/// already costs a look-up only.
HERON_PLATFORM_API HMODULE LoadLibraryW(const char16_t* path);
HERON_PLATFORM_API BOOL FreeLibrary(HMODULE module);
/// The module loaded from `path`, not to be freed; null if it isn't loaded.
HERON_PLATFORM_API HMODULE GetModuleHandleW(const char16_t* path);

/// Address of the function that the module exports under `name`; null if there is none.
HERON_PLATFORM_API void* GetProcAddress(HMODULE module, const char* name);

/// Copies text number `id` of the module into `buffer` (`room` characters, terminator included; cut to fit) and returns
/// the characters copied. 0 if there is no such text or `module` is null; `buffer` then holds the empty text if it has
/// room.
HERON_PLATFORM_API int LoadStringW(HMODULE module, uint32_t id, char16_t* buffer, int room);
}

/// Kinds of data in a module.
inline constexpr uint32_t RT_DIALOG = 5;   ///< a dialog's template (dialog_template.h)
inline constexpr uint32_t RT_RCDATA = 10;  ///< a picture, as SVG
inline constexpr uint32_t RT_HELP = 256;   ///< a dialog's help; a kind of our own

/// Data number `id` of a kind, empty if there is none. Valid as long as the module is loaded. A call of
/// our own in place of finding, loading and locking a resource.
HERON_PLATFORM_API std::span<const uint8_t> FindModuleData(HMODULE module, uint32_t kind, uint32_t id);

}  // namespace heron::platform
