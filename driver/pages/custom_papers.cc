#include "pages/custom_papers.h"

#include "catalog/strings.h"
#include "engine/sizes.h"
#include "generated/texts.h"
#include "pages/size_text.h"
#include "platform/api/text.h"

namespace heron::pages {
namespace {

/// "(210.0 x 297.0mm)"
std::u16string SizeInParentheses(const CustomPaperEntry& entry) {
  const int unit = UnitOf(entry);
  return ExpandSizes(unit, {u"(%ld.%01ld x %ld.%01ldmm)", u"(%ld.%03ld x %ld.%03ldinch)"},
                     ShownFromThou(unit, entry.width), ShownFromThou(unit, entry.height));
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
  const SourceLimit& limit = engine::LimitOfSource(ui, unit);
  const auto size = [unit](uint32_t thou) {
    return ExpandSize(unit, {u" %ld.%01ld mm", u" %ld.%03ld inch "}, ShownFromThou(unit, thou));
  };
  const auto range = [unit](int32_t minimum, int32_t maximum) {
    return ExpandSizes(unit, {GetUiString(text::kRangeInMillimetres), GetUiString(text::kRangeInInches)},
                       static_cast<uint32_t>(minimum), static_cast<uint32_t>(maximum));
  };
  return {platform::ExpandText(GetUiString(text::kCustomSizeMisfit),
                               {FormatCustomName(ui, number, CustomName::kName), size(entry->width),
                                size(entry->height), GetUiString(limit.label), range(limit.minWidth, limit.maxWidth),
                                range(limit.minLength, limit.maxLength)}),
          TextOf(text::kCustomSizeWarning)};
}

}  // namespace heron::pages
