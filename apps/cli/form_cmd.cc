// `heron form`: the user's list of overlay forms for a printer, whether a form fits, and which of them is printed.
//
// The list belongs to the user and the printer; the chosen form belongs to a record, by its place in the list, from 0.
// A listed file that is gone or doesn't fit is shown as such and stays in the list.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "catalog/strings.h"
#include "common/command.h"
#include "common/record_file.h"
#include "engine/setting.h"
#include "form_text.h"
#include "forms/form_list.h"
#include "generated/values.h"
#include "measure.h"
#include "platform/api/files.h"
#include "platform/api/text.h"
#include "settings_change.h"
#include "settings_kept.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;
namespace overlay = value::lpOverlay;

struct FormOptions {
  std::string printer;
  std::string form;  ///< number, path or name
  std::string in;
  std::string out;
  bool json = false;
  ConsentOptions consent;
};

OverlayStore& StoreOf(const SettingsSession& opened) {
  if (opened.ui().stores.overlays == nullptr) throw std::bad_alloc();
  return *opened.ui().stores.overlays;
}

uint8_t& ChosenOf(const SettingsSession& opened) {
  return SlotAs<u"bOverlayIndex", uint8_t>(opened.ui());
}

bool Prints(const SettingsSession& opened) {
  return engine::Setting<u"lpOverlay">(opened.ui()) == overlay::kPrintWithForm;
}

std::string Quoted(std::u16string_view text) {
  return '"' + Printable(text) + '"';
}

// -- what is in the list

Json ListJson(const SettingsSession& opened) {
  Json rows = Json::array();
  for (const std::u16string& path : FormsIn(StoreOf(opened))) {
    const std::optional<FormFacts> facts = FormFactsOf(path);
    rows.push_back({{"index", rows.size()},
                    {"path", platform::ToUtf8(path)},
                    {"bytes", facts ? Json(facts->bytes) : Json(nullptr)},
                    {"time", facts ? Json(FormTimeIso(facts->time)) : Json(nullptr)},
                    {"check", static_cast<int>(FormCheck(opened.ui(), path))},
                    {"missing", !facts.has_value()}});
  }
  return {{"current", ChosenOf(opened)}, {"used", Prints(opened)}, {"limit", kFormCount}, {"forms", rows}};
}

void PrintList(const SettingsSession& opened) {
  const std::vector<std::u16string> paths = FormsIn(StoreOf(opened));
  if (paths.empty()) {
    std::cout << "No forms; `heron form add FILE` adds one, `heron print -o lpOverlay=2 --form FILE` makes one.\n";
    return;
  }
  constexpr size_t kNumberWidth = 4, kSizeWidth = 10, kTimeWidth = 18;
  for (size_t i = 0; i < paths.size(); ++i) {
    const std::optional<FormFacts> facts = FormFactsOf(paths[i]);
    std::cout << (Prints(opened) && i == ChosenOf(opened) ? '*' : ' ') << Padded(std::to_string(i), kNumberWidth)
              << Padded(facts ? Printable(FormSizeText(facts->bytes)) : "-", kSizeWidth)
              << Padded(facts ? FormTimeIso(facts->time).substr(0, 16) : "-", kTimeWidth) << Printable(paths[i])
              << "  (" << FormState(opened.ui(), paths[i], facts.has_value()) << ")\n";
  }
}

std::u16string AbsolutePath(const std::string& path) {
  return platform::FromUtf8(fs::absolute(path).lexically_normal().native());
}

/// The place of a form by its number, its path or its file's name.
std::optional<size_t> Find(const OverlayStore& store, const std::string& form) {
  const std::vector<std::u16string> paths = FormsIn(store);
  const std::optional<int64_t> number = WholeNumber(form);
  if (number && *number >= 0 && *number < static_cast<int64_t>(paths.size())) return static_cast<size_t>(*number);
  if (const auto place = PlaceOfForm(store, AbsolutePath(form))) return place;
  const std::u16string name = platform::FromUtf8(form);
  for (size_t i = 0; i < paths.size(); ++i) {
    if (SplitFormPath(paths[i]).name == name) return i;
  }
  return std::nullopt;
}

size_t PlaceOf(const OverlayStore& store, const std::string& form) {
  if (const auto place = Find(store, form)) return *place;
  throw Failure(kNotFound, "there is no form \"" + Printable(form) + "\" in the list, which has " +
                               std::to_string(FormsIn(store).size()) + "; `heron form list` shows them");
}

void Answer(const FormOptions& options, const SettingsSession& opened, const std::string& schema, Json place,
            const std::string& sentence) {
  if (!options.json) {
    if (options.out == "-") return;
    std::cout << sentence << (options.consent.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
    return;
  }
  Json answer = {{"applied", !options.consent.dry_run}, {"index", std::move(place)}};
  answer.update(ListJson(opened));
  PrintJson(schema, answer);
}

// -- the commands

void List(const FormOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  opened.Open(false);
  if (options.json) return PrintJson("form.list", ListJson(opened));
  PrintList(opened);
}

void Check(const FormOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  opened.Open(false);
  const auto place = Find(StoreOf(opened), options.form);
  const std::u16string path = place ? FormsIn(StoreOf(opened))[*place] : AbsolutePath(options.form);
  if (!FormFactsOf(path)) throw Failure(kNotFound, "the file " + Quoted(path) + " isn't there or can't be read");
  FormCheckTable table;
  FormExpectFromState(table, opened.ui());
  const FormFit fit = FormReadDescription(table, path) ? FormCompare(table) : FormFit::kNone;
  if (options.json)
    return PrintJson(
        "form.check",
        {{"path", platform::ToUtf8(path)}, {"result", static_cast<int>(fit)}, {"rows", FormRowsJson(table)}});
  std::cout << Quoted(path) << ": " << FormState(opened.ui(), path, true) << '\n';
  PrintFormRows(table);
}

bool TryAdd(const FormOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  opened.Open(false);
  OverlayStore& store = StoreOf(opened);
  const std::u16string path = AbsolutePath(options.form);
  const std::u16string name = ShortPath(path);
  if (!path.ends_with(kFormExtension)) throw Failure(kUsage, FormMessage(text::kNotAFormFile, name));
  if (!FormFactsOf(path)) throw Failure(kNotFound, "the file " + Quoted(path) + " isn't there or can't be read");
  const auto listed = PlaceOfForm(store, path);
  if (!listed) {
    const FormFit fit = FormCheck(opened.ui(), path);
    if (fit == FormFit::kNone) throw Failure(kRefused, FormMessage(text::kFormUnusable, name));
    if (fit == FormFit::kColorInMonochrome) std::cerr << "heron: " << FormMessage(text::kFormInColor, name) << '\n';
    if (path.size() > kFormPathLength)
      throw Failure(kUsage, "the path of a form has at most 259 characters: " + Quoted(path));
    if (!AddForm(store, path))
      throw Failure(kRefused, "the list is full: it holds " + std::to_string(kFormCount) +
                                  " forms; remove one first (`heron form remove`)");
    if (!options.consent.dry_run && !opened.KeepLists()) return false;
  }
  const size_t place = *PlaceOfForm(store, path);
  Answer(options, opened, "form.add", place,
         (listed ? Quoted(path) + " is in the list already, as number " : "Added " + Quoted(path) + " as number ") +
             std::to_string(place) + '.');
  return true;
}

void AskToDelete(const FormOptions& options, const std::u16string& path) {
  if (options.consent.consent() == Consent::kAsk && isatty(STDIN_FILENO) != 0) {
    const StringsInUse strings;
    std::cerr << PrintableLines(
                     platform::ExpandText(GetUiString(text::kAskToDeleteForm), {std::u16string_view(ShortPath(path))}))
              << '\n';
  }
  const std::optional<bool> yes = AnswerOf(options.consent.consent());
  if (!yes) {
    throw Failure(kConsent,
                  "the form's file would be deleted from the disk; agree with --yes, or run on a terminal to be asked");
  }
  if (!*yes) throw Failure(kConsent, "declined; nothing was changed");
}

/// Deletes the file; one that is gone already is no failure.
void DeleteFormFile(const std::u16string& path) {
  if (platform::DeleteFileW(path.c_str()) != 0) return;
  const platform::DWORD status = platform::GetLastError();
  if (status != platform::kErrorFileNotFound && status != platform::kErrorPathNotFound)
    FailWith(status, "delete the form " + Quoted(path));
}

/// A job must not print with another form than the chosen one: without that, it prints without a form.
bool TryRemove(const FormOptions& options, TerminalView& view, std::u16string* asked) {
  view.StartOver();
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  OverlayStore& store = StoreOf(opened);
  const size_t place = PlaceOf(store, options.form);
  const std::u16string path = FormsIn(store)[place];
  if (*asked != path) AskToDelete(options, path);
  *asked = path;
  const bool was_chosen = Prints(opened) && ChosenOf(opened) == place;
  const bool moves = ChosenOf(opened) >= place && ChosenOf(opened) != 0;
  RemoveForm(opened.ui(), place);
  if (was_chosen) {
    constexpr uint16_t kNone = engine::ControlId(u"lpOverlay.NoOverlay");
    ApplyRequest(opened,
                 {.text = "lpOverlay=1",
                  .parameter = ParamNamed<u"lpOverlay">(),
                  .control = kNone,
                  .value = overlay::kNoOverlay},
                 view);
  }
  if (!options.consent.dry_run) {
    if (was_chosen || moves) opened.Commit(nullptr);
    const bool kept =
        was_chosen || moves ? opened.Keep(opened.Record(), SettingsSession::Lists::kWrite) : opened.KeepLists();
    if (!kept) return false;
    DeleteFormFile(path);
  }
  if (was_chosen) std::cerr << "heron: it was the chosen form; your jobs print without a form now\n";
  Answer(options, opened, "form.remove", place, "Removed " + Quoted(path) + '.');
  return true;
}

bool TryUse(const FormOptions& options, TerminalView& view) {
  view.StartOver();
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  const Catalogue catalogue(ReadLocaleCountry());
  opened.Open(true);
  const bool none = options.form == "none";
  const size_t place = none ? 0 : PlaceOf(StoreOf(opened), options.form);
  const std::u16string path = none ? std::u16string() : FormsIn(StoreOf(opened))[place];
  const std::vector<ChangeRecord> changes =
      MakeChanges(opened, {none ? "lpOverlay=1" : "lpOverlay=3"}, false, catalogue, view);
  int code = kDone;
  std::string failure = WhyNot(changes, view, &code);
  if (!failure.empty()) throw Failure(code, failure);
  if (!none) {
    if (!FormFactsOf(path)) throw Failure(kNotFound, "the file " + Quoted(path) + " isn't there or can't be read");
    const FormVerdict verdict = CheckListedForm(opened.ui(), {{}, path});
    if (verdict.problem != 0) throw Failure(kRefused, FormMessage(verdict.problem, ShortPath(path)));
  }
  ChosenOf(opened) = static_cast<uint8_t>(place);
  const Promises promises(opened.ui(), changes);
  opened.Commit(&view);
  failure = promises.WhatIsLost(opened);
  if (!failure.empty()) throw Failure(kRefused, failure);
  if (!options.consent.dry_run) {
    const Bytes record = opened.Record();
    if (!options.out.empty())
      WriteRecord(options.out, record);
    else if (!opened.Keep(record))
      return false;
  }
  Answer(options, opened, "form.use", none ? Json(nullptr) : Json(place),
         none ? "Your jobs print without a form." : "Your jobs print with " + Quoted(path) + '.');
  return true;
}

void Add(const FormOptions& options) {
  UntilKept([&] { return TryAdd(options); });
}

void Remove(const FormOptions& options) {
  TerminalView view(options.consent.consent(), true);
  std::u16string asked;  // once for a form, however often the command begins again
  UntilKept([&] { return TryRemove(options, view, &asked); });
}

void Use(const FormOptions& options) {
  if (options.out == "-" && options.json)
    throw Failure(kUsage, "the record goes to standard output; leave --json out or name a file");
  TerminalView view(options.consent.consent(), options.json || options.out == "-");
  UntilKept([&] { return TryUse(options, view); });
}

}  // namespace

void AddFormCommands(CLI::App& app) {
  const auto options = std::make_shared<FormOptions>();
  CLI::App* group = AddCommand(app, "form", "Manage overlay forms and choose the one to print with");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const FormOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer whose forms to use")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    command->callback([options, run] { run(*options); });
    return command;
  };
  const auto with_form = [&](CLI::App* command, const char* description) {
    command->add_option("FORM", options->form, description)->required();
    return command;
  };
  const auto with_in = [&](CLI::App* command) {
    command->add_option("--in", options->in,
                        "Record to work on instead of your own for this printer (- for standard input)");
    return command;
  };
  const auto changes = [&](CLI::App* command) {
    options->consent.AddTo(*command);
    return command;
  };
  with_in(add("list", "List the forms", List));
  with_in(with_form(add("check", "Compare a form with the settings", Check), "File, or number in the list"));
  changes(with_in(with_form(add("add", "Add a form's file to the list", Add), "The file, *.vxf")));
  CLI::App* use = changes(with_in(
      with_form(add("use", "Choose the form to print with; none for no form", Use), "Number, path or name, or none")));
  use->add_option("--out", options->out, "File for the resulting record (- for standard output)");
  changes(with_form(add("remove", "Remove a form from the list and delete its file", Remove), "Number, path or name"));
}

}  // namespace heron::cli
