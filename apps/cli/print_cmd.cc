// `heron print`: the record of a job, and a document printed with it.
//
// A record is handed to the driver as it is. With changes (-o) it goes through the working settings, as in
// `heron settings`; those can't hold all that a record says, so that only what the changes touched comes out of them.
//
// Printing itself is the program heron-spool beside this one, so that no other command waits for Qt and qpdf to
// load. It takes over this process: terminal, exit code and signals stay what they are. The record goes through a pipe
// and never touches a disk or a command line, as it may hold passwords.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "changes/fax_mode.h"
#include "common/command.h"
#include "common/page_states.h"
#include "common/record_file.h"
#include "engine/setting.h"
#include "fax_commands.h"
#include "forms/form_list.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "resolved_record.h"
#include "secrets.h"
#include "setting_names.h"
#include "settings_change.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

struct PrintOptions {
  std::string printer;
  std::string in;
  std::vector<std::string> requests;
  std::vector<std::string> to;  ///< recipients of this fax
  std::string document;
  std::string out;
  std::string form;  ///< full path of the form to make or to print with, empty for the record's own
  int path = kPageStates.at("compact");
  bool yes = false;
  bool no = false;
  bool json = false;
  Secrets secrets;
};

/// A watermark that is turned on before one was ever chosen is the first of the list; a notice says so.
void ChooseFirstWatermark(const UiState& ui, const std::vector<ChangeRecord>& changes) {
  constexpr uint16_t kUse = ParamNamed<u"Watermark_Use">();
  const bool turned_on = std::ranges::any_of(changes, [](const auto& change) {
    return change.request.parameter == kUse && change.request.value == value::Watermark_Use::kOn;
  });
  const bool named =
      std::ranges::any_of(changes, [](const auto& change) { return change.request.parameter == kWatermarkChoice; });
  uint8_t& current = SlotAs<u"bWatermarkCurrent", uint8_t>(ui);
  const WatermarkStore* const list = ui.stores.watermarks.get();
  if (!turned_on || named || current != 0 || list == nullptr || list->wMarkListNum < 2) return;
  current = 1;
  std::cerr << "heron: no watermark was chosen yet, so this is \"" << Printable(list->entries[1].text)
            << "\"; -o bWatermarkCurrent=NUMBER or TEXT chooses another\n";
}

namespace overlay = value::lpOverlay;

constexpr std::u16string_view kNoFormName = u"HR_DEFAULT";

DriverEnv AsEnv(const Bytes& record) {
  DriverEnv env;
  std::copy_n(record.begin(), kEnvSize, env.bytes.begin());
  return env;
}

bool NamesForm(const DriverEnv& record) {
  const std::u16string name = GetText<"overlayName">(record);
  return !name.empty() && name != kNoFormName;
}

/// The record that the job begins with: a file's or the user's own, else the printer's default.
Bytes StartingRecord(Printer& printer, const PrintOptions& options) {
  Bytes record = options.in.empty() ? OwnRecord(options.printer) : ReadRecord(options.in);
  return record.empty() ? ResolvedRecord(printer, {}) : record;
}

/// The driver takes out of a record what it can't do. A person who asked for it hears of it.
void TellWhatIsLeftOut(Printer& printer, const Bytes& record) {
  if (record.size() != kEnvSize || !IsOwnEnv(record.data())) return;
  const DriverEnv asked = AsEnv(record);
  const DriverEnv done = AsEnv(ResolvedRecord(printer, record));
  if (Get<"lpOverlay">(asked) > overlay::kNoOverlay && Get<"lpOverlay">(done) == overlay::kNoOverlay)
    std::cerr << "heron: the record asks for an overlay form (lpOverlay) and names none; printed without a form\n";
  if (Get<"lpOutput">(asked) == value::lpOutput::kFax && Get<"lpOutput">(done) != value::lpOutput::kFax)
    std::cerr << "heron: the record asks for a fax (lpOutput) and has no recipient; printed on paper\n";
}

/// Fields that name a file which the working settings have just written.
bool GoesWithItsFile(std::string_view field) {
  return field == "faxAddressFileId" || field == "faxAddressCount";
}

/// `record` with what became of it between `before` and `after`, field by field.
DriverEnv WithChanges(const DriverEnv& record, const DriverEnv& before, const DriverEnv& after) {
  DriverEnv changed = record;
  for (const EnvField& field : kEnvFields) {
    for (size_t i = 0; i < field.count; ++i) {
      const auto at = static_cast<ptrdiff_t>(field.At(i));
      const auto from = after.bytes.begin() + at;
      const auto size = static_cast<ptrdiff_t>(field.Size());
      if (GoesWithItsFile(field.name) || !std::equal(from, from + size, before.bytes.begin() + at))
        std::copy_n(from, size, changed.bytes.begin() + at);
    }
  }
  // The user's list of forms has none, but the record does.
  if (!NamesForm(changed) && NamesForm(record)) SetText<"overlayName">(changed, GetText<"overlayName">(record));
  return changed;
}

bool UsesForm(const DriverEnv& record) {
  return Get<"lpOverlay">(record) != overlay::kNoOverlay;
}

/// A record that names the form of the command line, if there is one.
Bytes NamingForm(const PrintOptions& options, const Bytes& record) {
  if (options.form.empty() || record.size() != kEnvSize || !IsOwnEnv(record.data())) return record;
  DriverEnv named = AsEnv(record);
  SetText<"overlayName">(named, platform::FromUtf8(options.form));
  return {named.bytes.begin(), named.bytes.end()};
}

/// Checks the name of a form that is to be made, and asks before it replaces a file.
void CheckFormToMake(const PrintOptions& options) {
  const FormVerdict verdict = CheckNewForm(SplitFormPath(platform::FromUtf8(options.form)));
  const std::string path = '"' + Printable(options.form) + '"';
  if (verdict.problem == text::kFormNotWritable)
    throw Failure(kNotPermitted, "the form can't be written to " + path + "; choose another folder or a shorter name");
  if (verdict.problem != 0)
    throw Failure(kUsage, "the form can't be made under the name " + path + "; its name must end in .vxf");
  if (!verdict.exists) return;
  const Consent consent = options.yes ? Consent::kYes : options.no ? Consent::kNo : Consent::kAsk;
  if (consent == Consent::kAsk && isatty(STDIN_FILENO) != 0)
    std::cerr << "The form " << path << " exists already. Replace it?\n";
  const std::optional<bool> yes = AnswerOf(consent);
  if (!yes)
    throw Failure(kConsent, "the form " + path + " exists already; agree with --yes, or run on a terminal to be asked");
  if (!*yes) throw Failure(kConsent, "declined; nothing was printed");
}

/// The form of the command line: its full path, with the extension. Checks it against what the job does with it.
void ApplyForm(const PrintOptions& options, DriverEnv& record) {
  if (options.form.empty()) return;
  if (!UsesForm(record))
    throw Failure(kUsage,
                  "--form needs a job that makes a form or prints with one; add -o lpOverlay=2 or -o lpOverlay=3");
  if (Get<"lpOverlay">(record) == overlay::kCreateForm) CheckFormToMake(options);
  SetText<"overlayName">(record, platform::FromUtf8(options.form));
}

/// Refuses a form that would be left out of the job without a word.
void CheckForm(const std::vector<ChangeRecord>& changes, const DriverEnv& record) {
  for (const ChangeRecord& change : changes) {
    if (change.request.parameter != ParamNamed<u"lpOverlay">() || Get<"lpOverlay">(record) == overlay::kNoOverlay)
      continue;
    if (change.request.value == overlay::kCreateForm && !NamesForm(record))
      throw Failure(kRefused, change.request.text + ": name the file of the form to make; add --form FILE");
    if (!NamesForm(record)) {
      throw Failure(kRefused, change.request.text +
                                  ": there is no form to print: the printer's list of forms is empty and the record "
                                  "names none; name one with --form FILE, or add one with `heron form add`");
    }
  }
}

/// Every change must be in the record as the driver will read it.
void CheckChanges(SettingsSession& opened, Printer& printer, const std::vector<ChangeRecord>& changes,
                  const Bytes& record) {
  const auto back = engine::OpenRecord(opened.resources(), AsEnv(ResolvedRecord(printer, record)), printer.handle());
  if (back == nullptr) throw Failure(kFailed, "the settings can't be opened: the store can't be read now; try again");
  engine::OpenSettings(back->resolver, nullptr, engine::OpeningPass::kSkip);
  for (const ChangeRecord& change : changes) {
    const uint16_t parameter = change.request.parameter;
    if (!kParamRows[parameter].HasBlock()) continue;
    const uint16_t made = *FieldsOf(opened.ui(), parameter).value;
    const uint16_t kept = *FieldsOf(*back->ui, parameter).value;
    if (made == kept || change.request.control == 0) continue;
    throw Failure(kRefused, change.request.text +
                                ": the driver doesn't keep it with the other settings and prints with " +
                                ValueName(change.request.control, kept) + "; nothing was printed");
  }
}

/// The sizes of custom papers in the settings. A change brings a custom paper in use to the size of its entry; a job
/// whose paper stays keeps the size that its application gave it.
class OwnPaperSizes {
 public:
  explicit OwnPaperSizes(const UiState& ui)
      : media_(engine::Setting<u"lpMediaSize">(ui)), output_(engine::Setting<u"lpOutputPaper">(ui)) {
    for (size_t i = 0; i < sizes_.size(); ++i) sizes_[i] = Field(ui, i);
  }
  void PutBack(const UiState& ui) const {
    for (size_t i = 0; i < sizes_.size(); ++i) {
      const bool stays = i < kOfMedia ? engine::Setting<u"lpMediaSize">(ui) == media_
                                      : engine::Setting<u"lpOutputPaper">(ui) == output_;
      if (stays) Field(ui, i) = sizes_[i];
    }
  }

 private:
  static constexpr size_t kOfMedia = 3;
  static uint16_t& Field(const UiState& ui, size_t i) {
    uint16_t* const fields[] = {&engine::Setting<u"UDPaperWidth">(ui),  &engine::Setting<u"UDPaperLength">(ui),
                                &engine::Setting<u"lpUDPaperUnit">(ui), &engine::Setting<u"UDMediaWidth">(ui),
                                &engine::Setting<u"UDMediaLength">(ui), &engine::Setting<u"lpUDMediaUnit">(ui)};
    return *fields[i];
  }

  uint16_t media_, output_;
  std::array<uint16_t, 6> sizes_{};
};

/// A job's record, and the recipients if it is a fax that has any.
struct JobInput {
  Bytes record;
  std::unique_ptr<AddressBlock> recipients;
};

/// The recipients of this fax alone, in place of those that the record has.
void ReplaceRecipients(const SettingsSession& opened, const std::vector<std::string>& to) {
  if (to.empty()) return;
  const auto table = std::make_unique<RecipientTable>();
  for (const std::string& recipient : to) AddOrThrow(*table, ParseRecipient(recipient));
  StoreRecipients(opened.ui(), *table, opened.resources());
}

/// What the number of recipients changes on the cover sheet, said on stderr.
void AlignCoverSheet(const UiState& ui) {
  for (const pages::CoverNotice notice : pages::AlignCover(ui))
    std::cerr << "heron: " << Printable(pages::CoverNoticeText(notice)) << '\n';
}

std::unique_ptr<AddressBlock> RecipientsOf(const UiState& ui) {
  auto block = std::make_unique<AddressBlock>();
  FillAddressBlock(ui, block.get());
  return block->count == 0 ? nullptr : std::move(block);
}

/// The starting record with the changes that were asked for.
JobInput ChangedRecord(Printer& printer, const PrintOptions& options, const Bytes& start) {
  const DriverEnv record = AsEnv(ResolvedRecord(printer, start));
  SettingsSession opened(printer, options.printer, record);
  const Catalogue catalogue(ReadLocaleCountry());
  TerminalView view(options.yes ? Consent::kYes : options.no ? Consent::kNo : Consent::kAsk, true);
  // Without the corrections of an opening sheet: the user didn't ask for these changes.
  opened.Open(false);
  opened.Commit(nullptr);
  const DriverEnv before = AsEnv(opened.Record());
  options.secrets.Own(opened);
  ReplaceRecipients(opened, options.to);
  const OwnPaperSizes sizes(opened.ui());
  const std::vector<ChangeRecord> changes = MakeChanges(opened, options.requests, false, catalogue, view);
  sizes.PutBack(opened.ui());
  int code = kDone;
  const std::string failure = WhyNot(changes, view, &code);
  if (!failure.empty()) throw Failure(code, failure);
  options.secrets.Store(opened);
  ChooseFirstWatermark(opened.ui(), changes);
  const auto faxes = [&] { return opened.engine().Holds(engine::Control(u"lpOutput.Fax"), value::lpOutput::kFax); };
  const bool wants_fax = faxes();
  if (!options.to.empty() && !wants_fax)
    throw Failure(kUsage, "--to names the recipients of a fax; add -o lpOutput=Fax to send the document");
  AlignCoverSheet(opened.ui());
  opened.Commit(&view);
  // The commit goes back to the printer, but the pages of a fax don't belong on paper.
  if (wants_fax && !faxes())
    throw Failure(
        kRefused,
        "a fax needs a recipient, and the record has none; nothing was printed or sent; name one with --to NUMBER");
  DriverEnv changed = WithChanges(record, before, AsEnv(opened.Record()));
  ApplyForm(options, changed);
  CheckForm(changes, changed);
  const Bytes job(changed.bytes.begin(), changed.bytes.end());
  CheckChanges(opened, printer, changes, job);
  return {job, wants_fax ? RecipientsOf(opened.ui()) : nullptr};
}

/// The recipients in the file that a record names. The job gets a copy, since it deletes what it has taken: the next
/// job with this record has them as well.
std::unique_ptr<AddressBlock> NamedRecipients(const Bytes& record) {
  if (record.size() != kEnvSize || !IsOwnEnv(record.data())) return nullptr;
  const DriverEnv env = AsEnv(record);
  auto block = std::make_unique<AddressBlock>();
  const bool fax = Get<"lpOutput">(env) == value::lpOutput::kFax;
  if (!fax || !ReadAddressFile(Get<"faxAddressFileId">(env), block.get())) return nullptr;
  block->count = std::min(block->count, kRecipientCount);
  return block;
}

JobInput InputOfJob(const PrintOptions& options) {
  Printer printer(options.printer);
  const Bytes start = NamingForm(options, StartingRecord(printer, options));
  const bool changes =
      !options.requests.empty() || !options.secrets.empty() || !options.to.empty() || !options.form.empty();
  JobInput job = changes ? ChangedRecord(printer, options, start) : JobInput{start, NamedRecipients(start)};
  TellWhatIsLeftOut(printer, job.record);
  return job;
}

[[noreturn]] void FailSystem(const char* doing) {
  throw Failure(kFailed, "can't " + std::string(doing) + ": " + std::strerror(errno));
}

/// A path that can be read once and gives `bytes`.
std::string AsPipe(std::span<const uint8_t> bytes) {
  int ends[2];
  if (pipe(ends) != 0) FailSystem("hand the record on");
  // A record and a list of recipients are smaller than what a pipe holds, so writing can't block before the reader
  // starts.
  const ssize_t written = write(ends[1], bytes.data(), bytes.size());
  close(ends[1]);
  if (written != static_cast<ssize_t>(bytes.size())) FailSystem("hand the record on");
  return "/dev/fd/" + std::to_string(ends[0]);
}

void Print(PrintOptions& options) {
  if (options.in == "-" && options.document == "-")
    throw Failure(kUsage, "record and document can't both come from standard input");
  options.secrets.Read(options.in == "-" || options.document == "-");
  if (!options.form.empty()) {
    const std::filesystem::path form = std::filesystem::absolute(options.form).lexically_normal();
    options.form = form.has_extension() ? form.native() : form.native() + ".vxf";
    if (platform::FromUtf8(options.form).size() > kFormPathLength)
      throw Failure(kUsage, "the path of a form has at most 259 characters: \"" + Printable(options.form) + '"');
  }
  const JobInput job = InputOfJob(options);
  std::vector<std::string> words = {"--printer=" + options.printer, "--record=" + AsPipe(job.record),
                                    "--out=" + options.out, "--path=" + std::to_string(options.path)};
  if (job.recipients != nullptr) {
    const auto* const bytes = reinterpret_cast<const uint8_t*>(job.recipients.get());
    words.push_back("--recipients=" + AsPipe({bytes, sizeof *job.recipients}));
  }
  if (options.yes) words.emplace_back("--yes");
  if (options.no) words.emplace_back("--no");
  if (options.json) words.emplace_back("--json");
  words.insert(words.end(), {"--", options.document});
  BecomeProgram("heron-spool", std::move(words));
}

}  // namespace

void AddPrintCommand(CLI::App& app) {
  const auto options = std::make_shared<PrintOptions>();
  CLI::App* command = AddCommand(app, "print", "Print or fax a text, picture or PDF into a folder");
  command->add_option("-p,--printer", options->printer, "Printer to print on")->required();
  command->add_option("--in", options->in,
                      "Record to print with instead of your own for this printer (- for standard input)");
  command->add_option("-o", options->requests, "Change a setting for this job only; changes are made in order")
      ->take_all()
      ->allow_extra_args(false);
  command
      ->add_option("--to", options->to,
                   "Fax number that this job alone is sent to, with a name behind an equals sign; repeated for more")
      ->take_all()
      ->allow_extra_args(false);
  options->secrets.AddTo(*command);
  command->add_option("--form", options->form,
                      "Form to make (with lpOverlay=2) or to print with (lpOverlay=3) instead of the settings' own");
  command->add_option("document", options->document, "UTF-8 text, PNG, JPEG or PDF (- for standard input)")->required();
  command->add_option("--out", options->out, "Folder that receives the job; it must not exist or be empty")->required();
  command
      ->add_option(
          "--path", options->path,
          "Page state of the printing half, compact or full (488 or 556 bytes); watermarks are drawn differently")
      ->transform(CLI::CheckedTransformer(kPageStates));
  CLI::Option* yes = command->add_flag("--yes", options->yes, "Answer all questions with yes");
  CLI::Option* no = command->add_flag("--no", options->no, "Answer all questions with no");
  yes->excludes(no);
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Print(*options); });
}

}  // namespace heron::cli
