// Journeys through the real sheet: the driver's pages in windows, a person's keys and clicks, and the record that comes
// out, as the command shows it.
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTemporaryDir>
#include <QTextDocument>

#include "desk/desk.h"
#include "desk_test.h"
#include "entry/exports.h"
#include "platform/handles.h"

namespace heron::desk {
namespace {

constexpr platform::DWORD kOwnMode = 78;  ///< the user's own settings, which may change custom sizes

/// Output of the command, which must succeed.
QByteArray Command(const QStringList& arguments) {
  QProcess process;
  process.start(QStringLiteral(HERON_BIN), arguments);
  EXPECT_TRUE(process.waitForFinished(60000));
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

class Journeys : public ::testing::Test {
 protected:
  Journeys() {
    static int number = 0;
    name_ = QStringLiteral("Printer %1").arg(++number);
    Command({QStringLiteral("printer"), QStringLiteral("add"), name_});
    wide_name_ = name_.toStdU16String();
    printer_ = platform::OpenPrinterFor(wide_name_.c_str(), platform::PRINTER_ACCESS_USE);
    watch_.setInterval(2);
    watch_.setSingleShot(true);
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { Look(); });
    watch_.start();
  }

  /// Sets an option of the device.
  void Install(const QString& option) {
    Command({QStringLiteral("settings"), QStringLiteral("-p"), name_, QStringLiteral("--device"), QStringLiteral("-o"),
             option});
  }

  /// Runs the document sheet; `steps` must close it.
  SheetEnd Run(const std::function<void()>& steps) {
    out_.assign(3328, 0);
    platform::DOCUMENTPROPERTYHEADER header{.cbSize = sizeof(header),
                                            .Reserved = 0,
                                            .hPrinter = printer_.get(),
                                            .pszPrinterName = wide_name_.data(),
                                            .pdmIn = nullptr,
                                            .pdmOut = reinterpret_cast<platform::DEVMODEW*>(out_.data()),
                                            .cbOut = 3328,
                                            .fMode = kOwnMode};
    return RunSheet(
        {DrvDocumentPropertySheets, &header, platform::FromUtf8(HERON_RESOURCE_MODULE), [&](PropertySheet& sheet) {
           sheet_ = &sheet;
           sheet.painted = [&, steps] {
             EXPECT_TRUE(QTest::qWaitForWindowActive(&sheet));
             Photograph(sheet, "paper-page");
             steps();
             if (sheet.isVisible()) sheet.reject();
           };
         }});
  }

  Panel& Paper() { return *sheet_->panel(0); }
  void Press(QDialogButtonBox::StandardButton button) {
    sheet_->findChild<QDialogButtonBox*>(QString(), Qt::FindDirectChildrenOnly)->button(button)->click();
  }
  /// Chooses the first row of a list whose text begins so.
  static void Choose(Panel& panel, int id, const QString& text) {
    auto* const list = qobject_cast<QComboBox*>(WidgetOf(panel, id));
    const int row = list->findText(text, Qt::MatchStartsWith);
    ASSERT_GE(row, 0) << text.toStdString();
    list->setCurrentIndex(row);
  }
  static std::string Chosen(Panel& panel, int id) {
    return qobject_cast<QComboBox*>(WidgetOf(panel, id))->currentText().toStdString();
  }
  static void Type(Panel& panel, int id, const QString& text) {
    QWidget* const field = KeysOf(panel, id);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
  }

  /// Fields of the record that came out, as `heron record show` tells them.
  QJsonObject Fields() {
    const QString path = folder_.filePath(QStringLiteral("out.bin"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(out_.data()), static_cast<qint64>(out_.size()));
    file.close();
    const QByteArray answer =
        Command({QStringLiteral("record"), QStringLiteral("show"), path, QStringLiteral("--json")});
    return QJsonDocument::fromJson(answer).object()[QStringLiteral("fields")].toObject();
  }
  int Field(const char* name) { return Fields()[QString::fromLatin1(name)].toInt(-1); }

  /// Answers of the messages to come, by the name of a button; a message without one fails.
  QStringList answers;
  QStringList shown;  ///< texts of the messages so far
  /// What is done in the next dialogs, by number.
  std::map<int, std::function<void(ModalWindow&)>> in_dialog;

 private:
  /// Looks whether a window has come up that wasn't met yet, and does what the test wants with it.
  void Look() {
    watch_.start();  // anew, so that it goes off in a window over this one, too
    QWidget* const window = QApplication::activeModalWidget();
    if (window == nullptr || window == met_) return;
    QWidget* const before = std::exchange(met_, window);
    Photograph(*window, "over-the-sheet-" + window->objectName().toStdString());
    auto* const dialog = dynamic_cast<ModalWindow*>(window);
    dialog != nullptr ? ActIn(*dialog) : AnswerTo(*window);
    met_ = before;
  }

  void ActIn(ModalWindow& dialog) {
    const auto act = in_dialog.find(dialog.objectName().toInt());
    EXPECT_NE(act, in_dialog.end()) << dialog.objectName().toStdString();
    if (act == in_dialog.end()) return static_cast<void>(dialog.close());
    const auto steps = std::move(act->second);
    in_dialog.erase(act);
    steps(dialog);
  }

  void AnswerTo(QWidget& message) {
    QString html;
    for (const QLabel* const label : message.findChildren<QLabel*>()) html += label->text();
    QTextDocument text;
    text.setHtml(html);
    shown += text.toPlainText();
    EXPECT_FALSE(answers.isEmpty()) << shown.last().toStdString();
    const QString answer = answers.isEmpty() ? QString() : answers.takeFirst();
    for (QPushButton* const button : message.findChildren<QPushButton*>()) {
      if (button->text().remove(u'&') == answer) return button->click();
    }
    message.close();
  }

  QTemporaryDir folder_;
  QString name_;
  std::u16string wide_name_;
  platform::UniquePrinter printer_;
  std::vector<uint8_t> out_;
  PropertySheet* sheet_ = nullptr;
  QTimer watch_;
  QWidget* met_ = nullptr;  ///< the window that is being answered
};

/// The rows of drop-downs that don't fit into them, in what stands on `window`.
std::string CutRows(QWidget& window) {
  std::string cut;
  for (const QComboBox* const list : window.findChildren<QComboBox*>()) {
    QStyleOptionComboBox option;
    option.initFrom(list);
    const int room =
        list->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, list).width();
    for (int row = 0; row < list->count() && list->isVisible(); ++row) {
      const QString text = list->itemText(row);
      if (list->fontMetrics().horizontalAdvance(text) > room) cut += text.toStdString() + "; ";
    }
  }
  return cut;
}

constexpr int kOneSided = 1;
constexpr int kBooklet = 3;

TEST_F(Journeys, AConsequenceIsAskedForAndTheAnswerCounts) {
  EXPECT_EQ(Run([&] {
              Choose(Paper(), 176, QStringLiteral("Booklet"));
              answers = {QStringLiteral("No")};
              Click(Paper(), 142);
              ASSERT_EQ(shown.size(), 1);
              EXPECT_TRUE(shown[0].contains(QStringLiteral("Print type"))) << shown[0].toStdString();
              EXPECT_EQ(Chosen(Paper(), 176), "Booklet");
              EXPECT_TRUE(Paper().IsChecked(142)) << "a No takes the change back";
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("lpPRNType"), kBooklet);
  EXPECT_EQ(Run([&] {
              Choose(Paper(), 176, QStringLiteral("Booklet"));
              answers = {QStringLiteral("Yes")};
              Click(Paper(), 142);
              EXPECT_NE(Chosen(Paper(), 176), "Booklet");
              EXPECT_FALSE(Paper().IsChecked(142));
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("lpPRNType"), kOneSided);
}

TEST_F(Journeys, ACustomPaperIsMadeAndChosen) {
  in_dialog[2200] = [&](ModalWindow& dialog) {
    Type(dialog.panel(), 2215, QStringLiteral("Ticket"));
    Type(dialog.panel(), 2204, QStringLiteral("95.5"));
    Type(dialog.panel(), 2207, QStringLiteral("200"));
    Click(dialog.panel(), platform::kOkButton);
  };
  EXPECT_EQ(Run([&] {
              answers = {QStringLiteral("Yes")};
              Choose(Paper(), 111, QStringLiteral("Custom size..."));
              EXPECT_EQ(Chosen(Paper(), 111), "Ticket");
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  const QJsonObject fields = Fields();
  EXPECT_EQ(fields[QStringLiteral("UDPaperWidth")].toInt(), 955);
  EXPECT_EQ(fields[QStringLiteral("UDPaperLength")].toInt(), 2000);
}

TEST_F(Journeys, WhatWasAppliedStaysAndWhatCameAfterDoesnt) {
  EXPECT_EQ(Run([&] {
              Type(Paper(), 103, QStringLiteral("7"));
              Press(QDialogButtonBox::Apply);
              Type(Paper(), 103, QStringLiteral("9"));
              Press(QDialogButtonBox::Cancel);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("dmCopies"), 7);
  EXPECT_EQ(Run([&] {
              Type(Paper(), 103, QStringLiteral("9"));
              Press(QDialogButtonBox::Cancel);
            }),
            SheetEnd::kCancelled);
}

TEST_F(Journeys, KeysAlone) {
  const auto press = [](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
  };
  EXPECT_EQ(Run([&] {
              press(Qt::Key_I, Qt::AltModifier);
              EXPECT_EQ(Paper().Focused(), 103);
              QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("12"));
              press(Qt::Key_Up);
              press(Qt::Key_Y, Qt::AltModifier);
              press(Qt::Key_Down);
              press(Qt::Key_Tab, Qt::ControlModifier);
              press(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
              press(Qt::Key_Return);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("dmCopies"), 13);
  EXPECT_EQ(Field("lpPRNType"), 2);
}

TEST_F(Journeys, EveryDialogOfThePageOpensOverItAndCanBeCancelled) {
  std::string opened;
  const auto expect = [&](
                          int number, std::function<void(Panel&)> steps = [](Panel&) {}) {
    in_dialog[number] = [&opened, number, steps](ModalWindow& dialog) {
      opened += std::to_string(number) + " ";
      EXPECT_EQ(CutRows(dialog), "") << number;
      steps(dialog.panel());
      EXPECT_NE(dialog.panel().Focused(), 0) << number;
      const auto has_help = [&] {
        dialog.activateWindow();
        QTest::keyClick(&dialog, Qt::Key_F1);
        return CloseBalloon();
      };
      EXPECT_TRUE(QTest::qWaitFor(has_help)) << number;
      QTest::keyClick(&dialog, Qt::Key_Escape);
    };
  };
  for (const int number : {1800, 2001, 2020, 2200, 2300, 2900}) expect(number);
  expect(2950, [](Panel& who) {
    for (const int check : {2952, 2962}) Click(who, check);
    Photograph(*who.window(), "authentication");
  });
  in_dialog[2920] = [](ModalWindow& dialog) {
    Choose(dialog.panel(), 2921, QStringLiteral("Transparency"));
    Click(dialog.panel(), platform::kOkButton);
  };
  expect(2910, [&](Panel& trays) {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End}) QTest::keyClick(WidgetOf(trays, 2911), key);
    Click(trays, 2912);
    Click(trays, 2913);
    Photograph(*trays.window(), "trays");
  });
  Install(QStringLiteral("lpCopierHardDisk=2"));
  Run([&] {
    EXPECT_EQ(CutRows(Paper()), "");
    Choose(Paper(), 120, QStringLiteral("Bypass tray"));
    Click(Paper(), 182);
    Click(Paper(), 155);
    Click(Paper(), 179);
    Click(Paper(), 124);
    Choose(Paper(), 125, QStringLiteral("Details..."));
    Choose(Paper(), 172, QStringLiteral("Secure print"));
    Choose(Paper(), 172, QStringLiteral("Save to box"));
    Click(Paper(), 181);
    Choose(Paper(), 111, QStringLiteral("Custom size..."));
  });
  EXPECT_EQ(opened, "2910 2020 2300 2900 1800 2001 2950 2200 ");
}

TEST_F(Journeys, ABadNumberKeepsThePageAndTheFocus) {
  Run([&] {
    answers = {QStringLiteral("OK"), QStringLiteral("OK"), QStringLiteral("OK")};
    Choose(Paper(), 114, QStringLiteral("A5"));
    Type(Paper(), 116, QStringLiteral("5"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(Paper().isVisible());
    EXPECT_EQ(Paper().Focused(), 116);
    EXPECT_FALSE(shown.isEmpty());
  });
}

}  // namespace
}  // namespace heron::desk
