#include "terminal/QuestionText.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <algorithm>

namespace zolt {

namespace {

constexpr int kMaxLines = 10;
constexpr int kColumns = 60;

}  // namespace

void showPlainText(QMessageBox& box, const QString& text) {
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
  view->setMinimumWidth(metrics.horizontalAdvance(QLatin1Char('M')) * kColumns);
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  // The buttons stay below it.
  const int row = grid->rowCount() - 1;
  QLayoutItem* buttons = grid->takeAt(grid->indexOf(box.findChild<QWidget*>(QStringLiteral("qt_msgbox_buttonbox"))));
  grid->addWidget(view, row, 0, 1, grid->columnCount());
  if (buttons != nullptr) grid->addItem(buttons, row + 1, 0, 1, grid->columnCount());
}

}  // namespace zolt
