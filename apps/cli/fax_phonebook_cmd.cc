// `heron fax phonebook`: the user's phone book, which the fax page's button opens in a window.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "common/phone_book.h"
#include "common/record_file.h"
#include "fax_commands.h"
#include "platform/api/text.h"

namespace heron::cli {
namespace {

using phone_book::Changed;
using phone_book::Entry;

struct BookOptions {
  std::string search, group, file, format;
  std::optional<std::string> name, number, company, department, new_group;
  std::vector<uint32_t> ids;
  uint32_t id = 0;
  bool ecm = false, overseas = false, v34 = false;
  bool json = false;
};

std::vector<Entry> ReadBook() {
  std::vector<Entry> entries;
  if (!phone_book::Read(&entries)) FailStore("read the phone book");
  return entries;
}

Json EntryJson(const Entry& entry) {
  return {{"id", entry.id},
          {"name", platform::ToUtf8(entry.name)},
          {"number", platform::ToUtf8(entry.number)},
          {"company", platform::ToUtf8(entry.company)},
          {"department", platform::ToUtf8(entry.department)},
          {"group", platform::ToUtf8(entry.group)},
          {"ecm", entry.ecm},
          {"overseas", entry.overseas},
          {"v34", entry.v34}};
}

void Answer(const BookOptions& options, const std::vector<Entry>& entries) {
  if (options.json) {
    Json rows = Json::array();
    for (const Entry& entry : entries) rows.push_back(EntryJson(entry));
    return PrintJson("fax.phonebook", {{"entries", rows}});
  }
  constexpr size_t kIdWidth = 5, kNumberWidth = 20;
  if (entries.empty()) std::cout << "No entries.\n";
  for (const Entry& entry : entries) {
    std::cout << Padded(std::to_string(entry.id), kIdWidth) << ' ' << Padded(Printable(entry.number), kNumberWidth)
              << ' ' << Printable(entry.name);
    for (const std::u16string* text : {&entry.company, &entry.department, &entry.group})
      if (!text->empty()) std::cout << "  " << Printable(*text);
    std::cout << '\n';
  }
}

std::vector<Entry> Chosen(const BookOptions& options) {
  std::vector<Entry> entries = ReadBook();
  const std::u16string search = platform::FromUtf8(options.search), group = platform::FromUtf8(options.group);
  std::erase_if(entries, [&](const Entry& entry) {
    return !phone_book::Matches(entry, search) || (!group.empty() && entry.group != group);
  });
  return entries;
}

void List(const BookOptions& options) {
  Answer(options, Chosen(options));
}

/// Takes over what the options name, and checks the whole.
void Fill(const BookOptions& options, Entry& entry) {
  const auto take = [](const std::optional<std::string>& from, std::u16string& to, const char* name) {
    if (!from) return;
    to = platform::FromUtf8(*from);
    if (to.size() > phone_book::kLongestText)
      throw Failure(kUsage, std::string("the ") + name + " has more than 44 characters");
    if (std::ranges::any_of(to, [](char16_t c) { return c < u' '; }))
      throw Failure(kUsage, std::string("the ") + name + " holds a control character");
  };
  take(options.name, entry.name, "name");
  take(options.company, entry.company, "company");
  take(options.department, entry.department, "department");
  take(options.new_group, entry.group, "group");
  take(options.number, entry.number, "number");
  if (!phone_book::IsNumber(entry.number)) {
    throw Failure(kUsage,
                  '"' + Printable(entry.number) + "\" isn't a fax number: use digits and the signs # * - P T only");
  }
  if (options.ecm || options.v34) entry.ecm = true;
  if (options.overseas) entry.overseas = true;
  if (options.v34) entry.v34 = true;
}

void AddEntry(const BookOptions& options) {
  std::vector<Entry> entries(1);
  Fill(options, entries[0]);
  if (!phone_book::Add(&entries)) FailStore("write the phone book");
  Answer(options, entries);
}

void Check(Changed changed) {
  if (changed == Changed::kMissing) throw Failure(kNotFound, "the phone book has no such entry; `list` shows them");
  if (changed == Changed::kUnwritten) FailStore("write the phone book");
}

void EditEntry(const BookOptions& options) {
  std::vector<Entry> entries = ReadBook();
  const auto entry = std::ranges::find(entries, options.id, &Entry::id);
  if (entry == entries.end()) Check(Changed::kMissing);
  Fill(options, *entry);
  Check(phone_book::Replace(*entry));
  Answer(options, {*entry});
}

void RemoveEntries(const BookOptions& options) {
  Check(phone_book::Remove(options.ids));
  Answer(options, ReadBook());
}

void Import(const BookOptions& options) {
  size_t skipped = 0;
  std::vector<Entry> entries = phone_book::Parse(ReadTextFile(options.file, phone_book::kLargestFile), &skipped);
  if (entries.empty()) throw Failure(kFailed, "the file has no entry with a fax number; nothing was imported");
  if (!phone_book::Add(&entries)) FailStore("write the phone book, which holds at most 5000 entries");
  if (skipped > 0)
    std::cerr << "heron: " << skipped << " entries were left out: they have no fax number, or a text of more than 44 "
              << "characters\n";
  Answer(options, entries);
}

void Export(const BookOptions& options) {
  const bool csv = options.format == "csv" || (options.format.empty() && options.file.ends_with(".csv"));
  const std::vector<Entry> entries = Chosen(options);
  const std::string text = csv ? phone_book::ToCsv(entries) : phone_book::ToVCard(entries);
  if (options.file == "-") {
    std::cout << text;
  } else {
    ReplaceFile(options.file, {text.begin(), text.end()});
  }
}

}  // namespace

void AddPhoneBookCommands(CLI::App& fax) {
  const auto options = std::make_shared<BookOptions>();
  CLI::App* group = AddCommand(fax, "phonebook", "List and change your phone book of fax numbers");
  group->require_subcommand(1);
  const auto add = [&](const char* name, const char* description, void (*run)(const BookOptions&)) {
    CLI::App* command = AddCommand(*group, name, description);
    command->callback([options, run] { run(*options); });
    return command;
  };
  const auto with_json = [&](CLI::App* command) {
    command->add_flag("--json", options->json, "Answer as JSON");
    return command;
  };
  const auto with_filter = [&](CLI::App* command) {
    command->add_option("--search", options->search, "Only entries that hold this text");
    command->add_option("--group", options->group, "Only entries of this group");
    return command;
  };
  const auto with_fields = [&](CLI::App* command) {
    command->add_option("--name", options->name, "Name");
    command->add_option("--company", options->company, "Company");
    command->add_option("--department", options->department, "Department");
    command->add_option("--group", options->new_group, "Group");
    command->add_flag("--ecm", options->ecm, "Send with error correction (ECM)");
    command->add_flag("--overseas", options->overseas, "Send in overseas mode");
    command->add_flag("--v34", options->v34, "Send with V.34, which includes error correction");
    return command;
  };
  with_filter(with_json(add("list", "List the entries", List)));
  with_fields(with_json(add("add", "Add an entry", AddEntry)))
      ->add_option("NUMBER", options->number, "Fax number: digits and the signs # * - P T")
      ->required();
  CLI::App* edit = with_fields(with_json(add("edit", "Change an entry", EditEntry)));
  edit->add_option("ID", options->id, "The entry's number, as `list` shows it")->required();
  edit->add_option("--number", options->number, "Fax number");
  with_json(add("remove", "Remove entries", RemoveEntries))
      ->add_option("ID", options->ids, "Numbers of the entries, as `list` shows them")
      ->required();
  with_json(add("import", "Add the entries of a vCard or CSV file", Import))
      ->add_option("FILE", options->file, "The file, in UTF-8 (- for standard input)")
      ->required();
  CLI::App* exports = with_filter(add("export", "Write entries into a vCard or CSV file", Export));
  exports->add_option("FILE", options->file, "The file; CSV if it ends with .csv (- for standard output)")->required();
  exports->add_option("--format", options->format, "vcard or csv")->check(CLI::IsMember({"vcard", "csv"}));
}

}  // namespace heron::cli
