// Find, saving and settings over the full emulation, with a real program.
#include "view/EmulationSurface.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/WaitFor.h"
#include "view/TerminalContainerView.h"
#include "view/ViewFixture.h"
#include "view/saving/OutputSaver.h"

namespace zolt {
namespace {

using test::kCurrent;
using test::kFound;
using test::waitFor;

class EmulationSurfaceTest : public testing::Test {
 protected:
  void run(const std::string& script) {
    terminal = std::make_unique<TerminalController>(Shell{.name = "sh",
                                                          .executable = "/bin/sh",
                                                          .args = {"-c", script + "; printf READY; sleep 1000"},
                                                          .icon = "terminal"},
                                                    TerminalController::Restart::Never,
                                                    TerminalSize{.rows = 24, .columns = 80});
    container = std::make_unique<TerminalContainerView>([this](QWidget* parent) {
      return std::make_unique<EmulationSurface>(*terminal, TerminalSize{.rows = 24, .columns = 80}, settings, parent);
    });
    container->resize(800, 480);
    container->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(container.get(), test::kPatience.count()));
    ASSERT_TRUE(waitFor([this] { return all().find("READY") != std::string::npos; }));
  }
  void TearDown() override {
    container.reset();
    terminal.reset();
  }

  EmulationSurface& surface() { return static_cast<EmulationSurface&>(container->surface()); }
  TextCanvas& canvas() { return surface().canvas(); }
  std::string all() {
    canvas().makeFrameNow();
    EmulationSource& source = surface().display().source();
    return source.text({.begin = source.begin(), .end = source.end()});
  }
  std::string saved(bool withStyles) {
    const QString file = folder.filePath(QStringLiteral("out"));
    OutputSaver saver(surface().excerpt(), withStyles ? surface().outputStyles() : nullptr, file);
    QSignalSpy finished(&saver, &OutputSaver::finished);
    EXPECT_TRUE(waitFor([&] { return finished.count() == 1; }));
    std::ostringstream content;
    content << std::ifstream(file.toStdString()).rdbuf();
    return content.str();
  }
  // Opens the bar and searches.
  void search(const QString& query) {
    container->find();
    auto* field = container->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->setText(query);
  }
  bool shows(const QString& text) {
    return waitFor([&] { return progress() == text; });
  }
  // Lets the program print `text` and waits until it is shown.
  void feed(const std::string& text) {
    surface().display().emulator().feed(Bytes(text));
    ASSERT_TRUE(waitFor([this] {
      canvas().makeFrameNow();
      return surface().display().emulator().isSettled();
    }));
  }
  // The matches that are marked in the picture, and where they begin.
  std::vector<std::string> marked() {
    const QImage picture = canvas().grab().toImage();
    std::vector<std::string> found;
    for (std::size_t row = 0; row < canvas().rowsInFrame(); ++row) {
      QRgb before = 0;
      for (int column = 0; column < canvas().gridSize().columns; ++column) {
        const CanvasColumn begin(column);
        const QRectF cell = canvas().rectOf(row, {.begin = begin, .end = begin + 1});
        const QRgb color = picture.pixel(static_cast<int>(cell.center().x()), static_cast<int>(cell.top()) + 1);
        const std::string place = std::to_string(row) + ", " + std::to_string(column);
        if (color != before && color == kFound) found.push_back("found at " + place);
        if (color != before && color == kCurrent) found.push_back("current at " + place);
        before = color;
      }
    }
    return found;
  }
  QString progress() { return container->findChild<QLabel*>(QStringLiteral("progress"))->text(); }

  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("settings.ini")).toStdString()};
  Config config{defaults};
  EmulationSettingsStore settings{config, defaults};
  std::unique_ptr<TerminalController> terminal;
  std::unique_ptr<TerminalContainerView> container;
};

TEST_F(EmulationSurfaceTest, FindsInTheHistoryAndOnTheScreen) {
  run("seq -f 'needle %g' 100");
  search(QStringLiteral("needle"));
  EXPECT_TRUE(waitFor([&] { return progress().contains(QStringLiteral("100")); })) << progress().toStdString();
  ASSERT_TRUE(waitFor([&] { return !canvas().selection().empty() || canvas().isAtEnd(); }));
  container->findPrevious();
  EXPECT_TRUE(waitFor([&] { return progress().contains(QStringLiteral("99")); })) << progress().toStdString();
}

TEST_F(EmulationSurfaceTest, FindsALineThatCrossesTheEdgeOfTheScreen) {
  // One line of many rows, of which the first ones have scrolled off.
  run("head -c 6000 /dev/zero | tr '\\0' x; printf needle; head -c 3000 /dev/zero | tr '\\0' y");
  ASSERT_GT(surface().display().source().rowCount(), surface().display().source().screenRows());
  search(QStringLiteral("xneedley"));
  EXPECT_TRUE(waitFor([&] { return progress().contains(QLatin1Char('1')); })) << progress().toStdString();
}

TEST_F(EmulationSurfaceTest, SearchesWhatArrivesWhileTheBarIsOpen) {
  run("echo first needle");
  search(QStringLiteral("needle"));
  ASSERT_TRUE(waitFor([&] { return progress().contains(QLatin1Char('1')); })) << progress().toStdString();
  surface().display().emulator().feed(Bytes("\r\nsecond needle\r\nthird needle"));
  EXPECT_TRUE(waitFor([&] { return progress().contains(QLatin1Char('3')); })) << progress().toStdString();
}

TEST_F(EmulationSurfaceTest, FindsOnTheAlternateScreenWhileThatIsShown) {
  // More than is searched at a time.
  run("seq -f 'needle %g' 50; yes $(printf %0300d 0) | head -n 9000; seq -f 'needle %g' 50");
  search(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("100 of 100"))) << progress().toStdString();
  feed("\033[?1049h\033[2J\033[3;5Hneedle\033[10;1Hno\033[20;70Hneedle");
  EXPECT_TRUE(shows(QStringLiteral("2"))) << progress().toStdString();
  container->findPrevious();
  EXPECT_TRUE(shows(QStringLiteral("2 of 2"))) << progress().toStdString();
  EXPECT_EQ(marked(), (std::vector<std::string>{"found at 2, 4", "current at 19, 69"}));
  container->findNext();
  EXPECT_TRUE(shows(QStringLiteral("1 of 2"))) << progress().toStdString();
  EXPECT_TRUE(canvas().isAtEnd());
  EXPECT_EQ(canvas().scrollOffset(), DevicePixels(0));
  feed("\033[?1049l");
  EXPECT_TRUE(shows(QStringLiteral("100"))) << progress().toStdString();
  EXPECT_TRUE(canvas().isAtEnd()) << "the user has only left the program";
  container->findPrevious();
  EXPECT_TRUE(shows(QStringLiteral("100 of 100"))) << progress().toStdString();
}

TEST_F(EmulationSurfaceTest, ShowsAgainWhatWasReadBeforeAFindOnTheAlternateScreen) {
  run("seq 100");
  canvas().scrollTo(DevicePixels(0));
  feed("\033[?1049h\033[2J\033[Hneedle");
  search(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("1 of 1"))) << progress().toStdString();
  container->findNext();
  feed("\033[?1049l");
  EXPECT_FALSE(canvas().isAtEnd());
  EXPECT_EQ(canvas().scrollOffset(), DevicePixels(0));
}

TEST_F(EmulationSurfaceTest, KeepsTheCurrentMatchWhileTheAlternateScreenIsRewrittenAroundIt) {
  run("printf '\\033[?1049h\\033[2J\\033[Hload 1\\r\\nneedle one\\r\\nneedle two\\r\\n'");
  search(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("2 of 2"))) << progress().toStdString();
  feed("\033[Hload 100 and more\033[10;1Hneedle three");
  EXPECT_TRUE(shows(QStringLiteral("2 of 3"))) << progress().toStdString();
  feed("\033[3;1Hnothing\033[K");
  EXPECT_TRUE(shows(QStringLiteral("2"))) << progress().toStdString();
  container->findPrevious();
  EXPECT_TRUE(shows(QStringLiteral("1 of 2"))) << "the one before: " << progress().toStdString();
}

// With an expression, which is searched for in the background only.
TEST_F(EmulationSurfaceTest, FollowsAnAlternateScreenThatIsRewrittenAllTheTime) {
  run("printf '\\033[?1049h\\033[2J'");
  search(QStringLiteral("needle [0-9]+"));
  for (auto* each : container->findChildren<QAbstractButton*>()) {
    if (each->accessibleName().startsWith(QStringLiteral("Regular"))) each->click();
  }
  ASSERT_TRUE(shows(QStringLiteral("No matches"))) << progress().toStdString();
  for (int round = 0; round < 100; ++round) {
    std::string screen = "\033[H";
    for (int row = 0; row <= round % 20; ++row) {
      screen += "needle " + std::to_string(round) + "\033[K\r\n";
    }
    surface().display().emulator().feed(Bytes(screen + "\033[J"));
    test::runLoopFor(std::chrono::milliseconds(5));
  }
  EXPECT_TRUE(shows(QStringLiteral("20"))) << progress().toStdString();
  for (int round = 0; round < 50; ++round) {
    surface().display().emulator().feed(Bytes(round % 2 == 0 ? "\033[?1049l" : "\033[?1049h"));
    test::runLoopFor(std::chrono::milliseconds(5));
  }
  feed("\033[2J\033[Hneedle 1");
  EXPECT_TRUE(shows(QStringLiteral("1"))) << progress().toStdString();
}

TEST_F(EmulationSurfaceTest, SavesLinesWholeWithoutWhatOnlyTheScreenNeeds) {
  run("head -c 300 /dev/zero | tr '\\0' w; printf '\\n\\033[1;31mred\\033[m plain\\n'; seq 100");
  const std::string plain = saved(false);
  EXPECT_EQ(plain.find(std::string(300, 'w') + "\nred plain\n1\n2\n"), 0U) << plain.substr(0, 400);
  EXPECT_TRUE(plain.ends_with("100\nREADY")) << plain.substr(plain.size() - 20);
  const std::string styled = saved(true);
  EXPECT_NE(styled.find("\033["), std::string::npos);
  EXPECT_NE(styled.find("red"), std::string::npos);
}

TEST_F(EmulationSurfaceTest, FollowsTheSettings) {
  run("true");
  const TerminalSize before = canvas().gridSize();
  config.fontSize = 30;
  EXPECT_TRUE(waitFor([&] { return canvas().gridSize().columns < before.columns; }));
  config.theme = Config::ColorScheme::Light;
  EXPECT_TRUE(waitFor([&] {
    canvas().makeFrameNow();
    return qGray(canvas().colors().background) > 200;
  }));
  settings.set(&EmulationSettings::enableMouseReporting, false);
}

TEST_F(EmulationSurfaceTest, LetsTheDesktopShineThroughAnOpenWindow) {
  run("true");
  const auto alphaOfTheGround = [this] {
    canvas().makeFrameNow();
    const QImage picture = container->grab().toImage();
    return qAlpha(picture.pixel(picture.width() / 2, picture.height() - 20));
  };
  EXPECT_EQ(alphaOfTheGround(), 255);
  EXPECT_LE(container->windowHandle()->requestedFormat().alphaBufferSize(), 0);
  config.opacity = 0.5;
  EXPECT_TRUE(waitFor([&] { return std::abs(alphaOfTheGround() - 128) <= 1; })) << alphaOfTheGround();
  EXPECT_TRUE(container->isVisible());
  EXPECT_EQ(container->windowHandle()->requestedFormat().alphaBufferSize(), 8);
  config.opacity = 1;
  EXPECT_TRUE(waitFor([&] { return alphaOfTheGround() == 255; })) << alphaOfTheGround();
}

TEST_F(EmulationSurfaceTest, TakesTheAlternateScreenFromProgramsOnceTheyHaveLeftIt) {
  run("echo primary");
  feed("\033[?1049h\033[2J\033[Hother");
  QSignalSpy changes(&settings, &EmulationSettingsStore::changed);
  settings.set(&EmulationSettings::useAlternateScreenBuffer, false);
  ASSERT_TRUE(waitFor([&] { return changes.count() == 1; }));
  feed(" still");
  EXPECT_EQ(all(), "other still");
  feed("\033[?1049l");
  EXPECT_EQ(all(), "primary\nREADY");
  feed("\033[?1049hnext");
  EXPECT_EQ(all(), "primary\nREADYnext");
  settings.set(&EmulationSettings::useAlternateScreenBuffer, true);
  ASSERT_TRUE(waitFor([&] { return changes.count() == 2; }));
  feed("\033[?1049h\033[2J\033[Hother");
  EXPECT_EQ(all(), "other");
}

TEST_F(EmulationSurfaceTest, ClearsTheScreenAndTheHistory) {
  run("seq 100");
  surface().clear();
  EXPECT_TRUE(waitFor([&] { return all() == "READY" || all().find_first_not_of("READY\n") == std::string::npos; }))
      << all();
}

TEST_F(EmulationSurfaceTest, TellsWhenAllThatWasReadIsShown) {
  run("true");
  surface().display().emulator().feed(Bytes(std::string(1'000'000, 'z') + "THE END"));
  bool isShown = false;
  std::string at;
  surface().whenShown([&] {
    isShown = true;
    at = canvas().visibleText().toStdString();
  });
  EXPECT_TRUE(waitFor([&] { return isShown; }));
  EXPECT_NE(at.find("THE END"), std::string::npos);
}

// Three commands with a screenful of output each, the second of which is all wide characters, as a shell marks them.
constexpr const char* kMarkedCommands = R"(
  prompt() { printf '\033]133;A\033\\%s> \033]133;B\033\\%s\n\033]133;C\033\\' "$1" "$2"; }
  finish() { printf '\033]133;D;%s\033\\' "$1"; }
  prompt 1 one; seq -f 'first %.0f' 60; finish 0
  prompt 2 two; seq -f '漢字 %.0f' 60; finish 1
  prompt 3 three; seq -f 'third %.0f' 60; finish 0
  prompt 4 '')";

TEST_F(EmulationSurfaceTest, GoesFromPromptToPrompt) {
  run(kMarkedCommands);
  const auto top = [this] {
    canvas().makeFrameNow();
    return canvas().visibleText().section(QLatin1Char('\n'), 0, 0);
  };
  surface().showPrompt(PromptDirection::Earlier);
  EXPECT_EQ(top(), QStringLiteral("3> three"));
  surface().showPrompt(PromptDirection::Earlier);
  EXPECT_EQ(top(), QStringLiteral("2> two"));
  surface().showPrompt(PromptDirection::Earlier);
  surface().showPrompt(PromptDirection::Earlier);
  EXPECT_EQ(top(), QStringLiteral("1> one")) << "it is the first";
  surface().showPrompt(PromptDirection::Later);
  EXPECT_EQ(top(), QStringLiteral("2> two"));
  surface().showPrompt(PromptDirection::Later);
  surface().showPrompt(PromptDirection::Later);
  EXPECT_TRUE(canvas().isAtEnd());
}

TEST_F(EmulationSurfaceTest, TellsThatTheCopyModeIsOnAndGivesWayToItsCursor) {
  run("seq 100");
  auto* bar = container->findChild<QWidget*>(QStringLiteral("copyMode"));
  ASSERT_NE(bar, nullptr);
  EXPECT_FALSE(bar->isVisible());
  const TerminalSize size = canvas().gridSize();
  surface().copyMode().toggle();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(canvas().gridSize(), size);
  EXPECT_TRUE(bar->accessibleName().contains(QStringLiteral("q leaves"))) << bar->accessibleName().toStdString();
  const QRect first = bar->geometry();
  EXPECT_GT(first.top(), canvas().height() / 2);
  feed(std::string("\r\n").append(static_cast<std::size_t>(size.columns) - 1, 'x'));
  surface().copyMode().toggle();
  surface().copyMode().toggle();
  QTest::keyClicks(&canvas(), QStringLiteral("$"));
  EXPECT_LT(bar->geometry().bottom(), canvas().height() / 2) << "it would lie on the cursor";
  QTest::keyClicks(&canvas(), QStringLiteral("V"));
  EXPECT_TRUE(bar->accessibleName().contains(QStringLiteral("lines"))) << bar->accessibleName().toStdString();
  QTest::keyClicks(&canvas(), QStringLiteral("q"));
  EXPECT_FALSE(bar->isVisible());
}

TEST_F(EmulationSurfaceTest, FindsInTheCopyMode) {
  run("seq -f 'needle %g end' 100");
  surface().copyMode().toggle();
  QTest::keyClicks(&canvas(), QStringLiteral("/"));
  auto* field = container->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  field->setText(QStringLiteral("needle 55"));
  ASSERT_TRUE(shows(QStringLiteral("1 of 1"))) << progress().toStdString();
  const auto lineOfCursor = [this] {
    return canvas().textOf(surface().display().source().lineAt(surface().copyMode().cursor()));
  };
  EXPECT_EQ(lineOfCursor(), QStringLiteral("needle 55 end\n"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_FALSE(field->hasFocus());
  QTest::keyClicks(&canvas(), QStringLiteral("v$"));
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("needle 55 end"));
  field->setText(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("100 of 100"))) << progress().toStdString();
  QTest::keyClicks(&canvas(), QStringLiteral("N"));
  EXPECT_TRUE(waitFor([&] { return lineOfCursor() == QStringLiteral("needle 99 end\n"); }))
      << lineOfCursor().toStdString();
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_TRUE(surface().copyMode().isOn()) << "only the bar is closed";
  EXPECT_FALSE(canvas().selectedText() == QStringLiteral("needle")) << "and no match is selected";
}

TEST_F(EmulationSurfaceTest, SelectsWhatACommandHasPrinted) {
  run(kMarkedCommands);
  ASSERT_TRUE(surface().selectCommandOutput());
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("READY")) << "the last one goes on";
  surface().showPrompt(PromptDirection::Earlier);
  surface().showPrompt(PromptDirection::Earlier);
  ASSERT_TRUE(surface().selectCommandOutput());
  EXPECT_TRUE(canvas().selectedText().startsWith(QStringLiteral("\u6F22\u5B57 1\n")))
      << canvas().selectedText().left(40).toStdString();
  EXPECT_TRUE(canvas().selectedText().endsWith(QStringLiteral("\u6F22\u5B57 60\n")));
  canvas().scrollTo(canvas().scrollOffset() + canvas().pageHeight());
  canvas().clearSelection();
  ASSERT_TRUE(surface().selectCommandOutput()) << "in the middle of it";
  EXPECT_TRUE(canvas().selectedText().startsWith(QStringLiteral("\u6F22\u5B57 1\n")));
}

TEST_F(EmulationSurfaceTest, SelectsTheOutputBeforeAFreshPrompt) {
  run("printf '\\033]133;A\\033\\\\> \\033]133;C\\033\\\\'; echo done; printf "
      "'\\033]133;D;0\\033\\\\\\033]133;A\\033\\\\> '");
  ASSERT_TRUE(surface().selectCommandOutput());
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("done\n"));
}

TEST_F(EmulationSurfaceTest, HasNoPromptsWithoutMarks) {
  run("seq 100");
  EXPECT_FALSE(surface().selectCommandOutput());
  canvas().scrollTo({});
  surface().showPrompt(PromptDirection::Earlier);
  EXPECT_EQ(canvas().scrollOffset(), DevicePixels(0));
}

}  // namespace
}  // namespace zolt
