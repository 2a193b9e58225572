#include "pages/font_rows.h"

#include <algorithm>
#include <map>
#include <set>

#include "presets/fold_case.h"
#include "uistate/list_stores_seed.h"

namespace heron::pages {
namespace {

/// The first half of a character that takes two places.
bool IsFirstHalf(char16_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}

std::u16string Cut(std::u16string name) {
  if (name.size() <= kFontNameLength) return name;
  name.resize(IsFirstHalf(name[kFontNameLength - 1]) ? kFontNameLength - 1 : kFontNameLength);
  return name;
}

void SetName(char16_t (&field)[32], std::u16string_view name) {
  std::ranges::fill(field, u'\0');
  std::ranges::copy(name.substr(0, kFontNameLength), field);
}

}  // namespace

std::vector<std::u16string> ListedFonts(std::vector<std::u16string> names) {
  std::set<std::pair<std::u16string, std::u16string>> sorted;  // by the folded name, then by the name itself
  for (std::u16string& name : names) {
    if (name.empty() || name.front() == u'@') continue;
    std::u16string cut = Cut(std::move(name));
    std::u16string folded = Folded(cut);
    sorted.emplace(std::move(folded), std::move(cut));
  }
  std::vector<std::u16string> listed;
  listed.reserve(sorted.size());
  for (const auto& [folded, name] : sorted) listed.push_back(name);
  return listed;
}

std::vector<FontRow> RowsOfFonts(const std::vector<std::u16string>& names, std::span<const FontPair> pairs) {
  std::map<std::u16string_view, std::u16string_view> replaced;
  for (const FontPair& pair : pairs) replaced.emplace(TextOfName(pair.trueTypeFont), TextOfName(pair.deviceFont));
  std::vector<FontRow> rows;
  rows.reserve(names.size());
  for (const std::u16string& name : names) {
    const auto found = replaced.find(name);
    rows.push_back({name, found == replaced.end() ? std::u16string() : std::u16string(found->second)});
  }
  return rows;
}

std::vector<std::u16string> PrinterFonts() {
  std::vector<std::u16string> fonts;
  for (const FontPair& pair : DefaultFontPairs()) fonts.emplace_back(TextOfName(pair.deviceFont));
  return fonts;
}

std::span<const FontPair> PairsOf(const FontSubstStore& store) {
  return std::span(store.pairs).first(std::min<size_t>(store.fontSubTblNum, kFontPairCount));
}

std::u16string_view TextOfName(const char16_t (&name)[32]) {
  const std::u16string_view text(name, std::size(name));
  return text.substr(0, text.find(u'\0'));
}

void StorePairs(FontSubstStore& store, std::span<const FontRow> rows) {
  std::ranges::fill(store.pairs, FontPair{});
  size_t count = 0;
  for (const FontRow& row : rows) {
    if (row.printerFont.empty() || count == kFontPairCount) continue;
    SetName(store.pairs[count].trueTypeFont, row.trueType);
    SetName(store.pairs[count].deviceFont, row.printerFont);
    ++count;
  }
  store.fontSubTblNum = static_cast<uint16_t>(count);
}

}  // namespace heron::pages
