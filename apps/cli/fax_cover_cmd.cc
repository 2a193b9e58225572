// `heron fax cover`: texts and numbers of the fax cover sheet, which are the user's and the printer's.

#include <CLI/CLI.hpp>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <memory>

#include "fax_commands.h"
#include "forms/cover_layout.h"
#include "forms/cover_store.h"
#include "platform/api/text.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;

struct CoverOptions {
  std::string printer;
  std::vector<std::string> fields;
  bool json = false;
};

/// A text of the store: its characters, the terminator excluded.
struct TextField {
  const char* name;
  size_t offset;
  size_t limit;
};
struct NumberField {
  const char* name;
  uint32_t FaxCoverStore::*field;
  uint32_t minimum, maximum;
};

#define HERON_COVER_TEXT(name, field) \
  { name, offsetof(FaxCoverStore, field), sizeof(FaxCoverStore::field) / sizeof(char16_t) - 1 }
constexpr TextField kTexts[] = {
    HERON_COVER_TEXT("Subject", subject),
    HERON_COVER_TEXT("Fixedform", fixedform),
    HERON_COVER_TEXT("Receipt Company1", receiptCompany1),
    HERON_COVER_TEXT("Receipt Company2", receiptCompany2),
    HERON_COVER_TEXT("Receipt Name", receiptName),
    HERON_COVER_TEXT("Receipt Faxnum", receiptFaxnum),
    HERON_COVER_TEXT("Sender Company1", senderCompany1),
    HERON_COVER_TEXT("Sender Company2", senderCompany2),
    HERON_COVER_TEXT("Sender Name", senderName),
    HERON_COVER_TEXT("Sender Telnum", senderTelnum),
    HERON_COVER_TEXT("Sender Faxnum", senderFaxnum),
    HERON_COVER_TEXT("Sender Email", senderEmail),
    HERON_COVER_TEXT("Filename", filename),
    HERON_COVER_TEXT("Text", text),
};
#undef HERON_COVER_TEXT
constexpr NumberField kNumbers[] = {
    {"Pagenum", &FaxCoverStore::pagenum, 1, kMostCoverPages},
    {"Style", &FaxCoverStore::style, 1, kCoverStyleCount},
    {"FCSPaper", &FaxCoverStore::fcsPaper, 0, 5},
    {"Zoom", &FaxCoverStore::zoom, kMinCoverZoom, kMaxCoverZoom},
    {"X position", &FaxCoverStore::xPosition, 0, kCoverPositions},
    {"Y position", &FaxCoverStore::yPosition, 0, kCoverPositions},
    {"LineNum", &FaxCoverStore::lineNum, 0, 0},
};

FaxCoverStore& StoreOf(const UiState& ui) {
  if (ui.stores.faxCover == nullptr) throw std::bad_alloc();
  return *ui.stores.faxCover;
}

char16_t* At(FaxCoverStore& store, const TextField& field) {
  return reinterpret_cast<char16_t*>(reinterpret_cast<char*>(&store) + field.offset);
}

std::u16string TextAt(FaxCoverStore& store, const TextField& field) {
  const std::u16string_view whole(At(store, field), field.limit + 1);
  return std::u16string(whole.substr(0, whole.find(u'\0')));
}

Json FieldsJson(FaxCoverStore& store) {
  Json fields = Json::object();
  for (const TextField& field : kTexts) fields[field.name] = platform::ToUtf8(TextAt(store, field));
  for (const NumberField& field : kNumbers) fields[field.name] = store.*field.field;
  return fields;
}

Json FlagsJson(const UiState& ui) {
  Json flags = Json::object();
  for (uint16_t i = 0; i < kParamRows.size(); ++i) {
    const std::u16string_view key = kParamRows[i].key;
    if (key.starts_with(u"FaxCover_") || key.starts_with(u"lpFaxCover_"))
      flags[platform::ToUtf8(key)] = *FieldsOf(ui, i).value;
  }
  return flags;
}

void Answer(const CoverOptions& options, const UiState& ui) {
  const Json flags = FlagsJson(ui);
  const Json fields = FieldsJson(StoreOf(ui));
  if (options.json) return PrintJson("fax.cover", {{"flags", flags}, {"fields", fields}});
  for (const auto& [name, value] : fields.items()) {
    const std::string text = value.is_string() ? value.get<std::string>() : value.dump();
    std::cout << Padded(name, 18) << PrintableLines(platform::FromUtf8(text)) << '\n';
  }
  std::cout << '\n';
  for (const auto& [name, value] : flags.items()) std::cout << Padded(name, 28) << value.dump() << '\n';
}

/// A picture is named as from the present folder; one that can't serve is refused with the window's own words.
std::u16string CheckedPicture(const std::string& value) {
  if (value.empty()) return {};
  std::error_code error;
  const fs::path beside = fs::absolute(value, error);
  std::u16string path = platform::FromUtf8(!error && fs::exists(beside, error) ? beside.string() : value);
  const CoverImageFault fault = ValidateCoverImage(&path);
  if (fault == CoverImageFault::kNone) return path;
  std::string why = PrintableLines(CoverImageText(path, fault));
  std::ranges::replace(why, '\n', ' ');
  throw Failure(fault == CoverImageFault::kNotOpened ? kNotFound : kUsage, why);
}

void SetText(FaxCoverStore& store, const TextField& field, const std::string& value) {
  const std::string_view name = field.name;
  std::u16string text = name == "Filename" ? CheckedPicture(value) : platform::FromUtf8(value);
  if (name == "Text") text = StoredComment(text);
  if (name == "Fixedform" && text.empty()) throw Failure(kUsage, "Fixedform can't be empty");
  const bool lines = name != "Text" && text.find_first_of(u"\r\n\t") != std::u16string::npos;
  if (lines) throw Failure(kUsage, std::string(name) + " is one line; it can't hold line ends or tabs");
  if (text.size() > field.limit) {
    throw Failure(kUsage, std::string(name) + " holds at most " + std::to_string(field.limit) + " characters, not " +
                              std::to_string(text.size()));
  }
  std::fill_n(At(store, field), field.limit + 1, u'\0');
  std::ranges::copy(text, At(store, field));
  if (name == "Text") store.lineNum = CountCommentLines(text);
}

void SetNumber(FaxCoverStore& store, const NumberField& field, const std::string& value) {
  if (field.field == &FaxCoverStore::lineNum)
    throw Failure(kUsage, "LineNum is the number of line ends in Text; set that");
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || end != value.data() + value.size() || number < field.minimum || number > field.maximum) {
    throw Failure(kUsage, std::string(field.name) + " is a number from " + std::to_string(field.minimum) + " to " +
                              std::to_string(field.maximum) + ", not \"" + Printable(value) + '"');
  }
  store.*field.field = number;
}

void SetField(const UiState& ui, const std::string& request) {
  const size_t equals = request.find('=');
  const std::string name = request.substr(0, equals);
  if (equals == std::string::npos) throw Failure(kUsage, '"' + Printable(request) + "\" isn't FIELD=VALUE");
  const std::string value = request.substr(equals + 1);
  FaxCoverStore& store = StoreOf(ui);
  const auto text = std::ranges::find(kTexts, name, [](const TextField& f) { return std::string_view(f.name); });
  if (text != std::end(kTexts)) return SetText(store, *text, value);
  const auto number = std::ranges::find(kNumbers, name, [](const NumberField& f) { return std::string_view(f.name); });
  if (number == std::end(kNumbers)) {
    std::vector<std::string> names;
    for (const TextField& field : kTexts) names.emplace_back(field.name);
    for (const NumberField& field : kNumbers) names.emplace_back(field.name);
    const std::string near = DidYouMean(name, names);
    throw Failure(kUsage, "the cover sheet has no field \"" + Printable(name) + '"' +
                              (near.empty() ? "" : "; " + near) + "; switches are set with `heron settings -o`");
  }
  SetNumber(store, *number, value);
  if (name == "FCSPaper") FollowCoverPaper(ui);
}

void Show(const CoverOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  Answer(options, opened.ui());
}

/// Makes `change` on what is stored now, until no other program has changed it meanwhile.
void Change(const CoverOptions& options, const std::function<void(const UiState&)>& change) {
  Printer printer(options.printer);
  UntilKept([&] {
    SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
    opened.Open(true);
    change(opened.ui());
    TerminalView view(Consent::kNo, true);
    opened.Commit(&view);
    if (!opened.Keep(opened.Record(), SettingsSession::Lists::kWrite)) return false;
    for (const ShownReport& report : view.TakeReports()) PrintReport(std::cerr, report);
    Answer(options, opened.ui());
    return true;
  });
}

void Set(const CoverOptions& options) {
  Change(options, [&](const UiState& ui) {
    for (const std::string& request : options.fields) SetField(ui, request);
  });
}

void Reset(const CoverOptions& options) {
  Change(options, [](const UiState& ui) {
    ResetCoverFlags(ui);
    ResetCoverStore(kResetByButton, ui);
    FollowCoverPaper(ui);
  });
}

}  // namespace

void AddCoverCommands(CLI::App& fax) {
  const auto options = std::make_shared<CoverOptions>();
  CLI::App* group = AddCommand(fax, "cover", "Show and change the cover sheet of your faxes");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const CoverOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer that sends the faxes")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    command->callback([options, run] { run(*options); });
    return command;
  };
  add("show", "Show the fields and switches of the cover sheet", Show);
  add("set", "Change fields of the cover sheet", Set)
      ->add_option("FIELD=VALUE", options->fields, "Field with its new value; `show` lists the fields")
      ->required();
  add("reset", "Reset the cover sheet to its defaults; subject, comment and picture file stay", Reset);
}

}  // namespace heron::cli
