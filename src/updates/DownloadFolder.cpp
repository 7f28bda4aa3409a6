#include "updates/DownloadFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <utility>

#include "updates/UpdateError.h"

namespace zolt {

namespace {

constexpr qint64 kHandedOverSeconds = 24 * 60 * 60;
constexpr QLatin1String kLockName("/lock");

QByteArray native(const QString& path) {
  return QFile::encodeName(path);
}

// A descriptor that holds the lock; -1 if another program holds it or the file does not exist.
int tryLock(const QString& file, int flags) {
  const int descriptor = ::open(native(file).constData(), flags | O_RDWR | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    ::close(descriptor);
    return -1;
  }
  return descriptor;
}

void removeAbandoned(const QString& runFolder) {
  const bool hasLock = QFile::exists(runFolder + kLockName);
  const int lock = tryLock(runFolder + kLockName, 0);
  if (hasLock && lock < 0) return;
  QDir(runFolder).removeRecursively();
  if (lock >= 0) ::close(lock);
}

}  // namespace

DownloadFolder::DownloadFolder(QString path) : m_path(std::move(path)) {}

DownloadFolder::~DownloadFolder() {
  discard();
  if (m_runFolder.isEmpty()) return;
  QDir(m_runFolder).removeRecursively();
  ::close(m_lock);
  ::rmdir(native(m_path).constData());  // fails if a package was handed over
}

void DownloadFolder::removeLeftovers() {
  struct stat facts {};
  if (::lstat(native(m_path).constData(), &facts) != 0 || !S_ISDIR(facts.st_mode)) return;
  const QFileInfoList entries =
      QDir(m_path).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  const QDateTime now = QDateTime::currentDateTimeUtc();
  for (const QFileInfo& entry : entries) {
    if (entry.isDir() && !entry.isSymLink()) {
      if (entry.filePath() != m_runFolder) removeAbandoned(entry.filePath());
    } else if (entry.isSymLink() || entry.lastModified().secsTo(now) > kHandedOverSeconds) {
      QFile::remove(entry.filePath());
    }
  }
  if (m_runFolder.isEmpty()) ::rmdir(native(m_path).constData());
}

// Creates a folder that only this user can access.
bool DownloadFolder::makePrivate(const QString& path) const {
  const QByteArray name = native(path);
  if (!QDir().mkpath(QFileInfo(path).path())) return false;
  if (::mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST) return false;
  struct stat facts {};
  if (::lstat(name.constData(), &facts) != 0 || !S_ISDIR(facts.st_mode) || facts.st_uid != ::geteuid()) return false;
  return ::chmod(name.constData(), S_IRWXU) == 0;
}

bool DownloadFolder::makeRunFolder() {
  if (!m_runFolder.isEmpty()) return true;
  if (!makePrivate(m_path)) return false;
  QByteArray name = native(m_path) + "/run-XXXXXX";
  if (!::mkdtemp(name.data())) return false;
  m_runFolder = QFile::decodeName(name);
  m_lock = tryLock(m_runFolder + kLockName, O_CREAT | O_EXCL);
  if (m_lock >= 0) return true;
  QDir(m_runFolder).removeRecursively();
  m_runFolder.clear();
  return false;
}

Result<QFile*> DownloadFolder::begin() {
  discard();
  if (!makeRunFolder()) return failureOf(UpdateError::PackageNotSaved);
  auto file = std::make_unique<QFile>(m_runFolder + QLatin1String("/package.part"));
  if (!file->open(QIODevice::WriteOnly | QIODevice::NewOnly)) return failureOf(UpdateError::PackageNotSaved);
  m_file = std::move(file);
  return m_file.get();
}

void DownloadFolder::discard() {
  if (!m_file) return;
  m_file->remove();
  m_file.reset();
}

Result<QString> DownloadFolder::keep(const QString& fileName) {
  const QString target = m_path + QLatin1Char('/') + fileName;
  m_file->close();
  if (::rename(native(m_file->fileName()).constData(), native(target).constData()) != 0) {
    discard();
    return failureOf(UpdateError::PackageNotSaved);
  }
  m_file.reset();
  return target;
}

}  // namespace zolt
