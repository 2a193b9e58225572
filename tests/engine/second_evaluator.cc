#include "second_evaluator.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "rules/device_gates_table.h"
#include "rules/enable_rules_table.h"
#include "rules/finishing_tables.h"
#include "rules/output_mode_gates_table.h"
#include "rules/pair_rules_table.h"
#include "rules/paper_rule_tables.h"
#include "rules/paper_rules_table.h"
#include "rules/triple_rules_table.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  size_t from = 0;
  for (size_t at; (at = text.find(separator, from)) != std::string::npos; from = at + separator.size())
    parts.push_back(text.substr(from, at - from));
  parts.push_back(text.substr(from));
  return parts;
}

std::vector<std::string> Words(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

std::vector<std::string> Lines(std::u16string_view text) {
  std::vector<std::string> lines = Split(std::string(text.begin(), text.end()), "\n");
  std::erase_if(lines, [](const std::string& line) { return Words(line).empty(); });
  return lines;
}

/// The rows of a table file of the driver.
std::vector<std::string> TableLines(const std::string& path) {
  std::ifstream file(HERON_TABLES + path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    if (!Words(line).empty() && line[0] != '#') lines.push_back(line);
  }
  return lines;
}

/// Staple codes have one column, others as many as their table says.
int Code(const World& world, std::span<const FinishCapabilityRow> table, int paper, size_t column) {
  for (const FinishCapabilityRow& row : table) {
    if (row.paper != paper) continue;
    const bool counts = row.condition.control == kNoControl ||
                        world.values.at(kControls[row.condition.control].id) == row.condition.value;
    if (counts) return row.codes[column];
  }
  return 0;
}

}  // namespace

SecondEvaluator::SecondEvaluator() {
  ReadControls();
  ReadValues();
  ReadEnableRules();
  ReadGates();
  ReadRules(kPairRuleText);
  ReadRules(kTripleRuleText);
  ReadPapers();
}

void SecondEvaluator::ReadControls() {
  int dialog = 0;
  for (const std::string& line : TableLines("rules/controls.table")) {
    const auto words = Words(line);
    if (words[0] == "dialog") {
      dialog = std::stoi(words[1]);
      continue;
    }
    const int number = std::stoi(words[0]);
    numbers_[words[3]] = number;
    dialogs_[number] = dialog;
    if (words.back() == "fixed") fixed_.insert(number);
    const auto parameter = std::ranges::find(words, "parameter");
    if (parameter != words.end()) parameters_[words[3]] = *(parameter + 1);
  }
}

void SecondEvaluator::ReadValues() {
  std::map<std::string, std::map<std::string, int>> features;
  std::string feature;
  for (const std::string& line : TableLines("catalog/list_options.table")) {
    const auto columns = Split(line, "|");
    if (!Words(columns[0]).empty()) feature = "f" + Words(columns[0])[0];
    for (const std::string& option : Words(columns[2])) {
      const size_t equals = option.find('=');
      features[feature][option.substr(equals + 1, option.find('/') - equals - 1)] = std::stoi(option);
    }
  }
  for (const std::string& line : TableLines("uistate/params.table")) {
    const auto columns = Split(line, "|");
    if (columns.size() < 3 || Words(columns[1]).size() < 2) continue;
    const auto& values = features[Words(columns[1])[1]];
    for (const std::string& key : Words(columns[2])) values_.insert({key, values});
    values_.insert({Words(columns[0])[0], values});
  }
}

int SecondEvaluator::ValueOf(const std::string& control, const std::string& word) const {
  if (std::isupper(static_cast<unsigned char>(word[0])) == 0) return std::stoi(word);
  const auto parameter = parameters_.find(control);
  return values_.at(parameter == parameters_.end() ? Split(control, ".")[0] : parameter->second).at(word);
}

int SecondEvaluator::NumberOf(const std::string& name) const {
  const auto found = numbers_.find(name);
  return found == numbers_.end() ? std::stoi(name) : found->second;
}

std::vector<SecondEvaluator::Term> SecondEvaluator::Terms(const std::string& operand) const {
  const auto sides = Split(Words(operand)[0], "=");
  std::string values = sides[1];
  std::erase_if(values, [](char c) { return c == '{' || c == '}'; });
  std::vector<Term> terms;
  for (const std::string& value : Split(values, ",")) terms.push_back({NumberOf(sides[0]), ValueOf(sides[0], value)});
  return terms;
}

void SecondEvaluator::ReadEnableRules() {
  Row row;
  for (const std::string& line : Lines(kEnableRuleText)) {
    if (Words(line)[0] == "dialog") continue;
    const auto sides = Split(line, ":");
    const auto head = Words(sides[0]);
    if (!head.empty()) {
      row = {};
      if (head[0].size() > 1)
        row.function = head[0];
      else
        row.level = std::stoi(head[0]);
      for (size_t i = 1; i < head.size(); ++i) {
        row.all |= head[i] == "and";
        if (head[i].find('=') != std::string::npos) row.parents.push_back(Terms(head[i])[0]);
      }
    }
    for (std::string name : Words(sides[1])) {
      const bool star = name.back() == '*';
      if (star) name.pop_back();
      rows_[NumberOf(name)].push_back(row);
      if (star) always_usable_.insert(NumberOf(name));
    }
  }
}

void SecondEvaluator::ReadGates() {
  for (const std::string& line : Lines(kDeviceGateText)) {
    const auto sides = Split(line, ":");
    for (const std::string& alternative : Split(sides[1], "|")) {
      std::vector<std::vector<Term>> chains = {{}};
      for (const std::string& operand : Split(alternative, "&")) {
        std::vector<std::vector<Term>> longer;
        for (const auto& chain : chains) {
          for (const Term& term : Terms(operand)) {
            longer.push_back(chain);
            longer.back().push_back(term);
          }
        }
        chains = longer;
      }
      auto& gates = device_gates_[NumberOf(Words(sides[0])[0])];
      gates.insert(gates.end(), chains.begin(), chains.end());
    }
  }
  for (const std::string& line : Lines(kOutputModeGateText)) printer_only_.insert(NumberOf(Words(line)[0]));
}

void SecondEvaluator::ReadRules(const std::u16string_view& text) {
  for (const std::string& whole : Lines(text)) {
    std::vector<std::string> lines = {whole};
    if (whole.find("M=") == 0 || whole.find(" M=") != std::string::npos) {
      lines.clear();
      for (const char* tray : {"trayMediaType.page", "trayMediaType.frontCover", "trayMediaType.backCover"}) {
        auto operands = Split(Split(whole, " -> ")[0], "&");
        std::string line;
        for (const std::string& operand : operands) {
          std::string word = Words(operand)[0];
          if (word.starts_with("M=")) word = tray + word.substr(1);
          line += (line.empty() ? "" : " & ") + word;
        }
        lines.push_back(line);
      }
    }
    for (const std::string& line : lines) {
      const auto operands = Split(Split(line, " -> ")[0], "&");
      for (const Term& first : Terms(operands[0])) {
        for (const Term& second : Terms(operands[1])) {
          auto& run = rules_[{first.control, first.value}];
          if (operands.size() == 2) {
            run.push_back({{second}});
            continue;
          }
          for (const Term& third : Terms(operands[2])) run.push_back({{second, third}});
        }
      }
    }
  }
}

void SecondEvaluator::ReadPapers() {
  std::map<std::string, std::set<int>> sets;
  std::string letter;
  for (const std::string& line : Lines(kPaperSetText)) {
    const auto columns = Split(line, "|");
    if (!Words(columns[0]).empty()) letter = Words(columns[0])[0];
    for (const std::string& paper : Words(columns[1])) sets[letter].insert(std::stoi(paper));
  }
  std::map<int, std::string> first_of;  // controls of the groups, which share their values
  for (const std::string& line : Lines(kPaperGroupText)) {
    const auto columns = Split(line, "|");
    first_of[std::stoi(columns[0])] = Words(columns[1])[0];
    for (const std::string& name : Words(columns[1])) groups_[std::stoi(columns[0])].push_back(NumberOf(name));
  }
  for (const std::string& line : Lines(kPaperRuleText)) {
    const auto columns = Split(line, "|");
    Papers row{ValueOf(first_of.at(std::stoi(columns[0])), Words(columns[1])[0]), {}, sets.at(Words(columns[4])[0])};
    for (const std::string& condition : Words(columns[2])) {
      if (condition != "-") row.conditions.push_back(std::stoi(condition));
    }
    papers_[std::stoi(columns[0])].push_back(row);
  }
  for (const std::string& line : Lines(kPaperConditionText)) {
    const auto columns = Split(line, "|");
    conditions_[std::stoi(columns[0])] = Terms(columns[1])[0];
  }
}

std::set<int> SecondEvaluator::Governed() const {
  std::set<int> governed;
  for (const auto& [control, rows] : rows_) governed.insert(control);
  return governed;
}

bool SecondEvaluator::Gated(const World& world, int control) const {
  if (printer_only_.contains(control) && world.values.at(902) != 2) return true;
  const auto gates = device_gates_.find(control);
  if (gates == device_gates_.end()) return false;
  return std::ranges::none_of(gates->second, [&](const auto& chain) {
    return std::ranges::all_of(chain, [&](const Term& term) { return world.values.at(term.control) == term.value; });
  });
}

bool SecondEvaluator::Available(const World& world, int control) const {
  const auto known = world.available.find(control);
  if (known != world.available.end()) return known->second;
  return world.available[control] = Decide(world, control);
}

bool SecondEvaluator::Decide(const World& world, int control) const {
  const auto found = rows_.find(control);
  if (found == rows_.end()) return dialogs_.contains(control);
  if (Gated(world, control)) return false;
  for (const Row& row : found->second) {
    if (!row.function.empty()) return ByFunction(world, row.function, control);
    const auto holds = [&](const Term& parent) {
      const auto value = world.values.find(parent.control);
      if (value == world.values.end() || value->second != parent.value) return false;
      return row.level < 2 || Available(world, parent.control);
    };
    const bool truth =
        row.level == 0 || (row.all ? std::ranges::all_of(row.parents, holds) : std::ranges::any_of(row.parents, holds));
    if (truth) return true;
  }
  return false;
}

bool SecondEvaluator::ByFunction(const World& world, const std::string& function, int control) const {
  const auto& v = world.values;
  const auto& sources = world.lists.at(120);
  if (function == "CopiesRule")
    return std::ranges::count(sources, v.at(120)) != 0 && !(v.at(2913) == 1 && v.at(3310) == 2);
  if (function == "PerPageListRule") return v.at(215) == 1 && (control < 251 || control > 254);  // no page in front
  if (function == "OverlayCreateRule") return !(v.at(-2) == 2 && v.at(844) == 1);
  return std::ranges::count(sources, v.at(120)) != 0 && Interleaves(world);
}

bool SecondEvaluator::Interleaves(const World& world) const {
  // Asked before anything else is known: of the ruled controls only 2024 counts as available.
  const Availability early = [&](int control) { return control == 2024 || !rows_.contains(control); };
  const auto& sources = world.lists.at(120);
  const bool transparencies = std::ranges::any_of(world.lists.at(3300), [&](int tray) {
    return world.media.at(tray) == 2 && !Forbidden(world, early, 3300, tray);
  });
  return transparencies && std::ranges::any_of(world.lists.at(2024), [&](int tray) {
           return tray != world.values.at(120) && std::ranges::count(sources, tray) != 0 && world.media.at(tray) != 2 &&
                  !Forbidden(world, early, 2024, tray);
         });
}

bool SecondEvaluator::Forbidden(const World& world, int list, int value) const {
  return Forbidden(
      world, [&](int control) { return Available(world, control); }, list, value);
}

bool SecondEvaluator::Forbidden(const World& world, const Availability& available, int list, int value) const {
  if (list == 2024 && available(2024) && world.media.at(value) == 2) return true;
  return ByCombination(world, available, list, value) || ByPaper(world, available, list, value) ||
         ByFinishing(world, available, list, value);
}

bool SecondEvaluator::ByCombination(const World& world, const Availability& available, int list, int value) const {
  const auto run = rules_.find({list, value});
  if (run == rules_.end() || fixed_.contains(list)) return false;
  const auto usable = [&](int control) { return always_usable_.contains(control) || available(control); };
  const auto device = [&](int control) { return dialogs_.at(control) == 800; };
  const auto below = [&](int control) {
    const auto rows = rows_.find(control);
    return rows != rows_.end() && !rows->second[0].parents.empty() && rows->second[0].parents[0].control == list;
  };
  if (!usable(list)) return false;
  for (const Rule& rule : run->second) {
    const auto& others = rule.others;
    if (!std::ranges::all_of(others, [&](const Term& t) { return world.values.at(t.control) == t.value; })) continue;
    const bool all_usable = std::ranges::all_of(others, [&](const Term& t) { return usable(t.control); });
    const bool outside = std::ranges::any_of(others, [&](const Term& t) { return !device(t.control); });
    const bool child = std::ranges::any_of(others, [&](const Term& t) { return below(t.control); });
    if (all_usable && (!device(list) || (!outside && !child))) return true;
    if (others.size() == 1 && !all_usable && device(others[0].control)) return true;
  }
  return false;
}

bool SecondEvaluator::ByPaper(const World& world, const Availability& available, int list, int item) const {
  const auto v = [&](int control) { return control == list ? item : world.values.at(control); };
  const bool papers = list == 111 || list == 114;
  int paper = v(114) == 257 ? v(111) : v(114);
  if ((paper & 512) != 0) paper = 256;
  // What doubles is read from the settings, not from the item.
  const auto& now = world.values;
  const bool two = now.at(308) == 1 || now.at(176) == 3 || now.at(-1) == 1;
  static const std::map<int, std::set<int>> only = {{2, {2407}}, {13, {2417, 2921}}, {19, {2405}}};
  const int doubled = two ? DoubledPaper(static_cast<uint16_t>(paper)) : paper;
  for (const auto& [group, controls] : groups_) {
    if (group == 20 || (only.contains(group) && !only.at(group).contains(list))) continue;
    const bool plain = group == 8 || group == 9 || group == 11;
    const int sheet = plain ? paper : doubled;
    for (const int control : controls) {
      if (!papers && (control != list || group == 11 || (group >= 14 && group <= 16))) continue;
      if (!available(control) && group != 6) continue;
      for (const Papers& row : papers_.at(group)) {
        if (row.value != v(control)) continue;
        const auto holds = [&](int number) {
          const Term& term = conditions_.at(number);
          return available(term.control) && now.at(term.control) == term.value;
        };
        const bool counts = row.conditions.empty() || std::ranges::any_of(row.conditions, holds);
        if (counts && !row.set.contains(sheet)) return true;
      }
    }
  }
  if (list != 174 && list != 309) return false;
  const bool flipped = available(125) && (now.at(125) == 5 || now.at(125) == 8);
  const bool upright = (now.at(106) == 1) == flipped;  // after the second flip
  const bool applies = list == 174 ? now.at(176) == 3 || now.at(-1) == 1 : now.at(308) == 1;
  if (!applies) return false;
  if (list == 174) return upright ? item == 2 || item == 3 : item == 4;
  return upright ? item == 3 || item == 4 : item == 5 || item == 6;
}

bool SecondEvaluator::ByFinishing(const World& world, const Availability& available, int list, int item) const {
  const auto v = [&](int control) { return control == list ? item : world.values.at(control); };
  const bool papers = list == 111 || list == 114;
  int paper = v(114) == 257 ? v(111) : v(114);
  if ((paper & 512) != 0) paper = 256;
  const int page = paper;  // folds look at the page itself

  const bool combined = available(308) && v(308) == 1;
  const auto fold_forbids = [&](int code) {
    return (code == 1 && (v(176) == 3 || combined)) || (code == 2 && v(176) != 3 && !combined) || code == 3;
  };
  if (papers || list == 188) {
    const bool folds = (available(187) && v(187) == 1) || v(177) == 1;
    if (folds && v(188) >= 1 && v(188) <= 3 && fold_forbids(Code(world, FoldCapabilities(), page, v(188) == 3)))
      return true;
  }
  if ((papers || list == 318) && v(317) == 1 && (v(318) == 11 || v(318) == 12) &&
      fold_forbids(Code(world, FoldCapabilities(), page, 1)))
    return true;

  if (v(176) != 1 && v(176) != 2) return false;
  int staple = v(131);
  bool moved = false;
  if (v(174) >= 1 && v(174) <= 3 && (staple == 2 || staple == 3))
    staple = 1, moved = true;
  else if (v(174) == 4 && staple == 1)
    staple = 2, moved = true;
  if (list == 131 && moved) return true;

  if (available(309)) paper = DoubledPaper(static_cast<uint16_t>(paper));
  bool rotated = IsRotatedFeed(static_cast<uint16_t>(paper));
  const bool folded = v(318) == 21 || v(318) == 22;
  if (v(318) == 21 && rotated && PlainTwin(paper) >= 0)
    paper = PlainTwin(paper), rotated = false;
  else if (v(318) == 22 && !rotated && RotatedTwin(paper) >= 0)
    paper = RotatedTwin(paper), rotated = true;
  bool portrait = v(106) == 1;
  if (available(125) && (v(125) == 5 || v(125) == 8)) portrait = !portrait;
  if (available(309)) portrait = !portrait;
  const int wrong = portrait == rotated ? 1 : 2;
  const int edge = v(174) == 2 || v(174) == 3 ? 1 : v(174) == 4 ? 2 : 0;
  const bool tabs = v(3310) == 6 || v(3330) == 6 || v(3350) == 6 || world.defaults.at(2417) == 6;

  if ((papers || list == 131) && available(130) && available(131)) {
    const int code = Code(world, StapleCapabilities(), paper, 0);
    int first = moved ? 5 : 0, second = 0;
    if ((code == 1 || (code == 0 && folded)) && staple == 4 && edge != 0) first = edge;
    if (code == 3) first = 4;
    if (tabs && v(174) == 2 && staple == 4) second = 1;
    if (tabs && v(174) == 4 && (staple == 3 || staple == 4)) second = 2;
    if (tabs && v(174) == 3) second = 3;
    const bool conflict = first == wrong || second == wrong || second == 3;
    if (list == 131 && conflict && (first == 1 || first == 2 || second == 1 || second == 2)) return true;
    if (papers && !conflict && first == 4) return true;
  }
  if ((papers || list == 186) && available(136) && v(136) == 1) {
    const int code =
        v(186) >= 2 && v(186) <= 4 ? Code(world, PunchCapabilities(), paper, static_cast<size_t>(v(186) - 2)) : 0;
    const bool never = code == 4 || (code == 3 && available(131));
    if (papers && never) return true;
    const int first = code == 1 || code == 3 || folded ? edge : 0;
    const int second = !tabs ? 0 : v(174) == 3 ? 3 : edge;
    if (list == 186 && !never && (first == wrong || second == wrong || second == 3)) return true;
  }
  return false;
}

}  // namespace heron::engine
