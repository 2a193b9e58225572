// The engine's view on a terminal: reports, questions, answers (terminal_view.h).

#include "terminal_view.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <utility>

#include "engine/engine.h"

namespace heron::cli {

void ConsentOptions::AddTo(CLI::App& command) {
  CLI::Option* agree = command.add_flag("--yes", yes, "Answer all questions with yes");
  agree->excludes(command.add_flag("--no", no, "Answer all questions with no"));
  command.add_flag("--dry-run", dry_run, "Show every consequence and change nothing");
}

void PrintReport(std::ostream& out, const ShownReport& report) {
  out << Heading(report.caption) << '\n' << report.text << '\n';
}

uint16_t TerminalView::ReadControl(uint16_t id) {
  return id == control_ ? value_ : engine::kUnknownValue;
}

/// Without a terminal a question can't be answered with yes.
bool TerminalView::Ask() {
  const std::optional<bool> yes = AnswerOf(consent_);
  wanted_consent_ |= !yes.has_value();
  return yes.value_or(false);
}

void TerminalView::StartOver() {
  earlier_.insert(earlier_.end(), shown_.begin(), shown_.end());
  starts_over_ = !shown_.empty();
  shown_.clear();
  reports_.clear();
  wanted_consent_ = false;
}

/// Takes the answer from the time before; each report counts once.
bool TerminalView::WasShown(ShownReport* report) {
  const auto same = std::ranges::find_if(earlier_, [&](const ShownReport& other) {
    return other.caption == report->caption && other.text == report->text && other.asked == report->asked;
  });
  // Word for word: an answer holds only for the question that was asked.
  if (same == earlier_.end()) return false;
  report->yes = same->yes;
  earlier_.erase(same);
  return true;
}

void TerminalView::TellOfStartingOver() {
  if (std::exchange(starts_over_, false))
    std::cerr << "heron: another program has changed these settings meanwhile; on the new ones the change means:\n";
}

bool TerminalView::Show(const engine::Report& report) {
  ShownReport shown{Printable(report.caption), PrintableLines(report.text), report.asks, true};
  if (WasShown(&shown)) {
    shown_.push_back(shown);
    reports_.push_back(shown);
    return shown.yes;
  }
  if (!quiet_ || (report.asks && consent_ == Consent::kAsk)) {
    TellOfStartingOver();
    // A question goes to the terminal where its answer is typed; everything else is the command's answer.
    std::ostream& out = report.asks ? std::cerr : std::cout;
    PrintReport(out, shown);
  }
  if (report.asks) shown.yes = Ask();
  shown_.push_back(shown);
  reports_.push_back(shown);
  return shown.yes;
}

}  // namespace heron::cli
