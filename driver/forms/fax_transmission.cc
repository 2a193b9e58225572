#include "forms/fax_transmission.h"

#include <array>
#include <memory>
#include <utility>

#include "escapes/send_escape.h"
#include "platform/api/files.h"
#include "platform/api/process.h"
#include "uistate/recipients.h"

namespace heron {
namespace {

using namespace platform;

WORD DaysIn(WORD month, WORD year) {
  constexpr std::array<WORD, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  if (month < 1 || month > kDays.size()) return 31;
  return month == 2 && leap ? WORD{29} : kDays[month - 1u];
}

void NextDay(SYSTEMTIME& date) {
  if (++date.wDay <= DaysIn(date.wMonth, date.wYear)) return;
  date.wDay = 1;
  if (++date.wMonth <= 12) return;
  date.wMonth = 1;
  ++date.wYear;
}

}  // namespace

bool TransferAddressFile(HDC hdc) {
  uint32_t number = 0;
  if (!AskEscape<"EscGetAddressFile">(hdc, &number)) return false;
  if (number == 0) return true;
  const std::u16string path = AddressFilePath(number);
  const HANDLE file = path.empty()
                          ? INVALID_HANDLE_VALUE
                          : CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return SendEscape<"EscFaxCancel">(hdc);
  const auto block = std::make_unique<AddressBlock>();
  DWORD read = 0;
  const bool whole = ReadFile(file, block.get(), sizeof *block, &read) != 0 && read == sizeof *block;
  CloseHandle(file);
  if (!whole) return false;
  DeleteFileW(path.c_str());
  return SendEscape<"EscSetAddressData">(hdc, *block) && SendEscape<"EscAddressDataDone">(hdc);
}

bool SetScheduledTime(HDC hdc, uint8_t hour, uint8_t minute) {
  SYSTEMTIME now{};
  if (GetLocalTime(&now) == 0) return false;
  if (std::pair<WORD, WORD>(hour, minute) < std::pair(now.wHour, now.wMinute)) NextDay(now);
  const std::array<uint16_t, 5> time = {now.wYear, now.wMonth, now.wDay, hour, minute};
  return SendEscape<"EscSetFaxTime">(hdc, time);
}

}  // namespace heron
