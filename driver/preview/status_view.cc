#include "preview/status_view.h"

#include <algorithm>

#include "catalog/other_values.h"
#include "engine/setting.h"
#include "preview/geometry.h"
#include "preview/status_tables.h"
#include "uistate/tray_media.h"

namespace heron::preview {

using engine::IsOn;
using engine::Setting;

namespace {

namespace print_type = value::lpPRNType;

constexpr uint16_t kExposures = 5;  // symbols of lpExposureType

enum JobSymbol : uint8_t { kFaxWithCover = 0, kFaxJob = 1, kStored = 2, kPrinted = 7, kFormMade = 8 };
enum SheetSymbol : uint8_t {
  kPlainStack = 0,
  kFrontCoverSheet = 1,
  kBody = 4,
  kBodyWithList = 5,
  kBodyWithTwoSides = 6,
  kBackCoverSheet = 9,
};
constexpr uint8_t kBackCoverFrom = 5;  // symbols 7 and 8 are the back covers 2 and 3

/// The symbols that lie over one another, from the lowest.
template <size_t N>
class Pile {
 public:
  Pile() { symbols_.fill(kNoSymbol); }
  void Add(uint8_t symbol) { symbols_[count_++] = symbol; }
  bool IsEmpty() const { return count_ == 0; }
  uint8_t Top() const { return symbols_[count_ - 1]; }
  const std::array<uint8_t, N>& symbols() const { return symbols_; }

 private:
  std::array<uint8_t, N> symbols_;
  size_t count_ = 0;
};

uint8_t Stamp(const UiState& ui) {
  if (IsOn<u"Watermark_Use">(ui))
    return Setting<u"lpWatermarkOrder">(ui) == value::lpWatermarkOrder::kOverprint ? 1 : 2;
  return IsOn<u"Date_Time_Check">(ui) || IsOn<u"PageNo_Check">(ui) || IsOn<u"CopyNo_Check">(ui) ? 1 : 0;
}

uint8_t Transparency(const UiState& ui) {
  if (MediaOfTray(ui, Setting<u"lpMediaSource">(ui)).mediaType != value::lpMediaType::kTransparency)
    return kNoTransparency;
  if (!IsOn<u"OHPInterLeave_Check">(ui)) return 0;
  return static_cast<uint8_t>(std::min<int>(Setting<u"lpOhpIntlvType">(ui) + 1, 2));
}

uint8_t Fold(const UiState& ui) {
  if (!IsOn<u"Fold_Check">(ui)) return 0;
  const uint16_t fold = Setting<u"lpFold">(ui);
  if (fold == value::lpFold::kOfBooklets && Setting<u"lpPRNType">(ui) == print_type::kBooklet) return kBookletFold;
  const auto* const row =
      std::ranges::find_if(kFolds, [fold](const FoldRow& r) { return fold >= r.first && fold <= r.last; });
  if (row == std::end(kFolds)) return 0;
  return static_cast<uint8_t>(row->code + (row->counts ? fold - row->first : 0));
}

uint8_t BookBinding(const UiState& ui) {
  constexpr uint8_t kTrimmed = 4, kSaddle = 1;
  if (IsOn<u"Saddle_Check">(ui)) return IsOn<u"Trim_Check">(ui) ? kTrimmed : kSaddle;
  const uint16_t kind = Setting<u"lpFoldStaple">(ui);
  return IsOn<u"FoldStaple_Check">(ui) && kind >= value::lpFoldStaple::kFoldAndStaple &&
                 kind <= value::lpFoldStaple::kFold
             ? static_cast<uint8_t>(kind)
             : uint8_t{0};
}

Pile<3> JobSymbols(const UiState& ui) {
  Pile<3> pile;
  const uint16_t method = Setting<u"lpOutputMethod">(ui);
  if (Setting<u"lpOverlay">(ui) == value::lpOverlay::kCreateForm)
    pile.Add(kFormMade);
  else if (Setting<u"lpOutput">(ui) == value::lpOutput::kFax)
    pile.Add(IsOn<u"CoverSheet">(ui) ? kFaxWithCover : kFaxJob);
  else
    pile.Add(method == value::lpOutputMethod::kSaveToBox ? kStored : kPrinted);
  const auto* const row = std::ranges::find(kMethodSymbols, method, &MethodRow::method);
  if (row != std::end(kMethodSymbols)) pile.Add(row->symbol);
  return pile;
}

/// Whether a row of the working list changes how its pages are printed.
bool ListChangesType(const UiState& ui) {
  const size_t rows = std::min<size_t>(SlotAs<u"InterSheetListData_PageListNum", uint16_t>(ui), kPagesPerList);
  namespace row_type = value::lpInterSheetListPRNType;
  return std::ranges::any_of(CurrentPages(ui).first(rows), [](const PageEntry& row) {
    return row.type >= row_type::kOneSided && row.type <= row_type::kLastPrinted;
  });
}

Pile<6> SheetSymbols(const UiState& ui) {
  namespace cover = value::lpFrontCover;
  Pile<6> pile;
  const uint16_t front = Setting<u"lpFrontCover">(ui);
  const uint16_t back = Setting<u"lpBackCover">(ui);
  const bool has_front = IsOn<u"Front_Check">(ui) && (front == cover::kBlank || front == cover::kPrinted);
  const bool has_back = IsOn<u"Back_Check">(ui) && (back == cover::kBlank || back == cover::kPrinted);
  const bool has_list = IsOn<u"InterSheet_Check">(ui);
  const bool has_front_sheet = IsOn<u"FrontCoverSheet_Check">(ui);
  const bool has_back_sheet = IsOn<u"BackCoverSheet_Check">(ui);
  if (!has_front && !has_back && !has_list && !has_front_sheet && !has_back_sheet) {
    pile.Add(kPlainStack);
    return pile;
  }
  if (has_back_sheet) pile.Add(kBackCoverSheet);
  if (has_back) pile.Add(static_cast<uint8_t>(back + kBackCoverFrom));
  pile.Add(!has_list ? kBody : ListChangesType(ui) ? kBodyWithTwoSides : kBodyWithList);
  if (has_front) pile.Add(static_cast<uint8_t>(front));
  if (has_front_sheet) pile.Add(kFrontCoverSheet);
  return pile;
}

void AddSymbol(Stack& stack, Group group, uint8_t feature, uint8_t code, int16_t x, int16_t y) {
  const SymbolRow* const row = FindSymbol(group, feature, code);
  if (row == nullptr) return;
  const int16_t height = group == Group::kFeature ? kSecondRowHeight : kFirstRowHeight;
  const int place = code - row->first;
  const auto mask = static_cast<uint16_t>(row->mask + (row->maskRun == SymbolMask::kOne ? 0 : place));
  stack.push_back({mask, Mode::kAnd, x, y, kSymbolWidth, height, true});
  stack.push_back({static_cast<uint16_t>(row->image + place), Mode::kXor, x, y, kSymbolWidth, height, false});
}

void AddFirstRow(Stack& stack, const StatusPicture& picture, int width) {
  for (const SymbolPlace& place : kFirstRow) {
    const auto x = static_cast<int16_t>(place.fifths * width / 5 + place.dx);
    const auto add = [&](uint8_t code) { AddSymbol(stack, place.group, 0, code, x, place.y); };
    if (place.group == Group::kJob) std::ranges::for_each(picture.jobSymbols, add);
    if (place.group == Group::kSheet) std::ranges::for_each(picture.sheetSymbols, add);
    if (place.group == Group::kOverlay) add(picture.overlay);
    if (place.group == Group::kStamp) add(picture.stamp);
    if (place.group == Group::kDepartment) add(picture.department);
  }
}

void AddSecondRow(Stack& stack, const StatusPicture& picture, int width) {
  const bool is_full = picture.iconOrder.back() != 0;
  const int step = width / (is_full ? 6 : 5);
  for (size_t slot = 0; slot < picture.iconOrder.size(); ++slot) {
    const uint8_t feature = picture.iconOrder[slot];
    const auto x = static_cast<int16_t>(static_cast<int>(slot) * step + kSlotOffsets[slot]);
    AddSymbol(stack, Group::kFeature, feature, FeatureCode(picture, feature), x, kSecondRowY);
  }
}

}  // namespace

constexpr std::array<StatusField, 16> kStatusFields = {{
    {"stamp", &StatusPicture::stamp},
    {"overlay", &StatusPicture::overlay},
    {"sheetIcon", &StatusPicture::sheetIcon},
    {"jobIcon", &StatusPicture::jobIcon},
    {"ohp", &StatusPicture::ohp},
    {"imageShift", &StatusPicture::imageShift},
    {"chapter", &StatusPicture::chapter},
    {"auth", &StatusPicture::auth},
    {"department", &StatusPicture::department},
    {"pile", &StatusPicture::pile},
    {"partition", &StatusPicture::partition},
    {"fold", &StatusPicture::fold},
    {"bookbind", &StatusPicture::bookbind},
    {"exposure", &StatusPicture::exposure},
    {"jimon", &StatusPicture::jimon},
    {"perfectBind", &StatusPicture::perfectBind},
}};

StatusPicture DescribeStatus(const UiState& ui, const platform::RECT& rectangle) {
  const uint16_t type = Setting<u"lpPRNType">(ui);
  const uint16_t exposure = Setting<u"lpExposureType">(ui);
  const Pile<3> job = JobSymbols(ui);
  const Pile<6> sheet = SheetSymbols(ui);
  StatusPicture picture;
  picture.stamp = Stamp(ui);
  picture.overlay = static_cast<uint8_t>(Setting<u"lpOverlay">(ui));
  picture.sheetIcon = sheet.Top();
  picture.jobIcon = job.Top();
  picture.ohp = Transparency(ui);
  picture.imageShift = IsOn<u"ImageShift_Check">(ui);
  picture.chapter = (type == print_type::kTwoSided || type == print_type::kBooklet) && IsOn<u"Chapter_Check">(ui);
  picture.auth = IsOn<u"UserAuth_Check">(ui);
  picture.department = IsOn<u"SecMana_Check">(ui);
  picture.pile = IsOn<u"PilePermit_Check">(ui);
  picture.partition = IsOn<u"JobPartition_Check">(ui);
  picture.fold = Fold(ui);
  picture.bookbind = BookBinding(ui);
  picture.exposure = exposure <= kExposures ? static_cast<uint8_t>(exposure) : uint8_t{0};
  picture.jimon = IsOn<u"JimonMode_Check">(ui);
  picture.perfectBind = IsOn<u"PerfectBind_Check">(ui);
  picture.iconOrder = ui.iconOrder;
  picture.rectangle = rectangle;
  picture.jobSymbols = job.symbols();
  picture.sheetSymbols = sheet.symbols();
  return picture;
}

uint8_t FeatureCode(const StatusPicture& picture, uint8_t feature) {
  const auto if_on = [](uint8_t code) { return code == 0 ? kNoSymbol : code; };
  switch (feature) {
    case kTransparency:
      return picture.ohp == kNoTransparency ? kNoSymbol : picture.ohp;
    case kImageShift:
      return if_on(picture.imageShift);
    case kChapter:
      return if_on(picture.chapter);
    case kFold:
      return if_on(picture.fold);
    case kAuthentication:
      return if_on(picture.auth);
    case kPile:
      return if_on(picture.pile);
    case kPartition:
      return if_on(picture.partition);
    case kBookBinding:
      return if_on(picture.bookbind);
    case kExposure:
      return if_on(picture.exposure);
    case kStampMode:
      return if_on(picture.jimon);
    case kPerfectBinding:
      return if_on(picture.perfectBind);
    default:
      return kNoSymbol;
  }
}

void UpdateIconOrder(const StatusPicture& picture, IconOrder& order) {
  for (uint8_t feature = 1; feature <= kFeatureCount; ++feature) {
    const bool is_on = FeatureCode(picture, feature) != kNoSymbol;
    auto slot = std::ranges::find(order, feature);
    if (is_on && slot == order.end()) {
      slot = std::ranges::find(order, 0);
      if (slot != order.end()) *slot = feature;
    } else if (!is_on && slot != order.end()) {
      std::move(slot + 1, order.end(), slot);
      order.back() = 0;
    }
  }
}

StatusPicture DescribeStatusPaint(UiState& ui, const platform::RECT& rectangle) {
  StatusPicture picture = DescribeStatus(ui, rectangle);
  UpdateIconOrder(picture, ui.iconOrder);
  picture.iconOrder = ui.iconOrder;
  return picture;
}

bool ShowsTheSame(const StatusPicture& a, const StatusPicture& b) {
  const auto same = [&](const StatusField& field) { return a.*field.field == b.*field.field; };
  return std::ranges::all_of(kStatusFields, same) && a.iconOrder == b.iconOrder && a.jobSymbols == b.jobSymbols &&
         a.sheetSymbols == b.sheetSymbols;
}

StatusPicture DescribeNextPaint(const UiState& ui) {
  StatusPicture picture = DescribeStatus(ui, {0, 0, kStatusSize.cx, kStatusSize.cy});
  UpdateIconOrder(picture, picture.iconOrder);
  return picture;
}

Stack StackStatus(const StatusPicture& picture) {
  constexpr size_t kMostLayers = 2 * (3 + 6 + 3 + 6);
  Stack stack;
  stack.reserve(kMostLayers);
  const int width = picture.rectangle.right - picture.rectangle.left;
  AddFirstRow(stack, picture, width);
  AddSecondRow(stack, picture, width);
  return stack;
}

}  // namespace heron::preview
