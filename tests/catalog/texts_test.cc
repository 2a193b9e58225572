// The tables are sound, and the texts, the numbers asked for and the catalogue's labels agree.
#include <dlfcn.h>

#include <fstream>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "catalog/tables.h"
#include "platform/api/module_texts.h"

namespace heron {
namespace {

std::string Named(uint16_t feature) {
  return "feature " + std::to_string(feature);
}

TEST(CatalogTables, RowsAreSound) {
  std::set<std::u16string_view> names;
  for (uint16_t id = 0; id < kFeatureLimit; ++id) {
    const catalog::Feature& feature = catalog::FeatureOf(id);
    EXPECT_TRUE(feature.name.empty() || names.insert(feature.name).second) << Named(id);
    if (feature.kind == FeatureKind::kList) {
      std::set<int16_t> values;
      std::map<uint32_t, int> defaults;
      for (const ListOption& option : ListRows(feature)) {
        EXPECT_EQ(option.feature, id);
        EXPECT_GE(option.value, 0);
        EXPECT_TRUE(values.insert(option.value).second || id == 31) << Named(id);
        for (const uint32_t mask : {0xFFu, 0xFF00u, 0x10000u}) defaults[mask] += (option.defaultMask & mask) != 0;
      }
      for (const auto& [mask, count] : defaults) EXPECT_EQ(count, id == 140 ? 0 : 1) << Named(id) << " " << mask;
    } else if (feature.kind == FeatureKind::kRange) {
      const catalog::RangeOption& range = RangeRow(feature);
      EXPECT_GE(static_cast<int>(range.defaultValue), range.min) << Named(id);
      EXPECT_LE(static_cast<int>(range.defaultValue), range.max) << Named(id);
    } else {
      for (const catalog::TextOption& text : TextRows(feature)) {
        EXPECT_LE(text.text.size(), 255u);
        if (text.min == catalog::kUnbounded) continue;
        const int value = std::stoi(std::string(text.text.begin(), text.text.end()));
        EXPECT_GE(value, static_cast<int>(text.min)) << Named(id);
        EXPECT_LE(value, static_cast<int>(text.max)) << Named(id);
      }
    }
  }
}

TEST(CatalogTables, GeometryServesEveryPaper) {
  std::set<uint16_t> codes;
  for (const catalog::PaperGeometry& row : catalog::AllGeometry()) {
    EXPECT_TRUE(codes.insert(row.code).second || row.code == 14) << row.code;
    EXPECT_LT(row.printable[0], row.printable[2]) << row.code;
    EXPECT_LT(row.dotPrintable[1], row.dotPrintable[3]) << row.code;
  }
  for (const uint16_t feature : {uint16_t{0}, uint16_t{11}}) {
    for (const ListOption& option : ListOptionsOf(feature)) {
      const bool paper = option.value != 257 && option.value != 512;
      EXPECT_EQ(catalog::GeometryOf(option.value) != nullptr, paper) << option.value;
    }
  }
}

/// The built module, as the driver gets it.
class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() : module_(dlopen(HERON_RESOURCE_MODULE, RTLD_NOW | RTLD_LOCAL)) {
    if (module_ == nullptr) return;
    auto* function = reinterpret_cast<HeronModuleTextsFunction>(dlsym(module_, kHeronModuleTextsName));
    if (function != nullptr) rows_ = function(&count_);
  }
  ~ModuleTest() override {
    if (module_ != nullptr) dlclose(module_);
  }

  std::u16string Text(uint32_t id) const {
    const HeronModuleText* row = std::lower_bound(
        rows_, rows_ + count_, id, [](const HeronModuleText& text, uint32_t key) { return text.id < key; });
    return row != rows_ + count_ && row->id == id ? std::u16string(row->text, row->length) : u"";
  }

  void* module_;
  const HeronModuleText* rows_ = nullptr;
  uint32_t count_ = 0;
};

TEST_F(ModuleTest, RowsAreWhatTheFileHolds) {
  ASSERT_NE(rows_, nullptr);
  for (uint32_t i = 1; i < count_; ++i) EXPECT_LT(rows_[i - 1].id, rows_[i].id);
  for (uint32_t i = 0; i < count_; ++i) EXPECT_EQ(std::u16string_view(rows_[i].text).size(), rows_[i].length);
  EXPECT_EQ(Text(48011), u"A4");
  EXPECT_EQ(Text(31678), u"Re: ");  // a blank that belongs to it
  EXPECT_EQ(Text(25751), u"The name can't hold any of these characters:\n\\ / : * ? \" < > | .");  // both escapes
}

TEST_F(ModuleTest, EveryNumberHasItsText) {
  ASSERT_NE(rows_, nullptr);
  std::ifstream numbers(HERON_RESOURCES "/text-numbers.txt");
  uint32_t checked = 0;
  for (std::string line; std::getline(numbers, line);) {
    if (line.starts_with('#')) continue;
    EXPECT_FALSE(Text(static_cast<uint32_t>(std::stoul(line))).empty()) << line;
    ++checked;
  }
  EXPECT_GT(checked, 400u);
  EXPECT_EQ(Text(21200), u"");
}

TEST_F(ModuleTest, EveryOptionHasItsLabel) {
  ASSERT_NE(rows_, nullptr);
  for (uint16_t id = 0; id < kFeatureLimit; ++id) {
    std::set<std::u16string> labels;
    for (const ListOption& option : ListOptionsOf(id)) {
      const std::u16string text = Text(option.label);
      EXPECT_FALSE(text.empty()) << Named(id) << " value " << option.value;
      EXPECT_LT(text.size(), 64u) << Named(id) << " value " << option.value;  // an item's label
      EXPECT_TRUE(labels.insert(text).second)
          << Named(id) << " value " << option.value << ": a second option reads alike";
    }
  }
}

}  // namespace
}  // namespace heron
