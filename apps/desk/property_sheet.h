// The window that shows a driver's pages.
//
// The driver adds its pages while it is asked for them (RunSheet in desk.h); the sheet shows them under tabs in that
// order, sends each page its events, and ends with the results of the pages.
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "panel.h"

class QDialogButtonBox;
class QStackedWidget;
class QTabBar;

namespace heron::desk {

class PropertySheet final : public QDialog, private PanelFrame {
 public:
  explicit PropertySheet(Resources& resources);
  ~PropertySheet() override;

  /// False if the page has no template.
  bool AddPage(const platform::PropertyPage& page);
  /// What a page reported by the sheet's callback; kept until the next one.
  void SetResult(intptr_t result) { result_ = result; }
  intptr_t result() const { return result_; }
  /// Whether a page has said that something was changed.
  bool touched() const { return touched_; }

  /// Shows the first page; the sheet must have one.
  void Open();
  std::function<void()> painted;  ///< called once, when the first page is on the screen

  /// Asked after OK, when every page has confirmed; false keeps the sheet open.
  std::function<bool()> stores;

  int pageCount() const { return static_cast<int>(pages_.size()); }
  int currentPage() const { return current_; }
  /// The page's panel, or null before it was first shown.
  Panel* panel(int page) const { return pages_[static_cast<size_t>(page)].panel; }
  /// Brings a page to the front unless the one before refuses to be left.
  void ShowPage(int page);

  void accept() override;
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Page {
    platform::PropertyPage page;
    const platform::DialogTemplate* plan = nullptr;
    Panel* panel = nullptr;
    QWidget* place = nullptr;
  };

  void MarkChanged() override;
  platform::ControlId NumberOf(const QWidget* widget) const override;
  void MakeButtons();
  void MakeShortcuts();
  void MakePanel(Page& page);
  void Turn(int step);
  bool LeaveCurrent();
  bool Confirm();

  Resources& resources_;
  std::vector<Page> pages_;
  int current_ = -1;
  intptr_t result_ = 0;
  bool closing_ = false;
  bool touched_ = false;
  QTabBar* tabs_;
  QStackedWidget* stack_;
  QDialogButtonBox* buttons_;
};

}  // namespace heron::desk
