// What a person does to a dialog, as its logic hears of it.
#include <QClipboard>
#include <QLineEdit>
#include <QListView>

#include "desk/widgets.h"
#include "desk_test.h"

namespace heron::desk {
namespace {

/// A dialog on the screen; `steps` run while it is open, then it is cancelled.
class Panels : public ::testing::Test {
 protected:
  int Run(uint16_t dialog, const std::function<void(Panel&)>& steps) {
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

  std::string Text(int id) { return platform::ToUtf8(logic.dialog->Text(static_cast<platform::ControlId>(id))); }

  RecordingLogic logic;
};

TEST_F(Panels, CharactersPassOneByOneHoweverTheyCome) {
  logic.takes = [](char16_t c) { return c != u'x'; };
  Run(2440, [&](Panel& panel) {
    QWidget* const field = KeysOf(panel, 2443);
    QTest::keyClicks(field, QStringLiteral("axb"));
    EXPECT_EQ(Text(2443), "ab");
    EXPECT_EQ(logic.Take(), "text 2443, text 2443");
    QApplication::clipboard()->setText(QStringLiteral("12x34xx"));
    QTest::keyClick(field, Qt::Key_Home);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(2443), "1234ab");
    EXPECT_EQ(qobject_cast<QLineEdit*>(field)->cursorPosition(), 4);
    // What is refused leaves the selection as it was; what isn't replaces it.
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, QStringLiteral("x"));
    EXPECT_EQ(qobject_cast<QLineEdit*>(field)->selectedText(), QStringLiteral("1234ab"));
    QApplication::clipboard()->setText(QString(5000, u'z') + u'x');
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(2443), std::string(16, 'z'));
  });
}

TEST_F(Panels, ALimitHoldsForWhatAPersonPutsInAndCutsNoCharacterInTwo) {
  Run(2440, [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    QWidget* const field = KeysOf(panel, 2443);
    dialog.SetTextLimit(2443, 4);
    const QString face = QString::fromUtf16(u"\U0001F600");
    const auto paste = [&](const QString& text) {
      QApplication::clipboard()->setText(text);
      QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    };
    paste(QStringLiteral("abc") + face);
    EXPECT_EQ(Text(2443), "abc");
    logic.takes = [](char16_t c) { return !QChar(c).isLowSurrogate(); };
    paste(QStringLiteral("a") + face + QStringLiteral("b"));
    EXPECT_EQ(Text(2443), "ab") << "half of a character is none";
    dialog.SetText(2443, u"longer");
    QTest::keyClicks(field, QStringLiteral("x"));
    EXPECT_EQ(Text(2443), "longer") << "what was set stays as it is";
  });
}

TEST_F(Panels, ALabelNamesTheFieldThatIsShownInItsPlace) {
  Run(1800, [&](Panel& panel) {
    panel.Show(1802, false);
    panel.Show(1808, true);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(panel.Focused(), 1808);
    EXPECT_EQ(WidgetOf(panel, 1808)->accessibleName(), QStringLiteral("Password"));
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
  ModalWindow window(nullptr, BuiltResources(), *BuiltResources().Template(2440), asking);
  QTimer::singleShot(0, &window, [&] {
    asking.dialog->SetText(2443, u"aaa");
    asking.dialog->SelectText(2443, 1, 1);
    QTest::keyClicks(KeysOf(window.panel(), 2443), QStringLiteral("ab"));
    QTest::keyClick(KeysOf(window.panel(), 2443), Qt::Key_Backspace);
    window.close();
  });
  window.Run();
  EXPECT_EQ(asking.seen, (std::vector<std::string>{"aaa[1,2]a", "aaa[2,2]b"}));
}

TEST_F(Panels, WhatTheLogicChangesItselfIsntToldBack) {
  Run(2200, [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    const platform::ListRow rows[] = {{u"One", {}}, {u"Two", {}}};
    dialog.SetRows(2201, rows);
    EXPECT_EQ(dialog.SelectedRow(2201), platform::kNoRow);
    dialog.SelectRow(2201, 1);
    dialog.SetText(2204, u"210.0mm");
    dialog.SetChecked(2218, true);
    dialog.SetRange(2205, 920, 2970);
    dialog.SetPosition(2205, 2100);
    dialog.Focus(2207);
    dialog.Enable(2207, false);
    EXPECT_EQ(logic.Take(), "");
    EXPECT_TRUE(dialog.SelectedRow(2201) == 1 && dialog.IsChecked(2218) && !dialog.IsChecked(2219));
    EXPECT_FALSE(dialog.IsEnabled(2207));
    dialog.SetChecked(2218, false);
    EXPECT_FALSE(dialog.IsChecked(2218) || dialog.IsChecked(2219));
    dialog.SetText(999, u"nobody");
    EXPECT_TRUE(!dialog.Has(999) && dialog.Text(999).empty() && dialog.Position(999) == 0);
    Click(panel, 2219);
    EXPECT_EQ(logic.Take(), "click 2219");
  });
}

TEST_F(Panels, SpinsStepWithinTheirRangeOrGoRound) {
  Run(1820, [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    dialog.SetRange(1825, 0, 23);
    dialog.SetPosition(1825, 22);
    QWidget* const hour = KeysOf(panel, 1824);
    QTest::keyClick(hour, Qt::Key_Up);
    QTest::keyClick(hour, Qt::Key_Up);
    EXPECT_EQ(dialog.Position(1825), 0);
    EXPECT_EQ(logic.Take(), "position 1825, position 1825");
    EXPECT_EQ(Text(1824), "") << "the text is the logic's";
    dialog.Enable(1825, false);
    QTest::keyClick(hour, Qt::Key_Down);
    EXPECT_EQ(dialog.Position(1825), 0);
  });
  Run(2300, [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    dialog.SetRange(2307, 0, 50);
    dialog.SetPosition(2307, 49);
    for (int step = 0; step < 3; ++step) QTest::keyClick(KeysOf(panel, 2306), Qt::Key_Up);
    EXPECT_EQ(dialog.Position(2307), 50);
    EXPECT_EQ(logic.Take(), "position 2307");
  });
}

TEST_F(Panels, AFieldThatMayNotBeLeftKeepsTheFocus) {
  std::vector<std::pair<int, int>> moves;
  Run(2001, [&](Panel& panel) {
    KeysOf(panel, 2003)->setFocus();
    logic.leaves = [&](int from, int to) {
      moves.emplace_back(from, to);
      return false;
    };
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(panel.Focused(), 2003);
    Click(panel, 1);
    EXPECT_EQ(panel.Focused(), 2003);
    QTest::qWait(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(panel.Focused(), 2003);
    EXPECT_EQ(moves, (std::vector<std::pair<int, int>>{{2003, 2941}, {2003, 1}, {2003, 2941}}));
    EXPECT_EQ(logic.Take().find("click"), std::string::npos);
  });
}

TEST_F(Panels, ALetterDoesntPressAButtonPastAFieldThatMayNotBeLeft) {
  Run(1820, [&](Panel& panel) {
    KeysOf(panel, 930)->setFocus();
    logic.leaves = [](int, int) { return false; };
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(logic.Take(), "");
    logic.leaves = [](int, int) { return true; };
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_NE(logic.Take().find("click 1830"), std::string::npos);
  });
}

TEST_F(Panels, ADialogEndsWithWhatItsLogicSaysWhenTheCallIsDone) {
  EXPECT_EQ(Run(2355, [&](Panel&) {}), 2) << "the close box is Cancel";
  EXPECT_EQ(logic.Take(), "click 2, destroy");
  EXPECT_EQ(Run(2355, [&](Panel& panel) { QTest::keyClick(&panel, Qt::Key_Return); }), 1);
  logic.on_click = [&](int id) {
    if (id == 2357) logic.dialog->End(77);
  };
  EXPECT_EQ(Run(2355, [&](Panel& panel) { Click(panel, 2357); }), 77);
}

TEST_F(Panels, RowsOfAListViewCanBeActivatedAndItsHeadingsClicked) {
  Run(2910, [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    const platform::ListRow rows[] = {{u"Tray 1", {u"Plain"}}, {u"Tray 2", {u"Thick"}}};
    dialog.SetRows(2911, rows);
    WidgetOf(panel, 2911)->setFocus();
    QTest::keyClick(WidgetOf(panel, 2911), Qt::Key_Down);
    QTest::keyClick(WidgetOf(panel, 2911), Qt::Key_Down);
    EXPECT_EQ(dialog.SelectedRow(2911), 1);
    logic.Take();
    QTest::keyClick(WidgetOf(panel, 2911), Qt::Key_Return);
    EXPECT_EQ(logic.Take(), "activated 2911") << "and the dialog stays";
  });
}

TEST_F(Panels, ATabInARowOfAListBoxBringsToTheMiddleUnderItsHeading) {
  Run(700, [&](Panel& panel) {
    const platform::ListRow rows[] = {{u"Arial\tCG Times", {}}, {u"A longer name\tCG Times", {}}, {u"Arial\t", {}}};
    panel.SetRows(705, rows);
    const auto* const list = qobject_cast<QListView*>(WidgetOf(panel, 705));
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
    const int heading = WidgetOf(panel, 703)->mapTo(&panel, QPoint()).x();
    EXPECT_NEAR(heading, list->mapTo(&panel, list->rect().center()).x(), 4);
  });
}

TEST_F(Panels, AMemoKeepsItsLimitAndAsksForEachCharacter) {
  logic.takes = [](char16_t c) { return c != u'#'; };
  Run(2560, [&](Panel& panel) {
    platform::Dialog& dialog = panel;
    dialog.SetTextLimit(2566, 5);
    QWidget* const memo = WidgetOf(panel, 2566);
    QTest::keyClicks(memo, QStringLiteral("a#b"));
    QApplication::clipboard()->setText(QStringLiteral("#c\nd#efgh"));
    QTest::keyClick(memo, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(2566), "abc\nd");
  });
}

}  // namespace
}  // namespace heron::desk
