// `heron print`: the record of a job, made as `heron settings` makes it, and a document printed with it.
//
// Printing itself is the program heron-spool beside this one, so that no other command waits for Qt and Poppler to
// load. It takes over this process: terminal, exit code and signals stay what they are. The record goes through a pipe
// and never touches a disk or a command line, as it may hold passwords.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>

#include "command.h"
#include "record_file.h"
#include "setting_names.h"
#include "settings_change.h"
#include "sheet.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

struct PrintOptions {
  std::string printer;
  std::string in;
  std::vector<std::string> wishes;
  std::string document;
  std::string out;
  int path = 488;
  bool yes = false;
  bool no = false;
  bool json = false;
};

/// Who turns the watermark on without ever having chosen one gets the first of the list, and is told so.
void ChooseFirstWatermark(const UiState& ui, const std::vector<ChangeRecord>& changes) {
  constexpr uint16_t kUse = ParamNamed<u"Watermark_Use">();
  const bool turned_on = std::ranges::any_of(
      changes, [](const auto& change) { return change.wish.parameter == kUse && change.wish.value == 1; });
  const bool named =
      std::ranges::any_of(changes, [](const auto& change) { return change.wish.parameter == kWatermarkChoice; });
  uint8_t& current = SlotAs<u"bWatermarkCurrent", uint8_t>(ui);
  const WatermarkStore* const list = ui.stores.watermarks.get();
  if (!turned_on || named || current != 0 || list == nullptr || list->wMarkListNum < 2) return;
  current = 1;
  std::cerr << "heron: no watermark was chosen yet, so this is \"" << Printable(list->entries[1].text)
            << "\"; -o bWatermarkCurrent=NUMBER or TEXT chooses another\n";
}

/// The job's record: what the user's sheet would hand to the application.
Bytes RecordOfJob(const PrintOptions& options) {
  Printer printer(options.printer);
  Sheet sheet(printer, options.printer, options.in, SheetKind::kDocument);
  if (options.wishes.empty()) return sheet.Record();
  const Catalogue catalogue(ReadLocaleCountry());
  TerminalView view(options.yes ? Consent::kYes : options.no ? Consent::kNo : Consent::kAsk, true);
  sheet.Open(true);
  const std::vector<ChangeRecord> changes = MakeChanges(sheet, options.wishes, false, catalogue, view);
  int code = kDone;
  const std::string failure = WhyNot(changes, view, &code);
  if (!failure.empty()) throw Failure(code, failure);
  ChooseFirstWatermark(sheet.ui(), changes);
  const auto faxes = [&] { return sheet.engine().Holds(engine::Control(u"lpOutput.902"), 1); };
  const bool wants_fax = faxes();
  sheet.Commit(&view);
  // The commit goes back to the printer; whoever asked for a fax doesn't want its pages on paper.
  if (wants_fax && !faxes())
    throw Failure(kRefused, "a fax needs a recipient, and the record has none; nothing was printed or sent");
  return sheet.Record();
}

[[noreturn]] void FailSystem(const char* doing) {
  throw Failure(kFailed, "can't " + std::string(doing) + ": " + std::strerror(errno));
}

/// A path that can be read once and gives `record`.
std::string AsPipe(const Bytes& record) {
  int ends[2];
  if (pipe(ends) != 0) FailSystem("hand the record on");
  // A record is far smaller than what a pipe holds, so nobody need read yet.
  const ssize_t written = write(ends[1], record.data(), record.size());
  close(ends[1]);
  if (written != static_cast<ssize_t>(record.size())) FailSystem("hand the record on");
  return "/dev/fd/" + std::to_string(ends[0]);
}

void Print(const PrintOptions& options) {
  if (options.in == "-" && options.document == "-")
    throw Failure(kUsage, "record and document can't both come from standard input");
  std::vector<std::string> words = {"--printer=" + options.printer, "--record=" + AsPipe(RecordOfJob(options)),
                                    "--out=" + options.out, "--path=" + std::to_string(options.path)};
  if (options.yes) words.emplace_back("--yes");
  if (options.no) words.emplace_back("--no");
  if (options.json) words.emplace_back("--json");
  words.insert(words.end(), {"--", options.document});
  BecomeProgram("heron-spool", std::move(words));
}

}  // namespace

void AddPrintCommand(CLI::App& app) {
  const auto options = std::make_shared<PrintOptions>();
  CLI::App* command = AddCommand(app, "print", "Print a text, picture or PDF into a folder: pages.pdf and job.json");
  command->add_option("-p,--printer", options->printer, "Printer whose driver is called")->required();
  command->add_option("--in", options->in,
                      "Record to print with instead of your own of this printer (- for standard input)");
  command->add_option("-o", options->wishes, "KEY=VALUE, for this job only, in the order given")
      ->take_all()
      ->allow_extra_args(false);
  command->add_option("document", options->document, "UTF-8 text, PNG, JPEG or PDF (- for standard input)")->required();
  command->add_option("--out", options->out, "Folder that receives the job; it must not exist or be empty")->required();
  command->add_option("--path", options->path, "The printing side's way of drawing: 488 or 556")
      ->check(CLI::IsMember({488, 556}));
  CLI::Option* yes = command->add_flag("--yes", options->yes, "Agree to everything that is asked");
  CLI::Option* no = command->add_flag("--no", options->no, "Agree to nothing");
  yes->excludes(no);
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Print(*options); });
}

}  // namespace heron::cli
