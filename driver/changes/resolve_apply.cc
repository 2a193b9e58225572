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
void ClampCopies(Engine& engine, EngineView* view) {
  const NumericBlock& range = RangeOf<u"Copies">(*engine.ui);
  uint16_t copies = std::clamp<uint16_t>(engine.Value(kCopies), 1, std::max<uint16_t>(range.max, 1));
  const bool corrected = copies != engine.Value(kCopies);
  if (engine.Holds(Control(u"lpOutput.Fax"), value::lpOutput::kFax)) copies = 1;
  const bool changed = copies != engine.Value(kCopies);
  engine.Set(kCopies, copies);
  if (view == nullptr) return;
  if (changed) view->RedisplayControl(kControls[kCopies].id, copies);
  if (corrected) view->FocusControl(kControls[kCopies].id);
}

void Redisplay(const Engine& engine, EngineView& view, ControlIndex control) {
  view.RedisplayControl(kControls[control].id, engine.Value(control));
}

void RedisplayChanged(const Resolver& resolver, EngineView& view) {
  const Engine& engine = resolver.engine;
  const uint16_t shown = engine.ui->head().activeDialogId;
  view.RefreshPerPageList();
  for (size_t i = 0; i < kControlCount; ++i) {
    if (kControls[i].type == ControlType::kRadio && kControls[i].dialog == shown)
      Redisplay(engine, view, static_cast<ControlIndex>(i));
  }
  for (const RequestRow& row : resolver.request.Rows()) Redisplay(engine, view, row.control);
  for (const LogEntry& entry : resolver.log.Entries()) Redisplay(engine, view, entry.control);
  if (shown == dialog::kPaperPage) Redisplay(engine, view, kZoom);
}

/// Fills the lists on show again. The paper lists that the user has just used keep their selection, unless a custom
/// paper took the place of what he selected.
void RefreshLists(const Resolver& resolver, EngineView& view, bool is_button) {
  const ChangeRequest& request = resolver.request;
  const auto stays = [&](ControlIndex control) {
    return !is_button && !request.customPaperPicked && (control == kMediaSize || control == kOutputPaper) &&
           FindRow(request, control) != nullptr;
  };
  for (size_t i = 0; i < kControlCount; ++i) {
    const ControlRow& row = kControls[i];
    if (row.type != ControlType::kList || row.dialog != resolver.engine.ui->head().activeDialogId) continue;
    if (!stays(static_cast<ControlIndex>(i))) view.RefreshList(row.id);
  }
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

void ApplySequence(Resolver& resolver, EngineView* view, bool is_button) {
  Engine& engine = resolver.engine;
  ApplyChanges(resolver);
  // Opening settings corrects them only; what a record says of a custom paper's size is then no conflict.
  if (engine.mode != ResolveMode::kOpening) ReloadCustomPapers(*engine.ui);
  ClampCopies(engine, view);
  EvaluateRules(engine, view);
  ComputeAllItemStatus(engine);
  if (view == nullptr) return;
  ApplyAvailability(engine, view);
  RedisplayChanged(resolver, *view);
  RefreshLists(resolver, *view, is_button);
  view->RepaintPictures();
}

void Withdraw(Resolver& resolver, EngineView* view) {
  resolver.before.Restore(resolver.engine);
  if (view == nullptr) return;
  ApplyAvailability(resolver.engine, view);
  RedisplayChanged(resolver, *view);
  RefreshLists(resolver, *view, true);
  view->RepaintPictures();
}

}  // namespace heron::engine
