// Reads the pair and triple rules, at compile time, and finds the run of rules that a change calls for.
#include "rules/combination_tables.h"

#include <algorithm>

#include "rules/notation.h"
#include "rules/pair_rules_table.h"
#include "rules/triple_rules_table.h"

namespace heron::engine {
namespace {

/// The values of M in turn.
constexpr std::array kTrayMedia = {Control(u"trayMediaType.page"), Control(u"trayMediaType.frontCover"),
                                   Control(u"trayMediaType.backCover")};

constexpr size_t kMostOperands = 3;

/// A line of a rule table: operands whose braces are still closed.
struct RuleLine {
  std::array<Operand, kMostOperands> when;
  size_t operands = 0;
  Operand target;
  bool eachTray = false;
};

constexpr RuleLine ParseLine(Text line) {
  RuleLine rule;
  const size_t arrow = line.find(u" -> ");
  const size_t becomes = line.find(u":=");
  if (arrow == Text::npos || becomes == Text::npos) throw "a rule without a target";
  rule.target.control = line.substr(arrow + 4, becomes - arrow - 4);
  ParseValues(line.substr(becomes + 2), rule.target);
  Text left = line.substr(0, arrow);
  while (!left.empty()) {
    Operand& operand = rule.when.at(rule.operands++);
    operand = ParseOperand(catalog::Cut(left, u'&'));
    rule.eachTray |= operand.control == kTrayMediaName;
  }
  return rule;
}

constexpr size_t CountRules(Text text) {
  size_t rules = 0;
  catalog::ForEachLine(text, [&](Text line) {
    const RuleLine rule = ParseLine(line);
    size_t count = rule.eachTray ? kTrayMedia.size() : 1;
    for (size_t i = 0; i < rule.operands; ++i) count *= rule.when[i].count;
    rules += count;
  });
  return rules;
}

constexpr ControlIndex ControlOf(const Operand& operand, ControlIndex tray_media) {
  return operand.control == kTrayMediaName ? tray_media : NamedIndex(operand.control);
}

/// Writes the rules of a line for one tray's media control, the values of the last operand turning fastest.
template <size_t kOperands, size_t kSize>
constexpr void Expand(const RuleLine& line, ControlIndex tray_media,
                      std::array<CombinationRule<kOperands>, kSize>& rules, size_t& used) {
  if (line.operands != kOperands) throw "another number of operands";
  CombinationRule<kOperands> rule;
  rule.target = {ControlOf(line.target, tray_media), line.target.values[0]};
  size_t combinations = 1;
  for (size_t i = 0; i < kOperands; ++i) {
    rule.when[i].control = ControlOf(line.when[i], tray_media);
    combinations *= line.when[i].count;
  }
  for (size_t n = 0; n < combinations; ++n) {
    size_t rest = n;
    for (size_t i = kOperands; i-- > 0;) {
      rule.when[i].value = line.when[i].values[rest % line.when[i].count];
      rest /= line.when[i].count;
    }
    rules.at(used++) = rule;
  }
}

/// Sorts by first control, first value and place in the table: keys of all three, sorted as plain numbers, since moving
/// whole rules about costs the compiler seconds.
template <typename Rules>
consteval Rules SortByFirst(const Rules& rules) {
  std::array<uint64_t, std::tuple_size_v<Rules>> keys{};
  for (size_t i = 0; i < rules.size(); ++i) {
    const RuleTerm& first = rules[i].when[0];
    if (first.value < 0) throw "a negative value";
    keys[i] = uint64_t{first.control} << 32 | static_cast<uint64_t>(first.value) << 16 | i;
  }
  std::ranges::sort(keys);
  Rules sorted{};
  for (size_t i = 0; i < keys.size(); ++i) sorted[i] = rules[keys[i] & 0xFFFF];
  return sorted;
}

template <size_t kOperands, size_t kSize>
constexpr auto ParseRules(Text text) {
  std::array<CombinationRule<kOperands>, kSize> rules{};
  size_t used = 0;
  catalog::ForEachLine(text, [&](Text line) {
    const RuleLine rule = ParseLine(line);
    for (size_t tray = 0; tray < (rule.eachTray ? kTrayMedia.size() : 1); ++tray) {
      Expand(rule, kTrayMedia[tray], rules, used);
    }
  });
  return rules;
}

constexpr auto kPairRules = SortByFirst(ParseRules<2, CountRules(kPairRuleText)>(kPairRuleText));
constexpr auto kTripleRules = SortByFirst(ParseRules<3, CountRules(kTripleRuleText)>(kTripleRuleText));
static_assert(kPairRules.size() == 793);
static_assert(kTripleRules.size() == 269);

/// Where each control's rules begin; the last entry is the end of all.
using Starts = std::array<uint16_t, kControlCount + 1>;

template <typename Rules>
consteval Starts FindStarts(const Rules& rules) {
  Starts starts{};
  for (const auto& rule : rules) ++starts[rule.when[0].control + 1U];
  for (size_t i = 1; i < starts.size(); ++i) starts[i] = static_cast<uint16_t>(starts[i] + starts[i - 1]);
  return starts;
}

constexpr Starts kPairStarts = FindStarts(kPairRules);
constexpr Starts kTripleStarts = FindStarts(kTripleRules);

template <typename Rule>
std::span<const Rule> RunOf(std::span<const Rule> rules, const Starts& starts, ControlIndex control, int32_t value) {
  if (control >= kControlCount) return {};
  const auto of_control = rules.subspan(starts[control], static_cast<size_t>(starts[control + 1U] - starts[control]));
  const auto run =
      std::ranges::equal_range(of_control, value, {}, [](const Rule& rule) { return int32_t{rule.when[0].value}; });
  return {run.begin(), run.end()};
}

}  // namespace

std::span<const PairRule> PairRulesOf(ControlIndex control, int32_t value) {
  return RunOf<PairRule>(kPairRules, kPairStarts, control, value);
}

std::span<const TripleRule> TripleRulesOf(ControlIndex control, int32_t value) {
  return RunOf<TripleRule>(kTripleRules, kTripleStarts, control, value);
}

std::span<const PairRule> AllPairRules() {
  return kPairRules;
}

std::span<const TripleRule> AllTripleRules() {
  return kTripleRules;
}

}  // namespace heron::engine
