// Message boxes. A program that can ask its user installs a MessageDesk: a terminal, windows, a test.
#pragma once

#include <string_view>

#include "platform/api/types.h"

namespace heron::platform {

/// Buttons and icons of a message box, and its answers.
inline constexpr DWORD MB_OK = 0x00;
inline constexpr DWORD MB_OKCANCEL = 0x01;
inline constexpr DWORD MB_YESNOCANCEL = 0x03;
inline constexpr DWORD MB_YESNO = 0x04;
inline constexpr DWORD MB_ICONSTOP = 0x10;
inline constexpr DWORD MB_ICONQUESTION = 0x20;
inline constexpr DWORD MB_ICONEXCLAMATION = 0x30;
inline constexpr DWORD MB_ICONINFORMATION = 0x40;
inline constexpr DWORD MB_DEFBUTTON2 = 0x100;
inline constexpr DWORD kButtonsMask = 0x0f;

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

class MessageDesk {
 public:
  virtual ~MessageDesk() = default;
  /// Shows the text until it is answered: one of the ID numbers that the buttons of `flags` allow.
  virtual int Show(HWND owner, std::u16string_view text, std::u16string_view caption, DWORD flags) = 0;
  /// Whether a text may name a password. Only a window may, which disappears when it is answered; what a terminal or a
  /// command's output shows is kept by others.
  virtual bool MayShowSecrets() const { return false; }
};

/// Installs `desk` for the process; it must outlive every call. Null takes it away.
HERON_PLATFORM_API void InstallMessageDesk(MessageDesk* desk);

/// What the installed desk says of secrets; false without one.
HERON_PLATFORM_API bool MessagesMayShowSecrets();

extern "C" {
/// The answer, or 0 if the user can't be asked: callers must treat 0 as a refusal.
HERON_PLATFORM_API int MessageBoxW(HWND owner, const char16_t* text, const char16_t* caption, DWORD flags);
}

}  // namespace heron::platform
