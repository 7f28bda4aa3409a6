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

namespace zolt {

namespace {

constexpr int kDistance = 8;  // from the edges of the view below
constexpr int kPadding = 6;
constexpr int kSpacing = 2;
constexpr int kFieldWidth = 190;
constexpr int kNarrowestField = 60;
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
      m_problem(new QLabel(this)) {
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
  auto* row = new QHBoxLayout;
  row->setSpacing(kSpacing);
  row->addWidget(m_query, 3);
  row->addWidget(m_progress, 1);
  row->addSpacing(kPadding);
  for (QWidget* button : {m_matchCase, m_wholeWord, m_expression, backward, forward, close}) {
    row->addWidget(button);
  }
  column->addLayout(row);
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

QRect FindBar::geometryAt(Edge edge) const {
  constexpr int kButtons = 6;
  const int buttonWidth = m_matchCase->sizeHint().width() + kSpacing;
  const int progressWidth = std::max(m_progress->minimumWidth(), kProgressWidth);
  const int wanted = 3 * kPadding + kFieldWidth + progressWidth + kButtons * buttonWidth + kSpacing;
  const int width = std::clamp(wanted, 1, std::max(m_area.width() - 2 * kDistance, 1));
  const int height = layout()->hasHeightForWidth() ? layout()->heightForWidth(width) : sizeHint().height();
  const int top = edge == Edge::Top ? m_area.top() + kDistance : m_area.bottom() + 1 - kDistance - height;
  return {m_area.right() + 1 - kDistance - width, top, width, height};
}

void FindBar::fit() {
  setGeometry(geometryAt(m_edge));
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
