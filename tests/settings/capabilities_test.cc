// Answers to applications: counts and outputs agree, and outputs are written to their declared size only.
#include "settings/capabilities.h"

#include <algorithm>
#include <cstring>

#include "generated/values.h"
#include "settings/defaults.h"
#include "settings/papers.h"
#include "settings/printer_data.h"
#include "support/driver_fixture.h"

namespace heron {
namespace {

using namespace platform;

constexpr uint16_t kFields = 1, kPapers = 2, kPaperSize = 3, kMinExtent = 4, kMaxExtent = 5, kBins = 6, kDuplex = 7,
                   kBinNames = 12, kResolutions = 13, kPaperNames = 16, kCopies = 18, kPersonality = 25, kNup = 33;

constexpr uint8_t kFence = 0xA5;

class CapabilitiesTest : public test::DriverTest {
 protected:
  int32_t Ask(uint16_t capability, void* output = nullptr, const void* devmode = nullptr) {
    return DeviceCapability(printer.get(), u"P1", capability, output, devmode);
  }
  /// The elements written to an output at an odd address; checks that the count holds with and without it, and that
  /// nothing lies behind.
  template <typename Element>
  std::vector<Element> List(uint16_t capability, size_t elements_each = 1, const void* devmode = nullptr) {
    const int32_t count = Ask(capability, nullptr, devmode);
    EXPECT_GT(count, 0) << capability;
    const size_t total = static_cast<size_t>(std::max(count, 0)) * elements_each;
    std::vector<Element> output(total + 1);
    std::memset(output.data(), kFence, output.size() * sizeof(Element));
    EXPECT_EQ(Ask(capability, output.data(), devmode), count) << capability;
    Element fence;
    std::memset(&fence, kFence, sizeof fence);
    EXPECT_EQ(output.back(), fence) << capability;
    output.pop_back();
    return output;
  }
  /// Position of a code in the list of papers.
  size_t Position(uint16_t code) {
    const auto papers = List<uint16_t>(kPapers);
    const auto found = std::find(papers.begin(), papers.end(), code);
    EXPECT_NE(found, papers.end()) << code;
    return static_cast<size_t>(found - papers.begin());
  }
  /// Records and printer data as the driver's own sheets leave them.
  DriverEnv Default() {
    DriverEnv env;
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    return env;
  }
};

TEST_F(CapabilitiesTest, FixedAnswersNeedNoPrinter) {
  const std::pair<uint16_t, int32_t> kCases[] = {{8, 220}, {9, 3108}, {10, 1025}, {11, 0x4200}, {14, 0},
                                                 {17, 90}, {19, -1},  {20, 1},    {25, 1},      {27, 1},
                                                 {30, 0},  {32, 0},   {33, 6},    {0, -1},      {65535, -1}};
  for (const auto& [capability, expected] : kCases) {
    EXPECT_EQ(DeviceCapability(nullptr, nullptr, capability, nullptr, nullptr), expected) << capability;
  }
  for (const int capability : {19, 21, 22, 23, 24, 26, 28, 29, 31, 34, 100}) {
    uint64_t output = 7;
    EXPECT_EQ(Ask(static_cast<uint16_t>(capability), &output), -1) << capability;
    EXPECT_EQ(output, 7u) << capability;
  }
  EXPECT_EQ(List<uint32_t>(kNup), (std::vector<uint32_t>{1, 2, 4, 6, 9, 16}));
  std::vector<char16_t> personality = List<char16_t>(kPersonality, 32);
  EXPECT_EQ(std::u16string(personality.begin(), personality.end()), std::u16string(u"PCL") + std::u16string(29, u'\0'));
}

TEST_F(CapabilitiesTest, AnswersOfADefaultRecord) {
  EXPECT_EQ(Ask(kFields), 515 | 0x100 | 0x1000 | 0x400 | 0x2000);
  EXPECT_EQ(Ask(kDuplex), 1);
  EXPECT_EQ(Ask(15), 2);
  EXPECT_EQ(Ask(kCopies), 999);
  EXPECT_EQ(DeviceCapability(printer.get(), nullptr, kCopies, nullptr, nullptr), 999);  // the queue's own name
  const auto resolutions = List<uint32_t>(kResolutions, 2);
  for (size_t i = 0; i < resolutions.size(); i += 2) EXPECT_EQ(resolutions[i], resolutions[i + 1]);
}

TEST_F(CapabilitiesTest, PapersLeaveOutTwinsAndSubstitutes) {
  const auto papers = List<uint16_t>(kPapers);
  const auto lists = [&](int code) { return std::find(papers.begin(), papers.end(), code) != papers.end(); };
  for (const int code : {2059, 2054, 9, 1, 513, 256}) EXPECT_TRUE(lists(code)) << code;
  for (const int code : {2382, 334, 512, 511, 257, 1033, 2057}) EXPECT_FALSE(lists(code)) << code;
  EXPECT_EQ(Ask(kPaperSize), static_cast<int32_t>(papers.size()));
  EXPECT_EQ(Ask(kPaperNames), static_cast<int32_t>(papers.size()));
}

TEST_F(CapabilitiesTest, SizesAndNamesOfUserPapersAreTheStoredOnes) {
  CustomPaperEntry entry{5906, 3937, 2, {}, 0};
  std::fill_n(entry.name, 32, u'n');  // one more than a name may have
  StorePrinterData(u"UDPaper3", REG_BINARY, &entry, sizeof entry);
  const auto sizes = List<uint32_t>(kPaperSize, 2);
  const auto names = List<char16_t>(kPaperNames, 64);
  const auto size = [&](uint16_t code) { return std::pair(sizes[Position(code) * 2], sizes[Position(code) * 2 + 1]); };
  EXPECT_EQ(size(515), std::pair(1500u, 1000u));
  EXPECT_EQ(size(513), std::pair(2100u, 2100u));  // nothing stored
  EXPECT_EQ(size(1), std::pair(2159u, 2794u));
  const auto name = [&](uint16_t code) { return std::u16string(names.data() + Position(code) * 64, 64); };
  const auto slot = [](std::u16string text) {
    text.resize(64);
    return text;
  };
  EXPECT_EQ(name(515), slot(std::u16string(31, u'n')));
  EXPECT_EQ(name(513), slot(u"Custom 1"));
  EXPECT_EQ(name(1), slot(u"Letter"));
  EXPECT_EQ(name(3), slot(u""));  // a text that the module lacks
}

TEST_F(CapabilitiesTest, ExtentsCountAllRowsAndMeasureThoseWithASize) {
  const uint32_t rows = CatalogQuery(resources.get(), 0, kCount, nullptr, 0, 0);
  std::array<uint32_t, 3> extent{0, 0, 77};
  EXPECT_EQ(Ask(kMinExtent, extent.data()), static_cast<int32_t>(rows));
  EXPECT_EQ(extent, (std::array<uint32_t, 3>{920, 1397, 77}));
  EXPECT_EQ(Ask(kMaxExtent, extent.data()), static_cast<int32_t>(rows));
  EXPECT_EQ(extent, (std::array<uint32_t, 3>{2970, 4318, 77}));
  EXPECT_EQ(Ask(kMinExtent), static_cast<int32_t>(rows));
}

TEST_F(CapabilitiesTest, BinsFollowTheFeedUnitOfTheMergedRecord) {
  const auto all = List<uint16_t>(kBins);
  DriverEnv given = Default();
  Set<"lpSourceUnit">(given, value::lpSourceUnit::kNotInstalled);
  const auto bins = List<uint16_t>(kBins, 1, &given);
  for (const int hidden : {258, 259, 270}) {
    EXPECT_EQ(std::count(bins.begin(), bins.end(), hidden), 0) << hidden;
  }
  EXPECT_LT(bins.size(), CatalogQuery(resources.get(), 27, kCount, nullptr, 0, 0));
  // The module lacks the trays' texts: every slot is empty to its end.
  EXPECT_EQ(List<char16_t>(kBinNames, 24, &given), std::vector<char16_t>(bins.size() * 24));

  // Device options of the saved record don't come back over the caller's, but hold where the caller says nothing.
  Set<"lpSourceUnit">(given, value::lpSourceUnit::kTray3And4);
  ASSERT_TRUE(SavePrinterEnv(printer.get(), given));
  const auto saved = List<uint16_t>(kBins);
  EXPECT_EQ(std::count(saved.begin(), saved.end(), 270), 0);
  Set<"lpSourceUnit">(given, value::lpSourceUnit::kNotInstalled);
  EXPECT_EQ(List<uint16_t>(kBins, 1, &given), bins);
  EXPECT_FALSE(all.empty());
}

TEST_F(CapabilitiesTest, ARecordOfAnotherDriverCountsWithItsPublicPart) {
  DriverEnv given = Default();
  Set<"dmFields">(given, DM_COPIES);
  Set<"dmDriverExtra">(given, 0);
  EXPECT_EQ(Ask(kCopies, nullptr, given.bytes.data()), 999);
  EXPECT_EQ(List<uint16_t>(kBins, 1, given.bytes.data()), List<uint16_t>(kBins));
}

TEST_F(CapabilitiesTest, SpreadsheetProgramSeesWhatWasConfirmed) {
  struct {
    uint32_t status;
    bool in_excel;
    int32_t duplex, copies;
    bool resolutions;
  } const kCases[] = {
      {0, true, 1, 999, true},  {1, true, 0, 1, false},   {2, true, 1, 999, false},
      {1, false, 1, 999, true}, {2, false, 1, 999, true},
  };
  for (const auto& c : kCases) {
    backend.processFileName = c.in_excel ? u"/opt/EXCEL.EXE" : u"/opt/writer";
    ASSERT_TRUE(SetBookModeStatus(Default(), c.status));
    EXPECT_EQ(Ask(kDuplex), c.duplex) << c.status << c.in_excel;
    EXPECT_EQ(Ask(kCopies), c.copies) << c.status << c.in_excel;
    uint32_t first = 7;
    EXPECT_EQ(Ask(kResolutions) > 0, c.resolutions) << c.status << c.in_excel;
    if (!c.resolutions) {
      EXPECT_EQ(Ask(kResolutions, &first), -1);
    }
    EXPECT_EQ(first, 7u);
  }
}

TEST_F(CapabilitiesTest, ListsWithoutAPrinterStillAnswer) {
  EXPECT_EQ(DeviceCapability(nullptr, nullptr, kPapers, nullptr, nullptr), Ask(kPapers));
  backend.modules.clear();
  EXPECT_EQ(DeviceCapability(printer.get(), u"P1", kPaperNames, nullptr, nullptr), Ask(kPapers));
}

}  // namespace
}  // namespace heron
