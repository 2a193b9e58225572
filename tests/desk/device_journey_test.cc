// The printer's sheet in its window, and a device on this machine that it asks.
#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

#include "apps/desk/desk.h"
#include "desk_test.h"
#include "entry/exports.h"
#include "platform/api/handles.h"

namespace heron::desk {
namespace {

constexpr int kPatience = 60000;  ///< milliseconds, on a machine that is busy with other things

QByteArray Command(const QStringList& arguments) {
  QProcess process;
  process.start(QStringLiteral(HERON_BIN), arguments);
  EXPECT_TRUE(process.waitForFinished(kPatience));
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

/// A device with a description, as long as the test runs.
class SampleDevice {
 public:
  explicit SampleDevice(const QByteArray& description) {
    QFile file(folder_.filePath(QStringLiteral("device.txt")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(description) == description.size());
    file.close();
    process_.start(QStringLiteral(HERON_SAMPLE_DEVICE), {file.fileName()});
    EXPECT_TRUE(process_.waitForReadyRead(kPatience));
    address_ = QString::fromUtf8(process_.readLine()).trimmed();
  }
  ~SampleDevice() {
    process_.terminate();
    process_.waitForFinished(kPatience);
  }
  SampleDevice(const SampleDevice&) = delete;
  SampleDevice& operator=(const SampleDevice&) = delete;

  QString address() const { return address_; }

 private:
  QTemporaryDir folder_;
  QProcess process_;
  QString address_;
};

/// A port of this machine that takes what comes and says nothing.
class SilentPort {
 public:
  SilentPort() : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    auto* const address = reinterpret_cast<sockaddr*>(&place);
    EXPECT_EQ(bind(socket_, address, size), 0);
    EXPECT_EQ(getsockname(socket_, address, &size), 0);
    port_ = ntohs(place.sin_port);
  }
  ~SilentPort() { close(socket_); }
  SilentPort(const SilentPort&) = delete;
  SilentPort& operator=(const SilentPort&) = delete;

  QString address() const { return QStringLiteral("127.0.0.1:%1").arg(port_); }

 private:
  int socket_;
  uint16_t port_ = 0;
};

class DeviceJourney : public ::testing::Test {
 protected:
  DeviceJourney() {
    static int number = 0;
    queue_ = QStringLiteral("Hall %1").arg(++number);
    name_ = queue_.toStdU16String();
    Command({QStringLiteral("printer"), QStringLiteral("add"), queue_});
    printer_ = platform::OpenPrinterFor(name_.c_str(), platform::PRINTER_ALL_ACCESS);
    watch_.setInterval(20);
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { Look(); });
    watch_.start();
  }

  SheetEnd Run(const std::function<void(Panel&, PropertySheet&)>& steps) {
    platform::DEVICEPROPERTYHEADER header{
        .cbSize = sizeof(header), .Flags = 0, .hPrinter = printer_.get(), .pszPrinterName = name_.data()};
    return RunSheet({DrvDevicePropertySheets, &header, platform::FromUtf8(HERON_RESOURCE_MODULE),
                     [&](PropertySheet& sheet) {
                       sheet.painted = [&, steps] {
                         EXPECT_TRUE(QTest::qWaitForWindowActive(&sheet));
                         steps(*sheet.panel(0), sheet);
                         if (sheet.isVisible()) sheet.reject();
                       };
                     },
                     [](bool) {}});
  }

  static void Enter(Panel& page, const QString& address) {
    QWidget* const field = KeysOf(page, "networkAddress");
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, address);
  }
  static std::string Chosen(Panel& page, ControlName id) {
    return qobject_cast<QComboBox*>(WidgetOf(page, id))->currentText().toStdString();
  }

  QString queue_;       ///< name of the queue
  QStringList answers;  ///< of the messages to come, by the name of a button
  QString cancels;      ///< a button of the busy window that is pressed

  /// Texts of the messages since the last call.
  QString Shown() { return std::exchange(shown_, {}); }

 private:
  /// The timer goes on in the windows over the sheet.
  void Look() {
    QWidget* const window = QApplication::activeModalWidget();
    if (window == nullptr || window->inherits("heron::desk::PropertySheet")) return;
    const bool busy = window->objectName() == QStringLiteral("busy");
    Photograph(*window, busy ? "device-busy" : "device-message-" + std::to_string(answers.size()));
    const QString wanted = busy ? cancels : answers.isEmpty() ? QStringLiteral("OK") : answers.first();
    for (QPushButton* const button : window->findChildren<QPushButton*>()) {
      if (wanted.isEmpty() || !button->isEnabled() || button->text().remove(u'&') != wanted) continue;
      if (!busy) {
        for (const QLabel* const label : window->findChildren<QLabel*>()) shown_ += label->text();
        if (!answers.isEmpty()) answers.removeFirst();
      }
      return button->click();
    }
  }

  QTimer watch_;
  std::u16string name_;
  platform::UniquePrinter printer_;
  QString shown_;
};

TEST_F(DeviceJourney, WhatADeviceReportsIsShownAndKept) {
  const SampleDevice device("model \"Varnell 70MX-2\"\ninput Tray3\nfinisher \"Floor-type finisher\" stacker 2 3\n");
  const auto query = [&](Panel& page, PropertySheet& sheet) {
    Photograph(sheet, "device-page-before");
    EXPECT_EQ(Chosen(page, "lpOutputUnit"), "Not installed");
    Enter(page, device.address());
    answers = {QStringLiteral("Yes"), QStringLiteral("OK")};
    Click(page, "getDeviceSettings");
    EXPECT_TRUE(answers.isEmpty());
    EXPECT_TRUE(Shown().contains(QStringLiteral("Output unit: Not installed")));
    EXPECT_EQ(Chosen(page, "lpOutputUnit"), "Floor-type finisher, 2 and 3 holes");
    Photograph(sheet, "device-page-after");
    sheet.findChild<QDialogButtonBox*>(QString(), Qt::FindDirectChildrenOnly)->button(QDialogButtonBox::Ok)->click();
  };
  EXPECT_EQ(Run(query), SheetEnd::kConfirmed);
  const QByteArray answer = Command(
      {QStringLiteral("device"), QStringLiteral("show"), QStringLiteral("-p"), queue_, QStringLiteral("--json")});
  EXPECT_EQ(QJsonDocument::fromJson(answer).object()[QStringLiteral("address")].toString(), device.address());
  // What the finisher is for can be chosen now.
  Command({QStringLiteral("settings"), QStringLiteral("-p"), queue_, QStringLiteral("-o"),
           QStringLiteral("Staple_Check=1"), QStringLiteral("--yes")});
}

/// Where nothing answers the window stays alive and the wait can be cancelled. If this machine is too busy for the
/// Cancel to come in time, the query ends with a refusal, which changes nothing either.
TEST_F(DeviceJourney, AQueryThatWaitsCanBeCancelled) {
  const SilentPort silent;
  EXPECT_EQ(Run([&](Panel& page, PropertySheet&) {
              Enter(page, silent.address());
              answers = {QStringLiteral("Yes")};
              cancels = QStringLiteral("Cancel");
              Click(page, "getDeviceSettings");
              EXPECT_EQ(Chosen(page, "lpOutputUnit"), "Not installed");
              EXPECT_TRUE(answers.isEmpty());
            }),
            SheetEnd::kCancelled);
}

}  // namespace
}  // namespace heron::desk
