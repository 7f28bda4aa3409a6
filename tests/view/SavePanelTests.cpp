#include "view/saving/SavePanel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>

#include "ViewFixture.h"

namespace zolt {
namespace {

class SavePanelTest : public test::TerminalWindowTest {
 protected:
  void SetUp() override {
    open({"cat"});
    ASSERT_TRUE(waitForText("ready"));
    panel = new SavePanel(view().parentWidget());
    QObject::connect(panel, &SavePanel::cancelled, [this] { ++cancelled; });
  }
  QPushButton* button() { return panel->findChild<QPushButton*>(QStringLiteral("cancelSaving")); }
  QRect place() { return {panel->mapTo(window.get(), QPoint(0, 0)), panel->size()}; }

  SavePanel* panel = nullptr;
  int cancelled = 0;
};

TEST_F(SavePanelTest, LiesOverTheBottomOfTheTerminalAndTakesNoRoomFromIt) {
  const TerminalSize before = view().gridSize();
  panel->show();
  EXPECT_EQ(place().center().x(), window->rect().center().x());
  EXPECT_EQ(window->height() - place().bottom() - 1, 16);
  window->resize(700, 500);
  EXPECT_EQ(place().center().x(), window->rect().center().x());
  EXPECT_EQ(window->height() - place().bottom() - 1, 16);
  window->resize(900, 600);
  EXPECT_EQ(view().gridSize(), before);
  EXPECT_EQ(view().size(), window->size());
}

TEST_F(SavePanelTest, IsNoWiderThanThereIsRoom) {
  panel->show();
  EXPECT_EQ(place().width(), 420);
  window->resize(300, 300);
  EXPECT_EQ(place().width(), 300 - 2 * 16);
  EXPECT_TRUE(panel->rect().contains(button()->geometry()));
}

TEST_F(SavePanelTest, LeavesTheKeyboardToTheTerminal) {
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window->window(), test::kPatience.count()));
  view().setFocus();
  recordOutput();
  panel->show();
  EXPECT_EQ(window->window()->focusWidget(), &view());
  QTest::keyClick(&view(), Qt::Key_Escape);
  QTest::keyClick(&view(), Qt::Key_A);
  EXPECT_TRUE(test::waitFor([this] {
    return recorded ==
           "\x1B"
           "a";
  })) << recorded;
  EXPECT_EQ(cancelled, 0);
}

TEST_F(SavePanelTest, IsCancelledByItsButton) {
  panel->show();
  QTest::mouseClick(button(), Qt::LeftButton);
  EXPECT_EQ(cancelled, 1);
}

TEST_F(SavePanelTest, IsCancelledByTheKeyboardWhereItHasThat) {
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window->window(), test::kPatience.count()));
  panel->show();
  panel->setFocus();
  ASSERT_EQ(window->window()->focusWidget(), button());
  recordOutput();
  QTest::keyClick(button(), Qt::Key_Escape);
  EXPECT_EQ(cancelled, 1);
  QTest::keyClick(button(), Qt::Key_Space);
  EXPECT_EQ(cancelled, 2);
  QTest::keyClick(button(), Qt::Key_A);
  window->terminal().sendInput("|");
  EXPECT_TRUE(test::waitFor([this] { return recorded.ends_with('|'); }));
  EXPECT_EQ(recorded, "|") << "none of the keys is the shell's";
}

TEST_F(SavePanelTest, ShowsHowFarItIs) {
  panel->show();
  const auto* bar = panel->findChild<QProgressBar*>(QStringLiteral("saveProgress"));
  EXPECT_EQ(bar->value(), 0);
  panel->setProgress(0.5);
  EXPECT_EQ(bar->value() * 2, bar->maximum());
  panel->setProgress(1);
  EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(SavePanelTest, SaysWhatItIs) {
  panel->show();
  EXPECT_EQ(panel->findChild<QLabel*>()->text(), QStringLiteral("Saving output…"));
  const auto nameOf = [](QObject* object) {
    return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name);
  };
  EXPECT_EQ(nameOf(panel), QStringLiteral("Saving output…"));
  EXPECT_EQ(nameOf(panel->findChild<QProgressBar*>()), QStringLiteral("Saving output…"));
  EXPECT_EQ(nameOf(button()), QStringLiteral("Cancel"));
}

}  // namespace
}  // namespace zolt
