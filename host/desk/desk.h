// The desk: what an operating system does so that a person sees a driver's sheet and its questions.
#pragma once

#include <functional>
#include <string>

#include "platform/devmode.h"

namespace heron::desk {

class PropertySheet;

/// One of the driver's two sheet operations, DrvDocumentPropertySheets or DrvDevicePropertySheets.
using SheetOperation = int32_t (*)(platform::PROPSHEETUI_INFO* info, platform::LPARAM lParam);

struct SheetRequest {
  SheetOperation operation = nullptr;
  void* header = nullptr;                           ///< of the operation's own kind
  std::u16string resources;                         ///< full path of the driver's resource module
  std::function<void(PropertySheet&)> opened = {};  ///< called when the window is about to be shown
};

enum class SheetEnd { kConfirmed, kCancelled, kRefused };

/// Shows the sheet until it is closed, through the operation's four reasons. kRefused: the driver couldn't make it.
/// Needs a QApplication. What the driver hands back lies where `header` says, after kConfirmed alone.
SheetEnd RunSheet(const SheetRequest& request);

}  // namespace heron::desk
