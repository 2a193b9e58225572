#include "pages/binding_margin_dialog.h"

#include <algorithm>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "pages/dialog_pictures.h"
#include "pages/size_text.h"
#include "platform/api/text.h"

namespace heron::pages {

using engine::MarginRanges;
using engine::Setting;

namespace {

constexpr ControlId kParallel = engine::ControlId(u"lpMarginMode.Shift"),
                    kReduce = engine::ControlId(u"lpMarginMode.Reduce");
constexpr ControlId kFront = engine::ControlId(u"fMargin"), kFrontSpin = 2307, kFrontRange = 2308;
constexpr ControlId kBackLabel = 2309, kBack = engine::ControlId(u"bMargin"), kBackSpin = 2311, kBackRange = 2312;
constexpr ControlId kPicture = 2313, kEqual = engine::ControlId(u"MarginEqual_Check"), kFirstPaint = 2316;
constexpr size_t kMostDigits = 2;

enum Group : uint8_t { kMode, kMargins, kEquality };
constexpr ShownControl kControls[] = {
    {kParallel, kMode},           {kReduce, kMode},    {kFront, kMargins, kFrontSpin},
    {kBack, kMargins, kBackSpin}, {kEqual, kEquality},
};

std::u16string RangeLabel(int minimum, int maximum) {
  return platform::ExpandText(u"(%d-%dmm)", {int64_t{minimum}, int64_t{maximum}});
}

bool IsNumber(std::u16string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

BindingMarginDialog::BindingMarginDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

void BindingMarginDialog::OnInitialise() {
  const UiState& state = *engine().ui;
  kept_ = {Setting<u"lpBindMargin">(state), Setting<u"lpMarginMode">(state), Setting<u"MarginEqual_Check">(state),
           Setting<u"fMargin">(state), Setting<u"bMargin">(state)};
  SettingsView::OnInitialise();
  dialog().SetTextLimit(kFront, kMostDigits);
  dialog().SetTextLimit(kBack, kMostDigits);
  dialog().SetPicture(kPicture, MarginFrame(DescribeMargin(ui())), 0);
  waiting_ = UpdateRanges();
  ShowAll();
}

void BindingMarginDialog::OnGroupShown(uint8_t group) {
  if (group == kEquality) {
    const bool own = !engine::IsOn<u"MarginEqual_Check">(ui());
    for (const ControlId id : {kBackLabel, kBack, kBackSpin, kBackRange}) dialog().Enable(id, own);
  }
  dialog().Repaint(kPicture);
}

// -- ranges

/// Brings the settings into what the paper leaves room for. A reduction without room is given up.
BindingMarginDialog::Corrections BindingMarginDialog::UpdateRanges() {
  Corrections corrections;
  ranges_ = engine::BindingMarginRanges(ui());
  if ((ranges_.bits & (MarginRanges::kFrontEmpty | MarginRanges::kBackEmpty)) != 0) {
    corrections.gaveUp = true;
    Setting<u"lpMarginMode">(ui()) = value::lpMarginMode::kShift;
    ranges_ = engine::BindingMarginRanges(ui());
    dialog().Enable(kReduce, false);
  } else {
    corrections.front = (ranges_.bits & MarginRanges::kFrontChanged) != 0;
    corrections.back = (ranges_.bits & (MarginRanges::kBackChanged | MarginRanges::kBackFollows)) != 0;
    if (corrections.front) Setting<u"fMargin">(ui()) = static_cast<uint16_t>(ranges_.front);
    if (corrections.back) Setting<u"bMargin">(ui()) = static_cast<uint16_t>(ranges_.back);
  }
  dialog().SetText(kFrontRange, RangeLabel(ranges_.minFront, ranges_.maxFront));
  dialog().SetText(kBackRange, RangeLabel(ranges_.minBack, ranges_.maxBack));
  dialog().SetRange(kFrontSpin, ranges_.minFront, ranges_.maxFront);
  dialog().SetRange(kBackSpin, ranges_.minBack, ranges_.maxBack);
  ShowGroup(kMode);
  ShowGroup(kMargins);
  return corrections;
}

void BindingMarginDialog::TellCorrections(const Corrections& corrections) {
  std::u16string text;
  if (corrections.gaveUp) text = TextOf(text::kMarginModeChanged);
  if (corrections.front || corrections.back) text += TextOf(text::kMarginTooLarge);
  const auto add_line = [&](ControlId id) {
    text += platform::ExpandText(
        u"%s => %d mm\n", {engine::GetControlLabel(engine(), id), int64_t{engine::GetControlValue(engine(), id)}});
  };
  if (corrections.front) add_line(kFront);
  if (corrections.back) add_line(kBack);
  if (!text.empty()) Tell(text, TextOf(text::kBindingMarginRange), platform::MB_OK | platform::MB_ICONINFORMATION);
}

void BindingMarginDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id == kFirstPaint) TellCorrections(std::exchange(waiting_, {}));
  if (id == kPicture) DrawMargin(DescribeMargin(ui()), canvas, place);
}

// -- editing

void BindingMarginDialog::OnChanged(ControlId id) {
  Store(id);
  if (id == kEqual) {
    CopyFrontToBack();
    return ShowGroup(kEquality);
  }
  dialog().Repaint(kPicture);
  TellCorrections(UpdateRanges());
}

/// While both sides are to have the same margin.
void BindingMarginDialog::CopyFrontToBack() {
  if (!engine::IsOn<u"MarginEqual_Check">(ui())) return;
  const std::u16string text = dialog().Text(kFront);
  const uint16_t margin = std::min<uint16_t>(ParseNumber(text), static_cast<uint16_t>(ranges_.maxBack));
  dialog().SetText(kBack, text);
  dialog().SetPosition(kBackSpin, margin);
  Setting<u"bMargin">(ui()) = margin;
}

/// A 0 isn't stored while it is typed, as more digits may follow; it passes when the field is left.
void BindingMarginDialog::OnNumber(ControlId id, uint16_t number) {
  const auto highest = static_cast<uint16_t>(id == kFront ? ranges_.maxFront : ranges_.maxBack);
  if (number > highest) {
    dialog().SetText(id, NumberText(highest));
    dialog().SelectText(id, 0, std::u16string::npos);
  }
  if (number != 0) engine::SetControlValue(engine(), id, std::min(number, highest));
  if (id == kFront) CopyFrontToBack();
  dialog().Repaint(kPicture);
}

void BindingMarginDialog::OnButton(ControlId id) {
  if (id == platform::kOkButton && Validate(kFront) && Validate(kBack)) dialog().End(platform::IDOK);
  if (id != platform::kCancelButton) return;
  PutBack();
  dialog().End(platform::IDCANCEL);
}

bool BindingMarginDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  return (id != kFront && id != kBack) || AcceptsShortNumberKey(key);
}

bool BindingMarginDialog::MayLeave(ControlId id, ControlId to) {
  return (id != kFront && id != kBack) || to == platform::kCancelButton || to == 0 || Validate(id);
}

bool BindingMarginDialog::Validate(ControlId field) {
  const std::u16string text = dialog().Text(field);
  const int minimum = field == kFront ? ranges_.minFront : ranges_.minBack;
  const int maximum = field == kFront ? ranges_.maxFront : ranges_.maxBack;
  const int typed = ParseNumber(text);
  if (IsNumber(text) && typed <= maximum) {
    engine::SetControlValue(engine(), field, static_cast<uint16_t>(typed));
    return true;
  }
  const int replacement = IsNumber(text) ? maximum : minimum;
  dialog().Beep();
  dialog().SetText(field, NumberText(replacement));
  if (field == kFront) CopyFrontToBack();
  return Refuse(field, RangeText(text::kBindingMargin, minimum, maximum), TextOf(text::kBindingMarginField));
}

/// Also of a dialog that couldn't start, which shows no settings yet.
void BindingMarginDialog::PutBack() noexcept {
  const UiState& state = *engine().ui;
  Setting<u"lpBindMargin">(state) = kept_.bindMargin;
  Setting<u"lpMarginMode">(state) = kept_.marginMode;
  Setting<u"MarginEqual_Check">(state) = kept_.marginEqual;
  Setting<u"fMargin">(state) = kept_.front;
  Setting<u"bMargin">(state) = kept_.back;
}

}  // namespace heron::pages
