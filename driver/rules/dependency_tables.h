// The rules of availability: enable rules, device gates and output mode gates.
//
// Constant, made at compile time. Their results of the moment are kept elsewhere, in arrays of the sizes given here.
// Rows name governed controls by id, since labels and buttons without a setting are among them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "rules/controls.h"

namespace heron::engine {

enum class RuleJoin : uint8_t { kAny = 1, kAll = 2 };
enum class RuleFunction : uint8_t { kNone, kCopies, kPerPageList, kOverlayCreate, kOhpInterleave };

struct EnableRule {
  uint16_t control = 0;  ///< 0: one more value of the parent for the control of the row above
  uint16_t dialog = 0;
  uint16_t parent = 0;  ///< 0 if the row has none
  int16_t parentValue = 0;
  uint8_t groupSize = 1;  ///< 2: the control has two rows, which `join` combines
  RuleJoin join = RuleJoin::kAny;
  RuleFunction function = RuleFunction::kNone;  ///< decides alone, if there is one
  uint8_t level = 0;  ///< 0 always available, 1 by the parent's value, 2 also by the parent's availability
  bool alwaysUsable = false;
};

struct DeviceGate {
  enum class Join : uint8_t { kAlone = 0, kBegin = 1, kEnd = 2 };  ///< place in a chain: both tests must hold
  uint16_t control = 0;                                            ///< 0: one more row of the control above
  RuleTerm test;
  Join join = Join::kAlone;
};

struct OutputModeGate {
  enum class Report : uint8_t { kNone = 0, kLabel = 1, kText = 2 };
  uint16_t control = 0;
  bool resetOnFax = false;        ///< back to its default when the user selects fax
  Report report = Report::kNone;  ///< how the fax notice names it
  uint16_t text = 0;              ///< with kText
};

inline constexpr size_t kEnableRuleCount = 144;
inline constexpr size_t kDeviceGateCount = 26;
inline constexpr size_t kOutputModeGateCount = 74;

/// What every output mode gate tests: the output goes to the printer.
inline constexpr RuleTerm kOutputModeTest = {Control(u"lpOutput.Fax"), 2};

extern const std::array<EnableRule, kEnableRuleCount> kEnableRules;
extern const std::array<DeviceGate, kDeviceGateCount> kDeviceGates;
extern const std::array<OutputModeGate, kOutputModeGateCount> kOutputModeGates;

/// Row number of the first rule or gate of a control, or -1. Constant time.
int FirstEnableRule(uint16_t id);
int FirstDeviceGate(uint16_t id);
int FirstOutputModeGate(uint16_t id);

}  // namespace heron::engine
