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

/// How far each pixel of a picture is from its ground, the pixel at its corner: 0 to 1, the farthest. Row by row.
inline std::vector<double> inkOf(const QImage& picture) {
  const QRgb ground = picture.pixel(0, 0);
  std::vector<double> ink;
  double most = 1;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      const int distance = std::abs(qRed(pixel) - qRed(ground)) + std::abs(qGreen(pixel) - qGreen(ground)) +
                           std::abs(qBlue(pixel) - qBlue(ground));
      ink.push_back(distance);
      most = std::max(most, ink.back());
    }
  }
  for (double& each : ink) {
    each /= most;
  }
  return ink;
}

/// The name of the symbol that a picture of one, in whatever colour, is most like.
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

/// The colour of a picture that differs most from its ground, the pixel at its corner.
inline QColor inkColor(const QImage& picture) {
  const std::vector<double> ink = inkOf(picture);
  const auto most = std::max_element(ink.begin(), ink.end()) - ink.begin();
  return picture.pixelColor(static_cast<int>(most) % picture.width(), static_cast<int>(most) / picture.width());
}

/// The smallest rectangle around all pixels in which two pictures of one size differ; empty when they do not.
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
