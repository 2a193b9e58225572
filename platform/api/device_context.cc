// The state of device contexts, and the calls that draw with it (device_context.h).

#include "platform/api/device_context.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <utility>

#include "platform/api/handle_table.h"

namespace heron::platform {
namespace {

constexpr COLORREF kBlack = 0;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr LONG kStockFontHeight = 16;

/// Handles of stock objects: below those of the table, and no multiple of four.
constexpr uintptr_t kStockHandles = 0x101;  // odd, so that a handle of the table never equals one
constexpr uintptr_t kStockStep = 4;
constexpr std::array kStockNumbers = {WHITE_BRUSH, BLACK_BRUSH, BLACK_PEN, SYSTEM_FONT};

HGDIOBJ StockHandle(int number) {
  return reinterpret_cast<HGDIOBJ>(kStockHandles + kStockStep * static_cast<uintptr_t>(number));
}

DrawingObject StockObject(int number) {
  if (number == WHITE_BRUSH) return Brush{kWhite};
  if (number == BLACK_BRUSH) return Brush{kBlack};
  if (number == BLACK_PEN) return Pen{.width = 1, .color = kBlack};
  LOGFONTW font{};
  font.lfHeight = kStockFontHeight;
  return font;
}

/// A font, pen or brush as it was when it was selected, and its handle. A copy, since the object may be deleted
/// meanwhile.
template <class T>
struct Selected {
  HGDIOBJ handle;
  T object;
};

template <class T>
Selected<T> SelectedStock(int number) {
  return {StockHandle(number), std::get<T>(StockObject(number))};
}

struct DrawingState {
  Selected<LOGFONTW> font = SelectedStock<LOGFONTW>(SYSTEM_FONT);
  Selected<Pen> pen = SelectedStock<Pen>(BLACK_PEN);
  Selected<Brush> brush = SelectedStock<Brush>(WHITE_BRUSH);
  COLORREF text_color = kBlack;
  COLORREF back_color = kWhite;
  int back_mode = OPAQUE;
  DWORD align = TA_LEFT | TA_TOP;
  POINT window_origin{};
  POINT viewport_origin{};
  std::optional<RECT> clip;  ///< pixels of the device
};

/// A line of text that waits in a path.
struct PathLine {
  POINT at;
  std::u16string text;
  LOGFONTW font;
  DWORD align;
};

enum class PathState : uint8_t { kNone, kOpen, kClosed };

}  // namespace

struct DeviceContext {
  explicit DeviceContext(Canvas* on) : canvas(on) {}

  Canvas* const canvas;
  DrawingState state;
  std::vector<DrawingState> saved;
  PathState path_state = PathState::kNone;
  std::vector<PathLine> path;
};

namespace {

/// Runs `call` on the context of `hdc`; `failure` if it is none or memory runs out.
template <class Result, class Call>
Result OnContext(HDC hdc, Result failure, Call&& call) {
  try {
    const auto opened = FindHandleOf<OpenedCanvas>(hdc);
    if (opened == nullptr) {
      SetLastError(kErrorInvalidHandle);
      return failure;
    }
    return call(*opened->context);
  } catch (const std::bad_alloc&) {
    SetLastError(kErrorNotEnoughMemory);
    return failure;
  }
}

template <class Result>
Result Refuse(Result failure) {
  SetLastError(kErrorInvalidParameter);
  return failure;
}

HGDIOBJ MakeObject(const DrawingObject& object) {
  try {
    return InsertHandle(object);
  } catch (const std::bad_alloc&) {
    SetLastError(kErrorNotEnoughMemory);
    return nullptr;
  }
}

std::optional<DrawingObject> FindObject(HGDIOBJ handle) {
  for (const int number : kStockNumbers) {
    if (handle == StockHandle(number)) return StockObject(number);
  }
  const auto found = FindHandleOf<DrawingObject>(handle);
  return found == nullptr ? std::nullopt : std::optional(*found);
}

/// Sums of positions may leave the range of a LONG; they stop at its ends.
LONG Clamp(int64_t value) {
  return static_cast<LONG>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

POINT ToDevice(const DrawingState& state, int x, int y) {
  const auto map = [](int64_t at, int64_t window, int64_t viewport) { return Clamp(at - window + viewport); };
  return {map(x, state.window_origin.x, state.viewport_origin.x),
          map(y, state.window_origin.y, state.viewport_origin.y)};
}

RECT ToDevice(const DrawingState& state, const RECT& rect) {
  const POINT first = ToDevice(state, rect.left, rect.top);
  const POINT last = ToDevice(state, rect.right, rect.bottom);
  return {first.x, first.y, last.x, last.y};
}

/// What both let through; without anything common an empty rectangle.
RECT Intersect(const std::optional<RECT>& clip, const RECT& with) {
  RECT both = with;
  if (clip.has_value()) {
    both = {std::max(clip->left, with.left), std::max(clip->top, with.top), std::min(clip->right, with.right),
            std::min(clip->bottom, with.bottom)};
  }
  both.right = std::max(both.left, both.right);
  both.bottom = std::max(both.top, both.bottom);
  return both;
}

int RegionKind(const RECT& rect) {
  return rect.left < rect.right && rect.top < rect.bottom ? SIMPLEREGION : NULLREGION;
}

BOOL DrawText(DeviceContext& context, POINT at, std::u16string_view text, const std::optional<RECT>& clip) {
  const DrawingState& state = context.state;
  if (context.path_state == PathState::kOpen) {
    context.path.push_back({at, std::u16string(text), state.font.object, state.align});
    return 1;
  }
  const bool opaque = state.back_mode == OPAQUE;
  context.canvas->DrawLine({.at = at,
                            .text = text,
                            .font = state.font.object,
                            .align = state.align,
                            .color = state.text_color,
                            .outline = false,
                            .pen_width = 0,
                            .pen_color = kBlack,
                            .backdrop = opaque ? std::optional(state.back_color) : std::nullopt},
                           clip);
  return 1;
}

BOOL SetOrigin(HDC hdc, POINT DrawingState::*origin, POINT to, POINT* before) {
  return OnContext(hdc, BOOL{0}, [&](DeviceContext& context) {
    const POINT old = std::exchange(context.state.*origin, to);
    if (before != nullptr) *before = old;
    return BOOL{1};
  });
}

}  // namespace

HDC OpenCanvas(Canvas* canvas) {
  return InsertHandle(OpenedCanvas{std::make_shared<DeviceContext>(canvas)});
}

bool CloseCanvas(HDC hdc) {
  const bool closed = EraseHandleOf<OpenedCanvas>(hdc);
  if (!closed) SetLastError(kErrorInvalidHandle);
  return closed;
}

extern "C" {

int ExtEscape(HDC hdc, int code, int in_size, const void* in, int out_size, void* out) {
  return OnContext(hdc, 0, [&](DeviceContext& context) {
    const auto fits = [](int size, const void* data) { return size == 0 || (size > 0 && data != nullptr); };
    if (!fits(in_size, in) || !fits(out_size, out)) return Refuse(0);
    return context.canvas->Escape(static_cast<uint32_t>(code),
                                  {static_cast<const uint8_t*>(in), static_cast<size_t>(in_size)},
                                  {static_cast<uint8_t*>(out), static_cast<size_t>(out_size)});
  });
}

HGDIOBJ CreateFontIndirectW(const LOGFONTW* font) {
  return font == nullptr ? Refuse<HGDIOBJ>(nullptr) : MakeObject(*font);
}

HGDIOBJ CreatePen(int, int width, COLORREF color) {
  return MakeObject(Pen{.width = width, .color = color});
}

HGDIOBJ CreateSolidBrush(COLORREF color) {
  return MakeObject(Brush{color});
}

BOOL DeleteObject(HGDIOBJ object) {
  if (EraseHandleOf<DrawingObject>(object)) return 1;
  SetLastError(kErrorInvalidHandle);
  return 0;
}

HGDIOBJ GetStockObject(int number) {
  return std::ranges::find(kStockNumbers, number) == kStockNumbers.end() ? nullptr : StockHandle(number);
}

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object) {
  return OnContext(hdc, HGDIOBJ{nullptr}, [&](DeviceContext& context) {
    const std::optional<DrawingObject> found = FindObject(object);
    if (!found.has_value()) {
      SetLastError(kErrorInvalidHandle);
      return HGDIOBJ{nullptr};
    }
    DrawingState& state = context.state;
    const auto select = [&]<class T>(Selected<T>& slot) {
      return std::exchange(slot, {object, std::get<T>(*found)}).handle;
    };
    if (std::holds_alternative<LOGFONTW>(*found)) return select(state.font);
    return std::holds_alternative<Pen>(*found) ? select(state.pen) : select(state.brush);
  });
}

COLORREF SetTextColor(HDC hdc, COLORREF color) {
  return OnContext(hdc, COLORREF{CLR_INVALID},
                   [&](DeviceContext& context) { return std::exchange(context.state.text_color, color); });
}

COLORREF SetBkColor(HDC hdc, COLORREF color) {
  return OnContext(hdc, COLORREF{CLR_INVALID},
                   [&](DeviceContext& context) { return std::exchange(context.state.back_color, color); });
}

int SetBkMode(HDC hdc, int mode) {
  if (mode != TRANSPARENT && mode != OPAQUE) return Refuse(0);
  return OnContext(hdc, 0, [&](DeviceContext& context) { return std::exchange(context.state.back_mode, mode); });
}

DWORD SetTextAlign(HDC hdc, DWORD align) {
  return OnContext(hdc, DWORD{GDI_ERROR},
                   [&](DeviceContext& context) { return std::exchange(context.state.align, align); });
}

int SetMapMode(HDC hdc, int mode) {
  if (mode != MM_TEXT) return Refuse(0);  // units are pixels; the driver computes all others itself
  return OnContext(hdc, 0, [](DeviceContext&) { return MM_TEXT; });
}

BOOL SetWindowOrgEx(HDC hdc, int x, int y, POINT* before) {
  return SetOrigin(hdc, &DrawingState::window_origin, {x, y}, before);
}

BOOL SetViewportOrgEx(HDC hdc, int x, int y, POINT* before) {
  return SetOrigin(hdc, &DrawingState::viewport_origin, {x, y}, before);
}

int SaveDC(HDC hdc) {
  return OnContext(hdc, 0, [](DeviceContext& context) {
    context.saved.push_back(context.state);
    return static_cast<int>(context.saved.size());
  });
}

BOOL RestoreDC(HDC hdc, int saved) {
  return OnContext(hdc, BOOL{0}, [&](DeviceContext& context) {
    const int count = static_cast<int>(context.saved.size());
    const int number = saved == -1 ? count : saved;
    if (number < 1 || number > count) return Refuse(BOOL{0});
    context.state = context.saved[static_cast<size_t>(number) - 1];
    context.saved.resize(static_cast<size_t>(number) - 1);  // states saved after it are gone, too
    return BOOL{1};
  });
}

int GetClipBox(HDC hdc, RECT* box) {
  return OnContext(hdc, RGN_ERROR, [&](DeviceContext& context) {
    if (box == nullptr) return Refuse(RGN_ERROR);
    Canvas& canvas = *context.canvas;
    const RECT clip = context.state.clip.has_value()
                          ? *context.state.clip
                          : RECT{0, 0, canvas.DeviceCap(DeviceCap::kHorzRes), canvas.DeviceCap(DeviceCap::kVertRes)};
    *box = clip;
    return RegionKind(clip);
  });
}

int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom) {
  return OnContext(hdc, RGN_ERROR, [&](DeviceContext& context) {
    DrawingState& state = context.state;
    state.clip = Intersect(state.clip, ToDevice(state, RECT{left, top, right, bottom}));
    return RegionKind(*state.clip);
  });
}

int SelectClipRgn(HDC hdc, void* region) {
  if (region != nullptr) return Refuse(RGN_ERROR);
  return OnContext(hdc, RGN_ERROR, [](DeviceContext& context) {
    context.state.clip.reset();
    return SIMPLEREGION;
  });
}

BOOL GetTextExtentPointW(HDC hdc, const char16_t* text, int length, SIZE* size) {
  return OnContext(hdc, BOOL{0}, [&](DeviceContext& context) {
    if (text == nullptr || length < 0 || size == nullptr) return Refuse(BOOL{0});
    *size = context.canvas->MeasureText(context.state.font.object, {text, static_cast<size_t>(length)});
    return BOOL{1};
  });
}

BOOL TextOutW(HDC hdc, int x, int y, const char16_t* text, int length) {
  if (length < 0) return Refuse(BOOL{0});
  return ExtTextOutW(hdc, x, y, 0, nullptr, text, static_cast<DWORD>(length), nullptr);
}

BOOL ExtTextOutW(HDC hdc, int x, int y, DWORD options, const RECT* rect, const char16_t* text, DWORD length,
                 const int* distances) {
  return OnContext(hdc, BOOL{0}, [&](DeviceContext& context) {
    // Refused, not ignored: text with distances of its own would be printed in the wrong place.
    const bool known = (options & ~(ETO_OPAQUE | ETO_CLIPPED)) == 0 && distances == nullptr;
    if (!known || text == nullptr || (options != 0 && rect == nullptr)) return Refuse(BOOL{0});
    const DrawingState& state = context.state;
    std::optional<RECT> clip = state.clip;
    // The rectangle is filled before it limits the text: ETO_CLIPPED doesn't apply to the fill.
    if ((options & ETO_OPAQUE) != 0) context.canvas->FillRect(ToDevice(state, *rect), state.back_color, clip);
    if ((options & ETO_CLIPPED) != 0) clip = Intersect(clip, ToDevice(state, *rect));
    return DrawText(context, ToDevice(state, x, y), {text, length}, clip);
  });
}

BOOL BeginPath(HDC hdc) {
  return OnContext(hdc, BOOL{0}, [](DeviceContext& context) {
    context.path.clear();
    context.path_state = PathState::kOpen;
    return BOOL{1};
  });
}

BOOL EndPath(HDC hdc) {
  return OnContext(hdc, BOOL{0}, [](DeviceContext& context) {
    if (context.path_state != PathState::kOpen) return Refuse(BOOL{0});
    context.path_state = PathState::kClosed;
    return BOOL{1};
  });
}

BOOL StrokeAndFillPath(HDC hdc) {
  return OnContext(hdc, BOOL{0}, [](DeviceContext& context) {
    if (context.path_state != PathState::kClosed) return Refuse(BOOL{0});
    context.path_state = PathState::kNone;
    const std::vector<PathLine> path = std::exchange(context.path, {});
    const DrawingState& state = context.state;
    for (const PathLine& line : path) {
      context.canvas->DrawLine({.at = line.at,
                                .text = line.text,
                                .font = line.font,
                                .align = line.align,
                                .color = state.brush.object.color,
                                .outline = true,
                                .pen_width = state.pen.object.width,
                                .pen_color = state.pen.object.color,
                                .backdrop = std::nullopt},
                               state.clip);
    }
    return BOOL{1};
  });
}

BOOL FillRect(HDC hdc, const RECT* rect, HGDIOBJ brush) {
  return OnContext(hdc, BOOL{0}, [&](DeviceContext& context) {
    const std::optional<DrawingObject> found = FindObject(brush);
    if (rect == nullptr || !found.has_value() || !std::holds_alternative<Brush>(*found)) return Refuse(BOOL{0});
    context.canvas->FillRect(ToDevice(context.state, *rect), std::get<Brush>(*found).color, context.state.clip);
    return BOOL{1};
  });
}

BOOL StretchDIBits(HDC hdc, const RECT* target, const void* file, DWORD size) {
  return OnContext(hdc, BOOL{0}, [&](DeviceContext& context) {
    if (target == nullptr || file == nullptr) return Refuse(BOOL{0});
    context.canvas->DrawBitmap(ToDevice(context.state, *target), {static_cast<const uint8_t*>(file), size},
                               context.state.clip);
    return BOOL{1};
  });
}

int GetDeviceCaps(HDC hdc, int number) {
  return OnContext(hdc, 0, [&](DeviceContext& context) {
    for (const DeviceCap cap :
         {DeviceCap::kHorzRes, DeviceCap::kVertRes, DeviceCap::kLogPixelsX, DeviceCap::kLogPixelsY}) {
      if (number == static_cast<int>(cap)) return context.canvas->DeviceCap(cap);
    }
    return Refuse(0);
  });
}

int EnumFontFamiliesW(HDC hdc, const char16_t* family, FONTENUMPROCW visit, LPARAM argument) {
  return OnContext(hdc, 0, [&](DeviceContext& context) {
    constexpr DWORD kTrueType = 4;
    if (visit == nullptr) return Refuse(0);
    int result = 1;
    for (const FontFamily& known : context.canvas->FontFamilies()) {
      if (family != nullptr && known.name != family) continue;
      LOGFONTW font{};
      font.lfCharSet = known.char_set;
      known.name.copy(font.lfFaceName, kFaceSize - 1);
      result = visit(&font, nullptr, kTrueType, argument);
      if (result == 0) break;
    }
    return result;
  });
}

int StartPage(HDC hdc) {
  return OnContext(hdc, 0, [](DeviceContext& context) { return context.canvas->StartPage() ? 1 : 0; });
}

int EndPage(HDC hdc) {
  return OnContext(hdc, 0, [](DeviceContext& context) { return context.canvas->EndPage() ? 1 : 0; });
}
}

}  // namespace heron::platform
