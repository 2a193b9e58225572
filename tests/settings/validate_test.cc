// Validation: geometry by hand-computed numbers, the zoom's causes, duplex against binding, and the closing mirrors.
#include "settings/validate.h"

#include <random>

#include "generated/values.h"
#include "settings/binding.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "settings/papers.h"
#include "settings/printer_data.h"
#include "settings/zoom.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace heron::test {
namespace {

using namespace platform;

class ValidateTest : public DriverTest {
 protected:
  ValidateTest() { Start(1); }
  void Start(uint32_t country) {
    Reopen(country);
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
  }
  void Validate() { ASSERT_TRUE(ValidateEnv(resources.get(), &env, printer.get())); }
  template <FieldName kName>
  std::vector<uint32_t> Numbers() {
    std::vector<uint32_t> numbers;
    for (size_t i = 0; i < FieldOf<kName>().length; ++i) numbers.push_back(Get<kName>(env, i));
    return numbers;
  }
  using Expected = std::vector<uint32_t>;
  DriverEnv env;
};

TEST_F(ValidateTest, NullResourcesTouchNothing) {
  const DriverEnv before = env;
  EXPECT_FALSE(ValidateEnv(nullptr, &env, printer.get()));
  EXPECT_EQ(Differences(before, env), "");
}

TEST_F(ValidateTest, PlainPaperGeometryAt600Dpi) {
  Start(86);
  Validate();
  EXPECT_EQ(Numbers<"paperMargins">(), (Expected{424, 424, 20576, 29276}));
  EXPECT_EQ(Numbers<"paperMarginsDots">(), (Expected{100, 100, 4860, 6914}));
  EXPECT_EQ(Numbers<"paperSizeDots">(), (Expected{4960, 7014}));
  EXPECT_EQ(Numbers<"outputMarginsDots">(), Numbers<"paperMarginsDots">());
  EXPECT_EQ(Numbers<"outputMargins">(), Numbers<"paperMargins">());
  EXPECT_EQ(Get<"outputPaperWidth">(env), 2100);
  EXPECT_EQ(Get<"UDPaperWidth">(env), 0);
  EXPECT_EQ(Get<"dmFields">(env) & (DM_PAPERLENGTH | DM_PAPERWIDTH), 0U);
}

TEST_F(ValidateTest, UserPaperTakesTheCallersSizeOrTheStoredOne) {
  Set<"dmPaperSize">(env, 256);
  Set<"dmPaperWidth">(env, 2100);
  Set<"dmPaperLength">(env, 2970);
  Validate();
  EXPECT_EQ(Numbers<"paperMargins">(), (Expected{424, 424, 20576, 29276}));
  EXPECT_EQ(Numbers<"paperMarginsDots">(), (Expected{100, 100, 4860, 6915}));
  EXPECT_EQ(Numbers<"paperMarginsDotsCopy">(), Numbers<"paperMarginsDots">());
  EXPECT_EQ(Numbers<"paperSizeDots">(), (Expected{4960, 7015}));
  EXPECT_EQ(Get<"UDPaperWidth">(env), 2100);
  EXPECT_EQ(Get<"dmFields">(env) & (DM_PAPERLENGTH | DM_PAPERWIDTH), DM_PAPERLENGTH | DM_PAPERWIDTH);

  Set<"dmPaperWidth">(env, 0);  // half a size is none: the stored 8267 thousandths of an inch count
  Validate();
  EXPECT_EQ(Get<"dmPaperWidth">(env), 2099);
  EXPECT_EQ(Get<"dmPaperLength">(env), 2099);
}

TEST_F(ValidateTest, UserPaperWiderThanTheSourcePrintsIsCutOnBothSides) {
  Set<"dmPaperSize">(env, 256);
  Set<"dmPaperWidth">(env, 3300);  // 330 mm on a source that prints 297 mm: 1650 left, 1650 right
  Set<"dmPaperLength">(env, 2000);
  Validate();
  EXPECT_EQ(Numbers<"paperMargins">(), (Expected{1650, 424, 31350, 19576}));
}

TEST_F(ValidateTest, SizesOutOfRangeAreStoredAsTheDefaultButUsedAsGiven) {
  Set<"dmPaperSize">(env, 256);
  Set<"dmPaperWidth">(env, 6000);
  Set<"dmPaperLength">(env, -5);
  Validate();
  EXPECT_EQ(Get<"UDPaperWidth">(env), 2100);
  EXPECT_EQ(Get<"dmPaperLength">(env), 2100);
  EXPECT_EQ(Get<"paperSizeDots">(env, 0), 14173U);
  EXPECT_EQ(Get<"paperMargins">(env, 3), Get<"paperMargins">(env, 1)) << "a printable size below 0 is 0";
  EXPECT_EQ(Get<"paperSizeDots">(env, 1), 0U) << "and so is a size";
}

TEST_F(ValidateTest, PaperWithoutGeometryAndUnknownPaper) {
  Set<"dmPaperSize">(env, 512);
  Validate();
  EXPECT_EQ(Numbers<"paperMargins">(), (Expected{0, 0, 0, 0}));
  EXPECT_EQ(Get<"dmPaperWidth">(env), 0);
  Set<"dmPaperSize">(env, 4242);
  Validate();
  EXPECT_EQ(Get<"dmPaperSize">(env), 4242) << "the code stays";
  EXPECT_EQ(Get<"dmPaperWidth">(env), 2970) << "the sizes are those of the first paper";
}

TEST_F(ValidateTest, OutputPaperFollowsTheFamilyOfTheDocument) {
  Set<"ZoomCheck">(env, value::ZoomCheck::kOn);
  Set<"QXOutputPaperSize">(env, 9);
  Set<"lpOutputPaper">(env, 0x1000 | 9);
  Validate();
  EXPECT_EQ(Get<"lpOutputPaper">(env), value::lpOutputPaper::kA4);
  EXPECT_EQ(Get<"outputPaperWidth">(env), 2100);
  EXPECT_EQ(Numbers<"outputMarginsDots">(), (Expected{100, 100, 4860, 6914}));
  Set<"lpOutputPaper">(env, value::lpOutputPaper::kCustom2);
  Validate();
  EXPECT_EQ(Get<"UDMediaWidth">(env), 2099);
  EXPECT_EQ(Numbers<"outputSizeDots">(), (Expected{4960, 4960}));
}

TEST_F(ValidateTest, ResolutionIsRepairedAndFaxTakesItsOwn) {
  Set<"dmPrintQuality">(env, 777);
  Validate();
  EXPECT_EQ(Get<"dmPrintQuality">(env), 600);
  EXPECT_EQ(Get<"lpResolution">(env), value::lpResolution::kDpi600);

  Set<"lpOutput">(env, value::lpOutput::kFax);
  Set<"faxAddressCount">(env, 3);
  Set<"lpQuality">(env, value::lpQuality::kDpi200);
  Validate();
  EXPECT_EQ(Get<"dmYResolution">(env), 200);
  EXPECT_EQ(Get<"lpResolution">(env), value::lpResolution::kDpi600) << "the print resolution is kept";
  EXPECT_EQ(Get<"paperSizeDots">(env, 0), 1700U);
}

TEST_F(ValidateTest, FaxWithoutRecipientsDependsOnBookMode) {
  Set<"lpOutput">(env, value::lpOutput::kFax);
  Set<"dmPrintQuality">(env, 400);
  DriverEnv copy = env;
  Validate();
  EXPECT_EQ(Get<"dmPrintQuality">(env), 600);
  EXPECT_EQ(Get<"lpOutput">(env), value::lpOutput::kPrinter) << "it goes to the printer";
  env = copy;
  ASSERT_TRUE(SetBookModeStatus(env, 1));
  Validate();
  EXPECT_EQ(Get<"lpOutput">(env), value::lpOutput::kFax);
  EXPECT_EQ(Get<"dmPrintQuality">(env), 400) << "a choice that was confirmed as fax keeps its quality";
}

TEST_F(ValidateTest, ZoomFollowsAChangedPaperAndItsRange) {
  Set<"ZoomCheck">(env, value::ZoomCheck::kOn);
  Set<"Zoom">(env, 1000);
  Set<"QXOutputPaperSize">(env, 9);
  Set<"lpOutputPaper">(env, value::lpOutputPaper::kA4);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 100) << "out of range";
  Set<"dmPaperSize">(env, 8);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 69) << "A3 on A4";
  EXPECT_EQ(Get<"documentPaperSnapshot">(env), 8);
  EXPECT_EQ(Get<"uiZoomMode">(env), 1);
  Set<"Zoom">(env, 50);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 50) << "the user's own zoom stays while the paper stays";
  Set<"ZoomCheck">(env, value::ZoomCheck::kOff);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 100);
  EXPECT_EQ(Get<"lpOutputPaper">(env), value::lpOutputPaper::kA3);
}

TEST_F(ValidateTest, ZoomMakesRoomForTheBindingMargin) {
  Start(86);
  Set<"ZoomCheck">(env, value::ZoomCheck::kOn);
  Set<"QXOutputPaperSize">(env, 9);
  Set<"BindMargin_Check">(env, value::BindMargin_Check::kOn);
  Set<"Layout_Check2">(env, value::Layout_Check2::kOn);
  Set<"lpMarginMode">(env, value::lpMarginMode::kReduce);
  Set<"fMargin">(env, 20);
  Set<"bMargin">(env, 30);
  Set<"lpBindMargin">(env, 1);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 90) << "one-sided: (20152 - 2000) of 20152";
  Set<"dmDuplex">(env, 2);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 85) << "two-sided: the larger back margin counts";
  Set<"fMargin">(env, 250);
  Validate();
  EXPECT_EQ(Get<"Zoom">(env), 100) << "no room at all is out of range";
}

TEST_F(ValidateTest, ResolutionChangeDoublesAndHalvesTheZoom) {
  Set<"lpResolution">(env, 300);
  Set<"uiZoomMode">(env, 1);
  Set<"Zoom">(env, 120);
  Validate();
  EXPECT_EQ(Get<"ZoomCheck">(env), value::ZoomCheck::kOn);
  EXPECT_EQ(Get<"Zoom">(env), 60);
  EXPECT_EQ(Get<"lpResolution">(env), value::lpResolution::kDpi600);
}

TEST_F(ValidateTest, DuplexAndBindingPositionAgree) {
  struct Row {
    int16_t orientation, duplex;
    uint8_t position, type, expectedPosition, expectedType;
    int16_t expectedDuplex;
  };
  // Letter, fed long edge first: the automatic side is the left one in portrait, the top one in landscape.
  for (const Row& row :
       {Row{1, 2, 1, 1, 1, 2, 2}, Row{1, 2, 4, 1, 2, 2, 2}, Row{1, 2, 3, 1, 3, 2, 2}, Row{1, 3, 1, 1, 4, 2, 3},
        Row{1, 3, 2, 1, 4, 2, 3}, Row{1, 3, 4, 1, 4, 2, 3}, Row{2, 3, 1, 1, 2, 2, 3}, Row{2, 2, 1, 1, 1, 2, 2},
        Row{2, 3, 9, 1, 2, 2, 3}, Row{1, 3, 9, 1, 9, 2, 3}, Row{1, 3, 2, 3, 2, 3, 3}, Row{1, 7, 2, 3, 2, 1, 1},
        Row{1, 1, 2, 2, 2, 1, 1}}) {
    SCOPED_TRACE(testing::Message() << row.orientation << row.duplex << int{row.position} << int{row.type});
    Start(1);
    Set<"dmOrientation">(env, row.orientation);
    Set<"dmDuplex">(env, row.duplex);
    Set<"lpBindPosit">(env, row.position);
    Set<"lpPRNType">(env, row.type);
    Validate();
    EXPECT_EQ(Get<"lpBindPosit">(env), row.expectedPosition);
    EXPECT_EQ(Get<"lpPRNType">(env), row.expectedType);
    EXPECT_EQ(Get<"dmDuplex">(env), row.expectedDuplex);
  }
}

TEST_F(ValidateTest, BindingSideOfFoldedHalvedAndTurnedSheets) {
  const auto side = [&](auto&&... set) {
    Start(1);
    Set<"lpOutputPaper">(env, value::lpOutputPaper::kA4);
    (set(), ...);
    return int{ComputeBindingSide(env)};
  };
  EXPECT_EQ(side(), 2);
  EXPECT_EQ(side([&] { Set<"lpOutputPaper">(env, value::lpOutputPaper::kA3); }), 4);
  EXPECT_EQ(side([&] { Set<"lpOutputPaper">(env, 0x3000 | 8); }), 4) << "families count as their plain size";
  EXPECT_EQ(side([&] { Set<"dmOrientation">(env, 2); }), 4);
  EXPECT_EQ(side([&] { Set<"Nup_Check">(env, value::Nup_Check::kOn); }), 4) << "two pages turn the sheet";
  EXPECT_EQ(side([&] { Set<"lpOutputPaper">(env, value::lpOutputPaper::kA3); },
                 [&] { Set<"lpPRNType">(env, value::lpPRNType::kBooklet); }),
            2);
  EXPECT_EQ(side([&] { Set<"Fold_Check">(env, value::Fold_Check::kOn); }, [&] { Set<"lpFold">(env, 22); }), 4);
  EXPECT_EQ(side([&] { Set<"POD_OnePerSheet_Check">(env, value::POD_OnePerSheet_Check::kOn); }), 2)
      << "A4 halved from A3, turned: class 2 flipped";
  EXPECT_EQ(side([&] { Set<"lpOutputPaper">(env, 4242); }), 1);
  EXPECT_EQ(side([&] { Set<"lpBindPosit">(env, value::lpBindPosit::kRight); }), 3);
  EXPECT_EQ(ComputeBindMarginSide(env), 2);
}

TEST_F(ValidateTest, OverlayWithoutAFormIsOff) {
  for (const char16_t* name : {u"", u"HR_DEFAULT"}) {
    Set<"lpOverlay">(env, value::lpOverlay::kCreateForm);
    SetText<"overlayName">(env, name);
    Validate();
    EXPECT_EQ(Get<"lpOverlay">(env), value::lpOverlay::kNoOverlay);
  }
  Set<"lpOverlay">(env, value::lpOverlay::kCreateForm);
  SetText<"overlayName">(env, u"letterhead.vxf");
  Validate();
  EXPECT_EQ(Get<"lpOverlay">(env), value::lpOverlay::kCreateForm);
}

TEST_F(ValidateTest, ClosesWithMirrorAndConstants) {
  Set<"dmDefaultSource">(env, 258);
  Set<"dmCopies">(env, 5000);
  env.bytes[784] = 9;
  env.bytes[190] = 77;  // nobody's field of the public part
  Validate();
  EXPECT_EQ(std::memcmp(env.bytes.data(), env.bytes.data() + kPublicSize, kPublicSize), 0);
  EXPECT_EQ(Get<"lpMediaSource">(env), value::lpMediaSource::kTray3);
  EXPECT_EQ(Get<"dmCopies">(env), 999);
  EXPECT_EQ(Get<"renderCopyB">(env), 9);
  EXPECT_EQ(Get<"renderMode">(env), 2);
  EXPECT_EQ(env.bytes[190], 0);
}

/// Numbers of the fields that validation reads, at random; sizes of papers are within their range. A print resolution
/// that changes is left out: the zoom that goes with it may end after the output paper was settled by it.
DriverEnv RandomRecord(const DriverEnv& base, std::mt19937& random) {
  constexpr std::string_view kFields[] = {"dmFields",
                                          "dmPaperSize",
                                          "dmPaperLength",
                                          "dmPaperWidth",
                                          "dmPrintQuality",
                                          "dmDuplex",
                                          "dmOrientation",
                                          "dmCopies",
                                          "dmDefaultSource",
                                          "lpOutput",
                                          "faxAddressCount",
                                          "lpQuality",
                                          "Zoom",
                                          "ZoomCheck",
                                          "lpOutputPaper",
                                          "lpPRNType",
                                          "lpBindPosit",
                                          "QXOutputPaperSize",
                                          "uiZoomMode",
                                          "documentPaperSnapshot",
                                          "lpMarginMode",
                                          "BindMargin_Check",
                                          "Layout_Check2",
                                          "bMargin",
                                          "lpMediaSource",
                                          "lpLayout",
                                          "Nup_Check",
                                          "POD_OnePerSheet_Check"};
  constexpr uint16_t kValues[] = {0, 1, 2, 3, 8, 9, 257, 256, 513, 521, 2057, 200, 300, 600, 1200, 5000, 65535};
  DriverEnv env = base;
  for (auto changes = 1 + random() % 6; changes > 0; --changes) {
    const std::string_view name = kFields[random() % std::size(kFields)];
    const EnvField& field = *std::ranges::find(kEnvFields, name, &EnvField::name);
    auto value = random() % 3 == 0 ? static_cast<uint32_t>(random()) : uint32_t{kValues[random() % std::size(kValues)]};
    if (name.starts_with("dmPaper") && name != "dmPaperSize") value = 1 + value % 5000;
    std::memcpy(env.bytes.data() + field.offset, &value, field.ElementSize());
  }
  return env;
}

TEST_F(ValidateTest, ARecordIsValidAtOnceUnlessItsOwnSizeIsOutOfRange) {
  std::mt19937 random(5);
  Validate();
  const auto resolved = [&](const DriverEnv& source) {
    CallerRecord record(source);
    DriverEnv result = env;
    MergeRecord(resources.get(), ForeignEnv(record.data()), result);
    EXPECT_TRUE(ValidateEnv(resources.get(), &result, printer.get()));
    return result;
  };
  for (int run = 0; run < 20000; ++run) {
    DriverEnv source = RandomRecord(env, random);
    const uint16_t output = Get<"lpOutputPaper">(source);
    const int plain = output & ~0x1000;  // a family that is stripped may leave no paper, or a custom one
    if (plain != output && (plain == 0 || IsCustomPaper(plain))) continue;
    const DriverEnv once = resolved(source);
    ASSERT_EQ(Differences(once, resolved(once)), "") << run;
    for (const size_t side : {size_t{0}, size_t{1}}) {
      ASSERT_LT(Get<"paperSizeDots">(once, side), 1U << 24) << run;
      ASSERT_LT(Get<"outputSizeDots">(once, side), 1U << 24) << run;
    }
  }
}

TEST(FitZoomTest, DegenerateRectanglesGive100) {
  EXPECT_EQ(ComputeFitZoom({0, 5, 10, 5}, {0, 0, 100, 100}), 100);
  EXPECT_EQ(ComputeFitZoom({5, 0, 5, 10}, {0, 0, 100, 100}), 100);
  EXPECT_EQ(ComputeFitZoom({0, 0, 200, 100}, {0, 0, 100, 100}), 50);
}

}  // namespace
}  // namespace heron::test
