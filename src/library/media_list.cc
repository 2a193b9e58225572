// The paper-type list in a state and in a file (media_list.h).
#include "library/media_list.h"

#include <algorithm>
#include <cstring>

#include "library/repair.h"

namespace heron {
namespace {

constexpr std::string_view kSection = "MEDIATYPELISTDATA";

/// One of the four values of an item: its key, and the feature that tells what it may be.
struct MediaValue {
  std::string_view key;
  uint8_t MediaItem::*member;
  uint16_t feature;
};
constexpr MediaValue kMediaValues[] = {{"_MediaType", &MediaItem::mediaType, 39},
                                       {"_Weight", &MediaItem::weight, 291},
                                       {"_PaperColor", &MediaItem::paperColor, 292},
                                       {"_PaperPunch_Check", &MediaItem::punched, 290}};

/// A setting that selects a tray, and the four that show the tray's media, in the order above.
struct TraySetting {
  uint16_t source;
  uint16_t media[std::size(kMediaValues)];
};
constexpr uint16_t Param(uint16_t id) {
  return ParamIndexOf(id);
}
constexpr TraySetting kTraySettings[] = {
    {ParamNamed<u"lpMediaSource">(), {Param(510), Param(511), Param(512), Param(513)}},
    {ParamNamed<u"lpFrontCoverTray">(), {Param(530), Param(531), Param(532), Param(533)}},
    {ParamNamed<u"lpBackCoverTray">(), {Param(550), Param(551), Param(552), Param(553)}},
};

std::string ItemKey(int item, std::string_view value) {
  // Two digits; there are ten items.
  return std::string("MEDIATYPEITEMDATA0") + static_cast<char>('0' + item) + std::string(value);
}

int32_t ReadNumber(const platform::Profile& file, std::string_view key, int32_t fallback) {
  std::string_view value;
  return file.Get(kSection, key, &value) ? platform::LeadingNumber(value) : fallback;
}

void WriteMediaList(UiState& ui, const MediaList& list) {
  std::memcpy(ui.head().trayTable, &list, sizeof list);
}

}  // namespace

MediaList ReadMediaList(const UiState& ui) {
  MediaList list;
  std::memcpy(&list, ui.head().trayTable, sizeof list);
  return list;
}

void WriteMediaSection(const UiState& ui, platform::Profile& file) {
  const MediaList list = ReadMediaList(ui);
  file.Remove(kSection);
  const platform::Profile::SectionId section = file.Add(kSection);
  const auto put = [&](std::string_view key, int number) { file.Append(section, key, std::to_string(number)); };
  put("Max_Cnt", list.maxCount);
  put("index", list.index);
  for (int i = 0; i < kMediaItemCount; ++i) {
    put(ItemKey(i, "_MediaSource"), list.items[i].source);
    for (const MediaValue& value : kMediaValues) put(ItemKey(i, value.key), list.items[i].*value.member);
  }
}

void ReadMediaSection(UiState& ui, const platform::Profile& file, const ResourceContext* resources) {
  MediaList list = ReadMediaList(ui);
  list.maxCount = static_cast<int16_t>(ReadNumber(file, "Max_Cnt", 0));
  list.index = static_cast<int16_t>(ReadNumber(file, "index", 0));
  if (list.index < 0 || list.index >= kMediaItemCount) list.index = 0;
  for (int i = 0; i < kMediaItemCount; ++i) {
    for (const MediaValue& value : kMediaValues) {
      const auto fallback = static_cast<uint8_t>(CatalogDefault(resources, value.feature));
      const auto number = static_cast<uint8_t>(ReadNumber(file, ItemKey(i, value.key), fallback));
      list.items[i].*value.member = IsLegalValue(resources, value.feature, number) ? number : fallback;
    }
  }
  WriteMediaList(ui, list);
}

void RefreshTrayMedia(const UiState& ui, const ResourceContext* resources) {
  const MediaList list = ReadMediaList(ui);
  for (const TraySetting& tray : kTraySettings) {
    const auto source = static_cast<int16_t>(*FieldsOf(ui, tray.source).value);
    const auto item = std::ranges::find(list.items, source, &MediaItem::source);
    for (size_t i = 0; i < std::size(kMediaValues); ++i) {
      *FieldsOf(ui, tray.media[i]).value =
          item != std::end(list.items) ? static_cast<uint16_t>((*item).*kMediaValues[i].member)
                                       : static_cast<uint16_t>(CatalogDefault(resources, kMediaValues[i].feature));
    }
  }
}

}  // namespace heron
