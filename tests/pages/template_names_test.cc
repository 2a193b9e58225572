// The names of the controls on the templates agree with the tables of controls and settings.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/api/text.h"
#include "rules/controls.h"
#include "support/control_names.h"
#include "uistate/params.h"

namespace heron::test {
namespace {

using platform::ControlTemplate;

/// A setting without a row in controls.table is known by its key or its field of the record.
bool IsSetting(const std::string& name) {
  const std::u16string base = platform::FromUtf8(name.substr(0, name.find('.')));
  return std::ranges::any_of(kParamRows, [&](const ParamRow& row) { return row.key == base || row.field == base; });
}

TEST(TemplateNames, AgreeWithTheTableOfControls) {
  std::map<std::string, platform::ControlId> numbers;
  for (const auto& [dialog, plan] : Templates()) {
    for (const ControlTemplate& control : plan.controls) {
      const std::string where = std::to_string(dialog) + ": " + std::to_string(control.id) + " " + NameOf(control);
      const engine::ControlIndex row = engine::IndexOf(control.id);
      if (row != engine::kNoControl) {
        EXPECT_EQ(control.key, platform::ToUtf8(engine::kControls[row].name)) << where;
      } else {
        EXPECT_TRUE(control.key.empty() || IsSetting(control.key)) << where << " is no setting";
      }
      EXPECT_TRUE(control.alias.empty() || control.id != 0) << where << " has no number";
      if (NameOf(control).empty()) continue;
      EXPECT_EQ(numbers.try_emplace(NameOf(control), control.id).first->second, control.id)
          << where << ": a name belongs to one number";
    }
  }
  for (const engine::ControlRow& row : engine::kControls) {
    const auto named = numbers.find(platform::ToUtf8(row.name));
    EXPECT_TRUE(named == numbers.end() || named->second == row.id) << platform::ToUtf8(row.name);
  }
}

}  // namespace
}  // namespace heron::test
