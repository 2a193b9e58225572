// Joining and laying out the parameter table, and access by number.
#include "uistate/params.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "catalog/other_values.h"
#include "generated/features.h"
#include "settings/papers.h"
#include "uistate/ui_state.h"
#include "uistate/unnamed_params.h"

namespace heron {
namespace {

constexpr std::u16string_view kOwnTypes[] = {u"u8", u"u16", u"w32"};

bool SameText(std::u16string_view wide, std::string_view narrow) {
  return std::ranges::equal(wide, narrow, {}, {}, [](char c) { return static_cast<char16_t>(c); });
}

uint16_t TypeCodeOf(FieldType type) {
  switch (type) {
    case FieldType::kU8:
      return kTypeU8;
    case FieldType::kU16:
      return kTypeU16;
    case FieldType::kI16:
      return kTypeI16;
    case FieldType::kU32:
      return kTypeU32;
    case FieldType::kText:
      return kTypeText;
    case FieldType::kBytes:
      break;
  }
  return kTypeBytes;
}

/// Size and type of the value itself: of the record's field, or of the place of its own.
void SetValueType(WorkingParam& param) {
  if (param.row->HasBlock()) {
    param.slotSize = sizeof(uint16_t);
    param.slotType = kTypeI16;
  } else if (param.field != nullptr) {
    param.slotSize = param.field->Size();
    param.slotType = TypeCodeOf(param.field->type);
  } else if (param.row->rule == ParamRule::kOwn) {
    const bool byte = param.row->field == kOwnTypes[0];
    const bool text = param.row->field == kOwnTypes[2];
    param.slotSize = byte ? 1 : text ? 64 : 2;
    param.slotType = byte ? kTypeU8 : text ? kTypeText : kTypeU16;
  }
}

/// The internal rows that name a part of the working store. 233 lies in the head.
struct InternalBlock {
  uint16_t id;
  uint32_t size;
  uint16_t type;
};
constexpr InternalBlock kInternalBlocks[] = {
    {param::kDeviceName, 64, kTypeText},
    {param::kCurrentPages, kPagesPerList * sizeof(PageEntry), kTypeBytes},
    {param::kCurrentListHead, sizeof PageList::head, kTypeBytes},
};

uint32_t CountOf(uint16_t feature) {
  return static_cast<uint32_t>(ListOptionsOf(feature).size());
}

uint32_t BlockSizeOf(const ParamRow& row) {
  if (row.id == param::kTabIndexNo) return ListBlockSize(HighestTabIndex() + 1);
  return row.kind == ParamKind::kList ? ListBlockSize(CountOf(row.feature)) : RadioBlockSize(CountOf(row.feature));
}

/// Bytes that a row takes among the slots.
uint32_t SlotRoom(const WorkingParam& param) {
  switch (param.row->kind) {
    case ParamKind::kList:
    case ParamKind::kRadio:
      return sizeof(uint32_t);
    case ParamKind::kCheck:
      return sizeof(CheckBlock);
    case ParamKind::kNumber:
      return sizeof(NumericBlock);
    case ParamKind::kInternal:
      return 0;
    default:
      return (param.slotSize + 3) & ~3u;
  }
}

/// The parts of the working store that internal rows name. They come first in the variable block, where pages are
/// aligned.
void PlaceInternalBlocks(ParamTables& tables) {
  for (const InternalBlock& block : kInternalBlocks) {
    WorkingParam& param = tables.params[ParamIndexOf(block.id)];
    param.variable = true;
    param.slotType = block.type;
    param.blockSize = param.slotSize = block.size;
    param.blockOffset = tables.variableSize;
    tables.variableSize += block.size;
  }
}

/// Walks the rows in table order and gives each its slot, and its block the next place in one of the two blocks.
void LayOut(ParamTables& tables) {
  PlaceInternalBlocks(tables);
  uint32_t slot = sizeof(UiHead);
  tables.fixedSize = kFixedHeadSize;
  for (WorkingParam& param : tables.params) {
    param.slotOffset = slot;
    slot += SlotRoom(param);
    if (!param.row->HasPointer()) continue;
    param.variable = IsVariableRow(param.row->id);
    param.blockSize = BlockSizeOf(*param.row);
    uint32_t& size = param.variable ? tables.variableSize : tables.fixedSize;
    param.blockOffset = size;
    size += param.blockSize;
  }
}

void JoinStores(ParamTables& tables) {
  for (WorkingParam& param : tables.params) {
    param.storeIndex = tables.stores.IndexOf(param.row->storeItem);
    if (param.storeIndex == kNoIndex) continue;
    WorkingStoreRow& store = tables.stores.rows[param.storeIndex];
    if (store.paramIndex == kNoIndex) store.paramIndex = param.selfIndex;
  }
}

void JoinFileKeys(ParamTables& tables) {
  for (WorkingParam& param : tables.params) {
    if (param.fileKey == 0) continue;
    const auto key = std::ranges::find(kFileKeyRows, param.fileKey, &FileKeyRow::id);
    if (key == kFileKeyRows.end()) continue;
    param.fileKeyIndex = static_cast<uint16_t>(key - kFileKeyRows.begin());
    WorkingFileKey& working = tables.fileKeys[param.fileKeyIndex];
    if (working.paramIndex != kNoIndex) continue;
    working.paramIndex = param.selfIndex;
    working.storeIndex = param.storeIndex;
    if (param.storeIndex != kNoIndex) tables.stores.rows[param.storeIndex].fileKeyIndex = param.fileKeyIndex;
  }
}

WorkingParam MakeParam(uint16_t index) {
  const ParamRow& row = kParamRows[index];
  WorkingParam param;
  param.row = &row;
  param.selfIndex = index;
  param.fileKey = row.section.empty() ? row.fileKey : FileKeyId(row.section, row.key);
  if (row.rule != ParamRule::kOwn && !row.field.empty()) {
    const auto field = std::ranges::find_if(kEnvFields, [&](const EnvField& f) { return SameText(row.field, f.name); });
    if (field != kEnvFields.end()) param.field = &*field;
  }
  SetValueType(param);
  return param;
}

WorkingFileKey MakeFileKey(uint16_t index) {
  const FileKeyRow& row = kFileKeyRows[index];
  WorkingFileKey key;
  key.row = &row;
  key.selfIndex = index;
  key.isCount = row.id != 0 && std::ranges::find(kFileKeyRows, row.id, &FileKeyRow::link) != kFileKeyRows.end();
  return key;
}

uint16_t ReadField(const WorkingParam& param, const DriverEnv& env) {
  uint16_t value = 0;
  const uint32_t width = std::min<uint32_t>(param.field->Size(), sizeof value);
  std::memcpy(&value, env.bytes.data() + param.field->At(param.row->fieldIndex), width);
  return value;
}

void Rewrite(const WorkingParam& param, DriverEnv& env, uint8_t value) {
  env.bytes[param.field->At(param.row->fieldIndex)] = value;
}

uint16_t DefaultOf(const ResourceContext* resources, uint16_t feature) {
  std::unique_ptr<ResourceContext, CloseContext> own;
  if (resources == nullptr) own.reset(OpenResourceContext(ReadLocaleCountry()));
  return static_cast<uint16_t>(CatalogDefault(resources != nullptr ? resources : own.get(), feature));
}

bool IsOlderLayout(uint16_t layout) {
  return layout == value::lpLayout::kOlderTwoPages || layout == value::lpLayout::kOlderLayout2;
}

/// The record's value of a row with a block. False if the row has nothing to say.
bool ReadValue(const WorkingParam& param, DriverEnv& env, const ResourceContext* resources, uint16_t* value) {
  constexpr uint16_t kNoCover = value::lpFrontCover::kNoCover;
  const bool user_paper = IsCustomPaper(Get<"dmPaperSize">(env));
  switch (param.row->rule) {
    case ParamRule::kNone:
    case ParamRule::kOwn:
      return false;
    case ParamRule::kDefault:
      *value = DefaultOf(resources, param.row->feature);
      return true;
    case ParamRule::kZero:
      *value = 0;
      return true;
    case ParamRule::kIsCovered:
      *value = ReadField(param, env) != kNoCover;
      return true;
    case ParamRule::kCover:
      if (ReadField(param, env) == kNoCover) Rewrite(param, env, value::lpFrontCover::kBlank);
      break;
    case ParamRule::kLayout:
      if (IsOlderLayout(ReadField(param, env))) Rewrite(param, env, value::lpLayout::kTwoPages);
      break;
    case ParamRule::kUserWidth:
    case ParamRule::kUserLength:
      if (!user_paper) break;
      *value = static_cast<uint16_t>(param.row->rule == ParamRule::kUserWidth ? Get<"dmPaperWidth">(env)
                                                                              : Get<"dmPaperLength">(env));
      return true;
    case ParamRule::kPlusOne:
      *value = ReadField(param, env) == value::EnableBPPChange_Check::kOnInRecord;
      return true;
    case ParamRule::kField:
      break;
  }
  *value = ReadField(param, env);
  return true;
}

template <typename T>
void Put(T* out, T value) {
  if (out != nullptr) *out = value;
}

void Bind(const WorkingParam& param, const UiState& ui) {
  const uint32_t position = param.blockOffset + (param.variable ? ui.fixedSize : 0);
  std::memcpy(ui.fixed.get() + param.slotOffset, &position, sizeof position);
}

/// Address, size and type of what a by-id call moves; false if `which` names nothing.
bool ValuePlace(const WorkingParam& param, const UiState& ui, uint32_t which, TransferTarget* place) {
  *place = {nullptr, param.slotSize, param.slotType};
  if (!param.row->HasBlock()) {
    place->data = SlotOf(ui, param.selfIndex);
    return true;
  }
  const ValueFields fields = FieldsOf(ui, param.selfIndex);
  if (which == kWorkingValue)
    place->data = fields.value;
  else if (which == kDefaultValueOf)
    place->data = fields.defaultValue;
  return place->data != nullptr;
}

const WorkingParam* FindValueParam(uint16_t id, const UiState* ui) {
  const uint16_t index = ParamIndexOf(id);
  if (ui == nullptr || index == kNoIndex || kParamRows[index].kind == ParamKind::kInternal) return nullptr;
  return &Params().params[index];
}

}  // namespace

uint32_t HighestTabIndex() {
  uint32_t highest = 0;
  for (const ListOption& option : ListOptionsOf(feature::lpTabIndexNum)) {
    highest = std::max<uint32_t>(highest, static_cast<uint16_t>(option.value));
  }
  return highest;
}

ParamTables BuildParamTable() {
  ParamTables tables;
  for (uint16_t i = 0; i < kParamRows.size(); ++i) tables.params.push_back(MakeParam(i));
  for (uint16_t i = 0; i < kFileKeyRows.size(); ++i) tables.fileKeys.push_back(MakeFileKey(i));
  tables.stores = BuildListStoreTable();
  JoinStores(tables);
  JoinFileKeys(tables);
  LayOut(tables);
  PlaceSnapshots(tables);
  return tables;
}

const ParamTables& Params() {
  static const ParamTables kTables = BuildParamTable();
  return kTables;
}

int32_t AccessParam(const ParamAccess* access) {
  if (access == nullptr || access->rowIndex >= kParamRows.size()) return 0;
  const WorkingParam& param = Params().params[access->rowIndex];
  if (param.row->id != access->id || param.row->kind == ParamKind::kInternal) return 0;
  if (access->env != nullptr && param.row->HasBlock() && access->valueOut != nullptr) {
    ReadValue(param, *access->env, access->resources, access->valueOut);
  }
  if (access->env != nullptr && param.row->IsRaw()) {
    uint8_t* source = param.field == nullptr ? nullptr : access->env->bytes.data() + param.field->offset;
    Put(access->sourceOut, source);
    Put(access->sourceSizeOut, param.slotSize);
    Put(access->sourceTypeOut, param.slotType);
  }
  if (access->ui == nullptr) return 1;
  if (access->bind && param.row->HasPointer()) Bind(param, *access->ui);
  if (access->slotOut != nullptr) *access->slotOut = SlotOf(*access->ui, access->rowIndex);
  Put(access->slotSizeOut, param.slotSize);
  Put(access->slotTypeOut, param.slotType);
  return 1;
}

int32_t GetParamSlot(uint16_t id, uint16_t row_index, UiState* ui, uint8_t** slot_out, uint32_t* size_out,
                     uint16_t* type_out) {
  if (ui == nullptr) return 0;
  ParamAccess access;
  access.id = id;
  access.rowIndex = row_index;
  access.ui = ui;
  access.slotOut = slot_out;
  access.slotSizeOut = size_out;
  access.slotTypeOut = type_out;
  return AccessParam(&access);
}

void BindUiState(UiState& ui) {
  for (const WorkingParam& param : Params().params) {
    if (param.row->HasPointer()) Bind(param, ui);
  }
}

int32_t GetParamValue(uint16_t id, void* dst, uint32_t dst_size, uint16_t dst_type, uint8_t** slot_out,
                      uint32_t* size_out, uint16_t* type_out, UiState* ui, uint32_t which) {
  const WorkingParam* param = FindValueParam(id, ui);
  if (param == nullptr) return -1;
  TransferTarget place;
  if (!ValuePlace(*param, *ui, which, &place)) return kTransferDone;
  Put(slot_out, static_cast<uint8_t*>(place.data));
  Put(type_out, place.type);
  return TransferValue(TransferDirection::kRead, {dst, dst_size, dst_type}, {place.data, place.size, place.type},
                       size_out);
}

int32_t SetParamValue(uint16_t id, const void* src, uint32_t src_size, uint16_t src_type, UiState* ui, uint32_t which) {
  const WorkingParam* param = FindValueParam(id, ui);
  if (param == nullptr) return -1;
  TransferTarget place;
  if (!ValuePlace(*param, *ui, which, &place)) return kTransferDone;
  return TransferValue(TransferDirection::kWrite, place, {src, src_size, src_type}, nullptr);
}

}  // namespace heron
