// The rows of params.table, their joined form, and access to a setting by its number.
//
// Everything here is constant: kParamRows at compile time, Params() at its first use. The common accessor is driven by
// the rows; what differs between settings is their rule. Results of the by-id calls: 0 done, 234 the buffer is
// too small, -1 and -2 refused with nothing changed.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "catalog/catalog.h"
#include "settings/driver_env.h"
#include "uistate/file_keys.h"
#include "uistate/transfer_value.h"

namespace heron {

struct UiState;

enum class ParamKind : uint32_t {
  kList = 0x1,
  kRadio = 0x2,
  kCheck = 0x4,
  kNumber = 0x8,
  kText = 0x40,
  kScalar = 0x100,
  kOtherText = 0x200,
  kBlock = 0x1000000,
  kInternal = 0x2000000,
};

/// Where a fresh value comes from and what writing back does with it; from params.table.
enum class ParamRule : uint8_t {
  kNone,
  kField,
  kDefault,
  kZero,
  kOwn,
  kIsCovered,
  kCover,
  kLayout,
  kUserWidth,
  kUserLength,
  kPlusOne,
};

inline constexpr uint16_t kNoFeature = 65535;

struct ParamRow {
  uint16_t id = 0;  ///< 0 ends the table
  uint16_t feature = kNoFeature;
  uint16_t storeItem = 0;  ///< id of a list-store row, 0 for none
  uint16_t fileKey = 0;    ///< id of a file key; 0 if `section` and `key` name it, or there is none
  ParamKind kind = ParamKind::kInternal;
  ParamRule rule = ParamRule::kNone;
  std::u16string_view key = {};      ///< empty if the setting has no name
  std::u16string_view section = {};  ///< of a settings file; empty: not stored
  std::u16string_view field = {};    ///< of the record, or the type of a place of its own
  uint16_t fieldIndex = 0;           ///< which of a repeated field

  /// L, R, C and N: the value is a u16 with a committed one and a default beside it.
  constexpr bool HasBlock() const { return static_cast<uint32_t>(kind) <= 8; }
  /// L and R: the block lies behind a pointer slot.
  constexpr bool HasPointer() const { return static_cast<uint32_t>(kind) <= 2; }
  constexpr bool IsRaw() const { return !HasBlock() && kind != ParamKind::kInternal; }
};

inline constexpr std::u16string_view kPlainSection = u"IP_SETTING LIBRARY UIPARAM";

/// All rows in the order of the walks and the closing row of id 0.
inline constexpr auto kParamRows = std::to_array<ParamRow>({
#include "generated/params.inc"
    {},
});

consteval size_t CountParams(ParamKind kind) {
  size_t count = 0;
  for (const ParamRow& row : kParamRows) count += row.kind == kind;
  return count;
}
static_assert(kParamRows.size() == 462 && kParamRows[0].id == 1 && kParamRows.back().id == 0);
static_assert(CountParams(ParamKind::kList) == 126 && CountParams(ParamKind::kRadio) == 34);
static_assert(CountParams(ParamKind::kCheck) == 116 && CountParams(ParamKind::kNumber) == 59);
static_assert(CountParams(ParamKind::kText) == 14 && CountParams(ParamKind::kScalar) == 17);
static_assert(CountParams(ParamKind::kOtherText) == 2 && CountParams(ParamKind::kBlock) == 1);
static_assert(CountParams(ParamKind::kInternal) == 93);

/// Index of the row with this id, or kNoIndex; 0 finds nothing.
constexpr uint16_t ParamIndexOf(uint16_t id) {
  for (uint16_t i = 0; id != 0 && i < kParamRows.size(); ++i) {
    if (kParamRows[i].id == id) return i;
  }
  return kNoIndex;
}

/// Rows that the walks over ordinary blocks pass over: they are sized and filled by rules of their own.
constexpr bool IsVariableRow(uint16_t id) {
  constexpr uint16_t kVariableRows[] = {100, 138, 184, 185, 186, 204, 205, 206, 207, 208, 209, 214, 215, 216, 233};
  return std::find(std::begin(kVariableRows), std::end(kVariableRows), id) != std::end(kVariableRows);
}

/// A row at run time: its places in the working store and in the tables that it is joined with.
struct WorkingParam {
  const ParamRow* row = nullptr;
  const EnvField* field = nullptr;  ///< of the record, or null
  uint16_t fileKey = 0;
  uint32_t slotOffset = 0;   ///< of the pointer slot, inline block or raw slot in the fixed block
  uint32_t slotSize = 0;     ///< of a raw slot, an internal block, or a value (2)
  uint16_t slotType = 0;     ///< type code of the same
  uint32_t blockOffset = 0;  ///< of the block behind a pointer slot, from the block that `variable` names
  uint32_t blockSize = 0;
  bool variable = false;        ///< the block lies in the variable block
  uint32_t snapshotOffset = 0;  ///< in the value snapshot, if inSnapshot
  bool inSnapshot = false;
  uint16_t selfIndex = kNoIndex;
  uint16_t storeIndex = kNoIndex;
  uint16_t fileKeyIndex = kNoIndex;
};

/// The joined tables. They follow from the constant tables and the catalogue's counts alone, so that one object serves
/// the whole process.
struct ParamTables {
  std::vector<WorkingParam> params;      ///< kParamRows, closing row included
  std::vector<WorkingFileKey> fileKeys;  ///< kFileKeyRows, closing row included
  ListStoreTable stores;
  uint32_t fixedSize = 0;     ///< bytes of the fixed block
  uint32_t variableSize = 0;  ///< bytes of the variable block
  uint32_t valueSnapshotSize = 0;
  uint32_t listSnapshotSize = 0;
};

/// Joins the three tables and lays out the blocks.
ParamTables BuildParamTable();
/// Its last step: gives the rows that have a stored default their place in a snapshot.
void PlaceSnapshots(ParamTables& tables);
/// The text feature with default and bounds of a setting without a feature of its own, by its id; kNoFeature if
/// there is none.
uint16_t ValueFeatureOf(uint16_t id);
/// The highest number that a tab can have; 0 on a model without tab paper.
uint32_t HighestTabIndex();
/// The process's own; built at the first call, by one thread while others wait.
const ParamTables& Params();

/// What an accessor is asked for; every pointer may be null.
struct ParamAccess {
  uint16_t id = 0;
  uint16_t rowIndex = 0;
  UiState* ui = nullptr;
  DriverEnv* env = nullptr;                    ///< a 1 of a cover and an older layout are rewritten in it
  const ResourceContext* resources = nullptr;  ///< for rows that read a default; null: opened for the call
  uint16_t* valueOut = nullptr;                ///< untouched by rows that have nothing to say
  uint8_t** sourceOut = nullptr;               ///< the record's field of a raw value; null if it has none
  uint32_t* sourceSizeOut = nullptr;
  uint16_t* sourceTypeOut = nullptr;
  uint8_t** slotOut = nullptr;  ///< the value's block or slot in `ui`
  uint32_t* slotSizeOut = nullptr;
  uint16_t* slotTypeOut = nullptr;
  bool bind = false;  ///< set the pointer slot
};

/// The common accessor: 1, or 0 for null, a row that isn't `id`, or one without an accessor.
int32_t AccessParam(const ParamAccess* access);

/// Address, size and type of a value's block or slot. 0 if `ui` is null, the row isn't `id` or has no value of its own.
int32_t GetParamSlot(uint16_t id, uint16_t row_index, UiState* ui, uint8_t** slot_out, uint32_t* size_out,
                     uint16_t* type_out);

/// Sets every pointer slot. Runs after a state is created, cloned or copied.
void BindUiState(UiState& ui);

inline constexpr uint32_t kWorkingValue = 1;
inline constexpr uint32_t kDefaultValueOf = 2;

/// Reads a value with conversion. `which` picks the working value or the default of L, R, C and N and means nothing to
/// the others; any other `which` leaves `dst` untouched and gives 0. `slot_out`, `size_out`, `type_out` may be null.
int32_t GetParamValue(uint16_t id, void* dst, uint32_t dst_size, uint16_t dst_type, uint8_t** slot_out,
                      uint32_t* size_out, uint16_t* type_out, UiState* ui, uint32_t which);
/// Writes it, by the same rules.
int32_t SetParamValue(uint16_t id, const void* src, uint32_t src_size, uint16_t src_type, UiState* ui, uint32_t which);

}  // namespace heron
