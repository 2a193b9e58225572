#include "pages/recall_dialogs.h"

#include "engine/setting.h"
#include "presets/recall.h"

namespace heron::pages {
namespace {

enum Control : ControlId { kList = 2522, kComment = 2524, kOptions = 2525 };

constexpr LibraryControls kControls = {.tabs = 2701,
                                       .rows = 2704,
                                       .upper = 2526,
                                       .lower = 2527,
                                       .list = kList,
                                       .find = 2530,
                                       .kind = 2528,
                                       .differences = 2531};

enum OptionControl : ControlId { kUserPapers = 2543, kSelectAll = 2549, kRestore = 2550 };

struct Flag {
  ControlId check;
  uint16_t param;
};
constexpr Flag kFlags[] = {
    {2542, ParamNamed<u"UsetPaperChk">()},         {kUserPapers, ParamNamed<u"UsetUDPaperChk">()},
    {2546, ParamNamed<u"UsetWMarkChk">()},         {2545, ParamNamed<u"UsetTrybyPgChk">()},
    {2548, ParamNamed<u"UsetMediaTypeListChk">()}, {2547, ParamNamed<u"UsetFaxcoverChk">()},
    {2544, ParamNamed<u"UsetFormChk">()}};
static_assert(std::size(kFlags) == std::tuple_size_v<RecallFlags>);

}  // namespace

RecallFlags ReadRecallFlags(const UiState& ui) {
  RecallFlags flags;
  for (size_t i = 0; i < flags.size(); ++i) flags[i] = *FieldsOf(ui, kFlags[i].param).value;
  return flags;
}

void StoreRecallFlags(const UiState& ui, const RecallFlags& flags) {
  for (size_t i = 0; i < flags.size(); ++i) *FieldsOf(ui, kFlags[i].param).value = flags[i];
}

void RecallOptionsDialog::Show(const RecallFlags& flags) {
  const bool papers = OffersUserPapers(sheet_.ui());
  for (size_t i = 0; i < flags.size(); ++i) {
    const bool possible = kFlags[i].check != kUserPapers || papers;
    dialog().SetChecked(kFlags[i].check, flags[i] != 0 && possible);
    dialog().Enable(kFlags[i].check, possible);
  }
}

void RecallOptionsDialog::OnInitialise() {
  Show(ReadRecallFlags(sheet_.ui()));
}

void RecallOptionsDialog::OnClicked(ControlId id) {
  RecallFlags flags{};
  if (id == kSelectAll) {
    flags.fill(1);
    Show(flags);
  }
  if (id == kRestore) {
    for (size_t i = 0; i < flags.size(); ++i) flags[i] = *FieldsOf(sheet_.ui(), kFlags[i].param).defaultValue;
    Show(flags);
  }
  if (id == platform::kOkButton) {
    for (size_t i = 0; i < flags.size(); ++i) flags[i] = dialog().IsChecked(kFlags[i].check) ? 1 : 0;
    StoreRecallFlags(sheet_.ui(), flags);
  }
  if (id == platform::kOkButton || id == platform::kCancelButton) dialog().End(id);
}

RecallDialog::RecallDialog(SheetContext& sheet) : LibraryDialog(sheet, kControls) {}

void RecallDialog::OnInitialise() {
  if (!OpenLibrary(LibraryLoad::kSettings)) return dialog().End(platform::IDCANCEL);
  if (library().count == 0) {
    TellUser(library(), text::kRecallEmptyCaption, {text::kNothingToRecall});
    return dialog().End(platform::IDCANCEL);
  }
  flags_ = ReadRecallFlags(sheet().ui());
  SetUpTabs();
  FillEntries(nullptr);
  dialog().Focus(kList);
}

void RecallDialog::OnEntryShown(const LibraryEntry* entry) {
  dialog().SetText(kComment, entry == nullptr ? std::u16string() : entry->comment);
  dialog().Enable(platform::kOkButton, entry != nullptr && entry->state != nullptr);
}

void RecallDialog::OnButton(ControlId id) {
  if (id == kOptions) {
    RecallOptionsDialog options(sheet());
    dialog().RunDialog(RecallOptionsDialog::kNumber, &options);
  }
  if (id == platform::kOkButton) Recall();
  if (id == platform::kCancelButton) {
    StoreRecallFlags(sheet().ui(), flags_);
    dialog().End(id);
  }
}

void RecallDialog::OnRowActivated(ControlId id) {
  if (id == kList) Recall();
}

/// What would have to change besides is reported first; a No leaves the dialog open and every setting as it was.
void RecallDialog::Recall() {
  engine::ResolveOutcome outcome;
  if (RecallSettings(sheet().resolver(), this, library(), SelectedPlace(), RecallPartsOf(sheet().ui()), &outcome) &&
      outcome.applied)
    dialog().End(platform::kOkButton);
}

}  // namespace heron::pages
