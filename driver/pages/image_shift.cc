#include "pages/image_shift.h"

#include "engine/setting.h"
#include "generated/values.h"

namespace heron::pages {

using engine::Setting;

bool BackFollowsFront(const UiState& ui) {
  return engine::IsOn<u"ImgShiftBackAuto_Check">(ui);
}

void FollowFrontDirections(const UiState& ui) {
  namespace front = value::lpImgShiftDirectLRF;
  namespace back = value::lpImgShiftDirectLRB;
  if (!BackFollowsFront(ui)) return;
  const bool left = Setting<u"lpImgShiftDirectLRF">(ui) == front::kLeft;
  Setting<u"lpImgShiftDirectLRB">(ui) = left ? back::kRight : back::kLeft;
  Setting<u"lpImgShiftDirectUDB">(ui) = Setting<u"lpImgShiftDirectUDF">(ui);
}

void FollowFront(const UiState& ui) {
  if (!BackFollowsFront(ui)) return;
  FollowFrontDirections(ui);
  Setting<u"ImgShiftValueLRB">(ui) = Setting<u"ImgShiftValueLRF">(ui);
  Setting<u"ImgShiftValueUDB">(ui) = Setting<u"ImgShiftValueUDF">(ui);
  Setting<u"ImgShiftPageIntervalB">(ui) = Setting<u"ImgShiftPageIntervalF">(ui);
}

}  // namespace heron::pages
