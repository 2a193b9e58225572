// A canvas that draws nothing but notes every call, one short line an escape or drawing, and answers escapes by
// a script.
//
// An escape that nothing is scripted for succeeds with 1 and zeroes its reply. Log lines: "EscSetCancelFlag 1" (sent
// bytes as little-endian number up to 4 bytes, else "[size]"), "text (x,y) angle height color 'text'" with what differs
// from plain text behind it, "fill", "picture" (with number and place for one of the resource module), "page", "end
// page".
#pragma once

#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "escapes/escape_table.h"
#include "platform/api/canvas.h"
#include "platform/api/text.h"

namespace heron::test {

inline std::string EscapeName(uint32_t code) {
  for (const EscapeRow& row : kEscapes) {
    if (row.code == code) return std::string(row.name);
  }
  return "unknown escape " + std::to_string(code);
}

class RecordingCanvas : public platform::Canvas {
 public:
  struct Reply {
    int result = 1;
    std::vector<uint8_t> bytes;  ///< at most as many as are asked for go out, the rest is zero
  };

  RecordingCanvas() : hdc(platform::OpenCanvas(this)) {}
  ~RecordingCanvas() override { platform::CloseCanvas(hdc); }
  RecordingCanvas(const RecordingCanvas&) = delete;
  RecordingCanvas& operator=(const RecordingCanvas&) = delete;

  int Escape(uint32_t code, std::span<const uint8_t> in, std::span<uint8_t> out) override {
    const std::string name = EscapeName(code);
    sent[name].assign(in.begin(), in.end());
    std::string line = name;
    if (in.size() > 4) line += " [" + std::to_string(in.size()) + ']';
    if (!in.empty() && in.size() <= 4) {
      uint32_t number = 0;
      std::memcpy(&number, in.data(), in.size());
      line += ' ' + std::to_string(number);
    }
    ++escapes;
    if (escapes == fail_at || failing == name) {
      log.push_back(line + " FAILED");
      return 0;
    }
    log.push_back(line);
    std::fill(out.begin(), out.end(), uint8_t{0});
    if (on_escape && on_escape(name, in)) return 1;
    const auto reply = replies.find(name);
    if (reply == replies.end()) return 1;
    const size_t size = std::min(out.size(), reply->second.bytes.size());
    if (size > 0) std::memcpy(out.data(), reply->second.bytes.data(), size);
    return reply->second.result;
  }

  int DeviceCap(platform::DeviceCap number) override {
    switch (number) {
      case platform::DeviceCap::kHorzRes:
        return width;
      case platform::DeviceCap::kVertRes:
        return height;
      default:
        return dpi;
    }
  }

  platform::SIZE MeasureText(const platform::LOGFONTW& font, std::u16string_view text) override {
    const platform::LONG tall = font.lfHeight < 0 ? -font.lfHeight : font.lfHeight;
    return {static_cast<platform::LONG>(text.size()) * tall / 2, tall};
  }

  std::vector<platform::FontFamily> FontFamilies() override { return families; }

  void DrawLine(const platform::TextDrawing& drawing, const std::optional<platform::RECT>& clip) override {
    char text[160];
    std::snprintf(text, sizeof text, "%s (%d,%d) angle %d height %d color %06x", drawing.outline ? "outline" : "text",
                  drawing.at.x, drawing.at.y, drawing.font.lfEscapement, drawing.font.lfHeight, drawing.color);
    log.push_back(text + (" '" + platform::ToUtf8(drawing.text) + "'"));
    drawings.push_back({drawing.at, drawing.font, drawing.align, drawing.color, drawing.outline, drawing.pen_width,
                        drawing.pen_color, drawing.backdrop.has_value(), std::u16string(drawing.text), clip});
  }
  void FillRect(const platform::RECT&, platform::COLORREF, const std::optional<platform::RECT>&) override {
    log.emplace_back("fill");
  }
  void DrawPicture(const platform::RECT&, const platform::Picture&, const std::optional<platform::RECT>&) override {
    log.emplace_back("picture");
  }
  void DrawResource(uint32_t number, const platform::RECT& target, const std::optional<platform::RECT>&) override {
    char text[80];
    std::snprintf(text, sizeof text, "picture %u (%d,%d) %dx%d", number, target.left, target.top,
                  target.right - target.left, target.bottom - target.top);
    log.emplace_back(text);
  }
  std::optional<platform::SIZE> ResourceSize(uint32_t number) override {
    const auto found = picture_sizes.find(number);
    return found == picture_sizes.end() ? std::nullopt : std::optional(found->second);
  }
  void DrawBitmap(const platform::RECT& target, std::span<const uint8_t> file,
                  const std::optional<platform::RECT>&) override {
    char text[120];
    std::snprintf(text, sizeof text, "(%d,%d)-(%d,%d) %zu", target.left, target.top, target.right, target.bottom,
                  file.size());
    bitmaps.emplace_back(text);
  }
  /// The bitmaps drawn since the last call, joined.
  std::string TakeBitmaps() {
    std::string all;
    for (const std::string& bitmap : bitmaps) all += (all.empty() ? "" : " ") + bitmap;
    bitmaps.clear();
    return all;
  }
  bool StartPage() override {
    log.emplace_back("page");
    return true;
  }
  bool EndPage() override {
    log.emplace_back("end page");
    return true;
  }

  /// The log since the last call, one line each, and forgets it.
  std::string TakeLog() {
    std::string lines;
    for (const std::string& line : log) lines += line + '\n';
    log.clear();
    return lines;
  }

  /// Drawings as they came, with their text kept.
  struct Drawn {
    platform::POINT at;
    platform::LOGFONTW font;
    platform::DWORD align;
    platform::COLORREF color;
    bool outline;
    platform::LONG pen_width;
    platform::COLORREF pen_color;
    bool opaque;
    std::u16string text;
    std::optional<platform::RECT> clip;
  };

  std::map<std::string, Reply> replies;              ///< by the escape's name
  std::map<std::string, std::vector<uint8_t>> sent;  ///< bytes last sent, by the escape's name
  /// Asked first, with the bytes sent; true: it has answered with 1 and an empty reply. May change `replies`.
  std::function<bool(const std::string& name, std::span<const uint8_t> in)> on_escape;
  uint32_t fail_at = 0;  ///< the escape that fails, counted from 1; 0 none
  std::string failing;   ///< every escape of this name fails
  uint32_t escapes = 0;
  std::vector<std::string> log;
  std::vector<std::string> bitmaps;  ///< target and size of the file
  std::vector<Drawn> drawings;
  std::vector<platform::FontFamily> families;
  std::map<uint32_t, platform::SIZE> picture_sizes;  ///< of the pictures that there are
  int width = 4960;
  int height = 7016;
  int dpi = 600;
  const platform::HDC hdc;
};

}  // namespace heron::test
