// Numbers of pages and dialogs that code names: the templates of resources/dialogs, ControlRow::dialog, and the dialog
// on show (UiHead::activeDialogId).
#pragma once

#include <cstdint>

namespace heron::dialog {

inline constexpr uint16_t kPaperPage = 100;
inline constexpr uint16_t kPerPagePage = 200;
inline constexpr uint16_t kSpecialPage = 300;
inline constexpr uint16_t kQualityPage = 600;
inline constexpr uint16_t kFontPage = 700;
inline constexpr uint16_t kOverlayPage = 400;
inline constexpr uint16_t kWatermarkPage = 500;
inline constexpr uint16_t kDevicePage = 800;
inline constexpr uint16_t kFaxPage = 900;

inline constexpr uint16_t kWatermarkEditor = 1100;
inline constexpr uint16_t kCoverSender = 1235;
inline constexpr uint16_t kCoverPosition = 1236;
inline constexpr uint16_t kCover = 1237;
inline constexpr uint16_t kCoverRecipient = 1238;
inline constexpr uint16_t kSecurePrint = 1800;
inline constexpr uint16_t kFaxDetails = 1820;
inline constexpr uint16_t kBox = 2001;
inline constexpr uint16_t kInterleave = 2020;
inline constexpr uint16_t kCustomSize = 2200;
inline constexpr uint16_t kBindingMargin = 2300;
inline constexpr uint16_t kImageShift = 2320;
inline constexpr uint16_t kPrintPosition = 2355;
inline constexpr uint16_t kPerPageRow = 2400;
inline constexpr uint16_t kPerPageListName = 2440;
inline constexpr uint16_t kPerPageTabs = 2450;  ///< of models with tab paper; no template
inline constexpr uint16_t kSaveSettings = 2500;
inline constexpr uint16_t kRecallSettings = 2520;
inline constexpr uint16_t kRecallOptions = 2540;
inline constexpr uint16_t kOrganizeSettings = 2560;
inline constexpr uint16_t kLayoutDetails = 2900;
inline constexpr uint16_t kPaperTypes = 2910;
inline constexpr uint16_t kPaperTypeEdit = 2920;
inline constexpr uint16_t kAuthentication = 2950;

}  // namespace heron::dialog
