// Changes with all that they bring: what is told, what is asked, what is applied, and what a refusal leaves.
#include "engine/resolve.h"

#include "engine/change_log.h"
#include "engine/opening.h"
#include "engine/resolve_fixture.h"
#include "engine/resolve_parts.h"
#include "support/failing_new.h"

namespace heron::engine {
namespace {

TEST_F(ResolveTest, AChangeWithoutConsequencesIsSilent) {
  EXPECT_EQ(Resolve("lpOrientation.107", 2), "0");
  EXPECT_EQ(front.shown, "");
  EXPECT_EQ(Value("lpOrientation"), 2);
  EXPECT_EQ(resolver->log.count, 0);
  EXPECT_EQ(outcome.passes, 2);
  EXPECT_EQ(ResolveId(9999, 1), "0!");
}

TEST_F(ResolveTest, ConsequencesAreAskedAndAppliedOrNot) {
  Put("lpOutputUnit=2 lpMailBinKit=2 Staple_Check=1");
  const auto before = Bytes();
  front.yes = false;
  EXPECT_EQ(Resolve("lpOutputTray", 101), "0!");
  EXPECT_EQ(front.shown, "[20013]|[22212][21440] => [21204] \n[22214]?");
  EXPECT_EQ(outcome.answer, Answer::kNo);
  EXPECT_TRUE(Bytes() == before);

  front.yes = true;
  EXPECT_EQ(Resolve("lpOutputTray", 101), "0");
  EXPECT_EQ(outcome.answer, Answer::kYes);
  EXPECT_EQ(Value("lpOutputTray"), 101);
  EXPECT_EQ(Value("Staple_Check"), 0);
}

TEST_F(ResolveTest, WhatWouldUndoTheChangeIsNamed) {
  Put("lpOutputUnit=2 lpMailBinKit=2 lpOutputTray=101");
  const auto before = Bytes();
  EXPECT_EQ(Resolve("Staple_Check", 1), "2!");
  EXPECT_EQ(front.shown, "[21440]|[22213]   [20013] : [40017]\n");
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(ResolveTest, ARadioButtonTellsAndDoesNotAsk) {
  Put("BindMargin_Check=1 Nup_Check=1");
  front.yes = false;
  EXPECT_EQ(Resolve("lpMarginMode.2302", 2), "0");
  EXPECT_EQ(front.shown, "[21484]|[22212][21420] => [21204] \n");
  EXPECT_EQ(Value("Nup_Check"), 0);
  EXPECT_EQ(Value("lpMarginMode"), 2);
}

TEST_F(ResolveTest, AnExceptionLeavesTheStateAsItWas) {
  Put("lpOutputUnit=2 lpMailBinKit=2 Staple_Check=1");
  struct : ResolveView {
    bool Show(const Report&) override { throw std::bad_alloc(); }
  } failing;
  failing.pending = 101;
  const auto before = Bytes();
  EXPECT_THROW(ResolveChange(*resolver, &failing, 139), std::bad_alloc);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(engine->mode, ResolveMode::kSingle);
  EXPECT_EQ(Resolve("lpOutputTray", 101), "0") << "the next change starts afresh";
}

TEST_F(ResolveTest, WithoutMemoryAChangeIsMadeWithoutItsReport) {
  struct : TestView {
    uint16_t ReadControl(uint16_t) override { return 101; }
    void EnableControl(uint16_t, bool) override {}
  } quiet;
  Put("lpOutputUnit=2 lpMailBinKit=2 Staple_Check=1");
  {
    const test::FailingNew none(0);
    outcome = ResolveChange(*resolver, &quiet, 139);
  }
  EXPECT_TRUE(outcome.applied);
  EXPECT_EQ(outcome.answer, Answer::kNotAsked);
  EXPECT_EQ(Value("Staple_Check"), 0);
}

TEST_F(ResolveTest, ThePickedCustomPaperIsAskedFor) {
  *FieldsOf(*ui, ParamNamed<u"lpUDPaperType">()).value = 3;
  Put("lpMediaSize=9 lpOutputPaper=257");
  front.yes = false;
  EXPECT_EQ(Resolve("lpMediaSize", 512), "0!");
  EXPECT_EQ(front.shown, "[21008]|[22215]?");
  EXPECT_EQ(Value("lpMediaSize"), 9);
  front.yes = true;
  EXPECT_EQ(Resolve("lpMediaSize", 512), "0");
  EXPECT_EQ(Value("lpMediaSize"), 515);
  EXPECT_EQ(Resolve("lpMediaSize", 512), "0");
  EXPECT_EQ(front.shown, "") << "the same paper again";
}

TEST_F(ResolveTest, ALongPaperIsMarkedAndNeedsLongMedia) {
  Put("tray.4=1 lpMediaSource=7 lpMediaSize=9 lpOutputPaper=257");
  (*ui->stores.userPapers)[2].longFlag = 1;
  *FieldsOf(*ui, ParamNamed<u"lpUDPaperType">()).value = 3;
  EXPECT_EQ(Resolve("lpMediaSize", 512), "0");
  EXPECT_EQ(Value("mediaSizeMark"), 1);
  EXPECT_EQ(Value("outputPaperMark"), 1) << "the output is the same paper";
  EXPECT_EQ(MediaOfTray(*engine, 4).mediaType, 30);
  EXPECT_EQ(Resolve("lpOutputPaper", 8), "0");
  EXPECT_EQ(Value("mediaSizeMark"), 1);
  EXPECT_EQ(Value("outputPaperMark"), 0);
}

TEST_F(ResolveTest, ADialogsChangesAreOneAction) {
  Put("lpMediaSize=8 lpOutputPaper=43 BindMargin_Check=1 lpMarginMode=2 fMargin=5 bMargin=5");
  BeginAction(*resolver);
  Put("fMargin=30");  // 19 mm of room
  RecordDialogDifferences(*resolver, 2300);
  EXPECT_EQ(Resolve("BindMargin_Check", 1), "0");
  EXPECT_EQ(front.shown, "[21019]|[22218][21484] => [40077] \n");
  EXPECT_EQ(Value("fMargin"), 30);
  EXPECT_EQ(Value("lpMarginMode"), 1);

  Put("lpOutputUnit=2 lpMailBinKit=2 lpOutputTray=101");
  BeginAction(*resolver);
  const auto start = Bytes();
  Put("fMargin=20");
  RecordDialogDifferences(*resolver, 2300);
  EXPECT_EQ(Resolve("Staple_Check", 1), "2!");
  EXPECT_TRUE(Bytes() == start) << "what the dialog changed goes back too";
}

TEST_F(ResolveTest, TheDefaultsButtonSetsItsPageBack) {
  Put("lpOrientation=2 Copies=5 Front_Check=1 lpMediaSource=1");
  EXPECT_EQ(ResolveId(151, 0), "0");
  EXPECT_EQ(Value("lpOrientation"), 1);
  EXPECT_EQ(Value("Copies"), 1);
  EXPECT_EQ(Value("lpMediaSource"), engine->Default(ControlNamed("lpMediaSource")));
  EXPECT_EQ(Value("Front_Check"), 1) << "of another page";
}

TEST_F(ResolveTest, QualityBelongsToItsPage) {
  Put("lpDither=4 FontUseFlg=1");
  *FieldsOf(*ui, ParamNamed<u"Intensity">()).value = 2;
  ResolveId(151, 0);
  EXPECT_EQ(Value("lpDither"), 4);
  EXPECT_EQ(Resolve("lpDither.605", 2), "0");
  EXPECT_EQ(Value("lpDither"), 2);
  ResolveId(615, 0);
  EXPECT_EQ(Value("lpDither"), engine->Default(ControlNamed("lpDither")));
}

TEST_F(ResolveTest, ALayoutBringsItsOrder) {
  Put("Nup_Check=1 lpLayout=8 lpOrder=2");
  EXPECT_EQ(Resolve("lpLayout", 5), "0");
  EXPECT_EQ(Value("lpOrder"), 3);
}

TEST_F(ResolveTest, CopiesAreClampedAfterAChange) {
  Put("Copies=0");
  EXPECT_EQ(Resolve("lpOrientation.107", 2), "0");
  EXPECT_EQ(Value("Copies"), 1);
  EXPECT_EQ(front.focused, 103);
  Put("Copies=1000");
  Resolve("lpOrientation.106", 1);
  EXPECT_EQ(Value("Copies"), 999);
}

TEST_F(ResolveTest, MirrorsFollowTheTray) {
  Put("tray.1=3 lpMediaSource=7");
  EXPECT_EQ(Resolve("lpMediaSource", 1), "0");
  EXPECT_EQ(Value("trayMediaType.3310"), 3);
}

TEST_F(ResolveTest, ARecallIsToldAndNeverRefused) {
  Put("lpOutputUnit=2 lpMailBinKit=2 Staple_Check=1 lpDither=4");
  BeginAction(*resolver);
  Put("lpOutputTray=101 Copies=3 lpDither=2");
  RecordRecallDifferences(*resolver);
  front.yes = false;
  outcome = ResolveRecall(*resolver, &front);
  EXPECT_TRUE(outcome.applied);
  EXPECT_EQ(Value("Staple_Check"), 0);
  EXPECT_EQ(Value("lpOutputTray"), 101);
  EXPECT_EQ(Value("Copies"), 3);
  EXPECT_EQ(Value("lpDither"), 2);
  EXPECT_EQ(front.shown, "[22101]|[22102][21440] => [21204] \n[22104]\n");

  front.shown.clear();
  BeginAction(*resolver);
  Put("lpOrientation=2");
  RecordRecallDifferences(*resolver);
  ResolveRecall(*resolver, &front);
  EXPECT_EQ(front.shown, "");
  EXPECT_EQ(Value("lpOrientation"), 2);

  BeginAction(*resolver);
  (*ui->stores.userPapers)[0].width = 100;
  Put("lpMediaSize=513 lpOutputPaper=257");
  RecordRecallDifferences(*resolver);
  ResolveRecall(*resolver, &front);
  EXPECT_EQ(front.shown, "[22101]|[22106]");
}

TEST_F(ResolveTest, OpeningCorrectsAndTellsLater) {
  *FieldsOf(*ui, ParamNamed<u"lpOutputPaper">()).value = 9;
  SlotAs<u"QXOutputPaperSize", uint16_t>(*ui) = 257;
  Put("lpOutputUnit=2 lpMailBinKit=2 Staple_Check=1 lpOutputTray=101");
  outcome = OpenSettings(*resolver, &front, OpeningPass::kRun);
  EXPECT_TRUE(outcome.applied);
  EXPECT_EQ(Value("lpOutputPaper"), 257);
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
  Put("lpOutputUnit=43 Punch_Check=1 lpPunchHoles=4");
  const auto before = Bytes();
  EXPECT_EQ(Resolve("lpPunchKit", 21), "65535!");
  EXPECT_EQ(outcome.passes, kPassLimit);
  EXPECT_EQ(front.shown, "Varnell 70/36MX-2 PCL|[22201]");
  EXPECT_TRUE(Bytes() == before);

  front.shown.clear();
  BeginAction(*resolver);
  Put("lpPunchKit=21 Copies=2");
  RecordRecallDifferences(*resolver);
  EXPECT_EQ(ResolveRecall(*resolver, &front).result, kResultOverrunAll);
  EXPECT_EQ(front.shown, "Varnell 70/36MX-2 PCL|[22202]");
  EXPECT_TRUE(Bytes() == before);

  Put("lpPunchKit=21");
  EXPECT_TRUE(OpenSettings(*resolver, &front, OpeningPass::kRun).applied);
  EXPECT_EQ(Value("lpPunchKit"), 1) << "an opening run looks at the kit too";
}

TEST_F(ResolveTest, LogAndOppositionNeverPassTheirRoom) {
  ChangeLog full;
  const ControlIndex copies = ControlNamed("Copies");
  for (uint16_t i = 0; i < kLogCapacity; ++i) {
    EXPECT_TRUE(AddEntry(*engine, full, copies, static_cast<uint16_t>(i + 2), Reason::kPair));
    AddOpposition(full, copies, i);
  }
  EXPECT_FALSE(full.full);
  EXPECT_FALSE(AddEntry(*engine, full, copies, 7, Reason::kPair));
  EXPECT_TRUE(full.full);
  full.full = false;
  AddOpposition(full, copies, 7);
  EXPECT_TRUE(full.full);
  EXPECT_EQ(full.count, kLogCapacity);
  EXPECT_EQ(full.oppositionCount, kLogCapacity);
}

TEST_F(ResolveTest, LogsAreCollapsedAndOrdered) {
  Put("lpOutputTray=1 Copies=1 lpMediaSize=9 lpOutputPaper=257");
  const ControlIndex tray = ControlNamed("lpOutputTray");
  const ControlIndex staple = ControlNamed("Staple_Check");
  const ControlIndex copies = ControlNamed("Copies");
  log.count = 0;
  for (const LogEntry& entry :
       {LogEntry{tray, 11, Reason::kPair}, LogEntry{staple, 1, Reason::kTriple}, LogEntry{copies, 3, Reason::kPair},
        LogEntry{tray, 31, Reason::kTriple}, LogEntry{copies, 1, Reason::kPair}})
    log.entries[log.count++] = entry;
  CollapseLog(*engine, log);
  EXPECT_EQ(Told(), "lpOutputTray:=31/3 Staple_Check:=1/3");
  AddOpposition(log, ControlNamed("outputPaperMark"), 1);
  AddOpposition(log, tray, 1);
  AddOpposition(log, tray, 2);
  OrderLog(*engine, copies, 3, log);
  EXPECT_EQ(Told(), "Staple_Check:=1/3 lpOutputTray:=31/3 !lpMediaSize=9 !lpOutputPaper=257 !lpOutputTray=2");

  // The rules set the user's own control back: what stood before the first rule of that kind is dropped.
  log.oppositionCount = log.count = 0;
  for (const LogEntry& entry : {LogEntry{copies, 3, Reason::kPaperOrFinishing}, LogEntry{staple, 1, Reason::kTriple},
                                LogEntry{tray, 31, Reason::kTriple}})
    log.entries[log.count++] = entry;
  OrderLog(*engine, tray, 1, log);
  EXPECT_EQ(Told(), "Staple_Check:=1/3 lpOutputTray:=31/3");

  log.count = log.mark = 0;
  for (const LogEntry& entry :
       {LogEntry{tray, 11, Reason::kPair}, LogEntry{ControlNamed("lpPRNType"), 3, Reason::kPair}})
    log.entries[log.count++] = entry;
  KeepPriorityEntries(log);
  EXPECT_EQ(Told(), "lpPRNType:=3/2");
}

TEST_F(ResolveTest, ALongLabelDoesNotOverrunAReport) {
  Put("lpOutputUnit=2 lpMailBinKit=2 Staple_Check=1");
  auto& texts = backend.modules[test::kResourceModule];
  texts[21440] = std::u16string(999, u'x');
  ReleaseStrings();
  AcquireStrings();
  EXPECT_EQ(Resolve("lpOutputTray", 101), "0");
  EXPECT_LT(front.shown.size(), 16384u);
  EXPECT_TRUE(front.shown.ends_with("[22214]?"));
}

}  // namespace
}  // namespace heron::engine
