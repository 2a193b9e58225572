// Shows the driver's messages on stderr and answers its questions (terminal_desk.h).

#include "terminal_desk.h"

#include <iostream>
#include <optional>

namespace heron::spool {

int TerminalDesk::Show(platform::HWND, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) {
  progress_.Clear();  // the message would be appended to the progress line
  std::cerr << cli::Printable(caption) << '\n' << cli::PrintableLines(text) << '\n';
  const platform::DWORD buttons = flags & platform::kButtonsMask;
  if (buttons == platform::MB_OK) return platform::IDOK;
  const std::optional<bool> yes = cli::AnswerOf(consent_);
  // Without an answer every question counts as declined; the caller ends the job and says why.
  wanted_consent_ |= !yes.has_value();
  declined_ |= !yes.value_or(false);
  if (buttons == platform::MB_OKCANCEL) return yes.value_or(false) ? platform::IDOK : platform::IDCANCEL;
  return yes.value_or(false) ? platform::IDYES : platform::IDNO;
}

}  // namespace heron::spool
