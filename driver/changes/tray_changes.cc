// Paper sources and output trays as a change sees them.
#include <algorithm>
#include <span>

#include "changes/change.h"
#include "engine/item_checks.h"
#include "generated/values.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kInterleave = Control(u"OHPInterLeave_Check");
constexpr ControlIndex kInterleaveTray = Control(u"lpOIPaperTray");
constexpr ControlIndex kSource = Control(u"lpMediaSource");
constexpr ControlIndex kOutputTray = Control(u"lpOutputTray");

constexpr std::array kSources = {Control(u"lpFrontCoverTray"), Control(u"lpBackCoverTray"), kInterleaveTray, kSource};
/// Settings whose pending values decide about the sources, in the order in which they are tried.
constexpr std::array kWithSources = {
    Control(u"lpFrontCoverTray"), Control(u"lpBackCoverTray"),  kInterleaveTray,      kSource, Control(u"Front_Check"),
    Control(u"Back_Check"),       Control(u"InterSheet_Check"), Control(u"lpPRNType")};
constexpr std::array kWithOutputTray = {kOutputTray,
                                        Control(u"Saddle_Check"),
                                        Control(u"FoldStaple_Check"),
                                        Control(u"lpFoldStaple"),
                                        Control(u"Fold_Check"),
                                        Control(u"lpFold"),
                                        Control(u"Staple_Check"),
                                        Control(u"Collate_Check")};

bool IsPaperTray(const Engine& engine, uint16_t tray) {
  return HasItem(engine, kSource, tray) && MediaOfTray(engine, tray).mediaType != value::lpMediaType::kTransparency;
}

void SwitchOffInterleave(const Engine& engine, ChangeLog& log) {
  AddEntry(engine, log, kInterleave, 0, Reason::kPaperOrFinishing);
}

/// Pending values on trial: writes them, and puts back what was when it ends. Availability follows the values.
class Trial {
 public:
  Trial(Engine& engine, EngineView* view, std::span<const ControlIndex> controls, ChangeLog& log)
      : engine_(engine), view_(view), controls_(controls) {
    for (size_t i = 0; i < controls_.size(); ++i) {
      values_.at(i) = engine.Value(controls_[i]);
      if (const LogEntry* entry = FindPending(log, controls_[i])) Write(controls_[i], entry->value);
    }
    if (written_) EvaluateRules(engine, view);
  }
  ~Trial() {
    for (size_t i = 0; i < controls_.size(); ++i) engine_.Set(controls_[i], values_[i]);
    if (written_) EvaluateRules(engine_, view_);
  }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  void Write(ControlIndex control, uint16_t value) {
    engine_.Set(control, value);
    written_ = true;
  }
  /// The value before the trial.
  uint16_t Before(ControlIndex control) const {
    return values_[static_cast<size_t>(std::ranges::find(controls_, control) - controls_.begin())];
  }

 private:
  Engine& engine_;
  EngineView* view_;
  std::span<const ControlIndex> controls_;
  std::array<uint16_t, 8> values_{};
  bool written_ = false;
};

/// The list's value if the rules allow it, else the first allowed item; null if there is none.
const ListItem* AllowedItem(const Engine& engine, ControlIndex list) {
  const ItemCheck check(engine, list);
  const auto items = engine.controls[list].list->Items();
  const auto allowed = [&](const ListItem& item) { return !check.Forbids(item.value); };
  const auto current = std::ranges::find(items, engine.Value(list), &ListItem::value);
  if (current != items.end() && allowed(*current)) return &*current;
  const auto first = std::ranges::find_if(items, allowed);
  return first == items.end() ? nullptr : &*first;
}

/// Makes `value` what the pass wants of the control, which held `before` when the pass began.
void MovePending(const Trial& trial, Engine& engine, ChangeLog& log, ControlIndex control, uint16_t value) {
  const uint16_t before = trial.Before(control);
  if (LogEntry* entry = FindPending(log, control)) {
    entry->value = value;
    if (value != before) return;
    std::shift_left(entry, log.entries.data() + log.count, 1);
    --log.count;
    return;
  }
  const uint16_t trial_value = engine.Value(control);
  engine.Set(control, before);
  AddEntry(engine, log, control, value, Reason::kPaperOrFinishing);
  engine.Set(control, trial_value);
}

}  // namespace

void ResolveInterleave(Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  if (!engine.IsOn(kInterleave)) return;
  if (!engine.Available(kInterleave) || !AnyTrayWithTransparencies(engine)) return SwitchOffInterleave(engine, log);
  if (!engine.Holds(Control(u"trayMediaType.page"), value::lpMediaType::kTransparency)) {
    SwitchOffInterleave(engine, log);
    if (request.First() == kInterleave) AddOpposition(log, kSource, engine.Value(kSource));
    return;
  }
  if (IsPaperTray(engine, engine.Value(kInterleaveTray))) return;
  const ListItem* other = nullptr;
  for (const ListItem& item : engine.controls[kInterleaveTray].list->Items()) {
    if (IsPaperTray(engine, item.value)) other = &item;
  }
  if (other == nullptr) return SwitchOffInterleave(engine, log);
  AddEntry(engine, log, kInterleaveTray, other->value, Reason::kPaperOrFinishing);
}

void ResolveTrays(Engine& engine, ChangeLog& log, EngineView* view) {
  Trial trial(engine, view, kWithSources, log);
  for (const ControlIndex source : kSources) {
    if (log.oppositionCount != 0 && engine.mode != ResolveMode::kRecall) return;
    if (!engine.Available(source)) continue;
    const ListItem* item = AllowedItem(engine, source);
    if (item == nullptr) {
      log.result = kResultNoTray;
      return;
    }
    if (item->value == engine.Value(source)) continue;
    MovePending(trial, engine, log, source, item->value);
    trial.Write(source, item->value);
  }
}

void ResolveOutputTray(Engine& engine, ChangeLog& log, EngineView* view) {
  const Trial trial(engine, view, kWithOutputTray, log);
  const uint16_t value = engine.Value(kOutputTray);
  if (!engine.Available(kOutputTray)) {
    if (value != engine.Default(kOutputTray)) MovePending(trial, engine, log, kOutputTray, engine.Default(kOutputTray));
    return;
  }
  const ListItem* item = AllowedItem(engine, kOutputTray);
  if (item != nullptr && item->value != value) MovePending(trial, engine, log, kOutputTray, item->value);
}

}  // namespace heron::engine
