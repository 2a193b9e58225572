// Availability and the items of lists: the worked cases.
#include <gtest/gtest.h>

#include "catalog/strings.h"
#include "engine_fixture.h"
#include "support/failing_new.h"

namespace heron::engine {
namespace {

using EvaluateTest = EngineTest;

TEST_F(EvaluateTest, ReadsValuesByControl) {
  SetControlValue(*engine, 106, 2);
  EXPECT_EQ(GetControlValue(*engine, 107), 2);
  for (const uint16_t unknown : std::initializer_list<uint16_t>{0, 137, 320, 322, 352, 611, 65535}) {
    SetControlValue(*engine, unknown, 1);
    EXPECT_EQ(GetControlValue(*engine, unknown), kUnknownValue) << unknown;
    EXPECT_EQ(GetControlDefault(*engine, unknown), kUnknownValue) << unknown;
    EXPECT_EQ(GetControlType(unknown), -1) << unknown;
    EXPECT_EQ(GetControlDialog(unknown), 65535) << unknown;
    EXPECT_FALSE(Available(unknown)) << unknown;
  }
  SetControlValue(*engine, 151, 7);
  EXPECT_EQ(GetControlValue(*engine, 151), 0);
  EXPECT_EQ(GetControlKind(151), 2);
  EXPECT_EQ(GetControlBlock(*engine, 106), nullptr);
  EXPECT_TRUE(GetControlFixedFlag(886) && GetControlFixedFlag(842) && !GetControlFixedFlag(828));
}

TEST_F(EvaluateTest, SpeaksOfControlsAndValues) {
  auto& texts = backend.modules[test::kResourceModule];
  texts[21675] = u"Weight";
  texts[20009] = u"Source";
  const StringsInUse strings;
  LoadPaperLabels();
  const uint16_t third = GetControlBlock(*engine, 120)->Items()[2].value;
  texts[ValueLabel(Control(u"lpMediaSource"), third)] = u"Drawer";
  Put("lpMediaSource=" + std::to_string(third));
  EXPECT_EQ(GetControlLabel(*engine, 3311), u"Weight(Drawer)");
  EXPECT_EQ(GetControlLabel(*engine, 120), u"Source");
  EXPECT_EQ(GetControlLabel(*engine, 137), u"");
  EXPECT_EQ(GetValueByLabel(120, u"Drawer"), third);
  EXPECT_EQ(GetValueByLabel(120, u"drawer"), -1);
  EXPECT_EQ(GetValueByLabel(111, u"A4"), -1);
  EXPECT_EQ(GetValueLabel(120, 9999), nullptr);
  EXPECT_EQ(GetValueLabel(111, 9), PaperLabel(9));
}

TEST_F(EvaluateTest, SnapshotsBringBackValuesAndTrays) {
  Put("tray.1=2 Copies=3 lpMediaSource=1");
  SnapshotValues(*engine);
  Put("tray.1=3 Copies=9");
  engine->Set(Control(u"trayMediaType.3310"), 8);
  RestoreValues(*engine);
  EXPECT_EQ(Value("Copies"), 3);
  EXPECT_EQ(Value("trayMediaType.3310"), 2);
  EXPECT_EQ(MediaOfTray(*engine, 1).mediaType, 2);
}

TEST_F(EvaluateTest, TheFirstRowOfATrayCountsAndAMissingOneIsDefault) {
  uint8_t* const table = ui->head().trayTable;
  for (size_t row = 0; row < 10; ++row) table[4 + 6 * row] = 77, table[5 + 6 * row] = 0;
  table[6] = 3;   // media type of the first row
  table[12] = 8;  // of the second
  EXPECT_EQ(MediaOfTray(*engine, 77).mediaType, 3);
  EXPECT_EQ(MediaOfTray(*engine, 1).mediaType, engine->Default(Control(u"trayMediaType.3310")));
  Put("lpFrontCoverTray=77 lpBackCoverTray=1");
  EXPECT_EQ(Value("trayMediaType.3330"), 3);
  EXPECT_FALSE(StoreTrayMedia(*engine, Control(u"trayWeight.3351"), 1));
  EXPECT_TRUE(StoreTrayMedia(*engine, Control(u"trayPunched.3333"), 1));
  EXPECT_EQ(MediaOfTray(*engine, 77).punched, 1);
}

TEST_F(EvaluateTest, DeviceGatesCloseWhatRulesOpen) {
  struct Case {
    const char* settings;
    const char* open;  ///< of Staple_Check, Punch_Check, FoldStaple_Check, Collate_Check
  };
  for (const Case& c : std::initializer_list<Case>{{"lpOutputUnit=1 lpPunchKit=21 lpSaddleUnit=1", "0000"},
                                                   {"lpOutputUnit=5 lpPunchKit=21 lpSaddleUnit=1", "0000"},
                                                   {"lpOutputUnit=2 lpPunchKit=1 lpSaddleUnit=1", "1001"},
                                                   {"lpOutputUnit=2 lpPunchKit=23 lpSaddleUnit=1", "1101"},
                                                   {"lpOutputUnit=3 lpPunchKit=21 lpSaddleUnit=2", "1111"},
                                                   {"lpOutputUnit=42 lpPunchKit=1 lpSaddleUnit=1", "1101"},
                                                   {"lpOutputUnit=1 lpPunchKit=1 lpSaddleUnit=2", "0010"}}) {
    Put(std::string("Layout_Check2=1 lpOutput=2 ") + c.settings);
    std::string open;
    for (const char* name : {"Staple_Check", "Punch_Check", "FoldStaple_Check", "Collate_Check"}) {
      open += Available(name) ? '1' : '0';
      EXPECT_EQ(IsDeviceGateOpen(*engine, kControls[ControlNamed(name)].id), Available(name)) << name;
    }
    EXPECT_EQ(open, c.open) << c.settings;
  }
  EXPECT_TRUE(IsDeviceGateOpen(*engine, 131));
}

TEST_F(EvaluateTest, AClosedParentClosesItsChildren) {
  Put("Layout_Check2=1 lpOutputUnit=2 Staple_Check=1");
  EXPECT_TRUE(Available("lpStaple"));
  Put("lpOutputUnit=1");
  EXPECT_FALSE(Available("lpStaple"));
  Put("lpOutputUnit=2 Layout_Check2=0");
  EXPECT_FALSE(Available("lpStaple"));
  Put("POD_Check=1 POD_OnePerSheet_Check=1");
  EXPECT_TRUE(Available("lpPOD_OnePerSheet"));
  Put("POD_Check=0");
  EXPECT_FALSE(Available("lpPOD_OnePerSheet"));
}

TEST_F(EvaluateTest, FaxClosesItsControlsWhateverElseHolds) {
  Put("lpOutput=1 Layout_Check2=1 lpOutputUnit=2 Nup_Check=1 lpPRNType=2 Chapter_Check=1");
  for (const OutputModeGate& gate : kOutputModeGates) {
    if (FirstEnableRule(gate.control) >= 0) {
      EXPECT_FALSE(Available(gate.control)) << gate.control;
    }
  }
  EXPECT_FALSE(Available(635));
  EXPECT_TRUE(IsControlUsable(*engine, 635));
  EXPECT_FALSE(IsControlUsable(*engine, 142));
  EXPECT_TRUE(Available(111));
}

TEST_F(EvaluateTest, GroupsAndFunctionsDecide) {
  for (const int type : {1, 2, 3}) {
    Put("lpPRNType=" + std::to_string(type) + " Chapter_Check=1");
    EXPECT_EQ(Available("Chapter_Check"), type != 1) << type;
    EXPECT_EQ(Available(316), type != 1) << type;
  }
  Put("lpOverlay=1");
  EXPECT_FALSE(Available(407) || Available(404) || Available(405));
  Put("lpOverlay=2");
  EXPECT_TRUE(Available(407) && !Available(404));
  Put("lpOverlay=3");
  EXPECT_TRUE(Available(407) && Available(404) && !Available(405));
  uint16_t* const graphics = FieldsOf(*ui, ParamNamed<u"lpGraphicsMode">()).value;
  *graphics = 2;
  Put("lpPDLType=4");
  EXPECT_TRUE(Available(402));
  Put("lpPDLType=1");
  EXPECT_FALSE(Available(402));
  EXPECT_TRUE(IsControlUsable(*engine, 402));
}

TEST_F(EvaluateTest, ThePerPageListNeedsARowAndTheFocus) {
  auto& rows = SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui);
  view.row_selected = true;
  Put("InterSheet_Check=1");
  EXPECT_TRUE(Available(250) && !Available(251) && Available(2444));
  rows = 1;
  Put("");
  EXPECT_TRUE(Available(251) && Available(254));
  view.row_selected = false;
  Put("");
  EXPECT_TRUE(Available(250) && !Available(252));
  EvaluateRules(*engine, nullptr);
  EXPECT_FALSE(Available(253));
  view.row_selected = true;
  Put("InterSheet_Check=0");
  EXPECT_FALSE(Available(250) || Available(251));
}

TEST_F(EvaluateTest, InterleavingNeedsTransparenciesAndPaper) {
  const std::string plain =
      "lpOutput=2 lpSourceUnit=4 tray.7=1 tray.1=1 tray.2=1 tray.258=1 tray.259=1 tray.270=1 tray.4=1 ";
  Put(plain + "lpMediaSource=1 lpOutputPaper=9 OHPInterLeave_Check=1");
  EXPECT_FALSE(Available("OHPInterLeave_Check"));
  Put("tray.1=2 lpMediaSource=1");
  EXPECT_TRUE(Available("OHPInterLeave_Check"));
  EXPECT_TRUE(Available("lpOIPaperTray"));
  EXPECT_FALSE(Available("Copies"));  // locked while transparencies come from the main tray
  Put("lpMediaSource=2");
  EXPECT_TRUE(Available("Copies"));
  EXPECT_TRUE(Forbids("lpOIPaperTray", 1));
  EXPECT_FALSE(Forbids("lpOIPaperTray", 2));
  Put("lpMediaSource=9999");
  EXPECT_FALSE(Available("OHPInterLeave_Check") || Available("Copies"));
  Put("lpMediaSource=1 tray.2=2 tray.258=2 tray.259=2 tray.270=2 lpMediaSource=1");
  EXPECT_FALSE(Available("OHPInterLeave_Check"));  // no paper is left to put between
}

TEST_F(EvaluateTest, StatesAreLiftedSavedAndShown) {
  Put("lpOutputUnit=1");
  const RuleStates saved = SaveRuleStates(*engine);
  {
    const LiftControl lift(*engine, 130);
    EXPECT_TRUE(Available(130) && Available("Staple_Check"));
  }
  EXPECT_FALSE(Available(130) || Available("Staple_Check"));
  Put("lpOutputUnit=2 Layout_Check2=1");
  EXPECT_TRUE(Available(130));
  RestoreRuleStates(*engine, saved);
  EXPECT_FALSE(Available(130));
  EXPECT_EQ(GetRuleParent(130), 123);
  EXPECT_EQ(GetRuleParent(142), 0);
  EXPECT_EQ(GetRuleParent(111), 65535);

  ui->head().activeDialogId = 600;
  Put("lpOutput=2 PrintCAD_Check=0");
  ApplyAvailability(*engine, &view);
  EXPECT_EQ(view.enabled, "635+ 649+ 638- 639- ");
  ApplyAvailability(*engine, nullptr);
}

TEST_F(EvaluateTest, AvailabilityIsAFunctionOfValues) {
  Put("tray.1=2 lpMediaSource=1 OHPInterLeave_Check=1 lpOutputUnit=3 lpSaddleUnit=2");
  const RuleStates first = SaveRuleStates(*engine);
  const std::string items = Forbidden("lpOIPaperTray");
  // What was computed before leaves no trace.
  engine->rules = {};
  for (ListItem& item : GetControlBlock(*engine, 3300)->Items()) item.status = kItemForbidden;
  for (ListItem& item : GetControlBlock(*engine, 2024)->Items()) item.status = kItemForbidden;
  for (size_t i = 0; i < kControlCount; ++i) engine->rules.available[i] = FirstEnableRule(kControls[i].id) < 0;
  EvaluateRules(*engine, nullptr);
  EXPECT_EQ(engine->rules.enabled, first.enabled);
  EXPECT_EQ(engine->rules.available, first.available);
  EXPECT_EQ(Forbidden("lpOIPaperTray"), items);
}

TEST_F(EvaluateTest, NothingIsAllocated) {
  Put("tray.1=2 lpMediaSource=1 lpOutputUnit=3 Layout_Check2=1 Staple_Check=1 lpOutputTray=101 OHPInterLeave_Check=1");
  Change("Staple_Check=1");
  const test::FailingNew none(0);
  EvaluateRules(*engine, nullptr);
  ComputeAllItemStatus(*engine);
  ApplyPairRules(*engine, request, log);
  ApplyTripleRules(*engine, request, log);
  ApplyPaperRules(*engine, request, log);
  ResolveStaple(*engine, request, log);
  ResolveInterleave(*engine, request, log);
  ResolveTrays(*engine, log, nullptr);
  ResolveOutputTray(*engine, log, nullptr);
  EXPECT_FALSE(none.Refused());
}

TEST_F(EvaluateTest, AClonesValuesCountWhileItIsBound) {
  Put("lpOutputUnit=2 Layout_Check2=1");
  UiStatePtr clone = CloneUiState(*ui);
  BindControls(*engine, *clone);
  Put("lpOutputUnit=1");
  EXPECT_FALSE(Available("Staple_Check"));
  BindControls(*engine, *ui);
  Put("");
  EXPECT_TRUE(Available("Staple_Check"));
  FreeUiStateClone(clone);
}

TEST_F(EvaluateTest, ItemsFollowCombinationsOfValues) {
  Put("lpSourceUnit=1 lpMediaSource=7 lpOutputPaper=9 lpOutput=2");
  EXPECT_EQ(Forbidden("lpMediaSource"), "258 259 270");
  Put("lpSourceUnit=2");
  EXPECT_EQ(Forbidden("lpMediaSource"), "270");
  // A device option is held back only by other device options, and not by those below it.
  Put("lpOutputUnit=2 lpOutputTray=11 lpMailBinKit=2");
  EXPECT_FALSE(Forbids("lpOutputUnit", 1));
  Put("lpOutputUnit=1");
  EXPECT_TRUE(Forbids("lpOutputUnit", 1));  // a kit that can't be chosen any more does hold it back
  EXPECT_TRUE(Forbids("lpOutputTray", 11));
  EXPECT_EQ(Forbidden("lpMailBinKit"), "");  // fixed
  Put("Layout_Check2=1 lpOutputUnit=2 Staple_Check=1 lpMailBinKit=2 lpOutputPaper=9");
  EXPECT_TRUE(Forbids("lpOutputTray", 101));
  Put("Layout_Check2=0");  // nothing staples now
  EXPECT_FALSE(Forbids("lpOutputTray", 101));
  // The always usable ones count in fax mode too.
  Put("EngSaveToner_Check=1 lpOutput=1");
  EXPECT_TRUE(Forbids("lpSmoothing", 2));
}

TEST_F(EvaluateTest, ItemsFollowThePaper) {
  Put("lpOutput=2 lpSourceUnit=4 lpMediaSource=1 lpOutputPaper=9 lpPRNType=1 Layout_Check2=1");
  EXPECT_EQ(Forbids("lpMediaSource", 270), false);
  Put("lpOutputPaper=8");
  EXPECT_TRUE(Forbids("lpMediaSource", 270));
  EXPECT_FALSE(Forbids("lpMediaSource", 1));
  Put("lpOutputPaper=257 lpMediaSize=9");  // the same as the document: 9 is tested
  EXPECT_FALSE(Forbids("lpMediaSource", 270));
  EXPECT_FALSE(Forbids("lpOutputPaper", 9));
  Put("lpOutputPaper=9 lpPRNType=3");  // a booklet needs the double sheet
  EXPECT_TRUE(Forbids("lpMediaSource", 270));
  // Custom papers are alike.
  Put("lpPRNType=1 lpOutputPaper=256");
  const std::string custom =
      Forbidden("lpMediaSource") + "/" + Forbidden("lpPRNType") + "/" + Forbidden("lpOutputTray");
  Put("lpOutputPaper=515");
  EXPECT_EQ(Forbidden("lpMediaSource") + "/" + Forbidden("lpPRNType") + "/" + Forbidden("lpOutputTray"), custom);
  EXPECT_NE(custom, "//");
}

TEST_F(EvaluateTest, ABookletForbidsTheWrongEdge) {
  Put("lpOutput=2 Layout_Check2=1 Nup_Check=0 lpPRNType=3 lpOrientation=1");
  EXPECT_EQ(Forbidden("lpBindPosit"), "4");
  Put("lpOrientation=2");
  EXPECT_EQ(Forbidden("lpBindPosit"), "2 3");
  Put("Nup_Check=1 lpLayout=8");
  EXPECT_EQ(Forbidden("lpBindPosit"), "4");
  Put("lpPRNType=2");
  EXPECT_EQ(Forbidden("lpBindPosit"), "");
}

TEST_F(EvaluateTest, FinishingForbidsPapersAndPositions) {
  Put("lpOutput=2 lpOutputUnit=2 lpPunchKit=21 Layout_Check2=1 lpPRNType=1 lpBindPosit=2 lpOrientation=1 "
      "Staple_Check=1 "
      "lpStaple=4 lpMediaSize=8 lpOutputPaper=8 lpOutputTray=1");
  EXPECT_EQ(Forbidden("lpStaple"), "2 3 4");  // contrary to the binding edge; not along that of A3
  EXPECT_TRUE(Forbids("lpOutputPaper", 88));
  Put("lpBindPosit=4");
  EXPECT_EQ(Forbidden("lpStaple"), "1");
  Put("lpBindPosit=1 Staple_Check=0 Punch_Check=1 lpPunchHoles=2 lpOutputPaper=9");
  EXPECT_EQ(Forbidden("lpPunchHoles"), "3 4");  // the kit makes two holes
  EXPECT_TRUE(Forbids("lpOutputPaper", 28));
  EXPECT_FALSE(Forbids("lpOutputPaper", 2059));  // only together with staples
  Put("Staple_Check=1");
  EXPECT_TRUE(Forbids("lpOutputPaper", 2059));
  Put("lpBindPosit=2 Staple_Check=0 lpOutputPaper=8");
  EXPECT_EQ(Forbidden("lpPunchHoles"), "2 3 4");
  Put("lpOrientation=2");
  EXPECT_EQ(Forbidden("lpPunchHoles"), "3 4");
  Put("lpSaddleUnit=2 Staple_Check=0 Punch_Check=0 FoldStaple_Check=1 lpFoldStaple=1 lpOutputUnit=3 lpOutputPaper=9");
  EXPECT_TRUE(Forbids("lpOutputPaper", 88));  // folds only as the sheet of a booklet
  EXPECT_FALSE(Forbids("lpOutputPaper", 8));
}

TEST_F(EvaluateTest, AForbiddenValueMovesToTheFirstAllowedItem) {
  Put("lpSourceUnit=1 lpMediaSource=259 lpOutputPaper=9 lpOutput=1");
  EXPECT_FALSE(Available("lpMediaSource"));
  EXPECT_EQ(SelectFirstAvailable(*engine, 120), 1);
  EXPECT_EQ(Value("lpMediaSource"), GetControlBlock(*engine, 120)->Items()[0].value);
  EXPECT_FALSE(Available("lpMediaSource"));
  EXPECT_EQ(SelectFirstAvailable(*engine, 120), 0);
  EXPECT_EQ(SelectFirstAvailable(*engine, 130), 0);
  EXPECT_EQ(SelectFirstAvailable(*engine, 9999), 0);
  // Transparencies everywhere.
  Put("tray.1=2 tray.2=2 tray.258=2 tray.259=2 tray.270=2 tray.7=2 tray.4=2 lpOIPaperTray=2");
  EXPECT_EQ(SelectFirstAvailable(*engine, 2024), 2);
  EXPECT_EQ(Value("lpOIPaperTray"), 2);
}

}  // namespace
}  // namespace heron::engine
