#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include "brew/BrewCommands.h"
#include "brew/views/SymbolView.h"
#include "brew_views/SidebarFixture.h"
#include "support/Palettes.h"

namespace zolt {
namespace {

using BrewSidebarTest = test::SidebarTest;

TEST_F(BrewSidebarTest, ShowsBothInstalledSectionsEvenIfTheyAreEmpty) {
  manager = std::make_unique<BrewManager>(std::vector<std::string>{"/no/such/brew"}, WorkerQueue::utility());
  show();
  EXPECT_EQ(rows(), words({"Formulae", "Casks"}));
  EXPECT_EQ(part<QLabel>("status")->text(), QStringLiteral("Homebrew not found"));
  EXPECT_EQ(part<SegmentedPicker>("segments")->currentIndex(), 0);
  EXPECT_EQ(part<QLineEdit>("searchPackages")->text(), QString());
  EXPECT_EQ(part<QLineEdit>("searchPackages")->placeholderText(), QStringLiteral("Search packages..."));
}

TEST_F(BrewSidebarTest, NamesItsSegmentsInOrder) {
  showIdle();
  auto* tabs = part<SegmentedPicker>("segments");
  EXPECT_EQ(tabs->segment(0)->text(), QStringLiteral("Installed"));
  EXPECT_EQ(tabs->segment(1)->text(), QStringLiteral("Outdated"));
  EXPECT_EQ(tabs->segment(2)->text(), QStringLiteral("Search"));
}

TEST_F(BrewSidebarTest, ShowsInstalledPackagesAsTheyArrive) {
  write("list-formula.txt", "wget\n");
  write("list-cask.txt", "some-app\n");
  write("info/wget.txt", "==> wget\nDesc: Internet file retriever\nInstalled 1.24.5\n");
  write("info/some-app.txt", "==> some-app\n");
  makeManager();
  show();
  EXPECT_TRUE(waitForRows(words({"Formulae", "wget, Internet file retriever, 1.24.5", "Casks", "some-app"})));
  EXPECT_TRUE(test::waitFor([&] { return part<QLabel>("status")->text() == manager->status(); }));
}

TEST_F(BrewSidebarTest, HasNoMenuForInstalledPackages) {
  write("list-formula.txt", "wget\n");
  showIdle();
  ASSERT_EQ(rows().size(), 3);
  EXPECT_EQ(openMenu(1), nullptr);
}

TEST_F(BrewSidebarTest, ShowsOnlyTheHeaderOfOutdatedPackages) {
  showIdle();
  choose(1);
  EXPECT_EQ(rows(), words({"Updates Available"}));
}

TEST_F(BrewSidebarTest, PromptsForASearchIfTheFieldIsEmpty) {
  showIdle();
  choose(2);
  auto* placeholder = part<QWidget>("searchPlaceholder");
  EXPECT_TRUE(placeholder->isVisible());
  EXPECT_FALSE(list()->isVisible());
  bool titled = false;
  const QList<QLabel*> labels = placeholder->findChildren<QLabel*>();
  for (const QLabel* label : labels) {
    titled = titled || label->text() == QStringLiteral("Search Homebrew");
  }
  EXPECT_TRUE(titled);
}

TEST_F(BrewSidebarTest, SearchesAtEveryKeystroke) {
  write("search.txt", "==> Formulae\nfoo\nhomebrew/cask/foo-app\n");
  showIdle();
  choose(2);
  type("f");
  EXPECT_TRUE(list()->isVisible());
  EXPECT_EQ(rows(), words({"Results"}));
  EXPECT_EQ(part<QLabel>("status")->text(), QStringLiteral("Searching..."));
  EXPECT_TRUE(waitForRows(words({"Results", "==> Formulae", "foo", "homebrew/cask/foo-app"})));
  type("oo");
  ASSERT_TRUE(test::waitFor([&] { return calls().size() == 3; }));
  EXPECT_EQ(calls(), (std::vector<std::string>{"[search][f]", "[search][fo]", "[search][foo]"}));
  EXPECT_TRUE(test::waitFor([&] { return part<QLabel>("status")->text() == QStringLiteral("Found 3 results"); }));
}

TEST_F(BrewSidebarTest, ClearsTheResultsWithTheField) {
  write("search.txt", "foo\n");
  showIdle();
  choose(2);
  type("f");
  ASSERT_TRUE(waitForRows(words({"Results", "foo"})));
  QTest::keyClick(part<QLineEdit>("searchPackages"), Qt::Key_Backspace);
  EXPECT_TRUE(part<QWidget>("searchPlaceholder")->isVisible());
  EXPECT_TRUE(manager->searchResults().empty());
}

TEST_F(BrewSidebarTest, StartsNoSearchForTextTypedInAnotherSegment) {
  showIdle();
  type("foo");
  choose(1);
  type("bar");
  choose(2);
  test::runLoopFor(std::chrono::milliseconds(100));
  EXPECT_TRUE(calls().empty()) << "not even when the segment is selected";
  EXPECT_EQ(rows(), words({"Results"}));
  type("!");
  EXPECT_TRUE(test::waitFor([&] { return calls() == std::vector<std::string>{"[search][foobar!]"}; }));
}

TEST_F(BrewSidebarTest, InstallsAResultFromItsMenu) {
  write("search.txt", "foo\nhomebrew/cask/foo-app\n");
  showIdle();
  choose(2);
  type("f");
  ASSERT_TRUE(waitForRows(words({"Results", "foo", "homebrew/cask/foo-app"})));
  forgetCalls();
  QMenu* menu = openMenu(2);
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(textsOf(*menu), words({"Install", "Info"}));
  QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions().front()).center());
  EXPECT_TRUE(
      test::waitFor([&] { return std::ranges::count(calls(), "[install][--cask][homebrew/cask/foo-app]") == 1; }));
  EXPECT_TRUE(test::waitFor([&] { return calls().size() == 4; })) << "and everything is reloaded";
}

TEST_F(BrewSidebarTest, RequestsInformationWithoutShowingIt) {
  write("search.txt", "foo\n");
  showIdle();
  choose(2);
  type("f");
  ASSERT_TRUE(waitForRows(words({"Results", "foo"})));
  ASSERT_TRUE(waitForStatus("Found 1 results"));
  forgetCalls();
  QMenu* menu = openMenu(1);
  ASSERT_NE(menu, nullptr);
  QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions().back()).center());
  ASSERT_TRUE(test::waitFor([&] { return calls() == std::vector<std::string>{"[info][foo]"}; }));
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(rows(), words({"Results", "foo"}));
  EXPECT_EQ(manager->status(), QStringLiteral("Found 1 results"));
}

TEST_F(BrewSidebarTest, CanBeUsedWithTheKeyboardAlone) {
  write("search.txt", "foo\nbar\n");
  showIdle();
  choose(2);
  type("f");
  ASSERT_TRUE(waitForRows(words({"Results", "foo", "bar"})));
  // From the field by Tab over the segments into the list, down to a row, and its menu.
  for (int stop = 0; stop < 6 && QApplication::focusWidget() != list(); ++stop) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  ASSERT_EQ(QApplication::focusWidget(), list());
  QTest::keyClick(list(), Qt::Key_End);
  EXPECT_EQ(list()->currentIndex().row(), 2);
  const QPoint at = list()->visualRect(list()->currentIndex()).center();
  QContextMenuEvent event(QContextMenuEvent::Keyboard, at, list()->mapToGlobal(at));
  QApplication::sendEvent(list(), &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  forgetCalls();
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_TRUE(test::waitFor([&] { return std::ranges::count(calls(), "[install][bar]") == 1; }));
}

TEST_F(BrewSidebarTest, RefreshesOnAClickOnItsButton) {
  showIdle();
  QTest::mouseClick(part<QToolButton>("refresh"), Qt::LeftButton);
  EXPECT_TRUE(test::waitFor([&] { return calls().size() == 3; }));
  EXPECT_FALSE(part<QToolButton>("refresh")->accessibleName().isEmpty());
}

TEST_F(BrewSidebarTest, ShowsFiveThousandResultsAtOnce) {
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    text += "package-with-a-rather-long-name-that-does-not-fit-" + std::to_string(i) + "\n";
  }
  write("search.txt", text);
  showIdle();
  choose(2);
  type("p");
  ASSERT_TRUE(test::waitFor([&] { return list()->model()->rowCount() == 5001; }));
  EXPECT_TRUE(list()
                  ->model()
                  ->index(4000, 0)
                  .data(Qt::ToolTipRole)
                  .toString()
                  .contains(QStringLiteral("package-with-a-rather-long-name")));
  list()->scrollToBottom();
  EXPECT_TRUE(list()->viewport()->rect().intersects(list()->visualRect(list()->model()->index(5000, 0))));
}

TEST_F(BrewSidebarTest, KeepsItsScrollPositionThroughARefresh) {
  std::string text;
  for (int i = 0; i < 50; ++i) {
    text += "formula" + std::to_string(i) + "\n";
  }
  write("list-formula.txt", text);
  showIdle();
  ASSERT_EQ(rows().size(), 52);
  list()->verticalScrollBar()->setValue(300);
  manager->refresh();
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(list()->verticalScrollBar()->value(), 300);
}

TEST_F(BrewSidebarTest, CanBeCreatedAndDestroyedAHundredTimesWhileCommandsRun) {
  write("list-formula.txt", "wget\njq\n");
  write("search.txt", "foo\n");
  qputenv("FAKEBREW_MODE_list", "slow");
  makeManager();
  for (int i = 0; i < 100; ++i) {
    show();
    if (i % 10 == 0) manager->refresh();
    choose(2);
    type("f");
    test::runLoopFor(std::chrono::milliseconds(i % 7));
    sidebar.reset();
  }
  ASSERT_TRUE(test::waitFor([&] { return test::brewCommands().empty() && !manager->isLoading(); }));
  show();
  EXPECT_EQ(rows().size(), 4);
}

TEST_F(BrewSidebarTest, MayBeDestroyedBeforeItsManager) {
  write("list-formula.txt", "wget\n");
  makeManager();
  show();
  sidebar.reset();
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(manager->installedFormulae().size(), 1U);
}

// The predominant colour of an icon.
QColor iconColor(QListView& list, int row) {
  const QImage picture = list.viewport()->grab().toImage();
  const double ratio = picture.devicePixelRatioF();
  const QRect rect = list.visualRect(list.model()->index(row, 0));
  for (int x = 10; x < 28; ++x) {
    for (int y = rect.top(); y < rect.bottom(); ++y) {
      const QColor color = picture.pixelColor(QPoint(x, y) * ratio);
      if (color.saturation() > 120) return color;
    }
  }
  return {};
}

TEST_F(BrewSidebarTest, DrawsFormulaeInBlueAndCasksInGreen) {
  write("list-formula.txt", "wget\n");
  write("list-cask.txt", "some-app\n");
  write("search.txt", "foo\nhomebrew/cask/foo-app\n");
  showIdle();
  const auto isBlue = [](const QColor& color) { return color.blue() > color.red() && color.blue() > color.green(); };
  const auto isGreen = [](const QColor& color) { return color.green() > color.red() && color.green() > color.blue(); };
  EXPECT_TRUE(isBlue(iconColor(*list(), 1)));
  EXPECT_TRUE(isGreen(iconColor(*list(), 3)));
  choose(2);
  type("f");
  ASSERT_TRUE(waitForRows(words({"Results", "foo", "homebrew/cask/foo-app"})));
  EXPECT_TRUE(isBlue(iconColor(*list(), 1)));
  EXPECT_TRUE(isGreen(iconColor(*list(), 2)));
}

// The brightest and the darkest pixel of a widget.
std::pair<int, int> brightness(QWidget& widget) {
  const QImage picture = widget.grab().toImage();
  std::pair<int, int> range{255, 0};
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int gray = qGray(picture.pixel(x, y));
      range = {std::min(range.first, gray), std::max(range.second, gray)};
    }
  }
  return range;
}

TEST_F(BrewSidebarTest, DrawsItsSymbolsInTheCurrentPalette) {
  showIdle();
  choose(2);
  auto* placeholder = part<QWidget>("searchPlaceholder");
  auto* symbol = placeholder->findChild<SymbolView*>();
  ASSERT_NE(symbol, nullptr);
  const auto [darkest, brightest] = brightness(*symbol);
  EXPECT_GT(brightest - darkest, 60) << "visible on a light background";
  sidebar->setPalette(test::darkPalette());
  const auto [darkestOnDark, brightestOnDark] = brightness(*symbol);
  EXPECT_LT(darkestOnDark, 80);
  EXPECT_GT(brightestOnDark - darkestOnDark, 60) << "and on a dark one";
}

TEST_F(BrewSidebarTest, DoesNotTrimWhatIsTyped) {
  showIdle();
  choose(2);
  type(" x ");
  EXPECT_TRUE(test::waitFor([&] {
    return calls() == std::vector<std::string>{"[search][ ]", "[search][ x ]", "[search][ x]"};
  }));
}

}  // namespace
}  // namespace zolt
