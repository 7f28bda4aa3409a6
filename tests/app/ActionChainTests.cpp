#include "app/ActionChain.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <string>
#include <vector>

#include "support/WaitFor.h"

namespace zolt {
namespace {

class Recorder : public QObject {
  Q_OBJECT

 public:
  int newWindows = 0;
  bool allowed = true;

  Q_INVOKABLE void newWindow() { ++newWindows; }
  Q_INVOKABLE bool validate(const QByteArray& action) const { return action != "newWindow" || allowed; }
};

class RespondingWidget : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;
  int copies = 0;

  Q_INVOKABLE void copy() { ++copies; }
};

class ActionChainTest : public testing::Test {
 protected:
  void SetUp() override {
    inner->setFocusPolicy(Qt::StrongFocus);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, test::kPatience.count()));
  }

  Recorder delegate;
  Recorder last;
  ActionChain chain{{&delegate, &last}};
  RespondingWidget window;
  RespondingWidget* outer = new RespondingWidget(&window);
  RespondingWidget* inner = new RespondingWidget(outer);
};

TEST_F(ActionChainTest, SendsAnActionToTheFocusedWidgetOnly) {
  inner->setFocus();
  EXPECT_TRUE(chain.sendAction("copy"));
  EXPECT_EQ(inner->copies, 1);
  EXPECT_EQ(outer->copies, 0);
  EXPECT_EQ(window.copies, 0);
}

TEST_F(ActionChainTest, GoesOutwardsFromThereToTheWindow) {
  auto* plain = new QWidget(outer);
  plain->setFocusPolicy(Qt::StrongFocus);
  plain->show();
  plain->setFocus();
  EXPECT_TRUE(chain.sendAction("copy"));
  EXPECT_EQ(outer->copies, 1);
  EXPECT_EQ(window.copies, 0);
}

TEST_F(ActionChainTest, ReachesTheApplicationsRespondersInTheirOrder) {
  inner->setFocus();
  EXPECT_TRUE(chain.sendAction("newWindow"));
  EXPECT_EQ(delegate.newWindows, 1);
  EXPECT_EQ(last.newWindows, 0);
}

TEST_F(ActionChainTest, ReachesThemWithoutAnyWindow) {
  window.hide();
  EXPECT_TRUE(chain.sendAction("newWindow"));
  EXPECT_EQ(delegate.newWindows, 1);
}

TEST_F(ActionChainTest, ReachesWhatRespondsForTheWindowBeforeTheApplication) {
  inner->setFocus();
  Recorder forWindow;
  const ActionChain own({&delegate}, [&](QWidget& focused) { return &focused == &window ? &forWindow : nullptr; });
  EXPECT_TRUE(own.sendAction("newWindow"));
  EXPECT_EQ(forWindow.newWindows, 1);
  EXPECT_EQ(delegate.newWindows, 0);
  window.hide();
  EXPECT_TRUE(own.sendAction("newWindow"));
  EXPECT_EQ(delegate.newWindows, 1);
}

TEST_F(ActionChainTest, ReportsAnActionThatNobodyPerforms) {
  EXPECT_FALSE(chain.sendAction("noSuchAction"));
  EXPECT_FALSE(chain.isEnabled("noSuchAction"));
}

TEST_F(ActionChainTest, AsksTheResponderWhetherItWouldPerformTheActionNow) {
  EXPECT_TRUE(chain.isEnabled("newWindow"));
  delegate.allowed = false;
  EXPECT_FALSE(chain.isEnabled("newWindow"));
  EXPECT_TRUE(chain.isEnabled("copy"));
}

}  // namespace
}  // namespace zolt

#include "ActionChainTests.moc"
