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
#include "command.h"
#include "library/fold_case.h"
#include "library/library_recall.h"
#include "library_text.h"
#include "platform/text.h"
#include "settings/printer_data.h"
#include "settings_change.h"
#include "sheet.h"
#include "store/store.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;

struct LibraryOptions {
  std::string printer;
  std::string entry;  ///< name or number
  std::string name;
  std::string text;
  std::string file;
  std::string folder;
  std::string direction;
  std::string in;
  std::string out;
  std::optional<std::string> only;  ///< names of parts, with commas between them
  bool diff = false;
  bool list = false;
  bool json = false;
  ConsentOptions consent;
};

/// What the library says, and what it means for a script.
struct Saying {
  LibraryText text;
  int code;
};
constexpr Saying kSayings[] = {
    {kChangedNotWritten, kFailed}, {kNotCreated, kFailed},          {kNotSavedThere, kNotPermitted},
    {kNotASettingsFile, kFailed},  {kFileProtected, kNotPermitted}, {kFolderProtected, kNotPermitted},
    {kSaveNameMissing, kUsage},    {kSaveNameIllegal, kUsage},      {kNameTooLong, kUsage},
    {kNameMissing, kUsage},        {kNameIllegal, kUsage},          {kNameControl, kUsage},
    {kFileNameTooLong, kUsage},    {kRegisterExtension, kUsage},
};

int CodeOf(const std::string& text) {
  for (const Saying& saying : kSayings) {
    if (PrintableLines(GetUiString(saying.text)) == text) return saying.code;
  }
  return kRefused;
}

std::string OneLine(std::string text) {
  for (size_t at; (at = text.find('\n')) != std::string::npos;) text.replace(at, 1, at == 0 ? "" : " ");
  return text;
}

/// The library of a command with the settings behind it.
class Session {
 public:
  Session(const LibraryOptions& options, LibraryLoad load, bool corrects)
      : options_(options),
        printer_(options.printer),
        sheet_(printer_, options.printer, options.in, SheetKind::kDocument),
        view_(options.consent.consent(), true) {
    sheet_.Open(corrects);
    const LibraryWrites writes = options.consent.dry_run ? LibraryWrites::kNo : LibraryWrites::kYes;
    library_ = SettingsLibraryOpen(view_, sheet_.ui(), sheet_.resources(), load, writes);
    if (library_ == nullptr) {
      if (view_.wantedConsent()) Fail("");
      throw Failure(kFailed, "the library's list can't be read now, or is damaged; try again");
    }
    PrintSayings();
  }

  Sheet& sheet() { return sheet_; }
  Printer& printer() { return printer_; }
  SettingsLibrary& library() { return *library_; }
  TerminalView& view() { return view_; }

  /// What the library has said since the last call, as news beside the answer.
  void PrintSayings() {
    for (const ShownReport& report : view_.TakeReports()) {
      if (!report.asked) std::cerr << "heron: " << OneLine(report.text) << '\n';
    }
  }

  /// Ends the command with what the library said last, or with `otherwise`.
  [[noreturn]] void Fail(const std::string& otherwise) {
    const std::vector<ShownReport> reports = view_.TakeReports();
    if (reports.empty()) throw Failure(kRefused, otherwise);
    const ShownReport& last = reports.back();
    if (!last.asked) throw Failure(CodeOf(last.text), OneLine(last.text));
    if (view_.wantedConsent())
      throw Failure(kConsent,
                    "nothing was changed; agree with --yes, refuse with --no, or run on a terminal to be asked");
    throw Failure(kConsent, OneLine(last.text) + " Declined; nothing was changed");
  }

  /// The entry that the user named, by its name or else its number.
  int Place() {
    const std::u16string wanted = platform::FromUtf8(options_.entry);
    std::vector<std::string> names;
    for (int place = 0; place < library_->count; ++place) {
      const LibraryEntry& entry = *library_->At(place);
      if (SameFolded(entry.displayName, wanted)) return place;
      names.push_back(platform::ToUtf8(entry.displayName));
    }
    for (int place = 0; place < library_->count; ++place) {
      if (std::to_string(place + 1) == options_.entry) return place;
    }
    std::string hint = DidYouMean(options_.entry, names);
    if (hint.empty()) hint = "`heron library list` names all";
    throw Failure(kNotFound, "the library has no settings \"" + Printable(options_.entry) + "\"; " + hint);
  }

  /// The answer of a command that changed the library.
  void Answer(const std::string& schema, const std::string& sentence) {
    if (options_.json)
      return PrintJson(schema, {{"applied", !options_.consent.dry_run}, {"entries", EntriesJson(*library_)}});
    std::cout << sentence << (options_.consent.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
  }

 private:
  const LibraryOptions& options_;
  Printer printer_;
  Sheet sheet_;
  TerminalView view_;
  SettingsLibraryPtr library_;
};

std::string Quoted(std::u16string_view text) {
  return '"' + Printable(text) + '"';
}

void List(const LibraryOptions& options) {
  Session session(options, LibraryLoad::kHeads, false);
  if (options.json)
    return PrintJson("library.list", {{"limit", kLibraryCapacity}, {"entries", EntriesJson(session.library())}});
  PrintEntries(session.library());
}

Json DifferencesJson(const std::vector<Setting>& settings, const std::vector<Setting>& now) {
  Json rows = Json::array();
  for (size_t i = 0; i < settings.size(); ++i) {
    if (settings[i].value == now[i].value) continue;
    rows.push_back({{"key", settings[i].key},
                    {"label", settings[i].label},
                    {"value", settings[i].value},
                    {"valueLabel", settings[i].ValueText(settings[i].value)},
                    {"now", now[i].value},
                    {"nowLabel", now[i].ValueText(now[i].value)}});
  }
  return rows;
}

void Show(const LibraryOptions& options) {
  Session session(options, LibraryLoad::kSettings, false);
  const int place = session.Place();
  const LibraryEntry& entry = *session.library().At(place);
  const Catalogue catalogue(ReadLocaleCountry());
  const std::vector<Setting> settings = SettingsOf(*entry.state, catalogue);
  const std::vector<NamedList> lists = ListsOf(*entry.state);
  const std::vector<Setting> now = SettingsOf(session.sheet().ui(), catalogue);
  const std::vector<NamedList> lists_now = ListsOf(session.sheet().ui());
  if (options.json) {
    Json answer = {
        {"entry", EntryJson(entry, place)}, {"lists", ListsJson(lists)}, {"settings", SettingsJson(settings)}};
    if (options.diff) answer["differences"] = DifferencesJson(settings, now);
    return PrintJson("library.show", answer);
  }
  PrintEntryHead(entry);
  if (options.diff) {
    const bool settings_differ = PrintDifferences(settings, now);
    if (!PrintListDifferences(lists, lists_now) && !settings_differ)
      std::cout << "The current settings are the same.\n";
    return;
  }
  if (options.list) {
    PrintAll(settings);
  } else {
    Sheet fresh(session.printer(), options.printer, {}, SheetKind::kDocument, true);
    fresh.Open(false);
    PrintChanged(settings, SettingsOf(fresh.ui(), catalogue));
  }
  PrintLists(lists);
}

fs::path SaveFolder(const LibraryOptions& options) {
  if (!options.folder.empty()) return fs::absolute(options.folder).lexically_normal();
  const Printer printer(options.printer);
  const std::u16string last = ReadLastFolder(PrinterName(printer.handle()), LastFolder::kSaved);
  if (!last.empty()) return platform::ToUtf8(last);
  const fs::path documents = store::DocumentsPath();
  std::error_code error;
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
  Session session(options, LibraryLoad::kHeads, true);
  SettingsLibrary& library = session.library();
  const UiStatePtr prepared = PrepareForSaving(session.sheet().ui(), session.sheet().resources(), session.view());
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
  Session session(options, LibraryLoad::kSettings, false);
  SettingsLibrary& library = session.library();
  if (!RegisterSettingsFile(library, platform::FromUtf8(file.native()))) session.Fail("the file can't be registered");
  session.PrintSayings();
  session.Answer("library.register", "Registered " + Quoted(library.At(library.count - 1)->displayName) + '.');
}

void Rename(const LibraryOptions& options) {
  Session session(options, LibraryLoad::kSettings, false);
  const int place = session.Place();
  const std::u16string old = session.library().At(place)->displayName;
  const std::u16string name = platform::FromUtf8(options.name);
  if (!RenameSettings(session.library(), place, name)) session.Fail("the settings can't be renamed");
  session.Answer("library.rename", "Renamed " + Quoted(old) + " to " + Quoted(name) + '.');
}

void Comment(const LibraryOptions& options) {
  CheckComment(options.text);
  Session session(options, LibraryLoad::kSettings, false);
  SettingsLibrary& library = session.library();
  const int place = session.Place();
  const std::u16string& name = library.At(place)->displayName;
  if (!LibrarySetComment(library, place, platform::FromUtf8(options.text))) {
    throw Failure(kNotPermitted, Quoted(name) + " can't be changed: it is " + KindOfEntry(*library.At(place)) +
                                     ", or the comment with its line ends has more than 512 characters");
  }
  if (!LibrarySaveIndex(library)) session.Fail("the comment can't be saved");
  session.Answer("library.comment", "The comment of " + Quoted(name) + " is set.");
}

void Move(const LibraryOptions& options) {
  Session session(options, LibraryLoad::kHeads, false);
  SettingsLibrary& library = session.library();
  const int place = session.Place();
  const std::u16string name = library.At(place)->displayName;
  const bool up = options.direction == "up";
  if (!LibraryMove(library, place, up ? LibraryDirection::kUp : LibraryDirection::kDown))
    throw Failure(kRefused, Quoted(name) + " is the " + (up ? "first" : "last") + " already");
  if (!LibrarySaveIndex(library)) session.Fail("the order can't be saved");
  const int now = up ? place : place + 2;
  session.Answer("library.move", Quoted(name) + " is number " + std::to_string(now) + " now.");
}

void Remove(const LibraryOptions& options) {
  Session session(options, LibraryLoad::kHeads, false);
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
};
constexpr PartName kPartNames[] = {
    {"size", kRecallSize},        {"user-papers", kRecallUserPapers}, {"watermarks", kRecallWatermarks},
    {"per-page", kRecallPerPage}, {"paper-types", kRecallPaperTypes}, {"fax-cover", kRecallFaxCover},
    {"forms", kRecallForms}};

constexpr char kPartsText[] = "size, user-papers, watermarks, per-page, paper-types, fax-cover, forms";

uint8_t PartsOf(const LibraryOptions& options) {
  if (!options.only) return kDefaultRecallParts;
  uint8_t parts = 0;
  std::istringstream words(*options.only);
  for (std::string word; std::getline(words, word, ',');) {
    const auto known = std::ranges::find(kPartNames, word, &PartName::name);
    if (known == std::end(kPartNames))
      throw Failure(kUsage, "--only doesn't know \"" + Printable(word) + "\"; it knows " + kPartsText);
    parts |= known->part;
  }
  return parts;
}

void AnswerRecall(const LibraryOptions& options, Session& session, const RunRecord& run, uint8_t parts, int place) {
  const bool applied = !options.consent.dry_run;
  const LibraryEntry& entry = *session.library().At(place);
  if (!options.json) {
    if (options.out == "-") return;
    std::cout << (applied ? "Recalled " : "Would recall ") << Quoted(entry.displayName) << ".\n";
    if (!applied) std::cout << "Nothing was changed (--dry-run).\n";
    return;
  }
  Json names = Json::array();
  for (const PartName& known : kPartNames) {
    if ((parts & known.part) != 0) names.push_back(known.name);
  }
  const Catalogue catalogue(ReadLocaleCountry());
  const std::string place_of_record = !options.out.empty() ? options.out : session.sheet().PlaceOfRecord();
  PrintJson("library.recall", {{"applied", applied},
                               {"record", applied ? Json(place_of_record) : Json(nullptr)},
                               {"entry", EntryJson(entry, place)},
                               {"parts", names},
                               {"recall", RunJson(run)},
                               {"settings", SettingsJson(SettingsOf(session.sheet().ui(), catalogue))}});
}

void Recall(const LibraryOptions& options) {
  if (options.out == "-" && options.json)
    throw Failure(kUsage, "the record goes to standard output; leave --json out or name a file");
  const uint8_t parts = PartsOf(options);
  Session session(options, LibraryLoad::kSettings, true);
  Sheet& sheet = session.sheet();
  const int place = session.Place();
  TerminalView view(options.consent.consent(), options.json || options.out == "-");
  if (!options.json) engine::ShowDeferredReport(sheet.resolver(), &view);
  view.TakeReports();
  RunRecord run;
  engine::ResolveOutcome outcome;
  if (!RecallSettings(sheet.resolver(), &view, session.library(), place, parts, &outcome))
    throw Failure(kFailed, "the settings can't be read");
  run.Take(outcome, sheet.resolver(), view);
  if (!outcome.applied)
    throw Failure(kRefused, "the settings can't be made to fit the other settings; nothing was changed");
  if (!options.consent.dry_run) {
    sheet.Commit(&view);
    const Bytes record = sheet.Record();
    sheet.KeepLists();
    options.out.empty() ? sheet.Keep(record) : WriteRecord(options.out, record);
  }
  AnswerRecall(options, session, run, parts, place);
}

}  // namespace

void AddLibraryCommands(CLI::App& app) {
  const auto options = std::make_shared<LibraryOptions>();
  CLI::App* group = AddCommand(app, "library", "Settings saved under a name: list, save, recall, keep in order");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const LibraryOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer whose library is meant")->required();
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
    command->add_option("--in", options->in, "Record to work on instead of your own of this printer (- for stdin)");
    return command;
  };

  add("list", "List the saved settings", List);

  CLI::App* show = with_in(with_entry(add("show", "Show what saved settings hold", Show)));
  show->add_flag("--diff", options->diff, "Show only what differs from the current settings");
  show->add_flag("-l,--list", options->list, "List every setting with what it can be");

  CLI::App* save = with_in(add("save", "Save the current settings under a name", Save));
  save->add_option("NAME", options->name, "Name of the new settings")->required();
  save->add_option("--comment", options->text, "Comment, up to 512 characters");
  save->add_option("--folder", options->folder, "Folder of the file; where the last one was saved if left out");

  CLI::App* recall = with_in(with_entry(add("recall", "Make saved settings the current ones", Recall)));
  recall->add_option("--out", options->out, "Where the resulting record goes (- for standard output)");
  recall->add_option("--only", options->only,
                     std::string("What to recall besides the ordinary settings, with commas between: ") + kPartsText +
                         "; all but size and paper-types if left out");

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
  with_entry(add("remove", "Take settings off the list; their file stays", Remove));
}

}  // namespace heron::cli
