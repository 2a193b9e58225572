// An engine on the working settings of a default record. Settings are written and read as short texts:
// "Staple_Check=On".
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "changes/change.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/named_values.h"

namespace heron::engine {

inline std::string NameOf(ControlIndex control) {
  const auto name = kControls[control].name;
  return {name.begin(), name.end()};
}

using test::ControlNamed;

/// A view that records what it shows.
struct TestView : EngineView {
  uint16_t ReadControl(uint16_t) override { return 0; }
  bool Show(const Report&) override { return true; }
  void EnableControl(uint16_t id, bool available) override {
    enabled += std::to_string(id) + (available ? "+ " : "- ");
  }
  bool PerPageRowSelected() const override { return row_selected; }

  std::string enabled;
  bool row_selected = false;
};

class EngineTest : public test::DriverTest {
 protected:
  EngineTest() {
    DriverEnv env;
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    ui = CreateUiState(resources.get(), env, printer.get());
    engine = std::make_unique<Engine>(*ui);
    Put("");
  }

  /// Writes settings, "tray.Auto=Transparency" for the media type in a tray, loads the mirrors of the trays in use and
  /// evaluates.
  void Put(const std::string& settings) {
    test::ForEachWord(settings, [&](std::string_view name, std::string_view value) {
      if (name.starts_with("tray.")) {
        constexpr ControlIndex kSource = Control(u"lpMediaSource"), kMedia = Control(u"trayMediaType.page");
        engine->Set(kSource, test::ValueNamed(kSource, name.substr(5)));
        EXPECT_TRUE(StoreTrayMedia(*engine, kMedia, test::ValueNamed(kMedia, value))) << name;
      } else {
        engine->Set(ControlNamed(name), test::ValueNamed(ControlNamed(name), value));
      }
    });
    for (const ControlIndex source :
         {Control(u"lpMediaSource"), Control(u"lpFrontCoverTray"), Control(u"lpBackCoverTray")}) {
      LoadTrayMedia(*engine, source);
    }
    EvaluateRules(*engine, &view);
  }

  test::HeldValue Value(std::string_view name) const { return {ControlNamed(name), engine->Value(ControlNamed(name))}; }
  bool Available(std::string_view name) const { return engine->Available(ControlNamed(name)); }
  bool Available(int id) const { return IsControlAvailable(*engine, static_cast<uint16_t>(id)); }

  /// Names of the list's forbidden items, in order.
  std::string Forbidden(std::string_view list) {
    const ControlIndex control = ControlNamed(list);
    EXPECT_TRUE(ComputeItemStatus(*engine, kControls[control].id)) << list;
    std::string names;
    for (const ListItem& item : GetControlBlock(*engine, kControls[control].id)->Items()) {
      EXPECT_EQ(item.displayIndex == kItemHidden, item.status == kItemForbidden);
      if (item.status != kItemForbidden) continue;
      names += (names.empty() ? "" : " ") + test::NameOfValue(control, static_cast<uint16_t>(item.value));
    }
    return names;
  }
  bool Forbids(std::string_view list, std::string_view value) {
    const std::string name = test::NameOfValue(ControlNamed(list), test::ValueNamed(ControlNamed(list), value));
    return (" " + Forbidden(list) + " ").find(" " + name + " ") != std::string::npos;
  }

  /// The user changes these settings, the first word first: writes them and makes them the request.
  void Change(const std::string& settings) {
    request = {};
    log = {};
    test::ForEachSetting(settings, [&](ControlIndex control, uint16_t value) {
      const uint16_t old = engine->Value(control);
      engine->Set(control, value);
      AppendRow(request, control, old, engine->Value(control));
    });
    request.userCount = request.count;
    request.changed = request.First();
    EvaluateRules(*engine, &view);
  }
  /// The log, "control:=value/reason" for each entry and "!control=value" for what opposes.
  std::string Logged() const {
    std::string text;
    for (const LogEntry& entry : log.Entries()) {
      text += NameOf(entry.control) + ":=" + test::NameOfValue(entry.control, entry.value) + "/" +
              std::to_string(static_cast<int>(entry.reason)) + " ";
    }
    for (const Opposition& row : log.Opposing())
      text += "!" + NameOf(row.control) + "=" + test::NameOfValue(row.control, row.value) + " ";
    if (!text.empty()) text.pop_back();
    return text;
  }

  UiStatePtr ui;
  std::unique_ptr<Engine> engine;
  TestView view;
  ChangeRequest request;
  ChangeLog log;
};

}  // namespace heron::engine
