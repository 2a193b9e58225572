// Making the plan, and from a key to its value.
#include "presets/key_plan.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace heron {
namespace {

/// Rows whose text is protected.
struct StyledRow {
  uint16_t id;
  LineStyle style;
};
constexpr StyledRow kStyledRows[] = {
    {FileKeyId(u"Faxcoversheet Comment", u"%d"), LineStyle::kStarsLines},
    {FileKeyId(u"ISListName", u"Name%d"), LineStyle::kStars},
    {FileKeyId(u"User Defined Name", u"%d"), LineStyle::kStar},
};
static_assert(kStyledRows[0].id != 0 && kStyledRows[1].id != 0 && kStyledRows[2].id != 0);

std::string Ascii(std::u16string_view text) {
  std::string bytes;
  for (const char16_t c : text) bytes += static_cast<char>(c);
  return bytes;
}

NamePattern SplitName(std::u16string_view name) {
  const size_t at = name.find(u"%d");
  if (at == std::u16string_view::npos) return {Ascii(name), {}, false};
  return {Ascii(name.substr(0, at)), Ascii(name.substr(at + 2)), true};
}

LineStyle StyleOf(uint16_t id) {
  const auto styled = std::ranges::find(kStyledRows, id, &StyledRow::id);
  return styled == std::end(kStyledRows) ? LineStyle::kPlain : styled->style;
}

const StoreFieldRow* FieldOf(const WorkingParam& param) {
  if (param.row->storeItem == 0) return nullptr;
  const auto field = std::ranges::find(kStoreFields, param.row->storeItem, &StoreFieldRow::id);
  return field == std::end(kStoreFields) ? nullptr : field;
}

KeyEntry MakeKey(const WorkingFileKey& working) {
  KeyEntry key;
  key.row = working.row;
  key.key = SplitName(working.row->key);
  key.style = StyleOf(working.row->id);
  key.isCount = working.isCount;
  key.param = &Params().params[working.paramIndex];
  key.field = FieldOf(*key.param);
  if (key.isCount) key.room = RoomOfList(key.param->row->storeItem);
  return key;
}

void LinkCounts(KeyPlan& plan) {
  for (KeyEntry& key : plan.keys) {
    if (key.row->link == 0) continue;
    const auto count = std::ranges::find(plan.keys, key.row->link, [](const KeyEntry& k) { return k.row->id; });
    if (count != plan.keys.end()) key.count = static_cast<int>(count - plan.keys.begin());
  }
}

KeyPlan MakePlan() {
  KeyPlan plan;
  for (const WorkingFileKey& working : Params().fileKeys) {
    const FileKeyRow& row = *working.row;
    if (!row.section.empty()) {
      plan.sections.push_back({SplitName(row.section), row.lo, row.hi, static_cast<uint16_t>(plan.places)});
      plan.places += static_cast<size_t>(row.hi - row.lo + 1);
    }
    if (row.id == 0 || row.key.empty() || working.paramIndex == kNoIndex) continue;
    KeyEntry key = MakeKey(working);
    key.section = static_cast<uint16_t>(plan.sections.size() - 1);
    plan.keys.push_back(std::move(key));
  }
  LinkCounts(plan);
  return plan;
}

}  // namespace

const KeyPlan& Plan() {
  static const KeyPlan kPlan = MakePlan();
  return kPlan;
}

std::string_view ExpandName(const NamePattern& name, int number, NameBuffer& buffer) {
  if (!name.numbered) return name.head;
  char* end = std::copy(name.head.begin(), name.head.end(), buffer.text);
  end = std::to_chars(end, std::end(buffer.text), number).ptr;
  end = std::copy(name.tail.begin(), name.tail.end(), end);
  return {buffer.text, static_cast<size_t>(end - buffer.text)};
}

bool LocateValue(const KeyEntry& key, const UiState& ui, int section_number, int key_number, StoreField* value) {
  const WorkingParam& param = *key.param;
  if (key.field == nullptr) {
    uint8_t* data = param.row->HasBlock() ? reinterpret_cast<uint8_t*>(FieldsOf(ui, param.selfIndex).value)
                                          : SlotOf(ui, param.selfIndex);
    *value = {data, param.slotSize, param.slotType};
    return data != nullptr;
  }
  const bool numbered_section = Plan().sections[key.section].name.numbered;
  return GetStoreField(key.field->id, ui.stores, numbered_section ? section_number : key_number, key_number, value);
}

const uint8_t* StoredDefault(const KeyEntry& key, const UiState& ui) {
  const uint8_t* value = nullptr;
  if (ui.snapshots == nullptr) return nullptr;
  if (key.field == nullptr)
    GetRowDefault(key.param->selfIndex, *ui.snapshots, &value);
  else
    GetStoreRowDefault(key.param->storeIndex, *ui.snapshots, &value);
  return value;
}

}  // namespace heron
