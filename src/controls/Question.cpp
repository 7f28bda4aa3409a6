#include "controls/Question.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <utility>

namespace zolt {

namespace {

constexpr int kMaxLines = 10;
constexpr int kColumns = 60;

// The width that Qt lets the content of a message box have on its screen; it cuts off what is wider.
int widestContent(const QMessageBox& box) {
  constexpr int kSmallScreen = 1024;
  constexpr int kBesideBox = 480;
  constexpr int kWidestBox = 1000;
  const int screen = box.screen()->availableGeometry().width();
  const QMargins margins = box.layout()->contentsMargins();
  const int widest = screen <= kSmallScreen ? screen : std::min(screen - kBesideBox, kWidestBox);
  return widest - margins.left() - margins.right();
}

void showQuoted(QMessageBox& box, const QString& text) {
  auto* view = new QPlainTextEdit(text, &box);
  view->setObjectName(QStringLiteral("plainText"));
  view->setReadOnly(true);
  view->setLineWrapMode(QPlainTextEdit::NoWrap);
  view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  view->setTabChangesFocus(true);
  const QFontMetrics metrics(view->font());
  const int lines = std::clamp(static_cast<int>(text.count(QLatin1Char('\n'))) + 1, 2, kMaxLines);
  const int margins = static_cast<int>(2 * view->document()->documentMargin()) + 2 * view->frameWidth();
  view->setFixedHeight(metrics.lineSpacing() * (lines + 1) + margins);
  view->setMinimumWidth(std::min(metrics.horizontalAdvance(QLatin1Char('M')) * kColumns, widestContent(box)));
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  // The buttons stay below it.
  const int row = grid->rowCount() - 1;
  QLayoutItem* buttons = grid->takeAt(grid->indexOf(box.findChild<QWidget*>(QStringLiteral("qt_msgbox_buttonbox"))));
  grid->addWidget(view, row, 0, 1, grid->columnCount());
  if (buttons != nullptr) grid->addItem(buttons, row + 1, 0, 1, grid->columnCount());
}

// Null where the question is open already.
QMessageBox* makeBox(QWidget& over, QMessageBox::Icon icon, const Question& question) {
  const auto open = over.window()->findChildren<QMessageBox*>(question.name);
  if (std::ranges::any_of(open, &QMessageBox::isVisible)) return nullptr;
  auto* box = new QMessageBox(icon, question.title, question.text, QMessageBox::NoButton, over.window());
  box->setObjectName(question.name);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  box->setInformativeText(question.explanation);
  if (!question.quoted.isEmpty()) showQuoted(*box, question.quoted);
  return box;
}

}  // namespace

void ask(QWidget& over, const Question& question, std::function<void()> act) {
  QMessageBox* box = makeBox(over, QMessageBox::Question, question);
  if (box == nullptr) return;
  QPushButton* yes = box->addButton(question.yes, QMessageBox::AcceptRole);
  QPushButton* no = question.no.isEmpty() ? box->addButton(QMessageBox::Cancel)
                                          : box->addButton(question.no, QMessageBox::RejectRole);
  box->setDefaultButton(no);
  box->setEscapeButton(no);
  QObject::connect(yes, &QPushButton::clicked, &over, [act = std::move(act)] { act(); });
  box->open();
}

void warn(QWidget& over, const Question& question) {
  QMessageBox* box = makeBox(over, QMessageBox::Warning, question);
  if (box == nullptr) return;
  box->addButton(QMessageBox::Ok);
  box->open();
}

}  // namespace zolt
