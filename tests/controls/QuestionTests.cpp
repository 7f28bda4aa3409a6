#include "controls/Question.h"

#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>

#include "controls/ControlFixture.h"

namespace zolt {
namespace {

class QuestionTest : public testing::Test {
 protected:
  void SetUp() override { test::shown(window); }

  QList<QMessageBox*> open() {
    QList<QMessageBox*> boxes = window.findChildren<QMessageBox*>();
    boxes.removeIf([](const QMessageBox* each) { return !each->isVisible(); });
    return boxes;
  }
  QAbstractButton* button(QMessageBox::ButtonRole role) {
    for (QAbstractButton* each : open().front()->buttons()) {
      if (open().front()->buttonRole(each) == role) return each;
    }
    return nullptr;
  }

  QWidget window;
  int answers = 0;
  Question question{.name = QStringLiteral("leave"),
                    .title = QStringLiteral("Leave"),
                    .text = QStringLiteral("<b>Leave?</b>"),
                    .explanation = QStringLiteral("It is late."),
                    .yes = QStringLiteral("&Leave")};
  std::function<void()> count = [this] { ++answers; };
};

TEST_F(QuestionTest, ActsOnYesOnly) {
  ask(window, question, count);
  button(QMessageBox::RejectRole)->click();
  EXPECT_TRUE(test::waitFor([this] { return open().isEmpty(); }));
  EXPECT_EQ(answers, 0);
  ask(window, question, count);
  button(QMessageBox::AcceptRole)->click();
  EXPECT_EQ(answers, 1);
}

TEST_F(QuestionTest, TakesReturnAndEscapeForNo) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    ask(window, question, count);
    ASSERT_TRUE(QTest::qWaitForWindowActive(open().front()));
    QTest::keyClick(open().front(), key);
    EXPECT_TRUE(test::waitFor([this] { return open().isEmpty(); }));
  }
  EXPECT_EQ(answers, 0);
}

TEST_F(QuestionTest, IsAnsweredByTheMnemonicOfAButton) {
  ask(window, question, count);
  ASSERT_TRUE(QTest::qWaitForWindowActive(open().front()));
#ifndef Q_OS_MACOS  // which has no mnemonics
  test::press(*open().front(), Qt::Key_L, Qt::AltModifier);
  EXPECT_TRUE(test::waitFor([this] { return answers == 1; }));
#endif
}

TEST_F(QuestionTest, IsAskedOnceAtATime) {
  QWidget inside(&window);
  ask(window, question, count);
  ask(inside, question, count);
  EXPECT_EQ(open().size(), 1);
}

TEST_F(QuestionTest, ShowsWhatItQuotesAndItsTextAsTheyAre) {
  question.quoted = QStringLiteral("<i>one</i>\ntwo");
  ask(window, question, count);
  EXPECT_EQ(open().front()->textFormat(), Qt::PlainText);
  EXPECT_EQ(open().front()->findChild<QPlainTextEdit*>()->toPlainText(), question.quoted);
}

TEST_F(QuestionTest, WarnsWithOneButton) {
  warn(window, question);
  ASSERT_EQ(open().size(), 1);
  EXPECT_EQ(open().front()->icon(), QMessageBox::Warning);
  ASSERT_EQ(open().front()->buttons().size(), 1);
  open().front()->buttons().front()->click();
  EXPECT_TRUE(test::waitFor([this] { return open().isEmpty(); }));
}

}  // namespace
}  // namespace zolt
