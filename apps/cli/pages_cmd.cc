// `heron pages`: the ten lists of pages with settings of their own, and the pages at which chapters start.
//
// The lists are the user's; which of them is in use, and the chapter starts, belong to the user's own working record of
// the printer. Edits take the steps of the page and its row dialog (pages/page_rows.h).

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>

#include "catalog/strings.h"
#include "changes/reports.h"
#include "common/command.h"
#include "engine/page_list.h"
#include "engine/setting.h"
#include "generated/texts.h"
#include "pages/chapter_pages.h"
#include "pages/page_rows.h"
#include "pages/page_text.h"
#include "pages_text.h"
#include "platform/api/text.h"
#include "setting_names.h"
#include "settings_session.h"
#include "settings_way.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

using engine::PageTextField;
using engine::PerPageRowCheck;
using engine::Setting;

struct PagesOptions {
  std::string printer;
  std::string list;  ///< number or name
  std::optional<std::string> text;
  std::string word;  ///< a direction, a column or a name
  std::optional<std::string> type, tray;
  int row = 0;
  std::vector<int> rows;
  bool reverse = false;
  bool dry_run = false;
  bool json = false;
};

// -- arguments

[[noreturn]] void Refuse(int code, std::u16string_view text) {
  throw Failure(code, OneLine(text));
}

/// The text of page numbers, which breaks no syntax; a text that does is a wrong argument.
std::u16string PageTextOf(const std::string& argument, PageTextField field) {
  const bool is_row = field == PageTextField::kRow;
  const size_t most = is_row ? pages::kRowTextLength : pages::kChapterTextLength;
  const std::u16string text = platform::FromUtf8(argument);
  if (const auto error = engine::CheckPageText(text); error != engine::PageTextError::kNone)
    Refuse(kUsage, engine::PageTextErrorText(error, field));
  if (text.size() <= most) return text;
  throw Failure(kUsage, std::string(is_row ? "the pages of a row" : "the chapter starts") + " may have at most " +
                            std::to_string(most) + " characters; \"" + Printable(text) + "\" has " +
                            std::to_string(text.size()));
}

/// The place of a row whose number is an argument.
size_t PlaceOf(const UiState& ui, int row) {
  const size_t count = pages::WorkingRows(ui).size();
  if (row >= 1 && static_cast<size_t>(row) <= count) return static_cast<size_t>(row) - 1;
  throw Failure(kNotFound, "there is no row " + std::to_string(row) + "; the list has " +
                               (count == 0 ? "no rows" : std::to_string(count) + (count == 1 ? " row" : " rows")));
}

/// A list by its number or name.
uint16_t ListOf(const UiState& ui, const std::string& list) {
  uint16_t number = 0;
  const auto [end, error] = std::from_chars(list.data(), list.data() + list.size(), number);
  if (error == std::errc() && end == list.data() + list.size() && pages::ListNumbered(ui, number) != nullptr)
    return number;
  std::vector<std::string> names;
  for (uint16_t i = 1; i <= kPageListCount; ++i) {
    names.push_back(platform::ToUtf8(pages::NameOfList(*pages::ListNumbered(ui, i))));
    if (names.back() == list) return i;
  }
  std::string hint = DidYouMean(list, names);
  if (hint.empty()) hint = "give a name or a number from 1 to 10";
  throw Failure(kNotFound, "there is no per-page list \"" + Printable(list) + "\"; " + hint);
}

// -- sessions

void CheckStore(const UiState& ui) {
  if (ui.stores.pageLists == nullptr) throw std::bad_alloc();
}

/// Opens the user's settings, changes them, and stores record and lists; repeats all of it if another program was
/// quicker. `edit` returns what it did, as a sentence.
using Edit = std::function<std::string(SettingsSession& opened, std::vector<std::string>& remarks)>;

struct Edited {
  std::string sentence;
  std::vector<std::string> remarks;  ///< what the page would tell
};

void AnswerEdit(const PagesOptions& options, const UiState& ui, const Edited& edited, bool chapters) {
  for (const std::string& remark : edited.remarks) std::cerr << "heron: " << remark << '\n';
  if (!options.json) {
    std::cout << edited.sentence << (options.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
    return;
  }
  Json answer = {{"applied", !options.dry_run}, {"messages", edited.remarks}};
  answer.update(chapters ? ChaptersJson(ui) : PageListJson(ui));
  PrintJson(chapters ? "pages.chapters" : "pages.show", answer);
}

void RunEdit(const PagesOptions& options, bool chapters, const Edit& edit) {
  Printer printer(options.printer);
  UntilKept([&] {
    SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
    opened.Open(true);
    CheckStore(opened.ui());
    Edited edited;
    edited.sentence = edit(opened, edited.remarks);
    TerminalView view(Consent::kYes, true);
    opened.Commit(&view);
    engine::StoreWorkingList(*opened.engine().ui);
    for (const ShownReport& report : view.TakeReports()) edited.remarks.push_back(report.text);
    if (!options.dry_run && !opened.Keep(opened.Record(), SettingsSession::Lists::kWrite)) return false;
    AnswerEdit(options, opened.ui(), edited, chapters);
    return true;
  });
}

/// Rows can be edited only where the page would let them.
void CheckListInUse(SettingsSession& opened) {
  if (engine::IsControlAvailable(opened.engine(), engine::kPerPageListControl)) return;
  constexpr uint16_t kSwitch = engine::ControlId(u"InterSheet_Check");
  RequestedChange request{.text = "InterSheet_Check=1",
                          .parameter = engine::ParamIndexOfControl(engine::IndexOf(kSwitch)),
                          .control = kSwitch,
                          .value = 1};
  if (!IsOffered(opened.engine(), request))
    throw Failure(kRefused, WayText(opened.engine(), request, WayTo(opened, request)));
  throw Failure(kRefused, "the per-page list isn't in use; first turn it on: `heron settings -o InterSheet_Check=1`");
}

void TellConflicts(SettingsSession& opened, std::vector<std::string>& remarks) {
  if (engine::ValidatePerPageList(opened.engine(), engine::Conflicts::kNew) > 0)
    remarks.push_back(OneLine(GetUiString(text::kRowsInConflict)));
}

/// An edit of the rows of the list in use, checked before and after.
std::string EditRows(SettingsSession& opened, std::vector<std::string>& remarks,
                     const std::function<std::string()>& edit) {
  CheckListInUse(opened);
  engine::ValidatePerPageList(opened.engine(), engine::Conflicts::kAll);
  std::string sentence = edit();
  TellConflicts(opened, remarks);
  return sentence;
}

void RunRowEdit(const PagesOptions& options, const std::function<std::string(SettingsSession& opened)>& edit) {
  RunEdit(options, false, [&](SettingsSession& opened, std::vector<std::string>& remarks) {
    return EditRows(opened, remarks, [&] { return edit(opened); });
  });
}

// -- one row

RequestedChange RowRequest(SettingsSession& opened, const std::string& key, const std::string& value) {
  const Catalogue catalogue(ReadLocaleCountry());
  return ParseRequest(key + '=' + value, opened.engine(), catalogue);
}

/// Sets a field of the row settings to what was asked for, if the page would offer it.
void SetRowField(SettingsSession& opened, const RequestedChange& request) {
  engine::ComputeItemStatus(opened.engine(), request.control);
  if (!IsOffered(opened.engine(), request))
    throw Failure(kRefused, WayText(opened.engine(), request, WayTo(opened, request)));
  engine::SetControlValue(opened.engine(), request.control, request.value);
}

/// Brings the row into the row settings with the tray and type that were asked for. What had to be changed, without
/// what was asked for.
PerPageRowCheck FillRowSettings(const PagesOptions& options, SettingsSession& opened, pages::RowNumber row) {
  engine::Engine& engine = opened.engine();
  PerPageRowCheck repaired{pages::OpenRow(engine, row)};
  const auto asked = [&](PerPageRowCheck::Fields field) {
    repaired.failed = static_cast<uint8_t>(repaired.failed & ~field);
  };
  std::optional<RequestedChange> tray;
  if (options.tray) {
    SetRowField(opened, tray.emplace(RowRequest(opened, "lpInterSheetListTray", *options.tray)));
    repaired.failed |= pages::RepairRow(engine);
    asked(PerPageRowCheck::kTray);
  }
  if (options.type) {
    const RequestedChange type = RowRequest(opened, "lpInterSheetListPRNType", *options.type);
    SetRowField(opened, type);
    asked(PerPageRowCheck::kType);
    if (engine::CheckPerPageRow(engine, false).failed != 0) {
      const RequestedChange& culprit = tray ? *tray : type;
      throw Failure(kRefused, WayText(engine, culprit, WayTo(opened, culprit)));
    }
  }
  return repaired;
}

/// The first row besides `row` that has one of the pages and is of the same class.
std::string RowWithPage(const UiState& ui, const std::vector<uint16_t>& repeated, pages::RowNumber row, uint16_t type) {
  const std::span<const PageEntry> rows = pages::WorkingRows(ui);
  for (size_t i = 0; i < rows.size(); ++i) {
    if (pages::RowNumber(i) == row || (rows[i].type == 0) != (type == 0)) continue;
    const auto numbers = pages::ReadPageText(pages::PagesOfRow(rows[i]), pages::kMostPages).numbers;
    if (std::ranges::find(numbers, repeated.front()) != numbers.end())
      return " Row " + std::to_string(i + 1) + " has them already (" + PageRowText(rows[i]) + ").";
  }
  return {};
}

/// The normal form of the row's pages, which no other row of the list has.
std::u16string CheckedPages(const UiState& ui, std::u16string_view text, pages::RowNumber row) {
  const uint16_t type = Setting<u"lpInterSheetListPRNType">(ui);
  if (text.empty()) Refuse(kUsage, engine::PageTextErrorText(engine::PageTextError::kCharacter, PageTextField::kRow));
  const pages::RowPages checked = pages::CheckRowPages(ui, text, row, type);
  if (checked.error != engine::PageTextError::kNone)
    Refuse(kUsage, engine::PageTextErrorText(checked.error, PageTextField::kRow));
  if (checked.repeated.empty()) return checked.text;
  const std::string where = RowWithPage(ui, checked.repeated, row, type);
  throw Failure(where.empty() ? kUsage : kRefused, OneLine(engine::DuplicatePagesText(checked.repeated)) + where);
}

std::string WriteRow(const PagesOptions& options, SettingsSession& opened, pages::RowNumber row,
                     std::u16string_view text, std::vector<std::string>& remarks) {
  const PerPageRowCheck repaired = FillRowSettings(options, opened, row);
  const std::u16string pages_text = CheckedPages(opened.ui(), text, row);
  const size_t place = pages::StoreRow(opened.engine(), row, pages_text);
  if (place == pages::kMostRows) Refuse(kRefused, GetUiString(text::kPageListFull));
  if (const std::u16string notice = engine::RepairedRowText(opened.engine(), repaired); !notice.empty())
    remarks.push_back(OneLine(notice));
  return "Row " + std::to_string(place + 1) + (row ? " is now " : " is added: ") +
         PageRowText(pages::WorkingRows(opened.ui())[place]) + '.';
}

// -- commands

void ListLists(const PagesOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  CheckStore(opened.ui());
  if (options.json) return PrintJson("pages.list", PageListsJson(opened.ui()));
  PrintPageLists(opened.ui());
}

void ShowList(const PagesOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  CheckStore(opened.ui());
  if (!options.list.empty()) engine::LoadWorkingList(*opened.engine().ui, ListOf(opened.ui(), options.list));
  engine::ValidatePerPageList(opened.engine(), engine::Conflicts::kAll);
  if (options.json) return PrintJson("pages.show", PageListJson(opened.ui()));
  PrintPageList(opened.ui());
}

void Add(const PagesOptions& options) {
  RunEdit(options, false, [&](SettingsSession& opened, std::vector<std::string>& remarks) {
    const std::u16string pages_text = PageTextOf(*options.text, PageTextField::kRow);
    return EditRows(opened, remarks, [&] {
      if (pages::WorkingRows(opened.ui()).size() >= pages::kMostRows)
        Refuse(kRefused, GetUiString(text::kPageListFull));
      return WriteRow(options, opened, {}, pages_text, remarks);
    });
  });
}

void EditRow(const PagesOptions& options) {
  RunEdit(options, false, [&](SettingsSession& opened, std::vector<std::string>& remarks) {
    std::u16string pages_text;
    if (options.text) pages_text = PageTextOf(*options.text, PageTextField::kRow);
    return EditRows(opened, remarks, [&] {
      const size_t row = PlaceOf(opened.ui(), options.row);
      if (!options.text) pages_text = pages::PagesOfRow(pages::WorkingRows(opened.ui())[row]);
      return WriteRow(options, opened, row, pages_text, remarks);
    });
  });
}

void RemoveRows(const PagesOptions& options) {
  RunRowEdit(options, [&](SettingsSession& opened) {
    std::vector<size_t> places;
    for (const int row : options.rows) places.push_back(PlaceOf(opened.ui(), row));
    std::ranges::sort(places);
    places.erase(std::ranges::unique(places).begin(), places.end());
    pages::RemoveRows(opened.ui(), places);
    return places.size() == 1 ? "Row " + std::to_string(places.front() + 1) + " is removed."
                              : std::to_string(places.size()) + " rows are removed.";
  });
}

void MoveRow(const PagesOptions& options) {
  RunRowEdit(options, [&](SettingsSession& opened) {
    const size_t row = PlaceOf(opened.ui(), options.row);
    const bool up = options.word == "up";
    if (!pages::MoveRow(opened.ui(), row, up ? row - 1 : row + 1))
      throw Failure(kNotFound, "row " + std::to_string(row + 1) + " is the " + (up ? "first" : "last") + " already");
    return "Row " + std::to_string(row + 1) + " is row " + std::to_string(up ? row : row + 2) + " now.";
  });
}

struct ColumnName {
  std::string_view name, number;
  pages::RowColumn column;
};
constexpr ColumnName kColumns[] = {{"pages", "0", pages::RowColumn::kPages},
                                   {"type", "1", pages::RowColumn::kType},
                                   {"tray", "2", pages::RowColumn::kTray}};

void SortRows(const PagesOptions& options) {
  const auto column = std::ranges::find_if(
      kColumns, [&](const ColumnName& known) { return known.name == options.word || known.number == options.word; });
  if (column == std::end(kColumns))
    throw Failure(kUsage, "there is no column \"" + Printable(options.word) + "\"; sort by pages, type or tray");
  RunRowEdit(options, [&](SettingsSession& opened) {
    const bool moved = !std::ranges::is_sorted(pages::SortRows(opened.engine(), column->column, options.reverse));
    return std::string(moved ? "The rows are sorted by " : "The rows were sorted already by ") +
           std::string(column->name) + '.';
  });
}

void RenameList(const PagesOptions& options) {
  const std::u16string name = platform::FromUtf8(options.word);
  RunEdit(options, false, [&](SettingsSession& opened, std::vector<std::string>&) {
    const uint16_t number = ListOf(opened.ui(), options.list);
    switch (pages::FindNameFault(opened.ui(), number, name)) {
      case pages::NameFault::kEmpty:
        Refuse(kUsage, GetUiString(text::kEnterListName));
      case pages::NameFault::kTaken:
        Refuse(kRefused, GetUiString(text::kListNameTaken));
      case pages::NameFault::kTooLong:
        throw Failure(kUsage, "the name of a list may have at most 16 characters");
      case pages::NameFault::kLeadingBlank:
        throw Failure(kUsage, "the name of a list can't begin with a blank");
      case pages::NameFault::kNone:
        break;
    }
    pages::RenameList(opened.ui(), number, name);
    return "List " + std::to_string(number) + " is named \"" + Printable(name) + "\" now.";
  });
}

void ShowChapters(const PagesOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  if (options.json) return PrintJson("pages.chapters", ChaptersJson(opened.ui()));
  const std::u16string text = pages::ChapterText(opened.ui());
  if (text.empty()) {
    std::cout << "No chapter start pages are entered.\n";
    return;
  }
  const bool on = engine::IsOn<u"Chapter_Check">(opened.ui());
  std::cout << Printable(text) << (on ? "\n" : "  (chapters are off: `heron settings -o Chapter_Check=1`)\n");
}

std::string SetChapters(SettingsSession& opened, const pages::ChapterCheck& checked,
                        std::vector<std::string>& remarks) {
  pages::StoreChapters(opened.ui(), checked.pages);
  const bool on = engine::IsOn<u"Chapter_Check">(opened.ui());
  if (checked.pages.empty()) {
    // As when the page is left: chapters without a page are off.
    if (on) remarks.push_back(OneLine(GetUiString(text::kNoChapterPages)));
    Setting<u"Chapter_Check">(opened.ui()) = 0;
    return "The chapter starts are cleared.";
  }
  if (!on) remarks.push_back("chapters are off; turn them on: `heron settings -o Chapter_Check=1`");
  return "Chapters start on the pages " + Printable(pages::ChapterText(opened.ui())) + '.';
}

void Chapters(const PagesOptions& options) {
  if (!options.text) return ShowChapters(options);
  RunEdit(options, true, [&](SettingsSession& opened, std::vector<std::string>& remarks) {
    const pages::ChapterCheck checked = pages::CheckChapters(PageTextOf(*options.text, PageTextField::kChapters));
    if (checked.error != engine::PageTextError::kNone)
      Refuse(kUsage, engine::PageTextErrorText(checked.error, PageTextField::kChapters));
    if (!checked.repeated.empty()) Refuse(kUsage, engine::DuplicatePagesText(checked.repeated));
    return SetChapters(opened, checked, remarks);
  });
}

/// What a text means, without any settings.
void Explain(const PagesOptions& options) {
  const Printer printer(options.printer);
  RefreshDriverDirectory(printer.handle());
  const StringsInUse texts;
  const std::u16string text = platform::FromUtf8(*options.text);
  const engine::PageTextError error = engine::CheckPageText(text);
  std::vector<uint16_t> numbers(pages::kMostPages);
  const int count = error == engine::PageTextError::kNone ? engine::ParsePageText(text, numbers) : -1;
  numbers.resize(static_cast<size_t>(std::max(count, 0)));
  const std::string normal = platform::ToUtf8(pages::NormalPageText(numbers));
  if (options.json) {
    PrintJson("pages.explain", {{"code", static_cast<int>(error)},
                                {"numbers", count < 0 ? Json(nullptr) : Json(numbers)},
                                {"text", normal},
                                {"repeated", pages::RepeatedPages(numbers)}});
  }
  if (error != engine::PageTextError::kNone) Refuse(kUsage, engine::PageTextErrorText(error, PageTextField::kRow));
  if (options.json) return;
  if (count < 0) return void(std::cout << "More than 9999 pages.\n");
  std::cout << (normal.empty() ? "No pages" : normal + ", " + std::to_string(count) + (count == 1 ? " page" : " pages"))
            << '\n';
}

}  // namespace

void AddPagesCommands(CLI::App& app) {
  const auto options = std::make_shared<PagesOptions>();
  CLI::App* group = AddCommand(app, "pages", "Edit the lists of pages with settings of their own, and chapter starts");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const PagesOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer whose lists to use")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    command->callback([options, run] { run(*options); });
    return command;
  };
  const auto edits = [&](CLI::App* command) {
    command->add_flag("--dry-run", options->dry_run, "Report every consequence and change nothing");
    return command;
  };
  const auto with_fields = [&](CLI::App* command) {
    command->add_option("--type", options->type, "Print type, a number or a label");
    command->add_option("--tray", options->tray, "Paper tray, a number or a label");
    return edits(command);
  };
  const auto with_row = [&](CLI::App* command) {
    command->add_option("ROW", options->row, "Number of the row, from 1")->required();
    return command;
  };

  add("list", "List the ten per-page lists", ListLists);
  add("show", "Show the rows of a list", ShowList)
      ->add_option("LIST", options->list, "Number or name of the list (default: the one in use)");
  with_fields(add("add", "Add a row to the list in use", Add))
      ->add_option("PAGES", options->text, "Pages, for example 2,4,6-10")
      ->required();
  with_fields(with_row(add("edit", "Change a row", EditRow)))->add_option("--pages", options->text, "The row's pages");
  edits(add("remove", "Remove rows", RemoveRows))
      ->add_option("ROW", options->rows, "Numbers of the rows, from 1")
      ->required();
  edits(with_row(add("move", "Move a row by one place", MoveRow)))
      ->add_option("DIRECTION", options->word, "up or down")
      ->required()
      ->check(CLI::IsMember({"up", "down"}));
  CLI::App* sort = edits(add("sort", "Sort the rows", SortRows));
  sort->add_option("COLUMN", options->word, "pages, type or tray")->required();
  sort->add_flag("--reverse", options->reverse, "Sort in descending order");
  CLI::App* rename = edits(add("rename", "Give a list another name", RenameList));
  rename->add_option("LIST", options->list, "Number or name of the list")->required();
  rename->add_option("NAME", options->word, "The new name, up to 16 characters")->required();
  edits(add("chapters", "Show or set the pages at which chapters start", Chapters))
      ->add_option("PAGES", options->text, "The pages, for example 2,4,6-10; empty for none");
  add("explain", "Check a text of page numbers and show what it means", Explain)
      ->add_option("TEXT", options->text, "The text, for example 2,4,6-10")
      ->required();
}

}  // namespace heron::cli
