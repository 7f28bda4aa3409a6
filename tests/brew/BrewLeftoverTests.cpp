#include <QFileDevice>
#include <csignal>
#include <cstdlib>

#include "brew/BrewCommand.h"
#include "brew/BrewFixture.h"

namespace zolt {
namespace {

// A brew that is a shell script: its commands leave processes behind and write their PIDs to files.
class BrewLeftoverTest : public test::BrewTest {
 protected:
  void SetUp() override {
    BrewTest::SetUp();
    // A death test runs this test again in another process with another folder, so both use this one.
    if (!qEnvironmentVariableIsSet("ZOLT_TEST_LEFT")) qputenv("ZOLT_TEST_LEFT", folder.path().toUtf8());
  }
  void TearDown() override {
    qunsetenv("ZOLT_TEST_LEFT");
    BrewTest::TearDown();
  }

  void makeManagerOf(const char* script) {
    write("brew", std::string("#!/bin/sh\n") + script + "\n");
    const QString path = folder.filePath(QStringLiteral("brew"));
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    manager = std::make_unique<BrewManager>(std::vector<std::string>{path.toStdString()}, WorkerQueue::utility());
  }
  // The processes that the three commands of a refresh have left running.
  static std::vector<pid_t> leftovers() {
    std::vector<pid_t> pids;
    const QDir left(qEnvironmentVariable("ZOLT_TEST_LEFT"));
    const QStringList names = left.entryList({QStringLiteral("left-*")});
    for (const QString& name : names) {
      const std::string content = test::fileContent(left.filePath(name).toStdString());
      if (!content.empty()) pids.push_back(std::stoi(content));
    }
    return pids;
  }
  static bool waitForLeftovers() {
    return test::waitFor([] { return leftovers().size() == 3; });
  }
  static bool commandsHaveEnded() {
    return test::waitFor([] { return std::ranges::none_of(test::brewCommands(), test::processRuns); });
  }
  static bool allAreGone() {
    return test::waitFor([] { return std::ranges::none_of(leftovers(), test::processRuns); });
  }
};

// A script's background job ignores the interrupt that ends the script.
TEST_F(BrewLeftoverTest, EndsABackgroundJobOfAnInterruptedCommand) {
  EXPECT_EXIT(
      {
        makeManagerOf("sleep 3600 & echo $! >$ZOLT_TEST_LEFT/left-$$; wait");
        const bool started = waitForLeftovers();
        endBrewCommands();
        _exit(started && allAreGone() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(BrewLeftoverTest, EndsAProcessThatHoldsThePipeOfAFinishedCommand) {
  EXPECT_EXIT(
      {
        makeManagerOf("sleep 3600 & echo $! >$ZOLT_TEST_LEFT/left-$$");
        const bool started = waitForLeftovers() && commandsHaveEnded();
        endBrewCommands();
        _exit(started && allAreGone() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(BrewLeftoverTest, EndsEverythingIfTheProcessCallsExit) {
  EXPECT_EXIT(
      {
        makeManagerOf("trap '' INT; sleep 3600 & echo $! >$ZOLT_TEST_LEFT/left-$$; wait");
        if (!waitForLeftovers()) _exit(1);
        std::exit(7);
      },
      testing::ExitedWithCode(7), "");
  EXPECT_EQ(leftovers().size(), 3U);
  EXPECT_TRUE(allAreGone());
}

TEST_F(BrewLeftoverTest, HasNoInput) {
  makeManagerOf("read line; echo \"$? $line\"");
  manager->search(QStringLiteral("x"));
  ASSERT_TRUE(test::waitFor([&] { return !manager->searchResults().empty(); }));
  EXPECT_EQ(manager->searchResults().front().name, QStringLiteral("1")) << "end of file at once";
}

}  // namespace
}  // namespace zolt
