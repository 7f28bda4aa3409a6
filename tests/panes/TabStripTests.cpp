// The strip of tabs.
#include "panes/TabStrip.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "support/WaitFor.h"

namespace zolt {
namespace {

class TabStripTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* title : {"one", "two", "three"}) {
      strip.addTabAt(strip.count());
      strip.setTitle(strip.count() - 1, QString::fromLatin1(title));
    }
    strip.setGround(strip.palette().color(QPalette::Window));
    strip.resize(600, strip.sizeHint().height());
    strip.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&strip, test::kPatience.count()));
  }
  QStringList titles() const {
    QStringList all;
    for (int index = 0; index < strip.count(); ++index) {
      all << strip.title(index);
    }
    return all;
  }
  QPoint middleOf(int index) const { return strip.tabRect(index).center(); }
  QPoint closeOf(int index) const {
    const QRect tab = strip.tabRect(index);
    return {tab.right() - tab.height() / 2, tab.center().y()};
  }
  QLineEdit* editor() const { return strip.findChild<QLineEdit*>(QStringLiteral("tabName")); }

  TabStrip strip;
};

TEST_F(TabStripTest, SharesItsWidthAmongTheTabs) {
  for (int index = 0; index < strip.count(); ++index) {
    EXPECT_EQ(strip.tabRect(index).width(), 200);
  }
  strip.resize(900, strip.height());
  EXPECT_EQ(strip.tabRect(0).width(), 300);
}

TEST_F(TabStripTest, ChangesTheTabByAClickAndClosesByItsCrossOrTheMiddleButton) {
  QSignalSpy closed(&strip, &TabStrip::closeWanted);
  QTest::mouseClick(&strip, Qt::LeftButton, {}, middleOf(2));
  EXPECT_EQ(strip.currentIndex(), 2);
  EXPECT_TRUE(closed.isEmpty());
  QTest::mouseClick(&strip, Qt::LeftButton, {}, closeOf(1));
  ASSERT_EQ(closed.count(), 1);
  EXPECT_EQ(closed.takeFirst().front().toInt(), 1);
  EXPECT_EQ(strip.currentIndex(), 2) << "it is not brought to the front for that";
  QTest::mouseClick(&strip, Qt::MiddleButton, {}, middleOf(0));
  ASSERT_EQ(closed.count(), 1);
  EXPECT_EQ(closed.front().front().toInt(), 0);
}

TEST_F(TabStripTest, ClosesNothingIfTheButtonIsReleasedElsewhere) {
  QSignalSpy closed(&strip, &TabStrip::closeWanted);
  QTest::mousePress(&strip, Qt::LeftButton, {}, closeOf(1));
  QTest::mouseRelease(&strip, Qt::LeftButton, {}, middleOf(0));
  EXPECT_TRUE(closed.isEmpty());
}

TEST_F(TabStripTest, ReordersByDragging) {
  QSignalSpy moved(&strip, &QTabBar::tabMoved);
  QTest::mousePress(&strip, Qt::LeftButton, {}, middleOf(0));
  for (int x = middleOf(0).x(); x <= middleOf(2).x(); x += 10) {
    QMouseEvent move(QEvent::MouseMove, QPoint(x, middleOf(0).y()), strip.mapToGlobal(QPoint(x, middleOf(0).y())),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&strip, &move);
  }
  QTest::mouseRelease(&strip, Qt::LeftButton, {}, middleOf(2));
  ASSERT_TRUE(test::waitFor([&] {
    return titles() == QStringList({QStringLiteral("two"), QStringLiteral("three"), QStringLiteral("one")});
  })) << titles().join(QLatin1Char(',')).toStdString();
  EXPECT_FALSE(moved.isEmpty());
  EXPECT_EQ(strip.currentIndex(), 2);
}

TEST_F(TabStripTest, TakesANameInPlace) {
  QSignalSpy named(&strip, &TabStrip::named);
  QTest::mouseDClick(&strip, Qt::LeftButton, {}, middleOf(1));
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), QStringLiteral("two"));
  QTest::keyClicks(editor(), QStringLiteral(" builds "));
  QTest::keyClick(editor(), Qt::Key_Return);
  ASSERT_EQ(named.count(), 1);
  EXPECT_EQ(named.front().value(0).toInt(), 1);
  EXPECT_EQ(named.front().value(1).toString(), QStringLiteral("builds"));
}

TEST_F(TabStripTest, KeepsTheNameAfterEscapeAndIfNothingWasTyped) {
  QSignalSpy named(&strip, &TabStrip::named);
  strip.editName(1);
  QTest::keyClicks(editor(), QStringLiteral("builds"));
  QTest::keyClick(editor(), Qt::Key_Escape);
  strip.editName(1);
  QTest::keyClick(editor(), Qt::Key_Return);
  EXPECT_TRUE(named.isEmpty());
}

TEST_F(TabStripTest, GoesOnEditingANameWhileTitlesChange) {
  QSignalSpy named(&strip, &TabStrip::named);
  strip.editName(2);
  QTest::keyClicks(editor(), QStringLiteral("bui"));
  strip.setTitle(2, QStringLiteral("another title"));
  strip.removeTabAt(0);
  QTest::keyClicks(editor(), QStringLiteral("lds"));
  QTest::keyClick(editor(), Qt::Key_Return);
  ASSERT_EQ(named.count(), 1);
  EXPECT_EQ(named.front().value(0).toInt(), 1) << "where it is now";
  EXPECT_EQ(named.front().value(1).toString(), QStringLiteral("builds"));
}

TEST_F(TabStripTest, EditsTheNameWithoutWhatIsShownBehindIt) {
  strip.setTitle(1, QStringLiteral("two"), QStringLiteral(" (1 of 2)"));
  EXPECT_EQ(strip.shownTitle(1), QStringLiteral("two (1 of 2)"));
  strip.editName(1);
  EXPECT_EQ(editor()->text(), QStringLiteral("two"));
}

TEST_F(TabStripTest, MakesNoMnemonicsFromTitles) {
  strip.setTitle(1, QStringLiteral("a &b"));
  strip.window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&strip, test::kPatience.count()));
  QTest::keyClick(strip.windowHandle(), Qt::Key_B, Qt::AltModifier);
  EXPECT_EQ(strip.currentIndex(), 0);
}

TEST_F(TabStripTest, EndsAReorderingBeforeTabsComeAndGo) {
  const auto dragLeft = [this] {
    QTest::mousePress(&strip, Qt::LeftButton, {}, middleOf(2));
    for (int x = middleOf(2).x(); x >= middleOf(0).x() + 60; x -= 10) {
      QMouseEvent move(QEvent::MouseMove, QPoint(x, middleOf(0).y()), strip.mapToGlobal(QPoint(x, middleOf(0).y())),
                       Qt::NoButton, Qt::LeftButton, {});
      QApplication::sendEvent(&strip, &move);
    }
  };
  dragLeft();
  strip.removeTabAt(strip.currentIndex());
  EXPECT_GE(strip.currentIndex(), 0);
  QTest::mouseRelease(&strip, Qt::LeftButton, {}, middleOf(0));
  strip.addTabAt(1);
  dragLeft();
  strip.addTabAt(0);
  strip.turnTo(0);
  EXPECT_EQ(strip.currentIndex(), 0);
  QTest::mouseRelease(&strip, Qt::LeftButton, {}, middleOf(0));
  EXPECT_EQ(strip.count(), 4);
}

TEST_F(TabStripTest, KnowsATabWhereverItIs) {
  const std::uint64_t id = strip.idOf(0);
  strip.moveTab(0, 2);
  EXPECT_EQ(strip.indexOf(id), 2);
  strip.removeTabAt(0);
  EXPECT_EQ(strip.indexOf(id), 1);
  strip.removeTabAt(1);
  EXPECT_EQ(strip.indexOf(id), -1);
}

TEST_F(TabStripTest, ClosesByTheMiddleButtonOnlyTheTabItWasPressedOn) {
  QSignalSpy closed(&strip, &TabStrip::closeWanted);
  QTest::mousePress(&strip, Qt::MiddleButton, {}, middleOf(0));
  QTest::mouseRelease(&strip, Qt::MiddleButton, {}, middleOf(1));
  EXPECT_TRUE(closed.isEmpty());
}

TEST_F(TabStripTest, TellsItsMarksInWords) {
  strip.setMarks(1, {.hasActivity = true,
                     .hasBell = true,
                     .exitStatus = 3,
                     .progress = {.kind = TabProgress::Kind::Value, .percent = 40},
                     .panes = 2});
  QAccessibleInterface* tab = QAccessible::queryAccessibleInterface(&strip)->child(1);
  EXPECT_EQ(tab->text(QAccessible::Name), QStringLiteral("two, bell, exited with status 3, 40%, new output, 2 splits"));
  strip.setMarks(1, {});
  EXPECT_EQ(tab->text(QAccessible::Name), QStringLiteral("two"));
}

TEST_F(TabStripTest, ShowsEveryMark) {
  const auto picture = [this](const TabMarks& marks) {
    strip.setMarks(1, marks);
    return strip.grab(strip.tabRect(1)).toImage();
  };
  const TabMarks none;
  std::vector<QImage> pictures{picture(none)};
  for (const TabMarks& marks :
       {TabMarks{.hasActivity = true}, TabMarks{.hasBell = true}, TabMarks{.exitStatus = 1}, TabMarks{.exitStatus = 0},
        TabMarks{.progress = {.kind = TabProgress::Kind::Value, .percent = 20}},
        TabMarks{.progress = {.kind = TabProgress::Kind::Value, .percent = 90}},
        TabMarks{.progress = {.kind = TabProgress::Kind::Error, .percent = 20}},
        TabMarks{.progress = {.kind = TabProgress::Kind::Indeterminate}}}) {
    const QImage shown = picture(marks);
    EXPECT_EQ(std::ranges::find(pictures, shown), pictures.end()) << inWords(marks).toStdString();
    pictures.push_back(shown);
  }
}

TEST_F(TabStripTest, OffersAMenuForTheTabUnderThePointer) {
  QSignalSpy wanted(&strip, &TabStrip::menuWanted);
  QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(2), strip.mapToGlobal(middleOf(2)));
  QApplication::sendEvent(&strip, &event);
  ASSERT_EQ(wanted.count(), 1);
  EXPECT_EQ(wanted.front().front().toInt(), 2);
}

TEST_F(TabStripTest, RefusesWhatIsNotATab) {
  QMimeData text;
  text.setText(QStringLiteral("text"));
  QDragEnterEvent enter(middleOf(0), Qt::CopyAction, &text, Qt::LeftButton, {});
  enter.ignore();
  QApplication::sendEvent(&strip, &enter);
  EXPECT_FALSE(enter.isAccepted());
  // One that another process drags.
  QMimeData foreign;
  foreign.setData(QStringLiteral("application/x-zolt-tab"), QByteArray());
  QDragEnterEvent enterForeign(middleOf(0), Qt::MoveAction, &foreign, Qt::LeftButton, {});
  enterForeign.ignore();
  QApplication::sendEvent(&strip, &enterForeign);
  EXPECT_FALSE(enterForeign.isAccepted());
}

}  // namespace
}  // namespace zolt
