#include "pages/fax_details_dialog.h"

#include <algorithm>
#include <array>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/process.h"
#include "platform/api/text.h"
#include "uistate/unnamed_params.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using platform::kCancelButton;
using platform::kOkButton;

constexpr ControlId kPrintToo = 1821, kTimed = 1822, kTimeLabel = 1823;
constexpr ControlId kHour = 1824, kHourSpin = 1825, kMinute = 1826, kMinuteSpin = 1827, kColon = 1828;
constexpr ControlId kTakeTime = 1830, kClock = 1831;
constexpr ControlId kSubAddressCheck = 929, kSubAddress = 930, kSenderCheck = 931, kSender = 932;
constexpr int kHours = 24, kMinutes = 60;
constexpr size_t kAddressLength = 20;
constexpr uint32_t kClockInterval = 30000;  ///< milliseconds

constexpr std::u16string_view kDigits = u"0123456789";
constexpr std::u16string_view kSenderSigns = u"0123456789#*";

enum Group : uint8_t { kChecks };
constexpr ShownControl kControls[] = {
    {.id = kPrintToo, .group = kChecks, .param = ParamIndexOf(param::kFilePrint)},
    {.id = kTimed, .group = kChecks, .param = ParamIndexOf(param::kSendTime)},
    {.id = kSubAddressCheck, .group = kChecks, .param = ParamNamed<u"SubAddress">()},
    {.id = kSenderCheck, .group = kChecks, .param = ParamNamed<u"SenderID">()},
};

/// A field behind a check.
struct AddressField {
  ControlId check, field;
  std::u16string_view signs;
  TextNumber badSign, caption, askEmpty;
};
constexpr std::array<AddressField, 2> kAddressFields = {{
    {kSubAddressCheck, kSubAddress, kDigits, text::kUseDigitsOnly, text::kSubAddress, text::kAskWithoutSubAddress},
    {kSenderCheck, kSender, kSenderSigns, text::kUseSenderIdSigns, text::kSenderId, text::kAskWithoutSenderId},
}};

const AddressField& FieldOfCheck(ControlId check) {
  return kAddressFields[check == kSubAddressCheck ? 0 : 1];
}

using AddressText = char16_t[kAddressLength + 1];
AddressText& SubAddressOf(const UiState& ui) {
  return SlotAs<u"szSubAddress", AddressText>(ui);
}
AddressText& SenderOf(const UiState& ui) {
  return SlotAs<u"szSenderID", AddressText>(ui);
}

std::u16string TextIn(const AddressText& text) {
  const std::u16string_view whole(text, std::size(text));
  return std::u16string(whole.substr(0, whole.find(u'\0')));
}

void Put(AddressText& target, std::u16string_view text) {
  std::ranges::fill(target, u'\0');
  text.substr(0, kAddressLength).copy(target, kAddressLength);
}

std::u16string TwoDigits(int number) {
  return platform::ExpandText(u"%02d", {int64_t{number}});
}

ControlId SpinOf(ControlId field) {
  return field == kHour ? kHourSpin : kMinuteSpin;
}

int LimitOf(ControlId field) {
  return field == kHour ? kHours : kMinutes;
}

ValueFields Fields(const UiState& ui, const ShownControl& control) {
  return FieldsOf(ui, control.param);
}

}  // namespace

FaxDetailsDialog::FaxDetailsDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

void FaxDetailsDialog::OnInitialise() {
  const UiState& settings = sheet().ui();
  for (const ShownControl& control : kControls) *Fields(settings, control).value = *Fields(settings, control).committed;
  SettingsView::OnInitialise();
  for (const AddressField& row : kAddressFields) dialog().SetTextLimit(row.field, kAddressLength);
  for (const ControlId field : {kHour, kMinute}) {
    dialog().SetTextLimit(field, 2);
    dialog().SetRange(SpinOf(field), 0, LimitOf(field) - 1);
  }
  ShowNumber(kHour, SlotAs<u"bTimeH", uint8_t>(ui()));
  ShowNumber(kMinute, SlotAs<u"bTimeM", uint8_t>(ui()));
  dialog().SetText(kSubAddress, TextIn(SubAddressOf(ui())));
  dialog().SetText(kSender, TextIn(SenderOf(ui())));
  EnableFields();
  ShowClock();
  dialog().SetTimer(kClockInterval);
}

void FaxDetailsDialog::OnDestroy() {
  // After a Cancel the working values are those of before; after OK both are the same.
  const UiState& settings = ui();
  for (const ShownControl& control : kControls) *Fields(settings, control).value = *Fields(settings, control).committed;
  SettingsView::OnDestroy();
}

void FaxDetailsDialog::ShowNumber(ControlId field, int number) {
  dialog().SetText(field, TwoDigits(number));
  dialog().SetPosition(SpinOf(field), number);
}

void FaxDetailsDialog::ShowClock() {
  platform::SYSTEMTIME now{};
  if (platform::GetLocalTime(&now) == 0) return;
  dialog().SetText(kClock, TwoDigits(now.wHour) + u":" + TwoDigits(now.wMinute));
}

void FaxDetailsDialog::OnTimer() {
  ShowClock();
}

void FaxDetailsDialog::EnableFields() {
  const bool timed = *FieldsOf(ui(), ParamIndexOf(param::kSendTime)).value == 1;
  for (const ControlId id : {kTimeLabel, kHour, kHourSpin, kMinute, kMinuteSpin, kColon, kTakeTime})
    dialog().Enable(id, timed);
  dialog().Enable(kSubAddress, IsOn<u"SubAddress">(ui()));
  dialog().Enable(kSender, IsOn<u"SenderID">(ui()));
}

/// A check that is turned off while its field holds what can't stand there stays on.
void FaxDetailsDialog::OnStored(ControlId id) {
  if (id == kSubAddressCheck || id == kSenderCheck) {
    const bool turned_off = !dialog().IsChecked(id);
    uint16_t& value =
        id == kSubAddressCheck ? engine::Setting<u"SubAddress">(ui()) : engine::Setting<u"SenderID">(ui());
    if (turned_off) {
      value = 1;
      const bool may = Validate(id, Asked::kOnClick);
      if (may) value = 0;
      dialog().SetChecked(id, !may);
    }
  }
  EnableFields();
}

bool FaxDetailsDialog::Validate(ControlId check, Asked asked) {
  const AddressField& row = FieldOfCheck(check);
  uint16_t& on = check == kSubAddressCheck ? engine::Setting<u"SubAddress">(ui()) : engine::Setting<u"SenderID">(ui());
  if (on != 1) return true;
  const std::u16string typed = dialog().Text(row.field);
  if (typed.find_first_not_of(row.signs) != std::u16string::npos)
    return RefuseCleared(row.field, TextOf(text::kBadCharacter) + TextOf(row.badSign), TextOf(row.caption));
  if (asked != Asked::kOnOk || !typed.empty()) return true;
  dialog().Beep();
  const std::u16string caption = platform::ExpandText(GetUiString(text::kIsMissing), {GetUiString(row.caption)});
  if (Tell(TextOf(row.askEmpty), caption, platform::MB_YESNO | platform::MB_ICONQUESTION) != platform::IDYES) {
    dialog().SetText(row.field, {});
    dialog().Focus(row.field);
    return false;
  }
  on = 0;
  dialog().SetChecked(check, false);
  dialog().Enable(row.field, false);
  return true;
}

void FaxDetailsDialog::OnButton(ControlId id) {
  if (id == kTakeTime) {
    platform::SYSTEMTIME now{};
    if (platform::GetLocalTime(&now) == 0) return;
    ShowNumber(kHour, now.wHour);
    ShowNumber(kMinute, now.wMinute);
  } else if (id == kOkButton) {
    Confirm();
  } else if (id == kCancelButton) {
    dialog().End(id);
  }
}

void FaxDetailsDialog::Confirm() {
  const bool sub_address = Validate(kSubAddressCheck, Asked::kOnOk);
  const bool sender = Validate(kSenderCheck, Asked::kOnOk);
  if (!sub_address && !sender) dialog().Focus(kSubAddress);
  if (!sub_address || !sender) return;
  for (const ShownControl& control : kControls) *Fields(ui(), control).committed = *Fields(ui(), control).value;
  SlotAs<u"bTimeH", uint8_t>(ui()) = static_cast<uint8_t>(std::min<int>(ParseNumber(dialog().Text(kHour)), kHours - 1));
  SlotAs<u"bTimeM", uint8_t>(ui()) =
      static_cast<uint8_t>(std::min<int>(ParseNumber(dialog().Text(kMinute)), kMinutes - 1));
  Put(SubAddressOf(ui()), dialog().Text(kSubAddress));
  Put(SenderOf(ui()), dialog().Text(kSender));
  dialog().End(kOkButton);
}

void FaxDetailsDialog::OnTextChanged(ControlId id) {
  if (id != kHour && id != kMinute) return;
  const int typed = ParseNumber(dialog().Text(id));
  if (typed < LimitOf(id)) return dialog().SetPosition(SpinOf(id), typed);
  ShowNumber(id, LimitOf(id) - 1);
  dialog().Focus(id);
  dialog().SelectText(id, 0, std::u16string::npos);
}

/// A spin continues at the other end.
void FaxDetailsDialog::OnPositionChanged(ControlId id) {
  if (id != kHourSpin && id != kMinuteSpin) return;
  const ControlId field = id == kHourSpin ? kHour : kMinute;
  const int limit = LimitOf(field);
  int position = dialog().Position(id);
  if (position < 0) position = std::max(position + limit, 0);
  ShowNumber(field, position >= limit ? 0 : position);
}

bool FaxDetailsDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  constexpr char16_t kFirstPrintable = 32;
  if (key.character < kFirstPrintable) return true;
  if (id == kSender) return kSenderSigns.find(key.character) != std::u16string_view::npos;
  const bool number = id == kHour || id == kMinute || id == kSubAddress;
  return !number || kDigits.find(key.character) != std::u16string_view::npos;
}

}  // namespace heron::pages
