// What the pages of their own drawings and lists need of a window: pointer, keys in lists, rows, timer, busy work.
#include <QAbstractItemView>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTreeView>
#include <atomic>

#include "apps/desk/row_model.h"
#include "apps/desk/screen_canvas.h"
#include "desk_test.h"
#include "platform/api/message_box.h"

namespace heron::desk {
namespace {

using platform::ListKey;
using platform::ListRow;
using platform::PointerAction;

constexpr int kPatience = 20000;  // milliseconds that a loaded machine may take

constexpr platform::ControlId kRows = 10, kPlace = 11, kAngle = 12, kAngleSpin = 13, kSlider = 14, kPlain = 15;

constexpr std::string_view kTemplate = R"(dialog 99 medium "Seam"
column
group - "All"
  listview 10 columns=Pages:100,Tray:60 several moves
  listview 15 columns=Name:100
  place 11 size=60x40
  number 12
  + spin 13 for=12
  slider 14
end
buttons
  button 1 "OK"
  button 2 "Cancel"
)";

class SeamLogic final : public RecordingLogic {
 public:
  std::optional<ListKey> taken;  ///< the key that the list doesn't get
  std::function<void()> on_timer = [] {};

  void RowClicked(platform::ControlId, int row) override { events.push_back("clicked " + std::to_string(row)); }
  bool TakesListKey(platform::ControlId, ListKey key) override {
    events.push_back("key " + std::to_string(static_cast<int>(key)));
    return key == taken;
  }
  void RowMoved(platform::ControlId, int from, int to) override {
    events.push_back("moved " + std::to_string(from) + " to " + std::to_string(to));
  }
  void PointerMoved(platform::ControlId, const platform::PointerEvent& event) override {
    constexpr const char* kNames[] = {"move", "press", "release"};
    events.push_back(std::string(kNames[static_cast<int>(event.action)]) + (event.held ? " held " : " ") +
                     std::to_string(event.at.x) + "," + std::to_string(event.at.y));
  }
  void TimerFired() override { on_timer(); }
};

class Seam : public ::testing::Test {
 protected:
  void Run(const std::function<void(Panel&)>& steps) {
    std::string error;
    const auto plan = platform::ParseDialogTemplate(kTemplate, &error);
    ASSERT_TRUE(plan) << error;
    ModalWindow window(nullptr, BuiltResources(), *plan, logic);
    QTimer::singleShot(0, &window, [&] {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
      Fill(window.panel());
      logic.Take();
      steps(window.panel());
      Photograph(window, "seam");
      window.close();
    });
    window.Run();
  }
  static void Fill(Panel& panel) {
    const ListRow rows[] = {{.text = u"1-3", .cells = {u"Tray 1"}},
                            {.text = u"4", .cells = {}, .grey = true},
                            {.text = u"5", .cells = {}, .color = platform::COLORREF{0x0000FF}},
                            {u"6", {}}};
    panel.SetRows(kRows, rows);
    panel.SetRows(kPlain, rows);
  }
  static QAbstractItemView* List(Panel& panel, platform::ControlId id = kRows) {
    return qobject_cast<QAbstractItemView*>(WidgetOf(panel, id));
  }
  static QPoint Middle(const QAbstractItemView& list, int row) {
    return list.visualRect(list.model()->index(row, 0)).center();
  }

  SeamLogic logic;
};

TEST_F(Seam, APlaceReportsThePointerAlsoOutsideWhileTheButtonIsHeld) {
  Run([&](Panel& panel) {
    QWidget* const place = WidgetOf(panel, kPlace);
    const platform::RECT area = panel.PlaceArea(kPlace);
    EXPECT_EQ(area.right, place->width());
    const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
      QMouseEvent event(type, at, place->mapToGlobal(at), button, held, Qt::NoModifier);
      QApplication::sendEvent(place, &event);
      return logic.Take();
    };
    EXPECT_EQ(send(QEvent::MouseMove, {3, 4}, Qt::NoButton, Qt::NoButton), "move 3,4");
    EXPECT_EQ(send(QEvent::MouseButtonPress, {5, 6}, Qt::RightButton, Qt::RightButton), "");
    EXPECT_EQ(send(QEvent::MouseButtonPress, {5, 6}, Qt::LeftButton, Qt::LeftButton), "press held 5,6");
    EXPECT_EQ(send(QEvent::MouseMove, {-7, 99}, Qt::NoButton, Qt::LeftButton), "move held -7,99");
    EXPECT_EQ(send(QEvent::MouseButtonRelease, {8, 9}, Qt::LeftButton, Qt::NoButton), "release 8,9");
    EXPECT_EQ(send(QEvent::MouseButtonRelease, {8, 9}, Qt::LeftButton, Qt::NoButton), "") << "its press wasn't here";
    panel.SetCursor(kPlace, platform::kAimCursor);
    EXPECT_EQ(place->cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(place->cursor().hotSpot(), QPoint(16, 16));
    panel.SetCursor(kPlace, platform::kArrowCursor);
    EXPECT_EQ(place->cursor().shape(), Qt::ArrowCursor);
    panel.Enable(kPlace, false);
    QTest::mouseClick(place, Qt::LeftButton);
    EXPECT_EQ(logic.Take(), "");
  });
}

TEST_F(Seam, AListGetsTheKeysThatItsLogicLeaves) {
  Run([&](Panel& panel) {
    QAbstractItemView* const list = List(panel);
    list->setFocus();
    panel.SelectRow(kRows, 1);
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
      QTest::keyClick(list, key, with);
      return logic.Take();
    };
    const auto key = [](ListKey number) { return "key " + std::to_string(static_cast<int>(number)); };
    EXPECT_EQ(press(Qt::Key_Up), key(ListKey::kUp) + ", row 10");
    EXPECT_EQ(panel.SelectedRow(kRows), 0);
    logic.taken = ListKey::kDown;
    EXPECT_EQ(press(Qt::Key_Down), key(ListKey::kDown));
    EXPECT_EQ(panel.SelectedRow(kRows), 0);
    EXPECT_EQ(press(Qt::Key_Delete), key(ListKey::kDelete));
    EXPECT_EQ(press(Qt::Key_V, Qt::ControlModifier), key(ListKey::kPaste));
    EXPECT_EQ(press(Qt::Key_Up, Qt::ControlModifier), "") << "goes to another row without selecting it";
  });
}

TEST_F(Seam, ClicksOnRowsAndHeadingsComeAfterWhatTheySelect) {
  Run([&](Panel& panel) {
    QAbstractItemView* const list = List(panel, kPlain);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, Middle(*list, 2));
    EXPECT_EQ(logic.Take(), "row 15, clicked 2");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, Middle(*list, 2));
    EXPECT_EQ(logic.Take(), "clicked 2");
    const QPoint below(5, list->visualRect(list->model()->index(3, 0)).bottom() + 4);
    if (list->viewport()->rect().contains(below)) {
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, below);
      EXPECT_NE(logic.Take().find("clicked -1"), std::string::npos);
    }
    QTest::mouseClick(qobject_cast<QTreeView*>(list)->header()->viewport(), Qt::LeftButton, {}, QPoint(10, 5));
    EXPECT_EQ(logic.Take(), "heading0 15");
  });
}

TEST_F(Seam, ADraggedRowIsToBecomeTheRowWhereItIsDropped) {
  Run([&](Panel& panel) {
    const auto drag = [&](QAbstractItemView* list, int from, QPoint to) {
      QTest::mousePress(list->viewport(), Qt::LeftButton, {}, Middle(*list, from));
      for (const QPoint at : {Middle(*list, from) + QPoint(0, 30), to}) {
        QMouseEvent event(QEvent::MouseMove, at, list->viewport()->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(list->viewport(), &event);
      }
      Photograph(*panel.window(), "drag");
      logic.Take();
      QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, to);
      return logic.Take();
    };
    QAbstractItemView* const list = List(panel);
    const QPoint up(0, -3), down(0, 3);
    EXPECT_EQ(drag(list, 0, Middle(*list, 2) + down), "moved 0 to 2");
    EXPECT_EQ(drag(list, 0, Middle(*list, 2) + up), "moved 0 to 1");
    EXPECT_EQ(drag(list, 3, Middle(*list, 0) + up), "moved 3 to 0");
    EXPECT_EQ(drag(list, 1, Middle(*list, 1) + down), "") << "where it was";
    QAbstractItemView* const fixed = List(panel, kPlain);
    EXPECT_EQ(drag(fixed, 0, Middle(*fixed, 2) + down).find("moved"), std::string::npos);
    const auto* const model = list->model();
    EXPECT_EQ(model->index(0, 0).data().toString(), QStringLiteral("1-3")) << "the logic moves, not the list";
  });
}

TEST_F(Seam, RowsHaveTheirOwnColoursAndSeveralCanBeSelected) {
  Run([&](Panel& panel) {
    const auto* const model = List(panel)->model();
    const auto color = [&](int row) { return model->index(row, 0).data(Qt::ForegroundRole).value<QBrush>().color(); };
    EXPECT_EQ(color(1), List(panel)->palette().color(QPalette::Disabled, QPalette::Text));
    EXPECT_EQ(color(2), QColor(Qt::red));
    EXPECT_FALSE(model->index(0, 0).data(Qt::ForegroundRole).isValid());
    EXPECT_TRUE((model->flags(model->index(1, 0)) & Qt::ItemIsSelectable) != 0) << "grey, but there";
    const int rows[] = {3, 1};
    panel.SelectRows(kRows, rows);
    EXPECT_EQ(panel.SelectedRows(kRows), (std::vector{1, 3}));
    const std::u16string family = BuiltResources().Text(21002).toStdU16String();  // any name but the window's
    const ListRow lettered[] = {{.text = u"a", .cells = {}, .font = family}};
    panel.SetRows(kRows, lettered);
    EXPECT_EQ(model->index(0, 0).data(Qt::FontRole).value<QFont>().family().toStdU16String(), family);
  });
}

TEST_F(Seam, ASliderStepsAndASpinGoesBelowZero) {
  Run([&](Panel& panel) {
    panel.SetRange(kSlider, -90, 90);
    panel.SetSteps(kSlider, {.line = 1, .page = 10, .tick = 10});
    panel.SetPosition(kSlider, 0);
    auto* const slider = qobject_cast<QSlider*>(WidgetOf(panel, kSlider));
    EXPECT_EQ(slider->tickInterval(), 10);
    QTest::keyClick(slider, Qt::Key_Left);
    QTest::keyClick(slider, Qt::Key_PageDown);
    EXPECT_EQ(panel.Position(kSlider), -11);
    panel.SetRange(kAngleSpin, -90, 90);
    panel.SetPosition(kAngleSpin, -89);
    QTest::keyClick(KeysOf(panel, kAngle), Qt::Key_Down);
    QTest::keyClick(KeysOf(panel, kAngle), Qt::Key_Down);
    EXPECT_EQ(panel.Position(kAngleSpin), -90);
    QTest::keyClicks(KeysOf(panel, kAngle), QStringLiteral("-9"));
    EXPECT_EQ(platform::ToUtf8(panel.Text(kAngle)), "-9");
  });
}

TEST_F(Seam, PixelsOfAPictureAreThoseThatACanvasDraws) {
  Run([&](Panel& panel) {
    constexpr uint32_t kPicture = 10200;
    const auto image = panel.Pixels(kPicture);
    ASSERT_TRUE(image);
    ASSERT_EQ(image->pixels.size(), static_cast<size_t>(image->width * image->height));
    QImage surface(image->width + 4, image->height + 4, QImage::Format_ARGB32_Premultiplied);
    surface.fill(Qt::transparent);
    QPainter painter(&surface);
    ScreenCanvas canvas(painter, surface.width(), surface.height(), &BuiltResources().Pictures());
    EXPECT_TRUE(platform::DrawResourceAt(canvas, kPicture, {3, 2}));
    EXPECT_FALSE(platform::DrawResourceAt(canvas, 1, {3, 2}));
    painter.end();
    int differing = 0, drawn = 0;
    for (int y = 0; y < image->height; ++y) {
      for (int x = 0; x < image->width; ++x) {
        const uint32_t pixel = image->pixels[static_cast<size_t>(y * image->width + x)];
        drawn += pixel >> 24 != 0;
        differing += (pixel >> 24) != static_cast<uint32_t>(qAlpha(surface.pixel(x + 3, y + 2)));
      }
    }
    EXPECT_GT(drawn, 0);
    EXPECT_EQ(differing, 0);
    EXPECT_FALSE(panel.Pixels(1));
  });
}

TEST_F(Seam, ATimerFiresUntilItIsStopped) {
  Run([&](Panel& panel) {
    int fired = 0;
    logic.on_timer = [&] {
      if (++fired == 3) panel.SetTimer(0);
    };
    panel.SetTimer(5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return fired == 3; }, kPatience));
    QTest::qWait(50);
    EXPECT_EQ(fired, 3);
  });
}

QWidget* BusyWindow() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QStringLiteral("busy") && window->isVisible()) return window;
  }
  return nullptr;
}

TEST_F(Seam, WorkThatWaitsLeavesTheWindowAliveAndCanBeCancelled) {
  Run([&](Panel& panel) {
    EXPECT_TRUE(panel.RunBusy({u"Query", u"Asking", [](std::stop_token) {}}));
    EXPECT_EQ(BusyWindow(), nullptr) << "quick work shows nothing";
    int fired = 0;
    logic.on_timer = [&] {
      ++fired;
      QWidget* const window = BusyWindow();
      if (window == nullptr) return;
      auto* const button = window->findChild<QPushButton*>();
      if (!button->isEnabled()) return;
      EXPECT_FALSE(window->findChildren<QLabel*>().isEmpty());
      Photograph(*window, "busy");
      window->close();
      EXPECT_TRUE(window->isVisible()) << "until the work is done";
    };
    panel.SetTimer(10);
    std::atomic<bool> stopped = false;
    const bool done = panel.RunBusy({u"Query", u"Asking the printer for its options.", [&](std::stop_token stop) {
                                       while (!stop.stop_requested()) std::this_thread::yield();
                                       stopped = true;
                                     }});
    EXPECT_FALSE(done);
    EXPECT_TRUE(stopped);
    EXPECT_GT(fired, 0) << "the event loop ran";
    EXPECT_EQ(BusyWindow(), nullptr);
    panel.SetTimer(0);
    EXPECT_THROW(panel.RunBusy({u"", u"", [](std::stop_token) { throw std::runtime_error("no device"); }}),
                 std::runtime_error);
  });
}

TEST_F(Seam, TheClipboardGivesLinesOfOneKindAndNoFontIsLeftOut) {
  Run([&](Panel& panel) {
    QApplication::clipboard()->setText(QStringLiteral("a\tb\r\nc\rd"));
    EXPECT_EQ(panel.ClipboardText(), u"a\tb\nc\nd");
    EXPECT_FALSE(panel.FontFamilies().empty());
  });
}

}  // namespace
}  // namespace heron::desk
