#include "controls/SecondaryLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "controls/ControlColors.h"
#include "controls/ToolTipText.h"

namespace zolt {

namespace {

constexpr int kShortest = 40;

}  // namespace

SecondaryLabel::SecondaryLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
}

QSize SecondaryLabel::minimumSizeHint() const {
  if (wordWrap()) return QLabel::minimumSizeHint();
  return {std::min(kShortest, sizeHint().width()), sizeHint().height()};
}

bool SecondaryLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const bool isElided = !wordWrap() && fontMetrics().horizontalAdvance(text()) > contentsRect().width();
  if (!isElided) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTipText({text()}, QToolTip::font()), this);
  return true;
}

void SecondaryLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(ControlColors(palette()).secondary);
  if (wordWrap()) {
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextWordWrap, text());
    return;
  }
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
  painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

}  // namespace zolt
