#include "printpath/font_map.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "generated/values.h"
#include "platform/api/characters.h"
#include "printpath/printer_font_table.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

constexpr size_t kNameRoom = 32;  ///< characters of a stored name

/// A stored name in the system's code page, as far as its whole characters fit in `room` bytes.
std::string NameBytes(const char16_t (&name)[kNameRoom], size_t room) {
  return platform::AnsiWithin({name, std::find(name, name + kNameRoom, u'\0')}, room);
}

/// ESC ( symbol set, then ESC ( s, spacing p, style s, weight b, typeface T.
std::string PclSelection(const PrinterFont& font, std::string_view style_and_weight) {
  if (style_and_weight == "-") return {};
  const size_t slash = style_and_weight.find('/');
  std::string text("\x1b(");
  text.append(font.symbolSet).append("\x1b(s").append(font.spacing).append("p");
  text.append(style_and_weight.substr(0, slash)).append("s").append(style_and_weight.substr(slash + 1)).append("b");
  return text.append(font.typeface).append("T");
}

void SetText(FontMapEntry& entry, size_t index, std::string_view text) {
  text.copy(entry.texts[index], FontMapEntry::kTextSize);
}

FontMapEntry EntryOf(const FontPair& pair, bool pcl) {
  FontMapEntry entry{};
  const std::string name = NameBytes(pair.deviceFont, FontMapEntry::kTextSize - 1);
  const auto font = std::ranges::find(kPrinterFonts, name, &PrinterFont::name);
  if (font == kPrinterFonts.end()) return entry;
  SetText(entry, 0, NameBytes(pair.trueTypeFont, FontMapEntry::kTextSize));
  for (size_t i = 0; i < font->variants.size(); ++i) {
    SetText(entry, i + 1, pcl ? PclSelection(*font, font->variants[i]) : std::string(font->names[i]));
  }
  if (!pcl) {
    entry.code = font->code;
    entry.flag = font->flag;
  }
  return entry;
}

}  // namespace

std::vector<FontMapEntry> BuildFontMap(const DriverEnv& record) {
  const std::u16string printer_name = GetText<"dmDeviceName">(record);
  if (printer_name.empty() || Get<"FontUseFlg">(record) == 0) return {};
  ListStoreSet set;
  set.fontSubst = std::make_unique<FontSubstStore>();
  if (!WalkStore(set, ListStoreId::kFontSubst, printer_name, WalkOp::kRead)) return {};
  const std::span<const FontPair> pairs(set.fontSubst->pairs, set.fontSubst->fontSubTblNum);
  std::vector<FontMapEntry> map(pairs.size());
  const bool pcl = Get<"lpPDLType">(record) == value::lpPDLType::kPcl5;
  std::ranges::transform(pairs, map.begin(), [&](const FontPair& pair) { return EntryOf(pair, pcl); });
  return map;
}

std::vector<uint8_t> PackFontMap(const std::vector<FontMapEntry>& map, bool brief) {
  constexpr size_t kOffsetsSize = FontMapEntry::kTexts * sizeof(uint32_t);
  const size_t index_size = brief ? kOffsetsSize : kOffsetsSize + 4;
  const size_t area_size = map.size() * FontMapEntry::kTextSize;
  std::vector<uint8_t> packed(map.size() * index_size + FontMapEntry::kTexts * area_size);
  for (size_t i = 0; i < map.size(); ++i) {
    uint8_t* const index = packed.data() + i * index_size;
    for (size_t text = 0; text < FontMapEntry::kTexts; ++text) {
      const size_t at = map.size() * index_size + text * area_size + i * FontMapEntry::kTextSize;
      const auto offset = static_cast<uint32_t>(at);
      std::memcpy(index + text * sizeof offset, &offset, sizeof offset);
      std::memcpy(packed.data() + at, map[i].texts[text], FontMapEntry::kTextSize);
    }
    if (brief) continue;
    std::memcpy(index + kOffsetsSize, &map[i].code, sizeof map[i].code);
    index[kOffsetsSize + sizeof map[i].code] = map[i].flag;
  }
  return packed;
}

}  // namespace heron
