#include "session/TerminalController.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "session/ControllerProbe.h"
#include "session/SessionProbe.h"
#include "session/ShellManager.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using test::capturedOutput;
using test::ControllerProbe;
using test::gridText;
using test::missingShell;
using test::program;
using test::runLoopFor;
using test::waitFor;

Bytes bytes(std::string content) {
  return Bytes(std::move(content));
}

TEST(TerminalController, RunsTheDefaultShellWhenNoneIsGiven) {
  const Shell& expected = ShellManager::shared().defaultShell();
  if (!isExecutableFile(expected.executable)) GTEST_SKIP() << expected.executable << " is not installed";
  TerminalController controller(std::nullopt);
  EXPECT_TRUE(controller.ptySession().isRunning());
  EXPECT_EQ(controller.title(), expected.name);
}

TEST(TerminalController, RunsAShellThatIsNotInTheCatalogue) {
  ControllerProbe probe(program({"echo", "not catalogued"}));
  EXPECT_TRUE(probe.gridShows("not catalogued"));
  EXPECT_EQ(probe->title(), "Test");
}

TEST(TerminalController, RunsTheShellBeforeItsConstructorReturns) {
  ControllerProbe probe(program({"wait"}));
  EXPECT_TRUE(probe->ptySession().isRunning());
  EXPECT_EQ(probe->title(), "Test");
  EXPECT_FALSE(probe->isActive());
  EXPECT_FALSE(probe->id().isNull());
  EXPECT_NE(probe->id(), ControllerProbe(program({"wait"}))->id());
}

TEST(TerminalController, KeepsTheTitleTerminalWhenTheShellCannotBeStarted) {
  std::unique_ptr<TerminalController> controller;
  EXPECT_EQ(capturedOutput([&] {
              controller = std::make_unique<TerminalController>(missingShell());
              runLoopFor(std::chrono::milliseconds(700));
            }),
            "Failed to start process: No such file or directory\nFailed to start PTY session\n")
      << "and it is not tried again";
  EXPECT_EQ(controller->title(), "Terminal");
  EXPECT_FALSE(controller->ptySession().isRunning());
  EXPECT_EQ(gridText(*controller), "");
}

TEST(TerminalController, HasAGridOf24By80WithItsCursorAtTheTop) {
  ControllerProbe probe(program({"wait"}));
  EXPECT_EQ(probe->getScreenContent().size(), 24U);
  EXPECT_EQ(probe->getScreenContent().front().size(), 80U);
  EXPECT_EQ(probe->getCursorPosition(), TerminalScreenBuffer::Cursor{});
}

TEST(TerminalController, FeedsTheGridWithTheOutput) {
  ControllerProbe probe(program({"raw", "one\ntwo"}));
  EXPECT_TRUE(probe.gridShows("one\ntwo"));
  EXPECT_EQ(probe->getCursorPosition(), (TerminalScreenBuffer::Cursor{.row = 1, .col = 3}));
}

class TerminalControllerWithSilentShell : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(probe.gridShows("waiting")); }

  // What the session would do with a chunk that it has read.
  void deliver(const std::string& chunk) { probe->ptySession().onOutput(bytes(chunk)); }

  // The number of changes announced from now until the next turn of the event loop.
  int noticesOf(const std::function<void()>& action) {
    runLoopFor(std::chrono::milliseconds(20));
    int notices = 0;
    const auto connection = QObject::connect(&*probe, &TerminalController::objectWillChange, [&notices] { ++notices; });
    action();
    EXPECT_EQ(notices, 0) << "a change is announced in a later turn";
    runLoopFor(std::chrono::milliseconds(20));
    QObject::disconnect(connection);
    return notices;
  }

  ControllerProbe probe{program({"wait"})};
};

TEST_F(TerminalControllerWithSilentShell, AnnouncesOneChangeForEachChunk) {
  EXPECT_EQ(noticesOf([&] { deliver("a"); }), 1);
  EXPECT_EQ(noticesOf([&] {
              deliver("b");
              deliver("c");
              deliver("d");
            }),
            3);
}

TEST_F(TerminalControllerWithSilentShell, AnnouncesOneChangeForAChunkThatItDrops) {
  const std::string before = gridText(*probe);
  EXPECT_EQ(noticesOf([&] { deliver("dropped \xFF whole"); }), 1);
  EXPECT_EQ(gridText(*probe), before);
}

TEST_F(TerminalControllerWithSilentShell, ShowsAChunkAtOnce) {
  deliver("shown");
  EXPECT_NE(gridText(*probe).find("shown"), std::string::npos);
}

TEST_F(TerminalControllerWithSilentShell, DropsBothChunksOfACharacterThatWasSplit) {
  const std::string before = gridText(*probe);
  deliver("first \xE2\x82");
  deliver("\xAC second");
  EXPECT_EQ(gridText(*probe), before);
  deliver("third \xE2\x82\xAC");
  EXPECT_NE(gridText(*probe).find("third \xE2\x82\xAC"), std::string::npos);
}

TEST_F(TerminalControllerWithSilentShell, AnnouncesNothingAfterItIsGone) {
  auto controller = std::make_unique<TerminalController>(program({"wait"}));
  int notices = 0;
  QObject::connect(controller.get(), &TerminalController::objectWillChange, [&] { ++notices; });
  const PTYSession::OutputHandler handler = controller->ptySession().onOutput;
  handler(bytes("late"));
  controller.reset();
  handler(bytes("later"));
  runLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(notices, 0);
}

TEST(TerminalControllerInput, SendsTextAsItIs) {
  ControllerProbe probe(program({"hex"}));
  ASSERT_TRUE(probe.gridShows("ready"));
  probe->sendInput("a\n\xC3\xA9");
  probe->sendInput("");
  EXPECT_TRUE(probe.gridShows(" 61 0A C3 A9"));
}

TEST(TerminalControllerInput, SendsTheBytesOfKeys) {
  ControllerProbe probe(program({"hex"}));
  ASSERT_TRUE(probe.gridShows("ready"));
  probe->sendKey(TerminalKey::Case::Backspace);
  probe->sendKey(TerminalKey::Case::Enter);
  probe->sendKey(TerminalKey::Case::PageDown);
  EXPECT_TRUE(probe.gridShows(" 08 0D 1B 5B 36 7E"));
  probe->sendKey(TerminalKey::ctrl("c"));
  probe->sendKey(TerminalKey::ctrl("C"));
  probe->sendKey(TerminalKey::ctrl("@"));
  probe->sendKey(TerminalKey::text("ok"));
  EXPECT_TRUE(probe.gridShows(" 7E 03 03 00 6F 6B"));
}

TEST(TerminalControllerDeathTest, StopsTheProgramForControlWithACharacterOutsideAscii) {
  EXPECT_DEATH(
      {
        TerminalController controller(program({"wait"}));
        controller.sendKey(TerminalKey::ctrl("\xC3\xB1"));
      },
      "no ASCII code");
}

TEST(TerminalControllerClear, SendsAResetAndEmptiesTheGridAtOnce) {
  ControllerProbe probe(program({"hex"}));
  ASSERT_TRUE(probe.gridShows("ready"));
  probe->clear();
  EXPECT_EQ(gridText(*probe), "");
  EXPECT_EQ(probe->getCursorPosition(), TerminalScreenBuffer::Cursor{});
  EXPECT_TRUE(probe.gridShows(" 1B 63"));
}

TEST(TerminalControllerOutput, BypassesTheGridOnceAViewHandlesIt) {
  ControllerProbe probe(program({"cat"}));
  ASSERT_TRUE(probe.gridShows("ready"));
  const std::string before = gridText(*probe);
  std::string seen;
  probe->ptySession().onOutput = [&](const Bytes& chunk) { seen += chunk.view(); };
  probe->sendInput("for the view");
  EXPECT_TRUE(waitFor([&] { return seen == "for the view"; }));
  EXPECT_EQ(gridText(*probe), before);
}

TEST(TerminalControllerResize, MakesGridAndTerminalThatSize) {
  ControllerProbe probe(program({"size"}));
  ASSERT_TRUE(probe.gridShows("0x0"));
  probe->resize(10, 40);
  EXPECT_TRUE(probe.gridShows("10x40"));
  EXPECT_EQ(probe->getScreenContent().size(), 10U);
  EXPECT_EQ(probe->getScreenContent().front().size(), 40U);
}

TEST(TerminalControllerRelease, EndsTheShell) {
  { ControllerProbe probe(program({"wait"})); }
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
}

}  // namespace
}  // namespace zolt
