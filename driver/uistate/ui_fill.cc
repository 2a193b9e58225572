// Where the values of a state lie, and how they are filled from a record and the catalogue.
#include <cstring>

#include "uistate/ui_state.h"
#include "uistate/unnamed_params.h"

namespace heron {
namespace {

constexpr uint16_t kUsable = 1;

uint8_t* PositionOf(const UiState& ui, uint32_t position) {
  return position < ui.fixedSize ? ui.fixed.get() + position : ui.variable.get() + (position - ui.fixedSize);
}

uint8_t* VariablePart(const UiState& ui, uint16_t id) {
  return ui.variable.get() + Params().params[ParamIndexOf(id)].blockOffset;
}

uint16_t DefaultOf(const ResourceContext* resources, uint16_t feature) {
  return static_cast<uint16_t>(CatalogDefault(resources, feature));
}

void FillNumericBlock(const ResourceContext* resources, uint16_t feature, NumericBlock& block, uint16_t value) {
  block.value = block.committed = value;
  block.defaultValue = DefaultOf(resources, feature);
  block.status = kUsable;
  block.min = static_cast<uint16_t>(CatalogQuery(resources, feature, kMin, nullptr, 0, 0));
  block.max = static_cast<uint16_t>(CatalogQuery(resources, feature, kMax, nullptr, 0, 0));
}

/// The fields that list and radio blocks share, but for the index.
template <typename Block>
void FillHead(const ResourceContext* resources, uint16_t feature, Block& block, uint16_t value, size_t count) {
  block.value = block.committed = value;
  block.index = 0;
  block.defaultValue = DefaultOf(resources, feature);
  block.status = kUsable;
  block.count = static_cast<uint16_t>(count);
}

void FillBlock(const ResourceContext* resources, const ParamRow& row, uint8_t* block, uint16_t value) {
  switch (row.kind) {
    case ParamKind::kList:
      return FillListBlock(resources, row.feature, *reinterpret_cast<ListBlock*>(block), value);
    case ParamKind::kRadio:
      return FillRadioBlock(resources, row.feature, *reinterpret_cast<RadioBlock*>(block), value);
    case ParamKind::kCheck:
      return FillCheckBlock(resources, row.feature, *reinterpret_cast<CheckBlock*>(block), value);
    default:
      return FillNumericBlock(resources, row.feature, *reinterpret_cast<NumericBlock*>(block), value);
  }
}

}  // namespace

uint8_t* SlotOf(const UiState& ui, uint16_t index) {
  const WorkingParam& param = Params().params[index];
  if (param.row->kind == ParamKind::kInternal) return nullptr;
  uint8_t* slot = ui.fixed.get() + param.slotOffset;
  if (!param.row->HasPointer()) return slot;
  uint32_t position;
  std::memcpy(&position, slot, sizeof position);
  return PositionOf(ui, position);
}

ValueFields FieldsOf(const UiState& ui, uint16_t index) {
  auto* words = reinterpret_cast<uint16_t*>(SlotOf(ui, index));
  // List and radio blocks keep the index between value and committed value.
  const size_t skipped = kParamRows[index].HasPointer() ? 1 : 0;
  return {words, words + 1 + skipped, words + 2 + skipped, words + 3 + skipped};
}

std::span<char16_t, 32> DeviceName(const UiState& ui) {
  return std::span<char16_t, 32>(reinterpret_cast<char16_t*>(VariablePart(ui, param::kDeviceName)), 32);
}

std::span<PageEntry, kPagesPerList> CurrentPages(const UiState& ui) {
  return std::span<PageEntry, kPagesPerList>(reinterpret_cast<PageEntry*>(VariablePart(ui, param::kCurrentPages)),
                                             kPagesPerList);
}

std::span<uint8_t, 332> CurrentListHead(const UiState& ui) {
  return std::span<uint8_t, 332>(VariablePart(ui, param::kCurrentListHead), 332);
}

void FillListBlock(const ResourceContext* resources, uint16_t feature, ListBlock& block, uint16_t value) {
  const std::span<const ListOption> options = ListOptionsOf(feature);
  FillHead(resources, feature, block, value, options.size());
  const std::span<ListItem> items = block.Items();
  for (uint16_t i = 0; i < options.size(); ++i) {
    ListItem& item = items[i];
    item.value = static_cast<uint16_t>(options[i].value);
    item.displayIndex = i;
    item.status = kUsable;
    char16_t label[kLabelLength];
    CatalogQuery(resources, feature, kLabel, label, i, kLabelLength);
    std::memcpy(item.label, label, sizeof label);
    if (item.value == value) block.index = i;
  }
}

void FillRadioBlock(const ResourceContext* resources, uint16_t feature, RadioBlock& block, uint16_t value) {
  const std::span<const ListOption> options = ListOptionsOf(feature);
  FillHead(resources, feature, block, value, options.size());
  const std::span<RadioOption> slots = block.Options();
  for (uint16_t i = 0; i < options.size(); ++i) {
    slots[i] = {static_cast<uint16_t>(options[i].value), kUsable};
    if (slots[i].value == value) block.index = i;
  }
}

void FillCheckBlock(const ResourceContext* resources, uint16_t feature, CheckBlock& block, uint16_t value) {
  block = {value, value, DefaultOf(resources, feature), kUsable};
}

void FillUiState(UiState& ui, DriverEnv& env, const ResourceContext* resources) {
  for (const WorkingParam& param : Params().params) {
    const ParamRow& row = *param.row;
    if (row.kind == ParamKind::kInternal || IsVariableRow(row.id)) continue;
    uint16_t value = 0;
    uint8_t* source = nullptr;
    uint32_t source_size = 0;
    uint16_t source_type = 0;
    uint8_t* slot = nullptr;
    uint32_t slot_size = 0;
    uint16_t slot_type = 0;
    ParamAccess access;
    access.id = row.id;
    access.rowIndex = param.selfIndex;
    access.ui = &ui;
    access.env = &env;
    access.resources = resources;
    access.valueOut = &value;
    access.sourceOut = &source;
    access.sourceSizeOut = &source_size;
    access.sourceTypeOut = &source_type;
    access.slotOut = &slot;
    access.slotSizeOut = &slot_size;
    access.slotTypeOut = &slot_type;
    AccessParam(&access);
    if (row.HasBlock())
      FillBlock(resources, row, slot, value);
    else if (source != nullptr)
      TransferValue(TransferDirection::kWrite, {slot, slot_size, slot_type}, {source, source_size, source_type},
                    nullptr);
  }
}

}  // namespace heron
