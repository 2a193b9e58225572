// Reports of a run, the question to the user, and what follows from the answer.
#include <new>
#include <optional>
#include <utility>

#include "catalog/strings.h"
#include "changes/reports.h"
#include "changes/resolve_parts.h"
#include "generated/texts.h"
#include "rules/dialogs.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

constexpr TextNumber kNone = 0;  ///< no text

struct OwnReport {
  std::u16string caption;
  std::u16string text;
  bool asks = false;
};

std::u16string_view TextOf(uint32_t number) {
  return number == kNone ? std::u16string_view() : GetUiString(number);
}

/// What `compose` makes, or nothing where memory runs out: then the run goes on without its report.
template <typename Compose>
auto IfMemory(Compose compose) -> std::optional<decltype(compose())> {
  try {
    return compose();
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

/// Values are named by the process's table of papers, which may show another sheet's user papers by now.
void TakePaperNames(const Resolver& resolver) {
  const auto& papers = resolver.engine.ui->stores.userPapers;
  if (papers != nullptr) RefreshUserPaperRows(*papers);
}

/// Header and lines; empty without a line, as a header alone says nothing.
ReportText HeadedLines(const Resolver& resolver, TextNumber header, DeviceLines device = DeviceLines::kYes) {
  TakePaperNames(resolver);
  ReportText report(TextOf(header));
  return AddLines(report, resolver, device) ? std::move(report) : ReportText();
}

/// Header, lines, remark and closing text; without a line the remark alone, if there is one.
OwnReport ListReport(const Resolver& resolver, std::u16string_view caption, TextNumber header, TextNumber closing,
                     bool asks, DeviceLines device = DeviceLines::kYes) {
  ReportText report = HeadedLines(resolver, header, device);
  const bool has_lines = !report.empty();
  report.Close(PerPageRemark(resolver, has_lines));
  if (has_lines) report.Close(TextOf(closing));
  return {std::u16string(caption), report.Take(), asks && has_lines};
}

/// The report that a change wants; one without text is none.
OwnReport ReportChange(const Resolver& resolver, ControlIndex control) {
  const ChangeRequest& request = resolver.request;
  const ChangeLog& log = resolver.log;
  const bool countable = CountableEntries(resolver.engine, log) > 0;
  const std::u16string label(GetUiString(kControls[control].label));
  if (countable && kControls[control].type == ControlType::kRadio)
    return ListReport(resolver, label, text::kAlsoChanges, kNone, false, DeviceLines::kNo);
  if (request.customPaperPicked) {
    if (!HeadedLines(resolver, text::kCustomSizeChanges).empty())
      return ListReport(resolver, TextOf(text::kCustomSize), text::kCustomSizeChanges, kNone, true);
    if (request.rows[0].newValue == request.rows[0].oldValue) return {};
    return {std::u16string(TextOf(text::kCustomSize)), std::u16string(TextOf(text::kAskToUseCustomSize)), true};
  }
  if (resolver.differences.count != 0 && resolver.differences.dialog == dialog::kBindingMargin) {
    if (log.count == 0) return {};
    return ListReport(resolver, TextOf(text::kBindingMarginRange), text::kMarginChanges, kNone, false);
  }
  if (countable && resolver.differences.count != 0 && resolver.differences.dialog == dialog::kPerPageListName)
    return ListReport(resolver, TextOf(text::kPerPageList), text::kListChanges, kNone, false);
  if (countable) return ListReport(resolver, label, text::kAlsoChanges, text::kAskToChange, true);
  return {label, PerPageRemark(resolver, false), false};
}

OwnReport ReportRefusal(const Resolver& resolver, ControlIndex control) {
  TakePaperNames(resolver);
  ReportText report(TextOf(text::kNotTogetherWith));
  if (!AddOpposingLines(report, resolver)) report = ReportText(TextOf(text::kChangeUndone));
  return {std::u16string(GetUiString(kControls[control].label)), report.Take(), false};
}

OwnReport ReportRecall(const Resolver& resolver) {
  const bool fits = resolver.log.paperFits;
  ReportText report = HeadedLines(resolver, text::kRecallChanges);
  const bool has_lines = !report.empty();
  const TextNumber closing = has_lines ? (fits ? text::kRecallRest : text::kRecallRestCustomSizeMisfit)
                                       : (fits ? kNone : text::kRecallCustomSizeMisfit);
  report.Close(TextOf(closing));
  report.Close(PerPageRemark(resolver, has_lines));
  if (has_lines) report.Close(u"\n");
  return {std::u16string(TextOf(text::kRecallSettings)), report.Take(), false};
}

OwnReport ReportOverrun(TextNumber text) {
  return {ModelCaption(), std::u16string(TextOf(text)), false};
}

/// Shows what `compose` makes, if it has a text. The answer, or kNotAsked where nothing was asked.
template <typename Compose>
Answer Tell(EngineView* view, Compose compose) {
  const auto report = IfMemory(compose);
  if (view == nullptr || !report || report->text.empty()) return Answer::kNotAsked;
  const bool yes = view->Show({report->caption, report->text, report->asks});
  return !report->asks ? Answer::kNotAsked : yes ? Answer::kYes : Answer::kNo;
}

ResolveOutcome Ended(const Resolver& resolver, bool applied, const Dirty& dirty, Answer answer = Answer::kNotAsked) {
  return {resolver.log.result, resolver.passes, applied, answer, dirty};
}

/// No tray is left: the change is off. Covers and per-page settings are off with it.
ResolveOutcome EndWithoutTray(Resolver& resolver, EngineView* view, ControlIndex control) {
  Tell(view, [] {
    return OwnReport{std::u16string(TextOf(text::kPaperTray)), std::u16string(TextOf(text::kNoPaperTray))};
  });
  Dirty dirty = Withdraw(resolver);
  constexpr ControlIndex kTakingTrays[] = {Control(u"Front_Check"), Control(u"Back_Check"),
                                           Control(u"InterSheet_Check")};
  Engine& engine = resolver.engine;
  if (std::ranges::count(kTakingTrays, control) != 0 && engine.Value(control) != 0) {
    engine.Set(control, 0);
    EvaluateRules(engine, view);
    dirty.controls.set(control);
  }
  return Ended(resolver, false, dirty);
}

}  // namespace

ResolveOutcome PresentChange(Resolver& resolver, EngineView* view, ControlIndex control) {
  ChangeLog& log = resolver.log;
  const bool is_button = kControls[control].type == ControlType::kButton;
  if (log.result == kResultDone && log.oppositionCount != 0 && !is_button) log.result = kResultRefused;
  if (log.result == kResultNoTray) return EndWithoutTray(resolver, view, control);
  if (log.result != kResultDone) {
    const bool refused = log.result == kResultRefused;
    Tell(view, [&] { return refused ? ReportRefusal(resolver, control) : ReportOverrun(text::kChangeUndone); });
    return Ended(resolver, false, Withdraw(resolver));
  }
  const Answer answer = Tell(view, [&] { return ReportChange(resolver, control); });
  if (answer == Answer::kNo) return Ended(resolver, false, Withdraw(resolver), answer);
  return Ended(resolver, true, ApplySequence(resolver, view), answer);
}

ResolveOutcome PresentRecall(Resolver& resolver, EngineView* view) {
  if (resolver.log.result == kResultOverrunAll) {
    Tell(view, [] { return ReportOverrun(text::kSettingsStay); });
    return Ended(resolver, false, Withdraw(resolver));
  }
  Tell(view, [&] { return ReportRecall(resolver); });
  return Ended(resolver, true, ApplySequence(resolver, view));
}

DeferredReport ReportOpening(const Resolver& resolver) {
  if (resolver.log.result == kResultOverrunAll) return {};
  const auto report = IfMemory([&] {
    if (CountableEntries(resolver.engine, resolver.log) > 0)
      return ListReport(resolver, ModelCaption(), text::kOpeningChanges, kNone, false);
    return OwnReport{ModelCaption(), PerPageRemark(resolver, false), false};
  });
  return report ? DeferredReport{report->caption, report->text} : DeferredReport{};
}

}  // namespace heron::engine
