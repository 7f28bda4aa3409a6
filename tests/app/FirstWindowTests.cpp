#include "app/FirstWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>

#include "support/WaitFor.h"

namespace zolt {
namespace {

std::unique_ptr<ContentView> windowOf(std::vector<std::string> program) {
  return makeTerminalWindow(std::make_unique<TerminalController>(
      shellForProgram(program), TerminalController::Restart::Never, terminalSizeOfNewWindow()));
}

TEST(FirstWindow, Is900By600TitledZoltAndNeverBeyondTheCornerOfTheScreen) {
  const auto window = windowOf({"true"});
  EXPECT_EQ(window->size(), QSize(900, 600));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Zolt"));
  const QRect available = QApplication::primaryScreen()->availableGeometry();
  EXPECT_GE(window->x(), available.left());
  EXPECT_GE(window->y(), available.top());
  if (available.width() > 900) {
    EXPECT_NEAR(window->geometry().center().x(), available.center().x(), 1);
  }
}

TEST(FirstWindow, HasTheTerminalSizeThatWasForetold) {
  const auto window = windowOf({"true"});
  window->show();
  const WindowSize foretold = terminalSizeOfNewWindow();
  ASSERT_TRUE(test::waitFor([&] { return window->textView().gridSize().pixelWidth != 0; }));
  EXPECT_EQ(window->textView().gridSize(), (GridSize{.rows = foretold.rows,
                                                     .columns = foretold.cols,
                                                     .pixelWidth = foretold.pixelWidth,
                                                     .pixelHeight = foretold.pixelHeight}));
}

TEST(ProgramRun, CountsAsHungUpUntilTheProgramHasEnded) {
  const auto window = windowOf({ZOLT_TEST_CHILD, "wait"});
  const ProgramRun run(*window, std::nullopt);
  EXPECT_EQ(run.exitStatus(), 129);
  window->terminal().ptySession().sendSignal(9);
  EXPECT_TRUE(test::waitFor([&] { return run.exitStatus() == 137; }));
}

}  // namespace
}  // namespace zolt
