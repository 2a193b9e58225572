// Dialogs, seen from the logic: controls with numbers, what happens to them, and nothing of a toolkit.
//
// The windows (apps/desk, or a scripted desk in tests) implement Dialog and call DialogLogic; the pages and dialogs of
// the driver implement DialogLogic and call Dialog. The controls of a dialog, with kind and label, are data: the
// template in resources/dialogs.
//
// All of it happens on the thread of the sheet. Numbers name controls within their dialog. A call for a number that the
// dialog doesn't have does nothing and gives an empty or zero answer. What the logic changes itself is never notified
// back to it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/api/canvas.h"
#include "platform/api/types.h"

namespace heron::platform {

using ControlId = uint16_t;

inline constexpr ControlId kOkButton = 1;      ///< the same numbers on every dialog
inline constexpr ControlId kCancelButton = 2;  ///< also Esc and the window's close box
inline constexpr int kNoRow = -1;

/// A row of a list, a list box or a list view.
struct ListRow {
  std::u16string text;
  std::vector<std::u16string> cells;  ///< texts of a list view's further columns
  uint32_t picture = 0;               ///< number of the small picture before the text, 0 for none
};

struct MenuItem {
  uint16_t command = 0;  ///< 0 is a separator
  std::u16string text;
  bool enabled = true;
  uint32_t picture = 0;  ///< number of its picture, 0 for none
};

/// A key or a pasted character that a text field is about to take.
struct TypedKey {
  char16_t character;        ///< below 32 for control characters, which are never text
  std::u16string_view text;  ///< of the field
  size_t selection_start;    ///< the caret is at selection_end
  size_t selection_end;
};

/// A question for a file's name.
struct FileQuestion {
  bool saves = false;  ///< a new file's name; otherwise an existing file
  std::u16string_view title;
  std::u16string_view folder;
  std::u16string_view name;
  std::u16string_view filter;  ///< pairs of text and pattern; its last character separates them
};

class DialogLogic;

class Dialog {
 public:
  virtual ~Dialog() = default;

  /// For message boxes: MessageBoxW(Window(), ...).
  virtual HWND Window() = 0;
  virtual bool Has(ControlId id) const = 0;
  /// Every control of the template, in its order.
  virtual std::vector<ControlId> Controls() const = 0;

  virtual void Enable(ControlId id, bool enabled) = 0;
  virtual bool IsEnabled(ControlId id) const = 0;
  virtual void Show(ControlId id, bool visible) = 0;
  virtual void Focus(ControlId id) = 0;
  virtual ControlId Focused() const = 0;  ///< 0 if no control of this dialog has the focus

  virtual void SetText(ControlId id, std::u16string_view text) = 0;
  virtual std::u16string Text(ControlId id) const = 0;
  virtual void SetTextLimit(ControlId id, size_t characters) = 0;
  virtual void SelectText(ControlId id, size_t first, size_t count) = 0;  ///< a count beyond the end is the rest

  virtual void SetChecked(ControlId id, bool checked) = 0;  ///< a check, or one radio of its set
  virtual bool IsChecked(ControlId id) const = 0;

  virtual void SetRange(ControlId id, int minimum, int maximum) = 0;  ///< of a spin, slider or scroll bar
  virtual void SetPosition(ControlId id, int position) = 0;
  virtual int Position(ControlId id) const = 0;

  virtual void SetRows(ControlId id, std::span<const ListRow> rows) = 0;  ///< nothing is selected afterwards
  virtual void SelectRow(ControlId id, int row) = 0;  ///< this one alone, or kNoRow; brings it into view
  virtual int SelectedRow(ControlId id) const = 0;    ///< of a list view the row with the focus, if selected
  virtual std::vector<int> SelectedRows(ControlId id) const = 0;
  virtual void SelectRows(ControlId id, std::span<const int> rows) = 0;

  virtual void Repaint(ControlId id) = 0;  ///< an owner-drawn place asks for its drawing again
  /// Only `area` of the place, in the pixels that Draw gets, is drawn again.
  virtual void RepaintArea(ControlId id, const RECT& area) = 0;
  /// What a place shows, in words: for assistive tools and for who rests the mouse on it.
  virtual void SetDescription(ControlId id, std::u16string_view text) = 0;
  virtual void SetPicture(ControlId id, uint32_t picture, uint32_t mask) = 0;  ///< numbers of pictures, 0 for none

  /// Runs a modal dialog over this one until its logic ends it; its result, or -1 if it can't be opened.
  virtual int RunDialog(uint16_t dialog, DialogLogic* logic) = 0;
  /// Ends this modal dialog with `result` when the call in progress returns; in Initialise, before it is shown. Does
  /// nothing on a page.
  virtual void End(int result) = 0;
  /// Pops a menu up below a control, centred on it; the chosen command, or 0.
  virtual uint16_t PopupMenu(ControlId below, std::span<const MenuItem> items) = 0;
  virtual std::optional<std::u16string> AskFileName(const FileQuestion& question) = 0;
  virtual void Beep() = 0;
  /// Shows the help of a control, or with 0 of the dialog. `topic` is the dialog's, 0 if it has none.
  virtual void ShowHelp(uint32_t topic, ControlId control) = 0;
  /// Marks the page as changed, which enables the sheet's Apply button.
  virtual void MarkChanged() = 0;
};

/// What a page or a dialog does. Every handler may come before Initialise and after Destroy, and does nothing then.
class DialogLogic {
 public:
  virtual ~DialogLogic() = default;

  /// Before the dialog is first shown; `dialog` stays valid until Destroy.
  virtual void Initialise(Dialog* dialog) = 0;
  virtual void Destroy() {}

  virtual void Clicked(ControlId) {}  ///< a button, a check, a radio; the box already shows its new state
  /// The user chose a row of a drop-down, also the one that was chosen already; elsewhere, selected another row.
  virtual void RowSelected(ControlId) {}
  virtual void RowActivated(ControlId) {}                             ///< double click or Enter on a row
  virtual void HeadingClicked(ControlId, int) {}                      ///< column of a list view
  virtual void TextChanged(ControlId) {}                              ///< by typing or pasting
  virtual void PositionChanged(ControlId) {}                          ///< a spin, slider or scroll bar
  virtual bool TakesKey(ControlId, const TypedKey&) { return true; }  ///< false: dropped; the logic has beeped
  /// The focus goes from one control to another (0: out of the dialog). False: it stays.
  virtual bool LeavesFocus(ControlId, ControlId) { return true; }
  virtual void Draw(ControlId, Canvas&, const RECT&) {}  ///< an owner-drawn place, the first-paint control too

  /// A page of a sheet: comes to the front; is to be left or confirmed (false: stays); is confirmed; is cancelled.
  virtual void Activate() {}
  virtual bool Deactivate() { return true; }
  virtual bool Apply() { return true; }
  virtual void Reset() {}
  virtual void Help(ControlId) {}  ///< of a control, or with 0 of the whole, as the sheet's own help button asks for
};

/// A page as the sheet's host gets it.
struct PropertyPage {
  uint16_t dialog = 0;  ///< number of its template
  DialogLogic* logic = nullptr;
  bool has_help = false;
};

/// Functions of the sheet's callback (PFNCOMPROPSHEET).
inline constexpr uint32_t CPSFUNC_ADD_HPROPSHEETPAGE = 0;  ///< lParam1: the page's handle; 0 is a refusal
inline constexpr uint32_t CPSFUNC_SET_RESULT = 9;          ///< lParam1: the page's handle, lParam2: the result

/// A handle for the host's callback, or null. The host owns it once it has taken it; `page` is copied.
HERON_PLATFORM_API HANDLE CreatePropertySheetPageW(const PropertyPage& page);
/// For hosts: the page behind a handle, which becomes invalid; nothing if it is none.
HERON_PLATFORM_API std::optional<PropertyPage> TakePropertySheetPage(HANDLE page);

}  // namespace heron::platform
