#include "changes/commit.h"

#include <algorithm>
#include <array>
#include <string>

#include "catalog/paper_codes.h"
#include "catalog/strings.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/handles.h"
#include "platform/api/text.h"
#include "uistate/unnamed_params.h"

namespace heron::engine {
namespace {

/// What may move when a fax goes to the printer: the order of the checks, and the place and text of its line.
struct FaxMove {
  ControlIndex control;
  TextNumber line;  ///< lines ascend by control
};
constexpr std::array<FaxMove, 6> kFaxMoves = {{
    {Control(u"lpBindPosit"), text::kBindingPositionBecomes},
    {Control(u"lpPRNType"), text::kPrintTypeBecomes},
    {Control(u"lpOutputTray"), text::kOutputTrayBecomes},
    {Control(u"lpMediaType"), text::kPaperTypeBecomes},
    {Control(u"lpMediaSource"), text::kPaperTrayBecomes},
    {Control(u"lpOutputPaper"), text::kPrintSizeBecomes},
}};
constexpr std::array<size_t, kFaxMoves.size()> kLineOrder = {5, 4, 3, 2, 0, 1};

void Tell(EngineView* view, TextNumber caption, const std::u16string& text) {
  if (view != nullptr) view->Show({GetUiString(caption), text, false});
}

/// The record's public part has one paper, which is the output's only where that is one of its own.
void CommitOutputPaper(const UiState& ui) {
  constexpr uint16_t kIndex = ParamNamed<u"lpOutputPaper">();
  const ValueFields fields = FieldsOf(ui, kIndex);
  const uint16_t media = Committed<u"lpMediaSize">(ui);
  const bool same = Committed<u"ZoomCheck">(ui) == 0 || *fields.value == kSameAsDocument;
  *fields.committed = static_cast<uint16_t>((same ? media : *fields.value) | (media & paper::kFamilyF));
  SlotAs<u"QXOutputPaperSize", uint16_t>(ui) = *fields.value;
  *SlotOf(ui, ParamIndexOf(param::kSavedZoomCheck)) = static_cast<uint8_t>(Setting<u"ZoomCheck">(ui));
}

void CommitAll(const UiState& ui) {
  for (uint16_t i = 0; i < kParamRows.size(); ++i) {
    if (!kParamRows[i].HasBlock()) continue;
    const ValueFields fields = FieldsOf(ui, i);
    *fields.committed = *fields.value;
  }
  CommitOutputPaper(ui);
}

/// The text of the list's item that has the control's value.
std::u16string_view ItemLabel(const Engine& engine, ControlIndex control) {
  ListBlock* list = engine.controls[control].list;
  if (list == nullptr) return {};
  const auto items = list->Items();
  const auto item = std::ranges::find(items, engine.Value(control), &ListItem::value);
  if (item == items.end()) return {};
  const std::u16string_view label(item->label, kLabelLength);
  return label.substr(0, label.find(u'\0'));
}

/// A fax without recipients goes to the printer.
void CheckRecipients(Engine& engine, EngineView* view) {
  const UiState& ui = *engine.ui;
  if (Setting<u"lpOutput">(ui) != value::lpOutput::kFax || ui.head().faxRowCount != 0) return;
  const bool locked = ui.head().printerDataLocked == 1;
  Setting<u"lpOutput">(ui) = value::lpOutput::kPrinter;
  EvaluateRules(engine, view);
  std::array<bool, kFaxMoves.size()> moved{};
  for (size_t i = 0; i < kFaxMoves.size(); ++i) {
    const uint16_t id = kControls[kFaxMoves[i].control].id;
    moved[i] = IsControlAvailable(engine, id) && SelectFirstAvailable(engine, id) == Selection::kMoved;
    if (moved[i]) EvaluateRules(engine, view);
  }
  CommitAll(ui);
  if (std::ranges::count(moved, true) == 0)
    return Tell(view, text::kFaxWithoutRecipients,
                GetUiString(locked ? text::kPrintsWithoutRecipients : text::kNoFaxDefaultWithoutRecipients));
  std::u16string text = GetUiString(locked ? text::kPrintsWithoutRecipientsChanges : text::kNoFaxDefaultChanges);
  for (const size_t i : kLineOrder) {
    if (moved[i])
      text += platform::ExpandText(GetUiString(kFaxMoves[i].line), {ItemLabel(engine, kFaxMoves[i].control)});
  }
  Tell(view, text::kFaxWithoutRecipients, text);
  EvaluateRules(engine, view);
}

/// A cover sheet does without a picture that isn't there.
void CheckCoverPicture(const UiState& ui, EngineView* view) {
  if (Setting<u"lpOutput">(ui) != value::lpOutput::kFax || !IsOn<u"CoverSheet">(ui) || !IsOn<u"FaxCover_Image">(ui))
    return;
  if (ui.stores.faxCover == nullptr) return;
  const std::u16string_view field(ui.stores.faxCover->filename, std::size(ui.stores.faxCover->filename));
  const std::u16string name(field.substr(0, field.find(u'\0')));
  if (name.empty() || platform::CanOpenFile(name.c_str())) return;
  std::u16string text = platform::ExpandText(u"\n'%s'\n", {std::u16string_view(name)});
  for (const TextNumber part :
       {text::kCoverPictureUnreadable, text::kCoverWithoutPicture, text::kChooseCoverPictureAgain})
    text += GetUiString(part);
  Tell(view, text::kFaxCoverPicture, text);
  const ValueFields image = FieldsOf(ui, ParamNamed<u"FaxCover_Image">());
  *image.value = *image.committed = 0;
}

}  // namespace

void CommitSettings(Engine& engine, EngineView* view) {
  DeriveLayout(*engine.ui);
  CommitAll(*engine.ui);
  CheckRecipients(engine, view);
  CheckCoverPicture(*engine.ui, view);
}

}  // namespace heron::engine
