// Recipients between the columns of the working store, the exchange form and the address file (recipients.h).
//
// A file's number is 16 bits wide; a record or a ring may hold anything above them, which isn't looked at.
#include "uistate/recipients.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <span>

#include "generated/features.h"
#include "platform/api/files.h"
#include "platform/api/handles.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

using namespace platform;

constexpr char16_t kPrefix[] = u"vpb";
constexpr uint32_t kRingSlots = 10;
constexpr uint32_t kFileNumberMask = 0xFFFF;
constexpr char16_t kLastSlot[] = u"idx";

using AddressText = char[kRecipientTextLength];

struct CloseFile {
  using pointer = HANDLE;
  void operator()(HANDLE file) const { CloseHandle(file); }
};
using UniqueFile = std::unique_ptr<void, CloseFile>;

UniqueFile OpenFileAt(const std::u16string& path, DWORD access, DWORD disposition) {
  if (path.empty()) return nullptr;
  const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, disposition);
  return UniqueFile(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

/// Path of the temporary file `*id`; with 0 a new file is made and its number stored. Empty on failure.
std::u16string TempFile(uint32_t* id) {
  char16_t folder[kMaxPath];
  char16_t name[kMaxPath];
  const DWORD length = GetTempPathW(kMaxPath, folder);
  if (length == 0 || length >= kMaxPath) return {};
  const DWORD number = GetTempFileNameW(folder, kPrefix, *id, name);
  if (number == 0) return {};
  *id = number;
  return name;
}

void Encode(std::u16string_view text, AddressText& out) {
  const size_t length = std::min(text.find(u'\0'), std::min(text.size(), std::size(out)));
  std::memset(out, 0, sizeof out);
  // A text that doesn't fit is cut at a whole character, which is what the call leaves.
  if (length > 0) WideCharToMultiByte(CP_ACP, text.data(), static_cast<int>(length), out, static_cast<int>(sizeof out));
}

void Decode(const AddressText& text, std::span<char16_t> out) {
  const size_t length = std::min(std::string_view(text, sizeof text).find('\0'), sizeof text);
  std::ranges::fill(out, u'\0');
  if (length > 0) MultiByteToWideChar(CP_ACP, text, static_cast<int>(length), out.data(), kRecipientTextLength);
}

/// The text in a field of another width, filled up with zeros.
void CopyText(std::u16string_view from, std::span<char16_t> to) {
  std::ranges::fill(to, u'\0');
  std::ranges::copy(from.substr(0, std::min({from.find(u'\0'), from.size(), size_t{kRecipientTextLength}})),
                    to.begin());
}

template <size_t N>
std::u16string_view Whole(const char16_t (&field)[N]) {
  return {field, N};
}

void ClearRecipients(UiHead& head) {
  head.faxAddressCount = head.faxRowCount = 0;
  const auto clear = [](auto& column) { std::memset(&column, 0, sizeof column); };
  clear(head.faxNames);
  clear(head.faxNumbers);
  clear(head.faxCompanies);
  clear(head.faxDepartments);
  clear(head.faxEcm);
  clear(head.faxOverseas);
  clear(head.faxV34);
}

/// Reads a whole address file; false unless it has exactly a block's size.
bool ReadBlock(HANDLE file, AddressBlock* block) {
  DWORD got = 0;
  if (ReadFile(file, block, sizeof *block, &got) == 0 || got != sizeof *block) return false;
  uint8_t beyond;
  return ReadFile(file, &beyond, sizeof beyond, &got) != 0 && got == 0;
}

bool WriteBlock(HANDLE file, const AddressBlock& block) {
  DWORD written = 0;
  return WriteFile(file, &block, sizeof block, &written) != 0 && written == sizeof block;
}

uint32_t ReadNumber(HKEY key, const char16_t* name, uint32_t if_missing) {
  uint32_t value = 0;
  DWORD type = 0;
  DWORD size = sizeof value;
  const DWORD status = RegQueryValueExW(key, name, &type, reinterpret_cast<uint8_t*>(&value), &size);
  return status == kErrorSuccess && type == REG_DWORD && size == sizeof value ? value : if_missing;
}

bool WriteNumber(HKEY key, const char16_t* name, uint32_t value) {
  return RegSetValueExW(key, name, REG_DWORD, reinterpret_cast<const uint8_t*>(&value), sizeof value) == kErrorSuccess;
}

std::u16string SlotName(uint32_t slot) {
  return ExpandText(u"%d", {int64_t{slot}});
}

/// Writes an empty ring.
bool StartRing(HKEY key) {
  bool written = WriteNumber(key, kLastSlot, 0);
  for (uint32_t slot = 1; slot <= kRingSlots; ++slot) written &= WriteNumber(key, SlotName(slot).c_str(), 0);
  return written;
}

}  // namespace

void FillAddressBlock(const UiState& ui, AddressBlock* block) {
  const UiHead& head = ui.head();
  *block = {};
  block->count = std::min<uint32_t>(head.faxAddressCount, kRecipientCount);
  for (uint32_t i = 0; i < block->count; ++i) {
    AddressRow& row = block->rows[i];
    Encode(Whole(head.faxNames[i]), row.name);
    Encode(Whole(head.faxNumbers[i]), row.number);
    Encode(Whole(head.faxCompanies[i]), row.company);
    Encode(Whole(head.faxDepartments[i]), row.department);
    row.ecm = static_cast<uint8_t>(head.faxEcm[i].value);
    row.overseas = static_cast<uint8_t>(head.faxOverseas[i].value);
    row.v34 = static_cast<uint8_t>(head.faxV34[i].value);
  }
}

void ReadAddressBlock(const UiState& ui, const AddressBlock& block, const ResourceContext* resources) {
  UiHead& head = ui.head();
  ClearRecipients(head);
  head.faxAddressCount = static_cast<uint16_t>(std::min(block.count, kRecipientCount));
  head.faxRowCount = head.faxAddressCount;
  for (uint32_t i = 0; i < kRecipientCount; ++i) {
    const AddressRow& row = block.rows[i];
    Decode(row.name, head.faxNames[i]);
    Decode(row.number, head.faxNumbers[i]);
    Decode(row.company, head.faxCompanies[i]);
    Decode(row.department, head.faxDepartments[i]);
    FillCheckBlock(resources, feature::EcmTab, head.faxEcm[i], row.ecm);
    FillCheckBlock(resources, feature::IntlComTab, head.faxOverseas[i], row.overseas);
    FillCheckBlock(resources, feature::FaxV34_CheckTab, head.faxV34[i], row.v34);
  }
}

void EncodeRow(const RecipientRow& row, AddressRow* out) {
  Encode(Whole(row.name), out->name);
  Encode(Whole(row.number), out->number);
  Encode(Whole(row.company), out->company);
  Encode(Whole(row.department), out->department);
  out->ecm = row.ecm;
  out->overseas = row.overseas;
  out->v34 = row.v34;
  out->spare = row.spare;
}

void DecodeRow(const AddressRow& row, RecipientRow* out) {
  Decode(row.name, out->name);
  Decode(row.number, out->number);
  Decode(row.company, out->company);
  Decode(row.department, out->department);
  out->ecm = row.ecm;
  out->overseas = row.overseas;
  out->v34 = row.v34;
  out->spare = row.spare;
}

void LoadRecipients(const UiState& ui, RecipientTable* table) {
  const UiHead& head = ui.head();
  *table = {};
  table->count = std::min<uint32_t>(head.faxAddressCount, kRecipientCount);
  for (uint32_t i = 0; i < table->count; ++i) {
    RecipientRow& row = table->rows[i];
    CopyText(Whole(head.faxNames[i]), row.name);
    CopyText(Whole(head.faxNumbers[i]), row.number);
    CopyText(Whole(head.faxCompanies[i]), row.company);
    CopyText(Whole(head.faxDepartments[i]), row.department);
    row.ecm = static_cast<uint8_t>(head.faxEcm[i].value);
    row.overseas = static_cast<uint8_t>(head.faxOverseas[i].value);
    row.v34 = static_cast<uint8_t>(head.faxV34[i].value);
  }
}

void StoreRecipients(const UiState& ui, const RecipientTable& table, const ResourceContext* resources) {
  UiHead& head = ui.head();
  ClearRecipients(head);
  head.faxAddressCount = static_cast<uint16_t>(std::min(table.count, kRecipientCount));
  head.faxRowCount = head.faxAddressCount;
  for (uint32_t i = 0; i < kRecipientCount; ++i) {
    const RecipientRow& row = table.rows[i];
    CopyText(Whole(row.name), head.faxNames[i]);
    CopyText(Whole(row.number), head.faxNumbers[i]);
    CopyText(Whole(row.company), head.faxCompanies[i]);
    CopyText(Whole(row.department), head.faxDepartments[i]);
    FillCheckBlock(resources, feature::EcmTab, head.faxEcm[i], row.ecm);
    FillCheckBlock(resources, feature::IntlComTab, head.faxOverseas[i], row.overseas);
    FillCheckBlock(resources, feature::FaxV34_CheckTab, head.faxV34[i], row.v34);
  }
}

bool ReadAddressFile(uint32_t id, AddressBlock* block) {
  const UniqueFile file = OpenFileAt(AddressFilePath(id), GENERIC_READ, OPEN_EXISTING);
  return file != nullptr && ReadBlock(file.get(), block);
}

uint32_t MakeAddressFile(const AddressBlock& block) {
  uint32_t id = 0;
  UniqueFile file = OpenFileAt(TempFile(&id), GENERIC_WRITE, CREATE_ALWAYS);
  if (file != nullptr && WriteBlock(file.get(), block)) return id;
  file.reset();
  DeleteAddressFile(id);
  return 0;
}

void DeleteAddressFile(uint32_t id) {
  const std::u16string path = AddressFilePath(id);
  if (!path.empty()) DeleteFileW(path.c_str());
}

std::u16string AddressFilePath(uint32_t id) {
  return (id & kFileNumberMask) == 0 ? std::u16string() : TempFile(&id);
}

void LoadAddressFile(UiState& ui, DriverEnv& env, const ResourceContext* resources) {
  const auto block = std::make_unique<AddressBlock>();
  if (ReadAddressFile(Get<"faxAddressFileId">(env), block.get())) return ReadAddressBlock(ui, *block, resources);
  ClearRecipients(ui.head());
  Set<"faxAddressCount">(env, 0);
  Set<"faxAddressFileId">(env, 0);
}

bool WriteAddressFile(const UiState& ui, DriverEnv& env) {
  uint32_t id = Get<"faxAddressFileId">(env) & kFileNumberMask;
  Set<"faxAddressFileId">(env, 0);
  Set<"faxAddressCount">(env, 0);
  if (ui.head().faxAddressCount == 0) {
    DeleteAddressFile(id);
    return true;
  }
  UniqueFile file = OpenFileAt(TempFile(&id), GENERIC_WRITE, CREATE_ALWAYS);
  if (file == nullptr) return false;
  Set<"faxAddressFileId">(env, id);
  Set<"faxAddressCount">(env, ui.head().faxAddressCount);
  const auto block = std::make_unique<AddressBlock>();
  FillAddressBlock(ui, block.get());
  const bool whole = WriteBlock(file.get(), *block);
  file.reset();
  RecordAddressFile(GetText<"dmDeviceName">(env), id);
  return whole;
}

bool RecordAddressFile(std::u16string_view printer_name, uint32_t id) {
  platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
  if (!batch.open()) return false;
  const UniqueKey ring = CreateKey(HKEY_CURRENT_USER, BuildUserKey(printer_name, u"TempPlistID").c_str());
  if (ring == nullptr) return false;
  constexpr uint32_t kNoSlot = 999;
  uint32_t slot = ReadNumber(ring.get(), kLastSlot, kNoSlot);
  if (slot == kNoSlot) {
    if (!StartRing(ring.get())) return false;
    slot = 1;
  } else {
    const uint32_t last = ReadNumber(ring.get(), SlotName(slot).c_str(), 0);
    if ((last & kFileNumberMask) == id) return false;
    slot = slot >= kRingSlots ? 1 : slot + 1;
  }
  const uint32_t displaced = ReadNumber(ring.get(), SlotName(slot).c_str(), 0);
  const bool recorded =
      WriteNumber(ring.get(), kLastSlot, slot) && WriteNumber(ring.get(), SlotName(slot).c_str(), id) && batch.Keep();
  // Only once the ring has forgotten it, so that a ring that couldn't be written names no missing file.
  if (recorded && (displaced & kFileNumberMask) != id) DeleteAddressFile(displaced);
  return recorded;
}

}  // namespace heron
