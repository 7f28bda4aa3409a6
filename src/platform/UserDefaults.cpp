#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

#include "platform/SettingsValue.h"

namespace zolt {

namespace {

constexpr std::chrono::milliseconds kWritingInterval{200};

SettingsFile openStandardSettings() {
#ifdef Q_OS_MACOS
  return {.settings = std::make_unique<QSettings>(QStringLiteral("Zolt"), QStringLiteral("Zolt")), .mayWrite = true};
#else
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return openSettingsFile(folder.toStdString() + "/zolt/zolt.ini");
#endif
}

// QSettings reads a value with an unquoted comma as a list.
QString textOf(const QVariant& value) {
  return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QStringLiteral(", ")) : value.toString();
}

}  // namespace

UserDefaults::UserDefaults(const std::string& file) : UserDefaults(openSettingsFile(file)) {}

UserDefaults::UserDefaults(SettingsFile store) : m_store(std::move(store)), m_values(storedValues()) {
  m_writing.setSingleShot(true);
  connect(&m_writing, &QTimer::timeout, this, &UserDefaults::synchronize);
  if (QCoreApplication* application = QCoreApplication::instance()) {
    connect(application, &QCoreApplication::aboutToQuit, this, &UserDefaults::synchronize);
  }
}

UserDefaults::~UserDefaults() {
  synchronize();
}

UserDefaults& UserDefaults::standard() {
  // Never destroyed; pending changes are written when the application quits.
  static auto* defaults = new UserDefaults(openStandardSettings());
  return *defaults;
}

std::map<std::string, std::string> UserDefaults::storedValues() const {
  std::map<std::string, std::string> values;
  const QStringList keys = m_store.settings->allKeys();
  for (const QString& key : keys) {
    const QVariant value = m_store.settings->value(key);
    if (value.isValid()) values.emplace(key.toStdString(), textOf(value).toStdString());
  }
  return values;
}

std::optional<std::string> UserDefaults::stringForKey(const std::string& key) const {
  if (const auto found = m_overrides.find(key); found != m_overrides.end()) return found->second;
  const auto found = m_values.find(key);
  return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

double UserDefaults::doubleForKey(const std::string& key) const {
  return doubleOfText(stringForKey(key).value_or(""));
}

std::int64_t UserDefaults::integerForKey(const std::string& key) const {
  return integerOfText(stringForKey(key).value_or(""));
}

bool UserDefaults::boolForKey(const std::string& key) const {
  return boolOfText(stringForKey(key).value_or(""));
}

void UserDefaults::setString(const std::string& key, const std::string& value) {
  set(key, value);
}

void UserDefaults::setDouble(const std::string& key, double value) {
  set(key, textOfDouble(value));
}

void UserDefaults::setInteger(const std::string& key, std::int64_t value) {
  set(key, std::to_string(value));
}

void UserDefaults::setBool(const std::string& key, bool value) {
  set(key, value ? "true" : "false");
}

void UserDefaults::removeObject(const std::string& key) {
  set(key, std::nullopt);
}

void UserDefaults::overrideForThisRun(const std::string& key, const std::string& value) {
  m_overrides[key] = value;
  Q_EMIT changed(key);
}

void UserDefaults::set(const std::string& key, std::optional<std::string> value) {
  m_overrides.erase(key);
  if (value) {
    m_values[key] = *value;
  } else {
    m_values.erase(key);
  }
  m_waiting[key] = std::move(value);
  if (!m_writing.isActive()) {
    const auto since =
        m_sinceWriting.isValid() ? std::chrono::milliseconds(m_sinceWriting.elapsed()) : kWritingInterval;
    m_writing.start(std::max(kWritingInterval - since, std::chrono::milliseconds(0)));
  }
  Q_EMIT changed(key);
}

void UserDefaults::synchronize() {
  m_writing.stop();
  if (!m_store.mayWrite) return;
  std::optional<SettingsFileLock> lock;
  if (!m_waiting.empty() && m_store.settings->format() == QSettings::IniFormat) {
    makeSettingsFilePrivately(m_store.settings->fileName());
    lock.emplace(m_store.settings->fileName());
  }
  for (const auto& [key, value] : std::exchange(m_waiting, {})) {
    const QString name = QString::fromStdString(key);
    if (value) {
      m_store.settings->setValue(name, QString::fromStdString(*value));
    } else {
      m_store.settings->remove(name);
    }
  }
  m_store.settings->sync();
  m_sinceWriting.start();
  if (m_store.settings->status() == QSettings::AccessError && !std::exchange(m_failureReported, true)) {
    std::fprintf(stderr, "zolt: settings cannot be saved to %s\n", qUtf8Printable(m_store.settings->fileName()));
  }
  const auto before = std::exchange(m_values, storedValues());
  for (const auto& [key, value] : m_values) {
    const auto old = before.find(key);
    if (old == before.end() || old->second != value) Q_EMIT changed(key);
  }
  for (const auto& [key, value] : before) {
    if (!m_values.contains(key)) Q_EMIT changed(key);
  }
}

}  // namespace zolt
