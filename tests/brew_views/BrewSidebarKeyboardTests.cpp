#include <QApplication>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include "brew_views/SidebarFixture.h"

namespace zolt {
namespace {

using BrewSidebarKeyboardTest = test::SidebarTest;

TEST_F(BrewSidebarKeyboardTest, TabMovesTheFocusFromTopToBottom) {
  showIdle();
  part<QToolButton>("refresh")->setFocus();
  QStringList stops;
  while (stops.size() < 8 && QApplication::focusWidget() != list()) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    auto* segment = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    stops << (segment != nullptr ? segment->text() : QApplication::focusWidget()->objectName());
  }
  EXPECT_EQ(stops, words({"searchPackages", "Installed", "packages"}));
}

TEST_F(BrewSidebarKeyboardTest, OpensTheMenuOfTheSelectedRowWithoutAMenuKey) {
  write("search.txt", "foo\nbar\n");
  showIdle();
  choose(2);
  type("f");
  ASSERT_TRUE(waitForRows(words({"Results", "foo", "bar"})));
  list()->setFocus();
  list()->setCurrentIndex(list()->model()->index(2, 0));
  struct Press {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
  };
  for (const auto& [key, modifiers] : {Press{Qt::Key_Return, Qt::NoModifier}, Press{Qt::Key_Enter, Qt::NoModifier},
                                       Press{Qt::Key_F10, Qt::ShiftModifier}}) {
    forgetCalls();
    QTest::keyClick(list(), key, modifiers);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr) << key;
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_TRUE(test::waitFor([&] { return calls() == std::vector<std::string>{"[info][bar]"}; })) << key;
    ASSERT_TRUE(test::waitFor([&] { return sidebar->findChild<QMenu*>() == nullptr; }));
    sidebar->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(sidebar.get(), test::kPatience.count()));
    ASSERT_EQ(sidebar->focusWidget(), list());
  }
}

TEST_F(BrewSidebarKeyboardTest, KeepsTheSelectionWhenOnlyTheStatusChanges) {
  write("list-formula.txt", "foo\nbar\n");
  showIdle();
  list()->setCurrentIndex(list()->model()->index(2, 0));
  const QString before = part<SecondaryLabel>("status")->text();
  manager->upgradeAll();
  ASSERT_TRUE(test::waitFor([&] { return part<SecondaryLabel>("status")->text() != before; }));
  EXPECT_EQ(list()->currentIndex().row(), 2);
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(list()->currentIndex().row(), -1) << "reloaded packages are new";
}

TEST_F(BrewSidebarKeyboardTest, ShowsTheBestOfNewResultsFirst) {
  std::string text;
  for (int i = 0; i < 500; ++i) {
    text += "package-" + std::to_string(i) + "\n";
  }
  write("search.txt", text);
  showIdle();
  choose(2);
  type("p");
  ASSERT_TRUE(test::waitFor([&] { return list()->model()->rowCount() == 501; }));
  list()->verticalScrollBar()->setValue(2000);
  write("search.txt", text + "one-more\n");
  type("a");
  ASSERT_TRUE(test::waitFor([&] { return list()->model()->rowCount() == 502; }));
  EXPECT_EQ(list()->verticalScrollBar()->value(), 0);
}

TEST_F(BrewSidebarKeyboardTest, ShowsTheFullTextAsPlainTextInATooltip) {
  write("list-formula.txt", "foo\n");
  write("info/foo.txt", "Desc: <b>bold</b> & <img src=x>\nInstalled 1.2.3\n");
  write("list-cask.txt", "app\n");
  write("info/app.txt", "Desc: " + std::string(900'000, 'x') + "\n");
  showIdle();
  const auto tip = [&](int row) { return list()->model()->index(row, 0).data(Qt::ToolTipRole).toString(); };
  EXPECT_TRUE(tip(1).endsWith(QStringLiteral(">foo<br>&lt;b&gt;bold&lt;/b&gt; &amp; &lt;img src=x&gt;<br>1.2.3</p>")))
      << tip(1).toStdString();
  EXPECT_LT(tip(3).size(), 1000);
  EXPECT_TRUE(tip(3).contains(QStringLiteral(">app<br>xxx"))) << tip(3).left(80).toStdString();
  EXPECT_FALSE(tip(0).contains(QLatin1Char('<'))) << "a header has no tooltip";
}

TEST_F(BrewSidebarKeyboardTest, NamesFormulaeAndCasksInWords) {
  write("list-formula.txt", "foo\n");
  write("list-cask.txt", "app\n");
  showIdle();
  const auto said = [&](int row) { return list()->model()->index(row, 0).data(Qt::AccessibleDescriptionRole); };
  EXPECT_EQ(said(1).toString(), QStringLiteral("Formula"));
  EXPECT_EQ(said(3).toString(), QStringLiteral("Cask"));
}

}  // namespace
}  // namespace zolt
