#include "updates/views/UpdateTexts.h"

#include <QCoreApplication>
#include <array>
#include <cmath>

namespace zolt {

namespace {

constexpr std::array kUnits{"bytes", "kB", "MB", "GB", "TB"};
constexpr double kStep = 1000;
constexpr double kDecimalBelow = 9.95;  // from here on, one decimal place would round to 10.0

QString translated(const char* text) {
  return QCoreApplication::translate("zolt::UpdateTexts", text);
}

}  // namespace

QString offerText(const AppcastItem& item, const QString& runningVersion) {
  QString offered = item.shortVersion;
  if (offered == runningVersion && item.version != offered) offered += QStringLiteral(" (%1)").arg(item.version);
  const char* const text = item.informational
                               ? "Zolt %1 is now available; you have %2. Would you like to learn more about it?"
                               : "Zolt %1 is now available; you have %2. Would you like to download it now?";
  return translated(text).arg(offered, runningVersion);
}

QString byteText(std::int64_t bytes) {
  auto value = static_cast<double>(bytes);
  std::size_t unit = 0;
  while (std::round(value) >= kStep && unit + 1 < kUnits.size()) {
    value /= kStep;
    ++unit;
  }
  const int digits = unit > 0 && value < kDecimalBelow ? 1 : 0;
  return QString::number(value, 'f', digits) + QLatin1Char(' ') + translated(kUnits[unit]);
}

QString progressText(std::int64_t receivedBytes, std::int64_t totalBytes) {
  if (totalBytes == 0) return byteText(receivedBytes);
  return translated("%1 of %2").arg(byteText(receivedBytes), byteText(totalBytes));
}

}  // namespace zolt
