#include "platform/SettingsFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <optional>
#include <thread>

#include "base/Result.h"

namespace zolt {

namespace {

constexpr qint64 kLineLimitBytes = kSettingsFileLimitBytes;
constexpr int kMaxCopies = 1000;
constexpr int kLeftoverAgeSeconds = 60;
constexpr std::chrono::seconds kLockLimit{2};
constexpr std::chrono::milliseconds kLockRetry{2};

bool isPlainText(const QByteArray& line) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  [[maybe_unused]] const QString decoded = decoder(line);
  if (decoder.hasError()) return false;
  return std::none_of(line.begin(), line.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && byte != '\t';
  });
}

// Whether the next line would continue this one: a quotation is open, or the line end is escaped.
bool runsOn(const QByteArray& line) {
  bool quoted = false;
  bool escaped = false;
  for (const char c : line) {
    if (c == '"' && !escaped) quoted = !quoted;
    escaped = c == '\\' && !escaped;
  }
  return quoted || escaped;
}

// Values of Qt's own types are never written here, and building them from arbitrary bytes is not safe.
bool holdsEncodedObject(const QByteArray& line) {
  for (const char* form : {"@Variant(", "@DateTime("}) {
    for (qsizetype at = line.indexOf(form); at >= 0; at = line.indexOf(form, at + 1)) {
      if (at == 0 || line[at - 1] != '@') return true;
    }
  }
  return false;
}

// A complete line of an INI file.
bool isReadable(const QByteArray& line) {
  const QByteArray text = line.trimmed();
  if (text.isEmpty()) return true;
  if (!isPlainText(text)) return false;
  if (text.startsWith(';')) return true;
  if (text.startsWith('[')) return text.endsWith(']');
  return text.indexOf('=') > 0 && !runsOn(text) && !holdsEncodedObject(text);
}

struct Salvage {
  bool isWhole = true;  // nothing is unreadable
  QByteArray content;   // the readable lines
};

// Nothing if the file cannot be read.
std::optional<Salvage> salvage(QFile& file) {
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  Salvage result{.isWhole = file.size() <= kSettingsFileLimitBytes, .content = {}};
  while (!file.atEnd()) {
    QByteArray line = file.readLine(kLineLimitBytes);
    if (line.isEmpty()) return std::nullopt;
    bool readable = line.endsWith('\n') || file.atEnd();
    while (!line.endsWith('\n') && !file.atEnd()) {
      line = file.readLine(kLineLimitBytes);
    }
    if (line.endsWith('\n')) line.chop(1);
    if (line.endsWith('\r')) line.chop(1);
    if (result.content.isEmpty() && line.startsWith("\xEF\xBB\xBF")) line.remove(0, 3);
    readable = readable && isReadable(line);
    if (readable && result.content.size() + line.size() < kSettingsFileLimitBytes) {
      result.content += line + '\n';
    } else {
      result.isWhole = false;
    }
  }
  return result;
}

// A hard link if possible: nothing is copied, and the original name can be replaced.
Result<QString> keepCopy(const QString& file) {
  for (int number = 1; number <= kMaxCopies; ++number) {
    QString copy = file + QStringLiteral(".unreadable");
    if (number > 1) copy += QString::number(number);
    if (link(QFile::encodeName(file).constData(), QFile::encodeName(copy).constData()) == 0) return copy;
    if (errno == EEXIST) continue;
    const int reason = errno;
    // Not supported by every file system.
    if (QFile::copy(file, copy)) return copy;
    return Failure{std::strerror(reason)};
  }
  return Failure{"there are too many copies already"};
}

Result<void> replace(const QString& file, const QByteArray& content) {
  QSaveFile saved(file);
  if (saved.open(QIODevice::WriteOnly) && saved.write(content) == content.size() && saved.commit()) return {};
  return Failure{saved.errorString().toStdString()};
}

void report(const QString& file, const std::string& what) {
  std::fprintf(stderr, "zolt: settings file %s: %s\n", qUtf8Printable(file), what.c_str());
}

}  // namespace

SettingsFileLock::SettingsFileLock(const QString& name)
    : m_folder(open(QFile::encodeName(QFileInfo(name).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!m_folder) return;
  const auto deadline = std::chrono::steady_clock::now() + kLockLimit;
  while (flock(m_folder.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() > deadline) return;
    std::this_thread::sleep_for(kLockRetry);
  }
  QFile::remove(name + QStringLiteral(".lock"));
}

namespace {

// Returns whether the file may be written afterwards.
bool repair(const QString& name) {
  if (!QFileInfo::exists(name)) return true;
  if (!QFileInfo(name).isFile()) {
    report(name, "is not a regular file; changes are not saved");
    return false;
  }
  const SettingsFileLock lock(name);
  QFile file(name);
  const std::optional<Salvage> found = salvage(file);
  if (!found) {
    report(name, "cannot be read (" + file.errorString().toStdString() + "); changes are not saved");
    return false;
  }
  if (found->isWhole) return true;
  const auto copy = keepCopy(name);
  if (!copy) {
    report(name,
           "parts of it cannot be read, and no copy could be made (" + copy.reason() + "); changes are not saved");
    return false;
  }
  const auto replaced = replace(name, found->content);
  report(name, "parts of it cannot be read; a copy is kept in " + copy.value().toStdString() +
                   (replaced ? "" : " (" + replaced.reason() + ")"));
  return static_cast<bool>(replaced);
}

// Temporary files of processes that were killed while saving: "FILE.XXXXXX".
void removeLeftovers(const QString& name) {
  const QFileInfo file(name);
  QDir folder = file.dir();
  const QDateTime old = QDateTime::currentDateTimeUtc().addSecs(-kLeftoverAgeSeconds);
  const QFileInfoList found = folder.entryInfoList({file.fileName() + QStringLiteral(".??????")}, QDir::Files);
  for (const QFileInfo& each : found) {
    if (each.lastModified() < old) folder.remove(each.fileName());
  }
}

}  // namespace

void makeSettingsFilePrivately(const QString& name) {
  const QFileInfo file(name);
  if (file.exists() || name.isEmpty()) return;
  QDir().mkpath(file.path());
  const int made = open(QFile::encodeName(name).constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
  if (made >= 0) close(made);
}

SettingsFile openSettingsFile(const std::string& file) {
  // Links are resolved, so that a copy is one of the file, not of the link.
  const QString given = QFile::decodeName(file.c_str());
  const QString target = QFileInfo(given).canonicalFilePath();
  const QString name = target.isEmpty() ? given : target;
  removeLeftovers(name);
  const bool mayWrite = repair(name);
  // A file that could not be repaired may be huge or endless (a FIFO): it is left alone.
  const QFileInfo left(name);
  const bool tooLarge = left.size() > kSettingsFileLimitBytes || (left.exists() && !left.isFile());
  return {.settings = std::make_unique<QSettings>(tooLarge ? QString() : name, QSettings::IniFormat),
          .mayWrite = mayWrite};
}

}  // namespace zolt
