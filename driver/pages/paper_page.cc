#include "pages/paper_page.h"

#include <algorithm>
#include <array>

#include "catalog/other_values.h"
#include "catalog/paper_codes.h"
#include "catalog/strings.h"
#include "engine/sizes.h"
#include "generated/texts.h"
#include "pages/binding_margin_dialog.h"
#include "pages/custom_papers.h"
#include "pages/identity_dialogs.h"
#include "pages/layout_dialog.h"
#include "pages/paper_type_dialogs.h"
#include "pages/print_position_dialog.h"
#include "pages/size_text.h"
#include "rules/control_tables.h"
#include "settings/papers.h"

namespace heron::pages {

using engine::IsOn;
using engine::Setting;
using platform::kCancelButton;

namespace {

constexpr ControlId kCopiesField = engine::ControlId(u"Copies"), kCopiesSpin = 104;
constexpr ControlId kOriginalSize = engine::ControlId(u"lpMediaSize"), kPrintSize = engine::ControlId(u"lpOutputPaper");
constexpr ControlId kZoomLabel = 115, kZoomField = engine::ControlId(u"Zoom"), kZoomSpin = 117, kZoomUnit = 118;
constexpr ControlId kSource = engine::ControlId(u"lpMediaSource"), kLayoutList = engine::ControlId(u"lpLayout"),
                    kMarginCheck = engine::ControlId(u"BindMargin_Check"),
                    kMethod = engine::ControlId(u"lpOutputMethod");
constexpr ControlId kMarginButton = 179, kAuthenticationButton = 181, kPaperTypeButton = 182;
constexpr ControlId kOrientationPicture = 183, kSortPicture = 184, kOffsetPicture = 185, kLowerPicture = 167;

/// In the order in which they are shown.
enum Group : uint8_t {
  kCopies,
  kOrientation,
  kOriginal,
  kPrint,
  kZoom,
  kSourceGroup,
  kOutputTray,
  kSort,
  kOffset,
  kPaperLess,
  kMethodGroup,
  kStaple,
  kPunch,
  kMargin,
  kBinding,
  kPrintType,
  kFold,
  kLayout,
  kView,
};

// clang-format off
constexpr ShownControl kControls[] = {
    {kCopiesField, kCopies, kCopiesSpin},
    {engine::ControlId(u"lpOrientation.Portrait"), kOrientation}, {engine::ControlId(u"lpOrientation.Landscape"), kOrientation},
    {kOriginalSize, kOriginal},
    {kPrintSize, kPrint},
    {kZoomField, kZoom, kZoomSpin},
    {kSource, kSourceGroup},
    {engine::ControlId(u"lpOutputTray"), kOutputTray},
    {engine::ControlId(u"Sort_Check"), kSort},
    {engine::ControlId(u"Collate_Check"), kOffset},
    {engine::ControlId(u"PaperLess_Check"), kPaperLess},
    {kMethod, kMethodGroup},
    {engine::ControlId(u"Staple_Check"), kStaple}, {engine::ControlId(u"lpStaple"), kStaple},
    {engine::ControlId(u"Punch_Check"), kPunch}, {engine::ControlId(u"lpPunchHoles"), kPunch},
    {kMarginCheck, kMargin},
    {engine::ControlId(u"lpBindPosit"), kBinding},
    {engine::ControlId(u"lpPRNType"), kPrintType},
    {engine::ControlId(u"FoldStaple_Check"), kFold}, {engine::ControlId(u"lpFoldStaple"), kFold},
    {engine::ControlId(u"Nup_Check"), kLayout}, {kLayoutList, kLayout},
    {engine::ControlId(u"previewMode.Paper"), kView}, {engine::ControlId(u"previewMode.Machine"), kView},
};
// clang-format on

/// Pictures beside the controls: off and on, and the mask of both.
struct StatePictures {
  uint32_t off, on, mask;
};
constexpr StatePictures kOrientationPictures = {10200, 10201, 10206};
constexpr StatePictures kSortPictures = {10202, 10203, 10207};
constexpr StatePictures kOffsetPictures = {10204, 10205, 10208};

namespace output = value::lpOutputMethod;

bool IsBox(uint16_t method) {
  return method == output::kSaveToBox || method == output::kSaveToBoxAndPrint;
}

/// Anything else prints.
bool IsOffered(uint16_t method) {
  return method == output::kSecure || IsBox(method) || method == output::kWithoutDialog6 || method == output::kProof;
}

/// A size of the wide form is laid on the output paper somewhere: where, is asked.
bool NeedsPrintPosition(const UiState& ui, ControlId list, uint16_t paper) {
  const bool wide = (paper & paper::kFamilyW) != 0;
  if (list == kOriginalSize) return wide && Setting<u"lpOutputPaper">(ui) == kSameAsDocument;
  return wide || (paper == kSameAsDocument && (Setting<u"lpMediaSize">(ui) & paper::kFamilyW) != 0);
}

/// A value that is put back at the end of a scope.
class KeptValue {
 public:
  explicit KeptValue(uint16_t& place) : place_(place), value_(place) {}
  ~KeptValue() { place_ = value_; }
  KeptValue(const KeptValue&) = delete;
  KeptValue& operator=(const KeptValue&) = delete;

 private:
  uint16_t& place_;
  uint16_t value_;
};

/// The four settings of the layout details, as they are put back after a cancel.
class LayoutSettings {
 public:
  explicit LayoutSettings(const UiState& ui) : ui_(ui) {
    for (size_t i = 0; i < values_.size(); ++i) values_[i] = *Place(i);
  }
  void PutBack() const {
    for (size_t i = 0; i < values_.size(); ++i) *Place(i) = values_[i];
  }

 private:
  uint16_t* Place(size_t i) const {
    uint16_t* const places[] = {&Setting<u"lpLayout">(ui_), &Setting<u"lpOrder">(ui_), &Setting<u"lpBorder">(ui_),
                                &Setting<u"lpBorder2">(ui_)};
    return places[i];
  }
  const UiState& ui_;
  std::array<uint16_t, 4> values_;
};

}  // namespace

PaperPage::PaperPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

// -- life

void PaperPage::OnInitialise() {
  dialog().SetRange(kCopiesSpin, 1, engine::RangeOf<u"Copies">(*engine().ui).max);  // ui() is bound below
  Page::OnInitialise();
}

void PaperPage::OnActivate() {
  closing_ = false;
  Page::OnActivate();
}

// -- showing

bool PaperPage::Offers(ControlId list, size_t item) {
  const bool allowed = Page::Offers(list, item);
  if (list != kOriginalSize && list != kPrintSize) return allowed;
  const uint16_t paper = engine::GetControlBlock(engine(), list)->Items()[item].value;
  if (paper == kCustomEntry)
    return list == kOriginalSize || Setting<u"lpGraphicsMode">(ui()) != value::lpGraphicsMode::kRaster;
  if (!allowed || (paper & paper::kHidden) != 0) return false;
  return list == kPrintSize || (!IsRotatedCode(paper) && !IsSubstitutedPaper(paper));
}

std::u16string PaperPage::RowText(ControlId list, const ListItem& item) {
  if ((list == kOriginalSize || list == kPrintSize) && IsCustomPaper(item.value))
    return FormatCustomName(ui(), CustomPaperNumber(item.value), CustomName::kName);
  return Page::RowText(list, item);
}

uint32_t PaperPage::RowPicture(ControlId list, size_t item) {
  if (list != kLayoutList || engine::GetControlBlock(engine(), list)->Items()[item].value == kLayoutDetails) return 0;
  return kLayoutPictures + static_cast<uint32_t>(item);
}

void PaperPage::OnGroupShown(uint8_t group) {
  const auto show = [this](ControlId place, const StatePictures& pictures, bool on) {
    dialog().SetPicture(place, on ? pictures.on : pictures.off, pictures.mask);
  };
  switch (group) {
    case kCopies:
      return Clamp(kCopiesField);
    case kOrientation:
      return show(kOrientationPicture, kOrientationPictures,
                  Setting<u"lpOrientation">(ui()) == value::lpOrientation::kLandscape);
    case kOriginal:
    case kPrint:
      return dialog().SetRange(kZoomSpin, engine::RangeOf<u"Zoom">(ui()).min, Highest(kZoomField));
    case kZoom:
      Clamp(kZoomField);
      for (const ControlId id : {kZoomLabel, kZoomField, kZoomSpin, kZoomUnit})
        EnableControl(id, engine::ZoomIsFree(ui()));
      return;
    case kSort:
      return show(kSortPicture, kSortPictures, IsOn<u"Sort_Check">(ui()));
    case kOffset:
      return show(kOffsetPicture, kOffsetPictures, IsOn<u"Collate_Check">(ui()));
    case kMethodGroup:
      return dialog().Repaint(kLowerPicture);
    case kLayout:
      return engine::DeriveLayout(ui());
    default:
      return;
  }
}

// -- changes

void PaperPage::OnChanged(ControlId id) {
  switch (id) {
    case kOriginalSize:
    case kPrintSize:
      return ChoosePaper(id);
    case kLayoutList:
      return ChooseLayout();
    case kMethod:
      return ChooseOutputMethod();
    default:
      Page::OnChanged(id);
      if (id == kSource) WarnCustomPaperLimits();
  }
}

void PaperPage::OnButton(ControlId id) {
  switch (id) {
    case kMarginButton:
      return EditBindingMargin();
    case kAuthenticationButton:
      return EditAuthentication();
    case kPaperTypeButton:
      return EditPaperTypes();
    default:
      return Page::OnButton(id);
  }
}

// -- papers

void PaperPage::ChoosePaper(ControlId list) {
  const uint16_t paper = ReadControl(list);
  if (paper == kCustomEntry) return ChooseCustomPaper(list);
  if (paper == paper::kPrintPosition) {
    if (AskPrintPosition()) MarkChanged();
    return RefreshList(list);
  }
  const Action action(sheet().resolver());
  if (NeedsPrintPosition(ui(), list, paper) && AskPrintPosition())
    engine::RecordDialogDifferences(sheet().resolver(), PrintPositionDialog::kNumber);
  Change(list);
  WarnCustomPaperLimits();
}

/// A No takes the edited papers back too.
void PaperPage::ChooseCustomPaper(ControlId list) {
  const Action action(sheet().resolver());
  CustomSizeDialog custom(sheet(), list == kOriginalSize ? PaperTarget::kOriginal : PaperTarget::kOutput);
  const int result = RunOnClone(CustomSizeDialog::kNumber, custom);
  if (result == 0) return;
  if (result != platform::IDOK) return RefreshList(list);
  const Pending entry(*this, list, kCustomEntry);
  if (!Change(list)) engine::LoadPaperTable(ui());
  WarnCustomPaperLimits();
}

bool PaperPage::AskPrintPosition() {
  PrintPositionDialog position(sheet());
  return RunOwned(PrintPositionDialog::kNumber, position) == platform::IDOK;
}

void PaperPage::WarnCustomPaperLimits() {
  const Warning warning = CustomPaperWarning(ui());
  if (!warning.text.empty()) Tell(warning.text, warning.caption, platform::MB_OK | platform::MB_ICONEXCLAMATION);
}

// -- numbers

void PaperPage::OnNumber(ControlId id, uint16_t number) {
  const bool changes = engine::GetControlValue(engine(), id) != number;
  if (changes) {
    engine::SetControlValue(engine(), id, number);
    MarkChanged();
  }
  Clamp(id);
  if (changes) RepaintPictures();
}

/// The largest number that the field of the copies or of the zoom may hold now. A fax has one copy.
uint16_t PaperPage::Highest(ControlId field) const {
  if (field == kZoomField) return static_cast<uint16_t>(engine::MaxZoomForPaper(ui(), Setting<u"lpMediaSize">(ui())));
  return Setting<u"lpOutput">(ui()) == value::lpOutput::kFax ? uint16_t{1} : engine::RangeOf<u"Copies">(ui()).max;
}

/// The lowest zoom counts only when the field is left: a 2 may become a 25.
void PaperPage::Clamp(ControlId field) {
  const uint16_t number = engine::GetControlValue(engine(), field);
  const uint16_t fitting = std::clamp<uint16_t>(number, 1, Highest(field));
  if (fitting == number || !Editable()) return;
  engine::SetControlValue(engine(), field, fitting);
  dialog().SetText(field, NumberText(fitting));
  FocusControl(field);
}

bool PaperPage::CheckZoom() {
  const int zoom = Setting<u"Zoom">(ui());
  const int lowest = engine::RangeOf<u"Zoom">(ui()).min;
  const int highest = Highest(kZoomField);
  if (closing_ || (zoom >= lowest && zoom <= highest)) return true;
  return Refuse(kZoomField, RangeText(text::kZoom, lowest, highest), TextOf(text::kZoom));
}

bool PaperPage::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  constexpr size_t kMostOfCopies = 4, kMostOfZoom = 3;
  if (id == kCopiesField) return AcceptsNumberKey(key, kMostOfCopies);
  return id != kZoomField || AcceptsNumberKey(key, kMostOfZoom);
}

/// To another window the focus may go unchecked: the user is asked again when leaving the page.
bool PaperPage::MayLeave(ControlId id, ControlId to) {
  constexpr ControlId kUnchecked[] = {0, kCancelButton, 5, 151};
  return id != kZoomField || std::ranges::count(kUnchecked, to) != 0 || CheckZoom();
}

// -- dialogs

void PaperPage::ChooseLayout() {
  if (ReadControl(kLayoutList) != kLayoutDetails) {
    Change(kLayoutList);
    return;
  }
  const LayoutSettings before(ui());
  LayoutDialog layout(sheet());
  if (RunOwned(LayoutDialog::kNumber, layout) == platform::IDOK) {
    Rebuild();
    MarkChanged();
  } else {
    before.PutBack();
    RefreshList(kLayoutList);
  }
  RepaintPictures();
}

/// True after OK, and for a method without a dialog.
bool PaperPage::RunMethodDialog(uint16_t method) {
  const KeptValue before(Setting<u"lpOutputMethod">(ui()));
  Setting<u"lpOutputMethod">(ui()) = method;
  SecurePrintDialog secure(sheet());
  BoxDialog box(sheet());
  if (method == output::kSecure) return RunOwned(SecurePrintDialog::kNumber, secure) == platform::IDOK;
  return !IsBox(method) || RunOwned(BoxDialog::kNumber, box) == platform::IDOK;
}

/// The dialog works on the settings with the new method stored; the rules see the change afterwards, so that they may
/// refuse it with all that the dialog stored.
void PaperPage::ChooseOutputMethod() {
  uint16_t method = ReadControl(kMethod);
  if (!IsOffered(method)) method = output::kPrint;
  const Action action(sheet().resolver());
  if (!RunMethodDialog(method)) return RefreshList(kMethod);
  if (IsBox(method) && GetText(ui(), TextSetting::kBoxFileName).empty()) {
    dialog().Beep();
    Tell(TextOf(text::kEnterBoxFileName),
         TextOf(method == output::kSaveToBoxAndPrint ? text::kSaveToBoxAndPrint : text::kSaveToBox),
         platform::MB_OK | platform::MB_ICONEXCLAMATION);
    dialog().Focus(kMethod);
    method = output::kPrint;
  }
  const Pending pending(*this, kMethod, method);
  Change(kMethod);
  TellNewConflicts();
}

void PaperPage::EditBindingMargin() {
  const Action action(sheet().resolver());
  BindingMarginDialog margin(sheet());
  if (RunOwned(BindingMarginDialog::kNumber, margin) == platform::IDOK) {
    engine::RecordDialogDifferences(sheet().resolver(), BindingMarginDialog::kNumber);
    Change(kMarginCheck);
  }
  RepaintPictures();
}

void PaperPage::EditAuthentication() {
  AuthenticationDialog authentication(sheet());
  if (RunOnClone(AuthenticationDialog::kNumber, authentication) == platform::IDOK) MarkChanged();
  Rebuild();
}

/// The settings of dialog 2920 were those of the tray at hand; outside of it they mean nothing.
void PaperPage::EditPaperTypes() {
  PaperTypeDialog types(sheet());
  if (RunOnClone(PaperTypeDialog::kNumber, types) == 0) return;
  for (const uint16_t id : {engine::ControlId(u"lpMediaType"), engine::ControlId(u"lpWeight"),
                            engine::ControlId(u"lpPaperColor"), engine::ControlId(u"PaperPunch_Check")})
    engine::SetControlValue(engine(), id, engine::GetControlDefault(engine(), id));
  LoadAllTrayMirrors(ui());
  TellNewConflicts();
  engine::EvaluateRules(engine(), this);
  Rebuild();
  MarkChanged();
}

}  // namespace heron::pages
