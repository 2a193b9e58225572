// `heron fonts`: which printer font stands for which TrueType font.
//
// The pairs are the user's own for the printer. The font page shows them for the fonts of its computer; here every pair
// is shown, whether its font is installed or not.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>

#include "catalog/strings.h"
#include "common/command.h"
#include "engine/setting.h"
#include "pages/font_rows.h"
#include "platform/api/text.h"
#include "settings_session.h"
#include "terminal_view.h"
#include "uistate/list_stores_seed.h"

namespace heron::cli {
namespace {

using pages::FontRow;

struct FontsOptions {
  std::string printer;
  std::string name;
  std::string font;
  bool dry_run = false;
  bool json = false;
};

constexpr std::string_view kNone = "none";

FontSubstStore& StoreOf(const UiState& ui) {
  if (ui.stores.fontSubst == nullptr) throw std::bad_alloc();
  return *ui.stores.fontSubst;
}

std::vector<FontRow> RowsOf(const UiState& ui) {
  std::vector<FontRow> rows;
  for (const FontPair& pair : pages::PairsOf(StoreOf(ui)))
    rows.push_back(
        {std::u16string(pages::TextOfName(pair.trueTypeFont)), std::u16string(pages::TextOfName(pair.deviceFont))});
  return rows;
}

Json FontsJson(const UiState& ui) {
  Json fonts = Json::array();
  for (const FontRow& row : RowsOf(ui))
    fonts.push_back({{"truetype", platform::ToUtf8(row.trueType)}, {"printer", platform::ToUtf8(row.printerFont)}});
  Json printer = Json::array();
  for (const std::u16string& font : pages::PrinterFonts()) printer.push_back(platform::ToUtf8(font));
  return {{"used", engine::IsOn<u"FontUseFlg">(ui)}, {"fonts", fonts}, {"printerFonts", printer}};
}

void List(const FontsOptions& options) {
  constexpr size_t kNameWidth = 34;
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  if (options.json) return PrintJson("fonts.list", FontsJson(opened.ui()));
  for (const FontRow& row : RowsOf(opened.ui()))
    std::cout << Padded(Printable(row.trueType), kNameWidth) << Printable(row.printerFont) << '\n';
  if (!engine::IsOn<u"FontUseFlg">(opened.ui()))
    std::cout << "Printer fonts are off: `heron settings -o FontUseFlg=1`\n";
}

/// Changes the pairs and stores them; repeats it if another program was quicker. `edit` returns what it did.
void RunEdit(const FontsOptions& options, const std::function<std::string(SettingsSession& opened)>& edit) {
  Printer printer(options.printer);
  UntilKept([&] {
    SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
    opened.Open(true);
    const std::string sentence = edit(opened);
    TerminalView view(Consent::kYes, true);
    opened.Commit(&view);
    if (!options.dry_run && !opened.Keep(opened.Record(), SettingsSession::Lists::kWrite)) return false;
    if (options.json) {
      Json answer = {{"applied", !options.dry_run}};
      answer.update(FontsJson(opened.ui()));
      PrintJson("fonts.list", answer);
    } else {
      std::cout << sentence << (options.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
    }
    return true;
  });
}

/// One of the printer's fonts; empty for none.
std::u16string PrinterFontOf(const std::string& name) {
  if (name == kNone) return {};
  std::vector<std::string> names;
  for (const std::u16string& font : pages::PrinterFonts()) {
    names.push_back(platform::ToUtf8(font));
    if (names.back() == name) return font;
  }
  std::string hint = DidYouMean(name, names);
  if (hint.empty()) hint = "`heron fonts list --json` lists them";
  throw Failure(kUsage, "the printer has no font \"" + Printable(name) + "\"; " + hint);
}

void Set(const FontsOptions& options) {
  const std::u16string name = platform::FromUtf8(options.name);
  if (name.empty() || name.front() == u'@' || name.size() > pages::kFontNameLength)
    throw Failure(kUsage, "the name of a font has 1 to 31 characters and doesn't begin with \"@\"");
  const std::u16string font = PrinterFontOf(options.font);
  RunEdit(options, [&](SettingsSession& opened) {
    FontSubstStore& store = StoreOf(opened.ui());
    std::vector<FontRow> rows = RowsOf(opened.ui());
    const auto row = std::ranges::find(rows, name, &FontRow::trueType);
    if (row != rows.end())
      row->printerFont = font;
    else if (!font.empty() && rows.size() == kFontPairCount)
      throw Failure(kRefused, "the list is full; it can hold 500 fonts, take one out with `heron fonts set NAME none`");
    else
      rows.push_back({name, font});
    pages::StorePairs(store, rows);
    const std::string quoted = '"' + Printable(name) + '"';
    return font.empty() ? quoted + " isn't replaced."
                        : quoted + " is replaced by the printer font \"" + Printable(font) + "\".";
  });
}

/// As the defaults of the font page, for every font that the printer's own list names.
void Reset(const FontsOptions& options) {
  RunEdit(options, [&](SettingsSession& opened) {
    FontSubstStore& store = StoreOf(opened.ui());
    std::vector<FontRow> rows;
    for (const FontPair& pair : DefaultFontPairs())
      rows.push_back(
          {std::u16string(pages::TextOfName(pair.trueTypeFont)), std::u16string(pages::TextOfName(pair.deviceFont))});
    pages::StorePairs(store, rows);
    store.index = 0;
    for (const uint16_t param : {ParamNamed<u"FontUseFlg">(), ParamNamed<u"lpDLFontFormat">()}) {
      const ValueFields fields = FieldsOf(opened.ui(), param);
      *fields.value = *fields.defaultValue;
    }
    return std::string("The font settings of this printer are at their defaults again.");
  });
}

}  // namespace

void AddFontsCommands(CLI::App& app) {
  const auto options = std::make_shared<FontsOptions>();
  CLI::App* group = AddCommand(app, "fonts", "Choose which printer font stands for which TrueType font");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const FontsOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer whose fonts to use")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    command->callback([options, run] { run(*options); });
    return command;
  };
  add("list", "List the fonts that are replaced", List);
  CLI::App* set = add("set", "Replace a font by a printer font", Set);
  set->add_option("NAME", options->name, "The TrueType font, up to 31 characters")->required();
  set->add_option("FONT", options->font, "The printer font, or none")->required();
  CLI::App* reset = add("reset", "Restore the defaults of all fonts", Reset);
  for (CLI::App* command : {set, reset})
    command->add_flag("--dry-run", options->dry_run, "Report every consequence and change nothing");
}

}  // namespace heron::cli
