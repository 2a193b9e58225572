// Journeys through the real sheet: the driver's pages in windows, a person's keys and clicks, and the record that comes
// out, as the command shows it.
#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTextDocument>
#include <set>

#include "apps/desk/desk.h"
#include "desk_test.h"
#include "entry/exports.h"
#include "platform/api/handles.h"

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
    return RunSheet({DrvDocumentPropertySheets, &header, platform::FromUtf8(HERON_RESOURCE_MODULE),
                     [&](PropertySheet& sheet) {
                       sheet_ = &sheet;
                       sheet.painted = [&, steps] {
                         EXPECT_TRUE(QTest::qWaitForWindowActive(&sheet));
                         Photograph(sheet, "paper-page");
                         steps();
                         if (sheet.isVisible()) sheet.reject();
                       };
                     },
                     keep_});
  }

  Panel& Paper() { return *sheet_->panel(0); }
  void Press(QDialogButtonBox::StandardButton button) {
    sheet_->findChild<QDialogButtonBox*>(QString(), Qt::FindDirectChildrenOnly)->button(button)->click();
  }
  /// Drops a list down and chooses the first row whose text begins so, whether it is chosen already or not.
  static void Choose(Panel& panel, ControlName id, const QString& text) {
    auto* const list = qobject_cast<QComboBox*>(WidgetOf(panel, id));
    const int row = list->findText(text, Qt::MatchStartsWith);
    ASSERT_GE(row, 0) << text.toStdString();
    list->showPopup();
    list->view()->setCurrentIndex(list->model()->index(row, 0));
    QTest::keyClick(list->view(), Qt::Key_Return);
  }
  /// Opens the menu of the library button and chooses the command whose text begins so.
  void ChooseFromLibrary(const QString& text) {
    QTimer chooser;
    chooser.setInterval(2);
    QObject::connect(&chooser, &QTimer::timeout, &chooser, [&] {
      auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (menu == nullptr) return;
      chooser.stop();
      Photograph(*menu, "library-menu");
      for (QAction* const action : menu->actions()) {
        if (!action->text().startsWith(text) || !action->isEnabled()) continue;
        menu->setActiveAction(action);
        return QTest::keyClick(menu, Qt::Key_Return);
      }
      ADD_FAILURE() << "no command " << text.toStdString();
      menu->close();
    });
    chooser.start();
    Click(Paper(), "settingsLibrary.paper");
  }
  /// Saves the settings that the sheet shows.
  void SaveAs(const QString& name) {
    in_dialog["save-settings"] = [name](ModalWindow& dialog) {
      Type(dialog.panel(), "newPresetName", name);
      Photograph(dialog, "save-settings");
      Click(dialog.panel(), platform::kOkButton);
    };
    ChooseFromLibrary(QStringLiteral("Save"));
  }
  static std::string Chosen(Panel& panel, ControlName id) {
    return qobject_cast<QComboBox*>(WidgetOf(panel, id))->currentText().toStdString();
  }
  static void Type(Panel& panel, ControlName id, const QString& text) {
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

  /// The identifier of a secure print in the record that came out.
  std::string Identifier() const {
    constexpr size_t kOffset = 1545, kLength = 17;
    std::u16string text(kLength, u'\0');
    std::memcpy(text.data(), out_.data() + kOffset, kLength * sizeof(char16_t));
    return platform::ToUtf8(text.substr(0, text.find(u'\0')));
  }

  QString name_;  ///< of the queue

  PropertySheet* sheet_ = nullptr;
  std::function<void(bool)> keep_ = [](bool) {};  ///< stores the record of a confirmed sheet

  /// Answers of the messages to come, by the name of a button; a message without one fails.
  QStringList answers;
  QStringList shown;  ///< texts of the messages so far
  /// What is done in the next dialogs, by number.
  std::map<DialogName, std::function<void(ModalWindow&)>> in_dialog;

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
  std::u16string wide_name_;
  platform::UniquePrinter printer_;
  std::vector<uint8_t> out_;
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
  EXPECT_EQ(
      Run([&] {
        Choose(Paper(), "lpPRNType", QStringLiteral("Booklet"));
        answers = {QStringLiteral("No")};
        Click(Paper(), "Sort_Check");
        ASSERT_EQ(shown.size(), 1);
        EXPECT_TRUE(shown[0].contains(QStringLiteral("Print type"))) << shown[0].toStdString();
        EXPECT_EQ(Chosen(Paper(), "lpPRNType"), "Booklet");
        EXPECT_TRUE(Paper().IsChecked("Sort_Check"_id)) << "a No takes the change back";
        EXPECT_TRUE(WidgetOf(Paper(), "upperPicture")->accessibleDescription().contains(QStringLiteral("booklet")))
            << WidgetOf(Paper(), "upperPicture")->accessibleDescription().toStdString();
        Press(QDialogButtonBox::Ok);
      }),
      SheetEnd::kConfirmed);
  EXPECT_EQ(Field("lpPRNType"), kBooklet);
  EXPECT_EQ(Run([&] {
              Choose(Paper(), "lpPRNType", QStringLiteral("Booklet"));
              answers = {QStringLiteral("Yes")};
              Click(Paper(), "Sort_Check");
              EXPECT_NE(Chosen(Paper(), "lpPRNType"), "Booklet");
              EXPECT_FALSE(Paper().IsChecked("Sort_Check"_id));
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("lpPRNType"), kOneSided);
}

TEST_F(Journeys, TheDeskKnowsWhetherAnythingWasTouched) {
  bool touched_once = true;
  keep_ = [&](bool touched) { touched_once = touched; };
  EXPECT_EQ(Run([&] { Press(QDialogButtonBox::Ok); }), SheetEnd::kConfirmed);
  EXPECT_FALSE(touched_once);
  EXPECT_EQ(Run([&] {
              Choose(Paper(), "lpPRNType", QStringLiteral("Booklet"));
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_TRUE(touched_once);
}

TEST_F(Journeys, ACustomPaperIsMadeAndChosen) {
  in_dialog["custom-size"] = [&](ModalWindow& dialog) {
    Type(dialog.panel(), "customName", QStringLiteral("Ticket"));
    Type(dialog.panel(), "customWidth", QStringLiteral("95.5"));
    Type(dialog.panel(), "customLength", QStringLiteral("200"));
    Click(dialog.panel(), platform::kOkButton);
  };
  EXPECT_EQ(Run([&] {
              answers = {QStringLiteral("Yes")};
              Choose(Paper(), "lpMediaSize", QStringLiteral("Custom size..."));
              EXPECT_EQ(Chosen(Paper(), "lpMediaSize"), "Ticket");
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  const QJsonObject fields = Fields();
  EXPECT_EQ(fields[QStringLiteral("UDPaperWidth")].toInt(), 955);
  EXPECT_EQ(fields[QStringLiteral("UDPaperLength")].toInt(), 2000);
}

TEST_F(Journeys, WhatWasAppliedStaysAndWhatCameAfterDoesnt) {
  EXPECT_EQ(Run([&] {
              Type(Paper(), "Copies", QStringLiteral("7"));
              Press(QDialogButtonBox::Apply);
              Type(Paper(), "Copies", QStringLiteral("9"));
              Press(QDialogButtonBox::Cancel);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("dmCopies"), 7);
  EXPECT_EQ(Run([&] {
              Type(Paper(), "Copies", QStringLiteral("9"));
              Press(QDialogButtonBox::Cancel);
            }),
            SheetEnd::kCancelled);
}

TEST_F(Journeys, WhatCantBeStoredIsToldAndTheSheetStaysOpen) {
  int stored = 0;
  keep_ = [&](bool) {
    if (++stored == 1) throw std::runtime_error("can't write \"Office.bin\": No space left on device");
  };
  EXPECT_EQ(Run([&] {
              Type(Paper(), "Copies", QStringLiteral("7"));
              answers = {QStringLiteral("OK")};
              Press(QDialogButtonBox::Ok);
              EXPECT_TRUE(sheet_->isVisible());
              ASSERT_EQ(shown.size(), 1);
              EXPECT_TRUE(shown[0].contains(QStringLiteral("No space left"))) << shown[0].toStdString();
              Type(Paper(), "Copies", QStringLiteral("8"));
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(stored, 2);
  EXPECT_EQ(Field("dmCopies"), 8);
  // What was applied and can't be stored when the sheet is cancelled.
  stored = 0;
  EXPECT_EQ(Run([&] {
              Type(Paper(), "Copies", QStringLiteral("9"));
              Press(QDialogButtonBox::Apply);
              answers = {QStringLiteral("OK")};
              Press(QDialogButtonBox::Cancel);
            }),
            SheetEnd::kRefused);
  EXPECT_EQ(stored, 1);
  EXPECT_EQ(shown.size(), 2);
}

TEST_F(Journeys, KeysAlone) {
  const auto press = [](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
  };
  EXPECT_EQ(Run([&] {
              press(Qt::Key_I, Qt::AltModifier);
              EXPECT_EQ(Paper().Focused(), "Copies"_id);
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
                          const std::string& number, std::function<void(Panel&)> steps = [](Panel&) {}) {
    in_dialog[number.c_str()] = [&opened, number, steps](ModalWindow& dialog) {
      opened += number + " ";
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
  for (const char* name :
       {"secure-print", "box", "transparency-interleave", "custom-size", "binding-margin", "layout-details"}) {
    expect(name);
  }
  expect("authentication-and-department", [](Panel& who) {
    for (const char* check : {"UserAuth_Check", "SecMana_Check"}) Click(who, check);
    Photograph(*who.window(), "authentication");
  });
  in_dialog["edit-paper-type"] = [](ModalWindow& dialog) {
    Choose(dialog.panel(), "lpMediaType.dialog", QStringLiteral("Transparency"));
    Click(dialog.panel(), platform::kOkButton);
  };
  expect("paper-type", [&](Panel& trays) {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End}) QTest::keyClick(WidgetOf(trays, "trays"), key);
    Click(trays, "editTray");
    Click(trays, "OHPInterLeave_Check");
    Photograph(*trays.window(), "trays");
  });
  Install(QStringLiteral("lpCopierHardDisk=2"));
  Run([&] {
    EXPECT_EQ(CutRows(Paper()), "");
    Choose(Paper(), "lpMediaSource", QStringLiteral("Bypass tray"));
    Click(Paper(), "paperTypeButton");
    Click(Paper(), "BindMargin_Check");
    Click(Paper(), "bindingMarginButton");
    Click(Paper(), "Nup_Check");
    Choose(Paper(), "lpLayout", QStringLiteral("Details..."));
    Choose(Paper(), "lpOutputMethod", QStringLiteral("Secure print"));
    Choose(Paper(), "lpOutputMethod", QStringLiteral("Save to box"));
    Click(Paper(), "authenticationButton");
    Choose(Paper(), "lpMediaSize", QStringLiteral("Custom size..."));
  });
  EXPECT_EQ(opened,
            "paper-type transparency-interleave binding-margin layout-details secure-print box "
            "authentication-and-department custom-size ");
}

TEST_F(Journeys, ARowThatIsChosenAgainOpensItsDialogAgain) {
  Install(QStringLiteral("lpCopierHardDisk=2"));
  const auto identify = [&](const QString& identifier, int button) {
    in_dialog["secure-print"] = [=](ModalWindow& dialog) {
      Type(dialog.panel(), "secureId", identifier);
      Click(dialog.panel(), button);
    };
    Choose(Paper(), "lpOutputMethod", QStringLiteral("Secure print"));
    EXPECT_TRUE(in_dialog.empty()) << "no dialog for " << identifier.toStdString();
    EXPECT_EQ(Chosen(Paper(), "lpOutputMethod"), "Secure print");
  };
  EXPECT_EQ(Run([&] {
              identify(QStringLiteral("first"), platform::kOkButton);
              identify(QStringLiteral("second"), platform::kOkButton);
              identify(QStringLiteral("third"), platform::kCancelButton);
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Identifier(), "second");
}

TEST_F(Journeys, AWatermarkIsWrittenAndDraggedInItsPicture) {
  constexpr int kOverlayPage = 3, kWatermarkPage = 4;
  const auto show = [&](int page) {
    auto* const tabs = sheet_->findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page).center());
    return sheet_->panel(page);
  };
  in_dialog["edit-watermarks"] = [](ModalWindow& dialog) {
    Panel& editor = dialog.panel();
    Click(editor, "newWatermark");
    Type(editor, "watermarkText", QStringLiteral("Ours"));
    Type(editor, "watermarkAngle", QStringLiteral("30"));
    QWidget* const picture = WidgetOf(editor, "watermarkEditor");
    const QPoint middle = picture->rect().center();
    QTest::mousePress(picture, Qt::LeftButton, {}, middle);
    QTest::mouseMove(picture, middle + QPoint(12, -20));
    QTest::mouseRelease(picture, Qt::LeftButton, {}, middle + QPoint(12, -20));
    Photograph(dialog, "edit-watermarks-dragged");
    Click(editor, platform::kOkButton);
  };
  EXPECT_EQ(Run([&] {
              Panel* const page = show(kWatermarkPage);
              Click(*page, "Watermark_Use");
              Click(*page, "editWatermarks");
              EXPECT_EQ(Chosen(*page, "watermarks"), "Ours");
              Photograph(*sheet_, "watermark-page");
              show(kOverlayPage);
              Photograph(*sheet_, "overlay-page");
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_EQ(Field("watermarkIndex"), 12);
  const QJsonObject mark =
      QJsonDocument::fromJson(Command({QStringLiteral("watermark"), QStringLiteral("show"), QStringLiteral("Ours"),
                                       QStringLiteral("-p"), name_, QStringLiteral("--json")}))
          .object();
  EXPECT_EQ(mark[QStringLiteral("angle")].toInt(), 300);
  EXPECT_GT(mark[QStringLiteral("x")].toInt(), 0);
  EXPECT_LT(mark[QStringLiteral("y")].toInt(), 0);
}

TEST_F(Journeys, ABadNumberKeepsThePageAndTheFocus) {
  Run([&] {
    answers = {QStringLiteral("OK"), QStringLiteral("OK"), QStringLiteral("OK")};
    Choose(Paper(), "lpOutputPaper", QStringLiteral("A5"));
    Type(Paper(), "Zoom", QStringLiteral("5"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(Paper().isVisible());
    EXPECT_EQ(Paper().Focused(), "Zoom"_id);
    EXPECT_FALSE(shown.isEmpty());
  });
}

constexpr int kPerPagePage = 1, kSpecialPage = 2, kQualityPage = 5, kFontPage = 6;

TEST_F(Journeys, RowsForSinglePagesAreMadeMovedAndKept) {
  const auto fill = [&](const QString& pages, const QString& type) {
    in_dialog["row-of-the-per-page-list"] = [=](ModalWindow& dialog) {
      EXPECT_EQ(CutRows(dialog), "");
      Type(dialog.panel(), "rowPages", pages);
      Choose(dialog.panel(), "lpInterSheetListPRNType", type);
      Photograph(dialog, "per-page-row");
      Click(dialog.panel(), platform::kOkButton);
    };
    Click(*sheet_->panel(kPerPagePage), "addPageListRow");
  };
  EXPECT_EQ(Run([&] {
              sheet_->ShowPage(kPerPagePage);
              Panel& page = *sheet_->panel(kPerPagePage);
              auto* const list = qobject_cast<QAbstractItemView*>(WidgetOf(page, "pageListRows"));
              const auto row = [&](int number) {
                return list->model()->index(number, 0).data().toString().toStdString();
              };
              answers = {QStringLiteral("Yes"), QStringLiteral("Yes")};
              Click(page, "InterSheet_Check");
              answers.clear();
              fill(QStringLiteral("10-6,3"), QStringLiteral("One-sided"));
              fill(QStringLiteral("12"), QStringLiteral("Insert blank sheet"));
              fill(QStringLiteral("1-2"), QStringLiteral("Two-sided"));
              EXPECT_EQ(row(0) + " " + row(1) + " " + row(2) + " " + row(3), "Other pages 3,6-10 12 1-2");
              EXPECT_TRUE(list->hasFocus());
              Click(page, "movePageListRowUp");
              EXPECT_EQ(row(2) + " " + row(3), "1-2 12");
              QTest::keyClick(list, Qt::Key_Up);
              QTest::keyClick(list, Qt::Key_Up);
              EXPECT_EQ(page.SelectedRow("pageListRows"_id), 1) << "never the row of the other pages";
              QTest::keyClick(list, Qt::Key_Delete);
              EXPECT_EQ(row(1) + " " + row(2), "1-2 12");
              QTest::keyClick(list, Qt::Key_Z, Qt::ControlModifier);
              EXPECT_EQ(row(1) + " " + row(2), "3,6-10 1-2");
              EXPECT_EQ(page.SelectedRow("pageListRows"_id), 1) << "selected, though Ctrl was held";
              EXPECT_TRUE(WidgetOf(page, "editPageListRow")->isEnabled());
              Photograph(*sheet_, "per-page-page");
              in_dialog["name-of-the-per-page-list"] = [&](ModalWindow& dialog) {
                Photograph(dialog, "list-name");
                Type(dialog.panel(), "pageListName", QStringLiteral("Board"));
                Click(dialog.panel(), platform::kOkButton);
              };
              Click(page, "renamePageList");
              EXPECT_EQ(Chosen(page, "lpInterSheetList"), "Board");
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  EXPECT_TRUE(shown.isEmpty()) << shown.join(u'|').toStdString();
  const QByteArray kept =
      Command({QStringLiteral("pages"), QStringLiteral("show"), QStringLiteral("-p"), name_, QStringLiteral("--json")});
  const QJsonObject answer = QJsonDocument::fromJson(kept).object();
  EXPECT_EQ(answer[QStringLiteral("name")].toString().toStdString(), "Board");
  EXPECT_EQ(answer[QStringLiteral("rows")].toArray().size(), 3);
  EXPECT_EQ(answer[QStringLiteral("rows")].toArray()[2].toObject()[QStringLiteral("pages")].toString().toStdString(),
            "12");
}

TEST_F(Journeys, TheQualitySampleFollowsTheSettings) {
  Run([&] {
    sheet_->ShowPage(kQualityPage);
    Panel& page = *sheet_->panel(kQualityPage);
    const auto sample = [&] { return WidgetOf(page, "samplePicture")->grab().toImage(); };
    const QImage plain = sample();
    std::set<QRgb> colors;
    for (int y = 0; y < plain.height(); ++y) {
      for (int x = 0; x < plain.width(); ++x) colors.insert(plain.pixel(x, y));
    }
    EXPECT_GT(colors.size(), 20U) << "a photo is shown";
    Photograph(*sheet_, "quality-page");
    Click(page, "PrintCAD_Check");
    const QImage black = sample();
    EXPECT_NE(black, plain);
    Click(page, "lpPrintCADMode.Everything");
    EXPECT_NE(sample(), black);
    Photograph(*sheet_, "quality-page-black");
    Click(page, "restoreDefaults.quality");
    EXPECT_EQ(sample(), plain);
    sheet_->ShowPage(kFontPage);
    Photograph(*sheet_, "font-page");
    sheet_->ShowPage(kSpecialPage);
    Panel& special = *sheet_->panel(kSpecialPage);
    Click(special, "ImageShift_Check");
    in_dialog["image-shift"] = [](ModalWindow& dialog) {
      Type(dialog.panel(), "ImgShiftValueLRF", QStringLiteral("100"));
      Click(dialog.panel(), "ImgShiftBackAuto_Check");
      Photograph(dialog, "image-shift");
      Click(dialog.panel(), platform::kOkButton);
    };
    Click(special, "imageShiftButton");
    Photograph(*sheet_, "special-page");
  });
}

TEST_F(Journeys, SettingsAreSavedComparedRecalledAndOrganized) {
  in_dialog["recall-settings"] = [](ModalWindow& dialog) {
    Panel& panel = dialog.panel();
    panel.SelectRow("presetsToRecall"_id, 1);
    QTest::keyClick(WidgetOf(panel, "presetsToRecall"), Qt::Key_Up);
    QTest::keyClick(WidgetOf(panel, "presetsToRecall"), Qt::Key_Down);
    Photograph(dialog, "recall-settings");
    Click(panel, "onlyDifferences");
    Photograph(dialog, "recall-settings-differences");
    Click(panel, platform::kOkButton);
  };
  in_dialog["recall-options"] = [](ModalWindow& dialog) {
    Photograph(dialog, "recall-options");
    Click(dialog.panel(), "selectAllParts");
    Click(dialog.panel(), platform::kOkButton);
  };
  in_dialog["organize-settings"] = [](ModalWindow& dialog) {
    Panel& panel = dialog.panel();
    QTest::keyClick(WidgetOf(panel, "presets"), Qt::Key_Down);
    Type(panel, "presetName", QStringLiteral("Both sides"));
    Type(panel, "presetComment", QStringLiteral("for the board"));
    Click(panel, "movePresetUp");
    Photograph(dialog, "organize-settings");
    Click(panel, platform::kOkButton);
  };
  EXPECT_EQ(Run([&] {
              Choose(Paper(), "lpPRNType", QStringLiteral("Two-sided"));
              SaveAs(QStringLiteral("Two sides"));
              Choose(Paper(), "lpPRNType", QStringLiteral("One-sided"));
              ChooseFromLibrary(QStringLiteral("Recall options"));
              ChooseFromLibrary(QStringLiteral("Recall..."));
              EXPECT_EQ(Chosen(Paper(), "lpPRNType"), "Two-sided");
              ChooseFromLibrary(QStringLiteral("Organize"));
              Press(QDialogButtonBox::Ok);
            }),
            SheetEnd::kConfirmed);
  const QJsonArray entries = QJsonDocument::fromJson(Command({QStringLiteral("library"), QStringLiteral("list"),
                                                              QStringLiteral("--json"), QStringLiteral("-p"), name_}))
                                 .object()[QStringLiteral("entries")]
                                 .toArray();
  ASSERT_EQ(entries.size(), 2);
  EXPECT_EQ(entries[0].toObject()[QStringLiteral("name")].toString().toStdString(), "Both sides");
  EXPECT_EQ(entries[0].toObject()[QStringLiteral("comment")].toString().toStdString(), "for the board");
}

}  // namespace
}  // namespace heron::desk
