// Every allocation of every export fails once: the export fails, the caller's buffer stays, nothing leaks.
#include <cstdlib>
#include <new>

#include "entry/exports.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace {

thread_local int64_t fail_in = 0;  // the n-th allocation from now fails; 0: none
thread_local int64_t live = 0;     // blocks of this thread

void* Allocate(size_t size) {
  if (fail_in > 0 && --fail_in == 0) return nullptr;
  void* block = std::malloc(size == 0 ? 1 : size);
  live += block != nullptr;
  return block;
}

void Release(void* block) noexcept {
  live -= block != nullptr;
  std::free(block);
}

}  // namespace

void* operator new(size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](size_t size) { return ::operator new(size); }
void operator delete(void* block) noexcept { Release(block); }
void operator delete(void* block, size_t) noexcept { Release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Release(block); }
void operator delete[](void* block) noexcept { Release(block); }
void operator delete[](void* block, size_t) noexcept { Release(block); }

namespace heron::test {
namespace {

using namespace platform;

class AllocationTest : public DriverTest {
 protected:
  /// Fails allocation 1, 2, 3 ... of `call` until it succeeds. `call` gives true on success; `output` must stay while it fails.
  template <typename Call>
  void Sweep(std::vector<uint8_t>& output, Call&& call) {
    ASSERT_TRUE(call());  // warm: what is cached for good is there
    std::vector<uint8_t> before(output.size(), 0xEE);
    for (int64_t n = 1; n < 2000; ++n) {
      output = before;
      const int64_t blocks = live;
      fail_in = n;
      const bool done = call();
      const bool reached = fail_in == 0;
      fail_in = 0;
      ASSERT_EQ(live, blocks) << "allocation " << n;
      if (!reached) {
        ASSERT_TRUE(done);
        EXPECT_GT(n, 1) << "nothing was ever allocated";
        return;
      }
      if (!done) {
        ASSERT_EQ(output, before) << "allocation " << n;
      }
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
