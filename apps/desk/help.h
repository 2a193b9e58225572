// The help of a dialog and its controls. resources/help/README.md describes the notation.
#pragma once

#include <QString>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/dialog/dialog_template.h"

namespace heron::desk {

/// A paragraph for some controls, or for all of a group.
struct HelpEntry {
  std::vector<platform::ControlId> controls;
  QString group;  ///< its title, without a mnemonic
  QString text;
};

struct DialogHelp {
  QString topic;  ///< the dialog as a whole; never empty
  std::vector<HelpEntry> entries;
};

/// The help in `source` (UTF-8), or nothing and in `*error` a sentence that names the line. Paragraphs are parted by an
/// empty line. More than 64 KiB are refused.
std::optional<DialogHelp> ParseHelp(std::string_view source, QString* error);

/// The entry of a control, else of the innermost group around it that has one; null for neither.
const HelpEntry* EntryOf(const DialogHelp& help, const platform::DialogTemplate& plan, platform::ControlId control);

}  // namespace heron::desk
