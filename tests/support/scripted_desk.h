// Dialogs without windows: what the logic sets is kept in maps, what a user does is told by calls, and message boxes
// and dialogs that open meanwhile are answered by a script. Which controls there are, the dialog's template tells.
//
// A message box with a choice and a dialog must be scripted; a click on what is disabled or hidden is a failure of the
// test, as is whatever the script still holds at the end.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/api/message_box.h"
#include "platform/dialog/dialog.h"
#include "platform/dialog/dialog_template.h"
#include "support/control_names.h"

namespace heron::test {

using platform::ControlId;

class ScriptedDesk;

class ScriptedDialog : public platform::Dialog {
 public:
  struct Control {
    std::u16string text;
    std::vector<platform::ListRow> rows;
    std::vector<int> selected;  ///< rows
    size_t limit = std::u16string::npos;
    size_t selection_start = 0, selection_end = 0;
    bool checked = false, enabled = true, visible = true;
    int minimum = 0, maximum = 0, position = 0;
    uint32_t picture = 0;
    int repaints = 0;
    int fills = 0;                          ///< times that the logic set its rows
    std::vector<platform::RECT> repainted;  ///< areas, in the order in which they were asked for
    std::u16string description;
    platform::BarSteps steps;
    uint32_t cursor = platform::kArrowCursor;
  };

  ScriptedDialog(ScriptedDesk& desk, uint16_t number, platform::DialogLogic* logic);

  // What a user does. Focus moves to the control first; false if the logic refuses to let go of another one, or refuses
  // a key.
  bool Click(ControlName id);           ///< a button
  bool Check(ControlName id, bool on);  ///< a check
  bool Press(ControlName id);           ///< a radio
  bool Select(ControlName id, int row);
  bool Choose(ControlName id, std::u16string_view text);  ///< the row with this text
  bool Type(ControlName id, std::u16string_view keys);    ///< over what is there, key by key; refused keys are dropped
  void Append(ControlName id, std::u16string_view keys);  ///< behind what is there
  void Put(ControlName id, std::u16string_view text);     ///< text that came past the filter
  void Spin(ControlName id, int position);
  bool SelectSeveral(ControlName id, std::vector<int> rows);  ///< of a list view that allows it
  bool Activate(ControlName id, int row);                     ///< double click: selects and clicks the row before
  void ClickRow(ControlName id, int row);                     ///< kNoRow: beside all rows, which selects none
  void ClickHeading(ControlName id, int column);
  /// A key in a list. One that the logic leaves to the list moves the selection if it can.
  void PressKey(ControlName id, platform::ListKey key);
  void DragRow(ControlName id, int from, int to);
  // The pointer on a place, in the pixels of PlaceArea.
  void PointAt(ControlName id, int x, int y) { Point(id, platform::PointerAction::kMove, x, y); }
  void PressAt(ControlName id, int x, int y) { Point(id, platform::PointerAction::kPress, x, y); }
  void ReleaseAt(ControlName id, int x, int y) { Point(id, platform::PointerAction::kRelease, x, y); }
  void Tick();  ///< the timer fires, which must have been set
  bool MoveFocus(ControlName to);
  void Paint(ControlName id);  ///< on nothing
  void Paint(ControlName id, platform::Canvas& canvas, const platform::RECT& place) { logic_->Draw(id, canvas, place); }

  std::string TextOf(ControlName id) const;
  std::vector<std::string> RowsOf(ControlName id) const;
  std::string SelectedText(ControlName id) const;
  std::string FocusedName() const { return NameOfControl(focused_); }
  bool IsEnabled(ControlName id) const { return (*this)[id].enabled; }
  void Focus(ControlName id) { focused_ = id; }
  int SelectedRow(ControlName id) const { return SelectedRow(platform::ControlId{id}); }
  const Control& operator[](ControlName id) const;
  /// Controls that the logic has set something of, but which the template hasn't got.
  const std::set<ControlId>& strangers() const { return strangers_; }
  bool ended() const { return ended_; }
  int result() const { return result_; }
  int changes = 0;                      ///< times that the logic marked the sheet as changed
  std::pair<uint32_t, ControlId> help;  ///< what was last shown: topic and control
  int beeps = 0;
  std::vector<platform::MenuItem> menu;
  uint16_t menu_choice = 0;
  uint32_t timer = 0;  ///< milliseconds, 0 if none is set
  std::u16string clipboard;
  std::function<void()> while_menu_is_open = [] {};

  // Dialog
  platform::HWND Window() override { return this; }
  bool Has(ControlId id) const override;
  std::vector<ControlId> Controls() const override;
  void Enable(ControlId id, bool enabled) override;
  bool IsEnabled(ControlId id) const override { return (*this)[id].enabled; }
  void Show(ControlId id, bool visible) override { Of(id).visible = visible; }
  void Focus(ControlId id) override { focused_ = id; }
  ControlId Focused() const override { return focused_; }
  void SetText(ControlId id, std::u16string_view text) override;
  std::u16string Text(ControlId id) const override { return (*this)[id].text; }
  void SetTextLimit(ControlId id, size_t characters) override { Of(id).limit = characters; }
  void SelectText(ControlId id, size_t first, size_t count) override;
  void SetChecked(ControlId id, bool checked) override;
  bool IsChecked(ControlId id) const override { return (*this)[id].checked; }
  void SetRange(ControlId id, int minimum, int maximum) override;
  void SetPosition(ControlId id, int position) override { Of(id).position = position; }
  void SetSteps(ControlId id, const platform::BarSteps& steps) override { Of(id).steps = steps; }
  int Position(ControlId id) const override { return (*this)[id].position; }
  void SetRows(ControlId id, std::span<const platform::ListRow> rows) override;
  void SelectRow(ControlId id, int row) override;
  int SelectedRow(ControlId id) const override;
  std::vector<int> SelectedRows(ControlId id) const override { return (*this)[id].selected; }
  void SelectRows(ControlId id, std::span<const int> rows) override { Of(id).selected = {rows.begin(), rows.end()}; }
  void Repaint(ControlId id) override { ++Of(id).repaints; }
  void RepaintArea(ControlId id, const platform::RECT& area) override { Of(id).repainted.push_back(area); }
  platform::RECT PlaceArea(ControlId id) const override;
  void SetCursor(ControlId id, uint32_t cursor) override { Of(id).cursor = cursor; }
  void SetDescription(ControlId id, std::u16string_view text) override { Of(id).description = text; }
  void SetPicture(ControlId id, uint32_t picture, uint32_t) override { Of(id).picture = picture; }
  std::optional<platform::PixelImage> Pixels(uint32_t number) const override;
  std::vector<platform::FontFamily> FontFamilies() const override;
  void SetTimer(uint32_t milliseconds) override { timer = milliseconds; }
  int RunDialog(uint16_t dialog, platform::DialogLogic* logic) override;
  void End(int result) override;
  uint16_t PopupMenu(ControlId, std::span<const platform::MenuItem> items) override;
  std::optional<std::u16string> AskFileName(const platform::FileQuestion& question) override;
  std::optional<std::u16string> AskFolder(std::u16string_view title, std::u16string_view folder) override;
  std::u16string ClipboardText() const override { return clipboard; }
  bool RunBusy(const platform::BusyWork& busy) override;
  void Beep() override { ++beeps; }
  void ShowHelp(uint32_t topic, ControlId control) override { help = {topic, control}; }
  void MarkChanged() override { ++changes; }

 private:
  Control& Of(ControlId id);
  const platform::ControlTemplate& PlanOf(ControlId id) const;
  bool Reach(ControlId id);
  void Point(ControlId id, platform::PointerAction action, int x, int y);

  ScriptedDesk& desk_;
  uint16_t number_;
  platform::DialogLogic* logic_;
  platform::DialogTemplate template_;
  std::map<ControlId, Control> controls_;
  Control none_;
  std::set<ControlId> strangers_;
  ControlId focused_ = 0;
  ControlId held_ = 0;  ///< the place on which the button went down
  bool ended_ = false;
  int result_ = 0;
};

/// Answers message boxes and runs dialogs, in the order of the script.
class ScriptedDesk : public platform::MessageDesk {
 public:
  using Script = std::function<void(ScriptedDialog&)>;

  ScriptedDesk() { platform::InstallMessageDesk(this); }
  ~ScriptedDesk() override;

  void Answer(int button) { answers_.push_back(button); }
  /// The answer to a question for a file or a folder; nothing: the user gives none. Without a script he gives none
  /// either.
  void AnswerPath(std::optional<std::u16string> path) { paths_.push_back(std::move(path)); }
  void Expect(DialogName dialog, Script script) { dialogs_.emplace_back(dialog, std::move(script)); }
  /// Around the start of a dialog's logic.
  std::function<void(const std::function<void()>&)> while_starting = [](const auto& start) { start(); };
  /// The messages since the last call, "caption|text", a question with "?" behind it; parts of several boxes joined by
  /// " / ".
  std::string Told() { return std::exchange(told_, {}); }

  int Show(platform::HWND owner, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) override;
  int Run(uint16_t dialog, platform::DialogLogic* logic);
  std::optional<std::u16string> TakePath(std::u16string_view title);

  std::map<uint32_t, platform::PixelImage> pictures;  ///< of the resource module, by number
  std::vector<platform::FontFamily> families;
  bool cancels_busy = false;  ///< whether the user cancels work at once

 private:
  std::deque<int> answers_;
  std::deque<std::optional<std::u16string>> paths_;
  std::deque<std::pair<uint16_t, Script>> dialogs_;
  std::string told_;
};

}  // namespace heron::test
