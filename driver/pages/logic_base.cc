#include "pages/logic_base.h"

#include <new>

#include "catalog/strings.h"
#include "platform/api/text.h"

namespace heron::pages {

using platform::TypedKey;

std::u16string TextOf(uint32_t number) {
  return GetUiString(number);
}

template <typename Work>
void LogicBase::Try(Work&& work) {
  if (dialog_ == nullptr) return;
  try {
    work();
  } catch (const std::bad_alloc&) {
    telling_ = false;
  }
}

template <typename Work>
bool LogicBase::TryOr(bool otherwise, Work&& work) {
  bool result = otherwise;
  Try([&] { result = work(); });
  return result;
}

void LogicBase::Initialise(platform::Dialog* dialog) {
  dialog_ = dialog;
  if (TryOr(false, [&] { return OnInitialise(), true; })) return;
  // Nothing would answer its buttons any more.
  dialog_ = nullptr;
  OnNotStarted();
  dialog->End(platform::IDCANCEL);
}

void LogicBase::Destroy() {
  Try([&] { OnDestroy(); });
  dialog_ = nullptr;
}

void LogicBase::Clicked(ControlId id) {
  Try([&] { OnClicked(id); });
}
void LogicBase::RowSelected(ControlId id) {
  Try([&] { OnRowSelected(id); });
}
void LogicBase::RowActivated(ControlId id) {
  Try([&] { OnRowActivated(id); });
}
void LogicBase::RowClicked(ControlId id, int row) {
  Try([&] { OnRowClicked(id, row); });
}
bool LogicBase::TakesListKey(ControlId id, platform::ListKey key) {
  return TryOr(false, [&] { return OnListKey(id, key); });
}
void LogicBase::RowMoved(ControlId id, int from, int to) {
  Try([&] { OnRowMoved(id, from, to); });
}
void LogicBase::HeadingClicked(ControlId id, int column) {
  Try([&] { OnHeadingClicked(id, column); });
}
void LogicBase::TextChanged(ControlId id) {
  Try([&] { OnTextChanged(id); });
}
void LogicBase::PositionChanged(ControlId id) {
  Try([&] { OnPositionChanged(id); });
}
void LogicBase::Draw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  Try([&] { OnDraw(id, canvas, place); });
}
void LogicBase::PointerMoved(ControlId id, const platform::PointerEvent& event) {
  Try([&] { OnPointer(id, event); });
}
void LogicBase::TimerFired() {
  Try([&] { OnTimer(); });
}
void LogicBase::Activate() {
  Try([&] { OnActivate(); });
}
void LogicBase::Reset() {
  Try([&] { OnReset(); });
}
void LogicBase::Help(ControlId id) {
  Try([&] { OnHelp(id); });
}

bool LogicBase::TakesKey(ControlId id, const TypedKey& key) {
  return TryOr(true, [&] {
    const bool takes = AcceptsKey(id, key);
    if (!takes) dialog().Beep();
    return takes;
  });
}

bool LogicBase::LeavesFocus(ControlId id, ControlId to) {
  return telling_ || TryOr(true, [&] { return MayLeave(id, to); });
}

bool LogicBase::Deactivate() {
  return TryOr(true, [&] { return OnDeactivate(); });
}

// What couldn't be committed must not look as if it had been: the sheet stays open.
bool LogicBase::Apply() {
  return dialog_ == nullptr || TryOr(false, [&] { return OnApply(); });
}

int LogicBase::Tell(const std::u16string& text, const std::u16string& caption, platform::DWORD flags) {
  telling_ = true;
  const int answer = platform::MessageBoxW(dialog().Window(), text.c_str(), caption.c_str(), flags);
  telling_ = false;
  return answer;
}

bool LogicBase::Refuse(ControlId field, const std::u16string& text, const std::u16string& caption) {
  Tell(text, caption, platform::MB_OK | platform::MB_ICONEXCLAMATION);
  dialog().Focus(field);
  dialog().SelectText(field, 0, std::u16string::npos);
  return false;
}

bool LogicBase::RefuseCleared(ControlId field, const std::u16string& text, const std::u16string& caption) {
  dialog().Beep();
  dialog().SetText(field, {});
  return Refuse(field, text, caption);
}

std::u16string LogicBase::RangeText(uint32_t name, int64_t minimum, int64_t maximum) {
  return platform::ExpandText(GetUiString(21014), {GetUiString(name), minimum, maximum});
}

}  // namespace heron::pages
