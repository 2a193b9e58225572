// Page 600: how the image is rendered, with a sample picture of what the settings do.
#pragma once

#include "pages/page.h"
#include "platform/api/canvas.h"

namespace heron::pages {

class QualityPage : public Page {
 public:
  QualityPage(SheetContext& sheet, const PageRow& row);

  void RepaintPictures() override;

 protected:
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;

 private:
  platform::PixelImage shown_;  ///< the sample as last computed, empty before
};

}  // namespace heron::pages
