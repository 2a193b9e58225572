// `heron library export` and `default`: settings for other users, and for printers that are added later.

#include <filesystem>
#include <iostream>

#include "library_session.h"
#include "platform/api/text.h"
#include "presets/recall.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;

std::string StartFileText() {
  return Printable(ReadStartFile());
}

Json DefaultJson() {
  const std::u16string file = ReadStartFile();
  return {{"file", file.empty() ? Json(nullptr) : Json(platform::ToUtf8(file))}};
}

void Choose(const LibraryOptions& options, const std::u16string& path, const std::string& sentence) {
  if (!options.consent.dry_run && !WriteStartFile(path)) FailStore("keep the choice");
  if (options.json) return PrintJson("library.default", DefaultJson());
  std::cout << sentence << (options.consent.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
}

void ShowDefault(const LibraryOptions& options) {
  const Printer printer(options.printer);  // a name that doesn't exist is told here too
  if (options.json) return PrintJson("library.default", DefaultJson());
  const std::string file = StartFileText();
  std::cout << (file.empty() ? "New printers start with their defaults.\n"
                             : "New printers start from \"" + file + "\".\n");
}

/// Adds the file to the new queue's library, if the queue hasn't got it, and recalls all of it.
bool TryStart(const LibraryOptions& options, const FileLocation& file) {
  LibrarySession session(options, LibraryLoad::kSettings, true);
  SettingsLibrary& library = session.library();
  if (PlaceOfFile(library, file) < 0 && !RegisterSettingsFile(library, file.Path()))
    session.Fail("the file \"" + Printable(file.Path()) + "\" can't be registered");
  SettingsSession& opened = session.opened();
  engine::ResolveOutcome outcome;
  if (!RecallSettings(opened.resolver(), &session.view(), library, PlaceOfFile(library, file), kAllRecallParts,
                      &outcome) ||
      !outcome.applied)
    session.Fail("its settings can't be taken over");
  opened.Commit(&session.view());
  session.view().TakeReports();
  return opened.Keep(opened.Record(), SettingsSession::Lists::kWrite);
}

}  // namespace

void ExportEntry(const LibraryOptions& options) {
  const fs::path file = fs::absolute(options.file).lexically_normal();
  LibrarySession session(options, LibraryLoad::kHeads, false);
  const int place = session.PlaceToRead();
  const std::u16string name = session.library().At(place)->displayName;
  if (!ExportSettings(session.library(), place, platform::FromUtf8(file.native())))
    session.Fail("the settings can't be written to \"" + Printable(file.native()) + '"');
  if (options.json) {
    return PrintJson("library.export", {{"applied", !options.consent.dry_run}, {"file", file.native()}});
  }
  std::cout << "Copied " << Quoted(name) << " to \"" << Printable(file.native()) << "\"; "
            << "`heron library register` adds it to a list."
            << (options.consent.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
}

void DefaultEntry(const LibraryOptions& options) {
  if (options.none && !options.entry.empty()) throw Failure(kUsage, "give settings or --none, not both");
  if (options.none) return Choose(options, {}, "New printers start with their defaults.");
  if (options.entry.empty()) return ShowDefault(options);
  LibrarySession session(options, LibraryLoad::kHeads, false);
  const LibraryEntry& entry = *session.library().At(session.PlaceToRead());
  Choose(options, entry.location.Path(), "New printers start from " + Quoted(entry.displayName) + '.');
}

void StartFromDefault(const std::string& printer) {
  const std::u16string path = ReadStartFile();
  if (path.empty()) return;
  LibraryOptions options;
  options.printer = printer;
  options.consent.no = true;
  try {
    UntilKept([&] { return TryStart(options, LocationOf(path)); });
    std::cerr << "heron: the printer \"" << Printable(printer) << "\" starts from \"" << Printable(path) << "\"\n";
  } catch (const Failure& failure) {
    std::cerr << "heron: the printer \"" << Printable(printer)
              << "\" starts with its defaults and not from the chosen settings: " << failure.what()
              << "; `heron library default` chooses others\n";
  }
}

}  // namespace heron::cli
