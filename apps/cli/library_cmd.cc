// `heron library`: the saved settings of a user and a printer.
//
// Without files, what is saved and what a recall changes is the user's own working record of the printer.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "catalog/strings.h"
#include "common/command.h"
#include "generated/texts.h"
#include "library_session.h"
#include "library_text.h"
#include "platform/api/text.h"
#include "platform/sqlite/store.h"
#include "presets/recall.h"
#include "settings/printer_data.h"
#include "settings_change.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;

fs::path SaveFolder(const LibraryOptions& options) {
  if (!options.folder.empty()) return fs::absolute(options.folder).lexically_normal();
  const Printer printer(options.printer);
  const std::u16string last = ReadLastFolder(PrinterName(printer.handle()), LastFolder::kSaved);
  if (!last.empty()) return platform::ToUtf8(last);
  const fs::path documents = store::DocumentsPath();
  std::error_code error;
  // A failure shows when the file is saved, with the folder's name.
  if (!options.consent.dry_run) fs::create_directories(documents, error);
  return documents;
}

std::u16string FolderText(const fs::path& folder) {
  std::string text = folder.native();
  while (text.size() > 1 && text.ends_with('/')) text.pop_back();
  return platform::FromUtf8(text);
}

void CheckComment(const std::string& comment) {
  if (platform::FromUtf8(comment).size() > kLibraryCommentLength)
    throw Failure(kUsage, "a comment may have at most 512 characters");
}

void Save(const LibraryOptions& options) {
  CheckComment(options.text);
  const fs::path folder = SaveFolder(options);
  LibrarySession session(options, LibraryLoad::kHeads, true);
  SettingsLibrary& library = session.library();
  const UiStatePtr prepared = PrepareForSaving(session.opened().ui(), session.opened().resources(), session.view());
  if (prepared == nullptr) throw std::bad_alloc();
  session.PrintSayings();
  const std::u16string name = platform::FromUtf8(options.name);
  if (!SaveSettingsAs(library, *prepared, FolderText(folder), name, platform::FromUtf8(options.text)))
    session.Fail("the settings can't be saved in \"" + Printable(folder.native()) + '"');
  const FileLocation location{FolderText(folder), name};
  session.Answer("library.save", "Saved " + Quoted(name) + " as \"" + Printable(location.Path()) + "\".");
}

void Register(const LibraryOptions& options) {
  const fs::path file = fs::absolute(options.file).lexically_normal();
  std::error_code error;
  if (!fs::exists(file, error)) throw Failure(kNotFound, "there is no file \"" + Printable(file.native()) + '"');
  LibrarySession session(options, LibraryLoad::kSettings, false);
  SettingsLibrary& library = session.library();
  if (!RegisterSettingsFile(library, platform::FromUtf8(file.native()))) session.Fail("the file can't be registered");
  session.PrintSayings();
  const LibraryEntry* entry = library.At(PlaceOfFile(library, LocationOf(platform::FromUtf8(file.native()))));
  session.Answer("library.register", "Registered " + Quoted(entry->displayName) + '.');
}

void Rename(const LibraryOptions& options) {
  LibrarySession session(options, LibraryLoad::kSettings, false);
  const int place = session.Place();
  const std::u16string old = session.library().At(place)->displayName;
  const std::u16string name = platform::FromUtf8(options.name);
  if (!RenameSettings(session.library(), place, name)) session.Fail("the settings can't be renamed");
  session.Answer("library.rename", "Renamed " + Quoted(old) + " to " + Quoted(name) + '.');
}

void Comment(const LibraryOptions& options) {
  CheckComment(options.text);
  LibrarySession session(options, LibraryLoad::kSettings, false);
  SettingsLibrary& library = session.library();
  const int place = session.PlaceToRead();
  const std::u16string name = library.At(place)->displayName;
  const std::string kind = KindOfEntry(*library.At(place));
  if (!CommentSettings(library, place, platform::FromUtf8(options.text))) {
    if (session.HasSaid()) session.Fail("");  // the library gave the reason
    throw Failure(kNotPermitted, Quoted(name) + " can't be changed: it is " + kind +
                                     ", or the comment with its line ends has more than 512 characters");
  }
  session.Answer("library.comment", "The comment of " + Quoted(name) + " is set.");
}

void Move(const LibraryOptions& options) {
  LibrarySession session(options, LibraryLoad::kHeads, false);
  SettingsLibrary& library = session.library();
  const int place = session.Place();
  const std::u16string name = library.At(place)->displayName;
  const bool up = options.direction == "up";
  // By its file: another program's change may have moved the entry when this change is repeated.
  const FileLocation file = library.At(place)->location;
  if (!MoveSettings(library, place, up ? LibraryDirection::kUp : LibraryDirection::kDown))
    session.Fail(Quoted(name) + " is the " + (up ? "first" : "last") + " already");
  const int now = PlaceOfFile(library, file) + 1;
  session.Answer("library.move", Quoted(name) + " is number " + std::to_string(now) + " now.");
}

void Remove(const LibraryOptions& options) {
  LibrarySession session(options, LibraryLoad::kHeads, false);
  const int place = session.Place();
  const std::u16string name = session.library().At(place)->displayName;
  const std::u16string path = session.library().At(place)->location.Path();
  if (!RemoveSettings(session.library(), place)) session.Fail("the settings can't be removed");
  session.Answer("library.remove",
                 "Removed " + Quoted(name) + " from the list; the file \"" + Printable(path) + "\" stays.");
}

struct PartName {
  std::string_view name;
  uint8_t part;
  std::string_view holds;
};
constexpr PartName kPartNames[] = {{"size", kRecallSize, "document size, orientation and copies"},
                                   {"user-papers", kRecallUserPapers, "user papers"},
                                   {"watermarks", kRecallWatermarks, "watermarks"},
                                   {"per-page", kRecallPerPage, "per-page lists"},
                                   {"paper-types", kRecallPaperTypes, "paper types in the trays"},
                                   {"fax-cover", kRecallFaxCover, "fax cover sheet"},
                                   {"forms", kRecallForms, "overlay forms"}};

constexpr char kPartsText[] = "size, user-papers, watermarks, per-page, paper-types, fax-cover, forms";

/// The parts that the user named, or nothing where the record's recall flags decide.
std::optional<uint8_t> PartsOf(const LibraryOptions& options) {
  if (!options.with) return std::nullopt;
  uint8_t parts = 0;
  std::istringstream words(*options.with);
  for (std::string word; std::getline(words, word, ',');) {
    const auto known = std::ranges::find(kPartNames, word, &PartName::name);
    if (known == std::end(kPartNames))
      throw Failure(kUsage, "--with doesn't know \"" + Printable(word) + "\"; it knows " + kPartsText);
    parts |= known->part;
  }
  return parts;
}

Json NamesOf(uint8_t parts) {
  Json names = Json::array();
  for (const PartName& known : kPartNames) {
    if ((parts & known.part) != 0) names.push_back(known.name);
  }
  return names;
}

/// What a recall brings and leaves, and the settings as they were before it.
struct RecallPlan {
  uint8_t parts = 0;
  uint8_t leftOut = 0;  ///< parts that aren't recalled and would have changed something
  std::vector<Setting> settings;
  std::vector<NamedList> lists;
};

RecallPlan PlanRecall(LibrarySession& session, int place, std::optional<uint8_t> parts) {
  const UiState& ui = session.opened().ui();
  RecallPlan plan;
  plan.parts = parts ? *parts : RecallPartsOf(ui);
  plan.leftOut = DifferingParts(session.library(), place, ui) & static_cast<uint8_t>(~plan.parts);
  plan.settings = SettingsOf(ui, Catalogue(ReadLocaleCountry()));
  plan.lists = ListsOf(ui);
  return plan;
}

/// What would be other than it is.
void PrintConsequences(LibrarySession& session, const RecallPlan& plan) {
  const UiState& ui = session.opened().ui();
  const bool settings = PrintDifferences(SettingsOf(ui, Catalogue(ReadLocaleCountry())), plan.settings);
  if (!PrintListDifferences(ListsOf(ui), plan.lists) && !settings) std::cout << "No setting would change.\n";
}

/// On stderr, since it isn't part of the answer.
void TellLeftOut(const RecallPlan& plan) {
  std::string held, names;
  for (const PartName& known : kPartNames) {
    if ((plan.leftOut & known.part) == 0) continue;
    held += (held.empty() ? "" : "; ") + std::string(known.holds);
    names += (names.empty() ? "" : ",") + std::string(known.name);
  }
  if (!held.empty()) std::cerr << "heron: not recalled: " << held << "; --with " << names << " recalls this too\n";
}

void AnswerRecall(const LibraryOptions& options, LibrarySession& session, const RunRecord& run, const RecallPlan& plan,
                  int place) {
  const bool applied = !options.consent.dry_run;
  const LibraryEntry& entry = *session.library().At(place);
  if (!options.json) {
    TellLeftOut(plan);
    if (options.out == "-") return;
    std::cout << (applied ? "Recalled " : "Would recall ") << Quoted(entry.displayName) << ".\n";
    if (applied) return;
    PrintConsequences(session, plan);
    std::cout << "Nothing was changed (--dry-run).\n";
    return;
  }
  const Catalogue catalogue(ReadLocaleCountry());
  const std::vector<Setting> settings = SettingsOf(session.opened().ui(), catalogue);
  const std::string place_of_record = !options.out.empty() ? options.out : session.opened().PlaceOfRecord();
  PrintJson("library.recall", {{"applied", applied},
                               {"record", applied ? Json(place_of_record) : Json(nullptr)},
                               {"entry", EntryJson(entry, place)},
                               {"parts", NamesOf(plan.parts)},
                               {"leftOut", NamesOf(plan.leftOut)},
                               {"recall", RunJson(run)},
                               {"differences", DifferencesJson(settings, plan.settings)},
                               {"settings", SettingsJson(settings)}});
}

/// False, with nothing written, if another program changed the current settings or lists before these were kept.
bool TryRecall(const LibraryOptions& options, std::optional<uint8_t> parts, TerminalView& view) {
  view.StartOver();  // an earlier attempt that was overtaken asked and reported already
  LibrarySession session(options, LibraryLoad::kSettings, true);
  SettingsSession& opened = session.opened();
  const int place = session.PlaceToRead();
  const RecallPlan plan = PlanRecall(session, place, parts);
  if (!options.json) engine::ShowDeferredReport(opened.resolver(), &view);
  view.TakeReports();
  RunRecord run;
  engine::ResolveOutcome outcome;
  if (!RecallSettings(opened.resolver(), &view, session.library(), place, plan.parts, &outcome))
    throw Failure(kFailed, "the settings can't be read");
  run.Take(outcome, opened.resolver(), view);
  if (!outcome.applied)
    throw Failure(kRefused, "the settings can't be made to fit the other settings; nothing was changed");
  if (!options.consent.dry_run) {
    opened.Commit(&view);
    using Recipients = SettingsSession::Recipients;
    const Bytes record = opened.Record(options.out.empty() ? Recipients::kShare : Recipients::kCopy);
    // With --out the own record stays, but the recalled lists are the user's and are stored all the same.
    const bool kept = options.out.empty() ? opened.Keep(record, SettingsSession::Lists::kWrite) : opened.KeepLists();
    if (!kept) return false;
    if (!options.out.empty()) {
      WriteRecord(options.out, record);
      opened.KeepNamedFiles();
    }
  }
  AnswerRecall(options, session, run, plan, place);
  return true;
}

void Recall(const LibraryOptions& options) {
  if (options.out == "-" && options.json)
    throw Failure(kUsage, "the record goes to standard output; leave --json out or name a file");
  const std::optional<uint8_t> parts = PartsOf(options);
  TerminalView view(options.consent.consent(), options.json || options.out == "-");
  UntilKept([&] { return TryRecall(options, parts, view); });
}

}  // namespace

void AddLibraryCommands(CLI::App& app) {
  const auto options = std::make_shared<LibraryOptions>();
  CLI::App* group = AddCommand(app, "library", "Manage settings saved under a name");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const LibraryOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer whose library to use")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    options->consent.AddTo(*command);
    command->callback([options, run] { run(*options); });
    return command;
  };
  const auto with_entry = [&](CLI::App* command) {
    command->add_option("ENTRY", options->entry, "Name or number of the settings")->required();
    return command;
  };
  const auto with_in = [&](CLI::App* command) {
    command->add_option("--in", options->in,
                        "Record to work on instead of your own for this printer (- for standard input)");
    return command;
  };

  add("list", "List the saved settings", ListLibrary)
      ->add_option("--find", options->find, "Only those whose name, comment or contents hold this text");

  CLI::App* show = with_in(with_entry(add("show", "Show what saved settings contain", ShowEntry)));
  show->add_flag("--diff", options->diff, "Show only what differs from the current settings");
  show->add_flag("-l,--list", options->list, "List every setting with its possible values");

  CLI::App* save = with_in(add("save", "Save the current settings under a name", Save));
  save->add_option("NAME", options->name, "Name of the new settings")->required();
  save->add_option("--comment", options->text, "Comment, up to 512 characters");
  save->add_option("--folder", options->folder, "Folder of the file (default: where the last one was saved)");

  CLI::App* recall = with_in(with_entry(add("recall", "Make saved settings the current ones", Recall)));
  recall->add_option("--out", options->out, "File for the resulting record (- for standard output)");
  recall->add_option("--with,--only", options->with,
                     std::string("Parts to recall besides the ordinary settings, separated by commas: ") + kPartsText +
                         " (default: the recall options of your settings, UsetPaperChk ...)");

  add("register", "Add a settings file to the list", Register)
      ->add_option("FILE", options->file, "The file, *.vxs")
      ->required();
  with_entry(add("rename", "Give settings and their file another name", Rename))
      ->add_option("NAME", options->name, "The new name")
      ->required();
  with_entry(add("comment", "Set the comment of settings", Comment))
      ->add_option("TEXT", options->text, "The comment, up to 512 characters; empty for none")
      ->required();
  with_entry(add("move", "Move settings in the list", Move))
      ->add_option("DIRECTION", options->direction, "up or down")
      ->required()
      ->check(CLI::IsMember({"up", "down"}));
  with_entry(add("remove", "Remove settings from the list; their file stays", Remove));
  with_entry(add("export", "Write a copy of settings to a file, for others to register", ExportEntry))
      ->add_option("FILE,--out", options->file, "The new file, *.vxs")
      ->required();
  CLI::App* start = add("default", "Choose the settings that new printers start from", DefaultEntry);
  start->add_option("ENTRY", options->entry, "Name or number of the settings; without it, show what is chosen");
  start->add_flag("--none", options->none, "New printers start with their defaults again");
}

}  // namespace heron::cli
