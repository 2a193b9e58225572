// Merging callers' records: each public field at its edges, private parts only whole, device options never.
#include "settings/merge.h"

#include "generated/values.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace heron::test {
namespace {

using namespace platform;

class MergeTest : public DriverTest {
 protected:
  MergeTest() { BuildDefaultEnv(resources.get(), &base, u"P1", printer.get()); }

  /// What merging `record` changes, and the result in `merged`.
  std::string Merge(CallerRecord& record) {
    merged = base;
    MergeRecord(resources.get(), ForeignEnv(record.data()), merged);
    return Differences(base, merged);
  }

  DriverEnv base;
  DriverEnv merged;
};

TEST_F(MergeTest, OnlyNamedFieldsCount) {
  CallerRecord record;
  record.Set<"dmOrientation">(2).Set<"dmCopies">(7).Set<"dmPaperSize">(8);
  EXPECT_EQ(Merge(record), "");
  record.Set<"dmFields">(DM_ORIENTATION);
  EXPECT_EQ(Merge(record), "dmOrientation");
}

TEST_F(MergeTest, ValuesThatTheModelHasNotAreIgnored) {
  CallerRecord record;
  record.Ask<"dmOrientation">(DM_ORIENTATION, 3).Ask<"dmPaperSize">(DM_PAPERSIZE, 4242);
  record.Ask<"dmPrintQuality">(DM_PRINTQUALITY, 777).Ask<"dmDefaultSource">(DM_DEFAULTSOURCE, 3);
  record.Ask<"dmDuplex">(DM_DUPLEX, 7);
  EXPECT_EQ(Merge(record), "");
}

TEST_F(MergeTest, NamedPaperBringsItsSizeUnlessSizesAreNamed) {
  CallerRecord record;
  record.Ask<"dmPaperSize">(DM_PAPERSIZE, 9);
  EXPECT_EQ(Merge(record), "dmPaperSize dmPaperLength dmPaperWidth");
  EXPECT_EQ(Get<"dmPaperWidth">(merged), 2100);
  EXPECT_EQ(Get<"dmPaperLength">(merged), 2970);
  record.Ask<"dmPaperWidth">(DM_PAPERWIDTH, 1234).Ask<"dmPaperLength">(DM_PAPERLENGTH, 2345);
  EXPECT_EQ(Merge(record), "dmPaperSize dmPaperLength dmPaperWidth");
  EXPECT_EQ(Get<"dmPaperSize">(merged), 9);
  EXPECT_EQ(Get<"dmPaperWidth">(merged), 1234);
}

TEST_F(MergeTest, SizesAloneSelectThePaper) {
  struct Row {
    int16_t width, length, paper;
  };
  // 983 x 2253 is what the dots of an envelope No. 9 give back; its own size is 984 x 2254.
  constexpr Row kRows[] = {{2100, 2970, 9},   {2970, 2100, 9},   {984, 2254, 19}, {983, 2253, 19},   {2253, 983, 19},
                           {2100, 2100, 513}, {1234, 2345, 256}, {0, 0, 256},     {-2100, 2970, 256}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.width << " x " << row.length);
    CallerRecord record;
    record.Ask<"dmPaperWidth">(DM_PAPERWIDTH, row.width).Set<"dmPaperLength">(row.length);
    Merge(record);
    EXPECT_EQ(Get<"dmPaperSize">(merged), row.paper);
    EXPECT_EQ(Get<"dmPaperWidth">(merged), row.width);
    EXPECT_EQ(Get<"dmPaperLength">(merged), row.length);
  }
}

TEST_F(MergeTest, CopiesKeepTheirRange) {
  for (const auto& [given, result] : {std::pair<int16_t, int16_t>{5000, 999}, {999, 999}, {0, 1}, {-3, 1}, {12, 12}}) {
    CallerRecord record;
    record.Ask<"dmCopies">(DM_COPIES, given);
    Merge(record);
    EXPECT_EQ(Get<"dmCopies">(merged), result) << given;
  }
}

TEST_F(MergeTest, FieldsBeyondTheDeclaredSizeDoNotCount) {
  for (const uint16_t size : std::initializer_list<uint16_t>{72, 76, 77, 78, 86, 87, 88}) {
    CallerRecord record(size);
    record.Ask<"dmOrientation">(DM_ORIENTATION, 2).Ask<"dmCopies">(DM_COPIES, 3);
    const std::string expected = size >= 88 ? "dmOrientation dmCopies" : size >= 78 ? "dmOrientation" : "";
    EXPECT_EQ(Merge(record), expected) << size;
  }
}

TEST_F(MergeTest, PrivatePartCountsOnlyIfTheWholeFormatAgrees) {
  DriverEnv own = base;
  Set<"lpStaple">(own, value::lpStaple::kUpperRight);
  CallerRecord record(own);
  EXPECT_EQ(Merge(record), "lpStaple");
  record.Set<"dmDriverVersion">(0x4300);
  EXPECT_EQ(Merge(record), "");
  EXPECT_FALSE(MergeWhole(resources.get(), ForeignEnv(nullptr), merged));
}

TEST_F(MergeTest, DeviceOptionsAreTheListedFieldsAndNoOthers) {
  DriverEnv saved = base;
  for (uint8_t& byte : saved.bytes) byte ^= 0x5A;
  merged = base;
  CopyDeviceOptions(saved, merged);
  std::string expected = "lpPDLType lpCoverSheetTray";
  for (uint32_t at = 2774; at < 2794; ++at) {
    for (const EnvField& field : kEnvFields) {
      if (field.offset == at) expected.append(" ").append(field.name);
    }
  }
  expected += " deviceInfoText Secur_Check lpPIPunchFoldUnit lpLCStackerUnit szDevIPAddress";
  EXPECT_EQ(Differences(base, merged), expected);
}

}  // namespace
}  // namespace heron::test
