// The engine of one sheet: values of controls, which of them are available, which items of lists are allowed.
//
// An Engine looks at the UiState that it was last bound to, a sheet's own or a clone of it, and keeps all that is
// computed for it; nothing is process-wide. It belongs to the thread of its state. What else must change when a control
// changes is asked through change.h; who stands in front is an EngineView.
//
// Conventions. A control is named by its id (u16) at the edges and by its ControlIndex inside; an unknown id gives what
// its declaration tells and changes nothing, kNoControl is never passed where an index is wanted. 65535 is a value that
// no control holds. Nothing here allocates but the functions that return a text. A `view` may be null.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/view.h"
#include "rules/control_tables.h"
#include "rules/controls.h"
#include "rules/dependency_tables.h"
#include "uistate/tray_media.h"
#include "uistate/ui_state.h"

namespace heron::engine {

inline constexpr uint16_t kUnknownValue = 0xFFFF;

inline constexpr uint16_t kItemAllowed = 1;
inline constexpr uint16_t kItemForbidden = 4;
inline constexpr uint16_t kItemHidden = 0xFFFF;  ///< display index of a forbidden item

/// What starts a run of the rules; some of them answer differently.
enum class ResolveMode : uint16_t { kSingle = 0, kRecall = 2, kOpening = 3 };

/// A control's fields in the bound state; all null for a restore-defaults button. Members of a radio group, and other
/// controls of one setting, have the same.
struct ControlBinding {
  ValueFields fields{};
  ListBlock* list = nullptr;  ///< of a setting that is a list
};

/// What EvaluateRules computes: plain data, so that a copy saves it.
struct RuleStates {
  std::array<uint8_t, kEnableRuleCount> enabled{};  ///< by row of kEnableRules
  std::array<uint8_t, kControlCount> available{};   ///< by control: its first row's, 1 if it has none
  std::array<uint8_t, kDeviceGateCount> device{};
  std::array<uint8_t, kOutputModeGateCount> outputMode{};
};

struct Engine {
  /// Binds; availability has no meaning before the first EvaluateRules.
  explicit Engine(UiState& state);

  UiState* ui = nullptr;
  std::array<ControlBinding, kControlCount> controls{};
  RuleStates rules;
  ResolveMode mode = ResolveMode::kSingle;

  std::array<uint16_t, kControlCount> savedValues{};
  std::array<uint8_t, sizeof(UiHead::trayTable)> savedTrays{};

  // Hot paths; `control` is below kControlCount.
  uint16_t Value(ControlIndex control) const {
    const uint16_t* value = controls[control].fields.value;
    return value == nullptr ? uint16_t{0} : *value;
  }
  bool Holds(ControlIndex control, int32_t value) const { return static_cast<int16_t>(Value(control)) == value; }
  /// Whether a switch is exactly 1.
  bool IsOn(ControlIndex control) const { return Holds(control, 1); }
  bool Holds(RuleTerm term) const { return Holds(term.control, term.value); }
  void Set(ControlIndex control, uint16_t value) {
    if (controls[control].fields.value != nullptr) *controls[control].fields.value = value;
  }
  uint16_t Default(ControlIndex control) const {
    const uint16_t* value = controls[control].fields.defaultValue;
    return value == nullptr ? uint16_t{0} : *value;
  }
  bool Available(ControlIndex control) const { return rules.available[control] != 0; }
  bool Usable(ControlIndex control) const;
};

/// Points every control into `ui`, which outlives the engine or the next binding. To be called after a clone has taken
/// a state's place, and when it gives it back; values and blocks don't move otherwise.
void BindControls(Engine& engine, UiState& ui);

/// While it lives, the engine looks at another state, a clone or a stored set, and at the one from before afterwards.
/// What EvaluateRules computed isn't put back: SaveRuleStates does that for a look that is to leave no trace.
class BoundClone {
 public:
  BoundClone(Engine& engine, UiState& clone) : engine_(engine), before_(*engine.ui) { BindControls(engine, clone); }
  ~BoundClone() { BindControls(engine_, before_); }
  BoundClone(const BoundClone&) = delete;
  BoundClone& operator=(const BoundClone&) = delete;

 private:
  Engine& engine_;
  UiState& before_;
};

// Values and fields of controls by id, for views, pages and programs, which know controls by the numbers of templates.
// Rules use Engine::Value by index. A setting that is known by its key is read with Setting<> (setting.h), whether it
// has a control or not; a record with Get<> (settings/driver_env.h).

uint16_t GetControlValue(const Engine& engine, uint16_t id);    ///< 65535 unknown, 0 for a button
uint16_t GetControlDefault(const Engine& engine, uint16_t id);  ///< the same
void SetControlValue(Engine& engine, uint16_t id, uint16_t value);
/// The list block of a control whose setting is a list, or null.
ListBlock* GetControlBlock(const Engine& engine, uint16_t id);
int GetControlType(uint16_t id);      ///< as ControlType, -1 unknown
int GetControlDialog(uint16_t id);    ///< 65535 unknown
int GetControlPageMask(uint16_t id);  ///< -1 unknown
int GetControlKind(uint16_t id);      ///< 1 single, 2 restore-defaults button, -1 unknown
bool GetControlFixedFlag(uint16_t id);

/// The control's label; of a mirror of a tray's media (3310 to 3353) with the tray's text in parentheses. Empty if
/// unknown. The texts are in use (catalog/strings.h).
std::u16string GetControlLabel(const Engine& engine, uint16_t id);
/// Text of a value: a paper's name for 111 and 114; null if the control has no such value. Valid while the texts are.
const char16_t* GetValueLabel(uint16_t id, uint16_t value);
/// The first value with this text, or -1. Never for 111 and 114.
int GetValueByLabel(uint16_t id, std::u16string_view text);

/// Keeps the value of every control and the tray media table; RestoreValues writes the last kept ones back.
void SnapshotValues(Engine& engine);
void RestoreValues(Engine& engine);

// The media that lie in the trays.

/// Of the first row of the tray media table with this source; the defaults if it has none.
TrayMedia MediaOfTray(const Engine& engine, uint16_t source);
/// Writes the media of the tray that `source` (120, 212 or 214 by index) selects into its four mirror controls; no
/// other control has any.
void LoadTrayMedia(Engine& engine, ControlIndex source);
/// The four mirrors of 120, 212 or 214, media type first; all kNoControl for another control.
std::array<ControlIndex, 4> TrayMirrors(ControlIndex source);
/// The reverse: 120, 212 or 214, or kNoControl.
ControlIndex SourceOfMirror(ControlIndex mirror);
/// Stores the value of a mirror control in the table's row of its tray. False if the table has no such row.
bool StoreTrayMedia(Engine& engine, ControlIndex mirror, uint16_t value);

// Availability.

/// Recomputes the availability of every control from the values alone, but for 251 to 254, which hang on the view's
/// focus too and are unavailable without one. Item statuses of 2024 and 3300 are recomputed on the way.
void EvaluateRules(Engine& engine, EngineView* view);
/// Tells the view of every ruled control of the dialog on show (UiHead::activeDialogId), in the order of the rules.
void ApplyAvailability(const Engine& engine, EngineView* view);

bool IsControlAvailable(const Engine& engine, uint16_t id);
/// Like available, but always true of controls that stay usable in rules.
bool IsControlUsable(const Engine& engine, uint16_t id);
/// Lifts or closes a control until the next evaluation; one without a rule stays available.
void SetControlAvailable(Engine& engine, uint16_t id, bool available);
/// Whether the installed device options allow the control; true if it needs none.
bool IsDeviceGateOpen(const Engine& engine, uint16_t id);
/// Parent of the control's first rule row (0 if that has none), 65535 without a row.
uint16_t GetRuleParent(uint16_t id);

RuleStates SaveRuleStates(const Engine& engine);
void RestoreRuleStates(Engine& engine, const RuleStates& states);

/// Makes a control available for a scope and puts back what it was.
class LiftControl {
 public:
  LiftControl(Engine& engine, uint16_t id) : engine_(engine), id_(id), was_(IsControlAvailable(engine, id)) {
    SetControlAvailable(engine, id, true);
  }
  ~LiftControl() { SetControlAvailable(engine_, id_, was_); }
  LiftControl(const LiftControl&) = delete;
  LiftControl& operator=(const LiftControl&) = delete;

 private:
  Engine& engine_;
  uint16_t id_;
  bool was_;
};

// The rules that no table can express; EvaluateRules calls them.

bool CopiesRule(const Engine& engine);
bool PerPageListRule(const Engine& engine, const EngineView* view, uint16_t id);
bool OverlayCreateRule(const Engine& engine);
bool OhpInterleaveRule(Engine& engine);

// Items of lists. Statuses and display indexes are those of the ListItems in the bound state.

/// Recomputes all items of one list; false, with nothing changed, if the control's setting is not a list.
bool ComputeItemStatus(Engine& engine, uint16_t id);
/// The same for every control of type list.
void ComputeAllItemStatus(Engine& engine);
/// Recomputes one item, whose number is below the list's count, and returns its status.
uint16_t ComputeStatusOfItem(Engine& engine, ControlIndex control, uint16_t item);

enum class Selection : uint8_t { kStays, kMoved, kNoneAllowed };

/// Moves a value whose item is forbidden to the first allowed item, in the setting itself. The control counts as
/// available meanwhile.
Selection SelectFirstAvailable(Engine& engine, uint16_t id);

}  // namespace heron::engine
