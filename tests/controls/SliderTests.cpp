#include <QHBoxLayout>
#include <QSignalSpy>
#include <algorithm>
#include <limits>

#include "controls/ControlFixture.h"
#include "controls/SliderRow.h"

namespace zolt {
namespace {

QString pointsText(double value) {
  return QStringLiteral("%1pt").arg(static_cast<int>(std::min(value, 1000.0)));
}

constexpr SliderScale kSizes{.partsOfOne = 1, .first = 8, .last = 72, .keyStep = 1};

class SliderTest : public testing::Test {
 protected:
  void SetUp() override {
    new QHBoxLayout(&window);
    window.layout()->addWidget(row);
    window.resize(420, 60);
    test::shown(window);
  }

  Slider& slider() { return row->slider(); }
  QPoint knob() { return slider().knobCenter().toPoint(); }
  QPoint inWindow(QPoint place) { return slider().mapTo(&window, place); }
  void drag(QPoint from, QPoint to) {
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, inWindow(from));
    QTest::mouseMove(window.windowHandle(), inWindow((from + to) / 2));
    QTest::mouseMove(window.windowHandle(), inWindow(to));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, inWindow(to));
  }

  QWidget window;
  SliderRow* row = new SliderRow(kSizes, pointsText);
  QSignalSpy chosen{row, &SliderRow::chosen};
};

TEST_F(SliderTest, ShowsAValueWithoutEmittingASignal) {
  row->setValue(14);
  EXPECT_EQ(slider().value(), 14);
  EXPECT_EQ(row->valueText(), QStringLiteral("14pt"));
  row->setValue(13.5);
  EXPECT_EQ(row->valueText(), QStringLiteral("13pt"));
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(SliderTest, ShowsAValueOutOfRangeAtTheNearerEndWithItsOwnText) {
  row->setValue(100);
  EXPECT_EQ(slider().value(), 72);
  EXPECT_EQ(row->valueText(), QStringLiteral("100pt"));
  row->setValue(3.5);
  EXPECT_EQ(slider().value(), 8);
  EXPECT_EQ(row->valueText(), QStringLiteral("3pt"));
  row->setValue(std::numeric_limits<double>::infinity());
  EXPECT_EQ(slider().value(), 72);
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(SliderTest, CanBeDraggedToItsEnds) {
  row->setValue(14);
  drag(knob(), QPoint(slider().width() + 50, knob().y()));
  EXPECT_EQ(row->valueText(), QStringLiteral("72pt"));
  EXPECT_EQ(chosen.last().at(0), 72.0);
  drag(knob(), QPoint(-50, knob().y()));
  EXPECT_EQ(row->valueText(), QStringLiteral("8pt"));
  EXPECT_EQ(chosen.last().at(0), 8.0);
}

TEST_F(SliderTest, AKnobHeldAtItsEdgeMovesByTheMousesDistance) {
  row->setValue(40);
  const QPointF before = slider().knobCenter();
  drag(knob() + QPoint(6, 0), knob() + QPoint(56, 0));
  EXPECT_NEAR(slider().knobCenter().x(), before.x() + 50, 3);
}

// Counts how often a widget is painted.
class PaintCounter : public QObject {
 public:
  int count = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

TEST_F(SliderTest, TheKnobIsTintedWhileItIsHeld) {
  row->setValue(40);
  const auto knobColor = [&] { return slider().grab().toImage().pixelColor(knob()); };
  EXPECT_EQ(knobColor(), QColor(Qt::white));
  PaintCounter paints;
  slider().installEventFilter(&paints);
  QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, inWindow(knob()));
  EXPECT_TRUE(test::waitFor([&] { return paints.count > 0; })) << "on the screen, too";
  EXPECT_NE(knobColor(), QColor(Qt::white));
  test::runLoopFor(std::chrono::milliseconds(50));
  paints.count = 0;
  QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, inWindow(knob()));
  EXPECT_TRUE(test::waitFor([&] { return paints.count > 0; })) << "on the screen, too";
  EXPECT_EQ(knobColor(), QColor(Qt::white));
}

TEST_F(SliderTest, AClickOnTheKnobChangesNothing) {
  for (const double value : {13.5, 100.0, 14.0}) {
    row->setValue(value);
    test::clickAt(slider(), knob());
    test::clickAt(slider(), knob() + QPoint(5, 0));
  }
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(SliderTest, AClickBesideTheKnobMovesItThere) {
  row->setValue(8);
  test::clickAt(slider(), slider().rect().center());
  EXPECT_EQ(chosen.last().at(0), 40.0);
  EXPECT_NEAR(slider().knobCenter().x(), slider().rect().center().x(), 3);
}

TEST_F(SliderTest, KeysMoveItByStepsAndToTheEnds) {
  row->setValue(14);
  slider().setFocus();
  const std::pair<Qt::Key, double> keys[] = {{Qt::Key_Right, 15}, {Qt::Key_Up, 16},     {Qt::Key_Left, 15},
                                             {Qt::Key_Down, 14},  {Qt::Key_PageUp, 24}, {Qt::Key_PageDown, 14},
                                             {Qt::Key_End, 72},   {Qt::Key_Home, 8}};
  for (const auto& [key, value] : keys) {
    test::press(window, key);
    EXPECT_EQ(chosen.last().at(0).toDouble(), value);
  }
  EXPECT_EQ(chosen.count(), 8);
}

TEST_F(SliderTest, AKeyAtTheEndClampsAValueThatIsOutOfRange) {
  row->setValue(100);
  slider().setFocus();
  test::press(window, Qt::Key_End);
  EXPECT_EQ(row->valueText(), QStringLiteral("72pt"));
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.last().at(0), 72.0);
  test::press(window, Qt::Key_End);
  EXPECT_EQ(chosen.count(), 1);
}

TEST_F(SliderTest, TheWheelChangesNothing) {
  row->setValue(14);
  QWheelEvent event(QPointF(knob()), slider().mapToGlobal(QPointF(knob())), {}, QPoint(0, 120), Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  event.accept();
  QApplication::sendEvent(&slider(), &event);
  EXPECT_EQ(chosen.count(), 0);
  EXPECT_EQ(slider().value(), 14);
}

TEST_F(SliderTest, OtherMouseButtonsChangeNothing) {
  row->setValue(14);
  QTest::mouseClick(window.windowHandle(), Qt::RightButton, {}, inWindow(slider().rect().center()));
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(SliderTest, CanBeSetByAScreenReader) {
  row->setValue(14);
  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&slider());
  reader->valueInterface()->setCurrentValue(20);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.last().at(0), 20.0);
  EXPECT_EQ(slider().accessibleDescription(), QStringLiteral("20pt"));
}

TEST_F(SliderTest, FillsItsTrackUpToTheKnob) {
  row->setValue(40);
  const QImage image = slider().grab().toImage();
  EXPECT_EQ(image.pixelColor(20, image.height() / 2), slider().palette().color(QPalette::Highlight));
  EXPECT_NE(image.pixelColor(image.width() - 20, image.height() / 2), slider().palette().color(QPalette::Highlight));
}

TEST_F(SliderTest, MirrorsInRightToLeftLayouts) {
  row->setValue(8);
  window.setLayoutDirection(Qt::RightToLeft);
  EXPECT_GT(knob().x(), slider().width() / 2);
  test::clickAt(slider(), QPoint(3, knob().y()));
  EXPECT_EQ(chosen.last().at(0), 72.0);
}

}  // namespace
}  // namespace zolt
