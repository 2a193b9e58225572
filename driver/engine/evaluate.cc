// Availability: walks the enable rules and the gates.
//
// What a row refers to is looked up once for the process; an evaluation then reads nothing but values and flags.
#include <algorithm>

#include "engine/engine.h"
#include "engine/item_checks.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "rules/paper_rule_tables.h"

namespace heron::engine {
namespace {

/// Where a row of kEnableRules leads; -1 or kNoControl for nowhere.
struct RuleLinks {
  ControlIndex control = kNoControl;  ///< the governed control, in its first row only
  ControlIndex parent = kNoControl;
  int16_t parentRow = -1;
  int16_t deviceGate = -1;
  int16_t outputModeGate = -1;
  uint8_t lastRow = 0;  ///< of the same control
};

struct RulePlan {
  std::array<RuleLinks, kEnableRuleCount> links;
  uint8_t highestLevel = 1;
};

RulePlan MakePlan() {
  RulePlan plan;
  for (size_t i = 0; i < kEnableRuleCount; ++i) {
    const EnableRule& rule = kEnableRules[i];
    RuleLinks& links = plan.links[i];
    links.parent = IndexOf(rule.parent);
    if (rule.control == 0) continue;
    plan.highestLevel = std::max(plan.highestLevel, rule.level);
    if (FirstEnableRule(rule.control) == static_cast<int>(i)) links.control = IndexOf(rule.control);
    if (rule.parent != 0) links.parentRow = static_cast<int16_t>(FirstEnableRule(rule.parent));
    links.deviceGate = static_cast<int16_t>(FirstDeviceGate(rule.control));
    links.outputModeGate = static_cast<int16_t>(FirstOutputModeGate(rule.control));
    for (size_t j = i; j < kEnableRuleCount; ++j) {
      if (kEnableRules[j].control == rule.control) links.lastRow = static_cast<uint8_t>(j);
    }
  }
  return plan;
}

const RulePlan& Plan() {
  static const RulePlan kPlan = MakePlan();
  return kPlan;
}

/// Tests the row at `row`, a chain as a whole, and moves on behind it.
bool TestGate(const Engine& engine, size_t& row) {
  bool holds = engine.Holds(kDeviceGates[row].test);
  if (kDeviceGates[row++].join != DeviceGate::Join::kBegin) return holds;
  for (; row < kDeviceGateCount && kDeviceGates[row].join == DeviceGate::Join::kEnd; ++row) {
    holds = holds && engine.Holds(kDeviceGates[row].test);
  }
  return holds;
}

/// A group of rows is true if one of its alternatives holds.
void EvaluateDeviceGates(Engine& engine) {
  for (size_t first = 0; first < kDeviceGateCount;) {
    size_t row = first;
    bool open = TestGate(engine, row);
    while (!open && row < kDeviceGateCount && kDeviceGates[row].control == 0) open = TestGate(engine, row);
    do {
      engine.rules.device[first++] = open;
    } while (first < kDeviceGateCount && kDeviceGates[first].control == 0);
  }
}

/// Stores what a rule says, closed by the control's gates: a row that depends on this control sees both.
void StoreRow(Engine& engine, const RulePlan& plan, size_t row, bool enabled) {
  const RuleLinks& links = plan.links[row];
  RuleStates& states = engine.rules;
  if (links.deviceGate >= 0) enabled = enabled && states.device[static_cast<size_t>(links.deviceGate)] != 0;
  if (links.outputModeGate >= 0) enabled = enabled && states.outputMode[static_cast<size_t>(links.outputModeGate)] != 0;
  states.enabled[row] = enabled;
  if (links.control != kNoControl) states.available[links.control] = enabled;
}

/// The parent holds the value of this row or of one that continues it.
bool RowHolds(const Engine& engine, const RulePlan& plan, size_t row) {
  const ControlIndex parent = plan.links[row].parent;
  if (parent == kNoControl) return false;
  do {
    if (engine.Holds(parent, kEnableRules[row].parentValue)) return true;
    ++row;
  } while (row < kEnableRuleCount && kEnableRules[row].control == 0);
  return false;
}

bool ParentAvailable(const Engine& engine, const RulePlan& plan, size_t row) {
  const int16_t parent = plan.links[row].parentRow;
  return kEnableRules[row].level <= 1 || parent < 0 || engine.rules.enabled[static_cast<size_t>(parent)] != 0;
}

/// Evaluates all rows of the control whose first row this is.
void EvaluateGroup(Engine& engine, const RulePlan& plan, size_t first) {
  const uint16_t control = kEnableRules[first].control;
  const size_t last = plan.links[first].lastRow;
  bool result = false;
  bool parent_available = true;
  for (size_t row = first; row <= last; ++row) {
    if (kEnableRules[row].control != control) continue;
    if (kEnableRules[row].level > 1) parent_available = ParentAvailable(engine, plan, row);
    const bool holds = parent_available && RowHolds(engine, plan, row);
    const bool all = kEnableRules[row].join == RuleJoin::kAll;
    result = all && row != first ? result && holds : result || holds;
  }
  for (size_t row = first; row <= last; ++row) {
    if (kEnableRules[row].control == control) StoreRow(engine, plan, row, result);
  }
}

void EvaluateRow(Engine& engine, const RulePlan& plan, size_t row) {
  const EnableRule& rule = kEnableRules[row];
  if (rule.level == 0) return StoreRow(engine, plan, row, true);
  if (rule.groupSize <= 1)
    return StoreRow(engine, plan, row, ParentAvailable(engine, plan, row) && RowHolds(engine, plan, row));
  if (FirstEnableRule(rule.control) == static_cast<int>(row)) EvaluateGroup(engine, plan, row);
}

bool CallFunction(Engine& engine, const EngineView* view, const EnableRule& rule) {
  switch (rule.function) {
    case RuleFunction::kCopies:
      return CopiesRule(engine);
    case RuleFunction::kPerPageList:
      return PerPageListRule(engine, view, rule.control);
    case RuleFunction::kOverlayCreate:
      return OverlayCreateRule(engine);
    default:
      return OhpInterleaveRule(engine);
  }
}

bool AnyRuleOf(uint8_t group, uint16_t value) {
  return std::ranges::any_of(PaperRules(),
                             [&](const PaperRule& rule) { return rule.group == group && rule.value == value; });
}

}  // namespace

void EvaluateRules(Engine& engine, EngineView* view) {
  const RulePlan& plan = Plan();
  RuleStates& states = engine.rules;
  EvaluateDeviceGates(engine);
  states.outputMode.fill(engine.Holds(kOutputModeTest));
  for (size_t row = 0; row < kEnableRuleCount; ++row) {
    if (kEnableRules[row].control != 0) states.enabled[row] = 0;
    if (plan.links[row].control != kNoControl) states.available[plan.links[row].control] = 0;
  }
  for (size_t row = 0; row < kEnableRuleCount; ++row) {
    const EnableRule& rule = kEnableRules[row];
    if (rule.function != RuleFunction::kNone) StoreRow(engine, plan, row, CallFunction(engine, view, rule));
  }
  for (uint8_t level = 0; level <= plan.highestLevel; ++level) {
    for (size_t row = 0; row < kEnableRuleCount; ++row) {
      const EnableRule& rule = kEnableRules[row];
      if (rule.level == level && rule.control != 0 && rule.function == RuleFunction::kNone)
        EvaluateRow(engine, plan, row);
    }
  }
}

void ApplyAvailability(const Engine& engine, EngineView* view) {
  if (view == nullptr) return;
  for (size_t row = 0; row < kEnableRuleCount; ++row) {
    const EnableRule& rule = kEnableRules[row];
    if (rule.control != 0 && rule.dialog == engine.ui->head().activeDialogId)
      view->EnableControl(rule.control, engine.rules.enabled[row] != 0);
  }
}

bool IsControlAvailable(const Engine& engine, uint16_t id) {
  const int row = FirstEnableRule(id);
  return row < 0 ? IndexOf(id) != kNoControl : engine.rules.enabled[static_cast<size_t>(row)] != 0;
}

bool IsControlUsable(const Engine& engine, uint16_t id) {
  const int row = FirstEnableRule(id);
  return IsControlAvailable(engine, id) || (row >= 0 && kEnableRules[static_cast<size_t>(row)].alwaysUsable);
}

void SetControlAvailable(Engine& engine, uint16_t id, bool available) {
  const int first = FirstEnableRule(id);
  if (first < 0) return;
  const size_t last = Plan().links[static_cast<size_t>(first)].lastRow;
  for (auto row = static_cast<size_t>(first); row <= last; ++row) {
    if (kEnableRules[row].control == id) engine.rules.enabled[row] = available;
  }
  if (IndexOf(id) != kNoControl) engine.rules.available[IndexOf(id)] = available;
}

bool IsDeviceGateOpen(const Engine& engine, uint16_t id) {
  const int row = FirstDeviceGate(id);
  return row < 0 || engine.rules.device[static_cast<size_t>(row)] != 0;
}

uint16_t GetRuleParent(uint16_t id) {
  const int row = FirstEnableRule(id);
  return row < 0 ? kUnknownValue : kEnableRules[static_cast<size_t>(row)].parent;
}

RuleStates SaveRuleStates(const Engine& engine) {
  return engine.rules;
}

void RestoreRuleStates(Engine& engine, const RuleStates& states) {
  engine.rules = states;
}

bool CopiesRule(const Engine& engine) {
  constexpr uint8_t kGroup = 20;
  constexpr ControlIndex kSource = Control(u"lpMediaSource");
  if (!HasItem(engine, kSource, engine.Value(kSource))) return false;
  bool result = true;
  for (const ControlIndex control : PaperGroupControls(kGroup)) {
    const bool interleave = control == Control(u"OHPInterLeave_Check");
    if (!engine.IsOn(control) ||
        (interleave && !engine.Holds(Control(u"trayMediaType.page"), value::lpMediaType::kTransparency)))
      result = true;
    else if (AnyRuleOf(kGroup, engine.Value(control)))
      result = false;
  }
  return result;
}

bool PerPageListRule(const Engine& engine, const EngineView* view, uint16_t id) {
  if (!engine.IsOn(Control(u"InterSheet_Check"))) return false;
  constexpr uint16_t kFirstRowButton = 251, kLastRowButton = 254;
  if (id < kFirstRowButton || id > kLastRowButton) return true;
  const bool any_row = SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*engine.ui) != 0;
  return any_row && view != nullptr && view->PerPageRowSelected();
}

bool OverlayCreateRule(const Engine& engine) {
  return Setting<u"lpGraphicsMode">(*engine.ui) != value::lpGraphicsMode::kVector ||
         !engine.Holds(Control(u"lpPDLType.Pcl5"), value::lpPDLType::kPcl5);
}

bool OhpInterleaveRule(Engine& engine) {
  constexpr ControlIndex kSource = Control(u"lpMediaSource");
  constexpr ControlIndex kTray = Control(u"lpOIPaperTray");
  const uint16_t source = engine.Value(kSource);
  if (!HasItem(engine, kSource, source)) return false;
  bool result = AnyTrayWithTransparencies(engine);
  if (result) {
    const LiftControl lift(engine, kControls[kTray].id);
    ComputeItemStatus(engine, kControls[kTray].id);
    result = std::ranges::any_of(engine.controls[kTray].list->Items(), [&](const ListItem& item) {
      return item.status == kItemAllowed && item.value != source && HasItem(engine, kSource, item.value) &&
             MediaOfTray(engine, item.value).mediaType != value::lpMediaType::kTransparency;
    });
  }
  ComputeItemStatus(engine, kControls[kTray].id);
  return result;
}

}  // namespace heron::engine
