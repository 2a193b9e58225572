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
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
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
  std::vector<std::u16string> cells;   ///< texts of a list view's further columns
  uint32_t picture = 0;                ///< number of the small picture before the text, 0 for none
  bool grey = false;                   ///< in the colour of disabled texts; the row can still be selected
  std::u16string font = {};            ///< family of the letters, empty for the window's own
  std::optional<COLORREF> color = {};  ///< of the letters; the window's own without it, and while the row is selected

  bool operator==(const ListRow&) const = default;
};

/// Keys that a list box or list view reports before it acts on them itself.
enum class ListKey : uint8_t { kUp, kDown, kPageUp, kPageDown, kHome, kEnd, kSpace, kInsert, kDelete, kCopy, kPaste };

enum class PointerAction : uint8_t { kMove, kPress, kRelease };

/// What the pointer does on a place. Press and release are those of the left button. While it is held, the place gets
/// every move and the release, also from outside of it.
struct PointerEvent {
  PointerAction action = PointerAction::kMove;
  POINT at{};         ///< in the pixels that Draw gets
  bool held = false;  ///< the left button is down; of a release, false
};

/// Cursors over a place.
inline constexpr uint32_t kArrowCursor = 0;
inline constexpr uint32_t kAimCursor = 11000;   ///< what lies under the pointer can be put elsewhere
inline constexpr uint32_t kDragCursor = 11001;  ///< it is being dragged

/// How a slider or scroll bar moves and what it shows.
struct BarSteps {
  int line = 1;   ///< of a key or an arrow
  int page = 10;  ///< of Page Up and Page Down, and of a click beside the thumb
  int tick = 0;   ///< distance of a slider's ticks, 0 for none
};

/// Work that waits for something outside, a device for instance.
struct BusyWork {
  std::u16string_view title;
  std::u16string_view text;  ///< what is being done
  /// Runs on a thread of its own: it must not touch the dialog, the settings or anything else of the sheet's thread
  /// that isn't handed to it. A Cancel requests a stop; the work should then return soon.
  std::function<void(std::stop_token)> work;
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
  bool saves = false;  ///< a new file's name, also that of a file which exists: the logic asks before it replaces it
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
  virtual void SetSteps(ControlId id, const BarSteps& steps) = 0;  ///< of a slider or scroll bar

  virtual void SetRows(ControlId id, std::span<const ListRow> rows) = 0;  ///< nothing is selected afterwards
  virtual void SelectRow(ControlId id, int row) = 0;  ///< this one alone, or kNoRow; brings it into view
  virtual int SelectedRow(ControlId id) const = 0;    ///< of a list view the row with the focus, if selected
  virtual std::vector<int> SelectedRows(ControlId id) const = 0;  ///< ascending
  virtual void SelectRows(ControlId id, std::span<const int> rows) = 0;

  virtual void Repaint(ControlId id) = 0;  ///< an owner-drawn place asks for its drawing again
  /// Only `area` of the place, in the pixels that Draw gets, is drawn again.
  virtual void RepaintArea(ControlId id, const RECT& area) = 0;
  /// The place as its next Draw gets it; before the window is laid out, its size in the template.
  virtual RECT PlaceArea(ControlId id) const = 0;
  /// A cursor above; it stays until the next call, and is the arrow at first.
  virtual void SetCursor(ControlId id, uint32_t cursor) = 0;
  /// What a place shows, in words: for assistive tools and for who rests the mouse on it.
  virtual void SetDescription(ControlId id, std::u16string_view text) = 0;
  virtual void SetPicture(ControlId id, uint32_t picture, uint32_t mask) = 0;  ///< numbers of pictures, 0 for none
  /// Picture `number` of the resource module at its own size; nothing if there is none.
  virtual std::optional<PixelImage> Pixels(uint32_t number) const = 0;
  /// The scalable families that texts can be written in, in the order of their names.
  virtual std::vector<FontFamily> FontFamilies() const = 0;

  /// Calls DialogLogic::TimerFired about every so many milliseconds, from now on; 0 stops it. One timer a dialog. It
  /// also fires while a message box or another dialog is over this one.
  virtual void SetTimer(uint32_t milliseconds) = 0;

  /// Runs a modal dialog over this one until its logic ends it; its result, or -1 if it can't be opened.
  virtual int RunDialog(uint16_t dialog, DialogLogic* logic) = 0;
  /// Ends this modal dialog with `result` when the call in progress returns; in Initialise, before it is shown. Does
  /// nothing on a page.
  virtual void End(int result) = 0;
  /// Pops a menu up below a control, centred on it; the chosen command, or 0.
  virtual uint16_t PopupMenu(ControlId below, std::span<const MenuItem> items) = 0;
  /// The full path of the file; nothing if the user gives none.
  virtual std::optional<std::u16string> AskFileName(const FileQuestion& question) = 0;
  /// The same for an existing folder; `folder` is where the user starts.
  virtual std::optional<std::u16string> AskFolder(std::u16string_view title, std::u16string_view folder) = 0;
  /// The text that was copied last, in this program or another; lines end with \n. Empty if it is no text.
  virtual std::u16string ClipboardText() const = 0;
  /// Does the work, and until it returns shows what is being done, for how long, and a Cancel. Everything stays painted
  /// but nothing else can be used; timers go on. False if the user cancelled: what the work brought doesn't count then.
  /// An exception of the work leaves this call.
  virtual bool RunBusy(const BusyWork& busy) = 0;
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
  virtual void RowActivated(ControlId) {}  ///< double click or Enter on a row
  /// A click in a list box or list view, on a row or kNoRow, after what it selected was reported.
  virtual void RowClicked(ControlId, int) {}
  /// A key in a list box or list view; true: the logic has acted on it, and the list doesn't.
  virtual bool TakesListKey(ControlId, ListKey) { return false; }
  /// A row was dragged: row `from` is to become row `to`. The list doesn't move it; the logic gives it its new rows. Of
  /// lists whose template says `moves`.
  virtual void RowMoved(ControlId, int /*from*/, int /*to*/) {}
  virtual void HeadingClicked(ControlId, int) {}                      ///< column of a list view
  virtual void TextChanged(ControlId) {}                              ///< by typing or pasting
  virtual void PositionChanged(ControlId) {}                          ///< a spin, slider or scroll bar
  virtual bool TakesKey(ControlId, const TypedKey&) { return true; }  ///< false: dropped; the logic has beeped
  /// The focus goes from one control to another (0: out of the dialog). False: it stays.
  virtual bool LeavesFocus(ControlId, ControlId) { return true; }
  virtual void Draw(ControlId, Canvas&, const RECT&) {}         ///< an owner-drawn place, the first-paint control too
  virtual void PointerMoved(ControlId, const PointerEvent&) {}  ///< on an enabled place
  virtual void TimerFired() {}

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
