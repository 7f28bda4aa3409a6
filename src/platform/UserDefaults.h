#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/SettingsFile.h"

namespace zolt {

/// The user's settings: values under flat keys, kept on disk.
///
/// Values are stored as text and read as the type that is asked for, whatever was written: a number stored as text
/// reads as that number. A write is seen by every reader at once and reaches the disk atomically, in a later turn of
/// the event loop, at most five times a second; `synchronize` and the destructor write pending changes. Several
/// processes may use the same file: each writes only the keys that it set, and sees those of the others when it writes.
///
/// If parts of the file cannot be read, the readable parts are used, and the file is copied before anything is written.
/// This is reported once on standard error, as is a file that cannot be written. Main thread.
class UserDefaults : public QObject {
  Q_OBJECT

 public:
  /// Settings in the INI file with the path `file`; neither it nor its folder need exist.
  explicit UserDefaults(const std::string& file);
  explicit UserDefaults(SettingsFile store);
  ~UserDefaults() override;

  /// The user's own: zolt/zolt.ini in the XDG configuration folder; on macOS the native store. Created on first use.
  static UserDefaults& standard();

  /// The value as text; nothing if the key is absent.
  std::optional<std::string> stringForKey(const std::string& key) const;
  /// The number at the start of the value; 0 if there is none or the key is absent.
  double doubleForKey(const std::string& key) const;
  /// The same without its fraction, clamped to the type's range.
  std::int64_t integerForKey(const std::string& key) const;
  /// Whether the value is a number other than 0, or begins with a letter of "yes" or "true" in either case.
  bool boolForKey(const std::string& key) const;

  void setString(const std::string& key, const std::string& value);
  void setDouble(const std::string& key, double value);
  void setInteger(const std::string& key, std::int64_t value);
  void setBool(const std::string& key, bool value);
  void removeObject(const std::string& key);
  /// Has `key` read as `value` until it is set or removed here. Never written.
  void overrideForThisRun(const std::string& key, const std::string& value);

  /// Writes pending changes to the disk, and reads what other processes have written.
  void synchronize();

 Q_SIGNALS:
  /// After the value of `key` was set or removed, here or by another process.
  void changed(const std::string& key);

 private:
  void set(const std::string& key, std::optional<std::string> value);
  std::map<std::string, std::string> storedValues() const;

  SettingsFile m_store;
  std::map<std::string, std::string> m_values;
  std::map<std::string, std::string> m_overrides;               // of this run
  std::map<std::string, std::optional<std::string>> m_waiting;  // to be written; no value: to be removed
  QTimer m_writing;
  QElapsedTimer m_sinceWriting;
  bool m_failureReported = false;
};

}  // namespace zolt
