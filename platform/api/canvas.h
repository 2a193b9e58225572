// The drawing surface behind an HDC, and the one road to the printing side.
//
// A program that prints makes a Canvas and opens an HDC on it; the driver draws and sends escapes with the calls of
// device_context.h. What is selected into an HDC (font, colours, alignment, clip, mapping) is common code; a Canvas
// gets each drawing with everything that it needs, so that a recording one and a painting one behave alike. Positions
// are pixels of the device, y downwards.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/api/types.h"

namespace heron::platform {

using COLORREF = uint32_t;  ///< 0x00bbggrr

struct POINT {
  LONG x;
  LONG y;
};
struct SIZE {
  LONG cx;
  LONG cy;
};
struct RECT {
  LONG left;
  LONG top;
  LONG right;   ///< first column outside
  LONG bottom;  ///< first row outside
};

inline constexpr int kFaceSize = 32;  ///< characters of a font's name, terminator included

struct LOGFONTW {
  LONG lfHeight;       ///< negative: height of the letters in pixels; positive: height of the line
  LONG lfWidth;        ///< 0: as the font has it
  LONG lfEscapement;   ///< direction of the line, tenths of a degree, counter-clockwise
  LONG lfOrientation;  ///< direction of each character, as lfEscapement
  LONG lfWeight;       ///< 0 as it comes, 400 regular, 700 bold
  uint8_t lfItalic;
  uint8_t lfUnderline;
  uint8_t lfStrikeOut;
  uint8_t lfCharSet;
  uint8_t lfOutPrecision;
  uint8_t lfClipPrecision;
  uint8_t lfQuality;
  uint8_t lfPitchAndFamily;
  char16_t lfFaceName[kFaceSize];
};

/// Text alignment: which point of the text the given position is.
inline constexpr DWORD TA_LEFT = 0;
inline constexpr DWORD TA_RIGHT = 2;
inline constexpr DWORD TA_CENTER = 6;
inline constexpr DWORD TA_TOP = 0;
inline constexpr DWORD TA_BOTTOM = 8;

/// One line of text as it is to appear.
struct TextDrawing {
  POINT at;
  std::u16string_view text;
  LOGFONTW font;
  DWORD align;                       ///< TA_ bits
  COLORREF color;                    ///< of the letters, or of the filling of an outline
  bool outline;                      ///< a path of the text, stroked and filled
  LONG pen_width;                    ///< of an outline
  COLORREF pen_color;                ///< of an outline
  std::optional<COLORREF> backdrop;  ///< colour behind the text; none if transparent
};

/// Rows of 0xaarrggbb pixels, top row first.
struct Picture {
  int width;
  int height;
  std::span<const uint32_t> pixels;  ///< width * height
};

/// A picture with pixels of its own, as Picture has them.
struct PixelImage {
  int width = 0;
  int height = 0;
  std::vector<uint32_t> pixels;

  Picture View() const { return {width, height, pixels}; }
};

/// One byte a pixel, (30 red + 59 green + 11 blue) / 100 of it on white, 255 for white.
HERON_PLATFORM_API std::vector<uint8_t> GreyLevels(const PixelImage& image);
/// The reverse: opaque pixels whose three colours are the grey level. `levels` has width * height bytes.
HERON_PLATFORM_API PixelImage FromGreyLevels(int width, int height, std::span<const uint8_t> levels);

struct FontFamily {
  std::u16string name;
  uint8_t char_set = 0;
  uint8_t pitch_and_family = 0;
};

/// Numbers of GetDeviceCaps.
enum class DeviceCap { kHorzRes = 8, kVertRes = 10, kLogPixelsX = 88, kLogPixelsY = 90 };

class Canvas {
 public:
  virtual ~Canvas() = default;
  /// The printing side's answer to an escape; 0 is a failure unless the value itself is the answer. It writes nothing
  /// past `out`, which may be partly written on failure.
  virtual int Escape(uint32_t code, std::span<const uint8_t> in, std::span<uint8_t> out) = 0;
  virtual int DeviceCap(DeviceCap number) = 0;
  /// Width and height of the line before it is turned.
  virtual SIZE MeasureText(const LOGFONTW& font, std::u16string_view text) = 0;
  virtual std::vector<FontFamily> FontFamilies() = 0;
  /// `clip`: nothing is drawn outside; none if there is no clip.
  virtual void DrawLine(const TextDrawing& drawing, const std::optional<RECT>& clip) = 0;
  virtual void FillRect(const RECT& area, COLORREF color, const std::optional<RECT>& clip) = 0;
  virtual void DrawPicture(const RECT& target, const Picture& picture, const std::optional<RECT>& clip) = 0;
  /// The whole content `file` of a BMP file, stretched to `target`. Nothing is drawn for one that can't be read, nor by
  /// a canvas without a reader.
  virtual void DrawBitmap(const RECT& /*target*/, std::span<const uint8_t> /*file*/,
                          const std::optional<RECT>& /*clip*/) {}
  /// Picture `number` of the driver's resource module, stretched to `target`. Nothing is drawn for a picture that the
  /// module hasn't got, nor by a canvas without a module, as that of a job.
  virtual void DrawResource(uint32_t /*number*/, const RECT& /*target*/, const std::optional<RECT>& /*clip*/) {}
  /// The pixels that the picture has at its own size; nothing where DrawResource would draw nothing.
  virtual std::optional<SIZE> ResourceSize(uint32_t /*number*/) { return {}; }
  /// Whether what lies around the drawing is dark, as in a window with light letters.
  virtual bool HasDarkGround() const { return false; }
  virtual bool StartPage() = 0;
  virtual bool EndPage() = 0;
};

/// Picture `number` at its own size with its upper left corner at `at`. False if there is none.
HERON_PLATFORM_API bool DrawResourceAt(Canvas& canvas, uint32_t number, POINT at, const std::optional<RECT>& clip = {});

/// A new handle that draws on `canvas`, which must outlive it. Closed with CloseCanvas. May throw std::bad_alloc.
HERON_PLATFORM_API HDC OpenCanvas(Canvas* canvas);
/// False if `hdc` is none of OpenCanvas. Calls on a closed handle fail with kErrorInvalidHandle.
HERON_PLATFORM_API bool CloseCanvas(HDC hdc);

}  // namespace heron::platform
