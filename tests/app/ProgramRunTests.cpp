#include "app/ProgramRun.h"

#include <QApplication>

#include "AppFixture.h"

namespace zolt {
namespace {

using ProgramRunTest = test::AppDelegateTest;

TEST_F(ProgramRunTest, CountsAsHungUpUntilTheProgramHasEnded) {
  TerminalWindow& window = delegate.openWindow({.shell = shellForProgram({ZOLT_TEST_CHILD, "wait"}),
                                                .restart = TerminalController::Restart::Never,
                                                .workingDirectory = {}});
  const ProgramRun run(window, std::nullopt);
  EXPECT_EQ(run.exitStatus(), 129);
  window.contentViewController().rootView().terminal().ptySession().sendSignal(9);
  EXPECT_EQ(QApplication::exec(), 137);
  EXPECT_EQ(run.exitStatus(), 137);
}

}  // namespace
}  // namespace zolt
