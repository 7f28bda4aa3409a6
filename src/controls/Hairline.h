#pragma once

class QColor;
class QPainter;
class QRect;

namespace zolt {

/// Fills a horizontal line of one logical pixel, snapped to whole device pixels: at fractional scales every such line
/// is as thick as the others and none is blurred.
void drawHairline(QPainter& painter, const QRect& line, const QColor& color);

}  // namespace zolt
