// The tests of the desk: on a display, and with a store of their own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const QTemporaryDir home;
  qputenv("HERON_HOME", home.path().toUtf8());
  qputenv("HERON_COUNTRY", "49");
  QApplication::setStyle(QStringLiteral("fusion"));
  const QApplication application(argc, argv);
  if (qEnvironmentVariableIsSet("HERON_DARK")) QApplication::setPalette(QPalette(QColor(45, 45, 48)));
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
