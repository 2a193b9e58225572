// Messages as windows.
#include "apps/desk/message_window.h"

#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

#include "desk_test.h"

namespace heron::desk {
namespace {

using platform::DWORD;

/// The answer to a message whose window gets `act`.
int Answer(DWORD flags, const std::function<void(MessageWindow&)>& act) {
  MessageWindow window(nullptr, QStringLiteral("Caption"), QStringLiteral("Print type\nA => B"), flags);
  QTimer::singleShot(0, &window, [&] {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    act(window);
  });
  return window.Run();
}

void Press(MessageWindow& window, const QString& name) {
  for (QPushButton* const button : window.findChildren<QPushButton*>()) {
    if (button->text().remove(u'&') == name) return button->click();
  }
  ADD_FAILURE() << "no button " << name.toStdString();
}

TEST(Messages, AreAnsweredByNameOrEsc) {
  const auto press = [](const char* name) {
    return [name](MessageWindow& window) { Press(window, QString::fromLatin1(name)); };
  };
  const auto escape = [](MessageWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); };
  const auto enter = [](MessageWindow&) { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); };
  EXPECT_EQ(Answer(platform::MB_YESNO | platform::MB_ICONQUESTION, press("Yes")), platform::IDYES);
  EXPECT_EQ(Answer(platform::MB_YESNO, press("No")), platform::IDNO);
  EXPECT_EQ(Answer(platform::MB_YESNO, escape), platform::IDNO);
  EXPECT_EQ(Answer(platform::MB_YESNO, enter), platform::IDYES);
  EXPECT_EQ(Answer(platform::MB_YESNO | platform::MB_DEFBUTTON2, enter), platform::IDNO);
  EXPECT_EQ(Answer(platform::MB_YESNOCANCEL, escape), platform::IDCANCEL);
  EXPECT_EQ(Answer(platform::MB_OKCANCEL, press("OK")), platform::IDOK);
  EXPECT_EQ(Answer(platform::MB_OK, escape), platform::IDOK);
}

TEST(Messages, LinesOfAReportStandInColumnsAndNothingIsTakenAsMarkup) {
  QTextDocument document;
  document.setHtml(ReportHtml(QStringLiteral("<b>Sort</b>\n\nPrint type => A & B\nTray => <1>\nDo you?")));
  const QString text = document.toPlainText();
  for (const char* part : {"<b>Sort</b>", "Print type", "A & B", "<1>", "Do you?"}) {
    EXPECT_TRUE(text.contains(QString::fromLatin1(part))) << part;
  }
  EXPECT_EQ(document.toHtml().count(QStringLiteral("<tr>")), 2);
}

TEST(Messages, TextCanBeSelectedAndALongOneScrolls) {
  QString text;
  for (int line = 0; line < 400; ++line) text += QStringLiteral("Setting %1 => value\n").arg(line);
  MessageWindow window(nullptr, QStringLiteral("Caption"), text, platform::MB_OK);
  window.show();
  EXPECT_LT(window.height(), window.screen()->availableSize().height());
  bool selectable = false;
  for (const QLabel* const label : window.findChildren<QLabel*>()) {
    selectable = selectable || (label->textInteractionFlags() & Qt::TextSelectableByKeyboard) != 0;
  }
  EXPECT_TRUE(selectable);
}

}  // namespace
}  // namespace heron::desk
