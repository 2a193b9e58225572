// Settings on their way into the library and out of it: what is saved, and what a recall brings back.
#pragma once

#include <cstdint>

#include "changes/resolve.h"
#include "presets/preset_library.h"

namespace heron {

/// What a recall copies besides the ordinary settings: the bits of its mask.
enum RecallPart : uint8_t {
  kRecallSize = 1,  ///< document size, orientation, copies
  kRecallUserPapers = 2,
  kRecallWatermarks = 4,
  kRecallPerPage = 8,
  kRecallPaperTypes = 16,  ///< the media in the trays
  kRecallFaxCover = 32,
  kRecallForms = 64,
};
inline constexpr uint8_t kAllRecallParts = 127;
/// Whether the printer has user papers to choose. Where it hasn't, no recall brings any.
bool OffersUserPapers(const UiState& ui);
/// The parts that the settings' recall flags name: what a recall brings if the user doesn't say otherwise.
uint8_t RecallPartsOf(const UiState& ui);
/// The parts in which the entry's settings differ from `ui`; none without an entry with settings.
uint8_t DifferingParts(const SettingsLibrary& library, int place, const UiState& ui);

/// Copies the entry's ordinary settings and the `parts` into the working settings `ui` and brings what hangs on them in
/// line; the rules are the caller's to run. False, with nothing changed, if there is no entry with settings.
bool LibraryRecall(const SettingsLibrary& library, int place, UiState& ui, uint8_t parts);

/// The whole recall into the resolver's state: the copy, then the rules with their report. Lists come back too if the
/// rules withdraw it. False, with nothing changed, if there is no entry with settings.
bool RecallSettings(engine::Resolver& resolver, engine::EngineView* view, const SettingsLibrary& library, int place,
                    uint8_t parts, engine::ResolveOutcome* outcome);

/// A copy of `ui` made fit for saving: what is meant for one job goes, of which the user is informed. Null if memory
/// runs out. The texts are in use.
UiStatePtr PrepareForSaving(const UiState& ui, const ResourceContext* resources, engine::EngineView& view);

}  // namespace heron
