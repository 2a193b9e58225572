// Entries of the settings library as text and JSON (library_text.h).

#include "library_text.h"

#include <iostream>

#include "platform/api/text.h"
#include "presets/fold_case.h"

namespace heron::cli {
namespace {

constexpr size_t kNameWidth = 32;
constexpr size_t kLabelWidth = 20;

template <size_t N>
std::string FieldText(const char16_t (&field)[N]) {
  const std::u16string_view text(field, N);
  return Printable(text.substr(0, text.find(u'\0')));
}

std::string Millimetres(uint32_t thou) {
  // 64 bits: a size from a file may be any 32-bit number.
  const uint64_t tenths = (uint64_t{thou} * 254 + 500) / 1000;
  return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10);
}

NamedList Watermarks(const WatermarkStore& store) {
  NamedList list{"Watermarks", {}};
  // The count comes from a file and may exceed the list.
  for (int i = 0; i < std::min<int>(store.wMarkListNum, kWatermarkCount); ++i) {
    if (store.entries[i].text[0] != 0) list.names.push_back(FieldText(store.entries[i].text));
  }
  return list;
}

NamedList PageLists(const PageListStore& store) {
  NamedList list{"Per-page lists", {}};
  for (const PageList& pages : store.lists) {
    if (pages.pageCount != 0) list.names.push_back(FieldText(pages.name) + ": " + std::to_string(pages.pageCount));
  }
  return list;
}

NamedList Forms(const OverlayStore& store) {
  NamedList list{"Forms", {}};
  for (int i = 0; i < std::min<int>(store.formListNum, kFormCount); ++i) {
    list.names.push_back(FieldText(store.forms[i]));
  }
  return list;
}

NamedList UserPapers(const UserPaperStore& store) {
  NamedList list{"User papers", {}};
  for (const CustomPaperEntry& paper : store) {
    list.names.push_back(FieldText(paper.name) + ": " + Millimetres(paper.width) + " x " + Millimetres(paper.height) +
                         " mm");
  }
  return list;
}

void PrintList(const NamedList& list) {
  const char* label = list.label.c_str();
  for (const std::string& name : list.names) {
    std::cout << "  " << Padded(label, kLabelWidth) << ' ' << name << '\n';
    label = "";
  }
  if (list.names.empty()) std::cout << "  " << Padded(label, kLabelWidth) << " none\n";
}

std::string VersionText(const DriverIdentity& identity) {
  return Printable(identity.version) + ", " + Printable(identity.language) + ", " + Printable(identity.destination);
}

}  // namespace

std::string KindOfEntry(const LibraryEntry& entry) {
  switch (entry.identity.attributes) {
    case kStandardEntry:
      return "standard";
    case kProtectedEntry:
      return "write-protected";
    case kReplaceableEntry:
      return "replaceable";
    default:
      return "own";
  }
}

void PrintEntries(const SettingsLibrary& library, const std::vector<int>& places) {
  for (const int place : places) {
    const LibraryEntry& entry = *library.At(place);
    const std::string number = std::to_string(place + 1);
    std::cout << std::string(number.size() < 2 ? 1 : 0, ' ') << number << "  "
              << Padded(Printable(entry.displayName), kNameWidth) << ' '
              << Padded(entry.isAway ? "not reachable" : KindOfEntry(entry), 15) << ' '
              << Printable(entry.location.Path()) << '\n';
  }
  if (places.empty())
    std::cout << (library.count == 0 ? "The library holds no settings.\n" : "No settings hold this text.\n");
}

Json EntryJson(const LibraryEntry& entry, int place) {
  return {{"place", place + 1},
          {"name", platform::ToUtf8(entry.displayName)},
          {"kind", KindOfEntry(entry)},
          {"attributes", entry.identity.attributes},
          {"reachable", !entry.isAway},
          {"file", platform::ToUtf8(entry.location.Path())},
          {"comment", platform::ToUtf8(entry.comment)},
          {"driver",
           {{"model", platform::ToUtf8(entry.identity.model)},
            {"version", platform::ToUtf8(entry.identity.version)},
            {"language", platform::ToUtf8(entry.identity.language)},
            {"destination", platform::ToUtf8(entry.identity.destination)}}}};
}

Json EntriesJson(const SettingsLibrary& library) {
  Json rows = Json::array();
  for (int place = 0; place < library.count; ++place) rows.push_back(EntryJson(*library.At(place), place));
  return rows;
}

int PlaceOfEntry(const SettingsLibrary& library, const std::string& wanted) {
  const std::u16string folded = platform::FromUtf8(wanted);
  std::vector<std::string> names;
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry& entry = *library.At(place);
    // Names win over numbers, so that an entry called "2" can be named.
    if (SameFolded(entry.displayName, folded)) return place;
    names.push_back(platform::ToUtf8(entry.displayName));
  }
  for (int place = 0; place < library.count; ++place) {
    if (std::to_string(place + 1) == wanted) return place;
  }
  std::string hint = DidYouMean(wanted, names);
  if (hint.empty()) hint = "`heron library list` names all";
  throw Failure(kNotFound, "the library has no settings \"" + Printable(wanted) + "\"; " + hint);
}

void PrintEntryHead(const LibraryEntry& entry) {
  const auto line = [](const char* label, const std::string& text) { std::cout << Padded(label, 9) << text << '\n'; };
  std::cout << Heading(Printable(entry.displayName)) << '\n';
  line("File", Printable(entry.location.Path()) + " (" + KindOfEntry(entry) + ")");
  line("Driver", VersionText(entry.identity));
  if (!entry.comment.empty()) line("Comment", PrintableLines(entry.comment));
  std::cout << '\n';
}

std::vector<NamedList> ListsOf(const UiState& ui) {
  std::vector<NamedList> lists;
  if (ui.stores.watermarks != nullptr) lists.push_back(Watermarks(*ui.stores.watermarks));
  if (ui.stores.pageLists != nullptr) lists.push_back(PageLists(*ui.stores.pageLists));
  if (ui.stores.overlays != nullptr) lists.push_back(Forms(*ui.stores.overlays));
  if (ui.stores.userPapers != nullptr) lists.push_back(UserPapers(*ui.stores.userPapers));
  return lists;
}

void PrintLists(const std::vector<NamedList>& lists) {
  std::cout << '\n' << Heading("Lists") << '\n';
  for (const NamedList& list : lists) PrintList(list);
}

bool PrintListDifferences(const std::vector<NamedList>& lists, const std::vector<NamedList>& now) {
  bool differs = false;
  for (size_t i = 0; i < lists.size(); ++i) {
    if (lists[i].names == now[i].names) continue;
    if (!std::exchange(differs, true)) std::cout << '\n' << Heading("Lists that differ") << '\n';
    PrintList(lists[i]);
  }
  return differs;
}

Json ListsJson(const std::vector<NamedList>& lists) {
  Json json = Json::object();
  for (const NamedList& list : lists) json[list.label] = list.names;
  return json;
}

}  // namespace heron::cli
