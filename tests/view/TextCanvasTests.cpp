#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QInputMethodEvent>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
#include <cmath>

#include "support/ManualClock.h"
#include "view/ViewFixture.h"

namespace zolt {
namespace {

constexpr int kInset = static_cast<int>(TextCanvas::inset.value);

class TextCanvasTest : public test::TextViewTest {
 protected:
  QImage picture() { return view.viewport()->grab().toImage(); }

  // How many pixels of `area` are about `color`.
  static int pixelsOf(const QImage& image, QRect area, QColor color) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) {
        const QColor pixel = image.pixelColor(x, y);
        const int distance = std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                             std::abs(pixel.blue() - color.blue());
        count += distance < 60 ? 1 : 0;
      }
    }
    return count;
  }
  void wheel(int notches, int pixels = 0) {
    QWheelEvent event(QPointF(50, 50), view.viewport()->mapToGlobal(QPointF(50, 50)), QPoint(0, pixels),
                      QPoint(0, notches * 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &event);
  }
};

TextAttributes colored(Color color) {
  TextAttributes attributes;
  attributes.foreground = color;
  return attributes;
}

TEST_F(TextCanvasTest, IsBlackWhereNothingIsShown) {
  const QImage image = picture();
  EXPECT_EQ(pixelsOf(image, image.rect(), Qt::black), image.width() * image.height());
}

TEST_F(TextCanvasTest, HasExactlyBlackAsItsBackgroundAndWhiteAsItsText) {
  const QImage image = picture().convertToFormat(QImage::Format_RGB32);
  QImage black(image.size(), QImage::Format_RGB32);
  black.setDevicePixelRatio(image.devicePixelRatio());
  black.fill(Qt::black);
  EXPECT_EQ(image, black);
  EXPECT_EQ(view.palette().color(QPalette::Base), QColor(Qt::black));
  EXPECT_EQ(view.palette().color(QPalette::Text), QColor(Qt::white));
}

TEST_F(TextCanvasTest, HasTheFixedFontAtFourteenPixels) {
  const double scale = view.devicePixelRatioF();
  const QFontMetricsF font(CanvasFonts::systemFont(14 * scale));
  EXPECT_EQ(view.cellMetrics().height, DevicePixels(static_cast<int>(std::ceil(font.lineSpacing()))));
  EXPECT_EQ(view.cellMetrics().width, DevicePixels(std::lround(font.horizontalAdvance(QLatin1Char('M')))));
}

TEST_F(TextCanvasTest, HidesItsScrollerExceptForAMomentAfterScrolling) {
  const auto isShown = [&] {
    const QImage bar = view.verticalScrollBar()->grab().toImage();
    return pixelsOf(bar, bar.rect(), Qt::black) < bar.width() * bar.height();
  };
  append("short");
  view.makeFrameNow();
  view.scrollTo(0_px);
  EXPECT_FALSE(isShown()) << "there is nothing to scroll";
  appendLines(300);
  view.makeFrameNow();
  ASSERT_TRUE(test::waitFor([&] { return !isShown(); }));
  view.scrollTo(0_px);
  view.makeFrameNow();
  EXPECT_TRUE(isShown());
  EXPECT_TRUE(test::waitFor([&] { return !isShown(); }));
}

TEST_F(TextCanvasTest, PaintsTheSelectionBehindItsCellsOnly) {
  append("MMMMMMMM");
  view.select({.begin = 2_pos, .end = 5_pos});
  view.makeFrameNow();
  const QImage image = picture();
  const QColor highlight(0x26, 0x4F, 0x78);
  for (TextPosition position = 0_pos; position < 8_pos; position = position + 1) {
    const QRect cell = view.rectOf(position).toAlignedRect();
    const bool selected = position >= 2_pos && position < 5_pos;
    EXPECT_EQ(image.pixelColor(cell.topLeft()) == highlight, selected) << position;
    EXPECT_GT(pixelsOf(image, cell, Qt::white), 0) << "the text stands over it";
  }
}

TEST_F(TextCanvasTest, StrikesTextThroughAboveItsUnderline) {
  const auto linesOf = [&](Line underline, Line strikethrough) {
    TextAttributes attributes = colored({0, 1, 0, 1});
    attributes.underline = underline;
    attributes.strikethrough = strikethrough;
    TerminalNSTextView other;
    other.resize(300, 100);
    other.append(AttributedString("    ", attributes));
    other.makeFrameNow();
    const QImage image = other.viewport()->grab().toImage();
    const QRect cell = other.rectOf(1_pos).toAlignedRect();
    std::vector<int> lines;
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
      if (image.pixelColor(cell.center().x(), y) == QColor(0, 255, 0)) lines.push_back(y);
    }
    return lines;
  };
  EXPECT_TRUE(linesOf(Line::None, Line::None).empty());
  const auto struck = linesOf(Line::None, Line::Single);
  const auto underlined = linesOf(Line::Single, Line::None);
  ASSERT_FALSE(struck.empty());
  ASSERT_FALSE(underlined.empty());
  EXPECT_LT(struck.back(), underlined.front());
}

TEST_F(TextCanvasTest, ShowsTextBeingComposedAfterTheLastCharacter) {
  append("ab");
  view.makeFrameNow();
  const QImage before = picture();
  QInputMethodEvent compose(QStringLiteral("MM"), {});
  QApplication::sendEvent(&view, &compose);
  const QImage during = picture();
  EXPECT_NE(during, before);
  const QRect text = view.rectOf(0_pos).toAlignedRect().united(view.rectOf(1_pos).toAlignedRect());
  EXPECT_EQ(during.copy(text), before.copy(text));
  EXPECT_EQ(static_cast<QWidget&>(view).inputMethodQuery(Qt::ImCursorRectangle).toRect(), view.rectOf(2_pos).toRect());
  QInputMethodEvent none;
  QApplication::sendEvent(&view, &none);
  EXPECT_EQ(picture(), before);
}

TEST_F(TextCanvasTest, PaintsTextInItsColourFiveFromTheCorner) {
  view.append(AttributedString("MMMM", colored({0.8, 0, 0, 1})));
  view.makeFrameNow();
  const QImage image = picture();
  const QRectF cell = view.rectOf(0_pos);
  EXPECT_EQ(cell.topLeft(), QPointF(kInset, kInset));
  const QRect text(5, 5, static_cast<int>(cell.width() * 4), static_cast<int>(cell.height()));
  EXPECT_GT(pixelsOf(image, text, QColor(204, 0, 0)), 20);
  EXPECT_EQ(pixelsOf(image, image.rect(), Qt::white), 0);
  const QRect right(text.right() + 2, 0, image.width() - text.right() - 2, image.height());
  EXPECT_EQ(pixelsOf(image, right, Qt::black), right.width() * right.height());
}

TEST_F(TextCanvasTest, PaintsBackgroundsAndLines) {
  TextAttributes attributes = colored({0, 1, 0, 1});
  attributes.background = Color{0, 0, 1, 1};
  attributes.underline = Line::Single;
  view.append(AttributedString("    ", attributes));
  view.makeFrameNow();
  const QImage image = picture();
  const QRect cell = view.rectOf(1_pos).toAlignedRect();
  EXPECT_GT(pixelsOf(image, cell, Qt::blue), cell.width() * cell.height() / 2);
  EXPECT_GE(pixelsOf(image, cell, Qt::green), cell.width()) << "the underline";
}

TEST_F(TextCanvasTest, ShowsNothingOfClearText) {
  view.append(AttributedString("MMMM", colored(Color::clear)));
  view.makeFrameNow();
  const QImage image = picture();
  EXPECT_EQ(pixelsOf(image, image.rect(), Qt::black), image.width() * image.height());
}

TEST_F(TextCanvasTest, ClampsComponentsAboveOneOnlyWhenPainting) {
  view.append(AttributedString("MMMM", colored({2.5, 2.5, 2.5, 1})));
  view.makeFrameNow();
  const QImage image = picture();
  EXPECT_GT(pixelsOf(image, image.rect(), Qt::white), 5);
}

TEST_F(TextCanvasTest, PaintsBoldAndItalicInCutsOfTheirOwn) {
  append("Wg");
  view.makeFrameNow();
  const QImage regular = picture().copy(0, 0, 60, 30);
  for (const bool italic : {false, true}) {
    TerminalNSTextView other;
    other.resize(900, 600);
    other.show();
    TextAttributes attributes;
    if (italic) {
      attributes.font.slant = FontSlant::Italic;
    } else {
      attributes.font.weight = FontWeight::Bold;
    }
    other.append(AttributedString("Wg", attributes));
    other.makeFrameNow();
    EXPECT_NE(other.viewport()->grab().toImage().copy(0, 0, 60, 30), regular);
  }
}

// What is on the screen after a few rounds of the event loop, not what the widget would paint if it were asked again.
QImage onScreen(TerminalNSTextView& view) {
  QImage last;
  test::waitFor(
      [&] {
        const QImage now = view.screen()->grabWindow(view.winId()).toImage();
        return now == std::exchange(last, now);
      },
      std::chrono::seconds(2));
  return last;
}

TEST_F(TextCanvasTest, ShowsTheSameAfterMovingThePictureAsFromScratch) {
  appendLines(300);
  view.makeFrameNow();
  onScreen(view);
  for (const DevicePixels offset : {0_px, 7_px, 300_px, 290_px, 3000_px, 2999_px}) {
    view.scrollTo(offset);
    view.makeFrameNow();
    QApplication::processEvents();
    const QImage moved = onScreen(view);
    view.viewport()->repaint();
    EXPECT_EQ(moved, onScreen(view)) << "at " << offset;
  }
}

TEST_F(TextCanvasTest, ShowsTextThatIsAppendedToARowInView) {
  append("one");
  view.makeFrameNow();
  const QImage before = onScreen(view);
  append(" two");
  view.makeFrameNow();
  const QImage after = onScreen(view);
  EXPECT_NE(after, before);
  view.viewport()->repaint();
  EXPECT_EQ(after, onScreen(view));
}

TEST_F(TextCanvasTest, ScrollsToTheEndWhenAskedWhateverTheUserDid) {
  appendLines(300);
  view.scrollTo(0_px);
  EXPECT_FALSE(view.isAtEnd());
  view.scrollToEndOfDocument();
  EXPECT_EQ(view.scrollOffset(), view.scrollMaximum());
  EXPECT_GT(view.scrollMaximum(), 0_px);
}

TEST_F(TextCanvasTest, TheWheelAndTheScrollBarMoveTheText) {
  appendLines(300);
  view.scrollToEndOfDocument();
  view.makeFrameNow();
  const DevicePixels end = view.scrollOffset();
  wheel(2);
  EXPECT_EQ(view.scrollOffset(), end - 6 * view.cellMetrics().height) << "three rows a notch";
  wheel(-100);
  EXPECT_TRUE(view.isAtEnd());
  wheel(1, 7);
  EXPECT_EQ(view.scrollOffset(), end - 7_px) << "a touchpad says how many pixels";
  wheel(-100);
  view.verticalScrollBar()->setValue(0);
  EXPECT_EQ(view.scrollOffset(), 0_px);
  view.makeFrameNow();
  view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
  EXPECT_TRUE(view.isAtEnd());
}

TEST_F(TextCanvasTest, KeepsTheTopLineInPlaceWhenTheWidthChanges) {
  std::string text;
  for (int i = 0; i < 2000; ++i) {
    text += "line " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 200), '.') + "\n";
  }
  append(text);
  view.makeFrameNow();
  const TextPosition line(view.textStorage().lineStart(1000));
  view.scrollTo(view.cellMetrics().topOf(view.source().rowAt(line)) + DevicePixels(kInset));
  view.makeFrameNow();
  const TextPosition top = view.positionAt(QPointF(kInset, 1));
  EXPECT_EQ(top, line);
  for (const int width : {300, 1200, 170, 900}) {
    view.resize(width, 600);
    view.makeFrameNow();
    EXPECT_EQ(view.positionAt(QPointF(kInset, 1)), top) << "at " << width;
  }
}

TEST_F(TextCanvasTest, StaysAtTheEndWhenTheSizeChanges) {
  appendLines(300);
  view.scrollToEndOfDocument();
  view.makeFrameNow();
  view.resize(400, 200);
  view.makeFrameNow();
  EXPECT_TRUE(view.isAtEnd());
  EXPECT_EQ(view.scrollOffset(), view.scrollMaximum());
}

/// A canvas in a window whose clock is the test's, and the sizes that it tells.
class TextCanvasSizeTest : public testing::Test {
 protected:
  void SetUp() override {
    QObject::connect(&view, &TextCanvas::gridSizeChanged, [this](const TerminalSize& size) { told.push_back(size); });
    view.resize(900, 600);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view, test::kPatience.count()));
  }
  void resizeTo(QSize size) {
    view.resize(size);
    ASSERT_TRUE(test::waitFor([&] { return view.size() == size; }));
    QApplication::processEvents();
  }

  test::ManualClock clock;
  TerminalNSTextView view{nullptr, clock};
  std::vector<TerminalSize> told;
};

TEST_F(TextCanvasSizeTest, IsToldInCellsAndTheirPixelsWithoutWaitingWhenTheWindowIsShown) {
  clock.advance(std::chrono::milliseconds(0));
  const CellMetrics& cell = view.cellMetrics();
  const int columns = (view.viewport()->width() - 2 * kInset) / cell.width.toInt();
  const int rows = (600 - 2 * kInset) / cell.height.toInt();
  EXPECT_EQ(told, std::vector{(TerminalSize{.rows = rows,
                                            .columns = columns,
                                            .pixelWidth = columns * cell.width.toInt(),
                                            .pixelHeight = rows * cell.height.toInt()})});
}

TEST_F(TextCanvasSizeTest, IsToldOnceWhenTheWindowHasComeToRest) {
  clock.advance(std::chrono::milliseconds(0));
  told.clear();
  for (int width = 850; width >= 400; width -= 50) {
    resizeTo(QSize(width, 400));
    clock.advance(std::chrono::milliseconds(30));
  }
  EXPECT_TRUE(told.empty());
  clock.advance(SizeNotifier::restInterval);
  EXPECT_EQ(told, std::vector{view.gridSize()});
  resizeTo(QSize(600, 500));
  resizeTo(QSize(400, 400));
  clock.advance(std::chrono::hours(1));
  EXPECT_EQ(told.size(), 1U) << "it is where it was";
}

TEST_F(TextCanvasSizeTest, IsTheSameForAWindowThatIsTooLittleLargerForAnotherCell) {
  const CellMetrics& cell = view.cellMetrics();
  const TerminalSize size = view.gridSize();
  const int frame = view.width() - view.viewport()->width() + 2 * kInset;
  const QSize exact(size.pixelWidth + frame, size.pixelHeight + 2 * kInset);
  resizeTo(exact);
  EXPECT_EQ(view.gridSize(), size);
  resizeTo(exact + QSize(cell.width.toInt() - 1, cell.height.toInt() - 1));
  EXPECT_EQ(view.gridSize(), size);
  resizeTo(exact + QSize(cell.width.toInt(), cell.height.toInt()));
  EXPECT_EQ(view.gridSize().columns, size.columns + 1);
  EXPECT_EQ(view.gridSize().rows, size.rows + 1);
}

TEST_F(TextCanvasTest, SurvivesBeingTooSmallForACharacter) {
  appendLines(10);
  view.resize(1, 1);
  view.makeFrameNow();
  EXPECT_EQ(view.gridSize().columns, 1);
  EXPECT_EQ(view.gridSize().rows, 1);
}

TEST_F(TextCanvasTest, LaysOutOnlyWhatIsInView) {
  appendLines(200'000);
  view.makeFrameNow();
  EXPECT_EQ(view.source().rowCount(), 200'001);
  EXPECT_LT(view.rowsInFrame(), 600U / static_cast<unsigned>(view.cellMetrics().height.toInt()) + 3);
}

}  // namespace
}  // namespace zolt
