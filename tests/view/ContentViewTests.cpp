#include "view/ContentView.h"

#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <set>

#include "platform/NotificationCenter.h"
#include "support/ProcessFacts.h"
#include "support/TextSize.h"
#include "view/Notifications.h"
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

TEST_F(ContentViewTest, IsBlackItselfBehindItsChildren) {
  open({"wait"});
  QImage picture(window->size(), QImage::Format_RGB32);
  picture.fill(Qt::red);
  window->render(&picture, QPoint(), QRegion(), QWidget::DrawWindowBackground);
  QImage black(window->size(), QImage::Format_RGB32);
  black.fill(Qt::black);
  EXPECT_EQ(picture, black);
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

TEST_F(ContentViewTest, MakesItsTerminalWhenItIsFirstShown) {
  int made = 0;
  ContentView content([&made](const TerminalSize& size) {
    ++made;
    return test::runTestChild({"wait"})(size);
  });
  content.resize(900, 600);
  EXPECT_EQ(made, 0);
  content.show();
  EXPECT_EQ(made, 1);
  content.hide();
  content.show();
  EXPECT_EQ(made, 1);
}

TEST_F(ContentViewTest, HasTheThemeThatIsStored) {
  QTemporaryDir folder;
  UserDefaults defaults(folder.filePath(QStringLiteral("zolt.ini")).toStdString());
  const ContentView content(test::runTestChild({"wait"}), defaults);
  EXPECT_EQ(content.selectedTheme(), "Dark");
  defaults.setString("selectedTheme", "Solarized");
  EXPECT_EQ(content.selectedTheme(), "Solarized");
  defaults.setString("theme", "Light");
  EXPECT_EQ(content.selectedTheme(), "Solarized") << "that is another setting";
}

void post(const char* name) {
  NotificationCenter::defaultCenter().post(name);
}

QWidget* sidebarOf(ContentView& content) {
  return content.findChild<QWidget*>(QStringLiteral("brewSidebar"));
}

TEST_F(ContentViewTest, ShowsTheSidebarLeftOfTheTerminalAndHidesIt) {
  open({"wait"});
  EXPECT_FALSE(window->showsBrewSidebar());
  EXPECT_EQ(sidebarOf(*window), nullptr);
  post(toggleBrewSidebar);
  EXPECT_TRUE(window->showsBrewSidebar());
  ASSERT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() == 250; }));
  QWidget* sidebar = sidebarOf(*window);
  ASSERT_NE(sidebar, nullptr);
  EXPECT_EQ(sidebar->mapTo(window.get(), QPoint(0, 0)), QPoint(0, 0));
  EXPECT_EQ(sidebar->size(), QSize(250, 600));
  EXPECT_EQ(view().size(), QSize(650, 600));
  post(toggleBrewSidebar);
  EXPECT_FALSE(window->showsBrewSidebar());
  ASSERT_TRUE(test::waitFor([&] { return sidebarOf(*window) == nullptr; }));
  EXPECT_TRUE(test::waitFor([&] { return view().size() == window->size(); }));
}

TEST_F(ContentViewTest, GivesTheSidebarMoreRoomForLargerTextAlsoWhileItIsShown) {
  open({"wait"});
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() == 250; }));
  const test::TextSize size(2);
  EXPECT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() > 350; }));
  EXPECT_EQ(sidebarOf(*window)->width(), view().mapTo(window.get(), QPoint(0, 0)).x());
}

TEST_F(ContentViewTest, SlidesTheSidebarInWithItsFullWidth) {
  open({"wait"});
  std::vector<int> edges;
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] {
    edges.push_back(view().mapTo(window.get(), QPoint(0, 0)).x());
    EXPECT_EQ(sidebarOf(*window)->width(), 250);
    return edges.back() == 250;
  }));
  EXPECT_TRUE(std::is_sorted(edges.begin(), edges.end()));
  EXPECT_GT(std::set<int>(edges.begin(), edges.end()).size(), 3U) << "not in one jump";
}

TEST_F(ContentViewTest, TurnsAroundInTheMiddleOfTheWay) {
  open({"wait"});
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() > 50; }));
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return sidebarOf(*window) == nullptr; }));
  EXPECT_TRUE(test::waitFor([&] { return view().size() == window->size(); }));
}

TEST_F(ContentViewTest, StartsTheSidebarAnewAlsoInTheMiddleOfItsWayOut) {
  open({"wait"});
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() == 250; }));
  sidebarOf(*window)->findChild<QLineEdit*>(QStringLiteral("searchPackages"))->setText(QStringLiteral("typed"));
  post(toggleBrewSidebar);
  post(toggleBrewSidebar);
  const auto* field = sidebarOf(*window)->findChild<QLineEdit*>(QStringLiteral("searchPackages"));
  EXPECT_EQ(field->text(), QString());
  EXPECT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() == 250; }));
}

TEST_F(ContentViewTest, GivesTheKeyboardBackWhenTheSidebarGoes) {
  open({"wait"});
  window->activateWindow();
  view().setFocus();
  post(toggleBrewSidebar);
  EXPECT_EQ(window->window()->focusWidget(), &view()) << "it takes nothing by itself";
  sidebarOf(*window)->setFocus();
  EXPECT_NE(window->window()->focusWidget(), &view());
  post(toggleBrewSidebar);
  EXPECT_EQ(window->window()->focusWidget(), &view());
  ASSERT_TRUE(test::waitFor([&] { return sidebarOf(*window) == nullptr; }));
  EXPECT_EQ(window->window()->focusWidget(), &view());
}

TEST_F(ContentViewTest, MovesTheKeyboardBetweenTerminalAndSidebar) {
  open({"wait"});
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window->window(), test::kPatience.count()));
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_F6);
  EXPECT_EQ(window->window()->focusWidget(), &view()) << "there is no other place";
  post(toggleBrewSidebar);
  QTest::keyClick(&view(), Qt::Key_F6);
  QWidget* field = window->window()->focusWidget();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->objectName(), QStringLiteral("searchPackages"));
  QTest::keyClick(field, Qt::Key_F6);
  EXPECT_EQ(window->window()->focusWidget(), &view());
  QTest::keyClick(&view(), Qt::Key_F6);
  QTest::keyClick(window->window()->focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(window->window()->focusWidget(), &view());
}

std::string text(const TerminalSize& size) {
  return std::to_string(size.rows) + "x" + std::to_string(size.columns);
}

TEST_F(ContentViewTest, TellsTheProgramOnceThatTheSidebarHasComeAndOnceThatItHasGone) {
  open({"size"});
  const std::string whole = text(view().gridSize());
  ASSERT_TRUE(waitForText(whole));
  const auto shows = [&](const std::string& all) {
    return test::waitFor([&] { return shown().size() >= all.size(); }) && shown() == all;
  };
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return view().width() == window->width() - 250; }));
  const std::string beside = text(view().gridSize());
  EXPECT_TRUE(shows(whole + beside)) << shown();
  post(toggleBrewSidebar);
  EXPECT_TRUE(shows(whole + beside + whole)) << shown();
}

TEST_F(ContentViewTest, TellsTheProgramNothingOfASidebarThatTurnsAround) {
  open({"size"});
  const std::string whole = text(view().gridSize());
  ASSERT_TRUE(waitForText(whole));
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return view().mapTo(window.get(), QPoint(0, 0)).x() > 50; }));
  post(toggleBrewSidebar);
  ASSERT_TRUE(test::waitFor([&] { return sidebarOf(*window) == nullptr; }));
  // What had been told of it by now would stand before the next size.
  window->resize(500, 300);
  ASSERT_TRUE(test::waitFor([&] { return view().width() == 500; }));
  const std::string smaller = text(view().gridSize());
  EXPECT_TRUE(test::waitFor([&] { return shown().ends_with(smaller); }));
  EXPECT_EQ(shown(), whole + smaller);
}

TEST_F(ContentViewTest, KeepsTheSidebarOfEveryWindowToItself) {
  open({"wait"});
  window->setShowsBrewSidebar(true);
  ContentView other(test::runTestChild({"wait"}));
  EXPECT_FALSE(other.showsBrewSidebar());
  post(toggleBrewSidebar);
  EXPECT_FALSE(window->showsBrewSidebar());
  EXPECT_TRUE(other.showsBrewSidebar());
}

TEST_F(ContentViewTest, OpensTheSidebarInOneStepWhileItIsNotOnTheScreen) {
  ContentView hidden(test::runTestChild({"wait"}));
  hidden.resize(900, 600);
  hidden.setShowsBrewSidebar(true);
  EXPECT_EQ(sidebarOf(hidden)->parentWidget()->width(), 250);
}

TEST_F(ContentViewTest, ClearsEveryWindowAtOnce) {
  open({"hex"});
  ASSERT_TRUE(waitForText("ready"));
  ContentView other(test::runTestChild({"hex"}));
  other.resize(900, 600);
  other.show();
  const auto otherText = [&] {
    const TextStorage& storage = other.textView().textStorage();
    return storage.text({}, storage.end());
  };
  ASSERT_TRUE(test::waitFor([&] { return otherText().find("ready") != std::string::npos; }));
  post(clearTerminal);
  EXPECT_TRUE(waitForText(" 1B 63"));
  EXPECT_TRUE(test::waitFor([&] { return otherText().find(" 1B 63") != std::string::npos; }));
}

TEST(TerminalRenderer, HoldsItsFontSize) {
  EXPECT_EQ(TerminalRenderer(14).fontSize, 14);
}

}  // namespace
}  // namespace zolt
