// What must give way to a change: combinations, papers, finishing, trays. One pass of the rules over one change.
#include <gtest/gtest.h>

#include "engine_fixture.h"

namespace heron::engine {
namespace {

/// A machine that can do everything, printing an A4 page.
constexpr char kAll[] =
    "lpOutput=2 lpOutputUnit=3 lpSaddleUnit=2 lpPunchKit=21 lpSourceUnit=4 Layout_Check2=1 lpPRNType=1 lpBindPosit=1 "
    "lpOrientation=1 lpMediaSize=9 lpOutputPaper=9 lpMediaSource=1 lpOutputTray=1 lpStaple=1 lpPunchHoles=2 "
    "lpFoldStaple=1 Sort_Check=1 ";

class ChangeTest : public EngineTest {
 protected:
  ChangeTest() { Put(kAll); }

  std::string Combinations(const std::string& change) {
    Change(change);
    ApplyPairRules(*engine, request, log);
    ApplyTripleRules(*engine, request, log);
    return Told();
  }
  std::string Papers(const std::string& change) {
    Change(change);
    ApplyPaperRules(*engine, request, log);
    return Told();
  }
  std::string Finish(void (*resolve)(const Engine&, const ChangeRequest&, ChangeLog&), const std::string& change) {
    Change(change);
    resolve(*engine, request, log);
    return Told();
  }
  std::string Interleave(const std::string& change) {
    Change(change);
    ResolveInterleave(*engine, request, log);
    return Told();
  }
  /// After entries that are pending already.
  std::string Trays(std::initializer_list<LogEntry> pending) {
    log = {};
    AddEntry(*engine, log, Control(u"Zoom"), 77, Reason::kPair);
    log.mark = log.count;
    for (const LogEntry& entry : pending) AddEntry(*engine, log, entry.control, entry.value, entry.reason);
    const RuleStates before = engine->rules;
    SnapshotValues(*engine);
    ResolveTrays(*engine, log, nullptr);
    ResolveOutputTray(*engine, log, nullptr);
    for (size_t i = 0; i < kControlCount; ++i) {
      EXPECT_EQ(engine->Value(static_cast<ControlIndex>(i)), engine->savedValues[i]) << kControls[i].id;
    }
    EXPECT_EQ(engine->rules.enabled, before.enabled);
    return Told().substr(std::string("Zoom:=77/2").size());
  }
};

TEST_F(ChangeTest, APairRuleNeedntSpareWhatWasChanged) {
  Put("lpOutputTray=101 lpMailBinKit=2");
  EXPECT_EQ(Combinations("Staple_Check=1"), "Staple_Check:=0/2 !lpOutputTray=101");
  Put("Staple_Check=1 lpOutputTray=1");
  EXPECT_EQ(Combinations("lpOutputTray=101"), "Staple_Check:=0/2");
  Put("lpSourceUnit=1 Staple_Check=0 lpOutputTray=1 lpMediaSource=7");
  EXPECT_EQ(Combinations("lpMediaSource=258"), "lpMediaSource:=7/2");  // a device option is never in the way
}

TEST_F(ChangeTest, OppositionSparesWhatTheUserChangedToo) {
  Put("lpOutputTray=1 lpMailBinKit=2");
  EXPECT_EQ(Combinations("Staple_Check=1 lpOutputTray=101"), "Staple_Check:=0/2 Staple_Check:=0/2");
  // An entry that changes nothing isn't made; what speaks against the change is told all the same.
  Put("lpOutputTray=101 Staple_Check=0");
  Change("Staple_Check=1");
  engine->Set(Control(u"Staple_Check"), 0);
  ApplyPairRules(*engine, request, log);
  EXPECT_EQ(Told(), "!lpOutputTray=101");
}

TEST_F(ChangeTest, OnlyARuleThatTakesTheChangeBackOpposes) {
  Put("tray.1=2 lpMediaSource=2 OHPInterLeave_Check=1 lpMailBinKit=2 lpOutputTray=11");
  EXPECT_EQ(Combinations("lpOutputTray=101"), "lpOutputTray:=1/2");
  Put("lpOutputTray=1");
  EXPECT_EQ(Combinations("lpOutputTray=101"), "lpOutputTray:=1/2 !OHPInterLeave_Check=1");
}

TEST_F(ChangeTest, ADeviceOptionNeedntBeUsableToRuleTheOthers) {
  Put("lpOutputUnit=41 lpPunchKit=1 Punch_Check=1 lpPunchHoles=2");
  EXPECT_FALSE(Available("lpPunchKit"));
  EXPECT_EQ(Combinations("lpPunchKit=23"), "lpPunchHoles:=4/2");  // but no other device option
  Put("lpOutputUnit=1 lpPunchKit=1 lpSaddleUnit=1 lpMailBinKit=2 Staple_Check=1");
  EXPECT_EQ(Combinations("lpOutputTray=101"), "");  // and a tray doesn't rule what isn't there
}

TEST_F(ChangeTest, OperandsMustBeUsable) {
  Put("lpOutputTray=101 Layout_Check2=0");
  EXPECT_EQ(Combinations("Staple_Check=1"), "");
  Put("lpOutput=1 EngSaveToner_Check=1");  // always usable
  EXPECT_EQ(Combinations("DraftPrint=1"), "EngSaveToner_Check:=0/2");
  Put("lpOutput=2 Layout_Check2=1 Staple_Check=1 lpOutputTray=1");
  EXPECT_EQ(Combinations("lpOutputUnit=1"), "lpPunchKit:=1/2 lpSaddleUnit:=1/2 Staple_Check:=0/10");
}

TEST_F(ChangeTest, TripleRulesWantAllThree) {
  Put("lpOutputUnit=41 lpPunchKit=1 lpSaddleUnit=1 lpOutputTray=1 Staple_Check=1");
  EXPECT_EQ(Combinations("lpOutputTray=11"), "Staple_Check:=0/3");
  Put("lpOutputTray=11 Staple_Check=0");
  EXPECT_EQ(Combinations("Staple_Check=1"), "lpOutputTray:=1/3");
  Put("BindMargin_Check=1 Nup_Check=1 lpMarginMode=1");
  EXPECT_EQ(Combinations("lpMarginMode.2302=2"), "Nup_Check:=0/3");
}

TEST_F(ChangeTest, RulesSeeThePrintedSheet) {
  const ControlIndex out = Control(u"lpOutputPaper");
  const ControlIndex size = Control(u"lpMediaSize");
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 9), 9);
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 513), 256);
  EXPECT_EQ(EffectiveRuleValue(*engine, Control(u"Zoom"), 513), 513);
  Put("lpPRNType=3");
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 9), 8);
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 28), 28);
  EXPECT_EQ(EffectiveRuleValue(*engine, size, 9), 9);
  Put("lpOutputPaper=257");
  EXPECT_EQ(EffectiveRuleValue(*engine, size, 9), 8);
  Put("lpPRNType=1 POD_OnePerSheet_Check=1 POD_Check=0");
  EXPECT_EQ(EffectiveRuleValue(*engine, size, 9), 9);
}

TEST_F(ChangeTest, ABookletTestsItsSheetAgainstTheTray) {
  Put("lpMediaSource=270 lpOutputPaper=9 lpMediaSource=270");
  EXPECT_EQ(Papers("lpBindPosit=2"), "");
  const std::string source = "lpMediaSource:=" + std::to_string(engine->Default(Control(u"lpMediaSource"))) + "/0";
  EXPECT_EQ(Papers("lpPRNType=3").substr(0, source.size()), source);
  Put("lpPRNType=1 lpOutputPaper=8");
  EXPECT_EQ(Papers("lpMediaSource=270"), source);
}

TEST_F(ChangeTest, ThePaperOpposesWhatWasChangedFirst) {
  Put("lpOutputPaper=257 lpMediaSize=28 Collate_Check=0 lpMediaSource=7");
  EXPECT_EQ(Papers("Front_Check=1"), "Front_Check:=0/0 !lpMediaSize=28 !lpOutputPaper=257");
  Put("Layout_Check2=0 lpPRNType=2 lpOutputPaper=2381 Front_Check=0");  // the print type counts even so
  EXPECT_EQ(Papers("lpPRNType=1"), "!lpOutputPaper=2381");
  Put("Layout_Check2=1 lpOutputPaper=257 Front_Check=0 Back_Check=1");
  EXPECT_EQ(Papers("lpBindPosit=2"), "Back_Check:=0/0");
}

TEST_F(ChangeTest, MediaOpposeAlwaysAndLoseTheirTrayInARecall) {
  Put("tray.1=8 lpMediaSource=1");  // sets of thick stock are small
  const std::string against = " !lpOutputPaper=9 !trayMediaType.3310=8";
  const auto standard = [&](std::u16string_view name) { return std::to_string(engine->Default(NamedIndex(name))); };
  EXPECT_EQ(Papers("lpBindPosit=2"), "trayMediaType.3310:=" + standard(u"trayMediaType.3310") + "/0" + against);
  engine->mode = ResolveMode::kRecall;
  EXPECT_EQ(Papers("lpBindPosit=3"), "lpMediaSource:=" + standard(u"lpMediaSource") + "/0" + against);
}

TEST_F(ChangeTest, CopiesAndInterleavingExcludeEachOther) {
  Put("tray.1=2 lpMediaSource=1 lpOutputPaper=9 OHPInterLeave_Check=1");
  EXPECT_EQ(Papers("Copies=2"), "Copies:=1/0 !OHPInterLeave_Check=1");
  Put("Copies=2 OHPInterLeave_Check=0");
  EXPECT_EQ(Papers("OHPInterLeave_Check=1"), "OHPInterLeave_Check:=0/0 !Copies=2");
}

TEST_F(ChangeTest, EdgesMoveWithTheOrientation) {
  Put("lpPRNType=3 lpBindPosit=4 lpMediaSource=7");
  EXPECT_EQ(Papers("lpOrientation=1"), "lpBindPosit:=2/0");
  Put("lpBindPosit=2");
  EXPECT_EQ(Papers("lpOrientation=2"), "lpBindPosit:=4/0");
  Put("lpPRNType=1 POD_Check=1 POD_OnePerSheet_Check=1 lpPOD_OnePerSheet=3");
  EXPECT_EQ(Papers("lpOrientation=2"), "lpPOD_OnePerSheet:=5/0");
  Put("lpPOD_OnePerSheet=5");
  EXPECT_EQ(Papers("lpOrientation=1"), "lpPOD_OnePerSheet:=3/0");
}

TEST_F(ChangeTest, TheFirstChecksOfAPass) {
  Put("Chapter_Check=1 lpPRNType=1 lpOutputPaper=332");
  log = {};
  EXPECT_TRUE(VerifyChapter(*engine, log));
  EXPECT_TRUE(CheckDoubleOnlyPaper(*engine, log));
  EXPECT_EQ(Told(), "Chapter_Check:=0/21 lpOutputPaper:=330/22");
  Put("lpPRNType=3");
  EXPECT_FALSE(VerifyChapter(*engine, log) || CheckDoubleOnlyPaper(*engine, log));

  Change("lpPRNType=2");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 2);
  EXPECT_EQ(request.rows[1].control, Control(u"lpOutputPaper"));
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 2);
  Put("lpOutputPaper=257");
  Change("POD_OnePerSheet_Check=0");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.rows[1].control, Control(u"lpMediaSize"));
  Put("POD_OnePerSheet_Check=1");
  Change("POD_Check=1");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 1);
  Put("POD_OnePerSheet_Check=0");
  Change("POD_Check=0");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 1);
}

TEST_F(ChangeTest, StaplesFollowTheEdge) {
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=2"), "lpStaple:=1/0");  // with stapling off too
  Put("lpBindPosit=4 lpStaple=2");
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=1"), "lpStaple:=2/0");
  Put("Staple_Check=1 lpOutputPaper=8 lpStaple=4 lpBindPosit=1");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=2"), "lpStaple:=1/0");
  Put("lpOrientation=2");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=3"), "");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=4"), "lpStaple:=2/0");
  Put("lpPRNType=3");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=4"), "");
}

TEST_F(ChangeTest, StaplesGiveWayToThePaperAndTheMedia) {
  Put("lpOutputPaper=28");
  EXPECT_EQ(Finish(ResolveStaple, "Staple_Check=1"), "Staple_Check:=0/0 !lpOutputPaper=28");
  EXPECT_EQ(Finish(ResolveStaple, "lpOutputPaper=2059"), "Staple_Check:=0/0");
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=3 lpBindPosit=4"), "Staple_Check:=0/0 !lpOutputPaper=2059");
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=2"), "Staple_Check:=0/0");
  EXPECT_EQ(Finish(ResolveStaple, "lpOutputPaper=9 lpBindPosit=3 lpStaple=1"), "");
  Put("tray.1=6 lpMediaSource=1 Staple_Check=0");
  EXPECT_EQ(Finish(ResolveStaple, "Staple_Check=1"), "Staple_Check:=0/0 !lpBindPosit=3");
}

TEST_F(ChangeTest, HolesGiveWay) {
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=1"), "");
  Put("lpOutputPaper=2059");
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=1"), "");
  EXPECT_EQ(Finish(ResolvePunch, "Staple_Check=1"), "Punch_Check:=0/0");  // not together
  Put("Staple_Check=0 lpOutputPaper=28 Punch_Check=0");
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=1"), "Punch_Check:=0/0 !lpOutputPaper=28");
  Put("lpOutputPaper=8 lpBindPosit=2 Punch_Check=0 lpOutputUnit=41 lpPunchHoles=4");
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=1"), "Punch_Check:=0/0 !lpBindPosit=2");
  EXPECT_EQ(Finish(ResolvePunch, "lpOrientation=2"), "");
  EXPECT_EQ(Finish(ResolvePunch, "lpLayout=8 Nup_Check=1"), "Punch_Check:=0/0");  // the layout turns the page
}

TEST_F(ChangeTest, AFoldThatTurnsThePaperLeavesTheSetting) {
  Put("lpOutputPaper=2057 lpBindPosit=4 Punch_Check=1");
  EXPECT_EQ(Finish(ResolvePunch, "lpOrientation=1"), "");  // edge 2 is free while the sheet runs short edge first
  // Turned it is A4, whose long edge leads: a fold counts against it.
  EXPECT_EQ(Finish(ResolvePunch, "lpFold=21"), "Punch_Check:=0/0");
  EXPECT_EQ(Value("lpOutputPaper"), 2057);
  Put("lpOutputPaper=9 lpBindPosit=2");
  EXPECT_EQ(Finish(ResolvePunch, "lpFold=0"), "");
  EXPECT_EQ(Finish(ResolvePunch, "lpFold=22"), "Punch_Check:=0/0");
}

TEST_F(ChangeTest, FoldsJudgeWhatTheyFold) {
  Put("FoldStaple_Check=1 lpOutputPaper=8");
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpBindPosit=2"), "");
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpPRNType=3"), "FoldStaple_Check:=0/0");  // the user's print type stays
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpBindPosit=3"), "lpPRNType:=1/0");
  Put("lpPRNType=1");
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpPRNType=1 lpOutputPaper=88"), "FoldStaple_Check:=0/0");
  EXPECT_EQ(Finish(ResolveFoldStaple, "FoldStaple_Check=1"), "FoldStaple_Check:=0/0 !lpOutputPaper=88");
  Put("lpOutputPaper=2382 lpSaddleUnit=1");
  EXPECT_EQ(Finish(ResolveFoldStaple, "Saddle_Check=1"), "");  // no unit, nothing available to give way
  Put("lpSaddleUnit=2 Saddle_Check=0 lpOutputPaper=8 lpPRNType=1 POD_Check=1 POD_OnePerSheet_Check=1 Fold_Check=1");
  EXPECT_EQ(Finish(ResolveFold, "lpFold=11"), "POD_OnePerSheet_Check:=0/0");
  EXPECT_EQ(Finish(ResolveFold, "POD_OnePerSheet_Check=1"), "Fold_Check:=0/0");
  EXPECT_EQ(Finish(ResolveFold, "lpFold=31 lpOutputPaper=28"), "");
}

TEST_F(ChangeTest, InterleavingFindsItsTrays) {
  Put("tray.1=2 tray.2=1 tray.258=1 tray.259=1 tray.270=1 lpMediaSource=1 lpOIPaperTray=2");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=1"), "");
  EXPECT_EQ(Interleave("lpOIPaperTray=1"), "lpOIPaperTray:=270/0");  // the last tray with paper
  Put("lpMediaSource=2 OHPInterLeave_Check=0");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=1"), "OHPInterLeave_Check:=0/0 !lpMediaSource=2");
  Put("tray.1=1 lpMediaSource=1");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=1"), "OHPInterLeave_Check:=0/0");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=0"), "");
}

TEST_F(ChangeTest, TraysTakeThePaperOrGiveWay) {
  EXPECT_EQ(Trays({}), "");
  const std::string first = std::to_string(GetControlBlock(*engine, 120)->Items()[0].value);
  Put("lpMediaSource=270 lpOutputPaper=8");
  EXPECT_EQ(Trays({}), " lpMediaSource:=" + first + "/0");
  // What is pending is tried, and corrected in its place.
  Put("lpMediaSource=1");
  EXPECT_EQ(Trays({{Control(u"lpMediaSource"), 270, Reason::kPair}, {Control(u"lpPRNType"), 2, Reason::kPair}}),
            " lpMediaSource:=" + first + "/2 lpPRNType:=2/2");
  Put("lpMediaSource=" + first);
  EXPECT_EQ(Trays({{Control(u"lpMediaSource"), 270, Reason::kPair}}), "");  // it would stay what it is
  Put("lpMediaSource=270");
  log = {};
  AddOpposition(log, Control(u"Zoom"), 1);
  ResolveTrays(*engine, log, nullptr);
  EXPECT_EQ(Told(), "!Zoom=1");
  engine->mode = ResolveMode::kRecall;
  ResolveTrays(*engine, log, nullptr);
  EXPECT_EQ(Told(), "lpMediaSource:=" + first + "/0 !Zoom=1");
}

TEST_F(ChangeTest, OutputTraysFollowPendingFinishing) {
  Put("lpOutputTray=11");
  EXPECT_EQ(Trays({{Control(u"FoldStaple_Check"), 1, Reason::kPair}}), " FoldStaple_Check:=1/2 lpOutputTray:=1/0");
  Put("lpOutput=1 lpOutputTray=31");
  EXPECT_EQ(Trays({}), " lpOutputTray:=" + std::to_string(engine->Default(Control(u"lpOutputTray"))) + "/0");
}

TEST_F(ChangeTest, ARequestHoldsEachControlOnceAndALogRefusesTheRest) {
  for (size_t round = 0; round < 2; ++round) {
    for (size_t i = 0; i < kControlCount; ++i)
      EXPECT_EQ(AppendRow(request, static_cast<ControlIndex>(i), 0, 1), round == 0);
  }
  EXPECT_EQ(request.count, kControlCount);
  EXPECT_FALSE(AppendRow(request, kNoControl, 0, 1));
  for (size_t i = 0; i <= kLogCapacity; ++i) {
    EXPECT_FALSE(log.full);
    EXPECT_EQ(AddEntry(*engine, log, Control(u"Zoom"), 7, Reason::kPair), i < kLogCapacity);
    EXPECT_EQ(log.full, i == kLogCapacity);
  }
  log.full = false;
  for (size_t i = 0; i <= kLogCapacity; ++i) AddOpposition(log, Control(u"Zoom"), 7);
  EXPECT_TRUE(log.full);
  EXPECT_EQ(log.oppositionCount, kLogCapacity);
}

}  // namespace
}  // namespace heron::engine
