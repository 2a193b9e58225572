// Reading, writing and copying settings (preset_file.h).
#include "presets/preset_file.h"

#include <algorithm>
#include <cstring>

#include "engine/page_list.h"
#include "presets/key_reader.h"
#include "presets/key_walk.h"
#include "presets/key_writer.h"
#include "presets/media_list.h"
#include "presets/page_numbers.h"
#include "presets/repair.h"

namespace heron {
namespace {

using platform::Profile;

constexpr std::string_view kPlainSectionName = "IP_SETTING LIBRARY UIPARAM";
constexpr std::string_view kPageNumbersKey = "pagenumStr";
constexpr uint16_t kPageNumbersGroup = 1;
constexpr size_t kPageNumbersRoom = 316;  ///< characters, terminator included

template <size_t N>
void ClearText(char16_t (&text)[N]) {
  std::fill(std::begin(text), std::end(text), u'\0');
}

/// Counts 0 and texts empty; the rest of an item means nothing until its list has it again.
void ClearLists(const ListStoreSet& stores) {
  if (stores.pageLists != nullptr) {
    for (PageList& list : stores.pageLists->lists) {
      ClearText(list.name);
      list.pageCount = 0;
      for (PageEntry& page : list.pages) {
        ClearText(page.page);
        ClearText(page.tabText);
        ClearText(page.tabTextFontName);
      }
    }
  }
  if (stores.overlays != nullptr) {
    stores.overlays->formListNum = 0;
    for (auto& form : stores.overlays->forms) ClearText(form);
  }
  if (stores.watermarks != nullptr) {
    stores.watermarks->wMarkListNum = 0;
    for (WatermarkEntry& mark : stores.watermarks->entries) {
      ClearText(mark.text);
      ClearText(mark.font);
    }
  }
}

void ReadPageNumbers(const UiState& ui, const Profile& file) {
  std::string_view text;
  file.Get(kPlainSectionName, kPageNumbersKey, &text);
  ParsePageNumbers(text.substr(0, kPageNumbersRoom - 1), &PageNumbersOf(ui));
}

void WritePageNumbers(const UiState& ui, Profile& file) {
  const std::string text = FormatPageNumbers(PageNumbersOf(ui));
  const Profile::SectionId section = file.Find(kPlainSectionName);
  std::string_view before;
  if (section != Profile::kNone && !file.Get(kPlainSectionName, kPageNumbersKey, &before))
    file.Append(section, kPageNumbersKey, text);
  else
    file.Set(kPlainSectionName, kPageNumbersKey, text);
}

/// Takes values from the place of the same key in another state.
class KeyCopier final : public KeyTransfer {
 public:
  explicit KeyCopier(const UiState& source) : source_(source) {}

  bool Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) override {
    StoreField from;
    if (value == nullptr || !LocateValue(key, source_, section_number, key_number, &from)) return false;
    std::memcpy(value->data, from.data, std::min(value->size, from.size));
    return true;
  }

 private:
  const UiState& source_;
};

}  // namespace

bool LibraryReadSettings(UiState& ui, std::u16string_view path, const ResourceContext* resources) {
  std::string bytes;
  if (platform::ReadProfileBytes(std::u16string(path).c_str(), &bytes) != platform::kErrorSuccess) {
    ClearLists(ui.stores);
    return false;
  }
  LibraryReadSettings(ui, Profile(bytes), resources);
  return true;
}

void LibraryReadSettings(UiState& ui, const Profile& file, const ResourceContext* resources) {
  ClearLists(ui.stores);
  SectionIndex index(file);
  KeyReader reader(ui, index);
  WalkKeys(ui, WalkKind::kInto, kAllGroups, reader);
  ReadPageNumbers(ui, file);
  ReadMediaSection(ui, file, resources);
  engine::ShowPageListNames(ui);
  RepairSettings(ui, kAllGroups, resources);
  RefreshTrayMedia(ui);  // once the trays are legal
}

bool LibraryWriteSettings(const UiState& ui, std::u16string_view path) {
  const std::u16string name(path);
  std::string bytes;
  const platform::DWORD status = platform::ReadProfileBytes(name.c_str(), &bytes);
  if (status != platform::kErrorSuccess && status != platform::kErrorFileNotFound) return false;
  Profile file(bytes);
  return LibraryWriteSettings(ui, file) && platform::SaveProfile(name.c_str(), file) == platform::kErrorSuccess;
}

bool LibraryWriteSettings(const UiState& ui, Profile& file) {
  KeyWriter writer(file);
  const bool written = WalkKeys(ui, WalkKind::kOutOf, kAllGroups, writer);
  WritePageNumbers(ui, file);
  WriteMediaSection(ui, file);
  return written;
}

void CopySettingsGroup(UiState& target, const UiState& source, int group, const ResourceContext* resources) {
  KeyCopier copier(source);
  WalkKeys(target, WalkKind::kInto, group, copier);
  if (group == kPageNumbersGroup) PageNumbersOf(target) = PageNumbersOf(source);
  RepairSettings(target, group, resources);
}

}  // namespace heron
