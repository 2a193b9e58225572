// Changes that a command makes, one after the other, each with its consequences.
#pragma once

#include <string>
#include <vector>

#include "command.h"
#include "engine/resolve.h"
#include "setting_names.h"
#include "sheet.h"
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

/// What became of one wish.
struct ChangeRecord : RunRecord {
  Wish wish;
  uint16_t old = 0;
};

/// Runs one wish through the engine. Throws exit code 4 for what is refused before the rules are asked: a control that
/// isn't available, an item that is forbidden, a device option without `device`; the sentence names what stands in the
/// way.
ChangeRecord MakeChange(Sheet& sheet, const Wish& wish, bool device, TerminalView& view);

/// Runs every wish (KEY=VALUE); the first that isn't applied ends them.
std::vector<ChangeRecord> MakeChanges(Sheet& sheet, const std::vector<std::string>& wishes, bool device,
                                      const Catalogue& catalogue, TerminalView& view);
/// Why the last of `changes` wasn't applied, and its exit code; empty if all were.
std::string WhyNot(const std::vector<ChangeRecord>& changes, const TerminalView& view, int* code);

/// One line for what changed: the wish, and what a later change or the commit made of it.
void PrintChange(const ChangeRecord& change, Sheet& sheet);
Json ChangeJson(const ChangeRecord& change);

}  // namespace heron::cli
