// For good: writing what a run has found, or taking back what it tried.
#include <algorithm>

#include "catalog/other_values.h"
#include "changes/change_log.h"
#include "changes/resolve_parts.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "rules/dialogs.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kCopies = Control(u"Copies");
constexpr ControlIndex kZoom = Control(u"Zoom");

namespace unit_of = value::lpUDPaperUnit;

void WriteValue(Engine& engine, ControlIndex control, uint16_t value, bool with_zoom) {
  engine.Set(control, value);
  if (!with_zoom) return;
  DeriveBindMargin(*engine.ui);
  UpdateAutoZoom(*engine.ui, kControls[control].id);
}

bool IsMarked(const UiState& ui, uint16_t paper) {
  const int number = CustomPaperNumber(paper);
  return number != 0 && ui.stores.userPapers != nullptr &&
         (*ui.stores.userPapers)[static_cast<size_t>(number - 1)].longFlag == 1;
}

/// A number of copies that can't be is corrected in its field; a fax has one.
void ClampCopies(Engine& engine, Dirty& dirty) {
  const NumericBlock& range = RangeOf<u"Copies">(*engine.ui);
  uint16_t copies = std::clamp<uint16_t>(engine.Value(kCopies), 1, std::max<uint16_t>(range.max, 1));
  if (copies != engine.Value(kCopies)) dirty.corrected = kCopies;
  if (engine.Holds(Control(u"lpOutput.Fax"), value::lpOutput::kFax)) copies = 1;
  if (copies != engine.Value(kCopies)) dirty.controls.set(kCopies);
  engine.Set(kCopies, copies);
}

/// What the request and the log name, and what always follows on the dialog on show.
void MarkDirty(const Resolver& resolver, Dirty& dirty) {
  const uint16_t shown = resolver.engine.ui->head().activeDialogId;
  dirty.settings = true;
  for (size_t i = 0; i < kControlCount; ++i) {
    if (kControls[i].dialog != shown) continue;
    if (kControls[i].type == ControlType::kRadio) dirty.controls.set(i);
    if (kControls[i].type == ControlType::kList) dirty.lists.set(i);
  }
  for (const RequestRow& row : resolver.request.Rows()) dirty.controls.set(row.control);
  for (const LogEntry& entry : resolver.log.Entries()) dirty.controls.set(entry.control);
  if (shown == dialog::kPaperPage) dirty.controls.set(kZoom);
}

/// The settings that describe a paper of the user's own.
struct CustomPaperSettings {
  uint16_t &width, &length, &unit;
};

/// A custom paper in use has the size and unit of its entry, also where an application gave its job others.
void TakeCustomPaper(const UiState& ui, uint16_t paper, const CustomPaperSettings& settings) {
  const int number = CustomPaperNumber(paper);
  if (number == 0 || ui.stores.userPapers == nullptr) return;
  const CustomPaperEntry& entry = (*ui.stores.userPapers)[static_cast<size_t>(number - 1)];
  settings.width = static_cast<uint16_t>(ThouToTenthMm(unit_of::kMillimetre, entry.width));
  settings.length = static_cast<uint16_t>(ThouToTenthMm(unit_of::kMillimetre, entry.height));
  settings.unit = entry.unit == unit_of::kInch ? unit_of::kInch : unit_of::kMillimetre;
}

void ReloadCustomPapers(const UiState& ui) {
  TakeCustomPaper(ui, Setting<u"lpMediaSize">(ui),
                  {Setting<u"UDPaperWidth">(ui), Setting<u"UDPaperLength">(ui), Setting<u"lpUDPaperUnit">(ui)});
  TakeCustomPaper(ui, Setting<u"lpOutputPaper">(ui),
                  {Setting<u"UDMediaWidth">(ui), Setting<u"UDMediaLength">(ui), Setting<u"lpUDMediaUnit">(ui)});
}

}  // namespace

void SetCustomPaperMarks(Engine& engine) {
  const UiState& ui = *engine.ui;
  const bool output_marked = IsMarked(ui, PrintedPaper(ui));
  engine.Set(Control(u"mediaSizeMark"), IsMarked(ui, engine.Value(kMediaSize)));
  engine.Set(Control(u"outputPaperMark"), output_marked);
  TrayMedia* bypass = FindTrayMedia(ui, value::lpMediaSource::kBypass);
  if (output_marked && bypass != nullptr && std::ranges::count(value::lpMediaType::kLong, bypass->mediaType) == 0)
    bypass->mediaType = value::lpMediaType::kLong[0];
}

void ApplyChanges(Resolver& resolver) {
  Engine& engine = resolver.engine;
  const UiState& ui = *engine.ui;
  const bool with_zoom = engine.mode != ResolveMode::kRecall;
  for (const RequestRow& row : resolver.request.Rows()) WriteValue(engine, row.control, row.newValue, with_zoom);
  for (const LogEntry& entry : resolver.log.Entries()) WriteValue(engine, entry.control, entry.value, true);
  DeriveLayout(ui);
  DeriveBindMargin(ui);
  SetCustomPaperMarks(engine);
  LoadAllTrayMirrors(*engine.ui);
}

Dirty ApplySequence(Resolver& resolver, EngineView* view) {
  Engine& engine = resolver.engine;
  Dirty dirty;
  ApplyChanges(resolver);
  // Opening settings corrects them only; what a record says of a custom paper's size is then no conflict.
  if (engine.mode != ResolveMode::kOpening) ReloadCustomPapers(*engine.ui);
  ClampCopies(engine, dirty);
  EvaluateRules(engine, view);
  ComputeAllItemStatus(engine);
  dirty.itemsAreComputed = true;
  MarkDirty(resolver, dirty);
  return dirty;
}

void PutBack(Resolver& resolver) {
  if (const KeptAction* action = resolver.Action())
    action->Restore(resolver.engine);
  else
    resolver.before.Restore(resolver.engine);
}

Dirty Withdraw(Resolver& resolver) {
  PutBack(resolver);
  Dirty dirty;
  MarkDirty(resolver, dirty);
  return dirty;
}

}  // namespace heron::engine
