// Text between UTF-16 and the system's code page, and the expander of texts with places. Conventions:
// platform/api/types.h.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "platform/api/types.h"

namespace heron::platform {

inline constexpr DWORD CP_ACP = 0;       ///< the system's code page
inline constexpr DWORD CP_UTF8 = 65001;  ///< always known

extern "C" {

HERON_PLATFORM_API DWORD GetACP();

/// Converts `length` characters (-1: up to and with the terminator) to `code_page`. Returns the bytes written; with
/// `room` 0 the bytes needed. 0 with kErrorInsufficientBuffer if it doesn't fit: `buffer` then holds as many whole
/// characters as fit. A character that the code page lacks becomes '?'.
HERON_PLATFORM_API int WideCharToMultiByte(DWORD code_page, const char16_t* text, int length, char* buffer, int room);
/// The reverse; bytes that mean nothing become U+FFFD. Results as above, in characters.
HERON_PLATFORM_API int MultiByteToWideChar(DWORD code_page, const char* text, int length, char16_t* buffer, int room);
}

/// Well-formed conversions between the two Unicode forms; a lone surrogate or a bad sequence becomes U+FFFD.
HERON_PLATFORM_API std::string ToUtf8(std::u16string_view text);
HERON_PLATFORM_API std::u16string FromUtf8(std::string_view text);

/// One argument of ExpandText.
using TextArgument = std::variant<int64_t, std::u16string_view>;

/// Expands a text with places: %s, %d, %i, %u, %ld, %lu, each with an optional 0 and width, and %%. Arguments are taken
/// in order. A text whose places don't fit the arguments (type, number, unknown form) is returned unchanged. Texts
/// come from the resource module or a store, so they never reach printf.
HERON_PLATFORM_API std::u16string ExpandText(std::u16string_view format, std::initializer_list<TextArgument> arguments);

}  // namespace heron::platform
