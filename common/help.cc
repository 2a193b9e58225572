// What --help says (command_line.h): made from what the commands declare, and from help_table.h.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>

#include "command.h"
#include "command_line.h"
#include "help_table.h"

namespace heron::cli {
namespace {

constexpr size_t kColumns = 80;
constexpr size_t kWidestName = 26;  ///< a longer one has its line to itself
constexpr size_t kIndent = 2;

struct Row {
  std::string name;
  std::string text;
};

/// `text` in lines that end before the last column; all but the first begin at column `indent`.
std::string Wrapped(const std::string& text, size_t indent) {
  std::string wrapped;
  size_t column = indent;
  size_t at = 0;
  while (at < text.size()) {
    size_t end = std::min(text.find(' ', at), text.size());
    // A lone dash, the name of standard input, isn't torn off what is said of it.
    if (end < text.size() && end > 0 && text[end - 1] == '-') end = std::min(text.find(' ', end + 1), text.size());
    const size_t length = end - at;
    if (at > 0 && column + 1 + length > kColumns) {
      wrapped += '\n' + std::string(indent, ' ');
      column = indent;
    } else if (at > 0) {
      wrapped += ' ';
      ++column;
    }
    wrapped.append(text, at, length);
    column += length;
    at = end + 1;
  }
  return wrapped;
}

std::string Table(const std::string& heading, const std::vector<Row>& rows) {
  if (rows.empty()) return {};
  size_t width = 0;
  for (const Row& row : rows) {
    if (row.name.size() <= kWidestName) width = std::max(width, row.name.size());
  }
  const size_t indent = kIndent + width + kIndent;
  std::string table = '\n' + Heading(heading) + '\n';
  for (const Row& row : rows) {
    table += std::string(kIndent, ' ') + Padded(row.name, width);
    table += row.name.size() > width ? '\n' + std::string(indent, ' ') : std::string(kIndent, ' ');
    table += Wrapped(row.text, indent) + '\n';
  }
  return table;
}

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::string ValueOf(const CLI::Option& option, const std::string& command) {
  if (option.get_items_expected_max() == 0) return {};  // a flag
  const std::string type = option.get_type_name().substr(0, option.get_type_name().find(':'));
  for (const ValueName& row : kValueNames) {
    if (row.command.empty()
            ? !option.check_lname(std::string(row.option)) && !option.check_sname(std::string(row.option))
            : row.command != command || !option.check_lname(std::string(row.option)))
      continue;
    return ' ' + std::string(row.value);
  }
  return ' ' + type;
}

Row RowOf(const CLI::Option& option, const std::string& command) {
  Row row;
  for (const std::string& name : option.get_snames()) row.name += (row.name.empty() ? "-" : ", -") + name;
  for (const std::string& name : option.get_lnames()) row.name += (row.name.empty() ? "--" : ", --") + name;
  row.name += ValueOf(option, command);
  row.text = option.get_description();
  if (option.get_required() && !option.get_positional()) row.text += " (required)";
  if (option.get_expected_max() > 1) row.text += " (may be repeated)";
  return row;
}

bool IsOfEveryCommand(const CLI::Option& option) {
  return option.check_lname("help") || option.check_lname("version");
}

std::string Positional(const CLI::Option& option) {
  const std::string name = Upper(option.get_name(true));
  return option.get_required() ? name : '[' + name + ']';
}

std::string Examples(const std::string& path) {
  std::string examples;
  for (const HelpExample& row : kHelpExamples) {
    if (row.command == path) examples += "  " + std::string(row.line) + '\n';
  }
  return examples.empty() ? examples : '\n' + Heading("Examples") + '\n' + examples;
}

}  // namespace

std::string HelpOf(const CLI::App& command) {
  const std::string path = CommandPath(command);
  std::string usage = "Usage: " + path;
  std::vector<Row> arguments;
  std::vector<Row> options;
  std::vector<Row> common;
  std::vector<Row> commands;
  for (const CLI::App* each : command.get_subcommands([](const CLI::App*) { return true; }))
    commands.push_back({each->get_name(), each->get_description()});
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_positional()) {
      arguments.push_back({Upper(option->get_name(true)), option->get_description()});
    }
    if (option->nonpositional()) (IsOfEveryCommand(*option) ? common : options).push_back(RowOf(*option, path));
  }
  usage += commands.empty() ? " [OPTIONS]" : " COMMAND ...";
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_positional()) usage += ' ' + Positional(*option);
  }
  options.insert(options.end(), common.begin(), common.end());
  std::string help = Wrapped(usage, 0) + "\n\n" + Wrapped(command.get_description(), 0) + '\n';
  help += Table("Commands", commands) + Table("Arguments", arguments) + Table("Options", options) + Examples(path);
  if (!commands.empty()) help += "\n`" + path + " help COMMAND` describes a command.\n";
  return help;
}

}  // namespace heron::cli
