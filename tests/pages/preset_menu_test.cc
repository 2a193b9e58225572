// The library button: its menu, the recall of an entry, and what a full library says.
#include "presets/preset_library.h"
#include "presets/recall.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

class LibraryMenuTest : public SheetTest {
 protected:
  LibraryMenuTest() { backend.modules[kResourceModule][21010] = u"%d"; }

  /// Puts the settings of the sheet into the library under `name`.
  void Save(std::u16string_view name) {
    auto& view = dynamic_cast<engine::EngineView&>(*sheet->pages[0].logic);  // a page is its own view
    const auto library = SettingsLibraryOpen(view, ui(), sheet->context().resources.get(), LibraryLoad::kHeads);
    ASSERT_NE(library, nullptr);
    ASSERT_TRUE(SaveSettingsAs(*library, ui(), u"/home/user", name, {}));
  }
  std::string Menu(uint16_t choice) {
    page->menu_choice = choice;
    page->Click("settingsLibrary.paper");
    std::string text;
    for (const platform::MenuItem& item : page->menu) {
      text += item.command == 0 ? "-" : std::to_string(item.command) + (item.enabled ? "" : "!");
      text += " ";
    }
    return text;
  }
};

TEST_F(LibraryMenuTest, EntriesAreRecalledFromTheMenu) {
  OpenPage("lpPRNType=TwoSided");
  Save(u"Two sides");
  Choose("lpPRNType", "OneSided");
  const int changes = page->changes;
  EXPECT_EQ(Menu(0), "2580! 2582 2583 2584 - 2581! 2625 - 2585 ");
  EXPECT_EQ(platform::ToUtf8(page->menu[5].text), "[26303]  [1/25]");
  EXPECT_EQ(platform::ToUtf8(page->menu[6].text), "Two sides");
  EXPECT_EQ(Value("lpPRNType"), "OneSided");
  Menu(2626);
  EXPECT_EQ(page->changes, changes) << "there is no such entry";
  Menu(2625);
  EXPECT_EQ(Value("lpPRNType"), "TwoSided");
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21596]");
  EXPECT_EQ(page->changes, changes + 1);
}

TEST_F(LibraryMenuTest, TheRecordsFlagsDecideWhatComes) {
  OpenPage("Copies=7");
  Save(u"Seven");
  *FieldsOf(ui(), ParamNamed<u"Copies">()).value = 1;
  Menu(2625);
  EXPECT_EQ(Value("Copies"), 1) << "size and copies stay, as the catalogue has it";
  *FieldsOf(ui(), ParamNamed<u"UsetPaperChk">()).value = 1;
  Menu(2625);
  EXPECT_EQ(Value("Copies"), 7);
}

TEST_F(LibraryMenuTest, TheEntryThatWasChosenIsRecalledOrNone) {
  OpenPage("lpPRNType=TwoSided");
  Save(u"Two sides");
  Choose("lpPRNType", "Booklet");
  Save(u"Booklet");
  Choose("lpPRNType", "OneSided");
  const auto lose = [&](const std::u16string& name) {
    page->while_menu_is_open = [&, name] { backend.files.content.erase(u"/home/user/" + name + u".vxs"); };
  };
  lose(u"Two sides");
  Menu(2626);
  EXPECT_EQ(Value("lpPRNType"), "Booklet");
  lose(u"Booklet");
  const auto before = Bytes();
  Menu(2625);
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(LibraryMenuTest, AFullLibrarySaysSo) {
  OpenPage();
  for (char16_t n = u'a'; n < u'a' + kLibraryCapacity; ++n) Save(std::u16string(1, n));
  EXPECT_NE(Menu(2586).find("2580! 2586 2583 "), std::string::npos);
  EXPECT_EQ(desk.Told(), "[21103]|25");
}

}  // namespace
}  // namespace heron::test
