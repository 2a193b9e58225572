// The paper-type list in a state and in a file (media_list.h).
#include "presets/media_list.h"

#include "presets/repair.h"

namespace heron {
namespace {

constexpr std::string_view kSection = "MEDIATYPELISTDATA";

/// One of the four values of an item: its key, and the feature with its allowed values.
struct MediaValue {
  std::string_view key;
  uint8_t TrayMedia::*member;
  uint16_t feature;
};
constexpr MediaValue kMediaValues[] = {{"_MediaType", &TrayMedia::mediaType, 39},
                                       {"_Weight", &TrayMedia::weight, 291},
                                       {"_PaperColor", &TrayMedia::paperColor, 292},
                                       {"_PaperPunch_Check", &TrayMedia::punched, 290}};

std::string ItemKey(size_t item, std::string_view value) {
  // Two digits; there are ten items.
  return std::string("MEDIATYPEITEMDATA0") + static_cast<char>('0' + item) + std::string(value);
}

int32_t ReadNumber(const platform::Profile& file, std::string_view key, int32_t fallback) {
  std::string_view value;
  return file.Get(kSection, key, &value) ? platform::LeadingNumber(value) : fallback;
}

}  // namespace

void WriteMediaSection(const UiState& ui, platform::Profile& file) {
  const TrayTable& list = TraysOf(ui);
  file.Remove(kSection);
  const platform::Profile::SectionId section = file.Add(kSection);
  const auto put = [&](std::string_view key, int number) { file.Append(section, key, std::to_string(number)); };
  put("Max_Cnt", list.maxCount);
  put("index", list.index);
  for (size_t i = 0; i < kTrayRowCount; ++i) {
    put(ItemKey(i, "_MediaSource"), list.rows[i].source);
    for (const MediaValue& value : kMediaValues) put(ItemKey(i, value.key), list.rows[i].media.*value.member);
  }
}

void ReadMediaSection(const UiState& ui, const platform::Profile& file, const ResourceContext* resources) {
  TrayTable& list = TraysOf(ui);
  list.maxCount = static_cast<int16_t>(ReadNumber(file, "Max_Cnt", 0));
  list.index = static_cast<int16_t>(ReadNumber(file, "index", 0));
  if (list.index < 0 || list.index >= static_cast<int>(kTrayRowCount)) list.index = 0;
  for (size_t i = 0; i < kTrayRowCount; ++i) {
    for (const MediaValue& value : kMediaValues) {
      const auto fallback = static_cast<uint8_t>(CatalogDefault(resources, value.feature));
      const auto number = static_cast<uint8_t>(ReadNumber(file, ItemKey(i, value.key), fallback));
      list.rows[i].media.*value.member = IsLegalValue(resources, value.feature, number) ? number : fallback;
    }
  }
}

void RefreshTrayMedia(const UiState& ui) {
  LoadAllTrayMirrors(ui);
}

}  // namespace heron
