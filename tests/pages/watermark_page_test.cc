// The watermark page and its editor: what a user does with them, and what Cancel takes back.
#include "forms/watermark_list.h"
#include "sheet_fixture.h"
#include "support/recording_canvas.h"

namespace heron::test {
namespace {

class WatermarkPageTest : public SheetTest {
 protected:
  WatermarkPageTest() {
    texts()[20403] = u"(none)";
    for (uint32_t n = 30002; n <= 30012; ++n) texts()[n] = u"mark " + platform::FromUtf8(std::to_string(n - 30001));
    desk.families = {{.name = u"Sans"}, {.name = u"Serif"}, {.name = u"宋体"}};
  }
  std::map<uint32_t, std::u16string>& texts() { return backend.modules[kResourceModule]; }

  WatermarkStore& store() { return *ui().stores.watermarks; }
  int Current() { return SlotAs<u"bWatermarkCurrent", uint8_t>(ui()); }
  /// Opens the editor from the page with watermark `current` in use.
  void Edit(int current, const ScriptedDesk::Script& script) {
    if (page == nullptr) OpenPage("Watermark_Use=On", "watermark");
    page->Select("watermarks", current);
    desk.Expect("edit-watermarks", script);
    page->Click("editWatermarks");
  }
  std::string Entry(int index) {
    const WatermarkEntry& e = store().entries[index];
    return platform::ToUtf8(MarkText(e)) + '|' + platform::ToUtf8(MarkFont(e)) + '|' + std::to_string(e.style) + ' ' +
           std::to_string(e.size) + ' ' + std::to_string(e.angle) + ' ' + std::to_string(e.color) + ' ' +
           std::to_string(MarkCenterX(e)) + ' ' + std::to_string(MarkCenterY(e));
  }
};

TEST_F(WatermarkPageTest, ShowsWhatIsInUse) {
  OpenPage({}, "watermark");
  EXPECT_EQ(page->RowsOf("watermarks").size(), 12U);
  EXPECT_EQ(page->SelectedText("watermarks"), "(none)");
  EXPECT_FALSE(page->IsEnabled("watermarks") || page->IsEnabled("editWatermarks"));
  EXPECT_EQ((*page)[2369].picture, 15850U);
  page->Check("Watermark_Use", true);
  EXPECT_EQ((*page)[2369].picture, 15851U);
  page->Press("lpWatermarkOrder.Transparent");
  EXPECT_EQ((*page)[2369].picture, 15852U);
  const int changes = page->changes;
  page->Select("watermarks", 3);
  EXPECT_EQ(Current(), 3);
  EXPECT_GT(page->changes, changes);
  EXPECT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"watermarkIndex">(sheet->out), 3);
}

TEST_F(WatermarkPageTest, FirstNumberTakesDigitsWithinItsRange) {
  OpenPage("CopyNo_Check=1", "watermark");
  page->Type("CopyNo_WM_StartC", u"12x-34");
  EXPECT_EQ(page->TextOf("CopyNo_WM_StartC"), "1234");
  EXPECT_EQ(page->beeps, 2);
  page->Type("CopyNo_WM_StartC", u"07");
  EXPECT_EQ(page->TextOf("CopyNo_WM_StartC"), "0") << "0 is a number, 07 isn't";
  page->Put("CopyNo_WM_StartC", u"65000");
  EXPECT_EQ(page->TextOf("CopyNo_WM_StartC"), "9999");
  EXPECT_EQ(engine::Setting<u"CopyNo_WM_StartC">(ui()), 9999);
}

TEST_F(WatermarkPageTest, DefaultsChooseNoWatermark) {
  OpenPage("Watermark_Use=On", "watermark");
  page->Select("watermarks", 4);
  page->Click("restoreDefaults.watermark");
  EXPECT_EQ(Current(), 0);
  EXPECT_EQ(page->SelectedText("watermarks"), "(none)");
  EXPECT_EQ(page->FocusedName(), "restoreDefaults.watermark");
}

TEST_F(WatermarkPageTest, PaintsTheStampInUse) {
  OpenPage("Watermark_Use=On", "watermark");
  RecordingCanvas canvas;
  page->Select("watermarks", 2);
  page->Paint("watermarkPicture", canvas, {0, 0, 120, 160});
  ASSERT_EQ(canvas.drawings.size(), 1U);
  EXPECT_EQ(canvas.drawings[0].text, u"mark 2");
  page->Check("Watermark_Use", false);
  page->Paint("watermarkPicture", canvas, {0, 0, 120, 160});
  EXPECT_EQ(canvas.drawings.size(), 1U);
}

TEST_F(WatermarkPageTest, EditorChangesEveryPartOfAnEntry) {
  Edit(1, [&](ScriptedDialog& editor) {
    EXPECT_EQ(editor.SelectedText("watermarkList"), "mark 1");
    EXPECT_EQ(editor.SelectedText("watermarkFont"), "宋体");
    editor.Type("watermarkText", u"Draft");
    EXPECT_EQ(editor.SelectedText("watermarkList"), "Draft");
    editor.Choose("watermarkFont", u"Serif");
    editor.Select("watermarkStyle", 3);
    editor.Type("watermarkSize", u"120");
    EXPECT_EQ(editor["watermarkSize.bar"].position, 120);
    editor.Type("watermarkAngle", u"-45");
    EXPECT_EQ(editor["watermarkAngle.bar"].position, -45);
    editor.Spin("watermarkShade", 255);
    editor.Spin("watermarkAcross", 100);
    editor.Spin("watermarkDown", -250);
    EXPECT_EQ(editor.TextOf("watermarkAcross.text") + editor.TextOf("watermarkDown.text"), "10mm25mm");
    editor.Click("OK");
  });
  EXPECT_EQ(Entry(1), "Draft|Serif|4 120 -450 0 100 -250");
  EXPECT_EQ(page->SelectedText("watermarks"), "Draft");
  Edit(1, [&](ScriptedDialog& editor) {
    editor.Click("restoreWatermark");
    editor.Click("OK");
  });
  EXPECT_EQ(Entry(1), "Draft|宋体|1 72 0 126 0 0");
}

TEST_F(WatermarkPageTest, CancelTakesEverythingBack) {
  OpenPage("Watermark_Use=On", "watermark");
  const WatermarkStore before = store();
  for (int step = 0; step < 2; ++step) {
    Edit(5, [&](ScriptedDialog& editor) {
      for (int i = 0; i < 3; ++i) editor.Click("deleteWatermark");
      editor.Click("newWatermark");
      editor.Type("watermarkText", u"x");
      step == 0 ? editor.Click("Cancel") : editor.Click("OK");
    });
    const bool same = std::memcmp(&before, &store(), sizeof before) == 0;
    EXPECT_EQ(same, step == 0);
    EXPECT_EQ(Current(), step == 0 ? 5 : 9);
  }
}

TEST_F(WatermarkPageTest, EntryZeroCantBeChanged) {
  Edit(0, [&](ScriptedDialog& editor) {
    for (const char* name : {"watermarkText", "watermarkFont", "watermarkSize", "watermarkAcross", "deleteWatermark"})
      EXPECT_FALSE(editor.IsEnabled(name)) << name;
    editor.PressAt("watermarkEditor", 100, 100);
    EXPECT_EQ(editor["watermarkEditor"].cursor, platform::kArrowCursor);
    editor.Click("newWatermark");
    EXPECT_TRUE(editor.IsEnabled("watermarkText"));
    EXPECT_EQ(editor.FocusedName(), "watermarkText");
    editor.Click("deleteWatermark");
    editor.Select("watermarkList", 1);
    editor.Click("deleteWatermark");
    EXPECT_FALSE(editor.IsEnabled("watermarkText"));
    EXPECT_EQ(editor.FocusedName(), "watermarkList");
    editor.Click("OK");
  });
  EXPECT_EQ(page->RowsOf("watermarks").size(), 11U);
  EXPECT_EQ(Current(), 0);
}

TEST_F(WatermarkPageTest, AFullListTakesNoNewEntry) {
  Edit(11, [&](ScriptedDialog& editor) {
    for (int i = 12; i <= 50; ++i) editor.Click("newWatermark");
    EXPECT_FALSE(editor.IsEnabled("newWatermark"));
    editor.Click("deleteWatermark");
    EXPECT_TRUE(editor.IsEnabled("newWatermark"));
    editor.Click("newWatermark");
    editor.Click("OK");
  });
  EXPECT_EQ(page->RowsOf("watermarks").size(), 51U);
  Edit(50, [&](ScriptedDialog& editor) {
    EXPECT_FALSE(editor.IsEnabled("newWatermark"));
    editor.Click("Cancel");
  });
}

TEST_F(WatermarkPageTest, NumbersAreCheckedWhenTheyAreLeft) {
  Edit(1, [&](ScriptedDialog& editor) {
    editor.Type("watermarkSize", u"500");
    EXPECT_EQ(editor.TextOf("watermarkSize"), "400");
    editor.Type("watermarkSize", u"5");
    editor.Focus("watermarkSize");
    EXPECT_FALSE(editor.Click("OK"));
    EXPECT_EQ(desk.Told(), "[30000]|[30001] 8-400");
    EXPECT_EQ(editor.TextOf("watermarkSize"), "8");
    editor.Type("watermarkSize", u"5");
    editor.Focus(0);
    editor.Click("OK");  // by Enter, which moves no focus
    EXPECT_FALSE(editor.ended());
    EXPECT_EQ(desk.Told(), "[30000]|[30001] 8-400");
    editor.Type("watermarkSize", u"3");
    EXPECT_FALSE(editor.MoveFocus("watermarkShade"));
    EXPECT_EQ(desk.Told(), "") << "on the way to a bar nothing is told";
    editor.Type("watermarkAngle", u"-");
    EXPECT_FALSE(editor.MoveFocus("watermarkText"));
    EXPECT_EQ(desk.Told(), "[30000]|[26419] -90-90");
    EXPECT_EQ(editor.TextOf("watermarkAngle"), "0");
    editor.Put("watermarkAngle", u"");
    EXPECT_TRUE(editor.MoveFocus("restoreWatermark"));
    editor.Type("watermarkAngle", u"-99");
    EXPECT_EQ(editor.TextOf("watermarkAngle"), "-90");
    editor.Click("OK");
  });
  EXPECT_EQ(store().entries[1].angle, -900);
}

TEST_F(WatermarkPageTest, AnglesTakeASignInFrontAlone) {
  Edit(1, [&](ScriptedDialog& editor) {
    const auto typed = [&](std::u16string_view keys) {
      editor.Put("watermarkAngle", u"");
      editor.Append("watermarkAngle", keys);
      return editor.TextOf("watermarkAngle");
    };
    EXPECT_EQ(typed(u"-9"), "-9");
    EXPECT_EQ(typed(u"90"), "90");
    EXPECT_EQ(typed(u"9-"), "9");
    EXPECT_EQ(typed(u"-0"), "-");
    EXPECT_EQ(typed(u"00"), "0");
    EXPECT_EQ(typed(u"+4x5."), "45");
    editor.Click("Cancel");
  });
}

TEST_F(WatermarkPageTest, TheStampIsDraggedInThePicture) {
  Edit(2, [&](ScriptedDialog& editor) {
    editor.PointAt("watermarkEditor", 100, 100);
    EXPECT_EQ(editor["watermarkEditor"].cursor, platform::kAimCursor);
    editor.PointAt("watermarkEditor", 1, 1);
    EXPECT_EQ(editor["watermarkEditor"].cursor, platform::kArrowCursor);
    editor.PressAt("watermarkEditor", 100, 100);
    EXPECT_EQ(editor["watermarkEditor"].cursor, platform::kDragCursor);
    editor.PointAt("watermarkEditor", 110, 80);
    EXPECT_EQ(editor["watermarkAcross"].position > 0, true);
    EXPECT_TRUE(editor.TextOf("watermarkDown.text").front() != '-') << "upward is positive";
    editor.PointAt("watermarkEditor", 199, 199);
    EXPECT_EQ(editor["watermarkAcross"].position, editor["watermarkAcross"].maximum) << "not beyond the paper";
    editor.ReleaseAt("watermarkEditor", 100, 100);
    EXPECT_EQ(editor["watermarkEditor"].cursor, platform::kAimCursor);
    editor.Click("centerWatermark");
    EXPECT_EQ(editor["watermarkAcross"].position, 0);
    EXPECT_EQ(editor.TextOf("watermarkAcross.text"), "0mm");
    editor.Click("OK");
  });
  EXPECT_EQ(Current(), 2);
}

TEST_F(WatermarkPageTest, ForeignEntriesAreBroughtIntoRange) {
  OpenPage("Watermark_Use=On", "watermark");
  store().entries[3].size = 5000;
  store().entries[3].angle = 123456;
  store().entries[3].style = 99;
  SetMarkFont(store().entries[3], u"Not installed");
  Edit(3, [&](ScriptedDialog& editor) {
    EXPECT_EQ(editor.TextOf("watermarkSize") + editor.TextOf("watermarkAngle"), "40090");
    EXPECT_EQ(editor.SelectedText("watermarkFont"), "宋体");
    editor.Click("OK");
  });
  EXPECT_EQ(store().entries[3].size, 400U);
  EXPECT_EQ(MarkFont(store().entries[3]), u"Not installed");
}

}  // namespace
}  // namespace heron::test
