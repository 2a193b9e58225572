#include "pages/overlay_page.h"

#include <algorithm>

#include "catalog/strings.h"
#include "generated/values.h"
#include "platform/api/files.h"
#include "platform/api/text.h"

namespace heron::pages {

using engine::Setting;

namespace {

namespace overlay = value::lpOverlay;

constexpr ControlId kNone = engine::ControlId(u"lpOverlay.NoOverlay"),
                    kMake = engine::ControlId(u"lpOverlay.CreateForm"),
                    kPrint = engine::ControlId(u"lpOverlay.PrintWithForm");
constexpr ControlId kPrompt = engine::ControlId(u"OverlayPrompt"),
                    kFirstPage = engine::ControlId(u"OverlayOrder_Check");
constexpr ControlId kPaperView = engine::ControlId(u"previewMode.Paper"),
                    kMachineView = engine::ControlId(u"previewMode.Machine");
constexpr ControlId kDelete = 406, kName = 410, kBrowse = 411, kList = 412, kFolder = 417;

enum Group : uint8_t { kMode, kPromptGroup, kFirst, kView };
constexpr ShownControl kControls[] = {
    {kNone, kMode},       {kMake, kMode},      {kPrint, kMode},       {kPrompt, kPromptGroup},
    {kFirstPage, kFirst}, {kPaperView, kView}, {kMachineView, kView},
};

constexpr std::u16string_view kAnyForm = u"*.vxf";

uint8_t& Chosen(const UiState& ui) {
  return SlotAs<u"bOverlayIndex", uint8_t>(ui);
}

std::u16string CreateFile(const OverlayStore& store) {
  const std::u16string_view field(store.createFileName, std::size(store.createFileName));
  return std::u16string(field.substr(0, field.find(u'\0')));
}

void SetCreateFile(OverlayStore& store, std::u16string_view path) {
  std::fill(std::begin(store.createFileName), std::end(store.createFileName), u'\0');
  path.copy(store.createFileName, kFormPathLength);
}

bool IsThere(const std::u16string& path) {
  return platform::GetFileAttributesW(path.c_str()) != platform::INVALID_FILE_ATTRIBUTES;
}

}  // namespace

OverlayPage::OverlayPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

bool OverlayPage::Makes() const {
  return Setting<u"lpOverlay">(ui()) == overlay::kCreateForm;
}
bool OverlayPage::Prints() const {
  return Setting<u"lpOverlay">(ui()) == overlay::kPrintWithForm;
}

// -- opening and showing

void OverlayPage::OnInitialise() {
  Page::OnInitialise();
  if (ui().stores.overlays == nullptr) return;
  if (Editable()) {
    TakeLeftName();
    DropUnfitForms(ui());
  }
  const bool selects = Prints() && Chosen(ui()) < FormsIn(store()).size();
  FillList(selects ? std::optional<size_t>(Chosen(ui())) : std::nullopt);
  if (Makes() && !chosen_.empty()) ShowName(SplitFormPath(chosen_));
}

/// A form that was to be made: by now it may have been, and joins the list.
void OverlayPage::TakeLeftName() {
  chosen_ = CreateFile(store());
  if (chosen_.empty() || !IsThere(chosen_)) return;
  SetCreateFile(store(), {});
  if (!PlaceOfForm(store(), chosen_)) AddForm(store(), chosen_);
}

FormName OverlayPage::Named() const {
  std::u16string folder = dialog().Text(kFolder);
  if (folder == TextOf(text::kNoFormFile)) folder.clear();
  return {std::move(folder), dialog().Text(kName)};
}

void OverlayPage::ShowName(const FormName& name) {
  dialog().SetText(kName, name.name);
  dialog().SetText(kFolder, name.folder);
}

/// Shows the list of the store; the fields name the selected form, or that there is none.
void OverlayPage::FillList(std::optional<size_t> selected) {
  rows_ = FormRowsOf(store());
  std::vector<platform::ListRow> shown;
  for (const FormRow& row : rows_)
    shown.push_back({.text = row.cells[0], .cells = {row.cells[1], row.cells[2], row.cells[3]}});
  dialog().SetRows(kList, shown);
  if (rows_.empty()) return ShowName({TextOf(text::kNoFormFile), std::u16string(kAnyForm)});
  if (!selected || *selected >= rows_.size()) return;
  dialog().SelectRow(kList, static_cast<int>(*selected));
  ShowName(SplitFormPath(rows_[*selected].path));
}

void OverlayPage::SelectForm(size_t place) {
  if (place >= rows_.size()) return;
  ShowName(SplitFormPath(rows_[place].path));
  if (Prints()) Chosen(ui()) = static_cast<uint8_t>(place);
  MarkChanged();
}

// -- what the user does

void OverlayPage::OnRowSelected(ControlId id) {
  if (id != kList) return Page::OnRowSelected(id);
  const int row = dialog().SelectedRow(kList);
  if (row >= 0) SelectForm(static_cast<size_t>(row));
}

void OverlayPage::OnTextChanged(ControlId id) {
  if (id != kName) return Page::OnTextChanged(id);
  MarkChanged();
}

/// The first click on a heading sorts upwards, the next one downwards. The chosen form stays chosen.
void OverlayPage::OnHeadingClicked(ControlId id, int column) {
  if (id != kList || rows_.size() < 2 || column < 0 || column >= static_cast<int>(ascending_.size())) return;
  bool& ascending = ascending_[static_cast<size_t>(column)];
  ascending = !ascending;
  const int focused = dialog().SelectedRow(kList);
  const std::u16string selected = focused >= 0 ? rows_[static_cast<size_t>(focused)].path : std::u16string();
  const size_t chosen = Chosen(ui());
  const std::u16string chosen_path = chosen < rows_.size() ? rows_[chosen].path : std::u16string();
  SortFormRows(rows_, column, ascending);
  std::vector<std::u16string> paths;
  for (const FormRow& row : rows_) paths.push_back(row.path);
  SetForms(store(), paths);
  if (Prints()) Chosen(ui()) = static_cast<uint8_t>(PlaceOfForm(store(), chosen_path).value_or(0));
  FillList(PlaceOfForm(store(), selected));
  MarkChanged();
}

/// Without a form to print there is no chosen one; a No brings it back.
void OverlayPage::OnChanged(ControlId id) {
  const Action action(sheet().resolver());
  if (id == kNone || id == kMake) Chosen(ui()) = 0;
  Page::OnChanged(id);
  if (id != kMake && id != kPrint) return;
  if (Makes() && !chosen_.empty()) return ShowName(SplitFormPath(chosen_));
  if (Prints() && dialog().SelectedRow(kList) >= 0) SelectForm(static_cast<size_t>(dialog().SelectedRow(kList)));
}

void OverlayPage::OnButton(ControlId id) {
  if (id == kBrowse) return Browse();
  if (id == kDelete) return DeleteForm();
  Page::OnButton(id);
}

void OverlayPage::Browse() {
  const bool makes = Makes();
  const std::u16string title = TextOf(makes ? text::kCreateForm : text::kPrintWithForm);
  const std::u16string filter = TextOf(text::kFormFilter);
  const FormName named = Named();
  const auto answer = dialog().AskFileName(
      {.saves = makes, .title = title, .folder = named.folder, .name = named.name, .filter = filter});
  if (!answer) return;
  FormName name = SplitFormPath(*answer);
  name.name = WithFormExtension(name.name);
  const std::u16string path = name.folder + name.name;
  if (!path.ends_with(kFormExtension)) {
    RefuseName(makes ? text::kFormNameNotVxf : text::kNotAFormFile, makes ? text::kCreateForm : text::kPrintWithForm,
               name);
    return;
  }
  if (!makes) return AddToList(path);
  chosen_ = path;
  ShowName(name);
  MarkChanged();
}

void OverlayPage::AddToList(const std::u16string& path) {
  if (!PlaceOfForm(store(), path)) {
    if (FormCheck(ui(), path) == FormFit::kNone) {
      RefuseName(text::kFormUnusable, text::kPrintWithForm, SplitFormPath(path));
      return;
    }
    if (!AddForm(store(), path)) return dialog().Beep();
  }
  const size_t place = *PlaceOfForm(store(), path);
  FillList(place);
  SelectForm(place);
}

void OverlayPage::DeleteForm() {
  FormName name = Named();
  name.name = WithFormExtension(name.name);
  const std::u16string path = name.folder + name.name;
  const auto place = PlaceOfForm(store(), path);
  if (!place) {
    RefuseName(text::kFormNotInList, text::kPrintWithForm, name);
    return;
  }
  if (Ask(text::kAskToDeleteForm, text::kDeleteForm, path) != platform::IDYES) return;
  // A file that can't be deleted stays in the list, where it can be seen; one that is gone leaves it.
  if (platform::DeleteFileW(path.c_str()) == 0 && IsThere(path)) return dialog().Beep();
  RemoveForm(ui(), *place);
  FillList(0);
  if (Prints()) Chosen(ui()) = 0;
  if (!rows_.empty()) dialog().SetText(kName, {});
  MarkChanged();
}

// -- leaving

bool OverlayPage::OnDeactivate() {
  if (!Editable() || ui().stores.overlays == nullptr) return true;
  if (Makes()) return LeaveMaking();
  return !Prints() || LeavePrinting();
}

bool OverlayPage::LeaveMaking() {
  const FormVerdict verdict = CheckNewForm(Named());
  const std::u16string path = verdict.Path();
  if (verdict.problem != 0) return RefuseName(verdict.problem, text::kCreateForm, verdict.name);
  ShowName(verdict.name);
  if (verdict.exists && path != chosen_ && Ask(text::kAskToReplaceForm, text::kCreateForm, path) != platform::IDYES) {
    FocusControl(kName);
    return false;
  }
  chosen_ = path;
  SetCreateFile(store(), path);
  return true;
}

bool OverlayPage::LeavePrinting() {
  const FormVerdict verdict = CheckListedForm(ui(), Named());
  if (verdict.problem != 0) return RefuseName(verdict.problem, text::kPrintWithForm, verdict.name);
  ShowName(verdict.name);
  Chosen(ui()) = static_cast<uint8_t>(*PlaceOfForm(store(), verdict.Path()));
  return true;
}

/// False, for who refuses; the focus goes to the name.
bool OverlayPage::RefuseName(TextNumber text, TextNumber caption, const FormName& name) {
  const std::u16string shown = ShortPath(name.folder + name.name);
  return Refuse(kName, platform::ExpandText(GetUiString(text), {std::u16string_view(shown)}), TextOf(caption));
}

int OverlayPage::Ask(TextNumber text, TextNumber caption, const std::u16string& path) {
  const std::u16string shown = ShortPath(path);
  return Tell(platform::ExpandText(GetUiString(text), {std::u16string_view(shown)}), TextOf(caption),
              platform::MB_YESNO | platform::MB_ICONQUESTION);
}

}  // namespace heron::pages
