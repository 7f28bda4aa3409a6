#include "controls/TextScale.h"

#include <QFontInfo>
#include <algorithm>
#include <cmath>

namespace zolt {

namespace {

// The default text of desktops has 12 to 15 pixels: 9 to 11 points.
constexpr double kUsualText = 15;

}  // namespace

double textScale(const QFont& font) {
  return std::max(QFontInfo(font).pixelSize() / kUsualText, 1.0);
}

int scaledToText(int length, const QFont& font) {
  return static_cast<int>(std::lround(length * textScale(font)));
}

}  // namespace zolt
