// Passes, numbers and counts of the walk (key_walk.h).
//
// A list's count is clamped to the list's room wherever it is taken, so that no number leads outside a store.
#include "presets/key_walk.h"

#include <algorithm>
#include <cstring>

namespace heron {
namespace {

/// The values of one key of one section, one after the other. Of long lists only the first is looked up.
class ValueRun {
 public:
  ValueRun(const KeyEntry& key, const UiState& ui, int section_number)
      : key_(key), ui_(ui), section_number_(section_number) {
    const StoreGroup* group = key.field == nullptr ? nullptr : key.field->group;
    if (group == nullptr || group->items == 0) return;
    first_ = group->firstItem;
    last_ = group->firstItem + group->items - 1;
    stride_ = group->itemStride;
    if (!LocateValue(key, ui, section_number, first_, &value_)) last_ = first_ - 1;
  }

  const StoreField* At(int number) {
    if (stride_ == 0) return LocateValue(key_, ui_, section_number_, number, &found_) ? &found_ : nullptr;
    if (number < first_ || number > last_) return nullptr;
    found_ = value_;
    found_.data += static_cast<size_t>(number - first_) * stride_;
    return &found_;
  }

 private:
  const KeyEntry& key_;
  const UiState& ui_;
  const int section_number_;
  int first_ = 0;
  int last_ = 0;
  size_t stride_ = 0;
  StoreField value_{};
  StoreField found_{};
};

class Walker {
 public:
  Walker(const UiState& ui, WalkKind kind, KeyTransfer& transfer)
      : ui_(ui), into_(kind == WalkKind::kInto), transfer_(transfer), known_(into_ ? Plan().keys.size() : 0) {}

  void Walk(const KeyEntry& key);
  bool transferred() const { return transferred_; }

 private:
  int LastNumber(const KeyEntry& key, int section_number) const;
  bool KnowsCount(const KeyEntry& key, int section_number) const {
    return key.count != kNoEntry && (known_[static_cast<size_t>(key.count)] >> section_number & 1) != 0;
  }
  int WalkNumbers(const KeyEntry& key, int section_number);
  void CloseCount(const KeyEntry& key, int section_number, bool found);
  void TakeCount(const KeyEntry& key, int section_number, int items) const;

  const UiState& ui_;
  const bool into_;
  KeyTransfer& transfer_;
  std::vector<uint16_t> known_;  ///< of a count: a bit for each section number whose count was found
  bool transferred_ = false;
};

/// The key's last number: from the table, or from the list's count.
int Walker::LastNumber(const KeyEntry& key, int section_number) const {
  if (key.count == kNoEntry || (into_ && !KnowsCount(key, section_number))) return key.row->hi;
  const KeyEntry& count = Plan().keys[static_cast<size_t>(key.count)];
  StoreField field;
  if (!LocateValue(count, ui_, section_number, 1, &field)) return -1;
  return CountIn(field, count.room) - 1;
}

/// Gives the number of values that were transferred.
int Walker::WalkNumbers(const KeyEntry& key, int section_number) {
  const int last = LastNumber(key, section_number);
  ValueRun values(key, ui_, section_number);
  int done = 0;
  for (int number = key.row->lo; number <= last; ++number) {
    const bool moved = transfer_.Transfer(key, section_number, number, values.At(number));
    transferred_ |= moved;
    if (moved)
      ++done;
    else if (key.isCount || key.row->link != 0)
      break;
  }
  return done;
}

/// A count that came in bounds its list from now on.
void Walker::CloseCount(const KeyEntry& key, int section_number, bool found) {
  StoreField field;
  if (!found || !LocateValue(key, ui_, section_number, 1, &field)) return;
  StoreCount(field, CountIn(field, key.room), key.room);
  known_[static_cast<size_t>(&key - Plan().keys.data())] |= static_cast<uint16_t>(1u << section_number);
}

/// A list that came in without its count has the items that were found.
void Walker::TakeCount(const KeyEntry& key, int section_number, int items) const {
  if (key.count == kNoEntry || items == 0 || KnowsCount(key, section_number)) return;
  const KeyEntry& count = Plan().keys[static_cast<size_t>(key.count)];
  StoreField field;
  if (LocateValue(count, ui_, section_number, 1, &field)) StoreCount(field, static_cast<uint32_t>(items), count.room);
}

void Walker::Walk(const KeyEntry& key) {
  const SectionEntry& section = Plan().sections[key.section];
  for (int number = section.lo; number <= section.hi; ++number) {
    const int done = WalkNumbers(key, number);
    if (!into_) continue;
    if (key.isCount)
      CloseCount(key, number, done > 0);
    else
      TakeCount(key, number, done);
  }
}

}  // namespace

bool WalkKeys(const UiState& ui, WalkKind kind, int group, KeyTransfer& transfer) {
  Walker walker(ui, kind, transfer);
  const int passes = kind == WalkKind::kInto ? 2 : 1;
  for (int pass = 0; pass < passes; ++pass) {
    for (const KeyEntry& key : Plan().keys) {
      if (group != kAllGroups && key.row->group != group) continue;
      if (passes == 2 && key.isCount != (pass == 0)) continue;
      walker.Walk(key);
    }
  }
  return walker.transferred();
}

}  // namespace heron
