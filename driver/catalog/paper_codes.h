// The bits of paper codes, and the codes that are no papers. The papers themselves: value::lpMediaSize in
// generated/values.h.
#pragma once

#include <cstdint>

namespace heron::paper {

inline constexpr uint16_t kHidden = 0x400;    ///< offered nowhere
inline constexpr uint16_t kRotated = 0x800;   ///< the rotated twin
inline constexpr uint16_t kFamilyF = 0x1000;  ///< without the margin of the plain family
inline constexpr uint16_t kFamilyW = 0x2000;  ///< the wide form of the size
inline constexpr uint16_t kFamilies = kFamilyF | kFamilyW;
inline constexpr uint16_t kCustom = 512;         ///< in the codes of custom papers but the last
inline constexpr uint16_t kPrintPosition = 511;  ///< an entry of a list that opens a dialog

}  // namespace heron::paper
