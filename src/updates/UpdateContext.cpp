#include "updates/UpdateContext.h"

#include <QOperatingSystemVersion>
#include <QStandardPaths>
#include <QSysInfo>

#include "updates/Appcast.h"

namespace zolt {

UpdateEnvironment UpdateEnvironment::ofThisProgram() {
  UpdateEnvironment environment;
  environment.runningVersion = QStringLiteral(ZOLT_VERSION);
  environment.systemName = systemNameInFeeds();
#ifdef Q_OS_MACOS
  const QOperatingSystemVersion system = QOperatingSystemVersion::current();
  environment.systemVersion =
      QStringLiteral("%1.%2.%3").arg(system.majorVersion()).arg(system.minorVersion()).arg(system.microVersion());
#else
  environment.systemVersion = QSysInfo::kernelVersion();
#endif
  environment.downloadFolder =
      QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QLatin1String("/updates");
  environment.now = [] { return QDateTime::currentDateTimeUtc(); };
  return environment;
}

}  // namespace zolt
