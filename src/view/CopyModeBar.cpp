#include "view/CopyModeBar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr int kPadding = 4;
// From the edges of the canvas.
constexpr int kMargin = 6;

}  // namespace

CopyModeBar::CopyModeBar(CopyMode& mode, TextCanvas& canvas)
    : QWidget(canvas.parentWidget()), m_mode(mode), m_canvas(canvas), m_text(new QLabel(this)) {
  setObjectName(QStringLiteral("copyMode"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  m_text->setTextFormat(Qt::PlainText);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(2 * kPadding, kPadding, 2 * kPadding, kPadding);
  row->addWidget(m_text);
  hide();
  connect(&mode, &CopyMode::changed, this, &CopyModeBar::showState);
  canvas.installEventFilter(this);
}

void CopyModeBar::showState() {
  if (!m_mode.isOn()) return hide();
  const auto text = [this] {
    switch (m_mode.selects()) {
      case CopyMode::Selects::Nothing:
        return tr("Copy mode – v selects, q leaves");
      case CopyMode::Selects::Characters:
        return tr("Copy mode, selecting – y copies, q leaves");
      case CopyMode::Selects::Lines:
        return tr("Copy mode, selecting lines – y copies, q leaves");
      case CopyMode::Selects::Rectangle:
        return tr("Copy mode, selecting a rectangle – y copies, q leaves");
    }
    return QString();
  };
  m_text->setText(text());
  setAccessibleName(m_text->text());
  place();
  show();
  raise();
}

// At the lower edge on the right, or the upper one if the cursor is there.
void CopyModeBar::place() {
  adjustSize();
  const QRect area = m_canvas.geometry().adjusted(kMargin, kMargin, -kMargin, -kMargin);
  const int right = std::max(area.right() - width() - m_canvas.verticalScrollBar()->width(), area.left());
  move(right, area.bottom() - height());
  const QRectF cursor = m_canvas.rectOf(m_mode.cursor()).translated(m_canvas.geometry().topLeft());
  if (cursor.intersects(geometry())) move(right, area.top());
}

bool CopyModeBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && m_mode.isOn()) place();
  return QWidget::eventFilter(watched, event);
}

void CopyModeBar::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(mixed(colors.window, palette().color(QPalette::WindowText), 0.3));
  painter.setBrush(colors.window);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kPadding, kPadding);
}

}  // namespace zolt
