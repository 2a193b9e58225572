// The status panel: small symbols of the features in force.
//
// Like the paper view: settings to a descriptor, descriptor to a stack. The order of the second row is the order in
// which its features were turned on; it is kept in the settings (UiState::iconOrder) and brought up to date once a
// paint.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/api/canvas.h"
#include "preview/layer.h"
#include "uistate/ui_state.h"

namespace heron::preview {

inline constexpr uint8_t kNoTransparency = 3;

/// What the status panel shows. Flags are 0 or 1.
struct StatusPicture {
  uint8_t stamp = 0;              ///< 0 none, 1 over the page, 2 under the page
  uint8_t overlay = 0;            ///< `lpOverlay`: 1 none, 2 create, 3 print behind, 4 print in front
  uint8_t sheetIcon = 0;          ///< the sheet symbol that lies on top
  uint8_t jobIcon = 0;            ///< the job symbol that lies on top
  uint8_t ohp = kNoTransparency;  ///< 0 transparency, 1 and 2 interleaved
  uint8_t imageShift = 0;
  uint8_t chapter = 0;
  uint8_t auth = 0;
  uint8_t department = 0;
  uint8_t pile = 0;
  uint8_t partition = 0;
  uint8_t fold = 0;      ///< 1 to 15
  uint8_t bookbind = 0;  ///< 1 to 4
  uint8_t exposure = 0;  ///< 1 to 5
  uint8_t jimon = 0;
  uint8_t perfectBind = 0;
  IconOrder iconOrder{};
  platform::RECT rectangle{};  ///< the panel's drawing area

  // The symbols of the first row that lie over one another, from the lowest; 255 ends them.
  std::array<uint8_t, 3> jobSymbols{};
  std::array<uint8_t, 6> sheetSymbols{};
};

/// Whether two panels of the same size are drawn alike.
bool ShowsTheSame(const StatusPicture& a, const StatusPicture& b);

/// The code of a feature's symbol; kNoSymbol where the feature is off.
uint8_t FeatureCode(const StatusPicture& picture, uint8_t feature);
inline constexpr uint8_t kNoSymbol = 255;

struct StatusField {
  std::string_view name;
  uint8_t StatusPicture::*field;
};
/// The fields that are plain codes by their names, in order.
extern const std::array<StatusField, 16> kStatusFields;

/// `rectangle`: where the panel draws, at scale 1. `iconOrder` is taken from the settings as it is.
StatusPicture DescribeStatus(const UiState& ui, const platform::RECT& rectangle);
/// Features that were turned on since the last call join the order behind the others, as far as there is room; those
/// that were turned off leave it. What has no room yet joins with a later call.
void UpdateIconOrder(const StatusPicture& picture, IconOrder& order);
/// UpdateIconOrder on the settings, then DescribeStatus: what a paint does.
StatusPicture DescribeStatusPaint(UiState& ui, const platform::RECT& rectangle);

/// What the next paint of a panel of the usual size shows; the order isn't brought up to date in the settings.
StatusPicture DescribeNextPaint(const UiState& ui);

/// Places are those of the rectangle's own coordinates.
Stack StackStatus(const StatusPicture& picture);

}  // namespace heron::preview
