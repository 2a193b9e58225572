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
#include "support/named_values.h"
#include "support/records.h"
#include "support/words.h"

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
  static const EnvField& Named(std::string_view name) {
    const auto* const field = std::ranges::find(kEnvFields, name, &EnvField::name);
    EXPECT_NE(field, std::end(kEnvFields)) << name;
    return *field;
  }
  /// Writes "dmPaperSize=256 ZoomCheck=1", values by name where the field has a control.
  void Put(const std::string& fields) {
    ForEachWord(fields, [&](std::string_view name, std::string_view word) {
      const bool is_number = word.find_first_not_of("-0123456789") == std::string_view::npos;
      const int value = is_number ? std::stoi(std::string(word)) : ValueNamed(ControlNamed(name), word);
      std::memcpy(env.bytes.data() + Named(name).offset, &value, Named(name).ElementSize());
    });
  }
  void Validate(const std::string& fields = {}) {
    Put(fields);
    ASSERT_TRUE(ValidateEnv(resources.get(), &env, printer.get()));
  }
  /// The fields after validation, "dmCopies=999 paperSizeDots=4960,7014".
  std::string Held(const std::string& names) const {
    std::string text;
    for (const std::string& name : Words(names)) {
      const EnvField& field = Named(name);
      text += (text.empty() ? "" : " ") + name + "=";
      for (size_t i = 0; i < field.length; ++i) {
        uint32_t value = 0;
        std::memcpy(&value, env.bytes.data() + field.offset + i * field.ElementSize(), field.ElementSize());
        text += (i == 0 ? "" : ",") + std::to_string(value);
      }
    }
    return text;
  }
  DriverEnv env;
};

constexpr uint32_t kSizeFields = DM_PAPERLENGTH | DM_PAPERWIDTH;

TEST_F(ValidateTest, NullResourcesTouchNothing) {
  const DriverEnv before = env;
  EXPECT_FALSE(ValidateEnv(nullptr, &env, printer.get()));
  EXPECT_EQ(Differences(before, env), "");
}

TEST_F(ValidateTest, PlainPaperGeometryAt600Dpi) {
  Start(86);
  Validate();
  EXPECT_EQ(Held("paperMargins paperMarginsDots paperSizeDots outputMargins outputMarginsDots"),
            "paperMargins=424,424,20576,29276 paperMarginsDots=100,100,4860,6914 paperSizeDots=4960,7014 "
            "outputMargins=424,424,20576,29276 outputMarginsDots=100,100,4860,6914");
  EXPECT_EQ(Held("outputPaperWidth UDPaperWidth"), "outputPaperWidth=2100 UDPaperWidth=0");
  EXPECT_EQ(Get<"dmFields">(env) & kSizeFields, 0U);
}

TEST_F(ValidateTest, UserPaperTakesTheCallersSizeOrTheStoredOne) {
  Validate("dmPaperSize=256 dmPaperWidth=2100 dmPaperLength=2970");
  EXPECT_EQ(Held("paperMargins paperMarginsDots paperMarginsDotsCopy paperSizeDots UDPaperWidth"),
            "paperMargins=424,424,20576,29276 paperMarginsDots=100,100,4860,6915 "
            "paperMarginsDotsCopy=100,100,4860,6915 paperSizeDots=4960,7015 UDPaperWidth=2100");
  EXPECT_EQ(Get<"dmFields">(env) & kSizeFields, kSizeFields);
  for (const char* half : {"dmPaperWidth=0", "dmPaperWidth=2100 dmPaperLength=0"}) {
    Validate(half);  // half a size is none: the stored 8267 thousandths of an inch count
    EXPECT_EQ(Held("dmPaperWidth dmPaperLength"), "dmPaperWidth=2099 dmPaperLength=2099");
  }
  Validate("dmPaperWidth=3300 dmPaperLength=2000");  // on a source that prints 297 mm: 1650 left, 1650 right
  EXPECT_EQ(Held("paperMargins"), "paperMargins=1650,424,31350,19576");
}

TEST_F(ValidateTest, SizesOutOfRangeAreStoredAsTheDefaultButUsedAsGiven) {
  Validate("dmPaperSize=256 dmPaperWidth=6000 dmPaperLength=-5");
  EXPECT_EQ(Held("UDPaperWidth dmPaperLength paperSizeDots"),
            "UDPaperWidth=2100 dmPaperLength=2100 paperSizeDots=14173,0");
  EXPECT_EQ(Get<"paperMargins">(env, 3), Get<"paperMargins">(env, 1)) << "a printable size below 0 is 0";
}

TEST_F(ValidateTest, PaperWithoutGeometryAndUnknownPaper) {
  Validate("dmPaperSize=512");
  EXPECT_EQ(Held("paperMargins dmPaperWidth"), "paperMargins=0,0,0,0 dmPaperWidth=0");
  Validate("dmPaperSize=4242");
  EXPECT_EQ(Held("dmPaperSize dmPaperWidth"), "dmPaperSize=4242 dmPaperWidth=2970") << "the sizes of the first paper";
}

TEST_F(ValidateTest, OutputPaperFollowsTheFamilyOfTheDocument) {
  Validate("ZoomCheck=1 QXOutputPaperSize=9 lpOutputPaper=4105");
  EXPECT_EQ(Held("lpOutputPaper outputPaperWidth outputMarginsDots"),
            "lpOutputPaper=9 outputPaperWidth=2100 outputMarginsDots=100,100,4860,6914");
  Validate("lpOutputPaper=Custom2");
  EXPECT_EQ(Held("UDMediaWidth outputSizeDots"), "UDMediaWidth=2099 outputSizeDots=4960,4960");
}

TEST_F(ValidateTest, ResolutionIsRepairedAndFaxTakesItsOwn) {
  Validate("dmPrintQuality=777");
  EXPECT_EQ(Held("dmPrintQuality lpResolution"), "dmPrintQuality=600 lpResolution=600");
  Validate("lpOutput=Fax faxAddressCount=3 lpQuality=200");
  EXPECT_EQ(Held("dmYResolution lpResolution"), "dmYResolution=200 lpResolution=600") << "the print resolution is kept";
  EXPECT_EQ(Get<"paperSizeDots">(env, 0), 1700U);
}

TEST_F(ValidateTest, FaxWithoutRecipientsDependsOnBookMode) {
  Put("lpOutput=Fax dmPrintQuality=400");
  const DriverEnv copy = env;
  Validate();
  EXPECT_EQ(Held("dmPrintQuality lpOutput"), "dmPrintQuality=600 lpOutput=2") << "it goes to the printer";
  env = copy;
  ASSERT_TRUE(SetBookModeStatus(env, 1));
  Validate();
  EXPECT_EQ(Held("dmPrintQuality lpOutput"), "dmPrintQuality=400 lpOutput=1")
      << "a choice that was confirmed as fax keeps its quality";
}

TEST_F(ValidateTest, ZoomFollowsPapersMarginsAndResolution) {
  struct Case {
    const char* fields;
    const char* held;
  };
  const auto expect = [&](std::initializer_list<Case> cases) {
    for (const Case& c : cases) {
      Validate(c.fields);
      std::string names;
      ForEachWord(c.held, [&](std::string_view name, std::string_view) { names.append(name).append(" "); });
      EXPECT_EQ(Held(names), c.held) << c.fields;
    }
  };
  expect({{"ZoomCheck=1 Zoom=1000 QXOutputPaperSize=9 lpOutputPaper=A4", "Zoom=100"},  // out of range
          {"dmPaperSize=8", "Zoom=69 documentPaperSnapshot=8 uiZoomMode=1"},           // A3 on A4
          {"Zoom=50", "Zoom=50"},  // the user's own zoom stays while the paper stays
          {"ZoomCheck=0", "Zoom=100 lpOutputPaper=8"}});
  Start(86);
  expect({{"ZoomCheck=1 QXOutputPaperSize=9 BindMargin_Check=On Layout_Check2=On lpMarginMode=Reduce fMargin=20 "
           "bMargin=30 "
           "lpBindMargin=1",
           "Zoom=90"},                    // one-sided: (20152 - 2000) of 20152
          {"dmDuplex=2", "Zoom=85"},      // two-sided: the larger back margin counts
          {"fMargin=250", "Zoom=100"}});  // no room at all is out of range
  Start(1);
  expect({{"lpResolution=300 uiZoomMode=1 Zoom=120", "ZoomCheck=1 Zoom=60 lpResolution=600"}});
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
  for (const auto& [name, mode] : {std::pair(u"", 1), {u"HR_DEFAULT", 1}, {u"letterhead.vxf", 2}}) {
    SetText<"overlayName">(env, name);
    Validate("lpOverlay=2");
    EXPECT_EQ(Get<"lpOverlay">(env), mode);
  }
}

TEST_F(ValidateTest, ClosesWithMirrorAndConstants) {
  env.bytes[784] = 9;
  env.bytes[190] = 77;  // in no field of the public part
  Validate("dmDefaultSource=258 dmCopies=5000");
  EXPECT_EQ(std::memcmp(env.bytes.data(), env.bytes.data() + kPublicSize, kPublicSize), 0);
  EXPECT_EQ(Held("lpMediaSource dmCopies renderCopyB renderMode"),
            "lpMediaSource=258 dmCopies=999 renderCopyB=9 renderMode=2");
  EXPECT_EQ(env.bytes[190], 0);
}

/// Numbers of the fields that validation reads, at random; sizes of papers are within their range. A print resolution
/// that changes is left out: the zoom that goes with it may end after the output paper was settled by it.
DriverEnv RandomRecord(const DriverEnv& base, std::mt19937& random) {
  static const std::vector<std::string> fields = Words(
      "dmFields dmPaperSize dmPaperLength dmPaperWidth dmPrintQuality dmDuplex dmOrientation dmCopies dmDefaultSource "
      "lpOutput faxAddressCount lpQuality Zoom ZoomCheck lpOutputPaper lpPRNType lpBindPosit QXOutputPaperSize "
      "uiZoomMode documentPaperSnapshot lpMarginMode BindMargin_Check Layout_Check2 bMargin lpMediaSource lpLayout "
      "Nup_Check POD_OnePerSheet_Check");
  constexpr uint16_t kValues[] = {0, 1, 2, 3, 8, 9, 257, 256, 513, 521, 2057, 200, 300, 600, 1200, 5000, 65535};
  DriverEnv env = base;
  for (auto changes = 1 + random() % 6; changes > 0; --changes) {
    const std::string& name = fields[random() % fields.size()];
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
