// What the platform's calls cost on the real store, warm. The driver's shortest call makes some ten of them, so each
// has a budget: opening a key 6 us, reading a value 8 us, a record of printer data 10 us, the queue 10 us; 250 values
// in a batch 5 ms.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/sqlite/store.h"

namespace heron {
namespace {

using namespace platform;

/// A home with one queue, its record, and a key with values, in a temporary folder.
struct Home {
  Home() {
    std::string name = (std::filesystem::temp_directory_path() / "heron-bench-XXXXXX").native();
    path = mkdtemp(name.data());
    backend = store::InstallStoreBackend(path);
    AddQueue({.name = u"Bench",
              .server = u"",
              .port = u"FILE:",
              .driver = u"Driver",
              .dataFile = u"/opt/heron/driver/data",
              .devMode = {}});
    printer = OpenPrinterFor(u"Bench", PRINTER_ALL_ACCESS);
    const std::vector<uint8_t> record(3328, 0x5A);
    SetPrinterDataW(printer.get(), u"HERON NT", REG_BINARY, record.data(), 3328);
    key = CreateKey(HKEY_CURRENT_USER, kPath);
    RegSetValueExW(key.get(), u"DriverVersion", REG_DWORD, record.data(), 4);
  }
  ~Home() {
    key.reset();
    printer.reset();
    backend.reset();
    std::filesystem::remove_all(path);
  }
  static constexpr char16_t kPath[] = u"Software\\Varnell\\PCL\\Varnell 70/36MX-2CHSUS\\Bench";

  std::filesystem::path path;
  std::unique_ptr<store::StoreBackend> backend;
  UniquePrinter printer;
  UniqueKey key;
};

void OpenKey(benchmark::State& state) {
  const Home home;
  for (auto _ : state) benchmark::DoNotOptimize(platform::OpenKey(HKEY_CURRENT_USER, Home::kPath, KEY_READ));
}
BENCHMARK(OpenKey);

void QueryValue(benchmark::State& state) {
  const Home home;
  uint8_t data[4];
  for (auto _ : state) {
    DWORD size = sizeof data;
    if (RegQueryValueExW(home.key.get(), u"DriverVersion", nullptr, data, &size) != 0) state.SkipWithError("not read");
  }
}
BENCHMARK(QueryValue);

void PrinterDataRecord(benchmark::State& state) {
  const Home home;
  std::vector<uint8_t> data(3328);
  for (auto _ : state) {
    DWORD needed = 0;
    if (GetPrinterDataW(home.printer.get(), u"HERON NT", nullptr, data.data(), 3328, &needed) != 0) {
      state.SkipWithError("not read");
    }
  }
}
BENCHMARK(PrinterDataRecord);

void PrinterInfo2(benchmark::State& state) {
  const Home home;
  std::vector<uint8_t> data(4096);
  for (auto _ : state) {
    DWORD needed = 0;
    if (GetPrinterW(home.printer.get(), 2, data.data(), 4096, &needed) != 1) state.SkipWithError("not read");
  }
}
BENCHMARK(PrinterInfo2);

void Batch250(benchmark::State& state) {
  const Home home;
  uint32_t value = 0;
  for (auto _ : state) {
    RegistryBatch batch(HKEY_CURRENT_USER);
    for (int i = 0; i < 250; ++i, ++value) {
      const std::u16string name(1, static_cast<char16_t>(u'a' + i));
      RegSetValueExW(home.key.get(), name.c_str(), REG_DWORD, reinterpret_cast<const uint8_t*>(&value), 4);
    }
    if (!batch.Keep()) state.SkipWithError("not kept");
  }
}
BENCHMARK(Batch250)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace heron
