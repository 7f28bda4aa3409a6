#pragma once

#include <QRectF>

class QColor;
class QPainter;

namespace zolt {

/// The radius of the corners of fields, pickers and buttons that look like them, in logical pixels.
inline constexpr int kFieldRadius = 6;

/// Paints the box of one into `area`, all of the widget: as much smaller as its focus ring needs. Returns its shape,
/// whose edges lie in the middle of pixels.
QRectF paintFieldBox(QPainter& painter, const QRect& area, const QColor& border, const QColor& ground);

}  // namespace zolt
