#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QInputMethodQueryEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <memory>
#include <string>

#include "support/ManualClock.h"
#include "support/WaitFor.h"
#include "terminal/EmulationDisplay.h"

namespace zolt::test {

/// The full emulation in a window, with a real program on a real pseudo-terminal.
class DisplayTest : public testing::Test {
 protected:
  /// A program that prints `prologue`, and then whatever it is sent, in a visible form.
  void start(const std::string& prologue = "") {
    const std::string script = "stty raw -echo; printf '" + prologue + "'; printf READY; exec cat -uv";
    run(script);
    ASSERT_TRUE(shows("READY"));
  }
  void run(const std::string& script) {
    window = std::make_unique<QWidget>();
    terminal = std::make_unique<TerminalController>(
        Shell{.name = "sh", .executable = "/bin/sh", .args = {"-c", script}, .icon = "terminal"},
        TerminalController::Restart::Never, TerminalSize{.rows = 24, .columns = 80});
    display = std::make_unique<EmulationDisplay>(*terminal, TerminalSize{.rows = 24, .columns = 80}, settings, true,
                                                 window.get(), *clock);
    window->resize(800, 500);
    canvas().resize(800, 500);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), kPatience.count()));
    QApplication::setActiveWindow(window.get());
    canvas().setFocus();
    // The program is told the size of the window once. Frames that are paced wait for the clock that the test moves.
    ASSERT_TRUE(waitFor([this] {
      stopped.advance(std::chrono::milliseconds(50));
      return display->source().screen()->size.columns == canvas().gridSize().columns;
    }));
  }
  void TearDown() override {
    display.reset();
    terminal.reset();
    window.reset();
  }

  TextCanvas& canvas() { return display->canvas(); }
  std::string text() {
    canvas().makeFrameNow();
    EmulationSource& source = display->source();
    return source.text({.begin = source.begin(), .end = source.end()});
  }
  bool shows(const std::string& wanted) {
    return waitFor([&] { return text().find(wanted) != std::string::npos; });
  }
  /// What the program was sent, as cat -v shows it.
  std::string sent() {
    const std::string all = text();
    const std::string after = all.substr(all.find("READY") + 5);
    return after.substr(0, after.find('\n'));
  }
  bool isSent(const std::string& wanted) {
    return waitFor([&] { return sent() == wanted; });
  }
  QPoint middleOf(TextPosition position) { return canvas().rectOf(position).center().toPoint(); }
  TextRange find(const std::string& wanted) {
    EmulationSource& source = display->source();
    const std::size_t at = text().find(wanted);
    EXPECT_NE(at, std::string::npos) << wanted;
    return {.begin = source.begin() + at, .end = source.begin() + at + wanted.size()};
  }
  /// Where the cursor is, as input methods are told.
  QRect caret() {
    canvas().makeFrameNow();
    QInputMethodQueryEvent query(Qt::ImCursorRectangle);
    QApplication::sendEvent(&canvas(), &query);
    return query.value(Qt::ImCursorRectangle).toRect();
  }
  QWidget& view() { return *canvas().viewport(); }
  void hover(QPoint at) { moveTo(at, Qt::NoButton, Qt::NoModifier); }
  void moveTo(QPoint at, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    QMouseEvent move(QEvent::MouseMove, at, view().mapToGlobal(at), Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(&view(), &move);
  }
  /// Drags with the left button, from within the left edge of the one character to that of the other.
  void drag(TextPosition from, TextPosition to, Qt::KeyboardModifiers modifiers) {
    const auto leftOf = [this](TextPosition place) {
      return canvas().rectOf(place).topLeft().toPoint() + QPoint(1, 3);
    };
    QTest::mousePress(&view(), Qt::LeftButton, modifiers, leftOf(from));
    moveTo(leftOf(to), Qt::LeftButton, modifiers);
    QTest::mouseRelease(&view(), Qt::LeftButton, modifiers, leftOf(to));
  }
  QMessageBox* question() {
    for (auto* each : window->findChildren<QMessageBox*>()) {
      if (each->isVisible()) return each;
    }
    return nullptr;
  }
  QAbstractButton& button(const QString& label) {
    for (QAbstractButton* each : question()->buttons()) {
      if (each->text().remove(QLatin1Char('&')) == label) return *each;
    }
    ADD_FAILURE() << "no button " << label.toStdString();
    return *question()->buttons().front();
  }
  QImage picture() {
    canvas().makeFrameNow();
    return view().grab().toImage().convertToFormat(QImage::Format_RGB32);
  }

  EmulationSettings settings;
  ManualClock stopped;
  Clock* clock = &Clock::steady();
  std::unique_ptr<QWidget> window;
  std::unique_ptr<TerminalController> terminal;
  std::unique_ptr<EmulationDisplay> display;
};

}  // namespace zolt::test
