// Soundness of the rules: everything a rule names exists, and the tables keep the promises that evaluation builds on.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>

#include "engine_fixture.h"
#include "rules/combination_tables.h"
#include "rules/control_tables.h"
#include "rules/dependency_tables.h"
#include "rules/finishing_tables.h"
#include "rules/paper_checks_table.h"
#include "rules/paper_rule_tables.h"
#include "rules/rotated_feed_table.h"
#include "rules/sheet_doubling_table.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

std::string TextOf(const RuleTerm& term) {
  return NameOf(term.control) + "=" + std::to_string(term.value);
}

/// Values that rules name and no option of this model has; the rules are those of the whole product line.
const std::map<std::u16string_view, std::set<int>> kUnknownValues = {
    {u"lpOutputTray", {21, 41}},           // trays of other output units
    {u"trayMediaType", {58}},              // a paper type that no list offers
    {u"lpMediaType", {58}},                // the same in the list of dialog 2920
    {u"lpPOD_OnePerSheet", {3, 4, 5, 6}},  // combinations that bind along an edge
    {u"lpFrontCoverTray", {7}},            // trays of group 1: only the document's own tray can be automatic
    {u"lpBackCoverTray", {7}},
    {u"lpOIPaperTray", {7}},
    {u"lpInterSheetListTray", {7}},  // the value of a row whose tray is gone
};

/// Papers of the product line that this model's paper table hasn't got. 511 fills the end of the sets.
const std::set<uint16_t> kUnknownPapers = {371, 511, 2380};

void ExpectOption(const RuleTerm& term, const std::string& where) {
  const auto unknown = kUnknownValues.find(kControls[term.control].key);
  if (unknown != kUnknownValues.end() && unknown->second.contains(term.value)) {
    EXPECT_EQ(ValueLabel(term.control, term.value), 0) << TextOf(term) << " is an option after all";
    return;
  }
  EXPECT_NE(ValueLabel(term.control, term.value), 0) << TextOf(term) << " in " << where;
}

template <typename Rule>
std::string TextOf(const Rule& rule) {
  std::string text;
  for (const RuleTerm& term : rule.when) text += TextOf(term) + " & ";
  return text + "-> " + TextOf(rule.target);
}

/// What holds for pair and triple rules alike.
template <typename Rules>
void ExpectSoundRules(const Rules& rules) {
  std::set<std::string> seen;
  for (const auto& rule : rules) {
    const std::string text = TextOf(rule);
    EXPECT_TRUE(seen.insert(text).second) << text << " is listed twice";
    std::set<int> controls;
    for (const RuleTerm& term : rule.when) {
      ExpectOption(term, text);
      EXPECT_TRUE(controls.insert(kControls[term.control].firstOfSetting).second) << text;
      EXPECT_FALSE(term == rule.target) << text << " asks for what is already so";
    }
    ExpectOption(rule.target, text);
  }
}

TEST(CombinationRules, AreSound) {
  ExpectSoundRules(AllPairRules());
  ExpectSoundRules(AllTripleRules());
}

TEST(CombinationRules, AreFoundByWhatChanged) {
  size_t pairs = 0;
  size_t triples = 0;
  for (ControlIndex control = 0; control < kControlCount; ++control) {
    for (int value = -1; value <= 300; ++value) {
      for (const PairRule& rule : PairRulesOf(control, value))
        EXPECT_TRUE((rule.when[0] == RuleTerm{control, static_cast<int16_t>(value)}));
      pairs += PairRulesOf(control, value).size();
      triples += TripleRulesOf(control, value).size();
    }
  }
  EXPECT_EQ(pairs, AllPairRules().size());
  EXPECT_EQ(triples, AllTripleRules().size());
  EXPECT_TRUE(PairRulesOf(kNoControl, 1).empty());
  EXPECT_TRUE(PairRulesOf(Control(u"Staple_Check"), 65535).empty());
}

// The rules of one change could contradict each other only for one of them, whose other operands exclude each other.
TEST(CombinationRules, AgreeOnATarget) {
  std::map<std::pair<std::string, int>, std::set<int>> wanted;
  for (const PairRule& rule : AllPairRules()) {
    wanted[{TextOf(rule.when[0]), rule.target.control}].insert(rule.target.value);
  }
  for (const auto& [key, values] : wanted) {
    EXPECT_TRUE(values.size() == 1 || key.first == "lpPunchHoles=3") << key.first;
  }
}

/// Rules of a conflict that one of its controls doesn't notice: "first operand & the other control", and how many.
template <typename Rules>
std::map<std::string, int> OneWay(const Rules& rules, auto rules_of) {
  std::map<std::string, int> missing;
  for (const auto& rule : rules) {
    for (const RuleTerm& term : rule.when) {
      const auto same = [&](const auto& other) { return std::ranges::is_permutation(rule.when, other.when); };
      if (std::ranges::none_of(rules_of(term.control, term.value), same))
        ++missing[NameOf(rule.when[0].control) + " & " + NameOf(term.control)];
    }
  }
  return missing;
}

// A conflict that only some of its controls notice would let another one be set into it.
TEST(CombinationRules, AreFoundFromEachOfTheirControls) {
  const std::set<std::string> pairs = {
      // Lists that change only in their dialog.
      "lpInterSheetListTray & lpSourceUnit",
      "trayRowSource & lpSourceUnit",
      "lpMediaType.dialog & trayRowSource",
      "lpMediaType.dialog & lpPRNType",
      "lpMediaType.dialog & Staple_Check",
      "lpMediaType.dialog & Punch_Check",
      "lpMediaType.dialog & FoldStaple_Check",
      "lpMediaType.dialog & lpOutputTray",
      "lpMediaType.dialog & Chapter_Check",
      "lpMediaType.dialog & Collate_Check",
      // Without a fax unit the fax page doesn't let fax be chosen.
      "lpFAXUnit & lpOutput.Fax",
  };
  std::set<std::string> found;
  for (const auto& [controls, count] : OneWay(AllPairRules(), PairRulesOf)) found.insert(controls);
  EXPECT_EQ(found, pairs);
  const std::map<std::string, int> triples = {
      // Changed in a dialog of its own, whose close asks the other rules.
      {"lpMediaType.dialog & Collate_Check", 3},
      {"lpMediaType.dialog & lpOutputTray", 12},
      {"lpMediaType.dialog & lpOutputUnit", 15},
      // The overlay's own page doesn't offer what the language can't do.
      {"lpPDLType.Pcl5 & lpOverlay.CreateForm", 1},
      {"lpPDLType.Pcl5 & lpOverlay.PrintWithForm", 1},
      {"lpPDLType.Pcl5 & parameter234", 2},
      {"lpPDLType.PclXl & lpOverlay.CreateForm", 3},
      {"lpPDLType.PclXl & lpOverlay.PrintWithForm", 3},
      {"lpPDLType.PclXl & parameter234", 6},
  };
  EXPECT_EQ(OneWay(AllTripleRules(), TripleRulesOf), triples);
}

/// The rules whose first operand is of `control`, without its name, "M" for `own` elsewhere.
template <typename Rules>
std::set<std::string> RulesUnder(const Rules& rules, ControlIndex control, ControlIndex own) {
  std::set<std::string> texts;
  for (const auto& rule : rules) {
    if (rule.when[0].control != control) continue;
    std::string text = std::to_string(rule.when[0].value);
    for (const RuleTerm& term : std::span(rule.when).subspan(1))
      text += " & " + (term.control == own ? "M=" + std::to_string(term.value) : TextOf(term));
    texts.insert(text + " -> " +
                 (rule.target.control == own ? "M:=" + std::to_string(rule.target.value) : TextOf(rule.target)));
  }
  return texts;
}

// The same media are as bad from every tray, and the same trays are missing to every list of trays.
TEST(CombinationRules, AreTheSameForControlsOfOneKind) {
  constexpr ControlIndex kMedia[] = {Control(u"trayMediaType.page"), Control(u"trayMediaType.frontCover"),
                                     Control(u"trayMediaType.backCover")};
  for (ControlIndex control = 0; control < kControlCount; ++control) {
    const bool is_media = std::ranges::count(kMedia, control) != 0;
    for (const ControlIndex media : kMedia) {
      const auto of = [&](const auto& rules, ControlIndex other) {
        auto texts = RulesUnder(rules, is_media ? other : control, other);
        if (!is_media)
          std::erase_if(texts, [](const std::string& text) { return text.find("M=") == std::string::npos; });
        return texts;
      };
      EXPECT_EQ(of(AllPairRules(), media), of(AllPairRules(), kMedia[0])) << NameOf(control);
      if (media != kMedia[0]) {
        EXPECT_EQ(of(AllTripleRules(), media), of(AllTripleRules(), kMedia[1])) << NameOf(control);
      }
    }
  }
  auto dialog = RulesUnder(AllPairRules(), Control(u"lpMediaType.dialog"), kNoControl);
  EXPECT_EQ(std::erase_if(dialog, [](const std::string& text) { return text.find("trayRow") != std::string::npos; }),
            30U);
  EXPECT_EQ(dialog, RulesUnder(AllPairRules(), kMedia[0], kNoControl));
  EXPECT_EQ(RulesUnder(AllTripleRules(), Control(u"lpMediaType.dialog"), kNoControl),
            RulesUnder(AllTripleRules(), kMedia[0], kNoControl));

  const auto absent = [](ControlIndex tray) {
    std::set<std::pair<int, int>> values;
    for (const PairRule& rule : AllPairRules()) {
      if (rule.when[0].control == tray && rule.when[1].control == Control(u"lpSourceUnit"))
        values.insert({rule.when[0].value, rule.when[1].value});
    }
    return values;
  };
  for (const ControlIndex tray : {Control(u"lpOIPaperTray"), Control(u"lpFrontCoverTray"), Control(u"lpBackCoverTray"),
                                  Control(u"trayRowSource"), Control(u"lpInterSheetListTray")})
    EXPECT_EQ(absent(tray), absent(Control(u"lpMediaSource"))) << NameOf(tray);
}

/// The value at which a control asks nothing of the others.
int ValueOfRest(ControlIndex control) {
  if (control == Control(u"lpInterSheetListTray")) return 7;
  const auto labels = ValueLabels(control);
  const auto fallback = std::ranges::find_if(labels, [](const ListOption& option) { return option.defaultMask != 0; });
  if (fallback != labels.end()) return fallback->value;
  return kControls[control].type == ControlType::kCheck ? 0 : 1;
}

// What gives way goes to its default. Holes go to a number that the unit can punch: no rule objects to what is left.
TEST(CombinationRules, EndTheConflict) {
  const auto check = [](const auto& rule) {
    const RuleTerm& target = rule.target;
    if (target.control != Control(u"lpPunchHoles")) {
      EXPECT_EQ(target.value, ValueOfRest(target.control)) << TextOf(rule);
      return;
    }
    for (const PairRule& other : PairRulesOf(target.control, target.value)) {
      EXPECT_EQ(std::ranges::count(rule.when, other.when[1]), 0) << TextOf(rule) << " and then " << TextOf(other);
    }
  };
  std::ranges::for_each(AllPairRules(), check);
  std::ranges::for_each(AllTripleRules(), check);
}

/// Units are the strongest, then media that lie in a tray; the quick copy always gives way.
int StrengthOf(ControlIndex control) {
  if (control == Control(u"lpOutputUnit")) return 4;
  if (kControls[control].dialog == 800) return 3;
  if (kControls[control].key == u"trayMediaType" || control == Control(u"lpMediaType.dialog")) return 2;
  return control == Control(u"PaperLess_Check") ? 0 : 1;
}

/// Rules that name no operand as the one that gives way, or another than the order of strength does.
const std::map<std::string, ControlIndex> kNamedLosers = {
    {"Sort_Check=0 & lpFoldStaple", Control(u"FoldStaple_Check")},
    {"Staple_Check=1 & lpPOD_OnePerSheet", Control(u"POD_OnePerSheet_Check")},
    {"Punch_Check=1 & lpPOD_OnePerSheet", Control(u"POD_OnePerSheet_Check")},
    {"Chapter_Check=1 & lpPRNType", Control(u"Chapter_Check")},   // chapters need two sides
    {"Staple_Check=1 & lpOutputTray", Control(u"Staple_Check")},  // bins take no sets, whichever came last
    {"Collate_Check=1 & lpOutputTray", Control(u"Collate_Check")},
};

template <typename Rule>
bool GivesWay(const Rule& rule, ControlIndex control) {
  const auto lies = [&](std::u16string_view key, std::set<int> values) {
    return std::ranges::any_of(rule.when, [&](const RuleTerm& term) {
      return kControls[term.control].key == key && values.contains(term.value);
    });
  };
  const ControlIndex first = rule.when[0].control;
  if (lies(u"OHPInterLeave_Check", {1})) return control == first;  // neither can be turned on beside the other
  if (lies(u"Chapter_Check", {1}) && rule.when.size() == 2 &&
      (lies(u"trayMediaType", {30, 35}) || lies(u"lpMediaType", {30, 35})))
    return control == Control(u"lpPRNType");  // one-sided media take the sides, and the chapters with them
  if (first == Control(u"lpOutputUnit") && lies(u"lpOutputUnit", {5}) && rule.when.size() == 3) return control == first;
  if (rule.when.size() == 2) {
    const auto named = kNamedLosers.find(TextOf(rule.when[0]) + " & " + NameOf(rule.when[1].control));
    if (named != kNamedLosers.end()) return control == named->second;
  }
  int least = 9;
  for (const RuleTerm& term : rule.when) least = std::min(least, StrengthOf(term.control));
  const auto weak = [&](const RuleTerm& term) { return StrengthOf(term.control) == least; };
  const auto others = std::span(rule.when).subspan(1);
  const bool only_first = std::ranges::none_of(others, weak);
  return std::ranges::any_of(rule.when, [&](const RuleTerm& term) {
    return kControls[term.control].firstOfSetting == kControls[control].firstOfSetting && weak(term) &&
           (only_first || term.control != first);
  });
}

// The change that came last stays, unless the other side is stronger.
TEST(CombinationRules, KeepTheLastChangeUnlessTheOtherIsStronger) {
  const auto check = [](const auto& rule) { EXPECT_TRUE(GivesWay(rule, rule.target.control)) << TextOf(rule); };
  std::ranges::for_each(AllPairRules(), check);
  std::ranges::for_each(AllTripleRules(), check);
}

TEST(EnableRules, NameParentsThatCanBeAsked) {
  for (const EnableRule& rule : kEnableRules) {
    if (rule.parent == 0) {
      EXPECT_TRUE(rule.level == 0) << rule.control;
      continue;
    }
    if (rule.parent == 611) continue;  // a page's own button: its row never holds
    const ControlIndex parent = IndexOf(rule.parent);
    ASSERT_NE(parent, kNoControl) << rule.parent;
    ExpectOption({parent, rule.parentValue}, "rule of " + std::to_string(rule.control));
    // Levels are evaluated one after the other, so a parent must be settled on an earlier one.
    const int parent_row = FirstEnableRule(rule.parent);
    if (rule.level == 2) {
      EXPECT_TRUE(parent_row >= 0 && kEnableRules[static_cast<size_t>(parent_row)].level < 2) << rule.control;
    }
  }
}

/// The first rule of a control; null if it has none.
const EnableRule* RuleOf(uint16_t id) {
  const int row = FirstEnableRule(id);
  return row < 0 ? nullptr : &kEnableRules[static_cast<size_t>(row)];
}

// A parent that a rule of its own can close must be available as well (level 2). The print type and the overlay count
// by their value alone: their children stay usable while their page is closed.
TEST(EnableRules, AskForTheAvailabilityOfParentsThatCanClose) {
  for (const EnableRule& rule : kEnableRules) {
    const EnableRule* const own = RuleOf(rule.parent);
    if (rule.control == 0 || rule.parent == 0) continue;
    const bool by_value = rule.parent == kControls[Control(u"lpPRNType")].id || rule.dialog == 400;
    const bool closes = own != nullptr && (own->level != 0 || own->function != RuleFunction::kNone);
    EXPECT_EQ(rule.level, closes && !by_value ? 2 : 1) << rule.control;
  }
}

// A check box opens its children when it is on, a radio button when it is the chosen one.
TEST(EnableRules, WantTheirParentsOn) {
  for (const EnableRule& rule : kEnableRules) {
    const ControlIndex parent = IndexOf(rule.parent);
    if (parent == kNoControl) continue;
    const int radio = RadioMemberValue(rule.parent);
    const bool is_list = kControls[parent].type == ControlType::kList;
    EXPECT_TRUE(is_list || rule.parentValue == (radio >= 0 ? radio : 1)) << rule.control;
  }
}

TEST(EnableRules, GroupAndContinueWithinTheTable) {
  std::map<uint16_t, size_t> rows;
  for (size_t i = 0; i < kEnableRules.size(); ++i) {
    const EnableRule& rule = kEnableRules[i];
    if (rule.control == 0) {
      ASSERT_GT(i, 0U);
      EXPECT_EQ(kEnableRules[i - 1].parent, rule.parent);
      EXPECT_NE(kEnableRules[i - 1].parentValue, rule.parentValue);
      continue;
    }
    if (++rows[rule.control] == 1) {
      EXPECT_EQ(FirstEnableRule(rule.control), static_cast<int>(i));
    } else {
      EXPECT_EQ(rule.groupSize, 2) << rule.control << " has rows that don't know of each other";
    }
    const ControlIndex index = IndexOf(rule.control);
    // Controls of the table belong to the dialog that their rule names.
    if (index != kNoControl) {
      EXPECT_EQ(kControls[index].dialog, rule.dialog) << rule.control;
    }
  }
  EXPECT_EQ(rows[314], 2U);
  EXPECT_EQ(FirstEnableRule(111), -1);
  EXPECT_EQ(FirstEnableRule(65535), -1);
}

TEST(Gates, BelongToRules) {
  using Join = DeviceGate::Join;
  for (size_t i = 0; i < kDeviceGates.size(); ++i) {
    const DeviceGate& gate = kDeviceGates[i];
    ExpectOption(gate.test, "device gate");
    EXPECT_EQ(kControls[gate.test.control].dialog, 800);
    if (gate.control != 0) {
      EXPECT_GE(FirstEnableRule(gate.control), 0) << gate.control;
    }
    const bool goes_on = i + 1 < kDeviceGates.size() && kDeviceGates[i + 1].control == 0;
    EXPECT_EQ(gate.join == Join::kBegin, goes_on && kDeviceGates[i + 1].join == Join::kEnd) << i;
  }
  EXPECT_EQ(FirstDeviceGate(136), 5);
  EXPECT_EQ(FirstDeviceGate(131), -1);

  std::set<uint16_t> ids;
  std::set<uint16_t> idle;
  for (const OutputModeGate& gate : kOutputModeGates) {
    EXPECT_TRUE(ids.insert(gate.control).second) << gate.control;
    if (FirstEnableRule(gate.control) < 0) idle.insert(gate.control);
    EXPECT_EQ(gate.text != 0, gate.report == OutputModeGate::Report::kText) << gate.control;
    const ControlIndex index = IndexOf(gate.control);
    if (gate.resetOnFax) {
      EXPECT_NE(index, kNoControl) << gate.control << " has no default to go back to";
    }
  }
  EXPECT_EQ(idle, (std::set<uint16_t>{255, 3300}));
  EXPECT_EQ(FirstOutputModeGate(649), 71);
}

bool IsGated(uint16_t id) {
  return FirstOutputModeGate(id) >= 0;
}

// Fax resets what holds a setting of its own. What depends on a check box that is reset keeps its value, and so do the
// mirrors of the trays and the lists of rows. The fax notice names what is reset and all of the main page.
TEST(Gates, OfTheOutputResetAndReportSettingsOfTheirOwn) {
  for (const OutputModeGate& gate : kOutputModeGates) {
    const ControlIndex index = IndexOf(gate.control);
    const EnableRule* const rule = RuleOf(gate.control);
    const ControlIndex parent = rule == nullptr ? kNoControl : IndexOf(rule->parent);
    const bool is_child =
        parent != kNoControl && kControls[parent].type == ControlType::kCheck && IsGated(rule->parent);
    const bool is_mirror = index != kNoControl && SourceOfMirror(index) != kNoControl;
    const bool is_row = rule == nullptr || gate.control == kControls[Control(u"lpInterSheetList")].id;
    EXPECT_EQ(gate.resetOnFax, index != kNoControl && !is_child && !is_mirror && !is_row) << gate.control;
    const bool is_named = gate.control == kControls[Control(u"OHPInterLeave_Check")].id ? false
                          : gate.control == kControls[Control(u"lpPOD_OnePerSheet")].id
                              ? true
                              : gate.resetOnFax || (rule != nullptr && rule->dialog == 100 && !is_mirror);
    EXPECT_EQ(gate.report != OutputModeGate::Report::kNone, is_named) << gate.control;
  }
}

/// Size of a paper of the table in hundredths of a millimetre, shorter side first.
std::optional<std::pair<int, int>> SizeOf(uint16_t paper) {
  uint32_t width = 0;
  uint32_t height = 0;
  if (!PaperSizeMm(paper, &width, &height)) return std::nullopt;
  return std::pair{static_cast<int>(std::min(width, height)), static_cast<int>(std::max(width, height))};
}

void ExpectPaper(uint16_t paper, const std::string& where) {
  EXPECT_NE(SizeOf(paper).has_value(), kUnknownPapers.contains(paper)) << where << ": " << paper;
}

TEST(PaperRules, NameControlsValuesAndPapers) {
  std::set<std::tuple<int, int, int>> seen;
  for (const PaperRule& rule : PaperRules()) {
    const std::string where = "paper rule " + std::to_string(rule.number);
    EXPECT_TRUE(seen.insert({rule.group, rule.value, rule.conditionNumber}).second) << where;
    EXPECT_FALSE(PaperGroupControls(rule.group).empty()) << where;
    for (const ControlIndex control : PaperGroupControls(rule.group)) ExpectOption({control, rule.value}, where);
    if (rule.condition.control != kNoControl) ExpectOption(rule.condition, where);
    EXPECT_FALSE(rule.papers.empty());
    for (const uint16_t paper : rule.papers) ExpectPaper(paper, where);
  }
  EXPECT_TRUE(PaperGroupControls(9).empty());
  EXPECT_TRUE(PaperGroupControls(kPaperGroupLimit).empty());
}

/// "group/value" or "group/value?condition" of a rule, and its papers.
std::map<std::string, std::vector<uint16_t>> PapersByRule() {
  std::map<std::string, std::vector<uint16_t>> sets;
  for (const PaperRule& rule : PaperRules()) {
    std::string text = std::to_string(rule.group) + "/" + std::to_string(rule.value);
    if (rule.condition.control != kNoControl) text += "?" + std::to_string(rule.conditionNumber);
    sets[text].assign(rule.papers.begin(), rule.papers.end());
  }
  return sets;
}

// A rule's number belongs to one value, a condition's to one unit.
TEST(PaperRules, AreNumbered) {
  std::map<int, std::set<std::pair<int, int>>> matters;
  std::map<std::pair<int, int>, std::set<int>> numbers;
  std::map<int, std::set<std::pair<int, int>>> conditions;
  std::map<std::pair<int, int>, std::set<int>> conditional;
  for (const PaperRule& rule : PaperRules()) {
    matters[rule.number].insert({rule.group, rule.value});
    numbers[{rule.group, rule.value}].insert(rule.number);
    conditions[rule.conditionNumber].insert({rule.condition.control, rule.condition.value});
    conditional[{rule.group, rule.value}].insert(rule.conditionNumber == 0 ? 0 : 1);
  }
  for (const auto& [number, values] : matters) EXPECT_EQ(values.size(), number == 231 ? 2U : 1U) << number;
  for (const auto& [value, all] : numbers) EXPECT_EQ(all.size(), 1U) << value.first << "/" << value.second;
  for (const auto& [number, terms] : conditions) EXPECT_EQ(terms.size(), 1U) << number;
  for (const auto& [value, kinds] : conditional) EXPECT_EQ(kinds.size(), 1U) << value.first << "/" << value.second;
}

// What goes the same way takes the same papers.
TEST(PaperRules, TakeTheSamePapersForTheSameMatter) {
  const auto sets = PapersByRule();
  const std::vector<std::vector<std::string>> matters = {
      {"1/1", "2/1", "1/2", "2/2", "1/258?11", "1/258?13", "2/258?11", "2/258?13", "1/259?11", "1/259?13", "2/259?11",
       "2/259?13"},
      {"1/258?12", "1/258?14", "2/258?12", "2/258?14", "1/270?13", "1/270?14", "2/270?13", "2/270?14"},
      {"1/7", "3/1", "3/11?21", "3/11?22", "3/11?23", "3/11?24", "3/11?25", "3/21?21", "3/21?22", "3/31?21", "3/31?22",
       "3/31?26", "3/41?21", "3/41?22", "3/51?21", "3/51?22"},
      {"3/31?23", "3/31?24", "3/31?25"},
      {"3/101", "3/102", "3/103", "3/104"},
      {"10/1?21", "10/1?22"},
      {"10/1?23", "10/1?24", "10/1?25"},
      {"11/1", "11/2"},
      {"12/8", "13/8"},
      {"14/1", "15/1", "16/1", "21/1", "22/1"},
      {"7/2", "19/3"},
  };
  std::set<std::string> alone;
  for (const auto& [rule, papers] : sets) alone.insert(rule);
  for (const auto& matter : matters) {
    for (const std::string& rule : matter) {
      ASSERT_TRUE(sets.contains(rule)) << rule;
      EXPECT_EQ(sets.at(rule), sets.at(matter[0])) << rule;
      alone.erase(rule);
    }
  }
  EXPECT_EQ(alone, (std::set<std::string>{"3/11?26", "6/1", "8/3", "20/1"}));
}

TEST(PaperRules, AreAllChecked) {
  std::set<uint8_t> changes;
  std::set<uint8_t> items;
  for (const PaperChange& row : kPaperChanges) EXPECT_TRUE(changes.insert(row.group).second);
  for (const PaperItem& row : kPaperItems) EXPECT_TRUE(items.insert(row.group).second);
  for (const PaperRule& rule : PaperRules()) {
    const bool list_of_a_row = rule.group == 2 || rule.group == 13 || rule.group == 19;  // greyed out, never moved
    EXPECT_NE(changes.contains(rule.group), list_of_a_row) << int{rule.group};
    EXPECT_NE(items.contains(rule.group), rule.group == 20) << int{rule.group};  // copies, not papers
  }
  for (const PaperItem& item : kPaperItems) {
    // Both ways look at the same sheet.
    const auto change = std::ranges::find(kPaperChanges, item.group, &PaperChange::group);
    EXPECT_TRUE(change == kPaperChanges.end() ? item.doubled : change->doubled == item.doubled) << int{item.group};
  }
  for (const EdgeCorrection& edge : kEdgeCorrections) {
    for (const int16_t value : {edge.edge1[0], edge.edge1[1], edge.edge2[0], edge.edge2[1]}) {
      ExpectOption({edge.control, value}, "edge rule");
    }
    EXPECT_TRUE(std::ranges::count(edge.edge2, edge.instead1) != 0 &&
                std::ranges::count(edge.edge1, edge.instead2) != 0);
  }
}

TEST(SheetDoubling, GivesASheetOfTwoPages) {
  for (const DoubledSheet& row : kPlainDoubling) {
    const auto page = SizeOf(row.paper);
    const auto sheet = SizeOf(row.doubled);
    ASSERT_TRUE(page && sheet) << row.paper;
    EXPECT_NEAR(sheet->first, page->second, 100) << row.paper;
    EXPECT_NEAR(sheet->second, 2 * page->first, 100) << row.paper;
    EXPECT_EQ(DoubledPaper(row.paper), row.doubled);
    EXPECT_EQ(DoubledPaper(static_cast<uint16_t>(row.paper + 0x1000)), row.doubled + 0x1000);
    EXPECT_EQ(DoubledPaper(static_cast<uint16_t>(row.paper + 0x2000)), row.doubled + 0x2000);
    EXPECT_EQ(DoubledPaper(static_cast<uint16_t>(row.paper + 0x3000)), row.paper + 0x3000);
  }
  EXPECT_EQ(DoubledPaper(8), 8);
}

void ExpectSoundCapabilities(std::span<const FinishCapabilityRow> rows) {
  std::set<std::tuple<int, int, int>> seen;
  std::set<int> unconditional;
  for (const FinishCapabilityRow& row : rows) {
    ExpectPaper(row.paper, "capability");
    EXPECT_TRUE(seen.insert({row.paper, row.condition.control, row.condition.value}).second) << row.paper;
    EXPECT_FALSE(unconditional.contains(row.paper)) << row.paper << " has a row that is never reached";
    if (row.condition.control == kNoControl) {
      unconditional.insert(row.paper);
    } else {
      ExpectOption(row.condition, "capability");
    }
    for (const uint8_t code : row.codes) EXPECT_LE(code, 4);
  }
}

TEST(Finishing, CapabilitiesAreSound) {
  ExpectSoundCapabilities(StapleCapabilities());
  ExpectSoundCapabilities(PunchCapabilities());
  ExpectSoundCapabilities(FoldCapabilities());
}

/// Codes of each paper's first row.
std::map<int, std::array<int, 3>> CodesByPaper(std::span<const FinishCapabilityRow> rows) {
  std::map<int, std::array<int, 3>> codes;
  for (const FinishCapabilityRow& row : rows)
    codes.try_emplace(row.paper, std::to_array<int>({row.codes[0], row.codes[1], row.codes[2]}));
  return codes;
}

// Which edge comes first decides on staples and holes alike, and a sheet that is folded is folded by the same rule
// with a staple and without.
TEST(Finishing, CapabilitiesAgreeWithEachOther) {
  const auto staple = CodesByPaper(StapleCapabilities());
  const auto punch = CodesByPaper(PunchCapabilities());
  auto fold = CodesByPaper(FoldCapabilities());
  for (const auto& [paper, codes] : fold) EXPECT_EQ(codes[0], codes[1]) << paper;
  for (const int sheet_only : {2381, 2382})
    EXPECT_EQ(fold.erase(sheet_only), 1U);  // exist as a sheet of two pages only
  for (const auto& [paper, codes] : staple) {
    ASSERT_TRUE(punch.contains(paper) && fold.contains(paper)) << paper;
    EXPECT_EQ(codes[0] == 0 || paper == 28, !IsRotatedFeed(static_cast<uint16_t>(paper))) << paper;
    const bool small = paper == 2059 || paper == 88 || paper == 2054;
    EXPECT_EQ(punch.at(paper)[0], small ? 3 : codes[0] == 3 ? 4 : codes[0]) << paper;
  }
  EXPECT_EQ(punch.size(), staple.size());
  EXPECT_EQ(fold.size(), staple.size());
  const auto conditions = [](std::span<const FinishCapabilityRow> rows) {
    std::map<int, std::set<int>> values;
    for (const FinishCapabilityRow& row : rows) {
      if (row.condition.control != kNoControl) values[row.paper].insert(row.condition.value);
    }
    return values;
  };
  EXPECT_EQ(conditions(StapleCapabilities()),
            (std::map<int, std::set<int>>{{2054, {2, 3, 41, 42, 43}}, {2059, {2, 3, 41, 42, 43}}}));
  EXPECT_EQ(conditions(FoldCapabilities()), (std::map<int, std::set<int>>{{2054, {1, 2}}, {2382, {1, 2}}}));
}

TEST(Finishing, RotatedFeedHasNoPaperBothWays) {
  std::set<uint16_t> papers;
  for (const uint16_t paper : RotatedFeedPapers()) EXPECT_TRUE(papers.insert(paper).second) << paper;
  for (const uint16_t paper : kPlainRotatedFeed) {
    for (const int family : {0, 0x1000, 0x2000}) EXPECT_TRUE(papers.contains(static_cast<uint16_t>(paper + family)));
    ExpectPaper(paper, "rotated feed");
    const int32_t plain = PlainTwin(paper);
    if (plain >= 0) {
      EXPECT_FALSE(papers.contains(static_cast<uint16_t>(plain))) << paper << " and " << plain;
    }
  }
  EXPECT_TRUE(IsRotatedFeed(256) && IsRotatedFeed(8) && IsRotatedFeed(0x2000 + 390));
  EXPECT_FALSE(IsRotatedFeed(9) || IsRotatedFeed(0x3000 + 8));
}

}  // namespace
}  // namespace heron::engine
