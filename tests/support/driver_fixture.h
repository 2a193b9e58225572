// The fixture of most tests of the driver: a backend in memory, a queue "P1" whose driver directory holds a resource
// module with a few texts, an open handle of the queue with full access, and a resource context of country 1.
//
// Tests change `backend` freely (country, code page, process, rights, texts); `Reopen` follows a change of country.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/memory/memory_backend.h"

namespace heron::test {

inline constexpr char16_t kDriverFolder[] = u"/driver/";
inline constexpr char16_t kResourceModule[] = u"/driver/TVOR6T1.DLL";

class DriverTest : public ::testing::Test {
 protected:
  DriverTest() {
    auto& texts = backend.modules[kResourceModule];
    for (uint32_t n = 0; n < 10; ++n) {
      texts[21550 + n] =
          u"Custom " + std::u16string(n == 9 ? u"10" : std::u16string(1, static_cast<char16_t>(u'1' + n)));
    }
    texts[48010] = u"A3";
    texts[48011] = u"A4";
    texts[48020] = u"Letter";
    AddQueue(u"P1");
    printer = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
    RefreshDriverDirectory(printer.get());
    Reopen(1);
  }

  static void AddQueue(const std::u16string& name) {
    EXPECT_EQ(platform::AddQueue({.name = name,
                                  .server = u"",
                                  .port = u"FILE:",
                                  .driver = u"Varnell 70/36MX-2",
                                  .dataFile = std::u16string(kDriverFolder) + u"varnell.dat",
                                  .devMode = {}}),
              platform::kErrorSuccess);
  }

  /// Opens the resources anew for `country`, which also becomes the locale's.
  void Reopen(uint32_t country) {
    const std::string digits = std::to_string(country);
    backend.country.assign(digits.begin(), digits.end());
    resources.reset(OpenResourceContext(country));
  }

  /// One value of the queue's printer data; empty if there is none.
  std::vector<uint8_t> PrinterData(const char16_t* name) const {
    std::vector<uint8_t> data(8192);
    platform::DWORD size = 0;
    const auto room = static_cast<platform::DWORD>(data.size());
    const bool found = platform::GetPrinterDataW(printer.get(), name, nullptr, data.data(), room, &size) == 0;
    data.resize(found ? size : 0);
    return data;
  }
  void StorePrinterData(const char16_t* name, platform::DWORD type, const void* data, size_t size) const {
    EXPECT_EQ(platform::SetPrinterDataW(printer.get(), name, type, static_cast<const uint8_t*>(data),
                                        static_cast<platform::DWORD>(size)),
              platform::kErrorSuccess);
  }

  platform::MemoryBackend backend;
  platform::UniquePrinter printer;
  std::unique_ptr<ResourceContext, CloseContext> resources;
};

}  // namespace heron::test
