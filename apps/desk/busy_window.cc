// Work on a thread of its own and the window over it (busy_window.h).

#include "busy_window.h"

#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <exception>
#include <thread>

#include "text.h"

namespace heron::desk {
namespace {

constexpr int kMoment = 300;  ///< milliseconds in which most work is done, so that no window flashes up
constexpr int kSecond = 1000;

/// Says what is being done and for how long. It closes only when the work has returned: a Cancel asks for that.
class BusyWindow final : public QDialog {
 public:
  BusyWindow(QWidget* parent, const platform::BusyWork& busy, std::stop_source& stop)
      : QDialog(parent),
        stop_(stop),
        elapsed_(new QLabel(this)),
        cancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
    setObjectName(QStringLiteral("busy"));
    setWindowTitle(ToQt(busy.title));
    setWindowModality(Qt::ApplicationModal);
    auto* const layout = new QVBoxLayout(this);
    auto* const text = new QLabel(this);
    text->setTextFormat(Qt::PlainText);
    text->setText(ToQt(busy.text));
    auto* const bar = new QProgressBar(this);
    bar->setRange(0, 0);  // how long it takes isn't known
    bar->setTextVisible(false);
    bar->setAccessibleName(text->text());
    layout->addWidget(text);
    layout->addWidget(bar);
    layout->addWidget(elapsed_);
    layout->addWidget(cancel_, 0, Qt::AlignRight);
    connect(cancel_, &QPushButton::clicked, this, &BusyWindow::reject);
    connect(&timer_, &QTimer::timeout, this, &BusyWindow::ShowElapsed);
    clock_.start();
    timer_.start(kSecond);
    ShowElapsed();
    setMinimumWidth(fontMetrics().averageCharWidth() * 50);
  }

  void reject() override {
    stop_.request_stop();
    cancel_->setEnabled(false);
    ShowElapsed();
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    reject();
  }

 private:
  void ShowElapsed() {
    const qint64 seconds = clock_.elapsed() / kSecond;
    const QString time = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
    const QString text =
        stop_.stop_requested() ? QStringLiteral("Cancelling. Elapsed time: %1") : QStringLiteral("Elapsed time: %1");
    elapsed_->setText(text.arg(time));
  }

  std::stop_source& stop_;
  QLabel* elapsed_;
  QPushButton* cancel_;
  QTimer timer_;
  QElapsedTimer clock_;
};

/// The wait cursor over everything, for a scope.
class WaitCursor {
 public:
  WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace

bool RunBusyWork(QWidget* window, const platform::BusyWork& busy) {
  std::stop_source stop;
  std::exception_ptr failure;
  bool done = false;
  QEventLoop loop;
  QObject here;  // lives on this thread: what is sent to it runs here
  std::jthread thread([&] {
    try {
      busy.work(stop.get_token());
    } catch (...) {
      failure = std::current_exception();
    }
    QMetaObject::invokeMethod(&here, [&] {
      done = true;
      loop.quit();
    });
  });
  {
    const WaitCursor wait;
    QTimer::singleShot(kMoment, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
  }
  if (!done) {
    BusyWindow shown(window, busy, stop);
    shown.show();
    while (!done) loop.exec();
  }
  thread.join();
  if (failure != nullptr) std::rethrow_exception(failure);
  return !stop.stop_requested();
}

}  // namespace heron::desk
