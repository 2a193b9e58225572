// A library on the backend in memory, with files made at will. Text n of the resource module reads "[n]".
#pragma once

#include <functional>

#include "engine/resolve_fixture.h"
#include "preset_fixture.h"
#include "presets/preset_library.h"
#include "presets/recall.h"

namespace heron::test {

/// Messages since the last look; questions get the scripted answer, or none.
struct LibraryView : engine::ResolveView {
  bool CanAnswer() const override { return someone; }
  bool Show(const engine::Report& report) override {
    if (const auto act = std::exchange(meanwhile, {})) act();
    return ResolveView::Show(report) && someone;
  }
  std::string Said() { return std::exchange(shown, {}); }
  bool someone = true;
  std::function<void()> meanwhile;  ///< what another program does while the first message is shown
};

class SettingsLibraryTest : public LibraryTest {
 protected:
  using Changes = std::vector<std::pair<std::string, std::string>>;

  SettingsLibraryTest() {
    auto& texts = backend.modules[kResourceModule];
    for (uint32_t n = 20000; n < 32000; ++n) texts[n] = u"[" + platform::FromUtf8(std::to_string(n)) + u"]";
    texts.erase(21200);
    AcquireStrings();
    MakeFile(kStandard, u"Standard", {{"attributes", "0"}});
  }
  ~SettingsLibraryTest() override {
    SettingsLibraryClose(library);
    ReleaseStrings();
  }

  /// A file as the driver writes it, with `changes` to its identity.
  void MakeFile(const std::u16string& path, std::u16string_view name, const Changes& changes = {}) {
    platform::Profile file;
    WriteLibraryName(file, name);
    WriteLibraryComment(file, {});
    WriteDriverIdentity(file, DriverIdentity());
    for (const auto& [key, value] : changes) file.Set("IP_SETTING LIBRARY DRIVERINFO", key, value);
    LibraryWriteSettings(*ui, file);
    SetFile(path, file.Bytes());
  }
  void SetFile(const std::u16string& path, std::string_view bytes) {
    backend.files.content[path] = std::make_shared<std::vector<uint8_t>>(bytes.begin(), bytes.end());
  }
  std::string FileBytes(const std::u16string& path) const {
    const auto file = backend.files.content.find(path);
    return file == backend.files.content.end() ? "" : std::string(file->second->begin(), file->second->end());
  }

  /// "Standard, Draft" or "-" if the library doesn't open; what was said is in `view`.
  std::string Open(LibraryLoad load = LibraryLoad::kSettings) {
    library = SettingsLibraryOpen(view, *ui, resources.get(), load);
    return library == nullptr ? "-" : Names();
  }
  std::string Names() const {
    std::string names;
    for (int place = 0; place < library->count; ++place) {
      names += (place == 0 ? "" : ", ") + platform::ToUtf8(library->At(place)->displayName);
    }
    return names;
  }
  bool Save(std::u16string_view name, std::u16string_view comment = {}) {
    return SaveSettingsAs(*library, *ui, kHome, name, comment);
  }
  /// What another program does with the library that it opens for it.
  void Elsewhere(const std::function<void(SettingsLibrary&)>& act) {
    LibraryView other_view;
    SettingsLibraryPtr other = SettingsLibraryOpen(other_view, *ui, resources.get(), LibraryLoad::kSettings);
    act(*other);
  }
  int PlaceNamed(std::u16string_view name) const { return PlaceOfFile(*library, LocationOf(At(name))); }
  bool Register(const std::u16string& path) { return RegisterSettingsFile(*library, path); }
  /// The list as another driver version left it.
  void PretendVersion(std::u16string_view version) {
    LibraryIndex index;
    ASSERT_TRUE(ReadLibraryIndex(u"P1", &index));
    index.driver->version = version;
    ASSERT_TRUE(WriteLibraryIndex(u"P1", index));
  }
  template <ParamKey kKey>
  static uint16_t& Value(const UiState& state) {
    return *FieldsOf(state, ParamNamed<kKey>()).value;
  }

  static inline const std::u16string kHome = u"/home/user";
  static inline const std::u16string kStandard = u"/driver/TVOR610.vxs";
  static std::u16string At(std::u16string_view name) { return (kHome + u"/").append(name).append(u".vxs"); }

  LibraryView view;
  SettingsLibraryPtr library;
};

}  // namespace heron::test
