// The dialogs of the settings library: save, recall, what a recall brings, organize.
#include "presets/preset_library.h"
#include "presets/recall.h"
#include "sheet_fixture.h"
#include "support/failing_new.h"
#include "support/recording_canvas.h"

namespace heron::test {
namespace {

using namespace platform;

class LibraryDialogTest : public SheetTest {
 protected:
  LibraryDialogTest() {
    backend.modules[kResourceModule][21010] = u"%d";
    backend.modules[kResourceModule][26308] = u"now %s";
  }

  void Run(uint16_t command, DialogName number, ScriptedDesk::Script script) {
    desk.Expect(number, std::move(script));
    page->menu_choice = command;
    page->Click("settingsLibrary.paper");
  }
  void Save(ScriptedDesk::Script script) { Run(2582, "save-settings", std::move(script)); }
  void Recall(ScriptedDesk::Script script) { Run(2583, "recall-settings", std::move(script)); }
  void Organize(ScriptedDesk::Script script) { Run(2584, "organize-settings", std::move(script)); }
  void Options(ScriptedDesk::Script script) { Run(2585, "recall-options", std::move(script)); }

  /// Saves the settings of the sheet in the dialog.
  void SaveAs(std::u16string_view name, std::u16string_view comment = {}) {
    Save([&](ScriptedDialog& dialog) {
      dialog.Type("newPresetName", name);
      dialog.Put("newPresetComment", comment);
      EXPECT_EQ(Confirm(dialog), "closed");
    });
  }
  /// What another program does with the library.
  void Elsewhere(const std::function<void(SettingsLibrary&)>& act) {
    auto& view = dynamic_cast<engine::EngineView&>(*sheet->pages[0].logic);
    const auto other = SettingsLibraryOpen(view, ui(), sheet->context().resources.get(), LibraryLoad::kSettings);
    act(*other);
  }
  bool IsFile(const std::u16string& path) const { return backend.files.content.contains(path); }
  static std::vector<std::string> Names(std::initializer_list<const char*> names) {
    return {names.begin(), names.end()};
  }
};

// -- save

TEST_F(LibraryDialogTest, SavesUnderANameWithAComment) {
  OpenPage("lpPRNType=TwoSided");
  Save([this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf("newPresetFolder"), "/home/user");
    EXPECT_EQ(dialog.RowsOf("saveTabs").size(), 8U);
    EXPECT_EQ(ToUtf8(dialog["saveRows"].rows[0].text), "[20000]");
    dialog.Select("saveTabs", 7);
    EXPECT_EQ(ToUtf8(dialog["saveRows"].rows[0].text), "[26200]");
    EXPECT_EQ(Confirm(dialog), "[21103]|[25750] at newPresetName");
    EXPECT_EQ(Confirm(dialog, "newPresetName", u"a/b"), "[21103]|[25751] at newPresetName");
    EXPECT_EQ(Confirm(dialog, "newPresetName", u"Two sides"), "closed");
  });
  EXPECT_EQ(page->changes, 1);
  EXPECT_TRUE(IsFile(u"/home/user/Two sides.vxs"));
  Save([this](ScriptedDialog& dialog) {
    desk.Answer(IDNO);
    EXPECT_EQ(Confirm(dialog, "newPresetName", u"Two sides"), "[21103]|[25755]? at newPresetName");
    desk.Answer(IDYES);
    EXPECT_EQ(Confirm(dialog), "closed");
  });
}

TEST_F(LibraryDialogTest, BrowseBringsFolderAndName) {
  OpenPage();
  Save([this](ScriptedDialog& dialog) {
    const auto browse = [&](const std::u16string& path) {
      desk.AnswerPath(path);
      dialog.Click("browsePreset");
      return desk.Told();
    };
    EXPECT_EQ(browse(u"/home/user/draft.txt"), "[21100]|path? / [21103]|[25753]");
    EXPECT_EQ(browse(u"/home/user/a.b.vxs"), "[21100]|path? / [21103]|[25751]");
    EXPECT_EQ(browse(u"/home/user/" + std::u16string(65, u'x') + u".vxs"), "[21100]|path? / [21103]|[25752]");
    EXPECT_EQ(dialog.TextOf("newPresetName"), "");
    EXPECT_EQ(browse(u"/home/user/shared/Draft.VXS"), "[21100]|path?");
    EXPECT_EQ(dialog.TextOf("newPresetFolder") + " " + dialog.TextOf("newPresetName"), "/home/user/shared Draft");
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  Save([](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf("newPresetFolder"), "/home/user/shared") << "where the last one was saved";
    dialog.Click(kCancelButton);
  });
  EXPECT_EQ(page->changes, 1);
}

TEST_F(LibraryDialogTest, WhatIsMeantForOneJobIsNamedAndNotSaved) {
  OpenPage("lpOverlay=PrintWithForm");
  Save([this](ScriptedDialog& dialog) {
    EXPECT_EQ(desk.Told(), "[21103]|[25719][25720][25723]");
    dialog.Type("newPresetName", u"Plain");
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  EXPECT_EQ(Value("lpOverlay.NoOverlay"), "PrintWithForm");
}

// -- recall

TEST_F(LibraryDialogTest, AnEntryIsShownBesideTheCurrentSettingsAndRecalled) {
  OpenPage("lpPRNType=TwoSided");
  SaveAs(u"Two sides", u"for the board");
  Choose("lpPRNType", "OneSided");
  SaveAs(u"One side");
  const int changes = page->changes;
  Recall([&](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.RowsOf("presetsToRecall"), Names({"Two sides", "One side"}));
    EXPECT_EQ(dialog.TextOf("recallComment"), "for the board");
    EXPECT_EQ(dialog.TextOf("recallKind"), "/home/user/Two sides.vxs");
    EXPECT_EQ(std::ranges::count(dialog["recallRows"].rows, 12230U, &ListRow::picture), 1);
    dialog.Check("onlyDifferences", true);
    EXPECT_EQ(dialog.RowsOf("recallRows"), Names({"[20039]|[21596]||now [21595]"}));
    dialog.Select("recallTabs", 7);
    EXPECT_EQ(dialog.RowsOf("recallRows"), Names({"[26309]"}));
    dialog.Select("presetsToRecall", 1);
    dialog.Select("recallTabs", 0);
    EXPECT_EQ(dialog.RowsOf("recallRows"), Names({"[26309]"}));
    dialog.Select("presetsToRecall", 0);
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  EXPECT_EQ(Value("lpPRNType"), "TwoSided");
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21596]");
  EXPECT_EQ(page->changes, changes + 1);
}

TEST_F(LibraryDialogTest, PicturesFollowTheEntry) {
  OpenPage("lpPRNType=TwoSided");
  SaveAs(u"Two sides");
  Choose("lpPRNType", "OneSided");
  SaveAs(u"One side");
  Recall([](ScriptedDialog& dialog) {
    const auto paint = [&](const char* place) {
      RecordingCanvas canvas;
      dialog.Paint(place, canvas, {0, 0, 170, 130});
      return canvas.log;
    };
    const auto upper = paint("recallUpperPicture"), lower = paint("recallLowerPicture");
    const int painted = dialog["recallUpperPicture"].repaints;
    dialog.Select("presetsToRecall", 1);
    EXPECT_GT(dialog["recallUpperPicture"].repaints, painted);
    EXPECT_TRUE(paint("recallUpperPicture") != upper || paint("recallLowerPicture") != lower);
    dialog.Select("presetsToRecall", 0);
    EXPECT_EQ(paint("recallUpperPicture"), upper);
    dialog.Click(kCancelButton);
  });
}

TEST_F(LibraryDialogTest, SearchFindsNamesCommentsAndContents) {
  OpenPage("lpPRNType=TwoSided");
  SaveAs(u"Two sides", u"for the Board");
  Choose("lpPRNType", "OneSided");
  SaveAs(u"One side");
  Recall([](ScriptedDialog& dialog) {
    dialog.Put("findPreset", u"ONE");
    EXPECT_EQ(dialog.RowsOf("presetsToRecall"), Names({"One side"}));
    dialog.Put("findPreset", u"board");
    EXPECT_EQ(dialog.RowsOf("presetsToRecall"), Names({"Two sides"}));
    dialog.Put("findPreset", u"[21596]");
    EXPECT_EQ(dialog.RowsOf("presetsToRecall"), Names({"Two sides"})) << "in the summary";
    dialog.Put("findPreset", u"nothing");
    EXPECT_EQ(dialog.RowsOf("presetsToRecall").size() + dialog.RowsOf("recallRows").size(), 0U);
    EXPECT_FALSE(dialog.IsEnabled("OK"));
    dialog.Put("findPreset", u"");
    EXPECT_TRUE(dialog.IsEnabled("OK"));
    dialog.Click(kCancelButton);
  });
}

TEST_F(LibraryDialogTest, CancelRestoresTheFlags) {
  OpenPage("Copies=7");
  SaveAs(u"Seven");
  engine::Setting<u"Copies">(ui()) = 1;
  Recall([this](ScriptedDialog& dialog) {
    desk.Expect("recall-options", [](ScriptedDialog& options) {
      EXPECT_FALSE(options["UsetPaperChk"].checked);
      options.Click("selectAllParts");
      options.Click(kOkButton);
    });
    dialog.Click("recallOptions");
    EXPECT_EQ(RecallPartsOf(ui()), kAllRecallParts);
    dialog.Click(kCancelButton);
  });
  EXPECT_EQ(RecallPartsOf(ui()), kRecallUserPapers | kRecallWatermarks | kRecallPerPage | kRecallFaxCover)
      << "the catalogue's";
  Recall([this](ScriptedDialog& dialog) {
    desk.Expect("recall-options", [](ScriptedDialog& options) {
      options.Check("UsetPaperChk", true);
      options.Click(kOkButton);
    });
    dialog.Click("recallOptions");
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  EXPECT_EQ(Value("Copies"), 7);
}

TEST_F(LibraryDialogTest, FlagsAreKeptFromTheMenu) {
  OpenPage();
  Options([](ScriptedDialog& dialog) {
    dialog.Check("UsetWMarkChk", false);
    dialog.Click(kCancelButton);
  });
  EXPECT_EQ(page->changes, 0);
  EXPECT_EQ(engine::Setting<u"UsetWMarkChk">(ui()), 1);
  Options([](ScriptedDialog& dialog) {
    dialog.Check("UsetWMarkChk", false);
    dialog.Check("UsetFormChk", true);
    dialog.Click("restoreParts");
    EXPECT_TRUE(dialog["UsetWMarkChk"].checked);
    EXPECT_FALSE(dialog["UsetFormChk"].checked);
    dialog.Check("UsetWMarkChk", false);
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(page->changes, 1);
  EXPECT_EQ(engine::Setting<u"UsetWMarkChk">(ui()), 0);
}

TEST_F(LibraryDialogTest, WithoutUserPapersThereIsNothingToTakeOver) {
  OpenPage();
  for (ListItem& item : SlotAs<u"lpMediaSize", ListBlock>(ui()).Items()) {
    if (IsCustomPaper(item.value)) item.value = value::lpMediaSize::kA4;
  }
  Options([](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled("UsetUDPaperChk"));
    EXPECT_FALSE(dialog["UsetUDPaperChk"].checked);
    dialog.Click("selectAllParts");
    EXPECT_FALSE(dialog["UsetUDPaperChk"].checked);
    dialog.Click(kOkButton);
  });
  engine::Setting<u"UsetUDPaperChk">(ui()) = 1;
  EXPECT_EQ(RecallPartsOf(ui()) & kRecallUserPapers, 0);
}

TEST_F(LibraryDialogTest, AnEmptyLibraryHasNothingToRecall) {
  OpenPage();
  Recall([](ScriptedDialog&) { ADD_FAILURE() << "the dialog opened"; });
  EXPECT_EQ(desk.Told(), "[25757]|[25758]");
  EXPECT_EQ(page->changes, 0);
}

// -- organize

TEST_F(LibraryDialogTest, OrderByButtonsAndByDragging) {
  OpenPage();
  for (const char16_t* name : {u"A", u"B", u"C"}) SaveAs(name);
  Organize([](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled("movePresetUp"));
    dialog.Click("movePresetDown");
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"B", "A", "C"}));
    EXPECT_EQ(dialog.SelectedText("presets"), "A");
    dialog.DragRow("presets", 2, 0);
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"C", "B", "A"}));
    EXPECT_EQ(dialog.SelectedText("presets"), "C");
    dialog.Select("presets", 2);
    EXPECT_FALSE(dialog.IsEnabled("movePresetDown"));
    dialog.Put("findPresetToEdit", u"B");
    EXPECT_FALSE(dialog.IsEnabled("movePresetUp")) << "of a part of the list";
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(page->changes, 4);
  Elsewhere([](SettingsLibrary& library) { EXPECT_EQ(library.At(0)->displayName, u"C"); });
}

TEST_F(LibraryDialogTest, NameAndCommentAreStoredWhenTheUserGoesOn) {
  OpenPage();
  SaveAs(u"A");
  SaveAs(u"B", u"old");
  Organize([this](ScriptedDialog& dialog) {
    dialog.Select("presets", 1);
    EXPECT_EQ(dialog.TextOf("presetComment"), "old");
    dialog.Type("presetName", u"a");
    EXPECT_FALSE(dialog.MoveFocus("presetComment"));
    EXPECT_EQ(desk.Told(), "[21105]|[25765]");
    dialog.Type("presetName", u"Bee");
    dialog.Type("presetComment", u"new");
    dialog.Select("presets", 0);
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"A", "Bee"}));
    EXPECT_EQ(dialog.TextOf("presetName"), "A");
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  EXPECT_TRUE(IsFile(u"/home/user/Bee.vxs") && !IsFile(u"/home/user/B.vxs"));
  Elsewhere([](SettingsLibrary& library) { EXPECT_EQ(library.At(1)->comment, u"new"); });
}

TEST_F(LibraryDialogTest, RemovedExportedAndRegisteredAgain) {
  OpenPage();
  SaveAs(u"A");
  SaveAs(u"B");
  Organize([this](ScriptedDialog& dialog) {
    const auto ask = [&](const char* button, const std::u16string& path) {
      desk.AnswerPath(path);
      dialog.Click(button);
      return desk.Told();
    };
    EXPECT_EQ(ask("exportPreset", u"/home/user/B.vxs"), "[26310]|path? / [21105]|[25765]") << "it is in the list";
    EXPECT_EQ(ask("exportPreset", u"/home/user/Copy.vxs"), "[26310]|path?");
    EXPECT_EQ(ask("registerPreset", u"/home/user/Copy.txt"), "[21106]|path? / [21106]|[25763]");
    EXPECT_EQ(ask("registerPreset", u"/home/user/Copy.vxs"), "[21106]|path?");
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"A", "B", "Copy"}));
    EXPECT_EQ(dialog.SelectedText("presets"), "Copy");
    dialog.Select("presets", 1);
    desk.Answer(IDYES);
    dialog.Click("removePreset");
    EXPECT_EQ(desk.Told(), "[21105]|[25766]?");
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"A", "Copy"}));
    EXPECT_EQ(dialog.SelectedText("presets"), "Copy");
    dialog.Click(kOkButton);
  });
  EXPECT_TRUE(IsFile(u"/home/user/B.vxs"));
}

TEST_F(LibraryDialogTest, OtherProgramsAndFilesThatVanish) {
  OpenPage();
  for (const char16_t* name : {u"A", u"B", u"C"}) SaveAs(name);
  Organize([this](ScriptedDialog& dialog) {
    Elsewhere([](SettingsLibrary& library) { EXPECT_TRUE(RenameSettings(library, 0, u"Z")); });
    dialog.Select("presets", 1);
    dialog.Click("movePresetDown");
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"Z", "C", "B"})) << "what is there now";
    backend.files.content.erase(u"/home/user/C.vxs");
    dialog.Select("presets", 1);
    dialog.Type("presetComment", u"gone");
    dialog.Click(kOkButton);
    EXPECT_EQ(desk.Told(), "[21105]|[25776]");
    EXPECT_EQ(dialog.RowsOf("presets"), Names({"Z", "B"}));
    EXPECT_EQ(Confirm(dialog), "closed");
  });
}

// -- failures

TEST_F(LibraryDialogTest, WithMemoryRunningOut) {
  OpenPage("lpPRNType=TwoSided");
  SaveAs(u"Two sides");
  Choose("lpPRNType", "OneSided");
  const struct {
    uint16_t command;
    DialogName number;
  } kDialogs[] = {{2582, "save-settings"}, {2583, "recall-settings"}, {2584, "organize-settings"}};
  for (const auto& row : kDialogs) {
    const auto before = Bytes();
    for (int allocation = 1;; allocation += 1 + allocation / 8) {
      bool started = false;
      bool failed = false;
      desk.while_starting = [&](const auto& start) {
        const FailingNew failing(allocation);
        start();
        failed = failing.Refused();
      };
      Run(row.command, row.number, [&](ScriptedDialog& dialog) {
        started = true;
        dialog.Click(row.command == 2584 ? kOkButton : kCancelButton);
        EXPECT_TRUE(dialog.ended());
      });
      EXPECT_TRUE(Bytes() == before) << allocation;
      if (!failed) {
        EXPECT_TRUE(started);
        break;
      }
    }
  }
}

}  // namespace
}  // namespace heron::test
