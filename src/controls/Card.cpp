#include "controls/Card.h"

#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "controls/ControlColors.h"
#include "controls/Hairline.h"

namespace zolt {

namespace {

constexpr int kRadius = 9;

}  // namespace

void drawCard(QPainter& painter, const QRect& area, const ControlColors& colors, const QColor& border) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // Snapped to device pixels, so that all four edges are as thick as a hairline at fractional scales too.
  const QTransform toDevice = painter.deviceTransform();
  painter.setWorldTransform(toDevice.inverted(), true);
  const QRectF exact = toDevice.mapRect(QRectF(area));
  const QRectF edges(QPointF(std::round(exact.left()), std::round(exact.top())),
                     QPointF(std::round(exact.right()), std::round(exact.bottom())));
  const double thickness = std::max(std::floor(toDevice.m22()), 1.0);
  painter.setPen(QPen(border, thickness));
  painter.setBrush(colors.card);
  const double radius = kRadius * toDevice.m22();
  painter.drawRoundedRect(edges.adjusted(thickness / 2, thickness / 2, -thickness / 2, -thickness / 2), radius, radius);
  painter.restore();
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
