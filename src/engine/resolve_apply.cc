// For good: writing what a run has found, or taking back what it tried.
#include <algorithm>

#include "engine/change_log.h"
#include "engine/resolve_parts.h"
#include "engine/setting.h"
#include "engine/sizes.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kCopies = Control(u"Copies");
constexpr ControlIndex kZoom = Control(u"Zoom");
constexpr uint16_t kFax = 1;

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
  const NumericBlock& range = SlotAs<u"Copies", NumericBlock>(*engine.ui);
  uint16_t copies = std::clamp<uint16_t>(engine.Value(kCopies), 1, std::max<uint16_t>(range.max, 1));
  const bool corrected = copies != engine.Value(kCopies);
  if (engine.Holds(Control(u"lpOutput.902"), kFax)) copies = 1;
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
  if (shown == kPaperPage) Redisplay(engine, view, kZoom);
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

}  // namespace

void SetCustomPaperMarks(Engine& engine) {
  constexpr uint16_t kBypass = 4;
  constexpr uint8_t kLongMedia[] = {30, 31, 32, 45, 46, 47};
  const UiState& ui = *engine.ui;
  const bool output_marked = IsMarked(ui, PrintedPaper(ui));
  engine.Set(Control(u"mediaSizeMark"), IsMarked(ui, engine.Value(kMediaSize)));
  engine.Set(Control(u"outputPaperMark"), output_marked);
  TrayMedia* bypass = FindTrayMedia(ui, kBypass);
  if (output_marked && bypass != nullptr && std::ranges::count(kLongMedia, bypass->mediaType) == 0)
    bypass->mediaType = kLongMedia[0];
}

void LoadAllMirrors(Engine& engine) {
  for (const ControlIndex source :
       {Control(u"lpMediaSource"), Control(u"lpFrontCoverTray"), Control(u"lpBackCoverTray")})
    LoadTrayMedia(engine, source);
}

void ApplyChanges(Resolver& resolver) {
  Engine& engine = resolver.engine;
  const bool with_zoom = engine.mode != ResolveMode::kRecall;
  for (const RequestRow& row : resolver.request.Rows()) WriteValue(engine, row.control, row.newValue, with_zoom);
  for (const LogEntry& entry : resolver.log.Entries()) WriteValue(engine, entry.control, entry.value, true);
  DeriveLayout(*engine.ui);
  DeriveBindMargin(*engine.ui);
  SetCustomPaperMarks(engine);
  LoadTrayMirrors(engine);
}

void ApplySequence(Resolver& resolver, EngineView* view, bool is_button) {
  Engine& engine = resolver.engine;
  ApplyChanges(resolver);
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
