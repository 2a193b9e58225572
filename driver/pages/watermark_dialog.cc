#include "pages/watermark_dialog.h"

#include <algorithm>

#include "catalog/strings.h"
#include "forms/watermark_list.h"
#include "generated/texts.h"
#include "pages/settings_view.h"
#include "pages/watermark_controls.h"

namespace heron::pages {

using namespace mark;
using platform::kCancelButton;
using platform::kOkButton;
using platform::PointerAction;
using preview::PaperFrame;

namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

bool Contains(const platform::RECT& area, platform::POINT at) {
  return at.x >= area.left && at.x < area.right && at.y >= area.top && at.y < area.bottom;
}

bool AcceptsSizeKey(const platform::TypedKey& key) {
  if (!IsDigit(key.character)) return false;
  const size_t caret = key.selection_start;
  return key.character != u'0' || (caret != 0 && !(caret == 1 && key.text.starts_with(u'0')));
}

/// A sign only in front of a number that can be negative; no 0 in front of a number.
bool AcceptsAngleKey(const platform::TypedKey& key) {
  const size_t caret = key.selection_start;
  const bool replaces = key.selection_start != key.selection_end;
  const bool negative = key.text.starts_with(u'-');
  if (negative && caret == 0 && !replaces) return false;
  if (key.character == u'-') {
    if (key.text.empty() || (caret == 0 && replaces)) return true;
    return caret == 0 && !negative && ParseSigned(key.text).value_or(0) <= kDegrees;
  }
  if (!IsDigit(key.character)) return false;
  if (key.character != u'0' || replaces) return true;
  if (caret == 0) return key.text.empty();
  return !(caret == 1 && (negative || key.text.starts_with(u'0')));
}

}  // namespace

// -- the list

void WatermarkDialog::OnRowSelected(ControlId id) {
  const int row = dialog().SelectedRow(id);
  if (row < 0) return;
  if (id == kList) return SelectEntry(row);
  if (!Edits()) return;
  if (id == kFont && row < static_cast<int>(families_.size()))
    SetMarkFont(entry(), families_[static_cast<size_t>(row)].name);
  if (id == kStyle) entry().style = static_cast<uint32_t>(row + 1);
  FillList();
  Repaint();
}

void WatermarkDialog::SelectEntry(int index) {
  if (index >= WatermarksIn(store())) return;
  selected_ = index;
  Show(kAllButList);
  EnableEditing();
}

void WatermarkDialog::AddEntry() {
  const int added = AddWatermark(store());
  if (added == 0) return;
  selected_ = added;
  Show(kEverything);
  EnableEditing();
  dialog().SetText(kText, {});
  dialog().Focus(kText);
  dialog().Enable(kNew, WatermarksIn(store()) < kWatermarkCount);
}

void WatermarkDialog::DeleteEntry() {
  if (!RemoveWatermark(store(), selected_)) return;
  --selected_;
  Show(kEverything);
  if (!Edits()) dialog().Focus(kList);
  EnableEditing();
  dialog().Enable(kNew, WatermarksIn(store()) < kWatermarkCount);
}

void WatermarkDialog::RestoreEntry() {
  if (!Edits()) return;
  RestoreWatermark(store(), entry());
  Show(kAllButText);
  FillList();
}

// -- buttons

void WatermarkDialog::OnClicked(ControlId id) {
  switch (id) {
    case kNew:
      return AddEntry();
    case kDelete:
      return DeleteEntry();
    case kCenter:
      return SetCenter({0, 0});
    case kRestore:
      return RestoreEntry();
    case kHelp:
      return OnHelp(0);
    case kOkButton:
      return Confirm();
    case kCancelButton:
      return dialog().End(platform::IDCANCEL);
    default:
      return;
  }
}

void WatermarkDialog::Confirm() {
  closing_ = true;
  const bool good = !Edits() || CheckSize(kOkButton);
  closing_ = false;
  if (!good) return;
  SlotAs<u"bWatermarkCurrent", uint8_t>(ui()) = static_cast<uint8_t>(selected_);
  dialog().End(platform::IDOK);
}

// -- fields and bars

void WatermarkDialog::OnTextChanged(ControlId id) {
  if (!Edits()) return;
  if (id == kText) TakeText();
  if (id == kSize) TakeSize();
  if (id == kAngle) TakeAngle();
  Repaint();
}

void WatermarkDialog::TakeText() {
  SetMarkText(entry(), dialog().Text(kText));
  FillList();
}

/// A number below the smallest stays while it is typed, as more digits may follow.
void WatermarkDialog::TakeSize() {
  const int typed = ParseNumber(dialog().Text(kSize));
  const int size = std::min(typed, kMarkSize.highest);
  if (size != typed) Rewrite(kSize, size);
  entry().size = static_cast<uint32_t>(size);
  dialog().SetPosition(kSizeBar, size);
  dialog().SetPosition(kSizeSpin, size);
}

void WatermarkDialog::TakeAngle() {
  const int typed = ParseSigned(dialog().Text(kAngle)).value_or(0);
  const int degrees = std::clamp(typed, -kDegrees, kDegrees);
  if (degrees != typed) Rewrite(kAngle, degrees);
  entry().angle = degrees * 10;
  dialog().SetPosition(kAngleSlider, degrees);
  dialog().SetPosition(kAngleSpin, degrees);
}

void WatermarkDialog::OnPositionChanged(ControlId id) {
  if (!Edits()) return;
  const int position = dialog().Position(id);
  if (id == kSizeBar || id == kSizeSpin) {
    entry().size = static_cast<uint32_t>(std::clamp(position, kMarkSize.lowest, kMarkSize.highest));
    SetSize(static_cast<int>(entry().size));
  }
  if (id == kAngleSpin || id == kAngleSlider) {
    entry().angle = std::clamp(position, -kDegrees, kDegrees) * 10;
    SetAngle(entry().angle / 10);
  }
  if (id == kShade) {
    entry().color = static_cast<uint32_t>(kDeepest - std::clamp(position, kMarkShade.lowest, kMarkShade.highest));
    FillList();
  }
  if (id == kAcross) return SetCenter({position, MarkCenterY(entry())});
  if (id == kDown) return SetCenter({MarkCenterX(entry()), position});
  Repaint();
}

void WatermarkDialog::SetSize(int size) {
  dialog().SetText(kSize, NumberText(size));
  dialog().SetPosition(kSizeBar, size);
  dialog().SetPosition(kSizeSpin, size);
}

void WatermarkDialog::SetAngle(int degrees) {
  dialog().SetText(kAngle, NumberText(degrees));
  dialog().SetPosition(kAngleSpin, degrees);
  dialog().SetPosition(kAngleSlider, degrees);
}

void WatermarkDialog::SetCenter(platform::POINT center) {
  if (!Edits()) return;
  SetMarkCenter(entry(), center.x, center.y);
  ShowCenter(kAcrossPart | kDownPart);
  Repaint();
}

void WatermarkDialog::Rewrite(ControlId field, int number) {
  dialog().SetText(field, NumberText(number));
  dialog().Focus(field);
  dialog().SelectText(field, 0, std::u16string::npos);
}

bool WatermarkDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  if (key.character < u' ') return true;
  if (id == kSize) return AcceptsSizeKey(key);
  return id != kAngle || AcceptsAngleKey(key);
}

// -- leaving a field

bool WatermarkDialog::MayLeave(ControlId id, ControlId to) {
  constexpr ControlId kUnchecked[] = {kCancelButton, 0, kRestore, kDelete};
  if (closing_ || !Edits() || std::ranges::count(kUnchecked, to) != 0) return true;
  if (id == kSize) return CheckSize(to);
  return id != kAngle || CheckAngle(to);
}

bool WatermarkDialog::CheckSize(ControlId to) {
  const std::u16string text = dialog().Text(kSize);
  const int size = std::ranges::all_of(text, IsDigit) ? ParseNumber(text) : 0;
  if (kMarkSize.Has(size)) return true;
  const int nearest = std::clamp(size, kMarkSize.lowest, kMarkSize.highest);
  entry().size = static_cast<uint32_t>(nearest);
  SetSize(nearest);
  return RefuseNumber(kSize, to, nearest, RangeText(text::kMarkSize, kMarkSize.lowest, kMarkSize.highest));
}

bool WatermarkDialog::CheckAngle(ControlId to) {
  const std::optional<int32_t> angle = ParseSigned(dialog().Text(kAngle));
  if (angle && *angle >= -kDegrees && *angle <= kDegrees) return true;
  const int nearest = std::clamp(angle.value_or(0), -kDegrees, kDegrees);
  entry().angle = nearest * 10;
  SetAngle(nearest);
  return RefuseNumber(kAngle, to, nearest, RangeText(text::kAngle, -kDegrees, kDegrees));
}

/// Who goes on to a bar sees what became of the number; everybody else is told.
bool WatermarkDialog::RefuseNumber(ControlId field, ControlId to, int number, const std::u16string& text) {
  constexpr ControlId kBars[] = {kAngleSlider, kShade, kSizeBar, kAcross, kDown};
  Repaint();
  if (std::ranges::count(kBars, to) == 0) return Refuse(field, text, TextOf(text::kWatermarkCaption));
  Rewrite(field, number);
  return false;
}

// -- the pointer in the picture

void WatermarkDialog::OnPointer(ControlId id, const platform::PointerEvent& event) {
  if (id != kPicture || !Edits()) return;
  const PaperFrame frame = Frame();
  const bool inside = Contains(frame.paper, event.at);
  const bool presses = event.action == PointerAction::kPress && inside;
  const bool drags = event.action == PointerAction::kMove && event.held;
  if (!presses && !drags) return dialog().SetCursor(kPicture, inside ? platform::kAimCursor : platform::kArrowCursor);
  const platform::POINT limits = preview::CenterLimits(frame);
  const auto [x, y] = preview::CenterAt(frame, event.at);
  dialog().SetCursor(kPicture, platform::kDragCursor);
  SetCenter({std::clamp(x, -limits.x, limits.x), std::clamp(y, -limits.y, limits.y)});
}

}  // namespace heron::pages
