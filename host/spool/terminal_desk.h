// The driver's message boxes on a terminal: told on stderr, questions asked there or answered beforehand.
#pragma once

#include "cli/command.h"
#include "platform/message_box.h"

namespace heron::spool {

class TerminalDesk : public platform::MessageDesk {
 public:
  explicit TerminalDesk(cli::Consent consent) : consent_(consent) { platform::InstallMessageDesk(this); }
  ~TerminalDesk() override { platform::InstallMessageDesk(nullptr); }

  /// A question was declined because nobody could be asked.
  bool wantedConsent() const { return wanted_consent_; }
  /// A question was answered with no.
  bool declined() const { return declined_; }

  int Show(platform::HWND owner, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) override;

 private:
  cli::Consent consent_;
  bool wanted_consent_ = false;
  bool declined_ = false;
};

}  // namespace heron::spool
