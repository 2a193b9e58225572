#include "pages/custom_papers.h"

#include "catalog/strings.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "pages/size_text.h"
#include "platform/text.h"

namespace heron::pages {
namespace {

using engine::Setting;

/// "(210.0 x 297.0mm)"
std::u16string SizeInParentheses(const CustomPaperEntry& entry) {
  const int unit = UnitOf(entry);
  const int64_t scale = unit == kInch ? 1000 : 10;
  const int64_t width = ShownFromThou(unit, entry.width);
  const int64_t length = ShownFromThou(unit, entry.height);
  return platform::ExpandText(unit == kInch ? u"(%ld.%03ld x %ld.%03ldinch)" : u"(%ld.%01ld x %ld.%01ldmm)",
                              {width / scale, width % scale, length / scale, length % scale});
}

std::u16string SpacedSize(int unit, uint32_t thou) {
  const int64_t shown = ShownFromThou(unit, thou);
  const int64_t scale = unit == kInch ? 1000 : 10;
  return platform::ExpandText(unit == kInch ? u" %ld.%03ld inch " : u" %ld.%01ld mm", {shown / scale, shown % scale});
}

std::u16string RangeOfSizes(int unit, int64_t minimum, int64_t maximum) {
  const int64_t scale = unit == kInch ? 1000 : 10;
  return platform::ExpandText(GetUiString(unit == kInch ? 21571 : 21570),
                              {minimum / scale, minimum % scale, maximum / scale, maximum % scale});
}

}  // namespace

std::u16string_view CustomPaperName(const CustomPaperEntry& entry) {
  const std::u16string_view field(entry.name, std::size(entry.name));
  return field.substr(0, field.find(u'\0'));
}

int UnitOf(const CustomPaperEntry& entry) {
  return entry.unit == kInch ? kInch : kMillimetre;
}

CustomPaperEntry* CustomEntry(const UiState& ui, int number) {
  if (ui.stores.userPapers == nullptr || number < 1 || number > kUserPaperCount) return nullptr;
  return &(*ui.stores.userPapers)[static_cast<size_t>(number - 1)];
}

std::u16string FormatCustomName(const UiState& ui, int number, CustomName form) {
  const CustomPaperEntry* entry = CustomEntry(ui, number);
  if (entry == nullptr) return {};
  std::u16string text(CustomPaperName(*entry));
  if (text.empty() || form == CustomName::kNameWithSize) text += SizeInParentheses(*entry);
  return text;
}

Warning CustomPaperWarning(const UiState& ui) {
  if (engine::CustomPaperFits(ui)) return {};
  const int number = CustomPaperNumber(engine::PrintedPaper(ui));
  const CustomPaperEntry* entry = CustomEntry(ui, number);
  if (entry == nullptr) return {};
  const int unit = UnitOf(*entry);
  const SourceLimit& limit =
      FindSourceLimit(Setting<u"lpMediaSource">(ui), Setting<u"lpSourceUnit">(ui), static_cast<uint16_t>(unit));
  const std::u16string width = SpacedSize(unit, entry->width);
  const std::u16string length = SpacedSize(unit, entry->height);
  const std::u16string widths = RangeOfSizes(unit, limit.minWidth, limit.maxWidth);
  const std::u16string lengths = RangeOfSizes(unit, limit.minLength, limit.maxLength);
  return {platform::ExpandText(GetUiString(25007), {FormatCustomName(ui, number, CustomName::kName), width, length,
                                                    GetUiString(limit.label), widths, lengths}),
          TextOf(25006)};
}

}  // namespace heron::pages
