#include "updates/FeedDate.h"

#include <QRegularExpression>
#include <QTimeZone>
#include <array>
#include <optional>
#include <utility>

namespace zolt {

namespace {

constexpr std::array kMonths{"jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};

// The named zones of RFC 822, in hours from UTC.
constexpr std::array<std::pair<const char*, int>, 12> kZones{{{"gmt", 0},
                                                              {"ut", 0},
                                                              {"utc", 0},
                                                              {"z", 0},
                                                              {"est", -5},
                                                              {"edt", -4},
                                                              {"cst", -6},
                                                              {"cdt", -5},
                                                              {"mst", -7},
                                                              {"mdt", -6},
                                                              {"pst", -8},
                                                              {"pdt", -7}}};

int monthOf(const QString& name) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (name.compare(QLatin1String(kMonths[i]), Qt::CaseInsensitive) == 0) return static_cast<int>(i) + 1;
  }
  return 0;
}

int fullYear(const QString& text) {
  const int year = text.toInt();
  if (text.size() == 2) return year < 50 ? 2000 + year : 1900 + year;
  return text.size() == 3 ? 1900 + year : year;
}

std::optional<int> offsetSeconds(const QString& zone) {
  for (const auto& [name, hours] : kZones) {
    if (zone.compare(QLatin1String(name), Qt::CaseInsensitive) == 0) return hours * 3600;
  }
  static const QRegularExpression numeric(QStringLiteral("\\A([+-])([0-9]{2})([0-5][0-9])\\z"));
  const QRegularExpressionMatch match = numeric.match(zone);
  if (!match.hasMatch() || match.captured(2).toInt() > 14) return std::nullopt;
  const int seconds = match.captured(2).toInt() * 3600 + match.captured(3).toInt() * 60;
  return match.captured(1) == QLatin1String("-") ? -seconds : seconds;
}

}  // namespace

QDateTime dateOfFeed(const QString& text) {
  static const QRegularExpression form(
      QStringLiteral("\\A(?:[A-Za-z]{3,9},)?\\s*([0-9]{1,2})\\s+([A-Za-z]{3})[a-z]*\\s+([0-9]{2,4})\\s+"
                     "([0-9]{2}):([0-9]{2})(?::([0-9]{2}))?\\s+(\\S+)\\z"));
  const QRegularExpressionMatch match = form.match(text.trimmed());
  if (!match.hasMatch()) return {};
  const QDate date(fullYear(match.captured(3)), monthOf(match.captured(2)), match.captured(1).toInt());
  const QTime time(match.captured(4).toInt(), match.captured(5).toInt(), match.captured(6).toInt());
  const std::optional<int> offset = offsetSeconds(match.captured(7));
  if (!date.isValid() || !time.isValid() || !offset) return {};
  return QDateTime(date, time, Qt::UTC).addSecs(-*offset);
}

}  // namespace zolt
