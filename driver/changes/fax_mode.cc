#include "changes/fax_mode.h"

#include <algorithm>

#include "catalog/strings.h"
#include "changes/reports.h"
#include "changes/resolve_parts.h"
#include "engine/sizes.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "settings/papers.h"
#include "uistate/tray_media.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kOutput = Control(u"lpOutput.Fax");
constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kSource = Control(u"lpMediaSource");
constexpr ControlIndex kMediaType = Control(u"lpMediaType.dialog");

/// What a fax sets to its default and says so.
constexpr ControlIndex kGuarded[] = {kSource, Control(u"Copies"), Control(u"lpOutputTray"), Control(u"lpBindPosit"),
                                     Control(u"lpPRNType")};
/// Settings that may be left on a forbidden item after a fax.
constexpr ControlIndex kReturning[] = {Control(u"lpBindPosit"), Control(u"lpPRNType"), Control(u"lpOutputTray"),
                                       kSource};

void Tell(EngineView* view, TextNumber caption, std::u16string_view text) {
  if (view != nullptr) view->Show({GetUiString(caption), text, false});
}

std::u16string Line(std::u16string_view format, std::u16string_view label, std::u16string_view value) {
  return platform::ExpandText(format, {label, value});
}

std::u16string ValueLine(std::u16string_view format, ControlIndex control, uint16_t value) {
  return Line(format, GetUiString(kControls[control].label), ValueText(control, value));
}

/// Paper, tray, and the media in it: what a fax can't be sent from.
std::u16string WhatOpposes(const Engine& engine) {
  constexpr std::u16string_view kFormat = u"%s : %s \n";
  const uint16_t source = engine.Value(kSource);
  const ControlIndex paper = engine.Holds(kOutputPaper, kSameAsDocument) ? kMediaSize : kOutputPaper;
  std::u16string text = GetUiString(text::kNotTogetherWith);
  text += ValueLine(kFormat, paper, engine.Value(paper));
  text += ValueLine(kFormat, kSource, source);
  const std::u16string tray = ValueText(kSource, source);
  const std::u16string label = Line(u"%s(%s)", GetUiString(kControls[kMediaType].label), tray);
  return text += Line(kFormat, label, ValueText(kMediaType, MediaOfTray(engine, source).mediaType));
}

/// Lines for the settings that ResetForFax is about to change.
void AddGuardedLines(const Engine& engine, std::u16string& lines) {
  for (const ControlIndex control : kGuarded) {
    const uint16_t fallback = engine.Default(control);
    if (engine.Value(control) != fallback) lines += ValueLine(u"%s => %s \n", control, fallback);
  }
}

/// Label and dialog of a gate that a notice names; an empty label if it doesn't.
struct IgnoredName {
  std::u16string_view label;
  uint32_t text = 0;
  uint16_t group = 0;
};

IgnoredName NameOfGate(const OutputModeGate& gate) {
  IgnoredName name;
  const ControlIndex control = IndexOf(gate.control);
  if (gate.report == OutputModeGate::Report::kLabel && control != kNoControl) {
    name.text = kControls[control].label;
    name.group = kControls[control].dialog;
  } else if (gate.report == OutputModeGate::Report::kText) {
    const int row = FirstEnableRule(gate.control);
    name.text = gate.text;
    if (row >= 0) name.group = kEnableRules[static_cast<size_t>(row)].dialog;
  }
  if (name.text != 0) name.label = GetUiString(name.text);
  return name;
}

}  // namespace

bool EnterFaxMode(Engine& engine, EngineView* view, FaxNotice notice) {
  uint16_t paper = engine.Value(kOutputPaper);
  const int32_t substitute = PaperSubstitute(paper);
  if (substitute >= 0) paper = static_cast<uint16_t>(substitute);
  bool moves = substitute >= 0;
  const Selection found = SelectFirstAvailable(engine, kControls[kOutputPaper].id);
  if (found == Selection::kNoneAllowed) {
    Tell(view, text::kFaxTransmission, WhatOpposes(engine));
    return false;
  }
  if (found == Selection::kMoved) {
    paper = engine.Default(kMediaSize);
    moves = true;
  }
  std::u16string lines;
  if (moves) {
    engine.Set(kOutputPaper, paper);
    UpdateAutoZoom(*engine.ui, kControls[kOutputPaper].id);
    SetCustomPaperMarks(engine);
    lines += ValueLine(u"%s => %s \n", kOutputPaper, paper);
  }
  AddGuardedLines(engine, lines);
  if (engine.ui->head().printerDataLocked != 1) return true;
  std::u16string ignored;
  if (notice == FaxNotice::kFirst) ListFaxIgnored(engine, view, ignored);
  if (lines.empty() && ignored.empty()) return true;
  std::u16string text;
  if (!lines.empty()) text = std::u16string(GetUiString(text::kFaxChanges)) + lines;
  if (!ignored.empty())
    text += std::u16string(GetUiString(lines.empty() ? text::kFaxExcludes : text::kFaxExcludesToo)) + ignored;
  Tell(view, text::kFaxTransmission, text);
  return true;
}

void ResetForFax(Engine& engine) {
  for (const OutputModeGate& gate : kOutputModeGates) {
    const ControlIndex control = gate.resetOnFax ? IndexOf(gate.control) : kNoControl;
    if (control != kNoControl) engine.Set(control, engine.Default(control));
  }
}

void LeaveFaxMode(Engine& engine, EngineView* view) {
  EvaluateRules(engine, view);
  std::u16string lines;
  for (const ControlIndex control : kReturning) {
    if (!engine.Available(control) || SelectFirstAvailable(engine, kControls[control].id) != Selection::kMoved)
      continue;
    lines += ValueLine(u"%s => %s \n", control, engine.Value(control));
    EvaluateRules(engine, view);
  }
  if (!lines.empty()) Tell(view, text::kOutputToPrinter, std::u16string(GetUiString(text::kPrintingChanges)) + lines);
}

int ListFaxIgnored(Engine& engine, EngineView* view, std::u16string& text) {
  EvaluateRules(engine, view);
  std::array<uint32_t, kOutputModeGateCount> named{};
  size_t names = 0;
  size_t in_group = 0;
  uint16_t group = 0;
  for (size_t i = 0; i < kOutputModeGateCount; ++i) {
    const IgnoredName name = NameOfGate(kOutputModeGates[i]);
    if (engine.rules.outputMode[i] != 0 || name.label.empty()) continue;
    if (std::ranges::count(std::span(named).first(names), name.text) != 0) continue;
    if (name.group != group) {
      if (in_group % 2 != 0) text += u"\n";
      in_group = 0;
      group = name.group;
    }
    named[names++] = name.text;
    text += name.label;
    text += ++in_group % 2 != 0 ? u"   " : u"\n";
  }
  return static_cast<int>(names);
}

bool ChangeOutputMode(Engine& engine, EngineView* view) {
  const auto refuse = [&] {
    RestoreValues(engine);
    engine.Set(kOutput, value::lpOutput::kPrinter);
    EvaluateRules(engine, view);
    return false;
  };
  const bool fax = engine.Holds(kOutput, value::lpOutput::kFax);
  if (fax) {
    if (!EnterFaxMode(engine, view, FaxNotice::kFirst)) return refuse();
    ResetForFax(engine);
  } else {
    LeaveFaxMode(engine, view);
  }
  LoadAllTrayMirrors(*engine.ui);
  if (fax) {
    if (!EnterFaxMode(engine, view, FaxNotice::kAgain)) return refuse();
    if (engine.ui->head().printerDataLocked != 1)
      Tell(view, text::kFaxTransmission, GetUiString(text::kRecipientsAtPrintTime));
  }
  EvaluateRules(engine, view);
  ComputeAllItemStatus(engine);
  return true;
}

}  // namespace heron::engine
