#include "library/library_recall.h"

#include <algorithm>
#include <cstring>

#include "catalog/strings.h"
#include "engine/page_list.h"
#include "engine/reports.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "library/key_walk.h"
#include "library/library_file.h"
#include "library/media_list.h"
#include "library/repair.h"
#include "platform/text.h"
#include "settings/papers.h"

namespace heron {
namespace {

using engine::Setting;

constexpr uint16_t kFax = 1;
constexpr uint16_t kPrinter = 2;
constexpr uint16_t kNormalOutput = 1;
constexpr uint16_t kNoOverlay = 1;
constexpr uint16_t kTypedRecipient = 2;

/// Groups of keys, in the order in which they are copied.
struct CopiedGroup {
  uint8_t part;
  int group;
};
constexpr CopiedGroup kCopiedGroups[] = {{kRecallSize, 2},  {kRecallUserPapers, 3}, {kRecallPerPage, 5},
                                         {kRecallForms, 7}, {kRecallWatermarks, 4}, {kRecallFaxCover, 6}};
constexpr int kOrdinaryGroup = 1;

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
  ShowPageListNames(ui);
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
  LibraryText line;
};
constexpr FaxConflict kFaxConflicts[] = {{engine::Control(u"lpOutputTray"), kOutputTrayMoves},
                                         {engine::Control(u"lpMediaType.122"), kMediaTypeMoves},
                                         {engine::Control(u"lpMediaSource"), kTrayMoves},
                                         {engine::Control(u"lpOutputPaper"), kPrintSizeMoves}};

/// A line for each setting that couldn't stay if the fax went to the printer. The settings stay as they are.
std::u16string FaxConflictLines(UiState& ui) {
  engine::Engine engine(ui);
  std::u16string lines[std::size(kFaxConflicts)];
  Setting<u"lpOutput">(ui) = kPrinter;
  engine::EvaluateRules(engine, nullptr);
  uint16_t old[std::size(kFaxConflicts)];
  for (size_t i = 0; i < std::size(kFaxConflicts); ++i) {
    const auto [control, line] = kFaxConflicts[i];
    const uint16_t id = engine::kControls[control].id;
    old[i] = engine.Value(control);
    if (!engine::IsControlAvailable(engine, id) || engine::SelectFirstAvailable(engine, id) != 1) continue;
    const std::u16string before = engine::ValueText(control, old[i]);
    const std::u16string after = engine::ValueText(control, engine.Value(control));
    lines[i] = platform::ExpandText(GetUiString(line), {std::u16string_view(before), std::u16string_view(after)});
    engine::EvaluateRules(engine, nullptr);
  }
  for (size_t i = 0; i < std::size(kFaxConflicts); ++i) engine.Set(kFaxConflicts[i].control, old[i]);
  Setting<u"lpOutput">(ui) = kFax;
  std::u16string all;
  for (size_t i = std::size(lines); i-- > 0;) all += lines[i];
  return all;
}

/// What is said of settings that aren't saved; empty if there are none.
std::u16string OneJobWarning(UiState& ui) {
  const bool method = Setting<u"lpOutputMethod">(ui) != kNormalOutput;
  const bool overlay = Setting<u"lpOverlay">(ui) != kNoOverlay;
  const bool fax = Setting<u"lpOutput">(ui) == kFax;
  if (!method && !overlay && !fax) return {};
  std::u16string text = TextsOf({kOneJobOnly, kNotSaved});
  if (method) text += TextsOf({kOutputMethodNotSaved});
  if (overlay) text += TextsOf({kOverlayNotSaved});
  if (fax) text += TextsOf({kFaxNotSaved}) + FaxConflictLines(ui);
  if (Setting<u"lpFaxCover_ReceivePersonal">(ui) == kTypedRecipient) text += TextsOf({kRecipientNotSaved});
  return text;
}

}  // namespace

bool LibraryRecall(const SettingsLibrary& library, int place, UiState& ui, uint8_t parts) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr || entry->state == nullptr) return false;
  const UiState& source = *entry->state;
  CopySettingsGroup(ui, source, kOrdinaryGroup, library.resources);
  for (const CopiedGroup& copied : kCopiedGroups) {
    if ((parts & copied.part) != 0) CopyPart(ui, source, copied, library.resources);
  }
  if ((parts & kRecallPaperTypes) != 0) TraysOf(ui) = TraysOf(source);
  RefreshTrayMedia(ui);
  const ValueFields overlay = FieldsOf(ui, ParamNamed<u"lpOverlay">());
  *overlay.value = *overlay.committed = kNoOverlay;
  ShowUserPapers(ui);
  if (NeedsZoom(ui, source, parts)) engine::ComputeAutoZoom(ui);
  return true;
}

bool RecallSettings(engine::Resolver& resolver, engine::EngineView* view, const SettingsLibrary& library, int place,
                    uint8_t parts, engine::ResolveOutcome* outcome) {
  UiState& ui = *resolver.engine.ui;
  // The resolver takes the settings back, not the lists.
  ListStoreSet lists = CreateListStoreSet();
  CopyListStoreSet(lists, ui.stores);
  engine::BeginAction(resolver);
  if (!LibraryRecall(library, place, ui, parts)) {
    engine::EndAction(resolver);
    return false;
  }
  engine::RecordRecallDifferences(resolver);
  *outcome = engine::ResolveRecall(resolver, view);
  if (!outcome->applied) {
    CopyListStoreSet(ui.stores, lists);
    ShowUserPapers(ui);
  }
  return true;
}

UiStatePtr PrepareForSaving(const UiState& ui, const ResourceContext* resources, engine::EngineView& view) {
  UiStatePtr prepared = CloneUiState(ui);
  if (prepared == nullptr) return nullptr;
  engine::StoreWorkingList(*prepared);
  RepairSettings(*prepared, kAllGroups, resources);
  if (const std::u16string warning = OneJobWarning(*prepared); !warning.empty())
    view.Show({GetUiString(kSaveCaption), warning, false});
  Setting<u"lpOverlay">(*prepared) = kNoOverlay;
  Setting<u"lpOutput">(*prepared) = kPrinter;
  Setting<u"SecMana_Check">(*prepared) = 0;
  Setting<u"UserAuth_Check">(*prepared) = 0;
  Setting<u"lpOutputMethod">(*prepared) = kNormalOutput;
  uint16_t& personal = Setting<u"lpFaxCover_ReceivePersonal">(*prepared);
  if (personal == kTypedRecipient) personal = 0;
  return prepared;
}

}  // namespace heron
