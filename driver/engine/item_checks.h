// The rules as a list sees them: whether an item's value is forbidden while the other settings are as they are.
//
// What doesn't hang on the item is worked out once for a list; a check then holds references into the engine and is
// used at once. Checks of the room's own; everybody else asks for item statuses (engine.h).
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/engine.h"
#include "engine/finishing.h"
#include "rules/paper_checks_table.h"
#include "rules/paper_rule_tables.h"

namespace heron::engine {

bool ForbiddenByPairs(const Engine& engine, ControlIndex control, uint16_t value);
bool ForbiddenByTriples(const Engine& engine, ControlIndex control, uint16_t value);

class ItemPaperCheck {
 public:
  ItemPaperCheck(const Engine& engine, ControlIndex list);
  bool Forbids(uint16_t value) const;

 private:
  struct PaperSet {
    int16_t value;  ///< of the list's item, if the list itself is checked
    bool doubled;
    std::span<const uint16_t> papers;
  };

  bool IsPaperList() const;
  void AddGroup(const PaperItem& group);
  void AddControl(const PaperItem& group, ControlIndex control);
  uint16_t PaperFor(uint16_t value) const;

  const Engine& engine_;
  ControlIndex list_;
  bool two_pages_;
  std::array<PaperSet, 63> sets_;  ///< no more than there are paper rules, each of which belongs to one group
  size_t count_ = 0;
  bool edges_ = false;  ///< an edge rule may speak of the list
};

class ItemFinishCheck {
 public:
  ItemFinishCheck(const Engine& engine, ControlIndex list);
  bool Forbids(uint16_t value) const;

 private:
  bool StapleForbids(FinishContext context) const;
  bool PunchForbids(FinishContext context) const;

  const Engine& engine_;
  ControlIndex list_;
  bool of_paper_;   ///< the list of papers or of output papers
  bool of_staple_;  ///< of staple positions, here or in a per-page row
  bool of_punch_;   ///< of punch holes, here or in a per-page row
  bool of_fold_staple_;
  bool of_fold_;
  bool active_;
};

/// The value that an edge rule puts in the place of its control's; kNoControl if it leaves it. With a `list`, `value`
/// means that list's own value.
struct EdgeFinding {
  ControlIndex control = kNoControl;
  uint16_t instead = 0;
};
EdgeFinding FindEdge(const Engine& engine, EdgeRule rule, ControlIndex list = kNoControl, uint16_t value = 0);

/// Whether a rule's papers include `paper`.
inline bool HasPaper(std::span<const uint16_t> papers, uint16_t paper) {
  return std::ranges::find(papers, paper) != papers.end();
}
/// Whether a paper rule counts now: its condition's control is available and holds the value.
bool RuleCounts(const Engine& engine, const PaperRule& rule);

/// Whether a tray that the rules allow holds transparencies; recomputes the statuses of 3300.
bool AnyTrayWithTransparencies(Engine& engine);

/// Whether a list has an item of this value.
bool HasItem(const Engine& engine, ControlIndex list, uint16_t value);

/// Whether the rules allow the list's item of this value.
class ItemCheck {
 public:
  ItemCheck(const Engine& engine, ControlIndex list)
      : engine_(engine), list_(list), papers_(engine, list), finish_(engine, list) {}
  bool Forbids(uint16_t value) const;

 private:
  const Engine& engine_;
  ControlIndex list_;
  ItemPaperCheck papers_;
  ItemFinishCheck finish_;
};

}  // namespace heron::engine
