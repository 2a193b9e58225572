// The working settings of one record while pages are open: for each setting a value, the committed value, the default
// and what may be chosen.
//
// A UiState is two blocks of bytes, the list stores and constant tables. The fixed block holds UiHead, a slot for each
// setting, and behind kFixedHeadSize the list and radio blocks; the variable block holds the blocks that the per-page
// list and the preview share. A pointer slot holds a position in the two blocks laid end to end, so that a clone is two
// block copies. Blocks are written through a const UiState: constness is that of the owner. A state and its clones
// belong to one thread. Texts are zero-terminated but where the record's own field wasn't.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "catalog/catalog.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"
#include "uistate/list_stores.h"
#include "uistate/params.h"

namespace heron {

inline constexpr uint32_t kLabelLength = 64;  ///< characters of an item's label, terminator included

struct ListItem {
  uint16_t value;
  uint16_t displayIndex;  ///< the item's own index after filling
  char16_t label[kLabelLength];
  uint16_t status;  ///< 1 allowed, 4 forbidden
};
static_assert(sizeof(ListItem) == 134);

/// Head of a list block, with `count` items behind it.
struct ListBlock {
  uint16_t value;
  uint16_t index;  ///< of the item that had `value` when the block was filled, or 0
  uint16_t committed;
  uint16_t defaultValue;
  uint16_t status;
  uint16_t count;

  std::span<ListItem> Items() { return {reinterpret_cast<ListItem*>(this + 1), count}; }
};
static_assert(sizeof(ListBlock) == 12);

struct RadioOption {
  uint16_t value;
  uint16_t status;
};

/// Head of a radio block, with `count` options behind it.
struct RadioBlock {
  uint16_t value;
  uint16_t index;
  uint16_t committed;
  uint16_t defaultValue;
  uint16_t status;
  uint16_t count;

  std::span<RadioOption> Options() { return {reinterpret_cast<RadioOption*>(this + 1), count}; }
};

struct CheckBlock {
  uint16_t value;
  uint16_t committed;
  uint16_t defaultValue;
  uint16_t status;
};

struct NumericBlock {
  uint16_t value;
  uint16_t committed;
  uint16_t defaultValue;
  uint16_t status;
  uint16_t min;
  uint16_t max;
};
static_assert(sizeof(RadioBlock) == 12 && sizeof(CheckBlock) == 8 && sizeof(NumericBlock) == 12);

constexpr uint32_t ListBlockSize(uint32_t count) {
  return static_cast<uint32_t>((count - 1) * sizeof(ListItem) + sizeof(ListBlock) + sizeof(ListItem));
}
constexpr uint32_t RadioBlockSize(uint32_t count) {
  return static_cast<uint32_t>(count * sizeof(RadioOption) + sizeof(RadioBlock));
}

inline constexpr uint32_t kRecipientCount = 100;
inline constexpr uint32_t kRecipientTextLength = 44;

using RecipientColumn = char16_t[kRecipientCount][kRecipientTextLength + 1];
using RecipientChecks = CheckBlock[kRecipientCount];

/// The front of the fixed block. The sheet's fields are zero until the page host sets them.
struct UiHead {
  uint32_t isDocumentSheet;
  uint32_t uiEditable;
  uint32_t printerDataLocked;  ///< 1: printer-wide data may not be changed; 1 until the page host knows better
  uint16_t activeDialogId;
  uint16_t reserved;

  char16_t helpPath[platform::kMaxPath];
  char16_t phoneBookPath[platform::kMaxPath];
  char16_t driverDirectory[platform::kMaxPath];

  uint8_t trayTable[64];  ///< the record's bytes 3170 to 3233
  uint8_t pageMemo[6];

  uint16_t faxAddressCount;  ///< recipients, 0 to 100; changes when the fax page is applied
  uint16_t faxRowCount;      ///< its twin, which follows the page's rows at once
  RecipientColumn faxNames;
  RecipientColumn faxNumbers;
  RecipientColumn faxCompanies;
  RecipientColumn faxDepartments;
  RecipientChecks faxEcm;
  RecipientChecks faxOverseas;
  RecipientChecks faxV34;
};

inline constexpr uint32_t kFixedHeadSize = 46496;  ///< UiHead and the slots; list and radio blocks follow

/// Defaults of settings without a feature and of list-store fields, at the places that ParamTables gives.
struct UiSnapshots {
  std::vector<uint8_t> values;
  std::vector<uint8_t> lists;
};

/// Numbers of the features that the status panel shows, in the order in which they were turned on; 0 for a free slot.
using IconOrder = std::array<uint8_t, 6>;

struct UiState {
  std::unique_ptr<uint8_t[]> fixed;
  std::unique_ptr<uint8_t[]> variable;
  uint32_t totalSize = 0;
  uint32_t fixedSize = 0;
  uint32_t variableSize = 0;
  platform::HANDLE printer = nullptr;            ///< looked at, owned by the sheet
  std::shared_ptr<const UiSnapshots> snapshots;  ///< shared with clones
  ListStoreSet stores;
  IconOrder iconOrder{};  ///< kept as long as the state, stored nowhere

  UiHead& head() const { return *reinterpret_cast<UiHead*>(fixed.get()); }
};
using UiStatePtr = std::unique_ptr<UiState>;

// Access to values. `index` is a row of kParamRows.

/// The block or slot of a row; null for an internal row.
uint8_t* SlotOf(const UiState& ui, uint16_t index);

/// The fields that all kinds with a block have.
struct ValueFields {
  uint16_t* value;
  uint16_t* committed;
  uint16_t* defaultValue;
  uint16_t* status;
};
/// Of a row of kind L, R, C or N.
ValueFields FieldsOf(const UiState& ui, uint16_t index);

/// A setting's key as a template argument.
template <size_t N>
struct ParamKey {
  char16_t text[N];
  consteval ParamKey(const char16_t (&key)[N]) { std::copy_n(key, N, text); }
  consteval std::u16string_view View() const { return {text, N - 1}; }
};

/// Row of the setting with this key; a key that doesn't exist or isn't unique doesn't compile.
template <ParamKey kKey>
consteval uint16_t ParamNamed() {
  uint16_t found = kNoIndex;
  for (uint16_t i = 0; i < kParamRows.size(); ++i) {
    if (kParamRows[i].key != kKey.View()) continue;
    if (found != kNoIndex) throw "two settings bear this key";
    found = i;
  }
  if (found == kNoIndex) throw "no setting bears this key";
  return found;
}

template <ParamKey kKey>
uint16_t Committed(const UiState& ui) {
  constexpr uint16_t kIndex = ParamNamed<kKey>();
  static_assert(kParamRows[kIndex].HasBlock());
  return *FieldsOf(ui, kIndex).committed;
}

/// The block or raw slot of a setting as T, whose kind the caller knows.
template <ParamKey kKey, typename T>
T& SlotAs(const UiState& ui) {
  return *reinterpret_cast<T*>(SlotOf(ui, ParamNamed<kKey>()));
}

std::span<char16_t, 32> DeviceName(const UiState& ui);
std::span<PageEntry, kPagesPerList> CurrentPages(const UiState& ui);  ///< the working per-page list
std::span<uint8_t, 332> CurrentListHead(const UiState& ui);

// Life of a state.

/// The working form of `env`, which stays as it is; `resources` isn't null. The user's stores are brought to this
/// version and read. Null if a block couldn't be allocated, or if the stores can't be read now: editing would overwrite
/// what they hold. Smaller allocations throw. The constraint engine is started on the result by its editor.
UiStatePtr CreateUiState(const ResourceContext* resources, const DriverEnv& env, platform::HANDLE printer);
void DestroyUiState(UiStatePtr& ui);

/// Fills every ordinary block and slot from `env`, which is rewritten where a rule says so.
void FillUiState(UiState& ui, DriverEnv& env, const ResourceContext* resources);

/// Fills a block from the catalogue rows of `feature`. A `value` that no row has stays. `block` has room for the rows.
void FillListBlock(const ResourceContext* resources, uint16_t feature, ListBlock& block, uint16_t value);
void FillRadioBlock(const ResourceContext* resources, uint16_t feature, RadioBlock& block, uint16_t value);
void FillCheckBlock(const ResourceContext* resources, uint16_t feature, CheckBlock& block, uint16_t value);

/// Writes the committed values into `env`, with what follows from them. Nothing outside `env` changes.
void FillRecord(const UiState& ui, DriverEnv& env, const ResourceContext* resources);

/// Whether a write-back stores the fax recipients in the record's address file, or leaves that and the record's
/// number of it to the caller.
enum class AddressFile : uint8_t { kWrite, kLeave };

/// The same, and stores what belongs to a confirmed record, the user's fax recipients included. A part that
/// can't be written (the recipients' file, BookMode) doesn't stop the others.
void WriteBackUiState(UiState& ui, DriverEnv& env, const ResourceContext* resources,
                      AddressFile addresses = AddressFile::kWrite);

/// A copy of its own; null, with nothing kept, if memory runs out.
UiStatePtr CloneUiState(const UiState& ui);
/// Makes `target` equal to `source`, in its own blocks and stores. Both stem from one creation.
void CopyUiState(UiState& target, const UiState& source);
void FreeUiStateClone(UiStatePtr& ui);

// Stored defaults.

/// Queries the catalogue for all of them.
UiSnapshots TakeSnapshots(const ResourceContext* resources);
/// Address of the default of a row, valid as long as `snapshots`; false, with `out` untouched, if there is none. The
/// default has the size and type of the row's slot.
bool GetRowDefault(uint16_t row_index, const UiSnapshots& snapshots, const uint8_t** out);
/// The same for a row of the list-store table, with the size and type of the store's field.
bool GetStoreRowDefault(uint16_t row_index, const UiSnapshots& snapshots, const uint8_t** out);

}  // namespace heron
