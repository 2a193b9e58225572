// Every allocation of every export fails once: the export fails, the caller's buffer stays, nothing leaks.
#include "entry/exports.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/failing_new.h"
#include "support/records.h"

namespace heron::test {
namespace {

using namespace platform;

class AllocationTest : public DriverTest {
 protected:
  /// Runs `call` with room for 0, 1, 2 ... allocations until it needs no more. `call` gives true on success; `output`
  /// must stay while it fails.
  template <typename Call>
  void Sweep(std::vector<uint8_t>& output, Call&& call) {
    ASSERT_TRUE(call());  // warm: what is cached for good is there
    const std::vector<uint8_t> before(output.size(), 0xEE);
    for (int64_t left = 0; left < 2000; ++left) {
      output = before;
      const int64_t blocks = LiveBlocks();
      bool done = false;
      bool refused = false;
      {
        const FailingNew failing(left);
        done = call();
        refused = failing.Refused();
      }
      ASSERT_EQ(LiveBlocks(), blocks) << left;
      if (!refused) {
        ASSERT_TRUE(done);
        EXPECT_GT(left, 0) << "nothing was ever allocated";
        return;
      }
      ASSERT_TRUE(done || output == before) << left;
    }
    FAIL() << "never finished";
  }

  static DEVMODEW* Out(std::vector<uint8_t>& bytes) { return reinterpret_cast<DEVMODEW*>(bytes.data()); }
};

TEST_F(AllocationTest, DocumentProperties) {
  std::vector<uint8_t> out(kEnvSize);
  CallerRecord input;
  input.Ask<"dmPaperSize">(DM_PAPERSIZE, 513);
  Sweep(out, [&] {
    return DrvDocumentProperties(nullptr, printer.get(), nullptr, Out(out), input.devmode(), DM_COPY) == 1;
  });
}

TEST_F(AllocationTest, SheetlessCallOfTheSpreadsheetProgram) {
  backend.processFileName = u"EXCEL.EXE";
  std::vector<uint8_t> out(kEnvSize);
  CallerRecord input(188, 100, 0x320);
  Sweep(out, [&] {
    DOCUMENTPROPERTYHEADER header{.cbSize = sizeof header,
                                  .Reserved = 0,
                                  .hPrinter = printer.get(),
                                  .pszPrinterName = nullptr,
                                  .pdmIn = input.devmode(),
                                  .pdmOut = Out(out),
                                  .cbOut = 0,
                                  .fMode = DM_COPY};
    const bool done = DrvDocumentPropertySheets(nullptr, reinterpret_cast<LPARAM>(&header)) == 1;
    EXPECT_EQ(header.pdmIn, input.devmode());
    EXPECT_EQ(header.pszPrinterName, nullptr);
    return done;
  });
}

TEST_F(AllocationTest, DriverDefault) {
  std::vector<uint8_t> out(kEnvSize);
  char16_t name[] = u"P1";
  Sweep(out, [&] {
    DWORD needed = kEnvSize;
    return DrvConvertDevMode(name, nullptr, Out(out), &needed, CDM_DRIVER_DEFAULT) == 1;
  });
}

TEST_F(AllocationTest, PaperNames) {
  std::vector<uint8_t> out(64 * 64 * sizeof(char16_t));
  Sweep(out, [&] {
    return DrvDeviceCapabilities(printer.get(), nullptr, 16, out.data(), nullptr) != static_cast<DWORD>(-1);
  });
}

TEST_F(AllocationTest, PrinterEvent) {
  std::vector<uint8_t> out;
  char16_t name[] = u"P1";
  Sweep(out, [&] { return DrvPrinterEvent(name, PRINTER_EVENT_INITIALIZE, 0, 0) == 1; });
}

}  // namespace
}  // namespace heron::test
