// Reads the rules of availability, at compile time.
#include "rules/dependency_tables.h"

#include "rules/device_gates_table.h"
#include "rules/enable_rules_table.h"
#include "rules/notation.h"
#include "rules/output_mode_gates_table.h"

namespace heron::engine {
namespace {

/// What a line says of all its controls: a rule without control, and what follows from its second operand.
struct RuleHead {
  EnableRule rule;
  EnableRule second;
  bool hasSecond = false;
};

constexpr RuleFunction FunctionOf(Text name) {
  if (name == u"CopiesRule") return RuleFunction::kCopies;
  if (name == u"PerPageListRule") return RuleFunction::kPerPageList;
  if (name == u"OverlayCreateRule") return RuleFunction::kOverlayCreate;
  if (name == u"OhpInterleaveRule") return RuleFunction::kOhpInterleave;
  throw "no such function";
}

constexpr void ParseParent(Text word, EnableRule& rule) {
  const Operand operand = ParseOperand(word);
  if (operand.count != 1) throw "a parent has one value";
  rule.parent = ControlIdOf(operand.control);
  rule.parentValue = operand.values[0];
}

constexpr RuleHead ParseHead(Text text, uint16_t dialog) {
  RuleHead head;
  head.rule.dialog = dialog;
  const Text first = catalog::CutWord(text);
  if (first != u"0" && first != u"1" && first != u"2") {
    head.rule.function = FunctionOf(first);
    return head;
  }
  head.rule.level = static_cast<uint8_t>(first[0] - u'0');
  if (head.rule.level != 0) ParseParent(catalog::CutWord(text), head.rule);
  const Text word = catalog::CutWord(text);
  if (word.empty()) return head;
  if (word != u"also") {
    if (word != u"or" && word != u"and") throw "unknown word";
    head.rule.join = word == u"or" ? RuleJoin::kAny : RuleJoin::kAll;
    head.rule.groupSize = 2;
  }
  head.hasSecond = true;
  head.second = head.rule;
  ParseParent(catalog::CutWord(text), head.second);
  return head;
}

consteval auto ParseEnableRules() {
  std::array<EnableRule, kEnableRuleCount> rules{};
  size_t used = 0;
  uint16_t dialog = 0;
  RuleHead head;
  catalog::ForEachLine(kEnableRuleText, [&](Text line) {
    if (line.starts_with(u"dialog ")) {
      dialog = catalog::Unsigned(line.substr(7));
      return;
    }
    const Text condition = catalog::Cut(line, u':');
    if (!condition.empty()) head = ParseHead(condition, dialog);
    for (Text word = catalog::CutWord(line); !word.empty(); word = catalog::CutWord(line)) {
      EnableRule& rule = rules.at(used++);
      rule = head.rule;
      if (word.ends_with(u'*')) {
        rule.alwaysUsable = true;
        word.remove_suffix(1);
      }
      rule.control = ControlIdOf(word);
      if (!head.hasSecond) continue;
      EnableRule& second = rules.at(used++);
      second = head.second;
      second.control = head.rule.groupSize == 2 ? rule.control : uint16_t{0};
    }
  });
  if (used != rules.size()) throw "another number of rules";
  return rules;
}

/// One alternative, opened into a row, or a chain of two, for each combination of values.
template <size_t kSize>
constexpr void ExpandAlternative(Text text, std::array<DeviceGate, kSize>& gates, size_t& used) {
  const Operand first = ParseOperand(catalog::Cut(text, u'&'));
  const ControlIndex control = NamedIndex(first.control);
  const Operand second = text.empty() ? Operand{} : ParseOperand(catalog::Cut(text, u'&'));
  if (!text.empty()) throw "a chain has two tests at most";
  for (size_t i = 0; i < first.count; ++i) {
    const RuleTerm test = {control, first.values[i]};
    if (second.count == 0) gates.at(used++) = {0, test, DeviceGate::Join::kAlone};
    for (size_t j = 0; j < second.count; ++j) {
      gates.at(used++) = {0, test, DeviceGate::Join::kBegin};
      gates.at(used++) = {0, {NamedIndex(second.control), second.values[j]}, DeviceGate::Join::kEnd};
    }
  }
}

consteval auto ParseDeviceGates() {
  std::array<DeviceGate, kDeviceGateCount> gates{};
  size_t used = 0;
  catalog::ForEachLine(kDeviceGateText, [&](Text line) {
    const uint16_t control = kControls[NamedIndex(catalog::Cut(line, u':'))].id;
    const size_t first = used;
    while (!line.empty()) ExpandAlternative(catalog::Cut(line, u'|'), gates, used);
    gates.at(first).control = control;
  });
  if (used != gates.size()) throw "another number of gates";
  return gates;
}

consteval auto ParseOutputModeGates() {
  std::array<OutputModeGate, kOutputModeGateCount> gates{};
  size_t used = 0;
  catalog::ForEachLine(kOutputModeGateText, [&](Text line) {
    OutputModeGate& gate = gates.at(used++);
    gate.control = ControlIdOf(catalog::CutWord(line));
    for (Text word = catalog::CutWord(line); !word.empty(); word = catalog::CutWord(line)) {
      if (word == u"reset") {
        gate.resetOnFax = true;
      } else if (word == u"label") {
        gate.report = OutputModeGate::Report::kLabel;
      } else if (word == u"text") {
        gate.report = OutputModeGate::Report::kText;
        gate.text = catalog::Unsigned(catalog::CutWord(line));
      } else {
        throw "unknown word";
      }
    }
  });
  if (used != gates.size()) throw "another number of gates";
  return gates;
}

/// The first row of each id, plus one; 0 if it has none.
using FirstRows = std::array<uint8_t, controls_internal::kIdLimit>;

FirstRows FindFirstRows(const auto& rows) {
  FirstRows first{};
  for (size_t i = rows.size(); i-- > 0;) {
    if (rows[i].control != 0) first.at(rows[i].control) = static_cast<uint8_t>(i + 1);
  }
  return first;
}

int RowOf(const FirstRows& rows, uint16_t id) {
  return id < rows.size() ? rows[id] - 1 : -1;
}

}  // namespace

constexpr std::array<EnableRule, kEnableRuleCount> kEnableRules = ParseEnableRules();
constexpr std::array<DeviceGate, kDeviceGateCount> kDeviceGates = ParseDeviceGates();
constexpr std::array<OutputModeGate, kOutputModeGateCount> kOutputModeGates = ParseOutputModeGates();

int FirstEnableRule(uint16_t id) {
  static const FirstRows kRows = FindFirstRows(kEnableRules);
  return RowOf(kRows, id);
}

int FirstDeviceGate(uint16_t id) {
  static const FirstRows kRows = FindFirstRows(kDeviceGates);
  return RowOf(kRows, id);
}

int FirstOutputModeGate(uint16_t id) {
  static const FirstRows kRows = FindFirstRows(kOutputModeGates);
  return RowOf(kRows, id);
}

}  // namespace heron::engine
