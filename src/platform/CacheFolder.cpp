#include "platform/CacheFolder.h"

#include <QFile>
#include <QStandardPaths>

namespace zolt {

std::string cacheFolder() {
  const QString caches = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
  return caches.isEmpty() ? std::string() : QFile::encodeName(caches + QStringLiteral("/zolt")).toStdString();
}

}  // namespace zolt
