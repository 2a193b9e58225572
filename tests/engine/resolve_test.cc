// Changes with their consequences: what is reported, what is asked, what is applied, and what a refusal leaves.
#include "changes/resolve.h"

#include "changes/change_log.h"
#include "changes/opening.h"
#include "changes/resolve_parts.h"
#include "engine/setting.h"
#include "resolve_fixture.h"
#include "support/failing_new.h"

namespace heron::engine {
namespace {

TEST_F(ResolveTest, AChangeWithoutConsequencesIsSilent) {
  EXPECT_EQ(Resolve("lpOrientation.Landscape", "Landscape"), "0");
  EXPECT_EQ(front.shown, "");
  EXPECT_EQ(Value("lpOrientation"), "Landscape");
  EXPECT_EQ(resolver->log.count, 0);
  EXPECT_EQ(outcome.passes, 2);
  EXPECT_EQ(ResolveId(9999, 1), "0!");
}

TEST_F(ResolveTest, ConsequencesAreAskedAndAppliedOrNot) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On");
  const auto before = Bytes();
  front.yes = false;
  EXPECT_EQ(Resolve("lpOutputTray", "MailBin1"), "0!");
  EXPECT_EQ(front.shown, "[20013]|[22212][21440] => [21204] \n[22214]?");
  EXPECT_EQ(outcome.answer, Answer::kNo);
  EXPECT_TRUE(Bytes() == before);

  front.yes = true;
  EXPECT_EQ(Resolve("lpOutputTray", "MailBin1"), "0");
  EXPECT_EQ(outcome.answer, Answer::kYes);
  EXPECT_EQ(Value("lpOutputTray"), "MailBin1");
  EXPECT_EQ(Value("Staple_Check"), "Off");
}

TEST_F(ResolveTest, WhatWouldUndoTheChangeIsNamed) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed lpOutputTray=MailBin1");
  const auto before = Bytes();
  EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
  EXPECT_EQ(front.shown, "[21440]|[22213]   [20013] : [40017]\n");
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(ResolveTest, ARadioButtonReportsAndDoesNotAsk) {
  Put("BindMargin_Check=On Nup_Check=On");
  front.yes = false;
  EXPECT_EQ(Resolve("lpMarginMode.Reduce", "Reduce"), "0");
  EXPECT_EQ(front.shown, "[21484]|[22212][21420] => [21204] \n");
  EXPECT_EQ(Value("Nup_Check"), "Off");
  EXPECT_EQ(Value("lpMarginMode"), "Reduce");
}

TEST_F(ResolveTest, AnExceptionLeavesTheStateAsItWas) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On");
  struct : ResolveView {
    bool Show(const Report&) override { throw std::bad_alloc(); }
  } failing;
  failing.pending = 101;
  const auto before = Bytes();
  EXPECT_THROW((void)ResolveChange(*resolver, &failing, 139), std::bad_alloc);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(engine->mode, ResolveMode::kSingle);
  EXPECT_EQ(Resolve("lpOutputTray", "MailBin1"), "0") << "the next change starts afresh";
}

TEST_F(ResolveTest, WithoutMemoryAChangeIsMadeWithoutItsReport) {
  struct : TestView {
    uint16_t ReadControl(uint16_t) override { return 101; }
    void EnableControl(uint16_t, bool) override {}
  } quiet;
  Put("lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On");
  {
    const test::FailingNew none(0);
    outcome = ResolveChange(*resolver, &quiet, 139);
  }
  EXPECT_TRUE(outcome.applied);
  EXPECT_EQ(outcome.answer, Answer::kNotAsked);
  EXPECT_EQ(Value("Staple_Check"), "Off");
}

TEST_F(ResolveTest, ThePickedCustomPaperIsAskedFor) {
  *FieldsOf(*ui, ParamNamed<u"lpUDPaperType">()).value = 3;
  Put("lpMediaSize=A4 lpOutputPaper=SameAsDocument");
  front.yes = false;
  EXPECT_EQ(Resolve("lpMediaSize", "CustomSize"), "0!");
  EXPECT_EQ(front.shown, "[21008]|[22215]?");
  EXPECT_EQ(Value("lpMediaSize"), "A4");
  front.yes = true;
  EXPECT_EQ(Resolve("lpMediaSize", "CustomSize"), "0");
  EXPECT_EQ(Value("lpMediaSize"), "Custom3");
  EXPECT_EQ(Resolve("lpMediaSize", "CustomSize"), "0");
  EXPECT_EQ(front.shown, "") << "the same paper again";
}

TEST_F(ResolveTest, ACustomPaperBringsItsSizeWhenItIsChosen) {
  Put("lpMediaSize=A4 lpOutputPaper=SameAsDocument");
  UserPaperStore& papers = *ui->stores.userPapers;
  papers[0] = {.width = 3937, .height = 5905, .unit = 1, .name = u"Small", .longFlag = 0};
  papers[9] = {.width = 7874, .height = 11811, .unit = 2, .name = u"Large", .longFlag = 0};
  const auto size = [&] {
    return std::vector<uint16_t>{Setting<u"UDPaperWidth">(*ui), Setting<u"UDPaperLength">(*ui),
                                 Setting<u"lpUDPaperUnit">(*ui)};
  };
  using Size = std::vector<uint16_t>;
  EXPECT_EQ(Resolve("lpMediaSize", "Custom1"), "0");
  EXPECT_EQ(size(), (Size{1000, 1500, 1}));
  EXPECT_EQ(Resolve("lpMediaSize", "Custom10"), "0");
  EXPECT_EQ(size(), (Size{2000, 3000, 2})) << "and not what the paper before it had";
  Setting<u"UDPaperWidth">(*ui) = 1234;
  EXPECT_EQ(Resolve("Copies", "3"), "0");
  EXPECT_EQ(size(), (Size{2000, 3000, 2})) << "every change brings the paper's own size back";
  EXPECT_EQ(Resolve("lpOutputPaper", "Custom1"), "0");
  EXPECT_EQ(Setting<u"UDMediaLength">(*ui), 1500);
}

TEST_F(ResolveTest, ALongPaperIsMarkedAndNeedsLongMedia) {
  Put("tray.Bypass=Plain lpMediaSource=Auto lpMediaSize=A4 lpOutputPaper=SameAsDocument");
  (*ui->stores.userPapers)[2].longFlag = 1;
  *FieldsOf(*ui, ParamNamed<u"lpUDPaperType">()).value = 3;
  EXPECT_EQ(Resolve("lpMediaSize", "CustomSize"), "0");
  EXPECT_EQ(Value("mediaSizeMark"), "On");
  EXPECT_EQ(Value("outputPaperMark"), "On") << "the output is the same paper";
  EXPECT_EQ(MediaOfTray(*engine, 4).mediaType, 30);
  EXPECT_EQ(Resolve("lpOutputPaper", "A3"), "0");
  EXPECT_EQ(Value("mediaSizeMark"), "On");
  EXPECT_EQ(Value("outputPaperMark"), "Off");
}

TEST_F(ResolveTest, ADialogsChangesAreOneAction) {
  Put("lpMediaSize=A3 lpOutputPaper=Postcard BindMargin_Check=On lpMarginMode=Reduce fMargin=5 bMargin=5");
  const Action action(*resolver);
  Put("fMargin=30");  // 19 mm of room
  RecordDialogDifferences(*resolver, 2300);
  EXPECT_EQ(Resolve("BindMargin_Check", "On"), "0");
  EXPECT_EQ(front.shown, "[21019]|[22218][21484] => [40077] \n");
  EXPECT_EQ(Value("fMargin"), 30);
  EXPECT_EQ(Value("lpMarginMode"), "Shift");

  Put("lpOutputUnit=Bin lpMailBinKit=Installed lpOutputTray=MailBin1");
  const Action second(*resolver);
  const auto start = Bytes();
  Put("fMargin=20");
  RecordDialogDifferences(*resolver, 2300);
  EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
  EXPECT_TRUE(Bytes() == start) << "what the dialog changed goes back too";
}

TEST_F(ResolveTest, ARefusalTakesBackEveryListThatWasEditedBefore) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed lpOutputTray=MailBin1");
  const Action action(*resolver);
  const auto start = Bytes();
  ui->stores.overlays->formListNum = 1;
  ui->stores.overlays->forms[0][0] = u'x';
  ui->stores.watermarks->entries[3].angle = 1;
  ui->stores.fontSubst->pairs[0].deviceFont[0] = u'x';
  ui->stores.faxCover->subject[0] = u'x';
  ui->stores.pageLists->lists[7].name[0] = u'x';
  ui->head().faxNames[0][0] = u'x';
  ui->head().faxRowCount = 1;
  EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
  EXPECT_TRUE(Bytes() == start);
  EXPECT_TRUE(outcome.dirty.settings);
  EXPECT_TRUE(outcome.dirty.controls[ControlNamed("Staple_Check")]);
  EXPECT_FALSE(outcome.dirty.itemsAreComputed) << "they are as they were";
}

TEST_F(ResolveTest, AnActionInsideOfAnotherTakesBackItsOwnChangesOnly) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed lpOutputTray=MailBin1");
  const auto start = Bytes();
  const Action outer(*resolver);
  Put("Copies=2");
  {
    const Action inner(*resolver);
    Put("Copies=3");
    EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
    EXPECT_EQ(Value("Copies"), 2);
    const Action unused(*resolver);
    Put("Copies=4");
  }
  EXPECT_EQ(Value("Copies"), 4) << "an action that no change ends keeps what was set";
  UiStatePtr clone = CloneUiState(*ui);
  {
    const BoundClone bound(*engine, *clone);
    EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
    EXPECT_EQ(Value("Copies"), 4) << "a change of the clone is none of the settings' action";
  }
  EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
  EXPECT_TRUE(Bytes() == start);
  Put("Copies=5");
  EXPECT_EQ(Resolve("Staple_Check", "On"), "2!");
  EXPECT_EQ(Value("Copies"), 5) << "the action is over";
}

TEST_F(ResolveTest, TheDefaultsButtonSetsItsPageBack) {
  Put("lpOrientation=Landscape Copies=5 Front_Check=On lpMediaSource=Tray1");
  EXPECT_EQ(ResolveId(151, 0), "0");
  EXPECT_EQ(Value("lpOrientation"), "Portrait");
  EXPECT_EQ(Value("Copies"), 1);
  EXPECT_EQ(Value("lpMediaSource"), engine->Default(ControlNamed("lpMediaSource")));
  EXPECT_EQ(Value("Front_Check"), "On") << "of another page";
}

TEST_F(ResolveTest, QualityBelongsToItsPage) {
  Put("lpDither=Coarse FontUseFlg=On");
  *FieldsOf(*ui, ParamNamed<u"Intensity">()).value = 2;
  ResolveId(151, 0);
  EXPECT_EQ(Value("lpDither"), "Coarse");
  EXPECT_EQ(Resolve("lpDither.Fine", "Fine"), "0");
  EXPECT_EQ(Value("lpDither"), "Fine");
  ResolveId(615, 0);
  EXPECT_EQ(Value("lpDither"), engine->Default(ControlNamed("lpDither")));
}

TEST_F(ResolveTest, ALayoutBringsItsOrder) {
  Put("Nup_Check=On lpLayout=TwoPages lpOrder=BottomToTop");
  EXPECT_EQ(Resolve("lpLayout", "SixPages"), "0");
  EXPECT_EQ(Value("lpOrder"), "RightThenDown");
}

TEST_F(ResolveTest, CopiesAreClampedAfterAChange) {
  Put("Copies=0");
  EXPECT_EQ(Resolve("lpOrientation.Landscape", "Landscape"), "0");
  EXPECT_EQ(Value("Copies"), 1);
  EXPECT_EQ(outcome.dirty.corrected, ControlNamed("Copies"));
  Put("Copies=1000");
  Resolve("lpOrientation.Portrait", "Portrait");
  EXPECT_EQ(Value("Copies"), 999);
}

TEST_F(ResolveTest, MirrorsFollowTheTray) {
  Put("tray.Tray1=Special2 lpMediaSource=Auto");
  EXPECT_EQ(Resolve("lpMediaSource", "Tray1"), "0");
  EXPECT_EQ(Value("trayMediaType.page"), "Special2");
}

TEST_F(ResolveTest, NoHeaderComesWithoutALine) {
  const ControlIndex unusable = ControlNamed("lpFoldStaple");
  ASSERT_FALSE(engine->Usable(unusable));
  const auto report = [&](ResolveMode mode, const auto& present) {
    front.shown.clear();
    resolver->log.entries[0] = {unusable, engine->Value(unusable), Reason::kPaperOrFinishing};
    resolver->log.count = 1;
    engine->mode = mode;
    present();
    engine->mode = ResolveMode::kSingle;
    return front.shown;
  };
  EXPECT_EQ(report(ResolveMode::kRecall, [&] { PresentRecall(*resolver, &front); }), "");
  resolver->log.paperFits = false;
  EXPECT_EQ(report(ResolveMode::kRecall, [&] { PresentRecall(*resolver, &front); }), "[22101]|[22106]");
  EXPECT_EQ(report(ResolveMode::kOpening, [&] { ReportOpening(*resolver); }), "");
  resolver->before.Take(*engine);
  resolver->log.result = kResultRefused;
  EXPECT_EQ(report(ResolveMode::kSingle, [&] { PresentChange(*resolver, &front, ControlNamed("lpOutputTray")); }),
            "[20013]|[22201]");
}

TEST_F(ResolveTest, ARecallIsReportedAndNeverRefused) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On lpDither=Coarse");
  const Action action(*resolver);
  Put("lpOutputTray=MailBin1 Copies=3 lpDither=Fine");
  RecordRecallDifferences(*resolver);
  front.yes = false;
  outcome = ResolveRecall(*resolver, &front);
  EXPECT_TRUE(outcome.applied);
  EXPECT_EQ(Value("Staple_Check"), "Off");
  EXPECT_EQ(Value("lpOutputTray"), "MailBin1");
  EXPECT_EQ(Value("Copies"), 3);
  EXPECT_EQ(Value("lpDither"), "Fine");
  EXPECT_EQ(front.shown, "[22101]|[22102][21440] => [21204] \n[22104]\n");

  front.shown.clear();
  const Action second(*resolver);
  Put("lpOrientation=Landscape");
  RecordRecallDifferences(*resolver);
  outcome = ResolveRecall(*resolver, &front);
  EXPECT_EQ(front.shown, "");
  EXPECT_EQ(Value("lpOrientation"), "Landscape");

  const Action third(*resolver);
  (*ui->stores.userPapers)[0].width = 100;
  Put("lpMediaSize=Custom1 lpOutputPaper=SameAsDocument");
  RecordRecallDifferences(*resolver);
  outcome = ResolveRecall(*resolver, &front);
  EXPECT_EQ(front.shown, "[22101]|[22106]");
}

TEST_F(ResolveTest, OpeningCorrectsAndReportsLater) {
  *FieldsOf(*ui, ParamNamed<u"lpOutputPaper">()).value = 9;
  SlotAs<u"QXOutputPaperSize", uint16_t>(*ui) = 257;
  Put("lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On lpOutputTray=MailBin1");
  outcome = OpenSettings(*resolver, &front, OpeningPass::kRun);
  EXPECT_TRUE(outcome.applied);
  EXPECT_EQ(Value("lpOutputPaper"), "SameAsDocument");
  EXPECT_NE(Value("Staple_Check") == 1, Value("lpOutputTray") == 101);
  EXPECT_EQ(front.shown, "");
  ShowDeferredReport(*resolver, &front);
  EXPECT_TRUE(front.shown.starts_with("Varnell 70/36MX-2 PCL|[22221]")) << front.shown;
  front.shown.clear();
  ShowDeferredReport(*resolver, &front);
  EXPECT_EQ(front.shown, "") << "only once";

  EXPECT_EQ(OpenSettings(*resolver, &front, OpeningPass::kRun).passes, 2);
  EXPECT_EQ(resolver->log.count, 0) << "what was corrected stays";
}

// With a finisher that punches four holes and a kit that punches two, which no page offers together, two rules set the
// number of holes in turn.
TEST_F(ResolveTest, ARunWithoutEndIsWithdrawn) {
  Put("lpOutputUnit=Floor4 Punch_Check=On lpPunchHoles=FourHoles");
  const auto before = Bytes();
  EXPECT_EQ(Resolve("lpPunchKit", "TwoHoles"), "65535!");
  EXPECT_EQ(outcome.passes, kPassLimit);
  EXPECT_EQ(front.shown, "Varnell 70/36MX-2 PCL|[22201]");
  EXPECT_TRUE(Bytes() == before);

  front.shown.clear();
  const Action action(*resolver);
  Put("lpPunchKit=TwoHoles Copies=2");
  RecordRecallDifferences(*resolver);
  EXPECT_EQ(ResolveRecall(*resolver, &front).result, kResultOverrunAll);
  EXPECT_EQ(front.shown, "Varnell 70/36MX-2 PCL|[22202]");
  EXPECT_TRUE(Bytes() == before);

  Put("lpPunchKit=TwoHoles");
  EXPECT_TRUE(OpenSettings(*resolver, &front, OpeningPass::kRun).applied);
  EXPECT_EQ(Value("lpPunchKit"), "NotInstalled") << "an opening run looks at the kit too";
}

TEST_F(ResolveTest, LogsAreCollapsedAndOrdered) {
  Put("lpOutputTray=Auto Copies=1 lpMediaSize=A4 lpOutputPaper=SameAsDocument");
  const ControlIndex tray = ControlNamed("lpOutputTray");
  const ControlIndex staple = ControlNamed("Staple_Check");
  const ControlIndex copies = ControlNamed("Copies");
  log.count = 0;
  for (const LogEntry& entry :
       {LogEntry{tray, 11, Reason::kPair}, LogEntry{staple, 1, Reason::kTriple}, LogEntry{copies, 3, Reason::kPair},
        LogEntry{tray, 31, Reason::kTriple}, LogEntry{copies, 1, Reason::kPair}})
    log.entries[log.count++] = entry;
  CollapseLog(*engine, log);
  EXPECT_EQ(Logged(), "lpOutputTray:=Tray2/3 Staple_Check:=On/3");
  AddOpposition(log, ControlNamed("outputPaperMark"), 1);
  AddOpposition(log, tray, 1);
  AddOpposition(log, tray, 2);
  OrderLog(*engine, copies, 3, log);
  EXPECT_EQ(Logged(),
            "Staple_Check:=On/3 lpOutputTray:=Tray2/3 !lpMediaSize=A4 !lpOutputPaper=SameAsDocument !lpOutputTray=2");

  // The rules set the user's own control back: what came before the first rule of that kind is dropped.
  log.oppositionCount = log.count = 0;
  for (const LogEntry& entry : {LogEntry{copies, 3, Reason::kPaperOrFinishing}, LogEntry{staple, 1, Reason::kTriple},
                                LogEntry{tray, 31, Reason::kTriple}})
    log.entries[log.count++] = entry;
  OrderLog(*engine, tray, 1, log);
  EXPECT_EQ(Logged(), "Staple_Check:=On/3 lpOutputTray:=Tray2/3");

  log.count = log.mark = 0;
  for (const LogEntry& entry :
       {LogEntry{tray, 11, Reason::kPair}, LogEntry{ControlNamed("lpPRNType"), 3, Reason::kPair}})
    log.entries[log.count++] = entry;
  KeepPriorityEntries(log);
  EXPECT_EQ(Logged(), "lpPRNType:=Booklet/2");
}

TEST_F(ResolveTest, ALongLabelDoesNotOverrunAReport) {
  Put("lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On");
  auto& texts = backend.modules[test::kResourceModule];
  texts[21440] = std::u16string(999, u'x');
  ReleaseStrings();
  AcquireStrings();
  EXPECT_EQ(Resolve("lpOutputTray", "MailBin1"), "0");
  EXPECT_LT(front.shown.size(), 16384u);
  EXPECT_TRUE(front.shown.ends_with("[22214]?"));
}

}  // namespace
}  // namespace heron::engine
