#include "view/ContentView.h"

#include "support/ProcessFacts.h"
#include "view/TerminalRenderer.h"
#include "view/ViewFixture.h"

namespace zolt {
namespace {

using ContentViewTest = test::TerminalWindowTest;

TEST_F(ContentViewTest, ShowsOnlyTheTerminalOnBlack) {
  open({"wait"});
  EXPECT_EQ(view().mapTo(window.get(), QPoint(0, 0)), QPoint(0, 0));
  EXPECT_EQ(view().size(), window->size());
  const QImage picture = window->grab().toImage();
  EXPECT_EQ(picture.pixelColor(450, 500), QColor(Qt::black));
  EXPECT_EQ(picture.pixelColor(899, 599), QColor(Qt::black));
}

TEST_F(ContentViewTest, GivesTheKeyboardToTheTerminal) {
  open({"wait"});
  window->setFocus();
  EXPECT_EQ(window->focusProxy()->focusProxy(), &view());
}

TEST_F(ContentViewTest, EndsTheProgramWithTheWindow) {
  open({"wait"});
  ASSERT_TRUE(waitForText("waiting"));
  ASSERT_TRUE(test::waitFor([] { return test::childProcesses().size() == 1; }))
      << "its own, those of earlier tests are gone";
  window.reset();
  EXPECT_TRUE(test::waitFor([] { return test::childProcesses().empty(); }));
}

TEST(TerminalRenderer, HoldsItsFontSize) {
  EXPECT_EQ(TerminalRenderer(14).fontSize, 14);
}

}  // namespace
}  // namespace zolt
