// Reads the paper rules, at compile time.
#include "rules/paper_rule_tables.h"

#include <algorithm>
#include <array>

#include "rules/notation.h"
#include "rules/paper_rules_table.h"
#include "rules/sheet_doubling_table.h"

namespace heron::engine {
namespace {

constexpr size_t kMostSets = 26;  ///< sets are letters

/// All paper codes of the sets, one set behind the other.
struct PaperSets {
  std::array<uint16_t, CountWords(kPaperSetText)> codes{};  ///< a little more room than codes
  std::array<uint16_t, kMostSets + 1> begin{};

  constexpr size_t IndexOfSet(Text letter) const {
    const size_t set = letter.size() == 1 ? static_cast<size_t>(letter[0] - u'A') : kMostSets;
    if (set >= kMostSets || begin[set] == begin[set + 1]) throw "no such set";
    return set;
  }
};

consteval PaperSets ParseSets() {
  PaperSets sets;
  size_t used = 0;
  size_t next = 0;
  catalog::ForEachLine(kPaperSetText, [&](Text line) {
    const Text letter = catalog::Cut(line, u'|');
    if (!letter.empty()) {
      if (letter.size() != 1 || letter[0] != static_cast<char16_t>(u'A' + next)) throw "sets are in order";
      sets.begin.at(next++) = static_cast<uint16_t>(used);
    }
    for (Text word = catalog::CutWord(line); !word.empty(); word = catalog::CutWord(line)) {
      sets.codes.at(used++) = catalog::Unsigned(word);
    }
  });
  for (; next < sets.begin.size(); ++next) sets.begin[next] = static_cast<uint16_t>(used);
  return sets;
}
constexpr PaperSets kSets = ParseSets();

constexpr RuleTerm ConditionOf(uint16_t number) {
  RuleTerm term;
  catalog::ForEachLine(kPaperConditionText, [&](Text line) {
    if (catalog::Unsigned(catalog::Cut(line, u'|')) == number) term = ParseTerm(catalog::Cut(line, u'|'));
  });
  if (term.control == kNoControl) throw "no such condition";
  return term;
}

struct GroupControls {
  std::array<ControlIndex, 4> controls{};
  uint8_t count = 0;
};

consteval auto ParseGroups() {
  std::array<GroupControls, kPaperGroupLimit> groups{};
  catalog::ForEachLine(kPaperGroupText, [&](Text line) {
    GroupControls& group = groups.at(catalog::Unsigned(catalog::Cut(line, u'|')));
    for (Text word = catalog::CutWord(line); !word.empty(); word = catalog::CutWord(line)) {
      group.controls.at(group.count++) = NamedIndex(word);
    }
  });
  return groups;
}
constexpr auto kGroups = ParseGroups();

/// A line of the rules, whose conditions are still together.
struct RuleLine {
  PaperRule rule;
  Text conditions;
};

constexpr RuleLine ParseLine(Text line) {
  RuleLine result;
  result.rule.group = static_cast<uint8_t>(catalog::Unsigned(catalog::Cut(line, u'|')));
  if (result.rule.group >= kPaperGroupLimit) throw "a group beyond the limit";
  result.rule.value = ValueOf(kGroups[result.rule.group].controls[0], catalog::Cut(line, u'|'));
  result.conditions = catalog::Cut(line, u'|');
  result.rule.number = catalog::Unsigned(catalog::Cut(line, u'|'));
  const size_t set = kSets.IndexOfSet(catalog::Cut(line, u'|'));
  result.rule.papers =
      std::span(kSets.codes).subspan(kSets.begin[set], static_cast<size_t>(kSets.begin[set + 1] - kSets.begin[set]));
  return result;
}

consteval size_t CountRules() {
  size_t rules = 0;
  catalog::ForEachLine(kPaperRuleText, [&](Text line) { rules += CountWords(ParseLine(line).conditions); });
  return rules;
}

consteval auto ParseRules() {
  std::array<PaperRule, CountRules()> rules{};
  size_t used = 0;
  catalog::ForEachLine(kPaperRuleText, [&](Text line) {
    RuleLine parsed = ParseLine(line);
    for (Text word = catalog::CutWord(parsed.conditions); !word.empty(); word = catalog::CutWord(parsed.conditions)) {
      PaperRule& rule = rules[used++];
      rule = parsed.rule;
      if (word == u"-") continue;
      rule.conditionNumber = catalog::Unsigned(word);
      rule.condition = ConditionOf(rule.conditionNumber);
    }
  });
  return rules;
}
constexpr auto kRules = ParseRules();
static_assert(kRules.size() == 63);
static_assert(CountLines(kPaperGroupText) == 17 && CountLines(kPaperConditionText) == 12);

consteval auto DoubleFamilies() {
  std::array<DoubledSheet, kPlainDoubling.size() * kDoublingFamilies.size()> rows{};
  size_t used = 0;
  for (const uint16_t bits : kDoublingFamilies) {
    for (const DoubledSheet& row : kPlainDoubling) {
      rows[used++] = {static_cast<uint16_t>(row.paper + bits), static_cast<uint16_t>(row.doubled + bits)};
    }
  }
  return rows;
}
constexpr auto kDoubling = DoubleFamilies();
static_assert(kDoubling.size() == 54);

}  // namespace

std::span<const PaperRule> PaperRules() {
  return kRules;
}

std::span<const ControlIndex> PaperGroupControls(uint8_t group) {
  if (group >= kGroups.size()) return {};
  return std::span(kGroups[group].controls).first(kGroups[group].count);
}

uint16_t DoubledPaper(uint16_t paper) {
  const auto row = std::ranges::find(kDoubling, paper, &DoubledSheet::paper);
  return row == kDoubling.end() ? paper : row->doubled;
}

std::span<const DoubledSheet> SheetDoubling() {
  return kDoubling;
}

}  // namespace heron::engine
