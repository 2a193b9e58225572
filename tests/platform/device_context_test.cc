// Drawing state over a canvas: what is selected when, paths, clips, kept states, stale handles.
#include <gtest/gtest.h>

#include "platform/api/device_context.h"
#include "support/recording_canvas.h"

namespace heron::test {
namespace {

using namespace platform;

TEST(DeviceContext, DrawsWithWhatIsSelectedAndTakesItBack) {
  RecordingCanvas canvas;
  LOGFONTW font{};
  font.lfHeight = -50;
  font.lfEscapement = 300;
  const HGDIOBJ object = CreateFontIndirectW(&font);
  const int kept = SaveDC(canvas.hdc);
  EXPECT_EQ(SelectObject(canvas.hdc, object), GetStockObject(SYSTEM_FONT));
  EXPECT_EQ(SetTextColor(canvas.hdc, 0x0000ff), 0u);
  EXPECT_EQ(SetBkMode(canvas.hdc, TRANSPARENT), OPAQUE);
  EXPECT_EQ(SetTextAlign(canvas.hdc, TA_CENTER | TA_BOTTOM), TA_LEFT);
  SetViewportOrgEx(canvas.hdc, 10, 20, nullptr);
  EXPECT_EQ(IntersectClipRect(canvas.hdc, 0, 0, 100, 100), SIMPLEREGION);
  DeleteObject(object);
  const RECT inner = {50, 50, 500, 500};
  EXPECT_EQ(ExtTextOutW(canvas.hdc, 5, 6, ETO_CLIPPED, &inner, u"Draft", 5, nullptr), 1);
  EXPECT_EQ(RestoreDC(canvas.hdc, kept), 1);
  EXPECT_EQ(RestoreDC(canvas.hdc, kept), 0);
  TextOutW(canvas.hdc, 5, 6, u"plain", 5);
  EXPECT_EQ(canvas.TakeLog(),
            "text (15,26) angle 300 height -50 color 0000ff 'Draft'\n"
            "text (5,6) angle 0 height 16 color 000000 'plain'\n");
  const RECT& clip = canvas.drawings[0].clip.value();
  EXPECT_EQ(clip.left, 60);
  EXPECT_EQ(clip.right, 110);
  EXPECT_FALSE(canvas.drawings[0].opaque);
  EXPECT_FALSE(canvas.drawings[1].clip.has_value());
  EXPECT_TRUE(canvas.drawings[1].opaque);
}

TEST(DeviceContext, PathIsDrawnOnceWithTheBrushOfItsEnd) {
  RecordingCanvas canvas;
  EXPECT_EQ(StrokeAndFillPath(canvas.hdc), 0);
  EXPECT_EQ(EndPath(canvas.hdc), 0);
  BeginPath(canvas.hdc);
  TextOutW(canvas.hdc, 1, 2, u"a", 1);
  EXPECT_EQ(StrokeAndFillPath(canvas.hdc), 0);
  EndPath(canvas.hdc);
  const HGDIOBJ brush = CreateSolidBrush(0xff00ff);
  const HGDIOBJ before = SelectObject(canvas.hdc, brush);
  EXPECT_EQ(StrokeAndFillPath(canvas.hdc), 1);
  EXPECT_EQ(StrokeAndFillPath(canvas.hdc), 0);
  EXPECT_EQ(SelectObject(canvas.hdc, before), brush);
  EXPECT_EQ(canvas.TakeLog(), "outline (1,2) angle 0 height 16 color ff00ff 'a'\n");
}

TEST(DeviceContext, ClipThatLetsNothingThroughIsSaid) {
  RecordingCanvas canvas;
  RECT box{};
  EXPECT_EQ(GetClipBox(canvas.hdc, &box), SIMPLEREGION);
  EXPECT_EQ(box.right, canvas.width);
  IntersectClipRect(canvas.hdc, 0, 0, 10, 10);
  EXPECT_EQ(IntersectClipRect(canvas.hdc, INT32_MAX, 20, INT32_MIN, 30), NULLREGION);
  EXPECT_EQ(SelectClipRgn(canvas.hdc, nullptr), SIMPLEREGION);
  EXPECT_EQ(GetClipBox(canvas.hdc, &box), SIMPLEREGION);
}

TEST(DeviceContext, StaleHandlesAndHandlesOfAnotherKindFail) {
  HDC closed = nullptr;
  {
    RecordingCanvas canvas;
    closed = canvas.hdc;
    const HGDIOBJ brush = CreateSolidBrush(0);
    DeleteObject(brush);
    EXPECT_EQ(SelectObject(canvas.hdc, brush), nullptr);
    EXPECT_EQ(SelectObject(canvas.hdc, canvas.hdc), nullptr);
    EXPECT_EQ(DeleteObject(canvas.hdc), 0);
    EXPECT_EQ(ExtEscape(canvas.hdc, 1, 4, nullptr, 0, nullptr), 0);
    EXPECT_EQ(ExtEscape(canvas.hdc, 1, -1, "", 0, nullptr), 0);
  }
  for (const HDC hdc : {closed, HDC{nullptr}, HDC(GetStockObject(BLACK_BRUSH))}) {
    SetLastError(kErrorSuccess);
    EXPECT_EQ(ExtEscape(hdc, 1, 0, nullptr, 0, nullptr), 0);
    EXPECT_EQ(GetLastError(), kErrorInvalidHandle);
    EXPECT_EQ(SaveDC(hdc), 0);
    EXPECT_EQ(SetTextColor(hdc, 0), CLR_INVALID);
    EXPECT_FALSE(CloseCanvas(hdc));
  }
}

}  // namespace
}  // namespace heron::test
