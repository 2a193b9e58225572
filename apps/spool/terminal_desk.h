// The driver's message boxes on a terminal: shown on stderr, questions asked there or answered in advance.
#pragma once

#include "common/command.h"
#include "platform/api/message_box.h"
#include "progress.h"

namespace heron::spool {

class TerminalDesk : public platform::MessageDesk {
 public:
  /// `progress` shares the terminal.
  TerminalDesk(cli::Consent consent, Progress& progress) : consent_(consent), progress_(progress) {
    platform::InstallMessageDesk(this);
  }
  ~TerminalDesk() override { platform::InstallMessageDesk(nullptr); }

  /// A question was declined because there was no terminal to ask it on.
  bool wantedConsent() const { return wanted_consent_; }
  /// A question was answered with no.
  bool declined() const { return declined_; }

  int Show(platform::HWND owner, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) override;

 private:
  cli::Consent consent_;
  Progress& progress_;
  bool wanted_consent_ = false;
  bool declined_ = false;
};

}  // namespace heron::spool
