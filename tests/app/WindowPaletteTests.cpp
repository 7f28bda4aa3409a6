// The colours around the terminal.
#include <QApplication>
#include <QMenuBar>

#include "AppFixture.h"
#include "app/ZoltApp.h"
#include "desktop/DesktopPalette.h"

namespace zolt {
namespace {

using test::waitFor;

class WindowPaletteTest : public testing::Test {
 protected:
  void TearDown() override { QApplication::setPalette(m_before); }

  TerminalWindow& open(Display display) {
    return app.appDelegate().openWindow(
        {.shell = Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = {"wait"}, .icon = "terminal"},
         .restart = TerminalController::Restart::Never,
         .display = display});
  }
  static QColor barOf(TerminalWindow& window) { return window.menuBar()->palette().color(QPalette::Window); }
  static QColor groundOf(TerminalWindow& window) {
    return QColor::fromRgb(window.contentViewController().rootView().surface().canvas().colors().background);
  }
  /// Whether the bar is the terminal's ground with its texts readable, and the rest as dark.
  static bool isAllOf(TerminalWindow& window, bool dark) {
    const QPalette bar = window.menuBar()->palette();
    const int contrast = bar.color(QPalette::ButtonText).lightness() - barOf(window).lightness();
    return barOf(window) == groundOf(window) && (contrast > 150) == dark && (contrast < -150) != dark &&
           isDark(window.palette()) == dark;
  }

  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  Config config{defaults};
  ZoltApp app{config, defaults};

 private:
  QPalette m_before = QApplication::palette();
};

TEST_F(WindowPaletteTest, FollowsTheThemeWhateverTheDesktopPrefersAlsoWhileItIsOpen) {
  for (const QPalette& desktop : {lightPalette(), darkPalette()}) {
    QApplication::setPalette(desktop);
    config.theme = Config::ColorScheme::Light;
    test::runLoopFor(std::chrono::milliseconds(5));  // changes within one turn of the loop count as one
    TerminalWindow& window = open(Display::FullEmulation);
    EXPECT_TRUE(waitFor([&] { return isAllOf(window, false); }));
    config.theme = Config::ColorScheme::Dark;
    EXPECT_TRUE(waitFor([&] { return isAllOf(window, true); }));
  }
}

TEST_F(WindowPaletteTest, FollowsTheDesktopWhereTheThemeIsTheSystems) {
  QApplication::setPalette(lightPalette());
  config.theme = Config::ColorScheme::System;
  TerminalWindow& window = open(Display::FullEmulation);
  EXPECT_TRUE(waitFor([&] { return isAllOf(window, false); }));
  QApplication::setPalette(darkPalette());
  EXPECT_TRUE(waitFor([&] { return isAllOf(window, true); }));
}

TEST_F(WindowPaletteTest, KeepsTheDesktopsOwnColoursWhereTheyFitTheTheme) {
  QPalette contrast = darkPalette();
  contrast.setColor(QPalette::Highlight, Qt::yellow);
  QApplication::setPalette(contrast);
  config.theme = Config::ColorScheme::Dark;
  TerminalWindow& window = open(Display::FullEmulation);
  EXPECT_EQ(window.palette().color(QPalette::Highlight), QColor(Qt::yellow));
  EXPECT_EQ(window.menuBar()->palette().color(QPalette::Highlight), QColor(Qt::yellow));
}

TEST_F(WindowPaletteTest, IsBlackAroundALogWhateverTheTheme) {
  QApplication::setPalette(lightPalette());
  config.theme = Config::ColorScheme::Light;
  TerminalWindow& window = open(Display::Log);
  EXPECT_EQ(barOf(window), QColor(Qt::black));
  EXPECT_EQ(window.palette(), QApplication::palette(&window));
  config.theme = Config::ColorScheme::Dark;
  test::runLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(barOf(window), QColor(Qt::black));
}

}  // namespace
}  // namespace zolt
