// The control table against the tables it leans on: parameters, catalogue options, the buttons that restore defaults.
#include "rules/control_tables.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "uistate/params.h"

namespace heron::engine {
namespace {

std::string RowName(const ControlRow& row) {
  return {row.name.begin(), row.name.end()};
}

ParamKind KindOf(ControlType type) {
  switch (type) {
    case ControlType::kList:
      return ParamKind::kList;
    case ControlType::kRadio:
      return ParamKind::kRadio;
    case ControlType::kCheck:
      return ParamKind::kCheck;
    default:
      return ParamKind::kNumber;
  }
}

/// The controls that a restore-defaults button reaches, as dialogs.
std::set<int> DialogsReached(const ControlRow& button) {
  std::set<int> dialogs;
  for (const ControlRow& row : kControls) {
    if (row.Kind() == 1 && (row.pageMask & button.pageMask) != 0) dialogs.insert(row.dialog);
  }
  return dialogs;
}

TEST(Controls, AreFoundByIdAndByName) {
  for (size_t i = 0; i < kControls.size(); ++i) {
    EXPECT_EQ(IndexOf(kControls[i].id), i);
    EXPECT_EQ(NamedIndex(kControls[i].name), i);
  }
  for (const uint16_t unknown : std::initializer_list<uint16_t>{0, 137, 320, 322, 352, 3599, 3602, 65535})
    EXPECT_EQ(IndexOf(unknown), kNoControl);
}

TEST(Controls, ShowTheirSettingAsItIs) {
  for (ControlIndex i = 0; i < kControlCount; ++i) {
    const ControlRow& row = kControls[i];
    const uint16_t param = ParamIndexOfControl(i);
    ASSERT_EQ(param == kNoParam, row.Kind() == 2) << RowName(row);
    if (param == kNoParam) continue;
    EXPECT_EQ(kParamRows[param].kind, KindOf(row.type)) << RowName(row);
    // Controls of one setting share its value; no setting is reached under two names.
    for (ControlIndex j = 0; j < kControlCount; ++j) {
      EXPECT_EQ(ParamIndexOfControl(j) == param, kControls[j].firstOfSetting == row.firstOfSetting)
          << RowName(row) << " and " << RowName(kControls[j]);
    }
  }
  EXPECT_EQ(ParamIndexOfControl(kNoControl), kNoParam);
}

TEST(Controls, RestoreButtonsReachTheirPages) {
  const std::map<uint16_t, std::set<int>> expected = {
      {151, {100, 2020, 2300, 2355, 2900, 2910, 2920, 2950}},
      {237, {100, 200}},  // dialog 100 by the view radios alone
      {338, {100, 300, 2320}},
      {536, {100, 500}},
      {615, {100, 600}},
      {711, {700}},
      {815, {800}},
  };
  std::map<uint16_t, std::set<int>> reached;
  for (const ControlRow& row : kControls) {
    EXPECT_EQ((row.pageMask & kButtonMask) != 0, row.Kind() == 2) << RowName(row);
    if (row.Kind() == 2) reached[row.id] = DialogsReached(row);
  }
  // What is chosen for one visit or shown elsewhere stays.
  for (const auto name : {u"lpInterSheetList", u"trayRowSource", u"lpOverlay.NoOverlay"}) {
    EXPECT_EQ(kControls[NamedIndex(name)].pageMask, 0);
  }
  EXPECT_EQ(kControls[NamedIndex(u"previewMode.Paper")].pageMask, 1240);
  EXPECT_EQ(reached, expected);
}

TEST(RadioButtons, AreOptionsOfTheirSetting) {
  std::set<std::pair<int, int>> taken;
  for (ControlIndex i = 0; i < kControlCount; ++i) {
    const ControlRow& row = kControls[i];
    const int value = RadioMemberValue(row.id);
    ASSERT_EQ(value >= 0, row.type == ControlType::kRadio) << RowName(row);
    if (value < 0) continue;
    EXPECT_TRUE(taken.insert({row.firstOfSetting, value}).second) << RowName(row);
    EXPECT_TRUE(RadioValue(row.id) == value || RadioValue(row.id) == -1) << RowName(row);  // pages read some themselves
    // The shift mode's feature has no options, and the interleave buttons, which no template shows, count from 1 where
    // their setting counts from 0.
    if (row.key == u"lpImgShiftMode" || row.key == u"lpOhpIntlvType") continue;
    EXPECT_NE(ValueLabel(i, value), 0) << RowName(row);
  }
}

TEST(ValueLabels, NameTheStatesOfEveryCheckBox) {
  for (ControlIndex i = 0; i < kControlCount; ++i) {
    if (kControls[i].type != ControlType::kCheck) continue;
    EXPECT_EQ(ValueLabels(i).size(), 2U) << RowName(kControls[i]);
    EXPECT_EQ(ValueLabel(i, 0), 21204) << RowName(kControls[i]);
    EXPECT_EQ(ValueLabel(i, 1), 21203) << RowName(kControls[i]);
  }
}

TEST(ValueLabels, NameTheOptionsOfListsAndGroups) {
  EXPECT_EQ(ValueLabel(Control(u"lpOverlay.NoOverlay"), 3), 20301);  // a button has the texts of its group
  EXPECT_EQ(ValueLabel(Control(u"lpOrder.dialog"), 1), 21427);       // listed twice, the first counts
  for (const auto& [control, value] : {std::pair(Control(u"lpStaple"), 9),
                                       {Control(u"Copies"), 1},
                                       {Control(u"restoreDefaults.paper"), 0},
                                       {kNoControl, 0}})
    EXPECT_EQ(ValueLabel(control, value), 0) << value;
  size_t controls = 0;
  for (ControlIndex i = 0; i < kControlCount; ++i) controls += !ValueLabels(i).empty();
  EXPECT_EQ(controls, 126U) << "45 lists, 40 check boxes, 41 radio buttons";
}

}  // namespace
}  // namespace heron::engine
