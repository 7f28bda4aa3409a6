#include "terminal/hints/HintMode.h"

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QInputMethodEvent>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <fstream>
#include <future>

#include "terminal/ModeFixture.h"

namespace zolt {
namespace {

using test::waitFor;

// Is given the addresses that are opened, instead of the desktop.
class Desktop : public QObject {
  Q_OBJECT

 public:
  Desktop() {
    for (const char* scheme : {"http", "https", "file", "gopher"}) {
      QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
    }
  }
  ~Desktop() override {
    for (const char* scheme : {"http", "https", "file", "gopher"}) {
      QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
  }
  Q_INVOKABLE void open(const QUrl& url) { opened.push_back(url.toString().toStdString()); }

  std::vector<std::string> opened;
};

class HintModeTest : public test::ModeTest {
 protected:
  void start(const std::string& text) {
    test::ModeTest::start(text);
    if (!HasFatalFailure()) hints = std::make_unique<HintMode>(*display, [this] { return folder; });
  }
  void TearDown() override {
    hints.reset();
    test::ModeTest::TearDown();
  }
  // Each label with the text that it is on, "-" for one that is not shown, "!" after each letter that has been typed.
  std::vector<std::string> shown() {
    std::vector<std::string> labels;
    for (const CanvasLabel& label : canvas().labels()) {
      std::string text;
      for (std::size_t i = 0; i < label.letters.size(); ++i) {
        text += label.letters[i];
        if (i < label.typed) text += '!';
      }
      if (text.empty()) text += '-';
      text += ' ';
      labels.push_back(text + canvas().textOf(label.on).toStdString());
    }
    return labels;
  }
  // The colours of the picture in a cell.
  std::vector<QRgb> colorsIn(std::size_t row, int column) {
    const QRect cell =
        canvas().rectOf(row, {.begin = CanvasColumn(column), .end = CanvasColumn(column + 1)}).toAlignedRect();
    const QImage picture = canvas().viewport()->grab(cell).toImage().convertToFormat(QImage::Format_RGB32);
    std::vector<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        colors.push_back(picture.pixel(x, y));
      }
    }
    return colors;
  }
  bool isLabel(std::size_t row, int column) {
    const std::vector<QRgb> colors = colorsIn(row, column);
    return std::ranges::count(colors, 0xFFFFC531) * 3 > std::ssize(colors);
  }
  QMessageBox* question() {
    for (auto* each : window->findChildren<QMessageBox*>()) {
      if (each->isVisible()) return each;
    }
    return nullptr;
  }

  std::string folder = "/";
  Desktop desktop;
  std::unique_ptr<HintMode> hints;
};

using Labels = std::vector<std::string>;

TEST_F(HintModeTest, LabelsWhatIsInViewFromTheEndOfTheTextOn) {
  start("see https://en.example/a\\r\\nfatal: src/x.cpp:1:2\\r\\ncommit 1a2b3c4 from 10.0.0.1\\r\\n");
  hints->toggle();
  EXPECT_TRUE(hints->isOn());
  EXPECT_EQ(shown(), (Labels{"f https://en.example/a", "d src/x.cpp:1:2", "s 1a2b3c4", "a 10.0.0.1"}));
  EXPECT_TRUE(isLabel(0, 4));
  EXPECT_FALSE(isLabel(0, 3));
  EXPECT_FALSE(isLabel(0, 5)) << "it covers no more of the text than it needs";
  hints->toggle();
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(shown(), Labels());
  canvas().makeFrameNow();
  EXPECT_FALSE(isLabel(0, 4));
}

TEST_F(HintModeTest, OpensALinkByItsLabel) {
  start("https://en.example/a https://en.example/b ");
  hints->toggle();
  type("s");
  EXPECT_EQ(desktop.opened, Labels{"https://en.example/a"});
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(copied(), "nothing");
  EXPECT_EQ(sent(), "");
}

TEST_F(HintModeTest, AsksBeforeAnUnusualLinkAndRefusesADangerousOne) {
  start("gopher://a.example/x file://elsewhere/etc/passwd ");
  hints->toggle();
  type("s");
  ASSERT_NE(question(), nullptr);
  EXPECT_EQ(desktop.opened, Labels());
  question()->reject();
  hints->toggle();
  type("a");
  ASSERT_NE(question(), nullptr);
  question()->accept();
  EXPECT_EQ(desktop.opened, Labels());
}

TEST_F(HintModeTest, CopiesWithShiftAndWhatCannotBeOpened) {
  start("https://en.example/a 10.0.0.1 1a2b3c4 /no/such/file:3 ");
  hints->toggle();
  type("f", Qt::ShiftModifier);
  EXPECT_EQ(copied(), "https://en.example/a");
  constexpr std::pair<const char*, const char*> kOthers[] = {
      {"d", "10.0.0.1"}, {"s", "1a2b3c4"}, {"a", "/no/such/file:3"}};
  for (const auto& [key, text] : kOthers) {
    hints->toggle();
    type(key);
    EXPECT_EQ(copied(), text);
  }
  EXPECT_EQ(desktop.opened, Labels());
  EXPECT_EQ(sent(), "");
}

TEST_F(HintModeTest, TypesWithAltAndNoControlCharacter) {
  start("\\033]8;;https://en.example/\\tx\\rls\\n\\033\\\\marked\\033]8;;\\033\\\\ 1a2b3c4 ");
  hints->toggle();
  type("a", Qt::AltModifier);
  EXPECT_FALSE(hints->isOn());
  hints->toggle();
  for (const std::string& label : shown()) {
    if (label.ends_with(" marked")) type(label.substr(0, 1).c_str(), Qt::AltModifier);
  }
  const std::string all = sent();
  EXPECT_TRUE(all.starts_with("1a2b3c4")) << all;
  EXPECT_EQ(all.find('^'), all.npos) << all;
}

TEST_F(HintModeTest, OpensAFileOfTheTerminalsFolderWithoutItsLineNumber) {
  const QTemporaryDir home;
  folder = home.path().toStdString();
  std::ofstream(folder + "/there.cpp") << "x";
  start("there.cpp:12:3 ./gone.cpp ");
  hints->toggle();
  type("s");
  EXPECT_EQ(desktop.opened,
            Labels{QUrl::fromLocalFile(QString::fromStdString(folder + "/there.cpp")).toString().toStdString()});
  hints->toggle();
  type("a");
  EXPECT_EQ(copied(), "./gone.cpp");
}

TEST_F(HintModeTest, EndsWithoutAnEffectByAnyOtherKey) {
  start("https://en.example/a ");
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_1, Qt::Key_Z, Qt::Key_Return, Qt::Key_Up, Qt::Key_F5}) {
    hints->toggle();
    ASSERT_TRUE(hints->isOn());
    QTest::keyClick(&canvas(), key);
    EXPECT_FALSE(hints->isOn()) << key;
  }
  hints->toggle();
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(desktop.opened, Labels());
  EXPECT_EQ(copied(), "nothing");
  EXPECT_EQ(sent(), "");
}

TEST_F(HintModeTest, IsNotEndedByAModifierOnItsOwn) {
  start("https://en.example/a ");
  hints->toggle();
  QTest::keyPress(&canvas(), Qt::Key_Shift);
  EXPECT_TRUE(hints->isOn());
  QTest::keyRelease(&canvas(), Qt::Key_Shift);
  QTest::keyClick(&canvas(), Qt::Key_CapsLock);
  EXPECT_TRUE(hints->isOn());
}

TEST_F(HintModeTest, KeepsRepeatsOfAKeyFromTheProgram) {
  start("1a2b3c4 ");
  hints->toggle();
  const auto repeat = [this](QEvent::Type type, bool isRepeat) {
    QKeyEvent event(type, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"), isRepeat);
    QApplication::sendEvent(&canvas(), &event);
  };
  repeat(QEvent::KeyPress, false);
  for (int i = 0; i < 3; ++i) {
    repeat(QEvent::KeyRelease, true);
    repeat(QEvent::KeyPress, true);
  }
  repeat(QEvent::KeyRelease, false);
  EXPECT_EQ(copied(), "1a2b3c4");
  type("a");
  EXPECT_EQ(sent(), "a") << "pressed anew it is the program's";
}

TEST_F(HintModeTest, KeepsPastesAndComposedTextFromTheProgram) {
  start("1a2b3c4 ");
  hints->toggle();
  canvas().paste();
  EXPECT_FALSE(hints->isOn());
  hints->toggle();
  QInputMethodEvent committed;
  committed.setCommitString(QStringLiteral("a"));
  QApplication::sendEvent(&canvas(), &committed);
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(sent(), "");
}

TEST_F(HintModeTest, ShowsWhatIsLeftOfTheLabelsAfterTheFirstLetter) {
  std::string text;
  for (int i = 0; i < 30; ++i) {
    text += "/p/";
    text += std::to_string(10 + i);
    text += i % 10 == 9 ? "x\\r\\n" : "x ";
  }
  start(text);
  hints->toggle();
  ASSERT_EQ(canvas().labels().size(), 30U);
  EXPECT_EQ(shown().front().substr(0, 3), "bj ");
  EXPECT_EQ(shown().back(), "a /p/39x");
  type("b");
  EXPECT_TRUE(hints->isOn());
  EXPECT_EQ(shown()[0], "b!j /p/10x");
  EXPECT_EQ(shown()[5], "- /p/15x");
  canvas().makeFrameNow();
  EXPECT_TRUE(isLabel(0, 0));
  EXPECT_TRUE(isLabel(0, 1));
  EXPECT_FALSE(isLabel(2, 9 * 7));
  type("j");
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(copied(), "/p/10x");
}

TEST_F(HintModeTest, TakesALinkThatIsWrappedOrMarkedForOne) {
  std::string link = "https://en.example/";
  link.append(200, 'x');
  start(link + " end\\r\\n\\033]8;;https://marked.example\\033\\\\one \\033[1mtwo\\033[m\\033]8;;\\033\\\\ \\r\\n");
  hints->toggle();
  EXPECT_EQ(shown(), (Labels{std::string("s ").append(link), "a one two"}));
  type("s", Qt::ShiftModifier);
  EXPECT_EQ(copied(), link);
  hints->toggle();
  type("a", Qt::ShiftModifier);
  EXPECT_EQ(copied(), "https://marked.example");
}

TEST_F(HintModeTest, LabelsALinkThatBeginsAboveTheViewInItsFirstRow) {
  start("");
  const int columns = canvas().gridSize().columns;
  std::string text = "https://en.example/";
  text.append(static_cast<std::size_t>(2 * columns), 'x');
  for (int i = 2; i <= canvas().gridSize().rows; ++i) {
    text += "\r\n";
  }
  feed("\033[H\033[2J" + text);
  hints->toggle();
  ASSERT_EQ(canvas().labels().size(), 1U);
  EXPECT_TRUE(isLabel(0, 0));
  EXPECT_FALSE(isLabel(1, 0));
  type("a", Qt::ShiftModifier);
  EXPECT_EQ(copied(), text.substr(0, text.find('\r')));
}

TEST_F(HintModeTest, StaysOnItsTextWhileOutputGoesOnElsewhere) {
  start("https://en.example/a\\r\\n");
  hints->toggle();
  const QRectF place = canvas().rectOf(canvas().labels()[0].on.begin);
  std::string more;
  for (int i = 0; i < 100; ++i) {
    more += "line /and/path\r\n";
  }
  feed(more);
  EXPECT_TRUE(hints->isOn());
  EXPECT_EQ(shown(), Labels{"a https://en.example/a"});
  EXPECT_EQ(canvas().rectOf(canvas().labels()[0].on.begin), place) << "the view stays where it is";
  type("a");
  EXPECT_EQ(desktop.opened, Labels{"https://en.example/a"});
  canvas().makeFrameNow();
  EXPECT_TRUE(canvas().isAtEnd());
}

TEST_F(HintModeTest, EndsWhenTheTextUnderALabelChanges) {
  start("https://en.example/a\\r\\n");
  for (const char* change : {"\033[H\033[Kother text", "\033[Hhttps://en.example/b", "\033[Hhttps://en.example/abc",
                             "\033[H\033[L", "\033[?1049h", "\033[H\033[2J"}) {
    feed("\033[?1049l\033[H\033[2Jhttps://en.example/a\r\n");
    hints->toggle();
    ASSERT_TRUE(hints->isOn());
    feed(change);
    EXPECT_FALSE(hints->isOn()) << change;
    EXPECT_EQ(shown(), Labels());
  }
}

// The frame with the new text is still to come when the key is pressed.
TEST_F(HintModeTest, NeverActsOnTextThatHasJustChanged) {
  start("https://en.example/a\\r\\n");
  hints->toggle();
  display->emulator().feed(Bytes(std::string("\0337\033[Hhttps://en.example/b\0338")));
  // What the first waits for has been processed; what the second waits for, published.
  for (int round = 0; round < 2; ++round) {
    std::promise<void> done;
    display->emulator().change([&done](vt::Terminal&) { done.set_value(); });
    done.get_future().wait();
  }
  type("a");
  EXPECT_EQ(desktop.opened, Labels());
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(sent(), "") << "the key is still the mode's";
}

TEST_F(HintModeTest, EndsWhenTheKeyboardGoesElsewhereOrTheViewIsScrolledOrZoomed) {
  start("https://en.example/a\\r\\n");
  hints->toggle();
  canvas().clearFocus();
  EXPECT_FALSE(hints->isOn());
  canvas().setFocus();
  hints->toggle();
  canvas().zoomIn();
  canvas().makeFrameNow();
  EXPECT_FALSE(hints->isOn());
  feed(std::string(200, '\n').append("https://en.example/b "));
  hints->toggle();
  canvas().scrollTo({});
  canvas().makeFrameNow();
  EXPECT_FALSE(hints->isOn());
  EXPECT_EQ(canvas().scrollOffset(), DevicePixels(0)) << "and the view stays where it was scrolled to";
}

TEST_F(HintModeTest, ShowsNothingWhereThereIsNothing) {
  start("plain text ");
  hints->toggle();
  EXPECT_FALSE(hints->isOn());
  type("a");
  EXPECT_EQ(sent(), "a");
}

}  // namespace
}  // namespace zolt

#include "HintModeTests.moc"
