// What the user is told of a run, what he is asked, and what comes of his answer.
#include <new>
#include <optional>

#include "catalog/strings.h"
#include "engine/reports.h"
#include "engine/resolve_parts.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

/// Numbers of texts.
enum Text : uint32_t {
  kNone = 0,
  kCustomSize = 21008,
  kBindingMargin = 21019,
  kRecallCaption = 22101,
  kRecallHeader = 22102,
  kRecallRest = 22104,
  kRecallRestNoFit = 22105,
  kRecallNoFit = 22106,
  kOverrunSingle = 22201,
  kOverrunAll = 22202,
  kNoTray = 22210,
  kNoTrayCaption = 22211,
  kChangesToo = 22212,
  kOpposed = 22213,
  kAsk = 22214,
  kAskCustom = 22215,
  kCustomHeader = 22217,
  kMarginHeader = 22218,
  kListCaption = 22219,
  kListHeader = 22220,
  kOpeningHeader = 22221,
};

constexpr uint16_t kMarginDialog = 2300;
constexpr uint16_t kListNameDialog = 2440;

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

/// Header, lines, remark and closing text.
OwnReport ListReport(const Resolver& resolver, std::u16string_view caption, Text header, Text closing, bool asks,
                     DeviceLines device = DeviceLines::kYes) {
  TakePaperNames(resolver);
  ReportText report(TextOf(header));
  AddLines(report, resolver, device);
  report.Close(PerPageRemark(resolver, CountableEntries(resolver.engine, resolver.log) > 0));
  report.Close(TextOf(closing));
  return {std::u16string(caption), report.Take(), asks};
}

/// The report that a change wants; one without text is none.
OwnReport ReportChange(const Resolver& resolver, ControlIndex control) {
  const ChangeRequest& request = resolver.request;
  const ChangeLog& log = resolver.log;
  const bool countable = CountableEntries(resolver.engine, log) > 0;
  const std::u16string label(GetUiString(kControls[control].label));
  if (countable && kControls[control].type == ControlType::kRadio)
    return ListReport(resolver, label, kChangesToo, kNone, false, DeviceLines::kNo);
  if (request.customPaperPicked) {
    if (log.count != 0) return ListReport(resolver, TextOf(kCustomSize), kCustomHeader, kNone, true);
    if (request.rows[0].newValue == request.rows[0].oldValue) return {};
    return {std::u16string(TextOf(kCustomSize)), std::u16string(TextOf(kAskCustom)), true};
  }
  if (resolver.differences.count != 0 && resolver.differences.dialog == kMarginDialog) {
    if (log.count == 0) return {};
    return ListReport(resolver, TextOf(kBindingMargin), kMarginHeader, kNone, false);
  }
  if (countable && resolver.differences.count != 0 && resolver.differences.dialog == kListNameDialog)
    return ListReport(resolver, TextOf(kListCaption), kListHeader, kNone, false);
  if (countable) return ListReport(resolver, label, kChangesToo, kAsk, true);
  return {label, PerPageRemark(resolver, false), false};
}

OwnReport ReportRefusal(const Resolver& resolver, ControlIndex control) {
  TakePaperNames(resolver);
  ReportText report(TextOf(kOpposed));
  AddOpposingLines(report, resolver);
  return {std::u16string(GetUiString(kControls[control].label)), report.Take(), false};
}

OwnReport ReportRecall(const Resolver& resolver) {
  const bool fits = resolver.log.paperFits;
  if (CountableEntries(resolver.engine, resolver.log) <= 0) {
    ReportText report(TextOf(fits ? kNone : kRecallNoFit));
    report.Close(PerPageRemark(resolver, false));
    return {std::u16string(TextOf(kRecallCaption)), report.Take(), false};
  }
  OwnReport report =
      ListReport(resolver, TextOf(kRecallCaption), kRecallHeader, fits ? kRecallRest : kRecallRestNoFit, false);
  report.text += u"\n";
  return report;
}

OwnReport ReportOverrun(Text text) {
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

ResolveOutcome Ended(const Resolver& resolver, bool applied, Answer answer = Answer::kNotAsked) {
  return {resolver.log.result, resolver.passes, applied, answer};
}

/// No tray is left: the change is off. Covers and per-page settings are off with it.
ResolveOutcome EndWithoutTray(Resolver& resolver, EngineView* view, ControlIndex control) {
  Tell(view, [] { return OwnReport{std::u16string(TextOf(kNoTrayCaption)), std::u16string(TextOf(kNoTray))}; });
  Withdraw(resolver, view);
  const uint16_t id = kControls[control].id;
  Engine& engine = resolver.engine;
  if ((id == 201 || id == 205 || id == 215) && engine.Value(control) != 0) {
    engine.Set(control, 0);
    EvaluateRules(engine, view);
    if (view != nullptr) view->RedisplayControl(id, 0);
  }
  return Ended(resolver, false);
}

}  // namespace

ResolveOutcome PresentChange(Resolver& resolver, EngineView* view, ControlIndex control) {
  ChangeLog& log = resolver.log;
  const bool is_button = kControls[control].type == ControlType::kButton;
  if (log.result == kResultDone && log.oppositionCount != 0 && !is_button) log.result = kResultRefused;
  if (log.result == kResultNoTray) return EndWithoutTray(resolver, view, control);
  if (log.result != kResultDone) {
    const bool refused = log.result == kResultRefused;
    Tell(view, [&] { return refused ? ReportRefusal(resolver, control) : ReportOverrun(kOverrunSingle); });
    Withdraw(resolver, view);
    return Ended(resolver, false);
  }
  const Answer answer = Tell(view, [&] { return ReportChange(resolver, control); });
  if (answer == Answer::kNo) {
    Withdraw(resolver, view);
    return Ended(resolver, false, answer);
  }
  ApplySequence(resolver, view, is_button);
  return Ended(resolver, true, answer);
}

ResolveOutcome PresentRecall(Resolver& resolver, EngineView* view) {
  if (resolver.log.result == kResultOverrunAll) {
    Tell(view, [] { return ReportOverrun(kOverrunAll); });
    Withdraw(resolver, view);
    return Ended(resolver, false);
  }
  Tell(view, [&] { return ReportRecall(resolver); });
  ApplySequence(resolver, view, true);
  return Ended(resolver, true);
}

DeferredReport ReportOpening(const Resolver& resolver) {
  if (resolver.log.result == kResultOverrunAll) return {};
  const auto report = IfMemory([&] {
    if (CountableEntries(resolver.engine, resolver.log) > 0)
      return ListReport(resolver, ModelCaption(), kOpeningHeader, kNone, false);
    return OwnReport{ModelCaption(), PerPageRemark(resolver, false), false};
  });
  return report ? DeferredReport{report->caption, report->text} : DeferredReport{};
}

}  // namespace heron::engine
