#include "updates/PackageName.h"

namespace zolt {

namespace {

constexpr qsizetype kMaxBytes = 120;

bool isAllowed(char32_t character) {
  if (character == U'/' || character == U'\\' || character == U':') return false;
  return QChar::isPrint(character) && QChar::category(character) != QChar::Other_PrivateUse;
}

}  // namespace

QString packageFileName(const QUrl& url) {
  const QString encoded = url.path(QUrl::FullyEncoded);
  const QString segment = QUrl::fromPercentEncoding(encoded.mid(encoded.lastIndexOf(u'/') + 1).toLatin1());
  std::u32string name;
  for (const char32_t character : segment.toStdU32String()) {
    if (isAllowed(character)) name += character;
  }
  while (QString::fromStdU32String(name).toUtf8().size() > kMaxBytes) {
    name.erase(0, 1);
  }
  const auto start = name.find_first_not_of(U". ");
  if (start == std::u32string::npos) return QStringLiteral("Zolt-update");
  return QString::fromStdU32String(name.substr(start));
}

}  // namespace zolt
