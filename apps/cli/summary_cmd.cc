// `heron summary`: what settings contain, as the library's windows list it.

#include <CLI/CLI.hpp>
#include <memory>

#include "library_session.h"
#include "library_text.h"
#include "summary_text.h"

namespace heron::cli {
namespace {

struct SummaryOptions {
  LibraryOptions library;
  std::string tab;
};

void Answer(const SummaryOptions& options, UiState& ui, const Json& entry) {
  const StringsInUse strings;
  std::optional<pages::SummaryTab> tab;
  if (!options.tab.empty()) tab = TabNamed(options.tab);
  if (!options.library.json) return PrintSummary(ui, tab);
  Json answer = Json::object();
  if (!entry.is_null()) answer["entry"] = entry;
  answer["tabs"] = SummaryJson(ui, tab);
  PrintJson("summary", answer);
}

void ShowCurrent(const SummaryOptions& options) {
  Printer printer(options.library.printer);
  SettingsSession opened(printer, options.library.printer, options.library.in, SettingsKind::kDocument);
  opened.Open(false);
  Answer(options, *opened.engine().ui, nullptr);
}

void ShowSummary(const SummaryOptions& options) {
  if (options.library.entry.empty()) return ShowCurrent(options);
  LibrarySession session(options.library, LibraryLoad::kSettings, false);
  const int place = session.PlaceToRead();
  const LibraryEntry& entry = *session.library().At(place);
  const pages::ShownPapers papers(*entry.state, session.opened().ui());
  Answer(options, *entry.state, EntryJson(entry, place));
}

}  // namespace

void AddSummaryCommand(CLI::App& app) {
  const auto options = std::make_shared<SummaryOptions>();
  CLI::App* command = AddCommand(app, "summary", "List what the current or saved settings contain");
  LibraryOptions& library = options->library;
  library.consent.dry_run = true;  // it only looks
  command->add_option("-p,--printer", library.printer, "Printer whose settings to list")->required();
  command->add_option("--in", library.in, "Record to list instead of your own for this printer (- for standard input)");
  command->add_option("--entry", library.entry, "Saved settings to list, by name or number");
  command->add_option("--tab", options->tab,
                      "One tab alone: paper, per-page, special, overlay, watermark, quality, font or fax");
  command->add_flag("--json", library.json, "Answer as JSON");
  command->callback([options] { ShowSummary(*options); });
}

}  // namespace heron::cli
