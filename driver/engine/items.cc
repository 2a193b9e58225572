// Statuses of list items, and the move away from a forbidden one.
#include <algorithm>

#include "engine/item_checks.h"
#include "generated/values.h"

namespace heron::engine {
namespace {

void SetStatus(ListItem& item, uint16_t number, bool forbidden) {
  item.status = forbidden ? kItemForbidden : kItemAllowed;
  item.displayIndex = forbidden ? kItemHidden : number;
}

}  // namespace

bool ItemCheck::Forbids(uint16_t value) const {
  return ForbiddenByPairs(engine_, list_, value) || ForbiddenByTriples(engine_, list_, value) ||
         papers_.Forbids(value) || finish_.Forbids(value);
}

bool HasItem(const Engine& engine, ControlIndex list, uint16_t value) {
  const auto items = engine.controls[list].list->Items();
  return std::ranges::any_of(items, [&](const ListItem& item) { return item.value == value; });
}

bool AnyTrayWithTransparencies(Engine& engine) {
  constexpr ControlIndex kTrays = Control(u"trayRowSource");
  ComputeItemStatus(engine, kControls[kTrays].id);
  return std::ranges::any_of(engine.controls[kTrays].list->Items(), [&](const ListItem& item) {
    return item.status == kItemAllowed &&
           MediaOfTray(engine, item.value).mediaType == value::lpMediaType::kTransparency;
  });
}

bool ComputeItemStatus(Engine& engine, uint16_t id) {
  ListBlock* const block = GetControlBlock(engine, id);
  if (block == nullptr) return false;
  const ItemCheck check(engine, IndexOf(id));
  for (uint16_t i = 0; i < block->count; ++i) {
    ListItem& item = block->Items()[i];
    SetStatus(item, i, check.Forbids(item.value));
  }
  return true;
}

void ComputeAllItemStatus(Engine& engine) {
  for (const ControlRow& control : kControls) {
    if (control.type == ControlType::kList) ComputeItemStatus(engine, control.id);
  }
}

uint16_t ComputeStatusOfItem(Engine& engine, ControlIndex control, uint16_t item) {
  ListItem& entry = engine.controls[control].list->Items()[item];
  SetStatus(entry, item, ItemCheck(engine, control).Forbids(entry.value));
  return entry.status;
}

Selection SelectFirstAvailable(Engine& engine, uint16_t id) {
  ListBlock* const block = GetControlBlock(engine, id);
  if (block == nullptr) return Selection::kStays;
  const LiftControl lift(engine, id);
  ComputeItemStatus(engine, id);
  const auto items = block->Items();
  const auto current = std::ranges::find(items, block->value, &ListItem::value);
  if (current != items.end() && current->status == kItemAllowed) return Selection::kStays;
  const auto first = std::ranges::find(items, kItemAllowed, &ListItem::status);
  if (first == items.end()) return Selection::kNoneAllowed;
  block->value = first->value;
  return Selection::kMoved;
}

}  // namespace heron::engine
