#include "canvas/LinkLabel.h"

#include <QToolTip>
#include <algorithm>

namespace zolt {

namespace {

constexpr int kPadding = 5;

}  // namespace

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("linkLabel"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setTextFormat(Qt::PlainText);
  setAutoFillBackground(true);
  setPalette(QToolTip::palette());
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setMargin(kPadding);
  hide();
}

void LinkLabel::showTarget(const QString& target, const QPoint& pointer) {
  const QWidget& area = *parentWidget();
  setText(fontMetrics().elidedText(target, Qt::ElideMiddle, area.width() - 2 * kPadding));
  resize(std::min(sizeHint().width(), area.width()), sizeHint().height());
  QPoint at(0, area.height() - height());
  if (QRect(at, size()).adjusted(0, -height(), height(), 0).contains(pointer)) at.setX(area.width() - width());
  move(at);
  show();
  raise();
}

}  // namespace zolt
