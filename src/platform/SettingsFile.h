#pragma once

#include <QSettings>
#include <memory>
#include <string>

#include "platform/Descriptor.h"

namespace zolt {

/// The most bytes that a file of settings has; a larger one is taken for broken.
inline constexpr qint64 kSettingsFileLimitBytes = 1024 * 1024;

/// A file of settings, opened.
struct SettingsFile {
  std::unique_ptr<QSettings> settings;
  /// Not where that would destroy something that could be neither read nor copied.
  bool mayWrite = true;
};

/// Opens the INI file `file`, a path, which need not exist. What cannot be read of it is kept, with the rest, in a copy
/// beside it ("FILE.unreadable", with a number where that is taken), the file is written anew with what can be read,
/// and one line on standard error says so.
SettingsFile openSettingsFile(const std::string& file);

/// While it lives, no other process of ours writes the file: an advisory lock on its folder, which ends with its
/// process however that ends. Waits for at most two seconds for another's.
///
/// The toolkit's own lock is a file beside the settings, and one that was made by a process that was killed before it
/// wrote its name there keeps everyone waiting for half a minute. It is taken away here, where it can be nobody's.
class SettingsFileLock {
 public:
  explicit SettingsFileLock(const QString& name);

 private:
  Descriptor m_folder;
};

/// Makes a file that does not exist yet, empty, so that only its owner may read what will stand in it.
void makeSettingsFilePrivately(const QString& name);

}  // namespace zolt
