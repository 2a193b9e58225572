// To fax and back: what a fax excludes, what changes with it, and the reports to the user.
//
// The choice between fax and printer isn't tried as other changes are: the caller stores the new `lpOutput` and
// calls ChangeOutputMode. The texts are in use.
#pragma once

#include <string>

#include "engine/engine.h"

namespace heron::engine {

/// Whether the notices about a fax have yet to say which functions it excludes.
enum class FaxNotice : uint8_t { kFirst, kAgain };

/// Brings the output paper to one that a fax can have and reports what else a fax will change, but not where
/// printer data may be changed (UiHead::printerDataLocked). False if no paper can be had: the user is informed what is
/// in the way, and the caller withdraws the choice.
bool EnterFaxMode(Engine& engine, EngineView* view, FaxNotice notice);

/// Returns every control that a fax excludes to its default, as far as the gates ask for it.
void ResetForFax(Engine& engine);

/// Moves what a fax left on a forbidden item and reports it.
void LeaveFaxMode(Engine& engine, EngineView* view);

/// Evaluates, and appends the names of the functions that can't be used now because of the output, two in a line.
/// Returns how many.
int ListFaxIgnored(Engine& engine, EngineView* view, std::u16string& text);

/// Everything that follows from a new `lpOutput`, whose setting holds it already. False if the fax was refused: then
/// the values of the last SnapshotValues are back, and the output is the printer.
bool ChangeOutputMode(Engine& engine, EngineView* view);

}  // namespace heron::engine
