#pragma once

#include <QSettings>
#include <memory>
#include <string>

#include "platform/Descriptor.h"

namespace zolt {

/// The maximum size of a settings file; a larger one counts as damaged.
inline constexpr qint64 kSettingsFileLimitBytes = 1024 * 1024;

/// An open settings file.
struct SettingsFile {
  std::unique_ptr<QSettings> settings;
  /// False if writing would destroy content that could neither be read nor backed up.
  bool mayWrite = true;
};

/// Opens the INI file `file`, a path, which need not exist. If parts of it cannot be read, the whole file is copied
/// beside it ("FILE.unreadable", with a number if that name is taken) and rewritten with the readable parts, and one
/// line on standard error says so.
SettingsFile openSettingsFile(const std::string& file);

/// Keeps other Zolt processes from writing the file: an advisory lock on its folder, which the kernel releases with the
/// process, however that ends. Waits at most two seconds for another process's lock.
///
/// Qt's own lock is a file beside the settings. One left by a process that was killed before it wrote its PID blocks
/// every save for half a minute. It is removed here, under our lock, where its owner is known to be dead.
class SettingsFileLock {
 public:
  explicit SettingsFileLock(const QString& name);

 private:
  Descriptor m_folder;
};

/// Creates the file, empty and readable only by its owner, if it does not exist.
void makeSettingsFilePrivately(const QString& name);

}  // namespace zolt
