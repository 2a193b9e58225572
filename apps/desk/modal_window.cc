// Runs a modal dialog (modal_window.h).

#include "modal_window.h"

#include <QVBoxLayout>

#include "text.h"

namespace heron::desk {

ModalWindow::ModalWindow(QWidget* parent, Resources& resources, const platform::DialogTemplate& plan,
                         platform::DialogLogic& logic)
    : QDialog(parent), panel_(new Panel(this, resources, plan, logic, *this)) {
  setWindowTitle(ToQt(plan.title));
  setObjectName(QString::number(plan.number));
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(panel_);
}

void ModalWindow::End(int result) {
  runs_ = false;
  done(result);
}

int ModalWindow::Run() {
  runs_ = true;
  panel_->Initialise();
  if (!runs_) return result();
  panel_->Settle();
  if (focusWidget() == nullptr) {
    for (QWidget* const stop : panel_->TabStops()) {
      if (!stop->isEnabled() || stop->isHidden()) continue;
      stop->setFocus(Qt::OtherFocusReason);
      break;
    }
  }
  return exec();
}

}  // namespace heron::desk
