// What the rows of devices' MIBs stand for: the rules of the *.device files beside the module. README.md describes
// their format.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "snmp.h"

namespace heron::devicecomm {

enum class RuleKind : uint8_t { kModel, kFamily, kOption };
enum class Test : uint8_t { kAny, kIs, kHas, kAbove };

struct Rule {
  RuleKind kind = RuleKind::kOption;
  uint32_t type = 0;  ///< of an option
  std::string name;   ///< "*": the text of the object
  Oid object;         ///< a column; a scalar is a column with the row 0
  Test test = Test::kAny;
  std::string text;  ///< that the value is or has
  int64_t number = 0;

  bool Matches(const Value& value) const;
  const std::string& NameOf(const Value& value) const { return name == "*" ? value.text : name; }
};

/// Appends the rules of one file. A line that can't be understood is left out; false if there was one.
bool ParseDeviceTable(std::string_view text, std::vector<Rule>* rules);

/// The rules of all *.device files in the module's folder, in the order of their names; read once a process.
const std::vector<Rule>& DeviceRules();

}  // namespace heron::devicecomm
