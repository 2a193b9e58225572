#include "settings_change.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "engine/control_tables.h"
#include "engine/dependency_tables.h"
#include "engine/fax_mode.h"

namespace heron::cli {
namespace {

using engine::ControlIndex;
using engine::kControls;

constexpr uint16_t kDeviceDialog = 800;
constexpr uint16_t kFaxDialog = 900;
constexpr ControlIndex kFaxUnit = engine::Control(u"lpFAXUnit");
constexpr uint16_t kNoFaxUnit = 1;
constexpr uint16_t kHasFaxUnit = 2;

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

std::string IdAndName(const engine::Engine& engine, ControlIndex control) {
  return Quoted(ControlName(engine, kControls[control].id));
}

/// "Output unit = Bin-type finisher, or ..." for every alternative of a control's device gate.
std::string WhatOpensTheGate(const engine::Engine& engine, uint16_t control) {
  std::string text;
  const auto first = static_cast<size_t>(engine::FirstDeviceGate(control));
  for (size_t i = first; i < engine::kDeviceGates.size(); ++i) {
    const engine::DeviceGate& gate = engine::kDeviceGates[i];
    if (i > first && gate.control != 0) break;
    if (!text.empty()) text += gate.join == engine::DeviceGate::Join::kEnd ? " and " : ", or ";
    const uint16_t id = kControls[gate.test.control].id;
    text += IdAndName(engine, gate.test.control) + " = " + ValueName(id, static_cast<uint16_t>(gate.test.value));
  }
  return text;
}

/// "it needs "Output unit" = A or B" where a control's rules ask for values of other controls; empty where they hold.
std::string WhatItsRulesWant(const engine::Engine& engine, uint16_t control) {
  const int first = engine::FirstEnableRule(control);
  if (first < 0) return {};
  std::string wanted;
  const auto begin = static_cast<size_t>(first);
  const size_t group = engine::kEnableRules[begin].groupSize;
  for (size_t i = begin; i < engine::kEnableRules.size(); ++i) {
    const engine::EnableRule& rule = engine::kEnableRules[i];
    if (i >= begin + group && rule.control != 0) break;
    if (rule.parent == 0 || engine::IndexOf(rule.parent) == engine::kNoControl) continue;
    const auto value = static_cast<uint16_t>(rule.parentValue);
    if (engine::GetControlValue(engine, rule.parent) == value) {
      if (engine::IsControlAvailable(engine, rule.parent)) return {};
      return Quoted(ControlName(engine, rule.parent)) + " isn't available";
    }
    wanted += (wanted.empty() ? "it needs " : rule.join == engine::RuleJoin::kAll ? " and " : " or ");
    wanted += Quoted(ControlName(engine, rule.parent)) + " = " + ValueName(rule.parent, value);
  }
  return wanted;
}

/// What would make a control available, as far as its rules tell it.
std::string WhatClosesIt(const engine::Engine& engine, uint16_t control) {
  if (engine::FirstDeviceGate(control) >= 0 && !engine::IsDeviceGateOpen(engine, control)) {
    return "the printer has no unit for it; it needs " + WhatOpensTheGate(engine, control) +
           ", set with `heron settings --device` where it is installed";
  }
  const std::string parents = WhatItsRulesWant(engine, control);
  if (!parents.empty()) return parents;
  if (engine.Holds(engine::Control(u"lpOutput.902"), 1)) return "it can't be used for a fax";
  return "other settings rule it out";
}

[[noreturn]] void Refuse(const Wish& wish, const std::string& why) {
  throw Failure(kRefused, wish.text + ": " + why);
}

const engine::ControlRow& RowOf(uint16_t control) {
  return kControls[engine::IndexOf(control)];
}

void CheckWish(Sheet& sheet, const Wish& wish, bool device) {
  engine::Engine& engine = sheet.engine();
  const engine::ControlRow& row = RowOf(wish.control);
  if (row.dialog == kDeviceDialog && !device) {
    Refuse(wish, Quoted(ControlName(engine, wish.control)) + " is an option of the printer; use --device to change it");
  }
  if (row.dialog == kFaxDialog && wish.value == engine::kOutputFax && engine.Holds(kFaxUnit, kNoFaxUnit)) {
    Refuse(wish, "the printer has no unit for it; it needs " + IdAndName(engine, kFaxUnit) + " = " +
                     ValueName(kControls[kFaxUnit].id, kHasFaxUnit) +
                     ", set with `heron settings --device` where it is installed");
  }
  if (!engine::IsControlAvailable(engine, wish.control)) {
    Refuse(wish,
           Quoted(ControlName(engine, wish.control)) + " can't be changed now: " + WhatClosesIt(engine, wish.control));
  }
  if (row.type != engine::ControlType::kList) return;
  const auto items = engine::GetControlBlock(engine, wish.control)->Items();
  const auto item = std::ranges::find_if(items, [&](const ListItem& i) { return i.value == wish.value; });
  if (item != items.end() && item->status == engine::kItemForbidden) {
    Refuse(wish, Quoted(ValueName(wish.control, wish.value)) +
                     " can't be chosen with the other settings; `heron controls` "
                     "shows what can");
  }
}

/// A setting that no control shows, and those that are stored without asking the rules.
void SetAtOnce(Sheet& sheet, const Wish& wish) {
  const ValueFields fields = FieldsOf(sheet.ui(), wish.parameter);
  *fields.value = wish.value;
  engine::EvaluateRules(sheet.engine(), nullptr);
  engine::ComputeAllItemStatus(sheet.engine());
}

/// Fax or printer, which the rules aren't asked for.
engine::ResolveOutcome SwitchOutput(Sheet& sheet, const Wish& wish, TerminalView& view) {
  engine::Engine& engine = sheet.engine();
  engine::BeginAction(sheet.resolver());
  engine.Set(engine::IndexOf(wish.control), wish.value);
  const bool applied = engine::ChangeOutputMode(engine, &view);
  engine::EndAction(sheet.resolver());
  return {.result = applied ? engine::kResultDone : engine::kResultRefused, .applied = applied};
}

}  // namespace

void RunRecord::Take(const engine::ResolveOutcome& result, const engine::Resolver& resolver, TerminalView& view) {
  outcome = result;
  reports = view.TakeReports();
  log.assign(resolver.log.Entries().begin(), resolver.log.Entries().end());
  opposition.assign(resolver.log.Opposing().begin(), resolver.log.Opposing().end());
}

ChangeRecord MakeChange(Sheet& sheet, const Wish& wish, bool device, TerminalView& view) {
  engine::Engine& engine = sheet.engine();
  ChangeRecord change;
  change.wish = wish;
  if (wish.parameter == kWatermarkChoice) {
    uint8_t& current = SlotAs<u"bWatermarkCurrent", uint8_t>(sheet.ui());
    change.old = std::exchange(current, static_cast<uint8_t>(wish.value));
    change.outcome.applied = true;
    return change;
  }
  change.old = *FieldsOf(sheet.ui(), wish.parameter).value;
  change.outcome.applied = true;
  if (wish.control != 0) CheckWish(sheet, wish, device);
  if (change.old == wish.value) return change;
  const ControlIndex control = engine::IndexOf(wish.control);
  if (wish.control == 0) {
    SetAtOnce(sheet, wish);
    return change;
  }
  if (RowOf(wish.control).dialog == kFaxDialog) {
    change.outcome = SwitchOutput(sheet, wish, view);
    change.reports = view.TakeReports();
    return change;
  }
  if (engine::SourceOfMirror(control) != engine::kNoControl) {
    engine::BeginAction(sheet.resolver());  // so that a No takes the tray's media back too
    engine::StoreTrayMedia(engine, control, wish.value);
  }
  view.SetPending(wish.control, wish.value);
  change.Take(engine::ResolveChange(sheet.resolver(), &view, wish.control), sheet.resolver(), view);
  return change;
}

std::vector<ChangeRecord> MakeChanges(Sheet& sheet, const std::vector<std::string>& wishes, bool device,
                                      const Catalogue& catalogue, TerminalView& view) {
  std::vector<ChangeRecord> changes;
  for (const std::string& text : wishes) {
    const Wish wish = ParseWish(text, sheet.engine(), catalogue);
    changes.push_back(MakeChange(sheet, wish, device, view));
    if (!changes.back().outcome.applied) break;
  }
  return changes;
}

std::string WhyNot(const std::vector<ChangeRecord>& changes, const TerminalView& view, int* code) {
  if (changes.empty() || changes.back().outcome.applied) return {};
  const ChangeRecord& last = changes.back();
  const std::string& wish = last.wish.text;
  *code = kConsent;
  if (view.wantedConsent())
    return wish + ": it changes other settings too; agree with --yes, or run on a terminal to be asked";
  if (last.outcome.answer == engine::Answer::kNo) return wish + ": declined; nothing was changed";
  *code = kRefused;
  return wish + ": it can't be made to fit the other settings; nothing was changed";
}

void PrintChange(const ChangeRecord& change, Sheet& sheet) {
  const engine::Engine& engine = sheet.engine();
  const Wish& wish = change.wish;
  if (!change.outcome.applied) return;
  const std::string name =
      wish.control != 0 ? ControlName(engine, wish.control) : wish.text.substr(0, wish.text.find('='));
  const auto text = [&](uint16_t value) {
    return wish.control != 0 ? ValueName(wish.control, value) : std::to_string(value);
  };
  std::cout << name << ": " << text(change.old)
            << (change.old == wish.value ? ", as it was" : " => " + text(wish.value));
  const uint16_t now = *FieldsOf(sheet.ui(), wish.parameter).value;
  std::cout << (now == wish.value ? "" : ", and then " + text(now)) << '\n';
}

Json RunJson(const RunRecord& run) {
  Json log = Json::array();
  for (const engine::LogEntry& entry : run.log) {
    log.push_back({{"control", kControls[entry.control].id},
                   {"value", entry.value},
                   {"reason", static_cast<uint16_t>(entry.reason)}});
  }
  Json opposition = Json::array();
  for (const engine::Opposition& setting : run.opposition) {
    opposition.push_back({{"control", kControls[setting.control].id}, {"value", setting.value}});
  }
  const bool asked = run.outcome.answer != engine::Answer::kNotAsked;
  const ShownReport last = run.reports.empty() ? ShownReport() : run.reports.back();
  return {{"result", run.outcome.result},
          {"applied", run.outcome.applied},
          {"asked", asked},
          {"answer", asked ? Json(run.outcome.answer == engine::Answer::kYes ? "yes" : "no") : Json(nullptr)},
          {"caption", last.caption},
          {"text", last.text},
          {"log", log},
          {"opposition", opposition},
          {"passes", run.outcome.passes}};
}

Json ChangeJson(const ChangeRecord& change) {
  Json json = {{"control", change.wish.control}, {"old", change.old}, {"new", change.wish.value}};
  json.update(RunJson(change));
  return json;
}

}  // namespace heron::cli
