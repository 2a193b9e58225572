// Zoom, margins and derived settings, by numbers worked out by hand. A plain paper's printable area is 848 hundredths
// of a millimetre smaller than the paper both ways: A4 20152 x 28852, A3 28852 x 41152.
#include "engine/sizes.h"

#include "engine_fixture.h"

namespace heron::engine {
namespace {

class SizesTest : public EngineTest {
 protected:
  CustomPaperEntry& Custom(int number) { return (*ui->stores.userPapers)[static_cast<size_t>(number - 1)]; }
  std::string ZoomOf(const std::string& settings) {
    Put(settings);
    ComputeAutoZoom(*ui);
    return std::to_string(Value("Zoom")) + (Fields<u"ZoomCheck">() == 1 ? "" : " off");
  }
  template <ParamKey kKey>
  uint16_t& Fields() {
    return *FieldsOf(*ui, ParamNamed<kKey>()).value;
  }
};

TEST_F(SizesTest, ZoomFitsOnePaperIntoTheOther) {
  Custom(1).width = 8267;    // 20998, printable 20150: two less than A4's, which counts as equal
  Custom(1).height = 11693;  // 29700
  Custom(2).width = 2000;    // 5080, printable 4232
  Custom(2).height = 2000;
  EXPECT_EQ(ZoomOf("lpMediaSize=A4 lpOutputPaper=SameAsDocument"), "100 off");
  EXPECT_EQ(ZoomOf("lpOutputPaper=A3"), "142");                         // 143 by width, 142 by height
  EXPECT_EQ(ZoomOf("lpMediaSize=A3 lpOutputPaper=A4"), "69");           // 69.8 and 70.1
  EXPECT_EQ(ZoomOf("lpMediaSize=A4 lpOutputPaper=Custom1"), "100");     // 99 without the tolerance
  EXPECT_EQ(ZoomOf("lpMediaSize=A3 lpOutputPaper=Custom2"), "25");      // 14 and 10: never below the setting's range
  EXPECT_EQ(ZoomOf("lpMediaSize=CustomSize lpOutputPaper=A4"), "100");  // a paper without a size
}

TEST_F(SizesTest, MarginReducesThePage) {
  const std::string on =
      "lpMediaSize=A4 lpOutputPaper=SameAsDocument BindMargin_Check=On Layout_Check2=On lpMarginMode=Reduce "
      "fMargin=10 ";
  Fields<u"lpBindMargin">() = 1;
  EXPECT_EQ(ZoomOf(on), "95");                    // 19152 of 20152
  EXPECT_EQ(ZoomOf("bMargin=20"), "95");          // one-sided: the back has no say
  EXPECT_EQ(ZoomOf("lpPRNType=TwoSided"), "90");  // 18152 of 20152
  EXPECT_EQ(ZoomOf("lpPRNType=Booklet"), "90");
  EXPECT_EQ(ZoomOf("lpPRNType=OneSided lpOrientation=Landscape"), "96");  // 27852 of 28852
  EXPECT_EQ(ZoomOf("Nup_Check=On lpLayout=TwoPages"), "95");              // two pages turn the sheet back
  Fields<u"lpBindMargin">() = 3;
  EXPECT_EQ(ZoomOf("lpOrientation=Portrait Nup_Check=Off"), "96");
  EXPECT_EQ(ZoomOf("lpOutputPaper=A3"), "139");  // 28852 - 0 of 20152 is 143, 40152 of 28852
  EXPECT_EQ(ZoomOf("lpMarginMode=Shift"), "142");
  EXPECT_EQ(ZoomOf("lpMarginMode=Reduce BindMargin_Check=Off"), "142");
  Custom(1).width = Custom(1).height = 400;  // 168 of which are printable
  EXPECT_EQ(ZoomOf("lpMediaSize=Custom1 BindMargin_Check=On"), "400");
  EXPECT_EQ(BindingMarginRanges(*ui).bits, 0x1400u);  // the back follows the front
}

TEST_F(SizesTest, ChangesThatAskForANewZoom) {
  struct Case {
    const char* settings;
    uint16_t id;
    bool computed;
  };
  const Case cases[] = {
      {"", 111, true},
      {"", 114, true},
      {"", 139, false},
      {"", 124, false},
      {"Nup_Check=On", 124, true},
      {"Nup_Check=On", 301, true},
      {"Nup_Check=Off", 123, false},
      {"lpMarginMode=Reduce BindMargin_Check=Off", 155, true},
      {"lpMarginMode=Shift", 155, false},
      {"lpMarginMode=Shift", 2301, true},
      {"lpMarginMode=Reduce", 2301, false},
      {"BindMargin_Check=On Layout_Check2=Off", 123, true},
      {"BindMargin_Check=On Layout_Check2=On", 106, true},  // the margin reduces whatever was changed
  };
  Put("lpMediaSize=A4 lpOutputPaper=A3 POD_Check=On");
  for (const Case& row : cases) {
    Put(std::string(row.settings) + " Zoom=77");
    UpdateAutoZoom(*ui, row.id);
    EXPECT_EQ(Value("Zoom") != 77, row.computed) << row.settings << " " << row.id;
  }
  for (const uint16_t mode : {uint16_t{1}, uint16_t{2}}) {
    Fields<u"lpGraphicsMode">() = mode;
    Put("lpMarginMode=Shift Zoom=77");
    UpdateAutoZoom(*ui, 612);
    EXPECT_EQ(Value("Zoom") != 77, mode == 1);
  }
}

TEST_F(SizesTest, LargestZoomIsWhatTheRendererCanAddress) {
  const auto with_height = [this](uint32_t thou) {
    Custom(1).height = thou;
    return MaxZoomForPaper(*ui, 513);
  };
  EXPECT_EQ(MaxZoomForPaper(*ui, 9), 400);
  EXPECT_EQ(with_height(13649), 400);  // 8189 dots, 32756
  EXPECT_EQ(with_height(13650), 350);  // 8190 dots, 32760: one too many
  EXPECT_EQ(with_height(17000), 300);
  EXPECT_EQ(with_height(4000000), 100);
}

TEST_F(SizesTest, CustomPaperFitsItsTray) {
  const auto fits = [this](uint32_t width, uint32_t height, int16_t unit) {
    Custom(1) = {.width = width, .height = height, .unit = unit, .name = {}, .longFlag = 0};
    return CustomPaperFits(*ui);
  };
  Put("lpMediaSize=A4 lpOutputPaper=SameAsDocument");
  EXPECT_TRUE(fits(1, 1, 1)) << "not chosen";
  Put("lpMediaSize=Custom1");
  EXPECT_TRUE(fits(3622, 5826, 1));   // 92.0 x 148.0 mm as they are stored: 9199 and 14798 hundredths
  EXPECT_FALSE(fits(3618, 5826, 1));  // 91.9 mm
  EXPECT_TRUE(fits(11692, 17000, 1));
  EXPECT_FALSE(fits(11694, 17000, 1));  // 297.1 mm
  EXPECT_FALSE(fits(11692, 17001, 1));
  EXPECT_TRUE(fits(3622, 5826, 2));
  EXPECT_FALSE(fits(3621, 5826, 2));
  EXPECT_FALSE(fits(8267, 17001, 2));
}

TEST_F(SizesTest, CustomPaperTooWideLosesItsExcess) {
  Custom(3).width = 12000;   // 30480: 780 more than can be printed on, less than the margins
  Custom(3).height = 17400;  // 44196: 1016 more, 508 on each side
  const CustomArea area = ComputeCustomInsets(*ui, 515);
  EXPECT_EQ(area.insets.left, 424u);
  EXPECT_EQ(area.insets.right, 424u);
  EXPECT_EQ(area.insets.top, 508u);
  EXPECT_EQ(area.insets.bottom, 508u);
}

TEST_F(SizesTest, MarginRanges) {
  const std::string on = "BindMargin_Check=On Layout_Check2=On lpMarginMode=Reduce ";
  Fields<u"lpBindMargin">() = 1;
  Put(on + "lpMediaSize=A4 lpOutputPaper=SameAsDocument");
  EXPECT_EQ(BindingMarginRanges(*ui).bits, 0u);  // 151 mm of room
  EXPECT_EQ(BindingMarginRanges(*ui).maxFront, 50);

  // A3 on A6: 9152 x 13952, of which 7213 x 10288 stay.
  Put("lpMediaSize=A3 lpOutputPaper=Postcard fMargin=30 bMargin=10 MarginEqual_Check=Off");
  MarginRanges ranges = BindingMarginRanges(*ui);
  EXPECT_EQ(ranges.maxFront, 19);
  EXPECT_EQ(ranges.front, 19);
  EXPECT_EQ(ranges.back, 10);
  EXPECT_EQ(ranges.bits, 0x2105u);  // 6152 of 28852 would be 21 %
  Fields<u"lpBindMargin">() = 3;
  EXPECT_EQ(BindingMarginRanges(*ui).maxFront, 19) << "the width limits a margin at the top too";
  Fields<u"lpBindMargin">() = 1;
  Put("MarginEqual_Check=On");
  EXPECT_EQ(BindingMarginRanges(*ui).back, 19);
  EXPECT_EQ(BindingMarginRanges(*ui).bits, 0x2505u);

  Custom(1).width = 2000;  // 4232 of which are printable
  Put("MarginEqual_Check=Off lpOutputPaper=Custom1");
  EXPECT_EQ(BindingMarginRanges(*ui).bits, 0x2335u);
  Put("lpMarginMode=Shift");
  EXPECT_EQ(BindingMarginRanges(*ui).bits, 0u);
  EXPECT_EQ(BindingMarginRanges(*ui).front, 30);
}

TEST_F(SizesTest, DerivedSettings) {
  const auto layout = [this](const std::string& settings) {
    Put(settings);
    DeriveLayout(*ui);
    return std::to_string(Fields<u"Layout_Check">()) + std::to_string(Fields<u"lpLayout_Select">());
  };
  EXPECT_EQ(layout("Layout_Check2=On Nup_Check=On lpBorder2=Solid"), "11");
  EXPECT_EQ(Fields<u"lpBorder">(), 1);
  Fields<u"Booklet_Check">() = 1;
  EXPECT_EQ(layout(""), "11");
  EXPECT_EQ(layout("Nup_Check=Off"), "12");
  EXPECT_EQ(layout("Layout_Check2=Off POD_Check=On"), "00");
  Fields<u"POD_Nup_Check">() = 1;
  EXPECT_EQ(layout(""), "11");
  EXPECT_EQ(layout("POD_Check=Off"), "00");

  const auto margin = [this](const std::string& settings) {
    Put(settings);
    DeriveBindMargin(*ui);
    return Fields<u"lpBindMargin">();
  };
  EXPECT_EQ(margin("lpMediaSize=A4 lpOutputPaper=SameAsDocument lpBindPosit=Auto"), 1);
  EXPECT_EQ(margin("lpOrientation=Landscape"), 3);
  EXPECT_EQ(margin("lpMediaSize=A3"), 1);  // runs the other way
  EXPECT_EQ(margin("lpBindPosit=Right"), 2);
  EXPECT_EQ(margin("lpBindPosit=Top"), 3);
}

TEST_F(SizesTest, OrderOfPagesFollowsTheLayout) {
  EXPECT_EQ(OrderForLayout(8, 4), 1);
  EXPECT_EQ(OrderForLayout(1, 2), 2);
  EXPECT_EQ(OrderForLayout(5, 2), 3);
  EXPECT_EQ(OrderForLayout(10, 6), 6);
}

}  // namespace
}  // namespace heron::engine
