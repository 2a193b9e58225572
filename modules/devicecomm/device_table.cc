// Reads *.device files (device_table.h).

#include "device_table.h"

#include <dlfcn.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>

namespace heron::devicecomm {
namespace {

namespace fs = std::filesystem;

constexpr size_t kLargestTable = 256 * 1024;
constexpr size_t kMostRules = 1024;

struct Word {
  std::string_view text;
  bool quoted = false;
};

/// The words of a line up to a comment; nothing if a quotation doesn't end.
std::optional<std::vector<Word>> Words(std::string_view line) {
  std::vector<Word> words;
  while (true) {
    const size_t start = line.find_first_not_of(" \t\r");
    if (start == std::string_view::npos || line[start] == '#') return words;
    line.remove_prefix(start);
    const bool quoted = line[0] == '"';
    if (quoted) line.remove_prefix(1);
    const size_t end = line.find_first_of(quoted ? "\"" : " \t\r");
    if (quoted && end == std::string_view::npos) return std::nullopt;
    words.push_back({line.substr(0, end), quoted});
    line.remove_prefix(std::min(line.size(), end == std::string_view::npos ? end : end + (quoted ? 1 : 0)));
  }
}

template <typename Number>
bool ParseNumber(std::string_view text, Number* number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
  return error == std::errc() && end == text.data() + text.size();
}

using Objects = std::map<std::string, Oid, std::less<>>;

Oid ObjectOf(const Word& word, const Objects& objects) {
  const auto known = objects.find(word.text);
  return known != objects.end() ? known->second : ParseOid(word.text);
}

/// OBJECT [is TEXT | has TEXT | above NUMBER]
bool ParseTest(std::span<const Word> words, const Objects& objects, Rule* rule) {
  if (words.empty() || (words.size() != 1 && words.size() != 3)) return false;
  rule->object = ObjectOf(words[0], objects);
  if (rule->object.size() < 2) return false;
  if (words.size() == 1) return true;
  rule->text = words[2].text;
  if (words[1].text == "is") rule->test = Test::kIs;
  if (words[1].text == "has") rule->test = Test::kHas;
  if (words[1].text == "above" && ParseNumber(words[2].text, &rule->number)) rule->test = Test::kAbove;
  return rule->test != Test::kAny;
}

std::optional<Rule> ParseRule(std::span<const Word> words, const Objects& objects) {
  Rule rule;
  const std::string_view kind = words[0].text;
  size_t next = 1;
  if (kind == "option") {
    if (words.size() < 2 || !ParseNumber(words[next++].text, &rule.type)) return std::nullopt;
  } else if (kind == "model" || kind == "family") {
    rule.kind = kind == "model" ? RuleKind::kModel : RuleKind::kFamily;
  } else {
    return std::nullopt;
  }
  if (words.size() <= next || words[next].text.empty()) return std::nullopt;
  rule.name = words[next].text;
  if (!ParseTest(words.subspan(next + 1), objects, &rule)) return std::nullopt;
  return rule;
}

bool ParseLine(std::string_view line, Objects* objects, std::vector<Rule>* rules) {
  const auto words = Words(line);
  if (!words) return false;
  if (words->empty()) return true;
  if (words->front().text == "object") {
    if (words->size() != 3) return false;
    Oid oid = ParseOid((*words)[2].text);
    if (oid.size() < 2) return false;
    (*objects)[std::string((*words)[1].text)] = std::move(oid);
    return true;
  }
  auto rule = ParseRule(*words, *objects);
  if (!rule || rules->size() >= kMostRules) return false;
  rules->push_back(std::move(*rule));
  return true;
}

/// Where this module was loaded from.
fs::path ModuleFolder() {
  static const char kHere = 0;
  Dl_info info{};
  return dladdr(&kHere, &info) != 0 && info.dli_fname != nullptr ? fs::path(info.dli_fname).parent_path() : fs::path();
}

std::vector<Rule> ReadTables(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code ignored;
    if (entry->path().extension() == ".device" && entry->is_regular_file(ignored) &&
        entry->file_size(ignored) <= kLargestTable)
      files.push_back(entry->path());
  }
  std::ranges::sort(files);
  std::vector<Rule> rules;
  for (const fs::path& path : files) {
    std::ifstream file(path, std::ios::binary);
    std::string text(kLargestTable, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(file.gcount()));
    ParseDeviceTable(text, &rules);
  }
  return rules;
}

}  // namespace

bool Rule::Matches(const Value& value) const {
  switch (test) {
    case Test::kIs:
      return value.text == text;
    case Test::kHas:
      return value.text.find(text) != std::string::npos;
    case Test::kAbove:
      return value.number > number;
    case Test::kAny:
      return !value.text.empty();
  }
  return false;
}

bool ParseDeviceTable(std::string_view text, std::vector<Rule>* rules) {
  Objects objects;
  bool all = true;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    all &= ParseLine(text.substr(0, end), &objects, rules);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return all;
}

const std::vector<Rule>& DeviceRules() {
  static const std::vector<Rule> rules = ReadTables(ModuleFolder());
  return rules;
}

}  // namespace heron::devicecomm
