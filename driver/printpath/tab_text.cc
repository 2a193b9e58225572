#include "printpath/tab_text.h"

#include <algorithm>
#include <string>

#include "catalog/other_values.h"
#include "escapes/send_escape.h"
#include "platform/api/characters.h"
#include "printpath/selected_object.h"

namespace heron {
namespace {

using namespace platform;

enum Side { kFront, kBack };

constexpr uint8_t kGb2312 = 134;
constexpr uint8_t kDefaultCharSet = 1;

/// The two fixed points of the texts.
constexpr POINT kPlace[] = {{2500, 3500}, {3300, 2500}};

std::u16string_view Bounded(const char16_t* text, size_t room) {
  return std::u16string_view(text, std::find(text, text + room, u'\0'));
}

DWORD AlignmentOf(const PageEntry& entry) {
  const bool reversed = entry.tabTextOrient == value::tabText::kUpwards;
  if (entry.tabTextAlign == value::tabText::kAtFirst) return reversed ? TA_RIGHT : TA_LEFT;
  if (entry.tabTextAlign == value::tabText::kAtLast) return reversed ? TA_LEFT : TA_RIGHT;
  return TA_CENTER;
}

/// The character set of the first family of this name; 1 if the device has none.
uint8_t CharSetOf(HDC hdc, const std::u16string& face) {
  uint8_t char_set = kDefaultCharSet;
  const FONTENUMPROCW keep_first = [](const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM argument) {
    *reinterpret_cast<uint8_t*>(argument) = font->lfCharSet;
    return 0;
  };
  EnumFontFamiliesW(hdc, face.c_str(), keep_first, reinterpret_cast<LPARAM>(&char_set));
  return char_set;
}

/// Turned letters of Chinese fonts have a face of their own, whose name begins with "@".
void SetFace(LOGFONTW& font, std::u16string face, bool turned) {
  if (font.lfCharSet == kGb2312) {
    const bool marked = face.starts_with(u'@');
    if (turned && !marked) face.insert(face.begin(), u'@');
    if (!turned && marked) face.erase(0, 1);
  }
  platform::WholeCharacters(face, kFaceSize - 1).copy(font.lfFaceName, kFaceSize);
}

LOGFONTW FontOf(HDC hdc, const PageEntry& entry, Side side) {
  LOGFONTW font{};
  const std::u16string face(Bounded(entry.tabTextFontName, std::size(entry.tabTextFontName)));
  font.lfCharSet = CharSetOf(hdc, face);
  const int16_t orient = entry.tabTextOrient;
  SetFace(font, face, orient == value::tabText::kTurnedLetters);
  font.lfHeight = -(GetDeviceCaps(hdc, static_cast<int>(DeviceCap::kLogPixelsY)) * entry.tabTextFontSize + 36) / 72;
  if (orient == value::tabText::kTurned || orient == value::tabText::kTurnedLetters) {
    font.lfEscapement = side == kFront ? 2700 : 1800;
  } else {
    font.lfEscapement = side == kFront ? 900 : 0;
  }
  font.lfOrientation = font.lfEscapement;
  const int16_t style = entry.tabTextFontStyle;
  font.lfWeight = value::fontStyle::IsBold(style) ? 700 : 0;
  font.lfItalic = value::fontStyle::IsItalic(style) ? 1 : 0;
  return font;
}

void DrawSide(HDC hdc, const PageEntry& entry, Side side) {
  const LOGFONTW logfont = FontOf(hdc, entry, side);
  const KeptState kept(hdc);
  const SelectedObject font(hdc, CreateFontIndirectW(&logfont));
  SetMapMode(hdc, MM_TEXT);
  SelectObject(hdc, GetStockObject(BLACK_BRUSH));
  SetBkMode(hdc, TRANSPARENT);
  SetTextColor(hdc, 0);
  SetTextAlign(hdc, AlignmentOf(entry));
  const std::u16string_view text = Bounded(entry.tabText, std::size(entry.tabText));
  TextOutW(hdc, kPlace[side].x, kPlace[side].y, text.data(), static_cast<int>(text.size()));
}

bool PrintsTab(const PageEntry& entry) {
  return entry.prnTabIndex != 0;
}

}  // namespace

uint32_t CountTabs(std::span<const PageEntry> entries) {
  return static_cast<uint32_t>(std::ranges::count_if(entries, PrintsTab));
}

void DrawTabs(HDC hdc, std::span<const PageEntry> entries) {
  uint32_t number = 0;
  for (const PageEntry& entry : entries) {
    ++number;
    if (!PrintsTab(entry)) continue;
    SendEscape<"EscSetTabIndex">(hdc, number);
    SendEscape<"EscTabDrawBegin">(hdc);
    DrawSide(hdc, entry, kFront);
    SendEscape<"EscTabDrawEnd">(hdc);
    SendEscape<"EscTabSideFront">(hdc);
    SendEscape<"EscTabDrawBegin">(hdc);
    DrawSide(hdc, entry, kBack);
    SendEscape<"EscTabDrawEnd">(hdc);
    SendEscape<"EscTabSideBack">(hdc);
    SendEscape<"EscTabEntryDone">(hdc);
  }
}

}  // namespace heron
