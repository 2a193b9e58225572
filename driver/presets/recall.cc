#include "presets/recall.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "catalog/strings.h"
#include "changes/opening.h"
#include "changes/reports.h"
#include "engine/page_list.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "presets/key_walk.h"
#include "presets/media_list.h"
#include "presets/preset_file.h"
#include "presets/repair.h"
#include "settings/papers.h"

namespace heron {
namespace {

using engine::Setting;

/// Groups of keys, in the order in which they are copied.
struct CopiedGroup {
  uint8_t part;
  int group;
};
constexpr CopiedGroup kCopiedGroups[] = {{kRecallSize, 2},  {kRecallUserPapers, 3}, {kRecallPerPage, 5},
                                         {kRecallForms, 7}, {kRecallWatermarks, 4}, {kRecallFaxCover, 6}};
constexpr int kOrdinaryGroup = 1;

/// Looks for values that differ from those of another state.
class KeyComparer final : public KeyTransfer {
 public:
  explicit KeyComparer(const UiState& source) : source_(source) {}

  bool Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) override {
    StoreField other;
    if (value == nullptr || !LocateValue(key, source_, section_number, key_number, &other)) return false;
    differs_ |= !Same(*value, other);
    return true;
  }
  bool differs() const { return differs_; }

 private:
  static bool Same(const StoreField& a, const StoreField& b) {
    if (a.size != b.size) return false;
    return a.type == kTypeText ? TextOf(a) == TextOf(b) : std::memcmp(a.data, b.data, a.size) == 0;
  }
  static std::u16string TextOf(const StoreField& field) {
    std::u16string text(field.size / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), field.data, text.size() * sizeof(char16_t));
    return text.substr(0, text.find(u'\0'));
  }

  const UiState& source_;
  bool differs_ = false;
};

/// A copy as an entry holds it: the working per-page list stored, every value one of the catalogue's. Null if memory
/// runs out.
UiStatePtr AsSaved(const UiState& ui, const ResourceContext* resources) {
  UiStatePtr copy = CloneUiState(ui);
  if (copy == nullptr) return nullptr;
  engine::StoreWorkingList(*copy);
  RepairSettings(*copy, kAllGroups, resources);
  return copy;
}

bool GroupDiffers(const UiState& ui, const UiState& source, int group) {
  KeyComparer comparer(source);
  WalkKeys(ui, WalkKind::kInto, group, comparer);
  return comparer.differs();
}

void ClearForms(OverlayStore& store) {
  store.formListNum = 0;
  std::memset(store.createFileName, 0, sizeof store.createFileName);
  std::memset(store.printFileName, 0, sizeof store.printFileName);
  std::memset(store.forms, 0, sizeof store.forms);
}

void CopyPart(UiState& ui, const UiState& source, const CopiedGroup& copied, const ResourceContext* resources) {
  if (copied.part == kRecallForms && ui.stores.overlays != nullptr) ClearForms(*ui.stores.overlays);
  CopySettingsGroup(ui, source, copied.group, resources);
  if (copied.part != kRecallPerPage) return;
  engine::ShowPageListNames(ui);
  engine::LoadWorkingList(ui, engine::WorkingList(ui));
}

/// The process's paper table shows the user papers of the working settings.
void ShowUserPapers(const UiState& ui) {
  if (ui.stores.userPapers == nullptr) return;
  RefreshUserPaperRows(*ui.stores.userPapers);
  BuildUserPaperSizeTexts(*ui.stores.userPapers);
}

/// Whether the zoom follows the papers that came, or is the one that came with them.
bool NeedsZoom(const UiState& ui, const UiState& source, uint8_t parts) {
  const uint16_t document = Setting<u"lpMediaSize">(ui);
  const uint16_t output = Setting<u"lpOutputPaper">(ui);
  const bool has_user_size = IsCustomPaper(document) || IsCustomPaper(output);
  const bool differs = document != Setting<u"lpMediaSize">(source) || output != Setting<u"lpOutputPaper">(source);
  const bool size = (parts & kRecallSize) != 0;
  const bool papers = (parts & kRecallUserPapers) != 0;
  if (size && papers) return false;
  if (size) return has_user_size;
  return differs || (!papers && has_user_size);
}

/// A setting that only a fax could have moved, by the order in which it is tried; lines ascend by control.
struct FaxConflict {
  engine::ControlIndex control;
  TextNumber line;
};
constexpr FaxConflict kFaxConflicts[] = {{engine::Control(u"lpOutputTray"), text::kOutputTrayMoves},
                                         {engine::Control(u"lpMediaType"), text::kMediaTypeMoves},
                                         {engine::Control(u"lpMediaSource"), text::kTrayMoves},
                                         {engine::Control(u"lpOutputPaper"), text::kPrintSizeMoves}};

/// The parts without those that this printer hasn't got.
uint8_t Possible(uint8_t parts, const UiState& ui) {
  return OffersUserPapers(ui) ? parts : static_cast<uint8_t>(parts & ~kRecallUserPapers);
}

/// A line for each setting that couldn't stay if the fax went to the printer. The settings stay as they are.
std::u16string FaxConflictLines(UiState& ui) {
  engine::Engine engine(ui);
  std::u16string lines[std::size(kFaxConflicts)];
  Setting<u"lpOutput">(ui) = value::lpOutput::kPrinter;
  engine::EvaluateRules(engine, nullptr);
  uint16_t old[std::size(kFaxConflicts)];
  for (size_t i = 0; i < std::size(kFaxConflicts); ++i) {
    const auto [control, line] = kFaxConflicts[i];
    const uint16_t id = engine::kControls[control].id;
    old[i] = engine.Value(control);
    if (!engine::IsControlAvailable(engine, id) ||
        engine::SelectFirstAvailable(engine, id) != engine::Selection::kMoved)
      continue;
    const std::u16string before = engine::ValueText(control, old[i]);
    const std::u16string after = engine::ValueText(control, engine.Value(control));
    lines[i] = platform::ExpandText(GetUiString(line), {std::u16string_view(before), std::u16string_view(after)});
    engine::EvaluateRules(engine, nullptr);
  }
  for (size_t i = 0; i < std::size(kFaxConflicts); ++i) engine.Set(kFaxConflicts[i].control, old[i]);
  Setting<u"lpOutput">(ui) = value::lpOutput::kFax;
  std::u16string all;
  for (size_t i = std::size(lines); i-- > 0;) all += lines[i];
  return all;
}

/// What is said of settings that aren't saved; empty if there are none.
std::u16string OneJobWarning(UiState& ui) {
  const bool method = Setting<u"lpOutputMethod">(ui) != value::lpOutputMethod::kPrint;
  const bool overlay = Setting<u"lpOverlay">(ui) != value::lpOverlay::kNoOverlay;
  const bool fax = Setting<u"lpOutput">(ui) == value::lpOutput::kFax;
  if (!method && !overlay && !fax) return {};
  std::u16string text = TextsOf({text::kMeantForOneJob, text::kNotSaved});
  if (method) text += TextsOf({text::kOutputMethodNotSaved});
  if (overlay) text += TextsOf({text::kOverlayNotSaved});
  if (fax) text += TextsOf({text::kFaxNotSaved}) + FaxConflictLines(ui);
  if (Setting<u"lpFaxCover_ReceivePersonal">(ui) == value::lpFaxCover_ReceivePersonal::kTyped)
    text += TextsOf({text::kRecipientNotSaved});
  return text;
}

}  // namespace

bool OffersUserPapers(const UiState& ui) {
  const auto items = SlotAs<u"lpMediaSize", ListBlock>(ui).Items();
  return std::ranges::any_of(items, [](const ListItem& item) { return IsCustomPaper(item.value); });
}

uint8_t RecallPartsOf(const UiState& ui) {
  const std::pair<uint16_t, uint8_t> flags[] = {{Setting<u"UsetPaperChk">(ui), kRecallSize},
                                                {Setting<u"UsetUDPaperChk">(ui), kRecallUserPapers},
                                                {Setting<u"UsetTrybyPgChk">(ui), kRecallPerPage},
                                                {Setting<u"UsetWMarkChk">(ui), kRecallWatermarks},
                                                {Setting<u"UsetFaxcoverChk">(ui), kRecallFaxCover},
                                                {Setting<u"UsetFormChk">(ui), kRecallForms},
                                                {Setting<u"UsetMediaTypeListChk">(ui), kRecallPaperTypes}};
  uint8_t parts = 0;
  for (const auto& [on, part] : flags) parts |= on != 0 ? part : uint8_t{0};
  return Possible(parts, ui);
}

uint8_t DifferingParts(const SettingsLibrary& library, int place, const UiState& ui) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr || entry->state == nullptr) return 0;
  const UiStatePtr own = AsSaved(ui, library.resources);
  if (own == nullptr) return 0;
  uint8_t parts = 0;
  for (const auto& [part, group] : kCopiedGroups) {
    if (GroupDiffers(*own, *entry->state, group)) parts |= part;
  }
  if (std::memcmp(&TraysOf(*own), &TraysOf(*entry->state), sizeof TraysOf(*own)) != 0) parts |= kRecallPaperTypes;
  return parts;
}

bool LibraryRecall(const SettingsLibrary& library, int place, UiState& ui, uint8_t parts) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr || entry->state == nullptr) return false;
  const UiState& source = *entry->state;
  parts = Possible(parts, ui);
  CopySettingsGroup(ui, source, kOrdinaryGroup, library.resources);
  for (const CopiedGroup& copied : kCopiedGroups) {
    if ((parts & copied.part) != 0) CopyPart(ui, source, copied, library.resources);
  }
  engine::KeepSwitchesOn(ui);
  if ((parts & kRecallPaperTypes) != 0) TraysOf(ui) = TraysOf(source);
  RefreshTrayMedia(ui);
  const ValueFields overlay = FieldsOf(ui, ParamNamed<u"lpOverlay">());
  *overlay.value = *overlay.committed = value::lpOverlay::kNoOverlay;
  ShowUserPapers(ui);
  if (NeedsZoom(ui, source, parts)) engine::ComputeAutoZoom(ui);
  return true;
}

bool RecallSettings(engine::Resolver& resolver, engine::EngineView* view, const SettingsLibrary& library, int place,
                    uint8_t parts, engine::ResolveOutcome* outcome) {
  UiState& ui = *resolver.engine.ui;
  const engine::Action action(resolver);
  if (!LibraryRecall(library, place, ui, parts)) return false;
  engine::RecordRecallDifferences(resolver);
  *outcome = engine::ResolveRecall(resolver, view);
  if (!outcome->applied) ShowUserPapers(ui);
  return true;
}

UiStatePtr PrepareForSaving(const UiState& ui, const ResourceContext* resources, engine::EngineView& view) {
  UiStatePtr prepared = AsSaved(ui, resources);
  if (prepared == nullptr) return nullptr;
  if (const std::u16string warning = OneJobWarning(*prepared); !warning.empty())
    view.Show({GetUiString(text::kSaveSettings), warning, false});
  Setting<u"lpOverlay">(*prepared) = value::lpOverlay::kNoOverlay;
  Setting<u"lpOutput">(*prepared) = value::lpOutput::kPrinter;
  Setting<u"SecMana_Check">(*prepared) = 0;
  Setting<u"UserAuth_Check">(*prepared) = 0;
  Setting<u"lpOutputMethod">(*prepared) = value::lpOutputMethod::kPrint;
  uint16_t& personal = Setting<u"lpFaxCover_ReceivePersonal">(*prepared);
  if (personal == value::lpFaxCover_ReceivePersonal::kTyped) personal = 0;
  return prepared;
}

}  // namespace heron
