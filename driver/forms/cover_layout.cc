// Draws a cover sheet block by block (cover_layout.h).
//
// Products are taken in 64 bits: the numbers come from a record and a registry.
#include "forms/cover_layout.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include "catalog/strings.h"
#include "forms/cover_tables.h"
#include "generated/values.h"
#include "platform/api/device_context.h"
#include "platform/api/files.h"
#include "platform/api/process.h"
#include "platform/api/text.h"

namespace heron {
namespace {

using namespace platform;

constexpr COLORREF kBarColor = 0x646464;
constexpr DWORD kLargestPicture = DWORD{64} * 1024 * 1024;

/// Lengths in ten-thousandths of an inch.
constexpr int32_t kRuleHeight = 157, kBarHeight = 787, kRuleGap = 787, kBlockGap = 1969, kTitleGap = 3937,
                  kSideMargin = 5906, kEndMargin = 7874;
/// Heights of letters in hundredths of a point.
constexpr int32_t kDateHeight = 1200, kTitleHeight = 4800, kTextHeight = 1800, kSmallHeight = 1600;

/// What is drawn on a context stays its owner's: fonts, colours and clip are those of before afterwards.
class KeptContext {
 public:
  explicit KeptContext(HDC dc) : dc_(dc), saved_(SaveDC(dc)) {}
  ~KeptContext() { RestoreDC(dc_, saved_); }
  KeptContext(const KeptContext&) = delete;
  KeptContext& operator=(const KeptContext&) = delete;

 private:
  HDC dc_;
  int saved_;
};

class Sheet {
 public:
  explicit Sheet(const CoverLayout& layout)
      : layout_(layout),
        flags_(layout.flags),
        style_(kCoverStyles[static_cast<size_t>(std::clamp(layout.style, 0, int{kCoverStyles.size()} - 1))]),
        scale_((int64_t{layout.resolution} * layout.percent + 50) / 100) {}

  void Draw();

 private:
  // Lengths
  LONG Pixels(int64_t k) const { return static_cast<LONG>((scale_ * k + 5000) / 10000); }
  LONG PixelsOfHmm(int64_t v) const { return static_cast<LONG>((((v * 1000 + 127) / 254) * scale_ + 5000) / 10000); }
  LONG FontHeight(int64_t n) const { return static_cast<LONG>((scale_ * n + 3600) / 7200); }

  // Drawing
  LOGFONTW Font(const CoverFont& font, LONG height) const;
  LOGFONTW Head(int32_t height) const { return Font(style_.head, FontHeight(height)); }
  LOGFONTW Body(int32_t height) const { return Font(style_.body, FontHeight(height)); }
  SIZE Measure(const LOGFONTW& font, std::u16string_view text) const;
  SIZE Write(const LOGFONTW& font, LONG x, LONG y, std::u16string_view text) const;
  void Fill(LONG left, LONG top, LONG right, LONG height, COLORREF color) const;
  void Rule(LONG left, LONG below) const { Fill(left, below + Pixels(kRuleGap), right_, Pixels(kRuleHeight), 0); }

  // Blocks: each draws at y_ and gives its height
  LONG Date() const;
  LONG Title() const;
  LONG Recipient() const;
  LONG TemplateText() const;
  LONG Details() const;
  LONG Sender() const;
  LONG Pages() const;
  LONG Subject() const;
  LONG Comment() const;
  void Picture() const;

  LONG DrawRecipients(LONG x0) const;
  LONG DrawRecipient(const RecipientRow& row, const LOGFONTW& font, LONG x0, LONG y) const;
  RecipientRow TypedRecipient() const;
  LONG LineHeight(const LOGFONTW& font) const { return Measure(font, u" ").cy; }

  const CoverLayout& layout_;
  const CoverFlags& flags_;
  const CoverStyle& style_;
  const int64_t scale_;
  LONG left_ = 0, right_ = 0, bottom_ = 0;  ///< of the content
  LONG y_ = 0;
};

LOGFONTW Sheet::Font(const CoverFont& font, LONG height) const {
  LOGFONTW asked{};
  asked.lfHeight = std::max(height, LONG{1});
  asked.lfWeight = font.weight;
  asked.lfCharSet = font.charSet;
  asked.lfPitchAndFamily = font.pitchAndFamily;
  std::u16string_view(font.face).copy(asked.lfFaceName, kFaceSize - 1);
  return asked;
}

/// A font is selected for one drawing only.
template <class Work>
void WithFont(HDC dc, const LOGFONTW& font, Work&& work) {
  const HGDIOBJ made = CreateFontIndirectW(&font);
  if (made == nullptr) return;
  const HGDIOBJ before = SelectObject(dc, made);
  work();
  SelectObject(dc, before);
  DeleteObject(made);
}

SIZE Sheet::Measure(const LOGFONTW& font, std::u16string_view text) const {
  SIZE size{};
  WithFont(layout_.dc, font,
           [&] { GetTextExtentPointW(layout_.dc, text.data(), static_cast<int>(text.size()), &size); });
  return size;
}

SIZE Sheet::Write(const LOGFONTW& font, LONG x, LONG y, std::u16string_view text) const {
  SIZE size{};
  WithFont(layout_.dc, font, [&] {
    GetTextExtentPointW(layout_.dc, text.data(), static_cast<int>(text.size()), &size);
    ExtTextOutW(layout_.dc, x, y, 0, nullptr, text.data(), static_cast<DWORD>(text.size()), nullptr);
  });
  return size;
}

void Sheet::Fill(LONG left, LONG top, LONG right, LONG height, COLORREF color) const {
  const HGDIOBJ brush = CreateSolidBrush(color);
  if (brush == nullptr) return;
  const RECT area{left, top, right, top + height};
  platform::FillRect(layout_.dc, &area, brush);
  DeleteObject(brush);
}

void Sheet::Draw() {
  const LONG left = layout_.originX + PixelsOfHmm(layout_.marginXHmm);
  const LONG top = layout_.originY + PixelsOfHmm(layout_.marginYHmm);
  const LONG right = left + PixelsOfHmm(int64_t{layout_.boxWidthHmm} - 2 * int64_t{layout_.marginXHmm});
  const LONG bottom = top + PixelsOfHmm(int64_t{layout_.boxLengthHmm} - 2 * int64_t{layout_.marginYHmm});
  left_ = left + Pixels(kSideMargin);
  right_ = right - Pixels(kSideMargin);
  bottom_ = bottom - Pixels(kEndMargin);
  y_ = top + Pixels(kEndMargin);
  const KeptContext kept(layout_.dc);
  SetBkMode(layout_.dc, TRANSPARENT);
  SetTextAlign(layout_.dc, TA_LEFT | TA_TOP);
  SetTextColor(layout_.dc, 0);
  if (flags_.a4pFix != 1) IntersectClipRect(layout_.dc, left, top, right, bottom);
  for (const auto block : {&Sheet::Date, &Sheet::Title, &Sheet::Recipient, &Sheet::Sender, &Sheet::Pages,
                           &Sheet::Subject, &Sheet::Comment})
    y_ += (this->*block)();
  Fill(left_, bottom_ - Pixels(kBarHeight), right_, Pixels(kBarHeight), kBarColor);
  Picture();
}

LONG Sheet::Date() const {
  if (flags_.date == 0) return 0;
  SYSTEMTIME now{};
  if (!layout_.fixedDate) GetLocalTime(&now);
  const int64_t year = layout_.fixedDate ? layout_.year : now.wYear;
  const int64_t month = layout_.fixedDate ? layout_.month : now.wMonth;
  const int64_t day = layout_.fixedDate ? layout_.day : now.wDay;
  const std::u16string date = layout_.style == kWesternStyle
                                  ? ExpandText(u"%02d/%02d/%02d", {month, day, year})
                                  : ExpandText(GetUiString(text::kCoverDate), {year, month, day});
  const LOGFONTW font = Head(kDateHeight);
  return Write(font, right_ - Measure(font, date).cx, y_, date).cy;
}

LONG Sheet::Title() const {
  const LONG bar = Pixels(kBarHeight);
  Fill(left_, y_, right_, bar, kBarColor);
  const LONG height = Write(Head(kTitleHeight), left_, y_ + bar, GetUiString(style_.title)).cy;
  Fill(left_, y_ + bar + height, right_, bar, kBarColor);
  return height + Pixels(kTitleGap);
}

LONG Sheet::Recipient() const {
  return flags_.receiveSetup == 0 ? TemplateText() : Details();
}

LONG Sheet::TemplateText() const {
  const SIZE label = Write(Head(kTextHeight), left_, y_, GetUiString(style_.to));
  const SIZE text = Write(Body(kTextHeight), left_ + label.cx, y_, CoverText(layout_.store->fixedform));
  const LONG height = std::max(label.cy, text.cy);
  Rule(left_ + label.cx, y_ + height);
  return height + Pixels(kBlockGap);
}

LONG Sheet::Details() const {
  namespace personal = value::lpFaxCover_ReceivePersonal;
  const bool typed = flags_.receivePersonal == personal::kTyped;
  const bool wanted =
      (flags_.receiveName | flags_.receiveFaxnum | flags_.receiveCompany1 | flags_.receiveCompany2) != 0;
  const bool any = typed || layout_.firstRow < std::min<size_t>(layout_.endRow, layout_.rows.size());
  if (!wanted || !any) return 0;
  const SIZE label = Write(Head(kTextHeight), left_, y_, GetUiString(style_.to));
  const LONG x0 = left_ + label.cx;
  const LONG height = std::max(DrawRecipients(x0), label.cy);
  Rule(x0, y_ + height);
  return height + Pixels(kBlockGap);
}

RecipientRow Sheet::TypedRecipient() const {
  RecipientRow row{};
  const FaxCoverStore& store = *layout_.store;
  CoverText(store.receiptName).copy(row.name, kRecipientTextLength);
  CoverText(store.receiptFaxnum).copy(row.number, kRecipientTextLength);
  CoverText(store.receiptCompany1).copy(row.company, kRecipientTextLength);
  CoverText(store.receiptCompany2).copy(row.department, kRecipientTextLength);
  return row;
}

/// The height of all of them.
LONG Sheet::DrawRecipients(LONG x0) const {
  namespace personal = value::lpFaxCover_ReceivePersonal;
  constexpr LONG kFullSize = 10;  ///< recipients that fit at the usual height
  LONG height = FontHeight(kTextHeight);
  const auto count = static_cast<LONG>(layout_.rows.size());
  if (flags_.receivePersonal == personal::kAllOnOneSheet && count >= kFullSize)
    height = std::max(height * kFullSize / count, LONG{1});
  const LOGFONTW font = Font(style_.body, height);
  if (flags_.receivePersonal == personal::kTyped) return DrawRecipient(TypedRecipient(), font, x0, y_);
  LONG used = 0;
  const size_t end = std::min<size_t>(layout_.endRow, layout_.rows.size());
  for (size_t i = layout_.firstRow; i < end; ++i) used += DrawRecipient(layout_.rows[i], font, x0, y_ + used);
  return used;
}

/// One recipient from the line at `y` on; the height of its lines.
LONG Sheet::DrawRecipient(const RecipientRow& row, const LOGFONTW& font, LONG x0, LONG y) const {
  struct Item {
    uint8_t shown;
    std::u16string_view text;
  };
  std::array<Item, 3> items = {{{flags_.receiveCompany1, CoverText(row.company)},
                                {flags_.receiveCompany2, CoverText(row.department)},
                                {flags_.receiveName, CoverText(row.name)}}};
  if (layout_.style == kWesternStyle) std::ranges::reverse(items);
  const LONG line = LineHeight(font);
  const LONG first = y;
  LONG x = x0;
  for (const Item& item : items) {
    if (item.shown == 0 || item.text.empty()) continue;
    const std::u16string text = std::u16string(item.text) + u' ';
    if (x > x0 && x + Measure(font, text).cx > right_) {
      x = x0;
      y += line;
    }
    x += Write(font, x, y, text).cx;
  }
  const std::u16string_view number = CoverText(row.number);
  if (flags_.receiveFaxnum != 0 && !number.empty()) {
    if (x > x0) y += line;
    const bool typed = flags_.receivePersonal == value::lpFaxCover_ReceivePersonal::kTyped;
    Write(font, x0, y, ExpandText(GetUiString(typed ? style_.fax : text::kCoverFax), {number}));
  }
  return y + line - first;
}

LONG Sheet::Sender() const {
  const FaxCoverStore& store = *layout_.store;
  struct Line {
    uint8_t shown;
    TextNumber format;  ///< of the number 0: the text as it is
    std::u16string_view text;
  };
  std::array<Line, 6> lines = {{{flags_.senderCompany1, {}, CoverText(store.senderCompany1)},
                                {flags_.senderCompany2, {}, CoverText(store.senderCompany2)},
                                {flags_.senderName, {}, CoverText(store.senderName)},
                                {flags_.senderTelnum, style_.telephone, CoverText(store.senderTelnum)},
                                {flags_.senderFaxnum, style_.fax, CoverText(store.senderFaxnum)},
                                {flags_.senderEmail, style_.email, CoverText(store.senderEmail)}}};
  if (std::ranges::all_of(lines, [](const Line& line) { return line.shown == 0; })) return 0;
  if (layout_.style == kWesternStyle) std::swap(lines[0], lines[2]);
  const SIZE label = Write(Head(kTextHeight), left_, y_, GetUiString(style_.from));
  const LOGFONTW font = Body(kTextHeight);
  LONG used = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    const Line& line = lines[i];
    if (line.shown == 0 || line.text.empty()) continue;
    constexpr size_t kNames = 3;
    const std::u16string text =
        i < kNames ? std::u16string(line.text) : ExpandText(GetUiString(line.format), {line.text});
    used += Write(font, left_ + label.cx, y_ + used, text).cy;
  }
  const LONG height = std::max(used, label.cy);
  Rule(left_, y_ + height);
  return height + Pixels(kBlockGap);
}

LONG Sheet::Pages() const {
  if (flags_.pagenum == 0) return 0;
  const LOGFONTW font = Head(kSmallHeight);
  const std::u16string text = ExpandText(GetUiString(style_.pages), {int64_t{layout_.store->pagenum}});
  const LONG height = Write(font, right_ - Measure(font, text).cx, y_, text).cy;
  Rule(left_, y_ + height);
  return height + Pixels(kBlockGap);
}

LONG Sheet::Subject() const {
  if (flags_.subject == 0) return 0;
  const SIZE label = Write(Head(kTextHeight), left_, y_, GetUiString(style_.subject));
  const SIZE text = Write(Body(kTextHeight), left_ + label.cx, y_, CoverText(layout_.store->subject));
  const LONG height = std::max(label.cy, text.cy);
  Rule(left_, y_ + height);
  return height + Pixels(kBlockGap);
}

LONG Sheet::Comment() const {
  const LONG indent = Measure(Head(kSmallHeight), u"      ").cx;
  const LOGFONTW font = Body(kSmallHeight);
  std::u16string_view rest = CoverText(layout_.store->text);
  LONG used = 0;
  while (!rest.empty()) {
    const size_t end = std::min(rest.find_first_of(u"\r\n"), rest.size());
    std::u16string line(rest.substr(0, end));
    std::ranges::replace(line, u'\t', u' ');
    if (line.empty()) line = u" ";  // keeps its height
    used += Write(font, left_ + indent, y_ + used, line).cy;
    rest.remove_prefix(std::min(end + (rest.substr(end).starts_with(u"\r\n") ? 2 : 1), rest.size()));
  }
  return used + Pixels(kBlockGap);
}

/// The file, whole; empty if it can't be read or is too large.
std::vector<uint8_t> ReadWhole(const std::u16string& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return {};
  const DWORD size = GetFileSize(file);
  std::vector<uint8_t> bytes(size <= kLargestPicture ? size : 0);
  DWORD got = 0;
  const bool whole = !bytes.empty() && ReadFile(file, bytes.data(), size, &got) != 0 && got == size;
  CloseHandle(file);
  return whole ? bytes : std::vector<uint8_t>();
}

template <class T>
T NumberAt(const std::vector<uint8_t>& bytes, size_t offset) {
  T number{};
  if (bytes.size() >= offset + sizeof number) std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}

/// Width and height that a BMP file declares; zeros for another file.
SIZE BitmapSize(const std::vector<uint8_t>& bytes) {
  constexpr size_t kHeaderSize = 14, kWidth = 18, kHeight = 22, kOldHeight = 20;
  constexpr uint32_t kOldHeader = 12;
  constexpr int64_t kLargest = 32767;
  if (bytes.size() < 2 || bytes[0] != 'B' || bytes[1] != 'M') return {};
  const bool old = NumberAt<uint32_t>(bytes, kHeaderSize) == kOldHeader;
  const int64_t width = old ? NumberAt<uint16_t>(bytes, kWidth) : NumberAt<int32_t>(bytes, kWidth);
  // A negative height tells that the rows stand from top to bottom.
  const int64_t height =
      std::abs(old ? int64_t{NumberAt<uint16_t>(bytes, kOldHeight)} : NumberAt<int32_t>(bytes, kHeight));
  if (width < 1 || height < 1 || width > kLargest || height > kLargest) return {};
  return {static_cast<LONG>(width), static_cast<LONG>(height)};
}

void Sheet::Picture() const {
  if (flags_.image == 0 || layout_.imagePath.empty()) return;
  const std::vector<uint8_t> bytes = ReadWhole(layout_.imagePath);
  const SIZE size = BitmapSize(bytes);
  if (size.cx == 0) return;
  int64_t scale = flags_.zoom != 0 ? int64_t{layout_.zoom} * layout_.percent / 100 : layout_.percent;
  scale = scale * layout_.imageScale / 100;
  const auto scaled = [scale](LONG length) {
    constexpr int64_t kLargest = 1000000;  // far beyond every sheet
    return scale == 0 ? length : static_cast<LONG>(std::clamp<int64_t>(length * scale * 100 / 10000, 0, kLargest));
  };
  const LONG x = layout_.originX + PixelsOfHmm(layout_.imageXHmm);
  const LONG y = layout_.originY + PixelsOfHmm(layout_.imageYHmm);
  const RECT target{x, y, x + scaled(size.cx), y + scaled(size.cy)};
  StretchDIBits(layout_.dc, &target, bytes.data(), static_cast<DWORD>(bytes.size()));
}

}  // namespace

void LayoutCover(const CoverLayout& layout) {
  if (layout.store != nullptr) Sheet(layout).Draw();
}

void ClampCover(FaxCoverStore& store) {
  store.pagenum = std::clamp(store.pagenum, 1u, kMostCoverPages);
  store.style = std::clamp(store.style, 1u, kCoverStyleCount);
  if (store.fcsPaper > kDocumentPaper) store.fcsPaper = kDocumentPaper;
  store.zoom = std::clamp(store.zoom, kMinCoverZoom, kMaxCoverZoom);
  store.xPosition = std::min(store.xPosition, kCoverPositions);
  store.yPosition = std::min(store.yPosition, kCoverPositions);
}

uint32_t CountCommentLines(std::u16string_view text) {
  uint32_t lines = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'\n') continue;
    ++lines;
    ++i;
  }
  return lines;
}

}  // namespace heron
