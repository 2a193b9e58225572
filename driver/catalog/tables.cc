// The rows of the catalogue and their index: generated rows of lists, ranges and texts parsed by the compiler.
#include "catalog/tables.h"

#include "catalog/range_options.h"
#include "catalog/table_text.h"
#include "catalog/text_options.h"

namespace heron::catalog {
namespace {

using Text = std::u16string_view;

constexpr size_t CountLines(Text text) {
  size_t lines = 0;
  ForEachLine(text, [&](Text) { ++lines; });
  return lines;
}

constexpr uint32_t MaskOf(Text mark) {
  if (mark.empty()) return 0;
  if (mark == u"*") return kEveryDestination;
  if (mark == u"*U") return kDestinationFirst;
  if (mark == u"*W") return kDestinationSecond | kDestinationThird;
  throw "unknown mark";
}

/// Splits "9*W" into 9 and its mask.
constexpr uint16_t NumberAndMask(Text word, uint32_t& mask) {
  const size_t star = std::min(word.find(u'*'), word.size());
  mask = MaskOf(word.substr(star));
  return Unsigned(word.substr(0, star));
}

constexpr auto ParseRangeOptions() {
  std::array<RangeOption, CountLines(kRangeOptionText)> rows{};
  size_t row = 0;
  ForEachLine(kRangeOptionText, [&](Text line) {
    RangeOption& option = rows[row++];
    option.feature = Unsigned(Cut(line, u'|'));
    Cut(line, u'|');
    option.min = Signed(Cut(line, u'|'));
    option.max = Signed(Cut(line, u'|'));
    option.defaultValue = Unsigned(Cut(line, u'|'));
    if (option.min > option.max) throw "an empty range";
  });
  return rows;
}

constexpr size_t kPlainTextCount = CountLines(kTextOptionText);
constexpr size_t kBoundedTextCount = CountLines(kBoundedTextOptionText);

/// Both text tables, one behind the other.
constexpr auto ParseTextOptions() {
  std::array<TextOption, kPlainTextCount + kBoundedTextCount> rows{};
  size_t row = 0;
  ForEachLine(kTextOptionText, [&](Text line) {
    TextOption& option = rows[row++];
    const Text number = Cut(line, u'|');
    option.feature = NumberAndMask(number, option.defaultMask);
    if (number.find(u'*') == Text::npos) option.defaultMask = kEveryDestination;
    option.text = Cut(line, u'|');
    option.min = option.max = kUnbounded;
  });
  ForEachLine(kBoundedTextOptionText, [&](Text line) {
    TextOption& option = rows[row++];
    option.feature = Unsigned(Cut(line, u'|'));
    option.defaultMask = kEveryDestination;
    option.text = Cut(line, u'|');
    const Text smallest = CutWord(line);
    option.min = smallest.empty() ? kUnbounded : Unsigned(smallest);
    option.max = smallest.empty() ? kUnbounded : Unsigned(CutWord(line));
  });
  return rows;
}

constexpr auto kListOptions = std::to_array<ListOption>({
#include "generated/list_options.inc"
});
constexpr auto kRangeOptions = ParseRangeOptions();
constexpr auto kTextOptions = ParseTextOptions();

static_assert(kListOptions.size() == 486);
static_assert(kRangeOptions.size() == 21);
static_assert(kPlainTextCount == 88 && kBoundedTextCount == 34);

using FeatureIndex = std::array<Feature, kFeatureLimit>;

/// Enters the rows `begin` to `end` of one table; rows of a feature lie together and features ascend.
constexpr void EnterRows(FeatureIndex& index, FeatureKind kind, const auto& rows, size_t begin, size_t end) {
  for (size_t row = begin; row < end; ++row) {
    Feature& feature = index.at(rows[row].feature);
    if (feature.count == 0) {
      feature.kind = kind;
      feature.first = static_cast<uint16_t>(row);
    }
    if (feature.kind != kind) throw "a feature is in two tables";
    if (feature.first + feature.count != static_cast<int>(row)) throw "the rows of a feature don't lie together";
    if (row > begin && rows[row].feature < rows[row - 1].feature) throw "the features don't ascend";
    ++feature.count;
  }
}

struct FeatureName {
  uint16_t feature;
  Text name;
};
constexpr auto kListFeatures = std::to_array<FeatureName>({
#include "generated/list_features.inc"
});

constexpr void EnterNames(FeatureIndex& index, Text text) {
  ForEachLine(text, [&](Text line) {
    const Text number = Cut(line, u'|');
    if (!number.empty()) index.at(Unsigned(number)).name = Cut(line, u'|');
  });
}

constexpr FeatureIndex MakeIndex() {
  FeatureIndex index{};
  EnterRows(index, FeatureKind::kList, kListOptions, 0, kListOptions.size());
  EnterRows(index, FeatureKind::kRange, kRangeOptions, 0, kRangeOptions.size());
  EnterRows(index, FeatureKind::kText, kTextOptions, 0, kPlainTextCount);
  EnterRows(index, FeatureKind::kBoundedText, kTextOptions, kPlainTextCount, kTextOptions.size());
  for (const FeatureName& list : kListFeatures) index.at(list.feature).name = list.name;
  EnterNames(index, kRangeOptionText);
  return index;
}

constexpr FeatureIndex kFeatures = MakeIndex();
constexpr Feature kNoFeature;

constexpr int64_t CountKind(FeatureKind kind) {
  return std::ranges::count(kFeatures, kind, &Feature::kind);
}
static_assert(CountKind(FeatureKind::kList) == 153);
static_assert(CountKind(FeatureKind::kRange) == 21);
static_assert(CountKind(FeatureKind::kText) == 84);
static_assert(CountKind(FeatureKind::kBoundedText) == 32);

}  // namespace

const Feature& FeatureOf(uint16_t feature) {
  return feature < kFeatureLimit ? kFeatures[feature] : kNoFeature;
}

std::span<const ListOption> ListRows(const Feature& feature) {
  return std::span(kListOptions).subspan(feature.first, feature.count);
}

const RangeOption& RangeRow(const Feature& feature) {
  return kRangeOptions[feature.first];
}

std::span<const TextOption> TextRows(const Feature& feature) {
  return std::span(kTextOptions).subspan(feature.first, feature.count);
}

}  // namespace heron::catalog
