// The main of every test program that needs Qt: an application object, and no warning of Qt's goes unnoticed.
#include <gtest/gtest.h>

#include <QApplication>
#include <QtGlobal>

namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& message) {
  const std::string text = message.toStdString();
  // The offscreen platform has no window manager and says so, and a machine without a login session has no runtime
  // folder; nothing is wrong with either.
  const bool expected =
      text.starts_with("This plugin does not support") || text.starts_with("QStandardPaths: XDG_RUNTIME_DIR not set");
  if (type == QtWarningMsg || type == QtCriticalMsg) {
    if (!expected) ADD_FAILURE() << "Qt warned: " << text;
  } else if (type == QtFatalMsg) {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  if (testing::FLAGS_gtest_list_tests) return RUN_ALL_TESTS();
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(failOnWarning);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
