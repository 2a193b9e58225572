#include "pages/custom_size_dialog.h"

#include <algorithm>

#include "catalog/strings.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/texts.h"
#include "pages/dialog_pictures.h"
#include "pages/size_text.h"
#include "platform/api/spooler.h"
#include "platform/api/text.h"

namespace heron::pages {

using engine::Setting;
using platform::kCancelButton;
using platform::kOkButton;

namespace {

constexpr ControlId kList = 2201, kName = 2215;
constexpr ControlId kMillimetres = 2218, kInches = 2219;
constexpr ControlId kSourceNote = 2212, kPicture = 2213;
constexpr size_t kNameLimit = 31;

/// The settings of a target: its paper, and number, size (tenths of a millimetre) and unit of its custom paper.
struct TargetSettings {
  uint16_t &paper, &number, &width, &length, &unit;
};
TargetSettings SettingsOf(const UiState& ui, PaperTarget target) {
  if (target == PaperTarget::kOriginal)
    return {Setting<u"lpMediaSize">(ui), Setting<u"lpUDPaperType">(ui), Setting<u"UDPaperWidth">(ui),
            Setting<u"UDPaperLength">(ui), Setting<u"lpUDPaperUnit">(ui)};
  return {Setting<u"lpOutputPaper">(ui), Setting<u"lpUDMediaType">(ui), Setting<u"UDMediaWidth">(ui),
          Setting<u"UDMediaLength">(ui), Setting<u"lpUDMediaUnit">(ui)};
}

/// Which paper sources a custom paper can come from.
struct Sources {
  int allowed = 0;
  bool current = false;
};

Sources SourcesForCustom(engine::Engine& engine, PaperTarget target) {
  uint16_t& paper = SettingsOf(*engine.ui, target).paper;
  const uint16_t before = std::exchange(paper, static_cast<uint16_t>(kLastUserPaper));
  constexpr uint16_t kSource = engine::ControlId(u"lpMediaSource");
  engine::ComputeItemStatus(engine, kSource);
  Sources sources;
  for (const ListItem& item : engine::GetControlBlock(engine, kSource)->Items()) {
    if (item.status != engine::kItemAllowed) continue;
    ++sources.allowed;
    if (item.value == engine::GetControlValue(engine, kSource)) sources.current = true;
  }
  paper = before;
  engine::ComputeItemStatus(engine, kSource);
  return sources;
}

}  // namespace

uint16_t& CustomSizeDialog::Number() const {
  return SettingsOf(ui(), target_).number;
}

CustomPaperEntry& CustomSizeDialog::Entry() const {
  return *CustomEntry(ui(), Number());
}

int CustomSizeDialog::Unit() const {
  return UnitOf(Entry());
}

CustomSizeDialog::Side* CustomSizeDialog::SideOf(ControlId control) {
  for (Side* side : {&width_, &length_}) {
    if (control == side->field || control == side->spin) return side;
  }
  return nullptr;
}

// -- opening and showing

void CustomSizeDialog::OnInitialise() {
  const uint16_t paper = SettingsOf(ui(), target_).paper;
  if (IsCustomPaper(paper)) Number() = static_cast<uint16_t>(CustomPaperNumber(paper));
  Number() = std::clamp<uint16_t>(Number(), 1, kUserPaperCount);
  if (CustomEntry(ui(), Number()) == nullptr) return dialog().End(platform::IDCANCEL);
  dialog().SetTextLimit(kName, kNameLimit);
  LoadEntry();
  ShowEntry();
  Lock();
}

/// Takes unit, limits and shown sizes from the selected entry.
void CustomSizeDialog::LoadEntry() {
  const CustomPaperEntry& entry = Entry();
  const SourceLimit& limit = engine::LimitOfSource(ui(), UnitOf(entry));
  width_.minimum = static_cast<uint32_t>(limit.minWidth);
  width_.maximum = static_cast<uint32_t>(limit.maxWidth);
  length_.minimum = static_cast<uint32_t>(limit.minLength);
  length_.maximum = static_cast<uint32_t>(limit.maxLength);
  for (Side* side : {&width_, &length_}) {
    side->value = ShownFromThou(UnitOf(entry), entry.*side->size);
    dialog().SetRange(side->spin, static_cast<int>(side->minimum), static_cast<int>(side->maximum));
    dialog().SetTextLimit(side->field, SizeTextLimit(UnitOf(entry)));
  }
}

void CustomSizeDialog::ShowEntry() {
  const CustomPaperEntry& entry = Entry();
  ShowList();
  dialog().SetText(kName, CustomPaperName(entry));
  dialog().SetChecked(kMillimetres, UnitOf(entry) != kInch);
  dialog().SetChecked(kInches, UnitOf(entry) == kInch);
  for (const Side* side : {&width_, &length_}) {
    ShowSide(*side);
    dialog().SetText(side->range,
                     ExpandSizes(UnitOf(entry), {u"( %ld.%01ld - %ld.%01ldmm )", u"( %ld.%ld - %ld.%03ldinch )"},
                                 side->minimum, side->maximum));
  }
  std::u16string note;
  if (SourcesForCustom(sheet_.engine(), target_).current)
    note = platform::ExpandText(GetUiString(text::kRangesOfTray),
                                {GetUiString(engine::LimitOfSource(ui(), UnitOf(entry)).label)});
  dialog().SetText(kSourceNote, note);
  dialog().Repaint(kPicture);
}

void CustomSizeDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id == kPicture) DrawPaper(Entry().width, Entry().height, canvas, place);
}

void CustomSizeDialog::ShowSide(const Side& side) {
  dialog().SetText(side.field, FormatSize(Unit(), side.value));
  dialog().SetPosition(side.spin, static_cast<int>(side.value));
}

void CustomSizeDialog::ShowList() {
  std::vector<platform::ListRow> rows(kUserPaperCount);
  for (int n = 1; n <= kUserPaperCount; ++n)
    rows[static_cast<size_t>(n - 1)].text = FormatCustomName(ui(), n, CustomName::kNameWithSize);
  dialog().SetRows(kList, rows);
  dialog().SelectRow(kList, Number() - 1);
}

/// Who may not change the printer's data can choose among the entries all the same.
void CustomSizeDialog::Lock() {
  if (ui().head().uiEditable == 0) {
    for (const ControlId id : dialog().Controls()) dialog().Enable(id, false);
    return;
  }
  if (ui().head().printerDataLocked == 0 && CanWritePrinterData()) return;
  for (const ControlId id : {kName, width_.field, width_.spin, length_.field, length_.spin, kMillimetres, kInches})
    dialog().Enable(id, false);
}

bool CustomSizeDialog::CanWritePrinterData() const {
  constexpr char16_t kProbe[] = u"DUMMY";
  const uint8_t byte = 0;
  if (platform::SetPrinterDataW(ui().printer, kProbe, platform::REG_BINARY, &byte, sizeof byte) != 0) return false;
  platform::DeletePrinterDataW(ui().printer, kProbe);
  return true;
}

// -- editing

void CustomSizeDialog::OnClicked(ControlId id) {
  if (id == kOkButton) return Confirm();
  if (id == kCancelButton) return dialog().End(platform::IDCANCEL);
  if (id == kMillimetres && dialog().IsChecked(id)) ChangeUnit(kMillimetre);
  if (id == kInches && dialog().IsChecked(id)) ChangeUnit(kInch);
}

void CustomSizeDialog::OnRowSelected(ControlId id) {
  const int row = dialog().SelectedRow(kList);
  if (id != kList || row < 0 || row >= kUserPaperCount) return;
  Number() = static_cast<uint16_t>(row + 1);
  LoadEntry();
  ShowEntry();
}

void CustomSizeDialog::OnTextChanged(ControlId id) {
  if (id == kName) return StoreName();
  Side* const side = SideOf(id);
  if (side == nullptr) return;
  const uint32_t typed = ParseSize(Unit(), dialog().Text(id));
  if (typed == side->value) return;
  SetSize(*side, std::min(typed, side->maximum));
  if (typed > side->maximum) ShowSide(*side);
  dialog().SetPosition(side->spin, static_cast<int>(side->value));
  ShowList();
}

void CustomSizeDialog::OnPositionChanged(ControlId id) {
  Side* const side = SideOf(id);
  if (side == nullptr) return;
  SetSize(*side, static_cast<uint32_t>(std::clamp(dialog().Position(id), 0, static_cast<int>(side->maximum))));
  ShowSide(*side);
  ShowList();
}

void CustomSizeDialog::SetSize(Side& side, uint32_t value) {
  side.value = value;
  Entry().*side.size = ThouFromShown(Unit(), value);
  dialog().Repaint(kPicture);
}

/// The stored size stays, so that a change of unit alone never changes the paper; only a width below what inches allow
/// rises.
void CustomSizeDialog::ChangeUnit(int unit) {
  if (Unit() == unit) return;
  Entry().unit = static_cast<int16_t>(unit);
  LoadEntry();
  if (unit == kInch && width_.value < width_.minimum) SetSize(width_, width_.minimum);
  ShowEntry();
}

void CustomSizeDialog::StoreName() {
  const std::u16string name = dialog().Text(kName);
  CustomPaperEntry& entry = Entry();
  size_t length = std::min(name.size(), kNameLimit);
  if (length > 0 && (name[length - 1] & 0xFC00) == 0xD800) --length;  // the limit split a character
  std::fill(std::copy_n(name.begin(), length, entry.name), std::end(entry.name), u'\0');
  ShowList();
}

bool CustomSizeDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  if (id == kName)
    return key.character < u' ' || key.text.size() <= kNameLimit || key.selection_start != key.selection_end;
  return SideOf(id) == nullptr || AcceptsSizeKey(Unit(), key);
}

// -- checks

bool CustomSizeDialog::MayLeave(ControlId id, ControlId to) {
  if (to == 0 || to == kCancelButton) return true;
  if (id == kName) return CheckName();
  Side* const side = SideOf(id);
  return side == nullptr || id != side->field || CheckSize(*side);
}

bool CustomSizeDialog::CheckSize(Side& side) {
  if (side.value >= side.minimum && side.value <= side.maximum) return true;
  if (side.value == 0) SetSize(side, side.minimum);
  ShowSide(side);
  ShowList();
  const Sources sources = SourcesForCustom(sheet_.engine(), target_);
  return Refuse(side.field,
                TextOf(sources.current && sources.allowed >= 2 ? text::kSizeOutsideTray : text::kSizeOutOfRange),
                TextOf(text::kCustomSize));
}

bool CustomSizeDialog::CheckName() {
  const auto name = [this](int number) { return CustomPaperName(*CustomEntry(ui(), number)); };
  bool taken = false;
  for (int n = 1; n <= kUserPaperCount; ++n) taken |= n != Number() && name(n) == name(Number());
  if (!name(Number()).empty() && !taken) return true;
  return Refuse(kName, TextOf(name(Number()).empty() ? text::kEnterCustomSizeName : text::kCustomSizeNameTaken),
                TextOf(text::kCustomSize));
}

/// The other target may have the same entry selected.
void CustomSizeDialog::Confirm() {
  if (!CheckSize(width_) || !CheckSize(length_) || !CheckName()) return;
  const uint16_t number = Number();
  for (const PaperTarget target : {PaperTarget::kOriginal, PaperTarget::kOutput}) {
    const TargetSettings settings = SettingsOf(ui(), target);
    if (settings.number != number) continue;
    settings.width = static_cast<uint16_t>(ShownFromThou(kMillimetre, Entry().width));
    settings.length = static_cast<uint16_t>(ShownFromThou(kMillimetre, Entry().height));
    settings.unit = static_cast<uint16_t>(Unit());
  }
  engine::LoadPaperTable(ui());
  dialog().End(platform::IDOK);
}

}  // namespace heron::pages
