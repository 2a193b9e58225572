// What a person does to a dialog, as its logic hears of it.
#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>

#include "apps/desk/widgets.h"
#include "desk_test.h"
#include "platform/api/message_box.h"

namespace heron::desk {
namespace {

/// A dialog on the screen; `steps` run while it is open, then it is cancelled.
class Panels : public ::testing::Test {
 protected:
  int Run(DialogName dialog, const std::function<void(Panel&)>& steps) {
    ModalWindow window(nullptr, BuiltResources(), *BuiltResources().Template(dialog), logic);
    QTimer::singleShot(0, &window, [&] {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
      logic.Take();
      steps(window.panel());
      logic.leaves = [](int, int) { return true; };
      window.close();
    });
    return window.Run();
  }

  std::string Text(ControlName id) { return platform::ToUtf8(logic.dialog->Text(id)); }

  RecordingLogic logic;
};

TEST_F(Panels, CharactersPassOneByOneHoweverTheyCome) {
  logic.takes = [](char16_t c) { return c != u'x'; };
  Run("name-of-the-per-page-list", [&](Panel& panel) {
    QWidget* const field = KeysOf(panel, "pageListName");
    QTest::keyClicks(field, QStringLiteral("axb"));
    EXPECT_EQ(Text("pageListName"), "ab");
    EXPECT_EQ(logic.Take(), "text pageListName, text pageListName");
    QApplication::clipboard()->setText(QStringLiteral("12x34xx"));
    QTest::keyClick(field, Qt::Key_Home);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("pageListName"), "1234ab");
    EXPECT_EQ(qobject_cast<QLineEdit*>(field)->cursorPosition(), 4);
    // What is refused leaves the selection as it was; what isn't replaces it.
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, QStringLiteral("x"));
    EXPECT_EQ(qobject_cast<QLineEdit*>(field)->selectedText(), QStringLiteral("1234ab"));
    QApplication::clipboard()->setText(QString(5000, u'z') + u'x');
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("pageListName"), std::string(16, 'z'));
  });
}

TEST_F(Panels, ALimitHoldsForWhatAPersonPutsInAndCutsNoCharacterInTwo) {
  Run("name-of-the-per-page-list", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    QWidget* const field = KeysOf(panel, "pageListName");
    dialog.SetTextLimit("pageListName"_id, 4);
    const QString face = QString::fromUtf16(u"\U0001F600");
    const auto paste = [&](const QString& text) {
      QApplication::clipboard()->setText(text);
      QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    };
    paste(QStringLiteral("abc") + face);
    EXPECT_EQ(Text("pageListName"), "abc");
    logic.takes = [](char16_t c) { return !QChar(c).isLowSurrogate(); };
    paste(QStringLiteral("a") + face + QStringLiteral("b"));
    EXPECT_EQ(Text("pageListName"), "ab") << "half of a character is none";
    dialog.SetText("pageListName"_id, u"longer");
    QTest::keyClicks(field, QStringLiteral("x"));
    EXPECT_EQ(Text("pageListName"), "longer") << "what was set stays as it is";
  });
}

TEST_F(Panels, ALabelNamesTheFieldThatIsShownInItsPlace) {
  Run("secure-print", [&](Panel& panel) {
    panel.Show("securePassword"_id, false);
    panel.Show("securePassword.plain"_id, true);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(panel.Focused(), "securePassword.plain"_id);
    EXPECT_EQ(WidgetOf(panel, "securePassword.plain")->accessibleName(), QStringLiteral("Password"));
  });
}

TEST_F(Panels, TheFilterSeesTheFieldAsItWasBeforeTheCharacter) {
  struct Asking final : RecordingLogic {
    std::vector<std::string> seen;
    bool TakesKey(platform::ControlId, const platform::TypedKey& key) override {
      seen.push_back(platform::ToUtf8(key.text) + "[" + std::to_string(key.selection_start) + "," +
                     std::to_string(key.selection_end) + "]" + static_cast<char>(key.character));
      return true;
    }
  } asking;
  ModalWindow window(nullptr, BuiltResources(), *BuiltResources().Template(DialogName("name-of-the-per-page-list")),
                     asking);
  QTimer::singleShot(0, &window, [&] {
    asking.dialog->SetText("pageListName"_id, u"aaa");
    asking.dialog->SelectText("pageListName"_id, 1, 1);
    QTest::keyClicks(KeysOf(window.panel(), "pageListName"), QStringLiteral("ab"));
    QTest::keyClick(KeysOf(window.panel(), "pageListName"), Qt::Key_Backspace);
    window.close();
  });
  window.Run();
  EXPECT_EQ(asking.seen, (std::vector<std::string>{"aaa[1,2]a", "aaa[2,2]b"}));
}

TEST_F(Panels, WhatTheLogicChangesItselfIsntToldBack) {
  Run("custom-size", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    const platform::ListRow rows[] = {{u"One", {}}, {u"Two", {}}};
    dialog.SetRows("customSizes"_id, rows);
    EXPECT_EQ(dialog.SelectedRow("customSizes"_id), platform::kNoRow);
    dialog.SelectRow("customSizes"_id, 1);
    dialog.SetText("customWidth"_id, u"210.0mm");
    dialog.SetChecked("unit.Millimetres"_id, true);
    dialog.SetRange("customWidth.spin"_id, 920, 2970);
    dialog.SetPosition("customWidth.spin"_id, 2100);
    dialog.Focus("customLength"_id);
    dialog.Enable("customLength"_id, false);
    EXPECT_EQ(logic.Take(), "");
    EXPECT_TRUE(dialog.SelectedRow("customSizes"_id) == 1 && dialog.IsChecked("unit.Millimetres"_id) &&
                !dialog.IsChecked("unit.Inches"_id));
    EXPECT_FALSE(dialog.IsEnabled("customLength"_id));
    dialog.SetChecked("unit.Millimetres"_id, false);
    EXPECT_FALSE(dialog.IsChecked("unit.Millimetres"_id) || dialog.IsChecked("unit.Inches"_id));
    dialog.SetText(999, u"nobody");
    EXPECT_TRUE(!dialog.Has(999) && dialog.Text(999).empty() && dialog.Position(999) == 0);
    Click(panel, "unit.Inches");
    EXPECT_EQ(logic.Take(), "click unit.Inches");
  });
}

TEST_F(Panels, SpinsStepWithinTheirRangeOrGoRound) {
  Run("fax-details", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    dialog.SetRange("bTimeH.spin"_id, 0, 23);
    dialog.SetPosition("bTimeH.spin"_id, 22);
    QWidget* const hour = KeysOf(panel, "bTimeH");
    QTest::keyClick(hour, Qt::Key_Up);
    QTest::keyClick(hour, Qt::Key_Up);
    EXPECT_EQ(dialog.Position("bTimeH.spin"_id), 0);
    EXPECT_EQ(logic.Take(), "position bTimeH.spin, position bTimeH.spin");
    EXPECT_EQ(Text("bTimeH"), "") << "the text is the logic's";
    dialog.Enable("bTimeH.spin"_id, false);
    QTest::keyClick(hour, Qt::Key_Down);
    EXPECT_EQ(dialog.Position("bTimeH.spin"_id), 0);
  });
  Run("binding-margin", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    dialog.SetRange("fMargin.spin"_id, 0, 50);
    dialog.SetPosition("fMargin.spin"_id, 49);
    for (int step = 0; step < 3; ++step) QTest::keyClick(KeysOf(panel, "fMargin"), Qt::Key_Up);
    EXPECT_EQ(dialog.Position("fMargin.spin"_id), 50);
    EXPECT_EQ(logic.Take(), "position fMargin.spin");
  });
}

TEST_F(Panels, AFieldThatMayNotBeLeftKeepsTheFocus) {
  std::string moves;
  Run("box", [&](Panel& panel) {
    KeysOf(panel, "boxNumber")->setFocus();
    logic.leaves = [&](platform::ControlId from, platform::ControlId to) {
      moves += test::NameOfControl(from) + " to " + test::NameOfControl(to) + "; ";
      return false;
    };
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(panel.Focused(), "boxNumber"_id);
    Click(panel, 1);
    EXPECT_EQ(panel.Focused(), "boxNumber"_id);
    QTest::qWait(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(panel.Focused(), "boxNumber"_id);
    EXPECT_EQ(moves, "boxNumber to boxFileName; boxNumber to OK; boxNumber to boxFileName; ");
    EXPECT_EQ(logic.Take().find("click"), std::string::npos);
  });
}

TEST_F(Panels, ALetterDoesntPressAButtonPastAFieldThatMayNotBeLeft) {
  Run("fax-details", [&](Panel& panel) {
    KeysOf(panel, "szSubAddress")->setFocus();
    logic.leaves = [](int, int) { return false; };
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(logic.Take(), "");
    logic.leaves = [](int, int) { return true; };
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_NE(logic.Take().find("click takePresentTime"), std::string::npos);
  });
}

TEST_F(Panels, ADialogEndsWithWhatItsLogicSaysWhenTheCallIsDone) {
  EXPECT_EQ(Run("print-position", [&](Panel&) {}), 2) << "the close box is Cancel";
  EXPECT_EQ(logic.Take(), "click Cancel, destroy");
  EXPECT_EQ(Run("print-position", [&](Panel& panel) { QTest::keyClick(&panel, Qt::Key_Return); }), 1);
  logic.on_click = [&](int id) {
    if (id == "lpWidePaperPos.LeadingEdge"_id) logic.dialog->End(77);
  };
  EXPECT_EQ(Run("print-position", [&](Panel& panel) { Click(panel, "lpWidePaperPos.LeadingEdge"); }), 77);
}

TEST_F(Panels, ADialogThatEndsWhileItStartsIsntShown) {
  struct Unstarted final : RecordingLogic {
    void Initialise(platform::Dialog* shown) override {
      RecordingLogic::Initialise(shown);
      shown->End(platform::IDCANCEL);
    }
  } unstarted;
  ModalWindow window(nullptr, BuiltResources(), *BuiltResources().Template(DialogName("print-position")), unstarted);
  bool was_shown = false;
  QTimer::singleShot(200, &window, [&] {
    was_shown = window.isVisible();
    window.done(0);
  });
  EXPECT_EQ(window.Run(), platform::IDCANCEL);
  EXPECT_FALSE(was_shown || window.isVisible());
}

TEST_F(Panels, AListTellsOfEveryChoiceAndOfNothingElse) {
  Run("layout-details", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    const platform::ListRow rows[] = {{u"One", {}}, {u"Two", {}}, {u"Three", {}}};
    dialog.SetRows("lpLayout.dialog"_id, rows);
    dialog.SelectRow("lpLayout.dialog"_id, 1);
    auto* const list = qobject_cast<QComboBox*>(WidgetOf(panel, "lpLayout.dialog"));
    const auto drop_down = [&](std::initializer_list<Qt::Key> keys) {
      list->showPopup();
      for (const Qt::Key key : keys) QTest::keyClick(list->view(), key);
      return logic.Take();
    };
    EXPECT_EQ(drop_down({Qt::Key_Return}), "row lpLayout.dialog") << "the row that is chosen already";
    EXPECT_EQ(dialog.SelectedRow("lpLayout.dialog"_id), 1);
    EXPECT_EQ(drop_down({Qt::Key_Down, Qt::Key_Return}), "row lpLayout.dialog");
    EXPECT_EQ(dialog.SelectedRow("lpLayout.dialog"_id), 2);
    EXPECT_EQ(drop_down({Qt::Key_Up, Qt::Key_Escape}), "");
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(logic.Take(), "row lpLayout.dialog") << "without dropping it down";
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(logic.Take(), "row lpLayout.dialog") << "the second key moved nothing";
  });
}

TEST_F(Panels, RowsOfAListViewCanBeActivatedAndItsHeadingsClicked) {
  Run("paper-type", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    const platform::ListRow rows[] = {{u"Tray 1", {u"Plain"}}, {u"Tray 2", {u"Thick"}}};
    dialog.SetRows("trays"_id, rows);
    WidgetOf(panel, "trays")->setFocus();
    QTest::keyClick(WidgetOf(panel, "trays"), Qt::Key_Down);
    QTest::keyClick(WidgetOf(panel, "trays"), Qt::Key_Down);
    EXPECT_EQ(dialog.SelectedRow("trays"_id), 1);
    logic.Take();
    QTest::keyClick(WidgetOf(panel, "trays"), Qt::Key_Return);
    EXPECT_EQ(logic.Take(), "activated trays") << "and the dialog stays";
  });
}

TEST_F(Panels, ATabInARowOfAListBoxBringsToTheMiddleUnderItsHeading) {
  Run("font", [&](Panel& panel) {
    const platform::ListRow rows[] = {{u"Arial\tCG Times", {}}, {u"A longer name\tCG Times", {}}, {u"Arial\t", {}}};
    panel.SetRows("fontTable"_id, rows);
    const auto* const list = qobject_cast<QListView*>(WidgetOf(panel, "fontTable"));
    ASSERT_NE(list, nullptr);
    QApplication::processEvents();
    const QImage shown = list->viewport()->grab().toImage();
    const auto half = [&](int row, bool right) {
      const QRect area = list->visualRect(list->model()->index(row, 0));
      const auto ratio = static_cast<int>(shown.devicePixelRatio());
      const int width = shown.width() / 2;
      return shown.copy(right ? width : 0, area.y() * ratio, width, area.height() * ratio);
    };
    EXPECT_EQ(half(0, true), half(1, true));
    EXPECT_NE(half(0, true), half(2, true));
    EXPECT_EQ(half(0, false), half(2, false));
    const int heading = WidgetOf(panel, "printerFontsHeading")->mapTo(&panel, QPoint()).x();
    EXPECT_NEAR(heading, list->mapTo(&panel, list->rect().center()).x(), 4);
  });
}

TEST_F(Panels, AMemoKeepsItsLimitAndAsksForEachCharacter) {
  logic.takes = [](char16_t c) { return c != u'#'; };
  Run("organize-settings", [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    dialog.SetTextLimit("presetComment"_id, 5);
    QWidget* const memo = WidgetOf(panel, "presetComment");
    QTest::keyClicks(memo, QStringLiteral("a#b"));
    QApplication::clipboard()->setText(QStringLiteral("#c\nd#efgh"));
    QTest::keyClick(memo, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("presetComment"), "abc\nd");
  });
}

}  // namespace
}  // namespace heron::desk
