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

TEST_F(EvaluateTest, LabelsControlsAndValues) {
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
  Put("tray.Tray1=Transparency Copies=3 lpMediaSource=Tray1");
  SnapshotValues(*engine);
  Put("tray.Tray1=Special2 Copies=9");
  engine->Set(Control(u"trayMediaType.page"), 8);
  RestoreValues(*engine);
  EXPECT_EQ(Value("Copies"), 3);
  EXPECT_EQ(Value("trayMediaType.page"), "Transparency");
  EXPECT_EQ(MediaOfTray(*engine, 1).mediaType, 2);
}

TEST_F(EvaluateTest, TheFirstRowOfATrayCountsAndAMissingOneIsDefault) {
  uint8_t* const table = ui->head().trayTable;
  for (size_t row = 0; row < 10; ++row) table[4 + 6 * row] = 77, table[5 + 6 * row] = 0;
  table[6] = 3;   // media type of the first row
  table[12] = 8;  // of the second
  EXPECT_EQ(MediaOfTray(*engine, 77).mediaType, 3);
  EXPECT_EQ(MediaOfTray(*engine, 1).mediaType, engine->Default(Control(u"trayMediaType.page")));
  Put("lpFrontCoverTray=77 lpBackCoverTray=Tray1");
  EXPECT_EQ(Value("trayMediaType.frontCover"), "Special2");
  EXPECT_FALSE(StoreTrayMedia(*engine, Control(u"trayWeight.backCover"), 1));
  EXPECT_TRUE(StoreTrayMedia(*engine, Control(u"trayPunched.frontCover"), 1));
  EXPECT_EQ(MediaOfTray(*engine, 77).punched, 1);
}

TEST_F(EvaluateTest, DeviceGatesCloseWhatRulesOpen) {
  struct Case {
    const char* settings;
    const char* open;  ///< of Staple_Check, Punch_Check, FoldStaple_Check, Collate_Check
  };
  for (const Case& c : std::initializer_list<Case>{
           {"lpOutputUnit=NotInstalled lpPunchKit=TwoHoles lpSaddleUnit=NotInstalled", "0000"},
           {"lpOutputUnit=Separator lpPunchKit=TwoHoles lpSaddleUnit=NotInstalled", "0000"},
           {"lpOutputUnit=Bin lpPunchKit=NotInstalled lpSaddleUnit=NotInstalled", "1001"},
           {"lpOutputUnit=Bin lpPunchKit=FourHoles lpSaddleUnit=NotInstalled", "1101"},
           {"lpOutputUnit=BinAndExit2 lpPunchKit=TwoHoles lpSaddleUnit=Installed", "1111"},
           {"lpOutputUnit=Floor2And3 lpPunchKit=NotInstalled lpSaddleUnit=NotInstalled", "1101"},
           {"lpOutputUnit=NotInstalled lpPunchKit=NotInstalled lpSaddleUnit=Installed", "0010"}}) {
    Put(std::string("Layout_Check2=On lpOutput=Printer ") + c.settings);
    std::string open;
    for (const char* name : {"Staple_Check", "Punch_Check", "FoldStaple_Check", "Collate_Check"}) {
      open += Available(name) ? '1' : '0';
      EXPECT_EQ(IsDeviceGateOpen(*engine, kControls[ControlNamed(name)].id), Available(name)) << name;
    }
    EXPECT_EQ(open, c.open) << c.settings;
  }
  EXPECT_TRUE(IsDeviceGateOpen(*engine, 131));
}

TEST_F(EvaluateTest, FaxClosesItsControlsWhateverElseHolds) {
  Put("lpOutput=Fax Layout_Check2=On lpOutputUnit=Bin Nup_Check=On lpPRNType=TwoSided Chapter_Check=On");
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
    Put("lpPRNType=" + std::to_string(type) + " Chapter_Check=On");
    EXPECT_EQ(Available("Chapter_Check"), type != 1) << type;
    EXPECT_EQ(Available(316), type != 1) << type;
  }
  Put("lpOverlay=NoOverlay");
  EXPECT_FALSE(Available(407) || Available(404) || Available(405));
  Put("lpOverlay=CreateForm");
  EXPECT_TRUE(Available(407) && !Available(404));
  Put("lpOverlay=PrintWithForm");
  EXPECT_TRUE(Available(407) && Available(404) && !Available(405));
  uint16_t* const graphics = FieldsOf(*ui, ParamNamed<u"lpGraphicsMode">()).value;
  *graphics = 2;
  Put("lpPDLType=PclXlMode4");
  EXPECT_TRUE(Available(402));
  Put("lpPDLType=Pcl5");
  EXPECT_FALSE(Available(402));
  EXPECT_TRUE(IsControlUsable(*engine, 402));
}

TEST_F(EvaluateTest, ThePerPageListNeedsARowAndTheFocus) {
  auto& rows = SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui);
  view.row_selected = true;
  Put("InterSheet_Check=On");
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
  Put("InterSheet_Check=Off");
  EXPECT_FALSE(Available(250) || Available(251));
}

TEST_F(EvaluateTest, InterleavingNeedsTransparenciesAndPaper) {
  const std::string plain =
      "lpOutput=Printer lpSourceUnit=Tray3And4AndLarge tray.Auto=Plain tray.Tray1=Plain tray.Tray2=Plain "
      "tray.Tray3=Plain tray.Tray4=Plain tray.Large=Plain tray.Bypass=Plain ";
  Put(plain + "lpMediaSource=Tray1 lpOutputPaper=A4 OHPInterLeave_Check=On");
  EXPECT_FALSE(Available("OHPInterLeave_Check"));
  Put("tray.Tray1=Transparency lpMediaSource=Tray1");
  EXPECT_TRUE(Available("OHPInterLeave_Check"));
  EXPECT_TRUE(Available("lpOIPaperTray"));
  EXPECT_FALSE(Available("Copies"));  // locked while transparencies come from the main tray
  Put("lpMediaSource=Tray2");
  EXPECT_TRUE(Available("Copies"));
  EXPECT_TRUE(Forbids("lpOIPaperTray", "Tray1"));
  EXPECT_FALSE(Forbids("lpOIPaperTray", "Tray2"));
  Put("lpMediaSource=9999");
  EXPECT_FALSE(Available("OHPInterLeave_Check") || Available("Copies"));
  Put("lpMediaSource=Tray1 tray.Tray2=Transparency tray.Tray3=Transparency tray.Tray4=Transparency "
      "tray.Large=Transparency lpMediaSource=Tray1");
  EXPECT_FALSE(Available("OHPInterLeave_Check"));  // no paper is left to put between
}

TEST_F(EvaluateTest, StatesAreLiftedSavedAndShown) {
  Put("lpOutputUnit=NotInstalled");
  const RuleStates saved = SaveRuleStates(*engine);
  {
    const LiftControl lift(*engine, 130);
    EXPECT_TRUE(Available(130) && Available("Staple_Check"));
  }
  EXPECT_FALSE(Available(130) || Available("Staple_Check"));
  Put("lpOutputUnit=Bin Layout_Check2=On");
  EXPECT_TRUE(Available(130));
  RestoreRuleStates(*engine, saved);
  EXPECT_FALSE(Available(130));
  EXPECT_EQ(GetRuleParent(130), 123);
  EXPECT_EQ(GetRuleParent(142), 0);
  EXPECT_EQ(GetRuleParent(111), 65535);

  ui->head().activeDialogId = 600;
  Put("lpOutput=Printer PrintCAD_Check=Off");
  ApplyAvailability(*engine, &view);
  EXPECT_EQ(view.enabled, "635+ 649+ 638- 639- ");
  ApplyAvailability(*engine, nullptr);
}

TEST_F(EvaluateTest, NothingIsAllocated) {
  Put("tray.Tray1=Transparency lpMediaSource=Tray1 lpOutputUnit=BinAndExit2 Layout_Check2=On Staple_Check=On "
      "lpOutputTray=MailBin1 OHPInterLeave_Check=On");
  Change("Staple_Check=On");
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
  Put("lpOutputUnit=Bin Layout_Check2=On");
  UiStatePtr clone = CloneUiState(*ui);
  BindControls(*engine, *clone);
  Put("lpOutputUnit=NotInstalled");
  EXPECT_FALSE(Available("Staple_Check"));
  BindControls(*engine, *ui);
  Put("");
  EXPECT_TRUE(Available("Staple_Check"));
  FreeUiStateClone(clone);
}

// One case of each kind; the second evaluator holds all of them to random settings.
TEST_F(EvaluateTest, ItemsFollowCombinationsPapersAndFinishing) {
  struct Case {
    const char* settings;
    const char* list;
    const char* forbidden;
  };
  Put("lpOutput=Printer Layout_Check2=On");
  for (const Case& c : std::initializer_list<Case>{
           {"lpSourceUnit=NotInstalled lpMediaSource=Auto lpOutputPaper=A4", "lpMediaSource", "Tray3 Tray4 Large"},
           {"lpSourceUnit=Tray3And4", "lpMediaSource", "Large"},
           {"lpSourceUnit=Tray3And4AndLarge lpOutputPaper=A4", "lpMediaSource", ""},
           {"lpOutputPaper=A3", "lpMediaSource", "Large"},
           {"lpOutputPaper=SameAsDocument lpMediaSize=A4", "lpMediaSource", ""},
           {"lpOutputPaper=A4 lpPRNType=Booklet", "lpMediaSource", "Large"},  // needs the double sheet
           {"lpOrientation=Portrait", "lpBindPosit", "Top"},
           {"lpOrientation=Landscape", "lpBindPosit", "Left Right"},
           {"Nup_Check=On lpLayout=TwoPages", "lpBindPosit", "Top"},
           {"lpPRNType=TwoSided", "lpBindPosit", ""},
           // A staple on the wrong edge, or along the wrong edge of A3; holes of another kit, or along the wrong edge.
           {"lpOutputUnit=Bin lpPunchKit=TwoHoles lpPRNType=OneSided lpBindPosit=Left Nup_Check=Off "
            "lpOrientation=Portrait Staple_Check=On lpStaple=TwoStaples lpMediaSize=A3 lpOutputPaper=A3",
            "lpStaple", "UpperLeft UpperRight TwoStaples"},
           {"lpBindPosit=Top", "lpStaple", "Corner"},
           {"lpBindPosit=Auto Staple_Check=Off Punch_Check=On lpPunchHoles=TwoHoles lpOutputPaper=A4", "lpPunchHoles",
            "ThreeHoles FourHoles"},
           {"lpBindPosit=Left lpOutputPaper=A3", "lpPunchHoles", "TwoHoles ThreeHoles FourHoles"},
           {"lpOrientation=Landscape", "lpPunchHoles", "ThreeHoles FourHoles"},
           // A kit that can't be chosen any more does hold the unit back; a fixed option is never forbidden.
           {"lpOutputUnit=NotInstalled lpMailBinKit=Installed", "lpMailBinKit", ""},
       }) {
    Put(c.settings);
    EXPECT_EQ(Forbidden(c.list), c.forbidden) << c.settings;
  }
  EXPECT_TRUE(Forbids("lpOutputUnit", "NotInstalled"));
}

TEST_F(EvaluateTest, AForbiddenValueMovesToTheFirstAllowedItem) {
  Put("lpSourceUnit=NotInstalled lpMediaSource=Tray4 lpOutputPaper=A4 lpOutput=Fax");
  EXPECT_FALSE(Available("lpMediaSource"));
  EXPECT_EQ(SelectFirstAvailable(*engine, 120), Selection::kMoved);
  EXPECT_EQ(Value("lpMediaSource"), GetControlBlock(*engine, 120)->Items()[0].value);
  EXPECT_FALSE(Available("lpMediaSource"));
  EXPECT_EQ(SelectFirstAvailable(*engine, 120), Selection::kStays);
  EXPECT_EQ(SelectFirstAvailable(*engine, 130), Selection::kStays);
  EXPECT_EQ(SelectFirstAvailable(*engine, 9999), Selection::kStays);
  // Transparencies everywhere.
  Put("tray.Tray1=Transparency tray.Tray2=Transparency tray.Tray3=Transparency tray.Tray4=Transparency "
      "tray.Large=Transparency tray.Auto=Transparency tray.Bypass=Transparency lpOIPaperTray=Tray2");
  EXPECT_EQ(SelectFirstAvailable(*engine, 2024), Selection::kNoneAllowed);
  EXPECT_EQ(Value("lpOIPaperTray"), "Tray2");
}

}  // namespace
}  // namespace heron::engine
