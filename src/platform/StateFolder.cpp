#include "platform/StateFolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace zolt {

namespace {

QString folderOfAll() {
#ifdef Q_OS_MACOS
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#else
  // A relative path is invalid, says the standard.
  const QString given = QFile::decodeName(qgetenv("XDG_STATE_HOME"));
  if (QDir::isAbsolutePath(given)) return given;
  const QString home = QDir::homePath();
  return home.isEmpty() ? QString() : home + QStringLiteral("/.local/state");
#endif
}

}  // namespace

std::string stateFolder() {
  const QString all = folderOfAll();
  return all.isEmpty() ? std::string() : QFile::encodeName(all + QStringLiteral("/zolt")).toStdString();
}

}  // namespace zolt
