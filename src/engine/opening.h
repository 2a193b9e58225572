// The steps that every sheet and command goes through before it works on a state.
#pragma once

#include "engine/resolve.h"

namespace heron::engine {

enum class OpeningPass : uint8_t { kRun, kSkip };

/// Brings a fresh state to where a page expects it: output paper and zoom as the record keeps them apart, user papers
/// in the paper table, the media of the three trays, the working per-page list, rules and item statuses; then the
/// opening pass, if asked for, whose report waits for ShowDeferredReport. The texts are in use.
ResolveOutcome OpenSettings(Resolver& resolver, EngineView* view, OpeningPass pass);

}  // namespace heron::engine
