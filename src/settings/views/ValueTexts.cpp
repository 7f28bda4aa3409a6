#include "settings/views/ValueTexts.h"

#include <cmath>
#include <limits>

namespace zolt {

std::int64_t truncated(double value) {
  // 2^63: the first double above the range; its negative is the lower end of the range.
  constexpr double kLimit = 9223372036854775808.0;
  if (std::isnan(value)) return 0;
  if (value >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (value < -kLimit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

QString pointsText(double value) {
  return QStringLiteral("%1pt").arg(truncated(value));
}

QString decimalText(double value) {
  return QString::asprintf("%.1f", value);
}

QString secondsText(double value) {
  return QStringLiteral("%1 s").arg(truncated(value));
}

QString contrastText(double value) {
  return value > 1 ? QString::asprintf("%.1f:1", value) : QStringLiteral("Off");
}

QString percentText(double value) {
  return QStringLiteral("%1%").arg(truncated(value * 100));
}

}  // namespace zolt
