// Controls of dialog 1100 and the parts of an entry that it shows.
#pragma once

#include "forms/watermark_list.h"
#include "pages/logic_base.h"

namespace heron::pages::mark {

inline constexpr ControlId kList = 1103, kNew = 1104, kDelete = 1105, kText = 1106, kFont = 1108, kStyle = 1110;
inline constexpr ControlId kSize = 1114, kSizeBar = 1115, kSizeSpin = 1116;
inline constexpr ControlId kAngle = 1117, kAngleSpin = 1118, kAngleSlider = 1120;
inline constexpr ControlId kPicture = 1125, kAcrossText = 1127, kDownText = 1129, kDown = 1130, kAcross = 1131;
inline constexpr ControlId kCenter = 1132, kSample = 1133, kShade = 1134, kRestore = 1140, kHelp = 2465;
inline constexpr uint32_t kHelpTopic = 3111;

/// What can't be used while entry 0 is selected, labels among it.
inline constexpr ControlId kEditing[] = {kDelete, kText,        1107,    kFont,    1109,        kStyle,  1111,
                                         1112,    1113,         kSize,   kSizeBar, kSizeSpin,   kAngle,  kAngleSpin,
                                         1119,    kAngleSlider, 1121,    1126,     kAcrossText, 1128,    kDownText,
                                         kDown,   kAcross,      kCenter, kShade,   1135,        kRestore};

/// Bits of what the show step shows.
enum MarkPart : uint32_t {
  kListPart = 0x1,
  kTextPart = 0x2,
  kFontPart = 0x4,
  kStylePart = 0x8,
  kSizePart = 0x10,
  kAnglePart = 0x20,
  kShadePart = 0x80,
  kAcrossPart = 0x100,
  kDownPart = 0x200,
};
inline constexpr uint32_t kEverything = 0x3FF;
inline constexpr uint32_t kAllButList = 0x3FE;
inline constexpr uint32_t kAllButText = 0x3FC;

inline constexpr int kDegrees = kMarkAngle.highest / 10;
inline constexpr int kDeepest = kMarkShade.highest;
inline constexpr size_t kNumberLength = 3;
inline constexpr std::u16string_view kUsualFont = u"宋体";

}  // namespace heron::pages::mark
