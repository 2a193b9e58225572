// What the engine needs from its user: a page, the command line, a test.
//
// The engine never knows windows. Controls are named by id, values are those of the setting. Nothing here may start
// another change: the engine is not re-entrant, even while a report is waiting for its answer.
#pragma once

#include <cstdint>
#include <string_view>

namespace heron::engine {

/// A report to the user, and whether it asks.
struct Report {
  std::u16string_view caption;
  std::u16string_view text;
  bool asks = false;  ///< Yes or No; otherwise there is only OK
};

class EngineView {
 public:
  virtual ~EngineView() = default;

  /// The new value of a control that the user has just changed: the chosen item's, the pressed radio button's, the
  /// check's state, the field's number. Its setting still holds the old one.
  virtual uint16_t ReadControl(uint16_t id) = 0;
  /// Shows a report and waits for it to be answered. True for Yes and for OK.
  virtual bool Show(const Report& report) = 0;
  /// Whether a user can answer a question. If not, a No of Show isn't an answer: what hangs on
  /// one isn't done.
  virtual bool CanAnswer() const { return true; }

  /// The control's setting holds `value` now. Called also for controls that aren't on show.
  virtual void RedisplayControl(uint16_t id, uint16_t value) = 0;
  /// The items of a list on show may have other statuses: fill it again. `id` is a control of type list.
  virtual void RefreshList(uint16_t id) = 0;
  /// The same for the list of pages with settings of their own (control 249) and what belongs to it.
  virtual void RefreshPerPageList() = 0;
  /// Pictures that show settings may look different.
  virtual void RepaintPictures() = 0;
  /// Enables or disables an item of the dialog on show; it may have no such item.
  virtual void EnableControl(uint16_t id, bool available) = 0;
  /// Gives a field the focus and selects its text, after it was corrected.
  virtual void FocusControl(uint16_t id) = 0;
  /// Whether the list of pages has the focus and a selected row.
  virtual bool PerPageRowSelected() const = 0;
};

}  // namespace heron::engine
