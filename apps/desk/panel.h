// A page or a modal dialog in a window: the controls of its template, and the logic behind them.
//
// The panel is the Dialog that the logic sees. It reports what the user does, and nothing of what the logic
// itself changes. The logic must outlive the panel.
#pragma once

#include <QWidget>
#include <optional>
#include <utility>

#include "form.h"
#include "platform/dialog/dialog.h"

class QTimer;

namespace heron::desk {

class KeyFilter;
class RowMouse;

/// The window around a panel.
class PanelFrame {
 public:
  virtual ~PanelFrame() = default;
  virtual void MarkChanged() {}
  virtual void End(int) {}
  /// The number of a button of the frame's own, 0 for anything else.
  virtual platform::ControlId NumberOf(const QWidget*) const { return 0; }
};

class Panel final : public QWidget, public platform::Dialog {
 public:
  Panel(QWidget* parent, Resources& resources, const platform::DialogTemplate& plan, platform::DialogLogic& logic,
        PanelFrame& frame);
  ~Panel() override;

  platform::DialogLogic& logic() { return logic_; }
  const std::vector<FormControl>& controls() const { return controls_; }
  /// The widgets that the Tab key reaches, in reading order.
  std::vector<QWidget*> TabStops() const;
  /// To be called once before the panel is first shown.
  void Initialise();
  /// Makes the sizes of all parts final before the panel is shown: what is hidden otherwise waits for that.
  void Settle();
  /// Runs `call` on the logic; its changes aren't reported back, and a request to end is kept until it is done.
  template <typename Call>
  auto Ask(Call call);
  /// What Esc and the close box do.
  void Close();

  platform::HWND Window() override { return window(); }
  bool Has(platform::ControlId id) const override { return Find(id) != nullptr; }
  std::vector<platform::ControlId> Controls() const override;
  void Enable(platform::ControlId id, bool enabled) override;
  bool IsEnabled(platform::ControlId id) const override;
  void Show(platform::ControlId id, bool visible) override;
  void Focus(platform::ControlId id) override;
  platform::ControlId Focused() const override;
  void SetText(platform::ControlId id, std::u16string_view text) override;
  std::u16string Text(platform::ControlId id) const override;
  void SetTextLimit(platform::ControlId id, size_t characters) override;
  void SelectText(platform::ControlId id, size_t first, size_t count) override;
  void SetChecked(platform::ControlId id, bool checked) override;
  bool IsChecked(platform::ControlId id) const override;
  void SetRange(platform::ControlId id, int minimum, int maximum) override;
  void SetPosition(platform::ControlId id, int position) override;
  int Position(platform::ControlId id) const override;
  void SetSteps(platform::ControlId id, const platform::BarSteps& steps) override;
  void SetRows(platform::ControlId id, std::span<const platform::ListRow> rows) override;
  void SelectRow(platform::ControlId id, int row) override;
  int SelectedRow(platform::ControlId id) const override;
  std::vector<int> SelectedRows(platform::ControlId id) const override;
  void SelectRows(platform::ControlId id, std::span<const int> rows) override;
  void Repaint(platform::ControlId id) override;
  void RepaintArea(platform::ControlId id, const platform::RECT& area) override;
  platform::RECT PlaceArea(platform::ControlId id) const override;
  void SetCursor(platform::ControlId id, uint32_t cursor) override;
  void SetDescription(platform::ControlId id, std::u16string_view text) override;
  void SetPicture(platform::ControlId id, uint32_t picture, uint32_t mask) override;
  std::optional<platform::PixelImage> Pixels(uint32_t number) const override;
  std::vector<platform::FontFamily> FontFamilies() const override;
  void SetTimer(uint32_t milliseconds) override;
  int RunDialog(uint16_t dialog, platform::DialogLogic* logic) override;
  void End(int result) override;
  uint16_t PopupMenu(platform::ControlId below, std::span<const platform::MenuItem> items) override;
  std::optional<std::u16string> AskFileName(const platform::FileQuestion& question) override;
  std::optional<std::u16string> AskFolder(std::u16string_view title, std::u16string_view folder) override;
  std::u16string ClipboardText() const override;
  bool RunBusy(const platform::BusyWork& busy) override;
  void Beep() override;
  void ShowHelp(uint32_t topic, platform::ControlId control) override;
  void MarkChanged() override { frame_.MarkChanged(); }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  class Quiet;

  const FormControl* Find(platform::ControlId id) const;
  platform::ControlId NumberOf(const QWidget* widget) const;
  void Connect(const FormControl& control);
  void ConnectRows(const FormControl& control);
  void ConnectMouse(RowMouse& mouse, const platform::ControlTemplate& plan);
  void ConnectText(const FormControl& control);
  /// Reports an event to the logic, unless the logic caused it.
  template <typename Call>
  void Tell(Call call);
  bool TakesListKey(const QWidget* list, const QKeyEvent& event);
  bool PressedInList(const QObject* watched, const QKeyEvent& event);
  bool TakesKey(platform::ControlId id, char16_t character, const QString& text, qsizetype first, qsizetype last);
  void FocusMoved(QWidget* old, QWidget* now);
  bool MayLeave(platform::ControlId from, platform::ControlId to);
  void HoldFocus(QWidget* widget);
  void PaintFirst();
  void AskHelp(const QWidget* widget);

  Resources& resources_;
  const platform::DialogTemplate& plan_;
  platform::DialogLogic& logic_;
  PanelFrame& frame_;
  std::vector<FormControl> controls_;
  std::map<platform::ControlId, KeyFilter*> filters_;
  int calls_ = 0;  ///< calls of the logic in progress
  int quiet_ = 0;  ///< changes of the logic's in progress
  bool initialised_ = false;
  bool painted_ = false;
  bool beeped_ = false;
  bool leaving_ = false;  ///< a check on leaving a control is running
  bool swallows_press_ = false;
  QTimer* timer_ = nullptr;  ///< of the logic, once it has set one
  std::optional<int> result_;
};

template <typename Call>
auto Panel::Ask(Call call) {
  struct Running {
    explicit Running(Panel* running) : panel(running) { ++panel->calls_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
      if (--panel->calls_ == 0 && panel->result_) panel->frame_.End(*std::exchange(panel->result_, std::nullopt));
    }
    Panel* panel;
  };
  const Running running(this);
  return call(logic_);
}

}  // namespace heron::desk
