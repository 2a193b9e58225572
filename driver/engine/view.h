// What the engine needs from its user: a page, the command line, a test.
//
// The engine never knows windows. Controls are named by id, values are those of the setting. Nothing here may start
// another change: the engine is not re-entrant, even while a report is waiting for its answer. What a change leaves to
// be shown again isn't asked for here: it is in the result (Dirty, changes/resolve.h).
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

  /// Enables or disables an item of the dialog on show; it may have no such item.
  virtual void EnableControl(uint16_t id, bool available) = 0;
  /// Whether the list of pages has the focus and a selected row.
  virtual bool PerPageRowSelected() const = 0;
};

}  // namespace heron::engine
