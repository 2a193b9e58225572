// The paper rules as a list sees them (item_checks.h).
#include <algorithm>

#include "engine/item_checks.h"
#include "engine/paper_in_force.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "settings/binding.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kPrintType = Control(u"lpPRNType");

namespace orientation = value::lpOrientation;

uint16_t Flipped(uint16_t side) {
  return side == orientation::kPortrait ? orientation::kLandscape : orientation::kPortrait;
}

}  // namespace

bool RuleCounts(const Engine& engine, const PaperRule& rule) {
  const ControlIndex control = rule.condition.control;
  return control == kNoControl || (engine.Available(control) && engine.Holds(rule.condition));
}

EdgeFinding FindEdge(const Engine& engine, EdgeRule rule, ControlIndex list, uint16_t item) {
  const auto edge = std::ranges::find(kEdgeCorrections, rule, &EdgeCorrection::rule);
  if (edge == kEdgeCorrections.end()) return {};
  const uint16_t value = edge->control == list ? item : engine.Value(edge->control);
  const bool on1 = std::ranges::count(edge->edge1, value) != 0;
  const bool on2 = std::ranges::count(edge->edge2, value) != 0;
  bool applies = false;
  if (rule == EdgeRule::kBooklet) applies = engine.Holds(kPrintType, value::lpPRNType::kBooklet);
  if (rule == EdgeRule::kAdhesive) applies = IsOn<u"AdhesiveBind_Check">(*engine.ui);
  if (rule == EdgeRule::kCombination) applies = engine.IsOn(Control(u"POD_OnePerSheet_Check"));
  if (!applies || (!on1 && !on2)) return {};

  uint16_t side = engine.Value(Control(u"lpOrientation.Portrait"));
  constexpr ControlIndex kLayout = Control(u"lpLayout");
  if (engine.Available(kLayout) && LayoutTurnsPages(engine.Value(kLayout))) side = Flipped(side);
  side = Flipped(side);
  if (side == orientation::kPortrait && on1) return {edge->control, static_cast<uint16_t>(edge->instead1)};
  if (side == orientation::kLandscape && on2) return {edge->control, static_cast<uint16_t>(edge->instead2)};
  return {};
}

ItemPaperCheck::ItemPaperCheck(const Engine& engine, ControlIndex list)
    : engine_(engine), list_(list), two_pages_(SheetHoldsTwoPages(engine)) {
  for (const PaperItem& group : kPaperItems) {
    const bool for_all = group.lists == kAllLists;
    if (for_all || std::ranges::count(group.lists, list) != 0) AddGroup(group);
  }
  edges_ = std::ranges::count(kEdgeCorrections, list, &EdgeCorrection::control) != 0;
}

bool ItemPaperCheck::IsPaperList() const {
  return list_ == kMediaSize || list_ == kOutputPaper;
}

/// A list of papers is checked against every control of the group, any other list against its own values.
void ItemPaperCheck::AddGroup(const PaperItem& group) {
  const auto controls = PaperGroupControls(group.group);
  if (IsPaperList()) {
    for (const ControlIndex control : controls) AddControl(group, control);
  } else if (group.forbidsOwn && std::ranges::count(controls, list_) != 0) {
    AddControl(group, list_);
  }
}

void ItemPaperCheck::AddControl(const PaperItem& group, ControlIndex control) {
  constexpr uint8_t kPrintTypeGroup = 6;  // counts as available
  if (!engine_.Available(control) && group.group != kPrintTypeGroup) return;
  for (const PaperRule& rule : PaperRules()) {
    if (rule.group != group.group || !RuleCounts(engine_, rule)) continue;
    if (IsPaperList() && !engine_.Holds(control, rule.value)) continue;
    sets_.at(count_++) = {rule.value, group.doubled, rule.papers};
  }
}

uint16_t ItemPaperCheck::PaperFor(uint16_t value) const {
  return PaperOf(list_ == kOutputPaper ? value : engine_.Value(kOutputPaper),
                 list_ == kMediaSize ? value : engine_.Value(kMediaSize));
}

bool ItemPaperCheck::Forbids(uint16_t value) const {
  if (count_ != 0) {
    const uint16_t plain = PaperFor(value);
    const uint16_t doubled = two_pages_ ? DoubledPaper(plain) : plain;
    for (const PaperSet& set : std::span(sets_).first(count_)) {
      const bool counts = IsPaperList() || set.value == static_cast<int16_t>(value);
      if (counts && !HasPaper(set.papers, set.doubled ? doubled : plain)) return true;
    }
  }
  return edges_ && std::ranges::any_of(kPaperItems, [&](const PaperItem& group) {
           return FindEdge(engine_, group.edge, list_, value).control == list_;
         });
}

}  // namespace heron::engine
