#include "pages/text_settings.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <span>

#include "engine/setting.h"
#include "platform/api/process.h"

namespace heron::pages {
namespace {

constexpr size_t kLongestUserName = 65;

/// Parameters: the sum of the owner's characters and his name's length, each with its twin.
constexpr uint16_t kNameSums[] = {225, 226};
constexpr uint16_t kNameLengths[] = {227, 228};

std::span<char16_t> Slot(const UiState& ui, TextSetting setting) {
  const uint16_t row = ParamIndexOf(static_cast<uint16_t>(setting));
  return {reinterpret_cast<char16_t*>(SlotOf(ui, row)), Params().params[row].slotSize / sizeof(char16_t)};
}

uint32_t& NameSum(const UiState& ui, uint16_t parameter) {
  return *reinterpret_cast<uint32_t*>(SlotOf(ui, ParamIndexOf(parameter)));
}

uint8_t& NameLength(const UiState& ui, uint16_t parameter) {
  return *SlotOf(ui, ParamIndexOf(parameter));
}

std::u16string CurrentUser() {
  std::array<char16_t, kLongestUserName + 1> name{};
  platform::DWORD length = name.size();
  if (platform::GetUserNameW(name.data(), &length) == 0) return {};
  return std::u16string(name.data(), std::min<size_t>(length, name.size()) - (length > 0 ? 1 : 0));
}

uint32_t SumOf(std::u16string_view name) {
  return std::accumulate(name.begin(), name.end(), uint32_t{0});
}

OwnerCheck Compare(const UiState& ui, std::u16string_view user) {
  const std::u16string stored = GetText(ui, TextSetting::kOwnerName);
  if (stored.empty() && user.empty()) return OwnerCheck::kBothEmpty;
  if (stored.empty()) return OwnerCheck::kNoneStored;
  if (user.empty()) return OwnerCheck::kUserUnknown;
  const bool same = stored == user && NameSum(ui, kNameSums[0]) == SumOf(user) &&
                    NameLength(ui, kNameLengths[0]) == static_cast<uint8_t>(user.size());
  return same ? OwnerCheck::kSameUser : OwnerCheck::kAnotherUser;
}

void StoreOwner(const UiState& ui, std::u16string_view user) {
  SetText(ui, TextSetting::kOwnerName, user);
  for (const uint16_t parameter : kNameSums) NameSum(ui, parameter) = SumOf(user);
  for (const uint16_t parameter : kNameLengths) NameLength(ui, parameter) = static_cast<uint8_t>(user.size());
}

template <ParamKey kKey>
void Reset(const UiState& ui) {
  const ValueFields fields = FieldsOf(ui, ParamNamed<kKey>());
  *fields.value = *fields.defaultValue;
}

void ClearPersonalSettings(const UiState& ui) {
  Reset<u"lpOutputMethod">(ui);
  Reset<u"UnDisplayPW">(ui);
  Reset<u"UserAuth_Check">(ui);
  Reset<u"lpAuthUserMode">(ui);
  for (const TextSetting setting :
       {TextSetting::kSecureId, TextSetting::kSecurePassword, TextSetting::kSecureCodeA, TextSetting::kSecureCodeB,
        TextSetting::kBoxFileName, TextSetting::kBoxNumber, TextSetting::kAuthUserName, TextSetting::kAuthPassword,
        TextSetting::kDepartmentName, TextSetting::kDepartmentPassword}) {
    SetText(ui, setting, {});
  }
}

}  // namespace

std::u16string GetText(const UiState& ui, TextSetting setting) {
  const std::span<char16_t> slot = Slot(ui, setting);
  return {slot.begin(), std::ranges::find(slot, u'\0')};
}

void SetText(const UiState& ui, TextSetting setting, std::u16string_view text) {
  const std::span<char16_t> slot = Slot(ui, setting);
  const size_t length = std::min(text.size(), slot.size());
  std::fill(std::copy_n(text.begin(), length, slot.begin()), slot.end(), u'\0');
}

OwnerCheck TakeOwnership(engine::Engine& engine) {
  const UiState& ui = *engine.ui;
  const std::u16string user = CurrentUser();
  const OwnerCheck check = Compare(ui, user);
  if (check != OwnerCheck::kBothEmpty && check != OwnerCheck::kSameUser) ClearPersonalSettings(ui);
  StoreOwner(ui, user);
  return check;
}

OwnerCheck TakeUnowned(engine::Engine& engine) {
  const UiState& ui = *engine.ui;
  const std::u16string user = CurrentUser();
  if (Compare(ui, user) != OwnerCheck::kNoneStored) return TakeOwnership(engine);
  StoreOwner(ui, user);
  return OwnerCheck::kNoneStored;
}

}  // namespace heron::pages
