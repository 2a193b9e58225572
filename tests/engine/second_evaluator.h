// A second, slow reading of the rules: availability and item status straight from the tables' notation.
//
// It shares no step of evaluation with the engine: it knows controls by number, follows the definitions recursively and
// computes every answer from scratch. Of the engine it uses the plain look-ups of papers and capabilities.
#pragma once

#include <functional>

#include "rule_notation.h"
#include "rules/finishing_tables.h"
#include "rules/paper_rule_tables.h"
#include "settings/papers.h"

namespace heron::engine {

/// All that the rules may look at.
struct World {
  std::map<int, int> values;              ///< by control number; -1 AdhesiveBind_Check, -2 lpGraphicsMode
  std::map<int, int> defaults;            ///< the same
  std::map<int, std::vector<int>> lists;  ///< values of the items, by control number
  std::map<int, int> media;               ///< media type by tray
  mutable std::map<int, bool> available;  ///< answers of SecondEvaluator so far
};

class SecondEvaluator : Notation {
 public:
  bool Available(const World& world, int control) const {
    const auto known = world.available.find(control);
    if (known != world.available.end()) return known->second;
    return world.available[control] = Decide(world, control);
  }

  /// Whether the item `value` of a list is forbidden.
  bool Forbidden(const World& world, int list, int value) const {
    return Forbidden(
        world, [&](int control) { return Available(world, control); }, list, value);
  }

  /// Numbers of all that an enable rule governs.
  std::set<int> Governed() const {
    std::set<int> governed;
    for (const auto& [control, own] : rows) governed.insert(control);
    return governed;
  }

 private:
  using Availability = std::function<bool(int)>;

  /// Staple codes have one column, others as many as their table says.
  static int Code(const World& world, std::span<const FinishCapabilityRow> table, int paper, size_t column) {
    for (const FinishCapabilityRow& row : table) {
      if (row.paper != paper) continue;
      const bool counts = row.condition.control == kNoControl ||
                          world.values.at(kControls[row.condition.control].id) == row.condition.value;
      if (counts) return row.codes[column];
    }
    return 0;
  }

  bool Gated(const World& world, int control) const {
    if (printerOnly.contains(control) && world.values.at(902) != 2) return true;
    const auto gates = deviceGates.find(control);
    if (gates == deviceGates.end()) return false;
    return std::ranges::none_of(gates->second, [&](const auto& chain) {
      return std::ranges::all_of(chain, [&](const Term& term) { return world.values.at(term.control) == term.value; });
    });
  }

  bool Decide(const World& world, int control) const {
    const auto found = rows.find(control);
    if (found == rows.end()) return dialogs.contains(control);
    if (Gated(world, control)) return false;
    for (const Row& row : found->second) {
      if (!row.function.empty()) return ByFunction(world, row.function, control);
      const auto holds = [&](const Term& parent) {
        const auto value = world.values.find(parent.control);
        if (value == world.values.end() || value->second != parent.value) return false;
        return row.level < 2 || Available(world, parent.control);
      };
      const bool truth = row.level == 0 ||
                         (row.all ? std::ranges::all_of(row.parents, holds) : std::ranges::any_of(row.parents, holds));
      if (truth) return true;
    }
    return false;
  }

  bool ByFunction(const World& world, const std::string& function, int control) const {
    const auto& v = world.values;
    const auto& sources = world.lists.at(120);
    if (function == "CopiesRule")
      return std::ranges::count(sources, v.at(120)) != 0 && !(v.at(2913) == 1 && v.at(3310) == 2);
    if (function == "PerPageListRule") return v.at(215) == 1 && (control < 251 || control > 254);  // no page in front
    if (function == "OverlayCreateRule") return !(v.at(-2) == 2 && v.at(844) == 1);
    return std::ranges::count(sources, v.at(120)) != 0 && Interleaves(world);
  }

  bool Interleaves(const World& world) const {
    // Asked before anything else is known: of the ruled controls only 2024 counts as available.
    const Availability early = [&](int control) { return control == 2024 || !rows.contains(control); };
    const auto& sources = world.lists.at(120);
    const bool transparencies = std::ranges::any_of(world.lists.at(3300), [&](int tray) {
      return world.media.at(tray) == 2 && !Forbidden(world, early, 3300, tray);
    });
    return transparencies && std::ranges::any_of(world.lists.at(2024), [&](int tray) {
             return tray != world.values.at(120) && std::ranges::count(sources, tray) != 0 &&
                    world.media.at(tray) != 2 && !Forbidden(world, early, 2024, tray);
           });
  }

  bool Forbidden(const World& world, const Availability& available, int list, int value) const {
    if (list == 2024 && available(2024) && world.media.at(value) == 2) return true;
    return ByCombination(world, available, list, value) || ByPaper(world, available, list, value) ||
           ByFinishing(world, available, list, value);
  }

  bool ByCombination(const World& world, const Availability& available, int list, int value) const {
    const auto run = conflicts.find({list, value});
    if (run == conflicts.end() || fixed.contains(list)) return false;
    const auto usable = [&](int control) { return alwaysUsable.contains(control) || available(control); };
    const auto device = [&](int control) { return dialogs.at(control) == 800; };
    const auto below = [&](int control) {
      const auto own = rows.find(control);
      return own != rows.end() && !own->second[0].parents.empty() && own->second[0].parents[0].control == list;
    };
    if (!usable(list)) return false;
    for (const Terms& others : run->second) {
      if (!std::ranges::all_of(others, [&](const Term& t) { return world.values.at(t.control) == t.value; })) continue;
      const bool all_usable = std::ranges::all_of(others, [&](const Term& t) { return usable(t.control); });
      const bool blocked =
          std::ranges::any_of(others, [&](const Term& t) { return !device(t.control) || below(t.control); });
      if (all_usable && (!device(list) || !blocked)) return true;
      if (others.size() == 1 && !all_usable && device(others[0].control)) return true;
    }
    return false;
  }

  bool ByPaper(const World& world, const Availability& available, int list, int item) const {
    const auto v = [&](int control) { return control == list ? item : world.values.at(control); };
    const bool is_paper = list == 111 || list == 114;
    int paper = v(114) == 257 ? v(111) : v(114);
    if ((paper & 512) != 0) paper = 256;
    // What doubles is read from the settings, not from the item.
    const auto& now = world.values;
    const bool two = now.at(308) == 1 || now.at(176) == 3 || now.at(-1) == 1;
    static const std::map<int, std::set<int>> only = {{2, {2407}}, {13, {2417, 2921}}, {19, {2405}}};
    const int doubled = two ? DoubledPaper(static_cast<uint16_t>(paper)) : paper;
    for (const auto& [group, controls] : groups) {
      if (group == 20 || (only.contains(group) && !only.at(group).contains(list))) continue;
      const bool plain = group == 8 || group == 9 || group == 11;
      const int sheet = plain ? paper : doubled;
      for (const int control : controls) {
        if (!is_paper && (control != list || group == 11 || (group >= 14 && group <= 16))) continue;
        if (!available(control) && group != 6) continue;
        for (const Papers& row : papers.at(group)) {
          if (row.value != v(control)) continue;
          const auto holds = [&](int number) {
            const Term& term = conditions.at(number);
            return available(term.control) && now.at(term.control) == term.value;
          };
          const bool counts = row.conditions.empty() || std::ranges::any_of(row.conditions, holds);
          if (counts && !row.set.contains(sheet)) return true;
        }
      }
    }
    if (list != 174 && list != 309) return false;
    const bool flipped = available(125) && (now.at(125) == 5 || now.at(125) == 8);
    const bool upright = (now.at(106) == 1) == flipped;  // after the second flip
    const bool applies = list == 174 ? now.at(176) == 3 || now.at(-1) == 1 : now.at(308) == 1;
    if (!applies) return false;
    if (list == 174) return upright ? item == 2 || item == 3 : item == 4;
    return upright ? item == 3 || item == 4 : item == 5 || item == 6;
  }

  bool ByFinishing(const World& world, const Availability& available, int list, int item) const {
    const auto v = [&](int control) { return control == list ? item : world.values.at(control); };
    const bool is_paper = list == 111 || list == 114;
    int paper = v(114) == 257 ? v(111) : v(114);
    if ((paper & 512) != 0) paper = 256;
    const int page = paper;  // folds look at the page itself

    const bool combined = available(308) && v(308) == 1;
    const auto fold_forbids = [&](int code) {
      return (code == 1 && (v(176) == 3 || combined)) || (code == 2 && v(176) != 3 && !combined) || code == 3;
    };
    if (is_paper || list == 188) {
      const bool folds = (available(187) && v(187) == 1) || v(177) == 1;
      if (folds && v(188) >= 1 && v(188) <= 3 && fold_forbids(Code(world, FoldCapabilities(), page, v(188) == 3)))
        return true;
    }
    if ((is_paper || list == 318) && v(317) == 1 && (v(318) == 11 || v(318) == 12) &&
        fold_forbids(Code(world, FoldCapabilities(), page, 1)))
      return true;

    if (v(176) != 1 && v(176) != 2) return false;
    int staple = v(131);
    bool moved = false;
    if (v(174) >= 1 && v(174) <= 3 && (staple == 2 || staple == 3))
      staple = 1, moved = true;
    else if (v(174) == 4 && staple == 1)
      staple = 2, moved = true;
    if (list == 131 && moved) return true;

    if (available(309)) paper = DoubledPaper(static_cast<uint16_t>(paper));
    bool rotated = IsRotatedFeed(static_cast<uint16_t>(paper));
    const bool folded = v(318) == 21 || v(318) == 22;
    if (v(318) == 21 && rotated && PlainTwin(paper) >= 0)
      paper = PlainTwin(paper), rotated = false;
    else if (v(318) == 22 && !rotated && RotatedTwin(paper) >= 0)
      paper = RotatedTwin(paper), rotated = true;
    bool portrait = v(106) == 1;
    if (available(125) && (v(125) == 5 || v(125) == 8)) portrait = !portrait;
    if (available(309)) portrait = !portrait;
    const int wrong = portrait == rotated ? 1 : 2;
    const int edge = v(174) == 2 || v(174) == 3 ? 1 : v(174) == 4 ? 2 : 0;
    const bool tabs = v(3310) == 6 || v(3330) == 6 || v(3350) == 6 || world.defaults.at(2417) == 6;

    if ((is_paper || list == 131) && available(130) && available(131)) {
      const int code = Code(world, StapleCapabilities(), paper, 0);
      int first = moved ? 5 : 0, second = 0;
      if ((code == 1 || (code == 0 && folded)) && staple == 4 && edge != 0) first = edge;
      if (code == 3) first = 4;
      if (tabs && v(174) == 2 && staple == 4) second = 1;
      if (tabs && v(174) == 4 && (staple == 3 || staple == 4)) second = 2;
      if (tabs && v(174) == 3) second = 3;
      const bool conflict = first == wrong || second == wrong || second == 3;
      if (list == 131 && conflict && (first == 1 || first == 2 || second == 1 || second == 2)) return true;
      if (is_paper && !conflict && first == 4) return true;
    }
    if ((is_paper || list == 186) && available(136) && v(136) == 1) {
      const int code =
          v(186) >= 2 && v(186) <= 4 ? Code(world, PunchCapabilities(), paper, static_cast<size_t>(v(186) - 2)) : 0;
      const bool never = code == 4 || (code == 3 && available(131));
      if (is_paper && never) return true;
      const int first = code == 1 || code == 3 || folded ? edge : 0;
      const int second = !tabs ? 0 : v(174) == 3 ? 3 : edge;
      if (list == 186 && !never && (first == wrong || second == wrong || second == 3)) return true;
    }
    return false;
  }
};

}  // namespace heron::engine
