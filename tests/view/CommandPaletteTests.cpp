// The list of commands over a window.
#include "view/CommandPalette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QTest>

#include "support/WaitFor.h"

namespace zolt {
namespace {

class CommandPaletteTest : public testing::Test {
 protected:
  void SetUp() override {
    window.resize(800, 600);
    edit.setGeometry(0, 0, 100, 30);
    window.setFocusProxy(&edit);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, test::kPatience.count()));
    edit.setFocus();
    palette = new CommandPalette(
        {{.title = QStringLiteral("New Tab"), .place = QStringLiteral("File"), .shortcut = QStringLiteral("Ctrl+T")},
         {.title = QStringLiteral("Close Tab"), .isEnabled = false},
         {.title = QStringLiteral("Next Tab")},
         {.title = QStringLiteral("Quit")}},
        window);
    QObject::connect(palette, &CommandPalette::chosen, &window, [this](int command) {
      chosen.push_back(command);
      hadFocus = edit.hasFocus();
    });
    QObject::connect(palette, &CommandPalette::shortcutWanted, &window,
                     [this](int command, const std::optional<QKeySequence>& keys) {
                       wanted.emplace_back(command, keys ? keys->toString() : QStringLiteral("usual"));
                     });
  }
  static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text)); }
  QListView& list() { return *palette->findChild<QListView*>(); }
  QString help() { return palette->findChild<QLabel*>()->text(); }
  QStringList rows() {
    QStringList texts;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      texts << list().model()->index(row, 0).data().toString();
    }
    return texts;
  }
  bool isGone() { return palette.isNull() || !palette->isVisible(); }

  QWidget window;
  QLineEdit edit{&window};
  QPointer<CommandPalette> palette;
  std::vector<int> chosen;
  std::vector<std::pair<int, QString>> wanted;
  bool hadFocus = false;
};

TEST_F(CommandPaletteTest, ListsWhatIsAvailableFirstAndHasTheKeyboard) {
  EXPECT_TRUE(palette->isAncestorOf(QApplication::focusWidget()));
  EXPECT_EQ(rows(), (QStringList{QStringLiteral("New Tab, Ctrl+T"), QStringLiteral("Next Tab"), QStringLiteral("Quit"),
                                 QStringLiteral("Close Tab")}));
  EXPECT_TRUE(window.rect().contains(palette->geometry()));
}

TEST_F(CommandPaletteTest, RunsWhatTheTypedTextStandsForWithTheKeyboardBack) {
  type("nxt");
  EXPECT_EQ(rows(), QStringList{QStringLiteral("Next Tab")});
  key(Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector{2});
  EXPECT_TRUE(hadFocus);
  EXPECT_TRUE(isGone());
}

TEST_F(CommandPaletteTest, IsMovedThroughByKeysAndAround) {
  key(Qt::Key_Down);
  key(Qt::Key_Down);
  key(Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector{3});
}

TEST_F(CommandPaletteTest, GoesAroundAtItsEnds) {
  key(Qt::Key_Up);  // to the last, which is not available
  key(Qt::Key_Return);
  EXPECT_TRUE(chosen.empty());
  EXPECT_FALSE(isGone());
  key(Qt::Key_Down);
  key(Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector{0});
}

TEST_F(CommandPaletteTest, RunsWhatIsClicked) {
  const QRect row = list().visualRect(list().model()->index(1, 0));
  QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, row.center());
  EXPECT_EQ(chosen, std::vector{2});
}

TEST_F(CommandPaletteTest, DoesNothingWithoutAMatch) {
  type("zzz");
  EXPECT_TRUE(rows().isEmpty());
  key(Qt::Key_Return);
  key(Qt::Key_Tab);
  key(Qt::Key_Down);
  EXPECT_TRUE(chosen.empty());
  EXPECT_FALSE(palette->asksForShortcut());
}

TEST_F(CommandPaletteTest, GoesByEscapeAndWhenItLosesTheKeyboard) {
  key(Qt::Key_Escape);
  EXPECT_TRUE(isGone());
  EXPECT_TRUE(edit.hasFocus());
  palette = new CommandPalette({{.title = QStringLiteral("Quit")}}, window);
  edit.setFocus();
  EXPECT_TRUE(isGone());
}

TEST_F(CommandPaletteTest, TakesTheKeysOfAShortcut) {
  type("quit");
  key(Qt::Key_Tab);
  ASSERT_TRUE(palette->asksForShortcut());
  EXPECT_TRUE(help().contains(QStringLiteral("“Quit”")));
  key(Qt::Key_Control);
  EXPECT_TRUE(wanted.empty());
  key(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
  key(Qt::Key_Backspace);
  key(Qt::Key_Delete);
  EXPECT_EQ(wanted, (std::vector<std::pair<int, QString>>{
                        {3, QStringLiteral("Ctrl+Shift+Return")}, {3, QString()}, {3, QStringLiteral("usual")}}));
  EXPECT_TRUE(chosen.empty());
  key(Qt::Key_Escape);
  EXPECT_FALSE(palette->asksForShortcut());
  EXPECT_FALSE(isGone());
}

TEST_F(CommandPaletteTest, ShowsAShortcutThatHasChanged) {
  key(Qt::Key_Tab);
  PaletteCommand changed = palette->command(0);
  changed.shortcut = QStringLiteral("F7");
  palette->setCommand(0, changed);
  EXPECT_FALSE(palette->asksForShortcut());
  EXPECT_EQ(rows().front(), QStringLiteral("New Tab, F7"));
}

TEST_F(CommandPaletteTest, StaysWithinATinyWindow) {
  for (const QSize size : {QSize(120, 90), QSize(40, 30), QSize(1600, 1200)}) {
    window.resize(size);
    QCoreApplication::processEvents();
    EXPECT_LE(palette->width(), std::max(size.width(), 1));
    EXPECT_GE(palette->x(), 0);
    EXPECT_GE(palette->y(), 0);
  }
}

}  // namespace
}  // namespace zolt
