#include "controls/Card.h"

#include <QPainter>
#include <QVBoxLayout>

#include "controls/ControlColors.h"
#include "controls/Hairline.h"

namespace zolt {

namespace {

constexpr int kRadius = 9;

}  // namespace

void drawCard(QPainter& painter, const QRect& area, const ControlColors& colors, const QColor& border) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(border);
  painter.setBrush(colors.card);
  painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

Card::Card(QWidget* parent) : QWidget(parent), m_rows(new QVBoxLayout(this)) {
  m_rows->setContentsMargins(0, 0, 0, 0);
  m_rows->setSpacing(0);
}

void Card::add(QWidget* row) {
  m_rows->addWidget(row);
}

void Card::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  drawCard(painter, rect(), colors, colors.hairline);
  for (int i = 1; i < m_rows->count(); ++i) {
    const int top = m_rows->itemAt(i)->geometry().top();
    drawHairline(painter, QRect(inset, top, width() - 2 * inset, 1), colors.hairline);
  }
}

}  // namespace zolt
