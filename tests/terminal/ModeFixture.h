#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "support/WaitFor.h"
#include "terminal/EmulationDisplay.h"

namespace zolt::test {

/// The full emulation of a program that shows whatever it is sent in a visible form, for the modes of the keyboard.
class ModeTest : public testing::Test {
 protected:
  /// The program prints `text` first; in the format of printf.
  void start(const std::string& text) {
    terminal = std::make_unique<TerminalController>(
        Shell{
            .name = "sh",
            .executable = "/bin/sh",
            .args = {"-c", std::string("stty raw -echo; printf '").append(text).append("'; printf '>'; exec cat -uv")},
            .icon = "terminal"},
        TerminalController::Restart::Never, TerminalSize{.rows = 24, .columns = 80});
    window = std::make_unique<QWidget>();
    display = std::make_unique<EmulationDisplay>(*terminal, TerminalSize{.rows = 24, .columns = 80}, settings, true,
                                                 window.get());
    window->resize(800, 500);
    canvas().resize(800, 500);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), kPatience.count()));
    QApplication::setActiveWindow(window.get());
    canvas().setFocus();
    ASSERT_TRUE(waitFor([this] {
      canvas().makeFrameNow();
      return display->source().screen()->size.columns == canvas().gridSize().columns &&
             allText().find('>') != std::string::npos;
    }));
    QApplication::clipboard()->setText(QStringLiteral("nothing"));
  }
  void TearDown() override {
    display.reset();
    window.reset();
    terminal.reset();
  }

  TextCanvas& canvas() { return display->canvas(); }
  std::string allText() {
    EmulationSource& source = display->source();
    return source.text({.begin = source.begin(), .end = source.end()});
  }
  /// The program prints this; returns when it is in the frame.
  void feed(const std::string& bytes) {
    display->emulator().feed(Bytes(bytes));
    ASSERT_TRUE(waitFor([this] {
      canvas().makeFrameNow();
      return display->emulator().isSettled();
    }));
    canvas().makeFrameNow();
  }
  void type(const char* keys, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClicks(&canvas(), QString::fromUtf8(keys), modifiers);
  }
  /// What the program was sent, as cat -v shows it, once it has been sent an X.
  std::string sent() {
    type("X");
    std::string found;
    EXPECT_TRUE(waitFor([&] {
      canvas().makeFrameNow();
      const std::string all = allText();
      found = all.substr(all.find('>') + 1);
      return found.find('X') != std::string::npos;
    }));
    return found.substr(0, found.find('X'));
  }
  static std::string copied() { return QApplication::clipboard()->text().toStdString(); }
  std::string rowText(std::size_t row) {
    return canvas().visibleText().section(QLatin1Char('\n'), int(row), int(row)).toStdString();
  }

  EmulationSettings settings;
  std::unique_ptr<TerminalController> terminal;
  std::unique_ptr<QWidget> window;
  std::unique_ptr<EmulationDisplay> display;
};

}  // namespace zolt::test
