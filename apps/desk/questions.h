// Menus, file names and help, as a page asks for them.
#pragma once

#include <optional>

#include "platform/dialog/dialog.h"
#include "resources.h"

class QWidget;

namespace heron::desk {

/// Runs a menu centred below `button`; the chosen command, or 0. The click on the button that closes the menu isn't
/// one that opens it again.
uint16_t RunMenu(QWidget* button, std::span<const platform::MenuItem> items, const Resources& resources);

/// The full path chosen, or nothing.
std::optional<std::u16string> RunFileQuestion(QWidget* window, const platform::FileQuestion& question);

/// The full path of the folder chosen, or nothing.
std::optional<std::u16string> RunFolderQuestion(QWidget* window, std::u16string_view title, std::u16string_view folder);

/// Shows the help of a dialog as a whole, or that there is none; `topic` as in ShowHelp.
void TellHelp(QWidget* window, const DialogHelp* help, uint32_t topic);

}  // namespace heron::desk
