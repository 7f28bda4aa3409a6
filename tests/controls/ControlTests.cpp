// The switch and the segmented picker, each alone in a window.
#include <QHBoxLayout>
#include <QSignalSpy>

#include "controls/ControlColors.h"
#include "controls/ControlFixture.h"
#include "controls/SegmentedPicker.h"
#include "controls/Switch.h"
#include "support/Palettes.h"

namespace zolt {
namespace {

using test::act;
using test::click;

const QString kToggle = QAccessibleActionInterface::toggleAction();
const QString kPress = QAccessibleActionInterface::pressAction();

// Everything that a user can try.
void tryEverything(QWidget& window, Switch& control) {
  click(control);
  control.setFocus(Qt::TabFocusReason);
  test::press(window, Qt::Key_Space);
  act(control, kToggle);
  act(control, kPress);
  QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, control.geometry().center());
  QTest::mouseMove(window.windowHandle(), control.geometry().topLeft());
  QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, control.geometry().topLeft());
}

class SwitchTest : public testing::Test {
 protected:
  Switch& add(Switch::Kind kind) {
    auto* control = new Switch(kind);
    new QHBoxLayout(&window);
    window.layout()->addWidget(control);
    test::shown(window);
    return *control;
  }
  QAccessible::State stateOf(Switch& control) { return QAccessible::queryAccessibleInterface(&control)->state(); }
  // The colour at the centre of the knob's position when the switch is on.
  static QColor onEnd(Switch& control) {
    return control.grab().toImage().pixelColor(control.width() - 14, control.height() / 2);
  }
  static QColor offEnd(Switch& control) { return control.grab().toImage().pixelColor(14, control.height() / 2); }

  QWidget window;
};

TEST_F(SwitchTest, IsToggledByAClickBySpaceAndByAScreenReader) {
  Switch& control = add(Switch::Kind::Movable);
  QSignalSpy toggled(&control, &QAbstractButton::toggled);
  click(control);
  EXPECT_TRUE(control.isChecked());
  control.setFocus();
  test::press(window, Qt::Key_Space);
  EXPECT_FALSE(control.isChecked());
  act(control, kToggle);
  EXPECT_TRUE(control.isChecked());
  EXPECT_EQ(toggled.count(), 3);
}

TEST_F(SwitchTest, FixedIgnoresEverythingThatTheUserDoes) {
  Switch& control = add(Switch::Kind::Fixed);
  for (const bool isOn : {false, true}) {
    control.setChecked(isOn);
    test::runLoopFor(std::chrono::milliseconds(200));
    QSignalSpy toggled(&control, &QAbstractButton::toggled);
    tryEverything(window, control);
    EXPECT_EQ(control.isChecked(), isOn);
    EXPECT_EQ(toggled.count(), 0);
    EXPECT_EQ(onEnd(control) == QColor(Qt::white), isOn);
  }
}

TEST_F(SwitchTest, FixedLooksAndIsEnabled) {
  Switch& control = add(Switch::Kind::Fixed);
  EXPECT_TRUE(control.isEnabled());
  auto* movable = new Switch;
  window.layout()->addWidget(movable);
  test::runLoopFor(std::chrono::milliseconds(5));
  EXPECT_EQ(control.grab().toImage(), movable->grab().toImage());
}

TEST_F(SwitchTest, IsACheckBoxForScreenReaders) {
  Switch& control = add(Switch::Kind::Movable);
  const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&control);
  EXPECT_EQ(reader->role(), QAccessible::CheckBox);
  EXPECT_TRUE(stateOf(control).checkable);
  EXPECT_FALSE(stateOf(control).checked);
  EXPECT_FALSE(stateOf(control).readOnly);
  control.setChecked(true);
  EXPECT_TRUE(stateOf(control).checked);
  EXPECT_TRUE(stateOf(control).focusable);
}

TEST_F(SwitchTest, FixedIsReadOnlyForScreenReaders) {
  EXPECT_TRUE(stateOf(add(Switch::Kind::Fixed)).readOnly);
}

TEST_F(SwitchTest, DisabledIgnoresTheUserAndLooksFainter) {
  Switch& control = add(Switch::Kind::Movable);
  control.setChecked(true);
  test::runLoopFor(std::chrono::milliseconds(200));
  const QImage alive = control.grab().toImage();
  control.setEnabled(false);
  tryEverything(window, control);
  EXPECT_TRUE(control.isChecked());
  EXPECT_NE(control.grab().toImage(), alive);
  EXPECT_TRUE(stateOf(control).disabled);
}

TEST_F(SwitchTest, MovesItsKnobAndFillsItsTrackWithTheAccent) {
  Switch& control = add(Switch::Kind::Movable);
  EXPECT_EQ(offEnd(control), QColor(Qt::white));
  EXPECT_EQ(onEnd(control), ControlColors(control.palette()).off);
  click(control);
  const QColor accent = control.palette().color(QPalette::Highlight);
  EXPECT_TRUE(test::waitFor([&] { return onEnd(control) == QColor(Qt::white) && offEnd(control) == accent; }));
  click(control);
  EXPECT_TRUE(test::waitFor([&] { return offEnd(control) == QColor(Qt::white); }));
}

TEST_F(SwitchTest, DoesNotMoveWhenSetToItsCurrentValue) {
  Switch& control = add(Switch::Kind::Movable);
  const QImage before = control.grab().toImage();
  control.setChecked(false);
  EXPECT_EQ(control.grab().toImage(), before);
}

TEST_F(SwitchTest, FollowsThePalette) {
  Switch& control = add(Switch::Kind::Movable);
  control.setChecked(true);
  test::runLoopFor(std::chrono::milliseconds(200));
  window.setPalette(test::darkPalette());
  EXPECT_EQ(offEnd(control), test::darkPalette().color(QPalette::Highlight));
}

TEST_F(SwitchTest, HasAKnobThatShowsOnAnAccentAsBrightAsItself) {
  QPalette bright = test::darkPalette();
  bright.setColor(QPalette::Highlight, Qt::yellow);
  window.setPalette(bright);
  Switch& control = add(Switch::Kind::Movable);
  control.setChecked(true);
  EXPECT_TRUE(test::waitFor([&] { return offEnd(control) == QColor(Qt::yellow); }));
  EXPECT_TRUE(test::waitFor([&] { return contrastRatio(onEnd(control), Qt::yellow) > 3; }));
}

TEST_F(SwitchTest, ShowsAFocusRingOnlyForKeyboardFocus) {
  Switch& control = add(Switch::Kind::Fixed);
  control.clearFocus();
  const QImage without = control.grab().toImage();
  click(control);
  EXPECT_TRUE(control.hasFocus());
  EXPECT_EQ(control.grab().toImage(), without);
  control.clearFocus();
  control.setFocus(Qt::TabFocusReason);
  EXPECT_NE(control.grab().toImage(), without);
}

class SegmentedPickerTest : public testing::Test {
 protected:
  void SetUp() override {
    auto* row = new QHBoxLayout(&window);
    picker = new SegmentedPicker({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")});
    row->addWidget(picker);
    window.resize(400, 60);
    picker->setCurrentIndex(0);
    test::shown(window);
  }

  QWidget window;
  SegmentedPicker* picker = nullptr;
};

TEST_F(SegmentedPickerTest, IsPickedByAClickOnASegment) {
  QSignalSpy picked(picker, &SegmentedPicker::picked);
  click(*picker->segment(2));
  click(*picker->segment(2));
  EXPECT_EQ(picker->currentIndex(), 2);
  ASSERT_EQ(picked.count(), 1);
  EXPECT_EQ(picked.at(0).at(0), 2);
}

TEST_F(SegmentedPickerTest, ShowsASelectionWithoutEmittingASignal) {
  QSignalSpy picked(picker, &SegmentedPicker::picked);
  picker->setCurrentIndex(1);
  EXPECT_EQ(picker->currentIndex(), 1);
  EXPECT_FALSE(picker->segment(0)->isChecked());
  EXPECT_EQ(picked.count(), 0);
  click(*picker->segment(0));
  EXPECT_EQ(picked.count(), 1);
}

TEST_F(SegmentedPickerTest, ArrowKeysMoveTheSelectionAndTheFocus) {
  QSignalSpy picked(picker, &SegmentedPicker::picked);
  picker->segment(0)->setFocus(Qt::TabFocusReason);
  test::press(window, Qt::Key_Right);
  EXPECT_EQ(picker->currentIndex(), 1);
  EXPECT_TRUE(picker->segment(1)->hasFocus());
  test::press(window, Qt::Key_Right);
  test::press(window, Qt::Key_Right);
  EXPECT_EQ(picker->currentIndex(), 2);
  test::press(window, Qt::Key_Left);
  EXPECT_EQ(picker->currentIndex(), 1);
  EXPECT_EQ(picked.count(), 3);
}

TEST_F(SegmentedPickerTest, IsOneTabStop) {
  QWidget before(&window);
  before.setFocusPolicy(Qt::StrongFocus);
  before.show();
  QWidget::setTabOrder(&before, picker->segment(0));
  picker->setCurrentIndex(1);
  before.setFocus();
  test::press(window, Qt::Key_Tab);
  EXPECT_TRUE(picker->segment(1)->hasFocus());
  test::press(window, Qt::Key_Tab);
  EXPECT_FALSE(picker->isAncestorOf(window.focusWidget()));
}

TEST_F(SegmentedPickerTest, IsAGroupOfNamedRadioButtonsForScreenReaders) {
  EXPECT_EQ(QAccessible::queryAccessibleInterface(picker)->role(), QAccessible::Grouping);
  QAccessibleInterface* second = QAccessible::queryAccessibleInterface(picker->segment(1));
  EXPECT_EQ(second->role(), QAccessible::RadioButton);
  EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("Two"));
  EXPECT_FALSE(second->state().checked);
  act(*picker->segment(1), kPress);
  EXPECT_EQ(picker->currentIndex(), 1);
  EXPECT_TRUE(second->state().checked);
}

TEST_F(SegmentedPickerTest, RaisesTheSelectedSegment) {
  const auto middle = [&](int index) {
    return picker->segment(index)->grab().toImage().pixelColor(10, picker->height() / 2);
  };
  const QColor raised = ControlColors(picker->palette()).raised;
  EXPECT_EQ(middle(0), raised);
  EXPECT_NE(middle(2), raised);
  click(*picker->segment(2));
  EXPECT_EQ(middle(2), raised);
  EXPECT_NE(middle(0), raised);
}

}  // namespace
}  // namespace zolt
