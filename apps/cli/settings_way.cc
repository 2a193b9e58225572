// The way to a requested value is found by trial: what rules and gates ask for is tried first, then every value of
// every other setting. A trial goes through the same operations as a real change, so a reported way always works.
#include "settings_way.h"

#include <algorithm>
#include <optional>

#include "generated/values.h"
#include "rules/control_tables.h"
#include "rules/dependency_tables.h"
#include "rules/dialogs.h"
#include "settings_change.h"

namespace heron::cli {
namespace {

using engine::ControlIndex;
using engine::ControlType;
using engine::kControls;

constexpr uint16_t kDeviceDialog = 800;
constexpr uint16_t kFaxDialog = 900;
constexpr int kDeepest = 4;       ///< steps that lead to one requested value
constexpr int kDeepestPair = 1;   ///< where pairs are still looked for
constexpr size_t kNamedMost = 4;  ///< values of a step that are named

struct Goal {
  uint16_t control;
  uint16_t value;
};

RequestedChange RequestFor(const Goal& goal) {
  return {.text = {},
          .parameter = engine::ParamIndexOfControl(engine::IndexOf(goal.control)),
          .control = goal.control,
          .value = goal.value};
}

/// Puts the settings back when it goes.
class Trial {
 public:
  explicit Trial(SettingsSession& opened) : opened_(opened), before_(opened.ui()) { before_.Take(opened.engine()); }
  ~Trial() { Restart(); }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  void Restart() { before_.Restore(opened_.engine()); }
  /// Whether the change is made as it was asked for.
  bool Make(const Goal& goal) {
    TerminalView view(Consent::kYes, true);
    const RequestedChange request = RequestFor(goal);
    const uint16_t feature = kParamRows[request.parameter].feature;
    const bool exists = KindOf(feature) == FeatureKind::kRange || CatalogIndexOf(feature, goal.value) >= 0;
    if (!exists) return false;
    if (!IsOffered(opened_.engine(), request)) return false;
    return ApplyRequest(opened_, request, view).outcome.applied &&
           engine::GetControlValue(opened_.engine(), goal.control) == goal.value;
  }

 private:
  SettingsSession& opened_;
  engine::StateCopy before_;
};

bool IsDevice(uint16_t control) {
  return kControls[engine::IndexOf(control)].dialog == dialog::kDevicePage;
}

/// What a control can be set to by a change of its own.
std::vector<uint16_t> ValuesOf(ControlIndex control) {
  const engine::ControlRow& row = kControls[control];
  const bool order = engine::ParamIndexOfControl(control) == ParamNamed<u"lpOrder">();  // no rule knows it
  if (order || row.type == ControlType::kButton || row.type == ControlType::kNumber) return {};
  if (row.type == ControlType::kRadio) return {static_cast<uint16_t>(engine::RadioMemberValue(row.id))};
  std::vector<uint16_t> values;
  for (const ListOption& option : engine::ValueLabels(control)) values.push_back(static_cast<uint16_t>(option.value));
  std::erase_if(values, [&](uint16_t value) {
    return OpensDialog(engine::ParamIndexOfControl(control), value) || std::ranges::count(values, value) > 1;
  });
  return values;
}

class Search {
 public:
  Search(SettingsSession& opened, const Goal& goal) : opened_(opened), goal_(goal), trial_(opened) {}

  std::vector<Step> Find() {
    if (!Reach(goal_, 0)) steps_.clear();
    return std::move(steps_);
  }

 private:
  engine::Engine& engine() { return opened_.engine(); }

  /// Repeats the steps so far on the settings as they were.
  void Replay() {
    trial_.Restart();
    for (const Step& step : steps_) trial_.Make({step.control, step.values.front()});
  }

  /// Makes `goal` true behind the steps so far, adding what it needs.
  bool Reach(const Goal& goal, int depth) {
    if (depth > kDeepest) return false;
    Replay();
    if (trial_.Make(goal)) return true;
    const size_t known = steps_.size();
    Replay();
    for (const std::vector<Goal>& wanted : WhatItWants(goal)) {
      if (Take(wanted, depth) && (trial_.Make(goal) || Reach(goal, depth + 1))) return true;
      steps_.resize(known);
      Replay();
    }
    return TakeAnything(goal) || (depth <= kDeepestPair && TakePair(goal));
  }

  /// What only two settings together allow: an option of the printer or the paper in a tray first, then anything.
  bool TakePair(const Goal& goal) {
    const size_t known = steps_.size();
    for (size_t i = 0; i < engine::kControlCount; ++i) {
      const auto control = static_cast<ControlIndex>(i);
      const uint16_t id = kControls[i].id;
      const bool first =
          IsDevice(id) || id == engine::ControlId(u"lpMediaSource") || id == engine::ControlId(u"trayMediaType.page");
      if (!first || IsSameSetting(id, goal_.control) || IsSameSetting(id, goal.control)) continue;
      for (const uint16_t value : ValuesOf(control)) {
        Replay();
        const uint16_t now = engine().Value(control);
        if (value == now || !trial_.Make({id, value})) continue;
        const bool enough = trial_.Make(goal);
        steps_.push_back({id, now, {value}});
        if (enough || TakeAnything(goal)) return true;
        steps_.resize(known);
      }
    }
    Replay();
    return false;
  }

  /// Adds a step of one of the goals, all of one control, the first that can be reached.
  bool Take(const std::vector<Goal>& wanted, int depth) {
    for (const Goal& goal : wanted) {
      if (IsSameSetting(goal.control, goal_.control) || engine::GetControlValue(engine(), goal.control) == goal.value)
        continue;
      const uint16_t now = engine::GetControlValue(engine(), goal.control);
      const size_t known = steps_.size();
      if (!Reach(goal, depth + 1)) {
        steps_.resize(known);
        Replay();
        continue;
      }
      Step step{goal.control, now, {goal.value}};
      for (const Goal& other : wanted) {
        if (other.value != goal.value && other.value != now) step.values.push_back(other.value);
      }
      steps_.push_back(std::move(step));
      Replay();
      return true;
    }
    return false;
  }

  /// What the control's gates and rules ask for, alternatives of one control together.
  std::vector<std::vector<Goal>> WhatItWants(const Goal& goal) {
    std::vector<std::vector<Goal>> wanted;
    const auto want = [&](uint16_t control, uint16_t value) {
      if (engine::IndexOf(control) == engine::kNoControl) return;
      if (wanted.empty() || wanted.back().front().control != control) wanted.emplace_back();
      wanted.back().push_back({control, value});
    };
    constexpr uint16_t kFaxUnit = engine::ControlId(u"lpFAXUnit");
    if (kControls[engine::IndexOf(goal.control)].dialog == dialog::kFaxPage)
      want(kFaxUnit, value::lpFAXUnit::kInstalled);
    if (engine::FirstOutputModeGate(goal.control) >= 0)
      want(engine::ControlId(u"lpOutput.Printer"), value::lpOutput::kPrinter);
    const auto gate = engine::FirstDeviceGate(goal.control);
    for (auto i = static_cast<size_t>(gate); gate >= 0 && i < engine::kDeviceGates.size(); ++i) {
      const engine::DeviceGate& row = engine::kDeviceGates[i];
      if (i > static_cast<size_t>(gate) && row.control != 0) break;
      want(kControls[row.test.control].id, static_cast<uint16_t>(row.test.value));
    }
    const auto rule = engine::FirstEnableRule(goal.control);
    for (auto i = static_cast<size_t>(rule); rule >= 0 && i < engine::kEnableRules.size(); ++i) {
      const engine::EnableRule& row = engine::kEnableRules[i];
      if (row.control != 0 && row.control != goal.control) break;
      if (row.parent != 0) want(row.parent, static_cast<uint16_t>(row.parentValue));
    }
    return wanted;
  }

  /// Tries every value of every other setting, those that a job can change first; the one that takes the least with it
  /// wins.
  bool TakeAnything(const Goal& goal) {
    for (const bool device : {false, true}) {
      std::optional<Step> best;
      size_t least = SIZE_MAX;
      for (size_t i = 0; i < engine::kControlCount; ++i) {
        const uint16_t id = kControls[i].id;
        if (IsDevice(id) != device || IsSameSetting(id, goal_.control) || IsSameSetting(id, goal.control)) continue;
        Weigh(static_cast<ControlIndex>(i), goal, best, least);
      }
      if (!best) continue;
      steps_.push_back(std::move(*best));
      Replay();
      return trial_.Make(goal);
    }
    return false;
  }

  void Weigh(ControlIndex control, const Goal& goal, std::optional<Step>& best, size_t& least) {
    const uint16_t now = engine().Value(control);
    Step step{kControls[control].id, now, {}};
    size_t cost = SIZE_MAX;
    for (const uint16_t value : ValuesOf(control)) {
      if (value == now || !Promises(control, value, goal)) continue;
      if (trial_.Make({step.control, value})) {
        const size_t entries = opened_.resolver().log.count;
        if (trial_.Make(goal) && engine().Value(control) == value) {
          const bool better = entries < cost;
          step.values.insert(better ? step.values.begin() : step.values.end(), value);
          cost = std::min(cost, entries);
        }
      }
      Replay();
    }
    if (step.values.empty() || cost >= least) return;
    least = cost;
    best = std::move(step);
  }

  /// Whether the goal is offered once `control` has `value`, judged without the rules; what the rules oppose
  /// only a trial shows.
  bool Promises(ControlIndex control, uint16_t value, const Goal& goal) {
    if (engine::SourceOfMirror(control) != engine::kNoControl) return true;  // the tray has it, not the control
    const uint16_t before = engine().Value(control);
    engine().Set(control, value);
    const bool offered = LooksOffered(goal);
    engine().Set(control, before);
    engine::EvaluateRules(engine(), nullptr);
    engine::ComputeItemStatus(engine(), goal.control);
    return offered;
  }

  bool LooksOffered(const Goal& goal) {
    engine::EvaluateRules(engine(), nullptr);
    engine::ComputeItemStatus(engine(), goal.control);
    return IsOffered(engine(), RequestFor(goal));
  }

  static bool IsSameSetting(uint16_t a, uint16_t b) {
    return engine::ParamIndexOfControl(engine::IndexOf(a)) == engine::ParamIndexOfControl(engine::IndexOf(b));
  }

  SettingsSession& opened_;
  Goal goal_;
  Trial trial_;
  std::vector<Step> steps_;
};

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

/// "A, B or C"
std::string Alternatives(const Step& step) {
  std::string text;
  const size_t count = std::min(step.values.size(), kNamedMost);
  for (size_t i = 0; i < count; ++i) {
    if (i > 0) text += i + 1 == count ? " or " : ", ";
    text += ValueName(step.control, step.values[i]);
  }
  return text;
}

std::string StepText(const engine::Engine& engine, const Step& step) {
  const bool device = IsDevice(step.control);
  const uint16_t value = step.values.front();
  return Quoted(ControlName(engine, step.control)) + " = " + Alternatives(step) + " (`heron settings" +
         (device ? " --device" : "") + " -o " + KeyOfControl(step.control, value) + '=' + std::to_string(value) + '`' +
         (device ? ", where it is installed)" : ")");
}

/// What a control would need and this model doesn't offer.
std::string NeededText(const engine::Engine& engine, uint16_t control) {
  const int rule = engine::FirstEnableRule(control);
  const uint16_t parent = rule < 0 ? uint16_t{0} : engine::kEnableRules[static_cast<size_t>(rule)].parent;
  if (parent == 0 || engine::IndexOf(parent) == engine::kNoControl) return "; no other setting allows it on this model";
  const auto value = static_cast<uint16_t>(engine::kEnableRules[static_cast<size_t>(rule)].parentValue);
  return ": it needs " + Quoted(ControlName(engine, parent)) + " = " + ValueName(parent, value) +
         ", which this model doesn't offer";
}

}  // namespace

bool IsOffered(const engine::Engine& engine, const RequestedChange& request) {
  constexpr ControlIndex kFaxUnit = engine::Control(u"lpFAXUnit");
  const engine::ControlRow& row = kControls[engine::IndexOf(request.control)];
  if (row.dialog == dialog::kFaxPage && request.value == value::lpOutput::kFax &&
      engine.Holds(kFaxUnit, value::lpFAXUnit::kNotInstalled))
    return false;
  if (!engine::IsControlAvailable(engine, request.control)) return false;
  if (row.type != ControlType::kList) return true;
  const auto items = engine::GetControlBlock(engine, request.control)->Items();
  const auto item = std::ranges::find(items, request.value, &ListItem::value);
  return item == items.end() || item->status != engine::kItemForbidden;
}

std::vector<Step> WayTo(SettingsSession& opened, const RequestedChange& request) {
  return Search(opened, {request.control, request.value}).Find();
}

std::string WayText(const engine::Engine& engine, const RequestedChange& request, const std::vector<Step>& way) {
  const std::string wanted =
      Quoted(ControlName(engine, request.control)) + " = " + ValueName(request.control, request.value);
  if (way.empty()) return wanted + " can't be chosen" + NeededText(engine, request.control);
  std::string text = wanted + " doesn't go with ";
  for (size_t i = 0; i < way.size(); ++i) {
    text += (i == 0 ? "" : " and ") + Quoted(ControlName(engine, way[i].control)) + " = " +
            ValueName(way[i].control, way[i].now);
  }
  text += "; first set ";
  for (size_t i = 0; i < way.size(); ++i) text += (i == 0 ? "" : ", then ") + StepText(engine, way[i]);
  return text;
}

}  // namespace heron::cli
