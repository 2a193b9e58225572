// The countries of the second sales destination, whose default paper is A4.
//
// Reader: DestinationMask. A word is a country code or a run of them; codes ascend. Country 81 has a destination of its
// own, every other country belongs to the first one.
#pragma once

#include <string_view>

namespace heron::catalog {

// clang-format off
inline constexpr std::u16string_view kSecondDestinationText = uR"(
7 20 27 30-34 36 39 40 41 43-49 60-66 82 84 86 90 91 92 212 213 216 218 254 263 298 351 353 354 355
358 359 370 371 372 374 375 380 381 385 386 389 421 852 853 886 961-968 971-974 981 994 995
)";
// clang-format on

}  // namespace heron::catalog
