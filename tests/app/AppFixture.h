#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/AppDelegate.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt::test {

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
    return storage.text(0, storage.size());
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
  AppDelegate delegate{config, defaults, [this](TerminalWindow&) { ++prepared; }};
};

}  // namespace zolt::test
