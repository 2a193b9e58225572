// The command's list of settings against the parameters: whatever can be chosen on this model can be found, once.
#include "apps/cli/settings_table.h"

#include <gtest/gtest.h>

#include <set>

#include "rules/control_tables.h"
#include "uistate/params.h"

namespace heron::cli {
namespace {

TEST(SettingsTableTest, EverySettingWithOptionsIsListedOnce) {
  std::set<uint16_t> listed;
  for (const SettingPage& page : kSettingPages) {
    for (const SettingRow& row : page.rows) {
      EXPECT_TRUE(listed.insert(row.parameter).second) << row.parameter << " is listed twice";
    }
  }
  for (const ParamRow& param : kParamRows) {
    const bool choice = param.HasBlock() && param.feature != kNoFeature && KindOf(param.feature) != FeatureKind::kNone;
    EXPECT_EQ(listed.contains(param.id), choice) << param.id;
  }
}

TEST(SettingsTableTest, RowsWithoutALabelHaveAControlThatHasOne) {
  constexpr uint16_t kEmptyText = 21200;
  for (const SettingPage& page : kSettingPages) {
    for (const SettingRow& row : page.rows) {
      if (row.label != nullptr) continue;
      bool labelled = false;
      for (size_t i = 0; i < engine::kControlCount && !labelled; ++i) {
        labelled = engine::ParamIndexOfControl(static_cast<engine::ControlIndex>(i)) == ParamIndexOf(row.parameter) &&
                   engine::kControls[i].label != kEmptyText;
      }
      EXPECT_TRUE(labelled) << row.parameter;
    }
  }
}

}  // namespace
}  // namespace heron::cli
