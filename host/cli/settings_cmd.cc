// `heron settings`: a record through the working settings and back, and what every setting is and can be.
//
// Without files the command works on the user's own working record of the printer, which begins as the printer's valid
// default.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "command.h"
#include "record_file.h"
#include "settings_change.h"
#include "settings_text.h"
#include "sheet.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

struct SettingsOptions {
  std::string printer;
  std::string in;
  std::string out;
  std::vector<std::string> wishes;
  bool device = false;
  bool list = false;
  bool reset = false;
  bool json = false;
  ConsentOptions consent;
};

void CheckOptions(const SettingsOptions& options) {
  if (options.reset && !options.in.empty()) throw Failure(kUsage, "--reset starts from the defaults; leave --in out");
  if (options.device && (!options.in.empty() || options.reset)) {
    throw Failure(kUsage, "--device works on the printer's saved record; leave --in and --reset out");
  }
  if (options.out == "-" && (options.json || options.list)) {
    throw Failure(kUsage, "the record goes to standard output; leave -l and --json out or name a file");
  }
}

void AnswerSettings(const SettingsOptions& options, Sheet& sheet, const Catalogue& catalogue,
                    const std::vector<ChangeRecord>& changes, bool writes) {
  if (options.json) {
    Json rows = Json::array();
    for (const ChangeRecord& change : changes) rows.push_back(ChangeJson(change));
    const std::string place = !options.out.empty() ? options.out : sheet.PlaceOfRecord();
    return PrintJson("settings", {{"applied", writes},
                                  {"record", writes ? Json(place) : Json(nullptr)},
                                  {"changes", rows},
                                  {"settings", SettingsJson(SettingsOf(sheet.ui(), catalogue))}});
  }
  if (options.out == "-") return;
  for (const ChangeRecord& change : changes) PrintChange(change, sheet);
  if (options.list) return PrintAll(SettingsOf(sheet.ui(), catalogue));
  if (options.consent.dry_run) std::cout << "Nothing was changed (--dry-run).\n";
  if (options.reset && writes) std::cout << "All settings of this printer are at their defaults again.\n";
}

void Settings(const SettingsOptions& options) {
  CheckOptions(options);
  Printer printer(options.printer);
  const SheetKind kind = options.device ? SheetKind::kDevice : SheetKind::kDocument;
  Sheet sheet(printer, options.printer, options.in, kind, options.reset);
  const Catalogue catalogue(ReadLocaleCountry());
  const bool works = !options.wishes.empty();
  TerminalView view(options.consent.consent(), options.json || options.out == "-");
  if (works) sheet.Open(true);
  if (works && !options.json) engine::ShowDeferredReport(sheet.resolver(), &view);
  const std::vector<ChangeRecord> changes = MakeChanges(sheet, options.wishes, options.device, catalogue, view);
  int code = kDone;
  const std::string failure = WhyNot(changes, view, &code);
  const bool writes = failure.empty() && !options.consent.dry_run && (works || options.reset || !options.out.empty());
  if (writes) {
    if (works) sheet.Commit(&view);
    const Bytes record = sheet.Record();
    options.out.empty() ? sheet.Keep(record) : WriteRecord(options.out, record);
  }
  if (failure.empty() || options.json) AnswerSettings(options, sheet, catalogue, changes, writes);
  if (!failure.empty()) throw Failure(code, failure);
  if (works || writes || options.json || options.list) return;
  Sheet fresh(printer, options.printer, {}, kind, true);
  PrintChanged(SettingsOf(sheet.ui(), catalogue), SettingsOf(fresh.ui(), catalogue));
}

}  // namespace

void AddSettingsCommand(CLI::App& app) {
  const auto options = std::make_shared<SettingsOptions>();
  CLI::App* command = AddCommand(app, "settings", "What a job is set to, what each setting can be, and changes");
  command->add_option("-p,--printer", options->printer, "Printer whose settings are meant")->required();
  command->add_option("-o", options->wishes, "KEY=VALUE, changed in the order given; value: number or label")
      ->take_all()
      ->allow_extra_args(false);
  command->add_option("--in", options->in,
                      "Record to work on instead of your own of this printer (- for standard input)");
  command->add_option("--out", options->out, "Where the resulting record goes (- for standard output)");
  command->add_flag("--device", options->device, "Work on the printer's saved record, as its device sheet does");
  command->add_flag("-l,--list", options->list, "List every setting with what it can be");
  command->add_flag("--reset", options->reset, "Return your own settings of this printer to the defaults");
  options->consent.AddTo(*command);
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Settings(*options); });
}

}  // namespace heron::cli
