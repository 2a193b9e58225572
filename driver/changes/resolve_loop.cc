// The loop: passes over the rules until they have nothing left to say.
#include <array>

#include "changes/change_log.h"
#include "changes/resolve_parts.h"
#include "engine/sizes.h"
#include "generated/values.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSource = Control(u"lpMediaSource");
constexpr ControlIndex kFrontTray = Control(u"lpFrontCoverTray");
constexpr ControlIndex kBackTray = Control(u"lpBackCoverTray");
constexpr ControlIndex kPod = Control(u"POD_Check");
constexpr ControlIndex kOnePerSheet = Control(u"POD_OnePerSheet_Check");
constexpr ControlIndex kPrintType = Control(u"lpPRNType");

/// The rows of the enable rules by the control that they hang on, in the order of the table.
struct RuleChildren {
  std::array<uint16_t, kControlCount + 1> first{};
  std::array<uint16_t, kEnableRuleCount> rows{};

  RuleChildren() {
    uint16_t used = 0;
    for (size_t control = 0; control < kControlCount; ++control) {
      first[control] = used;
      for (uint16_t row = 0; row < kEnableRuleCount; ++row) {
        if (kEnableRules[row].parent == kControls[control].id) rows[used++] = row;
      }
    }
    first[kControlCount] = used;
  }
  std::span<const uint16_t> Of(ControlIndex control) const {
    return std::span(rows).subspan(first[control], size_t{first[control + 1u]} - first[control]);
  }
};

/// Check boxes whose device option is gone go back to their defaults.
void CheckDeviceResets(const Engine& engine, ChangeLog& log) {
  for (const DeviceGate& gate : kDeviceGates) {
    const ControlIndex control = gate.control == 0 ? kNoControl : IndexOf(gate.control);
    if (control == kNoControl || kControls[control].type != ControlType::kCheck) continue;
    if (!IsDeviceGateOpen(engine, gate.control))
      AddEntry(engine, log, control, engine.Default(control), Reason::kDeviceGone);
  }
}

/// A margin for which the reduced page has no room only moves the page.
void CheckBindingMargin(const Engine& engine, ChangeLog& log) {
  if ((BindingMarginRanges(*engine.ui).bits & MarginRanges::kImpossible) != 0)
    AddEntry(engine, log, Control(u"lpMarginMode.Shift"), value::lpMarginMode::kShift, Reason::kPair);
}

/// Layout of the page and layout of the product exclude each other; the one that was just turned on stays.
void SwitchLayouts(Engine& engine, const ChangeRequest& request, EngineView* view) {
  constexpr ControlIndex kLayout = Control(u"Layout_Check2");
  constexpr uint16_t kOn = value::POD_Check::kOn;
  for (const RequestRow& row : request.Rows()) {
    if (row.newValue != kOn || row.oldValue == kOn || (row.control != kPod && row.control != kLayout)) continue;
    engine.Set(row.control == kPod ? kLayout : kPod, 0);
    return EvaluateRules(engine, view);
  }
}

/// One pass's entries. Values don't change on the way but for SwitchLayouts, so that one evaluation serves all.
void FindEntries(Resolver& resolver, EngineView* view) {
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  ChangeLog& log = resolver.log;
  EvaluateRules(engine, view);
  if (engine.mode == ResolveMode::kRecall) {
    CheckDeviceResets(engine, log);
    if (log.count > log.mark) return;
  }
  const bool chapter = VerifyChapter(engine, log);
  const bool double_only = CheckDoubleOnlyPaper(engine, log);
  AddPaperToRequest(engine, request);
  CheckBindingMargin(engine, log);
  if (chapter || double_only) return;
  ApplyPairRules(engine, request, log);
  ApplyTripleRules(engine, request, log);
  ApplyPaperRules(engine, request, log);
  SwitchLayouts(engine, request, view);
  ResolveStaple(engine, request, log);
  ResolvePunch(engine, request, log);
  ResolveFoldStaple(engine, request, log);
  ResolveFold(engine, request, log);
  ResolveInterleave(engine, request, log);
  ResolveTrays(engine, log, view);
  ResolveOutputTray(engine, log, view);
}

void AppendCurrent(const Engine& engine, ChangeRequest& request, ControlIndex control) {
  AppendRow(request, control, engine.Value(control), engine.Value(control));
}

/// Brings every available control that hangs on a changed one into the request, so that its rules run too. The request
/// grows while it is walked.
void AppendDependents(const Engine& engine, ChangeRequest& request) {
  static const RuleChildren children;
  for (uint16_t i = 0; i < request.count; ++i) {
    for (const uint16_t row : children.Of(request.rows[i].control)) {
      const ControlIndex control = kEnableRules[row].control == 0 ? kNoControl : IndexOf(kEnableRules[row].control);
      if (control != kNoControl && engine.rules.enabled[row] != 0) AppendCurrent(engine, request, control);
    }
  }
}

/// The sheet may be another one now, and the papers are to be looked at again.
void AppendPapers(Resolver& resolver) {
  const Engine& engine = resolver.engine;
  const bool doubles =
      (engine.IsOn(kPod) && engine.IsOn(kOnePerSheet)) || engine.Holds(kPrintType, value::lpPRNType::kBooklet);
  if (!doubles && FindPending(resolver.log, kOnePerSheet) == nullptr &&
      FindPending(resolver.log, kPrintType) == nullptr)
    return;
  AppendCurrent(engine, resolver.request, Control(u"lpMediaSize"));
  AppendCurrent(engine, resolver.request, Control(u"lpOutputPaper"));
}

/// A tray that may have changed shows other media.
void ReloadMirrors(Engine& engine, ChangeRequest& request, bool append) {
  for (const ControlIndex source : {kMediaSource, kFrontTray, kBackTray}) {
    if (FindRow(request, source) == nullptr) continue;
    LoadTrayMedia(engine, source);
    for (const ControlIndex mirror : TrayMirrors(source)) {
      if (RequestRow* row = FindRow(request, mirror); row != nullptr)
        row->newValue = engine.Value(mirror);
      else if (append)
        AppendCurrent(engine, request, mirror);
    }
  }
}

/// Writes the pass's entries to the settings and to the request.
void ApplyPass(Resolver& resolver, EngineView* view) {
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  const bool append = engine.mode != ResolveMode::kOpening;  // an opening run's request holds all controls already
  for (const LogEntry& entry : resolver.log.Pending()) {
    const uint16_t old = engine.Value(entry.control);
    engine.Set(entry.control, entry.value);
    RecordInRequest(request, entry.control, entry.value);
    if (append) AppendRow(request, entry.control, old, entry.value);
  }
  if (append) {
    EvaluateRules(engine, view);
    AppendDependents(engine, request);
    AppendPapers(resolver);
  }
  ReloadMirrors(engine, request, append);
}

bool IsSettled(const Resolver& resolver) {
  constexpr uint16_t kLeastPasses = 2;
  if (resolver.passes < kLeastPasses) return false;
  const ChangeLog& log = resolver.log;
  const bool opposed = log.oppositionCount != 0 && resolver.engine.mode != ResolveMode::kRecall;
  return log.count == log.mark || log.result != kResultDone || opposed;
}

}  // namespace

void RecordInRequest(ChangeRequest& request, ControlIndex control, uint16_t value) {
  for (RequestRow& row : request.Rows()) {
    if (SameSetting(row.control, control)) row.newValue = value;
  }
}

void ResolveLoop(Resolver& resolver, EngineView* view, uint16_t overrun) {
  ChangeLog& log = resolver.log;
  resolver.passes = 0;
  while (!IsSettled(resolver)) {
    log.mark = log.count;
    FindEntries(resolver, view);
    KeepPriorityEntries(log);
    ApplyPass(resolver, view);
    ++resolver.passes;
    if (!log.full && resolver.passes < kPassLimit) continue;
    log.result = overrun;
    return;
  }
}

}  // namespace heron::engine
