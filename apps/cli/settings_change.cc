// Applies requested changes through the engine and prints their outcome (settings_change.h).

#include "settings_change.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <utility>

#include "changes/fax_mode.h"
#include "engine/setting.h"
#include "pages/image_shift.h"
#include "rules/control_tables.h"
#include "rules/dialogs.h"
#include "settings/papers.h"
#include "settings_kept.h"
#include "settings_way.h"

namespace heron::cli {
namespace {

using engine::ControlIndex;
using engine::kControls;

constexpr uint16_t kZoom = ParamNamed<u"Zoom">();
constexpr uint16_t kZoomSwitch = ParamNamed<u"ZoomCheck">();

[[noreturn]] void Refuse(const RequestedChange& request, const std::string& why) {
  throw Failure(kRefused, request.text + ": " + why);
}

const engine::ControlRow& RowOf(uint16_t control) {
  return kControls[engine::IndexOf(control)];
}

void CheckRequest(SettingsSession& opened, const RequestedChange& request, bool device) {
  CheckKeepable(opened, request, device);
  if (request.control == 0 || IsOffered(opened.engine(), request)) return;
  Refuse(request, WayText(opened.engine(), request, WayTo(opened, request)));
}

/// A setting that no control shows, and those that are stored without asking the rules.
void SetAtOnce(SettingsSession& opened, const RequestedChange& request) {
  const ValueFields fields = FieldsOf(opened.ui(), request.parameter);
  *fields.value = request.value;
  // Later changes of the same command ask what is available, so it is computed again.
  engine::EvaluateRules(opened.engine(), nullptr);
  engine::ComputeAllItemStatus(opened.engine());
}

/// Fax or printer, which the rules aren't asked for.
engine::ResolveOutcome SwitchOutput(SettingsSession& opened, const RequestedChange& request, TerminalView& view) {
  engine::Engine& engine = opened.engine();
  const engine::Action action(opened.resolver());
  engine.Set(engine::IndexOf(request.control), request.value);
  const bool applied = engine::ChangeOutputMode(engine, &view);
  return {.result = applied ? engine::kResultDone : engine::kResultRefused, .applied = applied};
}

/// A zoom of its own belongs to a print size of its own, as on the page: where the print size is the document's, the
/// same size is chosen by name first, and the other way round. False if that was declined.
bool MakeRoomForZoom(SettingsSession& opened, const RequestedChange& request, TerminalView& view,
                     ChangeRecord* change) {
  constexpr uint16_t kPrintSize = engine::ControlId(u"lpOutputPaper");
  const UiState& ui = opened.ui();
  const bool zooms = request.parameter == kZoom || (request.parameter == kZoomSwitch && request.value != 0);
  const bool unzooms = request.parameter == kZoomSwitch && request.value == 0;
  if (zooms && engine::Setting<u"ZoomCheck">(ui) != 0 && engine::Setting<u"lpOutputPaper">(ui) != kSameAsDocument)
    return true;
  if ((!zooms && !unzooms) || (request.parameter == kZoom && request.value == engine::Setting<u"Zoom">(ui)))
    return true;
  const uint16_t size = unzooms ? uint16_t{kSameAsDocument} : engine::Setting<u"lpMediaSize">(ui);
  RequestedChange print_size = {.text = request.text,
                                .parameter = engine::ParamIndexOfControl(engine::IndexOf(kPrintSize)),
                                .control = kPrintSize,
                                .value = size};
  // The user asked for a zoom: a refusal names that, and the way to the print size it needs.
  if (!IsOffered(opened.engine(), print_size))
    Refuse(request, WayText(opened.engine(), print_size, WayTo(opened, print_size)));
  *change = ApplyRequest(opened, print_size, view);
  change->request = request;
  return change->outcome.applied;
}

}  // namespace

void RunRecord::Take(const engine::ResolveOutcome& result, const engine::Resolver& resolver, TerminalView& view) {
  outcome = result;
  reports = view.TakeReports();
  log.assign(resolver.log.Entries().begin(), resolver.log.Entries().end());
  opposition.assign(resolver.log.Opposing().begin(), resolver.log.Opposing().end());
}

ChangeRecord MakeChange(SettingsSession& opened, const RequestedChange& request, bool device, TerminalView& view) {
  ChangeRecord change;
  change.request = request;
  // A place in a list, which no rule knows.
  if (request.parameter == kWatermarkChoice) {
    uint8_t& current = SlotAs<u"bWatermarkCurrent", uint8_t>(opened.ui());
    change.old = std::exchange(current, static_cast<uint8_t>(request.value));
    change.outcome.applied = true;
    return change;
  }
  CheckRequest(opened, request, device);
  const uint16_t old = ValueOfRequest(opened.ui(), request);
  if (!MakeRoomForZoom(opened, request, view, &change)) return change;
  const ChangeRecord room = std::move(change);
  change = ApplyRequest(opened, request, view);
  change.old = old;
  if (change.log.empty()) change.log = room.log;
  change.reports.insert(change.reports.begin(), room.reports.begin(), room.reports.end());
  // A way is searched only after a refusal: it tries hundreds of changes.
  const bool refused_by_rules = !change.outcome.applied && change.outcome.answer == engine::Answer::kNotAsked;
  if (refused_by_rules && request.control != 0) change.way = WayText(opened.engine(), request, WayTo(opened, request));
  return change;
}

ChangeRecord ApplyRequest(SettingsSession& opened, const RequestedChange& request, TerminalView& view) {
  engine::Engine& engine = opened.engine();
  ChangeRecord change;
  change.request = request;
  change.old = *FieldsOf(opened.ui(), request.parameter).value;
  change.outcome.applied = true;
  if (change.old == request.value) return change;
  if (request.control == 0) {
    SetAtOnce(opened, request);
    return change;
  }
  const ControlIndex control = engine::IndexOf(request.control);
  if (RowOf(request.control).dialog == dialog::kFaxPage) {
    change.outcome = SwitchOutput(opened, request, view);
    change.reports = view.TakeReports();
    return change;
  }
  std::optional<engine::Action> action;
  if (engine::SourceOfMirror(control) != engine::kNoControl) {
    action.emplace(opened.resolver());  // so that a No takes the tray's media back too
    engine::StoreTrayMedia(engine, control, request.value);
  }
  view.SetPending(request.control, request.value);
  change.Take(engine::ResolveChange(opened.resolver(), &view, request.control), opened.resolver(), view);
  if (change.outcome.applied && RowOf(request.control).dialog == dialog::kImageShift) pages::FollowFront(opened.ui());
  return change;
}

std::vector<ChangeRecord> MakeChanges(SettingsSession& opened, const std::vector<std::string>& requests, bool device,
                                      const Catalogue& catalogue, TerminalView& view) {
  std::vector<ChangeRecord> changes;
  for (const std::string& text : requests) {
    const RequestedChange request = ParseRequest(text, opened.engine(), catalogue);
    changes.push_back(MakeChange(opened, request, device, view));
    if (!changes.back().outcome.applied) break;  // the changes of one command are one
  }
  return changes;
}

std::string WhyNot(const std::vector<ChangeRecord>& changes, const TerminalView& view, int* code) {
  if (changes.empty() || changes.back().outcome.applied) return {};
  const ChangeRecord& last = changes.back();
  const std::string& request = last.request.text;
  *code = kConsent;
  if (view.wantedConsent())
    return request + ": it changes other settings too; agree with --yes, or run on a terminal to be asked";
  if (last.outcome.answer == engine::Answer::kNo) return request + ": declined; nothing was changed";
  *code = kRefused;
  return request + ": " + (last.way.empty() ? "it can't be made to fit the other settings" : last.way) +
         "; nothing was changed";
}

void PrintChange(const ChangeRecord& change, SettingsSession& opened) {
  const engine::Engine& engine = opened.engine();
  const RequestedChange& request = change.request;
  if (!change.outcome.applied) return;
  const std::string name =
      request.control != 0 ? ControlName(engine, request.control) : request.text.substr(0, request.text.find('='));
  const auto text = [&](uint16_t value) {
    return request.control != 0 ? ValueNameNow(engine, request.control, value)
                                : std::to_string(NumberOf(request.parameter, value));
  };
  std::cout << name << ": " << text(change.old)
            << (change.old == request.value ? ", as it was" : " => " + text(request.value));
  const uint16_t now = ValueOfRequest(opened.ui(), request);
  std::cout << (now == request.value ? "" : ", and then " + text(now)) << '\n';
}

Json RunJson(const RunRecord& run) {
  Json log = Json::array();
  for (const engine::LogEntry& entry : run.log) {
    log.push_back({{"control", kControls[entry.control].id},
                   {"value", NumberOf(engine::ParamIndexOfControl(entry.control), entry.value)},
                   {"reason", static_cast<uint16_t>(entry.reason)}});
  }
  Json opposition = Json::array();
  for (const engine::Opposition& setting : run.opposition) {
    opposition.push_back({{"control", kControls[setting.control].id},
                          {"value", NumberOf(engine::ParamIndexOfControl(setting.control), setting.value)}});
  }
  const bool asked = run.outcome.answer != engine::Answer::kNotAsked;
  const ShownReport last = run.reports.empty() ? ShownReport() : run.reports.back();
  return {{"result", run.outcome.result},
          {"applied", run.outcome.applied},
          {"asked", asked},
          {"answer", asked ? Json(run.outcome.answer == engine::Answer::kYes ? "yes" : "no") : Json(nullptr)},
          {"caption", last.caption},
          {"text", last.text},
          {"log", log},
          {"opposition", opposition},
          {"passes", run.outcome.passes}};
}

Json ChangeJson(const ChangeRecord& change) {
  const uint16_t parameter = change.request.parameter;
  Json json = {{"key", KeyOfSetting(parameter)},
               {"control", change.request.control},
               {"old", NumberOf(parameter, change.old)},
               {"new", NumberOf(parameter, change.request.value)}};
  json.update(RunJson(change));
  return json;
}

}  // namespace heron::cli
