#include "changes/opening.h"

#include "catalog/other_values.h"
#include "engine/page_list.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "settings/papers.h"
#include "uistate/unnamed_params.h"

namespace heron::engine {
namespace {

/// The public settings hold one paper; what the user chose for the output is kept beside it.
void RestoreOutputPaper(const UiState& ui) {
  Setting<u"lpOutputPaper">(ui) = SlotAs<u"QXOutputPaperSize", uint16_t>(ui);
  Setting<u"ZoomCheck">(ui) = *SlotOf(ui, ParamIndexOf(param::kSavedZoomCheck));
}

/// A record has a value of its own for a form that is asked for; on the pages that is two settings.
void SplitAskingForm(const UiState& ui) {
  uint16_t& overlay = Setting<u"lpOverlay">(ui);
  if (overlay != value::lpOverlay::kPrintWithFormAsking) return;
  overlay = value::lpOverlay::kPrintWithForm;
  Setting<u"OverlayPrompt">(ui) = value::OverlayPrompt::kOn;
}

/// Switches whose page shows no control for them, as it keeps them on. A page that comes with one adds it here.
constexpr uint16_t kAlwaysOn[] = {ParamNamed<u"Layout_Check2">(), ParamNamed<u"POD_Check">()};

}  // namespace

void KeepSwitchesOn(const UiState& ui) {
  for (const uint16_t index : kAlwaysOn) *FieldsOf(ui, index).value = 1;
}

std::unique_ptr<OpenedSettings> OpenRecord(const ResourceContext* resources, const DriverEnv& env,
                                           platform::HANDLE printer) {
  const StringsInUse strings;
  UiStatePtr ui = CreateUiState(resources, env, printer);
  return ui == nullptr ? nullptr : std::make_unique<OpenedSettings>(std::move(ui));
}

void LoadPaperTable(const UiState& ui) {
  LoadPaperLabels();
  if (ui.stores.userPapers == nullptr) return;
  RefreshUserPaperRows(*ui.stores.userPapers);
  BuildUserPaperSizeTexts(*ui.stores.userPapers);
}

ResolveOutcome OpenSettings(Resolver& resolver, EngineView* view, OpeningPass pass) {
  Engine& engine = resolver.engine;
  UiState& ui = *engine.ui;
  LoadPaperTable(ui);
  RestoreOutputPaper(ui);
  SplitAskingForm(ui);
  LoadAllTrayMirrors(ui);
  LoadWorkingList(ui, WorkingList(ui));
  ShowPageListNames(ui);
  BindControls(engine, ui);
  if (pass == OpeningPass::kRun) KeepSwitchesOn(ui);
  EvaluateRules(engine, view);
  ComputeAllItemStatus(engine);
  return pass == OpeningPass::kRun ? ResolveOpen(resolver, view) : ResolveOutcome{};
}

}  // namespace heron::engine
