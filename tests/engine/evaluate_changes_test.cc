// What must give way to a change: combinations, papers, finishing, trays. One pass of the rules over one change.
#include <gtest/gtest.h>

#include "engine/combinations.h"
#include "engine_fixture.h"

namespace heron::engine {
namespace {

/// A machine that can do everything, printing an A4 page.
constexpr char kAll[] =
    "lpOutput=Printer lpOutputUnit=BinAndExit2 lpSaddleUnit=Installed lpPunchKit=TwoHoles "
    "lpSourceUnit=Tray3And4AndLarge Layout_Check2=On lpPRNType=OneSided lpBindPosit=Auto "
    "lpOrientation=Portrait lpMediaSize=A4 lpOutputPaper=A4 lpMediaSource=Tray1 lpOutputTray=Auto lpStaple=Corner "
    "lpPunchHoles=TwoHoles "
    "lpFoldStaple=FoldAndStaple Sort_Check=On ";

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
  Put("lpOutputTray=MailBin1 lpMailBinKit=Installed");
  EXPECT_EQ(Combinations("Staple_Check=On"), "Staple_Check:=Off/2 !lpOutputTray=MailBin1");
  Put("Staple_Check=On lpOutputTray=Auto");
  EXPECT_EQ(Combinations("lpOutputTray=MailBin1"), "Staple_Check:=Off/2");
  Put("lpSourceUnit=NotInstalled Staple_Check=Off lpOutputTray=Auto lpMediaSource=Auto");
  EXPECT_EQ(Combinations("lpMediaSource=Tray3"), "lpMediaSource:=Auto/2");  // a device option is never in the way
}

TEST_F(ChangeTest, OppositionSparesWhatTheUserChangedToo) {
  Put("lpOutputTray=Auto lpMailBinKit=Installed");
  EXPECT_EQ(Combinations("Staple_Check=On lpOutputTray=MailBin1"), "Staple_Check:=Off/2 Staple_Check:=Off/2");
  // An entry that changes nothing isn't made; what speaks against the change is told all the same.
  Put("lpOutputTray=MailBin1 Staple_Check=Off");
  Change("Staple_Check=On");
  engine->Set(Control(u"Staple_Check"), 0);
  ApplyPairRules(*engine, request, log);
  EXPECT_EQ(Told(), "!lpOutputTray=MailBin1");
}

TEST_F(ChangeTest, OnlyARuleThatTakesTheChangeBackOpposes) {
  Put("tray.Tray1=Transparency lpMediaSource=Tray2 OHPInterLeave_Check=On lpMailBinKit=Installed lpOutputTray=Tray1");
  EXPECT_EQ(Combinations("lpOutputTray=MailBin1"), "lpOutputTray:=Auto/2");
  Put("lpOutputTray=Auto");
  EXPECT_EQ(Combinations("lpOutputTray=MailBin1"), "lpOutputTray:=Auto/2 !OHPInterLeave_Check=On");
}

TEST_F(ChangeTest, ADeviceOptionNeedntBeUsableToRuleTheOthers) {
  Put("lpOutputUnit=Floor2 lpPunchKit=NotInstalled Punch_Check=On lpPunchHoles=TwoHoles");
  EXPECT_FALSE(Available("lpPunchKit"));
  EXPECT_EQ(Combinations("lpPunchKit=FourHoles"), "lpPunchHoles:=FourHoles/2");  // but no other device option
  Put("lpOutputUnit=NotInstalled lpPunchKit=NotInstalled lpSaddleUnit=NotInstalled lpMailBinKit=Installed "
      "Staple_Check=On");
  EXPECT_EQ(Combinations("lpOutputTray=MailBin1"), "");  // and a tray doesn't rule what isn't there
}

TEST_F(ChangeTest, OperandsMustBeUsable) {
  Put("lpOutputTray=MailBin1 Layout_Check2=Off");
  EXPECT_EQ(Combinations("Staple_Check=On"), "");
  Put("lpOutput=Fax EngSaveToner_Check=On");  // always usable
  EXPECT_EQ(Combinations("DraftPrint=On"), "EngSaveToner_Check:=Off/2");
  Put("lpOutput=Printer Layout_Check2=On Staple_Check=On lpOutputTray=Auto");
  EXPECT_EQ(Combinations("lpOutputUnit=NotInstalled"),
            "lpPunchKit:=NotInstalled/2 lpSaddleUnit:=NotInstalled/2 Staple_Check:=Off/10");
}

TEST_F(ChangeTest, TripleRulesWantAllThree) {
  Put("lpOutputUnit=Floor2 lpPunchKit=NotInstalled lpSaddleUnit=NotInstalled lpOutputTray=Auto Staple_Check=On");
  EXPECT_EQ(Combinations("lpOutputTray=Tray1"), "Staple_Check:=Off/3");
  Put("lpOutputTray=Tray1 Staple_Check=Off");
  EXPECT_EQ(Combinations("Staple_Check=On"), "lpOutputTray:=Auto/3");
  Put("BindMargin_Check=On Nup_Check=On lpMarginMode=Shift");
  EXPECT_EQ(Combinations("lpMarginMode.Reduce=Reduce"), "Nup_Check:=Off/3");
}

TEST_F(ChangeTest, RulesSeeThePrintedSheet) {
  const ControlIndex out = Control(u"lpOutputPaper");
  const ControlIndex size = Control(u"lpMediaSize");
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 9), 9);
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 513), 256);
  EXPECT_EQ(EffectiveRuleValue(*engine, Control(u"Zoom"), 513), 513);
  Put("lpPRNType=Booklet");
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 9), 8);
  EXPECT_EQ(EffectiveRuleValue(*engine, out, 28), 28);
  EXPECT_EQ(EffectiveRuleValue(*engine, size, 9), 9);
  Put("lpOutputPaper=SameAsDocument");
  EXPECT_EQ(EffectiveRuleValue(*engine, size, 9), 8);
  Put("lpPRNType=OneSided POD_OnePerSheet_Check=On POD_Check=Off");
  EXPECT_EQ(EffectiveRuleValue(*engine, size, 9), 9);
}

TEST_F(ChangeTest, ABookletTestsItsSheetAgainstTheTray) {
  Put("lpMediaSource=Large lpOutputPaper=A4 lpMediaSource=Large");
  EXPECT_EQ(Papers("lpBindPosit=Left"), "");
  const std::string source = "lpMediaSource:=Auto/0";
  EXPECT_EQ(Papers("lpPRNType=Booklet").substr(0, source.size()), source);
  Put("lpPRNType=OneSided lpOutputPaper=A3");
  EXPECT_EQ(Papers("lpMediaSource=Large"), source);
}

TEST_F(ChangeTest, ThePaperOpposesWhatWasChangedFirst) {
  Put("lpOutputPaper=SameAsDocument lpMediaSize=EnvelopeC5 Collate_Check=Off lpMediaSource=Auto");
  EXPECT_EQ(Papers("Front_Check=On"), "Front_Check:=Off/0 !lpMediaSize=EnvelopeC5 !lpOutputPaper=SameAsDocument");
  Put("Layout_Check2=Off lpPRNType=TwoSided lpOutputPaper=2381 Front_Check=Off");  // the print type counts even so
  EXPECT_EQ(Papers("lpPRNType=OneSided"), "!lpOutputPaper=2381");
  Put("Layout_Check2=On lpOutputPaper=SameAsDocument Front_Check=Off Back_Check=On");
  EXPECT_EQ(Papers("lpBindPosit=Left"), "Back_Check:=Off/0");
}

TEST_F(ChangeTest, MediaOpposeAlwaysAndLoseTheirTrayInARecall) {
  Put("tray.Tray1=Envelope lpMediaSource=Tray1");  // sets of thick stock are small
  const std::string against = " !lpOutputPaper=A4 !trayMediaType.page=Envelope";
  const auto standard = [&](std::u16string_view name) {
    return test::NameOfValue(NamedIndex(name), engine->Default(NamedIndex(name)));
  };
  EXPECT_EQ(Papers("lpBindPosit=Left"), "trayMediaType.page:=" + standard(u"trayMediaType.page") + "/0" + against);
  engine->mode = ResolveMode::kRecall;
  EXPECT_EQ(Papers("lpBindPosit=Right"), "lpMediaSource:=" + standard(u"lpMediaSource") + "/0" + against);
}

TEST_F(ChangeTest, CopiesAndInterleavingExcludeEachOther) {
  Put("tray.Tray1=Transparency lpMediaSource=Tray1 lpOutputPaper=A4 OHPInterLeave_Check=On");
  EXPECT_EQ(Papers("Copies=2"), "Copies:=1/0 !OHPInterLeave_Check=On");
  Put("Copies=2 OHPInterLeave_Check=Off");
  EXPECT_EQ(Papers("OHPInterLeave_Check=On"), "OHPInterLeave_Check:=Off/0 !Copies=2");
}

TEST_F(ChangeTest, EdgesMoveWithTheOrientation) {
  Put("lpPRNType=Booklet lpBindPosit=Top lpMediaSource=Auto");
  EXPECT_EQ(Papers("lpOrientation=Portrait"), "lpBindPosit:=Left/0");
  Put("lpBindPosit=Left");
  EXPECT_EQ(Papers("lpOrientation=Landscape"), "lpBindPosit:=Top/0");
  Put("lpPRNType=OneSided POD_Check=On POD_OnePerSheet_Check=On lpPOD_OnePerSheet=3");
  EXPECT_EQ(Papers("lpOrientation=Landscape"), "lpPOD_OnePerSheet:=5/0");
  Put("lpPOD_OnePerSheet=5");
  EXPECT_EQ(Papers("lpOrientation=Portrait"), "lpPOD_OnePerSheet:=3/0");
}

TEST_F(ChangeTest, TheFirstChecksOfAPass) {
  Put("Chapter_Check=On lpPRNType=OneSided lpOutputPaper=332");
  log = {};
  EXPECT_TRUE(VerifyChapter(*engine, log));
  EXPECT_TRUE(CheckDoubleOnlyPaper(*engine, log));
  EXPECT_EQ(Told(), "Chapter_Check:=Off/21 lpOutputPaper:=330/22");
  Put("lpPRNType=Booklet");
  EXPECT_FALSE(VerifyChapter(*engine, log) || CheckDoubleOnlyPaper(*engine, log));

  Change("lpPRNType=TwoSided");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 2);
  EXPECT_EQ(request.rows[1].control, Control(u"lpOutputPaper"));
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 2);
  Put("lpOutputPaper=SameAsDocument");
  Change("POD_OnePerSheet_Check=Off");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.rows[1].control, Control(u"lpMediaSize"));
  Put("POD_OnePerSheet_Check=On");
  Change("POD_Check=On");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 1);
  Put("POD_OnePerSheet_Check=Off");
  Change("POD_Check=Off");
  AddPaperToRequest(*engine, request);
  EXPECT_EQ(request.count, 1);
}

TEST_F(ChangeTest, StaplesFollowTheEdge) {
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=UpperLeft"), "lpStaple:=Corner/0");  // with stapling off too
  Put("lpBindPosit=Top lpStaple=UpperLeft");
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=Corner"), "lpStaple:=UpperLeft/0");
  Put("Staple_Check=On lpOutputPaper=A3 lpStaple=TwoStaples lpBindPosit=Auto");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=Left"), "lpStaple:=Corner/0");
  Put("lpOrientation=Landscape");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=Right"), "");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=Top"), "lpStaple:=UpperLeft/0");
  Put("lpPRNType=Booklet");
  EXPECT_EQ(Finish(ResolveStaple, "lpBindPosit=Top"), "");
}

TEST_F(ChangeTest, StaplesGiveWayToThePaperAndTheMedia) {
  Put("lpOutputPaper=EnvelopeC5");
  EXPECT_EQ(Finish(ResolveStaple, "Staple_Check=On"), "Staple_Check:=Off/0 !lpOutputPaper=EnvelopeC5");
  EXPECT_EQ(Finish(ResolveStaple, "lpOutputPaper=A5R"), "Staple_Check:=Off/0");
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=UpperRight lpBindPosit=Top"), "Staple_Check:=Off/0 !lpOutputPaper=A5R");
  EXPECT_EQ(Finish(ResolveStaple, "lpStaple=UpperLeft"), "Staple_Check:=Off/0");
  EXPECT_EQ(Finish(ResolveStaple, "lpOutputPaper=A4 lpBindPosit=Right lpStaple=Corner"), "");
  Put("tray.Tray1=6 lpMediaSource=Tray1 Staple_Check=Off");
  EXPECT_EQ(Finish(ResolveStaple, "Staple_Check=On"), "Staple_Check:=Off/0 !lpBindPosit=Right");
}

TEST_F(ChangeTest, HolesGiveWay) {
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=On"), "");
  Put("lpOutputPaper=A5R");
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=On"), "");
  EXPECT_EQ(Finish(ResolvePunch, "Staple_Check=On"), "Punch_Check:=Off/0");  // not together
  Put("Staple_Check=Off lpOutputPaper=EnvelopeC5 Punch_Check=Off");
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=On"), "Punch_Check:=Off/0 !lpOutputPaper=EnvelopeC5");
  Put("lpOutputPaper=A3 lpBindPosit=Left Punch_Check=Off lpOutputUnit=Floor2 lpPunchHoles=FourHoles");
  EXPECT_EQ(Finish(ResolvePunch, "Punch_Check=On"), "Punch_Check:=Off/0 !lpBindPosit=Left");
  EXPECT_EQ(Finish(ResolvePunch, "lpOrientation=Landscape"), "");
  EXPECT_EQ(Finish(ResolvePunch, "lpLayout=TwoPages Nup_Check=On"), "Punch_Check:=Off/0");  // the layout turns the page
}

TEST_F(ChangeTest, AFoldThatTurnsThePaperLeavesTheSetting) {
  Put("lpOutputPaper=2057 lpBindPosit=Top Punch_Check=On");
  EXPECT_EQ(Finish(ResolvePunch, "lpOrientation=Portrait"),
            "");  // edge 2 is free while the sheet runs short edge first
  // Turned it is A4, whose long edge leads: a fold counts against it.
  EXPECT_EQ(Finish(ResolvePunch, "lpFold=21"), "Punch_Check:=Off/0");
  EXPECT_EQ(Value("lpOutputPaper"), 2057);
  Put("lpOutputPaper=A4 lpBindPosit=Left");
  EXPECT_EQ(Finish(ResolvePunch, "lpFold=0"), "");
  EXPECT_EQ(Finish(ResolvePunch, "lpFold=22"), "Punch_Check:=Off/0");
}

TEST_F(ChangeTest, FoldsJudgeWhatTheyFold) {
  Put("FoldStaple_Check=On lpOutputPaper=A3");
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpBindPosit=Left"), "");
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpPRNType=Booklet"), "FoldStaple_Check:=Off/0");  // the user's print type stays
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpBindPosit=Right"), "lpPRNType:=OneSided/0");
  Put("lpPRNType=OneSided");
  EXPECT_EQ(Finish(ResolveFoldStaple, "lpPRNType=OneSided lpOutputPaper=B6"), "FoldStaple_Check:=Off/0");
  EXPECT_EQ(Finish(ResolveFoldStaple, "FoldStaple_Check=On"), "FoldStaple_Check:=Off/0 !lpOutputPaper=B6");
  Put("lpOutputPaper=Size425x55R lpSaddleUnit=NotInstalled");
  EXPECT_EQ(Finish(ResolveFoldStaple, "Saddle_Check=1"), "");  // no unit, nothing available to give way
  Put("lpSaddleUnit=Installed Saddle_Check=0 lpOutputPaper=A3 lpPRNType=OneSided POD_Check=On POD_OnePerSheet_Check=On "
      "Fold_Check=On");
  EXPECT_EQ(Finish(ResolveFold, "lpFold=Center"), "POD_OnePerSheet_Check:=Off/0");
  EXPECT_EQ(Finish(ResolveFold, "POD_OnePerSheet_Check=On"), "Fold_Check:=Off/0");
  EXPECT_EQ(Finish(ResolveFold, "lpFold=31 lpOutputPaper=EnvelopeC5"), "");
}

TEST_F(ChangeTest, InterleavingFindsItsTrays) {
  Put("tray.Tray1=Transparency tray.Tray2=Plain tray.Tray3=Plain tray.Tray4=Plain tray.Large=Plain lpMediaSource=Tray1 "
      "lpOIPaperTray=Tray2");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=On"), "");
  EXPECT_EQ(Interleave("lpOIPaperTray=Tray1"), "lpOIPaperTray:=Large/0");  // the last tray with paper
  Put("lpMediaSource=Tray2 OHPInterLeave_Check=Off");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=On"), "OHPInterLeave_Check:=Off/0 !lpMediaSource=Tray2");
  Put("tray.Tray1=Plain lpMediaSource=Tray1");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=On"), "OHPInterLeave_Check:=Off/0");
  EXPECT_EQ(Interleave("OHPInterLeave_Check=Off"), "");
}

TEST_F(ChangeTest, TraysTakeThePaperOrGiveWay) {
  EXPECT_EQ(Trays({}), "");
  const std::string first = "Auto";  // of the list
  Put("lpMediaSource=Large lpOutputPaper=A3");
  EXPECT_EQ(Trays({}), " lpMediaSource:=" + first + "/0");
  // What is pending is tried, and corrected in its place.
  Put("lpMediaSource=Tray1");
  EXPECT_EQ(Trays({{Control(u"lpMediaSource"), 270, Reason::kPair}, {Control(u"lpPRNType"), 2, Reason::kPair}}),
            " lpMediaSource:=" + first + "/2 lpPRNType:=TwoSided/2");
  Put("lpMediaSource=" + first);
  EXPECT_EQ(Trays({{Control(u"lpMediaSource"), 270, Reason::kPair}}), "");  // it would stay what it is
  Put("lpMediaSource=Large");
  log = {};
  AddOpposition(log, Control(u"Zoom"), 1);
  ResolveTrays(*engine, log, nullptr);
  EXPECT_EQ(Told(), "!Zoom=1");
  engine->mode = ResolveMode::kRecall;
  ResolveTrays(*engine, log, nullptr);
  EXPECT_EQ(Told(), "lpMediaSource:=" + first + "/0 !Zoom=1");
}

TEST_F(ChangeTest, OutputTraysFollowPendingFinishing) {
  Put("lpOutputTray=Tray1");
  EXPECT_EQ(Trays({{Control(u"FoldStaple_Check"), 1, Reason::kPair}}), " FoldStaple_Check:=On/2 lpOutputTray:=Auto/0");
  Put("lpOutput=Fax lpOutputTray=Tray2");
  EXPECT_EQ(Trays({}), " lpOutputTray:=Auto/0");
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
