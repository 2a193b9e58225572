#include "spool/terminal_desk.h"

#include <iostream>
#include <optional>

namespace heron::spool {

int TerminalDesk::Show(platform::HWND, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) {
  std::cerr << cli::Printable(caption) << '\n' << cli::PrintableLines(text) << '\n';
  const platform::DWORD buttons = flags & platform::kButtonsMask;
  if (buttons == platform::MB_OK) return platform::IDOK;
  const std::optional<bool> yes = cli::AnswerOf(consent_);
  wanted_consent_ |= !yes.has_value();
  declined_ |= !yes.value_or(false);
  if (buttons == platform::MB_OKCANCEL) return yes.value_or(false) ? platform::IDOK : platform::IDCANCEL;
  return yes.value_or(false) ? platform::IDYES : platform::IDNO;
}

}  // namespace heron::spool
