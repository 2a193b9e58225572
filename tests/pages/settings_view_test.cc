// A dialog of controls that the engine doesn't know, bound to their settings by parameter, and the events that reach a
// page through its guards.
#include "pages/settings_view.h"

#include <thread>

#include "sheet_fixture.h"

namespace heron::test {
namespace {

using pages::ShownControl;
using platform::ListKey;

class BoundDialog : public pages::SettingsView {
 public:
  BoundDialog(SheetContext& sheet, uint16_t number, std::span<const ShownControl> controls)
      : SettingsView(sheet, number, controls) {}
  std::string events;

 protected:
  void OnChanged(pages::ControlId id) override { events += "changed " + NameOfControl(id) + ";"; }
  void OnStored(pages::ControlId id) override { events += "stored " + NameOfControl(id) + ";"; }
  void OnNumber(pages::ControlId, uint16_t number) override { events += "number " + std::to_string(number) + ";"; }
  void OnHeadingClicked(pages::ControlId, int column) override { events += "heading " + std::to_string(column) + ";"; }
  bool OnListKey(pages::ControlId, ListKey key) override {
    events += "key;";
    return key == ListKey::kDelete;
  }
  void OnPointer(pages::ControlId id, const platform::PointerEvent& event) override {
    dialog().SetCursor(id, event.held ? platform::kDragCursor : platform::kAimCursor);
  }
  void OnTimer() override { events += "timer;"; }
  void OnButton(pages::ControlId id) override {
    if (id == platform::IDOK || id == platform::IDCANCEL) dialog().End(id);
  }
};

class SettingsViewTest : public SheetTest {
 protected:
  /// Runs a dialog of bound controls over the paper page.
  void Run(DialogName number, std::span<const ShownControl> controls,
           const std::function<void(ScriptedDialog&, BoundDialog&)>& steps) {
    BoundDialog logic(sheet->context(), number, controls);
    desk.Expect(number, [&](ScriptedDialog& dialog) {
      steps(dialog, logic);
      dialog.End(platform::IDOK);
    });
    desk.Run(number, &logic);
  }
};

TEST_F(SettingsViewTest, AControlThatTheEngineDoesntKnowShowsAndStoresItsSetting) {
  constexpr ShownControl kControls[] = {
      {.id = 909, .group = 0, .param = ParamNamed<u"CoverSheet">()},
      {.id = 906, .group = 1, .param = ParamNamed<u"lpQuality">()},
      {.id = 902, .group = 0},
      {.id = 917, .group = 0},  // bound to nothing: left alone
  };
  OpenPage();
  engine::Setting<u"CoverSheet">(ui()) = 1;
  engine::Setting<u"EcmTab">(ui()) = 0;
  Run("fax", kControls, [&](ScriptedDialog& dialog, BoundDialog& logic) {
    EXPECT_TRUE(dialog["CoverSheet"].checked);
    EXPECT_EQ(dialog["lpQuality"].rows.size(), 3U);
    EXPECT_NE(dialog.SelectedRow("lpQuality"), platform::kNoRow);
    dialog.Check("CoverSheet", false);
    EXPECT_EQ(engine::Setting<u"CoverSheet">(ui()), 0);
    dialog.Select("lpQuality", 2);
    EXPECT_EQ(logic.events, "stored CoverSheet;stored lpQuality;");
    logic.RedisplayControl(909, 0);
    EXPECT_FALSE(dialog["CoverSheet"].checked);
    dialog.Check("EcmTab", true);
    EXPECT_EQ(engine::Setting<u"EcmTab">(ui()), 0) << "no row binds it";
    logic.events.clear();
    dialog.Press("lpOutput.Fax");
    EXPECT_EQ(logic.events, "changed lpOutput.Fax;") << "what the engine knows is the engine's";
  });
}

TEST_F(SettingsViewTest, ARadioBoundByParameterStandsForItsValue) {
  constexpr ShownControl kControls[] = {
      {.id = 1287, .group = 0, .param = ParamNamed<u"lpFaxCover_ReceiveSetup">(), .value = 0},
      {.id = 1289, .group = 0, .param = ParamNamed<u"lpFaxCover_ReceiveSetup">(), .value = 1},
  };
  OpenPage();
  Run("fax-cover-sheet", kControls, [&](ScriptedDialog& dialog, BoundDialog& logic) {
    const uint16_t before = engine::Setting<u"lpFaxCover_ReceiveSetup">(ui());
    const char* const shown = before == 1 ? "lpFaxCover_ReceiveSetup.Details" : "lpFaxCover_ReceiveSetup.Template";
    const char* const other = before == 1 ? "lpFaxCover_ReceiveSetup.Template" : "lpFaxCover_ReceiveSetup.Details";
    EXPECT_TRUE(dialog[shown].checked);
    dialog.Press(shown);
    EXPECT_EQ(logic.events, "") << "it holds that value";
    dialog.Press(other);
    EXPECT_EQ(engine::Setting<u"lpFaxCover_ReceiveSetup">(ui()), 1 - before);
    EXPECT_EQ(logic.events, std::string("stored ") + other + ";");
  });
}

TEST_F(SettingsViewTest, EventsReachAPageBetweenItsStartAndItsEnd) {
  OpenPage();
  BoundDialog logic(sheet->context(), 1100, {});
  logic.HeadingClicked(1103, 0);
  logic.TimerFired();
  EXPECT_FALSE(logic.TakesListKey(1103, ListKey::kDelete));
  EXPECT_EQ(logic.events, "") << "not before it is initialised";
  desk.Expect("edit-watermarks", [&](ScriptedDialog& dialog) {
    const platform::ListRow rows[] = {{u"A", {}}, {u"B", {}}};
    dialog.SetRows(1103, rows);
    dialog.Select(1103, 1);
    dialog.PressKey(1103, ListKey::kDelete);
    EXPECT_EQ(dialog.SelectedRow(1103), 1);
    dialog.PressKey(1103, ListKey::kUp);
    EXPECT_EQ(dialog.SelectedRow(1103), 0);
    dialog.ClickHeading(1103, 2);
    dialog.PressAt(1125, 10, 10);
    EXPECT_EQ(dialog[1125].cursor, platform::kDragCursor);
    dialog.PointAt(1125, -5, 300);
    EXPECT_EQ(dialog[1125].cursor, platform::kDragCursor) << "held outside of it";
    dialog.ReleaseAt(1125, 10, 10);
    EXPECT_EQ(dialog[1125].cursor, platform::kAimCursor);
    dialog.SetTimer(30);
    dialog.Tick();
    dialog.Click(1);
  });
  desk.Run(1100, &logic);
  EXPECT_EQ(logic.events, "key;key;heading 2;timer;");
}

TEST_F(SettingsViewTest, WorkOnTheScriptedDeskRunsBesideItAndHandsItsFailureBack) {
  OpenPage();
  const auto here = std::this_thread::get_id();
  bool beside = false, stopped = false;
  EXPECT_TRUE(page->RunBusy({u"", u"", [&](std::stop_token) { beside = std::this_thread::get_id() != here; }}));
  EXPECT_TRUE(beside);
  desk.cancels_busy = true;
  EXPECT_FALSE(page->RunBusy({u"", u"", [&](std::stop_token stop) { stopped = stop.stop_requested(); }}));
  EXPECT_TRUE(stopped);
  EXPECT_THROW(page->RunBusy({u"", u"", [](std::stop_token) { throw std::bad_alloc(); }}), std::bad_alloc);
}

TEST(SignedNumbers, AreReadWithTheirSignAndBounded) {
  using pages::ParseSigned;
  EXPECT_EQ(ParseSigned(u"-90"), -90);
  EXPECT_EQ(ParseSigned(u"12x"), 12);
  EXPECT_EQ(ParseSigned(u"99999999999"), 2147483647);
  EXPECT_EQ(ParseSigned(u"-99999999999"), -2147483647);
  for (const auto* text : {u"", u"-", u"--1", u"x"}) EXPECT_EQ(ParseSigned(text), std::nullopt);
}

TEST(GreyPixels, AreWeighedOnWhite) {
  const platform::PixelImage image{.width = 3, .height = 1, .pixels = {0xFF0A141E, 0, 0x80000000}};
  EXPECT_EQ(platform::GreyLevels(image), (std::vector<uint8_t>{18, 255, 127}));
  EXPECT_EQ(platform::FromGreyLevels(1, 1, std::vector<uint8_t>{18}).pixels, (std::vector<uint32_t>{0xFF121212}));
}

}  // namespace
}  // namespace heron::test
