// The window over work that waits for a device.
#pragma once

#include "platform/dialog/dialog.h"

class QWidget;

namespace heron::desk {

/// Runs the work as Dialog::RunBusy describes. The window comes up only if the work takes longer than a moment; until
/// then what the user does waits.
bool RunBusyWork(QWidget* window, const platform::BusyWork& busy);

}  // namespace heron::desk
