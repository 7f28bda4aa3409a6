#include <csignal>
#include <fstream>

#include "brew/BrewFixture.h"

namespace zolt {
namespace {

using Names = std::vector<std::string>;

// Commands for details that hang, so that a test can see what completes in spite of them.
class BrewDetailsTest : public test::BrewTest {
 protected:
  void TearDown() override {
    manager.reset();
    test::waitFor([] {
      killCommands(test::brewCommands());
      return test::brewCommands().empty();
    });
    BrewTest::TearDown();
  }

  void makeManagerWithHangingDetails() {
    std::string names;
    for (int i = 0; i < 20; ++i) {
      names += "package" + std::to_string(i) + "\n";
    }
    write("list-formula.txt", names);
    write("list-cask.txt", names);
    qputenv("FAKEBREW_MODE_info", "hangs");
    makeManager();
    ASSERT_TRUE(test::waitFor([&] { return details() == kWidth; }));
  }
  // Together with the children that hold their pipes.
  static void killCommands(const std::vector<pid_t>& commands) {
    for (const pid_t command : commands) {
      for (const pid_t child : test::childProcesses(command)) {
        kill(child, SIGKILL);
      }
      kill(command, SIGKILL);
    }
  }
  int details() const {
    return static_cast<int>(
        std::ranges::count_if(calls(), [](const auto& call) { return call.starts_with("[info]"); }));
  }

  const int kWidth = BrewManager::detailsAtOnce();
};

TEST_F(BrewDetailsTest, AreRequestedAFewAtATime) {
  makeManagerWithHangingDetails();
  EXPECT_LE(kWidth, 4);
  test::runLoopFor(std::chrono::milliseconds(300));
  EXPECT_EQ(details(), kWidth);
  const std::vector<pid_t> hanging = test::brewCommands();
  ASSERT_EQ(hanging.size(), static_cast<std::size_t>(kWidth));
  ASSERT_TRUE(test::waitFor([&] { return !test::childProcesses(hanging.front()).empty(); }));
  killCommands({hanging.front()});
  EXPECT_TRUE(test::waitFor([&] { return details() == kWidth + 1; }));
}

TEST_F(BrewDetailsTest, DoNotDelayAnythingElse) {
  makeManagerWithHangingDetails();
  manager->search(QStringLiteral("x"));
  manager->install(makeBrewPackage(QStringLiteral("y"), std::nullopt, std::nullopt, BrewPackageType::Formula));
  EXPECT_TRUE(test::waitFor([&] {
    const Names all = calls();
    return std::ranges::count(all, "[search][x]") == 1 && std::ranges::count(all, "[install][y]") == 1 &&
           std::ranges::count(all, "[outdated][--json]") == 2;
  }));
  EXPECT_TRUE(test::waitFor([&] { return details() == 2 * kWidth; })) << "those of another refresh";
}

}  // namespace
}  // namespace zolt
