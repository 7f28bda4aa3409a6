#include "brew/BrewOutput.h"

#include <QStringDecoder>
#include <algorithm>

namespace zolt {

namespace {

const QLatin1String kDescription("Desc: ");
const QLatin1String kInstalled("Installed");
const QLatin1String kCask("homebrew/cask");

bool isWhiteSpace(QChar c) {
  return c == QLatin1Char('\t') || c.category() == QChar::Separator_Space;
}

// Blanks and tabs only; `QString::trimmed` would also remove newlines.
QString withoutWhiteSpace(QStringView text) {
  while (!text.isEmpty() && isWhiteSpace(text.front())) {
    text = text.mid(1);
  }
  while (!text.isEmpty() && isWhiteSpace(text.back())) {
    text.chop(1);
  }
  return text.toString();
}

std::optional<QString> firstLine(const QStringList& lines, QLatin1String begin) {
  const auto found =
      std::find_if(lines.begin(), lines.end(), [&](const QString& line) { return line.startsWith(begin); });
  return found == lines.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

std::optional<QString> textOfBrewOutput(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder(bytes);
  if (decoder.hasError()) return std::nullopt;
  return text.trimmed();
}

QStringList linesOf(const QString& text) {
  return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

BrewPackage packageOfInfo(const QString& name, BrewPackageType type, const QString& text) {
  const QStringList lines = linesOf(text);
  std::optional<QString> description;
  if (const auto line = firstLine(lines, kDescription)) {
    description = withoutWhiteSpace(QStringView(*line).mid(kDescription.size()));
  }
  std::optional<QString> version;
  if (const auto line = firstLine(lines, kInstalled)) {
    version = withoutWhiteSpace(line->split(QLatin1Char(' '), Qt::SkipEmptyParts).last());
  }
  return makeBrewPackage(name, description, version, type);
}

std::vector<BrewPackage> packagesOfSearch(const QString& text) {
  std::vector<BrewPackage> packages;
  const QStringList lines = linesOf(text);
  packages.reserve(static_cast<std::size_t>(lines.size()));
  for (const QString& line : lines) {
    const auto type = line.startsWith(kCask) ? BrewPackageType::Cask : BrewPackageType::Formula;
    packages.push_back(makeBrewPackage(line, std::nullopt, std::nullopt, type));
  }
  return packages;
}

}  // namespace zolt
