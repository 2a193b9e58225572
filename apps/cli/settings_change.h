// The changes of a command, one after the other, each with its consequences.
#pragma once

#include <string>
#include <vector>

#include "changes/resolve.h"
#include "common/command.h"
#include "setting_names.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {

/// What one run of the rules came to.
struct RunRecord {
  engine::ResolveOutcome outcome;
  std::vector<ShownReport> reports;
  std::vector<engine::LogEntry> log;
  std::vector<engine::Opposition> opposition;

  void Take(const engine::ResolveOutcome& result, const engine::Resolver& resolver, TerminalView& view);
};
Json RunJson(const RunRecord& run);

/// The outcome of one requested change.
struct ChangeRecord : RunRecord {
  RequestedChange request;
  uint16_t old = 0;
  std::string way;  ///< for a request that the rules refused: what to set first
};

/// Runs one requested change through the engine. Throws exit code 4 for what is refused before the rules are asked: a
/// control that isn't available, an item that is forbidden, a device option without `device`; the message names what is
/// in the way.
ChangeRecord MakeChange(SettingsSession& opened, const RequestedChange& request, bool device, TerminalView& view);

/// Makes a change of a control without asking whether it is offered; the request's text isn't used.
ChangeRecord ApplyRequest(SettingsSession& opened, const RequestedChange& request, TerminalView& view);

/// Runs every requested change (KEY=VALUE); the first that isn't applied ends them.
std::vector<ChangeRecord> MakeChanges(SettingsSession& opened, const std::vector<std::string>& requests, bool device,
                                      const Catalogue& catalogue, TerminalView& view);
/// Why the last of `changes` wasn't applied, and its exit code; empty if all were.
std::string WhyNot(const std::vector<ChangeRecord>& changes, const TerminalView& view, int* code);

/// One line for a change: the request, and the value after later changes or the commit.
void PrintChange(const ChangeRecord& change, SettingsSession& opened);
/// Before or after the commit; the keys of a change are the setting's and the control's.
Json ChangeJson(const ChangeRecord& change);

}  // namespace heron::cli
