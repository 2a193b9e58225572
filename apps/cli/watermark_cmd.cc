// `heron watermark`: the user's list of watermarks for a printer, and which of them is in use.
//
// The list belongs to the user and the printer; which entry is current belongs to a record, by its place in the list.
// Numbers are taken and shown in the units of an entry: points, tenths of a degree, tenths of a millimetre.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "common/command.h"
#include "common/record_file.h"
#include "engine/setting.h"
#include "forms/watermark_list.h"
#include "measure.h"
#include "platform/api/text.h"
#include "preview/watermark_picture.h"
#include "settings_change.h"
#include "settings_kept.h"
#include "settings_session.h"
#include "terminal_view.h"
#include "watermark_text.h"

namespace heron::cli {
namespace {

struct MarkOptions {
  std::string printer;
  std::string entry;  ///< number or text
  std::string in;
  std::string out;
  MarkChange change;
  bool json = false;
  ConsentOptions consent;
};

// -- what is in the list

WatermarkStore& StoreOf(const SettingsSession& opened) {
  if (opened.ui().stores.watermarks == nullptr) throw std::bad_alloc();
  return *opened.ui().stores.watermarks;
}

uint8_t& CurrentOf(const SettingsSession& opened) {
  return SlotAs<u"bWatermarkCurrent", uint8_t>(opened.ui());
}

Json ListJson(const SettingsSession& opened) {
  const WatermarkStore& store = StoreOf(opened);
  Json rows = Json::array();
  for (int i = 1; i < WatermarksIn(store); ++i) rows.push_back(MarkJson(store.entries[i], i));
  return {{"current", CurrentOf(opened)},
          {"used", engine::IsOn<u"Watermark_Use">(opened.ui())},
          {"limit", kWatermarkCount - 1},
          {"watermarks", rows}};
}

void PrintList(const SettingsSession& opened) {
  const WatermarkStore& store = StoreOf(opened);
  const int current = CurrentOf(opened);
  std::cout << (current == 0 ? '*' : ' ') << "0   (no watermark)\n";
  for (int i = 1; i < WatermarksIn(store); ++i) PrintMark(store.entries[i], i, i == current);
  if (current != 0 && !engine::IsOn<u"Watermark_Use">(opened.ui()))
    std::cerr << "heron: watermarks are off (Watermark_Use); `heron watermark use NUMBER` turns them on\n";
}

/// The place of an entry by its number or its text; 0 for none.
int PlaceOf(const WatermarkStore& store, const std::string& name) {
  const int count = WatermarksIn(store);
  const std::optional<int64_t> number = WholeNumber(name);
  if (number && *number >= 0 && *number < count) return static_cast<int>(*number);
  if (name == "none") return 0;
  std::vector<std::string> texts;
  for (int i = 1; i < count; ++i) {
    texts.push_back(platform::ToUtf8(MarkText(store.entries[i])));
    if (texts.back() == name) return i;
  }
  const std::string meant = DidYouMean(name, texts);
  throw Failure(kNotFound, "there is no watermark \"" + Printable(name) + "\"; " +
                               (meant.empty() ? "the list has " + std::to_string(count - 1) + " entries" : meant));
}

/// The same of an entry that can be changed.
int PlaceToChange(const WatermarkStore& store, const std::string& name) {
  const int place = PlaceOf(store, name);
  if (place == 0) throw Failure(kRefused, "entry 0 stands for no watermark; it can't be changed or removed");
  return place;
}

/// A stamp whose middle lies beyond the paper is printed at its edge.
void TellIfBeyondPaper(const SettingsSession& opened, const WatermarkEntry& entry) {
  constexpr platform::SIZE kSize = preview::kWatermarkPictureSize;
  const auto limits = preview::CenterLimits(preview::FramePaper(opened.ui(), {0, 0, kSize.cx, kSize.cy}));
  if (std::abs(MarkCenterX(entry)) <= limits.x && std::abs(MarkCenterY(entry)) <= limits.y) return;
  std::cerr << "heron: the middle of the watermark lies beyond the current paper, whose edges are at "
            << TenthsText(limits.x) << " mm across and " << TenthsText(limits.y)
            << " mm down; it is printed at the edge\n";
}

// -- the commands

void List(const MarkOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  opened.Open(false);
  if (options.json) return PrintJson("watermark.list", ListJson(opened));
  PrintList(opened);
}

void Show(const MarkOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  opened.Open(false);
  const WatermarkStore& store = StoreOf(opened);
  const int place = PlaceToChange(store, options.entry);
  if (options.json) return PrintJson("watermark.show", MarkJson(store.entries[place], place));
  PrintMark(store.entries[place], place, place == CurrentOf(opened));
}

void Answer(const MarkOptions& options, const SettingsSession& opened, const std::string& schema, int index,
            const std::string& sentence) {
  if (!options.json) {
    if (options.out == "-") return;
    std::cout << sentence << (options.consent.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
    return;
  }
  Json answer = {{"applied", !options.consent.dry_run}, {"index", index}};
  answer.update(ListJson(opened));
  PrintJson(schema, answer);
}

std::string Quoted(const WatermarkEntry& entry) {
  return '"' + Printable(MarkText(entry)) + '"';
}

/// False, with nothing written, if another program has changed the list meanwhile.
bool TryAdd(const MarkOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  WatermarkStore& store = StoreOf(opened);
  const int index = AddWatermark(store);
  if (index == 0)
    throw Failure(kRefused, "the list is full: it holds " + std::to_string(kWatermarkCount - 1) +
                                " watermarks; remove one first (`heron watermark remove`)");
  ApplyMarkChange(options.change, store.entries[index]);
  if (!options.consent.dry_run && !opened.KeepLists()) return false;
  TellIfBeyondPaper(opened, store.entries[index]);
  Answer(options, opened, "watermark.add", index,
         "Added " + Quoted(store.entries[index]) + " as number " + std::to_string(index) + '.');
  return true;
}

bool TryEdit(const MarkOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  WatermarkStore& store = StoreOf(opened);
  const int place = PlaceToChange(store, options.entry);
  ApplyMarkChange(options.change, store.entries[place]);
  if (!options.consent.dry_run && !opened.KeepLists()) return false;
  TellIfBeyondPaper(opened, store.entries[place]);
  Answer(options, opened, "watermark.edit", place, "Changed " + Quoted(store.entries[place]) + '.');
  return true;
}

/// The own record follows its entry, which may have moved up; after the current one the entry before it is current.
bool TryRemove(const MarkOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDocument);
  opened.Open(false);
  WatermarkStore& store = StoreOf(opened);
  const int place = PlaceToChange(store, options.entry);
  const std::string name = Quoted(store.entries[place]);
  RemoveWatermark(store, place);
  uint8_t& current = CurrentOf(opened);
  const bool moves = current >= place;
  if (moves) --current;
  if (!options.consent.dry_run) {
    if (moves) opened.Commit(nullptr);
    const bool kept = moves ? opened.Keep(opened.Record(), SettingsSession::Lists::kWrite) : opened.KeepLists();
    if (!kept) return false;
  }
  Answer(options, opened, "watermark.remove", place, "Removed " + name + '.');
  return true;
}

/// Makes the entry the current one and turns watermarks on, which may have consequences as any change of settings.
bool TryUse(const MarkOptions& options, TerminalView& view) {
  view.StartOver();
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  const Catalogue catalogue(ReadLocaleCountry());
  opened.Open(true);
  const WatermarkStore& store = StoreOf(opened);
  const int place = PlaceOf(store, options.entry);
  std::vector<std::string> requests;
  if (place != 0) requests.emplace_back("Watermark_Use=1");
  std::vector<ChangeRecord> changes = MakeChanges(opened, requests, false, catalogue, view);
  int code = kDone;
  std::string failure = WhyNot(changes, view, &code);
  if (!failure.empty()) throw Failure(code, failure);
  CurrentOf(opened) = static_cast<uint8_t>(place);
  const Promises promises(opened.ui(), changes);
  opened.Commit(&view);
  failure = promises.WhatIsLost(opened);
  if (!failure.empty()) throw Failure(kRefused, failure);
  if (!options.consent.dry_run) {
    const Bytes record = opened.Record();
    if (!options.out.empty())
      WriteRecord(options.out, record);
    else if (!opened.Keep(record))
      return false;
  }
  Answer(options, opened, "watermark.use", place,
         place == 0 ? "No watermark is in use." : Quoted(store.entries[place]) + " is in use.");
  return true;
}

void Add(const MarkOptions& options) {
  UntilKept([&] { return TryAdd(options); });
}

void Edit(const MarkOptions& options) {
  if (!options.change.Any())
    throw Failure(kUsage,
                  "name what to change: --text, --font, --style, --size, --angle, --color, --shade, --x or --y");
  UntilKept([&] { return TryEdit(options); });
}

void Remove(const MarkOptions& options) {
  UntilKept([&] { return TryRemove(options); });
}

void Use(const MarkOptions& options) {
  if (options.out == "-" && options.json)
    throw Failure(kUsage, "the record goes to standard output; leave --json out or name a file");
  TerminalView view(options.consent.consent(), options.json || options.out == "-");
  UntilKept([&] { return TryUse(options, view); });
}

}  // namespace

void AddWatermarkCommands(CLI::App& app) {
  const auto options = std::make_shared<MarkOptions>();
  CLI::App* group = AddCommand(app, "watermark", "Manage watermarks and choose the one in use");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const MarkOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->add_option("-p,--printer", options->printer, "Printer whose watermarks to use")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
    command->callback([options, run] { run(*options); });
    return command;
  };
  const auto with_entry = [&](CLI::App* command) {
    command->add_option("ENTRY", options->entry, "Number or text of the watermark")->required();
    return command;
  };
  const auto with_in = [&](CLI::App* command) {
    command->add_option("--in", options->in,
                        "Record to work on instead of your own for this printer (- for standard input)");
    return command;
  };
  const auto changes = [&](CLI::App* command) {
    options->consent.AddTo(*command);
    return command;
  };
  with_in(add("list", "List the watermarks", List));
  with_in(with_entry(add("show", "Show one watermark", Show)));
  CLI::App* added = changes(add("add", "Add a watermark", Add));
  options->change.AddTo(*added);
  added->get_option("--text")->required();
  options->change.AddTo(*changes(with_entry(add("edit", "Change a watermark", Edit))));
  changes(with_entry(add("remove", "Remove a watermark", Remove)));
  CLI::App* use = changes(with_in(with_entry(add("use", "Choose the watermark in use; 0 or none for none", Use))));
  use->add_option("--out", options->out, "File for the resulting record (- for standard output)");
}

}  // namespace heron::cli
