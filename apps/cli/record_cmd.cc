// `heron record`: settings records as files, made, merged, converted, shown and compared.
//
// default and convert go through DrvConvertDevMode, merge through DrvDocumentProperties, so what they write is byte for
// byte what an application gets. show and diff read files only and never open the store.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <memory>

#include "common/command.h"
#include "common/field_json.h"
#include "common/record_file.h"
#include "entry/exports.h"
#include "platform/api/text.h"
#include "record_text.h"
#include "resolved_record.h"
#include "settings/defaults.h"

namespace heron::cli {
namespace {

using platform::DWORD;

struct RecordOptions {
  std::string printer;
  std::string in;
  std::string out;
  std::string other;  ///< second file of diff
  std::string format = "current";
  bool all = false;
  bool json = false;
};

Bytes DefaultRecord(Printer& printer) {
  Bytes record(kEnvSize);
  DWORD needed = kEnvSize;
  if (DrvConvertDevMode(printer.name(), nullptr, AsDevMode(record), &needed, platform::CDM_DRIVER_DEFAULT) != 1) {
    FailWith(platform::GetLastError(), "build the printer's default record");
  }
  return record;
}

/// `source` in the format that `target` has; null target: the earlier system's.
Bytes ConvertedRecord(Printer& printer, Bytes source, Bytes target, DWORD mode) {
  DWORD needed = static_cast<DWORD>(target.size());
  if (DrvConvertDevMode(printer.name(), AsDevMode(source), AsDevMode(target), &needed, mode) != 1) {
    throw Failure(kFailed, "the record can't be converted: it has no version (dmSpecVersion is 0)");
  }
  target.resize(std::min<size_t>(needed, target.size()));  // never more than the room that was given
  return target;
}

/// Size of a record in the earlier system's format, asked of the driver.
Bytes LegacyRoom(Printer& printer, Bytes& source) {
  DWORD needed = 0;
  DrvConvertDevMode(printer.name(), AsDevMode(source), nullptr, &needed, platform::CDM_CONVERT351);
  return Bytes(needed);
}

// -- show
// -------------------------------------------------------------------------------------------------------------------------

Json FieldsJson(const Bytes& record) {
  Json fields = Json::object();
  for (const EnvField* field : FieldsOf(record)) fields[std::string(field->name)] = record::FieldJson(record, *field);
  return fields;
}

Json RecordJson(const Bytes& record) {
  return {{"size", record.size()}, {"own", IsOwnEnv(record.data())}, {"fields", FieldsJson(record)}};
}

struct Line {
  std::string name;
  std::string value;
};

void PrintGroups(const std::map<Group, std::vector<Line>>& groups) {
  size_t width = 0;
  for (const auto& [group, lines] : groups) {
    for (const Line& line : lines) width = std::max(width, line.name.size());
  }
  for (const auto& [group, lines] : groups) {
    std::cout << '\n' << Heading(kGroupTitles[static_cast<size_t>(group)]) << '\n';
    for (const Line& line : lines) std::cout << "  " << Padded(line.name, width + 2) << line.value << '\n';
  }
}

/// One of our records: the main fields, and of the rest what differs from the default of the locale's country.
void PrintOwn(const Bytes& record, const Catalogue& catalogue, bool all) {
  DriverEnv defaults;
  const char16_t no_name[] = u"";
  BuildDefaultEnv(catalogue.context(), &defaults, no_name, nullptr);
  // Without a queue's name: the name of the record isn't a setting and is printed above.
  const Bytes standard(defaults.bytes.begin(), defaults.bytes.end());
  std::map<Group, std::vector<Line>> groups;
  size_t hidden = 0;
  for (const Slot& slot : SlotsOf(record)) {
    const Group group = GroupOf(*slot.field);
    const bool inner = group == Group::kInternal || group == Group::kHeader;
    const bool shown = all || IsMainField(*slot.field) || (!inner && !SameBytes(record, standard, slot));
    if (shown) {
      groups[group].push_back({slot.name, SlotText(record, slot, catalogue)});
    } else {
      hidden += !inner;
    }
  }
  PrintGroups(groups);
  if (hidden > 0) std::cout << '\n' << hidden << " settings are at their default; --all shows them.\n";
}

/// A foreign record: the public fields that it holds, those first that it names in dmFields.
void PrintForeign(const Bytes& record, const Catalogue& catalogue, bool all) {
  const uint32_t named = ForeignEnv(record.data()).Public<"dmFields">();
  std::map<Group, std::vector<Line>> groups;
  size_t hidden = 0;
  for (const Slot& slot : SlotsOf(record)) {
    const Group group = GroupOf(*slot.field);
    // An application sets a bit for each field that it means; the others may be left over from another printer.
    const bool counts = (named & BitOfField(*slot.field)) != 0;
    if (all || counts || slot.field->name == "dmFields") {
      const bool marked = group == Group::kDocument && !counts;
      groups[group].push_back(
          {slot.name, SlotText(record, slot, catalogue) + (marked ? "  - not named in dmFields" : "")});
    } else {
      hidden += group == Group::kDocument;
    }
  }
  PrintGroups(groups);
  if (hidden > 0)
    std::cout << '\n' << hidden << " fields aren't named in dmFields and don't count; --all shows them.\n";
}

void PrintRecord(const Bytes& record, bool all) {
  const bool own = IsOwnEnv(record.data());
  const ForeignEnv view(record.data());
  std::u16string name;
  // The name may fill its 32 characters without a terminator, and the record may end inside it.
  for (uint32_t i = 0; i < 32 && (i + 1) * 2 <= view.PublicSize(); ++i) {
    const char16_t c = static_cast<char16_t>(record[2 * i] | record[2 * i + 1] << 8);
    if (c == u'\0') break;
    name += c;
  }
  std::cout << Heading(own ? "A record of this driver" : "A record of another driver") << " for \"" << Printable(name)
            << "\", " << record.size() << " bytes (" << view.PublicSize() << " public, " << view.PrivateSize()
            << " private)\n";
  const Catalogue catalogue(ReadLocaleCountry());
  own ? PrintOwn(record, catalogue, all) : PrintForeign(record, catalogue, all);
}

void Show(const RecordOptions& options) {
  if (options.in.empty() && options.printer.empty()) {
    throw Failure(kUsage, "name the record to show: a FILE, or -p NAME for the one that applications get of a printer");
  }
  Bytes record;
  if (!options.in.empty()) {
    record = ReadRecord(options.in);
  } else {
    Printer printer(options.printer);
    record = ResolvedRecord(printer, {});
  }
  options.json ? PrintJson("record.show", RecordJson(record)) : PrintRecord(record, options.all);
}

// -- diff
// -------------------------------------------------------------------------------------------------------------------------

struct Difference {
  std::string name;
  std::string a, b;  ///< "-" where the record hasn't got the field
};

/// Bytes of the shorter length that differ, and those that only one of them has.
size_t DifferingBytes(const Bytes& a, const Bytes& b) {
  const size_t common = std::min(a.size(), b.size());
  size_t differing = std::max(a.size(), b.size()) - common;
  for (size_t i = 0; i < common; ++i) differing += a[i] != b[i];
  return differing;
}

std::vector<Difference> Differences(const Bytes& a, const Bytes& b, const Catalogue& catalogue, size_t* covered) {
  const std::vector<Slot> slots_a = SlotsOf(a), slots_b = SlotsOf(b);
  std::vector<Difference> differences;
  for (size_t i = 0; i < std::max(slots_a.size(), slots_b.size()); ++i) {
    // Both lists run along the same table, so one is the beginning of the other.
    const bool in_a = i < slots_a.size(), in_b = i < slots_b.size();
    const Slot& slot = in_a ? slots_a[i] : slots_b[i];
    if (in_a && in_b && SameBytes(a, b, slot)) continue;
    // Counted byte by byte, so that what differs outside of named fields can be reported as a number.
    for (uint32_t at = slot.offset(); at < slot.offset() + slot.field->Size(); ++at) {
      *covered += at >= a.size() || at >= b.size() || a[at] != b[at];
    }
    differences.push_back(
        {slot.name, in_a ? SlotText(a, slot, catalogue) : "-", in_b ? SlotText(b, slot, catalogue) : "-"});
  }
  return differences;
}

void PrintDifferences(const std::vector<Difference>& differences, size_t unnamed) {
  size_t width = 0, first = 0;
  for (const Difference& difference : differences) {
    width = std::max(width, difference.name.size());
    first = std::max(first, std::min<size_t>(difference.a.size(), 40));
  }
  for (const Difference& difference : differences) {
    const char* note = difference.a == difference.b ? "  (they differ behind what is shown)" : "";
    std::cout << Padded(difference.name, width + 2) << Padded(difference.a, first) << " | " << difference.b << note
              << '\n';
  }
  if (unnamed > 0) std::cout << unnamed << " bytes differ outside the named fields\n";
  if (differences.empty() && unnamed == 0) std::cout << "no differences\n";
}

void Diff(const RecordOptions& options) {
  if (options.in == "-" && options.other == "-")
    throw Failure(kUsage, "only one of the two records can be standard input");
  const Bytes a = ReadRecord(options.in), b = ReadRecord(options.other);
  const Catalogue catalogue(ReadLocaleCountry());
  size_t covered = 0;
  const std::vector<Difference> differences = Differences(a, b, catalogue, &covered);
  const size_t unnamed = DifferingBytes(a, b) - covered;
  if (!options.json) return PrintDifferences(differences, unnamed);
  Json rows = Json::array();
  for (const Difference& row : differences) rows.push_back({{"field", row.name}, {"a", row.a}, {"b", row.b}});
  PrintJson("record.diff", {{"differences", rows}, {"unnamedBytes", unnamed}});
}

// -- default, merge, convert
// ------------------------------------------------------------------------------------------------------

/// Writes the record where --out says; without --out, or with --json, shows it.
void Deliver(const RecordOptions& options, const Bytes& record) {
  if (options.json && options.out == "-")
    throw Failure(kUsage, "--json and --out - both want standard output; choose one");
  if (!options.out.empty()) WriteRecord(options.out, record);
  if (options.json) return PrintJson("record.show", RecordJson(record));
  if (options.out.empty()) return PrintRecord(record, options.all);
  if (options.out != "-") std::cout << "Wrote " << record.size() << " bytes to " << Printable(options.out) << '\n';
}

void Default(const RecordOptions& options) {
  Printer printer(options.printer);
  Deliver(options, DefaultRecord(printer));
}

void Merge(const RecordOptions& options) {
  Bytes input = ReadRecord(options.in);
  Printer printer(options.printer);
  Deliver(options, ResolvedRecord(printer, std::move(input)));
}

void Convert(const RecordOptions& options) {
  Bytes source = ReadRecord(options.in);
  Printer printer(options.printer);
  if (options.format == "current") {
    return Deliver(options, ConvertedRecord(printer, std::move(source), DefaultRecord(printer), platform::CDM_CONVERT));
  }
  Bytes room = LegacyRoom(printer, source);
  Deliver(options, ConvertedRecord(printer, std::move(source), std::move(room), platform::CDM_CONVERT351));
}

CLI::App* AddMaker(CLI::App& group, const std::string& name, const std::string& description, RecordOptions& options) {
  CLI::App* command = AddCommand(group, name, description);
  command->add_option("-p,--printer", options.printer, "Printer to make it for")->required()->type_name("NAME");
  command->add_option("--out", options.out, "File to write (- for standard output); shown if left out")
      ->type_name("FILE");
  command->add_flag("--json", options.json, "Answer with every field as JSON");
  command->add_flag("--all", options.all, "Show settings at their default too");
  return command;
}

}  // namespace

void AddRecordCommands(CLI::App& app) {
  const auto options = std::make_shared<RecordOptions>();
  CLI::App* group = AddCommand(app, "record", "Make, merge, convert, show and compare settings records");
  group->require_subcommand(1);

  CLI::App* make_default = AddMaker(*group, "default", "The driver's default record of a printer", *options);
  make_default->callback([options] { Default(*options); });

  CLI::App* merge = AddMaker(*group, "merge", "Make a valid record out of any driver's record", *options);
  merge->add_option("--in", options->in, "Record to merge (- for standard input)")->required()->type_name("FILE");
  merge->callback([options] { Merge(*options); });

  CLI::App* convert = AddMaker(*group, "convert", "Convert a record to the current or the earlier format", *options);
  convert->add_option("--in", options->in, "Record to convert (- for standard input)")->required()->type_name("FILE");
  convert->add_option("--to", options->format, "current or legacy")
      ->required()
      ->check(CLI::IsMember({"current", "legacy"}));
  convert->callback([options] { Convert(*options); });

  CLI::App* show = AddCommand(*group, "show", "Show a record's settings");
  CLI::Option* file =
      show->add_option("FILE,--in", options->in, "Record to show (- for standard input)")->type_name("FILE");
  show->add_option("-p,--printer", options->printer, "Show the record that applications get for this printer")
      ->excludes(file)
      ->type_name("NAME");
  show->add_flag("--all", options->all, "Show settings at their default too");
  show->add_flag("--json", options->json, "Answer with every field as JSON");
  show->callback([options] { Show(*options); });

  CLI::App* diff = AddCommand(*group, "diff", "List the fields in which two records differ");
  diff->add_option("A", options->in, "First record")->required()->type_name("FILE");
  diff->add_option("B", options->other, "Second record")->required()->type_name("FILE");
  diff->add_flag("--json", options->json, "Answer as JSON");
  diff->callback([options] { Diff(*options); });
}

}  // namespace heron::cli
