// Drawing and escapes over the Canvas behind an HDC (canvas.h). Conventions:
// platform/api/types.h.
//
// A fresh context has the stock font, pen and brush, black letters on white, an opaque background, alignment left and
// top, no clip, and the device's pixels as positions. One thread at a time uses a context. What is selected is copied,
// so an object may be deleted while it is selected. Numbers and objects that aren't named here are refused.
#pragma once

#include "platform/api/canvas.h"

namespace heron::platform {

using HGDIOBJ = void*;

/// Background modes.
inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

inline constexpr int MM_TEXT = 1;  ///< the one mapping mode: a unit is a pixel

/// Stock objects.
inline constexpr int WHITE_BRUSH = 0;
inline constexpr int BLACK_BRUSH = 4;
inline constexpr int BLACK_PEN = 7;
inline constexpr int SYSTEM_FONT = 13;

/// Options of ExtTextOutW: `rect` is filled with the background colour; nothing is drawn outside `rect`.
inline constexpr DWORD ETO_OPAQUE = 2;
inline constexpr DWORD ETO_CLIPPED = 4;

/// Results of the clip calls.
inline constexpr int RGN_ERROR = 0;
inline constexpr int NULLREGION = 1;  ///< nothing can be drawn
inline constexpr int SIMPLEREGION = 2;

inline constexpr DWORD CLR_INVALID = 0xFFFFFFFF;
inline constexpr DWORD GDI_ERROR = 0xFFFFFFFF;

struct TEXTMETRICW;
using FONTENUMPROCW = int (*)(const LOGFONTW* font, const TEXTMETRICW* metrics, DWORD type, LPARAM argument);

extern "C" {

/// The printing side's answer to escape `code`: 0 is a failure unless the value itself is the answer. A null `in` or
/// `out` goes with the size 0.
HERON_PLATFORM_API int ExtEscape(HDC hdc, int code, int in_size, const void* in, int out_size, void* out);

/// New objects, closed with DeleteObject; null on failure. A pen's style is solid.
HERON_PLATFORM_API HGDIOBJ CreateFontIndirectW(const LOGFONTW* font);
HERON_PLATFORM_API HGDIOBJ CreatePen(int style, int width, COLORREF color);
HERON_PLATFORM_API HGDIOBJ CreateSolidBrush(COLORREF color);
HERON_PLATFORM_API BOOL DeleteObject(HGDIOBJ object);
/// An object that is never deleted; null for one that isn't named above.
HERON_PLATFORM_API HGDIOBJ GetStockObject(int number);

/// Selects a font, pen or brush; gives the one of its kind that was selected, null on failure.
HERON_PLATFORM_API HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object);
/// These give the value of before: CLR_INVALID, 0, GDI_ERROR or 0 on failure.
HERON_PLATFORM_API COLORREF SetTextColor(HDC hdc, COLORREF color);
HERON_PLATFORM_API COLORREF SetBkColor(HDC hdc, COLORREF color);
HERON_PLATFORM_API int SetBkMode(HDC hdc, int mode);
HERON_PLATFORM_API DWORD SetTextAlign(HDC hdc, DWORD align);
HERON_PLATFORM_API int SetMapMode(HDC hdc, int mode);

/// Where the drawing's point (0, 0) lies: at the viewport's origin less the window's. `before` may be null.
HERON_PLATFORM_API BOOL SetWindowOrgEx(HDC hdc, int x, int y, POINT* before);
HERON_PLATFORM_API BOOL SetViewportOrgEx(HDC hdc, int x, int y, POINT* before);

/// All that is selected and set, the clip included, kept and taken back. SaveDC gives the number of kept states, 0 on
/// failure. RestoreDC takes such a number, or -1 for the last; the states kept after it are forgotten.
HERON_PLATFORM_API int SaveDC(HDC hdc);
HERON_PLATFORM_API BOOL RestoreDC(HDC hdc, int saved);

/// The rectangle that is drawn in; all of the device without a clip.
HERON_PLATFORM_API int GetClipBox(HDC hdc, RECT* box);
HERON_PLATFORM_API int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom);
/// Null takes the clip away; regions themselves don't exist here.
HERON_PLATFORM_API int SelectClipRgn(HDC hdc, void* region);

/// Width and height of the text before it is turned.
HERON_PLATFORM_API BOOL GetTextExtentPointW(HDC hdc, const char16_t* text, int length, SIZE* size);
HERON_PLATFORM_API BOOL TextOutW(HDC hdc, int x, int y, const char16_t* text, int length);
/// `rect` may be null without options. Distances between characters can't be given: `distances` is null.
HERON_PLATFORM_API BOOL ExtTextOutW(HDC hdc, int x, int y, DWORD options, const RECT* rect, const char16_t* text,
                                    DWORD length, const int* distances);

/// Text between the two calls isn't drawn but kept as a path; StrokeAndFillPath draws and forgets it, with the pen and
/// brush then selected. A path that was never closed fails.
HERON_PLATFORM_API BOOL BeginPath(HDC hdc);
HERON_PLATFORM_API BOOL EndPath(HDC hdc);
HERON_PLATFORM_API BOOL StrokeAndFillPath(HDC hdc);

/// Fills `rect` with a brush. False for another object or a null `rect`.
HERON_PLATFORM_API BOOL FillRect(HDC hdc, const RECT* rect, HGDIOBJ brush);
/// Draws the picture of a BMP file, whose whole content is `file`, over `target`. Unlike its namesake it takes the file
/// as it is, so that reading its formats is the canvas's work. False for null arguments.
HERON_PLATFORM_API BOOL StretchDIBits(HDC hdc, const RECT* target, const void* file, DWORD size);

/// A DeviceCap number; 0 for any other.
HERON_PLATFORM_API int GetDeviceCaps(HDC hdc, int number);
/// Hands each font family of the device, or the one named `family`, to `visit` until it gives 0; `metrics` is null.
/// The last result of `visit`, 1 if it was never called.
HERON_PLATFORM_API int EnumFontFamiliesW(HDC hdc, const char16_t* family, FONTENUMPROCW visit, LPARAM argument);

/// Positive on success.
HERON_PLATFORM_API int StartPage(HDC hdc);
HERON_PLATFORM_API int EndPage(HDC hdc);
}

}  // namespace heron::platform
