// Parameters whose settings have no key. Settings with a key are named by it: ParamNamed<u"Zoom">().
#pragma once

#include <cstdint>

namespace heron::param {

inline constexpr uint16_t kFilePrint = 52;         ///< whether the document of a fax is printed too
inline constexpr uint16_t kSendTime = 53;          ///< whether a fax waits for its time
inline constexpr uint16_t kTabIndexNo = 186;       ///< "lpPrnTabIndexNo", a list without a feature
inline constexpr uint16_t kDeviceName = 204;       ///< internal
inline constexpr uint16_t kCurrentPages = 205;     ///< internal: rows of the working per-page list
inline constexpr uint16_t kCurrentListHead = 206;  ///< internal
inline constexpr uint16_t kDeviceInfoText = 213;
inline constexpr uint16_t kSavedZoomCheck = 232;  ///< ZoomCheck as the user chose it
inline constexpr uint16_t kHidesUserPassword = 304;
inline constexpr uint16_t kHidesDepartmentPassword = 305;
inline constexpr uint16_t kMediaSizeMark = 581;    ///< whether the document's paper is a long custom one
inline constexpr uint16_t kOutputPaperMark = 582;  ///< the same of the output paper

}  // namespace heron::param
