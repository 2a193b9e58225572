#include "watermark_text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <span>

#include "forms/watermark_list.h"
#include "measure.h"
#include "platform/api/text.h"

namespace heron::cli {
namespace {

constexpr const char* kStyles[] = {"regular", "bold", "italic", "bold-italic"};
constexpr const char* kColors[] = {"grey", "red", "green", "blue", "yellow", "magenta", "cyan"};

std::string NameIn(std::span<const char* const> names, int64_t index) {
  return index >= 0 && index < static_cast<int64_t>(names.size()) ? names[static_cast<size_t>(index)] : "?";
}

int32_t Within(const std::string& option, const std::string& text, const MarkRange& range, const Unit& unit) {
  const std::optional<int64_t> number = Measure(text, unit);
  if (number && range.Has(*number)) return static_cast<int32_t>(*number);
  throw Failure(kUsage, "--" + option + " is " + std::to_string(range.lowest) + " to " + std::to_string(range.highest) +
                            ' ' + std::string(unit.name) + ", not \"" + Printable(text) + '"');
}

/// The place of the word in `names`, or the number itself.
int32_t Choice(const std::string& option, const std::string& text, std::span<const char* const> names,
               const MarkRange& range) {
  const auto named = std::ranges::find(names, text);
  if (named != names.end()) return static_cast<int32_t>(named - names.begin()) + range.lowest;
  if (const std::optional<int64_t> number = WholeNumber(text); number && range.Has(*number))
    return static_cast<int32_t>(*number);
  std::string known;
  for (const char* const name : names) known += (known.empty() ? "" : ", ") + std::string(name);
  throw Failure(kUsage, "--" + option + " is " + known + ", or " + std::to_string(range.lowest) + " to " +
                            std::to_string(range.highest) + ", not \"" + Printable(text) + '"');
}

std::u16string Letters(const std::string& option, const std::string& text, size_t limit) {
  std::u16string letters = platform::FromUtf8(text);
  if (letters.size() > limit)
    throw Failure(kUsage, "--" + option + " may have at most " + std::to_string(limit) + " characters");
  if (std::ranges::any_of(letters, [](char16_t c) { return c < u' ' || c == 0x7F; }))
    throw Failure(kUsage, "--" + option + " is one line of text without control characters");
  return letters;
}

}  // namespace

void MarkChange::AddTo(CLI::App& command) {
  command.add_option("--text", text, "Text, up to 32 characters");
  command.add_option("--font", font, "Font family, up to 31 characters");
  command.add_option("--style", style, "regular, bold, italic or bold-italic");
  command.add_option("--size", size, "Size in points, 8 to 400");
  command.add_option("--angle", angle, "Angle in tenths of a degree, -900 to 900, or as 45deg");
  command.add_option("--color", color, "grey, red, green, blue, yellow, magenta or cyan");
  command.add_option("--shade", shade, "Shade, 0 (deepest) to 255 (white)");
  command.add_option("--x", x, "Middle across from the paper's, in tenths of a millimetre or as 12mm");
  command.add_option("--y", y, "Middle down from the paper's, in tenths of a millimetre or as 12mm");
}

bool MarkChange::Any() const {
  return text || font || style || size || angle || color || shade || x || y;
}

void ApplyMarkChange(const MarkChange& change, WatermarkEntry& entry) {
  constexpr Unit kPoints = {"points", "pt", 1}, kDegrees = {"tenths of a degree", "deg", 10};
  constexpr Unit kMillimetres = {"tenths of a millimetre", "mm", 10}, kLevels = {"(0 is the deepest)", "", 1};
  if (change.text) SetMarkText(entry, Letters("text", *change.text, kMarkTextLength));
  if (change.font) SetMarkFont(entry, Letters("font", *change.font, kMarkFontLength));
  if (change.style) entry.style = static_cast<uint32_t>(Choice("style", *change.style, kStyles, kMarkStyle));
  if (change.size) entry.size = static_cast<uint32_t>(Within("size", *change.size, kMarkSize, kPoints));
  if (change.angle) entry.angle = Within("angle", *change.angle, kMarkAngle, kDegrees);
  if (change.color) entry.selectColor = static_cast<uint32_t>(Choice("color", *change.color, kColors, kMarkColor));
  if (change.shade) entry.color = static_cast<uint32_t>(Within("shade", *change.shade, kMarkShade, kLevels));
  const int32_t x = change.x ? Within("x", *change.x, kMarkCenter, kMillimetres) : MarkCenterX(entry);
  const int32_t y = change.y ? Within("y", *change.y, kMarkCenter, kMillimetres) : MarkCenterY(entry);
  if (change.x || change.y) SetMarkCenter(entry, x, y);
}

Json MarkJson(const WatermarkEntry& entry, int index) {
  return {{"index", index},
          {"text", platform::ToUtf8(MarkText(entry))},
          {"font", platform::ToUtf8(MarkFont(entry))},
          {"style", entry.style},
          {"size", entry.size},
          {"angle", entry.angle},
          {"color", entry.selectColor},
          {"shade", entry.color & 0xFF},
          {"x", MarkCenterX(entry)},
          {"y", MarkCenterY(entry)},
          {"styleName", NameIn(kStyles, int64_t{entry.style} - 1)},
          {"colorName", NameIn(kColors, entry.selectColor)}};
}

std::string TenthsText(int32_t tenths) {
  const int32_t size = std::abs(tenths);
  const std::string fraction = size % 10 == 0 ? "" : '.' + std::to_string(size % 10);
  return (tenths < 0 ? "-" : "") + std::to_string(size / 10) + fraction;
}

void PrintMark(const WatermarkEntry& entry, int index, bool current) {
  constexpr size_t kNumberWidth = 4, kTextWidth = 34;
  std::cout << (current ? '*' : ' ') << Padded(std::to_string(index), kNumberWidth)
            << Padded(Printable(MarkText(entry)), kTextWidth) << Printable(MarkFont(entry)) << ", "
            << NameIn(kStyles, int64_t{entry.style} - 1) << ", " << entry.size << " pt, " << TenthsText(entry.angle)
            << " degrees, " << NameIn(kColors, entry.selectColor) << ' ' << (entry.color & 0xFF) << ", "
            << TenthsText(MarkCenterX(entry)) << " mm across, " << TenthsText(MarkCenterY(entry)) << " mm down\n";
}

}  // namespace heron::cli
