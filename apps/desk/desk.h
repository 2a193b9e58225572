// The desk: shows a driver's sheet and its questions, as the operating system's printing UI would.
#pragma once

#include <functional>
#include <string>

#include "platform/api/devmode.h"

namespace heron::desk {

class PropertySheet;

/// One of the driver's two sheet operations, DrvDocumentPropertySheets or DrvDevicePropertySheets.
using SheetOperation = int32_t (*)(platform::PROPSHEETUI_INFO* info, platform::LPARAM lParam);

struct SheetRequest {
  SheetOperation operation = nullptr;
  void* header = nullptr;                           ///< of the operation's own kind
  std::u16string resources;                         ///< full path of the driver's resource module
  std::function<void(PropertySheet&)> opened = {};  ///< called when the window is about to be shown
  /// Stores what the driver has handed back, while the window is still open; `touched` says whether the user changed
  /// anything. Throws a std::exception whose text names what can't be stored and why.
  std::function<void(bool touched)> keep = {};
};

enum class SheetEnd { kConfirmed, kCancelled, kRefused };

/// Shows the sheet until it is closed, through the operation's four reasons. After OK it stays open until what it holds
/// is stored: a failure is shown in a window over it. kRefused: the driver couldn't make the sheet, or what was
/// applied before a Cancel can't be stored. Needs a QApplication. What the driver hands back lies where `header` says,
/// after kConfirmed alone.
SheetEnd RunSheet(const SheetRequest& request);

}  // namespace heron::desk
