#include <unistd.h>

#include "brew/BrewCommand.h"
#include "brew/OneAtATime.h"

namespace zolt {
namespace {

// A process can end its commands only once, so each test is a death test in a process of its own.
class BrewEndTest : public test::OneAtATime {
 protected:
  void makeManagerOf(const char* script) {
    write("brew", std::string("#!/bin/sh\n") + script + "\n");
    const QString path = folder.filePath(QStringLiteral("brew"));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    makeManager(path.toStdString());
  }
  bool waitForCalls(const std::vector<std::string>& expected) {
    return test::waitFor([&] { return calls() == expected; });
  }
};

TEST_F(BrewEndTest, InterruptsACommandAsControlCWould) {
  EXPECT_EXIT(
      {
        makeManagerOf(R"(trap 'echo INT >>"$FAKEBREW_LOG"; exit' INT
trap 'echo TERM >>"$FAKEBREW_LOG"; exit' TERM
trap 'echo HUP >>"$FAKEBREW_LOG"; exit' HUP
echo READY >>"$FAKEBREW_LOG"
for i in $(seq 400); do sleep 0.05; done)");
        const bool ready = waitForCalls({"READY"});
        endBrewCommands();
        const bool interrupted = waitForCalls({"INT", "READY"});
        folder.remove();
        _exit(ready && interrupted ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(BrewEndTest, LaunchesNothingAfterwards) {
  EXPECT_EXIT(
      {
        makeIdleManager();
        manager->search(QStringLiteral("before"));
        const bool launches = waitForCalls({"[search][before]"}) && waitForQueue();
        endBrewCommands();
        manager->search(QStringLiteral("after"));
        const bool passed = waitForQueue();
        const bool none = calls() == std::vector<std::string>{"[search][before]"};
        folder.remove();
        _exit(launches && passed && none ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

// A second interrupt would stop the tool's clean-up.
TEST_F(BrewEndTest, InterruptsAnInstallationOnlyOnce) {
  EXPECT_EXIT(
      {
        makeIdleManager();
        qputenv("FAKEBREW_MODE_install", "unwinds");
        manager->install(makeBrewPackage(QStringLiteral("x"), std::nullopt, std::nullopt, BrewPackageType::Formula));
        const bool ready = waitForCalls({"[install][x]", "[ready]"});
        endBrewCommands();
        const bool interrupted = waitForCalls({"[install][x]", "[interrupted]", "[ready]"});
        endBrewCommands();
        write("go", "");
        const bool once = test::waitFor([&] { return std::ranges::count(calls(), "[goes on]") == 1; }) &&
                          std::ranges::count(calls(), "[interrupted]") == 1;
        folder.remove();
        _exit(ready && interrupted && once ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zolt
