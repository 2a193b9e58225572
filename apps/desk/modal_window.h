// A dialog over a window, until its logic ends it.
#pragma once

#include <QDialog>

#include "panel.h"

namespace heron::desk {

class ModalWindow final : public QDialog, private PanelFrame {
 public:
  ModalWindow(QWidget* parent, Resources& resources, const platform::DialogTemplate& plan,
              platform::DialogLogic& logic);
  ~ModalWindow() override { delete panel_; }

  /// The result that the logic ended it with. It isn't shown if the logic ends it while it is initialised.
  int Run();
  Panel& panel() { return *panel_; }
  void reject() override { panel_->Close(); }

 private:
  void End(int result) override;

  bool runs_ = false;
  Panel* panel_;
};

}  // namespace heron::desk
