#include "engine/page_list.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "catalog/other_values.h"
#include "catalog/paper_codes.h"
#include "engine/setting.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kTray = Control(u"lpInterSheetListTray");
constexpr ControlIndex kType = Control(u"lpInterSheetListPRNType");
constexpr ControlIndex kStaple = Control(u"lpInterSheetListStaple");
constexpr ControlIndex kStapleStop = Control(u"InterSheetListStapleStop");
constexpr ControlIndex kPunch = Control(u"lpInterSheetListPunch");
constexpr std::array<ControlIndex, 4> kMedia = {
    Control(u"lpInterSheetListMediaType"), Control(u"lpInterSheetListPaperWeight"),
    Control(u"lpInterSheetListPaperColor"), Control(u"lpInterSheetListPaperHoles")};

namespace row_staple = value::lpInterSheetListStaple;

uint16_t& RowCount(const UiState& ui) {
  return SlotAs<u"InterSheetListData_PageListNum", uint16_t>(ui);
}

PageList* ListNumbered(const UiState& ui, uint16_t number) {
  return ui.stores.pageLists == nullptr ? nullptr : &ui.stores.pageLists->lists[number - 1];
}

/// Values of some settings, put back at the end of a scope.
template <size_t N>
class KeepValues {
 public:
  KeepValues(Engine& engine, const std::array<ControlIndex, N>& controls) : engine_(engine), controls_(controls) {
    for (size_t i = 0; i < N; ++i) values_[i] = engine.Value(controls[i]);
  }
  ~KeepValues() {
    for (size_t i = 0; i < N; ++i) engine_.Set(controls_[i], values_[i]);
  }
  KeepValues(const KeepValues&) = delete;
  KeepValues& operator=(const KeepValues&) = delete;

 private:
  Engine& engine_;
  std::array<ControlIndex, N> controls_;
  std::array<uint16_t, N> values_{};
};

void LoadRow(Engine& engine, const PageEntry& row) {
  engine.Set(kType, static_cast<uint16_t>(row.type));
  engine.Set(kTray, static_cast<uint16_t>(row.tray));
  engine.Set(kStaple, static_cast<uint16_t>(row.staple));
  engine.Set(kStapleStop, static_cast<uint16_t>(row.stapleStop));
  engine.Set(kPunch, static_cast<uint16_t>(row.punch));
  engine.Set(Control(u"PrnTabIndex"), static_cast<uint16_t>(row.prnTabIndex));
  engine.Set(Control(u"lpPrnTabIndexNo"), static_cast<uint16_t>(row.prnTabIndexNo));
}

/// The media of the row's tray; a tray of its own value means the document's.
void LoadRowMedia(Engine& engine) {
  const uint16_t tray = engine.Value(kTray);
  const TrayMedia media = MediaOfTray(
      engine, tray == value::lpInterSheetListTray::kAsDocument ? engine.Value(Control(u"lpMediaSource")) : tray);
  const uint8_t values[] = {media.mediaType, media.weight, media.paperColor, media.punched};
  for (size_t i = 0; i < kMedia.size(); ++i) engine.Set(kMedia[i], values[i]);
}

std::span<ListItem> ItemsOf(const Engine& engine, ControlIndex control) {
  ListBlock* list = engine.controls[control].list;
  return list == nullptr ? std::span<ListItem>() : list->Items();
}

bool IsForbidden(const Engine& engine, ControlIndex control) {
  const auto items = ItemsOf(engine, control);
  const auto item = std::ranges::find(items, engine.Value(control), &ListItem::value);
  return item != items.end() && item->status == kItemForbidden;
}

void TakeFirstAllowed(Engine& engine, ControlIndex control) {
  const auto items = ItemsOf(engine, control);
  const auto item = std::ranges::find(items, kItemAllowed, &ListItem::status);
  if (item != items.end()) engine.Set(control, item->value);
}

/// From the end of the list on: two-sided if the document is, else one-sided; otherwise the first that is allowed.
void TakeLikelyType(Engine& engine) {
  const uint16_t document = engine.Value(Control(u"lpPRNType"));
  const auto items = ItemsOf(engine, kType);
  for (size_t i = items.size(); i-- > 0;) {
    if (items[i].status != kItemAllowed) continue;
    engine.Set(kType, items[i].value);
    using namespace value;
    const bool two_sided = items[i].value == lpInterSheetListPRNType::kTwoSided;
    const bool fits = document == lpPRNType::kTwoSided || document == lpPRNType::kBooklet;
    if (items[i].value == lpInterSheetListPRNType::kOneSided || (two_sided && fits)) return;
  }
}

/// Whether the row's value of a list is forbidden; with `repair` it is replaced.
bool CheckList(Engine& engine, ControlIndex control, bool repair) {
  ComputeItemStatus(engine, kControls[control].id);
  if (!IsForbidden(engine, control)) return false;
  if (repair) {
    const uint16_t old = engine.Value(control);
    if (control == kType)
      TakeLikelyType(engine);
    else
      TakeFirstAllowed(engine, control);
    return engine.Value(control) != old;
  }
  return true;
}

/// Stapling can't be stopped where nothing is stapled.
bool CheckStapleStop(Engine& engine, bool repair) {
  const uint16_t staple = engine.Value(kStaple);
  const bool stapled =
      staple != row_staple::kNone && (staple != row_staple::kAsPage || engine.Value(Control(u"Staple_Check")) != 0);
  if (stapled || !engine.IsOn(kStapleStop)) return false;
  if (repair) engine.Set(kStapleStop, 0);
  return true;
}

void CheckFields(Engine& engine, bool repair, uint8_t& failed) {
  using Check = PerPageRowCheck;
  const auto note = [&](bool fails, Check::Fields field) {
    if (fails) failed = static_cast<uint8_t>(failed | field);
    return fails && !repair;
  };
  if (note(CheckList(engine, kTray, repair), Check::kTray)) return;
  LoadRowMedia(engine);
  if (note(CheckList(engine, kType, repair), Check::kType)) return;
  if (note(CheckList(engine, kStaple, repair), Check::kStaple)) return;
  if (note(CheckStapleStop(engine, repair), Check::kStapleStop)) return;
  note(CheckList(engine, kPunch, repair), Check::kPunch);
}

/// CheckPerPageRow, but for the items of the row's lists, which keep the statuses of this row.
PerPageRowCheck TestRow(Engine& engine, bool repair) {
  constexpr ControlIndex kOutput = Control(u"lpOutputPaper");
  const KeepValues paper(engine, std::array<ControlIndex, 1>{kOutput});
  const RuleStates states = SaveRuleStates(engine);
  if (engine.Value(kOutput) == kSameAsDocument) {
    const uint16_t document = engine.Value(Control(u"lpMediaSize"));
    engine.Set(kOutput, static_cast<uint16_t>(document & ~paper::kFamilyF));
  }
  for (const ControlIndex control : {kTray, kType, kStaple, kStapleStop, kPunch})
    SetControlAvailable(engine, kControls[control].id, true);
  PerPageRowCheck check;
  CheckFields(engine, repair, check.failed);
  RestoreRuleStates(engine, states);
  return check;
}

void RecomputeRowLists(Engine& engine) {
  for (const ControlIndex control : {kTray, kType, kStaple, kPunch}) ComputeItemStatus(engine, kControls[control].id);
}

}  // namespace

uint16_t WorkingList(const UiState& ui) {
  return std::clamp<uint16_t>(SlotAs<u"InterSheetListData_nCurrent", uint16_t>(ui), 1, kPageListCount);
}

void StoreWorkingList(UiState& ui) {
  PageList* list = ListNumbered(ui, WorkingList(ui));
  if (list == nullptr) return;
  std::ranges::copy(CurrentPages(ui), list->pages);
  std::ranges::copy(CurrentListHead(ui), list->head);
  list->pageCount = std::min<uint16_t>(RowCount(ui), kPagesPerList);
  list->mixplex = SlotAs<u"InterSheetListData_Mixplex", uint16_t>(ui);
}

void LoadWorkingList(UiState& ui, uint16_t number) {
  number = std::clamp<uint16_t>(number, 1, kPageListCount);
  const PageList* list = ListNumbered(ui, number);
  if (list == nullptr) return;
  SlotAs<u"InterSheetListData_nCurrent", uint16_t>(ui) = number;
  std::ranges::copy(list->pages, CurrentPages(ui).begin());
  std::ranges::copy(list->head, CurrentListHead(ui).begin());
  RowCount(ui) = std::min<uint16_t>(list->pageCount, kPagesPerList);
  SlotAs<u"InterSheetListData_Mixplex", uint16_t>(ui) = list->mixplex;
}

void ShowPageListNames(const UiState& ui) {
  if (ui.stores.pageLists == nullptr) return;
  const auto items = SlotAs<u"lpInterSheetList", ListBlock>(ui).Items();
  const size_t count = std::min<size_t>(items.size(), kPageListCount);
  for (size_t i = 0; i < count; ++i) {
    char16_t label[kLabelLength] = {};
    std::ranges::copy(ui.stores.pageLists->lists[i].name, label);
    std::memcpy(items[i].label, label, sizeof label);
  }
}

bool FollowListChoice(Engine& engine) {
  const uint16_t chosen = engine.Value(Control(u"lpInterSheetList"));
  if (chosen == WorkingList(*engine.ui)) return false;
  StoreWorkingList(*engine.ui);
  LoadWorkingList(*engine.ui, chosen);
  return true;
}

int ValidatePerPageList(Engine& engine, Conflicts which) {
  const uint16_t count = std::min<uint16_t>(RowCount(*engine.ui), kPagesPerList);
  if (engine.ui->stores.pageLists == nullptr || count == 0 || !IsControlAvailable(engine, kPerPageListControl))
    return 0;
  const auto rows = CurrentPages(*engine.ui).first(count);
  const auto in_conflict = [&rows] { return std::ranges::count(rows, kRowInConflict, &PageEntry::stat); };
  const auto before = in_conflict();

  constexpr std::array<ControlIndex, 11> kRowSettings = {
      kTray,     kType,     kStaple,   kStapleStop, kPunch, Control(u"PrnTabIndex"), Control(u"lpPrnTabIndexNo"),
      kMedia[0], kMedia[1], kMedia[2], kMedia[3]};
  {
    const KeepValues kept(engine, kRowSettings);
    for (PageEntry& row : rows) {
      LoadRow(engine, row);
      row.stat = TestRow(engine, false).failed == 0 ? kRowValid : kRowInConflict;
    }
  }
  RecomputeRowLists(engine);
  const auto after = in_conflict();
  return static_cast<int>(which == Conflicts::kAll ? after : after - before);
}

PerPageRowCheck CheckPerPageRow(Engine& engine, bool repair) {
  const PerPageRowCheck check = TestRow(engine, repair);
  RecomputeRowLists(engine);
  return check;
}

}  // namespace heron::engine
