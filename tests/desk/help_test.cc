// The help of every dialog, and how a person gets it.
#include "apps/desk/help.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>

#include "apps/desk/text.h"
#include "desk_test.h"
#include "pages/page.h"

namespace heron::desk {
namespace {

using Kind = platform::ControlKind;
using platform::ControlTemplate;

/// Dialogs that a built page opens.
constexpr const char* kBuiltDialogs[] = {"secure-print",
                                         "box",
                                         "transparency-interleave",
                                         "custom-size",
                                         "binding-margin",
                                         "print-position",
                                         "layout-details",
                                         "paper-type",
                                         "edit-paper-type",
                                         "authentication-and-department"};

bool CanBeChanged(const ControlTemplate& control) {
  constexpr Kind kOthers[] = {Kind::kLabel, Kind::kSpin, Kind::kPlace, Kind::kGroup, Kind::kFirstPaint};
  return std::ranges::count(kOthers, control.kind) == 0 && control.id != platform::kOkButton &&
         control.id != platform::kCancelButton && !control.read_only;
}

TEST(Help, TellsOfEveryControlAndOfNoOther) {
  for (const QString& name : QDir(QStringLiteral(HERON_RESOURCES "/help")).entryList({QStringLiteral("*.help")})) {
    const auto number = static_cast<uint16_t>(name.section(u'-', 0, 0).toInt());
    const platform::DialogTemplate* const plan = BuiltResources().Template(number);
    const DialogHelp* const help = BuiltResources().Help(number);
    ASSERT_TRUE(plan != nullptr && help != nullptr) << name.toStdString();
    for (const ControlTemplate& control : plan->controls) {
      const bool told = EntryOf(*help, *plan, control.id) != nullptr;
      EXPECT_TRUE(told || help->entries.empty() || !CanBeChanged(control)) << number << ": " << control.id;
    }
    for (const HelpEntry& entry : help->entries) {
      for (const platform::ControlId id : entry.controls) {
        EXPECT_EQ(std::ranges::count(plan->controls, id, &ControlTemplate::id), 1) << number << ": " << id;
      }
      const auto named = [&](const ControlTemplate& control) { return Spoken(ToQt(control.label)) == entry.group; };
      EXPECT_TRUE(entry.group.isEmpty() || std::ranges::any_of(plan->controls, named)) << number;
    }
  }
  for (const char* number : kBuiltDialogs) {
    const DialogHelp* const help = BuiltResources().Help(DialogName(number));
    EXPECT_TRUE(help != nullptr && !help->entries.empty()) << number;
  }
  for (const pages::PageRow& row : pages::kDocumentPages) {
    const DialogHelp* const help = BuiltResources().Help(row.number);
    const bool has_settings = row.number != DialogName("version");
    EXPECT_TRUE(help != nullptr && help->entries.empty() != has_settings) << row.number;
  }
}

TEST(Help, ReadsParagraphsAndRefusesWhatIsIncomplete) {
  QString error;
  const auto help = ParseHelp("# remark\nOne\ntwo.\n\nThree.\n[7 8]\nfour\n[\"A \"title\"\"]\n\nfive\n", &error);
  ASSERT_TRUE(help.has_value()) << error.toStdString();
  EXPECT_EQ(help->topic, QStringLiteral("One two.\n\nThree."));
  ASSERT_EQ(help->entries.size(), 2U);
  EXPECT_EQ(help->entries[0].controls, (std::vector<platform::ControlId>{7, 8}));
  EXPECT_EQ(help->entries[1].group, QStringLiteral("A \"title\""));
  EXPECT_EQ(help->entries[1].text, QStringLiteral("five"));
  for (const char* const source : {"", "# remark", "[7]\ntext", "text\n[7]", "text\n[]\nx", "text\n[0]\nx",
                                   "text\n[7\nx", "text\n[70000]\nx", "text\n[seven]\nx", "text\n[7]\n\n[8]\nx"}) {
    EXPECT_FALSE(ParseHelp(source, &error).has_value()) << source;
    EXPECT_TRUE(error.startsWith(QStringLiteral("line "))) << source;
  }
  EXPECT_FALSE(ParseHelp(std::string(70000, 'x'), &error).has_value());
}

/// What the balloon of a control shows; empty without one.
std::string Balloon(const Panel& panel, ControlName id) {
  const QWidget* const control = WidgetOf(panel, id);
  return !CloseBalloon() || control == nullptr ? std::string() : control->whatsThis().toStdString();
}

TEST(Help, IsAskedForByKeyByClickAndByButton) {
  RecordingLogic logic;
  PropertySheet sheet(BuiltResources());
  ASSERT_TRUE(sheet.AddPage({DialogName("paper"), &logic, true}));
  sheet.Open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet));
  Panel& panel = *sheet.panel(0);
  KeysOf(panel, "Copies")->setFocus();
  logic.Take();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
  EXPECT_EQ(logic.Take(), "help Copies");
  EXPECT_NE(Balloon(panel, "Copies").find("How many copies"), std::string::npos);

  panel.Enable("lpStaple"_id, false);
  const auto click = [&](const QWidget* at) {
    QHelpEvent what(QEvent::WhatsThis, at->mapTo(&panel, at->rect().center()), QPoint());
    QApplication::sendEvent(&panel, &what);
  };
  click(WidgetOf(panel, "lpStaple"));
  EXPECT_EQ(logic.Take(), "help lpStaple") << "also of what is disabled";
  EXPECT_NE(Balloon(panel, "lpStaple").find("Staples each set"), std::string::npos);
  click(WidgetOf(panel, "lpOutputTray.label"));
  EXPECT_EQ(logic.Take(), "help lpOutputTray") << "a label stands for its field";
  Balloon(panel, "lpOutputTray");

  QString told;
  QTimer::singleShot(50, &sheet, [&] {
    QWidget* const window = QApplication::activeModalWidget();
    ASSERT_NE(window, nullptr);
    Photograph(*window, "help-100");
    for (const QLabel* const label : window->findChildren<QLabel*>()) told += label->text();
    window->close();
  });
  sheet.findChild<QDialogButtonBox*>(QString(), Qt::FindDirectChildrenOnly)->button(QDialogButtonBox::Help)->click();
  EXPECT_EQ(logic.Take(), "help");
  EXPECT_TRUE(told.contains(QStringLiteral("what most jobs need"))) << told.toStdString();
}

}  // namespace
}  // namespace heron::desk
