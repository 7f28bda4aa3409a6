#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

#include "symbols/Symbol.h"

namespace zolt::test {

/// The contrast of each pixel with the background, which is the pixel in the corner: 0 to 1 for the strongest. Row by
/// row.
inline std::vector<double> inkOf(const QImage& picture) {
  const QRgb ground = picture.pixel(0, 0);
  std::vector<double> ink;
  double maximum = 1;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      const int distance = std::abs(qRed(pixel) - qRed(ground)) + std::abs(qGreen(pixel) - qGreen(ground)) +
                           std::abs(qBlue(pixel) - qBlue(ground));
      ink.push_back(distance);
      maximum = std::max(maximum, ink.back());
    }
  }
  for (double& each : ink) {
    each /= maximum;
  }
  return ink;
}

/// The name of the symbol that a picture of one, in any colour, resembles most.
inline QString symbolMostLike(const QImage& picture) {
  const std::vector<double> ink = inkOf(picture);
  QString best;
  double least = std::numeric_limits<double>::max();
  const QStringList names = symbolNames();
  for (const QString& name : names) {
    QImage drawn(picture.size(), QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    symbol(name, Qt::black).paint(&painter, drawn.rect());
    painter.end();
    const std::vector<double> expected = inkOf(drawn);
    double difference = 0;
    for (std::size_t i = 0; i < ink.size(); ++i) {
      difference += std::abs(ink[i] - expected[i]);
    }
    if (difference >= least) continue;
    least = difference;
    best = name;
  }
  return best;
}

/// The colour in a picture that differs most from the background, which is the pixel in the corner.
inline QColor inkColor(const QImage& picture) {
  const std::vector<double> ink = inkOf(picture);
  const auto strongest = std::max_element(ink.begin(), ink.end()) - ink.begin();
  return picture.pixelColor(static_cast<int>(strongest) % picture.width(),
                            static_cast<int>(strongest) / picture.width());
}

/// The bounding rectangle of the pixels in which two pictures of the same size differ; empty if they are equal.
inline QRect differenceOf(const QImage& one, const QImage& other) {
  QRect difference;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      if (one.pixel(x, y) != other.pixel(x, y)) difference |= QRect(x, y, 1, 1);
    }
  }
  return difference;
}

}  // namespace zolt::test
