// What a change brings with it, reported before it happens: the trial, the report, and the change or its withdrawal.
//
// A Resolver belongs to the Engine of a sheet. A run tries the new values on the settings, lets the rules add what
// must change too, in passes, and puts everything back; what remains is a log. The user is informed or asked, then the
// values change for good, or the whole state is as it was before his action, byte for byte. An exception that leaves
// any of these operations restores it too.
//
// Nothing is redisplayed here: the outcome says what isn't on show as it is now, and a view shows that once.
//
// Texts are in use (catalog/strings.h) and the engine is bound. A `view` may be null: every question is then answered
// with Yes.
#pragma once

#include <array>
#include <bitset>
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

/// Everything that the rules can touch. Its memory is taken once, by the constructor.
class StateCopy {
 public:
  explicit StateCopy(const UiState& ui);
  void Take(const Engine& engine);
  void Restore(Engine& engine) const;

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

/// What may look otherwise after a run than it did before.
struct Dirty {
  std::bitset<kControlCount> controls;  ///< of any dialog
  std::bitset<kControlCount> lists;     ///< those of the dialog on show: which items they offer
  ControlIndex corrected = kNoControl;  ///< a field whose number was corrected: it is to have the focus
  bool settings = false;                ///< availability, the per-page list, pictures; without it nothing is dirty
  bool itemsAreComputed = false;        ///< the status of every item of every list is that of the settings
};

struct ResolveOutcome {
  uint16_t result = kResultDone;  ///< after presenting: a change that is opposed is refused
  uint16_t passes = 0;            ///< of the rules
  bool applied = false;           ///< otherwise the state is as it was
  Answer answer = Answer::kNotAsked;
  Dirty dirty = {};
};

/// The report of the opening run, until a page is there to show it.
struct DeferredReport {
  std::u16string caption;
  std::u16string text;  ///< empty: nothing to report
};

/// What an action takes back: the rules' settings and all lists, with forms, watermarks, fonts and the fax cover. The
/// recipients lie among the settings.
struct KeptAction {
  KeptAction(const Engine& engine, const Differences& outer);
  void Restore(Engine& engine) const;

  const UiState* ui;  ///< whose action it is: a sheet's settings or a clone of them
  StateCopy settings;
  ListStoreSet lists;
  std::array<uint16_t, kControlCount> values;
  Differences differencesOutside;
};

struct Resolver {
  explicit Resolver(Engine& bound);
  /// The action that a run on the bound state belongs to, or null.
  const KeptAction* Action() const;

  Engine& engine;
  StateCopy before;                                  ///< a run's that belongs to no action
  std::vector<std::unique_ptr<KeptAction>> actions;  ///< the innermost last
  Differences differences;
  DeferredReport deferred;

  // Of the current run, and afterwards of the last one: the log is then in the order of the report.
  ChangeRequest request;
  ChangeLog log;
  uint16_t passes = 0;
  TraySnapshot traysBefore;
  TraySnapshot traysAfter;
};

/// Keeps what a refusal or a No of the next resolve is to bring back, from before settings are changed by something
/// else: a dialog, a recall, a page. That resolve ends the action; without one its scope does, and changes stay. An
/// action inside of another one takes back only what happened since it began; after it, a No takes back all since the
/// outer one began. A resolve on a clone isn't part of an action on the settings that were cloned. Takes memory.
class Action {
 public:
  explicit Action(Resolver& resolver);
  ~Action();
  Action(const Action&) = delete;
  Action& operator=(const Action&) = delete;

 private:
  Resolver& resolver_;
  size_t outside_;  ///< number of actions around it
};

/// Notes what the controls of `dialog` hold now and didn't when the action began, for the next ResolveChange. Nothing
/// without an action.
void RecordDialogDifferences(Resolver& resolver, uint16_t dialog);
/// The same for all controls but those of per-page dialogs, for ResolveRecall.
void RecordRecallDifferences(Resolver& resolver);

/// One control changed by the user, whose new value the view reads, or a restore-defaults button. An unknown control is
/// result 0 without effect.
[[nodiscard]] ResolveOutcome ResolveChange(Resolver& resolver, EngineView* view, uint16_t control);

/// Many settings changed at once by a recall. Can't be refused; only an overrun withdraws it.
[[nodiscard]] ResolveOutcome ResolveRecall(Resolver& resolver, EngineView* view);

/// The settings that a sheet opens with. Corrects them without a question and keeps the report for
/// ShowDeferredReport. After an overrun only the number of punch holes is corrected.
ResolveOutcome ResolveOpen(Resolver& resolver, EngineView* view);

/// Shows the report of ResolveOpen once, unless it is empty.
void ShowDeferredReport(Resolver& resolver, EngineView* view);

}  // namespace heron::engine
