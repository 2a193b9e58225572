#include "scripted_desk.h"

#include <algorithm>
#include <exception>
#include <thread>

#include "platform/api/canvas.h"
#include "platform/api/text.h"

namespace heron::test {

using platform::ToUtf8;
using platform::TypedKey;

namespace {

/// Takes every drawing and keeps none.
class BlankCanvas : public platform::Canvas {
 public:
  int Escape(uint32_t, std::span<const uint8_t>, std::span<uint8_t>) override { return 0; }
  int DeviceCap(platform::DeviceCap) override { return 0; }
  platform::SIZE MeasureText(const platform::LOGFONTW&, std::u16string_view) override { return {0, 0}; }
  std::vector<platform::FontFamily> FontFamilies() override { return {}; }
  void DrawLine(const platform::TextDrawing&, const std::optional<platform::RECT>&) override {}
  void FillRect(const platform::RECT&, platform::COLORREF, const std::optional<platform::RECT>&) override {}
  void DrawPicture(const platform::RECT&, const platform::Picture&, const std::optional<platform::RECT>&) override {}
  bool StartPage() override { return true; }
  bool EndPage() override { return true; }
};

/// The template of a dialog.
const platform::DialogTemplate& TemplateOf(uint16_t number) {
  static const platform::DialogTemplate kNone;
  const auto found = Templates().find(number);
  if (found != Templates().end()) return found->second;
  ADD_FAILURE() << "dialog " << number << " has no template";
  return kNone;
}

}  // namespace

ScriptedDialog::ScriptedDialog(ScriptedDesk& desk, uint16_t number, platform::DialogLogic* logic)
    : desk_(desk), number_(number), logic_(logic), template_(TemplateOf(number)) {
  for (const platform::ControlTemplate& control : template_.controls) {
    if (control.id == 0) continue;
    Control& made = controls_[control.id];
    made.text = control.label;
    if (control.limit > 0) made.limit = static_cast<size_t>(control.limit);
  }
}

// -- the user

bool ScriptedDialog::MoveFocus(ControlName to) {
  if (focused_ != 0 && focused_ != to && !logic_->LeavesFocus(focused_, to)) return false;
  focused_ = to;
  return true;
}

/// What can't be used by a person can't be used by a script.
bool ScriptedDialog::Reach(ControlId id) {
  const Control& control = Of(id);
  if (!Has(id) || !control.enabled || !control.visible) {
    ADD_FAILURE() << "control " << NameOfControl(id) << " of dialog " << number_
                  << (!Has(id)          ? " doesn't exist"
                      : control.visible ? " is disabled"
                                        : " is hidden");
    return false;
  }
  return MoveFocus(id);
}

bool ScriptedDialog::Click(ControlName id) {
  if (!Reach(id)) return false;
  logic_->Clicked(id);
  return true;
}

bool ScriptedDialog::Check(ControlName id, bool on) {
  if (!Reach(id)) return false;
  EXPECT_NE(Of(id).checked, on) << NameOfControl(id);
  Of(id).checked = on;
  logic_->Clicked(id);
  return true;
}

bool ScriptedDialog::Press(ControlName id) {
  if (!Reach(id)) return false;
  SetChecked(id, true);
  logic_->Clicked(id);
  return true;
}

bool ScriptedDialog::Select(ControlName id, int row) {
  if (!Reach(id)) return false;
  Of(id).selected = {row};
  logic_->RowSelected(id);
  return true;
}

bool ScriptedDialog::Choose(ControlName id, std::u16string_view text) {
  const auto& rows = Of(id).rows;
  const auto row = std::ranges::find(rows, text, &platform::ListRow::text);
  if (row == rows.end()) {
    ADD_FAILURE() << "list " << NameOfControl(id) << " of dialog " << number_ << " has no row " << ToUtf8(text);
    return false;
  }
  return Select(id, static_cast<int>(row - rows.begin()));
}

bool ScriptedDialog::Type(ControlName id, std::u16string_view keys) {
  if (!Reach(id)) return false;
  SelectText(id, 0, std::u16string::npos);
  if (keys.empty()) Put(id, {});
  Append(id, keys);
  return true;
}

void ScriptedDialog::Append(ControlName id, std::u16string_view keys) {
  Control& control = Of(id);
  focused_ = id;
  for (const char16_t key : keys) {
    const std::u16string before = control.text;
    if (!logic_->TakesKey(id, {key, before, control.selection_start, control.selection_end})) continue;
    if (before.size() - (control.selection_end - control.selection_start) >= control.limit) continue;
    control.text.replace(control.selection_start, control.selection_end - control.selection_start, 1, key);
    control.selection_end = ++control.selection_start;
    logic_->TextChanged(id);
  }
}

void ScriptedDialog::Put(ControlName id, std::u16string_view text) {
  focused_ = id;
  SetText(id, text);
  logic_->TextChanged(id);
}

void ScriptedDialog::Spin(ControlName id, int position) {
  ASSERT_TRUE(Of(id).enabled) << NameOfControl(id);
  Of(id).position = std::clamp(position, Of(id).minimum, Of(id).maximum);
  logic_->PositionChanged(id);
}

bool ScriptedDialog::SelectSeveral(ControlName id, std::vector<int> rows) {
  if (!Reach(id)) return false;
  EXPECT_TRUE(PlanOf(id).several) << NameOfControl(id);
  std::ranges::sort(rows);
  Of(id).selected = std::move(rows);
  logic_->RowSelected(id);
  return true;
}

bool ScriptedDialog::Activate(ControlName id, int row) {
  if (!Reach(id)) return false;
  ClickRow(id, row);
  logic_->RowActivated(id);
  return true;
}

void ScriptedDialog::ClickRow(ControlName id, int row) {
  if (!Reach(id)) return;
  const std::vector<int> wanted = row == platform::kNoRow ? std::vector<int>() : std::vector{row};
  if (Of(id).selected != wanted) {
    Of(id).selected = wanted;
    logic_->RowSelected(id);
  }
  logic_->RowClicked(id, row);
}

void ScriptedDialog::ClickHeading(ControlName id, int column) {
  if (Reach(id)) logic_->HeadingClicked(id, column);
}

void ScriptedDialog::PressKey(ControlName id, platform::ListKey key) {
  using platform::ListKey;
  constexpr int kRowsOfPage = 5;
  if (!Reach(id) || logic_->TakesListKey(id, key)) return;
  const int last = static_cast<int>(Of(id).rows.size()) - 1;
  const int row = SelectedRow(id);
  int to = row;
  if (key == ListKey::kUp) to = row - 1;
  if (key == ListKey::kDown) to = row + 1;
  if (key == ListKey::kPageUp) to = row - kRowsOfPage;
  if (key == ListKey::kPageDown) to = row + kRowsOfPage;
  if (key == ListKey::kHome) to = 0;
  if (key == ListKey::kEnd) to = last;
  to = std::min(std::max(to, 0), last);
  if (key >= ListKey::kSpace || to == row) return;
  Of(id).selected = {to};
  logic_->RowSelected(id);
}

void ScriptedDialog::DragRow(ControlName id, int from, int to) {
  if (!Reach(id)) return;
  EXPECT_TRUE(PlanOf(id).moves) << NameOfControl(id);
  logic_->RowMoved(id, from, to);
}

void ScriptedDialog::Point(ControlId id, platform::PointerAction action, int x, int y) {
  using platform::PointerAction;
  const Control& control = Of(id);
  if (!control.enabled || !control.visible) return;
  if (action == PointerAction::kPress) held_ = id;
  if (action == PointerAction::kRelease) held_ = 0;
  logic_->PointerMoved(id, {.action = action, .at = {x, y}, .held = held_ == id});
}

void ScriptedDialog::Tick() {
  ASSERT_NE(timer, 0U) << "dialog " << number_ << " has no timer";
  logic_->TimerFired();
}

void ScriptedDialog::Paint(ControlName id) {
  BlankCanvas canvas;
  Paint(id, canvas, platform::RECT{0, 0, 1, 1});
}

std::string ScriptedDialog::TextOf(ControlName id) const {
  return ToUtf8((*this)[id].text);
}

std::vector<std::string> ScriptedDialog::RowsOf(ControlName id) const {
  std::vector<std::string> texts;
  for (const platform::ListRow& row : (*this)[id].rows) {
    texts.push_back(ToUtf8(row.text));
    for (const std::u16string& cell : row.cells) texts.back() += "|" + ToUtf8(cell);
  }
  return texts;
}

std::string ScriptedDialog::SelectedText(ControlName id) const {
  const int row = SelectedRow(id);
  return row == platform::kNoRow ? std::string("none") : ToUtf8((*this)[id].rows[static_cast<size_t>(row)].text);
}

// -- the dialog

const ScriptedDialog::Control& ScriptedDialog::operator[](ControlName id) const {
  const auto found = controls_.find(id);
  return found == controls_.end() ? none_ : found->second;
}

/// Of a number that the template hasn't got, a control that nobody sees.
ScriptedDialog::Control& ScriptedDialog::Of(ControlId id) {
  const auto found = controls_.find(id);
  if (found != controls_.end()) return found->second;
  strangers_.insert(id);
  return none_ = {};
}

/// Of a number that the template hasn't got, nothing.
const platform::ControlTemplate& ScriptedDialog::PlanOf(ControlId id) const {
  static const platform::ControlTemplate kNone;
  const auto row = std::ranges::find(template_.controls, id, &platform::ControlTemplate::id);
  return row == template_.controls.end() ? kNone : *row;
}

platform::RECT ScriptedDialog::PlaceArea(ControlId id) const {
  const platform::ControlTemplate& plan = PlanOf(id);
  return {0, 0, plan.width, plan.height};
}

std::optional<platform::PixelImage> ScriptedDialog::Pixels(uint32_t number) const {
  const auto found = desk_.pictures.find(number);
  return found == desk_.pictures.end() ? std::nullopt : std::optional(found->second);
}

std::vector<platform::FontFamily> ScriptedDialog::FontFamilies() const {
  return desk_.families;
}

std::optional<std::u16string> ScriptedDialog::AskFileName(const platform::FileQuestion& question) {
  return desk_.TakePath(question.title);
}

std::optional<std::u16string> ScriptedDialog::AskFolder(std::u16string_view title, std::u16string_view) {
  return desk_.TakePath(title);
}

/// On a thread of its own, as in windows, so that a sanitizer sees what the work shares.
bool ScriptedDialog::RunBusy(const platform::BusyWork& busy) {
  std::exception_ptr failure;
  std::stop_source stop;
  if (desk_.cancels_busy) stop.request_stop();
  std::thread([&] {
    try {
      busy.work(stop.get_token());
    } catch (...) {
      failure = std::current_exception();
    }
  }).join();
  if (failure != nullptr) std::rethrow_exception(failure);
  return !desk_.cancels_busy;
}

bool ScriptedDialog::Has(ControlId id) const {
  return controls_.contains(id);
}

std::vector<ControlId> ScriptedDialog::Controls() const {
  std::vector<ControlId> ids;
  for (const platform::ControlTemplate& control : template_.controls) {
    if (control.id != 0) ids.push_back(control.id);
  }
  return ids;
}

/// The engine enables whatever its rules name, on a template or not.
void ScriptedDialog::Enable(ControlId id, bool enabled) {
  if (Has(id)) controls_[id].enabled = enabled;
}

/// Of a set of radios one is checked.
void ScriptedDialog::SetChecked(ControlId id, bool checked) {
  const auto row = std::ranges::find(template_.controls, id, &platform::ControlTemplate::id);
  if (checked && row != template_.controls.end() && !row->set.empty()) {
    for (const platform::ControlTemplate& other : template_.controls) {
      if (other.set == row->set) controls_[other.id].checked = false;
    }
  }
  Of(id).checked = checked;
}

void ScriptedDialog::SetText(ControlId id, std::u16string_view text) {
  Control& control = Of(id);
  control.text = text;
  control.selection_start = control.selection_end = text.size();
}

void ScriptedDialog::SelectText(ControlId id, size_t first, size_t count) {
  Control& control = Of(id);
  control.selection_start = std::min(first, control.text.size());
  control.selection_end = control.selection_start + std::min(count, control.text.size() - control.selection_start);
}

void ScriptedDialog::SetRange(ControlId id, int minimum, int maximum) {
  Of(id).minimum = minimum;
  Of(id).maximum = maximum;
}

void ScriptedDialog::SetRows(ControlId id, std::span<const platform::ListRow> rows) {
  Of(id).rows = {rows.begin(), rows.end()};
  Of(id).selected.clear();
}

void ScriptedDialog::SelectRow(ControlId id, int row) {
  Of(id).selected.clear();
  if (row != platform::kNoRow) Of(id).selected.push_back(row);
}

int ScriptedDialog::SelectedRow(ControlId id) const {
  const Control& control = (*this)[id];
  return control.selected.empty() ? platform::kNoRow : control.selected.front();
}

int ScriptedDialog::RunDialog(uint16_t dialog, platform::DialogLogic* logic) {
  return desk_.Run(dialog, logic);
}

void ScriptedDialog::End(int result) {
  ended_ = true;
  result_ = result;
}

uint16_t ScriptedDialog::PopupMenu(ControlId, std::span<const platform::MenuItem> items) {
  menu = {items.begin(), items.end()};
  while_menu_is_open();
  return std::exchange(menu_choice, uint16_t{0});
}

// -- the desk

ScriptedDesk::~ScriptedDesk() {
  platform::InstallMessageDesk(nullptr);
  EXPECT_TRUE(answers_.empty() && paths_.empty()) << "an answer was never asked for";
  for (const auto& [dialog, script] : dialogs_) ADD_FAILURE() << "dialog " << dialog << " never opened";
}

int ScriptedDesk::Show(platform::HWND, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) {
  const bool asks = (flags & platform::kButtonsMask) != platform::MB_OK;
  if (!told_.empty()) told_ += " / ";
  told_ += ToUtf8(caption) + "|" + ToUtf8(text) + (asks ? "?" : "");
  if (!asks) return platform::IDOK;
  if (answers_.empty()) {
    ADD_FAILURE() << "nobody answers: " << told_;
    return platform::IDNO;
  }
  const int answer = answers_.front();
  answers_.pop_front();
  return answer;
}

std::optional<std::u16string> ScriptedDesk::TakePath(std::u16string_view title) {
  if (!told_.empty()) told_ += " / ";
  told_ += ToUtf8(title) + "|path?";
  if (paths_.empty()) return std::nullopt;
  auto path = std::move(paths_.front());
  paths_.pop_front();
  return path;
}

int ScriptedDesk::Run(uint16_t number, platform::DialogLogic* logic) {
  if (dialogs_.empty() || dialogs_.front().first != number) {
    ADD_FAILURE() << "dialog " << number << " wasn't expected";
    return -1;
  }
  const Script script = dialogs_.front().second;
  dialogs_.pop_front();
  ScriptedDialog dialog(*this, number, logic);
  while_starting([&] { logic->Initialise(&dialog); });
  if (!dialog.ended()) script(dialog);
  EXPECT_TRUE(dialog.ended()) << "dialog " << number << " was left open";
  logic->Destroy();
  return dialog.ended() ? dialog.result() : platform::IDCANCEL;
}

}  // namespace heron::test
