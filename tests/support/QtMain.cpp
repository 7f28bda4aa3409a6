// The main of every test program that needs Qt: an application object, and any unexpected Qt warning is a failure.
#include <gtest/gtest.h>

#include <QApplication>
#include <QtGlobal>

#include "support/TestEnvironment.h"

// The sanitizers read their suppressions before main() runs: from here in this program, from the environment in its
// children.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options() {
  return ZOLT_TSAN_OPTIONS;
}
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options() {
  return ZOLT_LSAN_OPTIONS;
}

namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& message) {
  const std::string text = message.toStdString();
  // The offscreen platform has no window manager and warns about it, which is harmless.
  const bool expected = text.starts_with("This plugin does not support");
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
  const zolt::test::TestEnvironment environment;
  qInstallMessageHandler(failOnWarning);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  if (!zolt::test::TestEnvironment::hasFontFamily()) return 1;
  return RUN_ALL_TESTS();
}
