// The rule tables as their notation says them, read a second time: nothing of the engine's reader is used.
#pragma once

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "rules/device_gates_table.h"
#include "rules/enable_rules_table.h"
#include "rules/output_mode_gates_table.h"
#include "rules/pair_rules_table.h"
#include "rules/paper_rules_table.h"
#include "rules/triple_rules_table.h"

namespace heron::engine {

/// Controls are known by number; those without a setting are numbers in the notation too.
struct Notation {
  struct Term {
    int control;
    int value;
  };
  using Terms = std::vector<Term>;
  struct Row {
    int level = 0;
    bool all = false;
    Terms parents;
    std::string function;
  };
  struct Papers {
    int value;
    std::vector<int> conditions;
    std::set<int> set;
  };

  std::map<int, int> dialogs;
  std::set<int> fixed, alwaysUsable, printerOnly;
  std::map<int, std::vector<Row>> rows;                         ///< enable rules
  std::map<int, std::vector<Terms>> deviceGates;                ///< one of the chains must hold
  std::map<std::pair<int, int>, std::vector<Terms>> conflicts;  ///< other operands, by first control and value
  std::map<int, std::vector<Papers>> papers;                    ///< by group
  std::map<int, std::vector<int>> groups;
  std::map<int, Term> conditions;

  Notation() {
    ReadControls();
    ReadValues();
    ReadEnableRules();
    for (const std::string& line : Lines(kDeviceGateText)) {
      const auto sides = Split(line, ":");
      auto& gates = deviceGates[NumberOf(Words(sides[0])[0])];
      for (const std::string& chain : Split(sides[1], "|"))
        std::ranges::copy(Product(chain), std::back_inserter(gates));
    }
    for (const std::string& line : Lines(kOutputModeGateText)) printerOnly.insert(NumberOf(Words(line)[0]));
    ReadConflicts(kPairRuleText);
    ReadConflicts(kTripleRuleText);
    ReadPapers();
  }

 private:
  using Strings = std::vector<std::string>;

  static Strings Split(const std::string& text, const std::string& separator) {
    Strings parts;
    size_t from = 0;
    for (size_t at; (at = text.find(separator, from)) != std::string::npos; from = at + separator.size())
      parts.push_back(text.substr(from, at - from));
    parts.push_back(text.substr(from));
    return parts;
  }
  static Strings Words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
  }
  static Strings Lines(std::u16string_view text) {
    Strings lines = Split(std::string(text.begin(), text.end()), "\n");
    std::erase_if(lines, [](const std::string& line) { return Words(line).empty(); });
    return lines;
  }
  /// The rows of a table file of the driver.
  static Strings TableLines(const std::string& path) {
    std::ifstream file(HERON_TABLES + path);
    Strings lines;
    for (std::string line; std::getline(file, line);) {
      if (!Words(line).empty() && line[0] != '#') lines.push_back(line);
    }
    return lines;
  }

  int ValueOf(const std::string& control, const std::string& word) const {
    if (std::isupper(static_cast<unsigned char>(word[0])) == 0) return std::stoi(word);
    const auto parameter = parameters_.find(control);
    return values_.at(parameter == parameters_.end() ? Split(control, ".")[0] : parameter->second).at(word);
  }
  int NumberOf(const std::string& name) const {
    const auto found = numbers_.find(name);
    return found == numbers_.end() ? std::stoi(name) : found->second;
  }
  /// The terms of "control=value" or "control={value,value}".
  Terms TermsOf(const std::string& operand) const {
    const auto sides = Split(Words(operand)[0], "=");
    std::string values = sides[1];
    std::erase_if(values, [](char c) { return c == '{' || c == '}'; });
    Terms terms;
    for (const std::string& value : Split(values, ",")) terms.push_back({NumberOf(sides[0]), ValueOf(sides[0], value)});
    return terms;
  }
  /// Every combination of the operands' terms.
  std::vector<Terms> Product(const std::string& operands) const {
    std::vector<Terms> chains = {{}};
    for (const std::string& operand : Split(operands, "&")) {
      std::vector<Terms> longer;
      for (const Terms& chain : chains) {
        for (const Term& term : TermsOf(operand)) longer.emplace_back(chain).push_back(term);
      }
      chains = longer;
    }
    return chains;
  }

  void ReadControls() {
    int dialog = 0;
    for (const std::string& line : TableLines("rules/controls.table")) {
      const auto words = Words(line);
      if (words[0] == "dialog") {
        dialog = std::stoi(words[1]);
        continue;
      }
      const int number = std::stoi(words[0]);
      numbers_[words[3]] = number;
      dialogs[number] = dialog;
      if (words.back() == "fixed") fixed.insert(number);
      const auto parameter = std::ranges::find(words, "parameter");
      if (parameter != words.end()) parameters_[words[3]] = *(parameter + 1);
    }
  }

  void ReadValues() {
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

  void ReadEnableRules() {
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
          if (head[i].find('=') != std::string::npos) row.parents.push_back(TermsOf(head[i])[0]);
        }
      }
      for (std::string name : Words(sides[1])) {
        const bool star = name.back() == '*';
        if (star) name.pop_back();
        rows[NumberOf(name)].push_back(row);
        if (star) alwaysUsable.insert(NumberOf(name));
      }
    }
  }

  void ReadConflicts(std::u16string_view text) {
    for (const std::string& line : Lines(text)) {
      const std::string operands = " " + Split(line, " -> ")[0];
      const bool media = operands.find(" M=") != std::string::npos;  // the media type of each of three trays
      for (const std::string& tray : media ? Strings{".page", ".frontCover", ".backCover"} : Strings{""}) {
        std::string own = operands;
        for (size_t at; (at = own.find(" M=")) != std::string::npos;) own.replace(at + 1, 1, "trayMediaType" + tray);
        for (const Terms& terms : Product(own))
          conflicts[{terms[0].control, terms[0].value}].emplace_back(terms.begin() + 1, terms.end());
      }
    }
  }

  void ReadPapers() {
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
      for (const std::string& name : Words(columns[1])) groups[std::stoi(columns[0])].push_back(NumberOf(name));
    }
    for (const std::string& line : Lines(kPaperRuleText)) {
      const auto columns = Split(line, "|");
      const int group = std::stoi(columns[0]);
      Papers row{ValueOf(first_of.at(group), Words(columns[1])[0]), {}, sets.at(Words(columns[4])[0])};
      for (const std::string& condition : Words(columns[2])) {
        if (condition != "-") row.conditions.push_back(std::stoi(condition));
      }
      papers[group].push_back(row);
    }
    for (const std::string& line : Lines(kPaperConditionText)) {
      const auto columns = Split(line, "|");
      conditions[std::stoi(columns[0])] = TermsOf(columns[1])[0];
    }
  }

  std::map<std::string, int> numbers_;
  std::map<std::string, std::string> parameters_;             ///< of controls that aren't found by their key
  std::map<std::string, std::map<std::string, int>> values_;  ///< by name, by key or parameter
};

}  // namespace heron::engine
