// The papers that run through the machine short edge first.
//
// Reader: finishing_tables.cc, which repeats the codes for the families below by adding a family's bits, and adds the
// custom paper. Not the feed classes of settings/paper_feed_tables.h: a record's binding side knows other papers.
#pragma once

#include <array>
#include <cstdint>

namespace heron::engine {

// clang-format off
inline constexpr auto kPlainRotatedFeed = std::to_array<uint16_t>({
    8,    2057, 2059, 70,   12,   2061, 88,   320,  330,  3,    5,    2049, 2055, 2054, 2380, 2381, 2382, 360,  2409,
    340,  14,   341,  342,  343,  370,  371,  91,   372,  2082, 2076, 31,   27,   37,   19,   20,   38,   43,   390,
});
inline constexpr std::array<uint16_t, 3> kRotatedFeedFamilies = {0, 0x1000, 0x2000};
// clang-format on

}  // namespace heron::engine
