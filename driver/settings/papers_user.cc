// The ten user papers as a queue keeps them, and the margins of a paper that the catalogue doesn't know.
//
// Each paper is one value of printer data, "UDPaper1" to "UDPaper10", 76 bytes as CustomPaperEntry lays them out. A
// value that is missing, unreadable or of another size is replaced by the default paper; a load never fails over it.
#include <algorithm>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/handles.h"
#include "settings/papers_table.h"

namespace heron {
namespace {

using namespace platform;

constexpr uint32_t kDefaultThou = 8267;  ///< 210 mm, both ways
constexpr size_t kNameRoom = std::size(CustomPaperEntry{}.name);

std::u16string ValueName(int number) {
  std::u16string name = u"UDPaper";
  for (const char digit : std::to_string(number)) name += static_cast<char16_t>(digit);
  return name;
}

DWORD ReadEntry(HANDLE printer, int number, CustomPaperEntry* entry) {
  CustomPaperEntry stored;
  DWORD size = 0;
  const DWORD status = GetPrinterDataW(printer, ValueName(number).c_str(), nullptr, reinterpret_cast<uint8_t*>(&stored),
                                       sizeof stored, &size);
  if (status != kErrorSuccess) return status;
  if (size != sizeof stored) return kErrorMoreData;
  *entry = stored;
  return kErrorSuccess;
}

/// All printer data of a queue, one read for ten papers; they lie in `buffer`. Nothing if they can't be read.
std::optional<std::span<const PRINTER_ENUM_VALUESW>> AllPrinterData(HANDLE printer, std::vector<uint8_t>* buffer) {
  constexpr DWORD kUsualSize = 8192;
  buffer->resize(kUsualSize);
  DWORD needed = 0;
  DWORD count = 0;
  DWORD status = kErrorMoreData;
  while ((status = EnumPrinterDataExW(printer, u"PrinterDriverData", buffer->data(), static_cast<DWORD>(buffer->size()),
                                      &needed, &count)) == kErrorMoreData) {
    buffer->resize(needed);
  }
  if (status != kErrorSuccess) return std::nullopt;
  return std::span(reinterpret_cast<const PRINTER_ENUM_VALUESW*>(buffer->data()), count);
}

std::u16string_view NameOf(const CustomPaperEntry& entry) {
  return {entry.name, static_cast<size_t>(std::find(entry.name, entry.name + kNameRoom, u'\0') - entry.name)};
}

bool SameEntry(const CustomPaperEntry& a, const CustomPaperEntry& b) {
  return a.width == b.width && a.height == b.height && a.unit == b.unit && a.longFlag == b.longFlag &&
         NameOf(a) == NameOf(b);
}

bool IsStored(HANDLE printer, int number, const CustomPaperEntry& entry) {
  CustomPaperEntry stored;
  return ReadStoredUserPaper(printer, number, &stored) && SameEntry(stored, entry);
}

/// All of them that differ, or none.
bool WriteUserPapers(const UserPaperStore& store, HANDLE printer) {
  std::array<bool, kUserPaperCount> stored;
  for (size_t n = 0; n < store.size(); ++n) stored[n] = IsStored(printer, static_cast<int>(n) + 1, store[n]);
  if (std::find(stored.begin(), stored.end(), false) == stored.end()) return true;

  PrinterDataBatch batch(printer);
  for (size_t n = 0; n < store.size(); ++n) {
    if (stored[n]) continue;
    const DWORD status = SetPrinterDataW(printer, ValueName(static_cast<int>(n) + 1).c_str(), REG_BINARY,
                                         reinterpret_cast<const uint8_t*>(&store[n]), sizeof store[n]);
    if (status != kErrorSuccess) return false;
  }
  return batch.Keep();
}

/// Whether a reader finds the entries as they are, those that aren't stored as their defaults.
bool ReadAs(HANDLE printer, const UserPaperStore& store) {
  for (int number = 1; number <= kUserPaperCount; ++number) {
    CustomPaperEntry found = DefaultUserPaper(number);
    ReadStoredUserPaper(printer, number, &found);
    if (!SameEntry(found, store[static_cast<size_t>(number - 1)])) return false;
  }
  return true;
}

/// Splits what `size` exceeds `printable` by between two sides, both at least `least`.
void SplitExcess(int64_t size, int64_t printable, int32_t least_near, int32_t least_far, uint32_t* near,
                 uint32_t* far) {
  const int64_t excess = std::max<int64_t>(size - printable, 0);
  const int64_t half = (excess + 1) / 2;
  *near = static_cast<uint32_t>(std::max<int64_t>(half, least_near));
  *far = static_cast<uint32_t>(std::max<int64_t>(excess - half, least_far));
}

}  // namespace

CustomPaperEntry DefaultUserPaper(int number) {
  CustomPaperEntry entry{.width = kDefaultThou, .height = kDefaultThou, .unit = 1, .name = {}, .longFlag = 0};
  if (number < 1 || number > kUserPaperCount) return entry;
  const std::u16string_view name = GetUiString(text::kFirstCustomSize - 1 + static_cast<uint32_t>(number));
  std::copy_n(name.begin(), std::min(name.size(), kNameRoom - 1), entry.name);
  return entry;
}

bool ReadStoredUserPaper(HANDLE printer, int number, CustomPaperEntry* entry) {
  return ReadEntry(printer, number, entry) == kErrorSuccess;
}

bool LoadUserPapers(UserPaperStore* store, HANDLE printer) {
  for (int number = 1; number <= kUserPaperCount; ++number) {
    (*store)[static_cast<size_t>(number - 1)] = DefaultUserPaper(number);
  }
  std::vector<uint8_t> buffer;
  const auto values = AllPrinterData(printer, &buffer);
  if (!values) return false;
  for (const PRINTER_ENUM_VALUESW& value : *values) {
    if (value.cbData != sizeof(CustomPaperEntry)) continue;
    for (int number = 1; number <= kUserPaperCount; ++number) {
      CustomPaperEntry& entry = (*store)[static_cast<size_t>(number - 1)];
      if (value.pValueName == ValueName(number)) std::memcpy(&entry, value.pData, sizeof entry);
    }
  }
  return true;
}

bool SaveUserPapers(const UserPaperStore& store, HANDLE printer) {
  return WriteUserPapers(store, printer) || ReadAs(printer, store);
}

void ReadUserPaperSize(int32_t code, uint32_t* width, uint32_t* height, HANDLE printer) {
  CustomPaperEntry entry{.width = kDefaultThou, .height = kDefaultThou, .unit = 1, .name = {}, .longFlag = 0};
  if (IsCustomPaper(code)) ReadStoredUserPaper(printer, CustomPaperNumber(code), &entry);
  *width = entry.width;
  *height = entry.height;
}

bool ReadUserPaper(HANDLE printer, int number, uint32_t* width, uint32_t* height, char16_t* name, uint32_t name_bytes) {
  CustomPaperEntry entry = DefaultUserPaper(number);
  const bool asked = printer != nullptr && number >= 1 && number <= kUserPaperCount;
  // A value that can't be read leaves the default; a handle that isn't one means that there is no store to load.
  const bool loaded = asked && ReadEntry(printer, number, &entry) != kErrorInvalidHandle;
  *width = entry.width;
  *height = entry.height;
  const size_t room = name_bytes / sizeof(char16_t);
  const std::u16string_view text = NameOf(entry).substr(0, room);
  std::fill(std::copy(text.begin(), text.end(), name), name + room, u'\0');
  return loaded;
}

const SourceLimit& FindSourceLimit(uint16_t source, uint16_t source_unit, uint16_t unit) {
  const auto& limits = papers_internal::kSourceLimits;
  const auto row = std::find_if(limits.begin(), limits.end(), [&](const SourceLimit& limit) {
    return limit.source == source && (limit.sourceUnit == 0 || limit.sourceUnit == source_unit) && limit.unit == unit;
  });
  return row != limits.end() ? *row : limits.front();
}

Margins UserPaperMargins(uint16_t source, uint16_t source_unit, int32_t width, int32_t height) {
  const SourceLimit& limit = FindSourceLimit(source, source_unit, 1);
  Margins margins;
  SplitExcess(width, int64_t{limit.printableWidth} * 10, limit.marginLeft, limit.marginRight, &margins.left,
              &margins.right);
  SplitExcess(height, int64_t{limit.printableLength} * 10, limit.marginTop, limit.marginBottom, &margins.top,
              &margins.bottom);
  return margins;
}

}  // namespace heron
