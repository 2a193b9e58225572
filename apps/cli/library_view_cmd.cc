// `heron library list` and `show`: what the library holds.
#include <algorithm>
#include <iostream>

#include "library_session.h"
#include "library_text.h"
#include "pages/summary_compare.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "summary_text.h"

namespace heron::cli {
namespace {

/// Places of the entries whose name, comment or contents hold the text, or of all.
std::vector<int> PlacesWith(SettingsLibrary& library, const std::string& find) {
  const std::u16string wanted = platform::FromUtf8(find);
  std::vector<int> places;
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry& entry = *library.At(place);
    if (ContainsFolded(entry.displayName, wanted) || ContainsFolded(entry.comment, wanted) ||
        (entry.state != nullptr && pages::SummaryMentions(*entry.state, wanted)))
      places.push_back(place);
  }
  return places;
}

/// Row by row, what the entry would change in the summary of the current settings.
Json RowDifferences(UiState& entry, UiState& now) {
  Json rows = Json::array();
  for (size_t tab = 0; tab < pages::kSummaryTabCount; ++tab) {
    const auto number = static_cast<pages::SummaryTab>(tab);
    for (const pages::ComparedRow& row :
         pages::CompareSummaries(pages::BuildSummary(entry, number), pages::BuildSummary(now, number))) {
      if (row.Differs()) rows.push_back({{"tab", tab}, {"entry", RowJson(row.shown)}, {"now", RowJson(row.now)}});
    }
  }
  return rows;
}

void ShowAsJson(const LibraryOptions& options, LibrarySession& session, int place) {
  const LibraryEntry& entry = *session.library().At(place);
  const Catalogue catalogue(ReadLocaleCountry());
  const std::vector<Setting> settings = SettingsOf(*entry.state, catalogue);
  UiState& now = *session.opened().engine().ui;
  Json answer = {{"entry", EntryJson(entry, place)},
                 {"lists", ListsJson(ListsOf(*entry.state))},
                 {"settings", SettingsJson(settings)}};
  {
    const pages::ShownPapers papers(*entry.state, now);
    answer["tabs"] = SummaryJson(*entry.state, {});
    if (options.diff) answer["rowDifferences"] = RowDifferences(*entry.state, now);
  }
  if (options.diff) answer["differences"] = DifferencesJson(settings, SettingsOf(now, catalogue));
  PrintJson("library.show", answer);
}

void ShowDifferences(LibrarySession& session, const LibraryEntry& entry) {
  const Catalogue catalogue(ReadLocaleCountry());
  const UiState& now = session.opened().ui();
  const bool settings_differ = PrintDifferences(SettingsOf(*entry.state, catalogue), SettingsOf(now, catalogue));
  if (!PrintListDifferences(ListsOf(*entry.state), ListsOf(now)) && !settings_differ)
    std::cout << "The current settings are the same.\n";
}

}  // namespace

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

void ListLibrary(const LibraryOptions& options) {
  LibrarySession session(options, options.find.empty() ? LibraryLoad::kHeads : LibraryLoad::kSettings, false);
  SettingsLibrary& library = session.library();
  const std::vector<int> places = PlacesWith(library, options.find);
  if (!options.json) return PrintEntries(library, places);
  Json entries = Json::array();
  for (const int place : places) entries.push_back(EntryJson(*library.At(place), place));
  PrintJson("library.list", {{"limit", kLibraryCapacity}, {"entries", entries}});
}

void ShowEntry(const LibraryOptions& options) {
  LibrarySession session(options, LibraryLoad::kSettings, false);
  const int place = session.PlaceToRead();
  if (options.json) return ShowAsJson(options, session, place);
  const LibraryEntry& entry = *session.library().At(place);
  PrintEntryHead(entry);
  if (options.diff) return ShowDifferences(session, entry);
  if (options.list) {
    PrintAll(SettingsOf(*entry.state, Catalogue(ReadLocaleCountry())));
    return PrintLists(ListsOf(*entry.state));
  }
  const pages::ShownPapers papers(*entry.state, session.opened().ui());
  PrintSummary(*entry.state, {});
}

}  // namespace heron::cli
