#include "view/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/Card.h"
#include "controls/ControlColors.h"
#include "controls/TextScale.h"

namespace zolt {

namespace {

constexpr int kDistance = 8;  // from the edges of the view below
constexpr int kPadding = 6;
constexpr int kSpacing = 2;
constexpr int kFieldWidth = 190;
constexpr int kNarrowestField = 60;
constexpr int kNarrowLargeField = 110;
constexpr int kProgressWidth = 104;

QString number(std::uint64_t count) {
  return QLocale().toString(static_cast<qulonglong>(count));
}

}  // namespace

FindBar::FindBar(QWidget* parent)
    : QWidget(parent),
      m_query(new TextField(this)),
      m_progress(new SecondaryLabel(QString(), this)),
      m_matchCase(addOption(QStringLiteral("Aa"), tr("Match case"))),
      m_wholeWord(addOption(QStringLiteral("\u201CW\u201D"), tr("Whole word"))),
      m_expression(addOption(QStringLiteral(".*"), tr("Regular expression"))),
      m_problem(new QLabel(this)),
      m_row(new QBoxLayout(QBoxLayout::LeftToRight)) {
  setAccessibleName(tr("Find"));
  setCursor(Qt::ArrowCursor);
  m_query->setPlaceholderText(tr("Find"));
  m_query->setAccessibleName(tr("Find"));
  m_query->setMinimumWidth(kNarrowestField);
  m_query->installEventFilter(this);
  m_progress->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_progress->setObjectName(QStringLiteral("progress"));
  m_problem->setObjectName(QStringLiteral("problem"));
  m_problem->setWordWrap(true);
  m_problem->setTextFormat(Qt::PlainText);
  m_problem->setContentsMargins(kPadding + 4, 0, kPadding, kPadding);
  m_problem->hide();

  auto* backward = new BarButton(QStringLiteral("chevron.up"), QString(), tr("Previous match (Return)"), this);
  auto* forward = new BarButton(QStringLiteral("chevron.down"), QString(), tr("Next match (Shift+Return)"), this);
  auto* close = new BarButton(QStringLiteral("xmark"), QString(), tr("Close (Escape)"), this);
  connect(backward, &QAbstractButton::clicked, this, &FindBar::backwardWanted);
  connect(forward, &QAbstractButton::clicked, this, &FindBar::forwardWanted);
  connect(close, &QAbstractButton::clicked, this, &FindBar::closeWanted);
  connect(m_query, &QLineEdit::textChanged, this, &FindBar::queryChanged);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(0);
  auto* fields = new QHBoxLayout;
  fields->setSpacing(kSpacing);
  fields->addWidget(m_query, 3);
  fields->addWidget(m_progress, 1);
  fields->addSpacing(kPadding);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(kSpacing);
  buttons->addStretch();
  for (QWidget* button : {m_matchCase, m_wholeWord, m_expression, backward, forward, close}) {
    buttons->addWidget(button);
  }
  m_row->setSpacing(kSpacing);
  m_row->addLayout(fields, 1);
  m_row->addLayout(buttons);
  column->addLayout(m_row);
  column->addWidget(m_problem);
}

BarButton* FindBar::addOption(const QString& letters, const QString& name) {
  auto* button = new BarButton(QString(), letters, name, this);
  button->setCheckable(true);
  connect(button, &QAbstractButton::toggled, this, &FindBar::queryChanged);
  return button;
}

FindOptions FindBar::options() const {
  return {.matchCase = m_matchCase->isChecked(),
          .wholeWord = m_wholeWord->isChecked(),
          .regularExpression = m_expression->isChecked()};
}

void FindBar::showProgress(const Progress& progress) {
  showProblem(QString());
  QString text;
  if (progress.count == 0) {
    text = progress.searching ? tr("Searching…") : tr("No matches");
  } else if (progress.searching) {
    text = tr("%1…").arg(number(progress.count));
  } else if (progress.current) {
    text = tr("%1 of %2").arg(number(*progress.current), number(progress.count));
  } else {
    text = number(progress.count);
  }
  m_progress->setText(text);
  // The field shrinks, then the bar widens: the number is never truncated.
  const int needed = m_progress->fontMetrics().horizontalAdvance(text) + kPadding;
  if (needed > m_progress->minimumWidth()) {
    m_progress->setMinimumWidth(needed);
    fit();
  }
}

void FindBar::showProblem(const QString& sentence) {
  if (!sentence.isEmpty()) m_progress->clear();
  if (sentence == m_problem->text()) return;
  m_problem->setText(sentence);
  m_problem->setVisible(!sentence.isEmpty());
  fit();
}

void FindBar::showNothing() {
  showProblem(QString());
  m_progress->clear();
}

void FindBar::placeIn(const QRect& area, Edge edge) {
  m_area = area;
  m_edge = edge;
  fit();
}

int FindBar::widthWithField(int field) const {
  int buttons = 0;
  for (const BarButton* button : findChildren<BarButton*>()) {
    buttons += button->sizeHint().width() + kSpacing;
  }
  const int progressWidth = std::max(m_progress->minimumWidth(), scaledToText(kProgressWidth, font()));
  return 3 * kPadding + scaledToText(field, font()) + progressWidth + buttons + kSpacing;
}

QRect FindBar::geometryAt(Edge edge) const {
  const int width = std::clamp(widthWithField(kFieldWidth), 1, std::max(m_area.width() - 2 * kDistance, 1));
  const int height = layout()->hasHeightForWidth() ? layout()->heightForWidth(width) : sizeHint().height();
  const int top = edge == Edge::Top ? m_area.top() + kDistance : m_area.bottom() + 1 - kDistance - height;
  return {m_area.right() + 1 - kDistance - width, top, width, height};
}

void FindBar::fit() {
  // Large text may leave a window no room for everything beside each other.
  const bool fits = textScale(font()) <= 1 || widthWithField(kNarrowLargeField) <= m_area.width() - 2 * kDistance;
  m_row->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  layout()->invalidate();
  setGeometry(geometryAt(m_edge));
}

void FindBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange || m_area.isEmpty()) return;
  m_progress->setMinimumWidth(0);
  fit();
}

void FindBar::takeKeyboard(const QString& query) {
  if (!query.isEmpty()) m_query->setText(query);
  m_query->setFocus(Qt::ShortcutFocusReason);
  m_query->selectAll();
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_query && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      if ((key->modifiers() & Qt::ShiftModifier) != 0) {
        Q_EMIT forwardWanted();
      } else {
        Q_EMIT backwardWanted();
      }
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT closeWanted();
  } else {
    // Keys that mean nothing here must not reach the terminal below.
    event->accept();
  }
}

void FindBar::mousePressEvent(QMouseEvent* event) {
  event->accept();
}

void FindBar::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  drawCard(painter, rect(), colors, colors.fieldBorder);
}

}  // namespace zolt
