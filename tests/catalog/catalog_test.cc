// Catalogue queries: what each selector answers for each kind of feature, and what it leaves alone.
#include <array>
#include <initializer_list>

#include "catalog/tables.h"
#include "support/driver_fixture.h"

namespace heron {
namespace {

using catalog::GeometryOf;
using test::DriverTest;

constexpr uint16_t kMediaSize = 0, kZoom = 26, kSource = 27, kOutputPaper = 11, kIntensity = 56, kCoverSource = 140;

class CatalogTest : public DriverTest {
 protected:
  uint32_t Ask(uint16_t feature, uint32_t selector, void* out = nullptr, uint32_t index = 0, uint32_t size = 0) const {
    return CatalogQuery(resources.get(), feature, selector, out, index, size);
  }
  template <typename Value>
  std::vector<Value> Filtered(uint16_t unit) const {
    std::vector<Value> values(CatalogQueryFiltered(resources.get(), kSource, kCount, nullptr, 0, 0, unit));
    EXPECT_EQ(CatalogQueryFiltered(resources.get(), kSource, kAllValues, values.data(), 0, 0, unit), 0u);
    return values;
  }
};

TEST_F(CatalogTest, CountryDecidesDestination) {
  const std::pair<uint32_t, uint32_t> cases[] = {
      {1, 0xFF},     {7, 0xFF00},   {61, 0xFF00}, {66, 0xFF00}, {67, 0xFF},  {81, 0x10000}, {86, 0xFF00},
      {886, 0xFF00}, {972, 0xFF00}, {42, 0xFF},   {975, 0xFF},  {960, 0xFF}, {968, 0xFF00}, {995, 0xFF00},
      {0, 0xFF},     {29, 0xFF},    {34, 0xFF00}, {35, 0xFF},   {969, 0xFF}, {65543, 0xFF}};
  for (const auto& [country, mask] : cases) EXPECT_EQ(DestinationMask(country), mask) << country;
}

TEST_F(CatalogTest, LocaleCountryIsOneIfItCannotBeRead) {
  const std::pair<std::u16string, uint32_t> cases[] = {{u"86", 86}, {u"", 1}, {u"8x", 1}, {u"99999999999999", 1}};
  for (const auto& [text, country] : cases) {
    backend.country = text;
    EXPECT_EQ(ReadLocaleCountry(), country);
  }
}

TEST_F(CatalogTest, DestinationChoosesDefault) {
  struct {
    uint32_t country, paper, index;
    std::u16string tab;
  } cases[] = {{1, 1, 8, u"1025"}, {86, 9, 1, u"1033"}, {81, 9, 1, u"1033"}};
  for (const auto& c : cases) {
    Reopen(c.country);
    EXPECT_EQ(CatalogDefault(resources.get(), kMediaSize), c.paper);
    std::array<uint32_t, 4> out{};
    EXPECT_EQ(Ask(kMediaSize, kDefaultSize, out.data()), c.index);
    EXPECT_EQ(out[0], c.paper == 9 ? 21000u : 21590u);
    char16_t text[8];
    EXPECT_EQ(Ask(530, kDefaultLabel, text, 0, sizeof text), 4u);
    EXPECT_EQ(text, c.tab);
    EXPECT_EQ(CatalogDefault(resources.get(), kCoverSource), 1u);
    EXPECT_EQ(CatalogDefault(resources.get(), kZoom), 100u);
  }
}

TEST_F(CatalogTest, LastHitIsTheDefault) {
  const auto index = [](std::array<uint32_t, 3> masks, uint32_t destination) {
    std::array<ListOption, 3> rows{};
    for (size_t i = 0; i < 3; ++i) rows[i].defaultMask = masks[i];
    return catalog::DefaultIndex(std::span<const ListOption>(rows), destination);
  };
  EXPECT_EQ(index({0xFF, 0xFF00, 0x1}, 0xFF), 2u);
  EXPECT_EQ(index({0xFF, 0xFF00, 0x1}, 0xFF00), 1u);
  EXPECT_EQ(index({0, 0xFF00, 0xFF00}, 0x10000), 0u);
}

TEST_F(CatalogTest, FeatureThatDoesNotExistAnswersNothing) {
  std::array<uint8_t, 64> out;
  for (const uint16_t feature : std::initializer_list<uint16_t>{7, 1, 698, 699, 709, 1005, 1006, 65535}) {
    for (uint32_t selector = 0; selector < 64; ++selector) {
      out.fill(0xAA);
      EXPECT_EQ(Ask(feature, selector, out.data(), 0, 8), 0u) << feature << " " << selector;
      EXPECT_EQ(std::count(out.begin(), out.end(), 0xAA), 64) << feature << " " << selector;
      EXPECT_EQ(CatalogQueryFiltered(resources.get(), feature, selector, out.data(), 0, 8, 4), 0u);
    }
  }
}

TEST_F(CatalogTest, OnlyNumbersDoWithoutOutput) {
  const std::pair<uint16_t, uint32_t> cases[] = {
      {kMediaSize, kCount}, {kMediaSize, kValue}, {kMediaSize, kDefaultValue},
      {kZoom, kMin},        {kZoom, kMax},        {kZoom, kStep}};
  for (const auto& [feature, selector] : cases) EXPECT_NE(Ask(feature, selector), 0u) << selector;
  for (uint32_t selector = 0; selector < 64; ++selector) {
    if (selector != kCount && (selector < kValue || selector > kStep)) {
      EXPECT_EQ(Ask(kMediaSize, selector, nullptr, 3, 8), 0u) << selector;
    }
    EXPECT_EQ(CatalogQuery(nullptr, kMediaSize, selector, nullptr, 0, 0), 0u);
  }
}

TEST_F(CatalogTest, SelectorsKeepToTheirKinds) {
  std::array<uint8_t, 64> out;
  const std::vector<std::pair<uint16_t, std::vector<uint32_t>>> cases = {
      {kZoom, {kAllLabels, kLabel, kDefaultLabel, kAllValues, kSizes, kDefaultDotMargin}},
      {501, {kAllLabels, kAllValues, kValue, kDefaultValue, kMin, kMax, kStep, kSizes}},
      {671, {kAllLabels, kAllValues, kValue, kDefaultValue, kStep, kSizes}},
      {kSource, {kMin, kMax, kStep, 11, 29, 42}}};
  for (const auto& [feature, selectors] : cases) {
    for (const uint32_t selector : selectors) {
      out.fill(0xAA);
      EXPECT_EQ(Ask(feature, selector, out.data(), 0, 8), 0u) << feature << " " << selector;
      EXPECT_EQ(std::count(out.begin(), out.end(), 0xAA), 64) << feature << " " << selector;
    }
  }
}

TEST_F(CatalogTest, IndexOutOfRangeAnswersZero) {
  std::array<uint8_t, 16> out;
  for (const uint32_t selector : {3u, 4u, 6u, 7u, 31u, 32u, 34u, 35u, 37u, 38u, 40u, 41u}) {
    out.fill(0xAA);
    EXPECT_EQ(Ask(kMediaSize, selector, out.data(), Ask(kMediaSize, kCount), 4), 0u) << selector;
    const bool zeroed = selector == kLabel || selector == kDefaultLabel;
    EXPECT_EQ(std::count(out.begin(), out.end(), 0xAA), zeroed ? 8 : 16) << selector;
  }
  EXPECT_EQ(Ask(kZoom, kValue, nullptr, 0), 100u);
  EXPECT_EQ(Ask(kZoom, kValue, nullptr, 1), 0u);
}

TEST_F(CatalogTest, ValuesComeInTwoWidths) {
  const std::vector<uint16_t> narrow = {7, 1, 2, 258, 259, 270, 4};
  std::vector<uint16_t> u16(7);
  std::vector<int32_t> i32(7);
  EXPECT_EQ(Ask(kSource, kAllValues, u16.data(), 0, 2), 0u);
  EXPECT_EQ(u16, narrow);
  for (const uint32_t size : {0u, 4u, 1u}) {
    EXPECT_EQ(Ask(kSource, kAllValues, i32.data(), 0, size), 0u);
    EXPECT_EQ(std::vector<uint16_t>(i32.begin(), i32.end()), narrow);
  }
  uint32_t value = 0;
  EXPECT_EQ(Ask(kSource, kValue, &value, 5), 270u);
  EXPECT_EQ(value, 270u);
}

TEST_F(CatalogTest, RangesKeepTheirSign) {
  uint32_t value = 0;
  EXPECT_EQ(static_cast<int32_t>(Ask(kIntensity, kMin, &value)), -2);
  EXPECT_EQ(value, 0xFFFFFFFEu);
  EXPECT_EQ(Ask(kIntensity, kMax), 2u);
  EXPECT_EQ(Ask(kIntensity, kStep), 1u);
  EXPECT_EQ(Ask(694, kMax), 29u);
  EXPECT_EQ(Ask(690, kMin), 0xFFFFFFFFu);
  EXPECT_EQ(Ask(697, kCount), 3u);
}

TEST_F(CatalogTest, LabelsFillZeroedSlots) {
  char16_t label[12];
  std::fill(std::begin(label), std::end(label), u'x');
  EXPECT_EQ(Ask(kMediaSize, kLabel, label, 0, 10), 2u);
  EXPECT_EQ(std::u16string_view(label, 12), std::u16string_view(u"A3\0\0\0\0\0\0\0\0xx", 12));
  EXPECT_EQ(Ask(kMediaSize, kLabel, label, 8, 4), 3u);
  EXPECT_EQ(label, std::u16string(u"Let"));
  EXPECT_EQ(Ask(kMediaSize, kLabel, label, 8, 0), 0u);

  std::u16string all(39 * 3 + 1, u'x');
  EXPECT_EQ(Ask(kMediaSize, kAllLabels, all.data(), 0, 3), 39u * 3);
  EXPECT_EQ(all.substr(0, 7), std::u16string(u"A3\0A4\0\0", 7));
  EXPECT_EQ(all.back(), u'x');

  backend.modules.clear();
  Reopen(1);
  ASSERT_NE(resources, nullptr);
  EXPECT_EQ(Ask(kMediaSize, kLabel, label, 0, 10), 0u);
  EXPECT_EQ(label[0], u'\0');
}

TEST_F(CatalogTest, TextFitsWholeOrNotAtAll) {
  for (const uint16_t feature : std::initializer_list<uint16_t>{504, 564}) {  // "4096", "4132"
    char16_t text[6];
    for (const uint32_t size : {10u, 9u, 0u}) {
      std::fill(std::begin(text), std::end(text), u'x');
      EXPECT_EQ(Ask(feature, kLabel, text, 0, size), size == 10 ? 4u : 0u) << size;
      EXPECT_EQ(text[0], size == 10 ? u'4' : size == 0 ? u'x' : u'\0') << size;
      EXPECT_EQ(text[5], u'x');
    }
  }
  char16_t font[4];
  EXPECT_EQ(Ask(696, kDefaultLabel, font, 0, sizeof font), 2u);
  EXPECT_EQ(font, std::u16string(u"\u5B8B\u4F53"));
}

TEST_F(CatalogTest, GeometryFollowsItsRule) {
  struct {
    int16_t code;
    std::array<uint32_t, 2> size;
    uint32_t margin;
    std::array<uint32_t, 2> dots;
    uint32_t dotMargin;
  } cases[] = {
      {9, {21000, 29700}, 424, {2480, 3507}, 50},     // 2480.31 x 3507.87, down
      {4105, {21000, 29700}, 0, {2480, 3507}, 0},     // the same to the edge
      {8201, {21000, 29700}, 0, {2481, 3508}, 0},     // up
      {12297, {21000, 29700}, 0, {2481, 3508}, 0},    //
      {8193, {21590, 27940}, 0, {2550, 3300}, 0},     // even: nothing to round
      {2054, {13970, 21590}, 424, {1650, 2550}, 50},  // a rotated twin
      {2382, {10795, 13970}, 424, {1275, 1650}, 50}, {1033, {22250, 29700}, 0, {2627, 3507}, 0},  // a tab
      {513, {21000, 21000}, 424, {2480, 2480}, 50},  {256, {21000, 21000}, 424, {2480, 2480}, 50},
  };
  for (const auto& c : cases) {
    const catalog::PaperGeometry* row = GeometryOf(c.code);
    ASSERT_NE(row, nullptr) << c.code;
    EXPECT_EQ(row->size, c.size) << c.code;
    EXPECT_EQ(row->dotSize, c.dots) << c.code;
    const auto inset = [](auto size, uint32_t by) { return std::array{by, by, size[0] - by, size[1] - by}; };
    EXPECT_EQ(row->printable, inset(c.size, c.margin)) << c.code;
    EXPECT_EQ(row->dotPrintable, inset(c.dots, c.dotMargin)) << c.code;
  }
}

TEST_F(CatalogTest, PaperSelectorsSkipRowsWithoutGeometry) {
  const std::array<uint32_t, 2> a3 = {29700, 42000};
  std::vector<uint32_t> sizes(81, 0xAAAAAAAA);
  EXPECT_EQ(Ask(kOutputPaper, kSizes, sizes.data()), 40u);
  EXPECT_EQ(sizes[0], 0xAAAAAAAA);  // 257: as the document
  EXPECT_EQ(sizes[2], a3[0]);
  EXPECT_EQ(sizes[3], a3[1]);
  EXPECT_EQ(sizes[77], 21000u);
  EXPECT_EQ(sizes[78], 0xAAAAAAAA);  // 512: the dialog's entry
  EXPECT_EQ(sizes[80], 0xAAAAAAAA);

  std::array<uint32_t, 5> out;
  out.fill(0xAAAAAAAA);
  EXPECT_EQ(Ask(kOutputPaper, kDefaultSize, out.data()), 0u);
  EXPECT_EQ(Ask(kOutputPaper, kMargin, out.data(), 39), 39u);
  EXPECT_EQ(out[0], 0xAAAAAAAA);
  EXPECT_EQ(Ask(kOutputPaper, kMargin, out.data(), 1), 1u);
  EXPECT_EQ(out, (std::array<uint32_t, 5>{424, 424, 29276, 41576, 0xAAAAAAAA}));
  EXPECT_EQ(Ask(kOutputPaper, kDotMargin, out.data(), 1), 1u);
  EXPECT_EQ(out, (std::array<uint32_t, 5>{50, 50, 3457, 4910, 0xAAAAAAAA}));
  EXPECT_EQ(Ask(kMediaSize, kDefaultDotSize, out.data()), 8u);
  EXPECT_EQ(out, (std::array<uint32_t, 5>{2550, 3300, 3457, 4910, 0xAAAAAAAA}));

  std::vector<uint32_t> rectangles(39 * 4 + 1, 0xAAAAAAAA);
  EXPECT_EQ(Ask(kMediaSize, kDotMargins, rectangles.data()), 39u);
  EXPECT_EQ((std::vector(rectangles.begin() + 4, rectangles.begin() + 8)), (std::vector<uint32_t>{50, 50, 2430, 3457}));
  EXPECT_EQ(rectangles[38 * 4], 0xAAAAAAAA);
}

TEST_F(CatalogTest, FeedUnitHidesTrays) {
  const std::vector<uint16_t> kept[] = {{7, 1, 2, 4},           {7, 1, 2, 258, 259, 4},
                                        {7, 1, 2, 258, 4},      {7, 1, 2, 258, 259, 270, 4},
                                        {7, 1, 2, 258, 270, 4}, {7, 1, 2, 258, 259, 270, 4}};
  for (uint16_t unit = 1; unit <= 6; ++unit) EXPECT_EQ(Filtered<uint16_t>(unit), kept[unit - 1]) << unit;

  auto& texts = backend.modules[test::kResourceModule];
  texts[21530] = u"Auto";
  texts[21537] = u"Bypass";
  std::u16string labels(4 * 6 + 1, u'x');
  EXPECT_EQ(CatalogQueryFiltered(resources.get(), kSource, kAllLabels, labels.data(), 0, 6, 1), 4u + 5);
  EXPECT_EQ(labels.substr(0, 6), std::u16string(u"Auto\0\0", 6));
  EXPECT_EQ(labels.substr(18), std::u16string(u"Bypas\0x", 7));
  EXPECT_EQ(CatalogQueryFiltered(resources.get(), kSource, kAllLabels, nullptr, 0, 6, 1), 0u);
  EXPECT_EQ(CatalogQueryFiltered(resources.get(), kSource, kValue, labels.data(), 0, 6, 1), 0u);
  EXPECT_EQ(CatalogQueryFiltered(resources.get(), kZoom, kCount, nullptr, 0, 0, 1), 0u);
}

TEST_F(CatalogTest, ListingsFindRowsByValue) {
  EXPECT_EQ(CatalogIndexOf(31, 2), 1);  // of two rows the first
  EXPECT_EQ(CatalogIndexOf(kSource, 3), -1);
  EXPECT_EQ(CatalogIndexOf(kSource, 65536 + 7), -1);
  EXPECT_EQ(CatalogIndexOf(kZoom, 100), -1);
  EXPECT_EQ(FeatureName(305), u"lpInterSheetListMediaType");
  EXPECT_EQ(FeatureName(213), u"");
  EXPECT_EQ(ListOptionsOf(305).size(), 12u);
  EXPECT_TRUE(ListOptionsOf(501).empty());
}

TEST_F(CatalogTest, UnknownStoresAndFacilitiesAreOff) {
  for (const uint16_t id : std::initializer_list<uint16_t>{4097, 4098, 4099, 4100, 4101, 8198})
    EXPECT_TRUE(IsStoreEnabled(id)) << id;
  for (const uint16_t id : std::initializer_list<uint16_t>{0, 1, 4096, 4102, 8197, 65535})
    EXPECT_FALSE(IsStoreEnabled(id)) << id;
  for (uint16_t id = 1; id <= 8; ++id) EXPECT_TRUE(IsFileSectionEnabled(id)) << id;
  EXPECT_FALSE(IsFileSectionEnabled(0));
  EXPECT_FALSE(IsFileSectionEnabled(9));
  EXPECT_TRUE(IsFacilityEnabled(7));
  EXPECT_FALSE(IsFacilityEnabled(8));
  CloseResourceContext(nullptr);
}

}  // namespace
}  // namespace heron
