// Every dialog as a window: what its keys reach, and that nothing is cut off.
#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QScrollBar>
#include <QTabBar>

#include "desk_test.h"
#include "platform/api/message_box.h"
#include "platform/dialog/dialog_template.h"

namespace heron::desk {
namespace {

using Kind = platform::ControlKind;
using platform::ControlTemplate;
using platform::DialogTemplate;

/// Fills what a template leaves to the logic, so that a picture shows it.
class FillingLogic final : public RecordingLogic {
 public:
  explicit FillingLogic(const DialogTemplate& plan) : plan_(plan) {}

  void Initialise(platform::Dialog* shown) override {
    RecordingLogic::Initialise(shown);
    std::map<std::string, bool> sets;
    for (const ControlTemplate& control : plan_.controls) {
      switch (control.kind) {
        case Kind::kLabel:
          if (control.label.empty()) shown->SetText(control.id, u"(0 - 2500)");
          break;
        case Kind::kGroup:
          if (control.label.empty()) shown->SetText(control.id, u"Tray & list \"Letters\"");
          break;
        case Kind::kText:
        case Kind::kPassword:
          shown->SetText(control.id, u"Some text");
          break;
        case Kind::kNumber:
          shown->SetText(control.id, u"100");
          break;
        case Kind::kRadio:
          if (!std::exchange(sets[control.set], true)) shown->SetChecked(control.id, true);
          break;
        default:
          FillRows(control);
      }
    }
  }

 private:
  void FillRows(const ControlTemplate& control) const {
    if (control.kind == Kind::kTabs) {
      const platform::ListRow rows[] = {{u"Document", {}}, {u"Layout", {}}, {u"Finishing", {}}, {u"Output", {}}};
      dialog->SetRows(control.id, rows);
      return dialog->SelectRow(control.id, 0);
    }
    const platform::ListRow rows[] = {{u"A4 (210.0 x 297.0 mm)", {u"Plain", u"Tray 1", u"x"}},
                                      {u"Letter", {u"Thick", u"Tray 2", u"y"}},
                                      {u"A name that is a good deal longer than the others", {u"Recycled", u"Auto"}}};
    dialog->SetRows(control.id, rows);
    dialog->SelectRow(control.id, 0);
  }

  const DialogTemplate& plan_;
};

/// The widgets that Tab visits from the first stop on until it comes back.
std::vector<QWidget*> Visited(QWidget* first) {
  std::vector<QWidget*> visited;
  first->setFocus();
  for (QWidget* at = QApplication::focusWidget(); at != nullptr && visited.size() < 200;
       at = QApplication::focusWidget()) {
    if (!visited.empty() && at == visited.front()) break;
    visited.push_back(at);
    QTest::keyClick(at, Qt::Key_Tab);
  }
  return visited;
}

/// The stops that Tab is to visit: enabled ones, of a set of radios the checked one.
std::vector<QWidget*> Expected(const Panel& panel) {
  std::vector<QWidget*> stops;
  for (QWidget* const stop : panel.TabStops()) {
    const auto* const radio = qobject_cast<QAbstractButton*>(stop);
    const bool stands_for_set = radio == nullptr || radio->group() == nullptr || radio->isChecked();
    if (stop->isEnabled() && stop->isVisible() && stands_for_set) stops.push_back(stop);
  }
  return stops;
}

void CheckTabs(const Panel& panel, int dialog) {
  const std::vector<QWidget*> expected = Expected(panel);
  if (expected.empty()) return;
  const std::vector<QWidget*> visited = Visited(expected.front());
  std::vector<QWidget*> on_panel;
  std::ranges::copy_if(visited, std::back_inserter(on_panel),
                       [&](const QWidget* widget) { return panel.isAncestorOf(widget); });
  EXPECT_EQ(on_panel, expected) << dialog;
}

/// Alt and a label's letter reach what the letter stands for.
void CheckMnemonics(const Panel& panel, int dialog) {
  for (const FormControl& control : panel.controls()) {
    const char16_t letter = platform::Mnemonic(control.plan->label);
    if (letter == 0 || control.plan->kind != Kind::kLabel) continue;
    QWidget* const field = WidgetOf(panel, control.plan->buddy);
    ASSERT_EQ(qobject_cast<QLabel*>(control.widget)->buddy(), field) << dialog << ": " << control.plan->buddy;
    if (!field->isVisible() || (field->focusPolicy() & Qt::TabFocus) == 0) continue;
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(letter - u'a' + Qt::Key_A), Qt::AltModifier);
    EXPECT_TRUE(field->hasFocus()) << dialog << ": " << static_cast<char>(letter);
  }
}

void CheckNothingIsCut(const Panel& panel, int dialog) {
  for (const FormControl& control : panel.controls()) {
    if (control.widget == nullptr || !control.widget->isVisible()) continue;
    const QSize least = control.widget->minimumSizeHint();
    const bool fits = control.widget->width() >= least.width() && control.widget->height() >= least.height();
    EXPECT_TRUE(fits) << dialog << ": " << control.plan->id;
    const QRect place(control.widget->mapTo(&panel, QPoint(0, 0)), control.widget->size());
    EXPECT_TRUE(panel.rect().contains(place)) << dialog << ": " << control.plan->id;
  }
}

void CheckPanel(const Panel& panel, int dialog) {
  CheckNothingIsCut(panel, dialog);
  CheckMnemonics(panel, dialog);
  CheckTabs(panel, dialog);
}

class EveryDialog : public ::testing::TestWithParam<int> {};

TEST_P(EveryDialog, IsReachedByKeysAndNothingIsCut) {
  const int number = GetParam();
  const DialogTemplate* const plan = BuiltResources().Template(static_cast<uint16_t>(number));
  ASSERT_NE(plan, nullptr);
  FillingLogic logic(*plan);
  if (plan->size == platform::SizeClass::kPage) {
    PropertySheet sheet(BuiltResources());
    ASSERT_TRUE(sheet.AddPage({static_cast<uint16_t>(number), &logic, true}));
    sheet.Open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet));
    Photograph(sheet, std::to_string(number));
    EXPECT_EQ(sheet.panel(0)->visibleRegion().boundingRect(), sheet.panel(0)->rect()) << "the page scrolls";
    CheckPanel(*sheet.panel(0), number);
    return;
  }
  ModalWindow window(nullptr, BuiltResources(), *plan, logic);
  QTimer::singleShot(0, &window, [&] {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    Photograph(window, std::to_string(number));
    CheckPanel(window.panel(), number);
    window.close();
  });
  EXPECT_EQ(window.Run(), number == DialogName("organize-settings") ? platform::IDOK : platform::IDCANCEL);
}

std::vector<int> AllDialogs() {
  std::vector<int> numbers;
  for (const auto& [number, plan] : test::Templates()) numbers.push_back(number);
  return numbers;
}

INSTANTIATE_TEST_SUITE_P(Desk, EveryDialog, ::testing::ValuesIn(AllDialogs()),
                         [](const auto& instance) { return std::to_string(instance.param); });

}  // namespace
}  // namespace heron::desk
