// What the tests of the desk share: the built templates, and a logic that records what it is told.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "apps/desk/modal_window.h"
#include "apps/desk/property_sheet.h"
#include "platform/api/text.h"
#include "support/control_names.h"

namespace heron::desk {

using test::ControlName;
using test::DialogName;
using test::operator""_id;

inline Resources& BuiltResources() {
  static Resources resources(platform::FromUtf8(HERON_RESOURCE_MODULE));
  return resources;
}

/// Writes each event as "what id"; answers are what a test sets.
class RecordingLogic : public platform::DialogLogic {
 public:
  platform::Dialog* dialog = nullptr;
  std::vector<std::string> events;
  std::function<bool(char16_t)> takes = [](char16_t) { return true; };
  std::function<bool(platform::ControlId, platform::ControlId)> leaves = [](auto, auto) { return true; };
  std::function<void(int)> on_click = [](int) {};
  bool deactivates = true;
  bool applies = true;

  void Initialise(platform::Dialog* shown) override {
    dialog = shown;
    Note("initialise");
  }
  void Destroy() override { Note("destroy"); }
  void Clicked(platform::ControlId id) override {
    Note("click", id);
    on_click(id);
    if (id == 1 || id == 2) dialog->End(id);
  }
  void RowSelected(platform::ControlId id) override { Note("row", id); }
  void RowActivated(platform::ControlId id) override { Note("activated", id); }
  void HeadingClicked(platform::ControlId id, int column) override { Note("heading" + std::to_string(column), id); }
  void TextChanged(platform::ControlId id) override { Note("text", id); }
  void PositionChanged(platform::ControlId id) override { Note("position", id); }
  bool TakesKey(platform::ControlId, const platform::TypedKey& key) override { return takes(key.character); }
  bool LeavesFocus(platform::ControlId from, platform::ControlId to) override { return leaves(from, to); }
  void Draw(platform::ControlId id, platform::Canvas&, const platform::RECT&) override { ++draws[id]; }
  void Activate() override { Note("activate"); }
  bool Deactivate() override {
    Note("deactivate");
    return deactivates;
  }
  bool Apply() override {
    Note("apply");
    return applies;
  }
  void Reset() override { Note("reset"); }
  void Help(platform::ControlId id) override {
    Note("help", id);
    dialog->ShowHelp(0, id);
  }

  /// The events since the last call, joined by blanks.
  std::string Take() {
    std::string joined;
    for (const std::string& event : std::exchange(events, {})) joined += (joined.empty() ? "" : ", ") + event;
    return joined;
  }

  std::map<int, int> draws;

 private:
  void Note(const std::string& what, platform::ControlId id = 0) {
    events.push_back(id == 0 ? what : what + " " + test::NameOfControl(id));
  }
};

inline QWidget* WidgetOf(const Panel& panel, ControlName id) {
  for (const FormControl& control : panel.controls()) {
    if (control.plan->id == id) return control.widget;
  }
  ADD_FAILURE() << "there is no control " << test::NameOfControl(id);
  return nullptr;
}

/// Where keys go: the field of a control pair or a drop-down, otherwise the control itself.
inline QWidget* KeysOf(const Panel& panel, ControlName id) {
  for (const FormControl& control : panel.controls()) {
    if (control.plan->id == id && control.field != nullptr && control.field->focusProxy() == nullptr)
      return control.field;
  }
  return WidgetOf(panel, id);
}

/// With HERON_SCREENSHOTS set, a picture of the window goes into that folder.
inline void Photograph(QWidget& window, const std::string& name) {
  const QString folder = qEnvironmentVariable("HERON_SCREENSHOTS");
  if (folder.isEmpty()) return;
  EXPECT_TRUE(window.grab().save(QDir(folder).filePath(QString::fromStdString(name + ".png"))));
}

/// Closes the balloon that tells about a control; false if there is none.
inline bool CloseBalloon() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (!window->inherits("QWhatsThat") || !window->isVisible()) continue;
    Photograph(*window, "balloon");
    return window->close();
  }
  return false;
}

inline void Click(const Panel& panel, ControlName id) {
  QTest::mouseClick(WidgetOf(panel, id), Qt::LeftButton);
}

}  // namespace heron::desk
