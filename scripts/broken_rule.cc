// Breaks one row of one rule table for the whole run, so that scripts/break-rules can see which rows the tests guard.
//
// HERON_BROKEN_RULE="pairs 17 drop" overwrites the row in memory before the first test; "list" prints every such line
// and ends. The tables are constant, and stay so everywhere else: the page that the row lies in is opened for writing.
// Works since readers read a row in place, and data derived from rows are derived at first use.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <sstream>
#include <vector>

#include "rules/combination_tables.h"
#include "rules/control_tables.h"
#include "rules/dependency_tables.h"
#include "rules/finishing_tables.h"
#include "rules/paper_checks_table.h"
#include "rules/paper_rule_tables.h"
#include "rules/sheet_doubling_table.h"

namespace heron::engine {
namespace {

constexpr uint16_t kNoSuchControl = 1;  ///< id that no control has
constexpr int16_t kNever = -1;          ///< value that no control holds

void Overwrite(const void* target, const void* source, size_t size) {
  const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto at = reinterpret_cast<uintptr_t>(target);
  const uintptr_t first = at / page * page;
  if (mprotect(reinterpret_cast<void*>(first), at + size - first, PROT_READ | PROT_WRITE) != 0) std::abort();
  std::memcpy(const_cast<void*>(target), source, size);
}

/// Another value of the control than `value`, one that it can have if there is any.
int16_t OtherValue(ControlIndex control, int16_t value) {
  const auto labels = ValueLabels(control);
  for (size_t i = 0; i < labels.size(); ++i) {
    if (labels[i].value == value) return static_cast<int16_t>(labels[(i + 1) % labels.size()].value);
  }
  return static_cast<int16_t>(value == 1 ? 0 : 1);
}

/// A way to break the rows of a table; false where it doesn't apply to a row.
template <typename Row>
struct Way {
  const char* name;
  std::function<bool(Row&)> change;
};

/// Breaks row `row` in the way `way`, or lists all ways of all rows. False if there is no such way.
template <typename Row>
bool Break(const char* table, std::span<const Row> rows, const std::vector<Way<Row>>& ways, const std::string& row,
           const std::string& way) {
  for (size_t i = 0; i < rows.size(); ++i) {
    for (const Way<Row>& one : ways) {
      Row broken = rows[i];
      if (!one.change(broken)) continue;
      if (row.empty()) {
        std::printf("%s %zu %s\n", table, i, one.name);
      } else if (row == std::to_string(i) && way == one.name) {
        Overwrite(&rows[i], &broken, sizeof broken);
        return true;
      }
    }
  }
  return row.empty();
}

const std::vector<Way<EnableRule>> kEnableWays = {
    {"drop",
     [](EnableRule& rule) {
       if (rule.control == 0)
         rule.parentValue = kNever;
       else
         rule.control = kNoSuchControl;
       return true;
     }},
    {"alter",
     [](EnableRule& rule) {
       if (rule.function != RuleFunction::kNone) {
         rule.function = rule.function == RuleFunction::kCopies ? RuleFunction::kPerPageList : RuleFunction::kCopies;
       } else if (rule.level == 0) {
         rule.level = 1;
         rule.parent = kNoSuchControl;
       } else {
         const ControlIndex parent = IndexOf(rule.parent);
         rule.parentValue = parent == kNoControl ? kNever : OtherValue(parent, rule.parentValue);
       }
       return true;
     }},
    {"level",
     [](EnableRule& rule) {
       rule.level = rule.level == 1 ? 2 : 1;
       return rule.control != 0 && rule.parent != 0 && FirstEnableRule(rule.parent) >= 0;
     }},
};

const std::vector<Way<DeviceGate>> kDeviceWays = {
    {"drop", [](DeviceGate& gate) { return gate.test.value = kNever, true; }},
    {"alter", [](DeviceGate& gate) { return gate.test.value = OtherValue(gate.test.control, gate.test.value), true; }},
};

const std::vector<Way<OutputModeGate>> kOutputWays = {
    {"drop", [](OutputModeGate& gate) { return gate.control = kNoSuchControl, true; }},
    {"reset", [](OutputModeGate& gate) { return gate.resetOnFax = !gate.resetOnFax, true; }},
    {"report",
     [](OutputModeGate& gate) {
       gate.report = gate.report == OutputModeGate::Report::kNone ? OutputModeGate::Report::kLabel
                                                                  : OutputModeGate::Report::kNone;
       return true;
     }},
};

template <typename Rule>
std::vector<Way<Rule>> CombinationWays() {
  return {
      {"drop", [](Rule& rule) { return rule.when[1].value = kNever, true; }},
      {"alter",
       [](Rule& rule) { return rule.when[1].value = OtherValue(rule.when[1].control, rule.when[1].value), true; }},
      {"target",
       [](Rule& rule) { return rule.target.value = OtherValue(rule.target.control, rule.target.value), true; }},
      // The other one gives way.
      {"yield",
       [](Rule& rule) {
         const RuleTerm& other = rule.when[rule.target.control == rule.when[0].control ? 1 : 0];
         rule.target = {other.control, OtherValue(other.control, other.value)};
         return true;
       }},
  };
}

const std::vector<Way<PaperRule>> kPaperWays = {
    {"drop", [](PaperRule& rule) { return rule.value = -2, true; }},
    {"alter",
     [](PaperRule& rule) { return rule.value = OtherValue(PaperGroupControls(rule.group)[0], rule.value), true; }},
    {"first", [](PaperRule& rule) { return rule.papers = rule.papers.subspan(1), true; }},
    {"middle", [](PaperRule& rule) { return rule.papers = rule.papers.first(rule.papers.size() / 2), true; }},
    {"condition",
     [](PaperRule& rule) {
       if (rule.condition.control == kNoControl) return false;
       rule.condition.value = OtherValue(rule.condition.control, rule.condition.value);
       return true;
     }},
};

const std::vector<Way<DoubledSheet>> kDoublingWays = {
    {"drop", [](DoubledSheet& row) { return row.paper = 0, true; }},
    {"alter", [](DoubledSheet& row) { return row.doubled = static_cast<uint16_t>(row.doubled ^ 1), true; }},
};

const std::vector<Way<FinishCapabilityRow>> kFinishWays = {
    {"drop", [](FinishCapabilityRow& row) { return row.paper = 0, true; }},
    {"alter",
     [](FinishCapabilityRow& row) { return row.codes[0] = static_cast<uint8_t>((row.codes[0] + 1) % 4), true; }},
};

const std::vector<Way<uint16_t>> kCodeWays = {{"drop", [](uint16_t& paper) { return paper = 0, true; }}};

const std::vector<Way<PaperChange>> kChangeWays = {
    {"drop", [](PaperChange& row) { return row.group = 5, true; }},
    {"doubled", [](PaperChange& row) { return row.doubled = !row.doubled, true; }},
    {"opposes",
     [](PaperChange& row) {
       row.opposes = row.opposes == Opposes::kNever ? Opposes::kFirstChanged : Opposes::kNever;
       return true;
     }},
};

const std::vector<Way<PaperItem>> kItemWays = {
    {"drop", [](PaperItem& row) { return row.group = 5, true; }},
    {"doubled", [](PaperItem& row) { return row.doubled = !row.doubled, true; }},
    {"own", [](PaperItem& row) { return row.forbidsOwn = !row.forbidsOwn, true; }},
};

const std::vector<Way<EdgeCorrection>> kEdgeWays = {
    {"drop", [](EdgeCorrection& row) { return row.rule = EdgeRule::kNone, true; }},
    {"alter", [](EdgeCorrection& row) { return std::swap(row.instead1, row.instead2), true; }},
};

bool BreakIn(const std::string& wanted, const std::string& row, const std::string& way) {
  const auto is = [&](const char* table) { return wanted == "list" || wanted == table; };
  bool found = true;
  const auto apply = [&]<typename Row>(const char* table, std::span<const Row> rows,
                                       const std::vector<Way<Row>>& ways) {
    if (is(table)) found = Break(table, rows, ways, row, way);
  };
  apply("enable", std::span<const EnableRule>(kEnableRules), kEnableWays);
  apply("device", std::span<const DeviceGate>(kDeviceGates), kDeviceWays);
  apply("output", std::span<const OutputModeGate>(kOutputModeGates), kOutputWays);
  apply("pairs", AllPairRules(), CombinationWays<PairRule>());
  apply("triples", AllTripleRules(), CombinationWays<TripleRule>());
  apply("papers", PaperRules(), kPaperWays);
  apply("doubling", SheetDoubling(), kDoublingWays);
  apply("staple", StapleCapabilities(), kFinishWays);
  apply("punch", PunchCapabilities(), kFinishWays);
  apply("fold", FoldCapabilities(), kFinishWays);
  apply("rotated", RotatedFeedPapers(), kCodeWays);
  apply("changes", std::span<const PaperChange>(kPaperChanges), kChangeWays);
  apply("items", std::span<const PaperItem>(kPaperItems), kItemWays);
  apply("edges", std::span<const EdgeCorrection>(kEdgeCorrections), kEdgeWays);
  return found;
}

[[maybe_unused]] const bool kBroken = [] {
  const char* wish = std::getenv("HERON_BROKEN_RULE");
  if (wish == nullptr) return false;
  std::istringstream words(wish);
  std::string table, row, way;
  words >> table >> row >> way;
  const bool found = BreakIn(table, row, way);
  if (table == "list" || !found) std::exit(found ? 0 : 99);
  return true;
}();

}  // namespace
}  // namespace heron::engine
