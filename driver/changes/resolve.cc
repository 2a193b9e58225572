// The three entries: one control, a recalled set, the settings that a sheet opens with.
#include "changes/resolve.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "changes/change_log.h"
#include "changes/resolve_parts.h"
#include "engine/page_list.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "rules/dialogs.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kLayout = Control(u"lpLayout");
constexpr ControlIndex kOrder = Control(u"lpOrder");
constexpr ControlIndex kPerPageList = Control(u"lpInterSheetList");
constexpr uint16_t kQualityButtonMask = 132;

/// Of the bound state; the differences noted around it count again.
void EndInnermost(Resolver& resolver) {
  const bool has_action = resolver.Action() != nullptr;
  resolver.differences = has_action ? resolver.actions.back()->differencesOutside : Differences{};
  if (has_action) resolver.actions.pop_back();
}

/// A run from its start to its end. Unless the outcome is settled, which also an exception prevents, the state goes
/// back to where the action began.
class RuleRun {
 public:
  RuleRun(Resolver& resolver, ResolveMode mode) : resolver_(resolver) {
    if (resolver.Action() == nullptr) resolver.before.Take(resolver.engine);
    resolver.engine.mode = mode;
    resolver.request.count = resolver.request.userCount = 0;
    resolver.request.changed = kNoControl;
    resolver.request.customPaperPicked = false;
    ChangeLog& log = resolver.log;
    log.count = log.oppositionCount = log.mark = 0;
    log.result = kResultDone;
    log.full = false;
    log.perPageConflicts = 0;
    log.paperFits = true;
  }
  ~RuleRun() {
    if (!settled_) PutBack(resolver_);
    resolver_.engine.mode = ResolveMode::kSingle;
    EndInnermost(resolver_);
  }
  RuleRun(const RuleRun&) = delete;
  RuleRun& operator=(const RuleRun&) = delete;
  void Settle() { settled_ = true; }

 private:
  Resolver& resolver_;
  bool settled_ = false;
};

/// Settings of quality and fonts that no rule may change for good.
struct QualitySettings {
  explicit QualitySettings(const UiState& ui)
      : intensity(Setting<u"Intensity">(ui)), font(Setting<u"FontUseFlg">(ui)), dither(Setting<u"lpDither">(ui)) {}
  void PutBack(const UiState& ui) const {
    Setting<u"Intensity">(ui) = intensity;
    Setting<u"FontUseFlg">(ui) = font;
    Setting<u"lpDither">(ui) = dither;
  }
  uint16_t intensity, font, dither;
};

void AppendDefaults(Engine& engine, ChangeRequest& request, uint16_t mask) {
  for (size_t i = 0; i < kControlCount; ++i) {
    const auto control = static_cast<ControlIndex>(i);
    if (kControls[i].type == ControlType::kButton || (kControls[i].pageMask & mask) == 0) continue;
    const uint16_t old = engine.Value(control);
    const uint16_t fresh = engine.Default(control);
    engine.Set(control, fresh);
    if (old != fresh) AppendRow(request, control, old, fresh);
  }
}

/// A layout brings the order of its pages with it.
void NormaliseLayoutOrder(Engine& engine, ChangeRequest& request) {
  const RequestRow* row = FindRow(request, kLayout);
  if (row == nullptr) return;
  const uint16_t old = engine.Value(kOrder);
  const uint16_t order = OrderForLayout(row->newValue, old);
  if (order == old) return;
  engine.Set(kOrder, order);
  if (!AppendRow(request, kOrder, old, order)) FindRow(request, kOrder)->newValue = order;
}

/// What the user changed, from the view and from a dialog before it, with what follows at once.
void BuildRequest(Resolver& resolver, EngineView* view, ControlIndex control) {
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  request.changed = control;
  const ControlRow& row = kControls[control];
  if (row.type == ControlType::kButton) {
    AppendDefaults(engine, request, row.pageMask);
  } else {
    const uint16_t old = engine.Value(control);
    const uint16_t fresh = view == nullptr ? old : view->ReadControl(row.id);
    engine.Set(control, fresh);
    AppendRow(request, control, old, fresh);
  }
  for (uint16_t i = 0; i < resolver.differences.count; ++i) {
    const RequestRow& changed = resolver.differences.rows[i];
    AppendRow(request, changed.control, changed.oldValue, changed.newValue);
  }
  NormaliseLayoutOrder(engine, request);
  if (FindRow(request, kPerPageList) != nullptr) FollowListChoice(engine);
  request.userCount = request.count;
}

/// The entry "custom paper" of a paper list means the paper that was chosen there last.
void TakePickedPaper(Engine& engine, ChangeRequest& request) {
  if (request.count == 0 || request.rows[0].newValue != kCustomEntry) return;
  RequestRow& row = request.rows[0];
  if (row.control != kMediaSize && row.control != kOutputPaper) return;
  const UiState& ui = *engine.ui;
  const int number = row.control == kMediaSize ? Setting<u"lpUDPaperType">(ui) : Setting<u"lpUDMediaType">(ui);
  row.newValue = static_cast<uint16_t>(CustomPaperCode(number));
  engine.Set(row.control, row.newValue);
  request.customPaperPicked = true;
}

/// Ends the trial: values as they were before the action, rows that the rules appended gone.
void EndTrial(Resolver& resolver) {
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  resolver.traysAfter = TakeTraySnapshot(engine);
  RestoreValues(engine);
  if (engine.mode != ResolveMode::kOpening) request.count = request.userCount;
  for (const RequestRow& row : request.Rows()) engine.Set(row.control, row.oldValue);
  CollapseLog(engine, resolver.log);
}

void BeginTrial(Resolver& resolver) {
  SnapshotValues(resolver.engine);
  resolver.traysBefore = TakeTraySnapshot(resolver.engine);
}

bool IsPerPageDialog(uint16_t dialog) {
  return dialog == dialog::kPerPageRow || dialog == dialog::kPerPageListName || dialog == dialog::kPerPageTabs;
}

template <typename Wanted>
void RecordDifferences(Resolver& resolver, uint16_t dialog, Wanted wanted) {
  Differences& differences = resolver.differences;
  differences.count = 0;
  differences.dialog = dialog;
  const KeptAction* const action = resolver.Action();
  if (action == nullptr) return;
  for (size_t i = 0; i < kControlCount; ++i) {
    const auto control = static_cast<ControlIndex>(i);
    const uint16_t old = action->values[i];
    const uint16_t now = resolver.engine.Value(control);
    if (wanted(kControls[i]) && now != old) differences.rows[differences.count++] = {control, old, now};
  }
}

/// After a run without end: what holes can be punched is set right all the same, so that no job comes out spoilt.
void CorrectPunchHoles(Resolver& resolver, EngineView* view) {
  Engine& engine = resolver.engine;
  PutBack(resolver);
  for (const LogEntry& entry : resolver.log.Entries()) {
    if (entry.control == Control(u"lpPunchHoles")) engine.Set(entry.control, entry.value);
  }
  EvaluateRules(engine, view);
  ComputeAllItemStatus(engine);
}

}  // namespace

StateCopy::StateCopy(const UiState& ui)
    : fixed_(ui.fixedSize), variable_(ui.variableSize), list_(std::make_unique<PageList>()) {}

void StateCopy::Take(const Engine& engine) {
  const UiState& ui = *engine.ui;
  std::memcpy(fixed_.data(), ui.fixed.get(), fixed_.size());
  std::memcpy(variable_.data(), ui.variable.get(), variable_.size());
  listNumber_ = WorkingList(ui);
  if (ui.stores.pageLists != nullptr) *list_ = ui.stores.pageLists->lists[listNumber_ - 1];
  if (ui.stores.userPapers != nullptr) papers_ = *ui.stores.userPapers;
  rules_ = engine.rules;
}

void StateCopy::Restore(Engine& engine) const {
  UiState& ui = *engine.ui;
  std::memcpy(ui.fixed.get(), fixed_.data(), fixed_.size());
  std::memcpy(ui.variable.get(), variable_.data(), variable_.size());
  if (ui.stores.pageLists != nullptr) ui.stores.pageLists->lists[listNumber_ - 1] = *list_;
  if (ui.stores.userPapers != nullptr) *ui.stores.userPapers = papers_;
  engine.rules = rules_;
}

KeptAction::KeptAction(const Engine& engine, const Differences& outer)
    : ui(engine.ui), settings(*engine.ui), lists(CreateListStoreSet()), values{}, differencesOutside(outer) {
  const bool complete = lists.pageLists != nullptr && lists.overlays != nullptr && lists.watermarks != nullptr &&
                        lists.fontSubst != nullptr && lists.faxCover != nullptr && lists.userPapers != nullptr;
  if (!complete) throw std::bad_alloc();
  settings.Take(engine);
  CopyListStoreSet(lists, ui->stores);
  for (size_t i = 0; i < kControlCount; ++i) values[i] = engine.Value(static_cast<ControlIndex>(i));
}

void KeptAction::Restore(Engine& engine) const {
  settings.Restore(engine);
  CopyListStoreSet(engine.ui->stores, lists);
}

Resolver::Resolver(Engine& bound) : engine(bound), before(*bound.ui) {}

const KeptAction* Resolver::Action() const {
  return actions.empty() || actions.back()->ui != engine.ui ? nullptr : actions.back().get();
}

Action::Action(Resolver& resolver) : resolver_(resolver), outside_(resolver.actions.size()) {
  resolver.actions.push_back(std::make_unique<KeptAction>(resolver.engine, resolver.differences));
  resolver.differences = {};
  SnapshotValues(resolver.engine);
}

Action::~Action() {
  if (resolver_.actions.size() <= outside_) return;
  resolver_.differences = resolver_.actions[outside_]->differencesOutside;
  resolver_.actions.resize(outside_);
}

void RecordDialogDifferences(Resolver& resolver, uint16_t dialog) {
  RecordDifferences(resolver, dialog, [dialog](const ControlRow& row) { return row.dialog == dialog; });
}

void RecordRecallDifferences(Resolver& resolver) {
  RecordDifferences(resolver, 0, [](const ControlRow& row) {
    return row.type != ControlType::kButton && !IsPerPageDialog(row.dialog);
  });
}

ResolveOutcome ResolveChange(Resolver& resolver, EngineView* view, uint16_t control) {
  const ControlIndex changed = IndexOf(control);
  if (changed == kNoControl) {
    EndInnermost(resolver);
    return {};
  }
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  const QualitySettings quality(*engine.ui);
  RuleRun run(resolver, ResolveMode::kSingle);
  const int conflicts = ValidatePerPageList(engine, Conflicts::kAll);
  BuildRequest(resolver, view, changed);
  TakePickedPaper(engine, request);
  BeginTrial(resolver);
  ResolveLoop(resolver, view, kResultOverrun);
  FollowListChoice(engine);
  const int conflicts_now = ValidatePerPageList(engine, Conflicts::kAll);
  resolver.log.perPageConflicts =
      static_cast<int16_t>(changed == kPerPageList ? conflicts_now : conflicts_now - conflicts);
  EndTrial(resolver);
  const bool is_button = kControls[changed].type == ControlType::kButton;
  OrderLog(engine, changed, is_button || request.count == 0 ? uint16_t{0} : request.rows[0].newValue, resolver.log);
  const ResolveOutcome outcome = PresentChange(resolver, view, changed);
  if (outcome.applied && kControls[changed].pageMask != kQualityButtonMask && !IsSilent(changed))
    quality.PutBack(*engine.ui);
  run.Settle();
  return outcome;
}

ResolveOutcome ResolveRecall(Resolver& resolver, EngineView* view) {
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  const QualitySettings quality(*engine.ui);
  RuleRun run(resolver, ResolveMode::kRecall);
  std::ranges::copy_n(resolver.differences.rows.begin(), resolver.differences.count, request.rows.begin());
  request.count = request.userCount = resolver.differences.count;
  BeginTrial(resolver);
  ResolveLoop(resolver, view, kResultOverrunAll);
  resolver.log.paperFits = CustomPaperFits(*engine.ui);
  resolver.log.perPageConflicts = static_cast<int16_t>(ValidatePerPageList(engine, Conflicts::kNew));
  EndTrial(resolver);
  SortLog(resolver.log);
  const ResolveOutcome outcome = PresentRecall(resolver, view);
  if (outcome.applied) quality.PutBack(*engine.ui);
  run.Settle();
  return outcome;
}

ResolveOutcome ResolveOpen(Resolver& resolver, EngineView* view) {
  Engine& engine = resolver.engine;
  ChangeRequest& request = resolver.request;
  RuleRun run(resolver, ResolveMode::kOpening);
  for (size_t i = 0; i < kControlCount; ++i) {
    if ((kControls[i].pageMask & kButtonMask) != 0 || IsPerPageDialog(kControls[i].dialog)) continue;
    const auto control = static_cast<ControlIndex>(i);
    request.rows[request.count++] = {control, engine.Value(control), engine.Value(control)};
  }
  BeginTrial(resolver);
  ResolveLoop(resolver, view, kResultOverrunAll);
  resolver.log.perPageConflicts = static_cast<int16_t>(ValidatePerPageList(engine, Conflicts::kNew));
  EndTrial(resolver);
  SortLog(resolver.log);
  resolver.deferred = ReportOpening(resolver);
  const bool overrun = resolver.log.result == kResultOverrunAll;
  if (overrun)
    CorrectPunchHoles(resolver, view);
  else
    ApplySequence(resolver, view);
  run.Settle();
  return {.result = resolver.log.result, .passes = resolver.passes, .applied = !overrun};
}

void ShowDeferredReport(Resolver& resolver, EngineView* view) {
  const DeferredReport report = std::exchange(resolver.deferred, {});
  if (view != nullptr && !report.text.empty()) view->Show({report.caption, report.text, false});
}

}  // namespace heron::engine
