// The walk over the row table, row by row in its order, so that a list's count and its items land in one key.
//
// A row names one level; its key is found through the nearest earlier rows of the levels above. Two numbers run: that
// of the level 2 name (a per-page list, a watermark) and that of the level 3 name (a page, a form, a font pair). Keys
// are opened once a walk: opening costs more than a value.
#include "uistate/walk_store.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "catalog/catalog.h"
#include "platform/api/handles.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"
#include "uistate/list_stores_rows.h"
#include "uistate/transfer_value.h"

namespace heron {
namespace {

using platform::DWORD;
using platform::HKEY;
using platform::kErrorAccessDenied;
using platform::kErrorFileNotFound;
using platform::kErrorMoreData;
using platform::kErrorSuccess;

/// Numbers of a row's %d, both included; a row without %d has the one number 0.
struct NumberRange {
  int first;
  int last;
};

/// A row and the rows of the levels above it; null where its level has none.
struct Chain {
  const ListStoreRow* row;
  const ListStoreRow* level1;
  const ListStoreRow* level2;
};

std::u16string ExpandName(const ListStoreRow& row, int number) {
  if (row.name.find(u'%') == std::u16string_view::npos) return std::u16string(row.name);
  return platform::ExpandText(row.name, {int64_t{number}});
}

class StoreWalker {
 public:
  /// `only`: the one number of level 2 names to be walked, all of them if it is negative.
  StoreWalker(const ListStoreSet& set, ListStoreId store, std::u16string_view printer_name, WalkOp op, int only)
      : set_(set), rows_(RowsOf(store)), printer_name_(printer_name), op_(op), only_(only) {}

  /// False if a registry call failed.
  bool Run();

 private:
  struct OpenKey {
    const ListStoreRow* row;
    int number;
    platform::UniqueKey key;  ///< empty: a read found that there is none
  };

  bool reading() const { return op_ == WalkOp::kRead; }
  Chain ChainOf(const ListStoreRow& row) const;
  NumberRange RangeOf(const ListStoreRow& row, int list) const;

  bool WalkRow(const Chain& chain);
  bool Visit(const Chain& chain, int number2, int number3);
  bool ReadField(HKEY key, const ListStoreRow& row, const std::u16string& name, const StoreField& field);
  bool WriteField(HKEY key, const ListStoreRow& row, const std::u16string& name, const StoreField& field);
  bool DropSurplus(const Chain& chain, int number2, int first);

  std::u16string KeyPath(const ListStoreRow& level1, const ListStoreRow* level2, int number2) const;
  bool OpenKeyOf(const Chain& chain, int number2, HKEY* key);

  const ListStoreSet& set_;
  const std::span<const ListStoreRow> rows_;
  const std::u16string_view printer_name_;
  const WalkOp op_;
  const int only_;
  std::vector<OpenKey> keys_;
  std::vector<uint8_t> buffer_;
};

/// A read takes the counts first, so that every count is known before the rows that it bounds.
bool StoreWalker::Run() {
  const int passes = reading() ? 2 : 1;
  for (int pass = 0; pass < passes; ++pass) {
    for (const ListStoreRow& row : rows_) {
      if (row.flags == kFileRow) continue;
      if (reading() && IsCountRow(rows_, row) != (pass == 0)) continue;
      if (!WalkRow(ChainOf(row))) return false;
    }
  }
  return true;
}

Chain StoreWalker::ChainOf(const ListStoreRow& row) const {
  Chain chain = {&row, nullptr, nullptr};
  for (const ListStoreRow& above : rows_) {
    if (above.level == 1) chain.level1 = &above;
    if (above.level == 2) chain.level2 = &above;
    if (&above == &row) break;
  }
  if (row.level == 1) chain.level2 = nullptr;
  return chain;
}

/// Numbers of the row's %d: as the row says, or the items of its list. `list`: the number of the level above.
NumberRange StoreWalker::RangeOf(const ListStoreRow& row, int list) const {
  if (row.link == 0) return {row.lo, row.hi};
  StoreField field;
  if (!GetStoreField(row.link, set_, list, 0, &field)) return {0, -1};
  return {0, CountIn(field, static_cast<uint16_t>(row.hi + 1)) - 1};
}

/// Every item of the row, under every key of the level above; then what a longer list left there.
bool StoreWalker::WalkRow(const Chain& chain) {
  const ListStoreRow& row = *chain.row;
  NumberRange outer = row.level >= 2 ? RangeOf(*chain.level2, 0) : NumberRange{0, 0};
  const bool numbered = row.level >= 2 && chain.level2->name.find(u'%') != std::u16string_view::npos;
  if (only_ >= 0 && numbered) outer = {std::max(outer.first, only_), std::min(outer.last, only_)};
  for (int number2 = outer.first; number2 <= outer.last; ++number2) {
    const NumberRange inner = row.level == 3 ? RangeOf(row, number2) : NumberRange{0, 0};
    for (int number3 = inner.first; number3 <= inner.last; ++number3) {
      if (!Visit(chain, number2, number3)) return false;
    }
    if (row.level == 3 && row.link != 0 && !DropSurplus(chain, number2, inner.last + 1)) return false;
  }
  return row.level != 2 || row.link == 0 || DropSurplus(chain, 0, outer.last + 1);
}

/// One item: its key is made, or its value moved.
bool StoreWalker::Visit(const Chain& chain, int number2, int number3) {
  const ListStoreRow& row = *chain.row;
  if (row.flags == kKeyRow && reading()) return true;
  HKEY key;
  if (!OpenKeyOf(chain, number2, &key)) return false;
  if (row.flags == kKeyRow || key == nullptr) return true;
  // A field takes the number of its own name, or of the item's key.
  const int item = row.level == 3 && row.name.find(u'%') != std::u16string_view::npos ? number3 : number2;
  StoreField field;
  if (!GetStoreField(row.id, set_, number2, item, &field)) return true;
  const std::u16string name = ExpandName(row, item);
  return reading() ? ReadField(key, row, name, field) : WriteField(key, row, name, field);
}

DWORD RegistryType(uint16_t type) {
  if (type == kTypeText) return platform::REG_SZ;
  return type == kTypeBytes ? platform::REG_BINARY : platform::REG_DWORD;
}

/// Characters of a text field up to its terminator; the last one is never counted.
size_t TextLength(const StoreField& field) {
  const size_t most = field.size / sizeof(char16_t) - 1;
  const auto* text = reinterpret_cast<const char16_t*>(field.data);
  return static_cast<size_t>(std::find(text, text + most, u'\0') - text);
}

/// Takes a stored value into its field, unless it is missing or of another shape.
bool StoreWalker::ReadField(HKEY key, const ListStoreRow& row, const std::u16string& name, const StoreField& field) {
  const DWORD wanted = RegistryType(field.type);
  // A value larger than the room is refused by the platform and so counts as missing.
  const DWORD room = wanted == platform::REG_DWORD ? sizeof(uint32_t) : field.size;
  buffer_.assign(room, 0);
  DWORD type = 0;
  DWORD size = room;
  const DWORD status = platform::RegQueryValueExW(key, name.c_str(), &type, buffer_.data(), &size);
  if (status == kErrorFileNotFound || status == kErrorMoreData) return true;
  if (status != kErrorSuccess) return false;
  const bool fits = wanted == platform::REG_SZ ? size <= room && size % sizeof(char16_t) == 0 : size == room;
  if (type != wanted || !fits) return true;

  std::memcpy(field.data, buffer_.data(), field.size);  // of a number, its low bytes
  if (wanted == platform::REG_SZ) {
    const size_t end = TextLength(field) * sizeof(char16_t);
    std::memset(field.data + end, 0, field.size - end);
  } else if (IsCountRow(rows_, row) && only_ < 0) {
    StoreCount(field, CountIn(field, RoomOfList(row.id)), RoomOfList(row.id));
  }
  return true;
}

/// A number is widened to its REG_DWORD as TransferValue does it; a text goes out with its terminator and no more.
bool StoreWalker::WriteField(HKEY key, const ListStoreRow& row, const std::u16string& name, const StoreField& field) {
  const DWORD type = RegistryType(field.type);
  if (type == platform::REG_BINARY) {
    return platform::RegSetValueExW(key, name.c_str(), type, field.data, field.size) == kErrorSuccess;
  }
  if (type == platform::REG_SZ) {
    const size_t length = TextLength(field);
    buffer_.assign((length + 1) * sizeof(char16_t), 0);
    std::memcpy(buffer_.data(), field.data, length * sizeof(char16_t));
    const auto size = static_cast<DWORD>(buffer_.size());
    return platform::RegSetValueExW(key, name.c_str(), type, buffer_.data(), size) == kErrorSuccess;
  }
  uint32_t value = 0;
  TransferValue(TransferDirection::kRead, {&value, sizeof value, kTypeU32}, {field.data, field.size, field.type},
                nullptr);
  if (IsCountRow(rows_, row)) value = CountIn(field, RoomOfList(row.id));
  uint8_t bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  return platform::RegSetValueExW(key, name.c_str(), type, bytes, sizeof bytes) == kErrorSuccess;
}

/// Deletes the items from number `first` on that a longer list left. They have no gaps, so the first missing one
/// ends them.
bool StoreWalker::DropSurplus(const Chain& chain, int number2, int first) {
  if (reading()) return true;
  const ListStoreRow& row = *chain.row;
  for (int number = first; number <= row.hi; ++number) {
    DWORD status;
    if (row.flags == kKeyRow) {
      status = platform::RegDeleteKeyW(platform::HKEY_CURRENT_USER, KeyPath(*chain.level1, &row, number).c_str());
      // A key with keys of somebody else below it stays, as in the deletion walk.
      if (status == kErrorAccessDenied) status = kErrorSuccess;
    } else {
      HKEY key;
      if (!OpenKeyOf(chain, number2, &key)) return false;
      status = platform::RegDeleteValueW(key, ExpandName(row, number).c_str());
    }
    if (status == kErrorFileNotFound) return true;
    if (status != kErrorSuccess) return false;
  }
  return true;
}

std::u16string StoreWalker::KeyPath(const ListStoreRow& level1, const ListStoreRow* level2, int number2) const {
  if (level2 == nullptr) return BuildUserKey(printer_name_, level1.name);
  return BuildUserKey(printer_name_, level1.name, ExpandName(*level2, number2));
}

/// The key that holds the row's value, or the row's own key. A write creates it; a read gives null if there is none.
bool StoreWalker::OpenKeyOf(const Chain& chain, int number2, HKEY* key) {
  const bool in_level1 = chain.row->level == 1 || (chain.row->level == 2 && chain.row->flags == kValueRow);
  const ListStoreRow* row = in_level1 ? chain.level1 : chain.level2;
  const int number = in_level1 ? 0 : number2;
  for (auto open = keys_.rbegin(); open != keys_.rend(); ++open) {
    if (open->row == row && open->number == number) {
      *key = open->key.get();
      return true;
    }
  }
  const std::u16string path = KeyPath(*chain.level1, in_level1 ? nullptr : chain.level2, number);
  HKEY handle = nullptr;
  const DWORD status =
      reading() ? platform::RegOpenKeyExW(platform::HKEY_CURRENT_USER, path.c_str(), 0, platform::KEY_READ, &handle)
                : platform::RegCreateKeyExW(platform::HKEY_CURRENT_USER, path.c_str(), platform::KEY_ALL_ACCESS,
                                            &handle, nullptr);
  if (status == kErrorFileNotFound && reading())
    handle = nullptr;
  else if (status != kErrorSuccess)
    return false;
  platform::UniqueKey owner(handle);
  keys_.push_back({row, number, std::move(owner)});
  *key = handle;
  return true;
}

bool HasStore(const ListStoreSet& set, ListStoreId store) {
  switch (store) {
    case ListStoreId::kPageLists:
      return set.pageLists != nullptr;
    case ListStoreId::kOverlays:
      return set.overlays != nullptr;
    case ListStoreId::kWatermarks:
      return set.watermarks != nullptr;
    case ListStoreId::kFontSubst:
      return set.fontSubst != nullptr;
    case ListStoreId::kFaxCover:
      return set.faxCover != nullptr;
    case ListStoreId::kUserPapers:
      return set.userPapers != nullptr;
  }
  return false;
}

/// A private set with one of the queue's per-page lists alone; without it if it can't be had.
ListStoreSet ReadPageList(std::u16string_view printer_name, int list) {
  ListStoreSet set;
  set.pageLists.reset(new (std::nothrow) PageListStore{});
  if (!ReadStoreItem(set, ListStoreId::kPageLists, printer_name, list)) set.pageLists.reset();
  return set;
}

template <typename T>
bool ReadPageListField(std::u16string_view printer_name, uint16_t row_id, int list, int item, T* out) {
  static_assert(std::is_trivially_copyable_v<T>);
  const ListStoreSet set = ReadPageList(printer_name, list);
  StoreField field;
  if (!GetStoreField(row_id, set, list, item, &field) || field.size != sizeof *out) return false;
  std::memcpy(out, field.data, sizeof *out);
  return true;
}

constexpr uint16_t kPageCountRow = 40;
constexpr uint16_t kMixplexRow = 41;
constexpr uint16_t kPageRow = 42;
constexpr uint16_t kTabSettingsRow = 63;

/// The walk in its batch.
bool WalkInBatch(const ListStoreSet& set, ListStoreId store, std::u16string_view printer_name, WalkOp op, int only) {
  if (!IsStoreEnabled(static_cast<uint16_t>(store))) return true;
  if (!HasStore(set, store)) return false;
  // For a read the batch is only a consistent look, and a user who may not write reads without it.
  platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
  if (op != WalkOp::kRead && !batch.open()) return false;
  const bool walked = StoreWalker(set, store, printer_name, op, only).Run();
  // An ended read must never withdraw a batch around it.
  if (op == WalkOp::kRead) {
    batch.Keep();
    return walked;
  }
  return walked && batch.Keep();
}

}  // namespace

bool WalkStore(const ListStoreSet& set, ListStoreId store, std::u16string_view printer_name, WalkOp op) {
  return WalkInBatch(set, store, printer_name, op, -1);
}

bool ReadStoreItem(const ListStoreSet& set, ListStoreId store, std::u16string_view printer_name, int number) {
  return number >= 0 && WalkInBatch(set, store, printer_name, WalkOp::kRead, number);
}

bool ReadListStores(ListStoreSet& set, std::u16string_view printer_name, platform::HANDLE printer) {
  bool all = true;
  for (const ListStoreId store : kRegistryStores) all &= WalkStore(set, store, printer_name, WalkOp::kRead);
  if (set.userPapers == nullptr) return false;
  return LoadUserPapers(set.userPapers.get(), printer) && all;
}

bool WriteListStores(const ListStoreSet& set, std::u16string_view printer_name, platform::HANDLE printer,
                     bool printer_data_locked, std::vector<ListStoreId>* unwritten) {
  std::vector<ListStoreId> failed;
  for (const ListStoreId store : kRegistryStores) {
    if (!WalkStore(set, store, printer_name, WalkOp::kWrite)) failed.push_back(store);
  }
  const bool has_papers = !printer_name.starts_with(u"\\\\") || !printer_data_locked;
  if (has_papers && (set.userPapers == nullptr || !SaveUserPapers(*set.userPapers, printer)))
    failed.push_back(ListStoreId::kUserPapers);
  const bool all = failed.empty();
  if (unwritten != nullptr) *unwritten = std::move(failed);
  return all;
}

bool ReadListPageCount(std::u16string_view printer_name, int list, uint16_t* out) {
  return ReadPageListField(printer_name, kPageCountRow, list, 0, out);
}

bool ReadListMixplex(std::u16string_view printer_name, int list, uint16_t* out) {
  return ReadPageListField(printer_name, kMixplexRow, list, 0, out);
}

bool ReadListPage(std::u16string_view printer_name, int list, int page, PageEntry* out) {
  return ReadPageListField(printer_name, kPageRow, list, page, out);
}

bool ReadListTabSettings(std::u16string_view printer_name, int list, TabSettings* out) {
  return ReadPageListField(printer_name, kTabSettingsRow, list, 0, out);
}

}  // namespace heron
