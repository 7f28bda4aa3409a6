#pragma once

#include <QSettings>
#include <memory>
#include <string>

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

}  // namespace zolt
