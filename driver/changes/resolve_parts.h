// Between the files of resolving (the loop, the presenting, the applying) and of going to fax. Internal to them.
#pragma once

#include "changes/resolve.h"

namespace heron::engine {

/// A change whose log the user never hears of outside single changes.
bool IsSilent(ControlIndex control);

/// Sets a request row, and all others of its setting, to a value that the rules have given it.
void RecordInRequest(ChangeRequest& request, ControlIndex control, uint16_t value);

/// Runs passes until nothing is added. Values and availability are left as the last pass made them. `overrun` becomes
/// the result if the passes or the log's room don't suffice.
void ResolveLoop(Resolver& resolver, EngineView* view, uint16_t overrun);

/// Informs the user, asks where a question is due, and applies or withdraws the change.
ResolveOutcome PresentChange(Resolver& resolver, EngineView* view, ControlIndex control);
ResolveOutcome PresentRecall(Resolver& resolver, EngineView* view);
/// Composes the report of an opening run.
DeferredReport ReportOpening(const Resolver& resolver);

/// Notes which chosen papers are long ones. A long output paper needs media that come that long.
void SetCustomPaperMarks(Engine& engine);

/// Writes the values of request and log for good, with the zoom and the settings that follow from them.
void ApplyChanges(Resolver& resolver);
/// Does so, then computes what is available and which items are allowed. What it has made dirty.
Dirty ApplySequence(Resolver& resolver, EngineView* view);
/// Puts the state back to where the action began, or the run if there is no action. What the trial may have shown.
Dirty Withdraw(Resolver& resolver);
/// Only puts the state back.
void PutBack(Resolver& resolver);

}  // namespace heron::engine
