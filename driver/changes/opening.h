// The settings of a record in hand, and the steps that every sheet and command goes through before it works on them.
#pragma once

#include <memory>

#include "catalog/strings.h"
#include "changes/resolve.h"

namespace heron::engine {

/// The working settings of a record with all that edits them; the texts are in use as long as they live.
struct OpenedSettings {
  explicit OpenedSettings(UiStatePtr state) : ui(std::move(state)), engine(*ui), resolver(engine) {}
  ~OpenedSettings() { DestroyUiState(ui); }
  OpenedSettings(const OpenedSettings&) = delete;
  OpenedSettings& operator=(const OpenedSettings&) = delete;

  StringsInUse strings;
  UiStatePtr ui;
  Engine engine;
  Resolver resolver;
};

/// Of `env`, which stays as it is; not yet through the opening steps. Null where CreateUiState gives none.
std::unique_ptr<OpenedSettings> OpenRecord(const ResourceContext* resources, const DriverEnv& env,
                                           platform::HANDLE printer);

/// Brings the process's paper table in step with the state's user papers.
void LoadPaperTable(const UiState& ui);

/// Turns on what the pages use without showing a switch for it, `Layout_Check2` and `POD_Check`: rules that hang on it
/// would otherwise let conflicts pass that show as soon as a page uses it. To be called before rules run on settings
/// that came from elsewhere: a record, a library entry.
void KeepSwitchesOn(const UiState& ui);

enum class OpeningPass : uint8_t { kRun, kSkip };

/// Brings a fresh state to where a page expects it: output paper and zoom as the record keeps them apart, user papers
/// in the paper table, the media of the three trays, the working per-page list, rules and item statuses; then, if asked
/// for, the opening pass with KeepSwitchesOn before it, whose report waits for ShowDeferredReport. The texts are in
/// use.
ResolveOutcome OpenSettings(Resolver& resolver, EngineView* view, OpeningPass pass);

}  // namespace heron::engine
