#include "engine/opening.h"

#include "engine/page_list.h"
#include "engine/setting.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

constexpr uint16_t kSavedZoomCheck = 232;  ///< parameter

/// The public settings hold one paper; what the user chose for the output is kept beside it.
void RestoreOutputPaper(const UiState& ui) {
  Setting<u"lpOutputPaper">(ui) = SlotAs<u"QXOutputPaperSize", uint16_t>(ui);
  Setting<u"ZoomCheck">(ui) = *SlotOf(ui, ParamIndexOf(kSavedZoomCheck));
}

}  // namespace

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
  LoadTrayMirrors(engine);
  LoadWorkingList(ui, WorkingList(ui));
  BindControls(engine, ui);
  EvaluateRules(engine, view);
  ComputeAllItemStatus(engine);
  return pass == OpeningPass::kRun ? ResolveOpen(resolver, view) : ResolveOutcome{};
}

}  // namespace heron::engine
