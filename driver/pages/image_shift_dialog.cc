#include "pages/image_shift_dialog.h"

#include <algorithm>

#include "generated/texts.h"
#include "pages/image_shift.h"
#include "pages/size_text.h"

namespace heron::pages {

using engine::Setting;

namespace {

constexpr ControlId kFollows = engine::ControlId(u"ImgShiftBackAuto_Check");
constexpr size_t kMostDigits = 4;
constexpr int kSpinLimit = 9999;  ///< a field beyond its range is brought back as it is typed

/// A field with its spin, and the field of the back that follows it, 0 on the back.
struct ShiftField {
  ControlId field, spin, follower;
};
constexpr ShiftField kFields[] = {
    {engine::ControlId(u"ImgShiftValueLRF"), 2324, engine::ControlId(u"ImgShiftValueLRB")},
    {engine::ControlId(u"ImgShiftValueUDF"), 2328, engine::ControlId(u"ImgShiftValueUDB")},
    {engine::ControlId(u"ImgShiftPageIntervalF"), 2331, engine::ControlId(u"ImgShiftPageIntervalB")},
    {engine::ControlId(u"ImgShiftValueLRB"), 2335, 0},
    {engine::ControlId(u"ImgShiftValueUDB"), 2339, 0},
    {engine::ControlId(u"ImgShiftPageIntervalB"), 2342, 0},
};

enum Group : uint8_t { kMode, kFrontDirections, kFrontNumbers, kBackDirections, kBackNumbers, kFollowing };

// clang-format off
constexpr ShownControl kControls[] = {
    {engine::ControlId(u"lpImgShiftMode.Driver"), kMode}, {engine::ControlId(u"lpImgShiftMode.Printer"), kMode},
    {engine::ControlId(u"lpImgShiftDirectLRF.Left"), kFrontDirections}, {engine::ControlId(u"lpImgShiftDirectLRF.Right"), kFrontDirections},
    {engine::ControlId(u"lpImgShiftDirectUDF.Up"), kFrontDirections}, {engine::ControlId(u"lpImgShiftDirectUDF.Down"), kFrontDirections},
    {kFields[0].field, kFrontNumbers, kFields[0].spin},
    {kFields[1].field, kFrontNumbers, kFields[1].spin},
    {kFields[2].field, kFrontNumbers, kFields[2].spin},
    {engine::ControlId(u"lpImgShiftDirectLRB.Left"), kBackDirections}, {engine::ControlId(u"lpImgShiftDirectLRB.Right"), kBackDirections},
    {engine::ControlId(u"lpImgShiftDirectUDB.Up"), kBackDirections}, {engine::ControlId(u"lpImgShiftDirectUDB.Down"), kBackDirections},
    {kFields[3].field, kBackNumbers, kFields[3].spin},
    {kFields[4].field, kBackNumbers, kFields[4].spin},
    {kFields[5].field, kBackNumbers, kFields[5].spin},
    {kFollows, kFollowing},
};

constexpr ControlId kFrontControls[] = {
    engine::ControlId(u"lpImgShiftDirectLRF.Left"), engine::ControlId(u"lpImgShiftDirectLRF.Right"), kFields[0].field, kFields[0].spin, 2343,
    engine::ControlId(u"lpImgShiftDirectUDF.Up"), engine::ControlId(u"lpImgShiftDirectUDF.Down"), kFields[1].field, kFields[1].spin, 2344,
    kFollows};
constexpr ControlId kBackControls[] = {
    engine::ControlId(u"lpImgShiftDirectLRB.Left"), engine::ControlId(u"lpImgShiftDirectLRB.Right"), kFields[3].field, kFields[3].spin, 2345,
    engine::ControlId(u"lpImgShiftDirectUDB.Up"), engine::ControlId(u"lpImgShiftDirectUDB.Down"), kFields[4].field, kFields[4].spin, 2346};
/// The printer has no values and no page interval of its own: mode, its frame, and both intervals with their parts.
constexpr ControlId kUnusedControls[] = {2388, 2350, 2351, 2329, 2330, 2331, 2347, 2340, 2341, 2342, 2348};
// clang-format on

const ShiftField* FindField(ControlId id) {
  const auto field = std::ranges::find(kFields, id, &ShiftField::field);
  return field == std::end(kFields) ? nullptr : &*field;
}

const NumericBlock& RangeOf(const engine::Engine& engine, ControlId field) {
  const uint16_t param = engine::ParamIndexOfControl(engine::IndexOf(field));
  return *reinterpret_cast<const NumericBlock*>(SlotOf(*engine.ui, param));
}

bool IsNumber(std::u16string_view text) {
  return !text.empty() && text.size() <= kMostDigits &&
         std::ranges::all_of(text, [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

ImageShiftDialog::ImageShiftDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

void ImageShiftDialog::OnInitialise() {
  for (const ShownControl& control : kControls) kept_.push_back(engine::GetControlValue(engine(), control.id));
  for (const ShiftField& field : kFields) {
    dialog().SetTextLimit(field.field, kMostDigits);
    dialog().SetRange(field.spin, 0, kSpinLimit);
  }
  SettingsView::OnInitialise();
  EnableSides();
}

void ImageShiftDialog::EnableSides() {
  const int own_values = engine::RadioMemberValue(engine::ControlId(u"lpImgShiftMode.Driver"));
  const bool own = Setting<u"lpImgShiftMode">(ui()) == own_values && Editable();
  for (const ControlId id : kFrontControls) dialog().Enable(id, own);
  for (const ControlId id : kBackControls) dialog().Enable(id, own && !BackFollowsFront(ui()));
  for (const ControlId id : kUnusedControls) dialog().Enable(id, false);
}

void ImageShiftDialog::OnChanged(ControlId id) {
  Store(id);
  if (id == kFollows)
    FollowFront(ui());
  else
    FollowFrontDirections(ui());
  ShowGroup(kBackDirections);
  if (id != kFollows) return ShowGroup(kFrontDirections);
  if (BackFollowsFront(ui())) ShowGroup(kBackNumbers);
  EnableSides();
}

/// Sets a field's setting, and shows the number also beside the field and on a back that follows.
void ImageShiftDialog::StoreNumber(ControlId field, uint16_t number) {
  engine::SetControlValue(engine(), field, number);
  const ShiftField* const known = FindField(field);
  if (known == nullptr) return;
  dialog().SetPosition(known->spin, number);
  if (known->follower == 0 || !BackFollowsFront(ui())) return;
  dialog().SetText(known->follower, dialog().Text(field));
  StoreNumber(known->follower, number);
}

void ImageShiftDialog::OnNumber(ControlId id, uint16_t number) {
  const NumericBlock& range = RangeOf(engine(), id);
  const uint16_t fitting = std::clamp(number, range.min, range.max);
  if (fitting != number) {
    dialog().SetText(id, NumberText(fitting));
    FocusControl(id);
  }
  StoreNumber(id, fitting);
}

bool ImageShiftDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  return FindField(id) == nullptr || AcceptsShortNumberKey(key);
}

bool ImageShiftDialog::MayLeave(ControlId id, ControlId to) {
  return FindField(id) == nullptr || to == platform::kCancelButton || to == 0 || Validate(id);
}

bool ImageShiftDialog::Validate(ControlId field) {
  const std::u16string text = dialog().Text(field);
  const NumericBlock& range = RangeOf(engine(), field);
  const uint16_t number = ParseNumber(text);
  if (IsNumber(text) && number >= range.min && number <= range.max) return true;
  const uint16_t replacement = IsNumber(text) && number > range.max ? range.max : range.min;
  dialog().SetText(field, NumberText(replacement));
  StoreNumber(field, replacement);
  return Refuse(field, RangeText(text::kShiftValue, range.min, range.max), TextOf(text::kImageShift));
}

/// The disabled ones too.
bool ImageShiftDialog::ValidateAll() {
  return std::ranges::all_of(kFields, [this](const ShiftField& field) { return Validate(field.field); });
}

void ImageShiftDialog::OnButton(ControlId id) {
  if (id == platform::kOkButton && ValidateAll()) dialog().End(platform::IDOK);
  if (id != platform::kCancelButton) return;
  PutBack();
  dialog().End(platform::IDCANCEL);
}

/// Also of a dialog that couldn't start, which has kept some of the settings or none.
void ImageShiftDialog::PutBack() noexcept {
  for (size_t i = 0; i < kept_.size(); ++i) engine::SetControlValue(engine(), kControls[i].id, kept_[i]);
}

}  // namespace heron::pages
