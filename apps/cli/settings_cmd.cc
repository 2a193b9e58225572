// `heron settings`: a record through the working settings and back, and what every setting is and can be.
//
// Without files the command works on the user's own working record of the printer, which begins as the printer's valid
// default.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "common/command.h"
#include "common/record_file.h"
#include "secrets.h"
#include "settings_change.h"
#include "settings_kept.h"
#include "settings_session.h"
#include "settings_text.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

struct SettingsOptions {
  std::string printer;
  std::string in;
  std::string out;
  std::vector<std::string> requests;
  bool device = false;
  bool list = false;
  bool reset = false;
  bool json = false;
  ConsentOptions consent;
  Secrets secrets;
};

void CheckOptions(const SettingsOptions& options) {
  if (options.reset && !options.in.empty()) throw Failure(kUsage, "--reset starts from the defaults; leave --in out");
  if (options.device && !options.in.empty())
    throw Failure(kUsage, "--device works on the printer's saved record; leave --in out");
  if (options.device && !options.secrets.empty()) {
    throw Failure(kUsage,
                  "passwords belong to your own settings, not to the printer's; leave --device or --secret out");
  }
  if (options.out == "-" && (options.json || options.list)) {
    throw Failure(kUsage, "the record goes to standard output; leave -l and --json out or name a file");
  }
}

/// What a run has come to.
struct Outcome {
  std::vector<ChangeRecord> changes;
  std::vector<ShownReport> messages;  ///< of the commit
  std::string failure;                ///< why nothing is written; empty if everything was applied
  int code = kDone;
  bool writes = false;
};

/// Prints what the rules reported for a change; questions were already shown on the terminal.
void PrintReports(const SettingsOptions& options, const ChangeRecord& change, std::ostream& out) {
  for (const ShownReport& report : change.reports) {
    const bool shown = report.asked && options.consent.consent() == Consent::kAsk;
    if (!shown) PrintReport(report.asked ? std::cerr : out, report);
  }
}

void AnswerSettings(const SettingsOptions& options, SettingsSession& opened, const Catalogue& catalogue,
                    const Outcome& outcome) {
  if (options.json) {
    Json rows = Json::array();
    for (const ChangeRecord& change : outcome.changes) rows.push_back(ChangeJson(change));
    Json messages = Json::array();
    for (const ShownReport& message : outcome.messages)
      messages.push_back({{"caption", message.caption}, {"text", message.text}});
    const std::string place = !options.out.empty() ? options.out : opened.PlaceOfRecord();
    return PrintJson("settings", {{"applied", outcome.writes},
                                  {"record", outcome.writes ? Json(place) : Json(nullptr)},
                                  {"changes", rows},
                                  {"messages", messages},
                                  {"secrets", options.secrets.ToJson()},
                                  {"identity", IdentityJson(opened.ui())},
                                  {"settings", SettingsJson(SettingsOf(opened.ui(), catalogue))}});
  }
  if (options.out == "-") return;
  for (const ChangeRecord& change : outcome.changes) PrintReports(options, change, std::cout);
  for (const ShownReport& message : outcome.messages) PrintReport(std::cout, message);
  for (const ChangeRecord& change : outcome.changes) PrintChange(change, opened);
  options.secrets.Print();
  if (options.list) {
    PrintAll(SettingsOf(opened.ui(), catalogue));
    return PrintIdentity(opened.ui(), true);
  }
  if (options.consent.dry_run) std::cout << "Nothing was changed (--dry-run).\n";
  if (options.reset && outcome.writes) std::cout << "All settings of this printer are at their defaults again.\n";
}

/// Makes the changes in the opened settings and commits them; nothing is stored yet.
Outcome MakeAll(const SettingsOptions& options, SettingsSession& opened, const Catalogue& catalogue,
                TerminalView& view) {
  Outcome outcome;
  if (!options.json) engine::ShowDeferredReport(opened.resolver(), &view);
  options.secrets.Own(opened);  // first: it may clear what another user set, and the changes come after that
  outcome.changes = MakeChanges(opened, options.requests, options.device, catalogue, view);
  outcome.failure = WhyNot(outcome.changes, view, &outcome.code);
  if (!outcome.failure.empty()) {
    if (!options.json) PrintReports(options, outcome.changes.back(), std::cerr);
    return outcome;
  }
  options.secrets.Store(opened);
  const Promises promises(opened.ui(), outcome.changes);
  // A view of its own, so that the commit's messages aren't taken for answers to the changes.
  TerminalView of_commit(options.consent.consent(), true);
  opened.Commit(&of_commit);
  outcome.messages = of_commit.TakeReports();
  outcome.failure = promises.WhatIsLost(opened);
  if (!outcome.failure.empty()) outcome.code = kRefused;
  return outcome;
}

/// Stores the record where it belongs, and reads it again: what was reported must be there. False, with nothing
/// stored, if another program changed what it belongs to.
bool Store(const SettingsOptions& options, Printer& printer, SettingsSession& opened, const Promises& promises) {
  using Recipients = SettingsSession::Recipients;
  const Bytes record = opened.Record(options.out.empty() ? Recipients::kShare : Recipients::kCopy);
  if (!options.out.empty()) {
    WriteRecord(options.out, record);
    opened.KeepNamedFiles();
  } else if (!opened.Keep(record)) {
    return false;
  }
  if (options.out == "-" || options.requests.empty()) return true;  // nothing to read back
  const SettingsKind kind = options.device ? SettingsKind::kDevice : SettingsKind::kDocument;
  SettingsSession again(printer, options.printer, options.out, kind);
  again.Open(false);
  const std::string broken = promises.FirstBroken(again.ui());
  if (broken.empty()) return true;
  const bool ours = options.out.empty() ? opened.IsKept(record) : ReadRecord(options.out) == record;
  if (!ours) return true;  // another program has stored its own since
  throw Failure(kFailed, broken + ": it was stored and isn't there; `heron settings` shows what is");
}

/// The whole command on what is stored now. False, with nothing written or answered, if another program changed it
/// before the result could be kept.
bool TrySettings(const SettingsOptions& options, Printer& printer, TerminalView& view) {
  view.StartOver();
  const SettingsKind kind = options.device ? SettingsKind::kDevice : SettingsKind::kDocument;
  SettingsSession opened(printer, options.printer, options.in, kind, options.reset);
  const Catalogue catalogue(ReadLocaleCountry());
  const bool works = !options.requests.empty() || !options.secrets.empty();
  if (works) opened.Open(true);
  Outcome outcome = works ? MakeAll(options, opened, catalogue, view) : Outcome();
  outcome.writes =
      outcome.failure.empty() && !options.consent.dry_run && (works || options.reset || !options.out.empty());
  if (outcome.writes && !Store(options, printer, opened, Promises(opened.ui(), outcome.changes))) return false;
  if (!works) opened.Open(false);
  if (outcome.failure.empty() || options.json) AnswerSettings(options, opened, catalogue, outcome);
  if (!outcome.failure.empty()) throw Failure(outcome.code, outcome.failure);
  if (works || outcome.writes || options.json || options.list) return true;
  SettingsSession fresh(printer, options.printer, {}, kind, true);
  fresh.Open(false);
  PrintChanged(SettingsOf(opened.ui(), catalogue), SettingsOf(fresh.ui(), catalogue));
  if (!options.device) PrintIdentity(opened.ui(), false);
  return true;
}

void Settings(SettingsOptions& options) {
  CheckOptions(options);
  options.secrets.Read(options.in == "-");
  Printer printer(options.printer);
  TerminalView view(options.consent.consent(), true);
  UntilKept([&] { return TrySettings(options, printer, view); });
}

}  // namespace

void AddSettingsCommand(CLI::App& app) {
  const auto options = std::make_shared<SettingsOptions>();
  CLI::App* command = AddCommand(app, "settings", "Show, list and change the settings of your jobs");
  command->add_option("-p,--printer", options->printer, "Printer whose settings to use")->required();
  command
      ->add_option("-o", options->requests, "Change a setting; VALUE is a number or a label; changes are made in order")
      ->take_all()
      ->allow_extra_args(false);
  options->secrets.AddTo(*command);
  command->add_option("--in", options->in,
                      "Record to work on instead of your own for this printer (- for standard input)");
  command->add_option("--out", options->out, "File for the resulting record (- for standard output)");
  command->add_flag("--device", options->device, "Work on the printer's own settings (installed options)");
  command->add_flag("-l,--list", options->list, "List every setting with its possible values");
  command->add_flag("--reset", options->reset,
                    "Reset your settings for this printer to the defaults, with --device the printer's");
  options->consent.AddTo(*command);
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Settings(*options); });
}

}  // namespace heron::cli
