// The status panel and the machine: symbols and parts by their settings, all that can be reached, and the icons' order.
#include <random>
#include <set>

#include "preview/machine_view.h"
#include "preview_fixture.h"

namespace heron::preview {
namespace {

class StatusTest : public PreviewTest {
 protected:
  StatusTest() {
    Write(
        "lpOverlay=NoOverlay lpOutputMethod=Print lpOutput=Printer CoverSheet=0 Front_Check=Off Back_Check=Off "
        "InterSheet_Check=Off "
        "FrontCoverSheet_Check=0 BackCoverSheet_Check=0 Watermark_Use=Off Date_Time_Check=0 PageNo_Check=0 "
        "CopyNo_Check=0 ImageShift_Check=Off Chapter_Check=Off Fold_Check=Off UserAuth_Check=Off SecMana_Check=Off "
        "PilePermit_Check=0 JobPartition_Check=0 FoldStaple_Check=Off Saddle_Check=0 Trim_Check=0 lpExposureType=0 "
        "JimonMode_Check=0 PerfectBind_Check=0 lpPRNType=OneSided");
  }
  StatusPicture Paint(const std::string& settings) {
    Write(settings);
    return DescribeStatusPaint(*ui, kPanel);
  }
  /// Images of one fifth of the first row, or of the second row (fifth 5).
  std::string Row(const std::string& settings, int fifth) {
    std::string text;
    const Stack stack = StackStatus(Paint(settings));
    for (const Layer& layer : stack) {
      const bool second = layer.y == 44;
      if (layer.isMask || second != (fifth == 5) || (!second && layer.x / 40 != fifth)) continue;
      text += (text.empty() ? "" : " ") + std::to_string(layer.picture);
    }
    return text;
  }
  std::string Order() {
    std::string text;
    for (const uint8_t feature : ui->iconOrder) text += std::to_string(feature) + ' ';
    return text;
  }
};

TEST_F(StatusTest, TheFirstRowShowsTheJob) {
  EXPECT_EQ(Row("", 0), "15597");
  EXPECT_EQ(Row("lpOutputMethod=Secure", 0), "15597 15594");
  EXPECT_EQ(Row("lpOutputMethod=SaveToBox", 0), "15592 15596");
  EXPECT_EQ(Row("lpOutputMethod=SaveToBoxAndPrint", 0), "15597 15596");
  EXPECT_EQ(Row("lpOutputMethod=5", 0), "15597 15610");
  EXPECT_EQ(Row("lpOutputMethod=6", 0), "15597 15595");
  EXPECT_EQ(Row("lpOutputMethod=Proof", 0), "15597 15622");
  EXPECT_EQ(Row("lpOutput=Fax", 0), "15591 15622");
  EXPECT_EQ(Row("CoverSheet=1", 0), "15590 15622");
  EXPECT_EQ(Row("lpOverlay=CreateForm", 0), "15598 15622");
  EXPECT_EQ(Row("", 2), "15511");
  EXPECT_EQ(Row("lpOverlay=NoOverlay", 2), "15510");
  EXPECT_EQ(Row("lpOverlay=PrintWithForm", 2), "15512");
  EXPECT_EQ(Row("lpOverlay=4", 2), "15839");
  EXPECT_EQ(Row("", 3), "15500");
  EXPECT_EQ(Row("PageNo_Check=1", 3), "15501");
  EXPECT_EQ(Row("Watermark_Use=On lpWatermarkOrder=Transparent", 3), "15502");
  EXPECT_EQ(Row("lpWatermarkOrder=Overprint", 3), "15501");
  EXPECT_EQ(Row("", 4), "");
  EXPECT_EQ(Row("SecMana_Check=On", 4), "15644");
}

TEST_F(StatusTest, SheetsArePiledFromTheBack) {
  EXPECT_EQ(Row("", 1), "15579");
  EXPECT_EQ(Row("Front_Check=On lpFrontCover=1", 1), "15579") << "a cover of no kind";
  EXPECT_EQ(Row("lpFrontCover=Blank", 1), "15573 15571");
  EXPECT_EQ(Row("lpFrontCover=Printed Back_Check=On lpBackCover=Blank", 1), "15576 15573 15572");
  EXPECT_EQ(Row("lpBackCover=Printed BackCoverSheet_Check=1 FrontCoverSheet_Check=1", 1),
            "15578 15577 15573 15572 15570");
  SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui) = 2;
  CurrentPages(*ui)[0].type = 1;
  CurrentPages(*ui)[1].type = 6;
  CurrentPages(*ui)[2].type = 2;  // behind the list's end
  EXPECT_EQ(Row("Front_Check=Off Back_Check=Off BackCoverSheet_Check=0 FrontCoverSheet_Check=0 InterSheet_Check=On", 1),
            "15574");
  for (const int16_t type : {int16_t{2}, int16_t{5}}) {
    CurrentPages(*ui)[1].type = type;
    EXPECT_EQ(Row("", 1), "15575");
  }
}

TEST_F(StatusTest, TheSecondRowShowsFeatures) {
  struct Case {
    const char* settings;
    const char* images;
  };
  const Case cases[] = {
      {"ImageShift_Check=On", "15530"},
      {"ImageShift_Check=Off Chapter_Check=On", ""},  // one-sided pages have no chapters
      {"lpPRNType=TwoSided", "15540"},
      {"lpPRNType=Booklet", "15540"},
      {"Chapter_Check=Off UserAuth_Check=On", "15642"},
      {"UserAuth_Check=Off PilePermit_Check=1", "15646"},
      {"PilePermit_Check=0 JobPartition_Check=1", "15650"},
      {"JobPartition_Check=0 JimonMode_Check=1", "15656"},
      {"JimonMode_Check=0 PerfectBind_Check=1", "15660"},
      {"PerfectBind_Check=0 lpExposureType=1", "16260"},
      {"lpExposureType=5", "16264"},
      {"lpExposureType=6", ""},
      {"lpExposureType=0 FoldStaple_Check=On lpFoldStaple=FoldAndStaple", "16245"},
      {"lpFoldStaple=Fold", "16247"},
      {"lpFoldStaple=4", ""},
      {"lpFoldStaple=2 Saddle_Check=1", "16245"},
      {"Trim_Check=1", "16248"},
      {"Saddle_Check=0", "16246"},
      {"FoldStaple_Check=Off Fold_Check=On lpFold=Center lpPRNType=OneSided", "15550"},
      {"lpFold=12", "15551"},
      {"lpFold=20", "15552"},
      {"lpFold=22", "15552"},
      {"lpFold=31", "15553"},
      {"lpFold=34", "15556"},
      {"lpFold=41", "15557"},
      {"lpFold=42", "15558"},
      {"lpFold=51", "15559"},
      {"lpFold=52", "15560"},
      {"lpFold=111", "15561"},
      {"lpFold=112", "15562"},
      {"lpFold=121", "15563"},
      {"lpPRNType=Booklet", "15564"},
      {"lpFold=99", ""},
      {"Fold_Check=Off OHPInterLeave_Check=Off tray.Tray2=Transparency", "15520"},
      {"OHPInterLeave_Check=On lpOhpIntlvType=Blank", "15521"},
      {"lpOhpIntlvType=Printed", "15522"},
      {"lpMediaSource=Tray1", ""},
  };
  for (const Case& one : cases) EXPECT_EQ(Row(one.settings, 5), one.images) << one.settings;
}

TEST_F(StatusTest, FeaturesKeepTheOrderInWhichTheyWereTurnedOn) {
  Paint("Chapter_Check=On lpPRNType=TwoSided");
  Paint("ImageShift_Check=On");
  EXPECT_EQ(Order(), "3 2 0 0 0 0 ");
  Paint("Chapter_Check=Off");
  EXPECT_EQ(Order(), "2 0 0 0 0 0 ");
  const UiStatePtr copy = CloneUiState(*ui);
  EXPECT_EQ(copy->iconOrder, ui->iconOrder);
  // Six have room; a seventh waits, and a slot that is freed behind its turn serves the next paint.
  Paint("UserAuth_Check=On PilePermit_Check=1 JobPartition_Check=1 JimonMode_Check=1 PerfectBind_Check=1");
  EXPECT_EQ(Order(), "2 5 6 7 10 11 ");
  const Stack full = StackStatus(DescribeStatus(*ui, kPanel));
  EXPECT_EQ(full.back().x, 5 * (200 / 6));
  Paint("Chapter_Check=On JobPartition_Check=0");
  EXPECT_EQ(Order(), "2 5 6 10 11 0 ");
  Paint("");
  EXPECT_EQ(Order(), "2 5 6 10 11 3 ");
}

/// Against a list that grows and shrinks.
TEST_F(StatusTest, TheOrderFollowsASmallModel) {
  std::mt19937 random(7);
  std::vector<uint8_t> model;
  StatusPicture picture;
  IconOrder order{};
  using P = StatusPicture;
  // clang-format off
  uint8_t P::*const flags[] = {nullptr, nullptr, &P::imageShift, &P::chapter, &P::fold, &P::auth, &P::pile, &P::partition,
                               &P::bookbind, &P::exposure, &P::jimon, &P::perfectBind};
  // clang-format on
  for (int round = 0; round < 3000; ++round) {
    const auto feature = static_cast<uint8_t>(1 + random() % 11);
    if (feature == 1)
      picture.ohp = picture.ohp == kNoTransparency ? 0 : kNoTransparency;
    else
      picture.*flags[feature] ^= 1;
    UpdateIconOrder(picture, order);
    for (uint8_t each = 1; each <= 11; ++each) {
      const bool on = each == 1 ? picture.ohp != kNoTransparency : picture.*flags[each] != 0;
      const auto listed = std::ranges::find(model, each);
      if (on && listed == model.end() && model.size() < 6) model.push_back(each);
      if (!on && listed != model.end()) model.erase(listed);
    }
    IconOrder expected{};
    std::ranges::copy(model, expected.begin());
    ASSERT_EQ(order, expected) << round;
  }
}

TEST_F(StatusTest, EverySymbolHasItsMaskBelow) {
  std::set<int> seen;
  const auto look = [&](const StatusPicture& picture) {
    const Stack stack = StackStatus(picture);
    for (size_t i = 0; i < stack.size(); i += 2) {
      ASSERT_TRUE(stack[i].isMask && !stack[i + 1].isMask && stack[i].x == stack[i + 1].x);
      ASSERT_EQ(stack[i].mode, Mode::kAnd);
      ASSERT_EQ(stack[i + 1].mode, Mode::kXor);
      seen.insert({stack[i].picture, stack[i + 1].picture});
    }
  };
  for (int code = 0; code < 16; ++code) {
    const auto byte = static_cast<uint8_t>(code);
    StatusPicture picture{.stamp = byte, .overlay = byte, .ohp = byte, .department = 1, .fold = byte, .bookbind = byte};
    picture.exposure = byte;
    picture.iconOrder = {1, 4, 8, 9, 2, 3};
    picture.imageShift = picture.chapter = picture.auth = picture.pile = picture.partition = 1;
    picture.jimon = picture.perfectBind = 1;
    picture.rectangle = kPanel;
    picture.jobSymbols = {byte, 255, 255};
    picture.sheetSymbols = {byte, 255, 255, 255, 255, 255};
    look(picture);
    picture.iconOrder = {5, 6, 7, 10, 11, 0};
    look(picture);
  }
  std::set<int> expected;
  for (const auto& [first, last] :
       {std::pair(15590, 15607), {15610, 15611}, {15620, 15623}, {15570, 15589}, {15612, 15617}, {15510, 15515},
        {15839, 15840},          {15500, 15505}, {15643, 15644}, {15520, 15525}, {15530, 15531}, {15540, 15541},
        {15550, 15569},          {15630, 15639}, {15641, 15642}, {15645, 15646}, {15648, 15648}, {15650, 15650},
        {16240, 16249},          {16260, 16265}, {15655, 15656}, {15660, 15661}}) {
    for (int number = first; number <= last; ++number) expected.insert(number);
  }
  EXPECT_EQ(seen, expected);
}

// -- the machine

TEST_F(PreviewTest, TheMachineShowsWhatIsInstalled) {
  struct Case {
    MachinePicture machine;
    const char* base;
    const char* lit;
  };
  // source unit, output unit, mail bins, saddle, source, tray, fold and staple
  const Case cases[] = {
      {{1, 1, 1, 1, 258, 1, 0}, "19000 19010", ""},
      {{1, 1, 1, 1, 1, 1, 0}, "19000 19010", "19046"},
      {{2, 1, 2, 2, 2, 11, 0}, "19011 19010", "19047"},
      {{3, 2, 2, 1, 258, 11, 0}, "19012 19013 19002", "19049 19036"},
      {{3, 3, 2, 2, 259, 21, 0}, "19012 19013 19006", "19036"},
      {{4, 5, 2, 1, 270, 11, 0}, "19011 19009", "19039 ^19051 19037"},
      {{5, 2, 1, 2, 270, 11, 1}, "19012 19009 19013 19004", "19039 19034"},
      {{5, 3, 1, 2, 7, 101, 1}, "19012 19009 19013 19007", "19035"},
      {{1, 41, 1, 2, 4, 31, 1}, "19000", "19044 19033"},
      {{1, 2, 1, 1, 7, 11, 0}, "19000 19013 19001", "19030"},
      {{1, 3, 1, 1, 7, 31, 0}, "19000 19013 19003", "19045"},
      {{1, 2, 1, 1, 7, 31, 0}, "19000 19013 19001", "19031"},
      {{1, 5, 1, 1, 7, 31, 0}, "19000 19008", "^19052 19038"},
      {{1, 42, 1, 1, 7, 11, 0}, "19000 19013 19005", "19032"},
      {{1, 43, 1, 1, 7, 41, 0}, "19000 19013 19005", ""},
      {{2, 3, 2, 1, 258, 41, 0}, "19011 19013 19006", "19048 19045"},
      {{2, 3, 1, 1, 259, 41, 0}, "19011 19013 19003", "19050"},
      {{1, 3, 1, 2, 7, 51, 0}, "19000 19013 19007", "19031"},
      {{1, 3, 1, 2, 7, 51, 1}, "19000 19013 19007", ""},
      {{1, 2, 2, 2, 7, 101, 1}, "19000 19013 19002", "19043 19035"},
      {{1, 2, 2, 1, 7, 102, 0}, "19000 19013 19002", "19042"},
      {{1, 3, 2, 1, 7, 103, 0}, "19000 19013 19006", "19041"},
      {{1, 3, 2, 1, 7, 104, 0}, "19000 19013 19006", "19040"},
      {{1, 3, 1, 1, 7, 104, 0}, "19000 19013 19003", ""},
      {{9, 4, 1, 1, 9, 9, 0}, "", ""},
  };
  for (const Case& one : cases) {
    const std::string of = ::testing::PrintToString(one.machine);
    EXPECT_EQ(TextOf(StackMachine(one.machine)), one.base) << of;
    EXPECT_EQ(TextOf(StackHighlights(one.machine)), one.lit) << of;
  }
  Write(
      "lpSourceUnit=Tray3And4 lpOutputUnit=BinAndExit2 lpMailBinKit=NotInstalled lpSaddleUnit=Installed "
      "lpMediaSource=Tray3 lpOutputTray=Tray1 "
      "FoldStaple_Check=On");
  EXPECT_EQ(DescribeMachine(*ui), (MachinePicture{2, 3, 1, 2, 258, 11, 1}));
}

TEST(MachineStack, EveryPartIsReachedAndLiesOnTheOthers) {
  constexpr uint16_t kOutputUnits[] = {0, 1, 2, 3, 5, 41, 42, 43, 64};
  constexpr uint16_t kSources[] = {1, 2, 4, 7, 258, 259, 270};
  constexpr uint16_t kTrays[] = {1, 11, 21, 31, 41, 51, 101, 102, 103, 104};
  std::set<int> seen;
  for (uint16_t source_unit = 0; source_unit <= 6; ++source_unit) {
    for (const uint16_t output_unit : kOutputUnits) {
      for (int kits = 0; kits < 8; ++kits) {
        for (const uint16_t source : kSources) {
          for (const uint16_t tray : kTrays) {
            const MachinePicture machine = {
                source_unit, output_unit, static_cast<uint16_t>(1 + kits % 2), static_cast<uint16_t>(1 + kits / 2 % 2),
                source,      tray,        static_cast<uint16_t>(kits / 4)};
            Stack stack = StackMachine(machine);
            for (const Layer& layer : stack) ASSERT_EQ(layer.mode, Mode::kAnd);
            const Stack lit = StackHighlights(machine);
            stack.insert(stack.end(), lit.begin(), lit.end());
            for (const Layer& layer : stack) {
              seen.insert(layer.picture);
              ASSERT_EQ(layer.mode == Mode::kXor, layer.picture == 19051 || layer.picture == 19052);
              ASSERT_EQ(std::tuple(layer.x, layer.y, layer.width, layer.height), std::tuple(0, 0, 160, 110));
            }
          }
        }
      }
    }
  }
  std::set<int> expected = {19000, 19039};
  for (int number = 19001; number <= 19013; ++number) expected.insert(number);
  for (int number = 19030; number <= 19052; ++number) expected.insert(number);
  EXPECT_EQ(seen, expected);
}

}  // namespace
}  // namespace heron::preview
