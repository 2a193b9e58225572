// Paper tables and user papers: rounding, relations between codes, and what a queue keeps.
#include "settings/papers.h"

#include <cstring>

#include "platform/api/text.h"
#include "support/driver_fixture.h"

namespace heron {
namespace {

using platform::REG_BINARY;

CustomPaperEntry Entry(uint32_t width, uint32_t height, int16_t unit, std::u16string_view name,
                       uint16_t long_flag = 0) {
  CustomPaperEntry entry{width, height, unit, {}, long_flag};
  name.copy(entry.name, std::size(entry.name));
  return entry;
}

class PapersTest : public test::DriverTest {
 protected:
  StringsInUse strings;  // default names come from the texts

  UserPaperStore Loaded() const {
    UserPaperStore store;
    LoadUserPapers(&store, printer.get());
    return store;
  }
};

TEST_F(PapersTest, CodesOfUserPapersAndTheirNumbers) {
  for (int number = 1; number <= kUserPaperCount; ++number) {
    EXPECT_EQ(CustomPaperNumber(CustomPaperCode(number)), number);
  }
  EXPECT_EQ(CustomPaperNumber(256), 10);
  EXPECT_EQ(CustomPaperCode(10), 256);
  for (const int number : {-1, 0, 11, 512}) EXPECT_EQ(CustomPaperCode(number), 513) << number;
  for (const int code : {-1, 0, 9, 255, 257, 512, 522}) EXPECT_FALSE(IsCustomPaper(code)) << code;
}

TEST_F(PapersTest, EveryFamilyHasTheSizesOfThePlainOne) {
  for (const int plain : {8, 9, 2057, 14, 2076, 390}) {
    uint32_t width, height;
    ASSERT_TRUE(PaperSizeMm(plain, &width, &height)) << plain;
    for (const int bits : {0x1000, 0x2000, 0x3000}) {
      uint32_t family_width = 0, family_height = 0;
      EXPECT_TRUE(PaperSizeMm(plain + bits, &family_width, &family_height)) << plain << "+" << bits;
      EXPECT_EQ(std::pair(family_width, family_height), std::pair(width, height)) << plain << "+" << bits;
    }
  }
  for (const int absent : {1033 + 0x2000, 2061 + 0x4000, 332, 370 + 0x1000, -1}) {
    uint32_t width = 7, height = 8;
    EXPECT_FALSE(PaperSizeMm(absent, &width, &height) || PaperSizeMmExact(absent, &width, &height) ||
                 PaperSizeThou(absent, &width, &height))
        << absent;
    EXPECT_EQ(std::pair(width, height), std::pair(7u, 8u)) << absent;
    EXPECT_EQ(PaperLabel(absent), nullptr) << absent;
    EXPECT_EQ(PaperSizeText(absent), nullptr) << absent;
  }
}

TEST_F(PapersTest, SizesRoundAsTheirUnitsSay) {
  EXPECT_EQ(ThouToTenthMm(1, 8267), 2100u);
  EXPECT_EQ(ThouToTenthMm(1, 1), 1u);  // 0.254 tenths: up
  EXPECT_EQ(ThouToTenthMm(1, 0), 0u);
  EXPECT_EQ(ThouToTenthMm(1, 0xFFFFFFFF), 1090923875u);  // needs 64 bits on the way
  EXPECT_EQ(ThouToTenthMm(2, 8267), 8267u);

  UserPaperStore store{};
  store[0] = Entry(8267, 11693, 1, u"a");
  RefreshUserPaperRows(store);
  struct {
    int code;
    bool (*size)(int32_t, uint32_t*, uint32_t*);
    uint32_t width, height;
  } const kCases[] = {
      {513, PaperSizeMm, 21000, 29700}, {513, PaperSizeMmExact, 20998, 29700}, {513, PaperSizeThou, 8267, 11693},
      {256, PaperSizeMm, 10000, 10000}, {256, PaperSizeMmExact, 10000, 10000}, {256, PaperSizeThou, 100, 100},
      {9, PaperSizeMm, 21000, 29700},   {9, PaperSizeMmExact, 21000, 29700},   {9, PaperSizeThou, 8267, 11692},
      {257, PaperSizeMm, 10000, 10000}, {512, PaperSizeThou, 100, 100},
  };
  for (const auto& c : kCases) {
    uint32_t width = 0, height = 0;
    EXPECT_TRUE(c.size(c.code, &width, &height));
    EXPECT_EQ(std::pair(width, height), std::pair(c.width, c.height)) << c.code;
  }
}

TEST_F(PapersTest, LargestPaperLeavesOutLongOnes) {
  UserPaperStore store{};
  store[3] = Entry(20000, 1, 1, u"wide");
  store[9] = Entry(1, 40000, 2, u"long", 1);
  RefreshUserPaperRows(store);
  uint32_t width, height;
  MaxPaperSize(store, &width, &height);
  EXPECT_EQ(std::pair(width, height), std::pair(50800u, 45720u));
  store[9].longFlag = 0;
  MaxPaperSize(store, &width, &height);
  EXPECT_EQ(height, 101600u);
}

TEST_F(PapersTest, TextsOfRows) {
  LoadPaperLabels();
  EXPECT_EQ(PaperLabel(8), std::u16string(u"A3"));
  EXPECT_EQ(PaperLabel(256), std::u16string(u"Custom 10"));
  EXPECT_EQ(PaperLabel(2057), std::u16string());  // a text that the module lacks
  EXPECT_EQ(PaperSizeText(8), std::u16string(u"(297x420mm)"));
  EXPECT_EQ(PaperSizeText(8 + 0x3000), std::u16string(u"(297x420mm)"));
  EXPECT_EQ(PaperSizeText(1033), std::u16string(u"(223x297mm)"));
  EXPECT_EQ(PaperSizeText(38), std::u16string(u"(92x165mm)"));
  EXPECT_EQ(PaperSizeText(257), std::u16string());

  UserPaperStore store{};
  const std::u16string full(32, u'n');  // fills its field, no terminator
  store[0] = Entry(8267, 11005, 1, u"metric");
  store[1] = Entry(8007, 11005, 2, full);
  store[2] = Entry(0xFFFFFFFF, 0xFFFFFFFF, 2, u"");
  RefreshUserPaperRows(store);
  BuildUserPaperSizeTexts(store);
  EXPECT_EQ(PaperLabel(514), full);
  EXPECT_EQ(PaperLabel(256), std::u16string());
  EXPECT_EQ(PaperSizeText(513), std::u16string(u"210.0x279.6mm"));
  EXPECT_EQ(PaperSizeText(514), std::u16string(u"8.007x11.005inch"));
  EXPECT_EQ(PaperSizeText(515), std::u16string(u"4294967.295x4294967.295inch"));

  const char16_t* held = PaperLabel(513);
  store[0] = Entry(1, 1, 1, u"renamed");
  RefreshUserPaperRows(store);
  EXPECT_EQ(held, std::u16string(u"metric"));
  EXPECT_EQ(PaperLabel(513), std::u16string(u"renamed"));
}

TEST_F(PapersTest, TwinsAndSubstitutes) {
  for (const int bits : {0, 0x1000, 0x2000, 0x3000}) {
    EXPECT_EQ(RotatedTwin(9 + bits), 2057 + bits);
    EXPECT_EQ(PlainTwin(2382 + bits), 334 + bits);
    EXPECT_EQ(PlainTwin(9 + bits), -1);
    EXPECT_FALSE(IsRotatedCode(2059 + bits));
  }
  for (const int code : {0, -1, 8, 0x4000 + 9}) EXPECT_FALSE(IsPlainTwin(code) || IsRotatedCode(code)) << code;
  EXPECT_EQ(PaperSubstitute(334), 2054);
  EXPECT_EQ(PaperSubstitute(6478), 4102);  // the families' replacement isn't rotated
  EXPECT_EQ(PaperSubstitute(330), -1);
}

TEST_F(PapersTest, UnreadableEntriesAreDefaults) {
  const CustomPaperEntry mine = Entry(4000, 5000, 2, u"mine");
  std::array<uint8_t, 77> bytes{};
  std::memcpy(bytes.data(), &mine, sizeof mine);
  StorePrinterData(u"UDPaper2", REG_BINARY, bytes.data(), 76);
  StorePrinterData(u"UDPaper3", REG_BINARY, bytes.data(), 75);
  StorePrinterData(u"UDPaper10", REG_BINARY, bytes.data(), 77);
  const UserPaperStore store = Loaded();
  EXPECT_EQ(std::memcmp(&store[1], &mine, sizeof mine), 0);
  for (const size_t n : {0u, 2u, 9u}) {
    const CustomPaperEntry expected = Entry(8267, 8267, 1, u"Custom " + platform::FromUtf8(std::to_string(n + 1)));
    EXPECT_EQ(std::memcmp(&store[n], &expected, sizeof expected), 0) << n;
  }
  uint32_t width, height;
  ReadUserPaperSize(514, &width, &height, printer.get());
  EXPECT_EQ(std::pair(width, height), std::pair(4000u, 5000u));
  ReadUserPaperSize(256, &width, &height, printer.get());
  EXPECT_EQ(std::pair(width, height), std::pair(8267u, 8267u));
}

TEST_F(PapersTest, NamesForThePrintPathAreCutToTheirRoom) {
  const CustomPaperEntry mine = Entry(4000, 5000, 2, u"mine");
  StorePrinterData(u"UDPaper2", REG_BINARY, &mine, sizeof mine);
  std::u16string name(6, u'#');
  uint32_t width, height;
  EXPECT_TRUE(ReadUserPaper(printer.get(), 2, &width, &height, name.data(), 5));
  EXPECT_EQ(name, u"mi####");
  EXPECT_TRUE(ReadUserPaper(printer.get(), 2, &width, &height, name.data(), 10));
  EXPECT_EQ(name, std::u16string_view(u"mine\0#", 6));
  EXPECT_EQ(std::pair(width, height), std::pair(4000u, 5000u));
  EXPECT_TRUE(ReadUserPaper(printer.get(), 1, &width, &height, name.data(), 12));
  EXPECT_EQ(name, u"Custom");
  for (const int number : {0, 11}) EXPECT_FALSE(ReadUserPaper(printer.get(), number, &width, &height, name.data(), 12));
  EXPECT_FALSE(ReadUserPaper(nullptr, 2, &width, &height, name.data(), 12));
  EXPECT_EQ(std::pair(width, height), std::pair(8267u, 8267u));
}

TEST_F(PapersTest, EqualEntriesAreNotWrittenAgain) {
  UserPaperStore store = Loaded();
  EXPECT_TRUE(SaveUserPapers(store, printer.get()));
  EXPECT_EQ(PrinterData(u"UDPaper10").size(), sizeof(CustomPaperEntry));
  // Bytes behind a name's end are no difference: were the entry written again, they would be gone.
  CustomPaperEntry untidy = store[4];
  untidy.name[31] = u'x';
  StorePrinterData(u"UDPaper5", REG_BINARY, &untidy, sizeof untidy);
  store[5].longFlag = 1;
  EXPECT_TRUE(SaveUserPapers(store, printer.get()));
  EXPECT_EQ(std::memcmp(PrinterData(u"UDPaper5").data(), &untidy, sizeof untidy), 0);
  EXPECT_EQ(Loaded()[5].longFlag, 1);
}

TEST_F(PapersTest, SavingIsAllOrNothingWhateverCallFails) {
  UserPaperStore store = Loaded();
  ASSERT_TRUE(SaveUserPapers(store, printer.get()));
  const std::string before = backend.Dump(platform::Hive::kMachine);
  store[0].width = 1000;
  store[9].unit = 2;
  bool saved = false;
  int failures = 0;
  for (uint64_t n = 1; n < 200 && !saved; ++n) {
    backend.FailCall(n, platform::kErrorDiskFull, true);
    saved = SaveUserPapers(store, printer.get());
    backend.FailCall(0, 0);
    if (saved) break;
    ++failures;
    ASSERT_EQ(backend.Dump(platform::Hive::kMachine), before) << "call " << n;
  }
  EXPECT_TRUE(saved);
  EXPECT_GT(failures, 2);
  EXPECT_EQ(Loaded()[9].unit, 2);
  backend.machineWritable = false;
  store[1].unit = 2;
  EXPECT_FALSE(SaveUserPapers(store, printer.get()));
}

TEST_F(PapersTest, MarginsOfUserPapers) {
  struct {
    uint16_t source;
    int32_t width, height;
    std::array<uint32_t, 4> expected;
  } const kCases[] = {
      {7, 30000, 43180, {424, 424, 424, 424}},  // 150 on either side is below the least margin
      {258, 31701, 29700, {1001, 424, 1000, 424}},
      {4, -1, 0x7FFFFFFF, {424, 1073720234, 424, 1073720233}},
      {99, 31700, 21000, {1000, 424, 1000, 424}},  // an unknown source has the first row's limits
  };
  for (const auto& c : kCases) {
    const Margins got = UserPaperMargins(c.source, 3, c.width, c.height);
    EXPECT_EQ((std::array{got.left, got.top, got.right, got.bottom}), c.expected) << c.source;
  }
  EXPECT_EQ(FindSourceLimit(270, 5, 2).maxLength, 17000);
}

}  // namespace
}  // namespace heron
