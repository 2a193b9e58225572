// Soundness of the rules: everything a rule names exists, and the tables keep the promises that evaluation builds on.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>

#include "engine/combination_tables.h"
#include "engine/control_tables.h"
#include "engine/dependency_tables.h"
#include "engine/finishing_tables.h"
#include "engine/paper_checks_table.h"
#include "engine/paper_rule_tables.h"
#include "engine/rotated_feed_table.h"
#include "engine/sheet_doubling_table.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

std::string NameOf(ControlIndex control) {
  const auto name = kControls[control].name;
  return {name.begin(), name.end()};
}

std::string TextOf(const RuleTerm& term) {
  return NameOf(term.control) + "=" + std::to_string(term.value);
}

/// Values that rules name and no option of this model has; the rules are those of the whole product line.
const std::map<std::u16string_view, std::set<int>> kForeignValues = {
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
const std::set<uint16_t> kForeignPapers = {371, 511, 2380};

void ExpectOption(const RuleTerm& term, const std::string& where) {
  const auto foreign = kForeignValues.find(kControls[term.control].key);
  if (foreign != kForeignValues.end() && foreign->second.contains(term.value)) {
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
    EXPECT_TRUE(seen.insert(text).second) << text << " stands twice";
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

// A conflict that only one of its two controls notices would let the other one be set into it.
TEST(CombinationRules, OfPairsStandUnderBothControls) {
  std::set<std::string> one_way;
  for (const PairRule& rule : AllPairRules()) {
    const auto back = PairRulesOf(rule.when[1].control, rule.when[1].value);
    if (std::ranges::none_of(back, [&](const PairRule& other) { return other.when[1] == rule.when[0]; })) {
      one_way.insert(NameOf(rule.when[0].control) + " & " + NameOf(rule.when[1].control));
    }
  }
  const std::set<std::string> expected = {
      // Lists that change only in their dialog.
      "lpInterSheetListTray & lpSourceUnit",
      "trayRowSource & lpSourceUnit",
      "lpMediaType.2921 & trayRowSource",
      "lpMediaType.2921 & lpPRNType",
      "lpMediaType.2921 & Staple_Check",
      "lpMediaType.2921 & Punch_Check",
      "lpMediaType.2921 & FoldStaple_Check",
      "lpMediaType.2921 & lpOutputTray",
      "lpMediaType.2921 & Chapter_Check",
      "lpMediaType.2921 & Collate_Check",
      // Without a fax unit the fax page doesn't let fax be chosen.
      "lpFAXUnit & lpOutput.902",
  };
  EXPECT_EQ(one_way, expected);
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
    // Controls of the table stand on the dialog that their rule names.
    if (index != kNoControl) {
      EXPECT_EQ(kControls[index].dialog, rule.dialog) << rule.control;
    }
  }
  EXPECT_EQ(rows[314], 2U);
  EXPECT_EQ(FirstEnableRule(111), -1);
  EXPECT_EQ(FirstEnableRule(65535), -1);
}

TEST(Gates, StandInFrontOfRules) {
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

/// Size of a paper of the table in hundredths of a millimetre, shorter side first.
std::optional<std::pair<int, int>> SizeOf(uint16_t paper) {
  uint32_t width = 0;
  uint32_t height = 0;
  if (!PaperSizeMm(paper, &width, &height)) return std::nullopt;
  return std::pair{static_cast<int>(std::min(width, height)), static_cast<int>(std::max(width, height))};
}

void ExpectPaper(uint16_t paper, const std::string& where) {
  EXPECT_NE(SizeOf(paper).has_value(), kForeignPapers.contains(paper)) << where << ": " << paper;
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

TEST(Finishing, RotatedFeedHasNoPaperBothWays) {
  std::set<uint16_t> papers;
  for (const uint16_t paper : RotatedFeedPapers()) EXPECT_TRUE(papers.insert(paper).second) << paper;
  for (const uint16_t paper : kPlainRotatedFeed) {
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
