// Parses lists of printers in JSON and CSV (printer_list.h).

#include "printer_list.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <set>

#include "common/command.h"

namespace heron::cli {

const char* const kPrinterListHelp =
    "A list of printers is JSON or CSV. JSON: what `heron printer list --json` prints, or an array of objects alone. "
    "CSV:\n"
    "a first line with the columns' names, then a line for each printer, fields in double quotes where they hold a "
    "comma.\n"
    "Columns: name (needed), server, port, driver, dataFile, identity; empty ones are as without a list. With its "
    "identity\n"
    "from such a list, a printer that is added again finds its users' settings. All are added, or none.\n"
    "\n"
    "  name,port\n"
    "  Office,ipp://10.0.0.7/ipp/print\n"
    "  \"Second floor, left\",LPT1:\n";

namespace {

constexpr size_t kLargestList = size_t{16} << 20;

struct Column {
  const char* name;
  std::string PrinterRow::*field;  ///< null: a column of `printer list` that a list can't set
};
constexpr Column kColumns[] = {
    {"name", &PrinterRow::name},     {"server", &PrinterRow::server},      {"port", &PrinterRow::port},
    {"driver", &PrinterRow::driver}, {"dataFile", &PrinterRow::data_file}, {"identity", &PrinterRow::identity},
    {"devModeSize", nullptr},
};

/// A place in the list, to name it in messages.
struct Source {
  std::string name;
  size_t row = 0;  ///< from 1; 0: the list as a whole
};

[[noreturn]] void Refuse(const Source& source, const std::string& why) {
  const std::string place = source.row == 0 ? "" : ", printer " + std::to_string(source.row);
  throw Failure(kFailed, "can't use the list " + source.name + place + ": " + why);
}

const Column& ColumnOf(const Source& source, const std::string& name) {
  const auto* const found = std::ranges::find_if(kColumns, [&](const Column& column) { return name == column.name; });
  if (found != std::end(kColumns)) return *found;
  std::vector<std::string> names;
  for (const Column& column : kColumns) names.emplace_back(column.name);
  const std::string hint = DidYouMean(name, names);
  Refuse(source, "it has no column \"" + Printable(name) + "\"; " +
                     (hint.empty() ? "`heron printer add --help` names them" : hint));
}

void Put(PrinterRow& row, const Column& column, const std::string& text) {
  if (column.field != nullptr && !text.empty()) row.*column.field = text;
}

PrinterRow RowFromJson(const Source& source, const Json& object) {
  if (!object.is_object()) Refuse(source, "it isn't an object");
  PrinterRow row;
  for (const auto& [name, value] : object.items()) {
    const Column& column = ColumnOf(source, name);
    if (column.field == nullptr) continue;
    if (!value.is_string()) Refuse(source, "\"" + name + "\" isn't a text");
    Put(row, column, value.get<std::string>());
  }
  return row;
}

std::vector<PrinterRow> FromJson(Source source, const std::string& text) {
  const Json document = Json::parse(text, nullptr, false);  // without exceptions, for our own message
  if (document.is_discarded()) Refuse(source, "it begins like JSON but isn't, or is cut short");
  const Json& rows = document.is_object() && document.contains("printers") ? document["printers"] : document;
  if (!rows.is_array()) Refuse(source, "it holds no array of printers");
  std::vector<PrinterRow> list;
  for (const Json& row : rows) {
    ++source.row;
    list.push_back(RowFromJson(source, row));
  }
  return list;
}

/// Cuts one record of CSV off `text`; nothing at its end. A quoted field may hold commas, line ends and doubled quotes.
std::optional<std::vector<std::string>> CutRecord(const Source& source, std::string_view& text) {
  if (text.empty()) return std::nullopt;
  std::vector<std::string> fields(1);
  bool quoted = false;
  size_t at = 0;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (quoted && c == '"' && at + 1 < text.size() && text[at + 1] == '"') {
      fields.back() += text[++at];
    } else if (c == '"' && (quoted || fields.back().empty())) {
      quoted = !quoted;
    } else if (!quoted && c == ',') {
      fields.emplace_back();
    } else if (!quoted && c == '\n') {
      break;
    } else if (quoted || c != '\r') {
      fields.back() += c;
    }
  }
  if (quoted) Refuse(source, "a double quote isn't closed");
  text.remove_prefix(std::min(at + 1, text.size()));
  return fields;
}

std::vector<PrinterRow> FromCsv(Source source, std::string_view text) {
  std::vector<const Column*> columns;
  for (const std::string& name : CutRecord(source, text).value_or(std::vector<std::string>()))
    columns.push_back(&ColumnOf(source, name));
  std::vector<PrinterRow> list;
  while (const auto fields = CutRecord(source, text)) {
    if (fields->size() == 1 && fields->front().empty()) continue;  // an empty line
    ++source.row;
    if (fields->size() > columns.size()) Refuse(source, "it has more fields than the first line has columns");
    PrinterRow row;
    for (size_t i = 0; i < fields->size(); ++i) Put(row, *columns[i], (*fields)[i]);
    list.push_back(std::move(row));
  }
  return list;
}

std::string ReadText(const Source& source, const std::string& path) {
  std::ifstream file;
  if (path != "-") file.open(path, std::ios::binary);
  std::istream& stream = path == "-" ? std::cin : file;
  if (!stream) {
    const int error = errno;
    throw Failure(error == ENOENT   ? kNotFound
                  : error == EACCES ? kNotPermitted
                                    : kFailed,
                  "can't read the list " + source.name + ": " + std::strerror(error));
  }
  std::string text(kLargestList + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<size_t>(stream.gcount()));
  if (stream.bad()) Refuse(source, "it can't be read to its end");
  if (text.size() > kLargestList) Refuse(source, "it is larger than 16 MiB");
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);  // what spreadsheets put before UTF-8
  return text;
}

}  // namespace

std::vector<PrinterRow> ReadPrinterList(const std::string& path) {
  Source source{path == "-" ? "from standard input" : '"' + Printable(path) + '"'};
  const std::string text = ReadText(source, path);
  const size_t first = text.find_first_not_of(" \t\r\n");
  const bool json = first != std::string::npos && (text[first] == '{' || text[first] == '[');
  std::vector<PrinterRow> list = json ? FromJson(source, text) : FromCsv(source, text);
  if (list.empty()) Refuse(source, "it names no printer");
  std::set<std::string> names;
  for (const PrinterRow& row : list) {
    ++source.row;
    if (row.name.empty()) Refuse(source, "it has no name");
    std::string folded = row.name;  // printers' names compare without regard to the case of ASCII letters
    std::ranges::transform(folded, folded.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (!names.insert(folded).second) Refuse(source, "there is another \"" + Printable(row.name) + "\" before it");
  }
  return list;
}

}  // namespace heron::cli
