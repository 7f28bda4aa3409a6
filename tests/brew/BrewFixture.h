#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "brew/BrewCommands.h"
#include "brew/BrewManager.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// A fake brew that prints what the test tells it to, and the manager that runs it.
class BrewTest : public testing::Test {
 protected:
  void SetUp() override {
    qputenv("FAKEBREW_DATA", folder.path().toUtf8());
    qputenv("FAKEBREW_LOG", folder.filePath(QStringLiteral("log")).toUtf8());
    QDir(folder.path()).mkdir(QStringLiteral("info"));
  }
  void TearDown() override {
    for (const char* name : {"FAKEBREW_MODE", "FAKEBREW_MODE_search", "FAKEBREW_MODE_list", "FAKEBREW_MODE_info",
                             "FAKEBREW_MODE_outdated", "FAKEBREW_MODE_install", "FAKEBREW_MODE_upgrade"}) {
      qunsetenv(name);
    }
  }

  void write(const std::string& name, const std::string& content) {
    QFile file(folder.filePath(QString::fromStdString(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content.data(), static_cast<qint64>(content.size()));
  }
  void makeManager() {
    manager = std::make_unique<BrewManager>(std::vector<std::string>{ZOLT_FAKE_BREW}, WorkerQueue::utility());
  }
  /// A manager that has finished its first refresh.
  void makeIdleManager() {
    makeManager();
    ASSERT_TRUE(waitUntilIdle());
    forgetCalls();
  }
  /// Waits until nothing is being loaded and no command has run for a while.
  bool waitUntilIdle() {
    auto quietSince = std::chrono::steady_clock::now();
    return waitFor([&] {
      const auto now = std::chrono::steady_clock::now();
      if (!test::brewCommands().empty() || manager->isLoading()) quietSince = now;
      return now - quietSince > std::chrono::milliseconds(300);
    });
  }
  /// The calls so far, sorted.
  std::vector<std::string> calls() const {
    std::vector<std::string> lines;
    std::istringstream log(fileContent(folder.filePath(QStringLiteral("log")).toStdString()));
    for (std::string line; std::getline(log, line);) {
      lines.push_back(line);
    }
    std::ranges::sort(lines);
    return lines;
  }
  void forgetCalls() { QFile::remove(folder.filePath(QStringLiteral("log"))); }
  bool waitForStatus(const char* status) {
    return waitFor([&] { return manager->status() == QLatin1String(status); });
  }

  QTemporaryDir folder;
  std::unique_ptr<BrewManager> manager;
};

inline std::vector<std::string> namesOf(const std::vector<BrewPackage>& packages) {
  std::vector<std::string> names;
  for (const BrewPackage& package : packages) {
    names.push_back(package.name.toStdString());
  }
  return names;
}

}  // namespace zolt::test
