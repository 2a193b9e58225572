// Additions to --help beside what the commands declare: names of option values, and examples.
// Read by help.cc; tests/cli/test_first_contact.py runs every example in a folder with the files that they name.
#pragma once

#include <string_view>

namespace heron::cli {

/// The name of an option's value where the option doesn't define one. An option of one command precedes the same
/// option of all ("").
struct ValueName {
  std::string_view command;
  std::string_view option;  ///< without dashes
  std::string_view value;
};

// clang-format off
inline constexpr ValueName kValueNames[] = {
    {"heron print",  "out",     "FOLDER"},
    {"heron-spool",  "out",     "FOLDER"},
    {"heron print",  "path",    "compact|full"},
    {"",             "printer", "NAME"},
    {"",             "in",      "FILE"},
    {"",             "out",     "FILE"},
    {"",             "record",  "FILE"},
    {"",             "entry",   "ENTRY"},
    {"",             "scale",   "N"},
    {"",             "o",       "KEY=VALUE"},
    {"",             "folder",  "FOLDER"},
    {"",             "only",    "LIST"},
    {"",             "with",    "LIST"},
    {"",             "country", "CODE"},
    {"",             "server",  "NAME"},
    {"",             "port",    "NAME"},
    {"",             "driver",  "NAME"},
    {"heron print",  "to",      "NUMBER[=NAME]"},
    {"",             "to",      "FORMAT"},
    {"",             "from",    "FILE"},
    {"",             "name",    "TEXT"},
    {"",             "company", "TEXT"},
    {"",             "department", "TEXT"},
    {"",             "recipients", "FILE"},
    {"",             "path",    "488|556"},
};
// clang-format on

/// One example per row; the examples of a command are adjacent.
struct HelpExample {
  std::string_view command;
  std::string_view line;
};

// clang-format off
inline constexpr HelpExample kHelpExamples[] = {
    {"heron",                 "heron printer add Office"},
    {"heron",                 "heron settings -p Office -o lpPRNType=Booklet"},
    {"heron",                 "heron print -p Office letter.txt --out job"},
    {"heron printer",         "heron printer add Office"},
    {"heron printer add",     "heron printer add \"Laser in the hall\" --port 192.0.2.7"},
    {"heron printer list",    "heron printer list --json"},
    {"heron printer show",    "heron printer show Office"},
    {"heron printer remove",  "heron printer remove Office"},
    {"heron record",          "heron record default -p Office --out job.bin"},
    {"heron record default",  "heron record default -p Office --out job.bin"},
    {"heron record merge",    "heron record merge -p Office --in other-driver.bin --out job.bin"},
    {"heron record convert",  "heron record convert -p Office --in job.bin --to legacy --out old.bin"},
    {"heron record show",     "heron record show job.bin --all"},
    {"heron record show",     "heron record show -p Office"},
    {"heron record diff",     "heron record diff job.bin other-driver.bin"},
    {"heron capabilities",    "heron capabilities -p Office --json"},
    {"heron catalog",         "heron catalog \"Paper Size\""},
    {"heron settings",        "heron settings -p Office -l"},
    {"heron settings",        "heron settings -p Office -o lpPRNType=Booklet --dry-run"},
    {"heron settings",        "heron settings -p Office -o lpOutputPaper=A4 --yes"},
    {"heron controls",        "heron controls -p Office"},
    {"heron sheet",           "heron sheet -p Office"},
    {"heron library",         "heron library save \"Booklet for the board\" -p Office"},
    {"heron library list",    "heron library list -p Office"},
    {"heron library show",    "heron library show 1 --diff -p Office"},
    {"heron library save",    "heron library save \"Booklet for the board\" -p Office --comment \"A4, stapled\""},
    {"heron library recall",  "heron library recall 1 -p Office --dry-run"},
    {"heron library register", "heron library register board.vxs -p Office"},
    {"heron library rename",  "heron library rename \"Booklet for the board\" Booklet -p Office"},
    {"heron library comment", "heron library comment Booklet \"two staples\" -p Office"},
    {"heron library move",    "heron library move Booklet up -p Office"},
    {"heron library remove",  "heron library remove Booklet -p Office --yes"},
    {"heron picture",         "heron picture paper -p Office --out sheet.png"},
    {"heron picture",         "heron picture machine -p Office --scale 2 --out machine.png"},
    {"heron print",           "heron print -p Office letter.txt --out job"},
    {"heron print",           "heron print -p Office -o Watermark_Use=1 report.pdf --out draft"},
    {"heron fax",             "heron fax recipients add -p Office --name Anna -- 0211-5551"},
    {"heron fax recipients",  "heron fax recipients add -p Office --name Anna -- 0211-5551"},
    {"heron fax recipients add", "heron fax recipients add -p Office --name Bob -- 0211-5552"},
    {"heron fax recipients add", "printf 'Zoe,0211-5553\\n' | heron fax recipients add -p Office --from -"},
    {"heron fax recipients list", "heron fax recipients list -p Office --json"},
    {"heron fax recipients remove", "heron fax recipients remove -p Office -- 0211-5552"},
    {"heron fax recipients clear", "heron fax recipients clear -p Office"},
    {"heron fax recipients sort", "heron fax recipients sort name -p Office"},
    {"heron fax cover",       "heron fax cover show -p Office"},
    {"heron fax cover show",  "heron fax cover show -p Office"},
    {"heron fax cover reset", "heron fax cover reset -p Office"},
    {"heron fax cover set",   "heron fax cover set -p Office -- \"Subject=Our offer\" Style=2"},
    {"heron fax phonebook",   "heron fax phonebook add --name Anna -- 0211-5551"},
    {"heron fax phonebook add", "heron fax phonebook add --name Bob --group Board -- 0211-5552"},
    {"heron fax phonebook edit", "heron fax phonebook edit 1 --company \"Miller Ltd\""},
    {"heron fax phonebook remove", "heron fax phonebook remove 2"},
    {"heron fax phonebook import", "printf 'Zoe,0211-5553\\n' | heron fax phonebook import -"},
    {"heron fax phonebook export", "heron fax phonebook export book.vcf"},
    {"heron fax phonebook list", "heron fax phonebook list --search anna"},
    {"heron print",           "cat letter.txt | heron print -p Office - --out piped"},
};
// clang-format on

}  // namespace heron::cli
