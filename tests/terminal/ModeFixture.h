#pragma once

#include <QClipboard>
#include <string>

#include "terminal/DisplayFixture.h"

namespace zolt::test {

/// The full emulation of a program that shows whatever it is sent in a visible form, for the modes of the keyboard.
class ModeTest : public DisplayTest {
 protected:
  /// The program prints `text` first; in the format of printf.
  void start(const std::string& text) {
    run(std::string("stty raw -echo; printf '").append(text).append("'; printf '>'; exec cat -uv"));
    ASSERT_TRUE(waitFor([this] {
      canvas().makeFrameNow();
      return allText().find('>') != std::string::npos;
    }));
    QApplication::clipboard()->setText(QStringLiteral("nothing"));
  }

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
};

}  // namespace zolt::test
