// `heron fax recipients`: the recipients in the user's own working record of a printer.
//
// Each change is committed at once, as an Apply of the fax page does.

#include <CLI/CLI.hpp>
#include <cstring>
#include <iostream>
#include <memory>

#include "fax_commands.h"
#include "platform/api/text.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

using pages::Added;
using pages::NewRecipient;
using pages::RecipientField;

constexpr size_t kLargestList = size_t{1} << 20;

struct RecipientOptions {
  std::string printer;
  std::string number;
  std::string name, company, department;
  std::string file;
  std::string column;
  bool ecm = false, overseas = false, v34 = false;
  bool descending = false;
  bool json = false;
};

constexpr const char* kColumns[pages::kRecipientFields] = {"name", "number",   "company", "department",
                                                           "ecm",  "overseas", "v34"};

std::string Quoted(std::u16string_view text) {
  return '"' + Printable(text) + '"';
}

/// A file keeps a text in the system's code page; what it would lose is refused, not dropped.
bool SurvivesFile(const RecipientRow& row) {
  AddressRow stored;
  RecipientRow back;
  EncodeRow(row, &stored);
  DecodeRow(stored, &back);
  return std::memcmp(&row, &back, sizeof row) == 0;
}

std::string WhyRefused(Added why, std::u16string_view number) {
  switch (why) {
    case Added::kFull:
      return "the list is full: a fax has at most 100 recipients";
    case Added::kEmpty:
      return "a recipient needs a fax number";
    case Added::kBadSign:
      return Quoted(number) + " isn't a fax number: use digits and the signs # * - P T only";
    case Added::kRepeated:
      return "the fax number " + Quoted(number) + " is in the list already";
    default:
      return "a text of the recipient " + Quoted(number) +
             " is too long for its 44 bytes, or has characters that the system's code page lacks";
  }
}

int CodeOf(Added why) {
  return why == Added::kEmpty || why == Added::kBadSign ? kUsage : kRefused;
}

Json RowsJson(const RecipientTable& table) {
  Json rows = Json::array();
  for (const RecipientRow& row : std::span(table.rows, table.count)) {
    Json object = Json::object();
    for (size_t i = 0; i < 4; ++i)
      object[kColumns[i]] = platform::ToUtf8(pages::CellText(row, static_cast<RecipientField>(i)));
    object["ecm"] = row.ecm != 0;
    object["overseas"] = row.overseas != 0;
    object["v34"] = row.v34 != 0;
    rows.push_back(std::move(object));
  }
  return rows;
}

void PrintTable(const RecipientTable& table) {
  constexpr size_t kNumberWidth = 20, kNameWidth = 24;
  if (table.count == 0) {
    std::cout << "No recipients. `heron fax recipients add -p NAME -- NUMBER` adds one.\n";
    return;
  }
  for (const RecipientRow& row : std::span(table.rows, table.count)) {
    const auto cell = [&row](RecipientField field) { return Printable(pages::CellText(row, field)); };
    std::string line = Padded(cell(RecipientField::kNumber), kNumberWidth) + ' ';
    line += Padded(cell(RecipientField::kName), kNameWidth);
    for (const RecipientField field : {RecipientField::kCompany, RecipientField::kDepartment})
      if (!cell(field).empty()) line += "  " + cell(field);
    if (row.ecm != 0) line += "  ECM";
    if (row.overseas != 0) line += "  overseas";
    if (row.v34 != 0) line += "  V.34";
    line.erase(line.find_last_not_of(' ') + 1);
    std::cout << line << '\n';
  }
}

void Answer(const RecipientOptions& options, const RecipientTable& table) {
  if (options.json)
    PrintJson("fax.recipients", {{"recipients", RowsJson(table)}});
  else
    PrintTable(table);
}

void List(const RecipientOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  const auto table = std::make_unique<RecipientTable>();
  LoadRecipients(opened.ui(), table.get());
  Answer(options, *table);
}

/// Makes `change` on the recipients as they are stored now, until no other program has changed them meanwhile.
void Change(const RecipientOptions& options, const std::function<void(RecipientTable&)>& change) {
  Printer printer(options.printer);
  const auto table = std::make_unique<RecipientTable>();
  std::vector<ShownReport> reports;
  UntilKept([&] {
    SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
    opened.Open(true);
    LoadRecipients(opened.ui(), table.get());
    change(*table);
    StoreRecipients(opened.ui(), *table, opened.resources());
    const std::vector<pages::CoverNotice> notices = pages::AlignCover(opened.ui());
    TerminalView view(Consent::kNo, true);
    for (const pages::CoverNotice notice : notices)
      view.Show({pages::CoverCaption(), pages::CoverNoticeText(notice), false});
    opened.Commit(&view);
    reports = view.TakeReports();
    return opened.Keep(opened.Record());
  });
  for (const ShownReport& report : reports) PrintReport(std::cerr, report);
  Answer(options, *table);
}

NewRecipient RecipientOf(const RecipientOptions& options) {
  return {.name = platform::FromUtf8(options.name),
          .number = platform::FromUtf8(options.number),
          .company = platform::FromUtf8(options.company),
          .department = platform::FromUtf8(options.department),
          .ecm = options.ecm,
          .overseas = options.overseas,
          .v34 = options.v34};
}

/// All lines or none; every one that is refused is named.
void AddFile(RecipientTable& table, const std::string& text, const RecipientOptions& options) {
  const uint32_t before = table.count;
  const auto refused = pages::AddRecipientLines(table, platform::FromUtf8(text), RecipientOf(options));
  for (uint32_t i = before; refused.empty() && i < table.count; ++i)
    if (!SurvivesFile(table.rows[i])) {
      throw Failure(kRefused, WhyRefused(Added::kTooLong, pages::CellText(table.rows[i], RecipientField::kNumber)) +
                                  "; nothing was added");
    }
  if (refused.empty()) return;
  std::string lines;
  for (const pages::RefusedLine& line : refused)
    lines += "\n  line " + std::to_string(line.line) + ": " + WhyRefused(line.why, line.number);
  throw Failure(CodeOf(refused.front().why), "nothing was added, since these lines can't be:" + lines);
}

void Add(const RecipientOptions& options) {
  if (options.number.empty() == options.file.empty())
    throw Failure(kUsage, "give one fax number, or a table of names and numbers with --from");
  if (options.file.empty()) return Change(options, [&](auto& table) { AddOrThrow(table, RecipientOf(options)); });
  const std::string text = ReadTextFile(options.file, kLargestList);
  Change(options, [&](RecipientTable& table) { AddFile(table, text, options); });
}

void Remove(const RecipientOptions& options) {
  Change(options, [&](RecipientTable& table) {
    const uint32_t row = pages::FindRecipient(table, platform::FromUtf8(options.number));
    if (row >= table.count)
      throw Failure(kNotFound, "there is no recipient with the fax number \"" + Printable(options.number) + '"');
    pages::RemoveRecipient(table, row);
  });
}

void Sort(const RecipientOptions& options) {
  const auto column = std::ranges::find(kColumns, options.column);
  const auto field = static_cast<RecipientField>(column - std::begin(kColumns));
  Change(options, [&](RecipientTable& table) { pages::SortRecipients(table, field, !options.descending); });
}

void Clear(const RecipientOptions& options) {
  Change(options, [](RecipientTable& table) { table = {}; });
}

}  // namespace

NewRecipient ParseRecipient(const std::string& text) {
  const size_t equals = text.find('=');
  NewRecipient recipient;
  recipient.number = platform::FromUtf8(text.substr(0, equals));
  if (equals != std::string::npos) recipient.name = platform::FromUtf8(text.substr(equals + 1));
  return recipient;
}

void AddOrThrow(RecipientTable& table, const NewRecipient& recipient) {
  const Added result = pages::AddRecipient(table, recipient);
  const bool kept = result != Added::kDone || SurvivesFile(table.rows[table.count - 1]);
  const Added why = kept ? result : Added::kTooLong;
  if (why != Added::kDone) throw Failure(CodeOf(why), WhyRefused(why, recipient.number));
}

void AddRecipientCommands(CLI::App& fax) {
  const auto options = std::make_shared<RecipientOptions>();
  CLI::App* group = AddCommand(fax, "recipients", "List and change the recipients of your faxes");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const RecipientOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer that sends the faxes")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    command->callback([options, run] { run(*options); });
    return command;
  };
  add("list", "List the recipients", List);
  CLI::App* adds = add("add", "Add a recipient, or all of a table", Add);
  adds->add_option("--name", options->name, "Name of the recipient");
  adds->add_option("--company", options->company, "Company of the recipient");
  adds->add_option("--department", options->department, "Department of the recipient");
  adds->add_flag("--ecm", options->ecm, "Send with error correction (ECM)");
  adds->add_flag("--overseas", options->overseas, "Send in overseas mode");
  adds->add_flag("--v34", options->v34, "Send with V.34, which includes error correction");
  adds->add_option("--from", options->file,
                   "Table of names and numbers, separated by a tab, a semicolon or a comma (- for standard input)");
  adds->add_option("NUMBER", options->number, "Fax number: digits and the signs # * - P T");
  add("remove", "Remove a recipient", Remove)->add_option("NUMBER", options->number, "The fax number")->required();
  CLI::App* sorts = add("sort", "Sort the recipients", Sort);
  sorts->add_option("COLUMN", options->column, "name, number, company, department, ecm, overseas or v34")
      ->required()
      ->check(CLI::IsMember(std::vector<std::string>(std::begin(kColumns), std::end(kColumns))));
  sorts->add_flag("--descending", options->descending, "Highest first");
  add("clear", "Remove all recipients", Clear);
}

}  // namespace heron::cli
