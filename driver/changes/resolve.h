// What a change brings with it, reported before it happens: the trial, the report, and the change or its withdrawal.
//
// A Resolver belongs to the Engine of a sheet. A run tries the new values on the settings, lets the rules add what
// must change too, in passes, and puts everything back; what remains is a log. The user is informed or asked, then the
// values change for good, or the whole state is as it was before his action, byte for byte. An exception that leaves
// any of these operations restores it too.
//
// Texts are in use (catalog/strings.h) and the engine is bound. A `view` may be null: every question is then answered
// with Yes and nothing is redisplayed.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "changes/change.h"

namespace heron::engine {

inline constexpr uint16_t kPassLimit = 21;

/// The three trays whose media have mirrors, as a report sees them.
struct TraySnapshot {
  struct Row {
    uint16_t value = 0;
    uint16_t shown = 0;  ///< 65535 if an earlier tray already showed the same source
  };
  std::array<Row, 3> rows;  ///< lpMediaSource, lpFrontCoverTray, lpBackCoverTray
};
TraySnapshot TakeTraySnapshot(const Engine& engine);

/// Everything that a change can touch. Its memory is taken once, by the constructor.
class StateCopy {
 public:
  explicit StateCopy(const UiState& ui);
  void Take(const Engine& engine);
  void Restore(Engine& engine) const;
  bool held = false;  ///< a copy has been taken and not been used

 private:
  std::vector<uint8_t> fixed_;
  std::vector<uint8_t> variable_;
  std::unique_ptr<PageList> list_;  ///< the working one's place in the store
  uint16_t listNumber_ = 0;
  UserPaperStore papers_{};
  RuleStates rules_;
};

/// Rows of the controls that an action has changed already.
struct Differences {
  std::array<RequestRow, kControlCount> rows;
  uint16_t count = 0;
  uint16_t dialog = 0;  ///< the dialog that they are of; 0 for a recall
};

enum class Answer : uint8_t { kNotAsked, kYes, kNo };

struct ResolveOutcome {
  uint16_t result = kResultDone;  ///< after presenting: a change that is opposed is refused
  uint16_t passes = 0;            ///< of the rules
  bool applied = false;           ///< otherwise the state is as it was
  Answer answer = Answer::kNotAsked;
};

/// The report of the opening run, until a page is there to show it.
struct DeferredReport {
  std::u16string caption;
  std::u16string text;  ///< empty: nothing to report
};

struct Resolver {
  explicit Resolver(Engine& bound);

  Engine& engine;
  StateCopy before;
  Differences differences;
  DeferredReport deferred;

  // Of the current run, and afterwards of the last one: the log is then in the order of the report.
  ChangeRequest request;
  ChangeLog log;
  uint16_t passes = 0;
  TraySnapshot traysBefore;
  TraySnapshot traysAfter;
};

/// Keeps values and state from before an action that changes settings by itself: a dialog, a recall. To be called
/// before it; the next resolve ends it. EndAction ends it without one, when nothing was changed after all.
void BeginAction(Resolver& resolver);
void EndAction(Resolver& resolver);

/// Notes what the controls of `dialog` hold now and didn't when the action began, for the next ResolveChange.
void RecordDialogDifferences(Resolver& resolver, uint16_t dialog);
/// The same for all controls but those of per-page dialogs, for ResolveRecall.
void RecordRecallDifferences(Resolver& resolver);

/// One control changed by the user, whose new value the view reads, or a restore-defaults button. An unknown control is
/// result 0 without effect.
ResolveOutcome ResolveChange(Resolver& resolver, EngineView* view, uint16_t control);

/// Many settings changed at once by a recall. Can't be refused; only an overrun withdraws it.
ResolveOutcome ResolveRecall(Resolver& resolver, EngineView* view);

/// The settings that a sheet opens with. Corrects them without a question and keeps the report for
/// ShowDeferredReport. After an overrun only the number of punch holes is corrected.
ResolveOutcome ResolveOpen(Resolver& resolver, EngineView* view);

/// Shows the report of ResolveOpen once, unless it is empty.
void ShowDeferredReport(Resolver& resolver, EngineView* view);

}  // namespace heron::engine
