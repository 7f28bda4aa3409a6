#include "controls/WholeNumber.h"

#include <QRegularExpression>
#include <limits>

namespace zolt {

std::optional<std::int64_t> wholeNumber(const QString& text) {
  static const QRegularExpression form(
      QRegularExpression::anchoredPattern(QStringLiteral("\\s*([+-]?)([0-9]*)(?:\\.([0-9]*))?\\s*")));
  const QRegularExpressionMatch match = form.match(text);
  const QString whole = match.captured(2);
  const QString fraction = match.captured(3);
  if (!match.hasMatch() || (whole.isEmpty() && fraction.isEmpty())) return std::nullopt;

  const QString sign = match.captured(1) == QLatin1String("-") ? QStringLiteral("-") : QString();
  bool fits = false;
  const qlonglong number = QString(sign + (whole.isEmpty() ? QStringLiteral("0") : whole)).toLongLong(&fits);
  if (!fits) return std::nullopt;

  static const QRegularExpression half(QRegularExpression::anchoredPattern(QStringLiteral("50*")));
  const bool isHalf = half.match(fraction).hasMatch();
  const bool roundsAway = isHalf ? number % 2 != 0 : !fraction.isEmpty() && fraction.front() >= QLatin1Char('5');
  if (!roundsAway) return number;
  const qlonglong end = sign.isEmpty() ? std::numeric_limits<qlonglong>::max() : std::numeric_limits<qlonglong>::min();
  if (number == end) return std::nullopt;
  return number + (sign.isEmpty() ? 1 : -1);
}

}  // namespace zolt
