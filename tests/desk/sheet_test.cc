// Life of the pages of a sheet.
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabBar>

#include "desk_test.h"

namespace heron::desk {
namespace {

class Sheets : public ::testing::Test {
 protected:
  Sheets() : sheet(BuiltResources()) {
    EXPECT_TRUE(sheet.AddPage({DialogName("special"), &first, true}));
    EXPECT_TRUE(sheet.AddPage({DialogName("quality"), &second, false}));
    EXPECT_FALSE(sheet.AddPage({301, &second, false})) << "there is no such template";
    sheet.Open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&sheet));
  }

  QPushButton* Button(QDialogButtonBox::StandardButton button) {
    return sheet.findChild<QDialogButtonBox*>(QString(), Qt::FindDirectChildrenOnly)->button(button);
  }
  void ClickTab(int page) {
    auto* const tabs = sheet.findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page).center());
  }

  RecordingLogic first;
  RecordingLogic second;
  PropertySheet sheet;
};

TEST_F(Sheets, APageIsInitialisedWhenItIsFirstShown) {
  EXPECT_EQ(first.Take(), "initialise, activate");
  EXPECT_EQ(second.Take(), "");
  ClickTab(1);
  EXPECT_EQ(first.Take(), "deactivate");
  EXPECT_EQ(second.Take(), "initialise, activate");
  EXPECT_FALSE(Button(QDialogButtonBox::Help)->isEnabled());
  QTest::keyClick(&sheet, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(sheet.currentPage(), 0);
  EXPECT_EQ(first.Take(), "activate");
  QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(sheet.currentPage(), 1);
  EXPECT_EQ(second.Take(), "deactivate, activate");
}

TEST_F(Sheets, APageMayRefuseToBeLeft) {
  first.Take();
  first.deactivates = false;
  ClickTab(1);
  EXPECT_EQ(sheet.currentPage(), 0);
  EXPECT_EQ(sheet.findChild<QTabBar*>()->currentIndex(), 0);
  EXPECT_TRUE(sheet.panel(0)->isVisible());
  Button(QDialogButtonBox::Ok)->click();
  EXPECT_TRUE(sheet.isVisible());
  EXPECT_EQ(first.Take(), "deactivate, deactivate");
  EXPECT_EQ(second.Take(), "");
}

TEST_F(Sheets, ApplyConfirmsThePagesThatWereShown) {
  QPushButton* const apply = Button(QDialogButtonBox::Apply);
  EXPECT_FALSE(apply->isEnabled());
  first.dialog->MarkChanged();
  EXPECT_TRUE(apply->isEnabled());
  first.Take();
  sheet.SetResult(1);
  apply->click();
  EXPECT_EQ(first.Take(), "deactivate, apply");
  EXPECT_EQ(second.Take(), "") << "it was never shown";
  EXPECT_FALSE(apply->isEnabled());
  QTest::keyClick(&sheet, Qt::Key_Escape);
  EXPECT_EQ(first.Take(), "reset");
  EXPECT_FALSE(sheet.isVisible());
  EXPECT_EQ(sheet.result(), 1) << "what was applied stays";
}

TEST_F(Sheets, APageThatRefusesToConfirmComesToTheFront) {
  ClickTab(1);
  first.applies = false;
  sheet.accept();
  EXPECT_TRUE(sheet.isVisible());
  EXPECT_EQ(sheet.currentPage(), 0);
  first.applies = true;
  sheet.accept();
  EXPECT_FALSE(sheet.isVisible());
}

TEST_F(Sheets, TheFirstPaintControlIsDrawnOnceWhenThePageIsOnTheScreen) {
  EXPECT_TRUE(QTest::qWaitFor([&] { return first.draws["firstPaint.special"_id] > 0; }));
  sheet.repaint();
  QTest::qWait(20);
  EXPECT_EQ(first.draws["firstPaint.special"_id], 1);
  EXPECT_GT(first.draws["upperPicture"_id], 0);
}

TEST_F(Sheets, TheButtonsAreToldByTheirNumbers) {
  std::vector<int> targets;
  for (const auto button : {QDialogButtonBox::Ok, QDialogButtonBox::Cancel}) {
    WidgetOf(*sheet.panel(0), "imageShiftButton")->setFocus();
    first.leaves = [&](int, int to) {
      targets.push_back(to);
      return true;
    };
    Button(button)->setFocus();
  }
  EXPECT_EQ(targets, (std::vector<int>{1, 2}));
}

}  // namespace
}  // namespace heron::desk
