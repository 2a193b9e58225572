// A change on trial: what was asked for, what else must change, what opposes it; and the rules that find it.
//
// The resolve loop (resolve.h) writes a request's values into the settings, runs the operations below, which add to the
// log, and writes the log's values in turn. The rules read current values and availability; they write settings only
// for a moment and put them back. Capacities are fixed, so that a run allocates nothing; an addition beyond them is
// refused and marked, and ends the run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/engine.h"

namespace heron::engine {

struct RequestRow {
  ControlIndex control = kNoControl;
  uint16_t oldValue = 0;
  uint16_t newValue = 0;
};

/// What is to be tested. A control has one row at most, so that all controls fit.
struct ChangeRequest {
  std::array<RequestRow, kControlCount> rows;
  uint16_t count = 0;
  uint16_t userCount = 0;             ///< the first rows, which the user changed himself
  ControlIndex changed = kNoControl;  ///< the control that started it; kNoControl for a recall
  bool customPaperPicked = false;     ///< the entry 512 of a paper list was chosen

  std::span<RequestRow> Rows() { return {rows.data(), count}; }
  std::span<const RequestRow> Rows() const { return {rows.data(), count}; }
  std::span<const RequestRow> UserRows() const { return {rows.data(), userCount}; }
  /// The control that the user changed first, or kNoControl.
  ControlIndex First() const { return userCount == 0 ? kNoControl : rows[0].control; }
};

RequestRow* FindRow(ChangeRequest& request, ControlIndex control);              ///< null if there is none
const RequestRow* FindRow(const ChangeRequest& request, ControlIndex control);  ///< the same
bool IsUserRow(const ChangeRequest& request, ControlIndex control);
/// Appends a row unless the control has one; true if it did. Old and new value may be equal.
bool AppendRow(ChangeRequest& request, ControlIndex control, uint16_t old_value, uint16_t new_value);

enum class Reason : uint16_t {
  kPaperOrFinishing = 0,  ///< or a tray
  kPair = 2,              ///< or the margin check
  kTriple = 3,
  kDevice = 10,      ///< a pair or triple rule whose target a device option has closed
  kDeviceGone = 12,  ///< a check box reset because its device option is gone
  kChapter = 21,
  kDoubleOnly = 22,
};

struct LogEntry {
  ControlIndex control = kNoControl;
  uint16_t value = 0;
  Reason reason = Reason::kPaperOrFinishing;
};

struct Opposition {
  ControlIndex control = kNoControl;
  uint16_t value = 0;
};

inline constexpr uint16_t kResultDone = 0;
inline constexpr uint16_t kResultRefused = 2;
inline constexpr uint16_t kResultNoTray = 5;
inline constexpr uint16_t kResultOverrunAll = 65534;
inline constexpr uint16_t kResultOverrun = 65535;

inline constexpr size_t kLogCapacity = 100;

/// What the rules want.
struct ChangeLog {
  std::array<LogEntry, kLogCapacity> entries;
  std::array<Opposition, kLogCapacity> opposition;
  uint16_t count = 0;
  uint16_t oppositionCount = 0;
  uint16_t mark = 0;  ///< entries from here on are of this pass: pending, not written to their controls yet
  uint16_t result = kResultDone;
  bool full = false;  ///< something was refused for want of room
  int16_t perPageConflicts = 0;
  bool paperFits = true;

  std::span<LogEntry> Entries() { return {entries.data(), count}; }
  std::span<const LogEntry> Entries() const { return {entries.data(), count}; }
  std::span<const Opposition> Opposing() const { return {opposition.data(), oppositionCount}; }
  std::span<LogEntry> Pending() { return Entries().subspan(mark); }
};

/// Adds an entry; false if the control holds the value already, so that there is nothing to do, or the log is full.
bool AddEntry(const Engine& engine, ChangeLog& log, ControlIndex control, uint16_t value, Reason reason);
/// Adds a setting that opposes the change. The list may hold one more than once until it is put in order.
void AddOpposition(ChangeLog& log, ControlIndex control, uint16_t value);
/// The last pending entry of a control, or null.
LogEntry* FindPending(ChangeLog& log, ControlIndex control);

// Combinations of values.

void ApplyPairRules(const Engine& engine, const ChangeRequest& request, ChangeLog& log);
void ApplyTripleRules(const Engine& engine, const ChangeRequest& request, ChangeLog& log);
/// Checks the papers of all groups, in order.
void ApplyPaperRules(Engine& engine, const ChangeRequest& request, ChangeLog& log);

// Checks at the start of a pass. CheckBindingMargin is with the sizes (sizes.h).

bool VerifyChapter(const Engine& engine, ChangeLog& log);         ///< true if it added an entry
bool CheckDoubleOnlyPaper(const Engine& engine, ChangeLog& log);  ///< the same
/// Appends the paper to the request when the user turned off what doubled it.
void AddPaperToRequest(const Engine& engine, ChangeRequest& request);

// Finishing and trays: what must change for the geometry and the papers in the trays.

void ResolveStaple(const Engine& engine, const ChangeRequest& request, ChangeLog& log);
void ResolvePunch(const Engine& engine, const ChangeRequest& request, ChangeLog& log);
void ResolveFoldStaple(const Engine& engine, const ChangeRequest& request, ChangeLog& log);
void ResolveFold(const Engine& engine, const ChangeRequest& request, ChangeLog& log);
void ResolveInterleave(Engine& engine, const ChangeRequest& request, ChangeLog& log);
/// These two try pending entries on the settings, evaluating the rules, and put all back before they return.
void ResolveTrays(Engine& engine, ChangeLog& log, EngineView* view);
void ResolveOutputTray(Engine& engine, ChangeLog& log, EngineView* view);

}  // namespace heron::engine
