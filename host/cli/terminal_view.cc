#include "terminal_view.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "engine/engine.h"

namespace heron::cli {

void ConsentOptions::AddTo(CLI::App& command) {
  CLI::Option* agree = command.add_flag("--yes", yes, "Agree to everything that is asked");
  agree->excludes(command.add_flag("--no", no, "Agree to nothing"));
  command.add_flag("--dry-run", dry_run, "Show every consequence and change nothing");
}

uint16_t TerminalView::ReadControl(uint16_t id) {
  return id == control_ ? value_ : engine::kUnknownValue;
}

/// Without a terminal nobody can say yes.
bool TerminalView::Ask() {
  const std::optional<bool> yes = AnswerOf(consent_);
  wanted_consent_ |= !yes.has_value();
  return yes.value_or(false);
}

bool TerminalView::Show(const engine::Report& report) {
  ShownReport shown{Printable(report.caption), PrintableLines(report.text), report.asks, true};
  if (!quiet_ || (report.asks && consent_ == Consent::kAsk)) {
    // A question stands where its answer is typed, everything else is the answer of the command.
    std::ostream& out = report.asks ? std::cerr : std::cout;
    out << Heading(shown.caption) << '\n' << shown.text << '\n';
  }
  if (report.asks) shown.yes = Ask();
  reports_.push_back(shown);
  return shown.yes;
}

}  // namespace heron::cli
