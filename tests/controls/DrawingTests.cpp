// How the controls are painted: lines, colours, where texts begin, the scroll bar, tooltips.
#include <QAbstractItemView>
#include <QFontDatabase>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>
#include <set>

#include "controls/ControlColors.h"
#include "controls/ControlFixture.h"
#include "controls/Hairline.h"
#include "controls/PopUpPicker.h"
#include "controls/SecondaryLabel.h"
#include "controls/TextField.h"
#include "controls/ThinScrollBar.h"
#include "controls/ToolTipText.h"

namespace zolt {
namespace {

int rowsOfInk(const QImage& image) {
  int rows = 0;
  for (int y = 0; y < image.height(); ++y) {
    if (image.pixelColor(image.width() / 2, y) != QColor(Qt::white)) ++rows;
  }
  return rows;
}

TEST(Hairline, IsEquallyThickEverywhereAtAnyScale) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    for (int y = 0; y < 12; ++y) {
      QImage image((QSizeF(20, 20) * scale).toSize(), QImage::Format_RGB32);
      image.setDevicePixelRatio(scale);
      image.fill(Qt::white);
      QPainter painter(&image);
      painter.translate(0, 3);
      drawHairline(painter, QRect(0, y, 20, 1), Qt::black);
      painter.end();
      EXPECT_EQ(rowsOfInk(image), static_cast<int>(scale)) << scale << " at " << y;
    }
  }
}

// The leftmost column in which a control differs from the same one without text.
int firstInk(const QImage& with, const QImage& without) {
  for (int x = 0; x < with.width(); ++x) {
    for (int y = 0; y < with.height(); ++y) {
      if (with.pixel(x, y) != without.pixel(x, y)) return x;
    }
  }
  return -1;
}

TEST(Controls, InOneColumnAlignTheirTexts) {
  PopUpPicker picker;
  TextField field;
  picker.resize(picker.sizeHint());
  field.resize(picker.width(), field.sizeHint().height());
  const QImage emptyPicker = picker.grab().toImage();
  const QImage emptyField = field.grab().toImage();
  picker.addItem(QStringLiteral("Hello"));
  field.setText(QStringLiteral("Hello"));
  const int inPicker = firstInk(picker.grab().toImage(), emptyPicker);
  EXPECT_GT(inPicker, 0);
  EXPECT_EQ(inPicker, firstInk(field.grab().toImage(), emptyField));
}

TEST(PopUpPickerList, IsAsWideAsThePaintedPicker) {
  PopUpPicker picker;
  picker.addItems({QStringLiteral("One"), QStringLiteral("Two")});
  picker.resize(260, picker.sizeHint().height());
  test::shown(picker);
  picker.showPopup();
  const QWidget* list = picker.view()->window();
  ASSERT_TRUE(test::waitFor([&] { return list->isVisible(); }));
  EXPECT_EQ(list->x(), picker.mapToGlobal(QPoint(KeyboardFocus::margin, 0)).x());
  EXPECT_EQ(list->width(), picker.width() - 2 * KeyboardFocus::margin);
  picker.hidePopup();
}

TEST(SecondaryLabel, IsPaintedInTheSecondaryColour) {
  SecondaryLabel label(QStringLiteral("IIIHHH"));
  label.resize(label.sizeHint());
  const ControlColors colors(label.palette());
  const double strongest = test::strongestContrast(label.grab().toImage(), colors.window);
  EXPECT_GT(strongest, 2);
  EXPECT_LE(strongest, contrastRatio(colors.secondary, colors.window) + 0.05);
}

TEST(SecondaryLabel, ShowsOnlyElidedTextInATooltip) {
  SecondaryLabel label(QStringLiteral("A text that is long enough to be elided"));
  const auto hover = [&] {
    QToolTip::hideText();
    QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&label, &event);
    return QToolTip::text();
  };
  label.resize(label.sizeHint());
  test::shown(label);
  EXPECT_EQ(hover(), QString());
  label.resize(60, label.height());
  EXPECT_TRUE(hover().contains(label.text()));
  QToolTip::hideText();
}

TEST(ToolTipText, HasNoLineBeyondTheMaximumWidthAndLosesNothing) {
  const QFont font = QApplication::font();
  const QString word(200, QLatin1Char('w'));
  const QString text = QStringLiteral("some words, then ") + word;
  QString markup = toolTipText({text}, font, 150);
  EXPECT_GT(markup.count(QStringLiteral("<br>")), 3);
  for (QString line : markup.split(QStringLiteral("<br>"))) {
    line.remove(QStringLiteral("<p style='white-space:pre'>")).remove(QStringLiteral("</p>"));
    EXPECT_LE(QFontMetrics(font).horizontalAdvance(line), 150) << line.toStdString();
  }
  QTextDocument shown;
  shown.setHtml(markup);
  QString joined = shown.toPlainText().remove(QLatin1Char('\n')).remove(QLatin1Char(' '));
  EXPECT_EQ(joined, QString(text).remove(QLatin1Char(' ')));
}

TEST(ToolTipText, ShowsMarkupAsPlainText) {
  QTextDocument shown;
  shown.setHtml(toolTipText({QStringLiteral("<b>1 & 2</b>"), QStringLiteral("second")}, QApplication::font()));
  EXPECT_EQ(shown.toPlainText(), QStringLiteral("<b>1 & 2</b>\nsecond"));
}

TEST(ToolTipText, EndsAVeryLongTextWithAnEllipsis) {
  QTextDocument shown;
  shown.setHtml(toolTipText({QString(100'000, QLatin1Char('x'))}, QApplication::font()));
  const QString text = shown.toPlainText().remove(QLatin1Char('\n'));
  EXPECT_LT(text.size(), 1000);
  EXPECT_TRUE(text.endsWith(QChar(0x2026)));
}

class ThinScrollBarTest : public testing::Test {
 protected:
  ThinScrollBar& add(ThinScrollBar::Ground ground) {
    window.resize(60, 200);
    bar = new ThinScrollBar(ground, &window);
    bar->setGeometry(40, 0, ThinScrollBar::breadth, 200);
    bar->setRange(0, 100);
    bar->setPageStep(100);
    test::shown(window);
    return *bar;
  }
  // Whether the thumb, which lies at the top, is painted.
  bool isThumbSeen() const {
    const QImage image = window.grab().toImage();
    return image.pixelColor(46, 40) != image.pixelColor(46, 190);
  }
  void point(bool at) const {
    const QPointF place(5, 5);
    if (at) {
      QEnterEvent event(place, place, bar->mapToGlobal(place));
      bar->setAttribute(Qt::WA_UnderMouse);
      QApplication::sendEvent(bar, &event);
    } else {
      QEvent event(QEvent::Leave);
      bar->setAttribute(Qt::WA_UnderMouse, false);
      QApplication::sendEvent(bar, &event);
    }
  }

  mutable QWidget window;
  ThinScrollBar* bar = nullptr;
};

TEST_F(ThinScrollBarTest, OnAWindowShowsItsThumbWhileThereIsSomethingToScroll) {
  add(ThinScrollBar::Ground::Window);
  EXPECT_TRUE(isThumbSeen());
  EXPECT_EQ(window.grab().toImage().pixelColor(41, 100), window.palette().color(QPalette::Window));
  bar->setRange(0, 0);
  EXPECT_FALSE(isThumbSeen());
}

TEST_F(ThinScrollBarTest, OnATerminalIsBlackAndShowsItsThumbOnlyWhileItIsUsed) {
  add(ThinScrollBar::Ground::Terminal);
  point(false);  // wherever the pointer was
  ASSERT_TRUE(test::waitFor([&] { return !isThumbSeen(); }));
  EXPECT_EQ(window.grab().toImage().pixelColor(41, 100), QColor(Qt::black));
  point(true);
  EXPECT_TRUE(isThumbSeen());
  point(false);
  EXPECT_TRUE(isThumbSeen()) << "and for a little longer";
  EXPECT_TRUE(test::waitFor([&] { return !isThumbSeen(); }));
  bar->flash();
  EXPECT_TRUE(isThumbSeen());
}

TEST_F(ThinScrollBarTest, IsStrongerUnderThePointer) {
  add(ThinScrollBar::Ground::Window);
  point(false);
  const QColor before = window.grab().toImage().pixelColor(46, 40);
  point(true);
  const QColor after = window.grab().toImage().pixelColor(46, 40);
  const QColor ground = window.palette().color(QPalette::Window);
  EXPECT_GT(contrastRatio(after, ground), contrastRatio(before, ground));
}

TEST_F(ThinScrollBarTest, MarksRangesInProportionToItsHeight) {
  add(ThinScrollBar::Ground::Terminal);
  bar->setRange(0, 0);
  bar->setMarks({{.begin = 0, .end = 0}, {.begin = 0.5, .end = 0.75}});
  const QImage image = window.grab().toImage();
  const auto isMarked = [&](int y) { return image.pixelColor(46, y) != QColor(Qt::black); };
  EXPECT_TRUE(isMarked(0));
  EXPECT_FALSE(isMarked(50));
  EXPECT_TRUE(isMarked(105));
  EXPECT_TRUE(isMarked(145));
  EXPECT_FALSE(isMarked(160));
}

}  // namespace
}  // namespace zolt
