// Templates: the controls of a dialog with kind, label and group. Read by the desk and by the tests' scripted desk;
// written by hand in resources/dialogs, whose README describes the notation.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/dialog/dialog.h"

namespace heron::platform {

enum class ControlKind : uint8_t {
  kLabel,
  kRadio,
  kCheck,
  kButton,
  kLibrary,   ///< the button of the library menu
  kDefaults,  ///< the button that restores defaults
  kList,      ///< drop-down
  kCombo,     ///< drop-down that can be typed into
  kListBox,
  kListView,
  kText,
  kPassword,  ///< a text that is hidden
  kMemo,      ///< a text of several lines
  kNumber,    ///< one control pair with the spin behind it
  kSpin,
  kSlider,
  kScrollBar,
  kPlace,  ///< owner-drawn
  kTabs,   ///< its rows are the tabs
  kGroup,
  kFirstPaint,
};

enum class SizeClass : uint8_t { kPage, kSmall, kMedium, kLarge };
enum class Area : uint8_t { kColumns, kPane, kButtons };

struct ColumnHeading {
  uint32_t number = 0;  ///< of its text, or 0 if `text` is the heading
  std::u16string text;
  int width = 0;  ///< share of the view
};

struct ControlTemplate {
  ControlKind kind = ControlKind::kLabel;
  ControlId id = 0;      ///< 0 for a label or a group without a number
  std::string key;       ///< of the setting that it shows, as driver/rules/controls.table has it; empty for none
  std::string alias;     ///< the name by which code and tests call a control that shows no setting; empty for none
  std::u16string label;  ///< with & before its mnemonic
  ControlId buddy = 0;   ///< the control that this label or check names, or that this spin or scroll bar belongs to
  std::string set;       ///< radios of one set exclude each other, in any group
  std::u16string name;   ///< for assistive tools, where no label names the control
  int limit = 0;         ///< characters of a text, 0 for no limit
  int width = 0;         ///< of a place, at normal scale
  int height = 0;
  bool wraps = false;      ///< a spin goes on at the other end of its range
  bool read_only = false;  ///< a text
  bool vertical = false;   ///< a slider or scroll bar
  bool several = false;    ///< more than one row of a list view may be selected
  bool moves = false;      ///< rows of a list view can be dragged to another place
  std::vector<ColumnHeading> columns;

  Area area = Area::kColumns;
  int column = 0;       ///< of the columns area
  int group = -1;       ///< index of its group, -1 for none
  bool beside = false;  ///< in the line of the control before it
};

struct DialogTemplate {
  uint16_t number = 0;
  SizeClass size = SizeClass::kSmall;
  std::u16string title;
  std::vector<ControlTemplate> controls;  ///< in reading order; a group precedes its contents
};

/// The template in `source` (UTF-8), or nothing and in `*error` a sentence that names the line.
HERON_PLATFORM_API std::optional<DialogTemplate> ParseDialogTemplate(std::string_view source, std::string* error);

/// The name of a control for code and tests: its key or its alias.
inline const std::string& NameOf(const ControlTemplate& control) {
  return control.key.empty() ? control.alias : control.key;
}

/// The character behind the single & of a label, lower case; 0 if there is none. && is a plain &.
HERON_PLATFORM_API char16_t Mnemonic(std::u16string_view label);

}  // namespace heron::platform
