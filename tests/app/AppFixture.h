#pragma once

#include <gtest/gtest.h>

#include <QEvent>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

#include "app/AppDelegate.h"
#include "support/ManualClock.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// Calls `action` for each event of one type that the watched object gets.
class OnEvent : public QObject {
 public:
  OnEvent(QEvent::Type type, std::function<void()> action, QObject* parent)
      : QObject(parent), m_type(type), m_action(std::move(action)) {}

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == m_type) m_action();
    return false;
  }

 private:
  QEvent::Type m_type;
  std::function<void()> m_action;
};

/// A delegate with settings of its own, in a temporary folder.
class AppDelegateTest : public testing::Test {
 protected:
  static TerminalLaunch child(std::vector<std::string> mode) {
    return {.shell = Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = std::move(mode), .icon = "terminal"},
            .restart = TerminalController::Restart::Never,
            .workingDirectory = {}};
  }
  static std::string shown(TerminalWindow& window) {
    const TextStorage& storage = window.contentViewController().rootView().textView().textStorage();
    return storage.text({}, storage.end());
  }
  static bool waitForText(TerminalWindow& window, const std::string& text) {
    return waitFor([&] { return shown(window).find(text) != std::string::npos; });
  }
  TerminalWindow& window(std::size_t index) { return *delegate.windows().at(index); }

  QTemporaryDir folder;
  std::string file = folder.filePath(QStringLiteral("zolt.ini")).toStdString();
  UserDefaults defaults{file};
  Config config{defaults};
  int prepared = 0;
  ManualClock delegateClock;
  AppDelegate delegate{config, defaults, [this](TerminalWindow&) { ++prepared; }, processEnvironment(), delegateClock};
};

}  // namespace zolt::test
