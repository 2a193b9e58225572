// Copies of a state, and its end. No list is walked: positions inside the blocks hold in any copy.
#include <cstring>
#include <new>

#include "uistate/ui_blocks.h"
#include "uistate/ui_state.h"

namespace heron {
namespace {

/// Whether every store that `source` has exists in `copy`.
bool HasAllStores(const ListStoreSet& copy, const ListStoreSet& source) {
  const auto missing = [](const auto& a, const auto& b) { return a == nullptr && b != nullptr; };
  return !missing(copy.pageLists, source.pageLists) && !missing(copy.overlays, source.overlays) &&
         !missing(copy.watermarks, source.watermarks) && !missing(copy.fontSubst, source.fontSubst) &&
         !missing(copy.faxCover, source.faxCover) && !missing(copy.userPapers, source.userPapers);
}

}  // namespace

bool AllocateBlocks(UiState& ui, uint32_t fixed_size, uint32_t variable_size) {
  ui.fixed.reset(new (std::nothrow) uint8_t[fixed_size]());
  ui.variable.reset(new (std::nothrow) uint8_t[variable_size]());
  ui.fixedSize = fixed_size;
  ui.variableSize = variable_size;
  ui.totalSize = fixed_size + variable_size;
  return ui.fixed != nullptr && ui.variable != nullptr;
}

UiStatePtr CloneUiState(const UiState& ui) {
  UiStatePtr clone(new (std::nothrow) UiState);
  if (clone == nullptr || !AllocateBlocks(*clone, ui.fixedSize, ui.variableSize)) return nullptr;
  clone->stores = CreateListStoreSet();
  if (!HasAllStores(clone->stores, ui.stores)) return nullptr;
  clone->printer = ui.printer;
  clone->snapshots = ui.snapshots;
  CopyUiState(*clone, ui);
  return clone;
}

void CopyUiState(UiState& target, const UiState& source) {
  std::memcpy(target.fixed.get(), source.fixed.get(), source.fixedSize);
  std::memcpy(target.variable.get(), source.variable.get(), source.variableSize);
  CopyListStoreSet(target.stores, source.stores);
  target.iconOrder = source.iconOrder;
  BindUiState(target);
}

void FreeUiStateClone(UiStatePtr& ui) {
  ui.reset();
}

void DestroyUiState(UiStatePtr& ui) {
  ui.reset();
}

}  // namespace heron
