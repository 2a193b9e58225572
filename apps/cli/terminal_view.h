// The engine's view for a command line: reports are printed or kept, questions asked on a terminal or answered in
// advance.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "common/command.h"
#include "engine/view.h"

namespace CLI {
class App;
}

namespace heron::cli {

/// Options of a command that may ask questions.
struct ConsentOptions {
  bool yes = false;
  bool no = false;
  bool dry_run = false;

  void AddTo(CLI::App& command);
  /// A dry run goes on as if everything were agreed to.
  Consent consent() const { return yes || dry_run ? Consent::kYes : no ? Consent::kNo : Consent::kAsk; }
};

/// A report as it was shown, and what was answered.
struct ShownReport {
  std::string caption;
  std::string text;
  bool asked = false;
  bool yes = true;
};

/// Caption and text.
void PrintReport(std::ostream& out, const ShownReport& report);

class TerminalView : public engine::EngineView {
 public:
  /// `quiet`: reports are kept and not printed.
  TerminalView(Consent consent, bool quiet) : consent_(consent), quiet_(quiet) {}

  /// The command begins again on settings that another program has changed. What was shown already isn't shown again,
  /// and what was answered isn't asked again, as long as it comes out word for word the same.
  void StartOver();

  /// The change that the engine is about to ask for.
  void SetPending(uint16_t control, uint16_t value) {
    control_ = control;
    value_ = value;
  }
  /// Reports since the last call.
  std::vector<ShownReport> TakeReports() { return std::move(reports_); }
  bool HasReports() const { return !reports_.empty(); }
  /// A question was refused because there was no terminal to ask it on.
  bool wantedConsent() const { return wanted_consent_; }

  uint16_t ReadControl(uint16_t id) override;
  bool Show(const engine::Report& report) override;
  bool CanAnswer() const override { return !wanted_consent_; }
  void EnableControl(uint16_t, bool) override {}
  bool PerPageRowSelected() const override { return false; }

 private:
  bool Ask();
  bool WasShown(ShownReport* report);
  void TellOfStartingOver();

  Consent consent_;
  bool quiet_;
  bool wanted_consent_ = false;
  uint16_t control_ = 0;
  uint16_t value_ = 0;
  std::vector<ShownReport> reports_;
  std::vector<ShownReport> shown_;    ///< since StartOver
  std::vector<ShownReport> earlier_;  ///< before it, and not come again yet
  bool starts_over_ = false;          ///< and it hasn't been mentioned
};

}  // namespace heron::cli
