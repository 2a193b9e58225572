// The exported functions: sizes, refusals, the sheetless call with its repairs, and the spreadsheet program's own
// rules.
#include "entry/exports.h"

#include "generated/values.h"
#include "settings/defaults.h"
#include "settings/printer_data.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace heron::test {
namespace {

using namespace platform;

class ExportsTest : public DriverTest {
 protected:
  ExportsTest() { BuildDefaultEnv(resources.get(), &defaults, u"P1", printer.get()); }

  DriverEnv Resolved(CallerRecord* input = nullptr) {
    DriverEnv env;
    EXPECT_EQ(DrvDocumentProperties(nullptr, printer.get(), nullptr, Out(env), input ? input->devmode() : nullptr,
                                    DM_COPY | DM_PROMPT),
              1);
    return env;
  }
  static DEVMODEW* Out(DriverEnv& env) { return reinterpret_cast<DEVMODEW*>(env.bytes.data()); }

  LONG Sheetless(DWORD mode, DEVMODEW* in, DEVMODEW* out) {
    header = {.cbSize = sizeof header,
              .Reserved = 0,
              .hPrinter = printer.get(),
              .pszPrinterName = nullptr,
              .pdmIn = in,
              .pdmOut = out,
              .cbOut = 0,
              .fMode = mode};
    const LONG result = DrvDocumentPropertySheets(nullptr, reinterpret_cast<LPARAM>(&header));
    EXPECT_EQ(header.pszPrinterName, nullptr);
    EXPECT_EQ(header.pdmIn, in);
    return result;
  }

  DriverEnv defaults;
  DOCUMENTPROPERTYHEADER header{};
};

TEST_F(ExportsTest, SizesAndConstantAnswersNeedNothing) {
  EXPECT_EQ(DrvDocumentProperties(nullptr, nullptr, nullptr, nullptr, nullptr, 0), 3328);
  EXPECT_EQ(QX_GetEnvExtraSize(), 1901U);
  EXPECT_EQ(PrinterProperties(nullptr, nullptr), 1);
  EXPECT_EQ(DevQueryPrintEx(nullptr), 1);
  EXPECT_EQ(DllInitialize(nullptr, 7, nullptr), 1);
  EXPECT_EQ(DrvDevicePropertySheets(nullptr, 0), -1);
  EXPECT_EQ(DrvDocumentPropertySheets(nullptr, 0), -1);
}

TEST_F(ExportsTest, DocumentPropertiesRefusesWithoutTouchingTheOutput) {
  DriverEnv env;
  env.bytes.fill(0xEE);
  const DriverEnv before = env;
  EXPECT_EQ(DrvDocumentProperties(nullptr, printer.get(), nullptr, nullptr, nullptr, DM_COPY), -1);
  EXPECT_EQ(DrvDocumentProperties(nullptr, nullptr, nullptr, Out(env), nullptr, DM_COPY), -1);
  EXPECT_EQ(DrvAdvancedDocumentProperties(nullptr, printer.get(), nullptr, nullptr, nullptr), -1);
  EXPECT_EQ(DrvAdvancedDocumentProperties(nullptr, nullptr, nullptr, Out(env), nullptr), -1);
  EXPECT_EQ(env.bytes, before.bytes);
  EXPECT_EQ(DrvDocumentProperties(nullptr, printer.get(), nullptr, nullptr, nullptr, DM_PROMPT), 1);
}

TEST_F(ExportsTest, QueueRecordCallersRecordAndDeviceOptionsCountInThisOrder) {
  DriverEnv queue_record = defaults;
  Set<"dmCopies">(queue_record, 5);
  Set<"dmOrientation">(queue_record, 2);
  Set<"lpStaple">(queue_record, value::lpStaple::kTwoStaples);
  Set<"lpSourceUnit">(queue_record, value::lpSourceUnit::kTray3And4AndLarge);
  ASSERT_EQ(platform::AddQueue({.name = u"P1",
                                .server = u"",
                                .port = u"FILE:",
                                .driver = u"Varnell 70/36MX-2",
                                .dataFile = u"/driver/varnell.dat",
                                .devMode = {queue_record.bytes.begin(), queue_record.bytes.end()}}),
            kErrorSuccess);
  printer = OpenPrinterFor(u"P1", PRINTER_ALL_ACCESS);
  DriverEnv saved = defaults;
  Set<"lpSourceUnit">(saved, value::lpSourceUnit::kTray3);
  ASSERT_TRUE(SavePrinterEnv(printer.get(), saved));

  CallerRecord caller;
  caller.Ask<"dmCopies">(DM_COPIES, 7);
  const DriverEnv env = Resolved(&caller);
  EXPECT_EQ(Get<"dmCopies">(env), 7) << "the caller's over the queue's";
  EXPECT_EQ(Get<"dmOrientation">(env), 2) << "the queue's over the defaults";
  EXPECT_EQ(Get<"lpStaple">(env), value::lpStaple::kTwoStaples);
  EXPECT_EQ(Get<"lpSourceUnit">(env), value::lpSourceUnit::kTray3) << "device options come from the saved record alone";
}

TEST_F(ExportsTest, AdvancedGivesTheSameRecord) {
  DriverEnv env;
  EXPECT_EQ(DrvAdvancedDocumentProperties(nullptr, printer.get(), nullptr, Out(env), nullptr), 1);
  EXPECT_EQ(Differences(env, Resolved()), "");
}

TEST_F(ExportsTest, SheetlessAnswersSizesBeforeItWrites) {
  DriverEnv env;
  env.bytes.fill(0xEE);
  const DriverEnv before = env;
  EXPECT_EQ(Sheetless(0, nullptr, Out(env)), 3328);
  EXPECT_EQ(header.cbOut, 3328U);
  EXPECT_EQ(Sheetless(DM_COPY, nullptr, nullptr), 3328);
  EXPECT_EQ(Sheetless(DM_MODIFY, nullptr, Out(env)), 1);
  EXPECT_EQ(env.bytes, before.bytes);
  EXPECT_EQ(Sheetless(DM_COPY, nullptr, Out(env)), 1);
  EXPECT_EQ(Differences(env, Resolved()), "");
}

TEST_F(ExportsTest, SheetlessKeepsToTheCallersFormat) {
  CallerRecord input(188, 16, 0x320);
  input.Ask<"dmOrientation">(DM_ORIENTATION, 2).Set<"dmColor">(2);
  CallerRecord output(188, 16, 0x320);
  ASSERT_EQ(Sheetless(DM_COPY, input.devmode(), output.devmode()), 1);
  const ForeignEnv out(output.data());
  EXPECT_EQ(out.Public<"dmOrientation">(), 2);
  EXPECT_EQ(out.Public<"dmColor">(), 1);
  EXPECT_EQ(out.PrivateSize(), 16);

  CallerRecord unknown(100, 0, 0);
  const std::vector<uint8_t> before = output.bytes();
  EXPECT_EQ(Sheetless(DM_COPY, unknown.devmode(), output.devmode()), -1);
  EXPECT_EQ(output.bytes(), before);
}

TEST_F(ExportsTest, ResolvingWithoutPrinterDataFailsCleanly) {
  backend.FailCall(1, kErrorGenFailure, true);
  DriverEnv env;
  env.bytes.fill(0xEE);
  const DriverEnv before = env;
  EXPECT_EQ(DrvDocumentProperties(nullptr, printer.get(), nullptr, Out(env), nullptr, DM_COPY), -1);
  EXPECT_EQ(Sheetless(DM_COPY, nullptr, Out(env)), -1);
  EXPECT_EQ(env.bytes, before.bytes);
  backend.FailCall(0, 0);
}

class ExcelTest : public ExportsTest {
 protected:
  ExcelTest() { backend.processFileName = u"/opt/office/Excel.exe"; }
  static constexpr DWORD kQuality = DM_PRINTQUALITY | DM_YRESOLUTION;
  static constexpr DWORD kJob = DM_COPIES | DM_DUPLEX;
};

TEST_F(ExcelTest, FieldsFollowTheLastConfirmedChoice) {
  struct Row {
    uint32_t status;
    DWORD present, absent;
  };
  for (const Row& row : {Row{0, kJob, kQuality}, Row{1, 0, kJob | kQuality}, Row{2, kJob, kQuality}}) {
    SCOPED_TRACE(row.status);
    ASSERT_TRUE(SetBookModeStatus(defaults, row.status));
    ASSERT_TRUE(SetBookModeResolution(u"P1", 400));
    DriverEnv env;
    ASSERT_EQ(Sheetless(DM_COPY, nullptr, Out(env)), 1);
    EXPECT_EQ(Get<"dmFields">(env) & row.present, row.present);
    EXPECT_EQ(Get<"dmFields">(env) & row.absent, 0U);
    if (row.status == 0) continue;
    EXPECT_EQ(Get<"lpOutput">(env), row.status);
    EXPECT_EQ(Get<"dmPrintQuality">(env), 400);
    const uint8_t* mirror = FieldBytes<"publicMirror">(env);
    EXPECT_EQ(std::memcmp(mirror + 86, env.bytes.data() + 86, 12), 0) << "copies to vertical resolution are mirrored";
  }
}

TEST_F(ExcelTest, InputOfAnotherFormatIsReplacedByAnOwnRecordForTheCall) {
  CallerRecord input(188, 16, 0x320);
  input.Ask<"dmOrientation">(DM_ORIENTATION, 2);
  DriverEnv env;
  ASSERT_EQ(Sheetless(DM_UPDATE, input.devmode(), Out(env)), 1);
  EXPECT_TRUE(IsOwnEnv(env.bytes.data())) << "the answer has our format, not the caller's";
  EXPECT_EQ(Get<"dmOrientation">(env), 2);
}

TEST_F(ExcelTest, AWholeRecordOfTheDriverIsAnswered) {
  ASSERT_TRUE(SetBookModeStatus(defaults, 1));
  backend.processFileName = u"/opt/EXCEL.EXE";
  CallerRecord whole(defaults);
  DriverEnv env;
  ASSERT_EQ(Sheetless(DM_COPY, whole.devmode(), Out(env)), 1);
  EXPECT_EQ(Get<"dmCopies">(env), 1);
  EXPECT_EQ(Get<"dmDuplex">(env), 1);
}

}  // namespace
}  // namespace heron::test
