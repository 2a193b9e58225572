// What must give way to a change: combinations, papers, finishing, trays. One pass of the rules over one change.
#include <gtest/gtest.h>

#include <functional>

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

/// A change after `before` was written, and the log of the pass; "" keeps what is there.
struct Step {
  const char* before;
  const char* change;
  const char* log;
};

using Pass = std::function<void(Engine&, const ChangeRequest&, ChangeLog&)>;

void ApplyCombinations(Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  ApplyPairRules(engine, request, log);
  ApplyTripleRules(engine, request, log);
}

class ChangeTest : public EngineTest {
 protected:
  ChangeTest() { Put(kAll); }

  /// The log of one pass over a change.
  std::string Run(const Pass& pass, const std::string& change) {
    Change(change);
    pass(*engine, request, log);
    return Logged();
  }
  void Expect(const Pass& pass, std::initializer_list<Step> steps) {
    for (const Step& step : steps) {
      Put(step.before);
      EXPECT_EQ(Run(pass, step.change), step.log) << step.before << " / " << step.change;
    }
  }
  /// Trays after entries that are pending already.
  std::string Trays(std::initializer_list<LogEntry> pending) {
    log = {};
    AddEntry(*engine, log, Control(u"Zoom"), 77, Reason::kPair);
    log.mark = log.count;
    for (const LogEntry& entry : pending) AddEntry(*engine, log, entry.control, entry.value, entry.reason);
    const RuleStates before = engine->rules;
    SnapshotValues(*engine);
    ResolveTrays(*engine, log, nullptr);
    ResolveOutputTray(*engine, log, nullptr);
    for (ControlIndex i = 0; i < kControlCount; ++i)
      EXPECT_EQ(engine->Value(i), engine->savedValues[i]) << kControls[i].id;
    EXPECT_EQ(engine->rules.enabled, before.enabled);
    return Logged().substr(std::string("Zoom:=77/2").size());
  }
};

TEST_F(ChangeTest, CombinationsGiveWayOrOppose) {
  constexpr char kNoUnits[] =
      "lpOutputUnit=NotInstalled lpPunchKit=NotInstalled lpSaddleUnit=NotInstalled lpMailBinKit=Installed "
      "Staple_Check=On";
  Expect(
      ApplyCombinations,
      {
          {"lpOutputTray=MailBin1 lpMailBinKit=Installed", "Staple_Check=On",
           "Staple_Check:=Off/2 !lpOutputTray=MailBin1"},
          {"Staple_Check=On lpOutputTray=Auto", "lpOutputTray=MailBin1", "Staple_Check:=Off/2"},
          // A device option is never named as opposing.
          {"lpSourceUnit=NotInstalled Staple_Check=Off lpOutputTray=Auto lpMediaSource=Auto", "lpMediaSource=Tray3",
           "lpMediaSource:=Auto/2"},
          // What the user changed in the same action doesn't oppose.
          {kAll, "Staple_Check=On lpOutputTray=MailBin1", "Staple_Check:=Off/2 Staple_Check:=Off/2"},
          // Only a rule that takes the change back opposes.
          {"lpSourceUnit=Tray3And4AndLarge Staple_Check=Off tray.Tray1=Transparency lpMediaSource=Tray2 "
           "OHPInterLeave_Check=On lpOutputTray=Tray1",
           "lpOutputTray=MailBin1", "lpOutputTray:=Auto/2"},
          {"lpOutputTray=Auto", "lpOutputTray=MailBin1", "lpOutputTray:=Auto/2 !OHPInterLeave_Check=On"},
          // A device option rules others without being usable, but no other device option; a tray doesn't rule a kit
          // that isn't there.
          {"OHPInterLeave_Check=Off lpOutputTray=Auto lpOutputUnit=Floor2 lpPunchKit=NotInstalled Punch_Check=On "
           "lpPunchHoles=TwoHoles",
           "lpPunchKit=FourHoles", "lpPunchHoles:=FourHoles/2"},
          {kNoUnits, "lpOutputTray=MailBin1", ""},
          // Other operands must be usable.
          {"lpOutputTray=MailBin1 Layout_Check2=Off", "Staple_Check=On", ""},
          {"lpOutput=Fax EngSaveToner_Check=On", "DraftPrint=On", "EngSaveToner_Check:=Off/2"},
          {"lpOutput=Printer Layout_Check2=On Staple_Check=On lpOutputTray=Auto lpOutputUnit=BinAndExit2 "
           "lpSaddleUnit=Installed lpPunchKit=TwoHoles lpMailBinKit=NotInstalled DraftPrint=Off "
           "EngSaveToner_Check=Off Punch_Check=Off",
           "lpOutputUnit=NotInstalled", "lpPunchKit:=NotInstalled/2 lpSaddleUnit:=NotInstalled/2 Staple_Check:=Off/10"},
          // Triple rules want all three.
          {"lpOutputUnit=Floor2 lpPunchKit=NotInstalled lpSaddleUnit=NotInstalled lpOutputTray=Auto Staple_Check=On",
           "lpOutputTray=Tray1", "Staple_Check:=Off/3"},
          {"lpOutputTray=Tray1 Staple_Check=Off", "Staple_Check=On", "lpOutputTray:=Auto/3"},
          {"BindMargin_Check=On Nup_Check=On lpMarginMode=Shift", "lpMarginMode.Reduce=Reduce", "Nup_Check:=Off/3"},
      });
}

TEST_F(ChangeTest, AnOppositionIsLoggedWithoutAnEntry) {
  Put("lpOutputTray=MailBin1 lpMailBinKit=Installed Staple_Check=Off");
  Change("Staple_Check=On");
  engine->Set(Control(u"Staple_Check"), 0);
  ApplyPairRules(*engine, request, log);
  EXPECT_EQ(Logged(), "!lpOutputTray=MailBin1");
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

TEST_F(ChangeTest, PapersGiveWayOrOppose) {
  // A booklet tests the sheet that holds two pages against the tray.
  const std::string source = "lpMediaSource:=Auto/0";
  Put("lpMediaSource=Large");
  EXPECT_EQ(Run(ApplyPaperRules, "lpPRNType=Booklet").substr(0, source.size()), source);
  Expect(ApplyPaperRules,
         {
             {kAll, "lpMediaSource=Large", ""},
             {"lpMediaSource=Tray1 lpOutputPaper=A3", "lpMediaSource=Large", "lpMediaSource:=Auto/0"},
             // The paper opposes what was changed first.
             {"lpOutputPaper=SameAsDocument lpMediaSize=EnvelopeC5 Collate_Check=Off lpMediaSource=Auto",
              "Front_Check=On", "Front_Check:=Off/0 !lpMediaSize=EnvelopeC5 !lpOutputPaper=SameAsDocument"},
             {"Layout_Check2=Off lpPRNType=TwoSided lpOutputPaper=2381 Front_Check=Off", "lpPRNType=OneSided",
              "!lpOutputPaper=2381"},  // the print type counts without layout options too
             {"Layout_Check2=On lpOutputPaper=SameAsDocument Front_Check=Off Back_Check=On", "lpBindPosit=Left",
              "Back_Check:=Off/0"},
             // Copies and interleaving exclude each other.
             {"Back_Check=Off lpMediaSize=A4 tray.Tray1=Transparency lpMediaSource=Tray1 lpOutputPaper=A4 "
              "OHPInterLeave_Check=On",
              "Copies=2", "Copies:=1/0 !OHPInterLeave_Check=On"},
             {"Copies=2 OHPInterLeave_Check=Off", "OHPInterLeave_Check=On", "OHPInterLeave_Check:=Off/0 !Copies=2"},
             // Edges move with the orientation.
             {"tray.Tray1=Plain Copies=1 OHPInterLeave_Check=Off lpPRNType=Booklet lpBindPosit=Top lpMediaSource=Auto",
              "lpOrientation=Portrait", "lpBindPosit:=Left/0"},
             {"lpBindPosit=Left", "lpOrientation=Landscape", "lpBindPosit:=Top/0"},
             {"lpPRNType=OneSided POD_Check=On POD_OnePerSheet_Check=On lpPOD_OnePerSheet=3", "lpOrientation=Landscape",
              "lpPOD_OnePerSheet:=5/0"},
             {"lpPOD_OnePerSheet=5", "lpOrientation=Portrait", "lpPOD_OnePerSheet:=3/0"},
         });
}

TEST_F(ChangeTest, MediaOpposeAlwaysAndLoseTheirTrayInARecall) {
  Put("tray.Tray1=Envelope lpMediaSource=Tray1");  // sets of thick stock are small
  const std::string against = " !lpOutputPaper=A4 !trayMediaType.page=Envelope";
  const auto standard = [&](std::u16string_view name) {
    return test::NameOfValue(NamedIndex(name), engine->Default(NamedIndex(name)));
  };
  EXPECT_EQ(Run(ApplyPaperRules, "lpBindPosit=Left"),
            "trayMediaType.page:=" + standard(u"trayMediaType.page") + "/0" + against);
  engine->mode = ResolveMode::kRecall;
  EXPECT_EQ(Run(ApplyPaperRules, "lpBindPosit=Right"), "lpMediaSource:=" + standard(u"lpMediaSource") + "/0" + against);
}

TEST_F(ChangeTest, TheFirstChecksOfAPass) {
  Put("Chapter_Check=On lpPRNType=OneSided lpOutputPaper=332");
  log = {};
  EXPECT_TRUE(VerifyChapter(*engine, log));
  EXPECT_TRUE(CheckDoubleOnlyPaper(*engine, log));
  EXPECT_EQ(Logged(), "Chapter_Check:=Off/21 lpOutputPaper:=330/22");
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

TEST_F(ChangeTest, StaplesFollowTheEdgeAndGiveWay) {
  Expect(ResolveStaple,
         {
             {"", "lpStaple=UpperLeft", "lpStaple:=Corner/0"},  // with stapling off too
             {"lpBindPosit=Top lpStaple=UpperLeft", "lpStaple=Corner", "lpStaple:=UpperLeft/0"},
             {"Staple_Check=On lpOutputPaper=A3 lpStaple=TwoStaples lpBindPosit=Auto", "lpBindPosit=Left",
              "lpStaple:=Corner/0"},
             {"lpOrientation=Landscape", "lpBindPosit=Right", ""},
             {"", "lpBindPosit=Top", "lpStaple:=UpperLeft/0"},
             {"lpPRNType=Booklet", "lpBindPosit=Top", ""},
             {kAll, "lpOrientation=Portrait", ""},
             {"lpOutputPaper=EnvelopeC5", "Staple_Check=On", "Staple_Check:=Off/0 !lpOutputPaper=EnvelopeC5"},
             {"", "lpOutputPaper=A5R", "Staple_Check:=Off/0"},
             {"", "lpStaple=UpperRight lpBindPosit=Top", "Staple_Check:=Off/0 !lpOutputPaper=A5R"},
             {"", "lpStaple=UpperLeft", "Staple_Check:=Off/0"},
             {"", "lpOutputPaper=A4 lpBindPosit=Right lpStaple=Corner", ""},
             {"tray.Tray1=6 lpMediaSource=Tray1 Staple_Check=Off", "Staple_Check=On",
              "Staple_Check:=Off/0 !lpBindPosit=Right"},
         });
}

TEST_F(ChangeTest, HolesGiveWay) {
  Expect(ResolvePunch,
         {
             {"", "Punch_Check=On", ""},
             {"lpOutputPaper=A5R", "Punch_Check=On", ""},
             {"", "Staple_Check=On", "Punch_Check:=Off/0"},  // not together
             {"Staple_Check=Off lpOutputPaper=EnvelopeC5 Punch_Check=Off", "Punch_Check=On",
              "Punch_Check:=Off/0 !lpOutputPaper=EnvelopeC5"},
             {"lpOutputPaper=A3 lpBindPosit=Left Punch_Check=Off lpOutputUnit=Floor2 lpPunchHoles=FourHoles",
              "Punch_Check=On", "Punch_Check:=Off/0 !lpBindPosit=Left"},
             {"", "lpOrientation=Landscape", ""},
             {"", "lpLayout=TwoPages Nup_Check=On", "Punch_Check:=Off/0"},  // the layout turns the page
             // Edge 2 is free while the sheet runs short edge first; a fold turns it into A4, whose long edge leads.
             {kAll, "Nup_Check=Off", ""},
             {"lpOutputPaper=2057 lpBindPosit=Top Punch_Check=On", "lpOrientation=Portrait", ""},
             {"", "lpFold=21", "Punch_Check:=Off/0"},
             {"lpOutputPaper=A4 lpBindPosit=Left", "lpFold=0", ""},
             {"", "lpFold=22", "Punch_Check:=Off/0"},
         });
  EXPECT_EQ(Value("lpOutputPaper"), "A4") << "a fold turns the sheet, not the setting";
}

TEST_F(ChangeTest, FoldsJudgeWhatTheyFold) {
  Expect(ResolveFoldStaple,
         {
             {"FoldStaple_Check=On lpOutputPaper=A3", "lpBindPosit=Left", ""},
             {"", "lpPRNType=Booklet", "FoldStaple_Check:=Off/0"},  // the user's print type stays
             {"", "lpBindPosit=Right", "lpPRNType:=OneSided/0"},
             {"lpPRNType=OneSided", "lpPRNType=OneSided lpOutputPaper=B6", "FoldStaple_Check:=Off/0"},
             {"", "FoldStaple_Check=On", "FoldStaple_Check:=Off/0 !lpOutputPaper=B6"},
             // Without a unit nothing available could give way.
             {"lpOutputPaper=Size425x55R lpSaddleUnit=NotInstalled", "Saddle_Check=1", ""},
         });
  Expect(ResolveFold, {
                          {"lpSaddleUnit=Installed Saddle_Check=0 lpOutputPaper=A3 lpPRNType=OneSided POD_Check=On "
                           "POD_OnePerSheet_Check=On Fold_Check=On",
                           "lpFold=Center", "POD_OnePerSheet_Check:=Off/0"},
                          {"", "POD_OnePerSheet_Check=On", "Fold_Check:=Off/0"},
                          {"", "lpFold=31 lpOutputPaper=EnvelopeC5", ""},
                      });
}

TEST_F(ChangeTest, InterleavingFindsItsTrays) {
  Expect(ResolveInterleave,
         {
             {"tray.Tray1=Transparency tray.Tray2=Plain tray.Tray3=Plain tray.Tray4=Plain tray.Large=Plain "
              "lpMediaSource=Tray1 lpOIPaperTray=Tray2",
              "OHPInterLeave_Check=On", ""},
             {"", "lpOIPaperTray=Tray1", "lpOIPaperTray:=Large/0"},  // the last tray with paper
             {"lpMediaSource=Tray2 OHPInterLeave_Check=Off", "OHPInterLeave_Check=On",
              "OHPInterLeave_Check:=Off/0 !lpMediaSource=Tray2"},
             {"tray.Tray1=Plain lpMediaSource=Tray1", "OHPInterLeave_Check=On", "OHPInterLeave_Check:=Off/0"},
             {"", "OHPInterLeave_Check=Off", ""},
         });
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
  EXPECT_EQ(Logged(), "!Zoom=1");
  engine->mode = ResolveMode::kRecall;
  ResolveTrays(*engine, log, nullptr);
  EXPECT_EQ(Logged(), "lpMediaSource:=" + first + "/0 !Zoom=1");
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
