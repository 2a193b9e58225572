// An engine on the working settings of a default record. Settings are told and read as short texts: "Staple_Check=1".
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "engine/change.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"

namespace heron::engine {

inline std::string NameOf(ControlIndex control) {
  const auto name = kControls[control].name;
  return {name.begin(), name.end()};
}

/// By name, with or without the number behind its point.
inline ControlIndex ControlNamed(std::string_view name) {
  for (size_t i = 0; i < kControlCount; ++i) {
    const std::string own = NameOf(static_cast<ControlIndex>(i));
    if (own == name || own.substr(0, own.find('.')) == name) return static_cast<ControlIndex>(i);
  }
  ADD_FAILURE() << "no control " << name;
  return 0;
}

/// Whoever stands in front: remembers what it was told.
struct TestView : EngineView {
  uint16_t ReadControl(uint16_t) override { return 0; }
  bool Show(const Report&) override { return true; }
  void RedisplayControl(uint16_t, uint16_t) override {}
  void RefreshList(uint16_t) override {}
  void RefreshPerPageList() override {}
  void RepaintPictures() override {}
  void EnableControl(uint16_t id, bool available) override {
    enabled += std::to_string(id) + (available ? "+ " : "- ");
  }
  void FocusControl(uint16_t) override {}
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

  /// Writes settings, "tray.7=2" for the media type in tray 7, loads the mirrors of the trays in use and evaluates.
  void Put(const std::string& settings) {
    std::istringstream words(settings);
    for (std::string word; words >> word;) {
      const size_t equals = word.find('=');
      const auto value = static_cast<uint16_t>(std::stoi(word.substr(equals + 1)));
      if (word.starts_with("tray.")) {
        engine->Set(Control(u"lpMediaSource"), static_cast<uint16_t>(std::stoi(word.substr(5))));
        EXPECT_TRUE(StoreTrayMedia(*engine, Control(u"trayMediaType.3310"), value)) << word;
      } else {
        engine->Set(ControlNamed(word.substr(0, equals)), value);
      }
    }
    for (const ControlIndex source :
         {Control(u"lpMediaSource"), Control(u"lpFrontCoverTray"), Control(u"lpBackCoverTray")}) {
      LoadTrayMedia(*engine, source);
    }
    EvaluateRules(*engine, &view);
  }

  uint16_t Value(std::string_view name) const { return engine->Value(ControlNamed(name)); }
  bool Available(std::string_view name) const { return engine->Available(ControlNamed(name)); }
  bool Available(int id) const { return IsControlAvailable(*engine, static_cast<uint16_t>(id)); }

  /// Values of the list's forbidden items, in order.
  std::string Forbidden(std::string_view list) {
    const uint16_t id = kControls[ControlNamed(list)].id;
    EXPECT_TRUE(ComputeItemStatus(*engine, id)) << list;
    std::string values;
    for (const ListItem& item : GetControlBlock(*engine, id)->Items()) {
      EXPECT_EQ(item.displayIndex == kItemHidden, item.status == kItemForbidden);
      if (item.status == kItemForbidden) values += (values.empty() ? "" : " ") + std::to_string(item.value);
    }
    return values;
  }
  bool Forbids(std::string_view list, uint16_t value) {
    return (" " + Forbidden(list) + " ").find(" " + std::to_string(value) + " ") != std::string::npos;
  }

  /// The user changes these settings, the first word first: writes them and makes them the request.
  void Change(const std::string& settings) {
    request = {};
    log = {};
    std::istringstream words(settings);
    for (std::string word; words >> word;) {
      const ControlIndex control = ControlNamed(word.substr(0, word.find('=')));
      const uint16_t old = engine->Value(control);
      engine->Set(control, static_cast<uint16_t>(std::stoi(word.substr(word.find('=') + 1))));
      AppendRow(request, control, old, engine->Value(control));
    }
    request.userCount = request.count;
    request.changed = request.First();
    EvaluateRules(*engine, &view);
  }
  /// The log, "control:=value/reason" for each entry and "!control=value" for what stands in the way.
  std::string Told() const {
    std::string text;
    for (const LogEntry& entry : log.Entries()) {
      text += NameOf(entry.control) + ":=" + std::to_string(entry.value) + "/" +
              std::to_string(static_cast<int>(entry.reason)) + " ";
    }
    for (const Opposition& row : log.Opposing())
      text += "!" + NameOf(row.control) + "=" + std::to_string(row.value) + " ";
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
