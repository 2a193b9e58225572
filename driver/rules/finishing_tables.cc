// Reads the capabilities of finishing, at compile time.
#include "rules/finishing_tables.h"

#include <algorithm>

#include "rules/finishing_table.h"
#include "rules/notation.h"
#include "rules/rotated_feed_table.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

constexpr size_t CountRows(Text text) {
  size_t rows = 0;
  catalog::ForEachLine(text, [&](Text line) {
    const size_t papers = CountWords(catalog::Cut(line, u'|'));
    catalog::Cut(line, u'|');
    rows += papers * (line.empty() ? 1 : ParseOperand(catalog::Cut(line, u'|')).count);
  });
  return rows;
}

template <size_t kRows>
consteval auto ParseCapabilities(Text text) {
  std::array<FinishCapabilityRow, kRows> rows{};
  size_t used = 0;
  catalog::ForEachLine(text, [&](Text line) {
    Text papers = catalog::Cut(line, u'|');
    Text codes = catalog::Cut(line, u'|');
    const Operand condition = line.empty() ? Operand{} : ParseOperand(catalog::Cut(line, u'|'));
    FinishCapabilityRow row;
    for (uint8_t& code : row.codes) {
      if (!codes.empty()) code = static_cast<uint8_t>(catalog::Unsigned(catalog::CutWord(codes)));
    }
    if (!codes.empty()) throw "too many codes";
    for (Text word = catalog::CutWord(papers); !word.empty(); word = catalog::CutWord(papers)) {
      row.paper = catalog::Unsigned(word);
      if (condition.count == 0) rows.at(used++) = row;
      for (size_t i = 0; i < condition.count; ++i) {
        row.condition = {NamedIndex(condition.control), condition.values[i]};
        rows.at(used++) = row;
      }
    }
  });
  return rows;
}

constexpr auto kStaple = ParseCapabilities<CountRows(kStapleCapabilityText)>(kStapleCapabilityText);
constexpr auto kPunch = ParseCapabilities<CountRows(kPunchCapabilityText)>(kPunchCapabilityText);
constexpr auto kFold = ParseCapabilities<CountRows(kFoldCapabilityText)>(kFoldCapabilityText);
static_assert(kStaple.size() == 41 && kPunch.size() == 33 && kFold.size() == 37);

consteval auto SpreadRotatedFeed() {
  std::array<uint16_t, kPlainRotatedFeed.size() * kRotatedFeedFamilies.size() + 1> codes{};
  size_t used = 0;
  for (const uint16_t bits : kRotatedFeedFamilies) {
    for (const uint16_t code : kPlainRotatedFeed) codes[used++] = static_cast<uint16_t>(code + bits);
  }
  codes[used] = kLastUserPaper;
  return codes;
}
constexpr auto kRotatedFeed = SpreadRotatedFeed();
static_assert(kRotatedFeed.size() == 115);

}  // namespace

std::span<const FinishCapabilityRow> StapleCapabilities() {
  return kStaple;
}
std::span<const FinishCapabilityRow> PunchCapabilities() {
  return kPunch;
}
std::span<const FinishCapabilityRow> FoldCapabilities() {
  return kFold;
}

bool IsRotatedFeed(uint16_t paper) {
  return std::ranges::find(kRotatedFeed, paper) != kRotatedFeed.end();
}

std::span<const uint16_t> RotatedFeedPapers() {
  return kRotatedFeed;
}

}  // namespace heron::engine
