// Making the working values the committed ones, with the last checks of a fax job.
#pragma once

#include "engine/engine.h"

namespace heron::engine {

/// Commits every setting. A fax job without recipients goes to the printer, with whatever that moves; a cover sheet's
/// picture that can't be opened is left out; the user is informed of both. The texts are in use.
void CommitSettings(Engine& engine, EngineView* view);

}  // namespace heron::engine
