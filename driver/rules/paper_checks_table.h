// Which paper groups are checked, in which order, and what comes of a control whose paper isn't in its set.
//
// Reader: the engine's paper rules, which walk the first table for a change and the second for the items of a list. The
// order of the rows is the order of the checks. "Doubled": the paper is replaced by the sheet that holds two of it
// while the setting makes two pages of a sheet. Groups without rules or controls find nothing and are left out, but for
// the group that an edge rule follows. The third table holds the edge rules. A new group takes a row in the first two.
#pragma once

#include <array>
#include <cstdint>

#include "rules/controls.h"

namespace heron::engine {

enum class Opposes : uint8_t {
  kNever,
  kFirstChanged,  ///< the paper opposes when the flagged control is the one that the user changed first
  kAlways,        ///< the paper and the flagged control oppose, whichever was changed
};

enum class EdgeRule : uint8_t { kNone, kBooklet, kAdhesive, kCombination };

enum class PaperExtra : uint8_t {
  kNone,
  kResetTray,     ///< outside single changes the media's tray goes to its default, not the media
  kFreeControl,   ///< the control counts as available during the check
  kSwitchOff,     ///< POD_OnePerSheet_Check goes to 0, not the flagged control to its default
  kAgainstCopies  ///< compared with the number of copies, not with a paper; the later change loses
};

struct PaperChange {
  uint8_t group;
  bool doubled;
  Opposes opposes;
  PaperExtra extra = PaperExtra::kNone;
  EdgeRule edge = EdgeRule::kNone;  ///< runs after the check
};

struct PaperItem {
  uint8_t group;
  bool doubled;
  bool forbidsOwn = true;                                        ///< an item of the flagged control itself is forbidden
  std::array<ControlIndex, 2> lists = {kNoControl, kNoControl};  ///< checked for these lists only; none: for all
  EdgeRule edge = EdgeRule::kNone;
};

/// A binding along a short or long edge that the page's orientation doesn't allow, and what takes its place.
struct EdgeCorrection {
  EdgeRule rule;
  ControlIndex control;
  std::array<int16_t, 2> edge1;  ///< values that lie on edge 1, which fails with the (turned) orientation 1
  std::array<int16_t, 2> edge2;  ///< the same for 2
  int16_t instead1;
  int16_t instead2;
};

// clang-format off
inline constexpr auto kPaperChanges = std::to_array<PaperChange>({
    // group, doubled, opposes
    { 1, true,  Opposes::kNever},
    { 3, true,  Opposes::kNever},
    {12, true,  Opposes::kAlways,       PaperExtra::kResetTray},
    { 6, true,  Opposes::kFirstChanged, PaperExtra::kFreeControl},
    { 7, true,  Opposes::kFirstChanged},
    { 8, false, Opposes::kFirstChanged, PaperExtra::kNone, EdgeRule::kBooklet},
    { 9, false, Opposes::kNever,        PaperExtra::kNone, EdgeRule::kAdhesive},
    {10, true,  Opposes::kFirstChanged},
    {11, false, Opposes::kFirstChanged, PaperExtra::kSwitchOff, EdgeRule::kCombination},
    {14, true,  Opposes::kFirstChanged},
    {15, true,  Opposes::kFirstChanged},
    {16, true,  Opposes::kFirstChanged},
    {20, false, Opposes::kNever,        PaperExtra::kAgainstCopies},
    {21, true,  Opposes::kFirstChanged},
    {22, true,  Opposes::kFirstChanged},
});

inline constexpr std::array<ControlIndex, 2> kPerPageTrays = {Control(u"lpInterSheetListTray"), kNoControl};
inline constexpr std::array<ControlIndex, 2> kMediaLists = {Control(u"lpInterSheetListMediaType"),
                                                            Control(u"lpMediaType.dialog")};
inline constexpr std::array<ControlIndex, 2> kPerPageTypes = {Control(u"lpInterSheetListPRNType"), kNoControl};
inline constexpr std::array<ControlIndex, 2> kAllLists = {kNoControl, kNoControl};

inline constexpr auto kPaperItems = std::to_array<PaperItem>({
    // group, doubled, forbids own, lists
    { 1, true},
    { 2, true,  true,  kPerPageTrays},
    { 3, true},
    {12, true},
    {13, true,  true,  kMediaLists},
    { 6, true},
    { 7, true},
    { 8, false, true,  kAllLists, EdgeRule::kBooklet},
    { 9, false, true,  kAllLists, EdgeRule::kAdhesive},
    {10, true},
    {11, false, false, kAllLists, EdgeRule::kCombination},
    {14, true,  false},
    {15, true,  false},
    {16, true,  false},
    {19, true,  true,  kPerPageTypes},
    {21, true},
    {22, true},
});

inline constexpr auto kEdgeCorrections = std::to_array<EdgeCorrection>({
    // rule, control, on edge 1, on edge 2, instead of 1, instead of 2
    {EdgeRule::kBooklet,     Control(u"lpBindPosit"),       {2, 3}, {4, 4}, 4, 2},
    {EdgeRule::kAdhesive,    Control(u"lpBindPosit"),       {2, 3}, {4, 4}, 4, 2},
    {EdgeRule::kCombination, Control(u"lpPOD_OnePerSheet"), {3, 4}, {5, 6}, 5, 3},
});
// clang-format on

}  // namespace heron::engine
