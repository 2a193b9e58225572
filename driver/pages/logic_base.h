// The ground of every page and dialog: handlers do nothing before Initialise and after Destroy, and an exhausted memory
// doesn't leave them: what the handler hadn't done yet is then left undone. A dialog that can't be initialised closes
// as if it were cancelled.
//
// A page implements the On... operations, in which dialog() is always there.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/api/message_box.h"
#include "platform/dialog/dialog.h"

namespace heron::pages {

using platform::ControlId;

class LogicBase : public platform::DialogLogic {
 public:
  void Initialise(platform::Dialog* dialog) final;
  void Destroy() final;
  void Clicked(ControlId id) final;
  void RowSelected(ControlId id) final;
  void RowActivated(ControlId id) final;
  void RowClicked(ControlId id, int row) final;
  bool TakesListKey(ControlId id, platform::ListKey key) final;
  void RowMoved(ControlId id, int from, int to) final;
  void HeadingClicked(ControlId id, int column) final;
  void TextChanged(ControlId id) final;
  void PositionChanged(ControlId id) final;
  bool TakesKey(ControlId id, const platform::TypedKey& key) final;
  bool LeavesFocus(ControlId id, ControlId to) final;
  void Draw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) final;
  void PointerMoved(ControlId id, const platform::PointerEvent& event) final;
  void TimerFired() final;
  void Activate() final;
  bool Deactivate() final;
  bool Apply() final;
  void Reset() final;
  void Help(ControlId id) final;

 protected:
  virtual void OnInitialise() = 0;
  /// After an OnInitialise that ran out of memory: takes back what it changed, without dialog() and without memory.
  virtual void OnNotStarted() noexcept {}
  virtual void OnDestroy() {}
  virtual void OnClicked(ControlId) {}
  virtual void OnRowSelected(ControlId) {}
  virtual void OnRowActivated(ControlId) {}
  virtual void OnRowClicked(ControlId, int) {}
  virtual bool OnListKey(ControlId, platform::ListKey) { return false; }  ///< true: the list doesn't get the key
  virtual void OnRowMoved(ControlId, int /*from*/, int /*to*/) {}
  virtual void OnHeadingClicked(ControlId, int) {}
  virtual void OnTextChanged(ControlId) {}
  virtual void OnPositionChanged(ControlId) {}
  virtual bool AcceptsKey(ControlId, const platform::TypedKey&) { return true; }  ///< a refused key beeps
  virtual bool MayLeave(ControlId, ControlId) { return true; }
  virtual void OnDraw(ControlId, platform::Canvas&, const platform::RECT&) {}
  virtual void OnPointer(ControlId, const platform::PointerEvent&) {}
  virtual void OnTimer() {}
  virtual void OnActivate() {}
  virtual bool OnDeactivate() { return true; }
  virtual bool OnApply() { return true; }
  virtual void OnReset() {}
  virtual void OnHelp(ControlId id) { dialog().ShowHelp(0, id); }  ///< 0: of the dialog

  platform::Dialog& dialog() const { return *dialog_; }

  /// Shows a message box over this dialog; its answer. The focus may leave any field for it unchecked.
  int Tell(const std::u16string& text, const std::u16string& caption, platform::DWORD flags);
  /// Tells what is wrong with a field and gives it the focus with all its text selected. False, for who refuses.
  bool Refuse(ControlId field, const std::u16string& text, const std::u16string& caption);
  /// The same for what may not stand in a field: beeps and clears it first.
  bool RefuseCleared(ControlId field, const std::u16string& text, const std::u16string& caption);
  /// Text 21014, "X: enter a number from A to B", with the name's text number.
  static std::u16string RangeText(uint32_t name, int64_t minimum, int64_t maximum);

 private:
  template <typename Work>
  void Try(Work&& work);
  template <typename Work>
  bool TryOr(bool otherwise, Work&& work);

  platform::Dialog* dialog_ = nullptr;
  bool telling_ = false;
};

/// The text with this number, as an owned one.
std::u16string TextOf(uint32_t number);

}  // namespace heron::pages
